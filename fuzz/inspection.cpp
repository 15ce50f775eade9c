// Any bytes as a file of any kind. Whatever stands in it, a check and an outline come to their end, in little
// time and memory, and what a check says of a load is what a load does.

#include "LoadEnd.h"
#include "LoadGuard.h"
#include "Requirement.h"
#include "XmlBytes.h"

#include <NereoInspection/Check.h>
#include <NereoInspection/Outline.h>

#include <QFile>
#include <QTemporaryDir>

#include <cstddef>
#include <cstdint>

using namespace Nereo::Inspection;

namespace {

struct Input {
    FileKind kind;
    const char* name;
};

constexpr Input inputs[] = {
    {FileKind::ConfigurationXml,  "input.xml"},
    {FileKind::ConfigurationText, "input.cfg"},
    {FileKind::Materials,         "input.xml"},
    {FileKind::GeometryBoundary,  "input.gbi"},
    {FileKind::Control,           "input.ctl"},
    {FileKind::Results,           "input.res"},
};

/// Writes the bytes to a file, which all inputs have one after the other.
std::string written(const char* name, const std::uint8_t* data, std::size_t size)
{
    static const QTemporaryDir folder;
    const QString path = folder.filePath(QLatin1String(name));
    QFile::remove(path); // some file systems take their time over a file that is truncated
    QFile file(path);
    const auto length = qint64(size);
    require(file.open(QIODevice::WriteOnly)
                && file.write(reinterpret_cast<const char*>(data), length) == length,
            "there is a place for the file");
    return path.toStdString();
}

/// What a check may take besides what any may: the file twice, and what its entities may lengthen it by.
qint64 accountedBytes(FileKind kind, const QByteArray& bytes)
{
    constexpr qint64 bytesOfACharacter = 16; // while it is copied from one string to another
    const qint64 size = bytes.size();
    const bool isXml = kind == FileKind::ConfigurationXml || kind == FileKind::Materials;
    return 2 * size + (isXml ? xmlBytes(bytes, bytesOfACharacter) - size * bytesOfACharacter : 0);
}

void requireAgreement(const std::string& path, FileKind kind, const std::vector<Finding>& findings)
{
    const Effect said = firstEnd(findings);
    const Effect done = said == Effect::Stops ? endOfLoadInAChild(path, kind) : endOfLoad(path, kind);
    requireSame(effectName(said).toUtf8(), effectName(done).toUtf8(), "a check says how a load ends");
}

void requireOrder(const std::vector<Finding>& findings)
{
    Place last;
    for (const Finding& finding : findings) {
        const Place& place = finding.place;
        require(place.line > last.line
                    || (place.line == last.line && (place.hasLine() || place.offset >= last.offset)),
                "findings come in the order of the file");
        last = place;
    }
}

/// Whether a load takes no more memory than a fuzzer may have. A small file may announce much.
bool isLoadSmall(const std::string& path, FileKind kind)
{
    constexpr qint64 mostValues = 4 * 1024 * 1024;
    qint64 values = 0;
    outline(path, kind, [&values](const Item& item) {
        if (item.type == Item::Type::Field)
            values += item.value.toInt();
    });
    return values <= mostValues;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), int(size));
    for (const Input& input : inputs) {
        const std::string path = written(input.name, data, size);
        CheckOptions options;
        options.kind = input.kind;
        CheckedFile checked;
        {
            const LoadGuard guard(accountedBytes(input.kind, bytes));
            checked = check(path, options);
        }
        requireOrder(checked.findings);
        if (isLoadSmall(path, input.kind))
            requireAgreement(path, input.kind, checked.findings);

        outline(path, input.kind, [size](const Item& item) {
            const bool isInFile = !item.place.hasOffset()
                || (item.length >= 0 && item.place.offset + item.length <= qint64(size));
            require(isInFile, "a value stands in the file");
        });
    }
    kindOfFile(written("input", data, size));
    return 0;
}

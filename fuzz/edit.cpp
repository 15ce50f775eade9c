// Any bytes as a file of any kind, and any edits of it. What an edit promises holds, whatever stands in the
// file: it changes the bytes of its values and no other, a load gives them, and a check finds nothing new.

#include "EditPromises.h"
#include "FuzzBytes.h"
#include "Requirement.h"

#include <QFile>
#include <QTemporaryDir>

#include <cstddef>
#include <cstdint>

using namespace Nereo::Inspection;

namespace {

struct Input {
    FileKind kind;
    const char* name;
    const char* changed;
};

constexpr Input inputs[] = {
    {FileKind::ConfigurationXml,  "input.xml", "changed.xml"},
    {FileKind::ConfigurationText, "input.cfg", "changed.cfg"},
    {FileKind::Control,           "input.ctl", "changed.ctl"},
    {FileKind::Materials,         "input.xml", "changed.xml"},
};

constexpr const char* additions[] = {"MaxIter",    "JobPrefix",           "constants/kPRef",
                                     "flags/x",    "flags/%23%2F",        "Water/id",
                                     "#1/name",    "Water/density/value", "version",
                                     "Water/name", "flags/x#2",           "Water/density/points/1/y"};

constexpr const char* texts[] = {"",  "0",  "1",     "-7",  "0.5",   "1e-3",     "-.5",     "nan",
                                 "x", "kT", "&<>\"", "]]>", "fluid", "constant", "2.0.0.0", "010"};

/// A text that somebody may set a value to, or any.
QString takeText(FuzzBytes& bytes)
{
    return bytes.flag() ? bytes.text() : QString::fromLatin1(bytes.item(texts));
}

Edit takeEdit(FuzzBytes& bytes, const QStringList& addresses)
{
    Edit edit;
    const int choice = bytes.choice(8);
    if (choice == 0)
        edit.address = bytes.text();
    else if (choice == 1 || addresses.isEmpty())
        edit.address = QString::fromLatin1(bytes.item(additions));
    else
        edit.address = bytes.item(addresses);
    if (bytes.choice(4) != 0)
        edit.text = takeText(bytes);
    return edit;
}

} // namespace

/// The first byte says how many of those behind it make the edits. The others are the file.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const QTemporaryDir folder;
    const QByteArray all(reinterpret_cast<const char*>(data), int(size));
    const int end = 1 + (all.isEmpty() ? 0 : int(std::uint8_t(all[0])));
    FuzzBytes bytes(all.mid(1, end - 1));
    const QByteArray content = all.mid(end);

    const Input& input = bytes.item(inputs);
    const std::string path = folder.filePath(QLatin1String(input.name)).toStdString();
    QFile::remove(QString::fromStdString(path));
    QFile file(QString::fromStdString(path));
    require(file.open(QIODevice::WriteOnly) && file.write(content) == content.size(),
            "there is a place for the file");
    file.close();

    const QStringList addresses = addressesOf(path, input.kind);
    std::vector<Edit> edits;
    for (int count = 1 + bytes.choice(3); count > 0; --count)
        edits.push_back(takeEdit(bytes, addresses));
    const std::string changed = folder.filePath(QLatin1String(input.changed)).toStdString();
    const std::string broken = brokenPromise(path, changed, input.kind, edits);
    require(broken.empty(), broken.c_str());
    return 0;
}

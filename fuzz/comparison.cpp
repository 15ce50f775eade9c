// Any two byte strings as files. Whatever stands in them, a comparison comes to its end in little time and
// memory, says of a file and itself that they are the same, says the same seen from the other file, and
// agrees with what the outlines of the files say.

#include "FuzzBytes.h"
#include "LoadGuard.h"
#include "Requirement.h"

#include <NereoInspection/Comparison.h>
#include <NereoInspection/Outline.h>

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <tuple>

using namespace Nereo::Inspection;

namespace {

using Outcome = Comparison::Outcome;

constexpr char partEnd[] = "\n=====\n";
constexpr char byteOrderMark[] = "\xEF\xBB\xBF";

/// The bytes up to the next end of a part, which are taken off.
QByteArray takePart(QByteArray& bytes)
{
    const int end = bytes.indexOf(partEnd);
    QByteArray part = bytes.left(end);
    bytes = end < 0 ? QByteArray() : bytes.mid(end + int(sizeof partEnd) - 1);
    return part;
}

/// A few bytes of a file are others.
QByteArray changed(QByteArray content, FuzzBytes& bytes)
{
    for (int count = bytes.choice(4); count > 0; --count) {
        const int begin = bytes.choice(content.size() + 1);
        content.replace(begin, bytes.choice(16), bytes.text().toUtf8());
    }
    return content;
}

std::optional<double> takeTolerance(FuzzBytes& bytes)
{
    return bytes.flag() ? std::optional(bytes.real()) : std::nullopt;
}

ComparisonOptions takeOptions(FuzzBytes& bytes)
{
    constexpr const char* fields[] = {"kU", "kP", "kT", "strange"};
    constexpr qint64 limits[] = {ComparisonOptions::quarterOfFreeMemory, 1, 1 << 19, 1 << 20};
    ComparisonOptions options;
    options.absolute = takeTolerance(bytes);
    options.relative = takeTolerance(bytes);
    options.peak = takeTolerance(bytes);
    for (int count = bytes.choice(3); count > 0; --count)
        options.fields.emplace_back(bytes.item(fields));
    options.memoryLimit = bytes.item(limits);
    return options;
}

std::string written(const char* name, const QByteArray& content)
{
    static const QTemporaryDir folder;
    const QString path = folder.filePath(QLatin1String(name));
    QFile::remove(path); // some file systems take their time over a file that is truncated
    QFile file(path);
    require(file.open(QIODevice::WriteOnly) && file.write(content) == content.size(),
            "there is a place for the file");
    return path.toStdString();
}

/// A pair of files that is compared, time and again.
struct Pair {
    std::string a;
    std::string b;
    qint64 size; ///< of both

    Comparison compared(const ComparisonOptions& options = {}) const
    {
        const LoadGuard guard(2 * size);
        return compare(a, b, options);
    }

    Pair turned() const { return {b, a, size}; }
};

bool areSameNumbers(double a, double b)
{
    return a == b || (std::isnan(a) && std::isnan(b));
}

bool haveSameField(const std::optional<FieldDifference>& forth, const std::optional<FieldDifference>& back)
{
    if (!forth || !back)
        return bool(forth) == bool(back);
    return forth->count == back->count && areSameNumbers(forth->largest, back->largest)
        && forth->node == back->node && areSameNumbers(forth->a, back->b) && areSameNumbers(forth->b, back->a)
        && areSameNumbers(forth->rms, back->rms);
}

using ByAddress = std::map<QString, const Difference*>;

ByAddress byAddress(const Comparison& comparison)
{
    ByAddress differences;
    for (const Difference& difference : comparison.differences)
        require(differences.emplace(difference.address, &difference).second, "an address differs once");
    return differences;
}

/// Where nothing is measured by the one file alone, what differs is the same from both sides.
void requireSymmetry(const Comparison& forth, const Comparison& back)
{
    require(forth.outcome == back.outcome, "the outcome is the same from both sides");
    if (forth.outcome != Outcome::Compared)
        return;
    require(forth.kindOfA == back.kindOfB && forth.kindOfB == back.kindOfA,
            "the kinds are those of the files");
    const ByAddress ofForth = byAddress(forth);
    const ByAddress ofBack = byAddress(back);
    const auto isTurned = [](const auto& left, const auto& right) {
        const auto& [address, one] = left;
        const auto& [turnedAddress, other] = right;
        return address == turnedAddress && one->a == other->b && one->b == other->a
            && haveSameField(one->field, other->field);
    };
    require(std::equal(ofForth.begin(), ofForth.end(), ofBack.begin(), ofBack.end(), isTurned),
            "the differences are the same from both sides");
}

void requireReports(const Comparison& comparison)
{
    const QJsonDocument json = QJsonDocument::fromJson(toJson(comparison));
    require(json.isObject(), "there is one JSON document");
    require(json.object()[QLatin1String("same")].toBool() == comparison.areSame(), "it says what came out");
    const auto count = int(comparison.differences.size());
    require(json.object()[QLatin1String("differences")].toArray().size() == count,
            "it has each of the differences");
    require(toText(comparison).count(QLatin1Char('\n')) == count, "each difference has a line");
    require((comparison.outcome == Outcome::Compared) == comparison.message.isEmpty(), "what failed is said");
}

std::set<QString> addressesOf(const Comparison& comparison)
{
    std::set<QString> addresses;
    for (const Difference& difference : comparison.differences)
        addresses.insert(difference.address);
    return addresses;
}

/// Whatever the options are, nothing differs that doesn't differ without any.
void requireFewer(const Comparison& chosen, const Comparison& all)
{
    if (chosen.outcome != Outcome::Compared)
        return;
    const std::set<QString> fewer = addressesOf(chosen);
    const std::set<QString> more = addressesOf(all);
    require(std::includes(more.begin(), more.end(), fewer.begin(), fewer.end()),
            "tolerances and chosen fields leave differences out");
}

/// What an outline says at an address: a number, or a text.
using Said = std::tuple<bool, double, QString>;

std::map<QString, Said> saidIn(const std::string& path, FileKind kind, const char* ignored)
{
    std::map<QString, Said> all;
    outline(path, kind, [&all, ignored](const Item& item) {
        const bool isText = item.type == Item::Type::Text || item.type == Item::Type::Version;
        if (item.type == Item::Type::Field || item.address == QLatin1String(ignored))
            return;
        const Said said {isText, isText ? 0.0 : item.value.toDouble(),
                         isText ? item.value.toString() : QString()};
        all.insert_or_assign(item.address, said);
    });
    return all;
}

bool areSame(const std::map<QString, Said>& a, const std::map<QString, Said>& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const auto& left, const auto& right) {
        const auto& [isTextOfLeft, numberOfLeft, textOfLeft] = left.second;
        const auto& [isTextOfRight, numberOfRight, textOfRight] = right.second;
        return left.first == right.first && isTextOfLeft == isTextOfRight
            && areSameNumbers(numberOfLeft, numberOfRight) && textOfLeft == textOfRight;
    });
}

/// An outline finds out where everything stands, and reads the files in another way.
void requireWhatOutlinesSay(const Pair& files, const Comparison& comparison)
{
    if (comparison.outcome != Outcome::Compared)
        return;
    const bool isOfResults = comparison.kindOfA == FileKind::Results;
    const bool isOfTwoForms = comparison.kindOfA != comparison.kindOfB;
    const char* const ignored = isOfResults ? "date" : isOfTwoForms ? "version" : "";
    const bool areOutlinesSame =
        areSame(saidIn(files.a, comparison.kindOfA, ignored), saidIn(files.b, comparison.kindOfB, ignored));
    if (!areOutlinesSame)
        require(!comparison.areSame(), "what outlines say differently differs");
    else if (!isOfResults && comparison.kindOfA != FileKind::Materials) // which may be empty
        require(comparison.areSame(), "what outlines say alike is the same");
}

/// A text of which a byte-order mark says no more than is known: one of ASCII.
bool mayHaveMark(const QByteArray& content)
{
    return content.indexOf("encoding") < 0
        && std::all_of(content.begin(), content.end(), [](char byte) { return byte > 0; });
}

} // namespace

/// Up to three parts: a file, another one and the options. Where the second is empty, the options change the
/// first to it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    QByteArray parts(reinterpret_cast<const char*>(data), int(size));
    const QByteArray contentOfA = takePart(parts);
    QByteArray contentOfB = takePart(parts);
    FuzzBytes bytes(parts);
    const ComparisonOptions options = takeOptions(bytes);
    if (contentOfB.isEmpty())
        contentOfB = changed(contentOfA, bytes);

    const Pair files {written("a", contentOfA), written("b", contentOfB),
                      qint64(contentOfA.size()) + contentOfB.size()};
    const Comparison all = files.compared();
    requireReports(all);
    requireSymmetry(all, files.turned().compared());
    requireWhatOutlinesSay(files, all);
    const Comparison chosen = files.compared(options);
    requireReports(chosen);
    requireFewer(chosen, all);

    const Comparison itself = Pair {files.a, files.a, 2 * qint64(contentOfA.size())}.compared();
    require(itself.outcome != Outcome::Compared || itself.areSame(), "a file is the same as itself");
    if (itself.outcome == Outcome::Compared && itself.kindOfA != FileKind::Results
        && mayHaveMark(contentOfA)) { // another file, byte by byte
        const Pair marked {files.a, written("marked", byteOrderMark + contentOfA), 2 * qint64(size)};
        require(marked.compared().areSame(), "a byte-order mark says nothing");
    }
    return 0;
}

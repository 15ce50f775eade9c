#include "EditPromises.h"

#include "LoadEnd.h"

#include <NereoFileIO/CodeNameTable.h>
#include <NereoFileIO/ControlFile.h>
#include <NereoFileIO/Nereo2ConfigFile.h>
#include <NereoInspection/Check.h>
#include <NereoInspection/Outline.h>

#include <QFile>
#include <QMap>
#include <QSet>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <map>

using namespace Nereo::Inspection;

namespace {

using Items = std::vector<Item>;

Items itemsOf(const std::string& path, FileKind kind)
{
    Items items;
    outline(path, kind, [&items](const Item& item) { items.push_back(item); });
    return items;
}

QByteArray bytesOf(const std::string& path)
{
    QFile file(QString::fromStdString(path));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeTo(const std::string& path, const QByteArray& bytes)
{
    QFile::remove(QString::fromStdString(path));
    QFile file(QString::fromStdString(path));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        std::abort();
}

const Item* lastOf(const Items& items, const QString& address)
{
    const Item* last = nullptr;
    for (const Item& item : items) {
        if (item.address == address)
            last = &item;
    }
    return last;
}

bool isSame(double left, double right)
{
    return left == right || (std::isnan(left) && std::isnan(right));
}

bool isSame(const QVariant& left, const QVariant& right)
{
    return left.userType() == QMetaType::Double && right.userType() == QMetaType::Double
        ? isSame(left.toDouble(), right.toDouble())
        : left == right;
}

bool isName(const QString& address)
{
    return address.endsWith(QLatin1String("/name"));
}

/// Whether a value is what a text says, where it says so without doubt.
bool isOf(const QString& text, const Item& item)
{
    bool isRead = false;
    switch (item.type) {
    case Item::Type::Text:
        return item.address.endsWith(QLatin1String("independent_variable")) || item.value.toString() == text;
    case Item::Type::Number: {
        const double number = text.toDouble(&isRead);
        return !isRead || isSame(item.value.toDouble(), number);
    }
    case Item::Type::Integer: {
        const int integer = text.toInt(&isRead);
        const bool hasOtherBase = text.contains(QLatin1Char('0')); // 010 may be 8
        return !isRead || hasOtherBase || item.value.toInt() == integer;
    }
    case Item::Type::Switch:
        return item.value.toBool() == (text == QLatin1String("1"));
    default:
        return true;
    }
}

/// What a file says, by addresses. Those of flags go without their numbers, which change when some go.
QMap<QString, QStringList> contentOf(const Items& items, const QSet<QString>& without)
{
    QMap<QString, QStringList> content;
    for (const Item& item : items) {
        if (!without.contains(item.address))
            content[item.address.section(QLatin1Char('#'), 0, 0)].append(item.spelling);
    }
    return content;
}

std::map<QString, qint64> findingsOf(const CheckedFile& checked)
{
    std::map<QString, qint64> counts;
    for (const Finding& finding : checked.findings)
        counts[finding.code] += 1 + finding.more;
    return counts;
}

/// What a load gives of a value; invalid where it isn't asked here.
QVariant loadedValue(const std::string& path, FileKind kind, const QString& address)
{
    using namespace Nereo::Io;
    if (kind == FileKind::ConfigurationXml || kind == FileKind::ConfigurationText) {
        Nereo2ConfigFile file;
        if (!file.loadFrom(path) || !file.contains(address.toStdString()))
            return {};
        const Setting& setting = file.setting(address.toStdString());
        switch (setting.type()) {
        case Setting::Int:
            return setting.valueAsInt();
        case Setting::Double:
            return setting.valueAsDouble();
        default:
            return QString::fromStdString(setting.valueAsString());
        }
    }
    if (kind != FileKind::Control)
        return {};
    ControlFile file;
    file.loadFrom(path);
    const QStringList parts = address.split(QLatin1Char('/'));
    const int code = CodeNameTable::instance().codeForName(parts.value(1));
    if (address == QLatin1String("title"))
        return QString::fromStdString(file.title());
    if (address == QLatin1String("units"))
        return file.units();
    if (address == QLatin1String("transient-data/stop-time"))
        return file.stopTime();
    if (address.endsWith(QLatin1String("/under")))
        return file.phiUnderRelax(code);
    if (address.endsWith(QLatin1String("/inertial")))
        return file.phiInertRelax(code);
    if (parts.size() == 2 && parts[0] == QLatin1String("constants"))
        return file.constant(code);
    return {};
}

/// The first difference in what isn't edited.
std::string otherChange(const Items& before, const Items& after, const std::vector<Edit>& edits)
{
    QSet<QString> edited;
    for (const Edit& edit : edits) {
        if (isName(edit.address))
            return after.size() >= before.size() && after.size() <= before.size() + edits.size()
                ? ""
                : "a name makes or takes values";
        edited.insert(edit.address);
        if (edit.address.startsWith(QLatin1String("flags/")) && !edit.text)
            return {}; // whose numbers change
    }
    const auto contentBefore = contentOf(before, edited);
    const auto contentAfter = contentOf(after, edited);
    if (contentBefore == contentAfter)
        return {};
    for (const QString& address : contentBefore.keys() + contentAfter.keys()) {
        if (contentBefore.value(address) != contentAfter.value(address))
            return "another value has changed: " + address.toStdString();
    }
    return {};
}

/// Whether nothing but the bytes of a value has changed.
bool areOtherBytesSame(const QByteArray& before, const QByteArray& after, const Item& item)
{
    const int begin = int(item.place.offset);
    const int rest = before.size() - begin - int(item.length);
    return after.size() >= begin + rest && before.left(begin) == after.left(begin)
        && before.right(rest) == after.right(rest);
}

std::string brokenOfRefusal(const FileEdit& file, const QByteArray& before, const EditResult& result)
{
    if (file.bytes() != before || !file.changes().empty())
        return "an edit that is refused changes something";
    return result.message.isEmpty() ? "no reason is given" : "";
}

} // namespace

QStringList addressesOf(const std::string& path, FileKind kind)
{
    QStringList addresses;
    for (const Item& item : itemsOf(path, kind))
        addresses.append(item.address);
    addresses.removeDuplicates();
    return addresses;
}

std::string brokenPromise(const std::string& path, const std::string& changedPath, FileKind kind,
                          const std::vector<Edit>& edits)
{
    const QByteArray before = bytesOf(path);
    FileEdit file(path, kind);
    const EditResult result = file.apply(edits);
    if (!result)
        return brokenOfRefusal(file, before, result);

    const QByteArray& after = file.bytes();
    writeTo(changedPath, after);
    const Items itemsBefore = itemsOf(path, kind);
    const Items itemsAfter = itemsOf(changedPath, kind);
    const std::string other = otherChange(itemsBefore, itemsAfter, edits);
    if (!other.empty())
        return other;

    CheckOptions options;
    options.kind = kind;
    const CheckedFile checkedBefore = check(path, options);
    const CheckedFile checkedAfter = check(changedPath, options);
    const auto known = findingsOf(checkedBefore);
    for (const auto& [code, count] : findingsOf(checkedAfter)) {
        const auto found = known.find(code);
        if (count > (found == known.end() ? 0 : found->second))
            return "a new finding: " + code.toStdString();
    }
    const bool loads = firstEnd(checkedAfter.findings) == Effect::None;
    if (loads && endOfLoad(changedPath, kind) != Effect::None)
        return "a load ends early";

    const std::vector<ValueChange> changes = file.changes();
    const bool areNamesSame = std::none_of(changes.begin(), changes.end(),
                                           [](const ValueChange& change) { return isName(change.address); });
    for (const ValueChange& change : changes) {
        if (!areNamesSame || change.address.contains(QLatin1Char('#')))
            continue; // values may have other addresses now
        const Item* const item = lastOf(itemsAfter, change.address);
        const bool isFlag = change.address.startsWith(QLatin1String("flags/"));
        if (!change.after && item != nullptr && !isFlag)
            return "what was removed is there";
        if (!change.after)
            continue;
        if (item == nullptr || !isOf(*change.after, *item))
            return "a value isn't what it was set to: " + change.address.toStdString();
        const QVariant loaded = loads ? loadedValue(changedPath, kind, change.address) : QVariant();
        if (loaded.isValid() && !isSame(loaded, item->value))
            return "a load doesn't give the value: " + change.address.toStdString();
    }
    if (edits.size() == 1 && edits.front().text) {
        const Item* const item = lastOf(itemsBefore, edits.front().address);
        const bool isWhole = item != nullptr && item->place.hasOffset()
            && !before.left(int(item->place.offset)).endsWith("/>");
        if (isWhole && !areOtherBytesSame(before, after, *item))
            return "other bytes have changed";
    }
    return {};
}

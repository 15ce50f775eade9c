#include "VersionFault.h"

#include <NereoUtility/Version.h>

#include <QStringList>

#include <algorithm>

namespace Nereo::Inspection {

namespace {

constexpr int versionNumbers = 4;
constexpr char versionAddress[] = "version";

bool isInteger(const QString& text)
{
    bool isRead = false;
    text.toInt(&isRead);
    return isRead;
}

} // namespace

bool isVersion(const QString& text)
{
    const QLatin1Char dot('.');
    if (text.count(dot) != versionNumbers - 1) // which spares a long one the list
        return false;
    const QStringList numbers = text.trimmed().split(dot);
    return std::all_of(numbers.begin(), numbers.end(), isInteger);
}

bool checkVersion(const QString& text, bool isEmptyIgnored, const Place& place, const QString& address,
                  Listener& listener)
{
    if (isVersion(text))
        return false;
    const bool isIgnored = text.isEmpty() && isEmptyIgnored;
    const QStringList readAs {Util::Version(text).toString()};
    listener.finding({isIgnored ? Rule::IgnoredVersion : Rule::BadVersion, place, address, text, readAs});
    return true;
}

void DocumentVersion::read(XmlFile& xml, Listener& listener)
{
    const QString name = name_;
    if (!xml.hasAttribute(name))
        return;
    const QString address = QLatin1String(versionAddress);
    const QString text = xml.attribute(name);
    const Place place = xml.attributePlace(name);
    if (!checkVersion(text, true, place, address, listener) && isRead_)
        listener.finding({repetition_, place, address, text});
    isRead_ = isRead_ || !text.isEmpty();
    if (listener.wantsItems()) {
        const auto version = text.isEmpty() ? Util::Version::Current : Util::Version(text);
        listener.item({address, Item::Type::Version, place, xml.attributeLength(name),
                       xml.attributeSpelling(name), version.toString()});
    }
}

} // namespace Nereo::Inspection

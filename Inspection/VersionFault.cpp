#include "VersionFault.h"

#include <NereoUtility/Version.h>

#include <QStringList>

#include <algorithm>

namespace Nereo::Inspection {

namespace {

constexpr int versionNumbers = 4;

bool isInteger(const QString& text)
{
    bool isRead = false;
    text.toInt(&isRead);
    return isRead;
}

} // namespace

bool isVersion(const QString& text)
{
    const QStringList numbers = text.trimmed().split(QLatin1Char('.'));
    return numbers.size() == versionNumbers && std::all_of(numbers.begin(), numbers.end(), isInteger);
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

} // namespace Nereo::Inspection

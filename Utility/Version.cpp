#include <NereoUtility/Version.h>

#include <QStringList>

#include <algorithm>

namespace Nereo::Util {

constexpr Version Version::Current {NEREO_VERSION_NUMBERS};

QString Version::Branch()
{
    return QStringLiteral(NEREO_BRANCH);
}

Version::Version(const QString& text)
{
    const QStringList numbers = text.trimmed().split(QLatin1Char('.'));
    const int count = std::min(numbers.size(), int(numbers_.size()));
    std::transform(numbers.begin(), numbers.begin() + count, numbers_.begin(),
                   [](const QString& number) { return number.toInt(); });
}

QString Version::toString() const
{
    return QStringLiteral("%1.%2.%3.%4").arg(numbers_[0]).arg(numbers_[1]).arg(numbers_[2]).arg(numbers_[3]);
}

} // namespace Nereo::Util

#include <NereoUtility/Version.h>

#include <QString>

namespace Nereo::Util {

constexpr Version Version::Current {NEREO_VERSION_NUMBERS};

QString Version::Branch()
{
    return QStringLiteral(NEREO_BRANCH);
}

Version::Version(const QString& text)
{
    const QString trimmed = text.trimmed();
    int begin = 0;
    for (int& number : numbers_) {
        const int dot = trimmed.indexOf(QLatin1Char('.'), begin);
        number = trimmed.midRef(begin, dot < 0 ? -1 : dot - begin).toInt();
        if (dot < 0)
            return;
        begin = dot + 1;
    }
}

QString Version::toString() const
{
    return QStringLiteral("%1.%2.%3.%4").arg(numbers_[0]).arg(numbers_[1]).arg(numbers_[2]).arg(numbers_[3]);
}

} // namespace Nereo::Util

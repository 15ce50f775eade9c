#include "ExactText.h"

#include <NereoUtility/StringConversion.h>

namespace Nereo::Io {

QString toExactQString(const std::string& text)
{
    static constexpr char byteOrderMark[] = "\xEF\xBB\xBF";
    constexpr std::size_t markSize = sizeof byteOrderMark - 1;

    int markCount = 0;
    std::size_t rest = 0;
    for (; text.compare(rest, markSize, byteOrderMark) == 0; rest += markSize)
        ++markCount;
    if (markCount == 0)
        return Util::toQString(text);
    return QString(markCount, QChar::ByteOrderMark) + Util::toQString(text.substr(rest));
}

} // namespace Nereo::Io

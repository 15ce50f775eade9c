#include <NereoUtility/StringConversion.h>

namespace Nereo::Util {

QString toQString(const std::string& text)
{
    return QString::fromStdString(text);
}

std::string toStdString(const QString& text)
{
    return text.toStdString();
}

} // namespace Nereo::Util

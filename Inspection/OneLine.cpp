#include "OneLine.h"

#include <algorithm>

namespace Nereo::Inspection {

namespace {

bool isControl(QChar character)
{
    switch (character.category()) {
    case QChar::Other_Control:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        return false;
    }
}

} // namespace

QString oneLine(const QString& text)
{
    if (std::none_of(text.begin(), text.end(), isControl)) // as nearly always
        return text;
    QString line;
    line.reserve(text.size());
    for (const QChar character : text) {
        if (character == QLatin1Char('\n'))
            line += QLatin1String("\\n");
        else if (isControl(character))
            line += QStringLiteral("\\u%1").arg(character.unicode(), 4, 16, QLatin1Char('0'));
        else
            line += character;
    }
    return line;
}

} // namespace Nereo::Inspection

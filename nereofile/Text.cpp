#include "Text.h"

#include <algorithm>
#include <numeric>

namespace Nereo::Tool {

namespace {

constexpr int gap = 2; // between the columns of a table

bool isSeen(uint letter)
{
    switch (QChar::category(letter)) {
    case QChar::Mark_NonSpacing:
    case QChar::Mark_Enclosing:
    case QChar::Other_Format:
        return false;
    default:
        return true;
    }
}

QString blanks(int count)
{
    return {std::max(count, 0), QLatin1Char(' ')};
}

} // namespace

int letterCount(const QString& text)
{
    const QVector<uint> letters = text.toUcs4();
    return int(std::count_if(letters.begin(), letters.end(), isSeen));
}

QString filledUp(const QString& text, int letters)
{
    return text + blanks(letters - letterCount(text));
}

QString filledUpBefore(const QString& text, int letters)
{
    return blanks(letters - letterCount(text)) + text;
}

QString wrapped(const QString& text, int columns, int indentation)
{
    QString lines;
    int used = 0;
    for (const QString& word : text.split(QLatin1Char(' '))) {
        const int letters = letterCount(word);
        if (used > 0 && used + 1 + letters > columns - indentation) {
            lines += QLatin1Char('\n') + blanks(indentation);
            used = 0;
        } else if (!lines.isEmpty()) {
            lines += QLatin1Char(' ');
            ++used;
        }
        lines += word;
        used += letters;
    }
    return lines;
}

QString counted(qint64 count, const char* singular)
{
    const QString text = QString::number(count) + QLatin1Char(' ') + QLatin1String(singular);
    return count == 1 ? text : text + QLatin1Char('s');
}

std::vector<int> Table::widths() const
{
    std::vector<int> widths(alignments_.size());
    for (const QStringList& row : rows_) {
        for (int i = 0; i < row.size(); ++i)
            widths[std::size_t(i)] = std::max(widths[std::size_t(i)], letterCount(row[i]));
    }
    return widths;
}

int Table::width() const
{
    const std::vector<int> all = widths();
    return std::accumulate(all.begin(), all.end(), gap * (int(all.size()) - 1));
}

QString Table::text(int indentation) const
{
    const std::vector<int> all = widths();
    QString text;
    for (const QStringList& row : rows_) {
        QString line = blanks(indentation);
        for (int i = 0; i < row.size(); ++i) {
            const auto column = std::size_t(i);
            line += alignments_[column] == Left ? filledUp(row[i], all[column] + gap)
                                                : filledUpBefore(row[i], all[column]) + blanks(gap);
        }
        while (line.endsWith(QLatin1Char(' ')))
            line.chop(1);
        text += line + QLatin1Char('\n');
    }
    return text;
}

} // namespace Nereo::Tool

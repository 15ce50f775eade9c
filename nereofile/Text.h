#pragma once

#include <Inspection/OneLine.h>

#include <QString>
#include <QStringList>

#include <vector>

namespace Nereo::Tool {

/// How many letters people see: an accent that has a character of its own is none.
int letterCount(const QString& text);

/// The text with blanks behind it, or before it, up to that many letters.
QString filledUp(const QString& text, int letters);
QString filledUpBefore(const QString& text, int letters);

/// The words of a text in lines of at most that many letters, all but the first behind blanks.
QString wrapped(const QString& text, int columns, int indentation = 0);

using Inspection::oneLine;

/// "1 error", "2 errors".
QString counted(qint64 count, const char* singular);

/// Rows of cells, two blanks apart and as wide as the widest of a column.
class Table {
public:
    enum Alignment : int { Left, Right };

    explicit Table(std::vector<Alignment> alignments) : alignments_(std::move(alignments)) {}

    void add(const QStringList& row) { rows_.push_back(row); }
    int width() const;
    QString text(int indentation = 0) const;

private:
    std::vector<int> widths() const;

    std::vector<Alignment> alignments_;
    std::vector<QStringList> rows_;
};

} // namespace Nereo::Tool

#pragma once

#include "EditedFile.h"

#include <vector>

namespace Nereo::Inspection {

/// The lines of a text that is edited, by their bytes. Line feeds end them, and one carriage return before a
/// line feed belongs to the end.
class TextLines {
public:
    struct Line {
        qint64 begin;
        qint64 end;    ///< of what stands in it
        qint64 behind; ///< the first byte of the next
    };

    explicit TextLines(const EditedFile& file);

    int count() const { return int(lines_.size()); }
    const Line& operator[](int i) const { return lines_[std::size_t(i)]; }

    /// As a load sees it, which is without carriage returns.
    QString text(int i) const;
    QString firstWord(int i) const;
    bool isBlank(int i) const;

    int lineOf(qint64 offset) const;

    /// The last line from one up to another that isn't blank; the one before the first if all are.
    int lastFilled(int first, int behind) const;

    static constexpr int noLine = -1;

    /// Puts lines behind another, or before all where there is none. They are indented as a line.
    Replacement linesBehind(int i, const QStringList& texts, int likeLine = noLine) const;

    /// Replaces a part of a line, which begins at a character of it.
    Replacement part(int i, int begin, const QString& before, const QString& after) const;

    Replacement without(int i) const
    {
        return {lines_[std::size_t(i)].begin, lines_[std::size_t(i)].behind, {}};
    }

    /// The bytes that stand for the value of an item. Behind a name a blank stands before one that wasn't
    /// there.
    Replacement word(const Item& item, const NewText& text, bool isBehindName) const;

private:
    QByteArray lineEndAt(int i) const;
    QByteArray lineEndNear(int i) const;

    QByteArray bytes_;
    FileEncoding encoding_;
    std::vector<Line> lines_;
    qint64 begin_ = 0; ///< behind the byte-order mark
};

/// A text in the encoding of the file; refuses one that it has no characters for.
QByteArray encodedText(const FileEncoding& encoding, const QString& text);

} // namespace Nereo::Inspection

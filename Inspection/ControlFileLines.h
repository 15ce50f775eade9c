#pragma once

#include "TextFile.h"

#include <NereoInspection/Export.h>

#include <QString>
#include <QStringView>
#include <QTextStream>

#include <optional>

namespace Nereo::Inspection {

/// A part of a line, by its first character and the one behind its last.
struct Range {
    int begin = 0;
    int end = 0;

    int size() const { return end - begin; }
    bool isEmpty() const { return begin == end; }
};

/// What the stream of a load takes for a number: the value, and the place in the line at which it stops.
template <class Number>
struct Extracted {
    Number value;
    int end;
    bool isRead; ///< false where the stream says that there is no number, and gives 0
};

/// What is wrong with a word that should be a number.
struct WordFault {
    Rule rule;
    QString readAs = {};
};

/// The lines of a control file, section by section, as a load reads them.
///
/// A load puts the lines of a section together and reads from all of it, so that a number that is missing is
/// taken from the next line. Words don't go over the end of a line: it is enough to hold one at a time.
class NEREOINSPECTION_EXPORT ControlFileLines {
public:
    ControlFileLines(const InputFile& file, Listener& listener);

    /// Goes to the next line, whatever it is. False at the end of the file.
    bool readLine();

    /// Goes to the next line of the section, or to where it ends, and stays there. False at its end.
    bool nextLine();

    /// Whether there is a line that belongs to the section, and not a title or nothing.
    bool hasLine() const { return state_ == State::Line; }
    bool hasTitle() const { return state_ == State::Title; }

    QStringView text() const { return QStringView(line_).left(lineEnd_); } ///< the line without its end
    QStringView text(Range range) const { return text().mid(range.begin, range.size()); }
    int lineEnd() const { return lineEnd_; } ///< the place behind the last character

    // Parts of the line; empty at its end where there is nothing, or at its beginning if it isn't the
    // section's.

    Range wordFrom(int from) const; ///< the first word, as the stream would extract it
    Range restFrom(int from) const; ///< all but the white space at both ends
    bool isBlank() const { return wordFrom(0).isEmpty(); }

    // What the stream of a load reads from a place in the line.

    Extracted<int> integerAt(int from);
    Extracted<double> numberAt(int from);

    // What is wrong with a word that should be a number, and what the stream reads.

    std::optional<WordFault> integerFault(Range word, double& value);
    std::optional<WordFault> numberFault(Range word, double& value);

    /// Goes behind the next word of the line if that is a number in whose reading nothing can go wrong.
    bool passPlainNumber();

    // How a load goes through the section.

    /// Goes to the next word, over ends of lines. False at the end of the section.
    bool toWord();
    int at() const { return at_; } ///< in the line
    void goTo(int at) { at_ = at; }
    int readInteger();   ///< 0 at the end of the section, as what is no number
    double readNumber(); ///< likewise

    qint64 begin() const { return begin_; } ///< the number of the line's first character

    Place place(int at) { return text_.place(begin_ + at); }
    Place placeOf(qint64 character) { return text_.place(character); } ///< by its number in the file
    qint64 length(Range range) { return text_.length(begin_ + range.begin, begin_ + range.end); }

    /// Says that a finding is about this part of the line, bad characters included.
    void cover(Range range) { text_.cover(begin_ + range.begin, begin_ + range.end); }

    /// Says that bad characters in this part are of a value.
    void addPart(Range range, const QString& address)
    {
        text_.addPart(begin_ + range.begin, begin_ + range.end, address);
    }

    /// Tells of the bad characters before the line, when all that covers any of them has been said.
    void reportCharacters() { text_.reportCharactersBefore(begin_); }

    /// The same up to the end of the line. False if there are none that haven't been told.
    bool reportLine() { return text_.reportCharactersBefore(begin_ + lineEnd_); }

    void reportEnd() { text_.reportEnd(); }

private:
    enum class State { Line, Title, End };

    template <class Number>
    Extracted<Number> extract(int from);

    TextFile text_;
    QString line_; ///< with a line feed where the stream has read from it
    int lineEnd_ = 0;
    QTextStream in_;
    State state_ = State::End;
    qint64 begin_ = 0; ///< of the line; behind the last one at the end
    int at_ = 0;
};

/// QString::simplified(), but of a text of any length, and no more than so many characters.
NEREOINSPECTION_EXPORT QString simplified(QStringView text, int most);

/// Whether two texts have the same words.
NEREOINSPECTION_EXPORT bool haveSameWords(QStringView left, QStringView right);

} // namespace Nereo::Inspection

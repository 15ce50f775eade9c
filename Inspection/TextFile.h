#pragma once

#include "TextPlaces.h"

#include <QTextStream>

#include <memory>

namespace Nereo::Inspection {

/// A text file as a load reads it, line by line, and where all of it stands.
///
/// A walk takes the values out of the lines with the functions that a load uses, and asks for the places by
/// the numbers of the characters: the first character of the next line has the number nextIndex().
class NEREOINSPECTION_EXPORT TextFile {
public:
    TextFile(const InputFile& file, Listener& listener);
    ~TextFile();

    bool atEnd() const { return in_.atEnd(); } ///< as the stream of a load says it

    /// Reads the next line without its line feed. False where there is none.
    bool readLine(QString& line);

    /// Goes on to where white space ends, or not so far: that takes less time than its lines do.
    void skipSpaces();

    qint64 nextIndex() const { return nextIndex_; }

    Place place(qint64 index);
    qint64 length(qint64 begin, qint64 end) { return hasPlaces_ ? places_.length(begin, end) : 0; }

    /// Says what findings of bad characters are about; or that there is a finding already, so that bad
    /// characters need none of their own. Parts come in the order of the file.
    void addPart(qint64 begin, qint64 end, const QString& address)
    {
        if (hasPlaces_)
            places_.addPart({begin, end, address, false});
    }
    void cover(qint64 begin, qint64 end)
    {
        if (hasPlaces_)
            places_.addPart({begin, end, {}, true});
    }

    /// Tells of the characters up to the next line that are none, and at the end of the file of all that are
    /// left. The parts that they are in come before.
    void reportCharacters();
    /// The same up to a character that has been read. False if there are none that haven't been told.
    bool reportCharactersBefore(qint64 index);
    void reportEnd(); ///< and whether the file was read to its end

private:
    Listener& listener_;
    const bool hasPlaces_; ///< somebody wants to know them
    std::unique_ptr<QIODevice> device_;
    QTextStream in_;
    TextPlaces places_;
    qint64 nextIndex_ = 0;
    QString piece_;
};

} // namespace Nereo::Inspection

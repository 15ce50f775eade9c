#pragma once

#include <QByteArray>
#include <QString>

#include <NereoInspection/Place.h>

#include <string>

/// A text with a mark around a part of it, so that nobody has to count lines and columns:
///
///     const Marked file(" *** Relaxation\nkU [[abc]] 0\n");
///
/// The place is that of the first character between the brackets; where nothing stands between them, it is
/// that of what follows.
class Marked {
public:
    /// In UTF-8.
    explicit Marked(const std::string& text);

    /// The same with carriage returns before the line feeds.
    Marked withCarriageReturns() const;
    /// The same behind a byte-order mark.
    Marked withByteOrderMark() const;
    enum ByteOrder { BigEndian, LittleEndian };
    /// The same in UTF-16, behind a byte-order mark.
    Marked inUtf16(ByteOrder order = BigEndian) const;
    /// The same in UTF-32, behind a byte-order mark.
    Marked inUtf32(ByteOrder order) const;
    /// The same in ISO-8859-1, which has the characters for it.
    Marked inLatin1() const;
    /// The same with an em space, which is white space beyond ASCII, at the beginning of the line with the
    /// mark.
    Marked behindEmSpace() const;
    /// The same where nobody can know the offset.
    Marked withoutOffset() const;

    const std::string& bytes() const { return bytes_; }
    Nereo::Inspection::Place place() const { return place_; }
    qint64 length() const { return length_; } ///< of the marked part, in bytes
    const QString& found() const { return found_; }

private:
    Marked() = default;

    template <class Encode>
    Marked encoded(const std::string& mark, Encode encode) const;

    QString before_;
    QString found_;
    QString behind_;
    std::string bytes_;
    Nereo::Inspection::Place place_;
    qint64 length_ = 0;
};

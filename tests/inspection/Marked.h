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
    /// The same in UTF-16, behind a byte-order mark.
    Marked inUtf16() const;

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

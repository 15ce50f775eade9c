#pragma once

#include "InputFile.h"
#include "TextPlaces.h"

#include <NereoInspection/Place.h>

#include <QByteArray>
#include <QString>

class QTextCodec;

namespace Nereo::Inspection {

/// The encoding of a text or document, to read parts of it and to write others.
class NEREOINSPECTION_EXPORT FileEncoding {
public:
    /// That which a text stream finds out by itself.
    static FileEncoding ofText(const InputFile& file);

    /// That which the reader of documents takes a file for.
    static FileEncoding ofDocument(const InputFile& file);
    /// The same, where it is known what the declaration of the document says; empty if nothing.
    static FileEncoding ofDocument(const InputFile& file, const QString& declared);

    /// The first character of a document that has a carriage return among its bytes, if there are several: a
    /// load leaves that byte out, and takes the bytes from there on for other characters. Absent if there is
    /// none.
    static Place lostByteOfDocument(const InputFile& file);

    /// False where characters can't be told apart by looking, or aren't what a load takes them for. Then
    /// there is no codec.
    bool isKnown() const { return codec_ != nullptr; }

    TextPlaces::Encoding kind() const { return kind_; }
    const QTextCodec& codec() const { return *codec_; }
    int unitSize() const; ///< of the least that a character takes, in bytes

    // Without a byte-order mark; one that stands in the text is a character.

    QString decoded(const QByteArray& bytes) const;
    QByteArray encoded(const QString& text) const;

    /// Whether all characters of the text can be written.
    bool canCarry(const QString& text) const;

private:
    FileEncoding() = default;
    explicit FileEncoding(TextPlaces::Encoding kind);

    TextPlaces::Encoding kind_ = TextPlaces::Encoding::Utf8;
    const QTextCodec* codec_ = nullptr;
};

} // namespace Nereo::Inspection

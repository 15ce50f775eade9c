#include "FileEncoding.h"

#include <FileIO/XmlTokens.h>

#include <QTextCodec>
#include <QXmlStreamReader>

#include <algorithm>
#include <optional>

namespace Nereo::Inspection {

namespace {

using Encoding = TextPlaces::Encoding;

/// Whether each byte is a character, and those of ASCII are what they are there.
bool isSingleByte(const QTextCodec& codec)
{
    for (int byte = 0; byte < 256; ++byte) {
        const char character = char(byte);
        const QString text = codec.toUnicode(&character, 1);
        if (text.size() != 1 || (byte < 0x80 && text[0] != QLatin1Char(character)))
            return false;
    }
    return true;
}

const char* codecName(Encoding encoding)
{
    switch (encoding) {
    case Encoding::Utf16:
        return "UTF-16BE";
    case Encoding::Utf16LittleEndian:
        return "UTF-16LE";
    case Encoding::Utf32:
        return "UTF-32BE";
    case Encoding::Utf32LittleEndian:
        return "UTF-32LE";
    default:
        return "UTF-8";
    }
}

/// The encoding of a document whose characters take several bytes each, as its first ones tell.
std::optional<Encoding> wideEncodingOf(const InputFile& file)
{
    struct Start {
        QByteArray bytes;
        Encoding encoding;
    };
    static const Start starts[] = {
        {QByteArray("\0\0\xFE\xFF", 4), Encoding::Utf32            },
        {QByteArray("\xFF\xFE\0\0", 4), Encoding::Utf32LittleEndian},
        {QByteArray("\0\0\0<",      4), Encoding::Utf32            },
        {QByteArray("<\0\0\0",      4), Encoding::Utf32LittleEndian},
        {QByteArray("\xFE\xFF",     2), Encoding::Utf16            },
        {QByteArray("\xFF\xFE",     2), Encoding::Utf16LittleEndian},
        {QByteArray("\0<",          2), Encoding::Utf16            },
        {QByteArray("<\0",          2), Encoding::Utf16LittleEndian},
    };
    const QByteArray bytes = file.openBytes()->read(4);
    for (const Start& start : starts) {
        if (bytes.startsWith(start.bytes))
            return start.encoding;
    }
    return {};
}

/// The first byte that is a carriage return; negative if there is none.
qint64 offsetOfReturn(const InputFile& file)
{
    constexpr qint64 blockSize = 64 * 1024;
    const auto device = file.openBytes();
    qint64 offset = 0;
    for (QByteArray block; !(block = device->read(blockSize)).isEmpty(); offset += block.size()) {
        const int at = block.indexOf('\r');
        if (at >= 0)
            return offset + at;
    }
    return -1;
}

/// The place behind a text.
Place placeBehind(const QString& text)
{
    const QStringRef line = text.midRef(text.lastIndexOf(QLatin1Char('\n')) + 1);
    const auto pairs = std::count_if(line.begin(), line.end(), [](QChar c) { return c.isHighSurrogate(); });
    return {text.count(QLatin1Char('\n')) + 1, line.size() - pairs + 1, Place::Absent};
}

/// What the declaration of a document says.
QString declaredEncoding(const InputFile& file)
{
    const auto device = file.open(QIODevice::Text);
    QXmlStreamReader xml(device.get());
    Io::configure(xml);
    xml.readNext();
    return xml.isStartDocument() ? xml.documentEncoding().toString() : QString();
}

} // namespace

FileEncoding::FileEncoding(Encoding kind) : kind_(kind), codec_(QTextCodec::codecForName(codecName(kind))) {}

FileEncoding FileEncoding::ofText(const InputFile& file)
{
    return FileEncoding(TextPlaces(file).encoding());
}

FileEncoding FileEncoding::ofDocument(const InputFile& file)
{
    return ofDocument(file, declaredEncoding(file));
}

FileEncoding FileEncoding::ofDocument(const InputFile& file, const QString& declared)
{
    if (const std::optional<Encoding> encoding = wideEncodingOf(file))
        return offsetOfReturn(file) < 0 ? FileEncoding(*encoding) : FileEncoding();
    constexpr int utf8Mib = 106; // in the Internet's register of encodings
    const QTextCodec* const codec =
        declared.isEmpty() ? nullptr : QTextCodec::codecForName(declared.toLatin1());
    if (codec == nullptr || codec->mibEnum() == utf8Mib)
        return FileEncoding(Encoding::Utf8);
    FileEncoding encoding;
    if (isSingleByte(*codec)) {
        encoding.kind_ = Encoding::SingleByte;
        encoding.codec_ = codec;
    }
    return encoding;
}

Place FileEncoding::lostByteOfDocument(const InputFile& file)
{
    const std::optional<Encoding> kind = wideEncodingOf(file);
    const qint64 offset = kind ? offsetOfReturn(file) : -1;
    if (offset < 0)
        return {};
    const FileEncoding encoding(*kind);
    QString before = encoding.decoded(file.openBytes()->read(offset - offset % encoding.unitSize()));
    if (before.startsWith(QChar(QChar::ByteOrderMark)))
        before.remove(0, 1);
    return placeBehind(before);
}

int FileEncoding::unitSize() const
{
    switch (kind_) {
    case Encoding::Utf16:
    case Encoding::Utf16LittleEndian:
        return 2;
    case Encoding::Utf32:
    case Encoding::Utf32LittleEndian:
        return 4;
    default:
        return 1;
    }
}

QString FileEncoding::decoded(const QByteArray& bytes) const
{
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    return codec_->toUnicode(bytes.constData(), bytes.size(), &state);
}

QByteArray FileEncoding::encoded(const QString& text) const
{
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    return codec_->fromUnicode(text.constData(), text.size(), &state);
}

bool FileEncoding::canCarry(const QString& text) const
{
    return decoded(encoded(text)) == text;
}

} // namespace Nereo::Inspection

#pragma once

#include "EntityLimit.h"
#include "WholeSave.h"

#include <NereoUtility/StringConversion.h>

#include <QDataStream>
#include <QFile>
#include <QTextStream>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <algorithm>
#include <limits>
#include <string>

/// The way from a path to a format: opens the file, puts the format's stream on it and decides the result.

namespace Nereo::Io {

// What differs between the streams: whether the device translates line ends, how they are set up, and whether
// they notice a failure.

template <class Stream>
inline constexpr QIODevice::OpenMode textMode = QIODevice::Text;
template <>
inline constexpr QIODevice::OpenMode textMode<QDataStream> = QIODevice::NotOpen;

inline void configure(QTextStream& stream)
{
    stream.setCodec("UTF-8");
}
inline void configure(QXmlStreamReader& stream) // which follows the document's own declaration
{
    limitEntities(stream);
}
inline void configure(QXmlStreamWriter& stream)
{
    stream.setAutoFormatting(true);
}
inline void configure(QDataStream&) {}

inline bool isLoaded(const QTextStream&)
{
    return true;
}
inline bool isLoaded(const QDataStream&)
{
    return true;
}
inline bool isLoaded(const QXmlStreamReader& stream)
{
    return !stream.hasError();
}

// A text stream writes the last of its text in its destructor, out of which no exception may come. These
// leave nothing to it: one while everything is well, the other when the writer throws.

inline void finish(QTextStream& stream)
{
    stream.flush();
}
inline void finish(QXmlStreamWriter&) {}

inline void abandon(QTextStream& stream)
{
    stream.setStatus(QTextStream::WriteFailed);
}
inline void abandon(QXmlStreamWriter&) {}

inline bool isSaved(const QTextStream&, QFile&)
{
    return true;
}
inline bool isSaved(const QXmlStreamWriter& stream, QFile& device)
{
    return !stream.hasError() && device.flush(); // a small file reaches a full disk in the flush only
}

// The device of a WholeSave is no QFile and answers for itself, so that only what it can't know is asked for.
inline bool isSaved(const QTextStream&, QIODevice&)
{
    return true;
}
inline bool isSaved(const QXmlStreamWriter& stream, QIODevice&)
{
    return !stream.hasError();
}

/// A file that ends at the first read that fails. QFile says the same of a failure as of the end, that there
/// is less than was asked for, and reads on when asked again: a stream would take what then comes for the
/// next word, or the rest of one. What comes before may be read again.
class FileEndingAtFailure : public QFile {
public:
    bool seek(qint64 position) override
    {
        const bool isThere = QFile::seek(position);
        if (isThere)
            position_ = position;
        return isThere;
    }

protected:
    qint64 readData(char* data, qint64 maxSize) override
    {
        const qint64 wanted = std::min(maxSize, std::max(end_ - position_, qint64(0)));
        const qint64 count = QFile::readData(data, wanted);
        position_ += std::max(count, qint64(0));
        if (count < wanted)
            end_ = position_;
        return count;
    }

private:
    qint64 position_ = 0;
    qint64 end_ = std::numeric_limits<qint64>::max();
};

/// No file has an empty name, about which QFile would warn, or one with a NUL, at which QFile would cut it.
inline bool namesAFile(const std::string& path)
{
    return !path.empty() && path.find('\0') == std::string::npos;
}

inline bool openFile(QFile& device, const std::string& path, QIODevice::OpenMode mode)
{
    if (!namesAFile(path))
        return false;
    device.setFileName(Util::toQString(path));
    return device.open(mode);
}

template <class FormatReader, class Target>
bool load(const std::string& path, Target& target)
{
    using Stream = typename FormatReader::Stream;

    FileEndingAtFailure device;
    if (!openFile(device, path, QIODevice::ReadOnly | textMode<Stream>))
        return false;
    Stream stream(&device);
    configure(stream);
    FormatReader(target).read(stream);
    return isLoaded(stream);
}

/// All there is to loading a format that has no reader.
inline bool canLoad(const std::string& path)
{
    QFile device;
    return openFile(device, path, QIODevice::ReadOnly | QIODevice::Text);
}

template <class FormatWriter, class Source, class Device>
bool write(Device& device, const Source& source)
{
    typename FormatWriter::Stream stream(&device);
    configure(stream);
    try {
        FormatWriter(source).write(stream);
        finish(stream);
    } catch (...) {
        abandon(stream);
        throw;
    }
    return isSaved(stream, device);
}

template <class FormatWriter, class Source>
bool save(const std::string& path, const Source& source)
{
    constexpr QIODevice::OpenMode mode = textMode<typename FormatWriter::Stream>;

    if (WholeSave* const whole = WholeSave::inPlaceOf(path)) {
        QIODevice* const device = whole->open(mode);
        return device != nullptr && write<FormatWriter>(*device, source);
    }
    QFile device;
    return openFile(device, path, QIODevice::WriteOnly | mode) && write<FormatWriter>(device, source);
}

} // namespace Nereo::Io

#pragma once

#include "LoadGuard.h"

#include <FileIO/FileAccess.h>

#include <QBuffer>

#include <cstddef>
#include <cstdint>

/// Loads and saves as the file objects do, with bytes in place of a file.

/// Gives the result of the load. The announced bytes are what the counts in the input ask for.
template <class FormatReader, class Target>
bool loadBytes(const QByteArray& bytes, Target& target, qint64 announcedBytes = 0)
{
    using Stream = typename FormatReader::Stream;

    const LoadGuard guard(2 * bytes.size() + announcedBytes);
    QBuffer device;
    device.setData(bytes);
    device.open(QIODevice::ReadOnly | Nereo::Io::textMode<Stream>);
    Stream stream(&device);
    Nereo::Io::configure(stream);
    FormatReader(target).read(stream);
    return Nereo::Io::isLoaded(stream);
}

template <class FormatWriter, class Source>
QByteArray savedBytes(const Source& source)
{
    using Stream = typename FormatWriter::Stream;

    QBuffer device;
    device.open(QIODevice::WriteOnly | Nereo::Io::textMode<Stream>);
    {
        Stream stream(&device);
        Nereo::Io::configure(stream);
        FormatWriter(source).write(stream);
    }
    return device.data();
}

inline QByteArray inputBytes(const std::uint8_t* data, std::size_t size)
{
    return QByteArray(reinterpret_cast<const char*>(data), int(size));
}

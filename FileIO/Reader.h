#pragma once

#include <NereoFileIO/Export.h>

namespace Nereo::Io {

/// Knows one format: reads it from a stream into the file object that the concrete reader was made for.
///
/// A reader lives for one load and reads from any device, so that a format can be read without a file.
template <class StreamType>
class NEREOFILEIO_EXPORT Reader {
public:
    using Stream = StreamType;

    virtual ~Reader() = default;

    virtual bool read(Stream& stream) = 0;
};

} // namespace Nereo::Io

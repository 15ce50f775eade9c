#pragma once

#include <NereoFileIO/Export.h>

namespace Nereo::Io {

/// Knows one format: writes the file object that the concrete writer was made for to a stream.
template <class StreamType>
class NEREOFILEIO_EXPORT Writer {
public:
    using Stream = StreamType;

    virtual ~Writer() = default;

    virtual void write(Stream& stream) = 0;
};

} // namespace Nereo::Io

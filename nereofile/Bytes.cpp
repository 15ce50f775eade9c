#include "Bytes.h"

#include <cerrno>
#include <unistd.h>

namespace Nereo::Tool {

int writeAll(int descriptor, const char* bytes, std::size_t size)
{
    while (size > 0) {
        const ssize_t count = ::write(descriptor, bytes, size);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return errno;
        bytes += count;
        size -= std::size_t(count);
    }
    return 0;
}

} // namespace Nereo::Tool

#include "LargePages.h"

#include <cstddef>
#include <cstdint>

#ifdef Q_OS_UNIX
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace Nereo::Io {

namespace {

#ifdef MADV_HUGEPAGE

/// Asks for large pages in the whole pages of the range. Where the kernel has none, nothing changes.
void adviseLargePages(void* begin, std::size_t size)
{
    const auto pageSize = std::uintptr_t(sysconf(_SC_PAGESIZE));
    const auto address = reinterpret_cast<std::uintptr_t>(begin);
    const std::uintptr_t firstPage = (address + pageSize - 1) / pageSize * pageSize;
    const std::uintptr_t lastPage = (address + size) / pageSize * pageSize;
    if (firstPage < lastPage)
        madvise(reinterpret_cast<void*>(firstPage), lastPage - firstPage, MADV_HUGEPAGE);
}

#else

void adviseLargePages(void*, std::size_t) {}

#endif

} // namespace

QVector<double> reserveInLargePages(int valueCount)
{
    QVector<double> values;
    values.reserve(valueCount);
    adviseLargePages(values.data(), std::size_t(values.capacity()) * sizeof(double));
    return values;
}

} // namespace Nereo::Io

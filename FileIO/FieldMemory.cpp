#include "FieldMemory.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#ifdef Q_OS_UNIX
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace Nereo::Io {

namespace {

#ifdef MADV_HUGEPAGE

constexpr std::uintptr_t largePageSize = 2 * 1024 * 1024;

std::uintptr_t roundUp(std::uintptr_t address, std::uintptr_t unit)
{
    return (address + unit - 1) / unit * unit;
}

std::uintptr_t roundDown(std::uintptr_t address, std::uintptr_t unit)
{
    return address / unit * unit;
}

/// Asks for large pages where they fit into the memory, and for the pages before and behind them all at once
/// rather than one by one as they are touched. A kernel that doesn't know the advice leaves everything as it
/// is.
void prepare(void* memory, std::size_t size)
{
    const auto address = reinterpret_cast<std::uintptr_t>(memory);
    const auto pageSize = std::uintptr_t(sysconf(_SC_PAGESIZE));
    const std::uintptr_t firstPage = roundUp(address, pageSize);
    const std::uintptr_t end = roundDown(address + size, pageSize);
    const std::uintptr_t firstLargePage = std::min(roundUp(firstPage, largePageSize), end);
    const std::uintptr_t endOfLargePages = std::max(roundDown(end, largePageSize), firstLargePage);

    const auto advise = [memory, address](std::uintptr_t from, std::uintptr_t to, int advice) {
        if (from < to)
            madvise(static_cast<char*>(memory) + (from - address), to - from, advice);
    };
    advise(firstLargePage, endOfLargePages, MADV_HUGEPAGE);
#ifdef MADV_POPULATE_WRITE
    advise(firstPage, firstLargePage, MADV_POPULATE_WRITE);
    advise(endOfLargePages, end, MADV_POPULATE_WRITE);
#endif
}

#else

void prepare(void*, std::size_t) {}

#endif

} // namespace

QVector<double> reserveField(int valueCount)
{
    QVector<double> values;
    values.reserve(valueCount);
    prepare(values.data(), std::size_t(values.capacity()) * sizeof(double));
    return values;
}

} // namespace Nereo::Io

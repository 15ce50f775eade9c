#include "ResultsLimit.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

namespace {

constexpr std::size_t blockSize = 128 * 1024;
constexpr std::size_t tileSize = 16 * 1024;

constexpr std::size_t largePage = 2 * 1024 * 1024;

std::size_t readBlock(int file, char* block, std::size_t size)
{
    std::size_t done = 0;
    while (done < size) {
        const ssize_t count = ::read(file, block + done, size - done);
        if (count <= 0)
            break;
        done += std::size_t(count);
    }
    return done;
}

template <bool swap>
std::uint32_t readInt(const char* bytes)
{
    std::uint32_t bits;
    std::memcpy(&bits, bytes, sizeof bits);
    return swap ? __builtin_bswap32(bits) : bits;
}

template <bool swap>
double readDouble(const char* bytes)
{
    std::uint64_t bits;
    std::memcpy(&bits, bytes, sizeof bits);
    if (swap)
        bits = __builtin_bswap64(bits);
    double value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

enum class Pages { Ordinary, Large };

PlainFields zeroedFields(std::size_t fieldCount, std::size_t nodeCount, Pages pages)
{
    PlainFields fields;
    fields.nodeCount = nodeCount;
    double* all = nullptr;
    if (pages == Pages::Large) {
        const std::size_t size =
            (fieldCount * nodeCount * sizeof(double) + largePage - 1) / largePage * largePage;
        all = static_cast<double*>(std::aligned_alloc(largePage, size));
        madvise(all, size, MADV_HUGEPAGE); // fresh from the system, hence zero
    }
    for (std::size_t column = 0; column < fieldCount; ++column) {
        fields.columns.push_back(pages == Pages::Large
                                     ? all + column * nodeCount
                                     : static_cast<double*>(std::calloc(nodeCount, sizeof(double))));
    }
    return fields;
}

struct StoreRun {
    template <bool swap>
    static void store(PlainFields& fields, const char* records, std::size_t recordSize, std::size_t count)
    {
        const std::size_t first = readInt<swap>(records) - 1;
        for (std::size_t column = 0; column < fields.columns.size(); ++column) {
            const char* value = records + 4 + 8 * column;
            double* const run = fields.columns[column] + first;
            for (std::size_t i = 0; i < count; ++i, value += recordSize)
                run[i] = readDouble<swap>(value);
        }
    }
};

/// The same in tiles that stay in the first-level cache while each field takes its values.
struct StoreTiledRun {
    template <bool swap>
    static void store(PlainFields& fields, const char* records, std::size_t recordSize, std::size_t count)
    {
        const std::size_t recordsInTile = std::max<std::size_t>(tileSize / recordSize, 1);
        for (std::size_t done = 0; done < count; done += recordsInTile) {
            StoreRun::store<swap>(fields, records + done * recordSize, recordSize,
                                  std::min(recordsInTile, count - done));
        }
    }
};

struct StoreScattered {
    template <bool swap>
    static void store(PlainFields& fields, const char* records, std::size_t recordSize, std::size_t count)
    {
        for (std::size_t column = 0; column < fields.columns.size(); ++column) {
            const char* record = records;
            double* const values = fields.columns[column];
            for (std::size_t i = 0; i < count; ++i, record += recordSize)
                values[readInt<swap>(record) - 1] = readDouble<swap>(record + 4 + 8 * column);
        }
    }
};

template <class Store, bool swap>
PlainFields loadRecords(int file, const char* header, Pages pages)
{
    const std::size_t nodeCount = readInt<swap>(header + 298);
    const std::size_t fieldCount = readInt<swap>(header + 346);
    lseek(file, off_t(354 + 21 * fieldCount), SEEK_SET);

    PlainFields fields = zeroedFields(fieldCount, nodeCount, pages);
    const std::size_t recordSize = 4 + 8 * fieldCount;
    const std::size_t recordsInBlock = std::max<std::size_t>(blockSize / recordSize, 1);
    std::vector<char> block(recordsInBlock * recordSize);
    for (std::size_t left = nodeCount; left > 0;) {
        const std::size_t count = std::min(left, recordsInBlock);
        if (readBlock(file, block.data(), count * recordSize) < count * recordSize)
            throw std::runtime_error("the file ends early");
        Store::template store<swap>(fields, block.data(), recordSize, count);
        left -= count;
    }
    return fields;
}

template <class Store>
PlainFields load(const std::string& path, Pages pages)
{
    const int file = ::open(path.c_str(), O_RDONLY);
    char header[350];
    if (file < 0 || readBlock(file, header, sizeof header) < sizeof header)
        throw std::runtime_error("can't read " + path);
    const bool isBigEndian = header[3] != 0;
    PlainFields fields = isBigEndian ? loadRecords<Store, true>(file, header, pages)
                                     : loadRecords<Store, false>(file, header, pages);
    ::close(file);
    return fields;
}

} // namespace

PlainFields loadRunsOnOrdinaryPages(const std::string& path)
{
    return load<StoreRun>(path, Pages::Ordinary);
}

PlainFields loadRunsWithEveryTrick(const std::string& path)
{
    return load<StoreTiledRun>(path, Pages::Large);
}

PlainFields loadScatteredOnOrdinaryPages(const std::string& path)
{
    return load<StoreScattered>(path, Pages::Ordinary);
}

#include "ResultsRecords.h"

#include <FileIO/ResultsFileWalk.h>

#include <QDataStream>
#include <QtEndian>

#include <algorithm>

namespace Nereo::Inspection {

namespace {

namespace Layout = Io::ResultsLayout;

constexpr qint64 blockSize = 128 * 1024;
constexpr qint64 longestInBlock = 8 * 1024 * 1024; // of longer records only what is looked at is read

/// How many nodes are looked at together, of which each takes a bit. A file may announce many more than it
/// has records; it is then gone through several times, of which many are no matter where it is small.
qint64 nodesTogether(const Io::ResultsFileHeader& header)
{
    constexpr qint64 fewest = qint64(1) << 20;
    constexpr qint64 most = qint64(1) << 28; // beside those that the file has room for
    const qint64 room = header.wholeRecords() + qint64(1);
    return room + std::clamp(256 * room, fewest, most);
}

struct LittleEndian {
    template <class Number>
    static Number read(const char* bytes)
    {
        return qFromLittleEndian<Number>(bytes);
    }
};

struct BigEndian {
    template <class Number>
    static Number read(const char* bytes)
    {
        return qFromBigEndian<Number>(bytes);
    }
};

/// A sum with the highest bit if the number isn't finite, and without it otherwise: the exponent of such a
/// number is all ones.
template <class ByteOrder>
quint64 overflowOfExponent(const char* value)
{
    constexpr quint64 exponent = 0x7FF0'0000'0000'0000;
    constexpr quint64 one = 0x0010'0000'0000'0000;
    return (ByteOrder::template read<quint64>(value) & exponent) + one;
}

/// Asks many values at once, so that the compiler needn't compare one by one.
template <class ByteOrder>
bool areFinite(const char* values, qint64 count)
{
    quint64 overflow = 0;
    for (qint64 i = 0; i < count; ++i)
        overflow |= overflowOfExponent<ByteOrder>(values + i * Layout::valueSize);
    return overflow >> 63 == 0;
}

} // namespace

ResultsRecords::ResultsRecords(const InputFile& file, const Io::ResultsFileHeader& header,
                               const std::vector<int>& columns)
    : file_(file), header_(header), marks_(header.nodeCount(), nodesTogether(header))
{
    for (const int column : columns)
        notFinite_.push_back({column});
}

void ResultsRecords::run()
{
    do {
        pass();
        isFirstPass_ = false;
    } while (failedAt_ < 0 && marks_.beginNextPass());
}

void ResultsRecords::pass()
{
    const auto device = file_.open(QIODevice::NotOpen);
    if (header_.recordSize() <= longestInBlock)
        passInBlocks(*device);
    else
        passOneByOne(*device);
}

void ResultsRecords::passInBlocks(QIODevice& device)
{
    qint64 offset = header_.recordsOffset();
    device.seek(offset);
    QDataStream in(&device);
    Io::ResultsFileWalk walk(in);
    walk.readRecords(header_.recordsAnnounced(), header_.recordSize(), blockSize,
                     [&](const char* block, qint64 size) {
                         takeBlock(block, size, offset);
                         offset += size;
                         return true;
                     });
    if (walk.hasEnded())
        noteEnd(device, offset, offset + 1);
}

void ResultsRecords::passOneByOne(QIODevice& device)
{
    const auto readAt = [this, &device](qint64 place, char* bytes, qint64 size) {
        const bool isRead = device.seek(place) && device.read(bytes, size) == size;
        if (!isRead)
            noteEnd(device, place, place + size);
        return isRead;
    };
    const bool isLittleEndian = header_.byteOrder() == Io::ResultsFileHeader::LittleEndian;
    qint64 offset = header_.recordsOffset();
    for (int i = 0; i < header_.recordsAnnounced(); ++i, offset += header_.recordSize()) {
        char number[Layout::nodeSize];
        if (!readAt(offset, number, sizeof number))
            return;
        const int node =
            isLittleEndian ? LittleEndian::read<qint32>(number) : BigEndian::read<qint32>(number);
        marks_.mark(&node, 1, offset, header_.recordSize());
        for (std::size_t column = 0; isFirstPass_ && column < notFinite_.size(); ++column) {
            char record[Layout::nodeSize + Layout::valueSize];
            NotFiniteValues& values = notFinite_[column];
            const qint64 place = offset + Layout::valueOffset(values.column);
            if (!readAt(place, record, Layout::valueSize))
                return;
            const bool isFinite =
                isLittleEndian ? areFinite<LittleEndian>(record, 1) : areFinite<BigEndian>(record, 1);
            if (!isFinite && values.count++ == 0) {
                values.firstNode = node;
                values.firstOffset = place;
            }
        }
    }
}

void ResultsRecords::takeBlock(const char* block, qint64 size, qint64 offset)
{
    if (header_.byteOrder() == Io::ResultsFileHeader::LittleEndian)
        takeRecords<LittleEndian>(block, size, offset);
    else
        takeRecords<BigEndian>(block, size, offset);
}

template <class ByteOrder>
void ResultsRecords::takeRecords(const char* records, qint64 size, qint64 offset)
{
    const qint64 recordSize = header_.recordSize();
    nodes_.clear();
    for (qint64 begin = 0; begin + Layout::nodeSize <= size; begin += recordSize) {
        const int node = ByteOrder::template read<qint32>(records + begin);
        nodes_.push_back(node);
        if (isFirstPass_ && !notFinite_.empty())
            takeValues<ByteOrder>(records + begin, std::min(recordSize, size - begin), node, offset + begin);
    }
    marks_.mark(nodes_.data(), int(nodes_.size()), offset, recordSize);
}

/// Those of one record, of which the last may be cut off.
template <class ByteOrder>
void ResultsRecords::takeValues(const char* record, qint64 size, int node, qint64 offset)
{
    const qint64 count = (size - Layout::nodeSize) / Layout::valueSize;
    if (areFinite<ByteOrder>(record + Layout::nodeSize, count))
        return;
    for (NotFiniteValues& values : notFinite_) {
        const qint64 place = Layout::valueOffset(values.column);
        if (values.column >= count || areFinite<ByteOrder>(record + place, 1))
            continue;
        if (values.count++ == 0) {
            values.firstNode = node;
            values.firstOffset = offset + place;
        }
    }
}

/// A short read is a failure where the file has the bytes that were wanted, or the device says so.
void ResultsRecords::noteEnd(const QIODevice& device, qint64 place, qint64 wantedEnd)
{
    if (!InputFile::hasFailed(device) && wantedEnd > device.size())
        return;
    failedAt_ = place;
    error_ = device.errorString();
}

} // namespace Nereo::Inspection

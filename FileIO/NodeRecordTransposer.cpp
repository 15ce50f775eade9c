#include "NodeRecordTransposer.h"

#include "Assertion.h"

#include <NereoFileIO/FieldVariable.h>

#include <QtEndian>

#include <algorithm>
#include <cstring>
#include <utility>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace Nereo::Io {

namespace {

constexpr qint64 nodeSize = sizeof(qint32);
constexpr qint64 valueSize = sizeof(double);

// Records are stored a tile at a time, and each field grows by its part of a tile just before: what a vector
// clears as it grows should still be in the first-level cache when the values arrive. That part is just under
// 2 KiB, from which on C libraries may clear memory in a way that takes long to start.
constexpr int recordsInTile = 240;

// So many columns are read together. They lie in one or two cache lines of a record, so that the lines of a
// tile and what is written take about 30 KiB, a first-level cache, however long the records are; and a line
// is fetched by a few groups of columns rather than by each column.
constexpr std::size_t columnsTogether = 4;

// The block grows with the tile of long records, as far as the second-level cache holds it.
constexpr qint64 usualBlockSize = 128 * 1024;
constexpr qint64 largestBlockSize = 512 * 1024;

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

template <class ByteOrder>
double readValue(const char* bytes)
{
    const auto bits = ByteOrder::template read<quint64>(bytes);
    double value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

/// Stores two values at once, as half as many stores are a little faster.
template <class ByteOrder>
void storePair(const char* first, const char* second, double* place)
{
#ifdef __SSE2__
    _mm_storeu_pd(place, _mm_set_pd(readValue<ByteOrder>(second), readValue<ByteOrder>(first)));
#else
    place[0] = readValue<ByteOrder>(first);
    place[1] = readValue<ByteOrder>(second);
#endif
}

/// Where the values of a field stand in a record, and where they go.
struct Column {
    qint64 offset;
    double* run;
};

/// Stores the values of a few columns, so that the compiler writes out the inner loop.
template <class ByteOrder, std::size_t... index>
void storeColumns(const Column* columns, const char* records, qint64 recordSize, int count,
                  std::index_sequence<index...>)
{
    const Column column[] = {columns[index]...}; // copies, which the compiler knows that no store changes
    int i = 0;
    for (; i + 1 < count; i += 2, records += 2 * recordSize) {
        (storePair<ByteOrder>(records + column[index].offset, records + recordSize + column[index].offset,
                              column[index].run + i),
         ...);
    }
    if (i < count)
        ((column[index].run[i] = readValue<ByteOrder>(records + column[index].offset)), ...);
}

void growTo(QVector<double>& values, int size)
{
    if (values.size() < size)
        values.resize(size);
}

} // namespace

NodeRecordTransposer::NodeRecordTransposer(int columnCount, int nodeCount, QDataStream::ByteOrder byteOrder)
    : recordSize_(nodeSize + valueSize * columnCount), nodeCount_(nodeCount), byteOrder_(byteOrder)
{
    fields_.reserve(kNone); // there are fewer names, so that adding a field can't fail later
}

NodeRecordTransposer::~NodeRecordTransposer()
{
    for (const Field& field : fields_)
        field.values->resize(nodeCount_);
}

void NodeRecordTransposer::addField(int column, QVector<double>& values)
{
    fields_.push_back({nodeSize + valueSize * column, &values});
}

qint64 NodeRecordTransposer::recordSize() const
{
    return recordSize_;
}

qint64 NodeRecordTransposer::blockSize() const
{
    return std::clamp(recordsInTile * recordSize_, usualBlockSize, largestBlockSize);
}

void NodeRecordTransposer::store(char* block, qint64 size)
{
    int count = int(size / recordSize_);
    const qint64 rest = size % recordSize_;
    if (rest >= nodeSize) {
        const qint64 wholeValues = (rest - nodeSize) / valueSize;
        char* const firstMissing = block + count * recordSize_ + nodeSize + wholeValues * valueSize;
        std::fill(firstMissing, block + (count + 1) * recordSize_, '\0');
        ++count;
    }
    if (count == 0 || fields_.empty())
        return;
    for (int done = 0; done < count; done += recordsInTile) {
        const char* const tile = block + done * recordSize_;
        const int countInTile = std::min(recordsInTile, count - done);
        if (byteOrder_ == QDataStream::LittleEndian)
            storeRecords<LittleEndian>(tile, countInTile);
        else
            storeRecords<BigEndian>(tile, countInTile);
    }
}

template <class ByteOrder>
void NodeRecordTransposer::storeRecords(const char* records, int count)
{
    const int first = ByteOrder::template read<qint32>(records);
    if (isRunOfNodes<ByteOrder>(records, count) && first >= 1 && first <= nodeCount_ - count + 1)
        storeRun<ByteOrder, columnsTogether>(records, count, first, 0);
    else
        storeScattered<ByteOrder>(records, count);
}

template <class ByteOrder>
bool NodeRecordTransposer::isRunOfNodes(const char* records, int count) const
{
    const auto first = ByteOrder::template read<quint32>(records);
    quint32 differences = 0;
    for (quint32 i = 0; i < quint32(count); ++i, records += recordSize_)
        differences |= ByteOrder::template read<quint32>(records) ^ (first + i);
    return differences == 0;
}

template <class ByteOrder, std::size_t width>
void NodeRecordTransposer::storeRun(const char* records, int count, int firstNode, std::size_t field)
{
    for (; fields_.size() - field >= width; field += width) {
        Column columns[width];
        for (std::size_t i = 0; i < width; ++i) {
            const auto& [offset, values] = fields_[field + i];
            growTo(*values, firstNode - 1 + count);
            columns[i] = {offset, values->data() + firstNode - 1};
        }
        storeColumns<ByteOrder>(columns, records, recordSize_, count, std::make_index_sequence<width>());
    }
    if constexpr (width > 1)
        storeRun<ByteOrder, width / 2>(records, count, firstNode, field);
}

template <class ByteOrder>
void NodeRecordTransposer::storeScattered(const char* records, int count)
{
    readNodes<ByteOrder>(records, count);
    const auto [smallest, largest] = std::minmax_element(nodes_.begin(), nodes_.end());
    for (const int node : {*smallest, *largest})
        NEREO_ASSERT_INDEX(qint64(node) - 1, nodeCount_, "QVector<T>::operator[]",
                           "FileIO/NodeRecordTransposer");
    for (const auto& [offset, values] : fields_) {
        growTo(*values, *largest);
        double* const all = values->data();
        const char* value = records + offset;
        for (const int node : nodes_) {
            all[node - 1] = readValue<ByteOrder>(value);
            value += recordSize_;
        }
    }
}

template <class ByteOrder>
void NodeRecordTransposer::readNodes(const char* records, int count)
{
    nodes_.resize(std::size_t(count));
    for (int& node : nodes_) {
        node = ByteOrder::template read<qint32>(records);
        records += recordSize_;
    }
}

} // namespace Nereo::Io

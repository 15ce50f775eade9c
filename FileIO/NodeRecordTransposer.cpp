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
constexpr int recordsInTile = NodeRecordTransposer::recordsInRun;

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

    static void write(quint64 number, char* bytes) { qToLittleEndian(number, bytes); }
};

struct BigEndian {
    template <class Number>
    static Number read(const char* bytes)
    {
        return qFromBigEndian<Number>(bytes);
    }

    static void write(quint64 number, char* bytes) { qToBigEndian(number, bytes); }
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

quint64 bitsOf(double value)
{
    quint64 bits;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

} // namespace

NodeRecordTransposer::NodeRecordTransposer(int columnCount, int nodeCount, QDataStream::ByteOrder byteOrder)
    : recordSize_(nodeSize + valueSize * columnCount), nodeCount_(nodeCount), byteOrder_(byteOrder),
      lastNode_(nodeCount)
{
    fields_.reserve(kNone); // there are fewer names, so that adding a field can't fail later
}

NodeRecordTransposer::~NodeRecordTransposer()
{
    for (const Field& field : fields_)
        growTo(*field.values, lastNode_ - firstNode_ + 1);
}

void NodeRecordTransposer::addField(int column, QVector<double>& values)
{
    fields_.push_back({nodeSize + valueSize * column, &values});
}

void NodeRecordTransposer::addColumn(int column)
{
    columns_.push_back(nodeSize + valueSize * column);
}

void NodeRecordTransposer::dropColumns()
{
    columns_.clear();
}

void NodeRecordTransposer::storeOnly(int firstNode, int lastNode)
{
    firstNode_ = firstNode;
    lastNode_ = lastNode;
}

void NodeRecordTransposer::setMissingValue(double value)
{
    missingValue_ = value;
}

void NodeRecordTransposer::requireNodes()
{
    areNodesRequired_ = true;
}

qint64 NodeRecordTransposer::recordSize() const
{
    return recordSize_;
}

qint64 NodeRecordTransposer::blockSize() const
{
    return blockSizeFor(recordSize_);
}

qint64 NodeRecordTransposer::blockSizeFor(qint64 recordSize)
{
    return std::clamp(recordsInTile * recordSize, usualBlockSize, largestBlockSize);
}

void NodeRecordTransposer::store(char* block, qint64 size)
{
    const qint64 place = storeUpToBadNode(block, size);
    if (place >= 0)
        NEREO_ASSERT_INDEX(qint64(nodeAt(block + place)) - 1, nodeCount_, "QVector<T>::operator[]",
                           "FileIO/NodeRecordTransposer");
}

qint64 NodeRecordTransposer::storeUpToBadNode(char* block, qint64 size)
{
    const int count = completeLast(block, size);
    if (count == 0 || (fields_.empty() && !areNodesRequired_))
        return -1;
    for (int done = 0; done < count; done += recordsInTile) {
        const char* const tile = block + done * recordSize_;
        const int countInTile = std::min(recordsInTile, count - done);
        const bool areStored = byteOrder_ == QDataStream::LittleEndian
            ? storeRecords<LittleEndian>(tile, countInTile)
            : storeRecords<BigEndian>(tile, countInTile);
        if (!areStored)
            return done * recordSize_ + placeOfBadNode(tile);
    }
    return -1;
}

void NodeRecordTransposer::abandon()
{
    fields_.clear();
}

/// Fills the last record up if its node number is whole. Gives the number of records.
int NodeRecordTransposer::completeLast(char* block, qint64 size) const
{
    const int count = int(size / recordSize_);
    const qint64 rest = size % recordSize_;
    if (rest < nodeSize)
        return count;
    const qint64 wholeValues = (rest - nodeSize) / valueSize;
    char* const firstMissing = block + count * recordSize_ + nodeSize + wholeValues * valueSize;
    for (char* value = firstMissing; value < block + (count + 1) * recordSize_; value += valueSize) {
        if (byteOrder_ == QDataStream::LittleEndian)
            LittleEndian::write(bitsOf(missingValue_), value);
        else
            BigEndian::write(bitsOf(missingValue_), value);
    }
    return count + 1;
}

/// Of records that aren't stored, since one has such a number.
qint64 NodeRecordTransposer::placeOfBadNode(const char* records) const
{
    const char* record = records;
    while (nodeAt(record) >= 1 && nodeAt(record) <= nodeCount_)
        record += recordSize_;
    return record - records;
}

int NodeRecordTransposer::nodeAt(const char* record) const
{
    return byteOrder_ == QDataStream::LittleEndian ? LittleEndian::read<qint32>(record)
                                                   : BigEndian::read<qint32>(record);
}

void NodeRecordTransposer::growTo(QVector<double>& values, int size) const
{
    const int oldSize = values.size();
    if (oldSize >= size)
        return;
    values.resize(size);
    if (bitsOf(missingValue_) != 0)
        std::fill(values.begin() + oldSize, values.end(), missingValue_);
}

/// False where a node isn't there.
template <class ByteOrder>
bool NodeRecordTransposer::storeRecords(const char* records, int count)
{
    const int first = ByteOrder::template read<qint32>(records);
    if (!isRunOfNodes<ByteOrder>(records, count) || first < 1 || first > nodeCount_ - count + 1)
        return storeScattered<ByteOrder>(records, count);
    const int begin = std::max(first, firstNode_);
    const int end = std::min(first + (count - 1), lastNode_);
    if (begin <= end) {
        const char* const begun = records + (begin - first) * recordSize_;
        storeRun<ByteOrder, columnsTogether>(begun, end - begin + 1, begin - firstNode_ + 1, 0);
    }
    return true;
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
bool NodeRecordTransposer::storeScattered(const char* records, int count)
{
    readNodes<ByteOrder>(records, count);
    const auto [smallest, largest] = std::minmax_element(nodes_.begin(), nodes_.end());
    if (*smallest < 1 || *largest > nodeCount_)
        return false;
    if (*smallest < firstNode_ || *largest > lastNode_) {
        storeWanted<ByteOrder>(records, std::min(*largest, lastNode_));
        return true;
    }
    for (const auto& [offset, values] : fields_) {
        growTo(*values, *largest - firstNode_ + 1);
        double* const all = values->data();
        const char* value = records + offset;
        for (const int node : nodes_) {
            all[node - firstNode_] = readValue<ByteOrder>(value);
            value += recordSize_;
        }
    }
    return true;
}

/// Those of the nodes that are to be stored, of which none is larger than the given one.
template <class ByteOrder>
void NodeRecordTransposer::storeWanted(const char* records, int largestNode)
{
    for (const auto& [offset, values] : fields_) {
        growTo(*values, largestNode - firstNode_ + 1);
        double* const wanted = values->data();
        const char* value = records + offset;
        for (const int node : nodes_) {
            if (node >= firstNode_ && node <= lastNode_)
                wanted[node - firstNode_] = readValue<ByteOrder>(value);
            value += recordSize_;
        }
    }
}

void NodeRecordTransposer::turn(const char* records, int count, const TakeNodes& takeNodes,
                                const TakeColumn& takeColumn)
{
    for (int done = 0; done < count; done += recordsInRun) {
        const char* const run = records + done * recordSize_;
        const int countInRun = std::min(recordsInRun, count - done);
        if (byteOrder_ == QDataStream::LittleEndian)
            turnRun<LittleEndian>(run, countInRun, takeNodes, takeColumn);
        else
            turnRun<BigEndian>(run, countInRun, takeNodes, takeColumn);
    }
}

template <class ByteOrder>
void NodeRecordTransposer::turnRun(const char* records, int count, const TakeNodes& takeNodes,
                                   const TakeColumn& takeColumn)
{
    readNodes<ByteOrder>(records, count);
    takeNodes(nodes_.data(), count);
    std::size_t first = 0;
    for (; columns_.size() - first >= columnsTogether; first += columnsTogether)
        turnColumns<ByteOrder, columnsTogether>(records, count, first, takeColumn);
    for (; first < columns_.size(); ++first)
        turnColumns<ByteOrder, 1>(records, count, first, takeColumn);
}

template <class ByteOrder, std::size_t width>
void NodeRecordTransposer::turnColumns(const char* records, int count, std::size_t first,
                                       const TakeColumn& takeColumn)
{
    double values[width][recordsInRun];
    Column columns[width];
    for (std::size_t i = 0; i < width; ++i)
        columns[i] = {columns_[first + i], values[i]};
    storeColumns<ByteOrder>(columns, records, recordSize_, count, std::make_index_sequence<width>());
    for (std::size_t i = 0; i < width; ++i)
        takeColumn(first + i, values[i]);
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

#include "NodeRecordTransposer.h"

#include "Assertion.h"

#include <NereoFileIO/FieldVariable.h>

#include <QtEndian>

#include <algorithm>
#include <cstring>

namespace Nereo::Io {

namespace {

constexpr qint64 nodeSize = sizeof(qint32);
constexpr qint64 valueSize = sizeof(double);

constexpr qint64 tileSize = 16 * 1024; // stays in the first-level cache while each field takes its column

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
    const int recordsInTile = int(std::max(tileSize / recordSize_, qint64(1)));
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
        storeRun<ByteOrder>(records, count, first);
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

template <class ByteOrder>
void NodeRecordTransposer::storeRun(const char* records, int count, int firstNode)
{
    for (const auto& [offset, values] : fields_) {
        growTo(*values, firstNode - 1 + count);
        double* const run = values->data() + firstNode - 1;
        const char* value = records + offset;
        for (int i = 0; i < count; ++i, value += recordSize_)
            run[i] = readValue<ByteOrder>(value);
    }
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

#include "NodeRecordTransposer.h"

#include <NereoFileIO/FieldVariable.h>

#include <QtEndian>

#include <algorithm>
#include <cstring>

namespace Nereo::Io {

namespace {

constexpr qint64 nodeSize = sizeof(qint32);
constexpr qint64 valueSize = sizeof(double);

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

bool isRun(const std::vector<int>& nodes)
{
    return std::adjacent_find(nodes.begin(), nodes.end(), [](int node, int next) { return next - 1 != node; })
        == nodes.end();
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
    if (byteOrder_ == QDataStream::LittleEndian)
        storeRecords<LittleEndian>(block, count);
    else
        storeRecords<BigEndian>(block, count);
}

template <class ByteOrder>
void NodeRecordTransposer::storeRecords(const char* records, int count)
{
    readNodes<ByteOrder>(records, count);
    const auto [smallest, largest] = std::minmax_element(nodes_.begin(), nodes_.end());
    if (*smallest < 1)
        stopAtNode(*smallest);
    if (*largest > nodeCount_)
        stopAtNode(*largest);

    const bool inOrder = isRun(nodes_);
    for (const auto& [offset, values] : fields_) {
        if (values->size() < *largest)
            values->resize(*largest);
        const char* value = records + offset;
        if (inOrder) {
            double* const run = values->data() + nodes_.front() - 1;
            for (int i = 0; i < count; ++i, value += recordSize_)
                run[i] = readValue<ByteOrder>(value);
        } else {
            double* const all = values->data();
            for (const int node : nodes_) {
                all[node - 1] = readValue<ByteOrder>(value);
                value += recordSize_;
            }
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

void NodeRecordTransposer::stopAtNode(int node)
{
    (*fields_.front().values)[std::max(node, 0) - 1] = 0.0; // no index of the vector, which says so
}

} // namespace Nereo::Io

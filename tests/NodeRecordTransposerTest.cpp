#include "support/Assertions.h"

#include "FileIO/NodeRecordTransposer.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <numeric>
#include <random>
#include <utility>
#include <vector>

namespace Nereo::Io {
namespace {

using Order = QDataStream::ByteOrder;
constexpr Order bothOrders[] = {QDataStream::LittleEndian, QDataStream::BigEndian};

// Records are taken 240 at a time, two by two, and their columns in fours, twos and ones.
constexpr int recordCounts[] = {1, 2, 3, 239, 240, 241, 242, 479, 480, 481, 720, 1001};
constexpr int columnCounts[] = {1, 2, 3, 4, 5, 6, 7, 8, 10, 40};

using Nodes = std::vector<int>;
using Fields = std::vector<QVector<double>>;

Nodes ascending(int count, int first = 1)
{
    Nodes nodes(std::size_t(count), 0);
    std::iota(nodes.begin(), nodes.end(), first);
    return nodes;
}

Nodes shuffled(int count)
{
    Nodes nodes = ascending(count);
    std::shuffle(nodes.begin(), nodes.end(), std::mt19937(20261121));
    return nodes;
}

/// Ascending but for two neighbours.
Nodes exchanged(int count, int position)
{
    Nodes nodes = ascending(count);
    if (position + 1 < count)
        std::swap(nodes[std::size_t(position)], nodes[std::size_t(position) + 1]);
    return nodes;
}

/// Tells where it comes from, and is nowhere 0.
double valueAt(std::size_t position, int column)
{
    return double(position) + 1.0 + column / 64.0;
}

QByteArray recordsOf(const Nodes& nodes, int columnCount, Order order)
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out.setByteOrder(order);
    for (std::size_t position = 0; position < nodes.size(); ++position) {
        out << qint32(nodes[position]);
        for (int column = 0; column < columnCount; ++column)
            out << valueAt(position, column);
    }
    return bytes;
}

/// The fields, value by value, of which the last record has only so many.
Fields expectedFields(const Nodes& nodes, int columnCount, int nodeCount, int valuesOfLast)
{
    Fields fields = Fields(std::size_t(columnCount), QVector<double>(nodeCount));
    for (std::size_t position = 0; position < nodes.size(); ++position) {
        for (int column = 0; column < columnCount; ++column) {
            const bool isThere = position + 1 < nodes.size() || column < valuesOfLast;
            fields[std::size_t(column)][nodes[position] - 1] = isThere ? valueAt(position, column) : 0.0;
        }
    }
    return fields;
}

Fields expectedFields(const Nodes& nodes, int columnCount, int nodeCount)
{
    return expectedFields(nodes, columnCount, nodeCount, columnCount);
}

Fields emptyFields(int count, int nodeCount)
{
    Fields fields(static_cast<std::size_t>(count));
    for (QVector<double>& values : fields)
        values.reserve(nodeCount);
    return fields;
}

/// What is stored of the first so many bytes of the records, which come in blocks of so many records.
Fields transposed(QByteArray records, int columnCount, int nodeCount, Order order, int recordsInBlock,
                  qint64 size)
{
    Fields fields = emptyFields(columnCount, nodeCount);
    NodeRecordTransposer transposer(columnCount, nodeCount, order);
    for (int column = 0; column < columnCount; ++column)
        transposer.addField(column, fields[std::size_t(column)]);
    const qint64 blockSize = recordsInBlock * transposer.recordSize();
    for (qint64 done = 0; done < size; done += blockSize)
        transposer.store(records.data() + done, std::min(blockSize, size - done));
    return fields; // given its full length by the end of the transposer
}

Fields transposed(const QByteArray& records, int columnCount, int nodeCount, Order order)
{
    return transposed(records, columnCount, nodeCount, order, 1'000'000, records.size());
}

TEST(NodeRecordTransposer, StoresAnyNumberOfRecordsAndColumns)
{
    for (const Order order : bothOrders) {
        for (const int count : recordCounts) {
            const std::pair<const char*, Nodes> arrangements[] = {
                {"ascending",      ascending(count)},
                {                      "from the middle of the mesh", ascending(count,             100)},
                {                      "shuffled", shuffled(count)                },
                { "exchanged within 240",            exchanged(count,                            238)},
                { "exchanged across 240",            exchanged(count,                            239)},
                { "exchanged behind 240",            exchanged(count,                            240)},
            };
            for (const auto& [name, nodes] : arrangements) {
                for (const int columns : columnCounts) {
                    const int nodeCount = 99 + count;
                    EXPECT_EQ(transposed(recordsOf(nodes, columns, order), columns, nodeCount, order),
                              expectedFields(nodes, columns, nodeCount))
                        << name << ", " << count << " x " << columns;
                }
            }
        }
    }
}

TEST(NodeRecordTransposer, StoresBlocksOfAnyNumberOfRecords)
{
    const Nodes nodes = ascending(1001);
    for (const Order order : bothOrders) {
        const QByteArray records = recordsOf(nodes, 7, order);
        for (const int recordsInBlock : {1, 2, 7, 239, 240, 241, 480, 481, 1000}) {
            EXPECT_EQ(transposed(records, 7, 1001, order, recordsInBlock, records.size()),
                      expectedFields(nodes, 7, 1001))
                << recordsInBlock;
        }
    }
}

TEST(NodeRecordTransposer, CompletesARecordThatIsCutAnywhere)
{
    constexpr int columns = 5;
    constexpr int recordSize = 4 + 8 * columns;
    for (const Order order : bothOrders) {
        for (const int count : {1, 2, 239, 240, 241, 480, 481}) {
            for (const Nodes& nodes : {ascending(count), shuffled(count)}) {
                const QByteArray records = recordsOf(nodes, columns, order);
                const Nodes wholeNodes(nodes.begin(), nodes.end() - 1);
                for (int rest = 0; rest < recordSize; ++rest) {
                    const Fields expected = rest < 4 ? expectedFields(wholeNodes, columns, count)
                                                     : expectedFields(nodes, columns, count, (rest - 4) / 8);
                    const qint64 size = records.size() - recordSize + rest;
                    EXPECT_EQ(transposed(records, columns, count, order, 1'000'000, size), expected)
                        << count << " records, the last of " << rest << " bytes";
                }
            }
        }
    }
}

TEST(NodeRecordTransposer, DropsTheColumnsWithoutAVector)
{
    constexpr int count = 481;
    constexpr int columnCount = 40;
    const Nodes nodes = ascending(count);
    const Fields expected = expectedFields(nodes, columnCount, count);
    const struct {
        int first;
        int distance;
        int count;
    } cases[] = {
        {0,  0,  0},
        {0,  0,  1},
        {39, 0,  1},
        {0,  39, 2},
        {0,  1,  5},
        {1,  2,  4},
        {3,  5,  7},
        {38, -9, 4}, // the last of them first
    };
    for (const Order order : bothOrders) {
        QByteArray records = recordsOf(nodes, columnCount, order);
        for (const auto& [first, distance, fieldCount] : cases) {
            Fields fields = emptyFields(fieldCount, count);
            {
                NodeRecordTransposer transposer(columnCount, count, order);
                for (int i = 0; i < fieldCount; ++i)
                    transposer.addField(first + i * distance, fields[std::size_t(i)]);
                transposer.store(records.data(), records.size());
            }
            for (int i = 0; i < fieldCount; ++i)
                EXPECT_EQ(fields[std::size_t(i)], expected[std::size_t(first + i * distance)]) << first;
        }
    }
}

TEST(NodeRecordTransposer, StoresEachFieldWhereItsMemoryIs)
{
    constexpr int count = 1001;
    Fields fields = emptyFields(5, count);
    std::vector<const double*> places;
    for (const QVector<double>& values : fields)
        places.push_back(values.constData());
    QByteArray records = recordsOf(ascending(count), 5, QDataStream::LittleEndian);
    {
        NodeRecordTransposer transposer(5, count, QDataStream::LittleEndian);
        for (int column = 0; column < 5; ++column)
            transposer.addField(column, fields[std::size_t(column)]);
        transposer.store(records.data(), records.size());
    }
    for (std::size_t i = 0; i < places.size(); ++i)
        EXPECT_EQ(fields[i].constData(), places[i]);
}

TEST(NodeRecordTransposer, WritesNothingBehindTheLastValue)
{
    for (const int count : recordCounts) {
        QVector<double> values(count + 1, -7.0);
        values.reserve(count + 1);
        values.resize(0); // leaves the memory as it is
        QByteArray records = recordsOf(ascending(count), 1, QDataStream::LittleEndian);
        {
            NodeRecordTransposer transposer(1, count, QDataStream::LittleEndian);
            transposer.addField(0, values);
            transposer.store(records.data(), records.size());
        }
        ASSERT_EQ(values.size(), count);
        EXPECT_EQ(values.constData()[count], -7.0) << count;
    }
}

TEST(NodeRecordTransposer, AsksForBlocksThatGrowWithTheRecords)
{
    const struct {
        int columns;
        qint64 blockSize;
    } cases[] = {
        {0,           128 * 1024         },
        {40,          128 * 1024         },
        {67,          128 * 1024         },
        {68,          240 * (4 + 8 * 68) }, // more than 128 KiB
        {272,         240 * (4 + 8 * 272)},
        {273,         512 * 1024         },
        {100'000'000, 512 * 1024         },
    };
    for (const auto& [columns, blockSize] : cases) {
        const NodeRecordTransposer transposer(columns, 1, QDataStream::LittleEndian);
        EXPECT_EQ(transposer.blockSize(), blockSize) << columns;
    }
}

TEST(NodeRecordTransposerDeathTest, StopsAtANodeThatIsNotThereWhereverItComes)
{
    for (const int position : {0, 1, 238, 239, 240, 241, 479, 480}) {
        for (const int node : {0, -1, 482}) {
            Nodes nodes = ascending(481);
            nodes[std::size_t(position)] = node;
            const QByteArray records = recordsOf(nodes, 3, QDataStream::LittleEndian);
            EXPECT_INDEX_ASSERTION(transposed(records, 3, 481, QDataStream::LittleEndian),
                                   "QVector<T>::operator[]", "FileIO/NodeRecordTransposer");
        }
    }
}

TEST(NodeRecordTransposerDeathTest, StopsWhereAscendingNodesLeaveTheMesh)
{
    for (const int nodeCount : {239, 240, 241, 479, 480}) {
        const QByteArray records = recordsOf(ascending(nodeCount + 1), 3, QDataStream::BigEndian);
        EXPECT_INDEX_ASSERTION(transposed(records, 3, nodeCount, QDataStream::BigEndian),
                               "QVector<T>::operator[]", "FileIO/NodeRecordTransposer");
    }
}

} // namespace
} // namespace Nereo::Io

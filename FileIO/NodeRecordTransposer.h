#pragma once

#include <NereoFileIO/Export.h>

#include <QDataStream>
#include <QVector>

#include <cstddef>
#include <functional>
#include <vector>

namespace Nereo::Io {

/// Turns records, one per node with a value for every field, into fields with a value for every node.
///
///     record   4 bytes      8 bytes      8 bytes
///              node number  value of     value of     …
///                           column 0     column 1
///
/// The records come in blocks of any number, in any order of the nodes. A field grows with the largest node
/// number so far, just before values go there, so that its memory is touched once and while it is in the
/// cache. The end of the transposer gives every field its full length, with zeros at the nodes that had no
/// record.
class NEREOFILEIO_EXPORT NodeRecordTransposer {
public:
    NodeRecordTransposer(int columnCount, int nodeCount, QDataStream::ByteOrder byteOrder);
    NodeRecordTransposer(const NodeRecordTransposer&) = delete;
    NodeRecordTransposer& operator=(const NodeRecordTransposer&) = delete;
    ~NodeRecordTransposer();

    /// Stores the values of a column, counted from 0, in the vector, which must be empty, have room for a
    /// value for each node, and outlive the transposer. Columns without a vector are dropped.
    void addField(int column, QVector<double>& values);

    /// Reads the values of a column for turn() only.
    void addColumn(int column);
    void dropColumns();

    /// Stores the nodes from the first to the last only, which are among those there are. The first value of
    /// a field is then that of the first node, and its vector needs room for no more than these.
    void storeOnly(int firstNode, int lastNode);

    /// What nodes without a record have, and the part of a record that is cut off, in place of 0.
    void setMissingValue(double value);

    /// Lets node numbers matter even where there are no fields.
    void requireNodes();

    qint64 recordSize() const;

    /// The number of bytes in a block that makes reading and storing records fastest, where a record isn't
    /// longer.
    qint64 blockSize() const;
    static qint64 blockSizeFor(qint64 recordSize);

    /// Stores the records in the first so many bytes of a block. The last one may be cut off: if its node
    /// number is whole, zeros are written over what is missing of it, so the block must go on behind the
    /// bytes to the end of that record. A node number outside 1 to the number of nodes stops the process
    /// where there are fields.
    void store(char* block, qint64 size);

    /// The same, but ends at a node number outside that range, and gives the place in the block of the first
    /// record with one; -1 where there is none.
    qint64 storeUpToBadNode(char* block, qint64 size);

    int nodeAt(const char* record) const; ///< which is whole as far as its number

    /// Forgets the fields, whose lengths stay as they are.
    void abandon();

    /// Gives whole records to a function in runs of at most recordsInRun: first their nodes, then the values
    /// of each column in the order in which these were added, which the function may change.
    static constexpr int recordsInRun = 240;
    using TakeNodes = std::function<void(const int* nodes, int count)>;
    using TakeColumn = std::function<void(std::size_t index, double* values)>;
    void turn(const char* records, int count, const TakeNodes& takeNodes, const TakeColumn& takeColumn);

private:
    struct Field {
        qint64 offset; // of its value in a record
        QVector<double>* values;
    };

    int completeLast(char* block, qint64 size) const;
    qint64 placeOfBadNode(const char* records) const;
    void growTo(QVector<double>& values, int size) const;
    template <class ByteOrder>
    bool storeRecords(const char* records, int count);
    template <class ByteOrder>
    bool isRunOfNodes(const char* records, int count) const;
    /// Stores ascending nodes in the fields from one on: so many at a time, then half as many, down to 1.
    template <class ByteOrder, std::size_t width>
    void storeRun(const char* records, int count, int firstNode, std::size_t field);
    template <class ByteOrder>
    bool storeScattered(const char* records, int count);
    template <class ByteOrder>
    void storeWanted(const char* records, int largestNode);
    template <class ByteOrder>
    void turnRun(const char* records, int count, const TakeNodes& takeNodes, const TakeColumn& takeColumn);
    template <class ByteOrder, std::size_t width>
    void turnColumns(const char* records, int count, std::size_t first, const TakeColumn& takeColumn);
    template <class ByteOrder>
    void readNodes(const char* records, int count);

    qint64 recordSize_;
    int nodeCount_;
    QDataStream::ByteOrder byteOrder_;
    int firstNode_ = 1; // that is stored
    int lastNode_;
    double missingValue_ = 0.0;
    bool areNodesRequired_ = false;
    std::vector<Field> fields_;
    std::vector<qint64> columns_; // by the offset of a value in a record
    std::vector<int> nodes_;      // the numbers in the block, kept for all of its columns
};

} // namespace Nereo::Io

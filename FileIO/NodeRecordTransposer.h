#pragma once

#include <NereoFileIO/Export.h>

#include <QDataStream>
#include <QVector>

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

    qint64 recordSize() const;

    /// The number of bytes in a block that makes reading and storing records fastest, where a record isn't
    /// longer.
    qint64 blockSize() const;

    /// Stores the records in the first so many bytes of a block. The last one may be cut off: if its node
    /// number is whole, zeros are written over what is missing of it, so the block must go on behind the
    /// bytes to the end of that record. A node number outside 1 to the number of nodes stops the process
    /// where there are fields.
    void store(char* block, qint64 size);

private:
    struct Field {
        qint64 offset; // of its value in a record
        QVector<double>* values;
    };

    template <class ByteOrder>
    void storeRecords(const char* records, int count);
    template <class ByteOrder>
    bool isRunOfNodes(const char* records, int count) const;
    /// Stores ascending nodes in the fields from one on: so many at a time, then half as many, down to 1.
    template <class ByteOrder, std::size_t width>
    void storeRun(const char* records, int count, int firstNode, std::size_t field);
    template <class ByteOrder>
    void storeScattered(const char* records, int count);
    template <class ByteOrder>
    void readNodes(const char* records, int count);

    qint64 recordSize_;
    int nodeCount_;
    QDataStream::ByteOrder byteOrder_;
    std::vector<Field> fields_;
    std::vector<int> nodes_; // the numbers in the block, kept for all of its columns
};

} // namespace Nereo::Io

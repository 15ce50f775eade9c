#pragma once

#include <QByteArray>
#include <QVector>

#include <map>
#include <string>

/// A second, plain reading of a results file of any bytes, straight down from the description of the format:
/// what it finds is what the library has to find. It is for small files, and slow.
class PlainResults {
public:
    /// How the reading of a file ends. At a contradiction a plain load stops the process.
    enum End {
        Whole,
        CutShort,
        WithoutMarker, ///< or too short for the first one
        NegativeFieldCount,
        NegativeNodeCount, ///< behind a known name
        RepeatedField,
        NodeOutOfRange
    };

    enum Treatment {
        AsItIs,
        PutRight, ///< so that nothing contradicts itself, and with at most 100,000 nodes where a field is
                  ///< known
    };

    explicit PlainResults(const QByteArray& bytes, Treatment treatment = AsItIs);

    const QByteArray& bytes() const { return bytes_; } ///< as they were read
    End end() const { return end_; }
    qint64 endOffset() const { return endOffset_; } ///< of what is wrong, or of the end of a short file

    qint32 integerAt(qint64 place) const; ///< 0 where it isn't wholly there, as the next
    double numberAt(qint64 place) const;
    std::string textAt(qint64 place, int size) const;

    qint32 nodeCount() const { return integerAt(298); }
    qint32 fieldCount() const { return hasMarkers_ ? integerAt(346) : 0; }
    bool hasMarkers() const { return hasMarkers_; }
    int wholeRecords() const { return wholeRecords_; }
    int recordsAnnounced() const;
    qint64 bytesAnnounced() const; ///< -1 where nothing is announced; of counts that are small

    /// The known fields by code, each with the column that it has.
    const std::map<int, qint64>& columns() const { return columns_; }

    /// The values of a known field for the nodes from the first to the last.
    QVector<double> values(int code, int firstNode, int lastNode, double missing) const;

    /// The node number of each record whose number is there, in order; also outside the range.
    const QVector<qint32>& nodes() const { return nodes_; }
    qint64 recordOffset(int record) const;

private:
    bool has(qint64 place, qint64 size) const { return place + size <= bytes_.size(); }
    template <class Number>
    Number bits(qint64 place) const;
    void setIntegerAt(qint64 place, qint32 number);

    void stop(End end, qint64 offset);
    void read();
    void readNames();
    void readName(qint64 column);
    void readRecords();

    QByteArray bytes_;
    Treatment treatment_;
    bool isLittleEndian_ = false; // the first word is big-endian in every file
    bool hasMarkers_ = false;
    End end_ = Whole;
    qint64 endOffset_ = 0;
    int wholeRecords_ = 0;
    std::map<int, qint64> columns_;
    QVector<qint32> nodes_;
};

#pragma once

#include <QByteArray>
#include <QMap>
#include <QVector>

/// A results file of any bytes, put right where it would stop the process, with the fields that are in it.
///
/// The walk over the bytes is a second, plain reading of the format: what it finds is what a load has to
/// give.
class ResultsInput {
public:
    explicit ResultsInput(const QByteArray& bytes);

    const QByteArray& bytes() const { return bytes_; }
    const QMap<int, QVector<double>>& fields() const { return fields_; } ///< by code
    qint64 announcedBytes() const { return qint64(fields_.size()) * nodeCount_ * qint64(sizeof(double)); }

private:
    bool holds(qint64 place, qint64 size) const { return place + size <= bytes_.size(); }
    template <class Number>
    Number numberAt(qint64 place) const;
    void setIntAt(qint64 place, qint32 number);

    bool hasMarkers() const;
    void walkNames();
    void limitNodeCount();
    void walkRecords();
    void walkRecord(qint64 place);

    QByteArray bytes_;
    bool isLittleEndian_ = false;
    qint32 fieldCount_ = 0;
    qint32 nodeCount_ = 0;
    QMap<int, int> codeOfColumn_; // the known fields
    QMap<int, QVector<double>> fields_;
};

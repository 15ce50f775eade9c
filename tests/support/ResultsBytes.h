#pragma once

#include <QByteArray>
#include <QDataStream>

#include <string>

/// Builds the bytes of a results file, item by item, in either byte order.
class ResultsBytes {
public:
    explicit ResultsBytes(QDataStream::ByteOrder order = QDataStream::LittleEndian)
        : order_(QDataStream::BigEndian)
    {
        integer(order == QDataStream::BigEndian ? 1 : 0); // in big-endian order, whatever follows
        order_ = order;
    }

    ResultsBytes& integer(qint32 value) { return append(value); }

    ResultsBytes& number(double value) { return append(value); }

    /// A text in a run of bytes of fixed size, padded with NULs.
    ResultsBytes& text(const std::string& text, int size)
    {
        bytes_ += QByteArray::fromStdString(text).leftJustified(size, '\0', true);
        return *this;
    }

    /// Everything up to the field block, with values that tell the items apart.
    ResultsBytes& header(qint32 nodeCount, qint32 marker = -1)
    {
        integer(2023).integer(1).integer(7);
        text("2024-05-18 14:22:47", 26).text("Lid-driven cavity", 256);
        return integer(nodeCount).integer(77).integer(marker);
    }

    ResultsBytes& run(qint32 marker = -1)
    {
        integer(500).integer(100).integer(8).integer(3); // iterations and time steps, the current one first
        return number(1.25).number(0.125).integer(marker);
    }

    /// The field block up to the records.
    ResultsBytes& names(std::initializer_list<const char*> names)
    {
        integer(qint32(names.size()));
        for (const char* name : names)
            text(name, 21);
        return integer(4711); // means nothing
    }

    ResultsBytes& record(qint32 node, std::initializer_list<double> values)
    {
        integer(node);
        for (const double value : values)
            number(value);
        return *this;
    }

    QByteArray bytes() const { return bytes_; }
    operator QByteArray() const { return bytes_; }

private:
    template <class Number>
    ResultsBytes& append(Number number)
    {
        QDataStream stream(&bytes_, QIODevice::Append);
        stream.setByteOrder(order_);
        stream << number;
        return *this;
    }

    QByteArray bytes_;
    QDataStream::ByteOrder order_;
};

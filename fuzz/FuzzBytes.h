#pragma once

#include <QByteArray>
#include <QString>

#include <cstring>
#include <iterator>

/// Takes values off the bytes that a fuzzer makes up, from their start. What is past their end is zero.
class FuzzBytes {
public:
    explicit FuzzBytes(const QByteArray& bytes) : bytes_(bytes) {}

    bool atEnd() const { return place_ >= bytes_.size(); }

    template <class Number>
    Number number()
    {
        Number number {};
        const QByteArray run = take(sizeof number);
        std::memcpy(&number, run.constData(), std::size_t(run.size()));
        return number;
    }

    bool flag() { return number<quint8>() % 2 == 1; }

    /// One of 0 to count - 1; count is 65,536 at most.
    int choice(int count) { return number<quint16>() % count; }

    /// One of the items of an array or list.
    template <class Items>
    const auto& item(const Items& items)
    {
        return *std::next(std::begin(items), choice(int(std::size(items))));
    }

    /// Often a number that people write, otherwise any of all 2^64, infinite ones and no numbers among them.
    double real()
    {
        switch (choice(3)) {
        case 0:
            return number<qint16>();
        case 1:
            return number<qint32>() / 1000.0;
        default:
            return number<double>();
        }
    }

    /// A text of any characters but byte order marks, which texts lose where they begin.
    QString text() { return QString::fromUtf8(take(number<quint8>())).remove(QChar::ByteOrderMark); }

private:
    QByteArray take(std::size_t size)
    {
        const QByteArray run = bytes_.mid(place_, int(size));
        place_ += run.size();
        return run;
    }

    QByteArray bytes_;
    int place_ = 0;
};

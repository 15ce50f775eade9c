#include "PlainResults.h"

#include "Bits.h"

#include <NereoFileIO/CodeNameTable.h>
#include <NereoFileIO/FieldVariable.h>

#include <QtEndian>

#include <algorithm>
#include <limits>

using Nereo::Io::CodeNameTable;
using Nereo::Io::kNone;

namespace {

constexpr int mostNodes = 100000;
constexpr int fewNodes = 1000; // what a number that is no count most often becomes, so that loads stay fast

} // namespace

PlainResults::PlainResults(const QByteArray& bytes, Treatment treatment)
    : bytes_(bytes), treatment_(treatment)
{
    isLittleEndian_ = integerAt(0) == 0;
    read();
}

void PlainResults::read()
{
    const bool isHeaderMarked = integerAt(306) == -1;
    hasMarkers_ = isHeaderMarked && integerAt(342) == -1;
    if (!isHeaderMarked || (!hasMarkers_ && has(342, 4)))
        return stop(WithoutMarker, has(310, 0) ? (isHeaderMarked ? 342 : 306) : bytes_.size());
    if (!has(346, 4))
        return stop(CutShort, bytes_.size());
    if (treatment_ == PutRight)
        setIntegerAt(346, fieldCount() & std::numeric_limits<qint32>::max());
    if (fieldCount() < 0)
        return stop(NegativeFieldCount, 346);
    readNames();
    if (treatment_ == PutRight && !columns_.empty() && (nodeCount() < 0 || nodeCount() > mostNodes))
        setIntegerAt(298, (nodeCount() & std::numeric_limits<qint32>::max()) % fewNodes);
    if (end_ == Whole)
        readRecords();
}

template <class Number>
Number PlainResults::bits(qint64 place) const
{
    if (!has(place, sizeof(Number)))
        return 0;
    const char* const at = bytes_.constData() + place;
    return isLittleEndian_ ? qFromLittleEndian<Number>(at) : qFromBigEndian<Number>(at);
}

qint32 PlainResults::integerAt(qint64 place) const
{
    return bits<qint32>(place);
}

double PlainResults::numberAt(qint64 place) const
{
    return fromBits(bits<quint64>(place));
}

std::string PlainResults::textAt(qint64 place, int size) const
{
    const QByteArray text = has(place, 0) ? bytes_.mid(int(place), size).split('\0').first() : QByteArray();
    return QString::fromUtf8(text).toStdString();
}

void PlainResults::setIntegerAt(qint64 place, qint32 number)
{
    char* const at = bytes_.data() + place;
    isLittleEndian_ ? qToLittleEndian(number, at) : qToBigEndian(number, at);
}

/// The first reason to stop counts.
void PlainResults::stop(End end, qint64 offset)
{
    if (end_ != Whole)
        return;
    end_ = end;
    endOffset_ = offset;
}

void PlainResults::readNames()
{
    for (qint64 column = 0; column < fieldCount() && has(350 + 21 * column, 1) && end_ == Whole; ++column)
        readName(column);
}

void PlainResults::readName(qint64 column)
{
    const qint64 place = 350 + 21 * column;
    const QByteArray name = bytes_.mid(int(place), 21).split('\0').first();
    const int code = CodeNameTable::instance().codeForName(QString::fromLatin1(name));
    if (code == kNone)
        return;
    const bool isRepeated = columns_.count(code) != 0;
    if (isRepeated && has(place, 21) && treatment_ == PutRight)
        bytes_[int(place)] = '\0';
    else if (isRepeated && has(place, 21)) // one that is cut off is no field
        stop(RepeatedField, place);
    else if (!isRepeated && nodeCount() < 0 && treatment_ == AsItIs)
        stop(NegativeNodeCount, 298);
    else if (!isRepeated)
        columns_.emplace(code, column);
}

void PlainResults::readRecords()
{
    const qint64 recordSize = 4 + qint64(8) * fieldCount();
    for (int record = 0; record < recordsAnnounced() && has(recordOffset(record), 4); ++record) {
        const qint64 place = recordOffset(record);
        const bool isThere = integerAt(place) >= 1 && integerAt(place) <= nodeCount();
        if (!isThere && treatment_ == PutRight && !columns_.empty())
            setIntegerAt(place, 1 + (integerAt(place) & std::numeric_limits<qint32>::max()) % nodeCount());
        else if (!isThere && !columns_.empty())
            stop(NodeOutOfRange, place);
        nodes_.append(integerAt(place));
        wholeRecords_ += has(place, recordSize);
    }
    // Hostile counts are so large that their product overflows.
    if (!has(recordOffset(0), 0) || recordsAnnounced() > (bytes_.size() - recordOffset(0)) / recordSize)
        stop(CutShort, bytes_.size());
}

int PlainResults::recordsAnnounced() const
{
    return std::max(nodeCount(), 0);
}

qint64 PlainResults::bytesAnnounced() const
{
    if (!hasMarkers_ || !has(346, 4) || fieldCount() < 0)
        return -1;
    return recordOffset(0) + (4 + qint64(8) * fieldCount()) * recordsAnnounced();
}

qint64 PlainResults::recordOffset(int record) const
{
    return 354 + 21 * qint64(fieldCount()) + (4 + 8 * qint64(fieldCount())) * record;
}

QVector<double> PlainResults::values(int code, int firstNode, int lastNode, double missing) const
{
    QVector<double> values(std::max(lastNode - firstNode + 1, 0), missing);
    for (int record = 0; record < nodes_.size(); ++record) {
        const qint32 node = nodes_[record];
        if (node < firstNode || node > lastNode)
            continue;
        const qint64 place = recordOffset(record) + 4 + 8 * columns_.at(code);
        values[node - firstNode] = has(place, 8) ? numberAt(place) : missing;
    }
    return values;
}

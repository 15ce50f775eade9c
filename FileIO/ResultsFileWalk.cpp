#include "ResultsFileWalk.h"

#include "ResultsProgressMeter.h"

#include <NereoFileIO/CodeNameTable.h>
#include <NereoUtility/StringConversion.h>

#include <QtEndian>

#include <cstring>

namespace Nereo::Io {

namespace {

constexpr qint32 endMarker = -1;

/// So many bytes of a file, and the items at their places in it.
template <int size>
class Block {
public:
    explicit Block(ResultsFileWalk& walk)
        : start_(walk.position()), available_(walk.readAvailable(bytes_, size))
    {
    }

    void setByteOrder(QDataStream::ByteOrder byteOrder) { byteOrder_ = byteOrder; }

    qint32 intAt(int offset) const { return numberAt<qint32>(offset); }

    double doubleAt(int offset) const
    {
        const auto bits = numberAt<quint64>(offset);
        double value;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }

    /// The text in a run of bytes: it ends at the first NUL, or with the run, or with the file.
    std::string textAt(int offset, int length) const
    {
        const qint64 available = qBound(qint64(0), available_ - placeOf(offset), qint64(length));
        const char* const text = bytes_ + placeOf(offset);
        return Util::toStdString(QString::fromUtf8(text, int(qstrnlen(text, uint(available)))));
    }

    ResultsFileWalk::Marker markerAt(int offset) const
    {
        if (!holds<qint32>(offset))
            return ResultsFileWalk::Missing;
        return intAt(offset) == endMarker ? ResultsFileWalk::Right : ResultsFileWalk::Wrong;
    }

private:
    qint64 placeOf(int offset) const { return offset - start_; }

    template <class Number>
    bool holds(int offset) const
    {
        return placeOf(offset) + qint64(sizeof(Number)) <= available_;
    }

    /// A number, or 0 where it isn't wholly in the file.
    template <class Number>
    Number numberAt(int offset) const
    {
        if (!holds<Number>(offset))
            return 0;
        const char* const number = bytes_ + placeOf(offset);
        return byteOrder_ == QDataStream::LittleEndian ? qFromLittleEndian<Number>(number)
                                                       : qFromBigEndian<Number>(number);
    }

    char bytes_[size];
    qint64 start_;
    qint64 available_;
    QDataStream::ByteOrder byteOrder_ = QDataStream::BigEndian;
};

} // namespace

ResultsFileWalk::ResultsFileWalk(QDataStream& in) : in_(in) {}
ResultsFileWalk::ResultsFileWalk(QDataStream& in, ResultsProgressMeter& meter, qint64 position)
    : in_(in), meter_(&meter), position_(position)
{
}

ResultsFileWalk::Marker ResultsFileWalk::readHeader(ResultsFacts& facts)
{
    Block<ResultsLayout::headerSize> block(*this);
    facts.byteOrder = block.intAt(0) == 0 ? QDataStream::LittleEndian : QDataStream::BigEndian;
    block.setByteOrder(facts.byteOrder);
    in_.setByteOrder(facts.byteOrder);
    constexpr int version = ResultsLayout::versionOffset;
    facts.version =
        Util::Version(block.intAt(version), block.intAt(version + 4), block.intAt(version + 8), 0);
    facts.dateTimeString = block.textAt(ResultsLayout::dateOffset, ResultsLayout::dateSize);
    facts.title = block.textAt(ResultsLayout::titleOffset, ResultsLayout::titleSize);
    facts.nodeCount = block.intAt(ResultsLayout::nodeCountOffset);
    facts.elementCount = block.intAt(ResultsLayout::elementCountOffset);
    return block.markerAt(ResultsLayout::headerMarkerOffset);
}

ResultsFileWalk::Marker ResultsFileWalk::readRunData(ResultsFacts& facts)
{
    Block<ResultsLayout::fieldCountOffset - ResultsLayout::headerSize> block(*this);
    block.setByteOrder(in_.byteOrder());
    facts.currentIteration = block.intAt(ResultsLayout::currentIterationOffset);
    facts.startingIteration = block.intAt(ResultsLayout::startingIterationOffset);
    facts.currentTimeStep = block.intAt(ResultsLayout::currentTimeStepOffset);
    facts.startingTimeStep = block.intAt(ResultsLayout::startingTimeStepOffset);
    facts.currentTime = block.doubleAt(ResultsLayout::currentTimeOffset);
    facts.timeStepSize = block.doubleAt(ResultsLayout::timeStepSizeOffset);
    return block.markerAt(ResultsLayout::runMarkerOffset);
}

int ResultsFileWalk::readInt()
{
    char bytes[sizeof(qint32)];
    if (readAvailable(bytes, sizeof bytes) < qint64(sizeof bytes))
        return 0;
    return in_.byteOrder() == QDataStream::LittleEndian ? qFromLittleEndian<qint32>(bytes)
                                                        : qFromBigEndian<qint32>(bytes);
}

bool ResultsFileWalk::readFieldName(int column, char* bytes, ResultsFieldName& name)
{
    const qint64 size = readAvailable(bytes, ResultsLayout::fieldNameSize);
    name.column = column;
    name.text = QLatin1String(bytes, int(qstrnlen(bytes, uint(size))));
    name.code = CodeNameTable::instance().codeForName(name.text);
    name.isWhole = size == ResultsLayout::fieldNameSize;
    return size > 0;
}

qint64 ResultsFileWalk::readAvailable(char* buffer, qint64 size)
{
    constexpr qint64 mostThatAnIntCounts = 1 << 30;
    const qint64 mostAtOnce = meter_ != nullptr ? ResultsProgressMeter::longestStep : mostThatAnIntCounts;
    qint64 done = 0;
    while (done < size && !hasEnded()) {
        const int count = std::max(in_.readRawData(buffer + done, int(std::min(size - done, mostAtOnce))), 0);
        done += count;
        position_ += count;
        if (meter_ != nullptr)
            meter_->advanceTo(position_);
    }
    return done;
}

bool ResultsFileWalk::hasEnded() const
{
    return in_.status() != QDataStream::Ok || (meter_ != nullptr && meter_->isCancelled());
}

} // namespace Nereo::Io

#include "RecordStream.h"

#include <algorithm>
#include <cstring>

namespace Nereo::Inspection {

namespace Layout = Io::ResultsLayout;

namespace {

QDataStream::ByteOrder byteOrderOf(const Io::ResultsFileHeader& header)
{
    return header.byteOrder() == Io::ResultsFileHeader::LittleEndian ? QDataStream::LittleEndian
                                                                     : QDataStream::BigEndian;
}

} // namespace

int recordsThere(const Io::ResultsFileHeader& header)
{
    const bool isAnyThere = header.isResultsFile() && header.recordSize() > 0
        && header.bytesThere() >= header.recordsOffset() + Layout::nodeSize;
    return isAnyThere ? int(std::min(qint64(header.recordsAnnounced()), header.wholeRecords() + qint64(1)))
                      : 0;
}

RecordStream::RecordStream(const InputFile& file, const Io::ResultsFileHeader& header,
                           const std::vector<int>& columns, int recordsInBlock)
    : file_(file), device_(file.open(QIODevice::NotOpen)), in_(device_.get()), walk_(in_),
      transposer_(header.fieldCount(), header.nodeCount(), byteOrderOf(header)),
      recordsOffset_(header.recordsOffset()), recordsLeft_(recordsThere(header)),
      recordsInBlock_(std::min(recordsInBlock, std::max(recordsLeft_, 1)))
{
    for (const int column : columns)
        transposer_.addColumn(column);
    device_->seek(recordsOffset_);
}

int RecordStream::readBlock()
{
    const qint64 recordSize = transposer_.recordSize();
    const int wanted = std::min(recordsInBlock_, recordsLeft_);
    if (wanted == 0)
        return 0;
    block_.resize(std::size_t(recordsInBlock_ * recordSize));
    const qint64 size = walk_.readAvailable(block_.data(), wanted * recordSize);
    if (size == wanted * recordSize) {
        recordsLeft_ -= wanted;
        return wanted;
    }
    recordsLeft_ = 0;
    const qint64 end = recordsOffset_ + walk_.position();
    hasFailed_ = InputFile::hasFailed(*device_) || end < device_->size(); // unless it has been cut meanwhile

    const auto whole = int(size / recordSize);
    const qint64 rest = size % recordSize;
    if (rest < Layout::nodeSize)
        return whole;
    const qint64 wholeValues = (rest - Layout::nodeSize) / Layout::valueSize;
    char* const record = block_.data() + whole * recordSize;
    std::memset(record + Layout::valueOffset(wholeValues), 0,
                std::size_t(recordSize - Layout::valueOffset(wholeValues)));
    return whole + 1;
}

void RecordStream::turn(int first, int count, const Io::NodeRecordTransposer::TakeNodes& takeNodes,
                        const Io::NodeRecordTransposer::TakeColumn& takeColumn)
{
    transposer_.turn(block_.data() + first * transposer_.recordSize(), count, takeNodes, takeColumn);
}

int recordsAtOnce(qint64 recordSize)
{
    return int(std::max(Io::NodeRecordTransposer::blockSizeFor(recordSize) / recordSize, qint64(1)));
}

} // namespace Nereo::Inspection

#include "ResultsPair.h"

#include <FileIO/ResultsProgressMeter.h>

namespace Nereo::Inspection {

int ResultsPair::recordsInBlock() const
{
    return recordsAtOnce(std::max(a.header().recordSize(), b.header().recordSize()));
}

qint64 ResultsPair::bytesOfBlocks() const
{
    const auto bytesOf = [this](const ResultsSide& side) {
        return std::min(recordsInBlock(), recordsThere(side.header())) * side.header().recordSize();
    };
    return bytesOf(a) + bytesOf(b);
}

std::vector<int> ResultsPair::columns(int ComparedField::*side, std::size_t first, std::size_t count) const
{
    std::vector<int> columns;
    columns.reserve(count);
    for (std::size_t i = first; i < first + count; ++i)
        columns.push_back(fields[i].*side);
    return columns;
}

int ResultsPair::readBlock(RecordStream& records)
{
    const qint64 before = records.bytesRead();
    const int count = records.readBlock();
    if (records.hasFailed()) {
        end(Comparison::Outcome::CannotOpen, records.path(),
            QLatin1String("the file can't be read to its end: ") + records.errorString());
        throw Stop();
    }
    bytesDone_ += records.bytesRead() - before;
    if (!meter_.advanceTo(bytesDone_))
        throw Stop();
    return count;
}

void ResultsPair::expectBytes(qint64 count)
{
    meter_.setBytesInAll(bytesDone_ + count);
}

bool ResultsPair::end(Comparison::Outcome outcome, const std::string& file, const QString& message)
{
    comparison_.outcome = outcome;
    comparison_.file = file;
    comparison_.message = message;
    return false;
}

} // namespace Nereo::Inspection

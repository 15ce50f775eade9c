#include "ResultsSession.h"

#include "ResultsDevice.h"
#include "ResultsFileHeaderReader.h"

#include <algorithm>

namespace Nereo::Io {

ResultsSession::ResultsSession(QDataStream& in, const ResultsDevice* file, const ResultsProgress& progress,
                               int mostListed)
    : file_(file), meter_(progress), walk_(in, meter_)
{
    const qint64 bytesThere = in.device()->isSequential() ? -1 : in.device()->size();
    meter_.setBytesInAll(bytesThere);
    ResultsFileHeaderReader(header_, mostListed).read(walk_, bytesThere);
    const qint64 announced = header_.bytesAnnounced();
    if (bytesThere < 0 || (announced >= 0 && announced < bytesThere))
        meter_.setBytesInAll(announced);
}

ResultsLoadResult ResultsSession::result() const
{
    ResultsLoadResult result;
    result.recordsAnnounced = header_.recordsAnnounced();
    if (header_.recordSize() > 0) {
        const qint64 bytes = std::max(walk_.position() - header_.recordsOffset(), qint64(0));
        result.wholeRecords = int(bytes / header_.recordSize());
    }

    const bool isTooShort = walk_.position() < ResultsLayout::fieldNamesOffset;
    if (walk_.hasEnded() && file_ != nullptr && file_->hasFailed()) {
        result.outcome = ResultsLoadResult::ReadFailed;
        result.problem = {ResultsProblem::ReadFailed, walk_.position()};
    } else if (!header_.isResultsFile()) {
        result.outcome = ResultsLoadResult::NoResultsFile;
        result.problem = header_.problems().front();
    } else if (walk_.hasEnded()) {
        result.outcome = ResultsLoadResult::CutShort;
        result.problem = {isTooShort ? ResultsProblem::TooShort : ResultsProblem::CountsPastTheFile,
                          walk_.position()};
    } else {
        result.outcome = ResultsLoadResult::Loaded;
    }
    return result;
}

ResultsLoadResult ResultsSession::finish(const ResultsLoadResult& result)
{
    if (!meter_.isCancelled() && (!result.isLoaded() || meter_.finish()))
        return result;
    ResultsLoadResult cancelled;
    cancelled.outcome = ResultsLoadResult::Cancelled;
    return cancelled;
}

} // namespace Nereo::Io

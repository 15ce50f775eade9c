#include "ResultsProgressMeter.h"

#include <algorithm>

namespace Nereo::Io {

namespace {

constexpr std::chrono::milliseconds shortestPause {10};
constexpr qint64 mostBetweenCalls = 64 * 1024 * 1024;
constexpr qint64 mostBetweenLooks = 64 * 1024; // names are 21 bytes long, and the clock takes as long as one

} // namespace

ResultsProgressMeter::ResultsProgressMeter(const ResultsProgress& progress)
    : progress_(progress), lastCall_(progress ? Clock::now() : Clock::time_point())
{
}

void ResultsProgressMeter::setBytesInAll(qint64 bytes)
{
    bytesInAll_ = bytes;
}

void ResultsProgressMeter::beginAgain()
{
    bytesBefore_ = bytesDone_;
}

bool ResultsProgressMeter::advanceTo(qint64 bytesDone)
{
    bytesDone_ = bytesBefore_ + bytesDone;
    if (isCancelled_ || !progress_ || bytesDone_ - bytesAtLook_ < mostBetweenLooks)
        return !isCancelled_;
    bytesAtLook_ = bytesDone_;
    const Clock::time_point now = Clock::now();
    const bool isDue = bytesDone_ + longestStep - bytesAtCall_ > mostBetweenCalls;
    return isDue || now - lastCall_ >= shortestPause ? call(now) : true;
}

bool ResultsProgressMeter::finish()
{
    return !isCancelled_ && (!progress_ || call(Clock::now()));
}

bool ResultsProgressMeter::call(Clock::time_point now)
{
    lastCall_ = now;
    bytesAtCall_ = bytesDone_;
    isCancelled_ = !progress_(bytesDone_, std::max(bytesInAll_, bytesDone_)); // the file may have grown
    return !isCancelled_;
}

} // namespace Nereo::Io

#pragma once

#include <NereoFileIO/Export.h>
#include <NereoFileIO/ResultsLoadOptions.h>

#include <chrono>

namespace Nereo::Io {

/// Calls a progress function as often as it is promised to be called, however often this is told of progress.
class NEREOFILEIO_EXPORT ResultsProgressMeter {
public:
    /// What may be read between two calls of advanceTo().
    static constexpr qint64 longestStep = 1024 * 1024;

    explicit ResultsProgressMeter(const ResultsProgress& progress);

    void setBytesInAll(qint64 bytes);

    void beginAgain(); ///< with a file that is read once more, which counts too

    bool advanceTo(qint64 bytesDone); ///< false from the moment on when the function has cancelled
    bool finish();                    ///< the last call, likewise

    bool isCancelled() const { return isCancelled_; }

private:
    using Clock = std::chrono::steady_clock;

    bool call(Clock::time_point now);

    const ResultsProgress& progress_;
    qint64 bytesInAll_ = 0;
    qint64 bytesBefore_ = 0; // those that it was read before
    qint64 bytesDone_ = 0;
    qint64 bytesAtLook_ = 0; // at the clock
    qint64 bytesAtCall_ = 0;
    Clock::time_point lastCall_;
    bool isCancelled_ = false;
};

} // namespace Nereo::Io

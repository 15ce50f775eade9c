#pragma once

#include "ResultsFileWalk.h"
#include "ResultsProgressMeter.h"

#include <NereoFileIO/ResultsFileHeader.h>
#include <NereoFileIO/ResultsLoadResult.h>

#include <QDataStream>

namespace Nereo::Io {

class ResultsDevice;

/// What every new way into a results file does: it reads the header, walks on from there, tells of its
/// progress, and says in the end what became of it.
class ResultsSession {
public:
    /// Reads the header from a stream on the file, or on another device, of which every short read is its
    /// end.
    ResultsSession(QDataStream& in, const ResultsDevice* file, const ResultsProgress& progress,
                   int mostListed);

    const ResultsFileHeader& header() const { return header_; }
    ResultsFileWalk& walk() { return walk_; }
    ResultsProgressMeter& meter() { return meter_; }

    ResultsLoadResult result() const; ///< so far

    /// What the session comes to, after the last call of the progress function.
    ResultsLoadResult finish(const ResultsLoadResult& result);

private:
    const ResultsDevice* file_;
    ResultsProgressMeter meter_;
    ResultsFileWalk walk_;
    ResultsFileHeader header_;
};

} // namespace Nereo::Io

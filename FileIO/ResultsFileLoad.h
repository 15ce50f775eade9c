#pragma once

#include <NereoFileIO/Export.h>
#include <NereoFileIO/ResultsFileHeader.h>
#include <NereoFileIO/ResultsLoadOptions.h>
#include <NereoFileIO/ResultsLoadResult.h>

#include <QDataStream>

#include <vector>

namespace Nereo::Io {

class NodeRecordTransposer;
class ResultsDevice;
class ResultsFile;
class ResultsFileWalk;
class ResultsProgressMeter;

/// Loads what the options say into a results file that is new. Where the result is none that is loaded, what
/// that holds afterwards is of no use.
class NEREOFILEIO_EXPORT ResultsFileLoad {
public:
    ResultsFileLoad(ResultsFile& results, const ResultsLoadOptions& options);

    /// From a stream on the file, or on another device, of which every short read is its end.
    ResultsLoadResult read(QDataStream& in, const ResultsDevice* file = nullptr);

private:
    void readHeader(ResultsFileWalk& walk, ResultsProgressMeter& meter, qint64 bytesThere);
    void conclude(const ResultsFileWalk& walk);
    void end(ResultsLoadResult::Outcome outcome, const ResultsProblem& problem);
    bool isFreeOfContradictions();
    bool isWithinLimit();
    bool isWanted(int code) const;
    qint64 memoryNeeded() const;
    void keepFacts();
    void readValues(ResultsFileWalk& walk);
    void readRecords(ResultsFileWalk& walk, NodeRecordTransposer& transposer);

    ResultsFile* results_;
    const ResultsLoadOptions* options_;
    const ResultsDevice* file_ = nullptr;
    ResultsLoadResult result_;
    ResultsFileHeader header_;
    std::vector<const ResultsFileHeader::Field*> fields_; // the wanted ones
    int firstNode_ = 1;                                   // of those that are stored
    int lastNode_ = 0;
};

} // namespace Nereo::Io

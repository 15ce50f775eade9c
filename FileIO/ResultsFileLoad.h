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
class ResultsSession;

/// Loads what the options say into a results file that is new. Where the result is none that is loaded, what
/// that holds afterwards is of no use.
class NEREOFILEIO_EXPORT ResultsFileLoad {
public:
    ResultsFileLoad(ResultsFile& results, const ResultsLoadOptions& options);

    /// From a stream on the file, or on another device, of which every short read is its end.
    ResultsLoadResult read(QDataStream& in, const ResultsDevice* file = nullptr);

private:
    void end(ResultsLoadResult::Outcome outcome, const ResultsProblem& problem);
    bool isFreeOfContradictions();
    bool isWithinLimit(bool hasRecords);
    bool isWanted(int code) const;
    qint64 memoryNeeded(bool hasRecords) const;
    void keepFacts();
    void readValues(ResultsSession& session);
    void readRecords(ResultsSession& session, NodeRecordTransposer& transposer);

    ResultsFile* results_;
    const ResultsLoadOptions* options_;
    ResultsLoadResult result_;
    const ResultsFileHeader* header_ = nullptr;
    std::vector<const ResultsFileHeader::Field*> fields_; // the wanted ones
    int firstNode_ = 1;                                   // of those that are stored
    int lastNode_ = 0;
};

} // namespace Nereo::Io

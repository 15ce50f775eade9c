#pragma once

#include "FieldStatistics.h"
#include "NodeMarks.h"
#include "NodeRecordTransposer.h"

#include <NereoFileIO/Export.h>
#include <NereoFileIO/ResultsScan.h>

#include <QDataStream>

#include <optional>
#include <vector>

namespace Nereo::Io {

class ResultsDevice;
class ResultsFileWalk;
class ResultsSession;

/// Scans a results file into an object that is new. Where the result isn't that the file was read, what that
/// holds afterwards is of no use.
class NEREOFILEIO_EXPORT ResultsFileScan {
public:
    ResultsFileScan(ResultsScan& scan, ResultsScan::Part part, ResultsProgress progress);

    /// From a stream on the file, or on another device, of which every short read is its end.
    ResultsLoadResult read(QDataStream& in, const ResultsDevice* file = nullptr);

    /// How many nodes are looked at together, beside those that the file has room for; of fewer there are
    /// tests.
    void setNodesTogether(qint64 count);

private:
    void prepare();
    void readRecords(ResultsFileWalk& walk);
    void takeBlock(const char* block, qint64 size, qint64 offset);
    void readAgain(QDataStream& in, ResultsSession& session);
    void keepFindings();

    ResultsScan* scan_;
    ResultsScan::Part part_;
    ResultsProgress progress_;
    qint64 nodesTogether_;
    const ResultsFileHeader* header_ = nullptr;
    std::optional<NodeRecordTransposer> transposer_;
    std::optional<NodeMarks> marks_;
    std::vector<FieldStatistics>
        statistics_;   // by the place of the field in the header's list; empty later on
    RecordRun run_ {}; // of the values that come
};

} // namespace Nereo::Io

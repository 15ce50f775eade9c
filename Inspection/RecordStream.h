#pragma once

#include "InputFile.h"

#include <FileIO/NodeRecordTransposer.h>
#include <FileIO/ResultsFileWalk.h>
#include <NereoFileIO/ResultsFileHeader.h>

#include <QDataStream>

#include <memory>
#include <vector>

namespace Nereo::Inspection {

/// Reads the records of a results file from the first one on, as a load reads them: the last one may be cut
/// off, and what is missing of it is 0.
class RecordStream {
public:
    /// Of the records the values of these columns are wanted. So many records are read at once.
    RecordStream(const InputFile& file, const Io::ResultsFileHeader& header, const std::vector<int>& columns,
                 int recordsInBlock);

    /// Reads the next block of records, and gives the number of those that are there.
    int readBlock();

    /// Hands the nodes and the columns of a part of the block on, a run at a time.
    void turn(int first, int count, const Io::NodeRecordTransposer::TakeNodes& takeNodes,
              const Io::NodeRecordTransposer::TakeColumn& takeColumn);

    const std::string& path() const { return file_.path(); }
    qint64 bytesRead() const { return walk_.position(); }

    /// Where the reading ended before it was through, if that isn't the end of the file.
    bool hasFailed() const { return hasFailed_; }
    QString errorString() const { return device_->errorString(); }

private:
    const InputFile& file_;
    std::unique_ptr<QIODevice> device_;
    QDataStream in_;
    Io::ResultsFileWalk walk_;
    Io::NodeRecordTransposer transposer_;
    qint64 recordsOffset_;
    int recordsLeft_;
    int recordsInBlock_;
    bool hasFailed_ = false;
    std::vector<char> block_;
};

/// How many records may be in the file, the last of them cut off.
int recordsThere(const Io::ResultsFileHeader& header);

/// How many records of this size are best read at once.
int recordsAtOnce(qint64 recordSize);

} // namespace Nereo::Inspection

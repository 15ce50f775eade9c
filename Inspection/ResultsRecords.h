#pragma once

#include "InputFile.h"

#include <FileIO/NodeMarks.h>
#include <NereoFileIO/ResultsFileHeader.h>

#include <vector>

namespace Nereo::Inspection {

/// The values of one field that are no finite numbers.
struct NotFiniteValues {
    int column; ///< of the field
    qint64 count = 0;
    int firstNode = 0;
    qint64 firstOffset = -1;
};

/// Looks at the records of a results file without keeping them: which nodes have one, and which values are no
/// finite numbers. A record takes part as far as it is in the file, as in a load.
class ResultsRecords {
public:
    /// Of the columns the values are looked at; they ascend.
    ResultsRecords(const InputFile& file, const Io::ResultsFileHeader& header,
                   const std::vector<int>& columns);

    /// Goes through the records, several times where the nodes are far apart.
    void run();

    Io::ResultsDamage damage() const { return marks_.damage(); }
    const std::vector<NotFiniteValues>& notFinite() const { return notFinite_; } ///< one for each column

    /// Where the reading ended before it was through, if that isn't the end of the file.
    qint64 failedAt() const { return failedAt_; }
    QString errorString() const { return error_; }

private:
    void pass();
    void passInBlocks(QIODevice& device);
    void passOneByOne(QIODevice& device);
    void takeBlock(const char* block, qint64 size, qint64 offset);
    template <class ByteOrder>
    void takeRecords(const char* records, qint64 size, qint64 offset);
    template <class ByteOrder>
    void takeValues(const char* record, qint64 size, int node, qint64 offset);
    void noteEnd(const QIODevice& device, qint64 place, qint64 wantedEnd);

    const InputFile& file_;
    const Io::ResultsFileHeader& header_;
    Io::NodeMarks marks_;
    std::vector<NotFiniteValues> notFinite_;
    std::vector<int> nodes_; // of a block
    bool isFirstPass_ = true;
    qint64 failedAt_ = -1;
    QString error_;
};

} // namespace Nereo::Inspection

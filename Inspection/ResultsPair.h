#pragma once

#include "FieldComparison.h"
#include "FieldList.h"
#include "RecordStream.h"

#include <NereoInspection/Comparison.h>

#include <algorithm>
#include <string>
#include <vector>

namespace Nereo::Io {
class ResultsProgressMeter;
} // namespace Nereo::Io

namespace Nereo::Inspection {

/// One of two results files that are compared.
struct ResultsSide {
    explicit ResultsSide(const InputFile& of) : file(of), list(of) {}

    const Io::ResultsFileHeader& header() const { return list.header; }
    int nodeCount() const { return header().recordsAnnounced(); }
    qint64 bytesOfRecords() const { return recordsThere(header()) * header().recordSize(); }

    const InputFile& file;
    FieldList list;
};

/// A field that both have.
struct ComparedField {
    QString address;
    int columnInA;
    int columnInB;
    FieldComparison comparison;
};

/// Two results files, and what is known so far of their fields.
class ResultsPair {
public:
    /// Ends the way through the records where the meter cancels or a file can't be read.
    struct Stop {};

    ResultsPair(const InputFile& fileA, const InputFile& fileB, const ComparisonOptions& comparisonOptions,
                Io::ResultsProgressMeter& meter, Comparison& comparison)
        : a(fileA), b(fileB), options(comparisonOptions), meter_(meter), comparison_(comparison)
    {
    }

    /// The nodes that both files announce are those up to this one.
    int commonNodes() const { return std::min(a.nodeCount(), b.nodeCount()); }

    /// How many records of each file are best read at once, and how many bytes these are.
    int recordsInBlock() const;
    qint64 bytesOfBlocks() const;

    /// Their columns in A or B.
    std::vector<int> columns(int ComparedField::*side, std::size_t first, std::size_t count) const;
    std::vector<int> columns(int ComparedField::*side) const { return columns(side, 0, fields.size()); }

    /// The next block of records.
    int readBlock(RecordStream& records);

    /// So many bytes are going to be read from now on.
    void expectBytes(qint64 count);

    bool end(Comparison::Outcome outcome, const std::string& file, const QString& message);

    const ResultsSide a;
    const ResultsSide b;
    const ComparisonOptions& options;
    std::vector<ComparedField> fields;

private:
    Io::ResultsProgressMeter& meter_;
    Comparison& comparison_;
    qint64 bytesDone_ = 0;
};

} // namespace Nereo::Inspection

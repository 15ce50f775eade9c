#pragma once

#include "Reader.h"

#include <NereoFileIO/ResultsFileHeader.h>

#include <QDataStream>

#include <bitset>

namespace Nereo::Io {

class ResultsFileWalk;
struct ResultsFacts;
struct ResultsFieldName;

/// Reads the header, the run data and the names of the fields, and compares them with the size of the device.
class NEREOFILEIO_EXPORT ResultsFileHeaderReader : public Reader<QDataStream> {
public:
    /// Behind so many names only those are listed that are the first of their code.
    explicit ResultsFileHeaderReader(ResultsFileHeader& header,
                                     int mostListed = ResultsFileHeader::mostFieldsListed);

    /// False when the reading ends at a marker. The stream's byte order becomes that of the file.
    bool read(QDataStream& in) override;

    /// The same, up to the end of the names, for a walk that goes on behind them. The device's size is -1
    /// where it has none.
    bool read(ResultsFileWalk& walk, qint64 bytesThere);

private:
    bool readBlocks(ResultsFileWalk& walk);
    void readFieldNames(ResultsFileWalk& walk);
    void keep(const ResultsFacts& facts);
    void keep(const ResultsFieldName& name);
    void reckonSizes();
    void checkCounts();
    bool isOtherByteOrder() const;
    void addProblem(ResultsProblem::Kind kind, qint64 offset);

    ResultsFileHeader* header_;
    int mostListed_;
    std::bitset<512> knownCodes_; // of the names so far
};

} // namespace Nereo::Io

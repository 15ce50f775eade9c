#pragma once

#include "Reader.h"

#include <QDataStream>

namespace Nereo::Io {

class NodeRecordTransposer;
class ResultsFile;
class ResultsFileWalk;
struct ResultsFacts;
struct ResultsFieldName;

/// Reads the header, the run data, the names of the fields and a record of values for each node.
///
/// The file may end anywhere, and may be cut off or grow while it is read: what isn't there is zero, and no
/// byte that is missing stops the process.
class NEREOFILEIO_EXPORT ResultsFileReader : public Reader<QDataStream> {
public:
    explicit ResultsFileReader(ResultsFile& results);

    /// False when the reading ends at a marker. The stream's byte order becomes that of the file.
    bool read(QDataStream& in) override;

private:
    void keepHeader(const ResultsFacts& facts);
    void keepRunData(const ResultsFacts& facts);
    void readFields(ResultsFileWalk& walk, QDataStream::ByteOrder byteOrder);
    void addField(const ResultsFieldName& name, NodeRecordTransposer& transposer);

    ResultsFile* results_;
};

} // namespace Nereo::Io

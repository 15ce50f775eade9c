#pragma once

#include <NereoFileIO/Export.h>
#include <NereoFileIO/ResultsProblem.h>

#include <NereoUtility/Version.h>

#include <string>
#include <vector>

namespace Nereo::Io {

/// What a results file says of itself, without its values: the run data, the names of the fields, how many
/// bytes and records there should be and are, and what is wrong with it as far as its header and size tell.
///
/// Of a file of any size it takes at most 64 KiB and the names of the fields to read this. Nothing in a file
/// stops the process or throws, whatever the file is. Where it ends early, what isn't there is zero or empty;
/// behind a wrong marker nothing is read.
class NEREOFILEIO_EXPORT ResultsFileHeader {
public:
    enum ByteOrder : int { LittleEndian, BigEndian };

    struct Field {
        std::string name;      ///< as it stands in the file
        int code = 0;          ///< a FieldVariable or NodeFlag; kNone where the name is unknown
        int column = 0;        ///< its place among the names, counted from 0
        qint64 offset = 0;     ///< of its name, in bytes
        bool isWhole = true;   ///< false where the file ends within the name
        bool isUsed() const;   ///< whether a load stores values for it: known and, if cut off, not repeated
        bool isRepeat = false; ///< an earlier name has its code
    };

    /// No more names than these are listed in fields(), known ones excepted.
    static constexpr int mostFieldsListed = 4096;

    ResultsFileHeader(); ///< as of an empty file
    ResultsFileHeader(const ResultsFileHeader& other);
    ResultsFileHeader(ResultsFileHeader&& other) noexcept;
    ResultsFileHeader& operator=(const ResultsFileHeader& other);
    ResultsFileHeader& operator=(ResultsFileHeader&& other) noexcept;
    ~ResultsFileHeader();

    /// Replaces what this object holds. False when the file can't be opened; then nothing is changed. Too
    /// little memory throws std::bad_alloc.
    bool readFrom(const std::string& path);

    Util::Version version() const; ///< its fourth number is 0
    std::string dateTimeString() const;
    std::string title() const;
    ByteOrder byteOrder() const;

    int nodeCount() const;    ///< as announced, negative if the file says so
    int elementCount() const; ///< likewise

    int startingIteration() const;
    int currentIteration() const;
    int startingTimeStep() const;
    int currentTimeStep() const;
    double currentTime() const;
    double timeStepSize() const;

    int fieldCount() const; ///< as announced, negative if the file says so

    /// The names that are in the file, in its order. Behind the first mostFieldsListed only known ones.
    const std::vector<Field>& fields() const;

    qint64 bytesThere() const; ///< the size of the file; -1 where it has none, as a pipe

    /// The size that the counts announce, at most the largest qint64. -1 where they can't be read or the
    /// number of fields is negative; a negative number of nodes announces no records.
    qint64 bytesAnnounced() const;

    qint64 recordSize() const;    ///< of one node, in bytes; 0 where bytesAnnounced() is -1
    qint64 recordsOffset() const; ///< of the first one, in bytes; 0 likewise
    int recordsAnnounced() const; ///< nodeCount(), or 0
    int wholeRecords() const;     ///< of those announced; -1 where the file has no size
    bool holdsKnownField() const; ///< whether a load stores anything
    bool isResultsFile() const;   ///< whether the first marker is there, and all that are there are right

    /// What is wrong, by its place in the file; of repeated fields each that is listed. There is no more in
    /// this list than header and size tell: nodes are a matter of ResultsScan.
    const std::vector<ResultsProblem>& problems() const;
    bool hasProblem(ResultsProblem::Kind kind) const;

private:
    friend class ResultsFileHeaderReader;

    Util::Version version_;
    std::string dateTimeString_;
    std::string title_;
    ByteOrder byteOrder_ = LittleEndian;
    int nodeCount_ = 0;
    int elementCount_ = 0;
    int startingIteration_ = 0;
    int currentIteration_ = 0;
    int startingTimeStep_ = 0;
    int currentTimeStep_ = 0;
    double currentTime_ = 0.0;
    double timeStepSize_ = 0.0;
    int fieldCount_ = 0;
    bool isResultsFile_ = false;
    qint64 bytesThere_ = 0;
    qint64 bytesAnnounced_ = -1;
    qint64 recordSize_ = 0;
    qint64 recordsOffset_ = 0;
    int wholeRecords_ = 0;
    std::vector<Field> fields_;
    std::vector<ResultsProblem> problems_;
};

} // namespace Nereo::Io

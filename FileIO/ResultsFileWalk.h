#pragma once

#include <NereoFileIO/Export.h>
#include <NereoFileIO/FieldVariable.h>

#include <NereoUtility/Version.h>

#include <QByteArray>
#include <QDataStream>

#include <algorithm>
#include <string>
#include <vector>

namespace Nereo::Io {

class ResultsProgressMeter;

/// Where things stand in a results file, in bytes from its start, and how long they are.
namespace ResultsLayout {

inline constexpr int versionOffset = 4;
inline constexpr int dateOffset = 16;
inline constexpr int dateSize = 26;
inline constexpr int titleOffset = 42;
inline constexpr int titleSize = 256;
inline constexpr int nodeCountOffset = 298;
inline constexpr int elementCountOffset = 302;
inline constexpr int headerMarkerOffset = 306;
inline constexpr int headerSize = 310;
inline constexpr int currentIterationOffset = 310; // in the file the current value comes first
inline constexpr int startingIterationOffset = 314;
inline constexpr int currentTimeStepOffset = 318;
inline constexpr int startingTimeStepOffset = 322;
inline constexpr int currentTimeOffset = 326;
inline constexpr int timeStepSizeOffset = 334;
inline constexpr int runMarkerOffset = 342;
inline constexpr int fieldCountOffset = 346;
inline constexpr int fieldNamesOffset = 350;
inline constexpr int fieldNameSize = 21;
inline constexpr int nodeSize = sizeof(qint32);
inline constexpr int valueSize = sizeof(double);

inline constexpr qint64 valueOffset(qint64 column) // in a record
{
    return nodeSize + valueSize * column;
}

inline constexpr qint64 recordSize(qint64 fieldCount)
{
    return valueOffset(fieldCount); // it ends where a further value would begin
}

inline constexpr qint64 recordsOffset(qint64 fieldCount)
{
    return fieldNamesOffset + fieldNameSize * fieldCount + qint64(sizeof(qint32));
}

} // namespace ResultsLayout

/// What the header and the run data say. Of a file that ends early the rest is zero or empty.
struct ResultsFacts {
    QDataStream::ByteOrder byteOrder = QDataStream::LittleEndian;
    Util::Version version {0, 0, 0, 0};
    std::string dateTimeString;
    std::string title;
    int nodeCount = 0;
    int elementCount = 0;
    int startingIteration = 0;
    int currentIteration = 0;
    int startingTimeStep = 0;
    int currentTimeStep = 0;
    double currentTime = 0.0;
    double timeStepSize = 0.0;
};

struct ResultsFieldName {
    int column;
    int code;           ///< kNone where the name is unknown
    QLatin1String text; ///< as far as it is there; valid until the next name
    bool isWhole;
};

/// Goes through the bytes of a results file in their order, for everything that reads one.
///
/// The stream may end anywhere, and may be cut off or grow meanwhile: what isn't there is zero. The first
/// short read ends the walk, also in a file that the solver is still writing: what comes later would be taken
/// for something else.
class NEREOFILEIO_EXPORT ResultsFileWalk {
public:
    explicit ResultsFileWalk(QDataStream& in);

    /// Ends also where the meter cancels. The position is that of the stream.
    ResultsFileWalk(QDataStream& in, ResultsProgressMeter& meter, qint64 position = 0);

    enum Marker { Right, Wrong, Missing };

    /// The byte order becomes that of the stream.
    Marker readHeader(ResultsFacts& facts);
    Marker readRunData(ResultsFacts& facts); ///< only behind a header that ends right
    int readInt();

    /// Gives each name to the function, up to one that is cut off. Whether all are whole.
    template <class TakeName>
    bool readFieldNames(int fieldCount, TakeName take);

    /// Gives the records to a function of a block and the number of bytes in it, until the file ends or the
    /// function gives false. Only the last block may be cut off, and has room up to the end of its record.
    template <class TakeBlock>
    void readRecords(int recordCount, qint64 recordSize, qint64 blockSize, TakeBlock take);

    /// Fills the buffer as far as there are bytes, and gives their number.
    qint64 readAvailable(char* buffer, qint64 size);

    qint64 position() const { return position_; } ///< how many bytes were there so far
    bool hasEnded() const;                        ///< whether less was read than was asked for

private:
    bool readFieldName(int column, char* bytes, ResultsFieldName& name);

    QDataStream& in_;
    ResultsProgressMeter* meter_ = nullptr;
    qint64 position_ = 0;
};

template <class TakeName>
bool ResultsFileWalk::readFieldNames(int fieldCount, TakeName take)
{
    for (int column = 0; column < fieldCount; ++column) {
        char bytes[ResultsLayout::fieldNameSize];
        ResultsFieldName name;
        if (!readFieldName(column, bytes, name))
            return false;
        take(name);
        if (!name.isWhole)
            return false;
    }
    return true;
}

template <class TakeBlock>
void ResultsFileWalk::readRecords(int recordCount, qint64 recordSize, qint64 blockSize, TakeBlock take)
{
    const int recordsInBlock = int(std::max(blockSize / recordSize, qint64(1)));
    std::vector<char> block(std::size_t(recordsInBlock * recordSize));
    for (int left = recordCount; left > 0; left -= recordsInBlock) {
        const qint64 wanted = std::min(left, recordsInBlock) * recordSize;
        const qint64 available = readAvailable(block.data(), wanted);
        if (!take(block.data(), available) || available < wanted)
            return;
    }
}

} // namespace Nereo::Io

#include "ResultsFileReader.h"

#include "Assertion.h"
#include "FieldMemory.h"
#include "NodeRecordTransposer.h"

#include <NereoFileIO/CodeNameTable.h>
#include <NereoFileIO/ResultsFile.h>
#include <NereoUtility/StringConversion.h>

#include <algorithm>
#include <vector>

namespace Nereo::Io {

namespace {

constexpr int dateTimeSize = 26;
constexpr int titleSize = 256;
constexpr int fieldNameSize = 21;
constexpr int endMarker = -1;

constexpr qint64 blockSize = 128 * 1024; // stays in the cache until the records in it have been transposed

/// A number, or 0 where it isn't wholly in the file. The first short read ends the stream, also for a file
/// that the solver is still writing: what comes later would be taken for something else.
template <class Number>
Number readNumber(QDataStream& in)
{
    Number number = 0;
    if (in.status() == QDataStream::Ok)
        in >> number;
    return number;
}

int readInt(QDataStream& in)
{
    return readNumber<qint32>(in);
}

double readDouble(QDataStream& in)
{
    return readNumber<double>(in);
}

/// Fills the buffer as far as there are bytes, and gives their number.
qint64 readAvailable(QDataStream& in, char* buffer, qint64 size)
{
    constexpr qint64 mostAtOnce = 1 << 30; // an int counts it
    qint64 done = 0;
    while (done < size && in.status() == QDataStream::Ok) {
        const int count = in.readRawData(buffer + done, int(std::min(size - done, mostAtOnce)));
        done += std::max(count, 0);
    }
    return done;
}

/// The text in a run of bytes: it ends at the first NUL, or with the run, or with the file.
std::string readText(QDataStream& in, int size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    const qint64 available = readAvailable(in, bytes.data(), size);
    const int length = int(qstrnlen(bytes.constData(), uint(available)));
    return Util::toStdString(QString::fromUtf8(bytes.constData(), length));
}

int codeForName(const char* name, qint64 size)
{
    const int length = int(qstrnlen(name, uint(size)));
    return CodeNameTable::instance().codeForName(QString::fromLatin1(name, length));
}

void readNodeRecords(QDataStream& in, int nodeCount, NodeRecordTransposer& transposer)
{
    const qint64 recordSize = transposer.recordSize();
    const int recordsInBlock = int(std::max(blockSize / recordSize, qint64(1)));
    std::vector<char> block(std::size_t(recordsInBlock * recordSize));
    for (int left = nodeCount; left > 0; left -= recordsInBlock) {
        const qint64 wanted = std::min(left, recordsInBlock) * recordSize;
        const qint64 available = readAvailable(in, block.data(), wanted);
        transposer.store(block.data(), available);
        if (available < wanted)
            break;
    }
}

} // namespace

ResultsFileReader::ResultsFileReader(ResultsFile& results) : results_(&results) {}

bool ResultsFileReader::read(QDataStream& in)
{
    if (!readHeader(in) || !readRunData(in))
        return false;
    readFields(in);
    return true;
}

bool ResultsFileReader::readHeader(QDataStream& in)
{
    in.setByteOrder(readInt(in) == 0 ? QDataStream::LittleEndian : QDataStream::BigEndian);

    const int first = readInt(in);
    const int second = readInt(in);
    const int third = readInt(in);
    results_->setVersion(Util::Version(first, second, third, 0));
    results_->setDateTimeString(readText(in, dateTimeSize));
    results_->setTitle(readText(in, titleSize));
    results_->setNodeCount(readInt(in));
    results_->setElementCount(readInt(in));
    return readInt(in) == endMarker;
}

bool ResultsFileReader::readRunData(QDataStream& in)
{
    // In the file the current value comes first.
    const int currentIteration = readInt(in);
    const int startingIteration = readInt(in);
    results_->setIterations(startingIteration, currentIteration);
    const int currentTimeStep = readInt(in);
    const int startingTimeStep = readInt(in);
    results_->setTimeSteps(startingTimeStep, currentTimeStep);
    results_->setCurrentTime(readDouble(in));
    results_->setTimeStepSize(readDouble(in));
    return readInt(in) == endMarker;
}

void ResultsFileReader::readFields(QDataStream& in)
{
    const int fieldCount = readInt(in);
    NEREO_ASSERT_COUNT(fieldCount, "FileIO/ResultsFileReader");
    NodeRecordTransposer transposer(fieldCount, results_->nodeCount(), in.byteOrder());
    if (!readFieldNames(in, fieldCount, transposer))
        return;
    readInt(in); // means nothing
    readNodeRecords(in, results_->nodeCount(), transposer);
}

bool ResultsFileReader::readFieldNames(QDataStream& in, int fieldCount, NodeRecordTransposer& transposer)
{
    for (int column = 0; column < fieldCount; ++column) {
        char name[fieldNameSize];
        const qint64 size = readAvailable(in, name, fieldNameSize);
        const int code = codeForName(name, size);
        const bool isWhole = size == fieldNameSize;
        if (code != kNone && (isWhole || !results_->containsFieldData(code)))
            transposer.addField(column, addField(code));
        if (!isWhole)
            return false;
    }
    return true;
}

QVector<double>& ResultsFileReader::addField(int code)
{
    results_->requireNewField(code);
    return results_->fieldData_.emplace(code, reserveField(results_->nodeCount())).first->second;
}

} // namespace Nereo::Io

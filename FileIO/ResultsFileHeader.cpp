#include <NereoFileIO/ResultsFileHeader.h>

#include "FileAccess.h"
#include "ResultsDevice.h"
#include "ResultsFileHeaderReader.h"
#include "ResultsFileWalk.h"

#include <NereoFileIO/FieldVariable.h>

#include <algorithm>

namespace Nereo::Io {

bool ResultsFileHeader::Field::isUsed() const
{
    return code != kNone && !isRepeat;
}

ResultsFileHeader::ResultsFileHeader() : version_(0, 0, 0, 0) {}
ResultsFileHeader::ResultsFileHeader(const ResultsFileHeader& other) = default;
ResultsFileHeader::ResultsFileHeader(ResultsFileHeader&& other) noexcept = default;
ResultsFileHeader& ResultsFileHeader::operator=(const ResultsFileHeader& other) = default;
ResultsFileHeader& ResultsFileHeader::operator=(ResultsFileHeader&& other) noexcept = default;
ResultsFileHeader::~ResultsFileHeader() = default;

bool ResultsFileHeader::readFrom(const std::string& path)
{
    ResultsDevice device;
    if (!openFile(device, path, QIODevice::ReadOnly))
        return false;
    ResultsFileHeader header;
    QDataStream in(&device);
    ResultsFileWalk walk(in);
    ResultsFileHeaderReader(header).read(walk, device.sizeWhenOpened());
    if (walk.hasEnded() && device.hasFailed())
        header.problems_.assign({
            {ResultsProblem::ReadFailed, walk.position()}
        });
    *this = std::move(header);
    return true;
}

Util::Version ResultsFileHeader::version() const
{
    return version_;
}

std::string ResultsFileHeader::dateTimeString() const
{
    return dateTimeString_;
}

std::string ResultsFileHeader::title() const
{
    return title_;
}

ResultsFileHeader::ByteOrder ResultsFileHeader::byteOrder() const
{
    return byteOrder_;
}

int ResultsFileHeader::nodeCount() const
{
    return nodeCount_;
}

int ResultsFileHeader::elementCount() const
{
    return elementCount_;
}

int ResultsFileHeader::startingIteration() const
{
    return startingIteration_;
}

int ResultsFileHeader::currentIteration() const
{
    return currentIteration_;
}

int ResultsFileHeader::startingTimeStep() const
{
    return startingTimeStep_;
}

int ResultsFileHeader::currentTimeStep() const
{
    return currentTimeStep_;
}

double ResultsFileHeader::currentTime() const
{
    return currentTime_;
}

double ResultsFileHeader::timeStepSize() const
{
    return timeStepSize_;
}

int ResultsFileHeader::fieldCount() const
{
    return fieldCount_;
}

const std::vector<ResultsFileHeader::Field>& ResultsFileHeader::fields() const
{
    return fields_;
}

qint64 ResultsFileHeader::bytesThere() const
{
    return bytesThere_;
}

qint64 ResultsFileHeader::bytesAnnounced() const
{
    return bytesAnnounced_;
}

qint64 ResultsFileHeader::recordSize() const
{
    return recordSize_;
}

qint64 ResultsFileHeader::recordsOffset() const
{
    return recordsOffset_;
}

int ResultsFileHeader::recordsAnnounced() const
{
    return std::max(nodeCount_, 0);
}

int ResultsFileHeader::wholeRecords() const
{
    return wholeRecords_;
}

bool ResultsFileHeader::holdsKnownField() const
{
    return std::any_of(fields_.begin(), fields_.end(), [](const Field& field) { return field.isUsed(); });
}

bool ResultsFileHeader::isResultsFile() const
{
    return isResultsFile_;
}

const std::vector<ResultsProblem>& ResultsFileHeader::problems() const
{
    return problems_;
}

bool ResultsFileHeader::hasProblem(ResultsProblem::Kind kind) const
{
    return std::any_of(problems_.begin(), problems_.end(),
                       [kind](const ResultsProblem& problem) { return problem.kind == kind; });
}

} // namespace Nereo::Io

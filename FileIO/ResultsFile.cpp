#include <NereoFileIO/ResultsFile.h>

#include "Assertion.h"
#include "FileAccess.h"
#include "ResultsDevice.h"
#include "ResultsFileLoad.h"
#include "ResultsFileReader.h"

#include <utility>

namespace Nereo::Io {

ResultsFile::ResultsFile() = default;
ResultsFile::ResultsFile(const ResultsFile& other) = default;
ResultsFile& ResultsFile::operator=(const ResultsFile& other) = default;
ResultsFile::ResultsFile(ResultsFile&& other) noexcept = default;
ResultsFile& ResultsFile::operator=(ResultsFile&& other) noexcept = default;
ResultsFile::~ResultsFile() = default;

std::string ResultsFile::title() const
{
    return title_;
}

void ResultsFile::setTitle(const std::string& title)
{
    title_ = title;
}

std::string ResultsFile::dateTimeString() const
{
    return dateTimeString_;
}

void ResultsFile::setDateTimeString(const std::string& dateTimeString)
{
    dateTimeString_ = dateTimeString;
}

int ResultsFile::nodeCount() const
{
    return nodeCount_;
}

void ResultsFile::setNodeCount(int nodeCount)
{
    nodeCount_ = nodeCount;
}

int ResultsFile::elementCount() const
{
    return elementCount_;
}

void ResultsFile::setElementCount(int elementCount)
{
    elementCount_ = elementCount;
}

int ResultsFile::startingIteration() const
{
    return startingIteration_;
}

int ResultsFile::currentIteration() const
{
    return currentIteration_;
}

void ResultsFile::setIterations(int starting, int current)
{
    startingIteration_ = starting;
    currentIteration_ = current;
}

int ResultsFile::startingTimeStep() const
{
    return startingTimeStep_;
}

int ResultsFile::currentTimeStep() const
{
    return currentTimeStep_;
}

void ResultsFile::setTimeSteps(int starting, int current)
{
    startingTimeStep_ = starting;
    currentTimeStep_ = current;
}

double ResultsFile::currentTime() const
{
    return currentTime_;
}

void ResultsFile::setCurrentTime(double currentTime)
{
    currentTime_ = currentTime;
}

double ResultsFile::timeStepSize() const
{
    return timeStepSize_;
}

void ResultsFile::setTimeStepSize(double timeStepSize)
{
    timeStepSize_ = timeStepSize;
}

void ResultsFile::addFieldDataCode(int code)
{
    requireNewField(code);
    fieldData_.emplace(code, QVector<double>(nodeCount_));
}

bool ResultsFile::containsFieldData(int code) const
{
    return fieldData_.count(code) != 0;
}

QList<int> ResultsFile::fieldDataCodes() const
{
    QList<int> codes;
    for (const auto& [code, values] : fieldData_)
        codes.append(code);
    return codes;
}

QVector<double> ResultsFile::fieldData(int code) const
{
    const auto found = fieldData_.find(code);
    return found == fieldData_.end() ? QVector<double>() : found->second;
}

void ResultsFile::setFieldData(int code, int node, double value)
{
    const auto found = fieldData_.find(code);
    if (found == fieldData_.end())
        NEREO_ASSERT_AT(false, "FileIO/ResultsFile", 187);
    const qint64 index = qint64(node) - 1; // the smallest int has no predecessor
    NEREO_ASSERT_INDEX(index, found->second.size(), "QVector<T>::operator[]", "FileIO/ResultsFile");
    found->second[int(index)] = value;
}

void ResultsFile::requireNewField(int code) const
{
    if (containsFieldData(code))
        NEREO_ASSERT_AT(false, "FileIO/ResultsFile", 166);
    NEREO_ASSERT_COUNT(nodeCount_, "FileIO/ResultsFile");
}

ResultsLoadResult ResultsFile::loadFrom(const std::string& path, const ResultsLoadOptions& options)
{
    ResultsDevice device;
    if (!openFile(device, path, QIODevice::ReadOnly))
        return {};
    ResultsFile loaded;
    std::string newPath = path;
    QDataStream in(&device);
    const ResultsLoadResult result = ResultsFileLoad(loaded, options).read(in, &device);
    if (result.isLoaded()) {
        takeContent(loaded); // from here on nothing can fail
        setFilePath(std::move(newPath));
    }
    return result;
}

void ResultsFile::takeContent(ResultsFile& other)
{
    setVersion(other.version());
    dateTimeString_.swap(other.dateTimeString_);
    title_.swap(other.title_);
    nodeCount_ = other.nodeCount_;
    elementCount_ = other.elementCount_;
    startingIteration_ = other.startingIteration_;
    currentIteration_ = other.currentIteration_;
    startingTimeStep_ = other.startingTimeStep_;
    currentTimeStep_ = other.currentTimeStep_;
    currentTime_ = other.currentTime_;
    timeStepSize_ = other.timeStepSize_;
    fieldData_.swap(other.fieldData_);
}

bool ResultsFile::doLoadFrom(const std::string& path)
{
    return load<ResultsFileReader>(path, *this);
}

bool ResultsFile::doSaveTo(const std::string&) const
{
    return true;
}

} // namespace Nereo::Io

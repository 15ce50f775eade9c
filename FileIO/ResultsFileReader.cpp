#include "ResultsFileReader.h"

#include "Assertion.h"
#include "FieldMemory.h"
#include "NodeRecordTransposer.h"
#include "ResultsFileWalk.h"

#include <NereoFileIO/ResultsFile.h>

namespace Nereo::Io {

ResultsFileReader::ResultsFileReader(ResultsFile& results) : results_(&results) {}

bool ResultsFileReader::read(QDataStream& in)
{
    ResultsFileWalk walk(in);
    ResultsFacts facts;
    const bool isHeader = walk.readHeader(facts) == ResultsFileWalk::Right;
    keepHeader(facts);
    if (!isHeader)
        return false;
    const bool isRunData = walk.readRunData(facts) == ResultsFileWalk::Right;
    keepRunData(facts);
    if (!isRunData)
        return false;
    readFields(walk, facts.byteOrder);
    return true;
}

void ResultsFileReader::keepHeader(const ResultsFacts& facts)
{
    results_->setVersion(facts.version);
    results_->setDateTimeString(facts.dateTimeString);
    results_->setTitle(facts.title);
    results_->setNodeCount(facts.nodeCount);
    results_->setElementCount(facts.elementCount);
}

void ResultsFileReader::keepRunData(const ResultsFacts& facts)
{
    results_->setIterations(facts.startingIteration, facts.currentIteration);
    results_->setTimeSteps(facts.startingTimeStep, facts.currentTimeStep);
    results_->setCurrentTime(facts.currentTime);
    results_->setTimeStepSize(facts.timeStepSize);
}

void ResultsFileReader::readFields(ResultsFileWalk& walk, QDataStream::ByteOrder byteOrder)
{
    const int fieldCount = walk.readInt();
    NEREO_ASSERT_COUNT(fieldCount, "FileIO/ResultsFileReader");
    NodeRecordTransposer transposer(fieldCount, results_->nodeCount(), byteOrder);
    const bool areAllNamed = walk.readFieldNames(
        fieldCount, [this, &transposer](const ResultsFieldName& name) { addField(name, transposer); });
    if (!areAllNamed)
        return;
    walk.readInt(); // means nothing
    walk.readRecords(results_->nodeCount(), transposer.recordSize(), transposer.blockSize(),
                     [&transposer](char* block, qint64 size) {
                         transposer.store(block, size);
                         return true;
                     });
}

void ResultsFileReader::addField(const ResultsFieldName& name, NodeRecordTransposer& transposer)
{
    if (name.code == kNone || (!name.isWhole && results_->containsFieldData(name.code)))
        return;
    results_->requireNewField(name.code);
    auto& values = results_->fieldData_.emplace(name.code, reserveField(results_->nodeCount())).first->second;
    transposer.addField(name.column, values);
}

} // namespace Nereo::Io

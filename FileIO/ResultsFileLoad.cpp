#include "ResultsFileLoad.h"

#include "FieldMemory.h"
#include "NodeRecordTransposer.h"
#include "ResultsSession.h"

#include <NereoFileIO/FieldVariable.h>
#include <NereoFileIO/ResultsFile.h>

#include <algorithm>

namespace Nereo::Io {

namespace {

// What a load takes beside the values and the block of records: the device with its buffer, the names.
constexpr qint64 memoryOfAnyLoad = 256 * 1024;
constexpr qint64 memoryOfAField = 4096 + 256; // beside its values: the last page, its place in the object

/// What makes a plain load stop, the first of it.
const ResultsProblem* contradictionIn(const ResultsFileHeader& header)
{
    for (const ResultsProblem& problem : header.problems()) {
        const bool stops = problem.kind == ResultsProblem::NegativeFieldCount
            || problem.kind == ResultsProblem::RepeatedField
            || (problem.kind == ResultsProblem::NegativeNodeCount && header.holdsKnownField());
        if (stops)
            return &problem;
    }
    return nullptr;
}

} // namespace

ResultsFileLoad::ResultsFileLoad(ResultsFile& results, const ResultsLoadOptions& options)
    : results_(&results), options_(&options)
{
}

ResultsLoadResult ResultsFileLoad::read(QDataStream& in, const ResultsDevice* file)
{
    if (memoryOfAnyLoad > options_->memoryLimit) {
        result_.memoryNeeded = memoryOfAnyLoad;
        result_.outcome = ResultsLoadResult::OverLimit;
        return result_;
    }
    ResultsSession session(in, file, options_->progress, 0);
    header_ = &session.header();
    result_ = session.result();
    if (result_.isLoaded() && isFreeOfContradictions() && isWithinLimit(!session.walk().hasEnded())) {
        keepFacts();
        readValues(session);
    }
    return session.finish(result_);
}

void ResultsFileLoad::end(ResultsLoadResult::Outcome outcome, const ResultsProblem& problem)
{
    result_.outcome = outcome;
    result_.problem = problem;
}

bool ResultsFileLoad::isFreeOfContradictions()
{
    const ResultsProblem* const contradiction = contradictionIn(*header_);
    if (contradiction != nullptr)
        end(ResultsLoadResult::ContradictsItself, *contradiction);
    return contradiction == nullptr;
}

bool ResultsFileLoad::isWithinLimit(bool hasRecords)
{
    for (const ResultsFileHeader::Field& field : header_->fields()) {
        if (isWanted(field.code))
            fields_.push_back(&field);
    }
    firstNode_ = std::max(options_->firstNode, 1);
    lastNode_ = std::max(std::min(options_->lastNode, header_->recordsAnnounced()), firstNode_ - 1);
    const bool fitsVector = fields_.empty() || lastNode_ - firstNode_ < mostValuesOfField;
    const qint64 memory = memoryNeeded(hasRecords);
    if (fitsVector && memory <= options_->memoryLimit)
        return true;
    end(ResultsLoadResult::OverLimit, {});
    result_.memoryNeeded = memory;
    return false;
}

bool ResultsFileLoad::isWanted(int code) const
{
    const std::vector<int>& codes = options_->codes;
    return codes.empty() || std::find(codes.begin(), codes.end(), code) != codes.end();
}

qint64 ResultsFileLoad::memoryNeeded(bool hasRecords) const
{
    const qint64 valueCount = lastNode_ - firstNode_ + 1;
    const qint64 recordSize = header_->recordSize();
    const qint64 block =
        hasRecords ? std::max(NodeRecordTransposer::blockSizeFor(recordSize), recordSize) : 0;
    const qint64 field = qint64(sizeof(double)) * valueCount + memoryOfAField;
    return memoryOfAnyLoad + block + field * qint64(fields_.size());
}

void ResultsFileLoad::keepFacts()
{
    const bool areAllNodes = firstNode_ == 1 && lastNode_ == header_->recordsAnnounced();
    results_->setVersion(header_->version());
    results_->setDateTimeString(header_->dateTimeString());
    results_->setTitle(header_->title());
    results_->setNodeCount(areAllNodes ? header_->nodeCount() : lastNode_ - firstNode_ + 1);
    results_->setElementCount(header_->elementCount());
    results_->setIterations(header_->startingIteration(), header_->currentIteration());
    results_->setTimeSteps(header_->startingTimeStep(), header_->currentTimeStep());
    results_->setCurrentTime(header_->currentTime());
    results_->setTimeStepSize(header_->timeStepSize());
}

void ResultsFileLoad::readValues(ResultsSession& session)
{
    const bool isLittleEndian = header_->byteOrder() == ResultsFileHeader::LittleEndian;
    NodeRecordTransposer transposer(header_->fieldCount(), header_->nodeCount(),
                                    isLittleEndian ? QDataStream::LittleEndian : QDataStream::BigEndian);
    transposer.storeOnly(firstNode_, lastNode_);
    transposer.setMissingValue(options_->missingValue);
    if (header_->holdsKnownField())
        transposer.requireNodes();
    try {
        for (const ResultsFileHeader::Field* field : fields_) {
            QVector<double> values = reserveField(lastNode_ - firstNode_ + 1);
            auto& stored = results_->fieldData_.emplace(field->code, std::move(values)).first->second;
            transposer.addField(field->column, stored);
        }
        if (!session.walk().hasEnded())
            readRecords(session, transposer);
    } catch (...) {
        transposer.abandon();
        throw;
    }
    if (!result_.isLoaded() || session.meter().isCancelled())
        transposer.abandon();
}

void ResultsFileLoad::readRecords(ResultsSession& session, NodeRecordTransposer& transposer)
{
    ResultsFileWalk& walk = session.walk();
    ResultsProblem badNode;
    walk.readInt(); // means nothing
    walk.readRecords(header_->recordsAnnounced(), transposer.recordSize(), transposer.blockSize(),
                     [&](char* block, qint64 size) {
                         const qint64 place = transposer.storeUpToBadNode(block, size);
                         if (place < 0)
                             return true;
                         badNode = {ResultsProblem::NodeOutOfRange, walk.position() - size + place};
                         return false;
                     });
    result_ = session.result();
    if (badNode.kind != ResultsProblem::None)
        end(ResultsLoadResult::ContradictsItself, badNode);
}

} // namespace Nereo::Io

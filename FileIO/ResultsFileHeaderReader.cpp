#include "ResultsFileHeaderReader.h"

#include "FieldMemory.h"
#include "ResultsFileWalk.h"

#include <NereoFileIO/FieldVariable.h>

#include <QtEndian>

#include <algorithm>
#include <limits>

namespace Nereo::Io {

namespace {

constexpr qint64 largest = std::numeric_limits<qint64>::max();

/// The sum a + b * c of what isn't negative, and c not zero, or the largest number where that is too large
/// for one.
qint64 sumWithProduct(qint64 a, qint64 b, qint64 c)
{
    return b > (largest - a) / c ? largest : a + b * c;
}

qint64 announcedBytes(int nodeCount, int fieldCount)
{
    return sumWithProduct(ResultsLayout::recordsOffset(fieldCount), std::max(nodeCount, 0),
                          ResultsLayout::recordSize(fieldCount));
}

/// Whether a file of this size can have these counts: its names and its first record are there.
bool makeSense(int nodeCount, int fieldCount, qint64 size)
{
    return nodeCount >= 0 && fieldCount >= 0 && announcedBytes(std::min(nodeCount, 1), fieldCount) <= size;
}

bool fitExactly(int nodeCount, int fieldCount, qint64 size)
{
    return nodeCount >= 0 && fieldCount >= 0 && announcedBytes(nodeCount, fieldCount) == size;
}

} // namespace

ResultsFileHeaderReader::ResultsFileHeaderReader(ResultsFileHeader& header, int mostListed)
    : header_(&header), mostListed_(mostListed)
{
}

bool ResultsFileHeaderReader::read(QDataStream& in)
{
    ResultsFileWalk walk(in);
    return read(walk, in.device()->isSequential() ? -1 : in.device()->size());
}

bool ResultsFileHeaderReader::read(ResultsFileWalk& walk, qint64 bytesThere)
{
    header_->bytesThere_ = bytesThere;
    const bool isComplete = readBlocks(walk);
    if (isComplete && walk.position() >= ResultsLayout::fieldNamesOffset) {
        reckonSizes();
        checkCounts();
        readFieldNames(walk);
    }
    const qint64 end = bytesThere >= 0 ? bytesThere : walk.position();
    if (walk.hasEnded() && walk.position() < ResultsLayout::fieldNamesOffset)
        addProblem(ResultsProblem::TooShort, end);
    else if (end < header_->bytesAnnounced_ && (bytesThere >= 0 || walk.hasEnded()))
        addProblem(ResultsProblem::CountsPastTheFile, end);
    std::stable_sort(header_->problems_.begin(), header_->problems_.end(),
                     [](const ResultsProblem& a, const ResultsProblem& b) { return a.offset < b.offset; });
    return isComplete;
}

/// Everything before the names. False where a marker isn't right.
bool ResultsFileHeaderReader::readBlocks(ResultsFileWalk& walk)
{
    ResultsFacts facts;
    const ResultsFileWalk::Marker headerMarker = walk.readHeader(facts);
    ResultsFileWalk::Marker runMarker = ResultsFileWalk::Missing;
    if (headerMarker == ResultsFileWalk::Right)
        runMarker = walk.readRunData(facts);
    keep(facts);
    if (runMarker == ResultsFileWalk::Right)
        header_->fieldCount_ = walk.readInt();

    if (headerMarker == ResultsFileWalk::Wrong)
        addProblem(ResultsProblem::BadHeaderMarker, ResultsLayout::headerMarkerOffset);
    if (runMarker == ResultsFileWalk::Wrong)
        addProblem(ResultsProblem::BadRunMarker, ResultsLayout::runMarkerOffset);
    header_->isResultsFile_ = headerMarker == ResultsFileWalk::Right && runMarker != ResultsFileWalk::Wrong;
    return runMarker == ResultsFileWalk::Right;
}

void ResultsFileHeaderReader::keep(const ResultsFacts& facts)
{
    header_->version_ = facts.version;
    header_->dateTimeString_ = facts.dateTimeString;
    header_->title_ = facts.title;
    header_->byteOrder_ = facts.byteOrder == QDataStream::LittleEndian ? ResultsFileHeader::LittleEndian
                                                                       : ResultsFileHeader::BigEndian;
    header_->nodeCount_ = facts.nodeCount;
    header_->elementCount_ = facts.elementCount;
    header_->startingIteration_ = facts.startingIteration;
    header_->currentIteration_ = facts.currentIteration;
    header_->startingTimeStep_ = facts.startingTimeStep;
    header_->currentTimeStep_ = facts.currentTimeStep;
    header_->currentTime_ = facts.currentTime;
    header_->timeStepSize_ = facts.timeStepSize;
}

void ResultsFileHeaderReader::reckonSizes()
{
    if (header_->fieldCount_ < 0)
        return;
    header_->recordSize_ = ResultsLayout::recordSize(header_->fieldCount_);
    header_->recordsOffset_ = ResultsLayout::recordsOffset(header_->fieldCount_);
    header_->bytesAnnounced_ = announcedBytes(header_->nodeCount_, header_->fieldCount_);
    if (header_->bytesThere_ < 0) {
        header_->wholeRecords_ = -1;
        return;
    }
    const qint64 room = std::max(header_->bytesThere_ - header_->recordsOffset_, qint64(0));
    header_->wholeRecords_ = int(std::min(room / header_->recordSize_, qint64(header_->recordsAnnounced())));
}

void ResultsFileHeaderReader::checkCounts()
{
    if (header_->nodeCount_ < 0)
        addProblem(ResultsProblem::NegativeNodeCount, ResultsLayout::nodeCountOffset);
    if (header_->fieldCount_ < 0)
        addProblem(ResultsProblem::NegativeFieldCount, ResultsLayout::fieldCountOffset);
    if (isOtherByteOrder())
        addProblem(ResultsProblem::OtherByteOrder, 0);
}

bool ResultsFileHeaderReader::isOtherByteOrder() const
{
    const qint64 size = header_->bytesThere_;
    if (size < 0)
        return false;
    const auto isOther = [this, size](bool (*suits)(int, int, qint64)) {
        return !suits(header_->nodeCount_, header_->fieldCount_, size)
            && suits(qbswap(header_->nodeCount_), qbswap(header_->fieldCount_), size);
    };
    return isOther(makeSense) || isOther(fitExactly);
}

void ResultsFileHeaderReader::readFieldNames(ResultsFileWalk& walk)
{
    walk.readFieldNames(header_->fieldCount_, [this](const ResultsFieldName& name) { keep(name); });
    if (header_->holdsKnownField() && header_->nodeCount_ > mostValuesOfField)
        addProblem(ResultsProblem::TooManyNodes, ResultsLayout::nodeCountOffset);
}

void ResultsFileHeaderReader::keep(const ResultsFieldName& name)
{
    const bool isKnown = name.code != kNone;
    const bool isRepeat = isKnown && knownCodes_.test(std::size_t(name.code));
    const bool isFirstRepeat = isRepeat && !header_->hasProblem(ResultsProblem::RepeatedField);
    const bool isListed = int(header_->fields_.size()) < mostListed_;
    const qint64 offset =
        ResultsLayout::fieldNamesOffset + qint64(ResultsLayout::fieldNameSize) * name.column;
    if (isRepeat && name.isWhole && (isListed || isFirstRepeat))
        addProblem(ResultsProblem::RepeatedField, offset);
    if (isListed || (isKnown && !isRepeat)) {
        header_->fields_.push_back(
            {QString(name.text).toStdString(), name.code, name.column, offset, name.isWhole, isRepeat});
    }
    if (isKnown)
        knownCodes_.set(std::size_t(name.code));
}

void ResultsFileHeaderReader::addProblem(ResultsProblem::Kind kind, qint64 offset)
{
    header_->problems_.push_back({kind, offset});
}

} // namespace Nereo::Io

#include "ResultsFileScan.h"

#include "ResultsDevice.h"
#include "ResultsSession.h"

#include <algorithm>
#include <utility>

namespace Nereo::Io {

namespace {

constexpr qint64 longestRecord = 32 * 1024 * 1024;
constexpr qint64 nodesOfAnyScan = qint64(1) << 28; // 32 MiB of marks

static_assert(FieldStatistics::longestRun == NodeRecordTransposer::recordsInRun);

} // namespace

ResultsFileScan::ResultsFileScan(ResultsScan& scan, ResultsScan::Part part, ResultsProgress progress)
    : scan_(&scan), part_(part), progress_(std::move(progress)), nodesTogether_(nodesOfAnyScan)
{
}

void ResultsFileScan::setNodesTogether(qint64 count)
{
    nodesTogether_ = count;
}

ResultsLoadResult ResultsFileScan::read(QDataStream& in, const ResultsDevice* file)
{
    ResultsSession session(in, file, progress_, ResultsFileHeader::mostFieldsListed);
    header_ = &session.header();
    ResultsLoadResult result = session.result();
    if (result.isLoaded() && header_->hasProblem(ResultsProblem::NegativeFieldCount)) {
        result.outcome = ResultsLoadResult::ContradictsItself;
        result.problem = {ResultsProblem::NegativeFieldCount, ResultsLayout::fieldCountOffset};
    } else if (result.isLoaded() && !session.walk().hasEnded() && header_->recordSize() > longestRecord) {
        result.outcome = ResultsLoadResult::OverLimit;
        result.memoryNeeded = header_->recordSize();
    } else if (result.isLoaded()) {
        prepare();
        if (!session.walk().hasEnded())
            readRecords(session.walk());
        result = session.result();
        if (result.isLoaded())
            readAgain(in, session);
        keepFindings();
    }
    return session.finish(result);
}

void ResultsFileScan::prepare()
{
    const bool isLittleEndian = header_->byteOrder() == ResultsFileHeader::LittleEndian;
    transposer_.emplace(header_->fieldCount(), header_->nodeCount(),
                        isLittleEndian ? QDataStream::LittleEndian : QDataStream::BigEndian);
    if (part_ != ResultsScan::Damage) {
        for (const ResultsFileHeader::Field& field : header_->fields())
            transposer_->addColumn(field.column);
        statistics_.resize(header_->fields().size());
    }
    if (part_ != ResultsScan::Statistics) {
        const bool isPipe = header_->wholeRecords() < 0;
        const qint64 room = isPipe ? header_->recordsAnnounced() : header_->wholeRecords() + qint64(1);
        marks_.emplace(header_->nodeCount(), room + nodesTogether_);
    }
}

void ResultsFileScan::readRecords(ResultsFileWalk& walk)
{
    walk.readInt(); // means nothing
    walk.readRecords(header_->recordsAnnounced(), transposer_->recordSize(), transposer_->blockSize(),
                     [this, &walk](char* block, qint64 size) {
                         takeBlock(block, size, walk.position() - size);
                         return true;
                     });
}

void ResultsFileScan::takeBlock(const char* block, qint64 size, qint64 offset)
{
    const qint64 recordSize = transposer_->recordSize();
    const int count = int(size / recordSize);
    const auto takeNodes = [&, next = offset](const int* nodes, int countInRun) mutable {
        run_ = {nodes, countInRun, 0, next, recordSize};
        if (!statistics_.empty())
            run_.smallestNode = *std::min_element(nodes, nodes + countInRun);
        if (marks_)
            marks_->mark(nodes, countInRun, next, recordSize);
        next += countInRun * recordSize;
    };
    const auto takeColumn = [this](std::size_t index, double* values) {
        const int column = header_->fields()[index].column;
        statistics_[index].add(values, run_, ResultsLayout::valueOffset(column));
    };
    transposer_->turn(block, count, takeNodes, takeColumn);
    if (marks_ && size % recordSize >= ResultsLayout::nodeSize) { // the last record is cut off
        const int node = transposer_->nodeAt(block + count * recordSize);
        marks_->mark(&node, 1, offset + count * recordSize, recordSize);
    }
}

/// As often as there are nodes that haven't been looked at, which only few files are.
void ResultsFileScan::readAgain(QDataStream& in, ResultsSession& session)
{
    transposer_->dropColumns();
    const qint64 offset = header_->recordsOffset() - qint64(sizeof(qint32));
    while (marks_ && marks_->beginNextPass() && !session.meter().isCancelled() && in.device()->seek(offset)) {
        in.resetStatus();
        session.meter().beginAgain();
        ResultsFileWalk walk(in, session.meter(), offset);
        readRecords(walk);
    }
}

void ResultsFileScan::keepFindings()
{
    scan_->header_ = *header_;
    for (const FieldStatistics& statistics : statistics_)
        scan_->statistics_.push_back(statistics.result());
    if (marks_)
        scan_->damage_ = marks_->damage();
}

} // namespace Nereo::Io

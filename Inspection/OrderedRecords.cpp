#include "OrderedRecords.h"

#include <algorithm>

namespace Nereo::Inspection {

namespace {

constexpr int longestRun = FieldComparison::longestRun;
static_assert(longestRun == Io::NodeRecordTransposer::recordsInRun);

constexpr int mostNodes = 1 << 28; // 32 MiB of marks

bool areBetween(const int* nodes, int count, int first, int last)
{
    const auto [smallest, largest] = std::minmax_element(nodes, nodes + count);
    return *smallest >= first && *largest <= last;
}

} // namespace

OrderedRecords::OrderedRecords(ResultsPair& pair)
    : pair_(pair), largestNode_(std::max(pair.a.nodeCount(), pair.b.nodeCount())),
      columns_(pair.fields.size() * longestRun), zeros_(longestRun),
      marks_(largestNode_, std::min(largestNode_, mostNodes))
{
    nodes_.reserve(longestRun);
}

bool OrderedRecords::compare()
{
    if (largestNode_ > mostNodes || (pair_.options.peak && !findPeaks()))
        return false;
    RecordStream a(pair_.a.file, pair_.a.header(), pair_.columns(&ComparedField::columnInA),
                   pair_.recordsInBlock());
    RecordStream b(pair_.b.file, pair_.b.header(), pair_.columns(&ComparedField::columnInB),
                   pair_.recordsInBlock());
    for (;;) {
        const int countInA = pair_.readBlock(a);
        const int countInB = pair_.readBlock(b);
        if (countInA == 0 && countInB == 0)
            return isOnceEach();
        const int both = std::min(countInA, countInB);
        if (!compareBoth(a, b, 0, both) || !compareOne(pair_.a, a, both, countInA)
            || !compareOne(pair_.b, b, both, countInB))
            return false;
    }
}

/// Values are compared with the peaks, which are known only at the end of A.
bool OrderedRecords::findPeaks()
{
    Io::NodeMarks marks(largestNode_, largestNode_);
    RecordStream a(pair_.a.file, pair_.a.header(), pair_.columns(&ComparedField::columnInA),
                   pair_.recordsInBlock());
    int countInRun = 0;
    const auto takeNodes = [&](const int* nodes, int count) {
        marks.mark(nodes, count, 0, 0);
        countInRun = count;
    };
    const auto takeColumn = [&](std::size_t index, const double* values) {
        pair_.fields[index].comparison.addToPeak(values, countInRun);
    };
    while (const int count = pair_.readBlock(a))
        a.turn(0, count, takeNodes, takeColumn);
    for (ComparedField& field : pair_.fields)
        field.comparison.usePeak();
    return marks.damage().repeatedRecords == 0;
}

bool OrderedRecords::compareBoth(RecordStream& a, RecordStream& b, int first, int last)
{
    bool isInOrder = true;
    const auto takeNodesOfA = [&](const int* nodes, int count) {
        nodes_.assign(nodes, nodes + count);
        marks_.mark(nodes, count, 0, 0);
    };
    const auto takeColumnOfA = [&](std::size_t index, const double* values) {
        std::copy_n(values, nodes_.size(), &columns_[index * longestRun]);
    };
    const auto takeNodesOfB = [&](const int* nodes, int count) {
        isInOrder = std::equal(nodes, nodes + count, nodes_.begin())
            && areBetween(nodes, count, 1, pair_.commonNodes());
    };
    const auto takeColumnOfB = [&](std::size_t index, const double* values) {
        if (isInOrder)
            pair_.fields[index].comparison.add(&columns_[index * longestRun], values, nodes_.data(),
                                               int(nodes_.size()));
    };
    for (; first < last && isInOrder; first += longestRun) {
        const int count = std::min(last - first, longestRun);
        a.turn(first, count, takeNodesOfA, takeColumnOfA);
        b.turn(first, count, takeNodesOfB, takeColumnOfB);
    }
    return isInOrder;
}

/// The rest of a file that has more records: the other one has 0 at their nodes, if it has these.
bool OrderedRecords::compareOne(const ResultsSide& side, RecordStream& records, int first, int last)
{
    const bool isA = &side == &pair_.a;
    bool isInOrder = true;
    bool areCommon = false;
    const auto takeNodes = [&](const int* nodes, int count) {
        nodes_.assign(nodes, nodes + count);
        marks_.mark(nodes, count, 0, 0);
        areCommon = areBetween(nodes, count, 1, pair_.commonNodes());
        isInOrder = areCommon || areBetween(nodes, count, pair_.commonNodes() + 1, side.nodeCount());
    };
    const auto takeColumn = [&](std::size_t index, const double* values) {
        FieldComparison& comparison = pair_.fields[index].comparison;
        const auto count = int(nodes_.size());
        if (areCommon)
            comparison.add(isA ? values : zeros_.data(), isA ? zeros_.data() : values, nodes_.data(), count);
        else if (isA)
            comparison.addToPeak(values, count);
    };
    for (; first < last && isInOrder; first += longestRun)
        records.turn(first, std::min(last - first, longestRun), takeNodes, takeColumn);
    return isInOrder;
}

bool OrderedRecords::isOnceEach() const
{
    return marks_.damage().repeatedRecords == 0;
}

} // namespace Nereo::Inspection

#include "NodeMarks.h"

#include <QtAlgorithms>

#include <algorithm>

namespace Nereo::Io {

namespace {

constexpr int bitsOfWord = 64;

} // namespace

NodeMarks::NodeMarks(int nodeCount, qint64 nodesTogether)
    : nodeCount_(std::max(nodeCount, 0)),
      lastNode_(int(std::min(qint64(nodeCount_), std::max(nodesTogether, qint64(1))))),
      marks_(std::size_t((qint64(lastNode_) + bitsOfWord - 1) / bitsOfWord))
{
}

void NodeMarks::mark(const int* nodes, int count, qint64 offset, qint64 recordSize)
{
    for (int i = 0; i < count; ++i, offset += recordSize)
        markOne(nodes[i], offset);
}

void NodeMarks::markOne(int node, qint64 offset)
{
    if (node < 1 || node > nodeCount_) {
        if (isFirstPass_ && damage_.recordsOutOfRange++ == 0) {
            damage_.firstNodeOutOfRange = node;
            damage_.firstOutOfRangeOffset = offset;
        }
        return;
    }
    if (node < firstNode_ || node > lastNode_) {
        if (node > lastNode_ && (nextNode_ == 0 || node < nextNode_))
            nextNode_ = node;
        return;
    }
    const auto index = unsigned(node - firstNode_);
    const quint64 bit = quint64(1) << (index % bitsOfWord);
    quint64& word = marks_[index / bitsOfWord];
    if ((word & bit) == 0) {
        word |= bit;
        return;
    }
    ++damage_.repeatedRecords;
    if (damage_.firstRepeatedOffset < 0 || offset < damage_.firstRepeatedOffset) {
        damage_.firstRepeatedNode = node;
        damage_.firstRepeatedOffset = offset;
    }
}

bool NodeMarks::beginNextPass()
{
    closeRange();
    if (nextNode_ == 0)
        return false;
    const int rangeSize = lastNode_ - firstNode_; // less one
    if (damage_.firstMissingNode == 0 && nextNode_ > lastNode_ + 1)
        damage_.firstMissingNode = lastNode_ + 1;
    firstNode_ = nextNode_;
    lastNode_ = int(std::min(qint64(firstNode_) + rangeSize, qint64(nodeCount_)));
    nextNode_ = 0;
    isFirstPass_ = false;
    std::fill(marks_.begin(), marks_.end(), 0);
    return true;
}

/// Counts the marks of the range, and finds its first node without one.
void NodeMarks::closeRange()
{
    for (std::size_t i = 0; i < marks_.size(); ++i) {
        markedNodes_ += qPopulationCount(marks_[i]);
        if (damage_.firstMissingNode == 0 && ~marks_[i] != 0) {
            const qint64 node = firstNode_ + qint64(i) * bitsOfWord + qCountTrailingZeroBits(~marks_[i]);
            if (node <= lastNode_)
                damage_.firstMissingNode = int(node);
        }
    }
}

ResultsDamage NodeMarks::damage() const
{
    ResultsDamage damage = damage_;
    damage.missingNodes = int(nodeCount_ - markedNodes_);
    if (damage.missingNodes > 0 && damage.firstMissingNode == 0)
        damage.firstMissingNode = lastNode_ + 1;
    return damage;
}

} // namespace Nereo::Io

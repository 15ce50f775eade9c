#pragma once

#include <NereoFileIO/Export.h>
#include <NereoFileIO/ResultsDamage.h>

#include <QtGlobal>

#include <vector>

namespace Nereo::Io {

/// Marks the nodes that have a record, with a bit for each node of a range, and finds what is wrong with
/// them.
///
/// A file may announce more nodes than there may be bits: its nodes are then looked at a range at a time, in
/// ascending order, each in a pass over all records.
class NEREOFILEIO_EXPORT NodeMarks {
public:
    /// For nodes 1 to the count, of which so many are looked at together.
    NodeMarks(int nodeCount, qint64 nodesTogether);

    /// The records of a pass in their order, by their nodes. The offset is that of the first one in the file.
    void mark(const int* nodes, int count, qint64 offset, qint64 recordSize);

    /// Ends a pass, and begins the next one. False where no node is left to look at.
    bool beginNextPass();

    ResultsDamage damage() const; ///< after the last pass

private:
    void markOne(int node, qint64 offset);
    void closeRange();

    int nodeCount_;
    int firstNode_ = 1; // of the range
    int lastNode_;
    bool isFirstPass_ = true;
    int nextNode_ = 0; // the smallest behind the range that has a record; 0 where there is none
    std::vector<quint64> marks_;
    qint64 markedNodes_ = 0;
    ResultsDamage damage_;
};

} // namespace Nereo::Io

#pragma once

#include <QtGlobal>

namespace Nereo::Io {

/// What is wrong with the nodes of a results file. A record counts here as soon as its node number is in the
/// file, as it does for a load.
struct ResultsDamage {
    int missingNodes = 0;     ///< without a record, those among them whose records are cut off
    int firstMissingNode = 0; ///< the smallest of them; 0 where there is none

    int repeatedRecords = 0;         ///< of a node that has had a record before
    int firstRepeatedNode = 0;       ///< that of the first of them in the file; 0 where there is none
    qint64 firstRepeatedOffset = -1; ///< where it stands, in bytes; -1 likewise

    int recordsOutOfRange = 0;         ///< of a node outside 1 to the number of nodes
    int firstNodeOutOfRange = 0;       ///< that of the first of them in the file
    qint64 firstOutOfRangeOffset = -1; ///< where it stands, in bytes; -1 where there is none
};

} // namespace Nereo::Io

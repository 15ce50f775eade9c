#pragma once

#include <QtGlobal>

namespace Nereo::Io {

/// What is wrong with a results file, and where.
struct ResultsProblem {
    enum Kind : int {
        None,
        TooShort,           ///< ends before the number of fields; at its end
        BadHeaderMarker,    ///< the header doesn't end with -1, and nothing behind it counts
        BadRunMarker,       ///< nor do the run data
        OtherByteOrder,     ///< the counts make sense only in the order that the first word doesn't select
        NegativeNodeCount,  ///< a load stops where a field is known
        NegativeFieldCount, ///< a load stops
        TooManyNodes,       ///< for a QVector, and a field is known; at the number of nodes
        RepeatedField,      ///< a second name with the code of an earlier one; a load stops there
        CountsPastTheFile,  ///< fewer bytes are there than the counts announce; at its end
        NodeOutOfRange,     ///< a record of a node that isn't there; a load stops where a field is known
        ReadFailed          ///< the disk gives no more; at the first byte that it doesn't give
    };

    Kind kind = None;
    qint64 offset = 0; ///< of the item that is wrong, in bytes from the start of the file
};

} // namespace Nereo::Io

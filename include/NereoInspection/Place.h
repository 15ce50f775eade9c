#pragma once

#include <QtGlobal>

namespace Nereo::Inspection {

/// A place in a file. What doesn't apply is absent: lines and columns in a binary file, the offset where an
/// XML document isn't UTF-8 or the place stands in an expanded entity.
struct Place {
    static constexpr qint64 Absent = -1;

    qint64 line = Absent;   ///< from 1
    qint64 column = Absent; ///< from 1, in characters; a byte-order mark is none
    qint64 offset = Absent; ///< from 0, in bytes of the file

    bool hasLine() const { return line != Absent; }
    bool hasOffset() const { return offset != Absent; }

    friend bool operator==(const Place& left, const Place& right)
    {
        return left.line == right.line && left.column == right.column && left.offset == right.offset;
    }
    friend bool operator!=(const Place& left, const Place& right) { return !(left == right); }
};

} // namespace Nereo::Inspection

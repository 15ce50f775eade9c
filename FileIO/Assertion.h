#pragma once

#include <QtGlobal>

/// Stops the process unless the condition holds, and reports the given place instead of the line that the
/// check happens to stand on: reports of crashes are matched by their text, so the text must survive every
/// edit.
#define NEREO_ASSERT_AT(condition, source, line)                                                             \
    ((condition) ? static_cast<void>(0) : qt_assert(#condition, source, line))

/// Stops the process, as Qt's containers do in the operation of theirs, unless the index is one of count
/// items.
#define NEREO_ASSERT_INDEX(index, count, operation, source)                                                  \
    ((index) >= 0 && (index) < (count) ? static_cast<void>(0)                                                \
                                       : qt_assert_x(operation, "index out of range", source, __LINE__))

#pragma once

#include <QtGlobal>

#ifndef QT_FORCE_ASSERTS
#error "The library's assertions hold in every build type: compile it with QT_FORCE_ASSERTS."
#endif

// The sources that are given here, and the lines where one is, are names under which reports of crashes are
// collected. They aren't places to look the code up.

/// Stops the process unless the condition holds. The report has the given line rather than that of the check,
/// since reports are matched by their text, which must survive every edit.
#define NEREO_ASSERT_AT(condition, source, line)                                                             \
    ((condition) ? static_cast<void>(0) : qt_assert(#condition, source, line))

/// Stops the process, as Qt's containers do in the operation of theirs, unless the index is one of count
/// items.
#define NEREO_ASSERT_INDEX(index, count, operation, source)                                                  \
    ((index) >= 0 && (index) < (count) ? static_cast<void>(0)                                                \
                                       : qt_assert_x(operation, "index out of range", source, __LINE__))

/// Stops the process, as making a QVector of that size would, at a negative number of items.
#define NEREO_ASSERT_COUNT(count, source)                                                                    \
    ((count) >= 0                                                                                            \
         ? static_cast<void>(0)                                                                              \
         : qt_assert_x("QVector::QVector", "Size must be greater than or equal to 0.", source, __LINE__))

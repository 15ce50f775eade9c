#pragma once

#include <QtGlobal>

/// Stops the process unless the condition holds, and reports the given place instead of the line that the
/// check happens to stand on: reports of crashes are matched by their text, so the text must survive every
/// edit.
#define NEREO_ASSERT_AT(condition, source, line)                                                             \
    ((condition) ? static_cast<void>(0) : qt_assert(#condition, source, line))

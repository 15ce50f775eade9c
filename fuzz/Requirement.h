#pragma once

#include <QByteArray>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <unistd.h>

/// What a target requires of the library beyond that it doesn't crash. What fails stops the process, which
/// is what makes the input a finding.

/// Can be called from a signal handler, and in the middle of an allocation.
[[noreturn]] inline void stopBecause(const char* reason)
{
    for (const char* text : {"\nFINDING: ", reason, "\n"}) {
        if (write(STDERR_FILENO, text, std::strlen(text)) < 0)
            break;
    }
    std::abort();
}

inline void require(bool condition, const char* what)
{
    if (!condition)
        stopBecause(what);
}

inline void requireSame(const QByteArray& actual, const QByteArray& expected, const char* what)
{
    if (actual == expected)
        return;
    std::fprintf(stderr, "--- expected\n%s\n--- actual\n%s\n", expected.constData(), actual.constData());
    stopBecause(what);
}

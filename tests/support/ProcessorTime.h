#pragma once

#include <csignal>

#include <sys/time.h>

/// Raised when the time that limitProcessorTime() allows is used up.
inline constexpr int processorTimeSignal = SIGVTALRM;

/// From now on the process may compute for so many seconds, or without a limit where they are 0.
inline void limitProcessorTime(int seconds)
{
    const itimerval timer {
        {0,       0},
        {seconds, 0}
    };
    // Only the time of the program's own code counts. A busy machine may fail no test, and neither may a
    // virtual machine that is slow at giving fresh pages for the memory that a file announces.
    setitimer(ITIMER_VIRTUAL, &timer, nullptr);
}

#pragma once

#include <cstdlib>

#include <sys/wait.h>
#include <unistd.h>

namespace Faults {

/// Ends a process that is a copy of another one, whose things it leaves alone. Counters of coverage are its
/// own, and only exit() writes them.
[[noreturn]] inline void endCopy(int code)
{
#ifdef NEREO_COVERAGE
    std::exit(code);
#else
    _exit(code);
#endif
}

/// Runs the function in a process of its own, which is a copy of this one, and gives the code with which it
/// exits: what the function gives; -1 where it crashes.
template <class Function>
int exitCodeOf(Function function)
{
    const pid_t process = fork();
    if (process == 0)
        endCopy(function());
    int status = 0;
    waitpid(process, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace Faults

#pragma once

#include <sys/wait.h>
#include <unistd.h>

namespace Faults {

/// Runs the function in a process of its own, which is a copy of this one, and gives the code with which it
/// exits: what the function gives; -1 where it crashes.
template <class Function>
int exitCodeOf(Function function)
{
    const pid_t process = fork();
    if (process == 0)
        _exit(function());
    int status = 0;
    waitpid(process, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace Faults

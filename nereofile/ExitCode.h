#pragma once

namespace Nereo::Tool {

/// What scripts learn of a run. Of several files the largest counts.
enum ExitCode : int {
    Success = 0,
    Found = 1,  ///< an error, a difference, or an address that isn't there
    Refused = 2 ///< wrong usage, a file that can't be read or written, a value that is refused; cancelled
};

inline ExitCode worse(ExitCode left, ExitCode right)
{
    return left > right ? left : right;
}

} // namespace Nereo::Tool

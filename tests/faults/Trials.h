#pragma once

#include "AllocationFaults.h"

#include <functional>

/// Runs what may crash in processes of their own, and goes on behind a crash.

namespace Faults {

/// What came of one allocation that failed.
struct Trial {
    bool faultHappened;    ///< otherwise there were no more allocations, and all faults have been tried
    const char* complaint; ///< what is wrong; null where nothing is
};

/// The operation while an allocation fails, of which it has to tell its caller.
Trial runWithFault(Allocator allocator, int number, bool persists, const std::function<void()>& operation);

enum class Isolation {
    None,   ///< one process for all trials, up to one that goes wrong
    Process ///< one for each trial, which so starts from what this process has done and no more
};

/// Tries the faults number 0, 1, 2 … until there are no more, and fails the test for each that crashes, hangs
/// or has a complaint, unless it happened at a known place.
void runTrials(const std::function<Trial(int number)>& trial, Isolation isolation = Isolation::None);

} // namespace Faults

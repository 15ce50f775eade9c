#pragma once

#include <ostream>
#include <string>
#include <vector>

/// Makes memory run out on order. A program that is linked with this has an operator new and a malloc of its
/// own, which the library and Qt use too.

namespace Faults {

enum class Allocator {
    OperatorNew,
    Malloc, ///< with calloc and realloc: the memory of Qt's containers
};

/// As the names of parametrised tests have it.
inline const char* nameOf(Allocator allocator)
{
    return allocator == Allocator::OperatorNew ? "New" : "Malloc";
}

inline void PrintTo(Allocator allocator, std::ostream* out)
{
    *out << nameOf(allocator);
}

/// While it lives, one allocation of the allocator fails, counted from 0, and where it persists every later
/// one too. One at a time, on one thread.
class AllocationFault {
public:
    AllocationFault(Allocator allocator, int number, bool persists);
    AllocationFault(const AllocationFault&) = delete;
    AllocationFault& operator=(const AllocationFault&) = delete;
    ~AllocationFault();

    /// Whether there have been so many allocations.
    bool hasHappened() const;
};

/// The number of pieces of memory that were allocated and not freed since.
long liveAllocations();

/// Where an allocation failed: the functions that were being called, as far as their libraries export them,
/// the innermost first.
class FaultPlace {
public:
    static constexpr int mostFrames = 64;

    void record();
    std::vector<std::string> functions() const;

private:
    void* frames_[mostFrames];
    int count_ = 0;
};

/// The place of the first failure of each fault goes there; so that it outlives the process, it can be memory
/// that is shared with another one.
void recordFaultsIn(FaultPlace* place);

} // namespace Faults

#include "AllocationFaults.h"

#include "support/Sanitizers.h"

#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <memory>
#include <new>

#include <cxxabi.h>
#include <dlfcn.h>
#include <execinfo.h>
#include <link.h>

// The allocator below the one of this program: that of the C library, or of a sanitizer.
#ifdef NEREO_SANITIZER
#define NEREO_UNDERLYING(function) __interceptor_##function
#else
#define NEREO_UNDERLYING(function) __libc_##function
#endif

extern "C" {
void* NEREO_UNDERLYING(malloc)(std::size_t size);
void* NEREO_UNDERLYING(calloc)(std::size_t count, std::size_t size);
void* NEREO_UNDERLYING(realloc)(void* memory, std::size_t size);
void NEREO_UNDERLYING(free)(void* memory);
}

namespace Faults {
namespace {

// Without constructors, since memory is allocated before those run.
struct {
    bool isArmed;
    Allocator allocator;
    int left; // allocations until the fault
    bool persists;
    bool hasHappened;
} fault;
FaultPlace* place;
long live;

bool fails(Allocator allocator)
{
    if (!fault.isArmed || allocator != fault.allocator || fault.left-- > 0)
        return false;
    if (fault.hasHappened)
        return fault.persists;
    fault.hasHappened = true;
    if (place != nullptr)
        place->record();
    return true;
}

/// Memory as malloc and its like give it, or none where this allocation is to fail.
template <class Allocate>
void* allocate(Allocator allocator, Allocate allocateBelow)
{
    if (fails(allocator)) {
        errno = ENOMEM;
        return nullptr;
    }
    return allocateBelow();
}

void* counted(void* memory)
{
    live += memory != nullptr;
    return memory;
}

std::string demangled(const char* name)
{
    int status = 0;
    const std::unique_ptr<char, decltype(&std::free)> text(
        abi::__cxa_demangle(name, nullptr, nullptr, &status), &std::free);
    return status == 0 ? text.get() : name;
}

/// The exported function that holds the address; empty where there is none.
std::string functionAt(void* address)
{
    Dl_info info;
    ElfW(Sym)* symbol = nullptr;
    const int found = dladdr1(address, &info, reinterpret_cast<void**>(&symbol), RTLD_DL_SYMENT);
    if (found == 0 || symbol == nullptr || info.dli_sname == nullptr)
        return {};
    const auto offset = static_cast<char*>(address) - static_cast<char*>(info.dli_saddr);
    return std::size_t(offset) <= symbol->st_size ? demangled(info.dli_sname) : std::string();
}

} // namespace

AllocationFault::AllocationFault(Allocator allocator, int number, bool persists)
{
    fault = {true, allocator, number, persists, false};
}

AllocationFault::~AllocationFault()
{
    fault.isArmed = false;
}

bool AllocationFault::hasHappened() const
{
    return fault.hasHappened;
}

long liveAllocations()
{
    return live;
}

void FaultPlace::record()
{
    count_ = backtrace(frames_, mostFrames);
}

std::vector<std::string> FaultPlace::functions() const
{
    std::vector<std::string> functions;
    for (int i = 0; i < count_; ++i) {
        const std::string function = functionAt(frames_[i]);
        if (!function.empty())
            functions.push_back(function);
    }
    return functions;
}

void recordFaultsIn(FaultPlace* newPlace)
{
    place = newPlace;
    if (place != nullptr)
        place->record(); // the first use of backtrace() allocates
}

} // namespace Faults

using Faults::Allocator;

void* operator new(std::size_t size)
{
    void* const memory =
        Faults::allocate(Allocator::OperatorNew, [size] { return NEREO_UNDERLYING(malloc)(size); });
    if (memory == nullptr)
        throw std::bad_alloc();
    return Faults::counted(memory);
}

void* operator new[](std::size_t size)
{
    return operator new(size);
}

// Left to a sanitizer these would give memory that the operators below may not take back.
void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return Faults::counted(
        Faults::allocate(Allocator::OperatorNew, [size] { return NEREO_UNDERLYING(malloc)(size); }));
}

void* operator new[](std::size_t size, const std::nothrow_t& nothrow) noexcept
{
    return operator new(size, nothrow);
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, const std::nothrow_t&) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory, const std::nothrow_t&) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

void operator delete[](void* memory, std::size_t) noexcept
{
    std::free(memory);
}

extern "C" {

void* malloc(std::size_t size) noexcept
{
    return Faults::counted(
        Faults::allocate(Allocator::Malloc, [size] { return NEREO_UNDERLYING(malloc)(size); }));
}

void* calloc(std::size_t count, std::size_t size) noexcept
{
    return Faults::counted(
        Faults::allocate(Allocator::Malloc, [=] { return NEREO_UNDERLYING(calloc)(count, size); }));
}

void* realloc(void* memory, std::size_t size) noexcept
{
    void* const moved =
        Faults::allocate(Allocator::Malloc, [=] { return NEREO_UNDERLYING(realloc)(memory, size); });
    return memory == nullptr ? Faults::counted(moved) : moved;
}

void free(void* memory) noexcept
{
    Faults::live -= memory != nullptr;
    NEREO_UNDERLYING(free)(memory);
}

} // extern "C"

#pragma once

#include <new>
#include <type_traits>

#include <sys/mman.h>

namespace Faults {

/// A value that this process and those that it forks have in common.
template <class Value>
class Shared {
public:
    static_assert(std::is_trivially_destructible_v<Value>);

    Shared()
        : memory_(mmap(nullptr, sizeof(Value), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0))
    {
        if (memory_ == MAP_FAILED)
            throw std::bad_alloc();
        new (memory_) Value {};
    }
    Shared(const Shared&) = delete;
    Shared& operator=(const Shared&) = delete;
    ~Shared() { munmap(memory_, sizeof(Value)); }

    Value& operator*() { return *static_cast<Value*>(memory_); }
    Value* operator->() { return &**this; }

private:
    void* memory_;
};

} // namespace Faults

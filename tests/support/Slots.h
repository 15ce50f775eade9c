#pragma once

#include <cstddef>
#include <cstring>

// Where in the table of a class's virtual operations one stands, with compilers that follow the C++ ABI of
// Itanium: all but Microsoft's.
#ifndef _MSC_VER
#define NEREO_ITANIUM_SLOTS

constexpr std::size_t firstSlotBehindDestructor = 2; // which has two: one destroys, the other frees as well

/// The slot of a virtual operation that its class inherits from a single base, or from none.
template <class Operation>
std::size_t slotOf(Operation operation)
{
    std::size_t parts[2]; // the place in the table, in bytes, which most machines mark in its lowest bit
    static_assert(sizeof(operation) == sizeof(parts));
    std::memcpy(parts, &operation, sizeof(parts));
    return (parts[0] & ~std::size_t(1)) / sizeof(void*);
}

#endif

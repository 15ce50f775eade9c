#pragma once

#include <cstddef>

namespace Nereo::Tool {

/// Writes all of it, also where the system takes it in parts. 0, or the number of the system's error.
int writeAll(int descriptor, const char* bytes, std::size_t size);

} // namespace Nereo::Tool

#pragma once

namespace Nereo::Tool {

/// What stands at the other end of a descriptor.
bool isTerminal(int descriptor);

/// How many columns it has; 80 where it is no terminal, or doesn't say.
int columnsOf(int descriptor);

/// Whether people see colours there, and want them.
bool hasColours(int descriptor);

} // namespace Nereo::Tool

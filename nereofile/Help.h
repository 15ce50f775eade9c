#pragma once

#include <QString>

namespace Nereo::Tool {

struct Command;

/// What the program does, and its commands.
QString programHelp(int columns);

/// How a command is called, and its options.
QString commandHelp(const Command& command, int columns);

} // namespace Nereo::Tool

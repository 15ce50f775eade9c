#pragma once

#include "ExitCode.h"

namespace Nereo::Tool {

class Arguments;
class InputPath;
class Output;

/// Prints the settings of a configuration as the solver will have them, all or those that are asked for, and
/// where each comes from.
ExitCode printEffectiveSettings(const InputPath& input, const Arguments& arguments, Output& output);

} // namespace Nereo::Tool

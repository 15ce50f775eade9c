#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace Nereo::Tool {

class Output;

using Sink = std::function<void(std::string_view bytes)>;

/// Writes a file of what the function gives to the sink: all of it, or the file stays as it was, also where
/// the program is interrupted. Throws Refusal where it can't be written.
void saveFile(const std::string& path, const std::function<void(const Sink& sink)>& write);

/// The same to standard output, where the path is "-".
void saveTo(const std::string& path, Output& output, const std::function<void(const Sink& sink)>& write);

} // namespace Nereo::Tool

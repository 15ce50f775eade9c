#pragma once

#include <NereoInspection/FileKind.h>

#include <string>

namespace Nereo::Tool {

class Arguments;
class InputPath;
class Output;

/// Writes the settings that a configuration has, and no others, in the form that the suffix of the target
/// names; "-" is text on standard output.
class ConfigurationConversion {
public:
    /// Throws Refusal where the target or the options are for something else.
    ConfigurationConversion(const Arguments& arguments, const std::string& target);

    /// Throws Refusal where the other form can't carry what the file says.
    void run(const InputPath& input, Inspection::FileKind kind, Output& output) const;

private:
    std::string target_;
    bool isXml_;
};

} // namespace Nereo::Tool

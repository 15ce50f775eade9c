#pragma once

#include "ExitCode.h"

#include <cstddef>
#include <iterator>
#include <limits>
#include <string_view>

namespace Nereo::Tool {

class Arguments;
class Output;

/// An option of a command, as the parser and the help have it.
struct Option {
    const char* name;  ///< without the two minus signs
    const char* value; ///< what stands for its value in the help; none where it has none
    const char* help;
};

/// The options of a command.
class Options {
public:
    constexpr Options() = default;
    template <std::size_t size>
    constexpr Options(const Option (&options)[size]) : begin_(options), end_(options + size)
    {
    }

    constexpr const Option* begin() const { return begin_; }
    constexpr const Option* end() const { return end_; }

private:
    const Option* begin_ = nullptr;
    const Option* end_ = nullptr;
};

/// What stands behind the name of a command, but for the options.
struct Operands {
    static constexpr int any = std::numeric_limits<int>::max();

    const char* usage;
    int fewest;
    int most;
    int firstValue = any; ///< of the values, each behind its address, which may begin with a minus sign
};

struct Command {
    const char* name;
    Operands operands;
    const char* summary;
    Options options;
    const char* details; ///< paragraphs of the help, which say what isn't to be guessed
    const char* examples;
    ExitCode (*run)(const Arguments& arguments, Output& output);
    /// What stands behind "--" where it isn't operands, which it is only with this option.
    const char* trailing = nullptr;
    const char* trailingOption = nullptr;
};

class CommandTable {
public:
    const Command* begin() const;
    const Command* end() const;
    const Command* find(std::string_view name) const; ///< null if there is none
};

inline constexpr CommandTable commands;

/// The option that all of them have.
inline constexpr Option helpOption {"help", nullptr, "show this text"};

ExitCode runInfo(const Arguments& arguments, Output& output);
ExitCode runCheck(const Arguments& arguments, Output& output);
ExitCode runDiff(const Arguments& arguments, Output& output);
ExitCode runGet(const Arguments& arguments, Output& output);
ExitCode runSet(const Arguments& arguments, Output& output);
ExitCode runUnset(const Arguments& arguments, Output& output);
ExitCode runConvert(const Arguments& arguments, Output& output);
ExitCode runCodes(const Arguments& arguments, Output& output);

} // namespace Nereo::Tool

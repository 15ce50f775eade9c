#pragma once

#include <NereoInspection/FileKind.h>

#include <QString>

#include <map>
#include <string>
#include <vector>

namespace Nereo::Tool {

struct Command;

/// What a command was called with.
class Arguments {
public:
    /// Reads the words behind the name of the command. Throws Refusal where they aren't such as it takes.
    Arguments(const Command& command, const std::vector<std::string>& words);

    bool wantsHelp() const { return has("help"); }

    const std::vector<std::string>& operands() const { return operands_; }

    /// What stands behind "--", where the command takes it for something else than operands.
    const std::vector<std::string>& trailing() const { return trailing_; }

    bool has(const std::string& option) const { return options_.count(option) > 0; }
    QString value(const std::string& option) const; ///< empty where the option wasn't given

    /// That of --kind; Unknown where the content is to tell. Throws Refusal where there is no such kind.
    Inspection::FileKind kind() const;

private:
    std::vector<std::string> takeOperands(const std::vector<std::string>& words);
    bool takesTrailing(const std::vector<std::string>& options) const;
    void readOptions(std::vector<std::string> words);
    void requireOperands() const;

    const Command& command_;
    std::vector<std::string> operands_;
    std::vector<std::string> trailing_;
    std::map<std::string, std::string> options_;
};

} // namespace Nereo::Tool

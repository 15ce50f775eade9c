#include "Arguments.h"

#include "Commands.h"
#include "Messages.h"

#include <Inspection/NearestName.h>
#include <NereoUtility/StringConversion.h>

#include <CLI/CLI.hpp>

#include <algorithm>

namespace Nereo::Tool {

namespace {

using Inspection::FileKind;

const std::string optionMark = "--";

bool isOption(const std::string& word)
{
    return word.size() > 1 && word.front() == '-';
}

bool isLongOption(const std::string& word)
{
    return word.compare(0, optionMark.size(), optionMark) == 0;
}

/// Whether the next word is the value of this one.
bool takesNextWord(const Command& command, const std::string& word)
{
    return std::any_of(command.options.begin(), command.options.end(), [&word](const Option& option) {
        return option.value != nullptr && word == optionMark + option.name;
    });
}

[[noreturn]] void refuse(const Command& command, const QString& what)
{
    throw Refusal(QStringLiteral("%1: %2; see nereofile %1 --help").arg(QLatin1String(command.name), what));
}

[[noreturn]] void refuseOption(const Command& command, const std::string& word)
{
    QStringList known {QStringLiteral("--help")};
    for (const Option& option : command.options)
        known.append(Util::toQString(optionMark + option.name));
    const QString given = Util::toQString(word);
    const QString nearest = Inspection::nearestName(given.section(QLatin1Char('='), 0, 0), known);
    refuse(command,
           QStringLiteral("there is no option %1").arg(given)
               + (nearest.isEmpty() ? QString() : QStringLiteral(", but %1").arg(nearest)));
}

QString kindNames()
{
    QStringList names;
    for (int i = 1; i <= int(FileKind::Results); ++i)
        names.append(Inspection::kindName(FileKind(i)));
    return names.join(QLatin1String(", "));
}

} // namespace

Arguments::Arguments(const Command& command, const std::vector<std::string>& words) : command_(command)
{
    readOptions(takeOperands(words));
    if (!wantsHelp())
        requireOperands();
}

QString Arguments::value(const std::string& option) const
{
    const auto found = options_.find(option);
    return found == options_.end() ? QString() : Util::toQString(found->second);
}

FileKind Arguments::kind() const
{
    if (!has("kind"))
        return FileKind::Unknown;
    const FileKind kind = Inspection::kindOfName(value("kind"));
    if (kind == FileKind::Unknown)
        refuse(command_, QStringLiteral("\"%1\" is none of the kinds %2").arg(value("kind"), kindNames()));
    return kind;
}

/// Keeps the operands and gives the options. The parser of these would take "-.5" and "-inf" for some.
std::vector<std::string> Arguments::takeOperands(const std::vector<std::string>& words)
{
    std::vector<std::string> options;
    for (auto word = words.begin(); word != words.end(); ++word) {
        const int place = int(operands_.size());
        const bool isValuesPlace =
            place >= command_.operands.firstValue && (place - command_.operands.firstValue) % 2 == 0;
        if (*word == optionMark) {
            auto& rest = takesTrailing(options) ? trailing_ : operands_;
            rest.insert(rest.end(), word + 1, words.end());
            break;
        }
        if (!isOption(*word) || (isValuesPlace && !isLongOption(*word))) {
            operands_.push_back(*word);
        } else {
            options.push_back(*word);
            if (takesNextWord(command_, *word) && word + 1 != words.end())
                options.push_back(*++word);
        }
    }
    return options;
}

/// Whether what follows "--" is for another program rather than the rest of the operands.
bool Arguments::takesTrailing(const std::vector<std::string>& options) const
{
    return command_.trailing != nullptr && !operands_.empty()
        && std::find(options.begin(), options.end(), optionMark + command_.trailingOption) != options.end();
}

void Arguments::readOptions(std::vector<std::string> words)
{
    CLI::App parser;
    parser.set_help_flag(); // none but that of the table
    parser.allow_extras();
    const auto addFlag = [&](const std::string& name, const std::string& names) {
        parser.add_flag(names)->disable_flag_override()->each(
            [this, name](const std::string&) { options_[name]; });
    };
    addFlag(helpOption.name, "-h,--help");
    for (const Option& option : command_.options) {
        const std::string name = option.name;
        if (option.value == nullptr)
            addFlag(name, optionMark + name);
        else
            parser
                .add_option_function<std::string>(
                    optionMark + name, [this, name](const std::string& value) { options_[name] = value; })
                ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
    }

    const std::string last = words.empty() ? std::string() : words.back();
    std::reverse(words.begin(), words.end());
    try {
        parser.parse(words);
    } catch (const CLI::ParseError&) { // whose words are about types of C++
        for (const Option& option : command_.options) {
            const std::string name = optionMark + option.name;
            if (option.value != nullptr && last == name)
                refuse(command_,
                       QStringLiteral("%1 needs its %2")
                           .arg(Util::toQString(name), QLatin1String(option.value)));
        }
        refuse(command_, QStringLiteral("an option without a value has got one"));
    }
    const std::vector<std::string> unknown = parser.remaining();
    if (!unknown.empty())
        refuseOption(command_, unknown.front());
}

void Arguments::requireOperands() const
{
    const Operands& wanted = command_.operands;
    const int count = int(operands_.size());
    const bool isPaired = wanted.firstValue == Operands::any || (count - wanted.firstValue) % 2 == 1;
    if (count < wanted.fewest)
        refuse(command_, QStringLiteral("something is missing of %1").arg(QLatin1String(wanted.usage)));
    if (count > wanted.most)
        refuse(command_, QStringLiteral("more than %1").arg(QLatin1String(wanted.usage)));
    if (!isPaired)
        refuse(command_, QStringLiteral("the value of %1 is missing").arg(Util::toQString(operands_.back())));
}

} // namespace Nereo::Tool

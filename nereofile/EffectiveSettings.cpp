#include "EffectiveSettings.h"

#include "Arguments.h"
#include "InputPath.h"
#include "Json.h"
#include "Messages.h"

#include <NereoInspection/Origins.h>
#include <NereoUtility/StringConversion.h>

#include <QStringList>

#include <algorithm>

namespace Nereo::Tool {

namespace {

using Inspection::EffectiveConfiguration;
using Inspection::EffectiveSetting;
using Inspection::FileKind;
using Inspection::Origin;

using Words = std::vector<std::string>;

/// The solver's command line begins with the solver, and with the prefix of the job. Who asks for settings
/// may leave both out, or the first.
struct CommandLine {
    Words words;
    QStringList invented; ///< the settings that would come from what was left out
};

CommandLine commandLineOf(const Words& given)
{
    if (given.empty())
        return {};
    const auto isKey = [](const std::string& word) { return !word.empty() && word.front() == '-'; };
    const auto wordsBefore = std::find_if(given.begin(), given.end(), isKey) - given.begin();
    CommandLine line {given, {}};
    if (wordsBefore < 1) {
        line.words.insert(line.words.begin(), std::string());
        line.invented.append(QStringLiteral("JobPrefix"));
    }
    if (wordsBefore < 2) {
        line.words.insert(line.words.begin(), "solver");
        line.invented.append(QStringLiteral("ExePath"));
    }
    return line;
}

/// The settings by ascending keys; what nobody said of the command line is taken back.
std::vector<EffectiveSetting> settingsOf(const InputPath& input, const Words& given,
                                         const Inspection::CheckOptions& options)
{
    const CommandLine line = commandLineOf(given);
    EffectiveConfiguration configuration = effectiveConfiguration(input.path(), line.words, options);
    if (configuration.endOfLoad)
        say(findingLine(input.name(), *configuration.endOfLoad));
    if (!configuration.commandLineError.isEmpty())
        throw Refusal(QStringLiteral("get: ") + configuration.commandLineError);
    if (!line.invented.isEmpty()) {
        const EffectiveConfiguration ofFile = effectiveConfiguration(input.path(), {}, options);
        for (std::size_t i = 0; i < ofFile.settings.size(); ++i) {
            if (line.invented.contains(ofFile.settings[i].key))
                configuration.settings[i] = ofFile.settings[i];
        }
    }
    return configuration.settings;
}

/// Those that are asked for, in that order; says what isn't there.
std::vector<EffectiveSetting> chosen(const std::vector<EffectiveSetting>& all, const InputPath& input,
                                     const Words& keys)
{
    std::vector<EffectiveSetting> settings;
    for (const std::string& word : keys) {
        const QString key = Util::toQString(word);
        const auto found = std::find_if(
            all.begin(), all.end(), [&key](const EffectiveSetting& setting) { return setting.key == key; });
        if (found != all.end()) {
            settings.push_back(*found);
            continue;
        }
        QStringList known;
        for (const EffectiveSetting& setting : all)
            known.append(setting.key);
        say(about(input.name(), missingText(key, known)));
    }
    return settings;
}

QString originText(const EffectiveSetting& setting, const std::string& file)
{
    switch (setting.origin) {
    case Origin::File:
        return QStringLiteral("%1:%2:%3")
            .arg(Util::toQString(file), QString::number(setting.place.line),
                 QString::number(setting.place.column));
    case Origin::CommandLine:
        return QStringLiteral("command line");
    default:
        return QStringLiteral("default");
    }
}

void writeText(const std::vector<EffectiveSetting>& settings, const std::string& file, Output& output)
{
    for (const EffectiveSetting& setting : settings)
        output << setting.key << "=" << setting.value << " " << originText(setting, file) << "\n";
}

void writePlace(Json& json, const char* name, qint64 number)
{
    json.key(QString::fromLatin1(name));
    if (number == Inspection::Place::Absent)
        json.null();
    else
        json.value(number);
}

void writeJson(const std::vector<EffectiveSetting>& settings, Output& output)
{
    Json json(output);
    json.beginObject();
    for (const EffectiveSetting& setting : settings) {
        json.key(setting.key);
        json.beginObject();
        json.member("value", setting.value);
        json.member("origin", originName(setting.origin));
        writePlace(json, "line", setting.place.line);
        writePlace(json, "column", setting.place.column);
        json.endObject();
    }
    json.endObject();
}

} // namespace

ExitCode printEffectiveSettings(const InputPath& input, const Arguments& arguments, Output& output)
{
    const QString error = input.openError();
    if (!error.isEmpty())
        throw Refusal(about(input.name(), error));
    Inspection::CheckOptions options {arguments.kind()};
    const FileKind kind =
        options.kind == FileKind::Unknown ? Inspection::kindOfFile(input.path()) : options.kind;
    if (input.path() != input.name())
        options.kind = kind; // a copy hasn't the suffix by which the solver takes it for XML
    if (kind != FileKind::ConfigurationXml && kind != FileKind::ConfigurationText)
        throw Refusal(about(input.name(), QStringLiteral("is no configuration")));
    const std::vector<EffectiveSetting> all = settingsOf(input, arguments.trailing(), options);
    const Words keys(arguments.operands().begin() + 1, arguments.operands().end());
    const std::vector<EffectiveSetting> settings = keys.empty() ? all : chosen(all, input, keys);
    if (arguments.has("json"))
        writeJson(settings, output);
    else
        writeText(settings, input.name(), output);
    return keys.empty() || settings.size() == keys.size() ? Success : Found;
}

} // namespace Nereo::Tool

#include "Arguments.h"
#include "Commands.h"
#include "EffectiveSettings.h"
#include "InputPath.h"
#include "Json.h"
#include "Messages.h"
#include "Output.h"
#include "Values.h"

#include <NereoUtility/StringConversion.h>

#include <optional>

namespace Nereo::Tool {

namespace {

using Inspection::FileKind;

/// What is asked for, and what the file has of it.
class Answer {
public:
    struct Entry {
        QString address;
        std::optional<QString> text;
    };

    explicit Answer(const std::vector<std::string>& addresses)
    {
        for (const std::string& address : addresses)
            entries_.push_back({Util::toQString(address), {}});
    }

    void take(const Values& values, const std::string& file)
    {
        if (entries_.empty()) {
            for (const Values::Value& value : values)
                entries_.push_back({value.address, value.text});
            return;
        }
        QHash<QString, QString> texts;
        for (const Values::Value& value : values)
            texts.insert(value.address, value.text);
        for (Entry& entry : entries_) {
            const auto found = texts.constFind(entry.address);
            if (found != texts.constEnd())
                entry.text = *found;
            else
                sayMissing(entry.address, values, file);
        }
    }

    const std::vector<Entry>& entries() const { return entries_; }
    bool isWhole() const { return isWhole_; }

private:
    void sayMissing(const QString& address, const Values& values, const std::string& file)
    {
        isWhole_ = false;
        QStringList known;
        for (const Values::Value& value : values)
            known.append(value.address);
        say(about(file, missingText(address, known)));
    }

    std::vector<Entry> entries_;
    bool isWhole_ = true;
};

void writeText(const Answer& answer, bool isBare, Output& output)
{
    for (const Answer::Entry& entry : answer.entries()) {
        if (!entry.text)
            continue;
        if (!isBare)
            output << entry.address << "=";
        output << *entry.text << "\n";
    }
}

void writeJson(const Answer& answer, Output& output)
{
    Json json(output);
    json.beginObject();
    for (const Answer::Entry& entry : answer.entries()) {
        json.key(entry.address);
        if (entry.text)
            json.value(*entry.text);
        else
            json.null();
    }
    json.endObject();
}

Values valuesOf(const InputPath& input, FileKind kind)
{
    const QString error = input.openError();
    if (!error.isEmpty())
        throw Refusal(about(input.name(), error));
    if (kind == FileKind::Unknown)
        kind = Inspection::kindOfFile(input.path());
    Values values;
    const bool isKnown =
        outline(input.path(), kind, [&values](const Inspection::Item& item) { values.add(item); });
    if (!isKnown)
        throw Refusal(about(input.name(), QStringLiteral("is of no kind that is known; --kind can tell")));
    return values;
}

} // namespace

ExitCode runGet(const Arguments& arguments, Output& output)
{
    const std::vector<std::string>& operands = arguments.operands();
    const InputPath input(operands.front());
    if (arguments.has("effective"))
        return printEffectiveSettings(input, arguments, output);
    Answer answer({operands.begin() + 1, operands.end()});
    answer.take(valuesOf(input, arguments.kind()), input.name());
    if (arguments.has("json"))
        writeJson(answer, output);
    else
        writeText(answer, operands.size() == 2, output);
    return answer.isWhole() ? Success : Found;
}

} // namespace Nereo::Tool

#include "Arguments.h"
#include "Commands.h"
#include "InputPath.h"
#include "Json.h"
#include "Messages.h"
#include "ResultsInfo.h"
#include "Values.h"
#include "ValuesInfo.h"

#include <NereoUtility/StringConversion.h>

#include <optional>

namespace Nereo::Tool {

namespace {

using Inspection::FileKind;

/// Where the answers go.
class Report {
public:
    Report(const Arguments& arguments, Output& output)
        : wantsStatistics_(arguments.has("stats")), kind_(arguments.kind()), output_(output)
    {
        if (!arguments.has("json"))
            return;
        json_.emplace(output);
        json_->beginObject();
        json_->key(QStringLiteral("files"));
        json_->beginArray();
    }

    ExitCode add(const std::string& operand)
    {
        const InputPath input(operand);
        const QString error = input.openError();
        if (!error.isEmpty()) {
            say(about(operand, error));
            return Refused;
        }
        const FileKind kind = kind_ == FileKind::Unknown ? Inspection::kindOfFile(input.path()) : kind_;
        if (json_) {
            json_->beginObject();
            json_->member("file", Util::toQString(operand));
            json_->key(QStringLiteral("kind"));
            json_->textOrNull(kindName(kind));
        } else if (count_++ > 0) {
            output_ << "\n";
        }
        const ExitCode code = kind == FileKind::Results ? addResults(input) : addValues(input, kind);
        if (json_)
            json_->endObject();
        return code;
    }

    void finish()
    {
        if (!json_)
            return;
        json_->endArray();
        json_->endObject();
    }

private:
    ExitCode addResults(const InputPath& input)
    {
        const Results results = readResults(input, wantsStatistics_);
        if (json_)
            writeJson(*json_, results);
        else
            writeText(output_, input.name(), results);
        return results.hasStatistics == wantsStatistics_ ? Success : Refused;
    }

    ExitCode addValues(const InputPath& input, FileKind kind)
    {
        if (json_)
            addJson(input, kind);
        if (kind == FileKind::Unknown) {
            say(about(input.name(), QStringLiteral("is of no kind that is known; --kind can tell")));
            return Refused;
        }
        if (!json_)
            addText(input, kind);
        return Success;
    }

    void addJson(const InputPath& input, FileKind kind)
    {
        Values values;
        outline(input.path(), kind, [&values](const Inspection::Item& item) { values.add(item); });
        writeJson(*json_, kind, values);
    }

    void addText(const InputPath& input, FileKind kind)
    {
        ValuesInfo values(kind);
        outline(input.path(), kind, [&values](const Inspection::Item& item) { values.add(item); });
        values.writeText(output_, input.name());
    }

    bool wantsStatistics_;
    FileKind kind_;
    Output& output_;
    std::optional<Json> json_;
    int count_ = 0;
};

} // namespace

ExitCode runInfo(const Arguments& arguments, Output& output)
{
    Report report(arguments, output);
    ExitCode worst = Success;
    for (const std::string& operand : arguments.operands())
        worst = worse(worst, report.add(operand));
    report.finish();
    return worst;
}

} // namespace Nereo::Tool

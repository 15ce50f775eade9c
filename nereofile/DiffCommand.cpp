#include "Arguments.h"
#include "Commands.h"
#include "InputPath.h"
#include "Messages.h"
#include "Numbers.h"
#include "Output.h"
#include "Progress.h"

#include <NereoInspection/Comparison.h>
#include <NereoUtility/StringConversion.h>

#include <QStringList>

namespace Nereo::Tool {

namespace {

using Inspection::Comparison;
using Inspection::ComparisonOptions;

std::optional<double> toleranceOf(const Arguments& arguments, const char* option)
{
    if (!arguments.has(option))
        return {};
    const QString text = arguments.value(option);
    const std::optional<double> number = numberOf(text);
    if (!number || !(*number >= 0))
        throw Refusal(QStringLiteral("diff: the value of --%1, \"%2\", isn't a number from 0")
                          .arg(QLatin1String(option), text));
    return number;
}

ComparisonOptions optionsOf(const Arguments& arguments)
{
    ComparisonOptions options;
    options.absolute = toleranceOf(arguments, "absolute");
    options.relative = toleranceOf(arguments, "relative");
    options.peak = toleranceOf(arguments, "peak");
    if (arguments.has("fields")) {
        for (const QString& name : arguments.value("fields").split(QLatin1Char(',')))
            options.fields.push_back(Util::toStdString(name.trimmed()));
    }
    return options;
}

void requireCompared(const Comparison& comparison, const InputPath& a, const InputPath& b)
{
    if (comparison.outcome == Comparison::Outcome::Compared)
        return;
    if (comparison.file.empty())
        throw Refusal(comparison.message);
    throw Refusal(about(comparison.file == a.path() ? a.name() : b.name(), comparison.message));
}

} // namespace

ExitCode runDiff(const Arguments& arguments, Output& output)
{
    ComparisonOptions options = optionsOf(arguments);
    const InputPath a(arguments.operands()[0]);
    const InputPath b(arguments.operands()[1]);
    for (const InputPath* const input : {&a, &b}) {
        const QString error = input->openError();
        if (!error.isEmpty())
            throw Refusal(about(input->name(), error));
    }
    Comparison comparison;
    {
        Progress progress(Util::toQString(a.name() + " and " + b.name()));
        options.progress = progress.function();
        comparison = compare(a.path(), b.path(), options);
    }
    requireCompared(comparison, a, b);
    if (!arguments.has("quiet"))
        output << (arguments.has("json") ? QString::fromUtf8(toJson(comparison)) : toText(comparison));
    return comparison.areSame() ? Success : Found;
}

} // namespace Nereo::Tool

#include "Arguments.h"
#include "Commands.h"
#include "ConfigurationConversion.h"
#include "InputPath.h"
#include "Messages.h"
#include "Progress.h"
#include "ResultsConversion.h"

#include <NereoInspection/Check.h>
#include <NereoUtility/StringConversion.h>

namespace Nereo::Tool {

namespace {

using Inspection::FileKind;

bool isConfiguration(FileKind kind)
{
    return kind == FileKind::ConfigurationXml || kind == FileKind::ConfigurationText;
}

void requireNoErrors(const InputPath& input)
{
    Inspection::CheckOptions options;
    Progress progress(Util::toQString(input.name()));
    options.progress = progress.function();
    const qint64 errors = check(input.path(), options).counts.errors;
    if (errors > 0)
        throw Refusal(
            about(input.name(),
                  QStringLiteral("has errors (%1), which nereofile check shows; --force converts it "
                                 "nevertheless")
                      .arg(errors)));
}

} // namespace

ExitCode runConvert(const Arguments& arguments, Output& output)
{
    const InputPath input(arguments.operands()[0]);
    const std::string& target = arguments.operands()[1];
    const QString error = input.openError();
    if (!error.isEmpty())
        throw Refusal(about(input.name(), error));

    const FileKind kind = Inspection::kindOfFile(input.path());
    if (isConfiguration(kind)) {
        const ConfigurationConversion conversion(arguments, target);
        if (!arguments.has("force"))
            requireNoErrors(input);
        conversion.run(input, kind, output);
    } else if (kind == FileKind::Results) {
        const ResultsConversion conversion(arguments, target);
        if (!arguments.has("force"))
            requireNoErrors(input);
        conversion.run(input, output);
    } else {
        throw Refusal(about(input.name(), QStringLiteral("only configurations and results are converted")));
    }
    return Success;
}

} // namespace Nereo::Tool

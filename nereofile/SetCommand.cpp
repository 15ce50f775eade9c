#include "Arguments.h"
#include "Commands.h"
#include "InputPath.h"
#include "Messages.h"
#include "Output.h"
#include "Saving.h"
#include "UnifiedDifference.h"

#include <NereoInspection/Edit.h>
#include <NereoUtility/StringConversion.h>

namespace Nereo::Tool {

namespace {

using Inspection::Edit;
using Inspection::EditProblem;
using Inspection::EditResult;
using Inspection::FileEdit;

QString reasonOf(const EditResult& result)
{
    return result.address.isEmpty() ? result.message : result.address + QLatin1String(": ") + result.message;
}

/// Where the changed file is to go to: onto the old one, to another, or only as what differs onto the screen.
void deliver(const FileEdit& file, const Arguments& arguments, Output& output)
{
    const std::string& path = arguments.operands().front();
    const std::string target = arguments.has("output") ? Util::toStdString(arguments.value("output")) : path;
    const QByteArray& bytes = file.bytes();
    const auto write = [&bytes](const Sink& sink) { sink({bytes.constData(), std::size_t(bytes.size())}); };
    if (arguments.has("dry-run")) {
        const QByteArray difference =
            unifiedDifference(Util::toQString(path), Util::toQString(target), file.originalBytes(), bytes);
        output.write({difference.constData(), std::size_t(difference.size())});
    } else if (arguments.has("output")) {
        saveTo(target, output, write);
    } else if (bytes != file.originalBytes()) {
        saveFile(path, write);
    }
}

ExitCode change(const std::vector<Edit>& edits, const Arguments& arguments, Output& output)
{
    const std::string& path = arguments.operands().front();
    FileEdit file(path);
    if (const EditResult state = file.state(); !state)
        throw Refusal(about(path, reasonOf(state)));
    const EditResult result = file.apply(edits);
    if (result.problem == EditProblem::NotThere && !edits.front().text) {
        say(about(path, reasonOf(result)));
        return Found;
    }
    if (!result)
        throw Refusal(about(path, reasonOf(result)));
    deliver(file, arguments, output);
    return Success;
}

} // namespace

ExitCode runSet(const Arguments& arguments, Output& output)
{
    std::vector<Edit> edits;
    const std::vector<std::string>& operands = arguments.operands();
    for (std::size_t i = 1; i + 1 < operands.size(); i += 2)
        edits.push_back({Util::toQString(operands[i]), Util::toQString(operands[i + 1])});
    return change(edits, arguments, output);
}

ExitCode runUnset(const Arguments& arguments, Output& output)
{
    std::vector<Edit> edits;
    const std::vector<std::string>& operands = arguments.operands();
    for (std::size_t i = 1; i < operands.size(); ++i)
        edits.push_back({Util::toQString(operands[i]), {}});
    return change(edits, arguments, output);
}

} // namespace Nereo::Tool

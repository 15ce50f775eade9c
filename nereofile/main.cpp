#include "Arguments.h"
#include "Commands.h"
#include "Help.h"
#include "Interruption.h"
#include "Messages.h"
#include "Output.h"
#include "Terminal.h"

#include <Inspection/NearestName.h>
#include <NereoUtility/StringConversion.h>
#include <NereoUtility/Version.h>

#include <QTextCodec>

#include <cerrno>
#include <new>
#include <unistd.h>

namespace {

using namespace Nereo::Tool;
using Words = std::vector<std::string>;

QString versionText()
{
    return QStringLiteral("nereofile %1\n").arg(Nereo::Util::Version::Current.toString());
}

[[noreturn]] void refuseCommand(const std::string& word)
{
    const QString name = Nereo::Util::toQString(word);
    QStringList known;
    for (const Command& command : commands)
        known.append(QLatin1String(command.name));
    const QString nearest = Nereo::Inspection::nearestName(name, known);
    throw Refusal(QStringLiteral("there is no command %1%2; see nereofile --help")
                      .arg(name, nearest.isEmpty() ? QString() : QStringLiteral(", but ") + nearest));
}

ExitCode run(const Words& words, Output& output)
{
    if (words.empty())
        throw Refusal(QStringLiteral("a command is missing; see nereofile --help"));
    const int columns = columnsOf(STDOUT_FILENO);
    if (words.front() == "--help" || words.front() == "-h") {
        output << programHelp(columns);
        return Success;
    }
    if (words.front() == "--version") {
        output << versionText();
        return Success;
    }
    const Command* const command = commands.find(words.front());
    if (command == nullptr)
        refuseCommand(words.front());
    const Arguments arguments(*command, Words(words.begin() + 1, words.end()));
    if (arguments.wantsHelp()) {
        output << commandHelp(*command, columns);
        return Success;
    }
    return command->run(arguments, output);
}

ExitCode runToTheEnd(const Words& words)
{
    try {
        Output output;
        const ExitCode code = run(words, output);
        output.flush();
        return code;
    } catch (const OutputFailure& failure) {
        if (failure.error != EPIPE)
            say(QStringLiteral("standard output: ") + qt_error_string(failure.error));
    } catch (const Refusal& refusal) {
        say(refusal.message());
    } catch (const Interrupted&) {
        // whoever did it knows
    } catch (const std::bad_alloc&) {
        say(QStringLiteral("there is too little memory"));
    }
    return Refused;
}

} // namespace

int main(int argc, char** argv)
{
    endAtInterruption();
    // Names of files are bytes here, and UTF-8 to the libraries, whatever the locale says.
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    return runToTheEnd(Words(argv + std::min(argc, 1), argv + argc));
}

#include "Interruption.h"

#include "ExitCode.h"

#include <csignal>
#include <string_view>
#include <unistd.h>

namespace Nereo::Tool {

namespace {

volatile std::sig_atomic_t isDeferred = 0;
volatile std::sig_atomic_t hasCome = 0;
volatile std::sig_atomic_t isProgressShown = 0;

void takeSignal(int)
{
    hasCome = 1;
    if (isDeferred != 0)
        return;
    eraseProgress();
    _exit(Refused);
}

} // namespace

void endAtInterruption()
{
    struct sigaction action {};
    action.sa_handler = takeSignal;
    action.sa_flags = SA_RESTART;
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction inherited {};
        ::sigaction(signal, nullptr, &inherited);
        if (inherited.sa_handler != SIG_IGN) // as nohup wants it
            ::sigaction(signal, &action, nullptr);
    }
    // The error of the write says that nobody reads any more, or that a file may not become larger.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}

InterruptionDeferral::InterruptionDeferral()
{
    isDeferred = 1;
}

InterruptionDeferral::~InterruptionDeferral()
{
    isDeferred = 0;
}

bool InterruptionDeferral::isRequested()
{
    return hasCome != 0;
}

void InterruptionDeferral::throwIfRequested()
{
    if (isRequested())
        throw Interrupted();
}

void setProgressShown(bool isShown)
{
    isProgressShown = isShown ? 1 : 0;
}

void eraseProgress()
{
    if (isProgressShown == 0)
        return;
    constexpr std::string_view erasing = "\r\033[K";
    isProgressShown = ::write(STDERR_FILENO, erasing.data(), erasing.size()) < 0 ? 1 : 0;
}

} // namespace Nereo::Tool

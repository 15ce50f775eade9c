#include "LoadWatch.h"

#include "ProcessorTime.h"
#include "Sanitizers.h"

#include <unistd.h>

#include <csignal>

namespace {

#if defined NEREO_SANITIZER || defined NEREO_EMULATED || defined NEREO_COVERAGE
constexpr int secondsAllowed = 30; // the sanitizers, emulators and counters take their part
#else
constexpr int secondsAllowed = 1;
#endif

constexpr int endings[] = {processorTimeSignal, SIGABRT};

std::string loading; // what the handler reports, which may not allocate

void report(int signal)
{
    const ssize_t written = ::write(STDERR_FILENO, loading.data(), loading.size());
    static_cast<void>(written);
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

} // namespace

LoadWatch::LoadWatch(const std::string& description)
{
    loading =
        "stopped, or longer than " + std::to_string(secondsAllowed) + " s, in a file " + description + '\n';
    for (const int signal : endings)
        std::signal(signal, report);
    limitProcessorTime(secondsAllowed);
}

LoadWatch::~LoadWatch()
{
    limitProcessorTime(0);
    for (const int signal : endings)
        std::signal(signal, SIG_DFL);
}

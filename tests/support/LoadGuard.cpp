#include "LoadGuard.h"

#include <sys/time.h>
#include <unistd.h>

#include <csignal>
#include <initializer_list>

namespace {

#if defined(__SANITIZE_ADDRESS__)
#define NEREO_SANITIZED
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define NEREO_SANITIZED
#endif
#endif

#ifdef NEREO_SANITIZED
constexpr int secondsAllowed = 10; // the sanitizers take their part
#else
constexpr int secondsAllowed = 1;
#endif

constexpr int endings[] = {SIGVTALRM, SIGABRT};

std::string loading; // what the handler reports, which may not allocate

void report(int signal)
{
    const ssize_t written = ::write(STDERR_FILENO, loading.data(), loading.size());
    static_cast<void>(written);
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

void allow(int seconds)
{
    const itimerval timer {
        {0,       0},
        {seconds, 0}
    };
    // Neither a busy machine fails a test, nor one that is slow to give the memory that a file announces.
    setitimer(ITIMER_VIRTUAL, &timer, nullptr);
}

} // namespace

LoadGuard::LoadGuard(const std::string& file)
{
    loading = "stopped, or longer than " + std::to_string(secondsAllowed) + " s, in a file " + file + '\n';
    for (const int signal : endings)
        std::signal(signal, report);
    allow(secondsAllowed);
}

LoadGuard::~LoadGuard()
{
    allow(0);
    for (const int signal : endings)
        std::signal(signal, SIG_DFL);
}

#include "CommaLocale.h"

#include <gmock/gmock.h>

#include <QString>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>

#if defined(__GNUC__) && !defined(__STRICT_ANSI__)
#error "The sources are to be compiled as they are on every machine: without extensions of the compiler"
#endif

namespace {

// The library prints nothing, so a message of Qt's is a failure, but for the one that reports an assertion.
void failOnMessage(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    if (type == QtFatalMsg) {
        std::fprintf(stderr, "%s\n", qPrintable(message));
        return;
    }
    ADD_FAILURE() << "printed: " << qPrintable(message);
}

#ifdef NEREO_COVERAGE
// An aborted process takes its counters with it, a process that exits writes them. For a death test it is all
// the same.
void keepCountersOnAbort()
{
    std::signal(SIGABRT, [](int) { std::exit(EXIT_FAILURE); });
}
#else
void keepCountersOnAbort() {}
#endif

} // namespace

int main(int argc, char** argv)
{
    ::testing::InitGoogleMock(&argc, argv);
    qInstallMessageHandler(failOnMessage);
    if (std::count(argv, argv + argc, std::string("--comma-locale")) > 0)
        ::testing::AddGlobalTestEnvironment(new CommaLocale); // which GoogleTest deletes
    keepCountersOnAbort();
    return RUN_ALL_TESTS();
}

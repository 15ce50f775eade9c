#include "CommaLocale.h"

#include <gmock/gmock.h>

#include <QString>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>

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

} // namespace

int main(int argc, char** argv)
{
    ::testing::InitGoogleMock(&argc, argv);
    qInstallMessageHandler(failOnMessage);
    if (std::count(argv, argv + argc, std::string("--comma-locale")) > 0)
        ::testing::AddGlobalTestEnvironment(new CommaLocale); // which GoogleTest deletes
    return RUN_ALL_TESTS();
}

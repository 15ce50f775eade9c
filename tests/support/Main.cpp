#include <gmock/gmock.h>

#include <QString>

#include <cstdio>
#include <cstdlib>

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
    return RUN_ALL_TESTS();
}

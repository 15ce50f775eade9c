#include "Terminal.h"

#include <QByteArray>
#include <QtGlobal>

#include <sys/ioctl.h>
#include <unistd.h>

namespace Nereo::Tool {

bool isTerminal(int descriptor)
{
    return ::isatty(descriptor) == 1;
}

int columnsOf(int descriptor)
{
    constexpr int usual = 80;
    winsize size {};
    const bool isKnown = ::ioctl(descriptor, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return isKnown ? size.ws_col : usual;
}

bool hasColours(int descriptor)
{
    return isTerminal(descriptor) && qEnvironmentVariableIsEmpty("NO_COLOR") && qgetenv("TERM") != "dumb";
}

} // namespace Nereo::Tool

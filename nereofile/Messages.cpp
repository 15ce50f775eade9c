#include "Messages.h"

#include "Bytes.h"
#include "Text.h"

#include <unistd.h>

namespace Nereo::Tool {

void say(const QString& message)
{
    const QByteArray line = "nereofile: " + oneLine(message).toUtf8() + '\n';
    writeAll(STDERR_FILENO, line.constData(), std::size_t(line.size()));
}

} // namespace Nereo::Tool

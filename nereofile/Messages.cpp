#include "Messages.h"

#include "Bytes.h"
#include "Text.h"

#include <NereoInspection/Outline.h>

#include <unistd.h>

namespace Nereo::Tool {

void say(const QString& message)
{
    const QByteArray line = "nereofile: " + oneLine(message).toUtf8() + '\n';
    writeAll(STDERR_FILENO, line.constData(), std::size_t(line.size()));
}

QString missingText(const QString& address, const QStringList& known)
{
    const QString nearest = Inspection::nearestAddress(address, known);
    const QString text = QStringLiteral("there is no %1").arg(address);
    return nearest.isEmpty() ? text : text + QLatin1String(", but ") + nearest;
}

} // namespace Nereo::Tool

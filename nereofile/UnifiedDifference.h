#pragma once

#include <QByteArray>
#include <QString>

namespace Nereo::Tool {

/// What patch(1) makes the new bytes of the old ones with; empty where they are the same.
QByteArray unifiedDifference(const QString& oldName, const QString& newName, const QByteArray& oldBytes,
                             const QByteArray& newBytes);

} // namespace Nereo::Tool

#pragma once

#include <NereoInspection/Export.h>

#include <QString>
#include <QStringList>

namespace Nereo::Inspection {

/// The name that somebody probably meant; empty if none is near. Upper and lower case count as near, and so
/// do a few letters that are missing, too many, others or swapped, the fewer the shorter the word.
NEREOINSPECTION_EXPORT QString nearestName(const QString& word, const QStringList& names);

/// What a finding says behind its message of the name that somebody probably meant; empty if there is none.
QString suggestion(const QString& word, const QStringList& names);

} // namespace Nereo::Inspection

#pragma once

#include <NereoInspection/Edit.h>

#include <QByteArray>
#include <QStringList>

#include <string>
#include <vector>

/// What holds of all edits of any file, for the fuzz target and the tests.

/// The addresses of the values of a file, each once.
QStringList addressesOf(const std::string& path, Nereo::Inspection::FileKind kind);

/// Edits what stands in a file, and says what is broken of what is promised; empty if nothing is. The result
/// is written to another path, whose suffix is to be that of the first.
std::string brokenPromise(const std::string& path, const std::string& changedPath,
                          Nereo::Inspection::FileKind kind,
                          const std::vector<Nereo::Inspection::Edit>& edits);

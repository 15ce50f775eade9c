#pragma once

#include <NereoFileIO/ControlFile.h>
#include <NereoFileIO/FieldVariable.h>
#include <NereoFileIO/MaterialDatabaseFile.h>
#include <NereoFileIO/Nereo2ConfigFile.h>

#include <QByteArray>

/// All of a model that its format carries, a line for each item, so that two models that are the same to a
/// file have one description. Numbers of which a file holds six digits are told with these.

/// The first of the constants that a control file carries.
inline constexpr int firstSavedConstant = Nereo::Io::kTurbRatio;

QByteArray describe(const Nereo::Io::Nereo2ConfigFile& config);
QByteArray describe(const Nereo::Io::MaterialDatabaseFile& database);
QByteArray describe(const Nereo::Io::ControlFile& file);

#pragma once

#include "FuzzBytes.h"

#include <NereoFileIO/ControlFile.h>
#include <NereoFileIO/GbiFile.h>
#include <NereoFileIO/MaterialDatabaseFile.h>
#include <NereoFileIO/Nereo2ConfigFile.h>

#include <functional>

/// Models with values from the bytes of a fuzzer, of which a save keeps all that its format has a place for.

/// Gives a text that the format can bring back.
using TakeText = std::function<QString(FuzzBytes&)>;

QString takeXmlText(FuzzBytes& bytes);    ///< no control characters but tabs and line feeds
QString takeSimplified(FuzzBytes& bytes); ///< no white space at the ends, and single blanks within
QString takeLine(FuzzBytes& bytes);
QString takeWord(FuzzBytes& bytes); ///< no white space, at least one character

Nereo::Io::Nereo2ConfigFile takeConfiguration(FuzzBytes& bytes, const TakeText& takeText);
Nereo::Io::MaterialDatabaseFile takeMaterials(FuzzBytes& bytes, const TakeText& takeText);
Nereo::Io::ControlFile takeControlFile(FuzzBytes& bytes);
Nereo::Io::GbiFile takeGbiFile(FuzzBytes& bytes);

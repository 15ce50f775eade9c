#pragma once

#include <NereoFileIO/ControlFile.h>
#include <NereoFileIO/MaterialDatabaseFile.h>
#include <NereoFileIO/Nereo2ConfigFile.h>
#include <NereoFileIO/ResultsFile.h>

// Everything that two files hold is the same, numbers to the bit. Paths are not compared.

void expectSameContent(const Nereo::Io::Nereo2ConfigFile& actual,
                       const Nereo::Io::Nereo2ConfigFile& expected);
void expectSameContent(const Nereo::Io::ControlFile& actual, const Nereo::Io::ControlFile& expected);
void expectSameContent(const Nereo::Io::MaterialDatabaseFile& actual,
                       const Nereo::Io::MaterialDatabaseFile& expected);
void expectSameContent(const Nereo::Io::ResultsFile& actual, const Nereo::Io::ResultsFile& expected);

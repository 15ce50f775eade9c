#pragma once

#include "InputFile.h"
#include "Listener.h"

#include <NereoInspection/Check.h>

namespace Nereo::Inspection {

/// What is wrong with one file; where it isn't open, that.
CheckedFile checkFile(const InputFile& file, const CheckOptions& options);

/// Adds what else has been found to the findings of the file, at its place among them. Its codes are others.
void addFindings(CheckedFile& checked, FindingListener& listener);

} // namespace Nereo::Inspection

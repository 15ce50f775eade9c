#pragma once

#include "InputFile.h"

#include <NereoInspection/Comparison.h>

namespace Nereo::Io {
class ResultsProgressMeter;
} // namespace Nereo::Io

namespace Nereo::Inspection {

/// Compares the values of two files, those in fields excepted, and adds what differs to the comparison, which
/// knows the kinds. False if that couldn't be done: the comparison then says why.
bool compareValues(const InputFile& a, const InputFile& b, const ComparisonOptions& options,
                   Io::ResultsProgressMeter& meter, Comparison& comparison);

} // namespace Nereo::Inspection

#pragma once

#include "InputFile.h"

#include <NereoInspection/Comparison.h>

namespace Nereo::Io {
class ResultsProgressMeter;
} // namespace Nereo::Io

namespace Nereo::Inspection {

/// Compares the fields of two results files, and adds what differs to the comparison. False if that couldn't
/// be done: the comparison then says why.
bool compareFields(const InputFile& a, const InputFile& b, const ComparisonOptions& options,
                   Io::ResultsProgressMeter& meter, Comparison& comparison);

} // namespace Nereo::Inspection

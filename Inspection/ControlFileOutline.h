#pragma once

#include <vector>

namespace Nereo::Inspection {

/// A section that control files may have: its name in the title, and the beginning of the addresses in it.
struct ControlFileSection {
    const char* name;
    const char* address;
};

/// All of them, in the order in which a writer writes them; those that no writer writes come last.
const std::vector<ControlFileSection>& controlFileSections();

} // namespace Nereo::Inspection

#pragma once

namespace Nereo::Io {

/// The code of a quantity that the solver knows: a solution field, a material property, a solver constant or
/// a kind of boundary condition. Files carry its name, the name of the enumerator; CodeNameTable converts.
///
/// The codes run from 1 to 361 without a gap. The last, kNone, is the answer for every name that is not
/// known; kNull is an ordinary entry.
enum FieldVariable : int {
#define FIELD_VARIABLE(name, code) name = (code),
#include <NereoFileIO/FieldVariable.def>
};

/// The code of a flag of nodes or boundaries. It shares the number range of FieldVariable: which of the two a
/// number means depends on where it stands, and the caller of CodeNameTable::nameForCode() says it.
enum NodeFlag : int {
#define NODE_FLAG(name, code) name = (code),
#include <NereoFileIO/NodeFlag.def>
};

} // namespace Nereo::Io

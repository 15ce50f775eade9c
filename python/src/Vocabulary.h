#pragma once

#include <pybind11/pybind11.h>

#include <string>

namespace Nereo::Python {

/// The code of the field variable with the name, those of the conductivity's components among them; 0 for
/// every other text, the names of node flags too.
int fieldVariableCode(const std::string& name);

/// The name of a code from 0 to kNone as files have it.
std::string fieldVariableName(int code);

void bindVocabulary(pybind11::module_& module);

} // namespace Nereo::Python

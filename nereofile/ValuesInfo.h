#pragma once

#include <NereoInspection/FileKind.h>

#include <string>

namespace Nereo::Tool {

class Json;
class Output;
class Values;

/// What a file says that is no results file, the most important first and no more than a screen.
void writeText(Output& output, const std::string& name, Inspection::FileKind kind, const Values& values);

/// The members of an object, all values among them.
void writeJson(Json& json, Inspection::FileKind kind, const Values& values);

} // namespace Nereo::Tool

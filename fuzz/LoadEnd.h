#pragma once

#include <NereoInspection/FileKind.h>
#include <NereoInspection/Finding.h>

#include <string>
#include <vector>

/// How a load of the file into a new object of that kind ends: Fails, Throws, or None where it gives true. A
/// load that stops the process does so.
Nereo::Inspection::Effect endOfLoad(const std::string& path, Nereo::Inspection::FileKind kind);

/// The same in a child of this process: Stops where that is stopped. The children print nothing.
Nereo::Inspection::Effect endOfLoadInAChild(const std::string& path, Nereo::Inspection::FileKind kind);

/// The first effect of a check's findings that ends a load, in the order of the file; None if there is none.
Nereo::Inspection::Effect firstEnd(const std::vector<Nereo::Inspection::Finding>& findings);

/// What a load into a new object gives, saved to another file. False where it can't be loaded and saved, or
/// where its kind is only read or only written.
bool saveAgain(const std::string& path, Nereo::Inspection::FileKind kind, const std::string& target);

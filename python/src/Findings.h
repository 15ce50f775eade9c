#pragma once

#include <NereoFileIO/File.h>
#include <NereoFileIO/SaveResult.h>
#include <NereoInspection/Check.h>

#include <pybind11/pybind11.h>

#include <functional>
#include <string>

namespace Nereo::Python {

namespace py = pybind11;

/// Findings as nereofile.Finding has them.
py::tuple pythonFindings(const Inspection::CheckedFile& file);

/// Throws the exception that tells of what is wrong with a file: a nereofile.FileError, or where the file
/// can't be opened, one that is an OSError as well.
[[noreturn]] void throwFileError(const std::string& path, const Inspection::CheckedFile& file);

/// The same of a file that nothing was found in, but that can't be loaded or saved.
[[noreturn]] void throwFileError(const std::string& path, const std::string& message);

/// Checks the file as one of the kind, and unless something is found that is in the way, loads it. In the way
/// are errors, if strict, and otherwise only what a load doesn't survive. Runs without Python's lock; load is
/// given the path and says whether it succeeded.
void loadChecked(const std::string& path, Inspection::FileKind kind, bool strict,
                 const std::function<bool(const std::string&)>& load);

/// Throws what explains why a file couldn't be saved, if it couldn't. Warns of one that isn't safe on the
/// disk, which throws where Python makes errors of warnings.
void requireSaved(const std::string& path, const Io::SaveResult& result);

/// Saves a copy of a file that no other thread knows, while these go on. Throws as requireSaved().
void saveUnlocked(const Io::File& copy, const std::string& path);

void bindInspection(py::module_& module);

} // namespace Nereo::Python

#pragma once

#include <string>

/// Expects the bytes to equal the file of that name in tests/data, in which @VERSION@ and @BRANCH@ stand for
/// those of the library. Run the tests with NEREO_UPDATE_GOLDEN=1 to write the file anew, and review the
/// difference.
void expectGolden(const std::string& bytes, const std::string& fileName);

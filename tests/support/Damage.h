#pragma once

#include <string>
#include <vector>

/// A file that is no longer what its writer wrote.
struct DamagedFile {
    std::string damage; ///< what has happened to it, as in "cut to 17 bytes"
    std::string bytes;
};

/// Every beginning of the file, the empty one and the whole file among them.
std::vector<DamagedFile> cutAnywhere(const std::string& whole);

/// Each of the first 1024 bytes replaced by 0x00, by 0xFF and by its complement.
std::vector<DamagedFile> withAByteReplaced(const std::string& whole);

/// Each line dropped, each one doubled, and each swapped with each of the next ten.
std::vector<DamagedFile> withLinesMoved(const std::string& whole);

/// All of the above.
std::vector<DamagedFile> damaged(const std::string& whole);

#pragma once

#include <string>

namespace Nereo::Io {

/// What became of a save that is whole or not at all.
///
/// The file at the path is the new one where the status is Saved or NotForced, and as it was, or not there,
/// with every other.
struct SaveResult {
    enum Status : int {
        Saved,          ///< the disk has all of it
        CannotCreate,   ///< no such folder, a name that is too long, too many open files, no path at all
        NoPermission,   ///< to write the file, to read and write its folder, or to keep the file's owner
        NoRegularFile,  ///< a folder, a pipe or a device stands there, which can't be replaced by a file
        DiskFull,       ///< or a quota, or a limit to the size of files
        WriteFailed,    ///< the disk doesn't take it
        CannotReplace,  ///< the new file can't take the place of the old one
        ContentRefused, ///< a text with characters that XML can't carry; a function of the caller gave false
        NoWriter,       ///< the class writes no files, or its doSaveTo() opens them by itself
        NotForced ///< it is there as a whole, but maybe not after a power failure: the folder can't be forced
    };

    Status status = Saved;

    std::string reason; ///< in the system's words; empty where the system didn't fail

    bool isReplaced() const { return status == Saved || status == NotForced; } ///< the new file is there

    explicit operator bool() const { return status == Saved; }
};

} // namespace Nereo::Io

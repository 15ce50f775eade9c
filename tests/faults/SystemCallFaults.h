#pragma once

#include <string>

/// Makes files fail on order. A program that is linked with this has system calls of its own, which Qt uses
/// too.

namespace Faults {

enum class SystemCall {
    Open,
    Stat,
    Access,
    Read,
    Write,
    Force, ///< to the disk
    Close,
    ReadLink,
    Link,
    Rename,
    Remove,
    ChangeOwner,
    ChangeMode,
    Attribute, ///< an extended one: list, get, set or remove
    Any        ///< all of them, counted together
};

/// While it lives, it stands between Qt and the files in a folder: it counts their system calls, and makes
/// those fail that it is told to. One at a time, on one thread.
class FaultyFiles {
public:
    explicit FaultyFiles(const std::string& folder);
    FaultyFiles(const FaultyFiles&) = delete;
    FaultyFiles& operator=(const FaultyFiles&) = delete;
    ~FaultyFiles();

    static constexpr int always = -1;

    /// The calls from the given number on fail, counted from 0: so many of them, or all.
    void fail(SystemCall call, int error, int first, int times = always);

    /// No file can be made that has no name, as on file systems that don't know them.
    void refuseUnnamedFiles();

    /// Each file is a link to itself, as if made between two calls.
    void turnIntoLinks();

    /// No read or write takes more than so many bytes.
    void limitTransfers(int bytes);

    int count(SystemCall call) const;
    int failed(SystemCall call) const; ///< how many of them, since the object was made
    long transferred() const;          ///< bytes that were read or written
};

} // namespace Faults

#include "SystemCallFaults.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <limits>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace Faults {
namespace {

constexpr int callCount = int(SystemCall::Any) + 1;
constexpr int mostFiles = 1024;

struct Call {
    int count;
    int firstFailure;
    int failuresLeft;
    int error;
};

// Without constructors, since files are read before those run.
struct {
    bool isActive;
    char folder[PATH_MAX];
    bool isOpen[mostFiles]; // by descriptor, the files of the folder
    Call calls[callCount];
    int failed[callCount];
    std::size_t transferLimit;
    long transferred;
    bool refusesUnnamed;
    bool areLinks;
} files;

bool isWatched(int descriptor)
{
    return files.isActive && descriptor >= 0 && descriptor < mostFiles && files.isOpen[descriptor];
}

bool isWatched(const char* path)
{
    return files.isActive && std::strncmp(path, files.folder, std::strlen(files.folder)) == 0;
}

bool isWatched(int folder, const char* name)
{
    return folder == AT_FDCWD ? isWatched(name) : isWatched(folder);
}

bool isDue(Call& call)
{
    const bool isDue = call.error != 0 && call.count >= call.firstFailure && call.failuresLeft != 0;
    ++call.count;
    if (!isDue)
        return false;
    if (call.failuresLeft > 0)
        --call.failuresLeft;
    errno = call.error;
    return true;
}

bool fails(SystemCall kind)
{
    const bool isDueByItself = isDue(files.calls[int(kind)]);
    const bool fails = isDue(files.calls[int(SystemCall::Any)]) || isDueByItself;
    files.failed[int(kind)] += fails;
    return fails;
}

/// The function of the C library that has the name of one here.
template <class Function>
Function* below(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

/// A call that fails, or that of the C library.
template <class Function, class... Arguments>
auto call(bool isOurs, SystemCall kind, Function*, const char* name, Arguments... arguments)
{
    using Result = decltype(below<Function>(name)(arguments...));
    return isOurs && fails(kind) ? Result(-1) : below<Function>(name)(arguments...);
}

/// A read or write, of no more than the limit.
template <class Buffer>
ssize_t transfer(SystemCall kind, long number, int descriptor, Buffer* buffer, std::size_t size)
{
    if (!isWatched(descriptor))
        return syscall(number, descriptor, buffer, size);
    if (fails(kind))
        return -1;
    const ssize_t count = syscall(number, descriptor, buffer, std::min(size, files.transferLimit));
    files.transferred += std::max(count, ssize_t(0));
    return count;
}

int openFile(int folder, const char* path, int flags, mode_t mode)
{
    const bool isOurs = isWatched(folder, path);
    if (isOurs && fails(SystemCall::Open))
        return -1;
    if (isOurs && files.refusesUnnamed && (flags & O_TMPFILE) == O_TMPFILE) {
        errno = EOPNOTSUPP;
        return -1;
    }
    const int descriptor = int(syscall(SYS_openat, folder, path, flags, mode));
    if (descriptor >= 0 && descriptor < mostFiles)
        files.isOpen[descriptor] = isOurs;
    return descriptor;
}

/// The mode behind the flags of an open, where there is one.
mode_t modeIn(std::va_list& arguments, int flags)
{
    const bool makesAFile = (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
    return makesAFile ? va_arg(arguments, mode_t) : 0;
}

} // namespace

FaultyFiles::FaultyFiles(const std::string& folder)
{
    std::memset(&files, 0, sizeof files);
    std::strncpy(files.folder, folder.c_str(), sizeof files.folder - 1);
    files.transferLimit = std::numeric_limits<std::size_t>::max();
    files.isActive = true;
}

FaultyFiles::~FaultyFiles()
{
    files.isActive = false;
}

void FaultyFiles::fail(SystemCall call, int error, int first, int times)
{
    files.calls[int(call)] = {0, first, times, error};
}

void FaultyFiles::refuseUnnamedFiles()
{
    files.refusesUnnamed = true;
}

void FaultyFiles::turnIntoLinks()
{
    files.areLinks = true;
}

void FaultyFiles::limitTransfers(int bytes)
{
    files.transferLimit = std::size_t(bytes);
}

int FaultyFiles::count(SystemCall call) const
{
    return files.calls[int(call)].count;
}

int FaultyFiles::failed(SystemCall call) const
{
    return files.failed[int(call)];
}

long FaultyFiles::transferred() const
{
    return files.transferred;
}

} // namespace Faults

using Faults::SystemCall;

// The calls that Qt and the library make of the C library for a file.

#define NEREO_CALL(isOurs, kind, function, ...)                                                              \
    Faults::call(Faults::isWatched isOurs, SystemCall::kind, &(function), #function, __VA_ARGS__)

extern "C" {

int open64(const char* path, int flags, ...)
{
    std::va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = Faults::modeIn(arguments, flags);
    va_end(arguments);
    return Faults::openFile(AT_FDCWD, path, flags, mode);
}

int openat64(int folder, const char* path, int flags, ...)
{
    std::va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = Faults::modeIn(arguments, flags);
    va_end(arguments);
    return Faults::openFile(folder, path, flags, mode);
}

int statx(int descriptor, const char* path, int flags, unsigned mask, struct statx* status) noexcept
{
    if (Faults::isWatched(descriptor) && Faults::fails(SystemCall::Stat))
        return -1;
    return int(syscall(SYS_statx, descriptor, path, flags, mask, status));
}

int stat64(const char* path, struct stat64* status) noexcept
{
    return NEREO_CALL((path), Stat, stat64, path, status);
}

int fstat64(int descriptor, struct stat64* status) noexcept
{
    return NEREO_CALL((descriptor), Stat, fstat64, descriptor, status);
}

int access(const char* path, int type) noexcept
{
    const bool isOurs = Faults::files.isActive && std::strncmp(path, "/proc/self/fd/", 14) == 0;
    return Faults::call(isOurs, SystemCall::Access, &access, "access", path, type);
}

ssize_t read(int descriptor, void* buffer, std::size_t size)
{
    return Faults::transfer(SystemCall::Read, SYS_read, descriptor, buffer, size);
}

ssize_t write(int descriptor, const void* buffer, std::size_t size)
{
    return Faults::transfer(SystemCall::Write, SYS_write, descriptor, buffer, size);
}

int fsync(int descriptor)
{
    if (!Faults::isWatched(descriptor))
        return int(syscall(SYS_fsync, descriptor));
    return Faults::fails(SystemCall::Force) ? -1 : 0; // the files of a test needn't outlive it
}

int close(int descriptor)
{
    const bool fails = Faults::isWatched(descriptor) && Faults::fails(SystemCall::Close);
    const int error = errno;
    const int result = int(syscall(SYS_close, descriptor)); // which it is after a failure too
    if (!fails)
        return result;
    errno = error;
    return -1;
}

ssize_t readlinkat(int folder, const char* name, char* link, std::size_t size) noexcept
{
    if (Faults::files.areLinks && Faults::isWatched(folder, name)) {
        const std::size_t length = std::min(std::strlen(name), size);
        std::memcpy(link, name, length);
        return ssize_t(length);
    }
    return NEREO_CALL((folder, name), ReadLink, readlinkat, folder, name, link, size);
}

int linkat(int oldFolder, const char* oldName, int folder, const char* name, int flags) noexcept
{
    return NEREO_CALL((folder, name), Link, linkat, oldFolder, oldName, folder, name, flags);
}

int renameat(int oldFolder, const char* oldName, int folder, const char* name) noexcept
{
    return NEREO_CALL((folder, name), Rename, renameat, oldFolder, oldName, folder, name);
}

int unlinkat(int folder, const char* name, int flags) noexcept
{
    return NEREO_CALL((folder, name), Remove, unlinkat, folder, name, flags);
}

int fchown(int descriptor, uid_t user, gid_t group) noexcept
{
    return NEREO_CALL((descriptor), ChangeOwner, fchown, descriptor, user, group);
}

int fchmod(int descriptor, mode_t mode) noexcept
{
    return NEREO_CALL((descriptor), ChangeMode, fchmod, descriptor, mode);
}

ssize_t flistxattr(int descriptor, char* names, std::size_t size) noexcept
{
    return NEREO_CALL((descriptor), Attribute, flistxattr, descriptor, names, size);
}

ssize_t fgetxattr(int descriptor, const char* name, void* value, std::size_t size) noexcept
{
    return NEREO_CALL((descriptor), Attribute, fgetxattr, descriptor, name, value, size);
}

int fsetxattr(int descriptor, const char* name, const void* value, std::size_t size, int flags) noexcept
{
    return NEREO_CALL((descriptor), Attribute, fsetxattr, descriptor, name, value, size, flags);
}

int fremovexattr(int descriptor, const char* name) noexcept
{
    return NEREO_CALL((descriptor), Attribute, fremovexattr, descriptor, name);
}

} // extern "C"

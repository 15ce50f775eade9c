#include "SystemCallFaults.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <limits>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace Faults {
namespace {

constexpr int callCount = int(SystemCall::Close) + 1;
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
    std::size_t transferLimit;
    long transferred;
} files;

bool isWatched(int descriptor)
{
    return files.isActive && descriptor >= 0 && descriptor < mostFiles && files.isOpen[descriptor];
}

bool isWatched(const char* path)
{
    return files.isActive && std::strncmp(path, files.folder, std::strlen(files.folder)) == 0;
}

bool fails(SystemCall kind)
{
    Call& call = files.calls[int(kind)];
    const bool isDue = call.error != 0 && call.count >= call.firstFailure && call.failuresLeft != 0;
    ++call.count;
    if (!isDue)
        return false;
    if (call.failuresLeft > 0)
        --call.failuresLeft;
    errno = call.error;
    return true;
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

int openFile(const char* path, int flags, mode_t mode)
{
    const bool isOurs = isWatched(path);
    if (isOurs && fails(SystemCall::Open))
        return -1;
    const int descriptor = int(syscall(SYS_openat, AT_FDCWD, path, flags, mode));
    if (descriptor >= 0 && descriptor < mostFiles)
        files.isOpen[descriptor] = isOurs;
    return descriptor;
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

void FaultyFiles::limitTransfers(int bytes)
{
    files.transferLimit = std::size_t(bytes);
}

int FaultyFiles::count(SystemCall call) const
{
    return files.calls[int(call)].count;
}

long FaultyFiles::transferred() const
{
    return files.transferred;
}

} // namespace Faults

using Faults::SystemCall;

// The calls that Qt makes of the C library for a file.

extern "C" {

int open64(const char* path, int flags, ...)
{
    std::va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return Faults::openFile(path, flags, mode);
}

int statx(int descriptor, const char* path, int flags, unsigned mask, struct statx* status) noexcept
{
    if (Faults::isWatched(descriptor) && Faults::fails(SystemCall::Stat))
        return -1;
    return int(syscall(SYS_statx, descriptor, path, flags, mask, status));
}

ssize_t read(int descriptor, void* buffer, std::size_t size)
{
    return Faults::transfer(SystemCall::Read, SYS_read, descriptor, buffer, size);
}

ssize_t write(int descriptor, const void* buffer, std::size_t size)
{
    return Faults::transfer(SystemCall::Write, SYS_write, descriptor, buffer, size);
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

} // extern "C"

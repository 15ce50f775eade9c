#include "InputPath.h"

#include "Bytes.h"
#include "Messages.h"

#include <NereoUtility/StringConversion.h>

#include <QFile>
#include <QFileInfo>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Nereo::Tool {

namespace {

const std::string standardInput = "-";

QString systemError(int number)
{
    return qt_error_string(number);
}

/// A file that has no name any more, open for reading and writing.
int openNameless()
{
    const QByteArray folder = qgetenv("TMPDIR");
    QByteArray name = (folder.isEmpty() ? QByteArray("/tmp") : folder) + "/nereofile-XXXXXX";
    const int descriptor = ::mkostemp(name.data(), O_CLOEXEC);
    if (descriptor >= 0)
        ::unlink(name.constData());
    return descriptor;
}

int copyBytes(int from, int to)
{
    constexpr std::size_t blockSize = 64 * 1024;
    std::array<char, blockSize> block;
    for (;;) {
        const ssize_t count = ::read(from, block.data(), block.size());
        if (count == 0)
            return 0;
        if (count < 0 && errno != EINTR)
            return errno;
        if (const int error = count < 0 ? 0 : writeAll(to, block.data(), std::size_t(count)))
            return error;
    }
}

bool isAtStartOfFile(int descriptor)
{
    struct stat status {};
    return ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode)
        && ::lseek(descriptor, 0, SEEK_CUR) == 0;
}

bool isPipe(const std::string& path)
{
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISFIFO(status.st_mode);
}

} // namespace

InputPath::InputPath(const std::string& operand) : name_(operand), path_(operand)
{
    if (operand == standardInput) {
        path_ = "/dev/stdin";
        if (!isAtStartOfFile(STDIN_FILENO) || ::access(path_.c_str(), R_OK) != 0)
            copy(STDIN_FILENO);
    } else if (isPipe(operand)) {
        const int pipe = ::open(operand.c_str(), O_RDONLY | O_CLOEXEC);
        if (pipe >= 0) {
            copy(pipe);
            ::close(pipe);
        }
    }
}

InputPath::InputPath(InputPath&& other) noexcept
    : name_(std::move(other.name_)), path_(std::move(other.path_)), copy_(std::exchange(other.copy_, -1))
{
}

InputPath::~InputPath()
{
    if (copy_ >= 0)
        ::close(copy_);
}

QString InputPath::openError() const
{
    if (path_.empty() || path_.find('\0') != std::string::npos)
        return systemError(ENOENT);
    QFile file(Util::toQString(path_));
    if (QFileInfo(file).isDir())
        return systemError(EISDIR);
    return file.open(QIODevice::ReadOnly) ? QString() : file.errorString();
}

void InputPath::copy(int descriptor)
{
    copy_ = openNameless();
    const int error = copy_ < 0 ? errno : copyBytes(descriptor, copy_);
    if (error != 0)
        throw Refusal(
            about(name_, QStringLiteral("can't be copied to a temporary file: ") + systemError(error)));
    path_ = "/proc/self/fd/" + std::to_string(copy_);
}

QString about(const std::string& file, const QString& what)
{
    return Util::toQString(file) + QLatin1String(": ") + what;
}

} // namespace Nereo::Tool

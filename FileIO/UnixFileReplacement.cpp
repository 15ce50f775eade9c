#include "FileReplacement.h"

#ifdef Q_OS_UNIX

#include "GatheringDevice.h"

#include <QByteArray>
#include <QFile>
#include <QRandomGenerator>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstddef>
#include <iterator>
#include <memory>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#ifdef Q_OS_LINUX
#include <linux/limits.h>
#include <sys/xattr.h>
#endif

namespace Nereo::Io {

namespace {

constexpr int mostLinks = 40; // as Linux itself follows
constexpr int mostNames = 100;
constexpr mode_t modeOfNewFile = 0666;    // less what the process masks
constexpr mode_t modeBeforeTheOld = 0600; // until the new file has that of the old one
constexpr mode_t permissions = 07777;

struct Meaning {
    int error;
    SaveResult::Status status;
};

// What a failure means wherever it happens.
constexpr Meaning meanings[] = {
    {EACCES, SaveResult::NoPermission},
    {EPERM,  SaveResult::NoPermission},
    {EROFS,  SaveResult::NoPermission},
    {ENOSPC, SaveResult::DiskFull    },
    {EDQUOT, SaveResult::DiskFull    },
    {EFBIG,  SaveResult::DiskFull    },
};

SaveResult failure(int error, SaveResult::Status otherwise)
{
    const auto meaning = std::find_if(std::begin(meanings), std::end(meanings),
                                      [error](const Meaning& row) { return row.error == error; });
    return {meaning == std::end(meanings) ? otherwise : meaning->status,
            qt_error_string(error).toStdString()};
}

/// Calls the system again where a signal interrupted it.
template <class Call>
auto uninterrupted(Call call)
{
    auto result = call();
    while (result == -1 && errno == EINTR)
        result = call();
    return result;
}

class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    Descriptor& operator=(Descriptor&& other) noexcept
    {
        std::swap(number_, other.number_);
        return *this;
    }
    ~Descriptor() { close(); }

    bool isOpen() const { return number_ >= 0; }
    int number() const { return number_; }

    bool close()
    {
        const int number = std::exchange(number_, -1);
        return number < 0 || ::close(number) == 0 || errno == EINTR; // interrupted, it is closed nevertheless
    }

private:
    int number_ = -1;
};

Descriptor openAt(int folder, const QByteArray& name, int flags, mode_t mode = 0)
{
    return Descriptor(
        uninterrupted([&] { return ::openat(folder, name.constData(), flags | O_CLOEXEC, mode); }));
}

bool force(const Descriptor& file)
{
    return uninterrupted([&file] { return ::fsync(file.number()); }) == 0;
}

bool link(const QByteArray& file, int folder, const QByteArray& name)
{
    return ::linkat(AT_FDCWD, file.constData(), folder, name.constData(), AT_SYMLINK_FOLLOW) == 0;
}

class FileDevice : public GatheringDevice {
public:
    void setFile(int file) { file_ = file; }
    int error() const { return error_; }

protected:
    qint64 put(const char* data, qint64 size) override
    {
        const ssize_t count = uninterrupted([&] { return ::write(file_, data, std::size_t(size)); });
        if (count <= 0)
            error_ = count < 0 ? errno : EIO;
        return count;
    }

private:
    int file_ = -1;
    int error_ = 0;
};

#ifdef Q_OS_LINUX

constexpr const char* accessControlList = "system.posix_acl_access";
constexpr const char* attributesOfTheUser = "user.";

bool saysMissing(int error)
{
    return error == ENODATA || error == ENOTSUP;
}

/// Makes an attribute of a file that of another one, where it may be missing.
bool copyAttribute(int from, int to, const char* name, QByteArray& value)
{
    const ssize_t size = ::fgetxattr(from, name, value.data(), std::size_t(value.size()));
    if (size >= 0)
        return ::fsetxattr(to, name, value.constData(), std::size_t(size), 0) == 0;
    return saysMissing(errno) && (::fremovexattr(to, name) == 0 || saysMissing(errno));
}

/// Without the list the mode would mean something else, and a new file may have got one from its folder.
bool copyAttributes(int from, int to)
{
    QByteArray names(XATTR_LIST_MAX, Qt::Uninitialized);
    QByteArray value(XATTR_SIZE_MAX, Qt::Uninitialized);
    const ssize_t size = ::flistxattr(from, names.data(), std::size_t(names.size()));
    if (size < 0)
        return saysMissing(errno);
    const char* const end = names.constData() + size;
    for (const char* name = names.constData(); name != end; name += qstrlen(name) + 1) {
        if (QByteArray::fromRawData(name, int(qstrlen(name))).startsWith(attributesOfTheUser)
            && !copyAttribute(from, to, name, value))
            return false;
    }
    return copyAttribute(from, to, accessControlList, value);
}

#else

bool copyAttributes(int, int)
{
    return true;
}

#endif

/// Steps give whether they were done; the result says of the one that wasn't why.
class UnixFileReplacement : public FileReplacement {
public:
    ~UnixFileReplacement() override
    {
        if (hasName_)
            ::unlinkat(folder_.number(), newName_.constData(), 0);
    }

    SaveResult open(const QString& path, QIODevice::OpenMode textMode) override
    {
        const QByteArray name = QFile::encodeName(path);
        if (lookAt(name) && findPlaceOf(name) && openOld() && createNew()) {
            device_.setFile(new_.number());
            device_.open(QIODevice::WriteOnly | textMode);
        }
        return result_;
    }

    QIODevice& device() override { return device_; }

    SaveResult flush() override
    {
        if (!device_.flush())
            fails(SaveResult::WriteFailed, device_.error());
        return result_;
    }

    SaveResult replace() override
    {
        if (takeAfterOld() && forceNew() && (hasName_ ? closeNew() : giveName()) && takePlaceOfOld())
            forcePlace();
        return result_;
    }

private:
    bool fails(SaveResult::Status status, int error)
    {
        result_ = failure(error, status);
        return false;
    }

    /// Where the last call of the system wasn't a success, what it says is the result.
    bool isDone(bool isSuccess, SaveResult::Status otherwise) { return isSuccess || fails(otherwise, errno); }

    bool isRegular(const struct stat& status)
    {
        if (!S_ISREG(status.st_mode))
            result_ = {SaveResult::NoRegularFile, {}};
        return S_ISREG(status.st_mode);
    }

    /// Before anything is opened that does something when it is.
    bool lookAt(const QByteArray& path)
    {
        struct stat status {};
        if (::stat(path.constData(), &status) == 0)
            return isRegular(status);
        return isDone(errno == ENOENT, SaveResult::CannotCreate);
    }

    /// Finds the folder of the file that the path leads to, and its name in it. The folder stays open, so
    /// that all steps mean the same one.
    bool findPlaceOf(QByteArray path)
    {
        QByteArray link(PATH_MAX, Qt::Uninitialized);
        for (int links = 0; links <= mostLinks; ++links) {
            if (!enterFolderOf(path))
                return false;
            const ssize_t size =
                ::readlinkat(folder_.number(), oldName_.constData(), link.data(), std::size_t(link.size()));
            if (size < 0) // EINVAL: no link
                return isDone(errno == EINVAL || errno == ENOENT, SaveResult::CannotCreate);
            path = link.left(int(size));
        }
        return fails(SaveResult::CannotCreate, ELOOP);
    }

    /// A path that isn't absolute begins in the folder that was entered last.
    bool enterFolderOf(const QByteArray& path)
    {
        const int nameStart = path.lastIndexOf('/') + 1;
        const QByteArray folder = nameStart == 0 ? QByteArray(".") : path.left(nameStart);
        oldName_ = path.mid(nameStart);
        folder_ = openAt(folder_.isOpen() ? folder_.number() : AT_FDCWD, folder, O_RDONLY | O_DIRECTORY);
        return isDone(folder_.isOpen(), SaveResult::CannotCreate);
    }

    /// What may not be written isn't replaced either.
    bool openOld()
    {
        old_ = openAt(folder_.number(), oldName_, O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY);
        if (!old_.isOpen())
            return isDone(errno == ENOENT, SaveResult::CannotReplace);
        return isDone(::fstat(old_.number(), &oldStatus_) == 0, SaveResult::CannotReplace)
            && isRegular(oldStatus_);
    }

    /// A file without a name is gone when the process is, however that ends.
    bool createNew()
    {
        const mode_t mode = old_.isOpen() ? modeBeforeTheOld : modeOfNewFile;
#ifdef O_TMPFILE
        new_ = openAt(folder_.number(), QByteArrayLiteral("."), O_WRONLY | O_TMPFILE, mode);
        nameInProc_ = QByteArrayLiteral("/proc/self/fd/") + QByteArray::number(new_.number());
        if (new_.isOpen() && ::access(nameInProc_.constData(), F_OK) == 0)
            return true;
#endif
        return takeFreshName([this, mode] {
            new_ = openAt(folder_.number(), newName_, O_WRONLY | O_CREAT | O_EXCL, mode);
            return new_.isOpen();
        });
    }

    template <class Take>
    bool takeFreshName(Take take)
    {
        for (int tries = 0; tries < mostNames && !hasName_; ++tries) {
            newName_ = QByteArrayLiteral(".nereo-")
                + QByteArray::number(QRandomGenerator::system()->generate64(), 16).rightJustified(16, '0');
            hasName_ = take();
            if (!hasName_ && errno != EEXIST)
                break;
        }
        return isDone(hasName_, SaveResult::CannotCreate);
    }

    bool takeAfterOld()
    {
        return !old_.isOpen()
            || (keepOwner() && isDone(copyAttributes(old_.number(), new_.number()), SaveResult::WriteFailed)
                && isDone(::fchmod(new_.number(), oldStatus_.st_mode & permissions) == 0,
                          SaveResult::WriteFailed));
    }

    bool keepOwner()
    {
        struct stat status {};
        if (!isDone(::fstat(new_.number(), &status) == 0, SaveResult::WriteFailed))
            return false;
        const bool isKept = status.st_uid == oldStatus_.st_uid && status.st_gid == oldStatus_.st_gid;
        return isKept
            || isDone(::fchown(new_.number(), oldStatus_.st_uid, oldStatus_.st_gid) == 0,
                      SaveResult::WriteFailed);
    }

    bool forceNew()
    {
        return isDone(force(new_), SaveResult::WriteFailed);
    }

    bool giveName()
    {
        return takeFreshName([this] { return link(nameInProc_, folder_.number(), newName_); });
    }

    bool closeNew()
    {
        return isDone(new_.close(), SaveResult::WriteFailed);
    }

    bool takePlaceOfOld()
    {
        const bool isReplaced =
            ::renameat(folder_.number(), newName_.constData(), folder_.number(), oldName_.constData()) == 0;
        hasName_ = !isReplaced;
        return isDone(isReplaced, SaveResult::CannotReplace);
    }

    /// What was forced while it had no name, and is open still, may be lost in spite of that. Where folders
    /// can't be forced (EINVAL) they needn't be.
    void forcePlace()
    {
        const bool isForced = (!new_.isOpen() || force(new_)) && (force(folder_) || errno == EINVAL);
        if (!isForced)
            result_ = {SaveResult::NotForced, qt_error_string(errno).toStdString()};
    }

    SaveResult result_;
    Descriptor folder_;
    Descriptor old_; ///< open where there is an old file
    Descriptor new_;
    struct stat oldStatus_ {};
    QByteArray oldName_;
    QByteArray newName_;
    QByteArray nameInProc_;
    bool hasName_ = false;
    FileDevice device_;
};

} // namespace

std::unique_ptr<FileReplacement> makeFileReplacement()
{
    return std::make_unique<UnixFileReplacement>();
}

} // namespace Nereo::Io

#endif

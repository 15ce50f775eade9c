#include "FileReplacement.h"

#include <QFileInfo>
#include <QSaveFile>

namespace Nereo::Io {

namespace {

struct Meaning {
    QFileDevice::FileError error;
    SaveResult::Status status;
};

constexpr Meaning meanings[] = {
    {QFileDevice::OpenError,        SaveResult::CannotCreate },
    {QFileDevice::PermissionsError, SaveResult::NoPermission },
    {QFileDevice::ResourceError,    SaveResult::DiskFull     },
    {QFileDevice::RenameError,      SaveResult::CannotReplace},
};

SaveResult::Status statusOf(QFileDevice::FileError error)
{
    for (const Meaning& meaning : meanings) {
        if (meaning.error == error)
            return meaning.status;
    }
    return SaveResult::WriteFailed;
}

class QtFileReplacement : public FileReplacement {
public:
    SaveResult open(const QString& path, QIODevice::OpenMode textMode) override
    {
        const QFileInfo old(path);
        if (old.exists() && !old.isFile())
            return {SaveResult::NoRegularFile, {}};
        file_.setFileName(path);
        return resultOf(file_.open(QIODevice::WriteOnly | textMode));
    }

    QIODevice& device() override { return file_; }

    SaveResult flush() override { return resultOf(file_.error() == QFileDevice::NoError && file_.flush()); }

    SaveResult replace() override { return resultOf(file_.commit()); }

private:
    SaveResult resultOf(bool isDone) const
    {
        return isDone ? SaveResult()
                      : SaveResult {statusOf(file_.error()), file_.errorString().toStdString()};
    }

    QSaveFile file_;
};

} // namespace

std::unique_ptr<FileReplacement> makeQtFileReplacement()
{
    return std::make_unique<QtFileReplacement>();
}

#ifndef Q_OS_UNIX

std::unique_ptr<FileReplacement> makeFileReplacement()
{
    return makeQtFileReplacement();
}

#endif

} // namespace Nereo::Io

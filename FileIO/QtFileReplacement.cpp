#include "FileReplacement.h"
#include "GatheringDevice.h"

#include <QFileInfo>
#include <QSaveFile>

namespace Nereo::Io {

namespace {

/// QSaveFile takes a part of what is written for the whole, and says that it is saved.
class SaveFileDevice : public GatheringDevice {
public:
    explicit SaveFileDevice(QSaveFile& file) : file_(&file) {}

protected:
    qint64 put(const char* data, qint64 size) override { return file_->write(data, size); }

private:
    QSaveFile* file_;
};

class QtFileReplacement : public FileReplacement {
public:
    SaveResult open(const QString& path, QIODevice::OpenMode textMode) override
    {
        const QFileInfo old(path);
        if (old.exists() && !old.isFile())
            return {SaveResult::NoRegularFile, {}};
        const bool mayBeWritten = !old.exists() || old.isWritable();
        file_.setFileName(path);
        return resultOf(file_.open(QIODevice::WriteOnly | QIODevice::Unbuffered | textMode)
                            && device_.open(QIODevice::WriteOnly),
                        mayBeWritten ? SaveResult::CannotCreate : SaveResult::NoPermission);
    }

    QIODevice& device() override { return device_; }

    SaveResult flush() override { return resultOf(device_.flush(), SaveResult::WriteFailed); }

    SaveResult replace() override { return resultOf(file_.commit(), SaveResult::CannotReplace); }

private:
    SaveResult resultOf(bool isDone, SaveResult::Status otherwise) const
    {
        if (isDone)
            return {};
        const bool isFull = file_.error() == QFileDevice::ResourceError;
        return {isFull ? SaveResult::DiskFull : otherwise, file_.errorString().toStdString()};
    }

    QSaveFile file_;
    SaveFileDevice device_ {file_};
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

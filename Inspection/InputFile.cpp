#include "InputFile.h"

#include <NereoUtility/StringConversion.h>

#include <QBuffer>

#include <algorithm>
#include <array>
#include <utility>

namespace Nereo::Inspection {

namespace {

constexpr std::size_t blockSize = 64 * 1024;

QFileDevice::FileError errorOf(const QIODevice& device)
{
    const auto* const file = qobject_cast<const QFileDevice*>(&device);
    return file == nullptr ? QFileDevice::NoError : file->error();
}

/// A file that tells how far it has been read.
class ReportingFile : public Io::FileEndingAtFailure {
public:
    explicit ReportingFile(InputFile::Progress progress) : progress_(std::move(progress)) {}

protected:
    qint64 readData(char* data, qint64 maxSize) override
    {
        const qint64 count = FileEndingAtFailure::readData(data, maxSize);
        if (count > 0)
            progress_(std::min(pos() + count, size()), size());
        return count;
    }

private:
    InputFile::Progress progress_;
};

} // namespace

InputFile::InputFile(const std::string& path) : path_(path), name_(Util::toQString(path))
{
    QFile file;
    isOpen_ = Io::openFile(file, path, QIODevice::ReadOnly);
    if (!isOpen_)
        error_ = file.fileName().isEmpty() ? QStringLiteral("No such file or directory") : file.errorString();
    else if (file.isSequential())
        copy(file);
    else
        size_ = file.size();
}

InputFile::InputFile(std::string path, const QByteArray& bytes)
    : path_(std::move(path)), size_(bytes.size()), isOpen_(true), bytes_(bytes)
{
}

InputFile::~InputFile() = default;

QString InputFile::readError() const
{
    const std::unique_ptr<QIODevice> device = openBytes();
    device->read(1);
    return errorOf(*device) == QFileDevice::NoError ? QString() : device->errorString();
}

std::unique_ptr<QIODevice> InputFile::open(QIODevice::OpenMode mode) const
{
    if (progress_)
        return opened(std::make_unique<ReportingFile>(progress_), mode);
    return opened(std::make_unique<Io::FileEndingAtFailure>(), mode);
}

bool InputFile::hasFailed(const QIODevice& device)
{
    return errorOf(device) == QFileDevice::ReadError;
}

std::unique_ptr<QIODevice> InputFile::openBytes() const
{
    return opened(std::make_unique<QFile>(), QIODevice::NotOpen);
}

std::unique_ptr<QIODevice> InputFile::opened(std::unique_ptr<QFile> file, QIODevice::OpenMode mode) const
{
    if (bytes_) {
        auto buffer = std::make_unique<QBuffer>();
        buffer->setData(*bytes_);
        buffer->open(QIODevice::ReadOnly | mode);
        return buffer;
    }
    file->setFileName(name_);
    file->open(QIODevice::ReadOnly | mode);
    return file;
}

void InputFile::copy(QFile& pipe)
{
    copy_ = std::make_unique<QTemporaryFile>();
    isOpen_ = copy_->open();
    std::array<char, blockSize> block;
    for (qint64 count; isOpen_ && (count = pipe.read(block.data(), blockSize)) > 0;)
        isOpen_ = copy_->write(block.data(), count) == count;
    isOpen_ = isOpen_ && copy_->flush();
    error_ = copy_->errorString(); // which nobody asks for where there is none
    name_ = copy_->fileName();
    size_ = copy_->size();
}

} // namespace Nereo::Inspection

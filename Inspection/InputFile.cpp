#include "InputFile.h"

#include <NereoUtility/StringConversion.h>

#include <array>

namespace Nereo::Inspection {

namespace {

constexpr std::size_t blockSize = 64 * 1024;

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

InputFile::~InputFile() = default;

QString InputFile::readError() const
{
    const std::unique_ptr<QFile> device = openBytes();
    device->read(1);
    return device->error() == QFileDevice::NoError ? QString() : device->errorString();
}

std::unique_ptr<InputFile::Device> InputFile::open(QIODevice::OpenMode mode) const
{
    auto device = std::make_unique<Device>();
    device->setFileName(name_);
    device->open(QIODevice::ReadOnly | mode);
    return device;
}

std::unique_ptr<QFile> InputFile::openBytes() const
{
    auto device = std::make_unique<QFile>(name_);
    device->open(QIODevice::ReadOnly);
    return device;
}

void InputFile::copy(QFile& pipe)
{
    copy_ = std::make_unique<QTemporaryFile>();
    isOpen_ = copy_->open();
    std::array<char, blockSize> block;
    for (qint64 count; isOpen_ && (count = pipe.read(block.data(), blockSize)) > 0;)
        isOpen_ = copy_->write(block.data(), count) == count;
    isOpen_ = isOpen_ && copy_->flush();
    if (!isOpen_)
        error_ = copy_->errorString();
    name_ = copy_->fileName();
    size_ = copy_->size();
}

} // namespace Nereo::Inspection

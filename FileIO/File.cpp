#include <NereoFileIO/File.h>

#include "WholeSave.h"

#include <utility>

namespace Nereo::Io {

File::File() : version_(Util::Version::Current) {}

File::File(const File& other) = default;
File& File::operator=(const File& other) = default;
File::File(File&& other) noexcept = default;
File& File::operator=(File&& other) noexcept = default;
File::~File() = default;

bool File::loadFrom(const std::string& path)
{
    filePath_ = path;
    return doLoadFrom(path);
}

bool File::saveTo(const std::string& path) const
{
    filePath_ = path;
    return doSaveTo(path);
}

SaveResult File::saveWholeTo(const std::string& path) const
{
    filePath_ = path;
    WholeSave save(path);
    const WholeSave::Redirection redirection(save);
    return save.finish(doSaveTo(path));
}

std::string File::filePath() const
{
    return filePath_;
}

void File::setFilePath(std::string path)
{
    filePath_ = std::move(path);
}

Util::Version File::version() const
{
    return version_;
}

void File::setVersion(const Util::Version& version)
{
    version_ = version;
}

} // namespace Nereo::Io

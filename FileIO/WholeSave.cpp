#include "WholeSave.h"

#include "FileAccess.h"

#include <NereoFileIO/WriteWhole.h>
#include <NereoUtility/StringConversion.h>

#include <utility>

namespace Nereo::Io {

namespace {

constexpr const char* noSuchFile = "No such file or directory";

thread_local WholeSave* redirected = nullptr;

} // namespace

WholeSave::WholeSave(std::string path) : path_(std::move(path)), result_ {SaveResult::NoWriter, {}} {}

WholeSave::~WholeSave() = default;

QIODevice* WholeSave::open(QIODevice::OpenMode textMode)
{
    if (file_ != nullptr) // what was written before can't be taken back
        return nullptr;
    file_ = makeFileReplacement();
    result_ = namesAFile(path_) ? file_->open(Util::toQString(path_), textMode)
                                : SaveResult {SaveResult::CannotCreate, noSuchFile};
    return result_ ? &file_->device() : nullptr;
}

SaveResult WholeSave::finish(bool isWritten)
{
    if (result_)
        result_ = file_->flush();
    if (!result_) // whoever writes may have noticed
        return result_;
    return isWritten ? file_->replace() : SaveResult {SaveResult::ContentRefused, {}};
}

WholeSave* WholeSave::inPlaceOf(const std::string& path)
{
    return redirected != nullptr && redirected->path_ == path ? redirected : nullptr;
}

WholeSave::Redirection::Redirection(WholeSave& save) : outer_(redirected)
{
    redirected = &save;
}

WholeSave::Redirection::~Redirection()
{
    redirected = outer_;
}

SaveResult writeWhole(const std::string& path, const std::function<bool(QIODevice&)>& write)
{
    WholeSave save(path);
    QIODevice* const device = save.open(QIODevice::NotOpen);
    return save.finish(device != nullptr && write(*device));
}

} // namespace Nereo::Io

#pragma once

#include "FileReplacement.h"

#include <NereoFileIO/Export.h>
#include <NereoFileIO/SaveResult.h>

#include <QIODevice>

#include <memory>
#include <string>

namespace Nereo::Io {

/// A save that is whole or not at all, from its device to its result.
class NEREOFILEIO_EXPORT WholeSave {
public:
    explicit WholeSave(std::string path);
    WholeSave(const WholeSave&) = delete;
    WholeSave& operator=(const WholeSave&) = delete;
    ~WholeSave();

    /// The device for the content, once; null where there is none.
    QIODevice* open(QIODevice::OpenMode textMode);

    SaveResult finish(bool isWritten);

    /// The one that stands for the file at a path on this thread; null where the file itself is to be
    /// written.
    static WholeSave* inPlaceOf(const std::string& path);

    /// While it lives, whoever saves to the path on this thread writes to the device instead. So a save needs
    /// no other way through the classes, and none of their virtual operations a second argument.
    class NEREOFILEIO_EXPORT Redirection {
    public:
        explicit Redirection(WholeSave& save);
        Redirection(const Redirection&) = delete;
        Redirection& operator=(const Redirection&) = delete;
        ~Redirection();

    private:
        WholeSave* outer_;
    };

private:
    std::string path_;
    std::unique_ptr<FileReplacement> file_;
    SaveResult result_;
};

} // namespace Nereo::Io

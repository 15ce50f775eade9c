#pragma once

#include <NereoFileIO/Export.h>
#include <NereoFileIO/SaveResult.h>

#include <QIODevice>
#include <QString>

#include <memory>

namespace Nereo::Io {

/// The way in which a system replaces a file in one step: a new one is written beside it and then takes its
/// name. Destroyed before that, it leaves nothing behind.
class NEREOFILEIO_EXPORT FileReplacement {
public:
    FileReplacement() = default;
    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;
    virtual ~FileReplacement() = default;

    /// Begins the new file. The path is no empty one and has no NUL.
    virtual SaveResult open(const QString& path, QIODevice::OpenMode textMode) = 0;

    /// Where the content goes. Behind the first failure it takes no more.
    virtual QIODevice& device() = 0;

    /// Hands the rest of the content to the system. A failure of the device shows here.
    virtual SaveResult flush() = 0;

    /// Makes sure of every byte and puts the new file in the place of the old one.
    virtual SaveResult replace() = 0;
};

/// That of this system.
NEREOFILEIO_EXPORT std::unique_ptr<FileReplacement> makeFileReplacement();

/// By QSaveFile, which knows every system that Qt knows; it keeps no owner and doesn't force the folder.
NEREOFILEIO_EXPORT std::unique_ptr<FileReplacement> makeQtFileReplacement();

} // namespace Nereo::Io

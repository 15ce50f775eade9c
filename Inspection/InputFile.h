#pragma once

#include <FileIO/FileAccess.h>
#include <NereoInspection/Export.h>

#include <QByteArray>
#include <QIODevice>
#include <QTemporaryFile>

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace Nereo::Inspection {

/// A file that is looked at. What isn't a file with an end, such as a pipe, is copied to a temporary one
/// first, so that it can be read more than once.
///
/// A walk reads it by devices of its own, as a load does.
class NEREOINSPECTION_EXPORT InputFile {
public:
    using Progress = std::function<void(qint64 bytesDone, qint64 bytesInAll)>;

    explicit InputFile(const std::string& path);
    /// What stands in a file of that name, or would stand there.
    InputFile(std::string path, const QByteArray& bytes);
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;
    ~InputFile();

    bool isOpen() const { return isOpen_; }
    QString errorString() const { return error_; } ///< why it isn't, in the words of the system

    /// Why not a byte of it can be read; empty if one can be.
    QString readError() const;

    const std::string& path() const { return path_; } ///< as it was given
    qint64 size() const { return size_; }

    /// Whom to tell how far the devices have got that are opened for a load from now on.
    void setProgress(Progress progress) const { progress_ = std::move(progress); }

    /// Opens the file for the stream of a load: from the first read that fails on nothing is read.
    /// QIODevice::Text says what a load of texts says.
    std::unique_ptr<QIODevice> open(QIODevice::OpenMode mode) const;

    /// Whether a read of such a device has failed.
    static bool hasFailed(const QIODevice& device);

    /// Opens the file for reading anywhere in it.
    std::unique_ptr<QIODevice> openBytes() const;

private:
    std::unique_ptr<QIODevice> opened(std::unique_ptr<QFile> file, QIODevice::OpenMode mode) const;
    void copy(QFile& pipe);

    std::string path_;
    QString name_; ///< what is read: the file, or its copy
    QString error_;
    qint64 size_ = 0;
    bool isOpen_ = false;
    std::unique_ptr<QTemporaryFile> copy_;
    mutable Progress progress_;       ///< which is no part of the file
    std::optional<QByteArray> bytes_; ///< where they aren't read from a file
};

} // namespace Nereo::Inspection

#pragma once

#include <NereoFileIO/Export.h>
#include <NereoFileIO/SaveResult.h>

#include <NereoUtility/Version.h>

#include <string>

namespace Nereo::Io {

/// The base of every file: content that is loaded from a path and saved to a path, and the version of that
/// content.
///
/// Loading and saving say by a bool whether they succeeded; nothing is printed. A load that fails keeps what
/// it has read so far. Where the disk fails a read, the file ends there for the load. Paths and all other
/// texts are UTF-8.
///
/// Two things say more than false. A text file of Nereo2ConfigFile with a word that is no key makes the load
/// throw std::out_of_range. And some files stop the process when they are loaded: a ControlFile whose number
/// of flags is not the one that it announces, and a ResultsFile that contradicts itself. An object stops it
/// when it is saved with a code or enumerator that has no name, as its class says.
///
/// Where memory runs out, std::bad_alloc comes out of both and the object stays usable, a save having changed
/// nothing in it; only the making of Qt's streams doesn't stand that, which docs/reliability.md tells of.
///
/// Files, and the values in them, can be copied and moved. What was moved from can be used on and be assigned
/// to; which content it has isn't promised.
///
/// An object is used by one thread at a time; different objects may be used by different threads.
class NEREOFILEIO_EXPORT File {
public:
    File(); ///< with Version::Current and an empty path
    File(const File& other);
    File& operator=(const File& other);
    File(File&& other) noexcept;
    File& operator=(File&& other) noexcept;
    virtual ~File();

    /// Reads the file at the path into this object. False when the file can't be opened, in which case only
    /// filePath() has changed, or where the format is XML, when the document is malformed, breaks the format
    /// or declares entities of which one makes it longer by more than 4096 characters, or by more than 64
    /// million divided by the number of its ampersands.
    bool loadFrom(const std::string& path);

    /// Writes this object to the file at the path and replaces what was there. False when the file can't be
    /// opened or, where the format is XML, can't be written completely, be it for a full disk or for a text
    /// with characters that XML can't carry; the old content is gone then too. The text formats don't notice
    /// a full disk.
    bool saveTo(const std::string& path) const;

    /// Writes the same bytes as saveTo(), whole or not at all, and says what failed. Everything goes to a new
    /// file beside the old one, is forced to the disk and then takes the place of the old one in one step: at
    /// every moment, also where the process is killed, the disk is full or memory runs out, the file at the
    /// path is the old one or the new one. Only a process that is killed may leave the new file beside it, as
    /// ".nereo-" and 16 hexadecimal digits.
    ///
    /// A file that is replaced keeps its mode, owner, access control list and the attributes of its user; one
    /// that may not be written is not replaced. Through a link, the file is replaced that it leads to. Other
    /// names of the file (hard links) keep the old content.
    ///
    /// A class of its own that opens its file in doSaveTo() by itself is saved as by saveTo(); the result is
    /// NoWriter then.
    SaveResult saveWholeTo(const std::string& path) const;

    /// The path of the last load or save, whether or not it succeeded; empty before the first. A load with
    /// options that fails changes nothing, this path included.
    std::string filePath() const;

    /// The version of the content: Version::Current in a new object, what the file says after a load where
    /// its format has one. A save writes it as it stands.
    Util::Version version() const;
    void setVersion(const Util::Version& version);

protected:
    virtual bool doLoadFrom(const std::string& path) = 0;
    virtual bool doSaveTo(const std::string& path) const = 0;

    void setFilePath(std::string path); ///< without a load or save

private:
    Util::Version version_;
    mutable std::string filePath_; // saving changes no content, and records the path nevertheless
};

} // namespace Nereo::Io

#pragma once

#include <NereoFileIO/File.h>

#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace Faults {

/// A kind of file with an example of it, and what of the rules for failures differs between the kinds.
struct FileKind {
    const char* name;
    const char* fileName;

    bool isXml;     ///< failures show in the result
    bool hasReader; ///< otherwise a load only opens the file
    bool hasWriter; ///< otherwise a save leaves the disk alone
    bool loadAdds;  ///< to what the object holds, so that each load takes a new one

    std::unique_ptr<Nereo::Io::File> (*makeEmpty)();

    /// Has something of everything, and so many items of what there can be any number of.
    std::unique_ptr<Nereo::Io::File> (*makeExample)(int itemCount);

    /// The content: equal texts mean that two objects hold the same. Where there is a writer it is what a
    /// save writes.
    std::string (*describe)(const Nereo::Io::File& file);
};

/// The bytes of a file with the example's content.
std::string bytesOf(const FileKind& kind, int itemCount);

inline constexpr int fewItems = 2;
inline constexpr int manyItems = 600; ///< enough for several buffers full

extern const FileKind fileKinds[6];

std::vector<FileKind> kindsThatAreWritten();

/// For the names of parametrised tests.
inline void PrintTo(const FileKind& kind, std::ostream* out)
{
    *out << kind.name;
}

} // namespace Faults

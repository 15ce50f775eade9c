#pragma once

#include <NereoFileIO/Export.h>
#include <NereoFileIO/File.h>
#include <NereoFileIO/Material.h>

#include <memory>
#include <string>
#include <vector>

namespace Nereo::Io {

/// A list of materials, stored as XML. The order is that of the file; names needn't be unique.
///
/// Loading replaces all materials. A file that isn't well-formed, or names a property type that
/// Clt::PropertyType doesn't have, gives false and the materials up to there, the one in progress among them
/// with what was read of it. Elements that aren't known are skipped, numbers that can't be read are 0.
///
/// Not everything survives a save: numbers have six significant digits, and a property has its value or its
/// points only where its variation uses them ("constant" and "equation_of_state", "piecewise_linear").
/// Properties other than those that the material's type starts with are saved without their type, and such a
/// file doesn't load: see Material on properties that share a code. Saving stops the process at an
/// independent variable outside 0 to kNone.
///
/// Materials are counted from 0. An index outside 0 to count() - 1 stops the process. A reference to a
/// material holds until the list is changed.
class NEREOFILEIO_EXPORT MaterialDatabaseFile : public File {
public:
    MaterialDatabaseFile(); ///< empty
    MaterialDatabaseFile(const MaterialDatabaseFile& other);
    MaterialDatabaseFile& operator=(const MaterialDatabaseFile& other);
    MaterialDatabaseFile(MaterialDatabaseFile&& other) noexcept; ///< references to materials hold
    MaterialDatabaseFile& operator=(MaterialDatabaseFile&& other) noexcept;
    ~MaterialDatabaseFile() override;

    void add(const Material& material); ///< a copy, at the end
    void add(Material&& material);      ///< the same without a copy
    void clear();                       ///< keeps the version
    bool contains(const std::string& name) const;
    int count() const;

    /// The first material with exactly this name. When there is none, the first material whatever its name:
    /// ask contains() to tell. Stops the process when there are no materials at all.
    Material& material(const std::string& name);
    const Material& material(const std::string& name) const;

    Material& material(int index);
    const Material& material(int index) const;

    void remove(int index);
    void setMaterial(int index, const Material& material); ///< references to the one at the index hold

protected:
    bool doLoadFrom(const std::string& path) override;
    bool doSaveTo(const std::string& path) const override;

private:
    int indexOf(const std::string& name) const; // -1 when there is none

    std::vector<std::unique_ptr<Material>> materials_; // each stays in its place when others come and go
};

} // namespace Nereo::Io

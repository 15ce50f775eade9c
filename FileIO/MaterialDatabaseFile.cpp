#include <NereoFileIO/MaterialDatabaseFile.h>

#include "Assertion.h"
#include "ExactText.h"
#include "FileAccess.h"
#include "MaterialDatabaseFileXmlReader.h"
#include "MaterialDatabaseFileXmlWriter.h"

#include <NereoUtility/StringConversion.h>

#include <algorithm>
#include <utility>

namespace Nereo::Io {

MaterialDatabaseFile::MaterialDatabaseFile() = default;

MaterialDatabaseFile::MaterialDatabaseFile(const MaterialDatabaseFile& other) : File(other)
{
    materials_.reserve(other.materials_.size());
    for (const auto& material : other.materials_)
        add(*material);
}

MaterialDatabaseFile& MaterialDatabaseFile::operator=(const MaterialDatabaseFile& other)
{
    if (this != &other) {
        MaterialDatabaseFile copy(other);
        File::operator=(other);
        materials_.swap(copy.materials_);
    }
    return *this;
}

MaterialDatabaseFile::MaterialDatabaseFile(MaterialDatabaseFile&& other) noexcept = default;
MaterialDatabaseFile& MaterialDatabaseFile::operator=(MaterialDatabaseFile&& other) noexcept = default;
MaterialDatabaseFile::~MaterialDatabaseFile() = default;

void MaterialDatabaseFile::add(const Material& material)
{
    materials_.push_back(std::make_unique<Material>(material));
}

void MaterialDatabaseFile::add(Material&& material)
{
    materials_.push_back(std::make_unique<Material>(std::move(material)));
}

void MaterialDatabaseFile::clear()
{
    materials_.clear();
}

bool MaterialDatabaseFile::contains(const std::string& name) const
{
    return indexOf(name) >= 0;
}

int MaterialDatabaseFile::count() const
{
    return int(materials_.size());
}

Material& MaterialDatabaseFile::material(const std::string& name)
{
    return material(std::max(indexOf(name), 0));
}

const Material& MaterialDatabaseFile::material(const std::string& name) const
{
    return material(std::max(indexOf(name), 0));
}

Material& MaterialDatabaseFile::material(int index)
{
    NEREO_ASSERT_INDEX(index, count(), "QList<T>::operator[]", "FileIO/MaterialDatabaseFile");
    return *materials_[std::size_t(index)];
}

const Material& MaterialDatabaseFile::material(int index) const
{
    NEREO_ASSERT_INDEX(index, count(), "QList<T>::operator[]", "FileIO/MaterialDatabaseFile");
    return *materials_[std::size_t(index)];
}

void MaterialDatabaseFile::remove(int index)
{
    NEREO_ASSERT_INDEX(index, count(), "QList<T>::removeAt", "FileIO/MaterialDatabaseFile");
    materials_.erase(materials_.begin() + index);
}

void MaterialDatabaseFile::setMaterial(int index, const Material& material)
{
    this->material(index) = material;
}

int MaterialDatabaseFile::indexOf(const std::string& name) const
{
    const QString wanted = toExactQString(name);
    if (Util::toStdString(wanted) != name) // bytes that no name has
        return -1;
    const auto found = std::find_if(materials_.begin(), materials_.end(),
                                    [&](const auto& material) { return material->name_ == wanted; });
    return found == materials_.end() ? -1 : int(found - materials_.begin());
}

bool MaterialDatabaseFile::doLoadFrom(const std::string& path)
{
    return load<MaterialDatabaseFileXmlReader>(path, *this);
}

bool MaterialDatabaseFile::doSaveTo(const std::string& path) const
{
    return save<MaterialDatabaseFileXmlWriter>(path, *this);
}

} // namespace Nereo::Io

#pragma once

#include "ItemList.h"

#include <NereoFileIO/MaterialDatabaseFile.h>

namespace Nereo::Python {

/// The materials of a MaterialDatabaseFile, which is made of them when they are saved.
struct MaterialDatabase : ItemList<Io::Material> {
    Util::Version version = Util::Version::Current;
    std::string path;

    void take(Io::MaterialDatabaseFile&& file);
    Io::MaterialDatabaseFile file() const;
};

py::tuple stateOf(const MaterialDatabase& database);
std::shared_ptr<MaterialDatabase> databaseFrom(const py::tuple& state);

} // namespace Nereo::Python

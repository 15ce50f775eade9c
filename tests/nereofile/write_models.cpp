// Saves configurations and material databases that have between them all that the formats can say, each in a
// file of the folder that is named: configuration-*.xml and materials-*.xml.

#include "support/RandomConfiguration.h"

#include <NereoFileIO/FieldVariable.h>
#include <NereoFileIO/MaterialDatabaseFile.h>
#include <NereoFileIO/MaterialType.h>
#include <NereoFileIO/Nereo2ConfigFile.h>
#include <NereoFileIO/PropertyType.h>
#include <NereoFileIO/VariationType.h>

#include <cstdlib>
#include <iostream>
#include <limits>

using namespace Nereo::Io;
using Nereo::Util::Version;

namespace {

using Limits = std::numeric_limits<double>;

constexpr double numbers[] = {
    0.0,
    -0.0,
    1.0,
    -1.5,
    0.1,
    1e20,
    1e-5,
    123456789.0,
    Limits::max(),
    Limits::min(),
    Limits::denorm_min(),
    Limits::infinity(),
    -Limits::infinity(),
    Limits::quiet_NaN(),
};

const char* const variations[] = {
#define VARIATION_TYPE(object, name, displayName, code, alias) name, alias,
#include <NereoFileIO/VariationType.def>
};

const char* const materials[] = {
#define MATERIAL_TYPE(object, name, displayName) name,
#include <NereoFileIO/MaterialType.def>
};

const char* const properties[] = {
#define PROPERTY_TYPE(object, name, displayName, unitCategory, code) name,
#include <NereoFileIO/PropertyType.def>
};

class Folder {
public:
    explicit Folder(std::string path) : path_(std::move(path)) {}

    void save(const File& file, const std::string& kind)
    {
        const std::string path = path_ + '/' + kind + '-' + std::to_string(++count_) + ".xml";
        if (!file.saveTo(path)) {
            std::cerr << "can't save " << path << '\n';
            std::exit(EXIT_FAILURE);
        }
    }

private:
    std::string path_;
    int count_ = 0;
};

void writeConfigurations(Folder& folder)
{
    folder.save(Nereo2ConfigFile(), "configuration");

    Nereo2ConfigFile empty;
    empty.clear();
    empty.setVersion(Version(-1, 0, 0, 12345));
    folder.save(empty, "configuration");

    for (const double number : numbers) {
        Nereo2ConfigFile config;
        for (const std::string& key : config.keys())
            config.setting(key).setValue(number);
        folder.save(config, "configuration");
    }

    RandomConfiguration random({" ", "\n", "\t", "<", "&", ">", "]]>", "\"", "a", "é", "\U0001F30A"});
    for (int i = 0; i < 20; ++i)
        folder.save(random.next(), "configuration");
}

Material oddlyNamed(const char* type)
{
    Material material(type);
    material.setName(" <Air & \"water\">\n");
    material.setId(std::numeric_limits<int>::min());
    return material;
}

MaterialDatabaseFile databaseOfTypes()
{
    MaterialDatabaseFile database;
    for (const char* type : materials) {
        database.add(Material(type));
        database.add(oddlyNamed(type));
    }
    return database;
}

MaterialDatabaseFile databaseOfNumbers()
{
    MaterialDatabaseFile database;
    for (const double number : numbers) {
        Material material;
        material.setRefPressure(number);
        material.setDiffusionCoefficient(number);
        material.property("density").setValue(number);
        database.add(material);
    }
    return database;
}

// A property that isn't one of its material's has to be put in with its type: a load makes one without.
MaterialProperty propertyOf(const char* type, const char* variation)
{
    MaterialProperty property(type);
    property.setVariationType(variation);
    property.setIndependentVariable(kT);
    for (const double number : numbers)
        property.addPoint(number, -number);
    return property;
}

MaterialDatabaseFile databaseOfProperties(const char* variation)
{
    MaterialDatabaseFile database;
    for (const char* type : properties) {
        Material material("heat_sink");
        const MaterialProperty property = propertyOf(type, variation);
        material.property(property.typeCode()) = property;
        database.add(material);
    }
    return database;
}

MaterialDatabaseFile databaseOfVariables()
{
    MaterialDatabaseFile database;
    for (int code = 1; code <= kNone; ++code) {
        Material material;
        material.property("density") = propertyOf("density", "piecewise_linear");
        material.property("density").setIndependentVariable(code);
        database.add(material);
    }
    return database;
}

void writeMaterials(Folder& folder)
{
    folder.save(MaterialDatabaseFile(), "materials");
    folder.save(databaseOfTypes(), "materials");
    folder.save(databaseOfNumbers(), "materials");
    folder.save(databaseOfVariables(), "materials");
    for (const char* variation : variations) {
        if (*variation != '\0')
            folder.save(databaseOfProperties(variation), "materials");
    }
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2)
        return EXIT_FAILURE;
    Folder folder(argv[1]);
    writeConfigurations(folder);
    writeMaterials(folder);
    return EXIT_SUCCESS;
}

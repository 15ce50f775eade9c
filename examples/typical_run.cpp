// A run of the solver as its files see it: typical_run SAMPLES OUTPUT
//
// The front end's configuration is loaded, overridden by the solver's command line and saved in both forms.
// Materials are loaded, changed and saved.

#include <NereoFileIO/CodeNameTable.h>
#include <NereoFileIO/MaterialDatabaseFile.h>
#include <NereoFileIO/Nereo2ConfigFile.h>

#include <filesystem>
#include <iomanip>
#include <iostream>
#include <sstream>
#include <stdexcept>

using namespace Nereo::Io;

namespace {

void require(bool succeeded, const std::string& what)
{
    if (!succeeded)
        throw std::runtime_error(what);
}

void load(File& file, const std::string& path)
{
    require(file.loadFrom(path), "can't load " + path);
    std::cout << "Loaded " << path << " (version " << file.version().toString().toStdString() << ")\n";
}

void save(const File& file, const std::string& path)
{
    require(file.saveTo(path), "can't save " + path);
    std::cout << "Saved " << path << '\n';
}

void printChangedSettings(const Nereo2ConfigFile& config)
{
    const Nereo2ConfigFile defaults;
    std::cout << "\n  " << std::left << std::setw(22) << "Setting" << std::setw(12) << "Default"
              << "Value\n";
    for (const std::string& key : config.keys()) {
        const std::string value = config.setting(key).valueAsString();
        const std::string defaultValue = defaults.setting(key).valueAsString();
        if (value != defaultValue)
            std::cout << "  " << std::setw(22) << key << std::setw(12) << defaultValue << value << '\n';
    }
    std::cout << '\n';
}

/// "998.21, constant" or "4 points over kT, piecewise_linear"
std::string describe(const MaterialProperty& property)
{
    std::ostringstream text;
    if (property.pointCount() == 0)
        text << property.value();
    else
        text << property.pointCount() << " points over "
             << CodeNameTable::instance().nameForCode(property.independentVariable(), false).toStdString();
    text << ", " << property.variationType();
    return text.str();
}

void printMaterial(const Material& material)
{
    std::cout << "  " << material.name() << " (" << material.type() << ")\n";
    for (const char* type : {"density", "viscosity", "conductivity", "specific_heat"})
        std::cout << "    " << std::setw(20) << type << describe(material.property(type)) << '\n';
}

void changeMaterials(const std::string& samples, const std::string& output)
{
    MaterialDatabaseFile database;
    load(database, samples + "/materials.xml");
    std::cout << '\n' << std::left;
    for (int i = 0; i < database.count(); ++i)
        printMaterial(database.material(i));
    std::cout << '\n';

    // A name that isn't there would give the first material.
    require(database.contains("Water"), "there is no water");
    database.material("Water").property("density").setValue(997.05); // at 25 C
    save(database, output + "/materials.xml");
}

void run(const std::string& samples, const std::string& output)
{
    std::filesystem::create_directories(output);

    // The front end's file is XML: the suffix decides.
    Nereo2ConfigFile config;
    load(config, samples + "/NEREO2_default.xml");
    printChangedSettings(config);

    // The same in the plain text form, one setting a line.
    Nereo2ConfigFile textConfig;
    load(textConfig, samples + "/solver.cfg");
    printChangedSettings(textConfig);

    // The solver's command line goes over its configuration file.
    const std::vector<std::string> args {
        "/opt/nereo/bin/solver", "cavity", "-MaxIter", "500", "-Transient", "1"};
    require(config.loadFromRequiredCommandLineArguments(args),
            "the executable and the job prefix are missing");
    require(config.loadFromOptionalCommandLineArguments(args), "an option is unknown");
    std::cout << "Applied the command line:";
    for (const std::string& arg : args)
        std::cout << ' ' << arg;
    std::cout << '\n';
    printChangedSettings(config);

    save(config, output + "/cavity.xml");
    save(config, output + "/cavity.cfg");

    changeMaterials(samples, output);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::cerr << "usage: typical_run SAMPLES OUTPUT\n";
        return 2;
    }
    try {
        run(argv[1], argv[2]);
    } catch (const std::exception& error) {
        std::cerr << "typical_run: " << error.what() << '\n';
        return 1;
    }
    return 0;
}

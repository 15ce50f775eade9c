// A run of the solver as its files see it: typical_run SAMPLES OUTPUT
//
// The front end's configuration is loaded, overridden by the solver's command line and saved in both forms.

#include <NereoFileIO/Nereo2ConfigFile.h>

#include <filesystem>
#include <iomanip>
#include <iostream>
#include <stdexcept>

using Nereo::Io::Nereo2ConfigFile;

namespace {

void require(bool succeeded, const std::string& what)
{
    if (!succeeded)
        throw std::runtime_error(what);
}

void load(Nereo2ConfigFile& config, const std::string& path)
{
    require(config.loadFrom(path), "can't load " + path);
    std::cout << "Loaded " << path << " (version " << config.version().toString().toStdString() << ")\n";
}

void save(const Nereo2ConfigFile& config, const std::string& path)
{
    require(config.saveTo(path), "can't save " + path);
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

// A run of the solver as its files see it: typical_run SAMPLES OUTPUT
//
// The front end's configuration is loaded, overridden by the solver's command line and saved in both forms.
// Materials are loaded, changed and saved.
// The control file of the run is built, saved, and loaded as the solver loads it.
// The results that the solver left are loaded and compared with published values.

#include <NereoFileIO/CodeNameTable.h>
#include <NereoFileIO/ControlFile.h>
#include <NereoFileIO/FieldVariable.h>
#include <NereoFileIO/MaterialDatabaseFile.h>
#include <NereoFileIO/GbiFile.h>
#include <NereoFileIO/Nereo2ConfigFile.h>
#include <NereoFileIO/ResultsFile.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <iomanip>
#include <iostream>
#include <numeric>
#include <sstream>
#include <stdexcept>

using Nereo::Io::BoundaryCondition;
using Nereo::Io::CodeNameTable;
using Nereo::Io::Material;
using Nereo::Io::MaterialDatabaseFile;
using Nereo::Io::MaterialProperty;
using Nereo::Io::ControlFile;
using Nereo::Io::GbiFile;
using Nereo::Io::Material;
using Nereo::Io::Nereo2ConfigFile;
using Nereo::Io::ResultsFile;

namespace {

void require(bool succeeded, const std::string& what)
{
    if (!succeeded)
        throw std::runtime_error(what);
}

void load(Nereo::Io::File& file, const std::string& path)
{
    require(file.loadFrom(path), "can't load " + path);
    std::cout << "Loaded " << path << " (version " << file.version().toString().toStdString() << ")\n";
}

void save(const Nereo::Io::File& file, const std::string& path)
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

void runConfiguration(const std::string& samples, const std::string& output)
{
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

// The sample's mesh: 65 x 65 nodes on the unit square, counted row by row from the bottom left corner.
constexpr int nodesPerRow = 65;

// Ghia, Ghia and Shin (1982), table I: the horizontal velocity on the vertical centre line at a Reynolds
// number of 100.
const struct {
    double y;
    double u;
} publishedVelocities[] = {
    {1,      1       },
    {0.9766, 0.84123 },
    {0.9688, 0.78871 },
    {0.9609, 0.73722 },
    {0.9531, 0.68717 },
    {0.8516, 0.23151 },
    {0.7344, 0.00332 },
    {0.6172, -0.13641},
    {0.5,    -0.20581},
    {0.4531, -0.21090},
    {0.2813, -0.15662},
    {0.1719, -0.10150},
    {0.1016, -0.06434},
    {0.0703, -0.04775},
    {0.0625, -0.04192},
    {0.0547, -0.03717},
    {0,      0       },
};

void printFields(const ResultsFile& results)
{
    std::cout << "\n  " << std::left << std::setw(10) << "Field" << std::right << std::setw(14) << "Minimum"
              << std::setw(14) << "Maximum" << std::setw(14) << "Mean\n";
    for (const int code : results.fieldDataCodes()) {
        const QVector<double> values = results.fieldData(code); // shared with the object, not copied
        const auto [smallest, largest] = std::minmax_element(values.begin(), values.end());
        const double sum = std::accumulate(values.begin(), values.end(), 0.0);
        std::cout << "  " << std::left << std::setw(10)
                  << CodeNameTable::instance().nameForCode(code, false).toStdString() << std::right
                  << std::setw(14) << *smallest << std::setw(14) << *largest << std::setw(14)
                  << sum / values.size() << '\n';
    }
}

/// The value at a height on the vertical centre line, linear between the nodes.
double onCentreLine(const QVector<double>& values, double y)
{
    const double row = y * (nodesPerRow - 1);
    const int below = std::min(int(row), nodesPerRow - 2);
    const int nodeBelow = nodesPerRow * below + nodesPerRow / 2 + 1; // nodes count from 1, entries from 0
    const int nodeAbove = nodeBelow + nodesPerRow;
    return values[nodeBelow - 1] + (row - below) * (values[nodeAbove - 1] - values[nodeBelow - 1]);
}

void printCentreLine(const QVector<double>& horizontalVelocity)
{
    std::cout << "\n  Horizontal velocity on the vertical centre line\n  " << std::setw(8) << "y"
              << std::setw(12) << "computed" << std::setw(12) << "published" << std::setw(13)
              << "difference\n"
              << std::fixed;
    double largest = 0;
    for (const auto& [y, u] : publishedVelocities) {
        const double computed = onCentreLine(horizontalVelocity, y);
        largest = std::max(largest, std::abs(computed - u));
        std::cout << "  " << std::setw(8) << std::setprecision(4) << y << std::setprecision(5)
                  << std::setw(12) << computed << std::setw(12) << u << std::setw(12) << computed - u << '\n';
    }
    std::cout << "  largest difference: " << largest << "\n\n" << std::defaultfloat << std::setprecision(6);
    require(largest <= 0.005, "the results are not those of the cavity");
}

void showResults(const std::string& path)
{
    ResultsFile results;
    load(results, path);
    std::cout << "  " << results.title() << '\n'
              << "  " << results.dateTimeString() << ", iteration " << results.currentIteration() << " from "
              << results.startingIteration() << ", time " << results.currentTime() << '\n'
              << "  " << results.nodeCount() << " nodes, " << results.elementCount() << " elements\n";
    printFields(results);

    const QVector<double> horizontalVelocity = results.fieldData(Nereo::Io::kU);
    require(horizontalVelocity.size() == nodesPerRow * nodesPerRow,
            "the results are not those of the cavity");
    printCentreLine(horizontalVelocity);
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

void showMaterials(const std::string& samples, const std::string& output)
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
ControlFile cavityRun(const std::string& samples)
{
    Nereo::Io::MaterialDatabaseFile materials;
    load(materials, samples + "/materials.xml");
    require(materials.contains("Air"), "there is no air");

    ControlFile control;
    control.setTitle("Lid-driven cavity, Re 100");
    control.setEquationFlag(3, 0);
    control.phiSolve(Nereo::Io::kP).tolerance = 1e-9;
    control.sequentialSolver().integer1 = 50;
    control.setPhiUnderRelax(Nereo::Io::kP, 0.3);
    control.setConstant(Nereo::Io::kPRef, 101325);
    control.setConstant(Nereo::Io::kGravY, -9.81);
    control.materialDatabase().add(materials.material("Air"));

    Nereo::Io::Flag restartEvery;
    restartEvery.setName("restart_every");
    restartEvery.setValue(100);
    control.addFlag(restartEvery);
    return control;
}

void printChange(const std::string& what, double defaultValue, double value)
{
    if (value != defaultValue)
        std::cout << "  " << std::left << std::setw(28) << what << std::setw(12) << defaultValue << value
                  << '\n';
}

void printChangedControl(const ControlFile& control)
{
    const ControlFile defaults;
    const auto nameOf = [](int code) {
        return CodeNameTable::instance().nameForCode(code, false).toStdString();
    };
    std::cout << "  " << control.title() << "\n\n  " << std::left << std::setw(28) << "Setting"
              << std::setw(12) << "Default"
              << "Value\n";
    for (int i = 0; i < 5; ++i)
        printChange("equation " + std::to_string(i), defaults.equationFlag(i), control.equationFlag(i));
    printChange("sequential solver", defaults.sequentialSolver().integer1,
                control.sequentialSolver().integer1);
    for (int code = 1; code <= 24; ++code)
        printChange("tolerance of " + nameOf(code), defaults.phiSolve(code).tolerance,
                    control.phiSolve(code).tolerance);
    for (int code = 1; code <= 46; ++code)
        printChange("relaxation of " + nameOf(code), defaults.phiUnderRelax(code),
                    control.phiUnderRelax(code));
    for (int code = 1; code <= 328; ++code)
        printChange(nameOf(code), control.originalConstant(code), control.constant(code));
    for (int i = 0; i < control.flagCount(); ++i)
        std::cout << "  " << std::setw(40) << "flag " + control.flag(i).name() << control.flag(i).value()
                  << '\n';
    std::cout << '\n';
}

void runControlFile(const std::string& samples, const std::string& output)
{
    save(cavityRun(samples), output + "/cavity.ctl");
    for (const std::string& path : {output + "/cavity.ctl", samples + "/cavity.ctl"}) {
        ControlFile control; // the solver's: its materials aren't loaded
        load(control, path);
        printChangedControl(control);
    }
BoundaryCondition conditionOn(int entityId, int code, double value)
{
    BoundaryCondition condition(code);
    condition.setEntityId(entityId);
    condition.setValue(value);
    return condition;
}

/// A square filled with air, whose lid moves along it.
void writeGeometryAndBoundaries(const std::string& path)
{
    constexpr int lid = 1;
    constexpr int walls[] = {2, 3, 4};
    constexpr int corner = 5;

    Material air("fluid");
    air.setId(1);
    air.setName("Air");

    GbiFile file;
    file.setJobName("cavity");
    file.setCoordinateSystem(GbiFile::XY);
    file.materialDatabase().add(air);
    file.addSurfaceBoundaryCondition(conditionOn(lid, Nereo::Io::kU, 1.0));
    file.addSurfaceBoundaryCondition(conditionOn(lid, Nereo::Io::kV, 0.0));
    for (const int wall : walls) {
        file.addSurfaceBoundaryCondition(conditionOn(wall, Nereo::Io::kU, 0.0));
        file.addSurfaceBoundaryCondition(conditionOn(wall, Nereo::Io::kV, 0.0));
    }
    file.addSurfaceBoundaryCondition(
        conditionOn(corner, Nereo::Io::kLockP, 0.0)); // fixes the pressure's level
    save(file, path);
}

void run(const std::string& samples, const std::string& output)
{
    std::filesystem::create_directories(output);
    runConfiguration(samples, output);
    writeGeometryAndBoundaries(output + "/cavity.gbi");
    std::cout << '\n';
    showMaterials(samples, output);
    runControlFile(samples, output);
    std::cout << '\n';
    for (const char* name : {"/cavity.res", "/cavity-be.res"}) // one in each byte order
        showResults(samples + name);
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

// A run of the solver from its first file to its last: typical_run SAMPLES OUTPUT
//
// Two programs exchange files and nothing else. The front end writes the configuration of the run, the
// control file, and the geometry and boundary file; the solver reads them; the front end reads the results.
// This program plays both of them, one after the other, in the folder OUTPUT. What they start from, and the
// results, lie in SAMPLES.

#include <NereoFileIO/CodeNameTable.h>
#include <NereoFileIO/ControlFile.h>
#include <NereoFileIO/FieldVariable.h>
#include <NereoFileIO/GbiFile.h>
#include <NereoFileIO/MaterialDatabaseFile.h>
#include <NereoFileIO/Nereo2ConfigFile.h>
#include <NereoFileIO/ResultsFile.h>

#include <algorithm>
#include <clocale>
#include <cmath>
#include <filesystem>
#include <iomanip>
#include <iostream>
#include <numeric>
#include <sstream>
#include <stdexcept>

using namespace Nereo::Io;

namespace {

// What both programs need. A load or save says by a bool whether it succeeded.

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

std::string nameOf(int code)
{
    return CodeNameTable::instance().nameForCode(code, false).toStdString();
}

void printHeadings()
{
    std::cout << "\n  " << std::left << std::setw(28) << "Setting" << std::setw(12) << "Default"
              << "Value\n";
}

template <class Value>
void printChange(const std::string& what, const Value& defaultValue, const Value& value)
{
    if (value != defaultValue)
        std::cout << "  " << std::left << std::setw(28) << what << std::setw(12) << defaultValue << value
                  << '\n';
}

void printChanges(const Nereo2ConfigFile& config)
{
    const Nereo2ConfigFile defaults;
    printHeadings();
    for (const std::string& key : config.keys())
        printChange(key, defaults.setting(key).valueAsString(), config.setting(key).valueAsString());
    std::cout << '\n';
}

void printChanges(const ControlFile& control)
{
    const ControlFile defaults;
    printHeadings();
    printChange("title", std::string("..."), control.title());
    for (int i = 0; i < ControlFile::EquationCount; ++i)
        printChange("equation " + std::to_string(i), defaults.equationFlag(i), control.equationFlag(i));
    printChange("sequential solver", defaults.sequentialSolver().integer1,
                control.sequentialSolver().integer1);
    for (int code = 1; code <= ControlFile::SolvedVariableCount; ++code)
        printChange("tolerance of " + nameOf(code), defaults.phiSolve(code).tolerance,
                    control.phiSolve(code).tolerance);
    for (int code = 1; code <= ControlFile::RelaxedVariableCount; ++code)
        printChange("relaxation of " + nameOf(code), defaults.phiUnderRelax(code),
                    control.phiUnderRelax(code));
    for (int code = 1; code <= ControlFile::ConstantCount; ++code)
        printChange(nameOf(code), control.originalConstant(code), control.constant(code));
    for (int i = 0; i < control.flagCount(); ++i)
        printChange("flag " + control.flag(i).name(), std::string(), control.flag(i).value());
    std::cout << '\n';
}

// The front end, before the run.

/// The site's defaults become the configuration of this run. XML, since the name ends in ".xml".
void writeConfiguration(const std::string& samples, const std::string& folder)
{
    Nereo2ConfigFile config;
    load(config, samples + "/NEREO2_default.xml");
    printChanges(config);
    save(config, folder + "/cavity.xml");

    Nereo2ConfigFile fromText; // any other suffix is the text form, a setting a line
    load(fromText, samples + "/solver.cfg");
    printChanges(fromText);
}

/// "998.21, constant" or "4 points over kT, piecewise_linear"; "-" where the material has no such property
std::string describe(const MaterialProperty& property)
{
    if (property.type().empty())
        return "-";
    std::ostringstream text;
    if (property.pointCount() == 0)
        text << property.value();
    else
        text << property.pointCount() << " points over " << nameOf(property.independentVariable());
    text << ", " << property.variationType();
    return text.str();
}

void printMaterials(const MaterialDatabaseFile& database)
{
    const char* const properties[] = {"density", "viscosity", "conductivity", "specific_heat"};
    constexpr int width = 36;
    std::cout << "\n  " << std::left << std::setw(26) << "Material" << std::setw(14) << "Type";
    for (const char* property : properties)
        std::cout << std::setw(width) << property;
    std::cout << '\n';
    for (int i = 0; i < database.count(); ++i) {
        const Material& material = database.material(i); // const: asking for a property adds none
        const QString name = QString::fromStdString(material.name()).leftJustified(26); // letters, not bytes
        std::cout << "  " << name.toStdString() << std::setw(14) << material.type();
        for (const char* property : properties)
            std::cout << std::setw(width) << describe(material.property(property));
        std::cout << '\n';
    }
    std::cout << '\n';
}

/// The materials to choose from, with the density of water at 25 C.
MaterialDatabaseFile chooseMaterials(const std::string& samples, const std::string& folder)
{
    MaterialDatabaseFile database;
    load(database, samples + "/materials.xml");
    printMaterials(database);
    require(database.contains("Water") && database.contains("Air"), "materials are missing");
    database.material("Water").property("density").setValue(997.05);
    save(database, folder + "/materials.xml");
    return database;
}

void writeControlFile(const Material& fluid, const std::string& folder)
{
    ControlFile control;
    control.setTitle("Lid-driven cavity, Re 100");
    control.setEquationFlag(3, 0);
    control.phiSolve(kP).tolerance = 1e-9;
    control.sequentialSolver().integer1 = 50;
    control.setPhiUnderRelax(kP, 0.3);
    control.setConstant(kPRef, 101325); // only constants that differ from their defaults are saved
    control.materialDatabase().add(fluid);

    Flag restartEvery;
    restartEvery.setName("restart_every");
    restartEvery.setValue(100);
    control.addFlag(restartEvery);
    save(control, folder + "/cavity.ctl");
}

BoundaryCondition conditionOn(int entity, int code, double value)
{
    BoundaryCondition condition(code);
    condition.setEntityId(entity);
    condition.setValue(value);
    return condition;
}

/// A square filled with the fluid, whose lid moves along it.
void writeGeometryAndBoundaries(const Material& fluid, const std::string& folder)
{
    constexpr int lid = 1;
    constexpr int walls[] = {2, 3, 4};
    constexpr int corner = 5;

    GbiFile file;
    file.setJobName("cavity");
    file.setCoordinateSystem(GbiFile::XY);
    file.materialDatabase().add(fluid);
    file.addSurfaceBoundaryCondition(conditionOn(lid, kU, 1.0));
    file.addSurfaceBoundaryCondition(conditionOn(lid, kV, 0.0));
    for (const int wall : walls) {
        file.addSurfaceBoundaryCondition(conditionOn(wall, kU, 0.0));
        file.addSurfaceBoundaryCondition(conditionOn(wall, kV, 0.0));
    }
    file.addSurfaceBoundaryCondition(conditionOn(corner, kLockP, 0.0)); // fixes the level of the pressure
    save(file, folder + "/cavity.gbi");
}

void prepareRun(const std::string& samples, const std::string& folder)
{
    std::cout << "The front end prepares the run\n\n";
    writeConfiguration(samples, folder);
    const MaterialDatabaseFile materials = chooseMaterials(samples, folder);
    const Material& air = materials.material("Air");
    writeControlFile(air, folder);
    writeGeometryAndBoundaries(air, folder);
}

// The solver.

void startSolver(const std::string& folder, const std::vector<std::string>& args)
{
    std::cout << "\nThe solver starts:";
    for (const std::string& arg : args)
        std::cout << ' ' << arg;
    std::cout << "\n\n";

    // The command line goes over the configuration file.
    Nereo2ConfigFile config;
    load(config, folder + "/cavity.xml");
    require(config.loadFromRequiredCommandLineArguments(args),
            "the executable and the job prefix are missing");
    require(config.loadFromOptionalCommandLineArguments(args), "an option is unknown");
    printChanges(config);
    save(config, folder + "/cavity.cfg");

    ControlFile control; // loading leaves out the materials
    load(control, folder + "/cavity.ctl");
    std::cout << "\n  What the solver was asked to do, where it isn't the default:\n";
    printChanges(control);

    GbiFile geometry; // only written by this library; the solver has its own reader
    load(geometry, folder + "/cavity.gbi");
}

// The front end, after the run.

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
        std::cout << "  " << std::left << std::setw(10) << nameOf(code) << std::right << std::setw(14)
                  << *smallest << std::setw(14) << *largest << std::setw(14) << sum / values.size() << '\n';
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
    ResultsFile results; // a new one for each file: loading adds to what is there
    load(results, path);
    std::cout << "  " << results.title() << '\n'
              << "  " << results.dateTimeString() << ", iteration " << results.currentIteration() << " from "
              << results.startingIteration() << ", time " << results.currentTime() << '\n'
              << "  " << results.nodeCount() << " nodes, " << results.elementCount() << " elements\n";
    printFields(results);

    const QVector<double> horizontalVelocity = results.fieldData(kU);
    require(horizontalVelocity.size() == nodesPerRow * nodesPerRow,
            "the results are not those of the cavity");
    printCentreLine(horizontalVelocity);
}

void run(const std::string& samples, const std::string& folder)
{
    std::filesystem::create_directories(folder);
    prepareRun(samples, folder);
    startSolver(folder, {"/opt/nereo/bin/solver", "cavity", "-MaxIter", "500", "-Transient", "1"});

    std::cout << "\nThe front end shows the results\n\n";
    for (const char* name : {"/cavity.res", "/cavity-be.res"}) // one in each byte order
        showResults(samples + name);
    std::cout << "The files of the run are in " << folder << '\n';
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::cerr << "usage: typical_run SAMPLES OUTPUT\n";
        return 2;
    }
    std::setlocale(LC_ALL, ""); // the user's, as in any front end; the files don't depend on it
    try {
        run(argv[1], argv[2]);
    } catch (const std::exception& error) {
        std::cerr << "typical_run: " << error.what() << '\n';
        return 1;
    }
    return 0;
}

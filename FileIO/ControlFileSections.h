#pragma once

#include <NereoFileIO/FieldVariable.h>

#include <QStringView>

/// The sections of a control file, for the reader, the writer and whoever else looks at such files: their
/// names, and what stands in those that are the same in every file.

namespace Nereo::Io {

constexpr char versionMark[] = " Ver "; ///< in the first line; the version follows the last one

constexpr char titleStart[] = " *** "; ///< of the line that begins a section; the name follows

/// Whether a line is the title of a section.
inline bool isTitle(QStringView line)
{
    return line.startsWith(QLatin1String(titleStart));
}

/// Whether a line is one that a name can be taken from, which is wider: white space other than a blank is
/// possible in the first title of a file.
inline bool hasSectionName(QStringView line)
{
    return line.size() > 5 && line[0].isSpace() && line.mid(1, 3) == QLatin1String("***")
        && line[4].isSpace();
}

namespace SectionName {

constexpr char title[] = "Title";
constexpr char equationSelection[] = "Equation Selection";
constexpr char units[] = "Units";
constexpr char propertySettings[] = "Property Settings";
constexpr char transientData[] = "Transient Data";
constexpr char sequentialSolver[] = "Sequential Solver Iterations";
constexpr char solutionControl[] = "Solution Control";
constexpr char relaxation[] = "Relaxation";
constexpr char autoConvergenceControl[] = "Auto Convergence Control";
constexpr char fieldVariableOutput[] = "Field Variable Output";
constexpr char constants[] = "Constants";
constexpr char flags[] = "Flag section";

// Those that no writer writes. Their content has no place in the model.
constexpr char multiPhaseTable[] = "Multi-Phase Table";
constexpr char variableBoundaryConditions[] = "Variable BC";
constexpr char fanCurveBoundaryConditions[] = "Fan Curve BC";
constexpr char scalars[] = "Scalars";

} // namespace SectionName

/// A section that is the same in every file.
struct FixedSection {
    const char* name;
    const char* lines;
};

namespace FixedSections {

constexpr FixedSection fieldVariableInitialization {"Field Variable Initialization", "kT 293 0\n"};

constexpr FixedSection freeSurface {"Free Surface", R"(0
0 0 0
0 0
0 0
0 0
)"};

constexpr FixedSection outputSetting {"Output Setting", "0 0 0 23 832\n"};
constexpr FixedSection resultsOutputFrequency {"Results Output Frequency", "steps 1 0\n"};
constexpr FixedSection summaryOutputFrequency {"Summary Output Frequency", "steps 1 0\n"};
constexpr FixedSection restart {"Restart", "0 0 0 0\n"};
constexpr FixedSection batch {"Batch", "0\n"};

constexpr FixedSection solarHeating {"Solar Heating", R"(0 0
0 0 0
0 0 0
0
2015 5 18 14 22 47
1 0 0
0 1 0
0 0
United*States Charlottesville*Va.
0 0
0
293.15
)"};

constexpr FixedSection interfaceSection {"Interface", "TARNDESK TARNVIEW\n"};
constexpr FixedSection monitorPoints {"Monitor Points", "0\n"};

} // namespace FixedSections

/// What stands under "Property Settings" for each material, beside its own values.
namespace MaterialLines {

constexpr char end[] = "-----end of this index property data";

constexpr char fluidSettings[] = R"(1 1 1 0 1 2
0 0 0
0 0 0
0
0 0 0
0 0 0
0 0 0
0 0 0
0 0 0
0 0 0
)";

constexpr int fluidProperties[] = {
    kRho, kVisc, kCond, kCp, kSurfT, kEmis, kTransmis, kElRes, kWallRough,
};

constexpr int solidProperties[] = {
    kRho, kVisc, kCond, kGen, kMixF, kCp, kSurfT, kEmis, kTransmis, kElRes, kWallRough,
};

// The solver's codes. Several variations share one.
enum VariationCode : int {
#define VARIATION_TYPE(object, name, displayName, code, alias) object = (code),
#include <NereoFileIO/VariationType.def>
};

} // namespace MaterialLines

constexpr int lastListedVariable = kLiqFrac;    // from kU on, where a section doesn't list all
constexpr int firstListedConstant = kTurbRatio; // what comes before are no constants but fields

} // namespace Nereo::Io

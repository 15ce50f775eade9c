#include "ControlFileTextWriter.h"

#include "ControlFileRecords.h"
#include "ExactText.h"
#include "NumberText.h"

#include <NereoFileIO/CodeNameTable.h>
#include <NereoFileIO/ControlFile.h>

#include <type_traits>

namespace Nereo::Io {

namespace {

// The sections that are the same in every file.

const char fieldVariableInitialization[] = R"( *** Field Variable Initialization
kT 293 0
)";

const char freeSurface[] = R"( *** Free Surface
0
0 0 0
0 0
0 0
0 0
)";

const char outputSettings[] = R"( *** Output Setting
0 0 0 23 832
 *** Results Output Frequency
steps 1 0
 *** Summary Output Frequency
steps 1 0
)";

const char restartToSolarHeating[] = R"( *** Restart
0 0 0 0
 *** Batch
0
 *** Solar Heating
0 0
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
)";

const char interfaceSection[] = R"( *** Interface
TARNDESK TARNVIEW
)";

const char monitorPoints[] = R"( *** Monitor Points
0
)";

const char fluidSettings[] = R"(1 1 1 0 1 2
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

const char endOfMaterial[] = "-----end of this index property data\n";

constexpr int fluidProperties[] = {
    kRho, kVisc, kCond, kCp, kSurfT, kEmis, kTransmis, kElRes, kWallRough,
};

constexpr int solidProperties[] = {
    kRho, kVisc, kCond, kGen, kMixF, kCp, kSurfT, kEmis, kTransmis, kElRes, kWallRough,
};

// The solver's codes. Several variations share one.
enum VariationCode : int {
#define VARIATION_TYPE(object, name, displayName, code, alias) object = code,
#include <NereoFileIO/VariationType.def>
};

struct Criterion {
    const char* text;
    double AutoConvData::*threshold;
};

constexpr Criterion criteria[] = {
    {"Instantaneous Convergence Curve Slope",    &AutoConvData::instantaneousSlope  },
    {"Time-Average Convergence Curve Slope",     &AutoConvData::timeAverageSlope    },
    {"Time-Average Convergence Curve Concavity", &AutoConvData::timeAverageConcavity},
    {"Field Fluctuation",                        &AutoConvData::fieldFluctuation    },
};

constexpr int lastListedVariable = kLiqFrac;    // from kU on, where a section doesn't list all
constexpr int firstListedConstant = kTurbRatio; // what comes before are no constants but fields

QString nameOf(int code)
{
    return CodeNameTable::instance().nameForCode(code, false);
}

template <class Item>
void writeItem(QTextStream& out, const Item& item)
{
    if constexpr (std::is_same_v<Item, double>)
        out << NumberText(item); // the stream's own text, sooner
    else
        out << item;
}

/// The items with a blank between them.
template <class First, class... Rest>
void writeLine(QTextStream& out, const First& first, const Rest&... rest)
{
    writeItem(out, first);
    ((out << ' ', writeItem(out, rest)), ...);
    out << '\n';
}

template <class Record, class... Fields>
void writeRecord(QTextStream& out, int code, const Record& record, const std::tuple<Fields...>& fields)
{
    std::apply([&](auto... field) { writeLine(out, nameOf(code), record.*field...); }, fields);
}

void writeCurve(QTextStream& out, const MaterialProperty& property)
{
    const int count = property.pointCount();
    const int variable = property.independentVariable();
    writeLine(out, count - 1, count, variable, nameOf(variable));
    for (int i = 0; i < count; ++i) {
        out << "   ";
        writeLine(out, property.point(i).y(), property.point(i).x()); // y comes first
    }
}

} // namespace

ControlFileTextWriter::ControlFileTextWriter(const ControlFile& controlFile) : controlFile_(&controlFile) {}

void ControlFileTextWriter::write(QTextStream& out)
{
    writeHeader(out);
    writeTitle(out);
    writeEquationSelection(out);
    writeUnits(out);
    writePropertySettings(out);
    out << fieldVariableInitialization;
    writeTransientData(out);
    out << freeSurface;
    writeSequentialSolverIterations(out);
    writeSolutionControl(out);
    writeRelaxation(out);
    writeAutoConvergenceControl(out);
    out << outputSettings;
    writeFieldVariableOutput(out);
    out << restartToSolarHeating;
    writeConstants(out);
    out << interfaceSection;
    writeFlagSection(out);
    out << monitorPoints;
}

void ControlFileTextWriter::writeHeader(QTextStream& out) const
{
    out << toExactQString(controlFile_->headerLine1()) << '\n';
    out << toExactQString(controlFile_->headerLine2()) << '\n';
}

void ControlFileTextWriter::writeTitle(QTextStream& out) const
{
    out << " *** Title\n";
    out << toExactQString(controlFile_->title()) << '\n';
}

void ControlFileTextWriter::writeEquationSelection(QTextStream& out) const
{
    out << " *** Equation Selection\n";
    for (int i = 0; i < ControlFile::EquationCount; ++i)
        writeLine(out, controlFile_->equationFlag(i));
}

void ControlFileTextWriter::writeUnits(QTextStream& out) const
{
    out << " *** Units\n";
    writeLine(out, controlFile_->units());
}

void ControlFileTextWriter::writePropertySettings(QTextStream& out) const
{
    out << " *** Property Settings\n";
    const MaterialDatabaseFile& materials = controlFile_->materialDatabase();
    for (int i = 0; i < materials.count(); ++i)
        writeMaterial(out, materials.material(i));
}

void ControlFileTextWriter::writeMaterial(QTextStream& out, const Material& material) const
{
    writeLine(out, material.id(), material.fluidFlag(), material.resistFlag(), material.environmentType(),
              toExactQString(material.name()));
    if (material.type() == "fluid")
        writeFluid(out, material);
    else if (material.type() == "solid")
        writeSolid(out, material);
    out << endOfMaterial;
}

void ControlFileTextWriter::writeFluid(QTextStream& out, const Material& fluid) const
{
    writeLine(out, fluid.refPressure(), fluid.refTemperature(), fluid.refCompressibility(),
              fluid.vaporPressure());
    out << fluidSettings;
    for (const int code : fluidProperties)
        writeProperty(out, fluid, code);
    writeLine(out, nameOf(kSpecDifu), controlFile_->units(), 1, fluid.diffusionCoefficient());
}

void ControlFileTextWriter::writeSolid(QTextStream& out, const Material& solid) const
{
    writeLine(out, solid.refTemperature());
    for (const int code : solidProperties)
        writeProperty(out, solid, code);
}

void ControlFileTextWriter::writeProperty(QTextStream& out, const Material& material, int code) const
{
    const MaterialProperty missing; // what a material hasn't got is a constant zero
    const MaterialProperty* const found = material.findProperty(code);
    const MaterialProperty& property = found == nullptr ? missing : *found;
    const int variation = property.variationCode();
    out << nameOf(code) << ' ' << controlFile_->units() << ' ' << variation << ' ';
    switch (variation) {
    case Constant:
        return writeLine(out, property.value());
    case EquationOfState:
    case AdiabaticEquationOfState:
        return writeLine(out, material.gasConstant());
    case SameAsKxx:
        out << '\n';
        return;
    case PiecewiseLinear:
        return writeCurve(out, property);
    default:
        return; // what follows goes on in the same line, which is how the solver knows these files
    }
}

void ControlFileTextWriter::writeTransientData(QTextStream& out) const
{
    out << " *** Transient Data \n";
    writeLine(out, controlFile_->transientForm(), controlFile_->numberOfTimeSteps());
    writeLine(out, controlFile_->timeStepSize());
    writeLine(out, controlFile_->stopTime());
}

void ControlFileTextWriter::writeSequentialSolverIterations(QTextStream& out) const
{
    const SeqSolverType& solver = controlFile_->sequentialSolver();
    out << " *** Sequential Solver Iterations\n";
    writeLine(out, solver.integer1);
    writeLine(out, solver.integer2);
    writeLine(out, solver.integer3);
    writeLine(out, toExactQString(solver.variable), solver.tolerance);
}

void ControlFileTextWriter::writeSolutionControl(QTextStream& out) const
{
    out << " *** Solution Control\n";
    for (int code = kU; code <= lastListedVariable; ++code) {
        const PhiSolveType& solve = controlFile_->phiSolve(code);
        writeLine(out, nameOf(code), solve.integer1, solve.integer2, 1, solve.tolerance); // 1 in every file
    }
}

void ControlFileTextWriter::writeRelaxation(QTextStream& out) const
{
    out << " *** Relaxation\n";
    for (int code = kU; code <= ControlFile::RelaxedVariableCount; ++code)
        writeLine(out, nameOf(code), controlFile_->phiUnderRelax(code), controlFile_->phiInertRelax(code));
}

void ControlFileTextWriter::writeAutoConvergenceControl(QTextStream& out) const
{
    out << " *** Auto Convergence Control\n";
    writeLine(out, controlFile_->isAutoConvOn(), controlFile_->isAutoStopOn());
    for (const auto& [text, threshold] : criteria)
        writeLine(out, text, controlFile_->autoConvData().*threshold);
}

void ControlFileTextWriter::writeFieldVariableOutput(QTextStream& out) const
{
    out << " *** Field Variable Output\n";
    for (int code = kU; code <= lastListedVariable; ++code)
        writeLine(out, nameOf(code), 0);
}

void ControlFileTextWriter::writeConstants(QTextStream& out) const
{
    out << " *** Constants\n";
    for (int code = firstListedConstant; code <= ControlFile::ConstantCount; ++code) {
        const auto write = [&](const auto& record, const auto& fields) {
            writeRecord(out, code, record, fields);
        };
        if (visitRecord(*controlFile_, code, write))
            continue;
        const double value = controlFile_->constant(code);
        if (value != controlFile_->originalConstant(code))
            writeLine(out, nameOf(code), value);
    }
}

void ControlFileTextWriter::writeFlagSection(QTextStream& out) const
{
    out << " *** Flag section\n";
    writeLine(out, controlFile_->flagCount());
    for (int i = 0; i < controlFile_->flagCount(); ++i) {
        const Flag& flag = controlFile_->flag(i);
        writeLine(out, toExactQString(flag.name()), toExactQString(flag.value()));
    }
}

} // namespace Nereo::Io

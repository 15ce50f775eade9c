#include "ControlFileTextWriter.h"

#include "ControlFileRecords.h"
#include "ControlFileSections.h"
#include "ExactText.h"
#include "NumberText.h"

#include <NereoFileIO/CodeNameTable.h>
#include <NereoFileIO/ControlFile.h>

#include <type_traits>

namespace Nereo::Io {

namespace {

QString nameOf(int code)
{
    return CodeNameTable::instance().nameForCode(code, false);
}

void writeTitleLine(QTextStream& out, const char* name)
{
    out << titleStart << name << '\n';
}

void writeSection(QTextStream& out, const FixedSection& section)
{
    writeTitleLine(out, section.name);
    out << section.lines;
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
    writeSection(out, FixedSections::fieldVariableInitialization);
    writeTransientData(out);
    writeSection(out, FixedSections::freeSurface);
    writeSequentialSolverIterations(out);
    writeSolutionControl(out);
    writeRelaxation(out);
    writeAutoConvergenceControl(out);
    writeSection(out, FixedSections::outputSetting);
    writeSection(out, FixedSections::resultsOutputFrequency);
    writeSection(out, FixedSections::summaryOutputFrequency);
    writeFieldVariableOutput(out);
    writeSection(out, FixedSections::restart);
    writeSection(out, FixedSections::batch);
    writeSection(out, FixedSections::solarHeating);
    writeConstants(out);
    writeSection(out, FixedSections::interfaceSection);
    writeFlagSection(out);
    writeSection(out, FixedSections::monitorPoints);
}

void ControlFileTextWriter::writeHeader(QTextStream& out) const
{
    out << toExactQString(controlFile_->headerLine1()) << '\n';
    out << toExactQString(controlFile_->headerLine2()) << '\n';
}

void ControlFileTextWriter::writeTitle(QTextStream& out) const
{
    writeTitleLine(out, SectionName::title);
    out << toExactQString(controlFile_->title()) << '\n';
}

void ControlFileTextWriter::writeEquationSelection(QTextStream& out) const
{
    writeTitleLine(out, SectionName::equationSelection);
    for (int i = 0; i < ControlFile::EquationCount; ++i)
        writeLine(out, controlFile_->equationFlag(i));
}

void ControlFileTextWriter::writeUnits(QTextStream& out) const
{
    writeTitleLine(out, SectionName::units);
    writeLine(out, controlFile_->units());
}

void ControlFileTextWriter::writePropertySettings(QTextStream& out) const
{
    writeTitleLine(out, SectionName::propertySettings);
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
    out << MaterialLines::end << '\n';
}

void ControlFileTextWriter::writeFluid(QTextStream& out, const Material& fluid) const
{
    writeLine(out, fluid.refPressure(), fluid.refTemperature(), fluid.refCompressibility(),
              fluid.vaporPressure());
    out << MaterialLines::fluidSettings;
    for (const int code : MaterialLines::fluidProperties)
        writeProperty(out, fluid, code);
    writeLine(out, nameOf(kSpecDifu), controlFile_->units(), 1, fluid.diffusionCoefficient());
}

void ControlFileTextWriter::writeSolid(QTextStream& out, const Material& solid) const
{
    writeLine(out, solid.refTemperature());
    for (const int code : MaterialLines::solidProperties)
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
    case MaterialLines::Constant:
        return writeLine(out, property.value());
    case MaterialLines::EquationOfState:
    case MaterialLines::AdiabaticEquationOfState:
        return writeLine(out, material.gasConstant());
    case MaterialLines::SameAsKxx:
        out << '\n';
        return;
    case MaterialLines::PiecewiseLinear:
        return writeCurve(out, property);
    default:
        return; // what follows goes on in the same line, which is how the solver knows these files
    }
}

void ControlFileTextWriter::writeTransientData(QTextStream& out) const
{
    out << titleStart << SectionName::transientData << " \n"; // this title alone has a blank behind it
    writeLine(out, controlFile_->transientForm(), controlFile_->numberOfTimeSteps());
    writeLine(out, controlFile_->timeStepSize());
    writeLine(out, controlFile_->stopTime());
}

void ControlFileTextWriter::writeSequentialSolverIterations(QTextStream& out) const
{
    const SeqSolverType& solver = controlFile_->sequentialSolver();
    writeTitleLine(out, SectionName::sequentialSolver);
    writeLine(out, solver.integer1);
    writeLine(out, solver.integer2);
    writeLine(out, solver.integer3);
    writeLine(out, toExactQString(solver.variable), solver.tolerance);
}

void ControlFileTextWriter::writeSolutionControl(QTextStream& out) const
{
    writeTitleLine(out, SectionName::solutionControl);
    for (int code = kU; code <= lastListedVariable; ++code) {
        const PhiSolveType& solve = controlFile_->phiSolve(code);
        writeLine(out, nameOf(code), solve.integer1, solve.integer2, 1, solve.tolerance); // 1 in every file
    }
}

void ControlFileTextWriter::writeRelaxation(QTextStream& out) const
{
    writeTitleLine(out, SectionName::relaxation);
    for (int code = kU; code <= ControlFile::RelaxedVariableCount; ++code)
        writeLine(out, nameOf(code), controlFile_->phiUnderRelax(code), controlFile_->phiInertRelax(code));
}

void ControlFileTextWriter::writeAutoConvergenceControl(QTextStream& out) const
{
    writeTitleLine(out, SectionName::autoConvergenceControl);
    writeLine(out, controlFile_->isAutoConvOn(), controlFile_->isAutoStopOn());
    for (const auto& [text, threshold] : criteria)
        writeLine(out, text, controlFile_->autoConvData().*threshold);
}

void ControlFileTextWriter::writeFieldVariableOutput(QTextStream& out) const
{
    writeTitleLine(out, SectionName::fieldVariableOutput);
    for (int code = kU; code <= lastListedVariable; ++code)
        writeLine(out, nameOf(code), 0);
}

void ControlFileTextWriter::writeConstants(QTextStream& out) const
{
    writeTitleLine(out, SectionName::constants);
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
    writeTitleLine(out, SectionName::flags);
    writeLine(out, controlFile_->flagCount());
    for (int i = 0; i < controlFile_->flagCount(); ++i) {
        const Flag& flag = controlFile_->flag(i);
        writeLine(out, toExactQString(flag.name()), toExactQString(flag.value()));
    }
}

} // namespace Nereo::Io

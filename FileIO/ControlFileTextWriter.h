#pragma once

#include "Writer.h"

#include <QTextStream>

namespace Nereo::Io {

class ControlFile;
class Material;
class MaterialProperty;

/// Writes the sections of a control file in their fixed order.
class NEREOFILEIO_EXPORT ControlFileTextWriter : public Writer<QTextStream> {
public:
    explicit ControlFileTextWriter(const ControlFile& controlFile);

    void write(QTextStream& out) override;

private:
    void writeHeader(QTextStream& out) const;
    void writeTitle(QTextStream& out) const;
    void writeEquationSelection(QTextStream& out) const;
    void writeUnits(QTextStream& out) const;
    void writePropertySettings(QTextStream& out) const;
    void writeMaterial(QTextStream& out, const Material& material) const;
    void writeFluid(QTextStream& out, const Material& fluid) const;
    void writeSolid(QTextStream& out, const Material& solid) const;
    void writeProperty(QTextStream& out, const Material& material, int code) const;
    void writeTransientData(QTextStream& out) const;
    void writeSequentialSolverIterations(QTextStream& out) const;
    void writeSolutionControl(QTextStream& out) const;
    void writeRelaxation(QTextStream& out) const;
    void writeAutoConvergenceControl(QTextStream& out) const;
    void writeFieldVariableOutput(QTextStream& out) const;
    void writeConstants(QTextStream& out) const;
    void writeFlagSection(QTextStream& out) const;

    const ControlFile* controlFile_;
};

} // namespace Nereo::Io

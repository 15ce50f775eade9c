#pragma once

#include "Writer.h"

#include <QTextStream>

namespace Nereo::Io {

class GbiFile;
enum class GbiContent;

/// Writes the sections of the geometry and boundary input file; those about the mesh are empty.
class NEREOFILEIO_EXPORT GbiFileTextWriter : public Writer<QTextStream> {
public:
    explicit GbiFileTextWriter(const GbiFile& file);

    void write(QTextStream& out) override;

private:
    void writeHeader(QTextStream& out) const;
    void writeContent(QTextStream& out, GbiContent content) const;
    void writeCoordinateSystem(QTextStream& out) const;
    void writeMaterials(QTextStream& out) const;
    void writeUnits(QTextStream& out) const;
    void writeSurfaceConditions(QTextStream& out) const;

    const GbiFile* file_;
};

} // namespace Nereo::Io

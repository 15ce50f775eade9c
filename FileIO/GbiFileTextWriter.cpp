#include "GbiFileTextWriter.h"

#include "Assertion.h"
#include "ExactText.h"
#include "TextBlock.h"

#include <NereoFileIO/CodeNameTable.h>
#include <NereoFileIO/GbiFile.h>

#include <cstddef>

namespace Nereo::Io {
namespace {

// In the order of the enumerators.
constexpr const char* coordinateSystemWords[] = {"", "XY", "XR", "RY", "RT", "ZY", "XZ", "XYZ", "RTZ"};
constexpr const char* unitsWords[] = {"meter", "cm", "mm", "feet", "inch", "inch-WATT"};

const char meshSections[] = R"(*** Extruded Parts Summary
0
*** Nodes
*** Elements
*** Shell Elements
*** Shell Surface Node Links
*** 3D Shells Data
*** Part Surfaces
*** Surface Connectivity Data
*** Extrusion Nodal Data
*** Extrusion Face List
*** Periodic Nodal Data
*** Periodic Face List
*** Periodic Transform
*** Rotating Region Data
*** Moving Region Data
*** Fan Thermostats
-1 kP 0.0
*** PCB Regions
-1 kP 0.0
*** Heat Sink Model Info
-1 kP 0.0
)";

const char otherConditions[] = R"(*** Spatial nodal boundary conditions
-1
*** Region element boundary conditions
-1
*** Region initial conditions
-1
*** Surface initial conditions
-1
)";

template <std::size_t count>
const char* word(const char* const (&words)[count], int index)
{
    NEREO_ASSERT_INDEX(index, int(count), "QList<T>::operator[]", "FileIO/GbiFileTextWriter");
    return words[index];
}

} // namespace

GbiFileTextWriter::GbiFileTextWriter(const GbiFile& file) : file_(&file) {}

void GbiFileTextWriter::write(QTextStream& out)
{
    writeHeader(out);
    writeCoordinateSystem(out);
    writeMaterials(out);
    writeUnits(out);
    out << meshSections;
    writeSurfaceConditions(out);
    out << otherConditions;
}

void GbiFileTextWriter::writeHeader(QTextStream& out) const
{
    out << toExactQString(file_->jobName()) << '\n';
    out << toExactQString(file_->productLine()) << '\n';
    out << "Version " << file_->version().toString() << '\n';
    out << "\n*** Summary\n";
}

void GbiFileTextWriter::writeCoordinateSystem(QTextStream& out) const
{
    const char* const name = word(coordinateSystemWords, file_->coordinateSystem());
    out << "*** Coordinate System\n" << name << ' ' << name << '\n'; // twice: that is the format
}

void GbiFileTextWriter::writeMaterials(QTextStream& out) const
{
    out << "*** Properties\n";
    const MaterialDatabaseFile& materials = file_->materialDatabase();
    for (int i = 0; i < materials.count(); ++i) {
        const Material& material = materials.material(i);
        out << material.id() << " \"" << toExactQString(material.name()) << "\" " << material.fluidFlag()
            << ' ' << material.resistFlag() << '\n';
    }
    out << "-1\n";
}

void GbiFileTextWriter::writeUnits(QTextStream& out) const
{
    out << "*** Units\n" << word(unitsWords, file_->units()) << '\n';
}

void GbiFileTextWriter::writeSurfaceConditions(QTextStream& out) const
{
    out << "*** Surface nodal boundary conditions\n";
    const CodeNameTable& names = CodeNameTable::instance();
    TextBlock block(out);
    for (int i = 0; i < file_->surfaceBoundaryConditionCount(); ++i) {
        const BoundaryCondition& condition = file_->surfaceBoundaryCondition(i);
        block << condition.entityId() << ' ' << names.nameForCode(condition.kCode(), true) << ' '
              << condition.value() << ' ';
        for (int j = 0; j < condition.extraValueCount(); ++j)
            block << condition.extraValue(j) << ' ';
        block << condition.timeCurveFlag() << ' ' << condition.timeCurveId() << '\n';
    }
    block.flush();
    out << "-1\n";
}

} // namespace Nereo::Io

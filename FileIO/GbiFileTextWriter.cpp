#include "GbiFileTextWriter.h"

#include "Assertion.h"
#include "ExactText.h"
#include "GbiFileSections.h"
#include "TextBlock.h"

#include <NereoFileIO/CodeNameTable.h>
#include <NereoFileIO/GbiFile.h>

#include <cstddef>

namespace Nereo::Io {
namespace {

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
    for (const GbiSection& section : gbiSections) {
        out << gbiTitleStart << section.name << '\n' << section.lines;
        writeContent(out, section.content);
    }
}

void GbiFileTextWriter::writeContent(QTextStream& out, GbiContent content) const
{
    switch (content) {
    case GbiContent::Fixed:
        return;
    case GbiContent::CoordinateSystem:
        return writeCoordinateSystem(out);
    case GbiContent::Materials:
        return writeMaterials(out);
    case GbiContent::Units:
        return writeUnits(out);
    case GbiContent::SurfaceConditions:
        return writeSurfaceConditions(out);
    }
}

void GbiFileTextWriter::writeHeader(QTextStream& out) const
{
    out << toExactQString(file_->jobName()) << '\n';
    out << toExactQString(file_->productLine()) << '\n';
    out << gbiVersionWord << ' ' << file_->version().toString() << "\n\n";
}

void GbiFileTextWriter::writeCoordinateSystem(QTextStream& out) const
{
    const char* const name = word(coordinateSystemWords, file_->coordinateSystem());
    out << name << ' ' << name << '\n'; // twice: that is the format
}

void GbiFileTextWriter::writeMaterials(QTextStream& out) const
{
    const MaterialDatabaseFile& materials = file_->materialDatabase();
    for (int i = 0; i < materials.count(); ++i) {
        const Material& material = materials.material(i);
        out << material.id() << " \"" << toExactQString(material.name()) << "\" " << material.fluidFlag()
            << ' ' << material.resistFlag() << '\n';
    }
    out << gbiListEnd << '\n';
}

void GbiFileTextWriter::writeUnits(QTextStream& out) const
{
    out << word(unitsWords, file_->units()) << '\n';
}

void GbiFileTextWriter::writeSurfaceConditions(QTextStream& out) const
{
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
    out << gbiListEnd << '\n';
}

} // namespace Nereo::Io

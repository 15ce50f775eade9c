#pragma once

#include "ControlFileLines.h"
#include "ControlFileValues.h"
#include "SeenNames.h"

namespace Nereo::Inspection {

/// Reads the materials under "Property Settings", of which a load takes nothing: each is there for the
/// solver, as a writer writes it.
///
/// The values have the names of their elements in a material database, and those of a property stand under
/// the name of its variable: "property-settings/Water/id", "property-settings/Water/kRho/value".
class ControlFileMaterials {
public:
    ControlFileMaterials(ControlFileLines& lines, ControlFileValues& values, std::size_t mostRepeated)
        : lines_(lines), values_(values), names_(mostRepeated), ids_(mostRepeated)
    {
    }

    /// Reads up to the end of the section. False if there is no material.
    bool read(const QString& address);

private:
    /// A value by what it is of: its address, which takes longer to put together than a number to read, and
    /// which nobody may want to know.
    struct Name {
        const char* element;
        QStringView property = {}; ///< empty for a value of the material
        int point = 0;             ///< of the property's curve, from 1
    };

    // What reads a part of a material: false, behind a finding, where it isn't as a writer writes it.

    bool readMaterial();
    bool readFirstLine();
    bool readFluid();
    bool readSolid();
    bool readProperty(int code);
    bool readCurve(const QString& property);
    bool readPoint(const QString& property, int number);
    bool readDiffusion();
    bool readEnd();

    bool expectWord(QStringView word);
    bool expectText(const char* lines);
    bool expectLineEnd();
    bool takeInteger(int& integer);
    bool takeNumber(const Name& name, Item::Type type, double& value);
    bool takeNumber(const Name& name, Item::Type type);
    bool takeUnits(int code);
    void checkId(Range id, int number);
    void item(const Name& name, Item::Type type, Range range, const QVariant& value);

    bool isEnd() const;
    void skipMaterial();
    bool refuse(Range range);

    QString addressOf(const Name& name) const;

    ControlFileLines& lines_;
    ControlFileValues& values_;
    SeenNames names_;
    SeenNames ids_;
    QString section_;
    QString address_; ///< of the material
    int count_ = 0;
};

} // namespace Nereo::Inspection

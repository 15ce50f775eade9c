#include "FuzzModels.h"

#include "Descriptions.h"

#include <NereoFileIO/FieldVariable.h>
#include <NereoFileIO/MaterialType.h>
#include <NereoFileIO/VariationType.h>

#include <QLocale>

using namespace Nereo::Io;

namespace {

// Known and older names, and one that no table has.
constexpr const char* variations[] = {
#define VARIATION_TYPE(object, name, displayName, code, alias) name, alias,
#include <NereoFileIO/VariationType.def>
    "piecewise_linear",
    "piecewise_linear",
    "made_up",
};

constexpr const char* materialTypes[] = {
#define MATERIAL_TYPE(object, name, displayName) name,
#include <NereoFileIO/MaterialType.def>
    "fluid",
    "solid",
    "made up & <odd>",
};

template <class Keep>
QString kept(const QString& text, Keep keep)
{
    QString result;
    for (const QChar character : text) {
        if (keep(character))
            result += character;
    }
    return result;
}

/// Of what there can be any number of.
int takeCount(FuzzBytes& bytes)
{
    return bytes.choice(8);
}

QString settingText(FuzzBytes& bytes, Setting::Type type, const TakeText& takeText)
{
    switch (type) {
    case Setting::Int:
        return QString::number(bytes.number<qint32>());
    case Setting::Double:
        return QString::number(bytes.real(), 'g', QLocale::FloatingPointShortest);
    default:
        return takeText(bytes);
    }
}

void fillProperty(FuzzBytes& bytes, MaterialProperty& property)
{
    property.setVariationType(bytes.item(variations));
    property.setValue(bytes.real());
    property.setIndependentVariable(1 + bytes.choice(kNone));
    for (int count = bytes.choice(6); count > 0; --count) {
        const double x = bytes.real();
        property.addPoint(x, bytes.real());
    }
}

Material takeMaterial(FuzzBytes& bytes, const TakeText& takeText)
{
    Material material(bytes.item(materialTypes));
    material.setName(takeText(bytes).toStdString());
    material.setId(bytes.number<qint32>());
    material.setRefPressure(bytes.real());
    material.setRefTemperature(bytes.real());
    material.setRefCompressibility(bytes.real());
    material.setVaporPressure(bytes.real());
    material.setGasConstant(bytes.real());
    material.setDiffusionCoefficient(bytes.real());
    for (const int code : material.propertyCodes()) {
        if (bytes.flag())
            fillProperty(bytes, material.property(code));
    }
    return material;
}

void fillRecords(FuzzBytes& bytes, ControlFile& file)
{
    auto& solver = file.sequentialSolver();
    solver.integer1 = bytes.number<qint32>();
    solver.integer2 = bytes.number<qint32>();
    solver.integer3 = bytes.number<qint32>();
    solver.variable = takeWord(bytes).toStdString();
    solver.tolerance = bytes.real();

    auto& inflation = file.inflationData();
    for (bool* field : {&inflation.switch1, &inflation.switch2, &inflation.switch3, &inflation.switch12})
        *field = bytes.flag();
    inflation.integer4 = bytes.number<qint32>();
    inflation.integer5 = bytes.number<qint32>();
    for (double* field : {&inflation.number6, &inflation.number7, &inflation.number8, &inflation.number9,
                          &inflation.number10, &inflation.number11})
        *field = bytes.real();

    auto& autoYPlus = file.autoYPlusData();
    for (int* field : {&autoYPlus.integer1, &autoYPlus.integer2, &autoYPlus.integer3, &autoYPlus.integer4})
        *field = bytes.number<qint32>();
    autoYPlus.number5 = bytes.real();
    autoYPlus.number6 = bytes.real();

    file.smokeData() = {bytes.flag(), bytes.real(), bytes.real(), bytes.real()};
    file.thermalComfortData() = {bytes.flag(), bytes.real(), bytes.real(), bytes.real()};
}

void fillNumbers(FuzzBytes& bytes, ControlFile& file)
{
    for (int i = 0; i < ControlFile::EquationCount; ++i)
        file.setEquationFlag(i, bytes.number<qint32>());
    file.setUnits(bytes.number<qint32>());
    file.setTransientForm(bytes.number<qint32>());
    file.setNumberOfTimeSteps(bytes.number<qint32>());
    file.setTimeStepSize(bytes.real());
    file.setStopTime(bytes.real());
    for (int count = takeCount(bytes); count > 0; --count) {
        const int code = 1 + bytes.choice(ControlFile::SolvedVariableCount);
        file.phiSolve(code) = {bytes.number<qint32>(), bytes.number<qint32>(), bytes.number<qint32>(),
                               bytes.real()};
    }
    for (int count = takeCount(bytes); count > 0; --count) {
        const int code = 1 + bytes.choice(ControlFile::RelaxedVariableCount);
        file.setPhiUnderRelax(code, bytes.real());
        file.setPhiInertRelax(code, bytes.real());
    }
    for (int count = takeCount(bytes); count > 0; --count) {
        const int code =
            firstSavedConstant + bytes.choice(ControlFile::ConstantCount + 1 - firstSavedConstant);
        file.setConstant(code, bytes.real());
    }
}

void addFlags(FuzzBytes& bytes, ControlFile& file)
{
    for (int count = takeCount(bytes); count > 0; --count) {
        Flag flag;
        flag.setName(takeWord(bytes).toStdString());
        if (bytes.flag())
            flag.setValue(takeWord(bytes).toStdString());
        file.addFlag(flag);
    }
}

} // namespace

QString takeXmlText(FuzzBytes& bytes)
{
    return kept(bytes.text(), [](QChar character) {
        const ushort unit = character.unicode();
        return (unit >= ' ' && unit < 0xfffe) || unit == '\t' || unit == '\n';
    });
}

QString takeSimplified(FuzzBytes& bytes)
{
    return bytes.text().simplified();
}

QString takeLine(FuzzBytes& bytes)
{
    return bytes.text().remove('\n').remove('\r');
}

QString takeWord(FuzzBytes& bytes)
{
    const QString word = kept(bytes.text(), [](QChar character) { return !character.isSpace(); });
    return word.isEmpty() ? "word" : word;
}

Nereo2ConfigFile takeConfiguration(FuzzBytes& bytes, const TakeText& takeText)
{
    Nereo2ConfigFile config;
    for (const std::string& key : config.keys()) {
        Setting& setting = config.setting(key);
        setting.setValueFromString(settingText(bytes, setting.type(), takeText).toStdString());
    }
    return config;
}

MaterialDatabaseFile takeMaterials(FuzzBytes& bytes, const TakeText& takeText)
{
    MaterialDatabaseFile database;
    for (int count = bytes.choice(5); count > 0; --count)
        database.add(takeMaterial(bytes, takeText));
    return database;
}

ControlFile takeControlFile(FuzzBytes& bytes)
{
    ControlFile file;
    file.setHeaderLine1(takeLine(bytes).toStdString());
    file.setHeaderLine2(takeLine(bytes).toStdString());
    const QString title = takeLine(bytes);
    file.setTitle((title.startsWith(" *** ") ? title.mid(1) : title).toStdString());
    fillNumbers(bytes, file);
    fillRecords(bytes, file);
    addFlags(bytes, file);
    file.setMaterialDatabase(takeMaterials(bytes, takeWord)); // saved, though not loaded
    return file;
}

GbiFile takeGbiFile(FuzzBytes& bytes)
{
    GbiFile file;
    file.setJobName(takeLine(bytes).toStdString());
    file.setProductLine(takeLine(bytes).toStdString());
    file.setCoordinateSystem(GbiFile::CoordinateSystem(bytes.choice(GbiFile::RTZ + 1)));
    file.setUnits(GbiFile::Units(bytes.choice(GbiFile::InchWatt + 1)));
    file.setMaterialDatabase(takeMaterials(bytes, takeLine));
    for (int count = bytes.choice(20); count > 0; --count) {
        BoundaryCondition condition(bytes.choice(kNone + 1));
        condition.setEntityId(bytes.number<qint32>());
        condition.setTimeCurveId(bytes.number<qint32>());
        condition.setValue(bytes.real());
        for (int extra = bytes.choice(4); extra > 0; --extra)
            condition.addExtraValue(bytes.real());
        file.addSurfaceBoundaryCondition(condition);
    }
    return file;
}

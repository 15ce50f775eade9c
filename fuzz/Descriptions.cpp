#include "Descriptions.h"

#include <NereoFileIO/FieldVariable.h>
#include <NereoFileIO/MaterialType.h>
#include <NereoFileIO/VariationType.h>

using namespace Nereo::Io;

namespace {

class Description {
public:
    template <class... Items>
    void add(const char* name, const Items&... items)
    {
        bytes_ += name;
        ((bytes_ += ' ' + text(items)), ...);
        bytes_ += '\n';
    }

    QByteArray bytes() const { return bytes_; }

private:
    static QByteArray text(int number) { return QByteArray::number(number); }
    static QByteArray text(double number) { return QByteArray::number(number, 'g', 6); }
    static QByteArray text(const std::string& text) { return '"' + QByteArray::fromStdString(text) + '"'; }

    QByteArray bytes_;
};

void add(Description& all, const MaterialProperty& property)
{
    using Clt::VariationType;

    all.add("property", property.type(), property.variationType());
    const auto variation = VariationType::fromName(QString::fromStdString(property.variationType()));
    if (variation == VariationType::Constant || variation == VariationType::EquationOfState)
        all.add("value", property.value());
    if (variation != VariationType::PiecewiseLinear)
        return;
    all.add("variable", property.independentVariable());
    for (int i = 0; i < property.pointCount(); ++i)
        all.add("point", property.point(i).x(), property.point(i).y());
}

void add(Description& all, const Material& material)
{
    all.add("material", material.type(), material.name(), material.id());
    if (material.type() == "fluid") {
        all.add("fluid", material.refPressure(), material.refTemperature(), material.refCompressibility(),
                material.vaporPressure(), material.gasConstant(), material.diffusionCoefficient());
    } else if (material.type() == "solid") {
        all.add("solid", material.refTemperature());
    }
    for (const int code : material.propertyCodes())
        add(all, material.property(code));
}

void addRecords(Description& all, const ControlFile& file)
{
    const auto& [iterations1, iterations2, iterations3, variable, tolerance] = file.sequentialSolver();
    all.add("solver", iterations1, iterations2, iterations3, variable, tolerance);
    const auto& [i1, i2, i3, i4, i5, i6, i7, i8, i9, i10, i11, i12] = file.inflationData();
    all.add("inflation", i1, i2, i3, i4, i5, i6, i7, i8, i9, i10, i11, i12);
    const auto& [y1, y2, y3, y4, y5, y6] = file.autoYPlusData();
    all.add("y plus", y1, y2, y3, y4, y5, y6);
    const auto& [s1, s2, s3, s4] = file.smokeData();
    all.add("smoke", s1, s2, s3, s4);
    const auto& [c1, c2, c3, c4] = file.thermalComfortData();
    all.add("comfort", c1, c2, c3, c4);
}

/// The constants that are records are told as those.
bool isNumber(int code)
{
    return code != kInflate && code != kAutoYP && code != kSmokeOn && code != kThComfOn;
}

} // namespace

QByteArray describe(const Nereo2ConfigFile& config)
{
    Description all;
    all.add("version", config.version().toString().toStdString());
    for (const std::string& key : config.keys())
        all.add(key.c_str(), int(config.setting(key).type()), config.setting(key).valueAsString());
    return all.bytes();
}

QByteArray describe(const MaterialDatabaseFile& database)
{
    Description all;
    all.add("version", database.version().toString().toStdString());
    for (int i = 0; i < database.count(); ++i)
        add(all, database.material(i));
    return all.bytes();
}

QByteArray describe(const ControlFile& file)
{
    Description all;
    all.add("version", file.version().toString().toStdString());
    all.add("header", file.headerLine1(), file.headerLine2());
    all.add("title", file.title());
    for (int i = 0; i < ControlFile::EquationCount; ++i)
        all.add("equation", file.equationFlag(i));
    all.add("units", file.units());
    all.add("transient", file.transientForm(), file.numberOfTimeSteps(), file.timeStepSize(),
            file.stopTime());
    for (int code = kU; code <= kLiqFrac; ++code) {
        const PhiSolveType& solve = file.phiSolve(code);
        all.add("solve", code, solve.integer1, solve.integer2,
                solve.tolerance); // the third integer isn't kept
    }
    for (int code = kU; code <= ControlFile::RelaxedVariableCount; ++code)
        all.add("relax", code, file.phiUnderRelax(code), file.phiInertRelax(code));
    for (int code = firstSavedConstant; code <= ControlFile::ConstantCount; ++code) {
        if (isNumber(code))
            all.add("constant", code, file.constant(code));
    }
    addRecords(all, file);
    for (int i = 0; i < file.flagCount(); ++i)
        all.add("flag", file.flag(i).name(), file.flag(i).value());
    return all.bytes();
}

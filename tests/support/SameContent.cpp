#include "SameContent.h"

#include "Bits.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace Nereo::Io;

namespace {

/// What a file holds, in an order of our own.
struct Content {
    std::vector<std::string> texts;
    std::vector<double> numbers;
};

void expectSame(const Content& actual, const Content& expected)
{
    EXPECT_EQ(actual.texts, expected.texts);
    ASSERT_EQ(actual.numbers.size(), expected.numbers.size());
    if (!haveSameBits(actual.numbers, expected.numbers)) {
        EXPECT_EQ(actual.numbers, expected.numbers);
        ADD_FAILURE() << "the numbers differ, if only in the bits of a zero or a NaN";
    }
}

Content contentOf(const Nereo2ConfigFile& config)
{
    Content content;
    content.texts.push_back(config.version().toString().toStdString());
    for (const std::string& key : config.keys()) {
        const Setting& setting = config.setting(key);
        content.texts.insert(content.texts.end(), {key, setting.name(), setting.valueAsString()});
        content.numbers.insert(content.numbers.end(), {double(setting.type()), setting.valueAsDouble()});
    }
    return content;
}

void append(Content& content, const MaterialProperty& property)
{
    content.texts.insert(content.texts.end(), {property.type(), property.variationType()});
    content.numbers.insert(
        content.numbers.end(),
        {property.value(), double(property.independentVariable()), double(property.pointCount())});
    for (int i = 0; i < property.pointCount(); ++i)
        content.numbers.insert(content.numbers.end(), {property.point(i).x(), property.point(i).y()});
}

void append(Content& content, const Material& material)
{
    content.texts.insert(content.texts.end(), {material.type(), material.name()});
    content.numbers.insert(content.numbers.end(),
                           {double(material.id()), double(material.environmentType()), material.refPressure(),
                            material.refTemperature(), material.refCompressibility(),
                            material.vaporPressure(), material.gasConstant(),
                            material.diffusionCoefficient()});
    for (const int code : material.propertyCodes()) {
        content.numbers.push_back(code);
        append(content, material.property(code));
    }
}

Content contentOf(const MaterialDatabaseFile& database)
{
    Content content;
    content.texts.push_back(database.version().toString().toStdString());
    for (int i = 0; i < database.count(); ++i)
        append(content, database.material(i));
    return content;
}

void appendRecords(Content& content, const ControlFile& file)
{
    const auto append = [&content](std::initializer_list<double> numbers) {
        content.numbers.insert(content.numbers.end(), numbers);
    };
    const auto& [integer1, integer2, integer3, variable, tolerance] = file.sequentialSolver();
    append({double(integer1), double(integer2), double(integer3), tolerance});
    content.texts.push_back(variable);
    const AutoConvData& autoConv = file.autoConvData();
    append({double(file.isAutoConvOn()), double(file.isAutoStopOn()), autoConv.instantaneousSlope,
            autoConv.timeAverageSlope, autoConv.timeAverageConcavity, autoConv.fieldFluctuation});
    const InflationData& inflation = file.inflationData();
    append({double(inflation.switch1), double(inflation.switch2), double(inflation.switch3),
            double(inflation.integer4), double(inflation.integer5), inflation.number6, inflation.number7,
            inflation.number8, inflation.number9, inflation.number10, inflation.number11,
            double(inflation.switch12)});
    const AutoYPlusData& autoYPlus = file.autoYPlusData();
    append({double(autoYPlus.integer1), double(autoYPlus.integer2), double(autoYPlus.integer3),
            double(autoYPlus.integer4), autoYPlus.number5, autoYPlus.number6});
    const SmokeData& smoke = file.smokeData();
    append({double(smoke.on), smoke.number2, smoke.number3, smoke.number4});
    const ThermalComfortData& comfort = file.thermalComfortData();
    append({double(comfort.on), comfort.number2, comfort.number3, comfort.number4});
}

Content contentOf(const ControlFile& file)
{
    Content content = contentOf(file.materialDatabase());
    content.texts.insert(
        content.texts.end(),
        {file.version().toString().toStdString(), file.headerLine1(), file.headerLine2(), file.title()});
    content.numbers.insert(content.numbers.end(),
                           {double(file.format()), double(file.units()), double(file.transientForm()),
                            double(file.numberOfTimeSteps()), file.timeStepSize(), file.stopTime()});
    for (int i = 0; i < ControlFile::EquationCount; ++i)
        content.numbers.push_back(file.equationFlag(i));
    for (int code = 1; code <= ControlFile::SolvedVariableCount; ++code) {
        const auto& [integer1, integer2, integer3, tolerance] = file.phiSolve(code);
        content.numbers.insert(content.numbers.end(),
                               {double(integer1), double(integer2), double(integer3), tolerance});
    }
    for (int code = 1; code <= ControlFile::RelaxedVariableCount; ++code)
        content.numbers.insert(content.numbers.end(), {file.phiUnderRelax(code), file.phiInertRelax(code)});
    for (int code = 1; code <= ControlFile::ConstantCount; ++code)
        content.numbers.insert(content.numbers.end(), {file.constant(code), file.originalConstant(code)});
    appendRecords(content, file);
    for (int i = 0; i < file.flagCount(); ++i)
        content.texts.insert(content.texts.end(), {file.flag(i).name(), file.flag(i).value()});
    return content;
}

/// All but the values of the fields, which can be too many to copy.
Content contentBesidesFields(const ResultsFile& results)
{
    Content content;
    content.texts = {results.version().toString().toStdString(), results.dateTimeString(), results.title()};
    content.numbers = {double(results.nodeCount()),
                       double(results.elementCount()),
                       double(results.startingIteration()),
                       double(results.currentIteration()),
                       double(results.startingTimeStep()),
                       double(results.currentTimeStep()),
                       results.currentTime(),
                       results.timeStepSize()};
    return content;
}

} // namespace

void expectSameContent(const Nereo2ConfigFile& actual, const Nereo2ConfigFile& expected)
{
    expectSame(contentOf(actual), contentOf(expected));
}

void expectSameContent(const ControlFile& actual, const ControlFile& expected)
{
    expectSame(contentOf(actual), contentOf(expected));
}

void expectSameContent(const MaterialDatabaseFile& actual, const MaterialDatabaseFile& expected)
{
    expectSame(contentOf(actual), contentOf(expected));
}

void expectSameContent(const ResultsFile& actual, const ResultsFile& expected)
{
    expectSame(contentBesidesFields(actual), contentBesidesFields(expected));
    ASSERT_EQ(actual.fieldDataCodes(), expected.fieldDataCodes());
    for (const int code : expected.fieldDataCodes()) {
        const QVector<double> actualValues = actual.fieldData(code);
        const QVector<double> expectedValues = expected.fieldData(code);
        ASSERT_EQ(actualValues.size(), expectedValues.size()) << code;
        EXPECT_TRUE(haveSameBits(actualValues, expectedValues)) << code;
    }
}

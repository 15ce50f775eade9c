#include "Checked.h"

#include "support/Damage.h"
#include "support/LoadWatch.h"

#include <FileIO/NumberText.h>
#include <NereoFileIO/CodeNameTable.h>
#include <NereoFileIO/FieldVariable.h>
#include <NereoFileIO/GbiFile.h>
#include <NereoInspection/Outline.h>
#include <NereoUtility/StringConversion.h>

#include <limits>
#include <random>
#include <vector>

namespace Nereo::Inspection {
namespace {

using Io::BoundaryCondition;
using Io::GbiFile;
using Io::Material;

QString nameOf(Item::Type type)
{
    static const QStringList names {"integer", "number", "switch", "text", "version", "field"};
    return names[int(type)];
}

/// A line for each value: address, type, line:column@offset+length, what stands there, and its value where
/// that is spelled in another way.
std::string outlined(const std::string& bytes)
{
    const TemporaryFolder folder;
    QString lines;
    outline(folder.write("job.gbi", bytes), FileKind::GeometryBoundary, [&](const Item& item) {
        lines += QStringLiteral("%1 %2 %3:%4@%5+%6 [%7]")
                     .arg(item.address, nameOf(item.type))
                     .arg(item.place.line)
                     .arg(item.place.column)
                     .arg(item.place.offset)
                     .arg(item.length)
                     .arg(item.spelling);
        if (item.value.toString() != item.spelling)
            lines += ' ' + item.value.toString();
        lines += '\n';
    });
    return lines.toStdString();
}

TEST(GeometryBoundaryOutlineTest, TellsTheValues)
{
    EXPECT_EQ(outlined("\xEF\xBB\xBFK\xC3\xBChl K\xC3\xB6rper \n"
                       "NEREO 2024\r\n"
                       "Version  2024.1 \n"
                       "\n"
                       "*** Units\n"
                       " cm\n"
                       "*** Coordinate System\n"
                       "XYZ XYZ\n"
                       "*** Properties\n"
                       "7 \" \"\"Water\"\" 20 \xC2\xB0"
                       "C \" 1  +2\n"
                       "-1\n"
                       "*** Surface nodal boundary conditions\n"
                       "12 kP 2.50 0 -1\n"
                       "\t-3  kSlipNode inf 1e3 x\t-1 5 \n"
                       "-1\n"),
              "job text 1:1@3+14 [K\xC3\xBChl K\xC3\xB6rper ]\n"
              "program text 2:1@18+10 [NEREO 2024]\n"
              "version version 3:10@39+6 [2024.1] 2024.1.0.0\n"
              "units text 6:2@59+2 [cm]\n"
              "coordinate-system text 8:1@84+3 [XYZ]\n"
              "properties/1/id integer 10:1@107+1 [7]\n"
              "properties/1/name text 10:4@110+18 [ \"\"Water\"\" 20 \xC2\xB0"
              "C ]\n"
              "properties/1/fluid integer 10:23@130+1 [1]\n"
              "properties/1/resistance integer 10:26@133+2 [+2] 2\n"
              "conditions/1/entity integer 13:1@177+2 [12]\n"
              "conditions/1/name text 13:4@180+2 [kP]\n"
              "conditions/1/value number 13:7@183+4 [2.50] 2.5\n"
              "conditions/1/time-curve-flag integer 13:12@188+1 [0]\n"
              "conditions/1/time-curve integer 13:14@190+2 [-1]\n"
              "conditions/2/entity integer 14:2@194+2 [-3]\n"
              "conditions/2/name text 14:6@198+9 [kSlipNode]\n"
              "conditions/2/value number 14:16@208+3 [inf]\n"
              "conditions/2/extra/1 number 14:20@212+3 [1e3] 1000\n"
              "conditions/2/extra/2 number 14:24@216+1 [x] 0\n"
              "conditions/2/time-curve-flag integer 14:26@218+2 [-1]\n"
              "conditions/2/time-curve integer 14:29@221+1 [5]\n");
}

TEST(GeometryBoundaryOutlineTest, TellsEmptyTexts)
{
    EXPECT_EQ(
        outlined("\n\nVersion\n\n*** Coordinate System\n \n*** Properties\n1 \"\" 1 0\n-1\n*** Units\n"),
        "job text 1:1@0+0 []\n"
        "program text 2:1@1+0 []\n"
        "version version 3:8@9+0 [] 0.0.0.0\n"
        "coordinate-system text 6:1@33+0 []\n"
        "properties/1/id integer 8:1@50+1 [1]\n"
        "properties/1/name text 8:4@53+0 []\n"
        "properties/1/fluid integer 8:6@55+1 [1]\n"
        "properties/1/resistance integer 8:8@57+1 [0]\n");
}

/// Files whose values the format can carry.
class RandomFiles {
public:
    GbiFile next()
    {
        GbiFile file;
        file.setJobName(text());
        file.setProductLine(text());
        file.setVersion(Util::Version(integer(), integer(), integer(), integer()));
        file.setCoordinateSystem(GbiFile::CoordinateSystem(upTo(GbiFile::RTZ)));
        file.setUnits(GbiFile::Units(upTo(GbiFile::InchWatt)));
        static const char* const types[] = {"fluid", "solid", "internal_fan", "heat_sink", "Unheard"};
        for (int count = upTo(4); count > 0; --count) {
            Material material(types[upTo(4)]);
            material.setId(integer());
            material.setName(std::to_string(count) + text()); // no two are the same
            file.materialDatabase().add(material);
        }
        for (int count = upTo(20); count > 0; --count)
            file.addSurfaceBoundaryCondition(condition());
        return file;
    }

private:
    BoundaryCondition condition()
    {
        BoundaryCondition condition(1 + upTo(Io::kNone - 1));
        condition.setEntityId(integer());
        condition.setTimeCurveId(integer());
        condition.setValue(number());
        for (int extra = upTo(3); extra > 0; --extra)
            condition.addExtraValue(number());
        return condition;
    }

    std::string text()
    {
        static const char* const parts[] = {" ",  "a",       "\"", "*** ", "\xC3\xA4", "\xF0\x9F\x98\x80",
                                            "-1", "Version", "\t", "%1",   "\xC2\xA0", "*** Nodes"};
        std::string text;
        for (int count = upTo(6); count > 0; --count)
            text += parts[upTo(int(std::size(parts)) - 1)];
        return text;
    }

    double number()
    {
        using Limits = std::numeric_limits<double>;
        static constexpr double special[] = {
            0.0,           -0.0,          Limits::infinity(),   -Limits::infinity(),  Limits::quiet_NaN(),
            Limits::max(), Limits::min(), Limits::denorm_min(), Limits::lowest() / 2, 999999.5};
        if (upTo(3) == 0)
            return special[upTo(int(std::size(special)) - 1)];
        return std::uniform_real_distribution<double>(-1, 1)(bits_) * std::pow(10.0, upTo(600) - 300);
    }

    int integer() { return upTo(1) == 0 ? upTo(100) - 1 : int(bits_()); }
    int upTo(int most) { return std::uniform_int_distribution<int>(0, most)(bits_); }

    std::mt19937 bits_ {20240917};
};

/// The values that the outline of the file must have.
QStringList valuesOf(const GbiFile& file)
{
    static const char* const systems[] = {"", "XY", "XR", "RY", "RT", "ZY", "XZ", "XYZ", "RTZ"};
    static const char* const units[] = {"meter", "cm", "mm", "feet", "inch", "inch-WATT"};
    QStringList values;
    const auto add = [&](const QString& address, const auto& value) {
        values.append(QStringLiteral("%1=").arg(address) + QVariant(value).toString());
    };
    const auto addNumber = [&](const QString& address, double value) {
        add(address, QString(Io::NumberText(value).operator QLatin1String()).toDouble());
    };
    add("job", Util::toQString(file.jobName()));
    add("program", Util::toQString(file.productLine()));
    add("version", file.version().toString());
    add("coordinate-system", QString(systems[file.coordinateSystem()]));
    for (int i = 0; i < file.materialDatabase().count(); ++i) {
        const Material& material = file.materialDatabase().material(i);
        const QString address = QStringLiteral("properties/%1/").arg(i + 1);
        add(address + "id", material.id());
        add(address + "name", Util::toQString(material.name()));
        add(address + "fluid", material.fluidFlag());
        add(address + "resistance", material.resistFlag());
    }
    add("units", QString(units[file.units()]));
    for (int i = 0; i < file.surfaceBoundaryConditionCount(); ++i) {
        const BoundaryCondition& condition = file.surfaceBoundaryCondition(i);
        const QString address = QStringLiteral("conditions/%1/").arg(i + 1);
        add(address + "entity", condition.entityId());
        add(address + "name", Io::CodeNameTable::instance().nameForCode(condition.kCode(), true));
        addNumber(address + "value", condition.value());
        for (int j = 0; j < condition.extraValueCount(); ++j)
            addNumber(address + "extra/" + QString::number(j + 1), condition.extraValue(j));
        add(address + "time-curve-flag", condition.timeCurveFlag());
        add(address + "time-curve", condition.timeCurveId());
    }
    return values;
}

TEST(GeometryBoundaryOutlineTest, GivesBackWhatWasSaved)
{
    const TemporaryFolder folder;
    RandomFiles files;
    for (int i = 0; i < 500; ++i) {
        const GbiFile file = files.next();
        const std::string path = folder.freshPath("job.gbi");
        ASSERT_TRUE(file.saveTo(path));
        const CheckedFile checked = check(path);
        for (const Finding& finding : checked.findings)
            EXPECT_EQ(finding.code, "repeated-id") << linesOf(checked);

        QStringList values;
        ASSERT_TRUE(outline(
            path, [&](const Item& item) { values.append(item.address + '=' + item.value.toString()); }));
        ASSERT_EQ(values.join('\n').toStdString(), valuesOf(file).join('\n').toStdString())
            << readBytes(path);
    }
}

TEST(GeometryBoundaryOutlineTest, StandsAnyDamage)
{
    RandomFiles files;
    const TemporaryFolder folder;
    const std::string path = folder.path("job.gbi");
    files.next().saveTo(path);
    CheckOptions options;
    options.kind = FileKind::GeometryBoundary;
    for (const auto& [damage, bytes] : damaged(readBytes(path))) {
        const LoadWatch watch(damage);
        const std::string damagedPath = folder.freshPath("damaged.gbi");
        writeBytes(damagedPath, bytes);
        for (const Finding& finding : check(damagedPath, options).findings)
            ASSERT_FALSE(endsLoad(finding.effect)) << damage << '\n' << finding.message.toStdString();
        const qint64 size = qint64(bytes.size());
        outline(damagedPath, FileKind::GeometryBoundary, [&, &damage = damage](const Item& item) {
            EXPECT_GE(item.place.offset, 0) << damage;
            EXPECT_LE(item.place.offset + item.length, size) << damage;
        });
        ASSERT_FALSE(::testing::Test::HasFailure());
        EXPECT_TRUE(GbiFile().loadFrom(damagedPath));
    }
}

} // namespace
} // namespace Nereo::Inspection

#include "FileIO/GbiFileTextWriter.h"

#include "support/Assertions.h"
#include "support/Bytes.h"
#include "support/GoldenFile.h"
#include "support/TemporaryFolder.h"

#include <NereoFileIO/FieldVariable.h>
#include <NereoFileIO/GbiFile.h>

#include <gmock/gmock.h>

#include <QBuffer>

#include <limits>
#include <string>
#include <vector>

namespace Nereo::Io {
namespace {

constexpr int least = std::numeric_limits<int>::min();
constexpr int most = std::numeric_limits<int>::max();
constexpr double infinity = std::numeric_limits<double>::infinity();

std::string saved(const GbiFile& file)
{
    const TemporaryFolder folder;
    EXPECT_TRUE(file.saveTo(folder.path("job.gbi")));
    return readBytes(folder.path("job.gbi"));
}

/// What stands between the two lines.
std::string between(const std::string& text, const std::string& before, const std::string& after)
{
    const std::size_t begin = text.find(before) + before.size();
    return text.substr(begin, text.find(after, begin) - begin);
}

std::string conditionLines(const GbiFile& file)
{
    return between(saved(file), "*** Surface nodal boundary conditions\n",
                   "-1\n*** Spatial nodal boundary conditions\n");
}

std::string lineOf(const BoundaryCondition& condition)
{
    GbiFile file;
    file.addSurfaceBoundaryCondition(condition);
    return conditionLines(file);
}

BoundaryCondition conditionWith(int code, int entityId, double value, const std::vector<double>& extraValues,
                                int timeCurveId)
{
    BoundaryCondition condition(code);
    condition.setEntityId(entityId);
    condition.setValue(value);
    for (const double extraValue : extraValues)
        condition.addExtraValue(extraValue);
    condition.setTimeCurveId(timeCurveId);
    return condition;
}

Material materialWith(const std::string& type, int id, const std::string& name)
{
    Material material(type);
    material.setId(id);
    material.setName(name);
    return material;
}

GbiFile cavity()
{
    GbiFile file;
    file.setJobName("cavity");
    file.materialDatabase().add(materialWith("fluid", 1, "Air"));
    file.addSurfaceBoundaryCondition(conditionWith(kP, 12, 2.5, {}, -1));
    file.addSurfaceBoundaryCondition(conditionWith(kP, 12, 2.5, {1.0, 2.0}, -1));
    return file;
}

TEST(GbiFileTextWriter, WritesANewFile)
{
    expectGolden(saved(GbiFile()), "new-geometry-boundary.gbi");
}

TEST(GbiFileTextWriter, WritesAFileWithMaterialsAndConditions)
{
    expectGolden(saved(cavity()), "cavity.gbi");
}

TEST(GbiFileTextWriter, BeginsWithJobProductAndVersion)
{
    GbiFile file;
    file.setJobName("Kühlkörper %1");
    file.setProductLine("product");
    file.setVersion(Util::Version(7, 0, -1, 12));
    EXPECT_THAT(saved(file),
                ::testing::StartsWith("Kühlkörper %1\nproduct\nVersion 7.0.-1.12\n\n*** Summary\n"
                                      "*** Coordinate System\nXYZ XYZ\n*** Properties\n-1\n*** Units\n"));
}

TEST(GbiFileTextWriter, WritesTextsAsTheirGettersGiveThem)
{
    GbiFile file;
    file.setJobName("\uFEFFjob");
    file.setProductLine("\uFEFF\uFEFFproduct");
    Material material;
    material.setName("\uFEFF\uFEFFAir"); // of which the first mark is dropped where it is set
    file.materialDatabase().add(material);
    const std::string text = saved(file);
    EXPECT_THAT(text, ::testing::StartsWith(file.jobName() + "\n" + file.productLine() + "\nVersion "));
    EXPECT_THAT(text, ::testing::HasSubstr("\n0 \"\uFEFFAir\" 1 0\n"));
}

TEST(GbiFileTextWriter, WritesTheCoordinateSystemTwice)
{
    const struct {
        GbiFile::CoordinateSystem system;
        const char* line;
    } cases[] = {
        {GbiFile::None, " "      },
        {GbiFile::XY,   "XY XY"  },
        {GbiFile::XR,   "XR XR"  },
        {GbiFile::RY,   "RY RY"  },
        {GbiFile::RT,   "RT RT"  },
        {GbiFile::ZY,   "ZY ZY"  },
        {GbiFile::XZ,   "XZ XZ"  },
        {GbiFile::XYZ,  "XYZ XYZ"},
        {GbiFile::RTZ,  "RTZ RTZ"},
    };
    for (const auto& [system, line] : cases) {
        GbiFile file;
        file.setCoordinateSystem(system);
        EXPECT_EQ(between(saved(file), "*** Coordinate System\n", "\n*** Properties\n"), line);
    }
}

TEST(GbiFileTextWriter, WritesTheUnits)
{
    const struct {
        GbiFile::Units units;
        const char* line;
    } cases[] = {
        {GbiFile::Meter,      "meter"    },
        {GbiFile::Centimeter, "cm"       },
        {GbiFile::Millimeter, "mm"       },
        {GbiFile::Feet,       "feet"     },
        {GbiFile::Inch,       "inch"     },
        {GbiFile::InchWatt,   "inch-WATT"},
    };
    for (const auto& [units, line] : cases) {
        GbiFile file;
        file.setUnits(units);
        EXPECT_EQ(between(saved(file), "*** Units\n", "\n*** Extruded Parts Summary\n"), line);
    }
}

TEST(GbiFileTextWriter, WritesALineForEachMaterial)
{
    GbiFile file;
    MaterialDatabaseFile& materials = file.materialDatabase();
    materials.add(materialWith("fluid", 1, "Air"));
    materials.add(materialWith("solid", most, "3\" pipe \"steel\"")); // quotes aren't escaped
    materials.add(materialWith("fluid", least, "Wärme €"));
    materials.add(materialWith("resistance", 2, ""));
    materials.add(materialWith("fluid", 1, "%1 %2"));
    EXPECT_EQ(between(saved(file), "*** Properties\n", "*** Units\n"),
              "1 \"Air\" 1 0\n"
              "2147483647 \"3\" pipe \"steel\"\" 0 0\n"
              "-2147483648 \"Wärme €\" 1 0\n"
              "2 \"\" 1 1\n"
              "1 \"%1 %2\" 1 0\n"
              "-1\n");
}

TEST(GbiFileTextWriter, NamesTheConditionWithFlagsFirst)
{
    const struct {
        int code;
        const char* name;
    } cases[] = {
        {kU,          "kU"       },
        {kSlipNode,   "kSlipNode"},
        {kVeff,       "kSlipNode"}, // the same code
        {kLockP,      "kLockP"   },
        {kVolumeRate, "kKXX"     }, // the names of the conductivity win over flags
        {47,          "kKYY"     },
        {48,          "kKZZ"     },
        {kAFac,       "kAFac"    },
        {kNone,       "kNone"    },
        {0,           ""         },
    };
    for (const auto& [code, name] : cases)
        EXPECT_EQ(lineOf(BoundaryCondition(code)), "0 " + std::string(name) + " 0 0 -1\n");
}

TEST(GbiFileTextWriter, WritesExtraValuesBeforeTheTimeCurve)
{
    EXPECT_EQ(lineOf(conditionWith(kP, 12, 2.5, {}, -1)), "12 kP 2.5 0 -1\n");
    EXPECT_EQ(lineOf(conditionWith(kP, 12, 2.5, {1.0, 2.0}, -1)), "12 kP 2.5 1 2 0 -1\n");
    EXPECT_EQ(lineOf(conditionWith(kT, -3, 0.0, {0.1, -0.2, 1e10}, 4)), "-3 kT 0 0.1 -0.2 1e+10 -1 4\n");
}

TEST(GbiFileTextWriter, FlagsATimeCurveFromOneOn)
{
    const struct {
        int timeCurveId;
        const char* line;
    } cases[] = {
        {5,     "0 kU 0 -1 5\n"         },
        {1,     "0 kU 0 -1 1\n"         },
        {0,     "0 kU 0 0 0\n"          },
        {-1,    "0 kU 0 0 -1\n"         },
        {least, "0 kU 0 0 -2147483648\n"},
        {most,  "0 kU 0 -1 2147483647\n"},
    };
    for (const auto& [timeCurveId, line] : cases)
        EXPECT_EQ(lineOf(conditionWith(kU, 0, 0.0, {}, timeCurveId)), line);
}

TEST(GbiFileTextWriter, WritesValuesWithSixDigits)
{
    const struct {
        double value;
        const char* text;
    } cases[] = {
        {0.5,         "0.5"         },
        {1.5e6,       "1.5e+06"     },
        {1e-7,        "1e-07"       },
        {0.0001,      "0.0001"      },
        {999999.5,    "1e+06"       },
        {275.3125,    "275.313"     },
        {-100000.5,   "-100001"     },
        {-0.0,        "0"           },
        {1.0 / 3,     "0.333333"    },
        {-1.7976e308, "-1.7976e+308"},
        {5e-324,      "4.94066e-324"},
        {infinity,    "inf"         },
        {-infinity,   "-inf"        },
    };
    for (const auto& [value, text] : cases) {
        EXPECT_EQ(lineOf(conditionWith(kU, 1, value, {value}, 0)),
                  "1 kU " + std::string(text) + ' ' + text + " 0 0\n");
    }
}

TEST(GbiFileTextWriter, WritesManyConditionsInOrder)
{
    GbiFile file;
    std::string expected;
    for (int i = 0; i < 20'000; ++i) {
        file.addSurfaceBoundaryCondition(conditionWith(kW, i, i * 0.25, {}, 0));
        expected += std::to_string(i) + " kW " + QString::number(i * 0.25, 'g', 6).toStdString() + " 0 0\n";
    }
    EXPECT_EQ(conditionLines(file), expected);
}

TEST(GbiFileTextWriter, WritesTheSameToTextsAndDevices)
{
    const GbiFile file = cavity();
    QString text;
    QTextStream onText(&text);
    GbiFileTextWriter(file).write(onText);

    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QTextStream onDevice(&buffer);
    onDevice << "before\n";
    GbiFileTextWriter(file).write(onDevice);
    onDevice << "after\n";
    onDevice.flush();

    EXPECT_EQ(text.toStdString(), saved(file));
    EXPECT_EQ(buffer.data().toStdString(), "before\n" + saved(file) + "after\n");
}

TEST(GbiFileTextWriter, StopsAtAWordThatIsNotThere)
{
    for (const int value : {-1, 9, least, most}) {
        GbiFile file;
        file.setCoordinateSystem(GbiFile::CoordinateSystem(value));
        EXPECT_INDEX_ASSERTION(saved(file), "QList<T>::operator[]", "FileIO/GbiFileTextWriter") << value;
    }
    for (const int value : {-1, 6, least, most}) {
        GbiFile file;
        file.setUnits(GbiFile::Units(value));
        EXPECT_INDEX_ASSERTION(saved(file), "QList<T>::operator[]", "FileIO/GbiFileTextWriter") << value;
    }
}

TEST(GbiFileTextWriter, StopsAtACodeWithoutAName)
{
    for (const int code : {-1, 362, least, most})
        EXPECT_INDEX_ASSERTION(lineOf(BoundaryCondition(code)), "QVector<T>::at", "FileIO/CodeNameTable")
            << code;
}

} // namespace
} // namespace Nereo::Io

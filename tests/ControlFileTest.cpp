#include "support/Assertions.h"
#include "support/TemporaryFolder.h"

#include <NereoFileIO/ControlFile.h>

#include <gmock/gmock.h>

#include <functional>
#include <limits>
#include <map>
#include <type_traits>
#include <vector>

namespace Nereo::Io {
namespace {

using Util::Version;

constexpr int least = std::numeric_limits<int>::min();
constexpr int most = std::numeric_limits<int>::max();

Flag flag(const std::string& name, const std::string& value)
{
    Flag flag;
    flag.setName(name);
    flag.setValue(value);
    return flag;
}

TEST(ControlFile, StartsWithTheSettingsOfANewRun)
{
    const ControlFile file;
    const std::string version = Version::Current.toString().toStdString();
    const std::string branch = Version::Branch().toStdString();
    EXPECT_EQ(file.format(), ControlFile::DefaultFormat);
    EXPECT_EQ(int(file.format()), 0);
    EXPECT_EQ(file.headerLine1(), "NEREO control file rev 07 NEREO Ver " + version);
    EXPECT_EQ(file.headerLine2(), "NEREO 2024 (" + branch + ")");
    EXPECT_EQ(file.title(), "NEREO control file settings");
    EXPECT_EQ(file.version(), Version::Current);
    EXPECT_EQ(file.filePath(), "");
    const int equationFlags[] = {1, 1, 0, 1, 0};
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(file.equationFlag(i), equationFlags[i]) << i;
    EXPECT_EQ(file.units(), 0);
    EXPECT_EQ(file.transientForm(), 0);
    EXPECT_EQ(file.numberOfTimeSteps(), 0);
    EXPECT_EQ(file.timeStepSize(), 0.001);
    EXPECT_EQ(file.stopTime(), -1.0);
    EXPECT_TRUE(file.isAutoConvOn());
    EXPECT_TRUE(file.isAutoStopOn());
    EXPECT_EQ(file.materialDatabase().count(), 0);
    EXPECT_EQ(file.flagCount(), 0);
}

TEST(ControlFile, HasRecordsWithTheirFieldsInOrder)
{
    ControlFile file;
    {
        auto& [integer1, integer2, integer3, variable, tolerance] = file.sequentialSolver();
        static_assert(std::is_same_v<decltype(variable), std::string>);
        EXPECT_EQ(integer1, 100);
        EXPECT_EQ(integer2, 10);
        EXPECT_EQ(integer3, 0);
        EXPECT_EQ(variable, "kP");
        EXPECT_EQ(tolerance, 1e-5);
    }
    {
        const auto& [slope, averageSlope, concavity, fluctuation] = file.autoConvData();
        EXPECT_EQ(slope, 0.001);
        EXPECT_EQ(averageSlope, 0.03162);
        EXPECT_EQ(concavity, 0.03162);
        EXPECT_EQ(fluctuation, 0.0001);
    }
    {
        const auto& [f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12] = file.inflationData();
        static_assert(std::is_same_v<decltype(f12), const bool> || std::is_same_v<decltype(f12), bool>);
        EXPECT_EQ(std::tuple(f1, f2, f3, f4, f5), std::tuple(true, false, true, 3, 0));
        EXPECT_EQ(std::tuple(f6, f7, f8, f9, f10, f11), std::tuple(1.0, 3.0, 0.45, 1.0, 0.01, 1.05));
        EXPECT_FALSE(f12);
    }
    {
        const auto& [f1, f2, f3, f4, f5, f6] = file.autoYPlusData();
        EXPECT_EQ(std::tuple(f1, f2, f3, f4, f5, f6), std::tuple(0, 1, 36, 1, 300.0, 1.0));
    }
    {
        const auto& [on, f2, f3, f4] = file.smokeData();
        EXPECT_EQ(std::tuple(on, f2, f3, f4), std::tuple(false, 21000.0, 3.0, 0.05));
    }
    {
        const auto& [on, f2, f3, f4] = file.thermalComfortData();
        EXPECT_EQ(std::tuple(on, f2, f3, f4), std::tuple(false, 60.0, 76.0, 0.61));
    }
    static_assert(std::is_aggregate_v<SeqSolverType> && std::is_aggregate_v<PhiSolveType>);
    static_assert(std::is_aggregate_v<AutoConvData> && std::is_aggregate_v<InflationData>);
    static_assert(std::is_aggregate_v<AutoYPlusData> && std::is_aggregate_v<SmokeData>);
    static_assert(std::is_aggregate_v<ThermalComfortData>);
}

TEST(ControlFile, StartsWithTheSolveSettingsOfEachVariable)
{
    const struct {
        int first;
        int last;
        int integer1;
        int integer2;
        double tolerance;
    } cases[] = {
        {1,  3,  15, 5,    1e-5 }, // kU, kV, kW
        {4,  5,  14, 1000, 1e-8 }, // kP, kT
        {6,  7,  15, 5,    1e-5 }, // kKin, kDiss
        {8,  8,  6,  1900, 1e-7 }, // kScal1
        {9,  10, 15, 5,    1e-5 },
        {11, 12, 6,  1900, 1e-10}, // kVOF, kElecPot
        {13, 24, 15, 5,    1e-5 },
    };
    const ControlFile file;
    int codes = 0;
    for (const auto& row : cases) {
        for (int code = row.first; code <= row.last; ++code, ++codes) {
            const auto& [integer1, integer2, integer3, tolerance] = file.phiSolve(code);
            EXPECT_EQ(integer1, row.integer1) << code;
            EXPECT_EQ(integer2, row.integer2) << code;
            EXPECT_EQ(integer3, 1) << code;
            EXPECT_EQ(tolerance, row.tolerance) << code;
        }
    }
    EXPECT_EQ(codes, 24);
}

TEST(ControlFile, StartsWithTheRelaxationFactorsOfEachVariable)
{
    const struct {
        int first;
        int last;
        double factor;
    } cases[] = {
        {1,  4,  0.5}, // kU, kV, kW, kP
        {5,  5,  1.0}, // kT
        {6,  7,  0.5}, // kKin, kDiss
        {8,  12, 1.0}, // kScal1, kTotalT, kEnth, kVOF, kElecPot
        {13, 13, 0.0}, // kVelPot
        {14, 14, 0.5}, // kTurbMu
        {15, 19, 0.0},
        {20, 20, 0.1}, // kVeff
        {21, 21, 0.5}, // kCeff
        {22, 24, 0.0},
        {25, 27, 0.5}, // kRho, kVisc, kCond
        {28, 32, 1.0}, // kCp, kSurfT, kEmis, kTransmis, kDRhoDP
        {33, 46, 0.0},
    };
    const ControlFile file;
    int codes = 0;
    for (const auto& [first, last, factor] : cases) {
        for (int code = first; code <= last; ++code, ++codes) {
            EXPECT_EQ(file.phiUnderRelax(code), factor) << code;
            EXPECT_EQ(file.phiInertRelax(code), 0.0) << code;
        }
    }
    EXPECT_EQ(codes, 46);
}

TEST(ControlFile, StartsWithTheFactoryValuesOfTheConstants)
{
    const std::map<int, double> values = {
        {223, 100.0}, // kTurbRatio
        {224, 0.05 }, // kTurbI
        {227, 0.09 }, // kCMu
        {228, 1.44 }, // kCE1
        {229, 1.92 }, // kCE2
        {230, 0.4  }, // kKappa
        {231, 26.0 }, // kVanDriest
        {232, 5.5  }, // kBWall
        {235, 0.015}, // kRNGBeta
        {236, 4.38 }, // kRNGEta0
        {237, 1.42 }, // kRNGCE0
        {238, 0.01 }, // kSSTFFKF
        {239, 2.0  }, // kSSTFFWF
        {240, 1.0  }, // kSSTAutoWall
        {242, 1.0  }, // kTurbMomDC1
        {249, 300.0}, // kTStag
        {254, 1.0  }, // kSpecWall
        {255, 1.0  }, // kFastLDU
        {257, 1.0  }, // kQuadLevel
        {263, 1.0  }, // kAutoTurb
        {268, 1.0  }, // kWalForc
        {269, 1.0  }, // kWalHeat
        {271, 1.0  }, // kReLen
        {272, 0.8  }, // kNuA
        {273, 0.33 }, // kNuB
        {274, 0.023}, // kNuC
        {275, 1.0  }, // kNuLen
        {276, 1e30 }, // kDivChk
        {281, 0.995}, // kNormOne
        {308, 1.0  }, // kAdvFlux
    };
    const ControlFile file;
    for (int code = 1; code <= 328; ++code) {
        const auto found = values.find(code);
        const double value = found == values.end() ? 0.0 : found->second;
        EXPECT_EQ(file.constant(code), value) << code;
        EXPECT_EQ(file.originalConstant(code), value) << code;
    }
}

TEST(ControlFile, TakesTheVersionFromTheFirstHeaderLine)
{
    const struct {
        const char* line;
        const char* version;
    } cases[] = {
        {"NEREO control file rev 06 NEREO Ver 2023.1.0.0", "2023.1.0.0"},
        {"a Ver 1.2.3.4 Ver 5.6.7.8",                      "5.6.7.8"   }, // the last one counts
        {"x Ver Ver 5.6.7.8",                              "5.6.7.8"   }, // which may share its blank
        {" Ver Ver ",                                      "0.0.0.0"   },
        {"Ver 1.2.3.4",                                    "0.2.3.4"   }, // a blank before it is needed
        {"x ver 1.2.3.4",                                  "0.2.3.4"   }, // case counts
        {"7.6.5.4",                                        "7.6.5.4"   },
        {"x Ver  2023.1 ",                                 "2023.1.0.0"},
        {"x Ver ",                                         "0.0.0.0"   },
        {"x Ver new",                                      "0.0.0.0"   },
        {"",                                               "0.0.0.0"   },
    };
    for (const auto& [line, version] : cases) {
        ControlFile file;
        file.setHeaderLine1(line);
        EXPECT_EQ(file.headerLine1(), line);
        EXPECT_EQ(file.version().toString(), version) << line;
    }
}

TEST(ControlFile, KeepsTheVersionAtAnySecondHeaderLine)
{
    ControlFile file;
    file.setHeaderLine2("x Ver 1.2.3.4");
    EXPECT_EQ(file.headerLine2(), "x Ver 1.2.3.4");
    EXPECT_EQ(file.version(), Version::Current);
}

/// A file in which nothing has its default.
ControlFile changed()
{
    ControlFile file;
    file.setFormat(ControlFile::Format(7));
    file.setHeaderLine1("one Ver 1.2.3.4");
    file.setHeaderLine2("two");
    file.setTitle("Lüfter");
    for (int i = 0; i < 5; ++i)
        file.setEquationFlag(i, 10 + i);
    file.setUnits(2);
    file.setTransientForm(3);
    file.setNumberOfTimeSteps(4);
    file.setTimeStepSize(0.5);
    file.setStopTime(6.5);
    file.sequentialSolver() = {1, 2, 3, "kT", 4.5};
    for (int code = 1; code <= 24; ++code)
        file.phiSolve(code) = {code, code + 1, code + 2, code + 0.5};
    for (int code = 1; code <= 46; ++code) {
        file.setPhiUnderRelax(code, code + 0.25);
        file.setPhiInertRelax(code, code + 0.75);
    }
    file.setAutoConvOn(false);
    file.setAutoStopOn(false);
    file.autoConvData() = {1.5, 2.5, 3.5, 4.5};
    file.materialDatabase().add(Material("solid"));
    for (int code = 1; code <= 328; ++code)
        file.setConstant(code, code + 0.125);
    file.inflationData() = {false, true, false, 4, 5, 6.5, 7.5, 8.5, 9.5, 10.5, 11.5, true};
    file.autoYPlusData() = {1, 2, 3, 4, 5.5, 6.5};
    file.smokeData() = {true, 2.5, 3.5, 4.5};
    file.thermalComfortData() = {true, 5.5, 6.5, 7.5};
    file.addFlag(flag("cfl", "0.75"));
    file.addFlag(flag("wall", "on"));
    return file;
}

void expectChanged(const ControlFile& file)
{
    EXPECT_EQ(int(file.format()), 7);
    EXPECT_EQ(file.headerLine1(), "one Ver 1.2.3.4");
    EXPECT_EQ(file.version(), Version(1, 2, 3, 4));
    EXPECT_EQ(file.headerLine2(), "two");
    EXPECT_EQ(file.title(), "Lüfter");
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(file.equationFlag(i), 10 + i);
    EXPECT_EQ(file.units(), 2);
    EXPECT_EQ(file.transientForm(), 3);
    EXPECT_EQ(file.numberOfTimeSteps(), 4);
    EXPECT_EQ(file.timeStepSize(), 0.5);
    EXPECT_EQ(file.stopTime(), 6.5);
    const auto& [integer1, integer2, integer3, variable, tolerance] = file.sequentialSolver();
    EXPECT_EQ(std::tie(integer1, integer2, integer3, variable, tolerance),
              std::tuple(1, 2, 3, std::string("kT"), 4.5));
    for (int code = 1; code <= 24; ++code) {
        const auto& [i1, i2, i3, phiTolerance] = file.phiSolve(code);
        EXPECT_EQ(std::tie(i1, i2, i3, phiTolerance), std::tuple(code, code + 1, code + 2, code + 0.5));
    }
    for (int code = 1; code <= 46; ++code) {
        EXPECT_EQ(file.phiUnderRelax(code), code + 0.25);
        EXPECT_EQ(file.phiInertRelax(code), code + 0.75);
    }
    EXPECT_FALSE(file.isAutoConvOn());
    EXPECT_FALSE(file.isAutoStopOn());
    const auto& [c1, c2, c3, c4] = file.autoConvData();
    EXPECT_EQ(std::tie(c1, c2, c3, c4), std::tuple(1.5, 2.5, 3.5, 4.5));
    ASSERT_EQ(file.materialDatabase().count(), 1);
    EXPECT_EQ(file.materialDatabase().material(0).type(), "solid");
    for (int code = 1; code <= 328; ++code) {
        EXPECT_EQ(file.constant(code), code + 0.125);
        EXPECT_EQ(file.originalConstant(code), ControlFile().originalConstant(code)) << code;
    }
    const auto& [f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12] = file.inflationData();
    EXPECT_EQ(std::tie(f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12),
              std::tuple(false, true, false, 4, 5, 6.5, 7.5, 8.5, 9.5, 10.5, 11.5, true));
    const auto& [y1, y2, y3, y4, y5, y6] = file.autoYPlusData();
    EXPECT_EQ(std::tie(y1, y2, y3, y4, y5, y6), std::tuple(1, 2, 3, 4, 5.5, 6.5));
    const auto& [s1, s2, s3, s4] = file.smokeData();
    EXPECT_EQ(std::tie(s1, s2, s3, s4), std::tuple(true, 2.5, 3.5, 4.5));
    const auto& [t1, t2, t3, t4] = file.thermalComfortData();
    EXPECT_EQ(std::tie(t1, t2, t3, t4), std::tuple(true, 5.5, 6.5, 7.5));
    ASSERT_EQ(file.flagCount(), 2);
    EXPECT_EQ(file.flag(0), flag("cfl", "0.75"));
    EXPECT_EQ(file.flag(1), flag("wall", "on"));
}

TEST(ControlFile, KeepsWhatItIsGiven)
{
    expectChanged(changed());
}

TEST(ControlFile, IsCopiedWhole)
{
    ControlFile original = changed();
    const ControlFile copy(original);
    ControlFile assigned;
    EXPECT_EQ(&(assigned = original), &assigned);
    original = ControlFile();
    expectChanged(copy);
    expectChanged(assigned);
    const ControlFile& itself = assigned;
    assigned = itself;
    expectChanged(assigned);
}

TEST(ControlFile, CopiesPathsAndVersions)
{
    const TemporaryFolder folder;
    ControlFile original;
    original.setVersion(Version(1, 2, 3, 4));
    original.materialDatabase().setVersion(Version(5, 6, 7, 8));
    ASSERT_TRUE(original.saveTo(folder.path("run.ctl")));
    ASSERT_TRUE(original.materialDatabase().saveTo(folder.path("materials.xml")));

    const ControlFile copy(original);
    ControlFile assigned;
    assigned = original;
    for (const ControlFile& file : {copy, assigned}) {
        EXPECT_EQ(file.version(), Version(1, 2, 3, 4));
        EXPECT_EQ(file.filePath(), folder.path("run.ctl"));
        EXPECT_EQ(file.materialDatabase().version(), Version(5, 6, 7, 8));
        EXPECT_EQ(file.materialDatabase().filePath(), folder.path("materials.xml"));
    }
}

TEST(ControlFile, KeepsReferencesToTheObjectTheyWereTakenFrom)
{
    ControlFile file = changed();
    Flag& firstFlag = file.flag(0);
    SeqSolverType& sequential = file.sequentialSolver();
    PhiSolveType& phi = file.phiSolve(24);
    AutoConvData& autoConv = file.autoConvData();
    InflationData& inflation = file.inflationData();
    AutoYPlusData& autoYPlus = file.autoYPlusData();
    SmokeData& smoke = file.smokeData();
    ThermalComfortData& comfort = file.thermalComfortData();
    MaterialDatabaseFile& materials = file.materialDatabase();
    Material& material = materials.material(0);

    const ControlFile copy(file);
    ControlFile assigned;
    assigned = file;
    firstFlag.setValue("9");
    sequential.variable = "kU";
    phi = {};
    autoConv = {};
    inflation = {};
    autoYPlus = {};
    smoke = {};
    comfort = {};
    material.setName("Copper");
    materials.add(Material());
    expectChanged(copy);
    expectChanged(assigned);
    EXPECT_EQ(copy.materialDatabase().material(0).name(), "");
    EXPECT_EQ(file.flag(0).value(), "9");
    EXPECT_EQ(file.sequentialSolver().variable, "kU");
    EXPECT_EQ(file.phiSolve(24).integer1, 15);
    EXPECT_EQ(file.materialDatabase().material(0).name(), "Copper");
    EXPECT_EQ(file.materialDatabase().count(), 2);
}

TEST(ControlFile, TakesACopyOfAMaterialDatabase)
{
    MaterialDatabaseFile materials;
    materials.add(Material("fluid"));
    ControlFile file;
    file.setMaterialDatabase(materials);
    materials.clear();
    EXPECT_EQ(file.materialDatabase().count(), 1);
}

TEST(ControlFile, KeepsFlagsInTheirOrder)
{
    ControlFile file;
    file.addFlag(flag("b", "1"));
    file.addFlag(flag("a", "2"));
    file.addFlag(flag("b", "3"));
    EXPECT_EQ(file.flagCount(), 3);
    EXPECT_EQ(file.indexOfFlag("b"), 0); // the first of two
    EXPECT_EQ(file.indexOfFlag("a"), 1);
    EXPECT_EQ(file.indexOfFlag("A"), -1);
    EXPECT_EQ(file.indexOfFlag(""), -1);
    file.addFlag(flag("\xFF", "4")); // no UTF-8
    EXPECT_EQ(file.indexOfFlag("\xFF"), -1);
    EXPECT_EQ(file.indexOfFlag(file.flag(3).name()), 3);
    file.removeFlag(3);

    file.removeFlag(0);
    ASSERT_EQ(file.flagCount(), 2);
    EXPECT_EQ(file.flag(0), flag("a", "2"));
    EXPECT_EQ(file.flag(1), flag("b", "3"));
    EXPECT_EQ(file.indexOfFlag("b"), 1);
    file.addFlag(file.flag(0));
    EXPECT_EQ(file.flag(2), flag("a", "2"));

    file.clearFlags();
    EXPECT_EQ(file.flagCount(), 0);
    EXPECT_EQ(file.indexOfFlag("a"), -1);
}

TEST(ControlFile, FindsEachFlagByTheNameThatItGives)
{
    ControlFile file;
    // A byte order mark at the beginning is dropped from a new name, a second one is a character of it.
    for (const char* name :
         {"plain", "\uFEFFa", "\uFEFF\uFEFFb", "\uFEFF\uFEFF\uFEFFc", "\uFEFF\uFEFF", "\xFF"})
        file.addFlag(flag(name, ""));
    EXPECT_EQ(file.flag(1).name(), "a");
    EXPECT_EQ(file.flag(3).name(), "\uFEFF\uFEFFc");
    for (int i = 0; i < file.flagCount(); ++i)
        EXPECT_EQ(file.indexOfFlag(file.flag(i).name()), i) << file.flag(i).name();
    for (const char* name : {"\uFEFFa", "b", "\uFEFF\uFEFFb", "\uFEFFc", "", "\xFF", "Plain"})
        EXPECT_EQ(file.indexOfFlag(name), -1) << name;
}

TEST(ControlFile, IsUnchangedByAFileThatDoesNotOpen)
{
    const TemporaryFolder folder;
    ControlFile file = changed();
    EXPECT_FALSE(file.loadFrom(folder.path("missing.ctl")));
    EXPECT_EQ(file.filePath(), folder.path("missing.ctl"));
    EXPECT_FALSE(file.loadFrom(folder.path()));
    EXPECT_FALSE(file.saveTo(folder.path("missing/run.ctl")));
    EXPECT_EQ(file.filePath(), folder.path("missing/run.ctl"));
    expectChanged(file);
}

TEST(ControlFileDeathTest, StopsAtAFlagThatIsNotThere)
{
    ControlFile file = changed();
    const ControlFile& constant = file;
    for (const int index : {-1, 2, least, most}) {
        EXPECT_INDEX_ASSERTION(file.flag(index), "QList<T>::operator[]", "FileIO/ControlFile");
        EXPECT_INDEX_ASSERTION(constant.flag(index), "QList<T>::operator[]", "FileIO/ControlFile");
        EXPECT_INDEX_ASSERTION(file.removeFlag(index), "QList<T>::removeAt", "FileIO/ControlFile");
    }
}

TEST(ControlFileDeathTest, StopsAtAnEquationThatIsNotThere)
{
    ControlFile file;
    for (const int index : {-1, 5, least, most}) {
        EXPECT_INDEX_ASSERTION(file.equationFlag(index), "QList<T>::operator[]", "FileIO/ControlFile");
        EXPECT_INDEX_ASSERTION(file.setEquationFlag(index, 1), "QList<T>::operator[]", "FileIO/ControlFile");
    }
}

TEST(ControlFileDeathTest, StopsAtACodeThatAnArrayDoesNotHave)
{
    ControlFile file;
    const ControlFile& constant = file;
    const struct {
        int largest;
        std::vector<std::function<void(int code)>> accessors;
    } arrays[] = {
        {24,
         {
             [&](int code) { file.phiSolve(code).integer1 = 1; },
             [&](int code) { static_cast<void>(constant.phiSolve(code)); },
         }},
        {46,
         {
             [&](int code) { static_cast<void>(file.phiUnderRelax(code)); },
             [&](int code) { file.setPhiUnderRelax(code, 1.0); },
             [&](int code) { static_cast<void>(file.phiInertRelax(code)); },
             [&](int code) { file.setPhiInertRelax(code, 1.0); },
         }},
        {328,
         {
             [&](int code) { static_cast<void>(file.constant(code)); },
             [&](int code) { file.setConstant(code, 1.0); },
             [&](int code) { static_cast<void>(file.originalConstant(code)); },
         }},
    };
    for (const auto& [largest, accessors] : arrays) {
        for (const auto& access : accessors) {
            access(1);
            access(largest);
            for (const int code : {0, -1, largest + 1, least, most})
                EXPECT_INDEX_ASSERTION(access(code), "QList<T>::operator[]", "FileIO/ControlFile") << code;
        }
    }
}

} // namespace
} // namespace Nereo::Io

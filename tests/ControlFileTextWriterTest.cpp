#include "support/Assertions.h"
#include "support/GoldenFile.h"
#include "support/TemporaryFolder.h"

#include "FileIO/ControlFileTextWriter.h"

#include <NereoFileIO/ControlFile.h>

#include <gmock/gmock.h>

#include <cmath>

namespace Nereo::Io {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

class ControlFileTextWriterTest : public ::testing::Test {
protected:
    std::string written() const
    {
        QString text;
        QTextStream out(&text);
        ControlFileTextWriter(file).write(out);
        return text.toStdString();
    }

    /// The lines below the title line, up to the next.
    std::string section(const std::string& title) const
    {
        const std::string text = written();
        const std::string titleLine = " *** " + title + "\n";
        const std::size_t found = text.find(titleLine);
        if (found == std::string::npos)
            return "no section " + title;
        const std::size_t begin = found + titleLine.size();
        const std::size_t end = text.find(" *** ", begin);
        return text.substr(begin, end == std::string::npos ? end : end - begin);
    }

    Material& add(const std::string& type, const std::string& name = "Stuff")
    {
        Material material(type);
        material.setName(name);
        file.materialDatabase().add(material);
        return file.materialDatabase().material(file.materialDatabase().count() - 1);
    }

    /// What the writer makes of the density of a fluid, from its name on to the next property.
    std::string densityOf(const Material& material)
    {
        file.materialDatabase().clear();
        file.materialDatabase().add(material);
        const std::string text = section("Property Settings");
        const std::size_t begin = text.find("kRho");
        return text.substr(begin, text.find("kVisc") - begin);
    }

    void addFlag(const std::string& name, const std::string& value)
    {
        Flag flag;
        flag.setName(name);
        flag.setValue(value);
        file.addFlag(flag);
    }

    ControlFile file;
    TemporaryFolder folder;
};

TEST_F(ControlFileTextWriterTest, WritesANewFile)
{
    ASSERT_TRUE(file.saveTo(folder.path("new.ctl")));
    expectGolden(readBytes(folder.path("new.ctl")), "new-control-file.ctl");
    EXPECT_EQ(readBytes(folder.path("new.ctl")), written());
}

TEST_F(ControlFileTextWriterTest, WritesTheHeaderAndTitleAsTheyAre)
{
    file.setHeaderLine1("%1 Ver 1.2");
    file.setHeaderLine2("");
    file.setTitle("  Lüfter  %2");
    EXPECT_EQ(written().substr(0, 60),
              std::string("%1 Ver 1.2\n\n *** Title\n  Lüfter  %2\n *** Equation Selection\n").substr(0, 60));
}

TEST_F(ControlFileTextWriterTest, WritesTextsAsTheirGettersGiveThem)
{
    const std::string marked = "\uFEFF\uFEFFx"; // of which the first mark is dropped where it is set
    file.setHeaderLine1(marked);
    file.setHeaderLine2(marked);
    file.setTitle(marked);
    file.sequentialSolver().variable = "\uFEFFkP";
    addFlag(marked, marked);
    add(marked, marked);
    ASSERT_EQ(file.title(), "\uFEFFx");

    EXPECT_THAT(written(), StartsWith("\uFEFFx\n\uFEFFx\n *** Title\n\uFEFFx\n"));
    EXPECT_THAT(section("Sequential Solver Iterations"), HasSubstr("\n\uFEFFkP 1e-05\n"));
    EXPECT_EQ(section("Flag section"), "1\n\uFEFFx \uFEFFx\n");
    EXPECT_THAT(section("Property Settings"), StartsWith("0 0 13 0 \uFEFFx\n"));
}

TEST_F(ControlFileTextWriterTest, WritesTheSmallSections)
{
    for (int i = 0; i < 5; ++i)
        file.setEquationFlag(i, i - 2);
    file.setUnits(3);
    file.setTransientForm(2);
    file.setNumberOfTimeSteps(400);
    file.setTimeStepSize(2.5e-5);
    file.setStopTime(12.0);
    file.sequentialSolver() = {7, 8, 9, "kDiss", 1e-10};
    EXPECT_EQ(section("Equation Selection"), "-2\n-1\n0\n1\n2\n");
    EXPECT_EQ(section("Units"), "3\n");
    EXPECT_EQ(section("Transient Data "), "2 400\n2.5e-05\n12\n"); // its title ends with a blank
    EXPECT_EQ(section("Sequential Solver Iterations"), "7\n8\n9\nkDiss 1e-10\n");
}

TEST_F(ControlFileTextWriterTest, WritesOneInPlaceOfTheThirdSolveSetting)
{
    file.phiSolve(1) = {2, 3, 99, 0.5};
    file.phiSolve(15) = {4, 5, 0, 0.25};
    file.phiSolve(16) = {6, 7, 8, 9.0}; // isn't written
    const std::string text = section("Solution Control");
    EXPECT_EQ(text.substr(0, text.find("kV")), "kU 2 3 1 0.5\n");
    EXPECT_EQ(text.substr(text.find("kLiqFrac")), "kLiqFrac 4 5 1 0.25\n");
}

TEST_F(ControlFileTextWriterTest, WritesBothRelaxationFactors)
{
    file.setPhiUnderRelax(46, 0.125);
    file.setPhiInertRelax(46, 1e10);
    file.setPhiInertRelax(27, 3.0);
    const std::string text = section("Relaxation");
    EXPECT_THAT(text, HasSubstr("\nkKXX 0.5 3\n")); // the name of the conductivity
    EXPECT_EQ(text.substr(text.find("kUfactor")), "kUfactor 0.125 1e+10\n");
}

TEST_F(ControlFileTextWriterTest, WritesAutoConvergence)
{
    file.setAutoStopOn(false);
    file.autoConvData() = {1.5, 2.5, 3.5, 4.5};
    EXPECT_EQ(section("Auto Convergence Control"),
              "1 0\n"
              "Instantaneous Convergence Curve Slope 1.5\n"
              "Time-Average Convergence Curve Slope 2.5\n"
              "Time-Average Convergence Curve Concavity 3.5\n"
              "Field Fluctuation 4.5\n");
    file.setAutoConvOn(false);
    file.setAutoStopOn(true);
    EXPECT_EQ(section("Auto Convergence Control").substr(0, 4), "0 1\n");
}

TEST_F(ControlFileTextWriterTest, WritesChangedConstantsBetweenTheRecords)
{
    file.setConstant(222, 5.0); // below the first that is written
    file.setConstant(223, 50.0);
    file.setConstant(247, 101325.0);
    file.setConstant(227, 0.1);
    file.setConstant(227, 0.09);  // back to what it was
    file.setConstant(290, 123.0); // records stand in place of these
    file.setConstant(291, 123.0);
    file.setConstant(326, 123.0);
    file.setConstant(327, 123.0);
    file.setConstant(276, 1e29);
    file.setConstant(300, 1e-30);
    file.setConstant(328, -1.0);
    EXPECT_EQ(section("Constants"),
              "kTurbRatio 50\n"
              "kPRef 101325\n"
              "kDivChk 1e+29\n"
              "kInflate 1 0 1 3 0 1 3 0.45 1 0.01 0 1.05\n"
              "kAutoYP 0 1 36 1 300 1\n"
              "kSACw2 1e-30\n"
              "kSmokeOn 0 21000 3 0.05\n"
              "kThComfOn 0 60 76 0.61\n"
              "kHydrostatPresFlow -1\n");
}

TEST_F(ControlFileTextWriterTest, ComparesConstantsExactly)
{
    file.setConstant(227, std::nextafter(0.09, 1.0)); // with the digits of the file they are the same
    file.setConstant(243, -0.0);                      // equals 0
    const std::string text = section("Constants");
    EXPECT_EQ(text.substr(0, text.find("kInflate")), "kCMu 0.09\n");
}

TEST_F(ControlFileTextWriterTest, WritesTheLastSwitchOfTheInflationBeforeTheLastNumber)
{
    file.inflationData() = {false, true, false, 4, 5, 6.5, 7.5, 8.5, 9.5, 10.5, 11.5, true};
    file.autoYPlusData() = {1, 2, 3, 4, 5.5, 6.5};
    file.smokeData() = {true, 2.5, 3.5, 4.5};
    file.thermalComfortData() = {true, 5.5, 6.5, 7.5};
    EXPECT_EQ(section("Constants"),
              "kInflate 0 1 0 4 5 6.5 7.5 8.5 9.5 10.5 1 11.5\n"
              "kAutoYP 1 2 3 4 5.5 6.5\n"
              "kSmokeOn 1 2.5 3.5 4.5\n"
              "kThComfOn 1 5.5 6.5 7.5\n");
}

TEST_F(ControlFileTextWriterTest, WritesTheFlagsInTheirOrder)
{
    EXPECT_EQ(section("Flag section"), "0\n");
    addFlag("b", "1");
    addFlag("a", "two words");
    addFlag("empty", "");
    addFlag("b", "ü");
    EXPECT_EQ(section("Flag section"), "4\nb 1\na two words\nempty \nb ü\n");
}

TEST_F(ControlFileTextWriterTest, WritesNothingForNoMaterials)
{
    EXPECT_EQ(section("Property Settings"), "");
    EXPECT_THAT(written(), HasSubstr(" *** Property Settings\n *** Field Variable Initialization\n"));
}

TEST_F(ControlFileTextWriterTest, WritesAFluid)
{
    file.setUnits(2);
    Material& air = add("fluid", "Air 20 C");
    air.setId(1);
    air.setEnvironmentType(Material::EnvironmentType(4));
    air.setRefPressure(101325.0);
    air.setRefTemperature(293.15);
    air.setRefCompressibility(1e-5);
    air.setVaporPressure(2339.0);
    air.setGasConstant(287.05);
    air.setDiffusionCoefficient(0.25);
    air.property("density").setVariationType("EOS");
    air.property("viscosity").setValue(1.813e-5);
    air.property("resistivity").setValue(34.5);
    EXPECT_EQ(section("Property Settings"),
              "1 1 0 4 Air 20 C\n"
              "101325 293.15 1e-05 2339\n"
              "1 1 1 0 1 2\n"
              "0 0 0\n"
              "0 0 0\n"
              "0\n"
              "0 0 0\n"
              "0 0 0\n"
              "0 0 0\n"
              "0 0 0\n"
              "0 0 0\n"
              "0 0 0\n"
              "kRho 2 2 287.05\n"
              "kVisc 2 1 1.813e-05\n"
              "kKXX 2 1 0\n"
              "kCp 2 1 0\n"
              "kSurfT 2 1 0\n"
              "kEmis 2 1 0\n"
              "kTransmis 2 1 0\n"
              "kElRes 2 1 34.5\n"
              "kWallRough 2 1 0\n"
              "kSpecDifu 2 1 0.25\n"
              "-----end of this index property data\n");
}

TEST_F(ControlFileTextWriterTest, WritesASolid)
{
    Material& copper = add("solid", "Copper");
    copper.setId(3);
    copper.setRefPressure(7.0); // isn't written
    copper.setRefTemperature(293.15);
    copper.property("density").setValue(8960.0);
    copper.property("x_conductivity").setValue(398.0);
    copper.property("y_conductivity").setVariationType("same_as_kxx");
    copper.property("z_conductivity").setValue(48.0);
    EXPECT_EQ(section("Property Settings"),
              "3 0 0 0 Copper\n"
              "293.15\n"
              "kRho 0 1 8960\n"
              "kVisc 0 1 0\n"
              "kKXX 0 1 398\n"
              "kKYY 0 8 \n"
              "kKZZ 0 1 48\n"
              "kCp 0 1 0\n"
              "kSurfT 0 1 0\n"
              "kEmis 0 1 0\n"
              "kTransmis 0 1 0\n" // which a solid doesn't have
              "kElRes 0 1 0\n"
              "kWallRough 0 1 0\n"
              "-----end of this index property data\n");
    EXPECT_EQ(copper.propertyCodes().size(), 10U);
}

TEST_F(ControlFileTextWriterTest, WritesOfOtherMaterialsTheFirstLineOnly)
{
    const struct {
        const char* type;
        const char* line;
    } cases[] = {
        {"internal_fan", "0 1 2 0 Lüfter\n" },
        {"heat_sink",    "0 1 16 0 Lüfter\n"},
        {"Fluid",        "0 0 13 0 Lüfter\n"}, // case counts
        {"",             "0 0 13 0 Lüfter\n"},
    };
    for (const auto& [type, line] : cases) {
        file.materialDatabase().clear();
        add(type, "Lüfter");
        EXPECT_EQ(section("Property Settings"), std::string(line) + "-----end of this index property data\n");
    }
}

TEST_F(ControlFileTextWriterTest, WritesMaterialsInTheOrderOfTheDatabase)
{
    add("check_valve", "b");
    add("check_valve", "a");
    add("check_valve", "b");
    EXPECT_EQ(section("Property Settings"),
              "0 1 3 0 b\n-----end of this index property data\n"
              "0 1 3 0 a\n-----end of this index property data\n"
              "0 1 3 0 b\n-----end of this index property data\n");
}

TEST_F(ControlFileTextWriterTest, EndsAPropertyLineAsItsVariationSays)
{
    const struct {
        const char* variation;
        const char* line;
    } cases[] = {
        {"constant",                    "kRho 0 1 2.5\n"   },
        {"permeability",                "kRho 0 1 2.5\n"   }, // shares the code 1
        {"solar_wall",                  "kRho 0 1 2.5\n"   },
        {"equation_of_state",           "kRho 0 2 287.05\n"},
        {"EOS",                         "kRho 0 2 287.05\n"},
        {"adiabatic_equation_of_state", "kRho 0 7 287.05\n"},
        {"AEOS",                        "kRho 0 7 287.05\n"},
        {"same_as_kxx",                 "kRho 0 8 \n"      },
        {"piecewise_linear",
         "kRho 0 15 1 2 5 kT\n"
         "   1.5 0\n"
         "   2.25 100\n"                                   },
        {"piece_linear",
         "kRho 0 15 1 2 5 kT\n"
         "   1.5 0\n"
         "   2.25 100\n"                                   },
 // The next property goes on in the line of any other.
        {"power_law",                   "kRho 0 3 "        },
        {"sutherland",                  "kRho 0 4 "        },
        {"polynomial",                  "kRho 0 5 "        },
        {"steam_tables",                "kRho 0 14 "       },
        {"moist_gas",                   "kRho 0 16 "       },
        {"fan_curve",                   "kRho 0 27 "       },
        {"polynomial_coefficients",     "kRho 0 36 "       },
        {"Dehumidification",            "kRho 0 45 "       },
        {"no such variation",           "kRho 0 -1 "       },
        {"",                            "kRho 0 -1 "       },
    };
    for (const auto& [variation, line] : cases) {
        Material fluid;
        fluid.setGasConstant(287.05);
        MaterialProperty& density = fluid.property("density");
        density.setVariationType(variation);
        density.setValue(2.5);
        density.setIndependentVariable(5);
        density.addPoint(0.0, 1.5);
        density.addPoint(100.0, 2.25);
        EXPECT_EQ(densityOf(fluid), line) << variation;
    }
}

TEST_F(ControlFileTextWriterTest, WritesTheNameOfACurvesVariable)
{
    const struct {
        int variable;
        const char* line;
    } cases[] = {
        {361, "kRho 0 15 -1 0 361 kNone\n"},
        {27,  "kRho 0 15 -1 0 27 kKXX\n"  },
        {20,  "kRho 0 15 -1 0 20 kVeff\n" }, // rather than the flag of that code
        {0,   "kRho 0 15 -1 0 0 \n"       },
    };
    for (const auto& [variable, line] : cases) {
        Material fluid;
        fluid.property("density").setVariationType("piecewise_linear");
        fluid.property("density").setIndependentVariable(variable);
        EXPECT_EQ(densityOf(fluid), line);
    }
}

TEST_F(ControlFileTextWriterTest, WritesNumbersWithSixSignificantDigits)
{
    const struct {
        double value;
        const char* text;
    } cases[] = {
        {0.0,       "0\n"          },
        {-0.0,      "0\n"          },
        {1e-4,      "0.0001\n"     },
        {1e-5,      "1e-05\n"      },
        {123456.0,  "123456\n"     },
        {999999.4,  "999999\n"     },
        {999999.5,  "1e+06\n"      },
        {1234567.0, "1.23457e+06\n"},
        {-293.15,   "-293.15\n"    },
        {1e30,      "1e+30\n"      },
        {1e-300,    "1e-300\n"     },
        {2.0 / 3.0, "0.666667\n"   },
        {100000.5,  "100001\n"     }, // exact halves away from zero
        {INFINITY,  "inf\n"        },
        {-INFINITY, "-inf\n"       },
        {NAN,       "nan\n"        },
    };
    for (const auto& [value, text] : cases) {
        file.setStopTime(value);
        EXPECT_EQ(section("Transient Data "), std::string("0 0\n0.001\n") + text);
    }
}

TEST_F(ControlFileTextWriterTest, ReplacesAnExistingFile)
{
    const std::string path = folder.write("run.ctl", std::string(100000, 'x'));
    ASSERT_TRUE(file.saveTo(path));
    EXPECT_EQ(readBytes(path), written());
}

using ControlFileTextWriterDeathTest = ControlFileTextWriterTest;

TEST_F(ControlFileTextWriterDeathTest, StopsAtACurvesVariableThatIsNoCode)
{
    for (const int variable : {-1, 362}) {
        Material fluid;
        fluid.property("density").setVariationType("piecewise_linear");
        fluid.property("density").setIndependentVariable(variable);
        EXPECT_INDEX_ASSERTION(densityOf(fluid), "QVector<T>::at", "FileIO/CodeNameTable");
    }
}

} // namespace
} // namespace Nereo::Io

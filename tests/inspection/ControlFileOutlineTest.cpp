#include "Marked.h"

#include "support/TemporaryFolder.h"

#include <NereoInspection/Outline.h>

#include <gtest/gtest.h>

#include <vector>

namespace Nereo::Inspection {
namespace {

std::vector<Item> outlined(const std::string& bytes)
{
    const TemporaryFolder folder;
    std::vector<Item> items;
    EXPECT_TRUE(outline(folder.write("file.ctl", bytes), FileKind::Control,
                        [&](const Item& item) { items.push_back(item); }));
    return items;
}

std::string linesOf(const std::string& bytes)
{
    static const char* const types[] = {"integer", "number", "switch", "text", "version", "field"};
    std::string lines;
    for (const Item& item : outlined(bytes)) {
        lines += std::to_string(item.place.line) + ':' + std::to_string(item.place.column) + ' '
            + item.address.toStdString() + ' ' + types[int(item.type)] + " [" + item.spelling.toStdString()
            + "] " + item.value.toString().toStdString() + '\n';
    }
    return lines;
}

const std::string header = "a\nb\n";

TEST(ControlFileOutlineTest, TellsOfEveryValueInTheOrderOfTheFile)
{
    EXPECT_EQ(
        linesOf("NEREO Ver 1\n\n *** Title\n  a title \n *** Equation Selection\n1 flow\n0x10\n0\n 1\n-5\n"
                " *** Units\n2\n *** Transient Data \n1 010\n 1e-3\n-1\n"
                " *** Sequential Solver Iterations\n1\n2\n3\nkP 1e-05\n"),
        "1:1 header/1 text [NEREO Ver 1] NEREO Ver 1\n"
        "2:1 header/2 text [] \n"
        "4:1 title text [  a title ]   a title \n"
        "6:1 equation-selection/1 integer [1] 1\n"
        "7:1 equation-selection/2 integer [0x10] 16\n"
        "8:1 equation-selection/3 integer [0] 0\n"
        "9:2 equation-selection/4 integer [1] 1\n"
        "10:1 equation-selection/5 integer [-5] -5\n"
        "12:1 units integer [2] 2\n"
        "14:1 transient-data/form integer [1] 1\n"
        "14:3 transient-data/steps integer [010] 8\n"
        "15:2 transient-data/step-size number [1e-3] 0.001\n"
        "16:1 transient-data/stop-time number [-1] -1\n"
        "18:1 sequential-solver/1 integer [1] 1\n"
        "19:1 sequential-solver/2 integer [2] 2\n"
        "20:1 sequential-solver/3 integer [3] 3\n"
        "21:1 sequential-solver/variable text [kP] kP\n"
        "21:4 sequential-solver/tolerance number [1e-05] 1e-05\n");
}

TEST(ControlFileOutlineTest, TellsOfLists)
{
    EXPECT_EQ(linesOf(header
                      + " *** Solution Control\nkU 15 5 1 1e-05\nkUnknown 1 2 3 4\n"
                        " *** Relaxation\nkCond .5 0\n"
                        " *** Constants\nkPRef 101325\nkSmokeOn 1 21000 3 0.05\n"
                        " *** Auto Convergence Control\n1 0\nTime-Average Convergence Curve Slope 0.5\n"),
              "1:1 header/1 text [a] a\n"
              "2:1 header/2 text [b] b\n"
              "4:4 solution-control/kU/1 integer [15] 15\n"
              "4:7 solution-control/kU/2 integer [5] 5\n"
              "4:9 solution-control/kU/3 integer [1] 1\n"
              "4:11 solution-control/kU/tolerance number [1e-05] 1e-05\n"
              "7:7 relaxation/kKXX/under number [.5] 0.5\n" // by the name that a writer gives it
              "7:10 relaxation/kKXX/inertial number [0] 0\n"
              "9:7 constants/kPRef number [101325] 101325\n"
              "10:10 constants/kSmokeOn/1 switch [1] true\n"
              "10:12 constants/kSmokeOn/2 number [21000] 21000\n"
              "10:18 constants/kSmokeOn/3 number [3] 3\n"
              "10:20 constants/kSmokeOn/4 number [0.05] 0.05\n"
              "12:1 auto-convergence/on switch [1] true\n"
              "12:3 auto-convergence/stop switch [0] false\n"
              "13:38 auto-convergence/time-average-slope number [0.5] 0.5\n");
}

TEST(ControlFileOutlineTest, TellsOfFlagsAndOfOtherSections)
{
    EXPECT_EQ(linesOf(header
                      + " *** Flag section\n4\nx 1\na/b#c%d two three\n\nx 2\nempty\n"
                        " *** Restart\n0 0  0 0\n *** Made  Up\n\n some text \n1\n"
                        " *** Made Up\n1\n *** \n1\n"),
              "1:1 header/1 text [a] a\n"
              "2:1 header/2 text [b] b\n"
              "5:3 flags/x text [1] 1\n"
              "6:9 flags/a%2Fb%23c%25d text [two] two\n"
              "8:3 flags/x#2 text [2] 2\n"
              "9:6 flags/empty text [] \n"
              "11:1 restart/1 text [0 0  0 0] 0 0 0 0\n"
              "14:2 Made Up/1 text [some text] some text\n"
              "15:1 Made Up/2 text [1] 1\n"
              "17:1 Made Up#2/1 text [1] 1\n"
              "19:1 #5/1 text [1] 1\n");
}

TEST(ControlFileOutlineTest, TellsOfMaterials)
{
    EXPECT_EQ(linesOf(header
                      + " *** Property Settings\n1 0 1 2 Some Steel\n293.15\nkRho 0 15 1 2 5 kT\n   7 0\n"
                        "   8 100\nkVisc 0 3 kKXX 0 2 287\n-----end of this index property data\n"
                        "2 0 0 0 \n-----end of this index property data\n"
                        "3 0 0 0 Some Steel\n-----end of this index property data\n"),
              "1:1 header/1 text [a] a\n"
              "2:1 header/2 text [b] b\n"
              "4:1 property-settings/Some Steel/id integer [1] 1\n"
              "4:3 property-settings/Some Steel/fluid integer [0] 0\n"
              "4:5 property-settings/Some Steel/resistance integer [1] 1\n"
              "4:7 property-settings/Some Steel/environment integer [2] 2\n"
              "4:9 property-settings/Some Steel/name text [Some Steel] Some Steel\n"
              "5:1 property-settings/Some Steel/ref_temperature number [293.15] 293.15\n"
              "6:6 property-settings/Some Steel/kRho/units integer [0] 0\n"
              "6:8 property-settings/Some Steel/kRho/variation integer [15] 15\n"
              "6:17 property-settings/Some Steel/kRho/independent_variable text [kT] kT\n"
              "7:4 property-settings/Some Steel/kRho/points/1/y number [7] 7\n"
              "7:6 property-settings/Some Steel/kRho/points/1/x number [0] 0\n"
              "8:4 property-settings/Some Steel/kRho/points/2/y number [8] 8\n"
              "8:6 property-settings/Some Steel/kRho/points/2/x number [100] 100\n"
              "9:7 property-settings/Some Steel/kVisc/units integer [0] 0\n"
              "9:9 property-settings/Some Steel/kVisc/variation integer [3] 3\n"
              "9:16 property-settings/Some Steel/kKXX/units integer [0] 0\n"
              "9:18 property-settings/Some Steel/kKXX/variation integer [2] 2\n"
              "9:20 property-settings/Some Steel/kKXX/gas_constant number [287] 287\n"
              "11:1 property-settings/#2/id integer [2] 2\n"
              "11:3 property-settings/#2/fluid integer [0] 0\n"
              "11:5 property-settings/#2/resistance integer [0] 0\n"
              "11:7 property-settings/#2/environment integer [0] 0\n"
              "11:9 property-settings/#2/name text [] \n"
              "13:1 property-settings/Some Steel#2/id integer [3] 3\n"
              "13:3 property-settings/Some Steel#2/fluid integer [0] 0\n"
              "13:5 property-settings/Some Steel#2/resistance integer [0] 0\n"
              "13:7 property-settings/Some Steel#2/environment integer [0] 0\n"
              "13:9 property-settings/Some Steel#2/name text [Some Steel] Some Steel\n");
}

TEST(ControlFileOutlineTest, TellsWhatALoadReadsWhereAValueIsMissing)
{
    EXPECT_EQ(linesOf(header
                      + " *** Transient Data\n0\n7\n-1\n *** Relaxation\nkU 1.5.5 2\nkV 1\nkW 1 2\nkP 1 2\n"),
              "1:1 header/1 text [a] a\n"
              "2:1 header/2 text [b] b\n"
              "4:1 transient-data/form integer [0] 0\n"
              "4:2 transient-data/steps integer [] 7\n"
              "6:1 transient-data/step-size number [-1] -1\n"
              "7:1 transient-data/stop-time number [] 0\n"
              "8:4 relaxation/kU/under number [1.5.5] 1.5\n"
              "8:10 relaxation/kU/inertial number [2] 0.5\n"
              "9:4 relaxation/kV/under number [1] 1\n"
              "9:5 relaxation/kV/inertial number [] 0\n"
              "11:4 relaxation/kP/under number [1] 1\n"
              "11:6 relaxation/kP/inertial number [2] 2\n");
}

TEST(ControlFileOutlineTest, TellsThePlaceAndTheLengthInBytes)
{
    const Marked text(
        header + " *** Title\n\xC3\xA4\n *** Flag section\n1\n\xC3\xA4\xF0\x9F\x98\x80 [[\xC3\xB6-x]] b\n");
    for (const Marked& marked :
         {text, text.withCarriageReturns(), text.withByteOrderMark(), text.inUtf16()}) {
        const Item item = outlined(marked.bytes()).back();
        EXPECT_EQ(item.place, marked.place());
        EXPECT_EQ(item.length, marked.length());
        EXPECT_EQ(item.spelling, marked.found());
    }
}

} // namespace
} // namespace Nereo::Inspection

#include "support/Assertions.h"
#include "support/FailingDevice.h"
#include "support/TemporaryFolder.h"

#include "FileIO/ControlFileTextReader.h"
#include "FileIO/ControlFileTextWriter.h"

#include <NereoFileIO/ControlFile.h>

#include <QRegExp>
#include <QTextCodec>

#include <gmock/gmock.h>

#include <cmath>
#include <random>

namespace Nereo::Io {
namespace {

std::string written(const ControlFile& file)
{
    QString text;
    QTextStream out(&text);
    ControlFileTextWriter(file).write(out);
    return text.toStdString();
}

std::string written(const ControlFile& file, const std::string& section)
{
    const std::string text = written(file);
    const std::string title = " *** " + section + "\n";
    const std::size_t begin = text.find(title) + title.size();
    return text.substr(begin, text.find(" *** ", begin) - begin);
}

class ControlFileTextReaderTest : public ::testing::Test {
protected:
    /// The text of a whole file, into the file.
    void readFile(const QString& content)
    {
        QString text = content;
        QTextStream in(&text);
        EXPECT_TRUE(ControlFileTextReader(file).read(in));
    }

    /// One section below an ordinary header, into a new file.
    const ControlFile& read(const QString& section, const QString& lines)
    {
        file = ControlFile();
        readFile(QStringLiteral("one Ver 1.2.3.4\ntwo\n *** ") + section + '\n' + lines);
        return file;
    }

    ControlFile file;
    TemporaryFolder folder;
};

TEST_F(ControlFileTextReaderTest, ReadsTheHeader)
{
    readFile("NEREO control file rev 06 NEREO Ver 2023.1.0.0\nNEREO 2023 (release)\n *** Title\n");
    EXPECT_EQ(file.headerLine1(), "NEREO control file rev 06 NEREO Ver 2023.1.0.0");
    EXPECT_EQ(file.version(), Util::Version(2023, 1, 0, 0));
    EXPECT_EQ(file.headerLine2(), "NEREO 2023 (release)");
    EXPECT_EQ(file.title(), "NEREO control file settings"); // a title in the last line has no section
}

TEST_F(ControlFileTextReaderTest, TakesAnyLinesForTheHeader)
{
    readFile(" *** Title\nx\n");
    EXPECT_EQ(file.headerLine1(), " *** Title");
    EXPECT_EQ(file.version(), Util::Version());
    EXPECT_EQ(file.headerLine2(), "x");
    EXPECT_EQ(file.title(), "NEREO control file settings");

    readFile("");
    EXPECT_EQ(file.headerLine1(), "");
    EXPECT_EQ(file.headerLine2(), "");
}

TEST_F(ControlFileTextReaderTest, RecognisesSectionTitles)
{
    const struct {
        const char* line;
        int units;
    } cases[] = {
  // title line         units read from the 3 below it
        {" *** Units",     3},
        {" ***   Units  ", 3}, // inner and outer blanks don't matter
        {" *** \tUnits\t", 3},
        {" *** units",     0}, // case does
        {" *** Units 3",   0},
        {" *** Unit s",    0},
        {" ***Units",      0},
        {"*** Units",      0},
        {"  *** Units",    0},
        {" **** Units",    0},
        {" ** Units",      0},
        {" *** ",          0},
        {" ***  ",         0},
        {" ***",           0},
        {"",               0},
    };
    for (const auto& [line, units] : cases) {
        file = ControlFile();
        readFile(QStringLiteral("one\ntwo\n%1\n3\n").arg(line)); // as the first title
        EXPECT_EQ(file.units(), units) << line;
        file = ControlFile();
        readFile(QStringLiteral("one\ntwo\n *** Batch\n%1\n3\n").arg(line)); // as a later one
        EXPECT_EQ(file.units(), units) << line;
    }
}

TEST_F(ControlFileTextReaderTest, TakesOtherWhiteSpaceInTheFirstTitleOnly)
{
    for (const char* line : {"\t***\tUnits", " ***\tUnits", "\t*** Units", "\xC2\xA0***\xC2\xA0Units"}) {
        file = ControlFile();
        readFile(QStringLiteral("one\ntwo\n%1\n3\n").arg(line));
        EXPECT_EQ(file.units(), 3) << line;
        file = ControlFile();
        readFile(QStringLiteral("one\ntwo\n *** Batch\n%1\n3\n").arg(line));
        EXPECT_EQ(file.units(), 0) << line;
    }
}

TEST_F(ControlFileTextReaderTest, MatchesTitlesLikeTheirExpression)
{
    const QRegExp expression("^\\s\\*\\*\\*\\s(.+)");
    std::mt19937 random(20240917);
    const QString alphabet = QStringLiteral(" *\tU\u00A0x");
    int matches = 0;
    for (int i = 0; i < 20000; ++i) {
        QString line = i % 2 ? QString() : QStringLiteral(" *** ");
        for (unsigned length = random() % 8; length > 0; --length)
            line += alphabet[int(random() % unsigned(alphabet.size()))];
        if (i % 4 == 0 && line.size() > 1)
            line[int(random() % 5U)] = alphabet[int(random() % unsigned(alphabet.size()))];
        QString name;
        if (expression.indexIn(line) >= 0)
            name = expression.cap(1).simplified();
        // What the expression finds in the line is the name under which its section is read.
        const bool isUnits = name == QLatin1String("U");
        matches += isUnits;
        file = ControlFile();
        readFile(QStringLiteral("one\ntwo\n") + QString(line).replace('U', "Units")
                 + QStringLiteral("\n3\n"));
        ASSERT_EQ(file.units(), isUnits ? 3 : 0) << '"' << line.toStdString() << '"';
    }
    EXPECT_GT(matches, 10);
}

TEST_F(ControlFileTextReaderTest, EndsASectionAtTheNextTitle)
{
    readFile("one\ntwo\n *** Units\n *** Batch\n5\n *** Transient Data \n1 2\n3\n *** \n4\n");
    EXPECT_EQ(file.units(), 0);
    EXPECT_EQ(file.transientForm(), 1);
    EXPECT_EQ(file.numberOfTimeSteps(), 2);
    EXPECT_EQ(file.timeStepSize(), 3.0);
    EXPECT_EQ(file.stopTime(), 0.0);
}

TEST_F(ControlFileTextReaderTest, ReadsAnEmptySectionUnlessItsTitleEndsTheFile)
{
    file.setUnits(7);
    readFile("one\ntwo\n *** Batch\n0\n *** Units\n");
    EXPECT_EQ(file.units(), 7);
    readFile("one\ntwo\n *** Batch\n0\n *** Units");
    EXPECT_EQ(file.units(), 7);
    readFile("one\ntwo\n *** Units\n\n");
    EXPECT_EQ(file.units(), 0);
    file.setUnits(7);
    readFile("one\ntwo\n *** Units\n *** Batch\n");
    EXPECT_EQ(file.units(), 0);
}

TEST_F(ControlFileTextReaderTest, SkipsSectionsThatItDoesNotRead)
{
    const std::string before = written(ControlFile());
    for (const char* section :
         {"Property Settings", "Multi-Phase Table", "Field Variable Initialization", "Variable BC",
          "Fan Curve BC", "Free Surface", "Output Setting", "Field Variable Output",
          "Results Output Frequency", "Summary Output Frequency", "Restart", "Batch", "Scalars",
          "Solar Heating", "Interface", "Auto Convergence Control", "Monitor Points", "Flag Section", "x"}) {
        file = ControlFile();
        file.setHeaderLine1(ControlFile().headerLine1());
        readFile(QString::fromStdString(file.headerLine1() + '\n' + file.headerLine2() + "\n *** " + section
                                        + "\n0 0\nkU 7 7 7 7\nField Fluctuation 9\n"));
        EXPECT_EQ(written(file), before) << section;
    }
}

TEST_F(ControlFileTextReaderTest, ReadsTheWholeLineOfTheTitle)
{
    EXPECT_EQ(read("Title", "  Lüfter  40 mm \nsecond line\n").title(), "  Lüfter  40 mm ");
    EXPECT_EQ(read("Title", "\nsecond line\n").title(), "");
    EXPECT_EQ(read("Title", "no line end").title(), "no line end");
}

TEST_F(ControlFileTextReaderTest, TakesAByteOrderMarkWhereASectionBeginsForACharacter)
{
    const QString three = QChar(QChar::ByteOrderMark) + QString("3\n"); // no number
    EXPECT_EQ(read("Units", three).units(), 0);
    EXPECT_EQ(read("Flag section", three).flagCount(), 0); // as many as are announced
}

TEST_F(ControlFileTextReaderTest, ReadsAnyTextWhateverTheLocale)
{
    QTextCodec* const before = QTextCodec::codecForLocale();
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("ISO-8859-1"));
    EXPECT_EQ(read("Title", "Lüfter 40 €\n").title(), "Lüfter 40 €");
    EXPECT_EQ(read("Sequential Solver Iterations", "1\n2\n3\nkÜ 4\n").sequentialSolver().variable, "kÜ");
    EXPECT_EQ(read("Flag section", "1\nü €\n").flag(0).value(), "€");
    QTextCodec::setCodecForLocale(before);
}

TEST_F(ControlFileTextReaderTest, ReadsIntegersAsTheTextStreamDoes)
{
    const struct {
        const char* text;
        int value;
    } cases[] = {
        {"3",           3              },
        {"-3",          -3             },
        {"+3",          3              },
        {"\t 3 4",      3              },
        {"\n\n3",       3              },
        {"3.9",         3              },
        {"3abc",        3              },
        {"0x10",        16             },
        {"010",         8              },
        {"0b101",       5              },
        {"2147483647",  2147483647     },
        {"-2147483648", -2147483647 - 1},
        {"",            0              },
        {"abc",         0              },
        {"-",           0              },
        {".5",          0              },
    };
    for (const auto& [text, value] : cases)
        EXPECT_EQ(read("Units", QString(text) + '\n').units(), value) << text;
}

TEST_F(ControlFileTextReaderTest, ReadsNumbersAsTheTextStreamDoes)
{
    const struct {
        const char* text;
        double value;
    } cases[] = {
        {"2.5",     2.5   },
        {"-1e-3",   -0.001},
        {"1E+05",   1e5   },
        {".5",      0.5   },
        {"7",       7.0   },
        {"\n 7",    7.0   },
        {"2.5 3.5", 2.5   },
        {"",        0.0   },
        {"abc",     0.0   },
    };
    for (const auto& [text, value] : cases)
        EXPECT_EQ(read("Transient Data", QStringLiteral("1 2\n3\n%1\n").arg(text)).stopTime(), value) << text;
}

TEST_F(ControlFileTextReaderTest, ReadsFiveEquationFlags)
{
    const auto flags = [this](const char* lines) {
        std::vector<int> flags;
        const ControlFile& read = this->read("Equation Selection", lines);
        for (int i = 0; i < 5; ++i)
            flags.push_back(read.equationFlag(i));
        return flags;
    };
    EXPECT_THAT(flags("1 flow\n2 pressure\n3\n4\n5\n6\n"), ::testing::ElementsAre(1, 2, 3, 4, 5));
    EXPECT_THAT(flags("1\n\n2\n3\n"), ::testing::ElementsAre(1, 2, 3, 0, 0));
    EXPECT_THAT(flags("1 9 9\nno 9\n3\n4\n5\n"), ::testing::ElementsAre(1, 0, 3, 4, 5));
    EXPECT_THAT(flags(""), ::testing::ElementsAre(1, 1, 0, 1, 0)); // a title at the end
}

TEST_F(ControlFileTextReaderTest, ReadsTransientData)
{
    const ControlFile& read = this->read("Transient Data ", "2 400 9 9\n2.5e-05 9\n12 9\n");
    EXPECT_EQ(read.transientForm(), 2);
    EXPECT_EQ(read.numberOfTimeSteps(), 400);
    EXPECT_EQ(read.timeStepSize(), 2.5e-5);
    EXPECT_EQ(read.stopTime(), 12.0);
}

TEST_F(ControlFileTextReaderTest, ReadsTheSequentialSolver)
{
    const auto& [i1, i2, i3, variable, tolerance] =
        read("Sequential Solver Iterations", "7 x\n8 x\n9 x\nkSomething 1e-10 x\n").sequentialSolver();
    EXPECT_EQ(std::tie(i1, i2, i3, variable, tolerance),
              std::tuple(7, 8, 9, std::string("kSomething"), 1e-10));
    EXPECT_EQ(read("Sequential Solver Iterations", "7\n8\n9\n").sequentialSolver().variable, "");
}

TEST_F(ControlFileTextReaderTest, ReadsSolveSettings)
{
    const auto settings = [this](int code, const char* lines) {
        const auto& [i1, i2, i3, tolerance] = read("Solution Control", lines).phiSolve(code);
        return std::tuple(i1, i2, i3, tolerance);
    };
    const std::tuple defaults(15, 5, 1, 1e-5);
    EXPECT_EQ(settings(1, "kU 2 3 4 0.5 rest\n"), std::tuple(2, 3, 4, 0.5));
    EXPECT_EQ(settings(24, "kECurZ 2 3 4 0.5\n"), std::tuple(2, 3, 4, 0.5));
    EXPECT_EQ(settings(20, "kSlipNode 2 3 4 0.5\n"), std::tuple(2, 3, 4, 0.5)); // a flag's name for 20
    EXPECT_EQ(settings(2, "kU 2 3 4 0.5\n\n  kV 6 7 8 9"), std::tuple(6, 7, 8, 9.0));
    EXPECT_EQ(settings(1, "kU 2\n3 4\n0.5 kV 9 9 9 9\n"), std::tuple(2, 3, 4, 0.5)); // over several lines
    EXPECT_EQ(settings(2, "kU 2\n3 4\n0.5 kV 9 9 9 9\n"), defaults);
    EXPECT_EQ(settings(1, "kU 2 x 4 0.5\n"), std::tuple(2, 0, 0, 0.0));
    EXPECT_EQ(settings(1, "kU 2"), std::tuple(2, 0, 0, 0.0));
    EXPECT_EQ(settings(1, "kU 2 3 4 5\nkU 6 7 8 9\n"), std::tuple(6, 7, 8, 9.0));
    EXPECT_EQ(settings(2, "ku 1\nkV 6 7 8 9\n"), std::tuple(6, 7, 8, 9.0));
}

TEST_F(ControlFileTextReaderTest, IgnoresLinesOfOtherVariables)
{
    for (const char* name : {"kFoo", "kNone", "ku", "kRho", "kPSrc", "kOut", "#"}) {
        const QString line = QString(name) + " 2 3 4 5\n";
        EXPECT_EQ(written(read("Solution Control", line), "Solution Control"),
                  written(ControlFile(), "Solution Control"))
            << name;
        EXPECT_EQ(read("Solution Control", line + "kV 6 7 8 9\n").phiSolve(2).integer1, 6) << name;
    }
    // What isn't read ends with its line.
    EXPECT_EQ(read("Solution Control", "kFoo\nkV 6 7 8 9\n").phiSolve(2).integer1, 6);
}

TEST_F(ControlFileTextReaderTest, ReadsRelaxation)
{
    read("Relaxation", "kU 0.25 0.75 rest\nkUfactor 2\n3\nkKXX 4 5\nkV x 7\n\nkP 8");
    EXPECT_EQ(file.phiUnderRelax(1), 0.25);
    EXPECT_EQ(file.phiInertRelax(1), 0.75);
    EXPECT_EQ(file.phiUnderRelax(46), 2.0);
    EXPECT_EQ(file.phiInertRelax(46), 3.0);
    EXPECT_EQ(file.phiUnderRelax(27), 4.0);
    EXPECT_EQ(file.phiInertRelax(27), 5.0);
    EXPECT_EQ(file.phiUnderRelax(2), 0.0);
    EXPECT_EQ(file.phiUnderRelax(4), 8.0);
    EXPECT_EQ(file.phiInertRelax(4), 0.0);
    EXPECT_EQ(file.phiUnderRelax(5), 1.0);
}

TEST_F(ControlFileTextReaderTest, IgnoresRelaxationOfOtherVariables)
{
    for (const char* name : {"kSomethingNew", "kNone", "kGen", "kOut"}) {
        EXPECT_EQ(written(read("Relaxation", QString(name) + " 7 8\n"), "Relaxation"),
                  written(ControlFile(), "Relaxation"))
            << name;
        // Its two numbers are read nevertheless, from the next line if need be.
        EXPECT_EQ(read("Relaxation", QString(name) + "\n7 8\nkV 9 9\n").phiUnderRelax(2), 9.0) << name;
        EXPECT_EQ(read("Relaxation", QString(name) + " 7\n8 kU 6 6\nkV 9 9\n").phiUnderRelax(1), 0.5) << name;
    }
}

TEST_F(ControlFileTextReaderTest, ReadsConstants)
{
    read("Constants",
         "kPRef 101325 rest\nkU 2\nkHydrostatPresFlow\n3\nkCMu x\nkGravY -9.81\nkFoo 5\nkOut 6\n"
         "kNone 7\n\nkTRef 8");
    EXPECT_EQ(file.constant(247), 101325.0);
    EXPECT_EQ(file.constant(1), 2.0); // codes below those that are saved too
    EXPECT_EQ(file.constant(328), 3.0);
    EXPECT_EQ(file.constant(227), 0.0);
    EXPECT_EQ(file.originalConstant(227), 0.09);
    EXPECT_EQ(file.constant(244), -9.81);
    EXPECT_EQ(file.constant(248), 8.0);
    EXPECT_EQ(file.constant(229), 1.92);
}

TEST_F(ControlFileTextReaderTest, ReadsRecordsInTheOrderOfTheLine)
{
    read("Constants",
         "kInflate 0 1 0 4 5 6.5 7.5 8.5 9.5 10.5 1 11.5 rest\n"
         "kAutoYP 1 2 3 4 5.5 6.5\n"
         "kSmokeOn 1 2.5 3.5 4.5\n"
         "kThComfOn 1 5.5\n6.5 7.5\n");
    const auto& [f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12] = file.inflationData();
    EXPECT_EQ(std::tie(f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12),
              std::tuple(false, true, false, 4, 5, 6.5, 7.5, 8.5, 9.5, 10.5, 11.5, true));
    const auto& [y1, y2, y3, y4, y5, y6] = file.autoYPlusData();
    EXPECT_EQ(std::tie(y1, y2, y3, y4, y5, y6), std::tuple(1, 2, 3, 4, 5.5, 6.5));
    const auto& [s1, s2, s3, s4] = file.smokeData();
    EXPECT_EQ(std::tie(s1, s2, s3, s4), std::tuple(true, 2.5, 3.5, 4.5));
    const auto& [t1, t2, t3, t4] = file.thermalComfortData();
    EXPECT_EQ(std::tie(t1, t2, t3, t4), std::tuple(true, 5.5, 6.5, 7.5));
    for (const int code : {290, 291, 326, 327})
        EXPECT_EQ(file.constant(code), 0.0) << code;
}

TEST_F(ControlFileTextReaderTest, TakesOnlyOneForTrue)
{
    for (const auto& [text, on] : {
             std::pair("1", true),
             {"01",   true },
             {"0x1",  true },
             {"0",    false},
             {"2",    false},
             {"-1",   false},
             {"true", false},
             {"",     false}
    })
        EXPECT_EQ(read("Constants", QStringLiteral("kSmokeOn %1\n").arg(text)).smokeData().on, on) << text;
}

TEST_F(ControlFileTextReaderTest, ReadsFlagsALineEach)
{
    const struct {
        const char* lines;
        const char* flags;
    } cases[] = {
        {"2\nb 1\na 2\n",               "2\nb 1\na 2\n"   },
        {"2\nb 1\na 2",                 "2\nb 1\na 2\n"   },
        {"2 rest of line\nb 1\na 2\n",  "2\nb 1\na 2\n"   },
        {"1\n  name \t value  third\n", "1\nname value\n" },
        {"2\nempty\nb 1\n",             "2\nempty \nb 1\n"}, // a flag without a value
        {"2\nempty \n\n \t\nb 1\n\n",   "2\nempty \nb 1\n"}, // blank lines are none
        {"\n\n1\nb 1\n",                "1\nb 1\n"        },
        {"0x2\nb 1\nb 1\n",             "2\nb 1\nb 1\n"   },
        {"0\n",                         "0\n"             },
        {"\n",                          "0\n"             },
        {"none\n",                      "0\n"             },
        {"1\nü ö\n",                  "1\nü ö\n"      },
    };
    for (const auto& [lines, flags] : cases)
        EXPECT_EQ(written(read("Flag section", lines), "Flag section"), flags) << lines;
}

TEST_F(ControlFileTextReaderTest, ReplacesTheFlags)
{
    Flag flag;
    flag.setName("old");
    file.addFlag(flag);
    readFile("one\ntwo\n *** Units\n0\n");
    EXPECT_EQ(file.flagCount(), 1); // no flag section
    readFile("one\ntwo\n *** Flag section\n1\nnew 1\n *** Units\n0\n");
    ASSERT_EQ(file.flagCount(), 1);
    EXPECT_EQ(file.flag(0).name(), "new");
    readFile("one\ntwo\n *** Flag section\n *** Units\n0\n");
    EXPECT_EQ(file.flagCount(), 0);
}

TEST_F(ControlFileTextReaderTest, KeepsWhatTheFileDoesNotCarry)
{
    file.setFormat(ControlFile::Format(3));
    file.setTitle("kept");
    file.setStopTime(7.0);
    file.setConstant(230, 0.5);
    file.setPhiUnderRelax(5, 0.25);
    file.setAutoConvOn(false);
    file.autoConvData().fieldFluctuation = 0.5;
    file.materialDatabase().add(Material("solid"));
    QString saved = QString::fromStdString(written(ControlFile()));
    saved.remove(saved.indexOf(" *** Title"), saved.indexOf(" *** Equation") - saved.indexOf(" *** Title"));
    saved.remove(QRegExp(" \\*\\*\\* Transient Data \n[^*]*\n(?= )"));
    saved.replace("kT 1 0\n", "");
    readFile(saved);
    EXPECT_EQ(int(file.format()), 3);
    EXPECT_EQ(file.title(), "kept");
    EXPECT_EQ(file.stopTime(), 7.0);
    EXPECT_EQ(file.constant(230), 0.5);
    EXPECT_EQ(file.phiUnderRelax(5), 0.25);
    EXPECT_FALSE(file.isAutoConvOn());
    EXPECT_EQ(file.autoConvData().fieldFluctuation, 0.5);
    EXPECT_EQ(file.materialDatabase().count(), 1);
}

TEST_F(ControlFileTextReaderTest, LoadsTheSample)
{
    ASSERT_TRUE(file.loadFrom(NEREO_SAMPLES_DIR "/cavity.ctl"));
    EXPECT_EQ(file.headerLine1(), "NEREO control file rev 06 NEREO Ver 2023.1.0.0");
    EXPECT_EQ(file.headerLine2(), "NEREO 2023 (release)");
    EXPECT_EQ(file.version(), Util::Version(2023, 1, 0, 0));
    EXPECT_EQ(file.title(), "Lid-driven cavity, Re 100");
    EXPECT_EQ(written(file, "Equation Selection"), "1\n1\n0\n0\n0\n");
    EXPECT_EQ(file.units(), 0);
    EXPECT_EQ(file.transientForm(), 0);
    EXPECT_EQ(file.numberOfTimeSteps(), 0);
    EXPECT_EQ(file.timeStepSize(), 0.001);
    EXPECT_EQ(file.stopTime(), -1.0);
    const double underRelaxation[] = {0.4, 0.4, 0.5, 0.3, 0.95, 0.5};
    for (int code = 1; code <= 6; ++code)
        EXPECT_EQ(file.phiUnderRelax(code), underRelaxation[code - 1]) << code;
    EXPECT_EQ(file.phiSolve(1).tolerance, 1e-6);
    EXPECT_EQ(file.phiSolve(4).integer1, 14);
    EXPECT_EQ(file.phiSolve(4).integer2, 2000);
    EXPECT_EQ(file.phiSolve(4).integer3, 2);
    EXPECT_EQ(file.phiSolve(4).tolerance, 1e-9);
    EXPECT_EQ(written(file, "Sequential Solver Iterations"), "50\n5\n0\nkP 1e-06\n");
    EXPECT_EQ(written(file, "Constants"),
              "kGravY -9.81\nkRhoRef 1.2047\nkPRef 101325\n"
              "kInflate 1 0 1 5 0 1 3 0.45 1 0.01 0 1.2\n"
              "kAutoYP 0 1 36 1 300 1\n"
              "kSmokeOn 0 21000 3 0.05\n"
              "kThComfOn 0 60 76 0.61\n");
    EXPECT_TRUE(file.isAutoConvOn()); // isn't loaded
    EXPECT_EQ(written(file, "Flag section"), "3\nrestart_every 100\nwall_model enhanced\ncfl 0.75\n");
}

/// Fills what a file carries with numbers of every size.
class RandomControlFile {
public:
    ControlFile next()
    {
        ControlFile file;
        file.setTitle(word() + " " + word());
        for (int i = 0; i < 5; ++i)
            file.setEquationFlag(i, integer());
        file.setUnits(integer());
        file.setTransientForm(integer());
        file.setNumberOfTimeSteps(integer());
        file.setTimeStepSize(number());
        file.setStopTime(number());
        file.sequentialSolver() = {integer(), integer(), integer(), word(), number()};
        for (int code = 1; code <= 15; ++code)
            file.phiSolve(code) = {integer(), integer(), integer(), number()};
        for (int code = 1; code <= 46; ++code) {
            file.setPhiUnderRelax(code, number());
            file.setPhiInertRelax(code, number());
        }
        for (int code = 223; code <= 328; ++code) {
            if (isTrue())
                file.setConstant(code, number());
        }
        file.inflationData() = {isTrue(), isTrue(), isTrue(), integer(), integer(), number(),
                                number(), number(), number(), number(),  number(),  isTrue()};
        file.autoYPlusData() = {integer(), integer(), integer(), integer(), number(), number()};
        file.smokeData() = {isTrue(), number(), number(), number()};
        file.thermalComfortData() = {isTrue(), number(), number(), number()};
        for (quint64 count = bits_() % 5U; count > 0; --count) {
            Flag flag;
            flag.setName(word());
            flag.setValue(isTrue() ? word() : "");
            file.addFlag(flag);
        }
        return file;
    }

private:
    bool isTrue() { return bits_() % 2U != 0; }
    int integer() { return int(bits_()); }

    double number()
    {
        return QString::number(std::ldexp(double(integer()), int(bits_() % 200U) - 130), 'g', 6).toDouble();
    }

    std::string word()
    {
        static const char* const words[] = {"kP", "x", "7", "-", "%1", "***", "ü", "#"};
        std::string word;
        for (unsigned count = 1 + bits_() % 4U; count > 0; --count)
            word += words[bits_() % 8U];
        return word;
    }

    std::mt19937 bits_ {20240917};
};

TEST_F(ControlFileTextReaderTest, ReadsWhatIsWritten)
{
    RandomControlFile random;
    for (int i = 0; i < 200; ++i) {
        const ControlFile saved = random.next();
        ASSERT_TRUE(saved.saveTo(folder.path("run.ctl")));
        ControlFile loaded;
        ASSERT_TRUE(loaded.loadFrom(folder.path("run.ctl")));
        ASSERT_EQ(written(loaded), written(saved));
        for (int code = 1; code <= 15; ++code)
            ASSERT_EQ(loaded.phiSolve(code).integer3, 1);
    }
}

TEST_F(ControlFileTextReaderTest, ReadsLinesThatEndWithCarriageReturns)
{
    std::string content = readBytes(NEREO_SAMPLES_DIR "/cavity.ctl");
    for (std::size_t end = content.find('\n'); end != std::string::npos; end = content.find('\n', end + 2))
        content.replace(end, 1, "\r\n");
    ControlFile expected;
    ASSERT_TRUE(expected.loadFrom(NEREO_SAMPLES_DIR "/cavity.ctl"));
    ASSERT_TRUE(file.loadFrom(folder.write("crlf.ctl", content)));
    EXPECT_EQ(written(file), written(expected));
}

TEST_F(ControlFileTextReaderTest, EndsOnEveryBeginningOfAFile)
{
    // Past its number of flags, what is left of the next title would be a flag too many.
    QString content = QString::fromStdString(written(ControlFile()));
    content.truncate(content.indexOf(" *** Monitor Points"));
    for (int size = 0; size <= content.size(); ++size)
        readFile(content.left(size));
}

TEST_F(ControlFileTextReaderTest, EndsOnAnyText)
{
    std::mt19937 random(20240917);
    static const char* const parts[] = {
        "\n",
        " ",
        "\n *** ",
        "Units",
        "Constants",
        "Relaxation",
        "Solution Control",
        "Title",
        "kU",
        "kInflate",
        "kSmokeOn",
        "1",
        "-",
        "e",
        ".",
        "\t",
        "\r",
        "\xC3\xBC",
        "1e999",
        "99999999999999999999",
        "kFoo",
        "nan",
    };
    for (int i = 0; i < 2000; ++i) {
        QString content = QStringLiteral("one\ntwo\n *** Constants\n");
        for (int k = 0; k < 40; ++k)
            content += QString::fromUtf8(parts[random() % std::size(parts)]);
        readFile(content);
    }
}

TEST_F(ControlFileTextReaderTest, EndsWhereTheDeviceFails)
{
    const struct {
        const char* readable;
        int units;
    } cases[] = {
        {"",                                  7 },
        {"one",                               7 },
        {"one\ntwo\n",                        7 },
        {"one\ntwo\n *** Units\n",            7 },
        {"one\ntwo\n *** Units\n25",          25},
        {"one\ntwo\n *** Units\n2\n *** x\n", 2 },
    };
    for (const auto& [readable, units] : cases) {
        file = ControlFile();
        file.setUnits(7);
        FailingDevice device(readable);
        QTextStream in(&device);
        EXPECT_TRUE(ControlFileTextReader(file).read(in)) << readable;
        EXPECT_EQ(file.units(), units) << readable;
    }
}

using ControlFileTextReaderDeathTest = ControlFileTextReaderTest;

TEST_F(ControlFileTextReaderDeathTest, StopsWhenTheNumberOfFlagsIsWrong)
{
    for (const char* lines : {"2\na 1\nb 2\nc 3\n", "2\na 1\n", "1\n", "x\na 1\n", "-1\n", "a 1\n1\n"})
        EXPECT_DEATH(read("Flag section", lines),
                     ::testing::HasSubstr("ASSERT: \"controlFile_.flagCount() == count\" in file "
                                          "FileIO/ControlFileTextReader, line "))
            << lines;
}

} // namespace
} // namespace Nereo::Io

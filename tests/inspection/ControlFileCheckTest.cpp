#include "Checked.h"

#include "support/Bytes.h"

#include <NereoFileIO/ControlFile.h>

#include <algorithm>
#include <cstring>
#include <vector>

namespace Nereo::Inspection {
namespace {

constexpr auto Error = Severity::Error;
constexpr auto Warning = Severity::Warning;
constexpr auto Note = Severity::Note;

/// The control file that a writer makes of a new object, section by section.
class Sections {
public:
    Sections()
    {
        const TemporaryFolder folder;
        EXPECT_TRUE(Io::ControlFile().saveTo(folder.path("new.ctl")));
        const std::string file = readBytes(folder.path("new.ctl"));
        std::size_t begin = 0;
        for (std::size_t end; begin < file.size(); begin = end) {
            end = std::min(file.find("\n *** ", begin) + 1, file.size());
            end = end == 0 ? file.size() : end;
            parts_.push_back(file.substr(begin, end - begin));
        }
    }

    std::string& header() { return parts_.front(); }

    /// The section with the name; a new one at the end if there is none.
    std::string& section(const std::string& name)
    {
        const auto found = find(name);
        return found == parts_.end() ? parts_.emplace_back() : *found;
    }

    void moveToFront(const std::string& text) { move(text, parts_.begin() + 1); }
    void moveToEnd(const std::string& text) { move(text, parts_.end()); }

    std::string text() const
    {
        std::string text;
        for (const std::string& part : parts_)
            text += part;
        return text;
    }

private:
    std::vector<std::string>::iterator find(const std::string& name)
    {
        return std::find_if(parts_.begin(), parts_.end(), [&](const std::string& part) {
            return part.rfind(" *** " + name, 0) == 0 && std::strchr("\n ", part[5 + name.size()]) != nullptr;
        });
    }

    void move(const std::string& text, std::vector<std::string>::iterator to)
    {
        const auto from = std::find(parts_.begin(), parts_.end(), text);
        if (from < to)
            std::rotate(from, from + 1, to);
        else
            std::rotate(to, from, from + 1);
    }

    std::vector<std::string> parts_;
};

/// A section with a fault in an otherwise good file, and the finding that a check must have of it.
struct Case {
    Case(const char* sectionName, std::string sectionText, const char* itsCode, Severity itsSeverity,
         Effect itsEffect, const char* itsAddress = "", const char* inMessage = "",
         const char* whatIsFound = nullptr)
        : section(sectionName), text(std::move(sectionText)), code(itsCode), severity(itsSeverity),
          effect(itsEffect), address(itsAddress), message(inMessage), found(whatIsFound)
    {
    }

    const char* section; ///< whose place the text takes; empty for another one, "header" for the first lines
    std::string text;    ///< with [[…]] around the place
    const char* code;
    Severity severity;
    Effect effect;
    QString address;
    QString message;   ///< a part of it
    const char* found; ///< where it isn't what stands at the place
};

/// What a file in which nothing is wrong has too.
bool isUsual(const Finding& finding)
{
    return finding.code == "not-loaded"
        && (finding.address == "auto-convergence" || finding.address == "property-settings");
}

void expectOnly(const Case& row, const Marked& marked)
{
    const CheckedFile checked = checkedBytes("file.ctl", marked.bytes());
    SCOPED_TRACE(row.text + '\n' + linesOf(checked));
    EXPECT_EQ(checked.kind, FileKind::Control);
    std::vector<Finding> findings = checked.findings;
    const bool isUnusual = std::strcmp(row.code, "not-loaded") != 0;
    const auto isOther = [&](const Finding& finding) {
        return isUnusual ? isUsual(finding)
                         : finding.address == "auto-convergence" && row.address != finding.address;
    };
    findings.erase(std::remove_if(findings.begin(), findings.end(), isOther), findings.end());
    ASSERT_EQ(findings.size(), 1U);
    const Finding& finding = findings.front();
    EXPECT_EQ(finding.code, row.code);
    EXPECT_EQ(severityName(finding.severity), severityName(row.severity));
    EXPECT_EQ(effectName(finding.effect), effectName(row.effect));
    EXPECT_EQ(finding.place.line, marked.place().line);
    EXPECT_EQ(finding.place.column, marked.place().column);
    EXPECT_EQ(finding.place.offset, marked.place().offset);
    EXPECT_EQ(finding.address, row.address);
    EXPECT_EQ(finding.found, row.found != nullptr ? QString(row.found) : marked.found());
    EXPECT_TRUE(finding.message.contains(row.message)) << finding.message.toStdString();
    EXPECT_FALSE(finding.message.contains(QRegExp("%[1-9]"))) << finding.message.toStdString();
}

void expectFinding(const Case& row)
{
    Sections sections;
    std::string& part =
        std::strcmp(row.section, "header") == 0 ? sections.header() : sections.section(row.section);
    part = row.text;
    std::vector<std::string> texts {sections.text()};
    if (part != sections.header()) {
        sections.moveToFront(row.text);
        texts.push_back(sections.text());
        sections.moveToEnd(row.text);
        texts.push_back(sections.text());
    }
    sections.header() = sections.header() == row.text ? row.text
                                                      : "NEREO control file rev 07 NEREO Ver 2024.0.0.0\n"
                                                        "NEREO 2024 (\xC3\xA4\xF0\x9F\x98\x80)\n";
    texts.push_back(sections.text());
    for (const std::string& text : texts) {
        const Marked marked(text);
        expectOnly(row, marked);
        expectOnly(row, marked.withCarriageReturns());
        expectOnly(row, marked.withByteOrderMark());
        expectOnly(row, marked.inUtf16());
        expectOnly(row, marked.inUtf32(Marked::LittleEndian));
    }
    // White space may stand before anything but a title.
    const bool isBeforeTitle = row.text.size() > 5 && row.text.substr(row.text.size() - 5) == "\n[[]]";
    const std::size_t line = row.text.rfind('\n', row.text.find("[["));
    const bool isInTitle = line == std::string::npos || std::strcmp(row.section, "header") == 0;
    if (!isBeforeTitle && !isInTitle)
        expectOnly(row, Marked(texts.front()).behindEmSpace());
}

std::string materials(const std::string& lines)
{
    return " *** Property Settings\n" + lines;
}

const std::string endOfMaterial = "-----end of this index property data\n";

std::string solid(const std::string& firstLine, const std::string& density = "kRho 0 1 8000\n")
{
    return firstLine + "293.15\n" + density
        + "kVisc 0 1 0\nkKXX 0 1 16\nkKYY 0 8 \nkKZZ 0 2 287\nkCp 0 1 500\nkSurfT 0 1 0\n"
          "kEmis 0 1 0\nkTransmis 0 1 0\nkElRes 0 1 0\nkWallRough 0 1 0\n"
        + endOfMaterial;
}

TEST(ControlFileCheckTest, FindsNothingButANoteInWhatAWriterWrites)
{
    const CheckedFile checked = checkedBytes("file.ctl", Sections().text());
    ASSERT_EQ(checked.findings.size(), 1U) << linesOf(checked);
    EXPECT_EQ(checked.findings[0].address, "auto-convergence");
}

TEST(ControlFileCheckTest, FindsNothingWrongInOtherGoodLayouts)
{
    // A load doesn't read all of so many digits, but comes to the same number.
    const std::string fewDigits = " *** Transient Data\n1 2\n0." + std::string(150, '3') + "\n1\n";
    const struct {
        const char* section;
        const char* text;
    } rows[] = {
        {"Equation Selection", " ***   Equation\tSelection \n\n 0x1\n\n010 \n+1\n-0\n\n1\n\n\n"     },
        {"Equation Selection",
         " *** Equation "
         "Selection\n0x7FFFFFFF\n017777777777\n-2147483648\n0b1111111111111111111111111111111\n09\n"},
        {"Transient Data",     " *** Transient Data\n1\t2\n  .5\n1E+20\n"                           },
        {"Transient Data",     fewDigits.c_str()                                                    },
        {"Units",              " *** Units\n0b101\n"                                                },
        {"Relaxation",         " *** Relaxation\n\nkU 0.4 inf\n \nkKXX 1 0\nkVisc nan -INF\n"       },
        {"Constants",          " *** Constants\n"                                                   },
        {"Flag section",       " *** Flag section\n\n2\n\nx 1\n\n y\n"                              },
        {"Flag section",       " *** Flag section\n0\n"                                             },
        {"Free Surface",       " *** Free Surface\n\n0 \n0\t0 0\n0 0\n0 0\n0 0\n"                   },
    };
    for (const auto& [section, text] : rows) {
        Sections sections;
        sections.section(section) = text;
        const CheckedFile checked = checkedBytes("file.ctl", sections.text());
        EXPECT_EQ(checked.findings.size(), 1U) << text << linesOf(checked);
    }
}

TEST(ControlFileCheckTest, FindsFaultsInSectionsOfLines)
{
    const std::string equations = " *** Equation Selection\n";
    const std::string transient = " *** Transient Data \n";
    const std::string solver = " *** Sequential Solver Iterations\n";
    const std::string longNumber = '1' + std::string(150, '0');
    const std::string ones(33, '1');
    const Case cases[] = {
        Case("Equation Selection", equations + "[[12abc]]\n1\n0\n1\n0\n", "not-an-integer", Error,
             Effect::Start, "equation-selection/1", "read as 12"),
        Case("Equation Selection", equations + "1\n \t[[abc]]\n0\n1\n0\n", "not-an-integer", Error,
             Effect::Zero, "equation-selection/2", "read as 0"),
        Case("Equation Selection", equations + "1\n[[1.5]]\n0\n1\n0\n", "not-an-integer", Error,
             Effect::Start, "equation-selection/2", "read as 1"),
        Case("Equation Selection", equations + "1\n[[018]]\n0\n1\n0\n", "not-an-integer", Error,
             Effect::Start, "equation-selection/2", "read as 1"),
        Case("Equation Selection", equations + "1\n[[-0x10]]\n0\n1\n0\n", "not-an-integer", Error,
             Effect::Start, "equation-selection/2", "read as 0"),
        Case("Equation Selection", equations + "1\n[[0X]]\n0\n1\n0\n", "not-an-integer", Error, Effect::Zero,
             "equation-selection/2"),
        Case("Equation Selection", equations + "1\n[[+]]\n0\n1\n0\n", "not-an-integer", Error, Effect::Zero,
             "equation-selection/2"),
        Case("Equation Selection", equations + "1\n1\n0\n1\n[[99999999999]]\n", "out-of-range", Error,
             Effect::Wrapped, "equation-selection/5", "read as 1215752191"),
        Case("Equation Selection", equations + "1\n1\n0\n1\n[[2147483648]]\n", "out-of-range", Error,
             Effect::Wrapped, "equation-selection/5", "read as -2147483648"),
        Case("Equation Selection", equations + "1\n1\n0\n1\n[[-2147483649]]\n", "out-of-range", Error,
             Effect::Wrapped, "equation-selection/5", "read as 2147483647"),
        Case("Equation Selection", equations + "1\n1\n0\n1\n[[0x100000001]]\n", "out-of-range", Error,
             Effect::Wrapped, "equation-selection/5", "read as 1"),
        Case("Equation Selection", equations + "1\n1\n0\n1\n[[18446744073709551616]]\n", "out-of-range",
             Error, Effect::Wrapped, "equation-selection/5", "read as 0"),
        Case("Equation Selection", equations + "1 [[flow of]]  \n1\n0\n1\n0\n", "trailing-text", Warning,
             Effect::Ignored, "equation-selection/1"),
        Case("Equation Selection", equations + "1\n1\n0\n1\n0\n\n [[7 8]]\n9\n", "trailing-text", Warning,
             Effect::Ignored, "equation-selection"),
        Case("Equation Selection", equations + "1\n1\n0\n1\n[[]]", "missing-value", Error, Effect::Zero,
             "equation-selection/5"),
        Case("Equation Selection", equations + "1\n[[]]\n0\n1\n0\n", "missing-value", Error, Effect::Zero,
             "equation-selection/2", "a load takes the next line for it, and so on"),
        Case("Equation Selection", equations + "1\n  [[]]\n1\n1\n0\n", "missing-value", Error, Effect::None,
             "equation-selection/2", "1 is read for it"),
        Case("Equation Selection", equations + "1\n1\n0\n1\n [[]]\n", "missing-value", Error, Effect::Zero,
             "equation-selection/5"),
        Case("Units", " *** Units\n[[SI]]\n", "not-an-integer", Error, Effect::Zero, "units"),
        Case("Units", " *** Units\n[[SI\xC3\xA4]] \n", "not-an-integer", Error, Effect::Zero, "units"),
        Case("Units", " *** Units\n0 [[\xF0\x9F\x98\x80]]\n", "trailing-text", Warning, Effect::Ignored,
             "units"),
        Case("Transient Data", transient + "0[[]]\n0.001\n-1\n", "missing-value", Error, Effect::Zero,
             "transient-data/steps", "a load takes the next line for it: \"0.001\""),
        Case("Transient Data", transient + "0 [[]]\n7.001\n-1\n", "missing-value", Error, Effect::None,
             "transient-data/steps", "7 is read for it"),
        Case("Transient Data", transient + "[[a]] 0\n0.001\n-1\n", "not-an-integer", Error, Effect::Zero,
             "transient-data/form"),
        Case("Transient Data", transient + "[[1.]] 5\n0.001\n-1\n", "not-an-integer", Error, Effect::Start,
             "transient-data/form", "what is left of it is read for the values behind it: 0"),
        Case("Transient Data", transient + "0 0\n[[1e400]]\n-1\n", "out-of-range", Error, Effect::Zero,
             "transient-data/step-size", "read as 0"),
        Case("Transient Data", transient + "0 0\n[[-1e-400]]\n-1\n", "out-of-range", Error, Effect::Zero,
             "transient-data/step-size", "read as 0"),
        Case("Units", " *** Units\n[[0b" + ones + "]]\n", "out-of-range", Error, Effect::Wrapped, "units",
             "read as -1"),
        Case("Transient Data", transient + "0 0\n[[" + longNumber + "]]\n-1\n", "not-a-number", Error,
             Effect::Start, "transient-data/step-size", "read as 1e+"),
        Case("Transient Data", transient + "0 0\n[[1,5]]\n-1\n", "not-a-number", Error, Effect::Start,
             "transient-data/step-size", "read as 1"),
        Case("Transient Data", transient + "0 0\n[[infinity]]\n-1\n", "not-a-number", Error, Effect::Start,
             "transient-data/step-size", "read as inf"),
        Case("Transient Data", transient + "0 0\n0.1\n[[1e]]\n", "not-a-number", Error, Effect::Zero,
             "transient-data/stop-time"),
        Case("Transient Data", transient + "0 0\n0.1\n[[abc]]\n", "not-a-number", Error, Effect::Zero,
             "transient-data/stop-time"),
        Case("Transient Data", transient + "0 0\n0.1 [[s]]\n5\n", "trailing-text", Warning, Effect::Ignored,
             "transient-data/step-size"),
        Case("Transient Data", transient + "0 0 [[s]]\n0.1\n5\n", "trailing-text", Warning, Effect::Ignored,
             "transient-data"),
        Case("Transient Data", transient + "0 0\n0.1\n[[]]", "missing-value", Error, Effect::Zero,
             "transient-data/stop-time"),
        Case("Sequential Solver Iterations", solver + "100\n10\n0\n[[kFoo]] 1e-05\n", "unknown-variable",
             Warning, Effect::None, "sequential-solver/variable"),
        Case("Sequential Solver Iterations", solver + "100\n10\n0\n[[kP;1e-05]]\n", "unknown-variable",
             Warning, Effect::None, "sequential-solver/variable"),
        Case("Transient Data", transient + "[[0;0]]\n0.1\n5\n", "not-an-integer", Error, Effect::Start,
             "transient-data/form"),
        Case("Sequential Solver Iterations", solver + "100\n10\n0\n1e-05 [[]]\n", "missing-value", Error,
             Effect::None, "sequential-solver/variable", "1e-05 is read for it"),
        Case("Sequential Solver Iterations", solver + "100\n10\n0\nkP[[]]\n", "missing-value", Error,
             Effect::Zero, "sequential-solver/tolerance"),
        Case("Sequential Solver Iterations", solver + "100\n10\n0\nkP 1 [[2]]\n", "trailing-text", Warning,
             Effect::Ignored, "sequential-solver"),
        Case("Title", " *** Title\nfirst\n[[second]]\n", "trailing-text", Warning, Effect::Ignored, "title"),

        // A line is missing, and what stands there is as the next one should be.
        Case("Transient Data", transient + "[[]]0.001\n-1\n", "missing-value", Error, Effect::Zero,
             "transient-data/form", "a load takes the next line for it, and so on for those below"),
        Case("Transient Data", transient + "[[]]7.001\n-1\n", "missing-value", Error, Effect::None,
             "transient-data/form", "7 is read for it; a load takes the next line for it"),
        Case("Sequential Solver Iterations", solver + "100\n10\n[[]]kP 1e-06\n", "missing-value", Error,
             Effect::Zero, "sequential-solver/3", "a load takes the next line for it, and so on"),
        Case("Sequential Solver Iterations", solver + "100\n10\n[[]]kNone 5\n \n", "missing-value", Error,
             Effect::Zero, "sequential-solver/3", "a load takes the next line for it, and so on"),

        // So where the line is blank.
        Case("Sequential Solver Iterations", solver + "[[]]\n10\n0\nkP 1e-05\n", "missing-value", Error,
             Effect::None, "sequential-solver/1", "10 is read for it; a load takes the next line for it"),
        Case("Sequential Solver Iterations", solver + "50\n10\n [[]]\nkP 1e-05\n", "missing-value", Error,
             Effect::Zero, "sequential-solver/3", "a load takes the next line for it"),

        // A word is too many.
        Case("Equation Selection", equations + "1\n[[yes]] 1\n0\n1\n0\n", "not-an-integer", Error,
             Effect::Zero, "equation-selection/2", "read as 0"),
        Case("Transient Data", transient + "0 0\n[[dt]] 0.1\n-1\n", "not-a-number", Error, Effect::Zero,
             "transient-data/step-size", "read as 0"),
        Case("Transient Data", transient + "[[to]] 1 5\n0.1\n-1\n", "not-an-integer", Error, Effect::Zero,
             "transient-data/form", "what is left of it is read for the values behind it: 0"),
    };
    for (const Case& row : cases)
        expectFinding(row);
}

/// What is wrong in a section, by line (from 1 on), column, code and address.
std::string faultsIn(const std::string& section, const std::string& lines)
{
    Sections sections;
    const std::string title = " *** " + section + '\n';
    sections.section(section) = title + lines;
    const std::string text = sections.text();
    const auto begin = text.begin() + long(text.find(title) + title.size());
    const auto linesBefore = std::count(text.begin(), begin, '\n');
    std::string faults;
    for (const Finding& finding : checkedBytes("file.ctl", text).findings) {
        if (!isUsual(finding))
            faults += std::to_string(finding.place.line - linesBefore) + ':'
                + std::to_string(finding.place.column) + ' ' + finding.code.toStdString() + ' '
                + finding.address.toStdString() + '\n';
    }
    return faults;
}

TEST(ControlFileCheckTest, TellsOfALineAsItStandsUnlessOneIsMissing)
{
    const char solver[] = "Sequential Solver Iterations";
    // As the next line should be, but that is there.
    EXPECT_EQ(faultsIn(solver, "100\n10\nkP 1e-06\nkP 1e-06\n"),
              "3:1 not-an-integer sequential-solver/3\n3:4 trailing-text sequential-solver\n");
    EXPECT_EQ(faultsIn("Transient Data", "0.001\n0.1\n-1\n"), "1:6 missing-value transient-data/form\n");
    // Not as the next line should be.
    EXPECT_EQ(faultsIn(solver, "100\n10\nkPP 1e-06\n"),
              "3:1 not-an-integer sequential-solver/3\n3:5 trailing-text sequential-solver\n"
              "4:1 missing-value sequential-solver/variable\n");
    EXPECT_EQ(faultsIn(solver, "100\n10\nkP 1e-06 0\n"),
              "3:1 not-an-integer sequential-solver/3\n3:4 trailing-text sequential-solver\n"
              "4:1 missing-value sequential-solver/variable\n");
    EXPECT_EQ(faultsIn(solver, "100\n10\nkP\n"),
              "3:1 not-an-integer sequential-solver/3\n"
              "4:1 missing-value sequential-solver/variable\n");
    EXPECT_EQ(faultsIn("Equation Selection", "1\n1 a\n1.5\n0\n"),
              "2:3 trailing-text equation-selection/2\n3:1 not-an-integer equation-selection/3\n"
              "5:1 missing-value equation-selection/5\n");
    // More than one line is missing.
    EXPECT_EQ(faultsIn("Transient Data", "0.001\n"),
              "1:6 missing-value transient-data/form\n2:1 missing-value transient-data/step-size\n");
    EXPECT_EQ(faultsIn(solver, "100\n\nkP 1e-06\n"),
              "2:1 missing-value sequential-solver/2\n3:1 not-an-integer sequential-solver/2\n"
              "3:4 trailing-text sequential-solver\n");
}

TEST(ControlFileCheckTest, SaysNothingOfANextLineWhereThereIsNone)
{
    for (const char* line : {"kU 15 5", "kU 15 0 x 0"}) {
        Sections sections;
        sections.section("Solution Control") = std::string(" *** Solution Control\n") + line + '\n';
        const CheckedFile checked = checkedBytes("file.ctl", sections.text());
        EXPECT_EQ(linesOf(checked).find("next line"), std::string::npos) << linesOf(checked);
        EXPECT_NE(linesOf(checked).find("solution-control/kU/3"), std::string::npos) << linesOf(checked);
    }
}

/// A bad word is too many only if the others fit without it.
TEST(ControlFileCheckTest, TellsOfAWordBehindTheOthersUnlessOneIsTooMany)
{
    const std::string rest = "\n1\n0\n1\n0\n";
    const std::string both =
        "1:1 not-an-integer equation-selection/1\n1:5 trailing-text equation-selection\n";
    EXPECT_EQ(faultsIn("Equation Selection", "yes 1.5" + rest), both);
    EXPECT_EQ(faultsIn("Equation Selection", "yes 1 0" + rest), both);
    EXPECT_EQ(faultsIn("Equation Selection", "1.5 1" + rest), both);
    EXPECT_EQ(faultsIn("Transient Data", "to 0.5 0\n0.1\n-1\n"),
              "1:1 not-an-integer transient-data/form\n1:4 not-an-integer transient-data/steps\n"
              "1:8 trailing-text transient-data\n");
}

TEST(ControlFileCheckTest, FindsFaultsInListsOfVariables)
{
    const std::string solution = " *** Solution Control\n";
    const std::string relaxation = " *** Relaxation\n";
    const std::string constants = " *** Constants\n";
    const Case cases[] = {
        Case("Solution Control", solution + "[[kUu]] 1 1 2 1\n", "unknown-variable", Warning, Effect::Ignored,
             "solution-control/kUu", "did you mean \"kU\"?"),
        Case("Solution Control", solution + "[[kPRef]] 1 1 2 1\n", "unknown-variable", Warning,
             Effect::Ignored, "solution-control/kPRef"),
        Case("Solution Control", solution + "[[\xC3\xA4/#%]]\n", "unknown-variable", Warning, Effect::Ignored,
             "solution-control/\xC3\xA4%2F%23%25"),
        Case("Solution Control", solution + "kU 1 1 1 1\nkV 1 1 1 1\n[[kU]] 2 1 1 1\n", "repeated-variable",
             Warning, Effect::Ignored, "solution-control/kU"),
        Case("Solution Control", solution + "kU 15 5 [[2]] 1e-06\n", "unused-value", Warning, Effect::Lost,
             "solution-control/kU/3"),
        Case("Solution Control", solution + "[[kTotalP]] 15 5 1 1e-06\n", "unused-value", Warning,
             Effect::Lost, "solution-control/kTotalP"),
        Case("Solution Control", solution + "kU [[n]] 15 5 1 1e-05\n", "not-an-integer", Error, Effect::Zero,
             "solution-control/kU/1", "read for the values behind it: 0, 0, 0"),
        Case("Constants", constants + "kSmokeOn 21000 3 0.05[[]]\nkPRef 5\n", "missing-value", Error,
             Effect::None, "constants/kSmokeOn/1",
             "21000 is read for it; those behind it are read as 3, 0.05, 0"),
        Case("Constants", constants + "kInflate 1 1 3 0 1 3 0.45 1 0.01 0 1.05[[]]\n", "missing-value", Error,
             Effect::None, "constants/kInflate/3", "3 is read for it; those behind it are read as 0, 1, 3, "),
        Case("Constants", constants + "kSmokeOn [[2]] 21000 3 0.05\n", "bad-switch", Warning, Effect::Off,
             "constants/kSmokeOn/1"),
        Case("Constants", constants + "kInflate 1 [[n]] 0 1 3 0 1 3 0.45 1 0.01 0 1.05\n", "not-an-integer",
             Error, Effect::Zero, "constants/kInflate/2"),
        Case("Solution Control", solution + "kU [[15.5]] 5 1 1e-06\n", "not-an-integer", Error, Effect::Start,
             "solution-control/kU/1", "read for the values behind it: 0, 0, 0.5"),
        Case("Solution Control", solution + "kU 15 5[[]]\nkV 15 5 1 1\nkW 1 1 1 1\n", "missing-value", Error,
             Effect::Zero, "solution-control/kU/3", "a load takes the next line for it: \"kV 15 5 1 1\""),
        Case("Solution Control", solution + "kU 15 5 1e-05[[]]\nkV 1 1 1 1\n", "missing-value", Error,
             Effect::None, "solution-control/kU/3", "1 is read for it; those behind it are read as 0"),
        Case("Solution Control", solution + "kU 15 0.5[[]]\n", "missing-value", Error, Effect::Zero,
             "solution-control/kU/2", "it is read as 0; those behind it are read as 0, 0"),
        Case("Solution Control", solution + "kU 15 5[[]]\n", "missing-value", Error, Effect::Zero,
             "solution-control/kU/3"),
        Case("Relaxation", relaxation + "kU [[abc]] 0\nkV 1 0\n", "not-a-number", Error, Effect::Zero,
             "relaxation/kU/under"),
        Case("Relaxation", relaxation + "kU 1 [[abc]]\nkV 1 0\n", "not-a-number", Error, Effect::Zero,
             "relaxation/kU/inertial"),
        Case("Relaxation", relaxation + "kU [[0x5]] 0\nkV 1 0\n", "not-a-number", Error, Effect::Start,
             "relaxation/kU/under"),
        Case("Relaxation", relaxation + "kU 1[[]]\nkV 1 0\nkW 1 0\n", "missing-value", Error, Effect::Zero,
             "relaxation/kU/inertial", "a load takes the next line for it: \"kV 1 0\""),
        Case("Relaxation", relaxation + "kU[[]]\n", "missing-value", Error, Effect::Zero,
             "relaxation/kU/under"),
        Case("Relaxation", relaxation + "kU 1 0 [[# comment]]\n", "trailing-text", Warning, Effect::Ignored,
             "relaxation/kU"),
        Case("Relaxation", relaxation + "[[kSomethingNew]] 1 0\n", "unknown-variable", Warning,
             Effect::Ignored, "relaxation/kSomethingNew"),
        Case("Relaxation", relaxation + "[[kSomethingNew]] 1\nkU 1 0\n", "unknown-variable", Warning,
             Effect::Ignored, "relaxation/kSomethingNew", "a load takes the next line for it: \"kU 1 0\""),
        Case("Relaxation", relaxation + "kKXX 1 0\n[[kCond]] 1 0\n", "repeated-variable", Warning,
             Effect::Ignored, "relaxation/kKXX"),
        Case("Constants", constants + "kPRef [[1.0.1]]\n", "not-a-number", Error, Effect::Start,
             "constants/kPRef", "read as 1"),
        Case("Constants", constants + "kPRef[[]]\nkRhoRef 5\n", "missing-value", Error, Effect::Zero,
             "constants/kPRef", "a load takes the next line for it: \"kRhoRef 5\""),
        Case("Constants", constants + "kPRef 1 [[Pa]]\n", "trailing-text", Warning, Effect::Ignored,
             "constants/kPRef"),
        Case("Constants", constants + "kPRef 1\n[[kPRef]] 2\n", "repeated-variable", Warning, Effect::Ignored,
             "constants/kPRef"),
        Case("Constants", constants + "kU [[5]]\n", "unused-value", Warning, Effect::Lost, "constants/kU"),
        Case("Constants", constants + "[[kPreff]] 5\n", "unknown-variable", Warning, Effect::Ignored,
             "constants/kPreff", "did you mean \"kPRef\"?"),
        Case("Constants", constants + "[[kNone]] 5\n", "unknown-variable", Warning, Effect::Ignored,
             "constants/kNone"),
        Case("Relaxation", relaxation + "[[kSlipNode]] 1 0\n", "unknown-variable", Warning, Effect::None,
             "relaxation/kVeff", "a flag of nodes; it is read as kVeff"),
        Case("Solution Control", solution + "[[kSlipNode]] 15 5 1 1\n", "unknown-variable", Warning,
             Effect::None, "solution-control/kVeff"),
        Case("Constants", constants + "[[kAFac]] 5\n", "unknown-variable", Warning, Effect::None,
             "constants/kUHat"),
        Case("Constants", constants + "kInflate 1 0 1 3 0 1 3 0.45 1 0.01 [[2]] 1.05\n", "bad-switch",
             Warning, Effect::Off, "constants/kInflate/11"),
        Case("Constants", constants + "kInflate [[-1]] 0 1 3 0 1 3 0.45 1 0.01 1 1.05\n", "bad-switch",
             Warning, Effect::Off, "constants/kInflate/1"),
        Case("Constants", constants + "kInflate [[true]] 0 0 0 0 0 0 0 0 0 0 0\n", "not-an-integer", Error,
             Effect::Zero, "constants/kInflate/1"),
        Case("Constants", constants + "kInflate 1 0 1 3 0 1 3 0.45 1 0.01 1[[]]\n", "missing-value", Error,
             Effect::Zero, "constants/kInflate/12"),
        Case("Constants", constants + "kInflate 1 0 1 0 1 3 0.45 1 0.01 0 1.05 [[]]\n", "missing-value",
             Error, Effect::None, "constants/kInflate/11",
             "1 is read for it; those behind it are read as 0.05"),
        Case("Constants", constants + "kSmokeOn 21000.5 3 0.05[[]]\n", "missing-value", Error, Effect::None,
             "constants/kSmokeOn/1"),
        Case("Constants", constants + "kAutoYP 0 1 36 [[1.5]] 300 1\n", "not-an-integer", Error,
             Effect::Start, "constants/kAutoYP/4", "values behind it: 0.5, 300"),
    };
    for (const Case& row : cases)
        expectFinding(row);
}

TEST(ControlFileCheckTest, FindsFaultsInFlags)
{
    const std::string flags = " *** Flag section\n";
    const Case cases[] = {
        Case("Flag section", flags + "[[2]]\nx 1\n", "flag-count", Error, Effect::Stops, "flags",
             "2 flags are announced and 1 are there", "1"),
        Case("Flag section", flags + "\n [[0]]\nx 1\n\ny 2\n", "flag-count", Error, Effect::Stops, "flags",
             "0 flags are announced and 2 are there", "2"),
        Case("Flag section", flags + "[[abc]]\nx 1\n", "flag-count", Error, Effect::Stops, "flags",
             "0 flags are announced and 1 are there", "1"),
        Case("Flag section", flags + "[[x]]\n", "not-an-integer", Error, Effect::Zero, "flags"),
        Case("Flag section", flags + "[[x]] 1\n", "not-an-integer", Error, Effect::Zero, "flags"),
        Case("Flag section", flags + "[[x]] 1\ny 2\n", "flag-count", Error, Effect::Stops, "flags",
             "0 flags are announced and 1 are there", "1"),
        Case("Flag section", flags + "[[1x]]\nx 1\n", "not-an-integer", Error, Effect::Start, "flags"),
        Case("Flag section", flags + "[[4294967297]]\nx 1\n", "out-of-range", Error, Effect::Wrapped,
             "flags"),
        Case("Flag section", flags + "\n[[]]", "missing-value", Error, Effect::Zero, "flags"),
        Case("Flag section", flags + "0 [[flags]]\n", "trailing-text", Warning, Effect::Ignored, "flags"),
        Case("Flag section", flags + "1\nx 1 [[2 3]] \n", "trailing-text", Warning, Effect::Ignored,
             "flags/x"),
        Case("Flag section", flags + "2\nx 1\n [[x]] 2\n", "repeated-flag", Warning, Effect::None,
             "flags/x#2"),
        Case("Flag section", flags + "2\na/#%\xC3\xA4 1\n[[a/#%\xC3\xA4]] 2\n", "repeated-flag", Warning,
             Effect::None, "flags/a%2F%23%25\xC3\xA4#2"),
    };
    for (const Case& row : cases)
        expectFinding(row);
}

TEST(ControlFileCheckTest, FindsFaultsInWhatALoadDoesNotTake)
{
    const std::string convergence = " *** Auto Convergence Control\n";
    const Case cases[] = {
        Case("Free Surface", " *** [[Free Surface]]\n1\n0 0 0\n0 0\n0 0\n0 0\n", "not-loaded", Note,
             Effect::Ignored, "free-surface"),
        Case("Free Surface", " ***  [[Free  Surface]] \n0\n0 0 0\n0 0\n0 0\n", "not-loaded", Note,
             Effect::Ignored, "free-surface", "", "Free Surface"),
        Case("Field Variable Output", " *** [[Field Variable Output]]\nkU 0\n", "not-loaded", Note,
             Effect::Ignored, "field-variable-output"),
        Case("Monitor Points", " *** [[Monitor Points]]\n1\n0 0 0\n", "not-loaded", Note, Effect::Ignored,
             "monitor-points"),
        Case("", " *** [[Scalars]]\n1\n", "not-loaded", Note, Effect::Ignored, "scalars"),
        Case("Property Settings", " *** [[Property Settings]]\n1 0 0 0 Fan\n" + endOfMaterial, "not-loaded",
             Note, Effect::Ignored, "property-settings"),
        Case("Property Settings", " *** [[Property Settings]]\n" + solid("1 0 0 0 Steel\n"), "not-loaded",
             Note, Effect::Ignored, "property-settings"),
        Case("Auto Convergence Control", convergence + "1 [[2]]\n", "bad-switch", Warning, Effect::Ignored,
             "auto-convergence/stop", "it is ignored"),
        Case("Auto Convergence Control", convergence + "[[on]] 1\n", "not-an-integer", Error, Effect::Ignored,
             "auto-convergence/on"),
        Case("Auto Convergence Control", convergence + "1 1\nField  Fluctuation [[small]]\n", "not-a-number",
             Error, Effect::Ignored, "auto-convergence/field-fluctuation"),
        Case("Auto Convergence Control", convergence + "1[[]]\n", "missing-value", Error, Effect::None,
             "auto-convergence/stop"),
        Case("Auto Convergence Control", convergence + "0x1[[]]\n", "missing-value", Error, Effect::None,
             "auto-convergence/stop"),
        Case("Auto Convergence Control", convergence + "[[1;1]]\n", "not-an-integer", Error, Effect::Ignored,
             "auto-convergence/on"),
        Case("Auto Convergence Control", convergence + "1 [[x]] 1\n", "not-an-integer", Error,
             Effect::Ignored, "auto-convergence/stop"),
        Case("Auto Convergence Control", convergence + "1 1\nField Fluctuation [[~]] 0.1\n", "not-a-number",
             Error, Effect::Ignored, "auto-convergence/field-fluctuation"),
        Case("Auto Convergence Control", convergence + "1 1 [[0]]\n", "trailing-text", Warning,
             Effect::Ignored, "auto-convergence"),
        Case("Auto Convergence Control", convergence + "1 1\nField Fluctuation[[]]\n", "missing-value", Error,
             Effect::None, "auto-convergence/field-fluctuation"),
        Case("Auto Convergence Control", convergence + "1 1\n Field  Fluctuation 0.1 [[0.2 %]]\n",
             "trailing-text", Warning, Effect::Ignored, "auto-convergence/field-fluctuation"),
        Case("Auto Convergence Control", convergence + "[[]]Field Fluctuation 0.1\n", "missing-value", Error,
             Effect::None, "auto-convergence/on"),
        Case("Property Settings", materials(solid("1 0 0 0 Steel\n") + solid("2 0 0 0 [[Steel]]\n")),
             "repeated-material", Warning, Effect::None, "property-settings/Steel#2"),
        Case("Property Settings", materials(solid("1 0 0 0 Steel\n") + solid("[[1]] 0 0 0 Iron\n")),
             "repeated-id", Warning, Effect::None, "property-settings/Iron/id"),
        Case("Property Settings", materials(solid("1 0 0 [[x]] Steel\n")), "bad-material", Warning,
             Effect::None, "property-settings"),
        Case("Property Settings", materials(solid("1 0 0 0 Steel\n", "[[kRhoo]] 0 1 8000\n")), "bad-material",
             Warning, Effect::None, "property-settings/Steel"),
        Case("Property Settings", materials(solid("1 0 0 0 Steel\n", "kRho 0 1[[]]\n")), "bad-material",
             Warning, Effect::None, "property-settings/Steel"),
        Case("Property Settings",
             materials(solid("1 0 0 0 Steel\n", "kRho 0 15 1 2 5 kT\n   1 0\n   2 [[x]]\n")), "bad-material",
             Warning, Effect::None, "property-settings/Steel"),
        Case("Property Settings",
             materials(solid("1 0 0 0 Steel\n", "kRho 0 15 [[3]] 2 5 kT\n   1 0\n   2 5\n")), "bad-material",
             Warning, Effect::None, "property-settings/Steel"),
        Case("Property Settings",
             materials(solid("1 0 0 0 Steel\n", "kRho 0 15 1 2 0\n   1 0\n   2 [[x]]\n")), "bad-material",
             Warning, Effect::None, "property-settings/Steel"), // of no variable
        Case("Property Settings",
             materials(solid("1 0 0 0 Steel\n", "kRho 0 15 1 2 [[-1]]\n   1 0\n   2 5\n")), "bad-material",
             Warning, Effect::None, "property-settings/Steel"),
        Case("Property Settings",
             materials(solid("1 0 0 0 Steel\n", "kRho 0 15 1 2 [[362]]\n   1 0\n   2 5\n")), "bad-material",
             Warning, Effect::None, "property-settings/Steel"),
        Case("Property Settings", materials("1 0 0 0 Fan\n[[]]"), "bad-material", Warning, Effect::None,
             "property-settings/Fan"),
        Case("Property Settings", materials("1 0 0 0 Air\n1 2 3 4\n[[1 1 1 0 1 3]]\n" + endOfMaterial),
             "bad-material", Warning, Effect::None, "property-settings/Air"),
    };
    for (const Case& row : cases)
        expectFinding(row);
}

std::string fluid(const std::string& values, const std::string& diffusion = "kSpecDifu 0 1 0\n")
{
    return "1 0 0 0 Air\n" + values
        + "1 1 1 0 1 2\n0 0 0\n0 0 0\n0\n0 0 0\n0 0 0\n0 0 0\n0 0 0\n0 0 0\n0 0 0\n"
          "kRho 0 1 1\nkVisc 0 1 1\nkKXX 0 1 1\nkCp 0 1 1\nkSurfT 0 1 0\nkEmis 0 1 0\n"
          "kTransmis 0 1 0\nkElRes 0 1 0\nkWallRough 0 1 0\n"
        + diffusion + endOfMaterial;
}

TEST(ControlFileCheckTest, FindsWhateverIsWrongInAMaterial)
{
    const auto expectBad = [](const std::string& text, const char* address, const char* found = nullptr) {
        expectFinding(Case("Property Settings", materials(text), "bad-material", Warning, Effect::None,
                           address, "", found));
    };
    for (const char* values : {"1 2 [[x]] 4\n", "1 2 3 4 [[5]]\n", "1 2 3[[]]\n", "1 2 3 4\n[[0]]\n"})
        expectBad(fluid(values), "property-settings/Air");
    expectBad("1 0 0 0 Air\n1 2 3 4\n[[]]", "property-settings/Air");
    expectFinding(Case("Property Settings", materials(solid("1 0 0 0 Steel\n", "kRho 0 1[[]]\n")),
                       "bad-material", Warning, Effect::None, "property-settings/Steel",
                       "something is missing"));
    for (const char* diffusion :
         {"[[kSpec]] 0 1 0\n", "kSpecDifu [[x]] 1 0\n", "kSpecDifu 0 [[2]] 0\n", "kSpecDifu 0 1 [[x]]\n",
          "kSpecDifu 0 1 0 [[0]]\n", "kSpecDifu 0 1 0\n[[0 more]]\n"})
        expectBad(fluid("1 2 3 4\n", diffusion), "property-settings/Air");
    for (const char* density :
         {"kRho [[x]] 1 8000\n", "kRho 0 [[x]] 8000\n", "kRho 0 [[3000000000]] 8000\n",
          "kRho 0 1 8000 [[kg]]\n", "kRho 0 2 [[x]]\n", "kRho 0 2 287 [[x]]\n", "kRho 0 8 [[x]]\n",
          "kRho 0 15 [[x]] 2 5 kT\n", "kRho 0 15 1 [[x]] 5 kT\n", "kRho 0 15 1 2 [[x]] kT\n",
          "kRho 0 15 1 2 [[9999]] kT\n", "kRho 0 15 1 2 [[-1]] kT\n", "kRho 0 15 1 2 5 [[kU]]\n",
          "kRho 0 15 [[-2]] -1 5 kT\n", "kRho 0 15 1 2[[]]\n", "kRho 0 15 0 1 5 kT [[x]]\n",
          "kRho 0 15 0 1 5 kT\n[[x]] 1\n", "kRho 0 15 0 1 5 kT\n1 1 [[x]]\n"})
        expectBad(solid("1 0 0 0 Steel\n", density), "property-settings/Steel");
}

TEST(ControlFileCheckTest, FindsFaultsInOneOfSeveralMaterialsOfAName)
{
    const std::string steel = solid("1 0 0 0 Steel\n");
    const std::string iron = solid("0 0 0 0 Iron\n");
    const std::string second = "0 0 0 0 Iron/\xC3\xA4\n";
    const Case cases[] = {
        Case("Property Settings", materials(steel + solid(second, "[[kRhoo]] 0 1 8000\n") + iron),
             "bad-material", Warning, Effect::None, "property-settings/Iron%2F\xC3\xA4"),
        Case("Property Settings", materials(steel + iron + solid("0 0 0 0 [[Iron]]\n")), "repeated-material",
             Warning, Effect::None, "property-settings/Iron#2"),
        Case("Property Settings",
             materials(solid("0 0 0 0\n") + solid("0 0 0 0\n", "kRho 0 1 [[x]]\n") + steel), "bad-material",
             Warning, Effect::None, "property-settings/#2"),
    };
    for (const Case& row : cases)
        expectFinding(row);
}

TEST(ControlFileCheckTest, FindsSectionsThatStandThereTwice)
{
    const Case cases[] = {
        Case("Title", " *** Title\n *** [[Title]]\nCavity\n", "repeated-section", Warning, Effect::Ignored,
             "title", "overrides"),
        Case("Equation Selection", " *** Equation Selection\n ***  [[Equation Selection]]\n1\n1\n0\n1\n0\n",
             "repeated-section", Warning, Effect::Ignored, "equation-selection", "overrides"),
        Case("Flag section", " *** Flag section\n *** [[Flag section]]\n0\n", "repeated-section", Warning,
             Effect::Ignored, "flags", "overrides"),
        Case("", " *** [[Units]]\n5\n", "repeated-section", Warning, Effect::Ignored, "units", "overrides"),
        Case("", " *** [[Free Surface]]\n0\n0 0 0\n0 0\n0 0\n0 0\n", "repeated-section", Warning,
             Effect::Ignored, "free-surface"),
    };
    for (const Case& row : cases) {
        Sections sections;
        sections.section(row.section) = row.text;
        expectOnly(row, Marked(sections.text()));
        expectOnly(row, Marked(sections.text()).withCarriageReturns());
        expectOnly(row, Marked(sections.text()).inUtf16());
    }
}

TEST(ControlFileCheckTest, FindsBadCharacters)
{
    using namespace std::string_literals;
    struct Row {
        const char* section;
        std::string text;
        std::string line; ///< from the line of the section's title on
    };
    const Row rows[] = {
        {"Title",             " *** Title\n\xC3\xA4\xFF\xFE\n",                          "1:2 not-utf8 replaced title FF"              },
        {"Title",             " *** Title\na\rb\n",                                      "1:2 stray-character ignored title "          },
        {"Title",             " *** Title\na\0b\n"s,                                     "1:2 stray-character none title "             },
        {"Title",
         " *** Title\n\xEF\xBB\xBF"
         "a\n",                                                                          "1:1 stray-character ignored title "          },
        {"Units",             " *** Units\n0\n\n\xC3\n",                                 "3:1 trailing-text ignored units \xEF\xBF\xBD"},
        {"Units",             " *** Units\n\xFF\n",                                      "1:1 not-an-integer zero units \xEF\xBF\xBD"  },
        {"Units",             " *** Units\n0\r \n",                                      "1:2 stray-character ignored  "               },
        {"Constants",         " *** Constants\n\xE2\x82kPRef 5\n",
         "1:1 unknown-variable ignored constants/\xEF\xBF\xBD\xEF\xBF\xBDkPRef "
         "\xEF\xBF\xBD\xEF\xBF\xBDkPRef"                                                                                               },
        {"Flag section",      " *** Flag section\n1\nx \xFF\n",                          "2:3 not-utf8 replaced flags/x FF"            },
        {"Monitor Points",    " *** Monitor \xFF\n",
         "0:6 unknown-section ignored Monitor \xEF\xBF\xBD Monitor \xEF\xBF\xBD"                                                       },
        {"Property Settings", " *** Property Settings\n1 0 0 0 A\xFF\n" + endOfMaterial,
         "1:10 not-utf8 replaced property-settings/A\xEF\xBF\xBD/name FF"                                                              },
        {"Scalars",           " *** Scalars\n\xF0\x9F\n",                                "1:1 not-utf8 replaced  F0"                   },
    };
    for (const auto& [section, text, line] : rows) {
        Sections sections;
        sections.section(section) = text;
        sections.moveToFront(text);
        const CheckedFile checked = checkedBytes("file.ctl", sections.text());
        std::vector<std::string> lines;
        for (const Finding& finding : checked.findings) {
            if (finding.code == "not-loaded" || finding.code == "missing-section")
                continue;
            lines.push_back(std::to_string(finding.place.line - 3) + ':'
                            + std::to_string(finding.place.column) + ' ' + finding.code.toStdString() + ' '
                            + effectName(finding.effect).toStdString() + ' ' + finding.address.toStdString()
                            + ' ' + finding.found.toStdString());
        }
        EXPECT_EQ(lines, std::vector<std::string> {line}) << text;
    }
}

TEST(ControlFileCheckTest, TellsOfBadCharactersInTheFirstLinesOnce)
{
    const std::string start = "NEREO control file rev 07 NEREO Ver 2024.0.0.0\n";
    const std::string branch = "NEREO 2024 (release)\n";
    struct Row {
        std::string header;
        const char* code;
        const char* address;
    };
    const Row rows[] = {
        {"NEREO \xFF file rev 07 NEREO Ver 2024.0.0.0\n" + branch,       "bad-header",      "header/1"},
        {"NEREO control file rev 07 NEREO Ver 2024.0.0.\xFF\n" + branch, "bad-version",     "header/1"},
        {"NEREO control file rev 07 NEREO Ver 2024.\r0.0.0\n" + branch,  "stray-character", "header/1"},
        {start + "\xFF\n",                                               "bad-header",      "header/2"},
        {start + "NEREO 2024 (\xFF)\n",                                  "not-utf8",        "header/2"},
        {start + branch + "\xFF\n",                                      "missing-title",   ""        },
    };
    for (const auto& [header, code, address] : rows) {
        Sections sections;
        sections.header() = header;
        std::vector<Finding> findings = checkedBytes("file.ctl", sections.text(), FileKind::Control).findings;
        findings.erase(std::remove_if(findings.begin(), findings.end(), isUsual), findings.end());
        ASSERT_EQ(findings.size(), 1U) << header;
        EXPECT_EQ(findings[0].code, code) << header;
        EXPECT_EQ(findings[0].address, address) << header;
    }
}

TEST(ControlFileCheckTest, FindsFaultsInHeadersAndTitles)
{
    const std::string version = "NEREO control file rev 07 NEREO Ver ";
    const std::string branch = "NEREO 2024 (release)\n";
    const Case cases[] = {
        Case("header", version + "[[2024.0]]\n" + branch, "bad-version", Warning, Effect::Zero, "header/1",
             "read as 2024.0.0.0"),
        Case("header", version + "[[2024.0.x.0]]  \n" + branch, "bad-version", Warning, Effect::Zero,
             "header/1"),
        Case("header", version + "[[]]\n" + branch, "bad-version", Warning, Effect::Zero, "header/1",
             "read as 0.0.0.0"),
        Case("header", "[[Something else]]\n" + branch, "bad-header", Warning, Effect::None, "header/1",
             "the version is read as 0.0.0.0"),
        Case("header", "[[\xC3\xA4 Ver 2024.0.0.0]]\n" + branch, "bad-header", Warning, Effect::None,
             "header/1"),
        Case("header", version + "2024.0.0.0\n[[release]]\n", "bad-header", Warning, Effect::None,
             "header/2"),
        Case("header", version + "2024.0.0.0\n" + branch + "[[no title]]\n", "missing-title", Error,
             Effect::Ignored),
        Case("header", version + "2024.0.0.0\n" + branch + "[[]]\n", "missing-title", Error, Effect::None),
        Case("header", version + "2024.0.0.0\n" + branch + "[[]]\n1 2\n", "missing-title", Error,
             Effect::Ignored),
        Case("header", version + "2024.0.0.0\n[[]]\xEF\xBB\xBF" + branch, "stray-character", Warning,
             Effect::Ignored, "header/2"),
        Case("Units", " *** [[Unit]]\n0\n", "unknown-section", Warning, Effect::Ignored, "Unit",
             "did you mean \"Units\"?"),
        Case("", " *** [[Mesh Adaptation]]\n5 0.25\n", "unknown-section", Warning, Effect::Ignored,
             "Mesh Adaptation"),
        Case("", " *** [[units]]\n5\n", "unknown-section", Warning, Effect::Ignored, "units",
             "did you mean \"Units\"?"),
    };
    for (const Case& row : cases)
        expectFinding(row);
}

/// The first title is taken for the second line then.
TEST(ControlFileCheckTest, FindsAMissingHeaderOnce)
{
    const std::string version = "NEREO control file rev 07 NEREO Ver 2024.0.0.0\n";
    const char message[] =
        "a line is missing before it, and the first title with what stands up to the next one is ignored";
    const Case cases[] = {
        Case("header", version + "[[ *** Title]]\nCavity\n", "bad-header", Warning, Effect::Ignored,
             "header/2", message),
        Case("header", version + "[[ *** Units ]]\n", "bad-header", Warning, Effect::Ignored, "header/2",
             message),
        Case("header", "[[NEREO 2024 (release)]]\n *** Title\nCavity\n", "bad-header", Warning,
             Effect::Ignored, "header/1", message),
        Case("header", "[[NEREO 2023 ()]]\n *** Constants\n", "bad-header", Warning, Effect::Ignored,
             "header/1", "the version is read as 0.0.0.0; a line is missing before it"),
    };
    for (const Case& row : cases)
        expectFinding(row);
}

TEST(ControlFileCheckTest, FindsNoSectionMissingWhoseTitleIsTakenForAHeader)
{
    Sections sections;
    sections.header() = "NEREO 2024 (release)\n";
    const std::string wholeFile = sections.text();
    EXPECT_EQ(linesOf(checkedBytes("file.ctl", wholeFile)).find("missing-section"), std::string::npos);
}

TEST(ControlFileCheckTest, TellsOfEachBadHeader)
{
    const std::string version = "NEREO control file rev 07 NEREO Ver 2024.0.0.0\n";
    const std::string branch = "NEREO 2024 (release)\n";
    const std::pair<std::string, std::string> rows[] = {
        {branch + version,                   "header/1 header/2 "},
        {branch + " *** Something\n",        "header/1 header/2 "},
        {version + version + branch,         "header/2 "         }, // the second stands in the third line
        {version + version + branch + "1\n", "header/2 title "   },
        {version + "a\nno title\n",          "header/2 title "   },
        {"a\n *** Title\nCavity\n",          "header/1 header/2 "},
    };
    for (const auto& [header, expected] : rows) {
        Sections sections;
        sections.header() = header;
        std::string found;
        for (const Finding& finding : checkedBytes("file.ctl", sections.text(), FileKind::Control).findings) {
            if (finding.code == "bad-header")
                found += finding.address.toStdString() + ' ';
            else if (finding.code == "missing-title")
                found += "title ";
        }
        EXPECT_EQ(found, expected) << header;
    }
}

TEST(ControlFileCheckTest, FindsTitlesThatALoadTakesForLinesOfTheSectionBefore)
{
    const char message[] = "is no title; it and what follows are taken for a part of the section before";
    const Case cases[] = {
        Case("Batch", " *** Batch\n0\n[[*** Constants]]\nkPRef 5\n", "unknown-section", Warning,
             Effect::Ignored, "constants", message),
        Case("Auto Convergence Control", " *** Auto Convergence Control\n1 1\n  [[***  Units]] \n5\n",
             "unknown-section", Warning, Effect::Ignored, "units", message),
        Case("Scalars", " *** Scalars\n[[****Flag section]]\n1\nx 1\n", "unknown-section", Warning,
             Effect::Ignored, "flags", message),
        Case("Relaxation", " *** Relaxation\nkU 1 0\n[[***Constants]]\nkPRef 5\nkRhoRef 1\n",
             "unknown-section", Warning, Effect::Ignored, "constants",
             "a load takes the next line for it: \"kPRef 5\""),
        Case("Relaxation", " *** Relaxation\nkU 1 0\n[[*** Solution Control]]\nkU 15 5 1 1\n",
             "unknown-section", Warning, Effect::Ignored, "solution-control", message),
        Case("Units", " *** Units\n0\n\n[[***Property Settings]]\n", "unknown-section", Warning,
             Effect::Ignored, "property-settings", message),

        // without asterisks, or with something else before the name
        Case("Relaxation", " *** Relaxation\nkU 0.4 0\n  [[Solution Control]]\nkU 15 5 1 1\nkPSrc 1 1\n",
             "unknown-section", Warning, Effect::Ignored, "solution-control", message),
        Case("Relaxation", " *** Relaxation\n[[# Constants]]\nkPRef 5\n", "unknown-section", Warning,
             Effect::Ignored, "constants", message),
        Case("Constants", " *** Constants\nkPRef 5\n[[- *** Flag section]]\n1\nx 1\n", "unknown-section",
             Warning, Effect::Ignored, "flags", message),
        Case("Units", " *** Units\n0\n[[Equation  Selection]]\n1\n1\n", "unknown-section", Warning,
             Effect::Ignored, "equation-selection", message),
        Case("Solar Heating", " *** [[Solar Heating]]\n0 0\nRestart\n", "not-loaded", Note, Effect::Ignored,
             "solar-heating"), // of which nobody knows what it may hold

        // with a mark that is damaged
        Case("Units", " *** Units\n0\n[[*x* Transient Data]]\n0 0\n", "unknown-section", Warning,
             Effect::Ignored, "transient-data", message),
        Case("Batch", " *** Batch\n0\n[[***?Constants]]\nkPRef 5\n", "unknown-section", Warning,
             Effect::Ignored, "constants", message),
        Case("Batch", " *** Batch\n0\n[[then Solar Heating]]\n0 0\n", "unknown-section", Warning,
             Effect::Ignored, "solar-heating", message), // which a writer puts behind the other
        Case("Property Settings", " *** Property Settings\n[[x** Constants]]\nkPRef 5\n", "unknown-section",
             Warning, Effect::Ignored, "constants", message),

        // behind a value, since the end of its line is missing
        Case("Units", " *** Units\n0 [[*** Transient Data]] \n0 0\n0.001\n-1\n", "unknown-section", Warning,
             Effect::Ignored, "transient-data", message),
        Case("Relaxation", " *** Relaxation\nkU 0.4 0  [[*** Solution Control]]\nkU 15 5 1 1\nkPSrc 1 1\n",
             "unknown-section", Warning, Effect::Ignored, "solution-control", message),
        Case("Constants", " *** Constants\nkPRef 5 [[***Flag section]]\n1\nx 1\n", "unknown-section", Warning,
             Effect::Ignored, "flags", message),
    };
    for (const Case& row : cases)
        expectFinding(row);
}

TEST(ControlFileCheckTest, FindsWhatIsWrongInTheSectionsBehindALostTitle)
{
    Sections sections;
    sections.section("Relaxation") = " *** Relaxation\nkU 0.4 0 *** Constants\nkPRef 5\n";
    sections.section("Title") = "";
    sections.section("Scalars") = " *** Title\nCavity\nand more\n";
    const std::string lines = linesOf(checkedBytes("file.ctl", sections.text()));
    EXPECT_NE(lines.find("[unknown-section] constants"), std::string::npos) << lines;
    EXPECT_NE(lines.find("[trailing-text] title"), std::string::npos) << lines;
}

TEST(ControlFileCheckTest, TakesNoFlagForATitle)
{
    Sections sections;
    sections.section("Restart") = "";
    sections.section("Flag section") = " *** Flag section\n1\nmode Restart\n";
    const std::string lines = linesOf(checkedBytes("file.ctl", sections.text()));
    EXPECT_NE(lines.find("[missing-section] restart"), std::string::npos) << lines;
}

/// Nobody has to be told besides that the section is missing.
TEST(ControlFileCheckTest, FindsNoSectionMissingWhoseTitleIsLost)
{
    struct Row {
        const char* section; ///< that has the title as a line
        std::string text;
        const char* lost;
        const char* code;
        const char* address;
    };
    const Row rows[] = {
        {"Batch",        " *** Batch\n0\n[[***Constants]]\nkPRef 5\n",        "Constants",          "unknown-section", "constants"},
        {"Title",        " *** Title\na\n[[*** Equation Selection]]\n1\n",    "Equation Selection", "unknown-section",
         "equation-selection"                                                                                                     },
        {"Flag section", " *** Flag section\n[[0]]\n*** Monitor Points\n0\n", "Monitor Points",     "flag-count",
         "flags"                                                                                                                  },
    };
    for (const auto& [section, text, lost, code, address] : rows) {
        Sections sections;
        sections.section(lost) = "";
        sections.section(section) = text;
        const bool isCount = std::strcmp(code, "flag-count") == 0;
        expectOnly(Case(section, text, code, isCount ? Error : Warning,
                        isCount ? Effect::Stops : Effect::Ignored, address, "", isCount ? "2" : nullptr),
                   Marked(sections.text()));
    }
    Sections sections;
    sections.section("Title") = "[[***Title]]\nCavity\n";
    expectOnly(Case("Title", "", "missing-title", Error, Effect::Ignored), Marked(sections.text()));
}

TEST(ControlFileCheckTest, FindsAValueMissingBehindABadName)
{
    Sections sections;
    sections.section("Sequential Solver Iterations") =
        " *** Sequential Solver Iterations\n100\n10\n0\nkPressure\n";
    const std::string lines = linesOf(checkedBytes("file.ctl", sections.text()));
    EXPECT_NE(lines.find("[unknown-variable] sequential-solver/variable"), std::string::npos) << lines;
    EXPECT_NE(lines.find("[missing-value] sequential-solver/tolerance"), std::string::npos) << lines;
}

/// A section that stands elsewhere isn't missing where an unknown one stands.
TEST(ControlFileCheckTest, SaysWhichSectionAnUnknownOneStandsFor)
{
    const Case row("Auto Convergence Control", " *** [[Nothing]]\n", "unknown-section", Warning,
                   Effect::Ignored, "Nothing",
                   "; a writer puts the section \"Auto Convergence Control\" here");
    Sections sections;
    sections.section("Auto Convergence Control") = row.text;
    expectOnly(row, Marked(sections.text()));

    std::string& first = sections.section("Title");
    first = " *** Auto Convergence Control\n1 1\n" + first;
    const std::string lines = linesOf(checkedBytes("file.ctl", Marked(sections.text()).bytes()));
    EXPECT_NE(lines.find("\"Nothing\" is no section; it is ignored [unknown-section]"), std::string::npos)
        << lines;
}

TEST(ControlFileCheckTest, FindsWhatIsMissingAtTheEndOfTheFile)
{
    struct Row {
        const char* section;
        std::string text;
        const char* code;
        Severity severity;
        Effect effect;
        const char* address;
    };
    const Row rows[] = {
        {"Units",              "",                        "missing-section", Note,  Effect::None, "units"         },
        {"Monitor Points",     "",                        "missing-section", Note,  Effect::None, "monitor-points"},
        {"Units",              " *** Units",              "missing-value",   Error, Effect::None, "units"         },
        {"Title",              " *** Title\n",            "missing-value",   Error, Effect::None, "title"         },
        {"Equation Selection", " *** Equation Selection", "missing-value",   Error, Effect::None,
         "equation-selection/1"                                                                                   },
        {"Flag section",       " *** Flag section\n",     "missing-value",   Error, Effect::None, "flags"         },
    };
    for (const Row& row : rows) {
        Sections sections;
        sections.section(row.section) = row.text;
        sections.moveToEnd(row.text);
        const CheckedFile checked = checkedBytes("file.ctl", sections.text());
        SCOPED_TRACE(row.text + '\n' + linesOf(checked));
        ASSERT_EQ(checked.findings.size(), 2U);
        const Finding& finding = checked.findings[1];
        EXPECT_EQ(finding.code, row.code);
        EXPECT_EQ(finding.severity, row.severity);
        EXPECT_EQ(effectName(finding.effect), effectName(row.effect));
        EXPECT_EQ(finding.address, row.address);
        EXPECT_EQ(finding.place.offset, qint64(sections.text().size()));
    }
}

} // namespace
} // namespace Nereo::Inspection

#include "Checked.h"

#include <NereoInspection/Outline.h>

#include <limits>
#include <vector>

namespace Nereo::Inspection {
namespace {

constexpr auto Error = Severity::Error;
constexpr auto Warning = Severity::Warning;

TEST(ConfigurationTextCheckTest, FindsNothingWrongInGoodFiles)
{
    for (const char* text : {
             "MaxIter 5",
             "MaxIter 5\n",
             "MaxIter 5\r\n",
             "\n\n MaxIter\t-5 \n\nWidth +7\n",
             "AnalyzePath  C:/My   Runs/a \nJobPrefix\n",
             "ConvergenceCriteria 1e-3\nStopTime inf\nTimeStepSize .5\n",
         })
        expectClean("file.cfg", text);
    EXPECT_EQ(linesOf(check(NEREO_SAMPLES_DIR "/solver.cfg")), "");
}

TEST(ConfigurationTextCheckTest, FindsEachFaultAtItsPlace)
{
    const Fault faults[] = {
        {"MaxIter 5\n[[a/b#c%d]] 5\n",                   "unknown-key",  Error,   Effect::Throws,  "a%2Fb%23c%25d"},
        {"JobPrefix \xC3\xA4\n[[\xF0\x9F\x98\x80]] 5\n", "unknown-key",  Error,   Effect::Throws,
         "\xF0\x9F\x98\x80"                                                                                       },
        {"MaxIter 5\nWidth 7\n[[MaxIter]] 6\n",          "repeated-key", Warning, Effect::Ignored, "MaxIter"      },
        {"MaxIter 5\n[[]]\n",                            "blank-end",    Error,   Effect::Throws,  ""             },
        {"MaxIter 5\n[[]] ",                             "blank-end",    Error,   Effect::Throws,  ""             },
        {"MaxIter 5\n[[]]\n\n \t\n",                     "blank-end",    Error,   Effect::Throws,  ""             },
    };
    for (const Fault& fault : faults)
        expectFinding("file.cfg", fault, true);
}

TEST(ConfigurationTextCheckTest, FindsWhatIsNoNumber)
{
    const Fault faults[] = {
        {"MaxIter \t[[5.0]] \n",                "not-an-integer", Error, Effect::Zero,     "MaxIter" },
        {"MaxIter [[0x10]]",                    "not-an-integer", Error, Effect::Zero,     "MaxIter" },
        {"MaxIter [[1 2]]\n",                   "not-an-integer", Error, Effect::Zero,     "MaxIter" },
        {"MaxIter [[2147483648]]\n",            "out-of-range",   Error, Effect::Zero,     "MaxIter" },
        {"MaxIter [[-99999999999999999999]]\n", "out-of-range",   Error, Effect::Zero,     "MaxIter" },
        {"MaxIter[[]]\nWidth 7\n",              "missing-value",  Error, Effect::Zero,     "MaxIter" },
        {"Width 7\nMaxIter  [[]]",              "missing-value",  Error, Effect::Zero,     "MaxIter" },
        {"StopTime [[abc]]\n",                  "not-a-number",   Error, Effect::Zero,     "StopTime"},
        {"StopTime [[1,5]]\n",                  "not-a-number",   Error, Effect::Zero,     "StopTime"},
        {"StopTime [[\xC3\xA4]]\n",             "not-a-number",   Error, Effect::Zero,     "StopTime"},
        {"StopTime [[1e400]]\n",                "out-of-range",   Error, Effect::Infinite, "StopTime"},
        {"StopTime [[-1E+400]]\n",              "out-of-range",   Error, Effect::Infinite, "StopTime"},
        {"StopTime [[1e-400]]\n",               "out-of-range",   Error, Effect::Zero,     "StopTime"},
        {"StopTime [[]]\n",                     "missing-value",  Error, Effect::Zero,     "StopTime"},
    };
    for (const Fault& fault : faults)
        expectFinding("file.cfg", fault, true);
}

TEST(ConfigurationTextCheckTest, SaysWhatBecomesOfIt)
{
    const Fault faults[] = {
        {"MaxIter 5\n[[Unheard]] of\n", "unknown-key",    Error, Effect::Throws, "Unheard", "a load throws"},
        {"MaxIter 5\n  [[MaxItr]] 5\n", "unknown-key",    Error, Effect::Throws, "MaxItr",
         "did you mean \"MaxIter\"?"                                                                       },
        {"MaxIter [[abc]]\n",           "not-an-integer", Error, Effect::Zero,   "MaxIter", "read as 0"    },
    };
    for (const Fault& fault : faults)
        expectFinding("file.cfg", fault, true);
}

TEST(ConfigurationTextCheckTest, CountsWhiteSpaceBeyondAsciiInTheColumns)
{
    const Fault faults[] = {
        {"MaxIter 5\n\xE2\x80\x83[[Unheard]] 5\n",  "unknown-key",    Error,   Effect::Throws,  "Unheard" },
        {"MaxIter 5\n\xE2\x80\x83[[MaxIter]] 6\n",  "repeated-key",   Warning, Effect::Ignored, "MaxIter" },
        {"\xE2\x80\x83MaxIter\xE2\x80\x83[[x]]\n",  "not-an-integer", Error,   Effect::Zero,    "MaxIter" },
        {"StopTime\xC2\xA0[[\xC3\xA4]] \n",         "not-a-number",   Error,   Effect::Zero,    "StopTime"},
        {"\xE3\x80\x80StopTime\xE2\x80\x83 [[]]\n", "missing-value",  Error,   Effect::Zero,    "StopTime"},
    };
    for (const Fault& fault : faults)
        expectFinding("file.cfg", fault, true);
}

TEST(ConfigurationTextCheckTest, KnowsPlacesBehindMuchWhiteSpace)
{
    constexpr int block = 16 * 1024; // in which the file is read
    for (const std::string space : {"\n", " \n", "\t\t\n\n", " ", "\xE2\x80\x83\n"}) {
        for (int size = block - 13; size < block - 6; size += 1 + int(space.size()) / 3) {
            std::string much;
            while (int(much.size()) < size)
                much += space;
            const Fault faults[] = {
                {"MaxIter 5\n" + much + " [[Unheard]] 5\n", "unknown-key", Error, Effect::Throws, "Unheard"},
                {"MaxIter 5\n[[]]" + much,                  "blank-end",   Error, Effect::Throws},
                {"MaxIter 5\n" + much + much + "\nWidth [[x]]\n" + much + "\nStopTime 5\n",                         "not-an-integer",
                 Error,                                             Effect::Zero,        "Width"         },
            };
            for (const Fault& fault : faults)
                expectFinding("file.cfg", fault, true);
            ASSERT_FALSE(HasFailure()) << size;
        }
    }
}

TEST(ConfigurationTextCheckTest, FindsBadCharactersInMuchWhiteSpace)
{
    const std::string lines(20'000, '\n');
    const CheckedFile checked = checkedBytes(
        "file.cfg", "MaxIter 5\n" + lines + "\r \n" + lines + "\xFF" + lines + "Width x\n" + lines);
    ASSERT_EQ(checked.findings.size(), 4U) << linesOf(checked);
    EXPECT_EQ(checked.findings[0].code, "stray-character");
    EXPECT_EQ(checked.findings[0].place.line, 20'002);
    EXPECT_EQ(checked.findings[1].code, "unknown-key"); // which holds the replacement character
    EXPECT_EQ(checked.findings[1].place.line, 40'003);
    EXPECT_EQ(checked.findings[2].code, "not-an-integer");
    EXPECT_EQ(checked.findings[2].place.line, 60'003);
    EXPECT_EQ(checked.findings[3].code, "blank-end");
    EXPECT_EQ(checked.findings[3].place.line, 60'004);
}

TEST(ConfigurationTextCheckTest, FindsBadCharacters)
{
    using namespace std::string_literals;
    struct Row {
        std::string bytes;
        std::string lines;
    };
    const Row rows[] = {
        {"AnalyzePath a\xFF"
         "b\xFF\n",                  "1:14: warning: not-utf8 replaced AnalyzePath FF\n"      },
        {"AnalyzePath \xC3\xA4\xC3",          "1:14: warning: not-utf8 ignored  C3\n"                  },
        {"AnalyzePath a\rb\r\n",              "1:14: warning: stray-character ignored AnalyzePath \n"  },
        {"AnalyzePath a\0b\n"s,               "1:14: warning: stray-character none AnalyzePath \n"     },
        {"AnalyzePath \xEF\xBB\xBF"
         "b\n",                      "1:13: warning: stray-character ignored AnalyzePath \n"  },
        {"MaxIter 5\xFF\n",                   "1:9: error: not-an-integer zero MaxIter 5\xEF\xBF\xBD\n"},
        {"MaxIter 5\0\n"s,                    "1:9: error: not-an-integer zero MaxIter 5\0\n"s         },
        {"Max\xFFIter 5\nMaxIter 6\n",
         "1:1: error: unknown-key throws Max\xEF\xBF\xBDIter Max\xEF\xBF\xBDIter\n"                    },
        {"Max\rIter 5\n",                     "1:4: warning: stray-character ignored  \n"              },
        {"MaxIter 5\n\xC3",                   "2:1: warning: not-utf8 ignored  C3\n"                   },
        {"AnalyzePath b\xFF\n   Unheard 5\n",
         "1:14: warning: not-utf8 replaced AnalyzePath FF\n"
         "2:4: error: unknown-key throws Unheard Unheard\n"                                            },
    };
    for (const auto& [bytes, lines] : rows) {
        const CheckedFile checked = checkedBytes("file.cfg", bytes, FileKind::ConfigurationText);
        std::string found;
        for (const Finding& finding : checked.findings) {
            found += std::to_string(finding.place.line) + ':' + std::to_string(finding.place.column) + ": "
                + severityName(finding.severity).toStdString() + ": " + finding.code.toStdString() + ' '
                + effectName(finding.effect).toStdString() + ' ' + finding.address.toStdString() + ' '
                + finding.found.toStdString() + '\n';
        }
        EXPECT_EQ(found, lines) << bytes;
    }
}

} // namespace
} // namespace Nereo::Inspection

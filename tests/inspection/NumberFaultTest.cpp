#include <Inspection/NumberFault.h>

#include <NereoFileIO/Nereo2ConfigFile.h>

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>

namespace Nereo::Inspection {
namespace {

using Io::Nereo2ConfigFile;

std::string nameOf(const std::optional<Rule>& rule)
{
    return rule ? rowOf(*rule).name : "";
}

TEST(NumberFaultTest, TellsWhatIsNoInteger)
{
    struct Row {
        const char* text;
        const char* rule;
    };
    constexpr Row rows[] = {
        {"5",                       ""                 },
        {"-2147483648",             ""                 },
        {" \n+5\t",                 ""                 },
        {"0000000000000000000005",  ""                 },
        {"",                        "MissingValue"     },
        {" \n",                     "MissingValue"     },
        {"2147483648",              "IntegerOutOfRange"},
        {" -2147483649 ",           "IntegerOutOfRange"},
        {"99999999999999999999999", "IntegerOutOfRange"},
        {"5.0",                     "NotAnInteger"     },
        {"0x10",                    "NotAnInteger"     },
        {"1,000",                   "NotAnInteger"     },
        {"1 2",                     "NotAnInteger"     },
        {"1e3",                     "NotAnInteger"     },
        {"+",                       "NotAnInteger"     },
        {"--5",                     "NotAnInteger"     },
        {"\xEF\xBC\x95",            "NotAnInteger"     },
    };
    for (const auto& [text, rule] : rows) {
        EXPECT_EQ(nameOf(integerFault(QString(text))), rule) << text;
        Nereo2ConfigFile configuration;
        configuration.setting(Nereo2ConfigFile::MaxIter).setValueFromString(text);
        const int value = configuration.setting(Nereo2ConfigFile::MaxIter).valueAsInt();
        EXPECT_EQ(value == 0, *rule != '\0') << text;
    }
}

TEST(NumberFaultTest, TellsWhatIsNoNumber)
{
    struct Row {
        const char* text;
        const char* rule;
    };
    constexpr Row rows[] = {
        {"5",        ""                },
        {"-.5",      ""                },
        {"5.",       ""                },
        {" +1e-3\n", ""                },
        {"1E5",      ""                },
        {"inf",      ""                },
        {"-INF",     ""                },
        {"nan",      ""                },
        {"1e-310",   ""                },
        {"",         "MissingValue"    },
        {" ",        "MissingValue"    },
        {"abc",      "NotANumber"      },
        {"1,5",      "NotANumber"      },
        {"1 2",      "NotANumber"      },
        {".",        "NotANumber"      },
        {"1e",       "NotANumber"      },
        {"e5",       "NotANumber"      },
        {"1d5",      "NotANumber"      },
        {"-nan",     "NotANumber"      },
        {"Infinity", "NotANumber"      },
        {"0x10",     "NotANumber"      },
        {"1e400",    "NumberTooLarge"  },
        {"-1E+400",  "NumberTooLarge"  },
        {"1e-400",   "NumberOutOfRange"},
        {"-.1e-999", "NumberOutOfRange"},
    };
    for (const auto& [text, rule] : rows) {
        EXPECT_EQ(nameOf(numberFault(QString(text))), rule) << text;
        Nereo2ConfigFile configuration;
        configuration.setting(Nereo2ConfigFile::StopTime).setValueFromString(text);
        const double value = configuration.setting(Nereo2ConfigFile::StopTime).valueAsDouble();
        const bool isRead =
            value != 0 && (std::isfinite(value) || QString(text).contains('n', Qt::CaseInsensitive));
        EXPECT_EQ(isRead, *rule == '\0') << text;
    }
}

TEST(NumberFaultTest, LooksAtLongTextsToTheirEnd)
{
    EXPECT_EQ(nameOf(integerFault(QString(5000, ' ') + '5')), "");
    EXPECT_EQ(nameOf(integerFault(QString(5000, '0') + '5')), "");
    EXPECT_EQ(nameOf(integerFault(QString(5000, '5'))), "IntegerOutOfRange");
    EXPECT_EQ(nameOf(integerFault(QString(5000, '5') + 'x')), "NotAnInteger");
    EXPECT_EQ(nameOf(numberFault(QString(5000, '0') + ".5")), "");
    EXPECT_EQ(nameOf(numberFault(QString(5000, '5'))), "NumberTooLarge");
    EXPECT_EQ(nameOf(numberFault(QString(5000, 'x'))), "NotANumber");
    EXPECT_EQ(nameOf(integerFault(QString(5000, ' '))), "MissingValue");
}

TEST(NumberFaultTest, AgreesWithTheConversions)
{
    std::mt19937 bits(20240917);
    for (int i = 0; i < 200'000; ++i) {
        QString text;
        for (auto count = 1 + bits() % 12; count > 0; --count)
            text += QLatin1Char("0123456789-+.e"[bits() % 14]);
        bool isInteger = false;
        bool isNumber = false;
        text.toInt(&isInteger);
        text.toDouble(&isNumber);
        ASSERT_EQ(!integerFault(text), isInteger) << text.toStdString();
        ASSERT_EQ(!numberFault(text), isNumber) << text.toStdString();
    }
}

} // namespace
} // namespace Nereo::Inspection

#include <NereoFileIO/Flag.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace Nereo::Io {
namespace {

template <class Value>
Flag flagWith(const Value& value)
{
    Flag flag;
    flag.setValue(value);
    return flag;
}

TEST(Flag, StartsEmpty)
{
    const Flag flag;
    EXPECT_EQ(flag.name(), "");
    EXPECT_EQ(flag.value(), "");
    EXPECT_EQ(flag.valueAsInt(), 0);
    EXPECT_EQ(flag.valueAsDouble(), 0.0);
}

TEST(Flag, KeepsTextsAsTheyAre)
{
    for (const std::string text : {"", "restart_every", " two  words ", "Lüfter", "%1"}) {
        Flag flag;
        flag.setName(text);
        flag.setValue(text);
        EXPECT_EQ(flag.name(), text);
        EXPECT_EQ(flag.value(), text);
    }
}

TEST(Flag, WritesIntegersInDecimal)
{
    EXPECT_EQ(flagWith(0).value(), "0");
    EXPECT_EQ(flagWith(-17).value(), "-17");
    EXPECT_EQ(flagWith(std::numeric_limits<int>::min()).value(), "-2147483648");
    EXPECT_EQ(flagWith(std::numeric_limits<int>::max()).value(), "2147483647");
}

TEST(Flag, WritesNumbersWithSixSignificantDigits)
{
    const struct {
        double value;
        const char* text;
    } cases[] = {
        {0.001,     "0.001"      },
        {0.0001,    "0.0001"     },
        {0.00001,   "1e-05"      },
        {0.75,      "0.75"       },
        {0.0,       "0"          },
        {-0.0,      "0"          },
        {100.0,     "100"        },
        {293.15,    "293.15"     },
        {123456.0,  "123456"     },
        {1234567.0, "1.23457e+06"},
        {999999.5,  "1e+06"      },
        {1e30,      "1e+30"      },
        {-2.5,      "-2.5"       },
        {1.0 / 3.0, "0.333333"   },
        {INFINITY,  "inf"        },
        {-INFINITY, "-inf"       },
        {NAN,       "nan"        },
    };
    for (const auto& [value, text] : cases)
        EXPECT_EQ(flagWith(value).value(), text);
}

TEST(Flag, ReadsItsValueAsANumberOrAsZero)
{
    const struct {
        const char* text;
        int asInt;
        double asDouble;
    } cases[] = {
        {"42",         42, 42.0        },
        {"-7",         -7, -7.0        },
        {" 7 ",        7,  7.0         }, // white space around it doesn't matter
        {"010",        10, 10.0        },
        {"0x10",       0,  0.0         },
        {"2.5",        0,  2.5         },
        {"1e-05",      0,  1e-5        },
        {"1e2",        0,  100.0       },
        {"abc",        0,  0.0         },
        {"12abc",      0,  0.0         },
        {"1,5",        0,  0.0         },
        {"",           0,  0.0         },
        {"2147483648", 0,  2147483648.0}, // past 32 bits
        {"1e400",      0,  INFINITY    },
    };
    for (const auto& [text, asInt, asDouble] : cases) {
        EXPECT_EQ(flagWith(std::string(text)).valueAsInt(), asInt) << text;
        EXPECT_EQ(flagWith(std::string(text)).valueAsDouble(), asDouble) << text;
    }
}

TEST(Flag, ComparesNamesAndValuesAsTexts)
{
    Flag flag = flagWith(std::string("1"));
    flag.setName("cfl");
    const Flag same = flag;
    EXPECT_TRUE(flag == same);
    EXPECT_FALSE(flag != same);

    Flag otherName = flag;
    otherName.setName("CFL");
    EXPECT_FALSE(flag == otherName);
    EXPECT_TRUE(flag != otherName);

    Flag otherValue = flag;
    otherValue.setValue("1.0");
    EXPECT_FALSE(flag == otherValue);
    EXPECT_TRUE(flag != otherValue);
}

TEST(Flag, IsCopiedWhole)
{
    Flag original = flagWith(std::string("0.75"));
    original.setName("cfl");
    const Flag copy(original);
    Flag assigned;
    EXPECT_EQ(&(assigned = original), &assigned);
    original.setName("x");
    original.setValue("y");
    for (const Flag& flag : {copy, assigned}) {
        EXPECT_EQ(flag.name(), "cfl");
        EXPECT_EQ(flag.value(), "0.75");
    }
}

} // namespace
} // namespace Nereo::Io

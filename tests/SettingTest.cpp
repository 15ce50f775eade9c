#include "support/Assertions.h"
#include "support/PrivateAccess.h"

#include <NereoFileIO/Nereo2ConfigFile.h>
#include <NereoFileIO/Setting.h>

#include <gtest/gtest.h>

#include <limits>

namespace Nereo::Io {

NEREO_PRIVATE_MEMBER(settingValue, QVariant Setting::*, &Setting::value_)

namespace {

Setting settingWith(const QVariant& value)
{
    Setting setting;
    setting.*settingValue() = value;
    return setting;
}

TEST(Setting, StartsWithoutNameAndValue)
{
    const Setting setting;
    EXPECT_EQ(setting.name(), "");
    EXPECT_EQ(setting.type(), Setting::Invalid);
    EXPECT_EQ(setting.valueAsInt(), 0);
    EXPECT_EQ(setting.valueAsDouble(), 0.0);
    EXPECT_EQ(setting.valueAsString(), "");
}

TEST(Setting, NumbersItsTypes)
{
    EXPECT_EQ(Setting::Invalid, 0);
    EXPECT_EQ(Setting::Int, 1);
    EXPECT_EQ(Setting::Double, 2);
    EXPECT_EQ(Setting::String, 3);
    static_assert(sizeof(Setting::Type) == 4);
}

TEST(Setting, HasTheTypeOfItsValue)
{
    EXPECT_EQ(settingWith(QVariant()).type(), Setting::Invalid);
    EXPECT_EQ(settingWith(1).type(), Setting::Int);
    EXPECT_EQ(settingWith(1.0).type(), Setting::Double);
    EXPECT_EQ(settingWith(QString("1")).type(), Setting::String);
}

TEST(Setting, KeepsItsNameInUtf8)
{
    Setting setting;
    setting.setName("Prüfung");
    EXPECT_EQ(setting.name(), "Prüfung");
}

TEST(Setting, ReadsIntegersInDecimalOrAsZero)
{
    const struct {
        const char* text;
        int value;
    } cases[] = {
        {"500",         500                            },
        {"-1",          -1                             },
        {"+7",          7                              },
        {" 7\t",        7                              }, // white space around it doesn't matter
        {"010",         10                             },
        {"2147483647",  2147483647                     },
        {"-2147483648", std::numeric_limits<int>::min()},
        {"2147483648",  0                              }, // past 32 bits
        {"",            0                              },
        {"abc",         0                              },
        {"12abc",       0                              },
        {"0x10",        0                              },
        {"7.0",         0                              },
        {"1e3",         0                              },
        {"1,000",       0                              },
    };
    for (const auto& [text, value] : cases) {
        Setting setting = settingWith(99);
        setting.setValueFromString(text);
        EXPECT_EQ(setting.type(), Setting::Int) << text;
        EXPECT_EQ(setting.valueAsInt(), value) << text;
    }
}

TEST(Setting, ReadsNumbersWithAPointOrAsZero)
{
    const double infinity = std::numeric_limits<double>::infinity();
    const struct {
        const char* text;
        double value;
    } cases[] = {
        {"1e-3",                    0.001                                    },
        {"-12.5",                   -12.5                                    },
        {" .5 ",                    0.5                                      },
        {"5.",                      5.0                                      },
        {"1e20",                    1e20                                     },
        {"5e-324",                  std::numeric_limits<double>::denorm_min()},
        {"1.7976931348623157e+308", std::numeric_limits<double>::max()       },
        {"1e400",                   infinity                                 }, // past the largest
        {"-inf",                    -infinity                                },
        {"",                        0.0                                      },
        {"abc",                     0.0                                      },
        {"12abc",                   0.0                                      },
        {"1,5",                     0.0                                      },
        {"1e-400",                  0.0                                      },
    };
    for (const auto& [text, value] : cases) {
        Setting setting = settingWith(99.0);
        setting.setValueFromString(text);
        EXPECT_EQ(setting.type(), Setting::Double) << text;
        EXPECT_EQ(setting.valueAsDouble(), value) << text;
    }
}

TEST(Setting, TakesTextsAsTheyAre)
{
    for (const std::string text : {"", "  two  words ", "Lüfter", "42", "line\nend", "%1 %2"}) {
        Setting setting = settingWith(QString("before"));
        setting.setValueFromString(text);
        EXPECT_EQ(setting.type(), Setting::String);
        EXPECT_EQ(setting.valueAsString(), text);
    }
}

TEST(Setting, BecomesATextWhenItHasNoType)
{
    Setting setting;
    setting.setValueFromString("x");
    EXPECT_EQ(setting.type(), Setting::String);
    EXPECT_EQ(setting.valueAsString(), "x");
}

TEST(Setting, ConvertsToOtherTypes)
{
    const struct {
        QVariant value;
        int asInt;
        double asDouble;
        const char* asString;
    } cases[] = {
        {10,             10, 10.0,   "10"  },
        {-1,             -1, -1.0,   "-1"  },
        {2.5,            3,  2.5,    "2.5" },
        {-2.4,           -2, -2.4,   "-2.4"},
        {QString("42"),  42, 42.0,   "42"  },
        {QString("1e3"), 0,  1000.0, "1e3" },
        {QString("abc"), 0,  0.0,    "abc" },
        {QString(),      0,  0.0,    ""    },
    };
    for (const auto& [value, asInt, asDouble, asString] : cases) {
        const Setting setting = settingWith(value);
        EXPECT_EQ(setting.valueAsInt(), asInt) << asString;
        EXPECT_EQ(setting.valueAsDouble(), asDouble) << asString;
        EXPECT_EQ(setting.valueAsString(), asString);
    }
}

TEST(Setting, WritesTheShortestTextThatGivesTheNumberBack)
{
    const struct {
        double value;
        const char* text;
    } cases[] = {
        {0.0,                                       "0"                      },
        {0.01,                                      "0.01"                   },
        {0.1 + 0.2,                                 "0.30000000000000004"    },
        {0.3,                                       "0.3"                    },
        {1e20,                                      "1e+20"                  },
        {100000.0,                                  "100000"                 },
        {123456789.0,                               "123456789"              },
        {-12.5,                                     "-12.5"                  },
        {std::numeric_limits<double>::denorm_min(), "5e-324"                 },
        {std::numeric_limits<double>::max(),        "1.7976931348623157e+308"},
        {std::numeric_limits<double>::infinity(),   "inf"                    },
    };
    for (const auto& [value, text] : cases) {
        EXPECT_EQ(settingWith(value).valueAsString(), text);
        Setting read = settingWith(99.0);
        read.setValueFromString(text);
        EXPECT_EQ(read.valueAsDouble(), value) << text;
    }
}

TEST(Setting, IsCopiedWhole)
{
    Nereo2ConfigFile config;
    Setting& original = config.setting(Nereo2ConfigFile::MaxIter);

    Setting copy(original);
    Setting assigned;
    assigned = original;
    original.setValueFromString("7");

    for (const Setting& setting : {copy, assigned}) {
        EXPECT_EQ(setting.name(), "MaxIter");
        EXPECT_EQ(setting.type(), Setting::Int);
        EXPECT_EQ(setting.valueAsInt(), 10000);
    }
}

TEST(Setting, TakesAnIntAsItsTypeSays)
{
    const struct {
        QVariant before;
        QVariant after;
    } cases[] = {
        {5,             -7           },
        {0.5,           -7.0         },
        {QString("no"), QString("-7")},
        {QVariant(),    -7           },
    };
    for (const auto& [before, after] : cases) {
        Setting setting = settingWith(before);
        setting.setValue(-7);
        EXPECT_EQ(setting.*settingValue(), after);
        EXPECT_EQ((setting.*settingValue()).userType(), after.userType());
    }
}

TEST(Setting, TakesADoubleAsItsTypeSays)
{
    constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const struct {
        QVariant before;
        double value;
        QVariant after;
    } cases[] = {
        {0.5,           1e-7,          1e-7                           },
        {0.5,           0.1 + 0.2,     0.1 + 0.2                      },
        {0.5,           infinity,      infinity                       },
        {QString("no"), 1e-7,          QString("1e-07")               },
        {QString("no"), 0.1 + 0.2,     QString("0.30000000000000004") },
        {QVariant(),    2.0,           2.0                            },
        {5,             7.0,           7                              },
        {5,             1e6,           1000000                        },
        {5,             -2147483648.0, std::numeric_limits<int>::min()},
        {5,             2147483647.0,  std::numeric_limits<int>::max()},
        {5,             2147483648.0,  0                              }, // no int from here on
        {5,             -2147483649.0, 0                              },
        {5,             7.5,           0                              },
        {5,             -0.5,          0                              },
        {5,             1e300,         0                              },
        {5,             infinity,      0                              },
        {5,             -infinity,     0                              },
        {5,             notANumber,    0                              },
    };
    for (const auto& [before, value, after] : cases) {
        Setting setting = settingWith(before);
        setting.setValue(value);
        EXPECT_EQ(setting.*settingValue(), after) << value;
        EXPECT_EQ((setting.*settingValue()).userType(), after.userType()) << value;
    }
}

TEST(Setting, TakesEveryIntAndDoubleExactly)
{
    Setting number = settingWith(0.0);
    for (const int value : {0, 1, -1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        number.setValue(value);
        EXPECT_EQ(number.valueAsDouble(), value);
    }
    for (const double value : {5e-324, 1.7976931348623157e308, 1.0 / 3.0}) {
        number.setValue(value);
        EXPECT_EQ(number.valueAsDouble(), value);
    }
}

TEST(Setting, TakesATextLikeOneFromAFile)
{
    const struct {
        QVariant before;
        const char* text;
        QVariant after;
    } cases[] = {
        {5,             "12",      12                },
        {5,             "12abc",   0                 },
        {0.5,           "1e-7",    1e-7              },
        {QString("no"), "Lüfter", QString("Lüfter")},
        {QVariant(),    "12",      QString("12")     },
    };
    for (const auto& [before, text, after] : cases) {
        Setting setting = settingWith(before);
        setting.setValue(text);
        EXPECT_EQ(setting.*settingValue(), after) << text;
        EXPECT_EQ((setting.*settingValue()).userType(), after.userType()) << text;
    }
}

TEST(SettingDeathTest, StopsAtAValueOfAnotherType)
{
    Setting setting = settingWith(true);
    EXPECT_ASSERTION(setting.type(), "false", "FileIO/Setting, line 41");
    EXPECT_ASSERTION(setting.setValueFromString("1"), "false", "FileIO/Setting, line 63");
    EXPECT_ASSERTION(setting.setValue("1"), "false", "FileIO/Setting, line 63");
    EXPECT_ASSERTION(setting.setValue(1), "false", "FileIO/Setting, line 41");
    EXPECT_ASSERTION(setting.setValue(1.0), "false", "FileIO/Setting, line 41");
}

} // namespace
} // namespace Nereo::Io

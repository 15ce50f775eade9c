#include <Inspection/NumberFault.h>

#include <NereoFileIO/Nereo2ConfigFile.h>

#include <QTextStream>

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
    EXPECT_EQ(nameOf(numberFault('+' + QString(5000, '0') + ".5e-1")), "");
    EXPECT_EQ(nameOf(numberFault('-' + QString(5000, '0') + ".5E+1")), "");
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

/// What a text stream reads of a word.
template <class Number>
Number extracted(QString word, bool& isWhole)
{
    word += ' ';
    QTextStream in(&word, QIODevice::ReadOnly);
    Number value = 0;
    in >> value;
    isWhole = in.status() == QTextStream::Ok && in.pos() == word.size() - 1;
    return value;
}

/// All texts of these characters that are so long.
QStringList textsOf(const QString& alphabet, int length)
{
    QStringList texts {QString()};
    for (int i = 0; i < length; ++i) {
        QStringList longer;
        for (const QString& text : qAsConst(texts)) {
            for (const QChar character : alphabet)
                longer.append(text + character);
        }
        texts = longer;
    }
    return texts;
}

TEST(NumberFaultTest, ReadsPlainNumbersAsATextStreamDoes)
{
    for (int length = 1; length <= 5; ++length) {
        for (const QString& text : textsOf("059.e+-x", length)) {
            bool isWhole = false;
            if (const std::optional<int> integer = plainInteger(text)) {
                ASSERT_EQ(*integer, extracted<int>(text, isWhole)) << text.toStdString();
                ASSERT_TRUE(isWhole) << text.toStdString();
                ASSERT_EQ(*integer, text.toInt());
            }
            if (const std::optional<double> number = plainNumber(text)) {
                const double expected = extracted<double>(text, isWhole);
                ASSERT_EQ(*number, expected) << text.toStdString();
                ASSERT_EQ(std::signbit(*number), std::signbit(expected)) << text.toStdString();
                ASSERT_TRUE(isWhole) << text.toStdString();
                ASSERT_EQ(*number, text.toDouble());
                ASSERT_EQ(plainNumberLength(text + " 5"), length);
                ASSERT_EQ(plainNumberLength(text), length);
                ASSERT_EQ(plainNumberLength(text + 'x'), 0);
                ASSERT_TRUE(arePlainNumbers(" " + text + "\t 5 ", 2));
                ASSERT_TRUE(arePlainNumbers("5 " + text, 2));
            } else {
                ASSERT_EQ(plainNumberLength(text), 0) << text.toStdString();
                ASSERT_FALSE(arePlainNumbers("5 " + text, 2)) << text.toStdString();
            }
        }
    }
}

TEST(NumberFaultTest, CountsThePlainNumbersOfALine)
{
    for (const char* line : {"1 2", "  1e-05\t-2.5 ", "1\u00a02", "0 0\r"})
        EXPECT_TRUE(arePlainNumbers(QString(line), 2)) << line;
    for (const char* line :
         {"", "1", "1 2 3", "12", "1 2x", "x1 2", "1,2", "1 2 x", "1234567890123456789 2", " "})
        EXPECT_FALSE(arePlainNumbers(QString(line), 2)) << line;
    EXPECT_TRUE(arePlainNumbers(QString(" "), 0));
}

TEST(NumberFaultTest, TakesForPlainWhatMostNumbersAre)
{
    for (const char* text : {"0", "-5", "123456789", "-123456789"})
        EXPECT_EQ(plainInteger(QString(text)).value_or(1), QString(text).toInt()) << text;
    for (const char* text : {"0", "-5", "273.15", "-1.20476e-05", "123456789012345678", "1e+20", "9e99"})
        EXPECT_EQ(plainNumber(QString(text)).value_or(1), QString(text).toDouble()) << text;
    for (const char* text : {"", "-", "+5", "05", "0x5", "-01", "1234567890", "5.", "x"})
        EXPECT_FALSE(plainInteger(QString(text)).has_value()) << text;
    for (const char* text :
         {"", "-", "+5", ".5", "5.", "1e5.", "1E5", "1e100", "inf", "1,5", "1234567890123456789"})
        EXPECT_FALSE(plainNumber(QString(text)).has_value()) << text;
}

} // namespace
} // namespace Nereo::Inspection

#include "support/Bits.h"

#include "FileIO/NumberText.h"

#include <gmock/gmock.h>

#include <QString>
#include <QTextStream>

#include <cfloat>
#include <cmath>
#include <limits>
#include <random>
#include <string>

namespace Nereo::Io {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

template <class Number>
std::string text(Number number)
{
    char buffer[longestNumber];
    const char* end = writeNumber(buffer, number);
    return std::string(buffer, std::size_t(end - buffer));
}

std::string hexadecimal(double number)
{
    return QString::asprintf("%a", number).toStdString();
}

void expectTextOfQt(double number)
{
    char buffer[longestNumber];
    const char* end = writeNumber(buffer, number);
    if (QString::number(number, 'g', 6) != QLatin1String(buffer, int(end - buffer)))
        ADD_FAILURE() << hexadecimal(number) << " is not " << text(number);
}

void expectTextsOfQtOnBothSides(double number)
{
    expectTextOfQt(number);
    expectTextOfQt(-number);
}

std::string streamed(double number)
{
    QString text;
    QTextStream(&text) << number;
    return text.toStdString();
}

TEST(NumberText, IsInGeneralNotationWithSixDigits)
{
    const struct {
        double number;
        const char* text;
    } cases[] = {
        {0.5,            "0.5"          },
        {-0.5,           "-0.5"         },
        {1.0,            "1"            },
        {293.15,         "293.15"       },
        {21000.0,        "21000"        },
        {100000.0,       "100000"       },
        {999999.0,       "999999"       },
        {1e6,            "1e+06"        }, // a seventh digit before the point asks for an exponent
        {1.5e6,          "1.5e+06"      },
        {1234567.0,      "1.23457e+06"  },
        {123456.4,       "123456"       },
        {0.001,          "0.001"        },
        {0.0001,         "0.0001"       },
        {0.000123456789, "0.000123457"  },
        {0.00001,        "1e-05"        }, // and so does a fifth zero
        {1e-7,           "1e-07"        },
        {1e30,           "1e+30"        },
        {1.5e-100,       "1.5e-100"     },
        {275.3125,       "275.313"      }, // exact halves round away from zero
        {-275.3125,      "-275.313"     },
        {100000.5,       "100001"       },
        {100002.5,       "100003"       },
        {1000005.0,      "1.00001e+06"  },
        {1000025.0,      "1.00003e+06"  },
        {0.99999951,     "1"            }, // rounding may carry up to the first digit
        {0.000099999951, "0.0001"       },
        {999999.4,       "999999"       },
        {999999.5,       "1e+06"        },
        {0.0,            "0"            },
        {-0.0,           "0"            }, // zero has no sign
        {infinity,       "inf"          },
        {-infinity,      "-inf"         },
        {notANumber,     "nan"          },
        {-notANumber,    "nan"          },
        {DBL_MAX,        "1.79769e+308" },
        {DBL_MIN,        "2.22507e-308" },
        {-DBL_MIN,       "-2.22507e-308"},
        {5e-324,         "4.94066e-324" },
    };
    for (const auto& [number, expected] : cases) {
        EXPECT_EQ(text(number), expected) << hexadecimal(number);
        EXPECT_EQ(streamed(number), expected) << hexadecimal(number);
        expectTextOfQt(number);
    }
}

TEST(NumberText, IsDecimalForIntegers)
{
    EXPECT_EQ(text(0), "0");
    EXPECT_EQ(text(-1), "-1");
    EXPECT_EQ(text(1000000), "1000000");
    EXPECT_EQ(text(std::numeric_limits<int>::max()), "2147483647");
    EXPECT_EQ(text(std::numeric_limits<int>::min()), "-2147483648");
}

TEST(NumberText, FitsTheRoomThatIsAskedFor)
{
    EXPECT_EQ(text(-1.23456e-300).size(), std::size_t(longestNumber));
    EXPECT_LT(text(std::numeric_limits<int>::min()).size(), std::size_t(longestNumber));
}

TEST(NumberText, GoesIntoAStream)
{
    QString written;
    QTextStream(&written) << NumberText(-0.25) << ' ' << NumberText(-7) << ' ' << QString(NumberText(1e-7));
    EXPECT_EQ(written, "-0.25 -7 1e-07");
}

TEST(NumberText, IsThatOfQtNextToEveryPowerOfTwo)
{
    for (quint64 exponent = 0; exponent < 0x7ff; ++exponent) {
        const quint64 power = exponent << 52;
        for (const int step : {-1, 0, 1, 2})
            expectTextsOfQtOnBothSides(fromBits(power + quint64(step)));
    }
    for (int bit = 0; bit < 52; ++bit)
        expectTextsOfQtOnBothSides(fromBits(quint64(1) << bit)); // subnormal
}

TEST(NumberText, IsThatOfQtNextToEveryPowerOfTenAndItsHalves)
{
    for (int exponent = -323; exponent <= 308; ++exponent) {
        for (const char* digits : {"1", "1.000005", "5.000005", "9.999994", "9.999995", "9.999996"}) {
            const double number = QString("%1e%2").arg(digits).arg(exponent).toDouble();
            expectTextsOfQtOnBothSides(number);
            expectTextsOfQtOnBothSides(std::nextafter(number, 0.0));
            expectTextsOfQtOnBothSides(std::nextafter(number, infinity));
        }
    }
}

// Seven digits of which the last is a 5 lie halfway between two numbers of six digits. A double holds such a
// number exactly if it is an integer that isn't too large, or if the digits are a multiple of the power of
// five that its decimal places ask for.
TEST(NumberText, IsThatOfQtForEveryExactHalfWithDecimalPlaces)
{
    int halves = 0;
    quint64 powerOfFive = 5;
    for (double powerOfTen = 10; powerOfFive < 10'000'000; powerOfFive *= 5, powerOfTen *= 10) {
        const quint64 firstMultiple = 1'000'000 / powerOfFive | 1;
        for (quint64 digits = firstMultiple * powerOfFive; digits < 10'000'000; digits += 2 * powerOfFive) {
            expectTextOfQt(double(digits) / powerOfTen);
            ++halves;
        }
    }
    EXPECT_GT(halves, 1'100'000);
}

TEST(NumberText, IsThatOfQtForExactHalvesAmongIntegers)
{
    for (quint64 digits = 1'000'005; digits < 10'000'000; digits += 10 * 499) {
        double half = double(digits);
        for (int places = 0; places < 16; ++places, half *= 10)
            expectTextOfQt(half);
    }
}

TEST(NumberText, IsThatOfQtForAnyBits)
{
    std::mt19937_64 bits {20240917};
    for (int i = 0; i < 500'000; ++i)
        expectTextOfQt(fromBits(bits()));
}

TEST(NumberText, IsThatOfQtForTypicalNumbers)
{
    std::mt19937_64 bits {20240918};
    const auto below = [&](quint64 end) { return int(bits() % end); };
    for (int i = 0; i < 150'000; ++i) {
        expectTextOfQt(below(2'000'000'000) / 1000.0);
        expectTextOfQt(below(10'000) / 1000.0 * (below(10'000) / 100.0));
        expectTextOfQt(below(10'000'000) * std::pow(10.0, below(60) - 30));
        expectTextOfQt(below(10'000'000) / std::pow(10.0, below(22)));
        expectTextOfQt(fromBits((bits() >> 12) | (quint64(1023 - 70 + below(135)) << 52)));
    }
}

TEST(NumberText, IsThatOfATextStream)
{
    std::mt19937_64 bits {20240919};
    const auto anyNumber = [&] { return fromBits(bits()); };
    const auto typicalNumber = [&] { return double(qint64(bits() % 2'000'000'000)) / 1000 - 1'000'000; };
    for (int i = 0; i < 50'000; ++i) {
        for (const double number : {anyNumber(), typicalNumber()})
            ASSERT_EQ(text(number), streamed(number)) << hexadecimal(number);
    }
}

void expectNumberOfQt(const QString& text)
{
    if (bitsOf(parseNumber(text)) != bitsOf(text.toDouble()))
        ADD_FAILURE() << qPrintable(text) << " is read as " << hexadecimal(parseNumber(text));
}

TEST(NumberRead, IsTheNearestToAnyNotation)
{
    const struct {
        const char* text;
        double number;
    } cases[] = {
        {"0",                       0.0                    },
        {"-0",                      -0.0                   },
        {"7",                       7.0                    },
        {"007",                     7.0                    },
        {"293.15",                  293.15                 },
        {"-293.15",                 -293.15                },
        {"1.5e+06",                 1.5e6                  },
        {"1.5E+06",                 1.5e6                  },
        {"1e-07",                   1e-7                   },
        {"1e5",                     1e5                    },
        {"0.1",                     0.1                    },
        {"9007199254740993",        9007199254740992.0     }, // halfway between two doubles
        {"9007199254740995",        9007199254740996.0     },
        {"123456789012345678901",   123456789012345683968.0},
        {"1e22",                    1e22                   }, // the last power of ten that is a double
        {"1e23",                    1e23                   },
        {"1e-22",                   1e-22                  },
        {"1e-23",                   1e-23                  },
        {"1.7976931348623157e+308", DBL_MAX                },
        {"5e-324",                  5e-324                 },
        {"1e1000",                  infinity               },
        {"-1e1000",                 -infinity              },
        {"inf",                     infinity               },
        {"-inf",                    -infinity              },
        {".5",                      0.5                    },
        {"5.",                      5.0                    },
        {"+5",                      5.0                    },
        {" 5\n",                    5.0                    },
    };
    for (const auto& [text, number] : cases) {
        EXPECT_EQ(bitsOf(parseNumber(QString(text))), bitsOf(number)) << text;
        expectNumberOfQt(text);
    }
}

TEST(NumberRead, IsZeroForWhatIsNoNumber)
{
    for (const char* text :
         {"",    "-",   ".",  "-.",  "e",     "e5",  "5e",   "5e+",  "5e-", "5e1.5",   "5.5.5",
          "--5", "+-5", "5-", "5,5", "1,000", "5 5", "0x10", "five", "5kg", "\xd9\xa5"}) {
        EXPECT_EQ(parseNumber(QString(text)), 0.0) << text;
        expectNumberOfQt(text);
    }
}

TEST(NumberRead, IsThatOfQtForEveryShortText)
{
    const QString alphabet = "059.e+- ";
    const int count = alphabet.size();
    for (int length = 0, texts = 1; length <= 6; ++length, texts *= count) {
        QString text(length, QChar());
        for (int number = 0; number < texts; ++number) {
            for (int i = 0, rest = number; i < length; ++i, rest /= count)
                text[i] = alphabet[rest % count];
            expectNumberOfQt(text);
        }
    }
}

TEST(NumberRead, IsThatOfQtWithAnyNumberOfDigitsAndAnyExponent)
{
    std::mt19937_64 bits {20240920};
    const auto digits = [&](int count) {
        QString text;
        while (text.size() < count)
            text += QChar(char('0' + bits() % 10));
        return text;
    };
    for (int whole = 1; whole <= 24; ++whole) {
        for (int decimals = 0; decimals <= 24; ++decimals) {
            const QString number = digits(whole) + '.' + digits(decimals);
            expectNumberOfQt(number);
            for (int exponent = -330; exponent <= 330; exponent += 3)
                expectNumberOfQt('-' + number + 'e' + QString::number(exponent));
        }
    }
}

TEST(NumberRead, IsThatOfQtForWhatIsWrittenWithAnyPrecision)
{
    std::mt19937_64 bits {20240921};
    for (int i = 0; i < 20'000; ++i) {
        const double any = fromBits(bits());
        const double typical = double(qint64(bits() % 2'000'000'000)) / 1000 - 1'000'000;
        for (const int precision : {6, 9, 15, 17}) {
            expectNumberOfQt(QString::number(any, 'g', precision));
            expectNumberOfQt(QString::number(typical, 'g', precision));
            expectNumberOfQt(QString::number(typical, 'f', precision));
        }
    }
}

TEST(NumberRead, LeavesNoDigitOut)
{
    for (int zeros = 0; zeros < 400; zeros += 7) {
        expectNumberOfQt(QString(zeros, '0') + "12.5");
        expectNumberOfQt("0." + QString(zeros, '0') + "125");
        expectNumberOfQt("12.5" + QString(zeros, '0'));
        expectNumberOfQt("125" + QString(zeros, '0'));
        expectNumberOfQt("12.5e" + QString(zeros, '0') + "1");
    }
}

} // namespace
} // namespace Nereo::Io

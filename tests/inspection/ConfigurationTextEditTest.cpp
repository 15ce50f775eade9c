#include "Edited.h"

#include <QTextCodec>

#include <gtest/gtest.h>

namespace Nereo::Inspection {
namespace {

constexpr FileKind text = FileKind::ConfigurationText;

void expectSet(const char* before, const char* address, const char* value, const char* after)
{
    expectEdited(text, before, setTo(address, value), after);
}

TEST(ConfigurationTextEditTest, ChangesTheBytesOfTheValueOnly)
{
    expectSet("MaxIter 5\n", "MaxIter", "500", "MaxIter 500\n");
    expectSet("  MaxIter \t 5  \n\nWidth 3\n", "MaxIter", "-7", "  MaxIter \t -7  \n\nWidth 3\n");
    expectSet("MaxIter 5", "MaxIter", "500", "MaxIter 500");
    expectSet("JobPrefix a  b\nWidth 1\n", "JobPrefix", "c d", "JobPrefix c d\nWidth 1\n");
    expectSet("StopTime 1\n", "StopTime", "1.50", "StopTime 1.50\n"); // as given
    expectSet("StopTime 1\n", "StopTime", "-.5", "StopTime -.5\n");
    expectSet("StopTime 1\n", "StopTime", "-inf", "StopTime -inf\n");
    expectSet("MaxIter 1\nWidth 2\nMaxIter 3\n", "MaxIter", "4",
              "MaxIter 1\nWidth 2\nMaxIter 4\n");              // the last counts
    expectSet("MaxIter abc\n", "MaxIter", "4", "MaxIter 4\n"); // an error is mended
    expectSet("MaxIter\nWidth 2\n", "MaxIter", "4", "MaxIter 4\nWidth 2\n");
    expectSet("MaxIter \nWidth 2\n", "MaxIter", "4", "MaxIter 4\nWidth 2\n");
    expectSet("MaxIter", "MaxIter", "4", "MaxIter 4");
    expectSet("JobPrefix a\nWidth 2\n", "JobPrefix", "", "JobPrefix \nWidth 2\n");
    expectSet("JobPrefix \xC3\xA4\nUnheard of\n", "JobPrefix", "\xC3\xB6",
              "JobPrefix \xC3\xB6\nUnheard of\n");
    expectSet("Width 2\nJobPrefix a", "JobPrefix", "", "Width 2\nJobPrefix ");
}

TEST(ConfigurationTextEditTest, AddsASettingAtTheEnd)
{
    const struct {
        const char* before;
        const char* after;
    } cases[] = {
        {"Width 2\n",         "Width 2\nMaxIter 5\n"        },
        {"Width 2",           "Width 2\nMaxIter 5"          },
        {"Height 3\nWidth 2", "Height 3\nWidth 2\nMaxIter 5"},
        {"  Width 2\n",       "  Width 2\n  MaxIter 5\n"    },
        {"Width 2\n\n",       "Width 2\nMaxIter 5\n\n"      }, // which a load trips over as before
        {"",                  "MaxIter 5\n"                 },
        {"\n \n",             "MaxIter 5\n\n \n"            },
    };
    for (const auto& [before, after] : cases)
        EXPECT_EQ(edited(text, before, setTo("MaxIter", "5")), after);
    EXPECT_EQ(edited(text, "Width 2\r\n", setTo("MaxIter", "5")), "Width 2\r\nMaxIter 5\r\n");
    EXPECT_EQ(edited(text, "Width 2\n", setTo("JobPrefix", "")), "Width 2\nJobPrefix\n");
}

TEST(ConfigurationTextEditTest, RemovesASettingWithItsLine)
{
    const struct {
        const char* before;
        const char* after;
    } cases[] = {
        {"Width 2\nMaxIter 5\nHeight 3\n",     "Width 2\nHeight 3\n"    },
        {"Width 2\nMaxIter 5\n",               "Width 2\n"              },
        {"Width 2\nMaxIter 5",                 "Width 2\n"              },
        {"Width 2\nMaxIter 5\nMaxIter 6\n",    "Width 2\n"              },
        {"MaxIter 5\nWidth 2\n",               "Width 2\n"              },
        {"MaxIter 5\nWidth 2\nMaxIter 6\n",    "Width 2\n"              }, // or an earlier one would come back
        {"Width 2\n\n  \nMaxIter 5\n",         "Width 2\n"              }, // blanks at the end would make a load throw
        {"Width 2\n\nMaxIter 5\n\nHeight 3\n", "Width 2\n\n\nHeight 3\n"},
        {"Width 2\n\nHeight 3\n\nMaxIter 5\n", "Width 2\n\nHeight 3\n"  },
        {"Width 2\nMaxIter 5\n\nMaxIter 6\n",  "Width 2\n"              },
    };
    for (const auto& [before, after] : cases)
        expectEdited(text, before, removed("MaxIter"), after);
    const std::vector<Edit> exchange {
        {"MaxIter", std::nullopt},
        {"Width",   QString("2")}
    };
    EXPECT_EQ(edited(text, "\n \nMaxIter 5\n", exchange), "Width 2\n"); // nothing is left in between
}

TEST(ConfigurationTextEditTest, KeepsNumbersThatAreNone)
{
    expectEdited(text, "StopTime nan\nMaxIter 5\nWidth x\n", setTo("MaxIter", "6"),
                 "StopTime nan\nMaxIter 6\nWidth x\n");
}

TEST(ConfigurationTextEditTest, RefusesWhatCannotBe)
{
    const struct {
        const char* address;
        const char* value;
        const char* result;
    } cases[] = {
        {"MaxIter",     "5.0",          "refused: NotAnInteger"  },
        {"MaxIter",     "",             "refused: NotAnInteger"  },
        {"MaxIter",     "2147483648",   "refused: OutOfRange"    },
        {"StopTime",    "1e",           "refused: NotANumber"    },
        {"StopTime",    "1,5",          "refused: NotANumber"    },
        {"StopTime",    "1e400",        "refused: OutOfRange"    },
        {"StopTime",    "1e-400",       "refused: OutOfRange"    },
        {"JobPrefix",   "a  b",         "refused: CannotCarry"   },
        {"JobPrefix",   " a",           "refused: CannotCarry"   },
        {"JobPrefix",   "a\tb",         "refused: CannotCarry"   },
        {"JobPrefix",   "a\nMaxIter 3", "refused: CannotCarry"   },
        {"AnalyzePath", "a\xC2\xA0z",   "refused: CannotCarry"   },
        {"Maxiter",     "5",            "refused: UnknownAddress"},
        {"version",     "1.2.3.4",      "refused: UnknownAddress"},
        {"",            "1",            "refused: UnknownAddress"},
    };
    for (const auto& [address, value, result] : cases)
        EXPECT_EQ(edited(text, "MaxIter 5\nStopTime 1\nJobPrefix a\n", setTo(address, value)), result)
            << address << ' ' << value;
    EXPECT_EQ(edited(text, "MaxIter 5\n", removed("Width")), "refused: NotThere");
    EXPECT_EQ(edited(text, "MaxIter 5\n", setTo("JobPrefix", QChar(0))), "refused: NewFinding");
    EXPECT_EQ(edited(text, "MaxIter 5\n", setTo("JobPrefix", QChar(0xFEFF))), "refused: CannotCarry");
    EXPECT_EQ(edited(text, "MaxIter 5\n", setTo("JobPrefix", QChar(0xD800))), "refused: CannotCarry");
}

TEST(ConfigurationTextEditTest, KeepsTheEncodingOfTheMark)
{
    const std::string declaration =
        "<?xml version='1.0' encoding='ISO-8859-1'?>\n"; // which is none of a text
    EXPECT_EQ(edited(text, declaration + "JobPrefix a\n", setTo("JobPrefix", QString::fromUtf8("\xC3\xA4"))),
              declaration + "JobPrefix \xC3\xA4\n");
    const auto inUtf16 = [](const QString& content) {
        return std::string("\xFF\xFE")
            + std::string(reinterpret_cast<const char*>(content.utf16()), std::size_t(content.size()) * 2);
    };
    const QString before = "Width 2\r\nJobPrefix a\r\n";
    EXPECT_EQ(edited(text, inUtf16(before), setTo("JobPrefix", QString::fromUtf8("\xC3\xA4"))),
              inUtf16(QString::fromUtf8("Width 2\r\nJobPrefix \xC3\xA4\r\n")));
    EXPECT_EQ(edited(text, inUtf16(before), setTo("Height", "3")), inUtf16(before + "Height 3\r\n"));
    EXPECT_EQ(edited(text, inUtf16(before), removed("Width")), inUtf16("JobPrefix a\r\n"));
    for (const char* codec : {"UTF-32LE", "UTF-32BE"}) {
        const auto inUtf32 = [codec](const QString& content) {
            const QString whole = QChar(QChar::ByteOrderMark) + content;
            QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
            return QTextCodec::codecForName(codec)
                ->fromUnicode(whole.data(), whole.size(), &state)
                .toStdString();
        };
        EXPECT_EQ(edited(text, inUtf32(before), setTo("JobPrefix", QString::fromUtf8("\xC3\xA4"))),
                  inUtf32(QString::fromUtf8("Width 2\r\nJobPrefix \xC3\xA4\r\n")))
            << codec;
        EXPECT_EQ(edited(text, inUtf32(before), removed("Width")), inUtf32("JobPrefix a\r\n")) << codec;
    }
}

} // namespace
} // namespace Nereo::Inspection

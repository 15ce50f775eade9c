#include <NereoUtility/StringConversion.h>

#include <gtest/gtest.h>

namespace Nereo::Util {

TEST(StringConversion, CarriesEveryTextBothWays)
{
    const std::string texts[] = {
        "",
        "plain",
        "Lüfter 40 mm",
        "\xE6\xB5\x81\xE4\xBD\x93",
        "\xF0\x9F\x8C\x8A beyond 16 bits",
        std::string("with\0NUL", 8),
    };
    for (const std::string& text : texts)
        EXPECT_EQ(toStdString(toQString(text)), text);
}

TEST(StringConversion, IsUtf8)
{
    EXPECT_EQ(toQString("\xC3\xBC"), QString(QChar(0xFC)));
    EXPECT_EQ(toStdString(QString(QChar(0xFC))), "\xC3\xBC");
    EXPECT_EQ(toQString(std::string("a\0b", 3)).size(), 3);
}

TEST(StringConversion, ReplacesWhatIsNotUtf8)
{
    EXPECT_EQ(toQString("a\xFF"), QString("a") + QChar(QChar::ReplacementCharacter));
}

} // namespace Nereo::Util

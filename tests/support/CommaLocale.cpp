#include "CommaLocale.h"

#include <QLocale>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <locale>
#include <sstream>
#include <string>

namespace {

std::string printed(double number)
{
    char text[32];
    std::snprintf(text, sizeof text, "%g", number);
    return text;
}

std::string streamed(double number)
{
    std::ostringstream text;
    text << number;
    return text.str();
}

/// What the tests are to be proof against is there.
void expectCommas()
{
    EXPECT_EQ(printed(0.5), "0,5");
    EXPECT_EQ(std::strtod("0,5", nullptr), 0.5);
    EXPECT_EQ(streamed(1234.5), "1.234,5");
    EXPECT_EQ(QLocale().toString(1234.5), "1.234,5");
}

} // namespace

void CommaLocale::SetUp()
{
    ASSERT_NE(std::setlocale(LC_ALL, ""), nullptr) << "the locale of the environment is not installed";
    ASSERT_STREQ(std::localeconv()->decimal_point, ",") << "the locale of the environment has no comma";
    std::locale::global(std::locale(""));
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    expectCommas();
}

void CommaLocale::TearDown()
{
    expectCommas();
}

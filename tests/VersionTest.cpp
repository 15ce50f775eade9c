#include <NereoUtility/Version.h>

#include <gtest/gtest.h>

namespace Nereo::Util {

TEST(Version, IsZeroByDefault)
{
    EXPECT_EQ(Version(), Version(0, 0, 0, 0));
    EXPECT_EQ(Version().toString(), "0.0.0.0");
}

TEST(Version, IsWrittenAsFourNumbersJoinedByDots)
{
    EXPECT_EQ(Version(2024, 0, 0, 0).toString(), "2024.0.0.0");
    EXPECT_EQ(Version(1, 20, 300, 4000).toString(), "1.20.300.4000");
    EXPECT_EQ(Version(-1, 0, 0, 2147483647).toString(), "-1.0.0.2147483647");
}

TEST(Version, IsReadFromAnyText)
{
    const struct {
        const char* text;
        Version version;
    } cases[] = {
        {"2023.1.0.7",        {2023, 1, 0, 7}},
        {"  2023.1.0.7\t\n",  {2023, 1, 0, 7}}, // white space around it doesn't matter
        {"2023.1",            {2023, 1, 0, 0}}, // what is missing is 0
        {"2023",              {2023, 0, 0, 0}},
        {"",                  {0, 0, 0, 0}   },
        {"   ",               {0, 0, 0, 0}   },
        {"next",              {0, 0, 0, 0}   }, // what is no number is 0
        {"2023.x.5",          {2023, 0, 5, 0}},
        {"2023.1beta.5.6",    {2023, 0, 5, 6}},
        {"2023..5",           {2023, 0, 5, 0}},
        {".1",                {0, 1, 0, 0}   },
        {"1.2.3.",            {1, 2, 3, 0}   },
        {".",                 {0, 0, 0, 0}   },
        {"....",              {0, 0, 0, 0}   },
        {"1 . +2 .\t3.-4",    {1, 2, 3, -4}  }, // a number may have blanks and a sign
        {"1.2.3.4.5",         {1, 2, 3, 4}   }, // and what follows the fourth is dropped
        {"0x10.010.1e3.99",   {0, 10, 0, 99} }, // decimal numbers only
        {"99999999999.1.2.3", {0, 1, 2, 3}   }, // past 32 bits
        {"1,2",               {0, 0, 0, 0}   },
    };
    for (const auto& [text, version] : cases)
        EXPECT_EQ(Version(QString(text)), version) << text;
}

TEST(Version, ReadsWhatItWrites)
{
    for (const Version& version :
         {Version(), Version(2024, 1, 2, 3), Version(-5, 0, 7, -8), Version::Current})
        EXPECT_EQ(Version(version.toString()), version);
}

TEST(Version, DiffersWhereOneNumberDiffers)
{
    const Version version(1, 2, 3, 4);
    EXPECT_TRUE(version == Version(1, 2, 3, 4));
    EXPECT_FALSE(version != Version(1, 2, 3, 4));
    for (const Version& other :
         {Version(0, 2, 3, 4), Version(1, 0, 3, 4), Version(1, 2, 0, 4), Version(1, 2, 3, 0)}) {
        EXPECT_FALSE(version == other) << qPrintable(other.toString());
        EXPECT_TRUE(version != other) << qPrintable(other.toString());
    }
}

TEST(Version, CurrentIsThatOfTheBuild)
{
    EXPECT_EQ(Version::Current.toString(), NEREO_PROJECT_VERSION);
    EXPECT_EQ(Version::Branch(), NEREO_PROJECT_BRANCH);
}

} // namespace Nereo::Util

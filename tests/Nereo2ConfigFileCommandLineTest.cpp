#include <NereoFileIO/Nereo2ConfigFile.h>

#include <QDir>

#include <gmock/gmock.h>

namespace Nereo::Io {
namespace {

using ::testing::ThrowsMessage;

using Arguments = std::vector<std::string>;

class Nereo2ConfigFileCommandLine : public ::testing::Test {
protected:
    std::string text(const std::string& key) const { return config.setting(key).valueAsString(); }

    Nereo2ConfigFile config;
};

TEST_F(Nereo2ConfigFileCommandLine, NeedsTheExecutableAndTheJobPrefix)
{
    const std::string folder = QDir::currentPath().toStdString();
    const struct {
        Arguments args;
        std::string exePath;
        std::string jobPrefix;
    } cases[] = {
        {{"/opt/solver/bin/solver", "job1"},         "/opt/solver/bin", "job1"      },
        {{"/solver", "job1"},                        "/",               "job1"      },
        {{"/opt/Lüfter/solver", "Prüfung 7"},      "/opt/Lüfter",    "Prüfung 7"},
        {{"solver", "job1"},                         folder,            "job1"      }, // against the current folder
        {{"bin/solver", ""},                         folder + "/bin",   ""          },
        {{"/opt/solver", "job1", "-MaxIter"},        "/opt",            "job1"      }, // the rest isn't looked at
        {{"/opt/solver", "job1", "stray", "-NoKey"}, "/opt",            "job1"      },
    };
    for (const auto& [args, exePath, jobPrefix] : cases) {
        EXPECT_TRUE(config.loadFromRequiredCommandLineArguments(args));
        EXPECT_EQ(text(Nereo2ConfigFile::ExePath), exePath);
        EXPECT_EQ(text(Nereo2ConfigFile::JobPrefix), jobPrefix);
        EXPECT_EQ(config.setting(Nereo2ConfigFile::ExePath).type(), Setting::String);
        EXPECT_EQ(config.setting(Nereo2ConfigFile::JobPrefix).type(), Setting::String);
        EXPECT_EQ(text(Nereo2ConfigFile::MaxIter), "10000");
    }
}

TEST_F(Nereo2ConfigFileCommandLine, TakesAnExecutableThatNoFileCanBeAsItStands)
{
    using namespace std::string_literals;
    const struct {
        std::string executable;
        std::string exePath;
    } cases[] = {
        {"",                  ""          },
        {"/opt/a\0b/solver"s, "/opt/a\0b"s},
        {"a\0b/solver"s,      "a\0b"s     }, // not against the current folder
    };
    for (const auto& [executable, exePath] : cases) {
        EXPECT_TRUE(config.loadFromRequiredCommandLineArguments({executable, "job1"}));
        EXPECT_EQ(text(Nereo2ConfigFile::ExePath), exePath);
        EXPECT_EQ(text(Nereo2ConfigFile::JobPrefix), "job1");
    }
}

TEST_F(Nereo2ConfigFileCommandLine, ChangesNothingWithTooFewRequiredArguments)
{
    for (const Arguments& args : {Arguments {}, Arguments {"/opt/solver/bin/solver"}}) {
        EXPECT_FALSE(config.loadFromRequiredCommandLineArguments(args));
        EXPECT_EQ(text(Nereo2ConfigFile::ExePath), "");
        EXPECT_EQ(text(Nereo2ConfigFile::JobPrefix), "");
    }
}

TEST_F(Nereo2ConfigFileCommandLine, ThrowsWhereARequiredSettingWasRemoved)
{
    const Arguments args {"/opt/solver", "job1"};
    const auto throwsBadKey = ThrowsMessage<std::out_of_range>("invalid map<K, T> key");

    config.remove(Nereo2ConfigFile::JobPrefix);
    EXPECT_THAT([&] { config.loadFromRequiredCommandLineArguments(args); }, throwsBadKey);
    EXPECT_EQ(text(Nereo2ConfigFile::ExePath), "/opt"); // the step before it has taken effect

    config.resetAll();
    config.remove(Nereo2ConfigFile::ExePath);
    EXPECT_THAT([&] { config.loadFromRequiredCommandLineArguments(args); }, throwsBadKey);
    EXPECT_EQ(text(Nereo2ConfigFile::JobPrefix), "");
}

TEST_F(Nereo2ConfigFileCommandLine, MakesTheRequiredSettingsTextsWhateverTheyWere)
{
    config.setting(Nereo2ConfigFile::ExePath) = config.setting(Nereo2ConfigFile::MaxIter);
    config.setting(Nereo2ConfigFile::JobPrefix) = config.setting(Nereo2ConfigFile::StopTime);
    EXPECT_TRUE(config.loadFromRequiredCommandLineArguments({"/opt/solver/bin/solver", "job1"}));
    EXPECT_EQ(config.setting(Nereo2ConfigFile::ExePath).type(), Setting::String);
    EXPECT_EQ(config.setting(Nereo2ConfigFile::JobPrefix).type(), Setting::String);
    EXPECT_EQ(text(Nereo2ConfigFile::ExePath), "/opt/solver/bin");
    EXPECT_EQ(text(Nereo2ConfigFile::JobPrefix), "job1");
}

TEST_F(Nereo2ConfigFileCommandLine, TakesOptionsInPairs)
{
    EXPECT_TRUE(config.loadFromOptionalCommandLineArguments({"exe", "prefix", "-MaxIter", "500", "-Transient",
                                                             "1", "-ConvergenceCriteria", "1e-4",
                                                             "-AwsRegion", "eu west", "-MaxIter", "600"}));
    EXPECT_EQ(text(Nereo2ConfigFile::MaxIter), "600");
    EXPECT_EQ(text(Nereo2ConfigFile::Transient), "1");
    EXPECT_EQ(text(Nereo2ConfigFile::ConvergenceCriteria), "0.0001");
    EXPECT_EQ(text(Nereo2ConfigFile::AwsRegion), "eu west");
    EXPECT_EQ(text(Nereo2ConfigFile::ExePath), ""); // the first two are only counted
    EXPECT_EQ(text(Nereo2ConfigFile::JobPrefix), "");
}

TEST_F(Nereo2ConfigFileCommandLine, ConvertsTheValueToTheTypeOfTheSetting)
{
    EXPECT_TRUE(
        config.loadFromOptionalCommandLineArguments({"exe", "prefix", "-MaxIter", "12abc", "-StopTime",
                                                     "late", "-JobPrefix", "", "-AnalyzePath", "-MaxIter"}));
    EXPECT_EQ(text(Nereo2ConfigFile::MaxIter), "0");
    EXPECT_EQ(text(Nereo2ConfigFile::StopTime), "0");
    EXPECT_EQ(text(Nereo2ConfigFile::JobPrefix), "");
    EXPECT_EQ(text(Nereo2ConfigFile::AnalyzePath), "-MaxIter"); // a value may look like an option
}

TEST_F(Nereo2ConfigFileCommandLine, NeedsNoOptions)
{
    EXPECT_TRUE(config.loadFromOptionalCommandLineArguments({}));
    EXPECT_TRUE(
        config.loadFromOptionalCommandLineArguments({"-MaxIter", "500"})); // not in the place of an option
    EXPECT_EQ(text(Nereo2ConfigFile::MaxIter), "10000");
}

TEST_F(Nereo2ConfigFileCommandLine, ChangesNothingWhenAnArgumentIsMissing)
{
    const Arguments all {"exe", "prefix", "-MaxIter", "500", "-Transient"};
    for (const int count : {1, 3, 5}) {
        const Arguments args(all.begin(), all.begin() + count);
        EXPECT_FALSE(config.loadFromOptionalCommandLineArguments(args)) << count;
        EXPECT_EQ(text(Nereo2ConfigFile::MaxIter), "10000") << count;
    }
}

TEST_F(Nereo2ConfigFileCommandLine, StopsAtAnOptionThatItDoesNotKnow)
{
    config.remove(Nereo2ConfigFile::Height);
    for (const char* option : {"MaxIter", "+MaxIter", "--MaxIter", "-maxiter", "-MaxIter ", " -MaxIter",
                               "-NoKey", "-", "", "-Height"}) {
        config.reset(Nereo2ConfigFile::PFreq1);
        EXPECT_FALSE(config.loadFromOptionalCommandLineArguments(
            {"exe", "prefix", "-PFreq1", "7", option, "500", "-PFreq2", "8"}))
            << option;
        EXPECT_EQ(text(Nereo2ConfigFile::PFreq1), "7") << option; // the pairs before it have taken effect
        EXPECT_EQ(text(Nereo2ConfigFile::MaxIter), "10000") << option;
        EXPECT_EQ(text(Nereo2ConfigFile::PFreq2), "50") << option;
    }
}

} // namespace
} // namespace Nereo::Io

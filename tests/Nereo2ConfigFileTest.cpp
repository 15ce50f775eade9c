#include "support/TemporaryFolder.h"

#include <NereoFileIO/Nereo2ConfigFile.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <limits>
#include <type_traits>

namespace Nereo::Io {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::ThrowsMessage;

const struct {
    std::string constant;
    std::string key;
    Setting::Type type;
    std::string text;
} factorySettings[] = {
  // constant, its key, and the type and text of its default
    {Nereo2ConfigFile::AdvScheme,                 "AdvScheme",                 Setting::Int,    "1"               },
    {Nereo2ConfigFile::AnalyzePath,               "AnalyzePath",               Setting::String, ""                },
    {Nereo2ConfigFile::AwsClusterSize,            "AwsClusterSize",            Setting::Int,    "2"               },
    {Nereo2ConfigFile::AwsConnectTimeout,         "AwsConnectTimeout",         Setting::Int,    "2000"            },
    {Nereo2ConfigFile::AwsIamInstanceProfile,     "AwsIamInstanceProfile",     Setting::String, "NEREO2-Head-Node"},
    {Nereo2ConfigFile::AwsImageId,                "AwsImageId",                Setting::String, ""                },
    {Nereo2ConfigFile::AwsInstanceType,           "AwsInstanceType",           Setting::String, "r4.large"        },
    {Nereo2ConfigFile::AwsKeyName,                "AwsKeyName",                Setting::String, "default"         },
    {Nereo2ConfigFile::AwsPlacementGroup,         "AwsPlacementGroup",         Setting::String, "NEREO_Cluster"   },
    {Nereo2ConfigFile::AwsRegion,                 "AwsRegion",                 Setting::String, "us-east-1"       },
    {Nereo2ConfigFile::AwsRequestTimeout,         "AwsRequestTimeout",         Setting::Int,    "5000"            },
    {Nereo2ConfigFile::AwsSecurityGroup,          "AwsSecurityGroup",          Setting::String, "NEREO_Worker"    },
    {Nereo2ConfigFile::CloudJobId,                "CloudJobId",                Setting::String, ""                },
    {Nereo2ConfigFile::ConvergenceCriteria,       "ConvergenceCriteria",       Setting::Double, "0.01"            },
    {Nereo2ConfigFile::Credentials,               "Credentials",               Setting::Int,    "0"               },
    {Nereo2ConfigFile::DumpAndCompare,            "DumpAndCompare",            Setting::Int,    "0"               },
    {Nereo2ConfigFile::DumpIter,                  "DumpIter",                  Setting::Int,    "-1"              },
    {Nereo2ConfigFile::ExePath,                   "ExePath",                   Setting::String, ""                },
    {Nereo2ConfigFile::GraphicFreq,               "GraphicFreq",               Setting::Int,    "100"             },
    {Nereo2ConfigFile::Height,                    "Height",                    Setting::Int,    "10"              },
    {Nereo2ConfigFile::IntraNodeCommunication,    "IntraNodeCommunication",    Setting::Int,    "0"               },
    {Nereo2ConfigFile::JobPrefix,                 "JobPrefix",                 Setting::String, ""                },
    {Nereo2ConfigFile::LaunchedFromNEREO1,        "LaunchedFromNEREO1",        Setting::Int,    "0"               },
    {Nereo2ConfigFile::LogTimeStamp,              "LogTimeStamp",              Setting::Int,    "1"               },
    {Nereo2ConfigFile::Machines,                  "Machines",                  Setting::Int,    "0"               },
    {Nereo2ConfigFile::MaxIter,                   "MaxIter",                   Setting::Int,    "10000"           },
    {Nereo2ConfigFile::Mpi,                       "Mpi",                       Setting::Int,    "0"               },
    {Nereo2ConfigFile::NetworkSpeed,              "NetworkSpeed",              Setting::Int,    "10"              },
    {Nereo2ConfigFile::NewWay,                    "NewWay",                    Setting::Int,    "0"               },
    {Nereo2ConfigFile::NoAffinity,                "NoAffinity",                Setting::Int,    "0"               },
    {Nereo2ConfigFile::NumberOfAccelerantSolvers, "NumberOfAccelerantSolvers", Setting::Int,    "0"               },
    {Nereo2ConfigFile::NumberOfThreads,           "NumberOfThreads",           Setting::Int,    "1"               },
    {Nereo2ConfigFile::PFreq1,                    "PFreq1",                    Setting::Int,    "50"              },
    {Nereo2ConfigFile::PFreq2,                    "PFreq2",                    Setting::Int,    "50"              },
    {Nereo2ConfigFile::RestartIter,               "RestartIter",               Setting::Int,    "0"               },
    {Nereo2ConfigFile::SUPGPCor,                  "SUPGPCor",                  Setting::Int,    "0"               },
    {Nereo2ConfigFile::Schur,                     "Schur",                     Setting::Int,    "0"               },
    {Nereo2ConfigFile::SocketsPerNode,            "SocketsPerNode",            Setting::Int,    "2"               },
    {Nereo2ConfigFile::SstIwf,                    "SstIwf",                    Setting::Int,    "1"               },
    {Nereo2ConfigFile::StopTime,                  "StopTime",                  Setting::Double, "1e+20"           },
    {Nereo2ConfigFile::TimeStepSize,              "TimeStepSize",              Setting::Double, "0"               },
    {Nereo2ConfigFile::Transient,                 "Transient",                 Setting::Int,    "0"               },
    {Nereo2ConfigFile::TurbSlipWall,              "TurbSlipWall",              Setting::Int,    "0"               },
    {Nereo2ConfigFile::TurbulenceModel,           "TurbulenceModel",           Setting::Int,    "0"               },
    {Nereo2ConfigFile::VSolve,                    "VSolve",                    Setting::Int,    "0"               },
    {Nereo2ConfigFile::Width,                     "Width",                     Setting::Int,    "10"              },
};

TEST(Nereo2ConfigFile, HasTheseSettingsInThisOrder)
{
    const Nereo2ConfigFile config;
    std::vector<std::string> keys;
    for (const auto& [constant, key, type, text] : factorySettings) {
        EXPECT_EQ(constant, key);
        EXPECT_TRUE(config.contains(key)) << key;
        EXPECT_EQ(config.setting(key).name(), key);
        EXPECT_EQ(config.setting(key).type(), type) << key;
        EXPECT_EQ(config.setting(key).valueAsString(), text) << key;
        keys.push_back(key);
    }
    EXPECT_EQ(keys.size(), 46u);
    EXPECT_TRUE(std::is_sorted(keys.begin(), keys.end()));
    EXPECT_EQ(config.keys(), keys);
}

TEST(Nereo2ConfigFile, GivesItsDefaultsAsNumbers)
{
    const Nereo2ConfigFile config;
    EXPECT_EQ(config.setting(Nereo2ConfigFile::StopTime).valueAsDouble(), 1e20);
    EXPECT_EQ(config.setting(Nereo2ConfigFile::ConvergenceCriteria).valueAsDouble(), 0.01);
    EXPECT_EQ(config.setting(Nereo2ConfigFile::TimeStepSize).valueAsDouble(), 0.0);
    EXPECT_EQ(config.setting(Nereo2ConfigFile::DumpIter).valueAsInt(), -1);
}

TEST(Nereo2ConfigFile, NamesTheCustomaryFile)
{
    EXPECT_EQ(Nereo2ConfigFile::DefaultName, "NEREO2_default.xml");
}

TEST(Nereo2ConfigFile, StartsAsANewFile)
{
    const Nereo2ConfigFile config;
    EXPECT_EQ(config.version(), Util::Version::Current);
    EXPECT_EQ(config.filePath(), "");
}

TEST(Nereo2ConfigFile, ComparesKeysByteByByte)
{
    const Nereo2ConfigFile config;
    for (const char* key : {"maxIter", "MAXITER", "MaxIter ", " MaxIter", "", "Max"})
        EXPECT_FALSE(config.contains(key)) << key;
    EXPECT_FALSE(config.contains(std::string("MaxIter\0", 8)));
}

TEST(Nereo2ConfigFile, ThrowsAtAKeyThatIsNotPresent)
{
    Nereo2ConfigFile config;
    const Nereo2ConfigFile& constant = config;
    const auto message = "invalid map<K, T> key";
    EXPECT_THAT([&] { config.setting("maxiter"); }, ThrowsMessage<std::out_of_range>(message));
    EXPECT_THAT([&] { constant.setting("maxiter"); }, ThrowsMessage<std::out_of_range>(message));
    EXPECT_FALSE(config.contains("maxiter"));
    EXPECT_EQ(config.keys().size(), std::size(factorySettings));
}

TEST(Nereo2ConfigFile, RemovesASettingUntilItIsReset)
{
    Nereo2ConfigFile config;
    config.setting(Nereo2ConfigFile::MaxIter).setValueFromString("5");
    config.remove(Nereo2ConfigFile::MaxIter);
    config.remove(Nereo2ConfigFile::MaxIter); // an absent one is no error
    EXPECT_FALSE(config.contains(Nereo2ConfigFile::MaxIter));
    EXPECT_THROW(config.setting(Nereo2ConfigFile::MaxIter), std::out_of_range);
    EXPECT_EQ(config.keys().size(), std::size(factorySettings) - 1);

    config.reset(Nereo2ConfigFile::MaxIter);
    EXPECT_EQ(config.setting(Nereo2ConfigFile::MaxIter).valueAsInt(), 10000);
    EXPECT_EQ(config.setting(Nereo2ConfigFile::MaxIter).name(), "MaxIter");
}

TEST(Nereo2ConfigFile, ResetsOneSettingWithItsName)
{
    Nereo2ConfigFile config;
    Setting& maxIter = config.setting(Nereo2ConfigFile::MaxIter);
    maxIter.setValueFromString("5");
    maxIter.setName("another");
    config.setting(Nereo2ConfigFile::Width).setValueFromString("5");

    config.reset(Nereo2ConfigFile::MaxIter);
    EXPECT_EQ(maxIter.valueAsInt(), 10000);
    EXPECT_EQ(maxIter.name(), "MaxIter");
    EXPECT_EQ(config.setting(Nereo2ConfigFile::Width).valueAsInt(), 5);
}

TEST(Nereo2ConfigFile, IgnoresTheResetOfWhatNeverWasASetting)
{
    Nereo2ConfigFile config;
    config.reset("NoSuchKey");
    EXPECT_FALSE(config.contains("NoSuchKey"));
    EXPECT_EQ(config.keys().size(), std::size(factorySettings));
}

TEST(Nereo2ConfigFile, ClearsAndResetsEverything)
{
    Nereo2ConfigFile config;
    config.setting(Nereo2ConfigFile::StopTime).setValueFromString("5");
    config.clear();
    EXPECT_THAT(config.keys(), IsEmpty());

    config.reset(Nereo2ConfigFile::Width);
    EXPECT_THAT(config.keys(), ElementsAre("Width"));

    config.resetAll();
    EXPECT_EQ(config.keys().size(), std::size(factorySettings));
    for (const auto& [constant, key, type, text] : factorySettings) {
        EXPECT_EQ(config.setting(key).name(), key);
        EXPECT_EQ(config.setting(key).type(), type) << key;
        EXPECT_EQ(config.setting(key).valueAsString(), text) << key;
    }
}

TEST(Nereo2ConfigFile, KeepsReferencesThroughResetAll)
{
    Nereo2ConfigFile config;
    config.remove(Nereo2ConfigFile::AdvScheme);
    Setting& width = config.setting(Nereo2ConfigFile::Width);
    width.setValueFromString("5");
    config.resetAll();
    EXPECT_EQ(width.valueAsInt(), 10);
    EXPECT_EQ(&width, &config.setting(Nereo2ConfigFile::Width));
}

Nereo2ConfigFile changedConfig()
{
    Nereo2ConfigFile config;
    config.setting(Nereo2ConfigFile::MaxIter).setValueFromString("5");
    config.remove(Nereo2ConfigFile::Width);
    config.setVersion(Util::Version(1, 2, 3, 4));
    config.saveTo("/nonexistent/folder/file.cfg");
    return config;
}

void expectChanged(const Nereo2ConfigFile& config)
{
    EXPECT_EQ(config.setting(Nereo2ConfigFile::MaxIter).valueAsInt(), 5);
    EXPECT_FALSE(config.contains(Nereo2ConfigFile::Width));
    EXPECT_EQ(config.version(), Util::Version(1, 2, 3, 4));
    EXPECT_EQ(config.filePath(), "/nonexistent/folder/file.cfg");
}

TEST(Nereo2ConfigFile, IsCopiedWithItsDefaults)
{
    const Nereo2ConfigFile source = changedConfig();

    Nereo2ConfigFile copy(source);
    expectChanged(copy);

    Nereo2ConfigFile assigned;
    assigned.setting(Nereo2ConfigFile::Height).setValueFromString("5");
    EXPECT_EQ(&(assigned = source), &assigned);
    expectChanged(assigned);
    EXPECT_EQ(assigned.setting(Nereo2ConfigFile::Height).valueAsInt(), 10);

    for (Nereo2ConfigFile* config : {&copy, &assigned}) {
        config->resetAll();
        EXPECT_EQ(config->setting(Nereo2ConfigFile::MaxIter).valueAsInt(), 10000);
        EXPECT_EQ(config->setting(Nereo2ConfigFile::Width).valueAsInt(), 10);
    }
    expectChanged(source);
}

TEST(Nereo2ConfigFile, IsUnchangedByAssignmentToItself)
{
    Nereo2ConfigFile config = changedConfig();
    const Nereo2ConfigFile& itself = config;
    config = itself;
    expectChanged(config);
}

TEST(Nereo2ConfigFile, KeepsReferencesToTheObjectTheyWereTakenFrom)
{
    Nereo2ConfigFile config;
    Setting& width = config.setting(Nereo2ConfigFile::Width);
    const Nereo2ConfigFile copy(config);
    width.setValueFromString("5");
    EXPECT_EQ(config.setting(Nereo2ConfigFile::Width).valueAsInt(), 5);
    EXPECT_EQ(copy.setting(Nereo2ConfigFile::Width).valueAsInt(), 10);
}

TEST(Nereo2ConfigFile, CarriesNumbersThatAreSetInBothForms)
{
    const TemporaryFolder folder;
    for (const char* name : {"run.xml", "run.cfg"}) {
        Nereo2ConfigFile config;
        config.setting(Nereo2ConfigFile::ConvergenceCriteria).setValue(1e-7);
        config.setting(Nereo2ConfigFile::TimeStepSize).setValue(1.0 / 3.0);
        config.setting(Nereo2ConfigFile::MaxIter).setValue(-2147483647 - 1);
        ASSERT_TRUE(config.saveTo(folder.path(name)));

        Nereo2ConfigFile loaded;
        ASSERT_TRUE(loaded.loadFrom(folder.path(name)));
        EXPECT_EQ(loaded.setting(Nereo2ConfigFile::ConvergenceCriteria).valueAsDouble(), 1e-7);
        EXPECT_EQ(loaded.setting(Nereo2ConfigFile::TimeStepSize).valueAsDouble(), 1.0 / 3.0);
        EXPECT_EQ(loaded.setting(Nereo2ConfigFile::MaxIter).valueAsInt(), -2147483647 - 1);
    }
}

TEST(Nereo2ConfigFile, CarriesNumbersAtTheEdgesInBothForms)
{
    const struct {
        double number;
        const char* text;
    } cases[] = {
        {0.1 + 0.2,                                 "0.30000000000000004"    },
        {1e20,                                      "1e+20"                  },
        {-1.5e-7,                                   "-1.5e-07"               },
        {std::numeric_limits<double>::denorm_min(), "5e-324"                 },
        {std::numeric_limits<double>::max(),        "1.7976931348623157e+308"},
        {std::numeric_limits<double>::infinity(),   "inf"                    },
    };
    TemporaryFolder folder;
    for (const std::string& path : {folder.path("run.xml"), folder.path("run.cfg")}) {
        for (const auto& [number, expected] : cases) {
            Nereo2ConfigFile config;
            config.setting(Nereo2ConfigFile::StopTime).setValueFromString(expected);
            config.setting(Nereo2ConfigFile::MaxIter).setValueFromString("-2147483648");
            ASSERT_TRUE(config.saveTo(path));
            EXPECT_THAT(readBytes(path), ::testing::HasSubstr(expected));
            Nereo2ConfigFile loaded;
            ASSERT_TRUE(loaded.loadFrom(path));
            EXPECT_EQ(loaded.setting(Nereo2ConfigFile::StopTime).valueAsDouble(), number) << path;
            EXPECT_EQ(loaded.setting(Nereo2ConfigFile::MaxIter).valueAsInt(),
                      std::numeric_limits<int>::min());
        }
    }
}

} // namespace
} // namespace Nereo::Io

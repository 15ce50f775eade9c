#include "support/TemporaryFolder.h"

#include <NereoFileIO/Nereo2ConfigFile.h>
#include <NereoInspection/Origins.h>

#include <gtest/gtest.h>

#include <QDir>

namespace Nereo::Inspection {
namespace {

/// A line for each setting that isn't its default, and what ends a load or a command line.
std::string described(const EffectiveConfiguration& configuration)
{
    std::string lines;
    for (const EffectiveSetting& setting : configuration.settings) {
        if (setting.origin == Origin::Default)
            continue;
        lines += setting.key.toStdString() + '=' + setting.value.toStdString() + ' '
            + originName(setting.origin).toStdString();
        if (setting.place.hasLine())
            lines += ' ' + std::to_string(setting.place.line) + ':' + std::to_string(setting.place.column);
        lines += '\n';
    }
    if (configuration.endOfLoad)
        lines += effectName(configuration.endOfLoad->effect).toStdString() + ' '
            + configuration.endOfLoad->code.toStdString() + '\n';
    return lines + configuration.commandLineError.toStdString();
}

std::string effective(const std::string& name, const std::string& bytes,
                      const std::vector<std::string>& commandLine = {}, FileKind kind = FileKind::Unknown)
{
    const TemporaryFolder folder;
    CheckOptions options;
    options.kind = kind;
    return described(effectiveConfiguration(folder.write(name, bytes), commandLine, options));
}

TEST(OriginsTest, HasEverySetting)
{
    const TemporaryFolder folder;
    const EffectiveConfiguration configuration = effectiveConfiguration(folder.write("file.cfg", ""));
    const Io::Nereo2ConfigFile defaults;
    ASSERT_EQ(configuration.settings.size(), defaults.keys().size());
    for (std::size_t i = 0; i < configuration.settings.size(); ++i) {
        const EffectiveSetting& setting = configuration.settings[i];
        EXPECT_EQ(setting.key.toStdString(), defaults.keys()[i]);
        EXPECT_EQ(setting.value.toStdString(), defaults.setting(defaults.keys()[i]).valueAsString());
        EXPECT_EQ(setting.origin, Origin::Default);
        EXPECT_FALSE(setting.place.hasLine());
    }
    EXPECT_FALSE(configuration.endOfLoad);
}

TEST(OriginsTest, HasANameForEachOrigin)
{
    EXPECT_EQ(originName(Origin::Default), "default");
    EXPECT_EQ(originName(Origin::File), "file");
    EXPECT_EQ(originName(Origin::CommandLine), "command-line");
}

TEST(OriginsTest, TellsWhereAValueStands)
{
    EXPECT_EQ(
        effective("file.cfg", "MaxIter 5\nJobPrefix a  b\nMaxIter  7\nStopTime 1.50\n"),
        "JobPrefix=a b file 2:11\nMaxIter=7 file 3:10\nStopTime=1.5 file 4:10\n"); // the last one counts
    EXPECT_EQ(
        effective("file.xml",
                  "<Nereo2Config Version='1.2.3.4'>\n <MaxIter>5</MaxIter><Width>x</Width></Nereo2Config>"),
        "MaxIter=5 file 2:11\nWidth=0 file 2:29\n");
}

TEST(OriginsTest, TakesTheCommandLineOverTheFile)
{
    const std::string folder = QDir().absolutePath().toStdString();
    EXPECT_EQ(effective("file.cfg", "MaxIter 5\nWidth 3\nJobPrefix a\n",
                        {"./solver", "cavity", "-MaxIter", "6", "-StopTime", "-1"}),
              "ExePath=" + folder
                  + " command-line\nJobPrefix=cavity command-line\nMaxIter=6 command-line\n"
                    "StopTime=-1 command-line\nWidth=3 file 2:7\n");
}

TEST(OriginsTest, SaysWhatIsWrongWithACommandLine)
{
    const std::string required = "ExePath=/a command-line\nJobPrefix=b command-line\n";
    EXPECT_EQ(effective("file.cfg", "", {"/a/solver"}), "the command line has no prefix of the job");
    EXPECT_EQ(effective("file.cfg", "", {"/a/solver", "b", "-MaxIter"}),
              required + "the last argument of the command line has no value, and none is taken");
    EXPECT_EQ(effective("file.cfg", "", {"/a/solver", "b", "-Width", "3", "-Unheard", "4", "-MaxIter", "5"}),
              required + "Width=3 command-line\nthe command line has \"-Unheard\", which is no setting");
    EXPECT_EQ(effective("file.cfg", "", {"/a/solver", "b", "Width", "3"}),
              required + "the command line has \"Width\", which is no setting");
}

TEST(OriginsTest, EndsWhereALoadEnds)
{
    EXPECT_EQ(effective("file.cfg", "Width 3\nUnheard 4\nMaxIter 5\n"),
              "Width=3 file 1:7\nthrows unknown-key\n");
    EXPECT_EQ(effective("file.cfg", "Width 3\n\n"), "Width=3 file 1:7\nthrows blank-end\n");
    EXPECT_EQ(effective("file.xml", "<Nereo2Config><Width>3</Width><MaxIter>"),
              "MaxIter=0 file 1:40\nWidth=3 file 1:22\nfails malformed-xml\n");
    EXPECT_EQ(effective("file.xml", "Width 3\n"), "fails malformed-xml\n"); // by its suffix
    EXPECT_EQ(effective("file.cfg", "<Nereo2Config/>"), "throws unknown-key\n");
    EXPECT_EQ(described(effectiveConfiguration("/no/such/file")), "fails cannot-open\n");
    EXPECT_EQ(described(effectiveConfiguration("/no/such/file", {"/a/solver", "b"})),
              "ExePath=/a command-line\nJobPrefix=b command-line\nfails cannot-open\n");
}

TEST(OriginsTest, SaysWhatEndsALoad)
{
    const TemporaryFolder folder;
    const auto endOf = [](const std::string& path) {
        const std::optional<Finding> end = effectiveConfiguration(path).endOfLoad;
        return end ? end->address.toStdString() + ' ' + std::to_string(end->place.line) + ' '
                + end->message.toStdString()
                   : "";
    };
    EXPECT_EQ(endOf(folder.write("a.cfg", "Width 3\nUnheard 4\nOther 5\n")),
              "Unheard 2 \"Unheard\" is no setting; a load throws");
    EXPECT_EQ(endOf("/no/such/file"), " -1 the file can't be opened: No such file or directory");
}

TEST(OriginsTest, TakesTheKindThatItIsGiven)
{
    EXPECT_EQ(
        effective("file", "<Nereo2Config><Width>3</Width></Nereo2Config>", {}, FileKind::ConfigurationXml),
        "Width=3 file 1:22\n");
    const std::string document = "<Nereo2Config><Width>3</Width></Nereo2Config>";
    EXPECT_EQ(effective("file.cfg", document, {}, FileKind::ConfigurationXml), "Width=3 file 1:22\n");
    EXPECT_EQ(effective("file.xml", "Width 3\n", {}, FileKind::ConfigurationText), "Width=3 file 1:7\n");
    EXPECT_EQ(effective("file.xml", document, {}, FileKind::ConfigurationText), "throws unknown-key\n");
    EXPECT_EQ(effective("file.xml", document, {}, FileKind::Materials), "");
}

/// What a load gives of any file up to where it ends.
TEST(OriginsTest, AgreesWithALoad)
{
    const TemporaryFolder folder;
    const std::string path = folder.write("file.cfg",
                                          "Width 0x10\nStopTime nan\nAwsRegion \nHeight 2147483648\n"
                                          "JobPrefix a \t b\n");
    Io::Nereo2ConfigFile loaded;
    ASSERT_TRUE(loaded.loadFrom(path));
    for (const EffectiveSetting& setting : effectiveConfiguration(path).settings)
        EXPECT_EQ(setting.value.toStdString(), loaded.setting(setting.key.toStdString()).valueAsString());
}

} // namespace
} // namespace Nereo::Inspection

#include "support/FailingDevice.h"
#include "support/GoldenFile.h"
#include "support/RandomConfiguration.h"
#include "support/SameContent.h"
#include "support/TemporaryFolder.h"

#include "FileIO/Nereo2ConfigFileTextReader.h"
#include "FileIO/Nereo2ConfigFileTextWriter.h"

#include <NereoFileIO/Nereo2ConfigFile.h>

#include <QTextCodec>

#include <gmock/gmock.h>

namespace Nereo::Io {
namespace {

using ::testing::ThrowsMessage;

class Nereo2ConfigFileText : public ::testing::Test {
protected:
    bool read(const QString& lines)
    {
        QString text = lines;
        QTextStream in(&text);
        return Nereo2ConfigFileTextReader(config).read(in);
    }

    QString written() const
    {
        QString text;
        QTextStream out(&text);
        Nereo2ConfigFileTextWriter(config).write(out);
        return text;
    }

    std::string text(const std::string& key) const { return config.setting(key).valueAsString(); }

    void expectUnknownKey(const QString& lines)
    {
        EXPECT_THAT([&] { read(lines); }, ThrowsMessage<std::out_of_range>("invalid map<K, T> key"))
            << qPrintable(lines);
    }

    Nereo2ConfigFile config;
    TemporaryFolder folder;
};

TEST_F(Nereo2ConfigFileText, WritesALineForEachSettingThatHasAText)
{
    ASSERT_TRUE(config.saveTo(folder.path("new.cfg")));
    expectGolden(readBytes(folder.path("new.cfg")), "new-configuration.cfg");
}

TEST_F(Nereo2ConfigFileText, IsInUtf8WhateverTheLocale)
{
    QTextCodec* const before = QTextCodec::codecForLocale();
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("ISO-8859-1"));
    config.clear();
    config.reset(Nereo2ConfigFile::JobPrefix);
    config.setting(Nereo2ConfigFile::JobPrefix).setValueFromString("Lüfter 40 €");
    EXPECT_TRUE(config.saveTo(folder.path("saved.cfg")));
    EXPECT_TRUE(config.loadFrom(folder.write("loaded.cfg", "JobPrefix Gehäuse €\n")));
    QTextCodec::setCodecForLocale(before);
    EXPECT_EQ(readBytes(folder.path("saved.cfg")), "JobPrefix Lüfter 40 €\n");
    EXPECT_EQ(text(Nereo2ConfigFile::JobPrefix), "Gehäuse €");
}

TEST_F(Nereo2ConfigFileText, WritesKeyBlankValue)
{
    config.clear();
    config.reset(Nereo2ConfigFile::AnalyzePath);
    config.reset(Nereo2ConfigFile::StopTime);
    config.reset(Nereo2ConfigFile::MaxIter);
    const struct {
        const char* path;
        const char* line;
    } cases[] = {
        {"",              ""                           }, // no line
        {"C:/Runs",       "AnalyzePath C:/Runs\n"      },
        {"%1 %2",         "AnalyzePath %1 %2\n"        },
        {" two  blanks ", "AnalyzePath  two  blanks \n"},
        {"Lüfter",       "AnalyzePath Lüfter\n"      },
    };
    for (const auto& [path, line] : cases) {
        config.setting(Nereo2ConfigFile::AnalyzePath).setValueFromString(path);
        EXPECT_EQ(written(), QString(line) + "MaxIter 10000\nStopTime 1e+20\n");
    }
}

TEST_F(Nereo2ConfigFileText, WritesTextsAsTheirGettersGiveThem)
{
    config.clear();
    config.reset(Nereo2ConfigFile::JobPrefix);
    Setting& prefix = config.setting(Nereo2ConfigFile::JobPrefix);
    prefix.setValueFromString("\uFEFF\uFEFFx"); // of which the first mark is dropped
    EXPECT_EQ(written().toStdString(), "JobPrefix " + prefix.valueAsString() + "\n");
    EXPECT_EQ(prefix.valueAsString(), "\uFEFFx");
}

TEST_F(Nereo2ConfigFileText, ReadsALineForEachSetting)
{
    const struct {
        const char* lines;
        const char* path;
        const char* maxIter;
    } cases[] = {
        {"",                                        "before",       "10000"},
        {"MaxIter 500\n",                           "before",       "500"  },
        {"MaxIter 500",                             "before",       "500"  }, // without a line end
        {"MaxIter\t500 \nAnalyzePath x\n",          "x",            "500"  },
        {"   MaxIter 500\n",                        "before",       "500"  },
        {"\n\n \t\nMaxIter 500\n\nAnalyzePath x\n", "x",            "500"  }, // blank lines before a key
        {"AnalyzePath  C:/My   Runs/a \n",          "C:/My Runs/a", "10000"}, // white space in the value is simplified
        {"AnalyzePath a\tb\x0b c\n",                "a b c",        "10000"},
        {"AnalyzePath\nMaxIter 5\n",                "",             "5"    }, // a key alone
        {"MaxIter\n",                               "before",       "0"    },
        {"MaxIter",                                 "before",       "0"    },
        {"MaxIter 12abc\n",                         "before",       "0"    },
        {"MaxIter 5 6\n",                           "before",       "0"    },
        {"MaxIter 5\r\nAnalyzePath x\r\n",          "x",            "5"    },
        {"MaxIter 5\nMaxIter 6\n",                  "before",       "6"    }, // the last one stays
        {"AnalyzePath MaxIter 7\n",                 "MaxIter 7",    "10000"},
        {"AnalyzePath # no comment\n",              "# no comment", "10000"},
    };
    for (const auto& [lines, path, maxIter] : cases) {
        config.resetAll();
        config.setting(Nereo2ConfigFile::AnalyzePath).setValueFromString("before");
        EXPECT_TRUE(read(lines)) << lines;
        EXPECT_EQ(text(Nereo2ConfigFile::AnalyzePath), path) << lines;
        EXPECT_EQ(text(Nereo2ConfigFile::MaxIter), maxIter) << lines;
        EXPECT_EQ(config.setting(Nereo2ConfigFile::AnalyzePath).type(), Setting::String);
        EXPECT_EQ(config.setting(Nereo2ConfigFile::MaxIter).type(), Setting::Int);
    }
}

TEST_F(Nereo2ConfigFileText, SkipsAByteOrderMark)
{
    EXPECT_TRUE(config.loadFrom(folder.write("run.cfg", "\xEF\xBB\xBFMaxIter 500\n")));
    EXPECT_EQ(text(Nereo2ConfigFile::MaxIter), "500");
}

TEST_F(Nereo2ConfigFileText, ChangesOnlyWhatIsNamed)
{
    config.setting(Nereo2ConfigFile::Width).setValueFromString("7");
    EXPECT_TRUE(read("Height 8\n"));
    EXPECT_EQ(text(Nereo2ConfigFile::Width), "7");
    EXPECT_EQ(text(Nereo2ConfigFile::Height), "8");
    EXPECT_EQ(text(Nereo2ConfigFile::MaxIter), "10000");
}

TEST_F(Nereo2ConfigFileText, ThrowsAtAnUnknownKeyAndKeepsTheLinesBefore)
{
    config.remove(Nereo2ConfigFile::Mpi);
    for (const char* line : {"maxiter 6", "# comment", "Mpi 1", "MaxIter=6", "%1 6"}) {
        config.reset(Nereo2ConfigFile::Width);
        config.reset(Nereo2ConfigFile::Height);
        expectUnknownKey(QString("Width 5\n%1\nHeight 5\n").arg(line));
        EXPECT_EQ(text(Nereo2ConfigFile::Width), "5") << line;
        EXPECT_EQ(text(Nereo2ConfigFile::Height), "10") << line;
    }
    EXPECT_TRUE(read("Height 6\n")); // and stays usable
    EXPECT_EQ(text(Nereo2ConfigFile::Height), "6");
}

TEST_F(Nereo2ConfigFileText, TakesWhiteSpaceAfterTheLastLineForAnEmptyKey)
{
    for (const char* tail : {"\n", " ", "\t", "\n\n\n", " \n"}) {
        config.reset(Nereo2ConfigFile::Width);
        expectUnknownKey(QString("Width 5\n") + tail);
        EXPECT_EQ(text(Nereo2ConfigFile::Width), "5");
    }
    expectUnknownKey("\n");
}

TEST_F(Nereo2ConfigFileText, LetsTheExceptionPassThroughLoadFrom)
{
    const std::string path = folder.write("bad.cfg", "Width 5\nNoSuchKey 6\n");
    EXPECT_THAT([&] { config.loadFrom(path); }, ThrowsMessage<std::out_of_range>("invalid map<K, T> key"));
    EXPECT_EQ(text(Nereo2ConfigFile::Width), "5");
    EXPECT_EQ(config.filePath(), path);
    EXPECT_TRUE(config.saveTo(path));
}

TEST_F(Nereo2ConfigFileText, EndsWhereTheDeviceFails)
{
    const struct {
        const char* readable;
        const char* maxIter;
    } cases[] = {
        {"",              "10000"},
        {"MaxIter 5\n",   "5"    },
        {"MaxIter 5\n\n", "5"    },
        {"MaxIter 25",    "25"   },
        {"MaxIter",       "0"    },
    };
    for (const auto& [readable, maxIter] : cases) {
        config.resetAll();
        FailingDevice device(readable);
        QTextStream in(&device);
        EXPECT_TRUE(Nereo2ConfigFileTextReader(config).read(in)) << readable;
        EXPECT_EQ(text(Nereo2ConfigFile::MaxIter), maxIter) << readable;
    }
}

TEST_F(Nereo2ConfigFileText, IsUsedForEverySuffixButXml)
{
    for (const char* name :
         {"run.cfg", "run.XML", "run.Xml", "run", "xml", "run.xml.txt", "run.xml ", "run."}) {
        const std::string path = folder.path(name);
        config.setting(Nereo2ConfigFile::MaxIter).setValueFromString("5");
        ASSERT_TRUE(config.saveTo(path)) << name;
        EXPECT_EQ(readBytes(path).substr(0, 12), "AdvScheme 1\n") << name;
        EXPECT_EQ(config.filePath(), path);
        config.resetAll();
        EXPECT_TRUE(config.loadFrom(path)) << name;
        EXPECT_EQ(text(Nereo2ConfigFile::MaxIter), "5") << name;
    }
}

TEST_F(Nereo2ConfigFileText, CarriesPathsAndValuesInUtf8)
{
    const std::string path = folder.path("Strömung/run.cfg");
    EXPECT_FALSE(config.saveTo(path)); // no such folder
    EXPECT_EQ(config.filePath(), path);

    const std::string existing = folder.path("Strömung \xE6\xB5\x81.cfg");
    config.setting(Nereo2ConfigFile::JobPrefix).setValueFromString("Lüfter \xF0\x9F\x8C\x8A");
    ASSERT_TRUE(config.saveTo(existing));
    Nereo2ConfigFile loaded;
    EXPECT_TRUE(loaded.loadFrom(existing));
    EXPECT_EQ(loaded.setting(Nereo2ConfigFile::JobPrefix).valueAsString(), "Lüfter \xF0\x9F\x8C\x8A");
}

TEST_F(Nereo2ConfigFileText, IsUnchangedByAFileThatDoesNotOpen)
{
    config.setting(Nereo2ConfigFile::MaxIter).setValueFromString("5");
    EXPECT_FALSE(config.loadFrom(folder.path("missing.cfg")));
    EXPECT_FALSE(config.loadFrom(folder.path()));
    EXPECT_EQ(text(Nereo2ConfigFile::MaxIter), "5");
}

TEST_F(Nereo2ConfigFileText, LoadsTheSample)
{
    EXPECT_TRUE(config.loadFrom(NEREO_SAMPLES_DIR "/solver.cfg"));
    EXPECT_EQ(text(Nereo2ConfigFile::MaxIter), "2500");
    EXPECT_EQ(text(Nereo2ConfigFile::ConvergenceCriteria), "0.0001");
    EXPECT_EQ(text(Nereo2ConfigFile::NumberOfThreads), "8");
    EXPECT_EQ(text(Nereo2ConfigFile::AnalyzePath), "C:/Runs & Jobs/cavity");
    EXPECT_EQ(text(Nereo2ConfigFile::StopTime), "12.5");
    EXPECT_EQ(text(Nereo2ConfigFile::Width), "10");
}

TEST_F(Nereo2ConfigFileText, ReadsWhatItWrites)
{
    // A text that is all white space would come back empty, and so would an inner run of it come back as one
    // blank.
    RandomConfiguration random(
        {"a", "Z", "7", "-", "%1", "%", "=", "#", "\\", "\"", "ü", QString::fromUtf8("\xE6\xB5\x81"), "a b"});
    for (int i = 0; i < 200; ++i) {
        const Nereo2ConfigFile saved = random.next();
        ASSERT_TRUE(saved.saveTo(folder.path("run.cfg")));
        Nereo2ConfigFile loaded;
        ASSERT_TRUE(loaded.loadFrom(folder.path("run.cfg")));
        expectSameContent(loaded, saved);
    }
}

} // namespace
} // namespace Nereo::Io

#include "support/Assertions.h"
#include "support/FailingDevice.h"
#include "support/GoldenFile.h"
#include "support/PrivateAccess.h"
#include "support/RandomConfiguration.h"
#include "support/SameContent.h"
#include "support/TemporaryFolder.h"

#include "FileIO/Nereo2ConfigFileXmlReader.h"
#include "FileIO/Nereo2ConfigFileXmlWriter.h"

#include <NereoFileIO/Nereo2ConfigFile.h>

#include <gmock/gmock.h>

#include <QBuffer>

namespace Nereo::Io {

NEREO_PRIVATE_MEMBER(readConfiguration, void (Nereo2ConfigFileXmlReader::*)(QXmlStreamReader&),
                     &Nereo2ConfigFileXmlReader::readConfiguration)

namespace {

using Util::Version;

class Nereo2ConfigFileXml : public ::testing::Test {
protected:
    /// Whether the document was read to its end without an error.
    bool read(const QByteArray& document)
    {
        QXmlStreamReader xml(document);
        EXPECT_TRUE(Nereo2ConfigFileXmlReader(config).read(xml));
        return !xml.hasError();
    }

    QByteArray written() const
    {
        QBuffer device;
        device.open(QIODevice::WriteOnly);
        QXmlStreamWriter xml(&device);
        xml.setAutoFormatting(true);
        Nereo2ConfigFileXmlWriter(config).write(xml);
        return device.data();
    }

    std::string text(const std::string& key) const { return config.setting(key).valueAsString(); }

    Nereo2ConfigFile config;
    TemporaryFolder folder;
};

TEST_F(Nereo2ConfigFileXml, WritesAnElementForEachSettingThatHasAText)
{
    ASSERT_TRUE(config.saveTo(folder.path("new.xml")));
    expectGolden(readBytes(folder.path("new.xml")), "new-configuration.xml");
}

TEST_F(Nereo2ConfigFileXml, WritesTheVersionAndEscapedTexts)
{
    config.clear();
    config.reset(Nereo2ConfigFile::AnalyzePath);
    config.reset(Nereo2ConfigFile::MaxIter);
    config.setVersion(Version(2023, 1, 0, 7));
    config.setting(Nereo2ConfigFile::AnalyzePath).setValueFromString("a < b & \"Lüfter\"  > ");
    EXPECT_EQ(written().toStdString(), R"(<?xml version="1.0" encoding="UTF-8"?>
<Nereo2Config Version="2023.1.0.7">
    <AnalyzePath>a &lt; b &amp; &quot;Lüfter&quot;  &gt; </AnalyzePath>
    <MaxIter>10000</MaxIter>
</Nereo2Config>
)");
}

TEST_F(Nereo2ConfigFileXml, WritesTextsAsTheirGettersGiveThem)
{
    config.setting(Nereo2ConfigFile::JobPrefix)
        .setValueFromString("\uFEFF\uFEFFx"); // the first mark is dropped
    EXPECT_THAT(written().toStdString(), ::testing::HasSubstr("<JobPrefix>\uFEFFx</JobPrefix>"));
}

TEST_F(Nereo2ConfigFileXml, WritesAnEmptyConfiguration)
{
    config.clear();
    config.setVersion(Version(1, 2, 3, 4));
    EXPECT_EQ(written().toStdString(), R"(<?xml version="1.0" encoding="UTF-8"?>
<Nereo2Config Version="1.2.3.4"/>
)");
}

TEST_F(Nereo2ConfigFileXml, LeavesOutEmptyTextsSoThatALoadKeepsTheOldValue)
{
    ASSERT_EQ(text(Nereo2ConfigFile::JobPrefix), "");
    ASSERT_TRUE(config.saveTo(folder.path("run.xml")));
    Nereo2ConfigFile loaded;
    loaded.setting(Nereo2ConfigFile::JobPrefix).setValueFromString("before");
    EXPECT_TRUE(loaded.loadFrom(folder.path("run.xml")));
    EXPECT_EQ(loaded.setting(Nereo2ConfigFile::JobPrefix).valueAsString(), "before");
}

TEST_F(Nereo2ConfigFileXml, ReadsAnElementForEachSetting)
{
    const struct {
        const char* content;
        const char* path;
        const char* maxIter;
    } cases[] = {
        {"",                                                                      "before",         "10000"},
        {"<MaxIter>500</MaxIter>",                                                "before",         "500"  },
        {"\n  <MaxIter> 500\n</MaxIter> stray text <AnalyzePath>x</AnalyzePath>", "x",              "500"  },
        {"<AnalyzePath>  two  blanks </AnalyzePath>",                             "  two  blanks ", "10000"},
        {"<AnalyzePath>a &lt; b &amp; &#252;<![CDATA[ < ]]></AnalyzePath>",       "a < b & ü < ",  "10000"},
        {"<AnalyzePath>a<!-- c -->b<?p i?>c</AnalyzePath>",                       "abc",            "10000"},
        {"<AnalyzePath/><MaxIter></MaxIter>",                                     "",               "0"    }, // an empty element is an empty text
        {"<MaxIter>abc</MaxIter>",                                                "before",         "0"    },
        {"<MaxIter>5</MaxIter><MaxIter>6</MaxIter>",                              "before",         "6"    }, // the last one stays
        {"<MaxIter unit='none'>5</MaxIter>",                                      "before",         "5"    },
        {"<maxiter>5</maxiter>",                                                  "before",         "10000"}, // not a key
        {"<Odd><MaxIter>5</MaxIter><AnalyzePath/></Odd><MaxIter>6</MaxIter>",     "before",         "6"    }, // skipped whole
        {"<Odd/>text<!-- c --><MaxIter>6</MaxIter>",                              "before",         "6"    },
        {"<Nereo2Config><MaxIter>5</MaxIter></Nereo2Config>",                     "before",         "10000"}, // neither is this
    };
    for (const auto& [content, path, maxIter] : cases) {
        config.resetAll();
        config.setting(Nereo2ConfigFile::AnalyzePath).setValueFromString("before");
        EXPECT_TRUE(read(QByteArray("<Nereo2Config>") + content + "</Nereo2Config>")) << content;
        EXPECT_EQ(text(Nereo2ConfigFile::AnalyzePath), path) << content;
        EXPECT_EQ(text(Nereo2ConfigFile::MaxIter), maxIter) << content;
        EXPECT_EQ(config.setting(Nereo2ConfigFile::MaxIter).type(), Setting::Int);
    }
}

TEST_F(Nereo2ConfigFileXml, FindsTheConfigurationAnywhere)
{
    const struct {
        const char* document;
        const char* maxIter;
        const char* width;
    } cases[] = {
        {"<Nereo2Config><MaxIter>5</MaxIter></Nereo2Config>",                                 "5",     "10"},
        {"<a><b/><c><Nereo2Config><MaxIter>5</MaxIter></Nereo2Config></c></a>",               "5",     "10"},
        {"<a><Nereo2Config><MaxIter>5</MaxIter></Nereo2Config>"
         "<Nereo2Config><MaxIter>6</MaxIter><Width>7</Width></Nereo2Config></a>",    "6",     "7" }, // every one of them
        {"<MaxIter>5</MaxIter>",                                                              "10000", "10"},
        {"<a><MaxIter>5</MaxIter></a>",                                                       "10000", "10"},
        {"<nereo2config><MaxIter>5</MaxIter></nereo2config>",                                 "10000", "10"},
        {"<!-- site --><?p i?>\n<Nereo2Config><Width>7</Width></Nereo2Config><!-- end -->\n", "10000", "7" },
    };
    for (const auto& [document, maxIter, width] : cases) {
        config.resetAll();
        EXPECT_TRUE(read(document)) << document;
        EXPECT_EQ(text(Nereo2ConfigFile::MaxIter), maxIter) << document;
        EXPECT_EQ(text(Nereo2ConfigFile::Width), width) << document;
    }
}

TEST_F(Nereo2ConfigFileXml, LooksAtNamesWithoutTheirNamespace)
{
    EXPECT_TRUE(read("<n:Nereo2Config xmlns:n='urn:site'><n:MaxIter>5</n:MaxIter></n:Nereo2Config>"));
    EXPECT_EQ(text(Nereo2ConfigFile::MaxIter), "5");
}

TEST_F(Nereo2ConfigFileXml, TakesTheVersionWhenThereIsOne)
{
    const struct {
        const char* attributes;
        Version version;
    } cases[] = {
        {" Version='2023.1.0.7'",           {2023, 1, 0, 7}},
        {" Version=' 2023.1 '",             {2023, 1, 0, 0}},
        {" Version='next'",                 {0, 0, 0, 0}   },
        {" Version=''",                     {9, 9, 9, 9}   }, // the one before
        {"",                                {9, 9, 9, 9}   },
        {" version='2023.1.0.7'",           {9, 9, 9, 9}   },
        {" Other='1' Version='2023.1.0.7'", {2023, 1, 0, 7}},
    };
    for (const auto& [attributes, version] : cases) {
        config.setVersion(Version(9, 9, 9, 9));
        EXPECT_TRUE(read(QByteArray("<Nereo2Config") + attributes + "/>")) << attributes;
        EXPECT_EQ(config.version(), version) << attributes;
    }
}

TEST_F(Nereo2ConfigFileXml, ChangesOnlyWhatIsNamed)
{
    config.setting(Nereo2ConfigFile::Width).setValueFromString("7");
    config.remove(Nereo2ConfigFile::Mpi);
    EXPECT_TRUE(read("<Nereo2Config><Mpi>1</Mpi><Height>8</Height></Nereo2Config>"));
    EXPECT_EQ(text(Nereo2ConfigFile::Width), "7");
    EXPECT_EQ(text(Nereo2ConfigFile::Height), "8");
    EXPECT_FALSE(config.contains(Nereo2ConfigFile::Mpi)); // a removed setting is no key
}

TEST_F(Nereo2ConfigFileXml, FailsAtBadXmlAndKeepsWhatCameBefore)
{
    const char* cases[] = {
        "<MaxIter>6", // ends early
        "<MaxIter>6</Width>",
        "<MaxIter><value>6</value></MaxIter>", // a nested element
        "<Odd><a></Odd>",
        "<MaxIter>&undefined;</MaxIter>",
        "<MaxIter>\x01</MaxIter>",
        "<",
        "</Nereo2Config><second/>",
    };
    for (const char* content : cases) {
        config.resetAll();
        EXPECT_FALSE(read(QByteArray("<Nereo2Config Version='1.2.3.4'><Width>5</Width>") + content
                          + "<Height>5</Height></Nereo2Config>"))
            << content;
        EXPECT_EQ(config.version(), Version(1, 2, 3, 4)) << content;
        EXPECT_EQ(text(Nereo2ConfigFile::Width), "5") << content;
        EXPECT_EQ(text(Nereo2ConfigFile::Height), "10") << content;
    }
    EXPECT_TRUE(read("<Nereo2Config><Height>6</Height></Nereo2Config>")); // and stays usable
    EXPECT_EQ(text(Nereo2ConfigFile::Height), "6");
}

TEST_F(Nereo2ConfigFileXml, GivesABrokenSettingWhatTheStreamGaveOfIt)
{
    EXPECT_FALSE(read("<Nereo2Config><MaxIter>25<b/>00</MaxIter></Nereo2Config>"));
    EXPECT_EQ(text(Nereo2ConfigFile::MaxIter), "25");
    EXPECT_FALSE(read("<Nereo2Config><MaxIter><b/>00</MaxIter></Nereo2Config>"));
    EXPECT_EQ(text(Nereo2ConfigFile::MaxIter), "0");
    EXPECT_FALSE(read("<Nereo2Config><AnalyzePath>C:/Runs"));
    EXPECT_EQ(text(Nereo2ConfigFile::AnalyzePath), "");
}

TEST_F(Nereo2ConfigFileXml, FailsAtADocumentWithoutAnElement)
{
    for (const char* document : {"", "  \n", "text", "<?xml version='1.0'?>"})
        EXPECT_FALSE(read(document)) << document;
}

TEST_F(Nereo2ConfigFileXml, FailsAtEveryPrefixOfTheSample)
{
    const QByteArray sample = QByteArray::fromStdString(readBytes(NEREO_SAMPLES_DIR "/NEREO2_default.xml"));
    const int complete = sample.lastIndexOf('>') + 1;
    for (int length = 0; length < complete; ++length)
        ASSERT_FALSE(read(sample.left(length))) << length;
    EXPECT_TRUE(read(sample.left(complete)));
}

TEST_F(Nereo2ConfigFileXml, EndsWhereTheDeviceFails)
{
    const struct {
        const char* readable;
        const char* maxIter;
        bool isWhole;
    } cases[] = {
        {"",                                                  "10000", false},
        {"<Nereo2Config><MaxIter>5</MaxIter>",                "5",     false},
        {"<Nereo2Config><MaxIter>25",                         "0",     false},
        {"<Nereo2Config><MaxIter>5</MaxIter></Nereo2Config>", "5",     true },
    };
    for (const auto& [readable, maxIter, isWhole] : cases) {
        config.resetAll();
        FailingDevice device(readable);
        QXmlStreamReader xml(&device);
        EXPECT_TRUE(Nereo2ConfigFileXmlReader(config).read(xml));
        EXPECT_EQ(!xml.hasError(), isWhole) << readable;
        EXPECT_EQ(text(Nereo2ConfigFile::MaxIter), maxIter) << readable;
    }
}

TEST_F(Nereo2ConfigFileXml, IsUsedForTheSuffixXml)
{
    for (const char* name : {"run.xml", ".xml", "a.b.xml", "Strömung \xE6\xB5\x81.xml"}) {
        const std::string path = folder.path(name);
        config.setting(Nereo2ConfigFile::JobPrefix).setValueFromString("Lüfter");
        ASSERT_TRUE(config.saveTo(path)) << name;
        EXPECT_EQ(readBytes(path).substr(0, 5), "<?xml") << name;
        EXPECT_EQ(config.filePath(), path);
        config.resetAll();
        EXPECT_TRUE(config.loadFrom(path)) << name;
        EXPECT_EQ(text(Nereo2ConfigFile::JobPrefix), "Lüfter") << name;
    }
}

TEST_F(Nereo2ConfigFileXml, FailsWhereTheFileIsMissingOrMalformed)
{
    EXPECT_FALSE(config.loadFrom(folder.path("missing.xml")));
    EXPECT_EQ(config.filePath(), folder.path("missing.xml"));
    EXPECT_FALSE(config.saveTo(folder.path("missing/run.xml")));
    EXPECT_FALSE(config.loadFrom(folder.write("empty.xml", "")));
    EXPECT_FALSE(config.loadFrom(folder.write("bad.xml", "<Nereo2Config><Width>5</Width><Height>")));
    EXPECT_EQ(text(Nereo2ConfigFile::Width), "5");
    EXPECT_EQ(text(Nereo2ConfigFile::Height), "0");
}

TEST_F(Nereo2ConfigFileXml, LoadsTheSample)
{
    EXPECT_TRUE(config.loadFrom(NEREO_SAMPLES_DIR "/NEREO2_default.xml"));
    EXPECT_EQ(config.version(), Version(2023, 1, 0, 0));
    EXPECT_EQ(text(Nereo2ConfigFile::MaxIter), "2500");
    EXPECT_EQ(text(Nereo2ConfigFile::ConvergenceCriteria), "0.0001");
    EXPECT_EQ(text(Nereo2ConfigFile::NumberOfThreads), "8");
    EXPECT_EQ(text(Nereo2ConfigFile::AwsInstanceType), "c5.9xlarge");
    EXPECT_EQ(text(Nereo2ConfigFile::AnalyzePath), "C:/Runs & Jobs/cavity");
    EXPECT_EQ(text(Nereo2ConfigFile::Width), "10");
}

TEST_F(Nereo2ConfigFileXml, ReadsWhatItWrites)
{
    RandomConfiguration random({"a", "Z", "7", " ", "  ", "\t", "\n", "<", ">", "&", "&amp;", "]]>", "\"",
                                "'", "%1", "ü", QString::fromUtf8("\xF0\x9F\x8C\x8A")});
    for (int i = 0; i < 200; ++i) {
        Nereo2ConfigFile saved = random.next();
        saved.setVersion(Version(i, 2, 3, 4));
        ASSERT_TRUE(saved.saveTo(folder.path("run.xml")));
        Nereo2ConfigFile loaded;
        ASSERT_TRUE(loaded.loadFrom(folder.path("run.xml")));
        expectSameContent(loaded, saved);
    }
}

TEST(Nereo2ConfigFileXmlDeathTest, StopsWhenTheReaderLosesItsPlace)
{
    Nereo2ConfigFile config;
    Nereo2ConfigFileXmlReader reader(config);
    QXmlStreamReader xml(QByteArray("<Other/>"));
    const auto condition = R"(ASSERT: "xml.isStartElement() && xml.name() == "Nereo2Config"" in file )"
                           "FileIO/Nereo2ConfigFileXmlReader, line 32\n";
    EXPECT_DEATH((reader.*readConfiguration())(xml), ::testing::HasSubstr(condition));
    xml.readNextStartElement();
    EXPECT_DEATH((reader.*readConfiguration())(xml), ::testing::HasSubstr(condition));
}

} // namespace
} // namespace Nereo::Io

#include "support/LoadWatch.h"
#include "support/Pipe.h"
#include "support/TemporaryFolder.h"

#include "FileIO/EntityLimit.h"
#include "FileIO/FileAccess.h"

#include <NereoFileIO/MaterialDatabaseFile.h>
#include <NereoFileIO/Nereo2ConfigFile.h>

#include <gmock/gmock.h>

#include <QBuffer>
#include <QTextCodec>

/// Entities that an XML document declares, in both kinds of file. They may lengthen it by 64 million
/// characters in all, and each reference by 4096.

namespace Nereo::Io {
namespace {

using ::testing::IsEmpty;

struct Kind {
    const char* name;
    const char* opening; // of the text
    const char* closing;
    bool (*load)(const std::string& path, std::string& text);
};

void PrintTo(const Kind& kind, std::ostream* out)
{
    *out << kind.name;
}

bool loadConfiguration(const std::string& path, std::string& text)
{
    Nereo2ConfigFile config;
    const bool result = config.loadFrom(path);
    text = config.setting(Nereo2ConfigFile::JobPrefix).valueAsString();
    return result;
}

bool loadMaterials(const std::string& path, std::string& text)
{
    MaterialDatabaseFile database;
    const bool result = database.loadFrom(path);
    text = database.count() > 0 ? database.material(0).name() : std::string();
    return result;
}

constexpr Kind kinds[] = {
    {"Configuration", "<Nereo2Config><JobPrefix>",                        "</JobPrefix></Nereo2Config>", loadConfiguration},
    {"Materials",     "<material_database><material type='fluid'><name>",
     "</name></material></material_database>",                                                           loadMaterials    },
};

std::string repeated(const std::string& text, int count)
{
    std::string all;
    for (int i = 0; i < count; ++i)
        all += text;
    return all;
}

std::string entity(const std::string& name, const std::string& value)
{
    return "<!ENTITY " + name + " \"" + value + "\">";
}

std::string entity(const std::string& name, int length)
{
    return entity(name, std::string(std::size_t(length), 'x'));
}

std::string comment(const std::string& text)
{
    return "<!--" + text + "-->";
}

class XmlEntities : public ::testing::TestWithParam<Kind> {
protected:
    static std::string document(const std::string& declarations, const std::string& text)
    {
        return "<!DOCTYPE a [" + declarations + "]>" + GetParam().opening + text + GetParam().closing;
    }

    bool load(const std::string& bytes) { return GetParam().load(folder.write("document.xml", bytes), text); }

    TemporaryFolder folder;
    std::string text; // that was loaded
};

INSTANTIATE_TEST_SUITE_P(, XmlEntities, ::testing::ValuesIn(kinds),
                         [](const auto& info) { return info.param.name; });

TEST_P(XmlEntities, AreExpanded)
{
    const struct {
        const char* declarations;
        const char* text;
        const char* expanded;
    } cases[] = {
        {R"(<!ENTITY e "job">)",                         "&e;",      "job"     },
        {R"(<!ENTITY e "job">)",                         "a&e;b&e;", "ajobbjob"},
        {R"(<!ENTITY e "">)",                            "a&e;b",    "ab"      },
        {R"(<!ENTITY e "&#38;lt; &#38;amp; &#252;">)",   "&e;",      "< & ü"  },
        {R"(<!ENTITY n "x"><!ENTITY e "&n;-&n;">)",      "&e;",      "x-x"     },
        {R"(<!ENTITY e "&n;-&n;"><!ENTITY n "x">)",      "&e;",      "x-x"     }, // in any order
        {R"(<!ENTITY e "first"><!ENTITY e "second">)",   "&e;",      "first"   },
        {R"(<!ENTITY % p "<!ENTITY e 'job'>">%p;)",      "&e;",      "job"     },
        {R"(<!ENTITY e SYSTEM "file:///etc/hostname">)", "a&e;b",    "ab"      }, // no other file is read
    };
    for (const auto& [declarations, content, expanded] : cases) {
        EXPECT_TRUE(load(document(declarations, content))) << declarations;
        EXPECT_EQ(text, expanded) << declarations;
    }
}

TEST_P(XmlEntities, AreLimitedWhereTheyAreManyAndLong)
{
    const struct {
        int ampersands;
        int length;
        bool result;
    } cases[] = {
        {1,         4099, true }, // Qt's limit: 4096 more than the reference has
        {1,         4100, false},
        {15'625,    4099, true }, // 64 million in all
        {15'626,    4099, false},
        {15'626,    4098, true },
        {40'000,    1603, true },
        {40'000,    1604, false},
        {1'000'000, 67,   true },
        {1'000'000, 68,   false},
    };
    for (const auto& [ampersands, length, result] : cases) {
        const std::string rest = comment(std::string(std::size_t(ampersands - 1), '&'));
        const std::string declaration = entity("e", length);
        const std::string expanded = result ? std::string(std::size_t(length), 'x') : "";
        const std::string whole = document(declaration, "&e;");
        for (const std::string& bytes : {rest + whole, document(rest + declaration, "&e;"), whole + rest}) {
            EXPECT_EQ(load(bytes), result) << ampersands << " of " << length;
            EXPECT_EQ(text, expanded) << ampersands << " of " << length;
        }
    }
}

TEST_P(XmlEntities, AreNotLimitedByAnythingElse)
{
    const auto expectLoaded = [this](int size, const std::string& bytes) {
        EXPECT_TRUE(load(bytes)) << bytes.substr(0, 100);
        EXPECT_EQ(text.size(), size) << bytes.substr(0, 100);
    };
    expectLoaded(2000, comment(std::string(17'000, 'c')) + document(entity("e", 2000), "&e;"));
    expectLoaded(40'300, document(entity("e", 300), "&e;" + repeated("&amp;", 40'000)));
    expectLoaded(9'000'000, document(entity("e", 300), repeated("&e;", 30'000)));
    expectLoaded(300'000, document(entity("e", 1), repeated("&e;", 300'000)));
    expectLoaded(1, document(entity("long", 100'000) + entity("e", 1), "&e;"));
    expectLoaded(2'004'000, document(entity("e", 4000), std::string(2'000'000, 'x') + "&e;"));
    expectLoaded(104'000, document(entity("e", 4000), "&e;" + std::string(100'000, '%')));
    expectLoaded(104'000,
                 document(R"(<!ENTITY % p "">%p;)" + entity("e", 4000), "&e;" + std::string(100'000, '%')));

    const std::string manyReferences = repeated("&amp;", 200'000);
    expectLoaded(200'000, document("", manyReferences));
    expectLoaded(200'000, GetParam().opening + manyReferences + GetParam().closing);
}

enum class EncodingIs { ByteOrderMark, InAscii, InItself };

TEST_P(XmlEntities, AreCountedInAnyEncoding)
{
    const struct {
        const char* encoding;
        EncodingIs declared;
    } cases[] = {
        {"UTF-8",        EncodingIs::InItself     },
        {"UTF-8",        EncodingIs::ByteOrderMark},
        {"UTF-16",       EncodingIs::InItself     },
        {"UTF-16",       EncodingIs::ByteOrderMark},
        {"UTF-32",       EncodingIs::InItself     },
        {"ISO-8859-1",   EncodingIs::InAscii      },
        {"windows-1252", EncodingIs::InAscii      },
        {"KOI8-R",       EncodingIs::InAscii      },
        {"Shift_JIS",    EncodingIs::InAscii      },
        {"EUC-JP",       EncodingIs::InAscii      },
        {"GB18030",      EncodingIs::InAscii      },
        {"UTF-7",        EncodingIs::InAscii      },
        {"IBM037",       EncodingIs::InAscii      }, // EBCDIC, of which only Qt finds a declaration in ASCII
    };
    for (const auto& [encoding, declared] : cases) {
        const QTextCodec* const codec = QTextCodec::codecForName(encoding);
        if (codec == nullptr)
            continue; // and so none of Qt's XML either
        const auto encoded = [codec](const std::string& part) {
            return codec->fromUnicode(QString::fromStdString(part)).toStdString();
        };
        const std::string declaration = "<?xml version='1.0' encoding='" + std::string(encoding) + "'?>";
        const auto loadWith = [&, declared = declared](const std::string& rest) {
            const std::string whole = document(entity("e", 3000), "&e;") + rest;
            switch (declared) {
            case EncodingIs::ByteOrderMark:
                return load(encoded("\xEF\xBB\xBF" + whole));
            case EncodingIs::InAscii:
                return load(declaration + encoded(whole));
            case EncodingIs::InItself:
                break;
            }
            return load(encoded(declaration + whole));
        };
        for (const std::string& rest :
             {std::string(), std::string(100'000, ' '), comment(std::string(21'000, '&'))}) {
            EXPECT_TRUE(loadWith(rest)) << encoding << ' ' << rest.size();
            EXPECT_EQ(text.size(), 3000) << encoding << ' ' << rest.size();
        }
        EXPECT_FALSE(loadWith(comment(std::string(22'000, '&')))) << encoding;
        EXPECT_THAT(text, IsEmpty()) << encoding;
    }
}

TEST_P(XmlEntities, AreCountedByCharactersOfUtf16)
{
    const QString suns = QString(QChar(0x2600)).repeated(100'000) + QString(QChar(0x4E26)).repeated(100'000);
    const QString all =
        QString::fromStdString(document(entity("e", 3000), "&e;")).replace("&e;", "&e;" + suns);
    EXPECT_TRUE(load(QTextCodec::codecForName("UTF-16")->fromUnicode(all).toStdString()));
    EXPECT_EQ(text.size(), 3000 + 200'000 * 3);
}

TEST_P(XmlEntities, AreLimitedInThePrologToo)
{
    const std::string manyDefaults =
        entity("e", 4000) + "<!ATTLIST a y CDATA '" + repeated("&e;", 300'000) + "'>";
    const std::string manyComments =
        entity("% p", comment(std::string(4000, 'x'))) + repeated("%p;", 300'000);
    for (const std::string& declarations : {manyDefaults, manyComments}) {
        const LoadWatch watch("of many references in the prolog");
        EXPECT_FALSE(load(document(declarations, "job")));
        EXPECT_THAT(text, IsEmpty());
    }

    const std::string fewDefaults =
        entity("e", 4000) + "<!ATTLIST name y CDATA '" + repeated("&e;", 30) + "'>";
    const std::string fewComments = entity("% p", comment(std::string(4000, 'x'))) + repeated("%p;", 30);
    for (const std::string& declarations : {fewDefaults, fewComments}) {
        EXPECT_TRUE(load(document(declarations, std::string(1'000'000, 'j'))));
        EXPECT_EQ(text.size(), 1'000'000);
    }
}

TEST_P(XmlEntities, MayNotExpandWithoutEnd)
{
    std::string bomb = entity("e0", 20);
    for (int i = 1; i < 30; ++i)
        bomb += entity("e" + std::to_string(i), repeated("&e" + std::to_string(i - 1) + ';', 4));
    EXPECT_TRUE(load(document(bomb, "&e3;")));
    EXPECT_EQ(text.size(), 20 * 4 * 4 * 4);
    EXPECT_FALSE(load(document(bomb, "&e29;")));
    EXPECT_FALSE(load(document(entity("e", "&f;") + entity("f", "&e;"), "&e;")));
}

TEST_P(XmlEntities, AreLimitedInAPipe)
{
    const auto expectFromPipe = [this](bool result, int size, const std::string& bytes) {
        const Pipe pipe(folder.path("pipe.xml"), bytes);
        EXPECT_EQ(GetParam().load(pipe.path(), text), result) << bytes.substr(0, 100);
        EXPECT_EQ(text.size(), size) << bytes.substr(0, 100);
    };
    expectFromPipe(true, 204'000, document(entity("e", 4000), "&e;" + std::string(200'000, 'x')));
    expectFromPipe(true, 9'000'000, document(entity("e", 300), repeated("&e;", 30'000)));
    expectFromPipe(false, 0, document(entity("e", 4000), repeated("&e;", 30'000)));
    expectFromPipe(true, 100'000, document("", repeated("&amp;", 100'000)));
}

TEST_P(XmlEntities, AreCountedBehindCarriageReturns)
{
    std::string bytes = document(entity("e", 3000) + "\r\n", repeated("\r\n", 50'000) + "&e;\r");
    EXPECT_TRUE(load(bytes));
    EXPECT_EQ(text.size(), 53'000); // files are opened as text
    EXPECT_FALSE(load(bytes + "\r\n" + comment(std::string(22'000, '&'))));
}

TEST(EntityLimit, IsQtsUnlessEntitiesAreDeclared)
{
    const struct {
        const char* document;
        int limit;
    } cases[] = {
        {"",                                              4096},
        {"<a>&amp;&amp;</a>",                             4096},
        {"<!DOCTYPE a><a>&amp;&amp;</a>",                 4096},
        {"<!DOCTYPE a [<!ENTITY e 'x'>]><a>&amp;&e;</a>", 4096},
    };
    for (const auto& [document, limit] : cases) {
        QBuffer device;
        device.setData(document);
        device.open(QIODevice::ReadOnly);
        QXmlStreamReader xml(&device);
        limitEntities(xml);
        EXPECT_EQ(xml.entityExpansionLimit(), limit) << document;
        EXPECT_EQ(device.readAll(), document); // nothing is taken from the stream
    }
}

TEST(EntityLimit, SharesTheCharactersAmongTheAmpersands)
{
    const struct {
        int ampersands;
        int limit;
    } cases[] = {
        {0,          4096},
        {15'625,     4096},
        {16'000,     4000},
        {64'000'000, 1   },
        {64'000'001, 0   },
    };
    for (const auto& [ampersands, limit] : cases) {
        QBuffer device;
        device.setData("<!DOCTYPE a [<!ENTITY e 'x'>]><a/><!--" + QByteArray(ampersands, '&') + "-->");
        device.open(QIODevice::ReadOnly);
        QXmlStreamReader xml(&device);
        limitEntities(xml);
        EXPECT_EQ(xml.entityExpansionLimit(), limit) << ampersands;
    }
}

} // namespace
} // namespace Nereo::Io

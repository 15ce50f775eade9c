#include "Edited.h"

#include <QTextCodec>

#include <gtest/gtest.h>

namespace Nereo::Inspection {
namespace {

constexpr FileKind xml = FileKind::ConfigurationXml;

std::string document(const std::string& content)
{
    return "<?xml version=\"1.0\"?>\n<Nereo2Config Version=\"2024.0.0.0\">\n" + content + "</Nereo2Config>\n";
}

void expectSet(const char* before, const char* address, const char* value, const char* after)
{
    expectEdited(xml, document(before), setTo(address, value), document(after));
}

TEST(ConfigurationXmlEditTest, ChangesTheBytesOfTheValueOnly)
{
    expectSet("<MaxIter>5</MaxIter>\n", "MaxIter", "500", "<MaxIter>500</MaxIter>\n");
    expectSet("<!-- a --><MaxIter a='1'> 5\t</MaxIter ><Other/>\n", "MaxIter", "7",
              "<!-- a --><MaxIter a='1'> 7\t</MaxIter ><Other/>\n");
    expectSet("<MaxIter><!-- a -->5<!-- b --></MaxIter>\n", "MaxIter", "7",
              "<MaxIter><!-- a -->7<!-- b --></MaxIter>\n");
    expectSet("<MaxIter>1<!-- a -->5<?b?> </MaxIter>\n", "MaxIter", "7",
              "<MaxIter>7<!-- a --><?b?> </MaxIter>\n");
    expectSet("<MaxIter><![CDATA[5]]></MaxIter>\n", "MaxIter", "7", "<MaxIter>7</MaxIter>\n");
    expectSet("<MaxIter>&#53;</MaxIter>\n", "MaxIter", "7", "<MaxIter>7</MaxIter>\n");
    expectSet("<MaxIter></MaxIter>\n", "MaxIter", "7", "<MaxIter>7</MaxIter>\n");
    expectSet("<MaxIter/>\n", "MaxIter", "7", "<MaxIter>7</MaxIter>\n");
    expectSet("<MaxIter a='/' />\n", "MaxIter", "7", "<MaxIter a='/' >7</MaxIter>\n");
    expectSet("<MaxIter>abc</MaxIter>\n", "MaxIter", "7", "<MaxIter>7</MaxIter>\n");
    expectSet("<MaxIter>1</MaxIter><MaxIter>2</MaxIter>\n", "MaxIter", "7",
              "<MaxIter>1</MaxIter><MaxIter>7</MaxIter>\n"); // the last counts
    expectSet("<StopTime>1</StopTime>\n", "StopTime", "1.50", "<StopTime>1.50</StopTime>\n");
    expectSet("<JobPrefix>a</JobPrefix>\n", "JobPrefix", " b  c ", "<JobPrefix> b  c </JobPrefix>\n");
    expectSet("<JobPrefix>a</JobPrefix>\n", "JobPrefix", "<&>\"'",
              "<JobPrefix>&lt;&amp;&gt;&quot;'</JobPrefix>\n");
    expectSet("<JobPrefix> a<!-- b -->c</JobPrefix>\n", "JobPrefix", "d",
              "<JobPrefix>d<!-- b --></JobPrefix>\n");
    expectSet("<JobPrefix>a<![CDATA[<b>]]>c</JobPrefix>\n", "JobPrefix", "d", "<JobPrefix>d</JobPrefix>\n");
    expectSet("<JobPrefix>a</JobPrefix>\n", "JobPrefix", "", "<JobPrefix></JobPrefix>\n");
    expectSet("<JobPrefix>a</JobPrefix>\n", "JobPrefix", "\xC3\xA4", "<JobPrefix>\xC3\xA4</JobPrefix>\n");
    expectSet("<JobPrefix>a</JobPrefix>\n", "JobPrefix", "\xF0\x9F\x98\x80",
              "<JobPrefix>\xF0\x9F\x98\x80</JobPrefix>\n");
    expectSet("<MaxIter> </MaxIter>\n", "MaxIter", "7", "<MaxIter>7 </MaxIter>\n");
    expectSet("<MaxIter><!-- a --> </MaxIter>\n", "MaxIter", "7", "<MaxIter>7<!-- a --> </MaxIter>\n");
    expectSet("<StopTime> 1 <!-- a --> </StopTime>\n", "StopTime", "2",
              "<StopTime> 2 <!-- a --> </StopTime>\n");
}

/// Whatever stands in them, and wherever they stand.
TEST(ConfigurationXmlEditTest, PassesCommentsOver)
{
    const char* const comments[] = {
        "<!---->",
        "<!--> <MaxIter> -->",
        "<!---> <MaxIter> -->",
        "<!-- ' --><!-- \" -->",
        "<!--]]>--><!--?>-->",
    };
    for (const std::string comment : comments) {
        const auto commented = [&](const std::string& value, const std::string& added) {
            return comment + "<!DOCTYPE a [" + comment + "<!ENTITY n '1'>" + comment + "]>\n" + comment
                + "<Nereo2Config>" + comment + "\n <MaxIter>" + comment + value + comment + "</MaxIter>"
                + comment + added + "\n</Nereo2Config>" + comment;
        };
        EXPECT_EQ(edited(xml, commented("5", ""), setTo("MaxIter", "7")), commented("7", ""));
        EXPECT_EQ(edited(xml, commented("5", ""), setTo("Width", "7")),
                  commented("5", "\n <Width>7</Width>"));
    }
    for (const std::string skipped :
         {"<![CDATA[<MaxIter> ' ]]>", "<?p <MaxIter> ' ?>", "<Other a='>' b=\"'/>\"/>"}) {
        const auto document = [&](const char* value) {
            return "<Nereo2Config>" + skipped + "<MaxIter>" + value + "</MaxIter></Nereo2Config>";
        };
        EXPECT_EQ(edited(xml, document("5"), setTo("MaxIter", "7")), document("7"));
    }
}

/// As far as XML has them, and a load gives them back.
TEST(ConfigurationXmlEditTest, WritesAnyCharacter)
{
    const auto withText = [](const std::string& text) {
        return document("<JobPrefix>a" + text + "</JobPrefix>\n");
    };
    for (const uint allowed :
         {0x9U, 0xAU, 0x20U, 0x7FU, 0xD7FFU, 0xE000U, 0xFEFFU, 0xFFFDU, 0x10000U, 0x10FFFFU}) {
        const QString text = QString::fromUcs4(&allowed, 1);
        EXPECT_EQ(edited(xml, withText(""), setTo("JobPrefix", "a" + text)), withText(text.toStdString()))
            << allowed;
    }
    const QString message =
        "\" has a character that XML doesn't allow, or begins with a byte-order mark, which a "
        "load doesn't keep";
    for (const int refused : {0x1, 0x8, 0xB, 0xC, 0xE, 0x1F, 0xFFFE, 0xFFFF}) {
        FileEdit file("file.xml", QByteArray::fromStdString(withText("")));
        EXPECT_EQ(file.set("JobPrefix", QChar(refused)).message.mid(1), QChar(refused) + message);
    }
}

TEST(ConfigurationXmlEditTest, ChangesTheVersionBetweenItsQuotes)
{
    EXPECT_EQ(edited(xml, "<Nereo2Config a=\"1\" Version = '2024.0.0.0'/>", setTo("version", "2025.1.0.0")),
              "<Nereo2Config a=\"1\" Version = '2025.1.0.0'/>");
    EXPECT_EQ(edited(xml, document(""), setTo("version", "2025.1")), "refused: NotAVersion");
    EXPECT_EQ(edited(xml, document(""), setTo("version", " 2025.1.0.0")), "refused: NotAVersion");
    EXPECT_EQ(edited(xml, document(""), removed("version")), "refused: NotRemovable");
    EXPECT_EQ(edited(xml, "<Nereo2Config/>", setTo("version", "2025.1.0.0")), "refused: NotThere");
}

TEST(ConfigurationXmlEditTest, AddsASettingInTheOrderOfAWriter)
{
    const std::vector<Edit> edits = setTo("MaxIter", "5");
    expectEdited(xml, document("  <Height>1</Height>\n  <Width>2</Width>\n"), edits,
                 document("  <Height>1</Height>\n  <MaxIter>5</MaxIter>\n  <Width>2</Width>\n"));
    expectEdited(xml, document("\t<Height>1</Height> <!-- of it -->\n\t<!-- next -->\n\t<Width>2</Width>\n"),
                 edits,
                 document("\t<Height>1</Height> <!-- of it -->\n\t<MaxIter>5</MaxIter>\n\t<!-- next "
                          "-->\n\t<Width>2</Width>\n"));
    expectEdited(xml, document("  <Width>2</Width>\n"), edits,
                 document("  <MaxIter>5</MaxIter>\n  <Width>2</Width>\n"));
    expectEdited(xml, document("  <Height>1</Height>\n"), edits,
                 document("  <Height>1</Height>\n  <MaxIter>5</MaxIter>\n"));
    expectEdited(xml, document(""), edits, document("    <MaxIter>5</MaxIter>\n"));
    expectEdited(xml, document("<Height>1</Height><Width>2</Width>\n"), edits,
                 document("<Height>1</Height><MaxIter>5</MaxIter><Width>2</Width>\n"));
    expectEdited(xml, document("  <Zone>1</Zone>\n"), edits,
                 document("  <MaxIter>5</MaxIter>\n  <Zone>1</Zone>\n"));

    expectEdited(xml, document("<Height>1</Height> <!-- of\nit -->\n"), edits,
                 document("<Height>1</Height><MaxIter>5</MaxIter> <!-- of\nit -->\n"));

    EXPECT_EQ(edited(xml, "<Nereo2Config/>", edits), "<Nereo2Config><MaxIter>5</MaxIter></Nereo2Config>");
    EXPECT_EQ(edited(xml, "<Nereo2Config/>\n  <!-- a -->", edits),
              "<Nereo2Config>\n    <MaxIter>5</MaxIter>\n</Nereo2Config>\n  <!-- a -->");
    EXPECT_EQ(edited(xml, "<Nereo2Config><Height>1</Height>\n</Nereo2Config>", edits),
              "<Nereo2Config><Height>1</Height><MaxIter>5</MaxIter>\n</Nereo2Config>");
    EXPECT_EQ(edited(xml, "\n<Nereo2Config/>", edits),
              "\n<Nereo2Config>\n    <MaxIter>5</MaxIter>\n</Nereo2Config>");
    EXPECT_EQ(edited(xml, "<!-- a -->\r\n<Nereo2Config/>", edits),
              "<!-- a -->\r\n<Nereo2Config>\r\n    <MaxIter>5</MaxIter>\r\n</Nereo2Config>");
    EXPECT_EQ(edited(xml, "<Nereo2Config><!-- of\nit --></Nereo2Config>", edits),
              "<Nereo2Config>\n    <MaxIter>5</MaxIter><!-- of\nit --></Nereo2Config>");
    EXPECT_EQ(edited(xml, "<?xml version='1.0'?>\r\n<a:Nereo2Config xmlns:a='b' />\r\n", edits),
              "<?xml version='1.0'?>\r\n<a:Nereo2Config xmlns:a='b'>\r\n    <MaxIter>5</MaxIter>\r\n"
              "</a:Nereo2Config>\r\n");
    EXPECT_EQ(edited(xml, "<a>\n  <Nereo2Config></Nereo2Config>\n</a>", edits),
              "<a>\n  <Nereo2Config>\n      <MaxIter>5</MaxIter>\n  </Nereo2Config>\n</a>");
    EXPECT_EQ(edited(xml, "<a><Nereo2Config/><Nereo2Config/></a>", edits), "refused: Doubtful");
    EXPECT_EQ(edited(xml, "<a/>", edits), "refused: Doubtful");
}

TEST(ConfigurationXmlEditTest, RemovesASettingWithItsLine)
{
    const struct {
        const char* before;
        const char* after;
    } cases[] = {
        {"  <Height>1</Height>\n  <MaxIter>5</MaxIter>  \n  <Width>2</Width>\n",
         "  <Height>1</Height>\n  <Width>2</Width>\n"                                                         },
        {"  <MaxIter>\n  5\n  </MaxIter>\n",                                     ""                           },
        {"  <MaxIter>5</MaxIter> <!-- it -->\n",                                 "   <!-- it -->\n"           },
        {"<Height>1</Height><MaxIter>5</MaxIter>\n",                             "<Height>1</Height>\n"       },
        {"<MaxIter>5</MaxIter>\n<Width>2</Width>\n<MaxIter/>\n",                 "<Width>2</Width>\n"         },
        {"<MaxIter>5</MaxIter><Other><MaxIter/></Other>\n",                      "<Other><MaxIter/></Other>\n"},
    };
    for (const auto& [before, after] : cases)
        expectEdited(xml, document(before), removed("MaxIter"), document(after));
    EXPECT_EQ(edited(xml, "<MaxIter><Nereo2Config><MaxIter>5</MaxIter></Nereo2Config></MaxIter>",
                     removed("MaxIter")),
              "<MaxIter><Nereo2Config></Nereo2Config></MaxIter>"); // the outer one is no setting
}

TEST(ConfigurationXmlEditTest, RefusesWhatCannotBe)
{
    const std::string file = document("<MaxIter>5</MaxIter><Width><b/></Width><JobPrefix>a</JobPrefix>\n");
    const struct {
        const char* address;
        QString value;
        const char* result;
    } cases[] = {
        {"MaxIter",     "5.5",                  "refused: NotAnInteger"  },
        {"MaxIter",     "-2147483649",          "refused: OutOfRange"    },
        {"JobPrefix",   QString(QChar(1)),      "refused: CannotCarry"   },
        {"JobPrefix",   QString(QChar(0)),      "refused: CannotCarry"   },
        {"JobPrefix",   QString(QChar(0xFFFE)), "refused: CannotCarry"   },
        {"JobPrefix",   QString(QChar(0xD800)), "refused: CannotCarry"   },
        {"JobPrefix",   QString(QChar(0xFEFF)), "refused: CannotCarry"   },
        {"JobPrefix",   "a\rb",                 "refused: NewFinding"    }, // a save would lose it
        {"Width",       "5",                    "refused: Doubtful"      }, // an element is in it
        {"Maxiter",     "5",                    "refused: UnknownAddress"},
        {"AnalyzePath", QString(QChar(1)),      "refused: CannotCarry"   }, // which isn't there
    };
    for (const auto& [address, value, result] : cases)
        EXPECT_EQ(edited(xml, file, setTo(address, value)), result) << address;
}

TEST(ConfigurationXmlEditTest, KnowsWhatComesOutOfEntities)
{
    const std::string type = "<!DOCTYPE a [<!ENTITY n \"7\"> <!-- ' --> <!ENTITY e '<Width>5</Width>'>]>\n";
    EXPECT_EQ(edited(xml, type + document("<MaxIter>&n;</MaxIter>\n").substr(22), setTo("MaxIter", "8")),
              type + document("<MaxIter>8</MaxIter>\n").substr(22));
    EXPECT_EQ(edited(xml, type + "<Nereo2Config>&e;</Nereo2Config>", setTo("Width", "8")),
              "refused: Doubtful");
    EXPECT_EQ(edited(xml, type + "<Nereo2Config>&e;</Nereo2Config>", removed("Width")), "refused: Doubtful");
    EXPECT_EQ(
        edited(xml, type + "<Nereo2Config>&e;<MaxIter>1</MaxIter></Nereo2Config>", setTo("MaxIter", "8")),
        type + "<Nereo2Config>&e;<MaxIter>8</MaxIter></Nereo2Config>");
}

TEST(ConfigurationXmlEditTest, EditsWhatStandsBeforeAnErrorOfTheDocument)
{
    EXPECT_EQ(edited(xml, "<Nereo2Config><Width>1</Width><Height>", setTo("Width", "2")),
              "<Nereo2Config><Width>2</Width><Height>");
    EXPECT_EQ(edited(xml, "<Nereo2Config><Width>1</Width>\xFF\n</Nereo2Config>", setTo("Width", "2")),
              "refused: Doubtful");
    EXPECT_EQ(edited(xml, "<Nereo2Config><Width>1</Width>", setTo("MaxIter", "2")), "refused: Doubtful");
    EXPECT_EQ(edited(xml, "<Nereo2Config>&n;<MaxIter>1</MaxIter></Nereo2Config>", setTo("MaxIter", "2")),
              "<Nereo2Config><MaxIter>2</MaxIter>&n;<MaxIter>1</MaxIter></Nereo2Config>");
    EXPECT_EQ(edited(xml, "<Nereo2Config><Height>1</Height><MaxIter>2", removed("MaxIter")),
              "refused: Doubtful");
    EXPECT_EQ(edited(xml, "<Nereo2Config>\n<Width>1</Width>\n<MaxIter>2</MaxIter> ", removed("MaxIter")),
              "<Nereo2Config>\n<Width>1</Width>\n ");
}

/// Where the tags can't be followed, the bytes of a value aren't known.
TEST(ConfigurationXmlEditTest, RefusesWhatItCannotFollow)
{
    const std::string end = "<MaxIter>5</MaxIter></Nereo2Config>";
    const char* const starts[] = {
        "<!DOCTYPE a [<?p it's?>]><Nereo2Config>", // the rest would stand in quotes
        "<!DOCTYPE a [<?p it's?>]><Nereo2Config><Width>1</Width><JobPrefix>'>]><b/></JobPrefix>",
        "<?xml version='1.0' encoding='Shift_JIS'?><Nereo2Config>", // no character is of one byte for sure
    };
    for (const char* start : starts)
        EXPECT_EQ(edited(xml, start + end, setTo("MaxIter", "8")), "refused: Doubtful") << start;
    const char* const unfinished[] = {"<!DOCTYPE a [<!-- ",
                                      "<!DOCTYPE a [<!ENTITY b '",
                                      "<!DOCTYPE a [",
                                      "<?p",
                                      "<!--",
                                      "<a><![CDATA[",
                                      "<a",
                                      "</a>"};
    for (const char* document : unfinished)
        EXPECT_EQ(edited(xml, document, setTo("MaxIter", "8")), "refused: Doubtful") << document;
}

TEST(ConfigurationXmlEditTest, KeepsTheEncoding)
{
    const struct {
        const char* codec;
        const char* declared;
        const char* written; ///< for German, Polish, Czech (a load would lose a byte in UTF-16), a face
    } cases[] = {
        {"UTF-8",      "UTF-8",      "\xC3\xA4\xC5\x82\xC4\x8D\xF0\x9F\x98\x80"},
        {"UTF-16LE",   "UTF-16",     "\xC3\xA4\xC5\x82&#269;\xF0\x9F\x98\x80"  },
        {"UTF-16BE",   "UTF-16",     "\xC3\xA4\xC5\x82&#269;\xF0\x9F\x98\x80"  },
        {"ISO-8859-1", "ISO-8859-1", "\xC3\xA4&#322;&#269;&#128512;"           },
        {"ISO-8859-2", "ISO-8859-2", "\xC3\xA4\xC5\x82\xC4\x8D&#128512;"       },
    };
    for (const auto& [codec, declared, written] : cases) {
        const auto encoded = [codec = codec](const QString& text) {
            QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
            const bool hasMark = QByteArray(codec).startsWith("UTF-16");
            const QString whole = hasMark ? QChar(QChar::ByteOrderMark) + text : text;
            return QTextCodec::codecForName(codec)
                ->fromUnicode(whole.data(), whole.size(), &state)
                .toStdString();
        };
        const QString start = QStringLiteral("<?xml version='1.0' encoding='%1'?>\n<Nereo2Config>\n")
                                  .arg(QLatin1String(declared));
        const QString end = QString::fromUtf8("<!-- \xC3\xA4 --></Nereo2Config>\n");
        const QString texts = QString::fromUtf8("\xC3\xA4\xC5\x82\xC4\x8D\xF0\x9F\x98\x80");
        EXPECT_EQ(edited(xml, encoded(start + "<JobPrefix>a</JobPrefix>\n" + end), setTo("JobPrefix", texts)),
                  encoded(start + "<JobPrefix>" + QString::fromUtf8(written) + "</JobPrefix>\n" + end))
            << codec;
        EXPECT_EQ(edited(xml, encoded(start + " <Width>1</Width>\n" + end), setTo("Height", "2")),
                  encoded(start + " <Height>2</Height>\n <Width>1</Width>\n" + end))
            << codec;
        EXPECT_EQ(edited(xml, encoded(start + " <Width>1</Width>\n" + end), removed("Width")),
                  encoded(start + end))
            << codec;
    }
}

} // namespace
} // namespace Nereo::Inspection

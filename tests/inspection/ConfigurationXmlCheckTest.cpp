#include "Checked.h"

namespace Nereo::Inspection {
namespace {

using namespace std::string_literals;

constexpr auto Error = Severity::Error;
constexpr auto Warning = Severity::Warning;

TEST(ConfigurationXmlCheckTest, FindsNothingWrongInGoodFiles)
{
    for (const char* text : {
             "<Nereo2Config/>",
             "<?xml version='1.0'?>\n<Nereo2Config Version=\"2024.0.0.0\">\r\n<MaxIter> 5 "
             "</MaxIter></Nereo2Config>\n",
             "<Nereo2Config><MaxIter><!-- a -->5<?b?></MaxIter><JobPrefix/><AnalyzePath> "
             "</AnalyzePath></Nereo2Config>",
             "<other><Nereo2Config><StopTime>&#49;e&#53;</StopTime></Nereo2Config></other>",
             "<!DOCTYPE a [<!ENTITY n '5'>]><Nereo2Config><MaxIter>&n;</MaxIter></Nereo2Config>",
             "<!DOCTYPE a [<!ENTITY n '5'>]>\t<Nereo2Config>\t<MaxIter>&n;</MaxIter></Nereo2Config>",
             "<?xml version='1.0' "
             "encoding='ISO-8859-1'?><Nereo2Config><JobPrefix>\xE4</JobPrefix></Nereo2Config>",
         })
        expectClean("file.xml", text);
}

TEST(ConfigurationXmlCheckTest, FindsEachFaultAtItsPlace)
{
    const Fault faults[] = {
        {"<Nereo2Config>\n<MaxIter>5[[]]", "malformed-xml",               Error,                                                          Effect::Fails,                                                             "",
         "Premature end of document"},
        {"<Nereo2Config><!-- \xC3\xA4 -->[[<MaxItr]]/></Nereo2Config>",                                "unknown-key", Warning,
         Effect::Ignored,                                                                                     "MaxItr",                                                                                                                                                                                                                                                                                                                                                                                     "did you mean \"MaxIter\"?"},
        {"<Nereo2Config><JobPrefix>\xF0\x9F\x98\x80</JobPrefix><MaxIter>[[5.5]]</MaxIter></Nereo2Config>",
         "not-an-integer",                                  Error, Effect::Zero,                                                                                                                                                                                           "MaxIter"                                                                                                                                                                                                                                                                                                                                           },
        {"<Nereo2Config><MaxIter/>[[]]</Nereo2Config>",                       "missing-value",                                                    Error,                                                                      Effect::Zero,"MaxIter"},
        {"<Nereo2Config><MaxIter>5</MaxIter>\n[[<MaxIter]]>6</MaxIter></Nereo2Config>",                       "repeated-key",
         Warning,                                      Effect::Ignored,                                                                                                                                                            "MaxIter"                                                                                                                                                                                                                                                                                                                                                                                            },
        {"<Nereo2Config><MaxIter>[[2147483648]]</MaxIter></Nereo2Config>",                       "out-of-range",                                                    Error,
         Effect::Zero,"MaxIter"},
        {"<Nereo2Config><StopTime>[[]]</StopTime></Nereo2Config>",                       "missing-value",                                                    Error,                                                           Effect::Zero,
         "StopTime"                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                  },
        {"<Nereo2Config><MaxIter>[[abc]]</MaxIter></Nereo2Config>",                       "not-an-integer",                                                    Error,                                                          Effect::Zero,
         "MaxIter"},
        {"<Nereo2Config><StopTime>[[abc]]</StopTime></Nereo2Config>",                        "not-a-number",                                                     Error,                                                         Effect::Zero,
         "StopTime"                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                 },
        {"<Nereo2Config><StopTime> <!-- --> [[]]</StopTime></Nereo2Config>",                       "missing-value",                                                    Error,
         Effect::Zero,                                                                                     "StopTime"},
        {"<Nereo2Config><StopTime>[[1e999]]</StopTime></Nereo2Config>",                      "out-of-range",                                                   Error,
         Effect::Infinite,       "StopTime"                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                    },
        {"<Nereo2Config><MaxIter>5[[<b]]>6</b></MaxIter></Nereo2Config>",                      "unexpected-element",                                                   Error,
         Effect::Fails,                                                                             "MaxIter","a load fails"},
        {"<Nereo2Config a='1' Version = \"[[next]]\"/>",                       "bad-version",                                      Warning,                                                                                                    Effect::Zero,                                                    "version"                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                                               },
        {"<Nereo2Config  Version=\"[[1.2.3.x]]\" />",                    "bad-version",                                        Warning,   Effect::Zero,"version"},
        {"<Nereo2Config Version='[[1.2]]'/>",                    "bad-version",                                        Warning,                                                                                                    Effect::Zero,                                                                                                                                                             "version",
         "read as 1.2.0.0"},
        {"<Nereo2Config>\n <MaxIter>5</MaxIter>\n [[<Unheard]]><a/></Unheard>\n</Nereo2Config>\n",
         "unknown-key",                                        Warning,                                                                                                               Effect::Ignored,                                                                                                                                                                                        "Unheard",                                                                                                                                                                                                                                                                                        "it is ignored"},
        {"<Nereo2Config><MaxIter>5</Maxiter>[[]]</Nereo2Config>",                         "malformed-xml",Error,Effect::Fails,"",
         "Opening and ending tag mismatch; a load fails"},
        {"<Nereo2Config Version='[[]]'/>","bad-version",                  Warning,                                                                                                                             Effect::Ignored,                                                                                                                                                                                                                                                                                                                                                                                           "version"                                                                                                                                                                                                                                                                                                                                                    },
    };
    for (const Fault& fault : faults)
        expectFinding("file.xml", fault, false);
}

TEST(ConfigurationXmlCheckTest, FindsCarriageReturnsThatASaveLoses)
{
    const std::string long_(5000, 'x'); // of which a check keeps little
    for (const std::string& text :
         {"a&#13;b"s, "&#xD;"s, "a&#13;&#10;"s, "<![CDATA[a]]>&#13;"s, "a&#13;<!-- -->b"s, long_ + "&#13;"}) {
        const Fault fault {"<Nereo2Config><JobPrefix>[[]]" + text + "</JobPrefix></Nereo2Config>",
                           "stray-character",
                           Warning,
                           Effect::Lost,
                           "JobPrefix",
                           "a save loses it"};
        expectFinding("file.xml", fault, false);
    }
    expectClean(
        "file.xml",
        "<Nereo2Config><MaxIter>5&#13;</MaxIter><JobPrefix>a&#10;b&#9;c\n</JobPrefix></Nereo2Config>");
}

TEST(ConfigurationXmlCheckTest, FindsAValueWithoutItsEndOnce)
{
    const CheckedFile checked = checkedBytes(
        "file.xml", "<Nereo2Config>\n<JobPrefix>a\n<MaxIter>5</MaxIter>\n<Width>7</Width>\n</Nereo2Config>");
    ASSERT_EQ(checked.findings.size(), 2U) << linesOf(checked);
    EXPECT_EQ(checked.findings[0].code, "unexpected-element");
    EXPECT_EQ(checked.findings[0].address, "JobPrefix");
    EXPECT_EQ(checked.findings[0].place.line, 3);
    EXPECT_EQ(checked.findings[1].code, "malformed-xml");
}

/// The reader takes such an attribute for one with another name.
TEST(ConfigurationXmlCheckTest, FindsANulInTheNameOfAnAttribute)
{
    for (const std::string& text :
         {"<Nereo2Config V[[\0]]ersion='2024.0.0.0'>\n<MaxIter a\0b='1'>7</MaxIter></Nereo2Config>"s,
          "<Nereo2Config><MaxIter \xC3\xA4[[\0]]='1'>7</MaxIter></Nereo2Config>"s}) {
        const Marked marked(text);
        for (const Marked& document : {marked, marked.inUtf16()}) {
            const CheckedFile checked = checkedBytes("file.xml", document.bytes());
            ASSERT_EQ(checked.findings.size(), 1U) << linesOf(checked);
            EXPECT_EQ(checked.findings[0].code, "stray-character");
            EXPECT_EQ(effectName(checked.findings[0].effect), effectName(Effect::Ignored));
            EXPECT_EQ(checked.findings[0].place.column, document.place().column);
            EXPECT_EQ(checked.findings[0].place.line, 1);
        }
        EXPECT_EQ(checkedBytes("file.xml", marked.bytes()).findings[0].place.offset, marked.place().offset);
        EXPECT_FALSE(checkedBytes("file.xml", marked.inUtf16().bytes()).findings[0].place.hasOffset());
    }
}

TEST(ConfigurationXmlCheckTest, SaysOnceWhatTheReaderSaysOfANul)
{
    for (const std::string& text : {
             "<Nereo2Config><MaxIter>5\0[[]]</MaxIter></Nereo2Config>"s,
             "<Nereo2Config><!-- \0[[]] --></Nereo2Config>"s,
             "<Nereo2Config a='\0[[]]'/>"s,
             "<Nereo2Config/>\n\0[[]]"s,
         })
        expectFinding("file.xml", {text, "malformed-xml", Error, Effect::Fails}, false);
}

TEST(ConfigurationXmlCheckTest, FindsAVersionThatAnotherOverrides)
{
    expectFinding(
        "file.xml",
        {"<a><Nereo2Config Version='2024.0.0.0'/><Nereo2Config/><Nereo2Config Version='[[2023.0.0.0]]'/></a>",
         "repeated-key", Warning, Effect::Ignored, "version"},
        false);
    expectFinding("file.xml",
                  {"<a><Nereo2Config Version='[[]]'/><Nereo2Config Version='2024.0.0.0'/></a>", "bad-version",
                   Warning, Effect::Ignored, "version"},
                  false);
}

/// Of a text that is no number little is kept.
TEST(ConfigurationXmlCheckTest, FindsLongTextsThatAreNoNumbers)
{
    for (const char* end : {"", "x", ".5e+1", "\xC3\xA4"}) {
        const CheckedFile checked = checkedBytes("file.xml",
                                                 "<Nereo2Config><MaxIter>1" + std::string(5000, ' ') + end
                                                     + "</MaxIter></Nereo2Config>");
        EXPECT_EQ(checked.findings.size(), *end == '\0' ? 0U : 1U) << end;
        for (const Finding& finding : checked.findings)
            EXPECT_EQ(finding.code, "not-an-integer");
    }
    for (const std::string& text : {std::string(5000, 'x'), "-1.5e+3" + std::string(5000, ' ')}) {
        const CheckedFile checked =
            checkedBytes("file.xml", "<Nereo2Config><MaxIter>" + text + "</MaxIter></Nereo2Config>");
        ASSERT_EQ(checked.findings.size(), 1U);
        EXPECT_EQ(checked.findings[0].code, "not-an-integer");
    }
}

/// Where characters can't be told apart by looking, the reader says where it is, and nobody knows the bytes.
TEST(ConfigurationXmlCheckTest, GivesTheReadersPlacesInOtherEncodings)
{
    const CheckedFile checked =
        checkedBytes("file.xml",
                     "<?xml version='1.0' encoding='Shift_JIS'?>\n<Nereo2Config Version='2024.1'>\n"
                     "<MaxIter></MaxIter><Width>x</Width></Nereo2Config>");
    const char* const codes[] = {"bad-version", "missing-value", "not-an-integer"};
    ASSERT_EQ(checked.findings.size(), std::size(codes)) << linesOf(checked);
    for (std::size_t i = 0; i < std::size(codes); ++i) {
        EXPECT_EQ(checked.findings[i].code, codes[i]);
        EXPECT_EQ(checked.findings[i].place.line, i == 0 ? 2 : 3) << codes[i];
        EXPECT_FALSE(checked.findings[i].place.hasOffset());
    }
}

TEST(ConfigurationXmlCheckTest, KnowsNoOffsetsInEntities)
{
    const CheckedFile checked = checkedBytes("file.xml",
                                             "<!DOCTYPE a [<!ENTITY e \"<Nereo2Config Version='1'/>\">]>"
                                                 + std::string(300, ' ') + "<a>&e;</a>");
    ASSERT_EQ(checked.findings.size(), 1U) << linesOf(checked);
    EXPECT_EQ(checked.findings[0].code, "bad-version");
    EXPECT_FALSE(checked.findings[0].place.hasOffset());
}

/// The reader reads a block at a time, and none of one in which a byte is bad.
TEST(ConfigurationXmlCheckTest, PlacesTheFirstByteThatIsNoCharacter)
{
    for (const int spaces : {0, 1, 8000, 100'000}) {
        const std::string start =
            "<Nereo2Config>\n" + std::string(std::size_t(spaces), ' ') + "<MaxIter>\xC3\xA4";
        const CheckedFile checked = checkedBytes("file.xml", start + "\xFF\xFF</MaxIter></Nereo2Config>");
        ASSERT_EQ(checked.findings.size(), 1U) << linesOf(checked);
        const Finding& finding = checked.findings[0];
        EXPECT_EQ(finding.code, "malformed-xml");
        EXPECT_EQ(finding.effect, Effect::Fails);
        EXPECT_EQ(finding.place.line, 2);
        EXPECT_EQ(finding.place.column, spaces + 11);
        EXPECT_EQ(finding.place.offset, qint64(start.size()));
    }
}

TEST(ConfigurationXmlCheckTest, FindsHalfACharacterInUtf16)
{
    std::string bytes = "\xFE\xFF";
    for (const char character : std::string("<Nereo2Config><JobPrefix>ab</JobPrefix></Nereo2Config>"))
        bytes += {'\0', character};
    bytes.insert(bytes.find("a", 50) + 1, "\xD8\x00", 2);
    const CheckedFile checked = checkedBytes("file.xml", bytes);
    ASSERT_EQ(checked.findings.size(), 1U) << linesOf(checked);
    EXPECT_EQ(checked.findings[0].code, "not-utf8");
    EXPECT_EQ(checked.findings[0].place.column, 27);
}

} // namespace
} // namespace Nereo::Inspection

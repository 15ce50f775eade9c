#include "Checked.h"

#include <algorithm>
#include <string>
#include <vector>

namespace Nereo::Inspection {
namespace {

constexpr auto Error = Severity::Error;
constexpr auto Warning = Severity::Warning;

/// Expects one finding of a file, with the place marked by [[…]].
class Expectation {
public:
    Expectation(Severity severity, Effect effect) : severity_(severity), effect_(effect) {}

    void operator()(const std::string& text, const char* code, const char* address,
                    const char* message = "") const
    {
        Fault fault;
        fault.text = text;
        fault.code = code;
        fault.severity = severity_;
        fault.effect = effect_;
        fault.address = QString::fromUtf8(address);
        fault.message = QString::fromUtf8(message);
        expectFinding("materials.xml", fault, false);
    }

private:
    Severity severity_;
    Effect effect_;
};

/// A database whose second material, "Water", has this in it.
std::string inMaterial(const std::string& type, const std::string& content)
{
    return "<?xml version=\"1.0\"?>\n<!-- \xC3\xA4 \xF0\x9F\x98\x80 --><material_database "
           "version='1.2.3.4'>\n"
           "<material type=\"solid\"><name>\xC3\xA4</name><id>1</id></material>\xC2\xA0 <material type='"
        + type + "'>" + content + "<name>Water</name>\n</material></material_database>\n";
}

std::string inFluid(const std::string& content)
{
    return inMaterial("fluid", content);
}

std::string inDensity(const std::string& content)
{
    return inFluid("<property type=\"density\">\n" + content + "</property>");
}

std::string inCurve(const std::string& content)
{
    return inDensity("<variation_type>piecewise_linear</variation_type>\n"
                     "<independent_variable>kT</independent_variable>"
                     + content);
}

const std::string constantValue = "<variation_type>constant</variation_type><value>5</value>";

TEST(MaterialDatabaseCheckTest, FindsNothingWrongInGoodFiles)
{
    for (const std::string& text : {
             std::string("<material_database/>"),
             std::string("<a><material_database version='1.2.3.4'/><b/></a>"),
             std::string("<material_database><material type='unassigned'/></material_database>"),
             std::string("<material_database><material type='fluid'><id>0</id></material>"
                         "<material type='fluid'><id>0</id></material></material_database>"),
             std::string(
                 "<a><material_database version='1.2.3.4'><material type='fluid'/></material_database>"
                 "<material_database><material type='solid'/></material_database></a>"),
             std::string("<x:material_database xmlns:x='u'><x:material type='fluid'><x:name>a</x:name>"
                         "</x:material></x:material_database>"),
             inFluid("<ref_pressure>1e5</ref_pressure><diffusion_coefficient> 1 </diffusion_coefficient>"),
             inMaterial("solid", "<ref_temperature>300</ref_temperature>"),
             inDensity(constantValue),
             inDensity("<value>5</value>"),
             inDensity("<value>inf</value><variation_type>EOS</variation_type>"),
             inDensity("<variation_type>polynomial</variation_type>"),
             inDensity("<variation_type><![CDATA[constant]]></variation_type><value>&#53;<!-- -->5</value>"),
             inCurve(""),
             inCurve("<point><x>0</x><y>1</y></point><point><y>1</y><x>1e-9</x></point>"),
             inDensity("<variation_type>piece_linear</variation_type><point><x>0</x><y>1</y></point>"
                       "<independent_variable>kKXX</independent_variable>"),
             inDensity("<variation_type>piecewise_linear</variation_type>"
                       "<independent_variable>kNone</independent_variable>"),
         })
        expectClean("materials.xml", text);
}

TEST(MaterialDatabaseCheckTest, FindsNumbersThatAreNone)
{
    const Expectation expectZero(Error, Effect::Zero);
    expectZero(inFluid("<id>[[7.0]]</id>"), "not-an-integer", "Water/id", "read as 0");
    expectZero(inFluid("<id>[[2147483648]]</id>"), "out-of-range", "Water/id");
    expectZero(inFluid("<id>[[]]</id>"), "missing-value", "Water/id");
    expectZero(inFluid("<id/>[[]]"), "missing-value", "Water/id");
    expectZero(inFluid("<ref_pressure>[[1,5]]</ref_pressure>"), "not-a-number", "Water/ref_pressure");
    expectZero(inFluid("<gas_constant>[[1e-999]]</gas_constant>"), "out-of-range", "Water/gas_constant");
    expectZero(inFluid("<vapor_pressure> \n[[]]</vapor_pressure>"), "missing-value", "Water/vapor_pressure");
    expectZero(inDensity("<value>[[five]]</value>"), "not-a-number", "Water/density/value");
    expectZero(inDensity("<value><!-- 5 -->[[]]</value>"), "missing-value", "Water/density/value");
    expectZero(inDensity("<variation_type>constant</variation_type>\n[[]]"), "missing-value",
               "Water/density/value");
    expectZero(inDensity("[[]]"), "missing-value", "Water/density/value");
    expectZero(inFluid("<property type='density'/>[[]]"), "missing-value", "Water/density/value");
    expectZero(inCurve("<point><x>[[a]]</x><y>1</y></point>"), "not-a-number", "Water/density/points/1/x");
    expectZero(inCurve("<point><x>0</x><y>1</y></point><point><x>1</x><y>[[]]</y></point>"), "missing-value",
               "Water/density/points/2/y");
    expectZero(inCurve("<point><x>2</x><y>1</y></point>\n<point><y>1</y>[[]]</point>"), "missing-coordinate",
               "Water/density/points/2/x", "the point has no x");
    expectZero(inCurve("<point><x>1</x>[[]]</point>"), "missing-coordinate", "Water/density/points/1/y");
    expectZero(inCurve("<point/>[[]]"), "missing-coordinate", "Water/density/points/1", "x, y");

    const Expectation expectInfinite(Error, Effect::Infinite);
    expectInfinite(inDensity("<value>[[-1e999]]</value>"), "out-of-range", "Water/density/value");

    const Expectation expectError(Error, Effect::None);
    expectError(inDensity("<variation_type>piecewise_linear</variation_type>[[]]"), "missing-value",
                "Water/density/independent_variable", "kNone");
}

TEST(MaterialDatabaseCheckTest, FindsWhatEndsALoad)
{
    const Expectation expectFailure(Error, Effect::Fails);
    expectFailure("<material_database>\n<material type='fluid'><name>\xC3\xA4 [[]]", "malformed-xml", "",
                  "Premature end of document");
    expectFailure("<material_database><material type='fluid'></Material>[[]]", "malformed-xml", "",
                  "tag mismatch");
    expectFailure(inFluid("<id>7[[<b]]/></id>"), "unexpected-element", "Water/id");
    expectFailure(inDensity("<value>5[[<value]]>6</value></value>"), "unexpected-element",
                  "Water/density/value");
    expectFailure(inCurve("<point><x>\n[[<x]]/>1</x><y>1</y></point>"), "unexpected-element",
                  "Water/density/points/1/x");
    expectFailure(inFluid("<property type='[[Density]]'><value>5</value></property>"),
                  "unknown-property-type", "Water/Density", "did you mean \"density\"?");
    expectFailure(inFluid("<property a='density'\n type\n=\n'[[a/b#c%]]'><value>5</value></property>"),
                  "unknown-property-type", "Water/a%2Fb%23c%25");
    expectFailure(inFluid("<property type='[[]]'><value>5</value></property>"), "unknown-property-type",
                  "Water/#1");
    expectFailure(inDensity(constantValue + "</property>[[]]<property><value>5</value>"),
                  "unknown-property-type", "Water/#2");

    expectFailure("<material_database><material type='fluid'><name>a[[<b]]>c</b></name></material>"
                  "</material_database>",
                  "unexpected-element", "a/name");
}

TEST(MaterialDatabaseCheckTest, FindsNamesThatNoTableHas)
{
    const Expectation expectWarning(Warning, Effect::None);
    expectWarning("<material_database><material type='[[fluyd]]'><name>a</name><ref_pressure>1</ref_pressure>"
                  "<property type='density'><value>1</value></property></material></material_database>",
                  "unknown-material-type", "a/type", "did you mean \"fluid\"?");
    expectWarning("<material_database><material type='[[Fluid]]'/></material_database>",
                  "unknown-material-type", "#1/type");
    expectWarning("<material_database>[[]]<material><name>a</name></material></material_database>",
                  "unknown-material-type", "a/type");
    expectWarning(inDensity("<variation_type>[[constnat]]</variation_type><value>5</value>"),
                  "unknown-variation", "Water/density/variation_type", "did you mean \"constant\"?");
    expectWarning(inDensity("<variation_type>[[ constant]]</variation_type><value>5</value>"),
                  "unknown-variation", "Water/density/variation_type");
    expectWarning(inDensity("<point><x>1</x><y>1</y></point><variation_type>[[]]</variation_type>"),
                  "unknown-variation", "Water/density/variation_type");
    expectWarning(inDensity("<variation_type>piecewise_linear</variation_type>"
                            "<independent_variable>[[kSlipNode]]</independent_variable>"),
                  "unknown-variable", "Water/density/independent_variable", "a flag of nodes");

    const Expectation expectIgnored(Warning, Effect::Ignored);
    expectIgnored(inDensity("<variation_type>piecewise_linear</variation_type>"
                            "<independent_variable>[[kt]]</independent_variable>"),
                  "unknown-variable", "Water/density/independent_variable", "did you mean \"kT\"?");
    expectIgnored(inDensity("<variation_type>piecewise_linear</variation_type>"
                            "<independent_variable>[[kkxx]]</independent_variable>"),
                  "unknown-variable", "Water/density/independent_variable", "did you mean \"kKXX\"?");
    expectIgnored(inDensity("<independent_variable>[[]]</independent_variable>"
                            "<variation_type>piecewise_linear</variation_type>"),
                  "unknown-variable", "Water/density/independent_variable", "kNone");
    expectIgnored("<material_database>\n[[<materiel]]><name/></materiel></material_database>",
                  "unknown-element", "materiel", "did you mean \"material\"?");
    expectIgnored("<material_database>[[<material_database]]/></material_database>", "unknown-element",
                  "material_database");
    expectIgnored("<a><material_database/>[[<material]] type='fluid'/></a>", "unknown-element", "material");
    expectIgnored(inFluid("[[<ref_presure]]>5</ref_presure>"), "unknown-element", "Water/ref_presure",
                  "did you mean \"ref_pressure\"?");
    expectIgnored(inFluid("[[<value]]>5</value>"), "unknown-element", "Water/value");
    expectIgnored(inFluid("[[<Name]]>5</Name>"), "unknown-element", "Water/Name");
    expectIgnored(inDensity(constantValue + "[[<x]]>5</x>"), "unknown-element", "Water/density/x");
    expectIgnored(inDensity(constantValue + "[[<property]] type='a'/>"), "unknown-element",
                  "Water/density/property");
    expectIgnored(inCurve("<point><x>0</x><y>0</y>[[<z]]><x>1</x></z></point>"), "unknown-element",
                  "Water/density/points/1/z");
    expectIgnored("<material_database><material type='[[\xEF\xBB\xBF"
                  "fluid]]'/></material_database>",
                  "stray-character", "#1/type");
}

TEST(MaterialDatabaseCheckTest, FindsACarriageReturnThatASaveLoses)
{
    const CheckedFile checked = checkedBytes(
        "file.xml",
        "<material_database><material type='fluid'><name>A&#13;</name></material></material_database>");
    ASSERT_EQ(checked.findings.size(), 1U) << linesOf(checked);
    const Finding& finding = checked.findings[0];
    EXPECT_EQ(finding.code, "stray-character");
    EXPECT_EQ(effectName(finding.effect), effectName(Effect::Lost));
    EXPECT_EQ(finding.address, "A\r/name");
    EXPECT_EQ(finding.place.column, 49);
}

TEST(MaterialDatabaseCheckTest, FindsAWrongTypeAndNothingThatIsMissingThen)
{
    const char* const rows[][2] = {
        {"<property type='heat'></property>",                                                                      "unknown-property-type"},
        {"<property "
         "type='density'><variation_type>piecewise_linear</variation_type><value>7.5</value></property>", "unused-value"         },
        {"<property type='density'><variation_type>piecewise_linear</variation_type></property>",
         "missing-value"                                                                                                                  },
    };
    for (const auto& [property, code] : rows) {
        const CheckedFile checked = checkedBytes("file.xml",
                                                 std::string("<material_database><material type='fluid'>")
                                                     + property + "</material></material_database>");
        ASSERT_EQ(checked.findings.size(), 1U) << linesOf(checked);
        EXPECT_EQ(checked.findings[0].code, code);
    }
}

TEST(MaterialDatabaseCheckTest, FindsNoWordWithACarriageReturn)
{
    const char* const rows[][2] = {
        {"<variation_type>constant&#13;</variation_type>",                "unknown-variation"},
        {"<variation_type>piecewise_linear</variation_type>"
         "<independent_variable>kT&#13;</independent_variable>", "unknown-variable" },
    };
    for (const auto& [element, code] : rows) {
        const CheckedFile checked =
            checkedBytes("file.xml",
                         std::string("<material_database><material type='fluid'><property type='density'>")
                             + element + "</property></material></material_database>");
        ASSERT_EQ(checked.findings.size(), 1U) << linesOf(checked);
        EXPECT_EQ(checked.findings[0].code, code);
    }
}

TEST(MaterialDatabaseCheckTest, FindsWhatStandsThereTwice)
{
    const Expectation expectIgnored(Warning, Effect::Ignored);
    expectIgnored(inFluid("<id>7</id>\n[[<id]]>8</id>"), "repeated-element", "Water/id");
    expectIgnored(
        "<material_database><material type='fluid'><name>Oil</name>[[<name]]>Water</name></material>"
        "</material_database>",
        "repeated-element", "Water/name");
    expectIgnored(inMaterial("solid",
                             "<ref_temperature>1</ref_temperature>"
                             "[[<ref_temperature]]>1</ref_temperature>"),
                  "repeated-element", "Water/ref_temperature");
    expectIgnored(inDensity("<value>5</value>[[<value]]>5</value>"), "repeated-element",
                  "Water/density/value");
    expectIgnored(inCurve("<point><x>0</x><y>1</y>[[<x]]>0</x></point>"), "repeated-element",
                  "Water/density/points/1/x");
    expectIgnored("<a><material_database version='1.2.3.4'/>\n<material_database version='[[1.2.3.5]]'/></a>",
                  "repeated-element", "version");

    const Expectation expectOverridden(Error, Effect::Ignored);
    expectOverridden(inDensity(constantValue + "</property><property type='[[density]]'><value>6</value>"),
                     "merged-property", "Water/density");
    expectOverridden(inMaterial("solid",
                                "<property type='x_conductivity'><value>5</value></property>"
                                "<property type='[[conductivity]]'><value>5</value></property>"),
                     "merged-property", "Water/conductivity");
    expectOverridden(inMaterial("solid",
                                "<property type='conductivity'><value>5</value></property>"
                                "<property type='[[x_conductivity]]'><value>5</value></property>"),
                     "merged-property", "Water/x_conductivity");

    const std::string air = "<material type='fluid'><name>Air</name><id>1</id></material>";
    const Expectation expectWarning(Warning, Effect::None);
    expectWarning(
        "<material_database>" + air
            + "<material type='solid'>\n<name>[[Air]]</name><id>2</id></material></material_database>",
        "repeated-material", "Air#2/name");
    expectWarning(
        "<material_database>" + air
            + "<material type='solid'><id>[[1]]</id><name>B/%#2</name></material></material_database>",
        "repeated-id", "B%2F%25%232/id");
    expectWarning("<a><material_database>" + air
                      + "</material_database><material_database><material type='solid'><id>[[+01]]</id>"
                        "</material></material_database></a>",
                  "repeated-id", "#2/id");
}

TEST(MaterialDatabaseCheckTest, FindsFaultsInOneOfSeveralMaterialsOfAName)
{
    const auto oil = [](const std::string& content) {
        return "<material type='fluid'>" + content + "<name>\xC3\x96l</name></material>\n";
    };
    const auto expectSecond = [&](const std::string& content, const char* code, Severity severity,
                                  Effect effect, const char* address) {
        const Marked marked("<material_database><!-- \xF0\x9F\x98\x80 -->" + oil("") + oil(content) + oil("")
                            + "</material_database>");
        for (const Marked& each : {marked, marked.withCarriageReturns(), marked.withByteOrderMark()}) {
            std::vector<Finding> found = checkedBytes("materials.xml", each.bytes()).findings;
            found.erase(
                std::remove_if(found.begin(), found.end(),
                               [](const Finding& finding) { return finding.code == "repeated-material"; }),
                found.end());
            ASSERT_EQ(found.size(), 1U) << content;
            EXPECT_EQ(found[0].code, code);
            EXPECT_EQ(found[0].severity, severity);
            EXPECT_EQ(effectName(found[0].effect), effectName(effect));
            EXPECT_EQ(found[0].address, address);
            EXPECT_EQ(found[0].place, each.place()) << content;
        }
    };
    expectSecond("<id>[[x]]</id>", "not-an-integer", Error, Effect::Zero, "\xC3\x96l#2/id");
    expectSecond("<property type='density'><value>[[]]</value></property>", "missing-value", Error,
                 Effect::Zero, "\xC3\x96l#2/density/value");
    expectSecond("<property type='[[Density]]'><value>5</value></property>", "unknown-property-type", Error,
                 Effect::Fails, "\xC3\x96l#2/Density");
    expectSecond("[[<a]]/>", "unknown-element", Warning, Effect::Ignored, "\xC3\x96l#2/a");
}

TEST(MaterialDatabaseCheckTest, FindsWhatASaveLoses)
{
    const std::string points = "<point><x>0</x><y>1</y></point>";
    const Expectation expectDropped(Warning, Effect::Lost);
    expectDropped(inMaterial("solid", "<ref_pressure>[[1e5]]</ref_pressure>"), "unused-value",
                  "Water/ref_pressure");
    expectDropped(inMaterial("heat_sink", "<ref_temperature>[[1]]</ref_temperature>"), "unused-value",
                  "Water/ref_temperature");
    expectDropped(inDensity("<value>[[5]]</value><variation_type>polynomial</variation_type>"),
                  "unused-value", "Water/density/value");
    expectDropped(inCurve("<value>[[5]]</value>" + points), "unused-value", "Water/density/value");
    expectDropped(
        inDensity(constantValue + "[[<point]]><x>0</x><y>1</y></point>" + "<point><x>1</x><y>1</y></point>"),
        "unused-value", "Water/density/points/1", "a save loses it");
    expectDropped(inDensity("<variation_type>constant</variation_type>"
                            "<independent_variable>[[kT]]</independent_variable>"
                            + points),
                  "unused-value", "Water/density/independent_variable");
    expectDropped(inDensity("<variation_type>fan_curve</variation_type>[[<point]]><x>0</x><y>1</y></point>"),
                  "unused-value", "Water/density/points/1");

    const Expectation expectLost(Error, Effect::Lost);
    expectLost(inMaterial("heat_sink", "<property type='[[base_thickness]]'><value>1</value></property>"),
               "misplaced-property", "Water/base_thickness", "loses its type");
    expectLost(inFluid("<property type='[[flow_rate]]'><value>1</value></property>"), "misplaced-property",
               "Water/flow_rate");
    expectLost(inFluid("<property type='[[x_conductivity]]'><value>1</value></property>"),
               "misplaced-property", "Water/x_conductivity", "as \"conductivity\"");
}

TEST(MaterialDatabaseCheckTest, FindsCurvesThatGoBack)
{
    const std::string first = "<point><x>1</x><y>1</y></point>";
    const Expectation expectWarning(Warning, Effect::None);
    expectWarning(inCurve(first + "<point><y>1</y><x>[[1.0]]</x></point>"), "points-not-ascending",
                  "Water/density/points/2/x");
    expectWarning(inCurve(first + "<point><x>[[nan]]</x><y>1</y></point><point><x>2</x><y>1</y></point>"),
                  "points-not-ascending", "Water/density/points/2/x");
    expectWarning(inCurve(first + "<point><x>[[-inf]]</x><y>1</y></point>"), "points-not-ascending",
                  "Water/density/points/2/x");
}

TEST(MaterialDatabaseCheckTest, FindsBadVersions)
{
    const Expectation expectZeroVersion(Warning, Effect::Zero);
    expectZeroVersion("<material_database version='[[1.2.3]]'/>", "bad-version", "version");
    expectZeroVersion("<a><material_database version='1.2.3.4'/><material_database version='[[next]]'/></a>",
                      "bad-version", "version");

    const Expectation expectIgnored(Warning, Effect::Ignored);
    expectIgnored("<material_database version='[[]]'/>", "bad-version", "version");
}

/// The only finding of a document in another encoding, which has no offset.
void expectOnlyAt(const std::string& bytes, const char* code, Place place)
{
    const CheckedFile checked = checkedBytes("materials.xml", bytes, FileKind::Materials);
    ASSERT_EQ(checked.findings.size(), 1U) << linesOf(checked);
    EXPECT_EQ(checked.findings[0].code, code);
    EXPECT_EQ(checked.findings[0].place, place) << linesOf(checked);
}

TEST(MaterialDatabaseCheckTest, KnowsThePlacesInOtherEncodings)
{
    const Marked marked(
        "<material_database>\n<!-- \xC3\xA4 --><material type='fluid'><id>[[x]]</id></material>"
        "</material_database>");
    expectOnlyAt(marked.inUtf16().bytes(), "not-an-integer", {2, 38, Place::Absent});
    expectOnlyAt("<?xml version='1.0' encoding='ISO-8859-1'?>\n<material_database><!-- \xE4 -->"
                 "<material type='fluid'><id>x</id></material></material_database>",
                 "not-an-integer", {2, 57, Place::Absent});
}

/// A load leaves out carriage returns before it puts bytes together to characters. Of two that are left out,
/// the second one puts right where characters begin.
TEST(MaterialDatabaseCheckTest, FindsThatALoadLosesBytesOfCharacters)
{
    const std::string comment = "<!-- \xF0\x9F\x98\x80" + std::string(40'000, '.') + " -->";
    const std::string document = "<?xml version='1.0'?>\n" + comment
        + "<material_database><material type='fluid'><name>[[\xC4\x8D\xC4\x8D]]</name><id>7</id>"
          "</material></material_database>\n";
    const Marked marked(document);
    for (const Marked::ByteOrder order : {Marked::BigEndian, Marked::LittleEndian}) {
        const CheckedFile checked = checkedBytes("materials.xml", marked.inUtf16(order).bytes());
        ASSERT_EQ(checked.findings.size(), 1U) << linesOf(checked);
        const Finding& finding = checked.findings.front();
        EXPECT_EQ(finding.code, "stray-character");
        EXPECT_EQ(finding.effect, Effect::Replaced);
        EXPECT_EQ(finding.place.line, marked.place().line);
        EXPECT_EQ(finding.place.column, marked.place().column);
        EXPECT_FALSE(finding.place.hasOffset());
    }
}

TEST(MaterialDatabaseCheckTest, SaysWhyWideCharactersWithCarriageReturnsAreNoXml)
{
    const Marked marked("<?xml version='1.0'?>\n<!-- -->\n<material_database>\n</material_database>[[]]\n");
    const std::string bytes = marked.withCarriageReturns().inUtf16().bytes();
    const std::string mark = "\xFE\xFF";
    ASSERT_EQ(bytes.substr(0, 2), mark);
    for (const std::string& document : {bytes, bytes.substr(mark.size())}) {
        const CheckedFile checked = checkedBytes("materials.xml", document);
        ASSERT_EQ(checked.findings.size(), 1U) << linesOf(checked);
        EXPECT_EQ(checked.findings.front().code, "malformed-xml");
        EXPECT_TRUE(checked.findings.front().message.endsWith(
            "a load fails; a load leaves out bytes 0D of characters, the first in line 1"))
            << linesOf(checked);
    }
}

TEST(MaterialDatabaseCheckTest, KnowsNoOffsetsInEntities)
{
    const std::string declaration = "<!DOCTYPE a [<!ENTITY p '<point><x>a</x></point>'>"
                                    "<!ENTITY n 'a'>]>\n";
    const std::string curve = "<material_database><material type='fluid'><property type='density'>"
                              "<variation_type>piecewise_linear</variation_type>"
                              "<independent_variable>kT</independent_variable>";
    const std::string end = "</property></material></material_database>";
    const CheckedFile checked = checkedBytes("materials.xml", declaration + curve + "&p;" + end);
    ASSERT_EQ(checked.findings.size(), 2U) << linesOf(checked);
    for (const Finding& finding : checked.findings) {
        EXPECT_EQ(finding.place.line, 2);
        EXPECT_FALSE(finding.place.hasOffset());
    }
    const std::string plain = declaration + curve + "<point><x>&n;</x><y>1</y></point>" + end;
    const CheckedFile ofText = checkedBytes("materials.xml", plain);
    ASSERT_EQ(ofText.findings.size(), 1U) << linesOf(ofText);
    EXPECT_EQ(ofText.findings[0].place.offset, qint64(plain.find("&n;")));
    EXPECT_EQ(ofText.findings[0].found, "a");
}

TEST(MaterialDatabaseCheckTest, FindsThatThereIsNoDatabase)
{
    const CheckedFile checked =
        checkedBytes("materials.xml", "<database><material/></database>\n", FileKind::Materials);
    ASSERT_EQ(checked.findings.size(), 1U) << linesOf(checked);
    const Finding& finding = checked.findings[0];
    EXPECT_EQ(finding.code, "no-root");
    EXPECT_EQ(finding.severity, Error);
    EXPECT_EQ(finding.effect, Effect::Ignored);
    EXPECT_EQ(finding.place, (Place {2, 1, 33}));
}

TEST(MaterialDatabaseCheckTest, FindsEverythingInOnePass)
{
    const CheckedFile checked =
        checkedBytes("materials.xml",
                     inFluid("<id>a</id><property type='b'><value>c</value><point/></property><d/>"
                             "<property type='flow_rate'><value>1</value></property>"
                             "<property type='flow_rate'><value>2</value></property>"
                             "<property type='torque'><value>3</value></property>")
                         + "<");
    std::vector<std::string> codes;
    for (const Finding& finding : checked.findings)
        codes.push_back(finding.code.toStdString());
    const std::vector<std::string> expected = {
        "not-an-integer",     "unknown-property-type", "not-a-number",       "unused-value",
        "missing-coordinate", "unknown-element",       "misplaced-property", "merged-property",
        "merged-property",    "malformed-xml"};
    EXPECT_EQ(codes, expected) << linesOf(checked);
}

} // namespace
} // namespace Nereo::Inspection

#include "Agreement.h"
#include "Checked.h"

#include "fuzz/FuzzModels.h"
#include "support/Damage.h"
#include "support/TemporaryFolder.h"

#include <NereoFileIO/MaterialDatabaseFile.h>

#include <random>
#include <set>
#include <string>
#include <vector>

namespace Nereo::Inspection {
namespace {

TEST(MaterialDatabaseAgreementTest, OfDamagedFiles)
{
    Agreement agreement("materials.xml", FileKind::Materials);
    for (const char* path : {NEREO_SAMPLES_DIR "/materials.xml", NEREO_GOLDEN_DIR "/materials.xml"})
        agreement.expectEach(damaged(readBytes(path)));
}

/// Makes up databases whose elements mostly stand where they belong.
class RandomDatabase {
public:
    std::string next()
    {
        std::string content;
        for (auto count = random_() % 3; count > 0; --count)
            content += element({"material"}, 0);
        return "<material_database version='1.2.3.4'>" + content + "</material_database>";
    }

private:
    using Words = std::vector<const char*>;

    const char* oneOf(const Words& words) { return words[random_() % words.size()]; }
    bool isRare() { return random_() % 16 == 0; }

    std::string element(const Words& names, int depth)
    {
        const std::string name = oneOf(isRare() ? all_ : names);
        std::string content;
        if (depth < 4) {
            for (auto count = random_() % 6; count > 0; --count)
                content += contentOf(name, depth + 1);
        }
        return '<' + name + " type='" + oneOf(name == "material" ? materialTypes_ : propertyTypes_) + "'>"
            + content + "</" + name + '>';
    }

    std::string contentOf(const std::string& name, int depth)
    {
        const std::string space = isRare() ? "\r\n" : "";
        if (name == "material")
            return space + element(ofMaterial_, depth);
        if (name == "property")
            return space + element(ofProperty_, depth);
        if (name == "point")
            return space + element(ofPoint_, depth);
        return isRare() ? element(all_, depth) : space + oneOf(texts_);
    }

    std::mt19937 random_ {20240917};
    const Words materialTypes_ {"fluid", "fluid", "solid", "heat_sink", "liquid"};
    const Words propertyTypes_ {"density", "viscosity", "conductivity", "x_conductivity", "torque",
                                "angle",   ""};
    const Words ofMaterial_ {"name",     "id",       "ref_pressure", "ref_temperature",
                             "property", "property", "other"};
    const Words ofProperty_ {"variation_type", "value", "independent_variable", "point", "point", "x"};
    const Words ofPoint_ {"x", "y", "x", "y", "value"};
    const Words all_ {"material_database", "material", "property", "name", "id", "point", "x", "value"};
    const Words texts_ {"1", "2",         "1e999", "constant",   "piece_linear",  "fan_curve", "kT",
                        " ", "kSlipNode", "a",     "<!-- c -->", "<![CDATA[3]]>", "&amp;",     "&#52;"};
};

TEST(MaterialDatabaseAgreementTest, OfElementsInAnyOrder)
{
    RandomDatabase random;
    Agreement agreement("materials.xml", FileKind::Materials);
    for (int i = 0; i < 2000 && !HasFailure(); ++i) {
        const std::string bytes = random.next();
        agreement.expect({bytes, bytes});
    }
}

TEST(MaterialDatabaseAgreementTest, RaisesNoFalseAlarm)
{
    const std::set<QString> deserved {"unknown-material-type", "unknown-variation", "points-not-ascending",
                                      "repeated-material", "repeated-id"};
    std::mt19937 random(20240918);
    const TemporaryFolder folder;
    for (int i = 0; i < 200; ++i) {
        QByteArray noise(4096, '\0');
        for (char& byte : noise)
            byte = char(random());
        FuzzBytes bytes(noise);
        const std::string path = folder.freshPath("materials.xml");
        ASSERT_TRUE(takeMaterials(bytes, takeXmlText).saveTo(path));
        const CheckedFile checked = check(path);
        EXPECT_EQ(checked.kind, FileKind::Materials);
        for (const Finding& finding : checked.findings) {
            EXPECT_TRUE(deserved.count(finding.code) == 1) << linesOf(checked);
            EXPECT_NE(finding.severity, Severity::Error);
        }
    }
}

TEST(MaterialDatabaseAgreementTest, FindsOnlyWhatTheSamplesDeserve)
{
    const CheckedFile sample = check(NEREO_SAMPLES_DIR "/materials.xml");
    EXPECT_EQ(sample.counts.errors, 0);
    for (const Finding& finding : sample.findings)
        EXPECT_EQ(finding.code, "unknown-element");
    EXPECT_EQ(linesOf(check(NEREO_GOLDEN_DIR "/typical-run/materials.xml")), "");
}

TEST(MaterialDatabaseAgreementTest, TakesAMillionFaults)
{
    std::string bytes = "<material_database>";
    for (int i = 0; i < 100'000; ++i)
        bytes += "<material type='fluid'><name>a</name><id>1</id><x/><id/><property/>"
                 "<property type='density'/></material>";
    const CheckedFile checked = checkedBytes("materials.xml", bytes + "</material_database>");
    EXPECT_EQ(checked.counts.errors, 300'000);
    EXPECT_EQ(checked.findings.size(), 5000U); // a thousand of each code
}

} // namespace
} // namespace Nereo::Inspection

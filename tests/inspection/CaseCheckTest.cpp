#include "Checked.h"

#include "support/ResultsBytes.h"

#include <NereoFileIO/ControlFile.h>
#include <NereoFileIO/GbiFile.h>
#include <NereoFileIO/MaterialDatabaseFile.h>
#include <NereoFileIO/Nereo2ConfigFile.h>
#include <NereoUtility/StringConversion.h>
#include <NereoUtility/Version.h>

#include <initializer_list>

namespace Nereo::Inspection {
namespace {

using Io::ControlFile;
using Io::GbiFile;
using Io::Material;
using Io::MaterialDatabaseFile;
using Io::Nereo2ConfigFile;
using Util::Version;

/// The files of a case in a folder of their own, in the order in which they are given.
class Case {
public:
    void add(const std::string& name, const std::string& bytes)
    {
        paths_.push_back(folder_.write(name, bytes));
    }

    template <class FileClass>
    void save(const std::string& name, const FileClass& file)
    {
        paths_.push_back(folder_.path(name));
        EXPECT_TRUE(file.saveTo(paths_.back()));
    }

    std::vector<CheckedFile> check() const { return checkCase(paths_); }

    /// What a check finds between the files: a line for each, without the folder.
    std::string differences() const
    {
        std::string lines;
        for (const CheckedFile& file : check()) {
            for (const Finding& finding : file.findings) {
                if (!isOfCase(finding))
                    continue;
                EXPECT_EQ(finding.severity, Severity::Warning);
                EXPECT_EQ(finding.effect, Effect::None);
                lines += findingLine(file.file, finding).toStdString() + '\n';
            }
        }
        const std::string folder = folder_.path() + '/';
        for (std::size_t at; (at = lines.find(folder)) != std::string::npos;)
            lines.erase(at, folder.size());
        return lines;
    }

private:
    static bool isOfCase(const Finding& finding)
    {
        return finding.code.endsWith(QLatin1String("-differs"))
            || finding.code.endsWith(QLatin1String("-differ"));
    }

    TemporaryFolder folder_;
    std::vector<std::string> paths_;
};

GbiFile geometry(const std::string& job, const Version& version = Version::Current)
{
    GbiFile file;
    file.setJobName(job);
    file.setVersion(version);
    return file;
}

Nereo2ConfigFile configuration(const std::string& job)
{
    Nereo2ConfigFile file;
    file.setting(Nereo2ConfigFile::JobPrefix).setValueFromString(job);
    return file;
}

TEST(CaseCheckTest, FindsNothingBetweenNewFiles)
{
    Case files;
    files.save("a.xml", Nereo2ConfigFile());
    files.save("a.cfg", Nereo2ConfigFile());
    files.save("a.ctl", ControlFile());
    files.save("a.mat", MaterialDatabaseFile());
    files.save("a.gbi", GbiFile());
    EXPECT_EQ(files.differences(), "");
}

TEST(CaseCheckTest, ComparesTheJobs)
{
    struct Row {
        const char* prefix;
        const char* job;
        const char* lines;
    };
    const Row rows[] = {
        {"cavity", "cavity",   ""},
        {"cavity", "cavity 2",
         "b.gbi:1:1: warning: job is \"cavity 2\" in b.gbi, but JobPrefix is \"cavity\" in a.cfg "
         "[job-differs] "
         "job\n"                 },
        {"cavity", "",         ""}, // says nothing
        {"",       "cavity",   ""},
    };
    for (const auto& [prefix, job, lines] : rows) {
        Case files;
        files.save("a.cfg", configuration(prefix));
        files.save("b.gbi", geometry(job));
        EXPECT_EQ(files.differences(), lines);
    }
}

TEST(CaseCheckTest, TellsOfADifferenceInTheLaterFile)
{
    Case files;
    files.save("b.gbi", geometry("\xC3\xA4"));
    files.add("a.cfg", "MaxIter 5\nJobPrefix  cavity\n");
    const std::vector<CheckedFile> checked = files.check();
    EXPECT_EQ(checked.front().counts.warnings, 0);
    EXPECT_EQ(checked.back().counts.warnings, 1);
    ASSERT_EQ(checked.back().findings.size(), 1U);
    const Finding& finding = checked.back().findings.front();
    EXPECT_EQ(finding.code, "job-differs");
    EXPECT_EQ(finding.place, (Place {2, 12, 21}));
    EXPECT_EQ(finding.address, "JobPrefix");
    EXPECT_EQ(finding.found, "cavity");
    EXPECT_EQ(finding.expected, "\xC3\xA4");
}

TEST(CaseCheckTest, ComparesJobsOfDifferentKindsOnly)
{
    Case files;
    files.save("a.gbi", geometry("a"));
    files.save("b.gbi", geometry("b"));
    EXPECT_EQ(files.differences(), "");
}

TEST(CaseCheckTest, ComparesTheVersionsOfAnyTwo)
{
    struct Row {
        std::vector<Version> versions;
        std::vector<int> differing;
    };
    const Version one(2024, 0, 0, 1);
    const Version two(2024, 0, 0, 2);
    const Version three(2024, 0, 0, 3);
    const Row rows[] = {
        {{one},             {}    },
        {{one, one, one},   {}    },
        {{one, two},        {1}   },
        {{one, two, two},   {1}   },
        {{one, one, two},   {2}   },
        {{one, two, one},   {1}   },
        {{one, two, three}, {1, 2}},
    };
    for (const auto& [versions, differing] : rows) {
        Case files;
        for (const Version& version : versions)
            files.save(std::to_string(files.check().size()) + ".gbi", geometry("", version));
        const std::vector<CheckedFile> checked = files.check();
        std::vector<int> found;
        for (std::size_t i = 0; i < checked.size(); ++i)
            found.insert(found.end(), checked[i].findings.size(), int(i));
        EXPECT_EQ(found, differing);
    }
}

TEST(CaseCheckTest, NamesBothFilesAndBothVersions)
{
    Case files;
    files.add("a.xml", "<Nereo2Config Version=\"2024.01.0.0\"/>\n");
    files.save("b.gbi", geometry("", {2024, 1, 0, 0}));
    files.save("c.gbi", geometry("", {2025, 0, 0, 0}));
    EXPECT_EQ(files.differences(),
              "c.gbi:3:9: warning: the version is 2025.0.0.0 in c.gbi, but 2024.1.0.0 in a.xml "
              "[version-differs] version\n");
}

TEST(CaseCheckTest, ReadsTheVersionInTheFirstLineOfAControlFile)
{
    ControlFile control;
    const QString header = Util::toQString(control.headerLine1());
    control.setHeaderLine1(
        Util::toStdString(header.left(header.lastIndexOf(' ') + 1) + QLatin1String("2023.1.0.0")));
    Case files;
    files.save("a.gbi", geometry("", {2024, 0, 0, 0}));
    files.save("b.ctl", control);
    EXPECT_EQ(files.differences(),
              "b.ctl:1:1: warning: the version is 2023.1.0.0 in b.ctl, but 2024.0.0.0 in a.gbi "
              "[version-differs] header/1\n");

    for (const char* start : {"", "NEREO Ver 2024.0.0.0"}) { // the last version counts
        control.setHeaderLine1(start + std::string(" Ver 2023.1.0.0"));
        Case others;
        others.save("a.gbi", geometry("", {2024, 0, 0, 0}));
        others.save("b.ctl", control);
        EXPECT_EQ(others.differences(), files.differences()) << start;
    }
}

TEST(CaseCheckTest, ComparesTheTransientData)
{
    struct Row {
        const char* settings; ///< of the configuration
        const char* section;  ///< of the control file
        const char* lines;
    };
    const Row rows[] = {
        {"Transient 1\nTimeStepSize 0.01\nStopTime 5\n", "1 0\n1e-2\n5.0\n",    ""},
        {"TimeStepSize 0.1234567890\n",                  "0 0\n0.123457\n-1\n", ""}, // a control file has six digits
        {"MaxIter 5\n",                                  "1 0\n0.5\n10\n",      ""}, // says nothing of it
        {"TimeStepSize 0\nStopTime 1e20\n",              "0 0\n0.5\n10\n",      ""}, // neither do the defaults
        {"TimeStepSize x\n",                             "0 0\n0.5\n10\n",      ""}, // is wrong anyway
        {"Transient 0\n",                                "1 0\n0.001\n-1\n",
         "b.ctl:5:1: warning: transient-data/form is 1 in b.ctl, but Transient is 0 in a.cfg "
         "[transient-differs] transient-data/form\n"                              },
        {"TimeStepSize 0.01\n",                          "0 0\n0.001\n-1\n",
         "b.ctl:6:1: warning: transient-data/step-size is 0.001 in b.ctl, but TimeStepSize is 0.01 in a.cfg "
         "[transient-differs] transient-data/step-size\n"                         },
        {"StopTime 12.5\n",                              "0 0\n0.001\n-1\n",
         "b.ctl:7:1: warning: transient-data/stop-time is -1 in b.ctl, but StopTime is 12.5 in a.cfg "
         "[transient-differs] transient-data/stop-time\n"                         },
    };
    for (const auto& [settings, section, lines] : rows) {
        Case files;
        files.add("a.cfg", settings);
        files.add("b.ctl",
                  std::string("NEREO control file\nNEREO\n *** Title\n *** Transient Data\n") + section);
        EXPECT_EQ(files.differences(), lines) << settings;
    }
}

struct MaterialRow {
    int id;
    const char* name;
    const char* type = "fluid";
};

MaterialDatabaseFile databaseOf(std::initializer_list<MaterialRow> rows)
{
    MaterialDatabaseFile database;
    for (const auto& [id, name, type] : rows) {
        Material material(type);
        material.setId(id);
        material.setName(name);
        database.add(material);
    }
    return database;
}

std::string differencesOf(const MaterialDatabaseFile& inControl, const MaterialDatabaseFile& inGeometry)
{
    ControlFile control;
    control.setMaterialDatabase(inControl);
    GbiFile file;
    file.setMaterialDatabase(inGeometry);
    Case files;
    files.save("a.ctl", control);
    files.save("b.gbi", file);
    return files.differences();
}

TEST(CaseCheckTest, ComparesTheMaterials)
{
    const MaterialDatabaseFile both = databaseOf({
        {1,             "Air"         },
        { 2, "Steel 18/8",        "solid"},
        { 3,        "Fan", "internal_fan"}
    });
    EXPECT_EQ(differencesOf(both, both), "");
    EXPECT_EQ(differencesOf(databaseOf({}), both), "");
    EXPECT_EQ(differencesOf(both, databaseOf({})), "");
    EXPECT_EQ(differencesOf(both,
                            databaseOf({
                                {3,             "Fan",   "internal_fan"},
                                {1,             "Air"  },
                                {2, "Steel 18/8", "solid"              }
    })),
              "");
    EXPECT_EQ(
        differencesOf(both,
                      databaseOf({
                          {1,             "Air"         },
                          { 2, "Steel 18/8",        "solid"},
                          { 4,        "Fan", "internal_fan"}
    })),
        "b.gbi:11:1: warning: properties/3/id is 4 in b.gbi, but property-settings/Fan/id is 3 in a.ctl "
        "[materials-differ] properties/3/id\n");
    EXPECT_EQ(
        differencesOf(databaseOf({
                          {1, "Air"}
    }),
                      databaseOf({{1, "Air", "solid"}})),
        "b.gbi:9:9: warning: properties/1/fluid is 0 in b.gbi, but property-settings/Air/fluid is 1 in a.ctl "
        "[materials-differ] properties/1/fluid\n");
    EXPECT_EQ(differencesOf(databaseOf({
                                {1, "Air"}
    }),
                            databaseOf({{1, "Aer"}})),
              "b.gbi:9:4: warning: properties/1/name is Aer in b.gbi, but property-settings/Air/name is Air "
              "in a.ctl "
              "[materials-differ] properties/1/name\n");
    EXPECT_EQ(
        differencesOf(databaseOf({
                          {1, "Air"}
    }),
                      databaseOf({{1, "Air"}, {2, "Oil"}})),
        "b.gbi:10:4: warning: the material \"Oil\" stands in b.gbi, but not in a.ctl [materials-differ] "
        "properties/2/name\n");
    EXPECT_EQ(
        differencesOf(databaseOf({
                          {1, "Air"},
                          {2, "Oil"}
    }),
                      databaseOf({{1, "Air"}})),
        "b.gbi:9:11: warning: the material \"Oil\" stands in a.ctl, but not in b.gbi [materials-differ]\n");
}

TEST(CaseCheckTest, ComparesMaterialsOfOneNameInTheirOrder)
{
    EXPECT_EQ(differencesOf(databaseOf({
                                {1, "Air"},
                                {2, "Air"}
    }),
                            databaseOf({{1, "Air"}, {2, "Air"}})),
              "");
    EXPECT_EQ(
        differencesOf(databaseOf({
                          {1, "Air"},
                          {2, "Air"}
    }),
                      databaseOf({{1, "Air"}, {3, "Air"}})),
        "b.gbi:10:1: warning: properties/2/id is 3 in b.gbi, but property-settings/Air#2/id is 2 in a.ctl "
        "[materials-differ] properties/2/id\n");
    EXPECT_EQ(
        differencesOf(databaseOf({
                          {1, "Air"}
    }),
                      databaseOf({{1, "Air"}, {2, "Air"}})),
        "b.gbi:10:4: warning: the material \"Air\" stands in b.gbi, but not in a.ctl [materials-differ] "
        "properties/2/name\n");
}

/// What a load can't read of a material has no part in it.
TEST(CaseCheckTest, ComparesMaterialsByWhatIsThere)
{
    const auto differencesOfLines = [](const char* properties) {
        ControlFile control;
        control.setMaterialDatabase(databaseOf({
            {1, "Air"}
        }));
        Case files;
        files.save("a.ctl", control);
        files.add("b.gbi",
                  "cavity\nNEREO 2024\nVersion 2024.0.0.0\n\n*** Properties\n" + std::string(properties)
                      + "-1\n");
        return files.differences();
    };
    EXPECT_EQ(differencesOfLines("1 \"Air\"\n"), "");
    EXPECT_EQ(differencesOfLines("1 Oil\n"), ""); // the name is wrong anyway
    Case backwards;
    backwards.add("a.gbi", "cavity\nNEREO 2024\nVersion 2024.0.0.0\n\n*** Properties\n1 Oil\n-1\n");
    ControlFile control;
    control.setMaterialDatabase(databaseOf({
        {1, "Air"}
    }));
    backwards.save("b.ctl", control);
    EXPECT_EQ(backwards.differences(), "");
    EXPECT_EQ(
        differencesOfLines("2 Oil\n"),
        "b.gbi:6:1: warning: the material \"2\" stands in b.gbi, but not in a.ctl [materials-differ] "
        "properties/1/id\n"
        "b.gbi:6:1: warning: the material \"Air\" stands in a.ctl, but not in b.gbi [materials-differ]\n");
}

/// Of version 2023.1.7 and without a field.
std::string results(int nodeCount)
{
    ResultsBytes bytes;
    bytes.header(nodeCount).run().names({});
    for (int node = 1; node <= nodeCount; ++node)
        bytes.record(node, {});
    return bytes.bytes().toStdString();
}

TEST(CaseCheckTest, ComparesTheNumbersOfNodes)
{
    Case files;
    files.add("a.res", results(7));
    files.add("b.res", results(7));
    files.add("c.res", results(1234567));
    files.add("d.res", results(1234568)); // numbers of nodes have all digits
    EXPECT_EQ(files.differences(),
              "c.res@298: warning: there are 1234567 nodes in c.res, but 7 in a.res [nodes-differ] nodes\n"
              "d.res@298: warning: there are 1234568 nodes in d.res, but 7 in a.res [nodes-differ] nodes\n");
}

TEST(CaseCheckTest, ComparesThreeNumbersOfTheVersionOfResults)
{
    Case files;
    files.add("a.res", results(1));
    files.save("b.gbi", geometry("", {2023, 1, 7, 4}));
    EXPECT_EQ(files.differences(), "");
    files.save("c.gbi", geometry("", {2023, 1, 8, 0}));
    files.add("d.res", results(1));
    EXPECT_EQ(files.differences(),
              "c.gbi:3:9: warning: the version is 2023.1.8.0 in c.gbi, but 2023.1.7.0 in a.res "
              "[version-differs] version\n");
}

TEST(CaseCheckTest, ComparesNothingOfResultsInTheOtherByteOrder)
{
    std::string bytes = results(7);
    bytes[3] = char(bytes[3] ^ 1); // of the first word
    Case files;
    files.add("a.res", results(7));
    files.add("b.res", bytes);
    files.save("c.gbi", geometry("", {2023, 1, 7, 0}));
    EXPECT_EQ(files.differences(), "");
    const std::vector<CheckedFile> checked = files.check();
    ASSERT_EQ(checked[1].findings.size(), 1U);
    EXPECT_EQ(checked[1].findings.front().code, "byte-order");
}

TEST(CaseCheckTest, ComparesNothingThatIsWrongAnyway)
{
    Case files;
    files.add("a.xml", "<Nereo2Config Version=\"2024.1\"/>\n");
    files.save("b.gbi", geometry("", {2025, 0, 0, 0}));
    files.add("c.txt", "anything");
    files.add("empty", "");
    EXPECT_EQ(files.differences(), "");
    const std::vector<CheckedFile> checked = files.check();
    ASSERT_EQ(checked.size(), 4U);
    EXPECT_EQ(checked[0].findings.front().code, "bad-version");
    EXPECT_EQ(checked[2].findings.front().code, "unknown-kind");
}

TEST(CaseCheckTest, HasTheFindingsOfACaseInTheirPlaces)
{
    Case files;
    files.save("b.gbi", geometry("channel"));
    files.add("a.cfg", "MaxIter x\nJobPrefix cavity\nWidth y\n");
    const std::vector<CheckedFile> checked = files.check();
    std::string codes;
    for (const Finding& finding : checked.back().findings)
        codes += std::to_string(finding.place.line) + ' ' + finding.code.toStdString() + '\n';
    EXPECT_EQ(codes, "1 not-an-integer\n2 job-differs\n3 not-an-integer\n");
}

TEST(CaseCheckTest, SaysWhichFileIsNotThere)
{
    const std::vector<CheckedFile> checked = checkCase({"/no/such/file"});
    ASSERT_EQ(checked.size(), 1U);
    ASSERT_EQ(checked.front().findings.size(), 1U);
    EXPECT_EQ(checked.front().findings.front().code, "cannot-open");
    EXPECT_TRUE(checkCase({}).empty());
}

} // namespace
} // namespace Nereo::Inspection

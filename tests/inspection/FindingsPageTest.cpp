#include "Checked.h"

#include "support/Bytes.h"
#include "support/ResultsBytes.h"

#include <Inspection/Rule.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <limits>
#include <map>
#include <set>
#include <sstream>
#include <utility>
#include <vector>

/// What docs/findings.md says, example by example.

namespace Nereo::Inspection {
namespace {

using ::testing::ElementsAreArray;
using ::testing::HasSubstr;

/// A file of an example: what stands in it, or what is to be said of it where that isn't text.
struct ExampleFile {
    std::string name;
    std::string text;
    std::string description;
    FileKind kind = FileKind::Unknown;
};

struct Example {
    std::vector<ExampleFile> files;
    std::string lines; ///< of the check
};

struct Section {
    std::string group;
    std::string code;
    std::vector<Example> examples = {};
};

/// A row of the table.
struct Row {
    std::string code;
    std::string severities;
    std::string effects;
};

std::string between(const std::string& text, const std::string& start, const std::string& end)
{
    const std::size_t begin = text.find(start) + start.size();
    return text.substr(begin, text.find(end, begin) - begin);
}

bool startsWith(const std::string& text, const std::string& start)
{
    return text.rfind(start, 0) == 0;
}

/// The bytes for which \xFC and the like stand.
std::string unescaped(const std::string& text)
{
    std::string bytes;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isEscape = text.compare(i, 2, "\\x") == 0;
        bytes += isEscape ? char(std::stoi(text.substr(i + 2, 2), nullptr, 16)) : text[i];
        i += isEscape ? 3 : 0;
    }
    return bytes;
}

class Page {
public:
    Page() : in_(readBytes(NEREO_FINDINGS_PAGE))
    {
        while (std::getline(in_, line_))
            readLine();
    }

    std::vector<Section> sections;
    std::vector<Row> rows;
    std::map<std::string, std::string> snippets; ///< by their language
    std::string firstLine;                       ///< the one that the page explains

private:
    void readLine()
    {
        if (startsWith(line_, "## "))
            group_ = line_.substr(3);
        else if (startsWith(line_, "### "))
            sections.push_back({group_, between(line_, "`", "`")});
        else if (startsWith(line_, "| [`"))
            readRow();
        else if (startsWith(line_, "```"))
            readFence();
        else if (startsWith(line_, "`") && !sections.empty())
            readFile();
        else if (startsWith(line_, "    ") && firstLine.empty())
            firstLine = line_.substr(4) + '\n';
    }

    void readRow()
    {
        std::vector<std::string> cells;
        for (std::size_t at = 0, end; (end = line_.find(" |", at + 1)) != std::string::npos; at = end + 1)
            cells.push_back(line_.substr(at + 2, end - at - 2));
        const std::string code = between(cells.at(0), "`", "`");
        EXPECT_EQ(cells[0], "[`" + code + "`](#" + code + ')');
        rows.push_back({code, cells.at(1), cells.at(2)});
    }

    /// "`a.cfg`:" stands before the text of a file, "`a.xml`, taken for `configuration-xml`:" too, and
    /// "`a.res`: is cut off" for one that isn't shown.
    void readFile()
    {
        const std::string mark = "`, taken for `";
        const std::size_t colon = line_.find("`:");
        if (colon == std::string::npos)
            return;
        ExampleFile file;
        file.name = between(line_, "`", "`");
        if (line_.find(mark) != std::string::npos)
            file.kind = kindOfName(QString::fromStdString(between(line_, mark, "`")));
        isTextNext_ = colon + 2 == line_.size();
        if (!isTextNext_)
            file.description = line_.substr(colon + 3);
        files_.push_back(file);
    }

    void readFence()
    {
        const std::string language = line_.substr(3);
        std::string text;
        while (std::getline(in_, line_) && line_ != "```")
            text += line_ + '\n';
        if (sections.empty()) {
            snippets[language] = text;
        } else if (isTextNext_) {
            files_.back().text = unescaped(text);
            isTextNext_ = false;
        } else {
            sections.back().examples.push_back({std::exchange(files_, {}), text});
        }
    }

    std::istringstream in_;
    std::string line_;
    std::string group_;
    std::vector<ExampleFile> files_; ///< of the example that is being read
    bool isTextNext_ = false;
};

const Page& page()
{
    static const Page page;
    return page;
}

using Names = std::initializer_list<const char*>;
using Nodes = std::initializer_list<int>;

/// A little-endian file whose records are of these nodes.
QByteArray results(int nodeCount, Names names, Nodes nodes)
{
    ResultsBytes bytes = ResultsBytes().header(nodeCount).run().names(names);
    for (const int node : nodes) {
        bytes.integer(node);
        for (std::size_t i = 0; i < names.size(); ++i)
            bytes.number(1.5);
    }
    return bytes;
}

QByteArray inTheOtherOrder(int nodeCount)
{
    ResultsBytes bytes = ResultsBytes().header(nodeCount).run().names({"kU", "kP"});
    for (int node = 1; node <= nodeCount; ++node)
        bytes.record(node, {1.5, 1.5});
    return bytes.bytes().replace(0, 4, "\0\0\0\1", 4);
}

QByteArray withBadPressures()
{
    ResultsBytes bytes = ResultsBytes().header(4).run().names({"kU", "kP"});
    bytes.record(1, {1.5, 1.5}).record(2, {1.5, std::numeric_limits<double>::infinity()});
    bytes.record(3, {1.5, 1.5}).record(4, {1.5, std::numeric_limits<double>::quiet_NaN()});
    return bytes;
}

/// The files that the page doesn't show, by what it says of them.
std::map<std::string, QByteArray> describedFiles()
{
    const Names both = {"kU", "kP"};
    const Nodes all = {1, 2, 3, 4};
    const QByteArray whole = results(4, both, all);
    std::map<std::string, QByteArray> files;
    files["is whole"] = whole;
    files["has a fifth node"] = results(5, both, {1, 2, 3, 4, 5});
    files["is cut off in the third record"] = whole.chopped(30);
    files["three bytes stand behind the last record"] = whole + "abc";
    files["the first marker is 7"] = ResultsBytes().header(4, 7).run().names(both);
    files["announces 2000000000 nodes"] = results(2'000'000'000, both, all);
    files["announces -4 nodes"] = results(-4, both, all);
    files["announces -3 fields"] = ResultsBytes().header(4).run().integer(-3);
    files["both fields are named `kU`"] = results(4, {"kU", "kU"}, all);
    files["the second field is named `kUu`"] = results(4, {"kU", "kUu"}, all);
    files["`kP` is infinite at node 2 and no number at node 4"] = withBadPressures();
    files["the third record is of node 2"] = results(4, both, {1, 2, 2, 4});
    files["the third record is of node 5"] = results(4, both, {1, 2, 5, 4});
    files["all records are of node 1"] = results(4, both, {1, 1, 1, 1});

    const std::string withoutFields = "has no fields, and ";
    files[withoutFields + "announces -4 nodes"] = results(-4, {}, all);
    files[withoutFields + "is cut off in the third record"] = results(4, {}, all).chopped(6);
    files[withoutFields + "the third record is of node 2"] = results(4, {}, {1, 2, 2, 4});
    files[withoutFields + "the third record is of node 5"] = results(4, {}, {1, 2, 5, 4});
    files[withoutFields + "all records are of node 1"] = results(4, {}, {1, 1, 1, 1});

    const std::string bigEndianWord = "its first word is that of a big-endian file";
    files[bigEndianWord] = inTheOtherOrder(4);
    files[bigEndianWord + ", and it has 112 nodes"] = inTheOtherOrder(112);
    files[bigEndianWord + ", and it has 240 nodes"] = inTheOtherOrder(240);
    return files;
}

void write(const TemporaryFolder& folder, const ExampleFile& file)
{
    static const std::map<std::string, QByteArray> described = describedFiles();
    const auto found = described.find(file.description);
    if (found != described.end())
        folder.write(file.name, found->second.toStdString());
    else if (file.description.empty())
        folder.write(file.name, file.text);
    else
        EXPECT_EQ(file.description, "isn't there");
}

std::vector<CheckedFile> checkedExample(const Example& example)
{
    const TemporaryFolder folder;
    std::vector<std::string> paths;
    CheckOptions options;
    for (const ExampleFile& file : example.files) {
        write(folder, file);
        paths.push_back(folder.path(file.name));
        options.kind = file.kind;
    }
    std::vector<CheckedFile> checked = checkCase(paths, options);
    const std::string prefix = folder.path() + '/';
    for (CheckedFile& file : checked) {
        file.file.erase(0, prefix.size());
        for (Finding& finding : file.findings)
            finding.message.remove(QString::fromStdString(prefix));
    }
    return checked;
}

/// Without the sections that aren't there, which are shown in the section about them only; and there the
/// first two.
std::string linesOfThePage(const std::vector<CheckedFile>& checked, const std::string& code)
{
    const std::string missing = "missing-section";
    std::string lines;
    int left = code == missing ? 2 : -1;
    for (const CheckedFile& file : checked) {
        for (const Finding& finding : file.findings) {
            const bool isMissing = finding.code.toStdString() == missing;
            if (!isMissing || left > 0)
                lines += findingLine(file.file, finding).toStdString() + '\n';
            else if (left == 0)
                lines += "\xE2\x80\xA6\n";
            left -= isMissing && left >= 0;
        }
    }
    return lines;
}

std::string joined(const std::set<std::string>& words)
{
    std::string text;
    for (const std::string& word : words)
        text += word + ' ';
    return text;
}

std::set<std::string> wordsOf(const std::string& cell)
{
    std::set<std::string> words;
    std::istringstream in(cell);
    for (std::string word; std::getline(in, word, ',');)
        words.insert(word.substr(word.find_first_not_of(' ')));
    return words;
}

TEST(FindingsPage, SaysOfEachExampleWhatACheckSays)
{
    for (const Section& section : page().sections) {
        for (const Example& example : section.examples) {
            ASSERT_FALSE(example.files.empty()) << section.code;
            EXPECT_EQ(linesOfThePage(checkedExample(example), section.code), example.lines) << section.code;
            EXPECT_THAT(example.lines, HasSubstr(" [" + section.code + "]"));
        }
    }
}

TEST(FindingsPage, HasASectionWithAnExampleForEachCode)
{
    std::set<std::string> codes;
    for (const RuleRow& rule : rules)
        codes.insert(rule.code);
    std::vector<std::string> described;
    for (const Section& section : page().sections) {
        EXPECT_FALSE(section.examples.empty()) << section.code;
        described.push_back(section.code);
    }
    std::sort(described.begin(), described.end());
    EXPECT_THAT(described, ElementsAreArray(codes));
}

TEST(FindingsPage, HasTheCodesOfAKindInOrder)
{
    const std::vector<Section>& sections = page().sections;
    ASSERT_EQ(page().rows.size(), sections.size());
    for (std::size_t i = 0; i < sections.size(); ++i) {
        EXPECT_EQ(page().rows[i].code, sections[i].code);
        const bool isFirst = i == 0 || sections[i - 1].group != sections[i].group;
        EXPECT_TRUE(isFirst || sections[i - 1].code < sections[i].code) << sections[i].code;
    }
}

TEST(FindingsPage, HasATableWithTheSeveritiesAndEffects)
{
    std::map<std::string, std::set<std::string>> severities;
    std::map<std::string, std::set<std::string>> effects;
    for (const RuleRow& rule : rules) {
        severities[rule.code].insert(severityName(rule.severity).toStdString());
        effects[rule.code].insert(effectName(rule.effect).toStdString());
    }
    for (const Section& section : page().sections) {
        for (const Example& example : section.examples) {
            for (const CheckedFile& file : checkedExample(example)) {
                for (const Finding& finding : file.findings)
                    effects[finding.code.toStdString()].insert(effectName(finding.effect).toStdString());
            }
        }
    }
    for (const Row& row : page().rows) {
        EXPECT_EQ(joined(wordsOf(row.severities)), joined(severities[row.code])) << row.code;
        EXPECT_EQ(joined(wordsOf(row.effects)), joined(effects[row.code])) << row.code;
    }
}

TEST(FindingsPage, DescribesEachFileThatItDoesNotShow)
{
    std::set<std::string> described;
    for (const Section& section : page().sections) {
        for (const Example& example : section.examples) {
            for (const ExampleFile& file : example.files)
                described.insert(file.description);
        }
    }
    for (const auto& [description, bytes] : describedFiles())
        EXPECT_EQ(described.count(description), 1U) << description;
}

TEST(FindingsPage, ExplainsALineThatACheckSays)
{
    std::string lines;
    for (const Section& section : page().sections) {
        for (const Example& example : section.examples)
            lines += example.lines;
    }
    EXPECT_THAT(lines, HasSubstr(page().firstLine));
}

TEST(FindingsPage, ShowsAPartOfTheExampleAndItsResultAsJson)
{
    EXPECT_THAT(readBytes(NEREO_CHECK_FOLDER_SOURCE), HasSubstr(page().snippets.at("cpp")));
    const std::vector<Section>& sections = page().sections;
    const auto shown = std::find_if(sections.begin(), sections.end(),
                                    [](const Section& section) { return section.code == "not-a-number"; });
    ASSERT_NE(shown, sections.end());
    EXPECT_EQ(toJson(checkedExample(shown->examples.at(0))).toStdString(), page().snippets.at("json"));
}

} // namespace
} // namespace Nereo::Inspection

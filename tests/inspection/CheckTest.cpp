#include "Checked.h"

#include "support/GoldenFile.h"

#include <NereoInspection/Check.h>

#include <Inspection/Listener.h>

#include <gtest/gtest.h>

#include <QFileInfo>
#include <QJsonDocument>

#include <sys/stat.h>

#include <thread>

namespace Nereo::Inspection {
namespace {

TEST(CheckTest, SaysWhatCannotBeOpened)
{
    const TemporaryFolder folder;
    for (const std::string& path :
         {folder.path("missing"), folder.path(), std::string(), std::string("a\0b", 3)}) {
        const CheckedFile checked = check(path);
        EXPECT_EQ(checked.file, path);
        EXPECT_EQ(checked.kind, FileKind::Unknown);
        ASSERT_EQ(checked.findings.size(), 1U);
        EXPECT_EQ(checked.findings[0].code, "cannot-open");
        EXPECT_EQ(checked.findings[0].effect, Effect::Fails);
        EXPECT_EQ(checked.findings[0].place, Place());
        EXPECT_EQ(checked.counts.errors, 1);
    }
    EXPECT_EQ(linesOf(check(folder.path("missing"))),
              folder.path("missing")
                  + ": error: the file can't be opened: No such file or directory [cannot-open]\n");
}

TEST(CheckTest, SaysWhatIsOfNoKind)
{
    for (const char* bytes : {"", "anything", "<html/>", "\n"}) {
        const CheckedFile checked = checkedBytes("file", bytes);
        EXPECT_EQ(checked.kind, FileKind::Unknown);
        ASSERT_EQ(checked.findings.size(), 1U) << bytes;
        EXPECT_EQ(checked.findings[0].code, "unknown-kind");
        EXPECT_EQ(checked.findings[0].severity, Severity::Error);
        EXPECT_EQ(checked.findings[0].effect, Effect::None);
    }
}

TEST(CheckTest, TakesAFileForTheKindThatItIsTold)
{
    EXPECT_EQ(linesOf(checkedBytes("file.cfg", "", FileKind::ConfigurationText)), "");
    const CheckedFile empty = checkedBytes("file.xml", "", FileKind::ConfigurationXml);
    ASSERT_EQ(empty.findings.size(), 1U);
    EXPECT_EQ(empty.findings[0].code, "malformed-xml");
    const CheckedFile foreign = checkedBytes("file.xml", "<html>\n</html>\n", FileKind::ConfigurationXml);
    ASSERT_EQ(foreign.findings.size(), 1U);
    EXPECT_EQ(foreign.findings[0].code, "no-root");
    EXPECT_EQ(foreign.findings[0].place, (Place {3, 1, 15}));
    EXPECT_EQ(foreign.findings[0].message,
              "there is no element \"Nereo2Config\" in the document; all of it is ignored");
}

TEST(CheckTest, TellsHowFarItHasGot)
{
    const TemporaryFolder folder;
    const std::string text = folder.path("a.cfg");
    writeBytes(text, QByteArray("MaxIter 5\n").repeated(10000).toStdString());
    for (const std::string& path : {text, std::string(NEREO_SAMPLES_DIR "/cavity.res"),
                                    std::string(NEREO_SAMPLES_DIR "/materials.xml")}) {
        const qint64 size = QFileInfo(QString::fromStdString(path)).size();
        qint64 last = 0;
        CheckOptions options;
        options.progress = [&](qint64 bytesDone, qint64 bytesInAll) {
            EXPECT_EQ(bytesInAll, size);
            EXPECT_GT(bytesDone, 0);
            EXPECT_LE(bytesDone, size);
            last = bytesDone;
        };
        EXPECT_EQ(toJson({check(path, options)}), toJson({check(path)})) << path;
        EXPECT_EQ(last, size) << path;
    }
}

TEST(CheckTest, SaysWhereTheSuffixIsThatOfTheOtherForm)
{
    const CheckedFile xml = checkedBytes("file.cfg", "<Nereo2Config/>");
    ASSERT_EQ(xml.findings.size(), 1U);
    EXPECT_EQ(xml.findings[0].code, "wrong-suffix");
    EXPECT_EQ(xml.findings[0].effect, Effect::Throws);
    EXPECT_EQ(xml.findings[0].place.line, 1);
    EXPECT_EQ(xml.findings[0].place.column, 1);
    EXPECT_EQ(xml.findings[0].place.offset, 0);
    const CheckedFile text = checkedBytes("file.xml", "MaxIter x\n");
    ASSERT_EQ(text.findings.size(), 2U);
    EXPECT_EQ(text.findings[0].code, "wrong-suffix");
    EXPECT_EQ(text.findings[0].effect, Effect::Fails);
    EXPECT_EQ(text.findings[0].place, xml.findings[0].place);
    EXPECT_EQ(text.findings[1].code, "not-an-integer"); // the rest is checked all the same
}

TEST(CheckTest, ListsAThousandFindingsOfACodeAndCountsTheRest)
{
    std::string bytes;
    for (int i = 0; i < 1234; ++i)
        bytes += "Unheard 5\n";
    bytes += "MaxIter x\n";
    bytes += "MaxIter x\n";
    const CheckedFile checked = checkedBytes("file.cfg", bytes, FileKind::ConfigurationText);
    ASSERT_EQ(checked.findings.size(), 1003U);
    EXPECT_EQ(checked.findings[998].more, 0);
    EXPECT_EQ(checked.findings[999].more, 234);
    EXPECT_EQ(checked.findings[999].place.line, 1000);
    EXPECT_EQ(checked.findings[1000].code, "not-an-integer");
    EXPECT_EQ(checked.counts.errors, 1236);
    EXPECT_EQ(checked.counts.warnings, 1);
    EXPECT_EQ(checked.counts.notes, 0);
}

TEST(CheckTest, ShortensWhatIsLong)
{
    const std::string key(100'000, 'x');
    const CheckedFile checked = checkedBytes("file.cfg", key + " 5\n", FileKind::ConfigurationText);
    ASSERT_EQ(checked.findings.size(), 1U);
    EXPECT_EQ(checked.findings[0].found, QString(199, 'x') + QChar(0x2026));
    EXPECT_LT(checked.findings[0].message.size(), 300);
}

TEST(CheckTest, GivesAllOfItAsJson)
{
    const TemporaryFolder folder;
    folder.write("clean.cfg", "MaxIter 5\n");
    folder.write("broken.cfg", "MaxIter 5\nStopTime abc\nMaxIter\nUnheard 5\nAnalyzePath \xFF\n\n");
    folder.write("broken.xml", "<Nereo2Config Version=\"1\"><Other/><MaxIter/></Nereo2Config>");
    std::vector<CheckedFile> files =
        check(std::vector<std::string> {folder.path("clean.cfg"), folder.path("broken.cfg"),
                                        folder.path("broken.xml"), folder.path("missing")});
    for (CheckedFile& file : files)
        file.file = file.file.substr(file.file.rfind('/') + 1);
    const QByteArray json = toJson(files);
    EXPECT_TRUE(QJsonDocument::fromJson(json).isObject());
    expectGolden(json.toStdString(), "inspection/findings.json");

    std::string lines;
    for (const CheckedFile& file : files)
        lines += linesOf(file);
    expectGolden(lines, "inspection/findings.txt");
}

TEST(CheckTest, NamesEachSeverityAndEffect)
{
    EXPECT_EQ(severityName(Severity::Error), "error");
    EXPECT_EQ(severityName(Severity::Warning), "warning");
    EXPECT_EQ(severityName(Severity::Note), "note");
    EXPECT_EQ(effectName(Effect::None), "none");
    EXPECT_EQ(effectName(Effect::Fails), "fails");
    EXPECT_EQ(effectName(Effect::Throws), "throws");
    EXPECT_EQ(effectName(Effect::Stops), "stops");
    EXPECT_EQ(effectName(Effect::Zero), "zero");
    EXPECT_EQ(effectName(Effect::Start), "start");
    EXPECT_EQ(effectName(Effect::Wrapped), "wrapped");
    EXPECT_EQ(effectName(Effect::Infinite), "infinite");
    EXPECT_EQ(effectName(Effect::Off), "off");
    EXPECT_EQ(effectName(Effect::Replaced), "replaced");
    EXPECT_EQ(effectName(Effect::Ignored), "ignored");
    EXPECT_EQ(effectName(Effect::Lost), "lost");
}

TEST(CheckTest, KnowsWhichEffectsEndALoad)
{
    for (int effect = int(Effect::None); effect <= int(Effect::Lost); ++effect) {
        const QString name = effectName(Effect(effect));
        EXPECT_EQ(endsLoad(Effect(effect)), name == "fails" || name == "throws" || name == "stops") << effect;
    }
}

TEST(CheckTest, ComparesPlaces)
{
    const auto place = [](qint64 line, qint64 column, qint64 offset) { return Place {line, column, offset}; };
    EXPECT_EQ(place(1, 2, 3), place(1, 2, 3));
    EXPECT_NE(place(1, 2, 3), place(2, 2, 3));
    EXPECT_NE(place(1, 2, 3), place(1, 1, 3));
    EXPECT_NE(place(1, 2, 3), place(1, 2, Place::Absent));
}

TEST(CheckTest, WritesThePlaceAsFarAsThereIsOne)
{
    Finding finding;
    finding.code = "some-code";
    finding.message = "some message";
    EXPECT_EQ(findingLine("file", finding), "file: error: some message [some-code]");
    finding.place.offset = 17;
    finding.severity = Severity::Note;
    EXPECT_EQ(findingLine("file", finding), "file@17: note: some message [some-code]");
    finding.place = {3, 4, 17};
    finding.address = "some/address";
    finding.severity = Severity::Warning;
    EXPECT_EQ(findingLine("file", finding), "file:3:4: warning: some message [some-code] some/address");
}

TEST(CheckTest, WritesAFindingOnOneLine)
{
    Finding finding;
    finding.code = "some-code";
    finding.message = QString::fromUtf8("\"a\nb\x1B[31m\xC2\x85\xE2\x80\xA8\xC3\xA4\" is wrong");
    finding.address = "a\rb";
    EXPECT_EQ(findingLine("fi\nle", finding).toStdString(),
              "fi\\nle: error: \"a\\nb\\u001b[31m\\u0085\\u2028\xC3\xA4\" is wrong [some-code] a\\u000db");
}

TEST(CheckTest, ReadsAPipe)
{
    const TemporaryFolder folder;
    const std::string path = folder.path("pipe.cfg");
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    std::thread writer([&] { writeBytes(path, "MaxIter 5\nMaxIter x\n"); });
    const CheckedFile checked = check(path);
    writer.join();
    EXPECT_EQ(checked.kind, FileKind::ConfigurationText);
    EXPECT_EQ(checked.findings.size(), 2U);
}

TEST(CheckTest, LeavesWhatIsFoundAsItStands)
{
    const CheckedFile checked = checkedBytes("file.cfg", "MaxIter 5\nMaxIter %1%2%3\n%2 5\n");
    EXPECT_EQ(linesOf(checked).substr(linesOf(checked).rfind("file.cfg:3")),
              "file.cfg:3:1: error: \"%2\" is no setting; a load throws [unknown-key] %252\n");
}

} // namespace
} // namespace Nereo::Inspection

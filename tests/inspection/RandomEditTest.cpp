#include "Edited.h"

#include "support/Bytes.h"
#include "support/Damage.h"
#include "support/TemporaryFolder.h"

#include <fuzz/EditPromises.h>

#include <QTextCodec>

#include <gtest/gtest.h>

#include <random>

/// Random edits of random files. What an edit does must be what it promises, and nothing else.

namespace Nereo::Inspection {
namespace {

std::string inUtf16(const std::string& text)
{
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    const QString whole = QChar(QChar::ByteOrderMark) + QString::fromStdString(text);
    return QTextCodec::codecForName("UTF-16LE")
        ->fromUnicode(whole.constData(), whole.size(), &state)
        .toStdString();
}

/// The file with other line ends and marks.
std::vector<std::string> variants(const std::string& text)
{
    return {text, withCarriageReturns(text), "\xEF\xBB\xBF" + text, inUtf16(text),
            text.substr(0, text.find_last_not_of('\n') + 1)};
}

class RandomEdits {
public:
    RandomEdits(FileKind kind, const std::string& suffix, const QStringList& additions)
        : kind_(kind), suffix_(suffix), additions_(additions)
    {
    }

    void expect(const std::string& bytes)
    {
        const std::string path = folder_.freshPath("file." + suffix_);
        writeBytes(path, bytes);
        const QStringList addresses = addressesOf(path, kind_);
        std::vector<Edit> edits;
        for (auto count = 1 + random_() % 3; count > 0; --count)
            edits.push_back(next(addresses));
        const std::string broken = brokenPromise(path, folder_.freshPath("changed." + suffix_), kind_, edits);
        ASSERT_EQ(broken, "") << described(edits) << bytes;
    }

    void expectEach(const std::vector<DamagedFile>& files, std::size_t every)
    {
        for (std::size_t i = random_() % every; i < files.size(); i += 1 + random_() % (2 * every)) {
            SCOPED_TRACE(files[i].damage);
            expect(files[i].bytes);
            if (::testing::Test::HasFatalFailure())
                return;
        }
    }

private:
    template <class Items>
    const auto& oneOf(const Items& items)
    {
        return *std::next(std::begin(items), std::ptrdiff_t(random_() % std::size_t(std::size(items))));
    }

    Edit next(const QStringList& addresses)
    {
        static const QStringList texts {"0",           "1",
                                        "2",           "-7",
                                        "0.5",         "1e-3",
                                        "-.5",         "1.50",
                                        "1234567.125", "x",
                                        "kT",          "a b",
                                        "a  b",        "&<>\"",
                                        "]]>",         "",
                                        "nan",         "constant",
                                        "kU",          "010",
                                        "2024.1.0.0",  "fluid",
                                        "a\nb",        "3000000000",
                                        "1e400",       QString::fromUtf8("\xC3\xA4")};
        Edit edit;
        const bool isAdded = addresses.isEmpty() || random_() % 4 == 0;
        edit.address = isAdded ? oneOf(additions_) : oneOf(addresses);
        if (random_() % 5 != 0)
            edit.text = oneOf(texts);
        return edit;
    }

    static std::string described(const std::vector<Edit>& edits)
    {
        std::string lines;
        for (const Edit& edit : edits)
            lines += edit.address.toStdString() + " = "
                + (edit.text ? '"' + edit.text->toStdString() + '"' : "nothing") + '\n';
        return lines;
    }

    TemporaryFolder folder_;
    FileKind kind_;
    std::string suffix_;
    QStringList additions_;
    std::mt19937 random_ {20261121};
};

TEST(RandomEditTest, OfConfigurationsInText)
{
    RandomEdits edits(FileKind::ConfigurationText, "cfg", {"MaxIter", "JobPrefix", "Width", "Zone"});
    const std::string file = readBytes(NEREO_GOLDEN_DIR "/new-configuration.cfg");
    for (int i = 0; i < 100; ++i) {
        for (const std::string& text : variants("MaxIter 5\n  JobPrefix a b \n\nStopTime  1e5\nWidth 3\n"))
            edits.expect(text);
        for (const std::string& text : variants(file))
            edits.expect(text);
    }
    edits.expectEach(damaged(file), 20);
}

TEST(RandomEditTest, OfConfigurationsInXml)
{
    RandomEdits edits(FileKind::ConfigurationXml, "xml", {"MaxIter", "JobPrefix", "Width", "version"});
    const std::string file = readBytes(NEREO_GOLDEN_DIR "/new-configuration.xml");
    const std::string marked =
        "<!-- a -->\n<Nereo2Config Version='2024.0.0.0'>\n  <!-- b --><MaxIter> 5"
        "<!-- c --></MaxIter>\n  <JobPrefix>a<![CDATA[<b>]]>&amp;</JobPrefix> <!-- d -->\n"
        "  <Other><Width>3</Width></Other><Height/>\n</Nereo2Config>\n";
    const std::string entities =
        "<!DOCTYPE a [<!ENTITY n '5'><!ENTITY w '<Width>3</Width>'>]>\n<Nereo2Config>"
        "<MaxIter>&n;</MaxIter>&w;\n<JobPrefix>a&n;b</JobPrefix></Nereo2Config>";
    for (int i = 0; i < 100; ++i) {
        for (const std::string& text : {file, marked, entities}) {
            for (const std::string& variant : variants(text))
                edits.expect(variant);
        }
    }
    edits.expectEach(damaged(file), 20);
    edits.expectEach(damaged(marked), 10);
}

TEST(RandomEditTest, OfControlFiles)
{
    RandomEdits edits(FileKind::Control, "ctl",
                      {"constants/kPRef", "constants/kTRef", "flags/x", "flags/a%23", "flags/x#2", "units"});
    const std::string file = readBytes(NEREO_GOLDEN_DIR "/new-control-file.ctl");
    const std::string sample = readBytes(NEREO_GOLDEN_DIR "/typical-run/cavity.ctl");
    const std::string flags = "1\n2\n *** Title\na\n *** Constants\nkPRef 5\n kPRef 6 text\nkFoo 1\n"
                              " *** Flag section\n4\nx 1\ny\nx 2 text\nx\n";
    for (int i = 0; i < 50; ++i) {
        for (const std::string& text : {file, sample, flags}) {
            for (const std::string& variant : variants(text))
                edits.expect(variant);
        }
    }
    edits.expectEach(damaged(file), 40);
    edits.expectEach(damaged(flags), 10);
}

TEST(RandomEditTest, OfMaterialDatabases)
{
    RandomEdits edits(FileKind::Materials, "xml",
                      {"Water/id", "Water/ref_pressure", "Water#2/id", "#3/name", "Water/density/value",
                       "Water/density/points/1/y"});
    const std::string file = readBytes(NEREO_GOLDEN_DIR "/materials.xml");
    const std::string twins =
        "<material_database version='2024.0.0.0'>\n <material type='fluid'><name>Water</name>\n  <id>1</id>\n"
        "  <property type='density'><variation_type>piecewise_linear</variation_type><independent_variable>kT"
        "</independent_variable><point><x>1</x></point><point><x>2</x><y>1</y></point></property></"
        "material>\n"
        " <material type='solid'><name>Water</name></material>\n <material type='fluid'/>\n"
        "</material_database>\n";
    for (int i = 0; i < 100; ++i) {
        for (const std::string& text : {file, twins}) {
            for (const std::string& variant : variants(text))
                edits.expect(variant);
        }
    }
    edits.expectEach(damaged(file), 40);
    edits.expectEach(damaged(twins), 10);
}

} // namespace
} // namespace Nereo::Inspection

// What a check and an outline say of a control file, compared with what a load does.

#include "Checked.h"

#include "support/Bytes.h"
#include "support/Damage.h"

#include <FileIO/ControlFileRecords.h>
#include <NereoFileIO/CodeNameTable.h>
#include <NereoFileIO/ControlFile.h>
#include <NereoInspection/Outline.h>
#include <NereoUtility/StringConversion.h>
#include <fuzz/FuzzModels.h>

#include <gmock/gmock.h>

#include <QHash>
#include <QMap>
#include <QSet>

#include <cmath>
#include <cstdio>
#include <random>
#include <vector>

namespace Nereo::Inspection {
namespace {

using Io::ControlFile;
using Values = QMap<QString, QVariant>;

/// All that a load can set, by address.
Values valuesOf(const ControlFile& file)
{
    const auto nameOf = [](int code) { return Io::CodeNameTable::instance().nameForCode(code, false); };
    Values values;
    values["header/1"] = Util::toQString(file.headerLine1());
    values["header/2"] = Util::toQString(file.headerLine2());
    values["title"] = Util::toQString(file.title());
    for (int i = 0; i < ControlFile::EquationCount; ++i)
        values["equation-selection/" + QString::number(i + 1)] = file.equationFlag(i);
    values["units"] = file.units();
    values["transient-data/form"] = file.transientForm();
    values["transient-data/steps"] = file.numberOfTimeSteps();
    values["transient-data/step-size"] = file.timeStepSize();
    values["transient-data/stop-time"] = file.stopTime();
    values["sequential-solver/1"] = file.sequentialSolver().integer1;
    values["sequential-solver/2"] = file.sequentialSolver().integer2;
    values["sequential-solver/3"] = file.sequentialSolver().integer3;
    values["sequential-solver/variable"] = Util::toQString(file.sequentialSolver().variable);
    values["sequential-solver/tolerance"] = file.sequentialSolver().tolerance;
    for (int code = 1; code <= ControlFile::SolvedVariableCount; ++code) {
        const QString address = "solution-control/" + nameOf(code);
        values[address + "/1"] = file.phiSolve(code).integer1;
        values[address + "/2"] = file.phiSolve(code).integer2;
        values[address + "/3"] = file.phiSolve(code).integer3;
        values[address + "/tolerance"] = file.phiSolve(code).tolerance;
    }
    for (int code = 1; code <= ControlFile::RelaxedVariableCount; ++code) {
        values["relaxation/" + nameOf(code) + "/under"] = file.phiUnderRelax(code);
        values["relaxation/" + nameOf(code) + "/inertial"] = file.phiInertRelax(code);
    }
    for (int code = 1; code <= ControlFile::ConstantCount; ++code) {
        const QString address = "constants/" + nameOf(code);
        const auto setRecord = [&](const auto& record, const auto& members) {
            int place = 0;
            const auto set = [&](auto member) {
                values[address + '/' + QString::number(++place)] = record.*member;
            };
            std::apply([&](auto... member) { (set(member), ...); }, members);
        };
        if (!Io::visitRecord(file, code, setRecord))
            values[address] = file.constant(code);
    }
    QHash<QString, int> counts;
    for (int i = 0; i < file.flagCount(); ++i) {
        const QString name = Util::toQString(file.flag(i).name());
        const int count = ++counts[name];
        values["flags/" + addressPart(name) + (count > 1 ? '#' + QString::number(count) : QString())] =
            Util::toQString(file.flag(i).value());
    }
    return values;
}

/// All that an outline says, of what stands twice the later one.
Values outlined(const std::string& path)
{
    Values values;
    outline(path, FileKind::Control, [&](const Item& item) { values[item.address] = item.value; });
    return values;
}

bool areSame(const QVariant& left, const QVariant& right)
{
    const bool areNumbers = left.type() == QVariant::Double && right.type() == QVariant::Double;
    if (areNumbers && std::isnan(left.toDouble()))
        return std::isnan(right.toDouble());
    return left.type() == right.type() && left == right;
}

/// A value as a save writes it.
QString saved(const QVariant& value)
{
    return value.type() == QVariant::Double ? QString::number(value.toDouble(), 'g', 6) : value.toString();
}

bool stops(const CheckedFile& checked)
{
    bool stops = false;
    for (const Finding& finding : checked.findings) {
        EXPECT_NE(finding.effect, Effect::Fails);
        EXPECT_NE(finding.effect, Effect::Throws);
        stops = stops || finding.effect == Effect::Stops;
    }
    return stops;
}

bool hasCode(const CheckedFile& checked, const char* code)
{
    return std::any_of(checked.findings.begin(), checked.findings.end(),
                       [&](const Finding& finding) { return finding.code == code; });
}

void expectLoadedAsOutlined(const std::string& path, const ControlFile& loaded, const CheckedFile& checked)
{
    const Values values = valuesOf(loaded);
    const Values outline = outlined(path);
    // What a load clears again, and texts that lose the mark at their start and become others.
    const bool hasAllFlags = !hasCode(checked, "repeated-section") && !hasCode(checked, "stray-character");
    for (auto value = values.begin(); value != values.end(); ++value) {
        const bool isFlag = value.key().startsWith("flags/");
        if (outline.contains(value.key()) && (!isFlag || hasAllFlags)) {
            EXPECT_TRUE(areSame(outline[value.key()], *value))
                << value.key().toStdString() << ": " << outline[value.key()].toString().toStdString()
                << ", loaded as " << value->toString().toStdString();
        }
        EXPECT_TRUE(outline.contains(value.key()) || !isFlag || !hasAllFlags) << value.key().toStdString();
    }
}

/// What is saved has the same values, but for the digits that a save drops.
void expectSavedAsOutlined(const std::string& path, const ControlFile& loaded)
{
    const Values before = outlined(path);
    const std::string copy = path + ".copy";
    ASSERT_TRUE(loaded.saveTo(copy));
    const Values after = outlined(copy);
    const Values values = valuesOf(loaded);
    for (auto value = before.begin(); value != before.end(); ++value) {
        if (values.contains(value.key()) && after.contains(value.key())) {
            EXPECT_EQ(saved(after[value.key()]), saved(*value)) << value.key().toStdString();
        }
    }
}

void expectAgreement(const std::string& path, const std::string& bytes)
{
    std::remove(path.c_str());
    writeBytes(path, bytes);
    CheckOptions options;
    options.kind = FileKind::Control;
    const CheckedFile checked = check(path, options);
    SCOPED_TRACE(linesOf(checked));
    ControlFile file;
    if (stops(checked)) {
        EXPECT_DEATH(file.loadFrom(path), ::testing::HasSubstr("controlFile_.flagCount() == count"));
        return;
    }
    EXPECT_TRUE(file.loadFrom(path)); // and doesn't stop this process
    expectLoadedAsOutlined(path, file, checked);
    if (checked.counts.errors == 0 && checked.counts.warnings == 0)
        expectSavedAsOutlined(path, file);
}

TEST(ControlFileAgreementDeathTest, LoadsDamagedFilesAsFound)
{
    const TemporaryFolder folder;
    std::vector<DamagedFile> files = damaged(readBytes(NEREO_SAMPLES_DIR "/cavity.ctl"));
    for (const DamagedFile& file : damaged(readBytes(NEREO_GOLDEN_DIR "/new-control-file.ctl")))
        files.push_back(file);
    for (const auto& [damage, bytes] : files) {
        SCOPED_TRACE(damage);
        expectAgreement(folder.path("damaged.ctl"), bytes);
        if (HasFailure())
            return; // one of thousands says enough
    }
}

/// A file put together from what stands in such files, in any order.
std::string shuffled(std::mt19937& random)
{
    static const char* const words[] = {
        "1",        "0",     "-1",   "0.5",         "1e400", "12abc",   "abc",          "kU",
        "kV",       "kPRef", "kP",   "kInflate",    "kNone", "kTotalP", "kKXX",         "kCond",
        "0x",       "0X1G",  "08",   "\n",          "\n",    "\n",      "\n",           "\n",
        "\n",       "\n",    "\n\n", " ",           "\r",    "\xFF",    "1.5",          "5",
        "\xC3\xA4", "-",     "1,5",  "99999999999", "true",  "\t",      "\xEF\xBB\xBF", "2",
    };
    static const char* const titles[] = {
        " *** Title\n",
        " *** Units\n",
        " *** Equation Selection\n",
        " *** Transient Data \n",
        " *** Sequential Solver Iterations\n",
        " *** Solution Control\n",
        " *** Relaxation\n",
        " *** Constants\n",
        " *** Flag section\n",
        " *** Property Settings\n",
        " *** Made Up\n",
        " *** Auto Convergence Control\n",
        " *** \n",
        "\t*** Units\n",
        " *** Flag section\n0\n",
    };
    const auto any = [&](const auto& texts) { return texts[random() % std::size(texts)]; };
    std::string text = "NEREO control file rev 07 NEREO Ver 2024.0.0.0\nNEREO 2024 (release)\n";
    for (auto sections = random() % 6; sections > 0; --sections) {
        text += any(titles);
        for (auto count = random() % 24; count > 0; --count)
            text += any(words) + std::string(random() % 8 == 0 ? "" : " ");
        text += random() % 16 == 0 ? "" : "\n";
    }
    return text;
}

TEST(ControlFileAgreementDeathTest, LoadsFilesOfAnyWordsAsFound)
{
    const TemporaryFolder folder;
    std::mt19937 random(7);
    for (int i = 0; i < 2000; ++i) {
        const std::string text = shuffled(random);
        SCOPED_TRACE(text);
        expectAgreement(folder.path("shuffled.ctl"), text);
        if (HasFailure())
            return;
    }
}

TEST(ControlFileAgreementTest, FindsOnlyWhatTheValuesDeserveInWhatAWriterWrites)
{
    // The texts are made up of any characters, and the numbers of materials and flags are few.
    const QSet<QString> deserved {"not-loaded",    "bad-header",        "bad-version", "unknown-variable",
                                  "repeated-flag", "repeated-material", "repeated-id", "stray-character"};
    const TemporaryFolder folder;
    std::mt19937 random(11);
    for (int i = 0; i < 300; ++i) {
        QByteArray bytes(int(random() % 4000), '\0');
        for (char& byte : bytes)
            byte = char(random());
        FuzzBytes values(bytes);
        const ControlFile model = takeControlFile(values);
        const std::string path = folder.path("model.ctl");
        ASSERT_TRUE(model.saveTo(path));
        CheckOptions options;
        options.kind = FileKind::Control;
        const CheckedFile checked = check(path, options);
        SCOPED_TRACE(linesOf(checked) + readBytes(path));
        EXPECT_EQ(checked.counts.errors, 0);
        for (const Finding& finding : checked.findings)
            EXPECT_TRUE(deserved.contains(finding.code)) << finding.code.toStdString();
        expectAgreement(folder.path("copy.ctl"), readBytes(path));
        if (HasFailure())
            return;
    }
}

} // namespace
} // namespace Nereo::Inspection

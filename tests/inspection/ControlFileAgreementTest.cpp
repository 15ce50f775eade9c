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
#include <QSet>

#include <cmath>
#include <cstdio>
#include <functional>
#include <random>
#include <vector>

namespace Nereo::Inspection {
namespace {

using Io::ControlFile;
using Values = QHash<QString, QVariant>;

/// A value that each control file has, and where it stands.
struct FixedValue {
    QString address;
    std::function<QVariant(const ControlFile&)> get;
};

std::vector<FixedValue> makeFixedValues()
{
    const auto nameOf = [](int code) { return Io::CodeNameTable::instance().nameForCode(code, false); };
    std::vector<FixedValue> values {
        {"header/1",                    [](const ControlFile& file) { return Util::toQString(file.headerLine1()); }},
        {"header/2",                    [](const ControlFile& file) { return Util::toQString(file.headerLine2()); }},
        {"title",                       [](const ControlFile& file) { return Util::toQString(file.title()); }      },
        {"units",                       [](const ControlFile& file) { return file.units(); }                       },
        {"transient-data/form",         [](const ControlFile& file) { return file.transientForm(); }               },
        {"transient-data/steps",        [](const ControlFile& file) { return file.numberOfTimeSteps(); }           },
        {"transient-data/step-size",    [](const ControlFile& file) { return file.timeStepSize(); }                },
        {"transient-data/stop-time",    [](const ControlFile& file) { return file.stopTime(); }                    },
        {"sequential-solver/1",         [](const ControlFile& file) { return file.sequentialSolver().integer1; }   },
        {"sequential-solver/2",         [](const ControlFile& file) { return file.sequentialSolver().integer2; }   },
        {"sequential-solver/3",         [](const ControlFile& file) { return file.sequentialSolver().integer3; }   },
        {"sequential-solver/variable",
         [](const ControlFile& file) { return Util::toQString(file.sequentialSolver().variable); }                 },
        {"sequential-solver/tolerance",
         [](const ControlFile& file) { return file.sequentialSolver().tolerance; }                                 },
    };
    const ControlFile any;
    const auto add = [&values](const QString& address, auto get) { values.push_back({address, get}); };
    for (int i = 0; i < ControlFile::EquationCount; ++i)
        add("equation-selection/" + QString::number(i + 1),
            [i](const ControlFile& file) { return file.equationFlag(i); });
    for (int code = 1; code <= ControlFile::SolvedVariableCount; ++code) {
        const QString address = "solution-control/" + nameOf(code);
        add(address + "/1", [code](const ControlFile& file) { return file.phiSolve(code).integer1; });
        add(address + "/2", [code](const ControlFile& file) { return file.phiSolve(code).integer2; });
        add(address + "/3", [code](const ControlFile& file) { return file.phiSolve(code).integer3; });
        add(address + "/tolerance",
            [code](const ControlFile& file) { return file.phiSolve(code).tolerance; });
    }
    for (int code = 1; code <= ControlFile::RelaxedVariableCount; ++code) {
        const QString address = "relaxation/" + nameOf(code);
        add(address + "/under", [code](const ControlFile& file) { return file.phiUnderRelax(code); });
        add(address + "/inertial", [code](const ControlFile& file) { return file.phiInertRelax(code); });
    }
    for (int code = 1; code <= ControlFile::ConstantCount; ++code) {
        const QString address = "constants/" + nameOf(code);
        const auto addRecord = [&](const auto&, const auto& members) {
            int place = 0;
            const auto addMember = [&](auto member) {
                add(address + '/' + QString::number(++place), [code, member](const ControlFile& file) {
                    QVariant value;
                    Io::visitRecord(file, code, [&](const auto& record, const auto&) {
                        if constexpr (std::is_invocable_v<decltype(member), decltype(record)>)
                            value = record.*member;
                    });
                    return value;
                });
            };
            std::apply([&](auto... member) { (addMember(member), ...); }, members);
        };
        if (!Io::visitRecord(any, code, addRecord))
            add(address, [code](const ControlFile& file) { return file.constant(code); });
    }
    return values;
}

/// Calls the function with all that a load can set, by address.
template <class Take>
void forEachValue(const ControlFile& file, Take take)
{
    static const std::vector<FixedValue> fixedValues = makeFixedValues(); // once for thousands of files
    for (const FixedValue& value : fixedValues)
        take(value.address, value.get(file));
    QHash<QString, int> counts;
    for (int i = 0; i < file.flagCount(); ++i) {
        const QString name = Util::toQString(file.flag(i).name());
        const int count = ++counts[name];
        take("flags/" + addressPart(name) + (count > 1 ? '#' + QString::number(count) : QString()),
             QVariant(Util::toQString(file.flag(i).value())));
    }
}

/// What a load leaves as it is where the file says nothing.
const Values& newValues()
{
    static const Values values = [] {
        Values values;
        forEachValue(ControlFile(),
                     [&](const QString& address, const QVariant& value) { values[address] = value; });
        return values;
    }();
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

bool isFoundWrong(const CheckedFile& checked, const QString& address)
{
    return std::any_of(checked.findings.begin(), checked.findings.end(), [&](const Finding& finding) {
        return finding.address == address || finding.code == QLatin1String("missing-title");
    });
}

void expectLoadedAsOutlined(const std::string& path, const ControlFile& loaded, const CheckedFile& checked)
{
    const Values outline = outlined(path);
    // What a load clears again, and texts that lose the mark at their start and become others.
    const bool hasAllFlags = !hasCode(checked, "repeated-section") && !hasCode(checked, "stray-character");
    forEachValue(loaded, [&](const QString& address, const QVariant& value) {
        const bool isFlag = address.startsWith(QLatin1String("flags/"));
        if (isFlag && !hasAllFlags)
            return;
        const auto said = outline.find(address);
        if (said == outline.end()) {
            EXPECT_TRUE(areSame(newValues()[address], value) || isFoundWrong(checked, address))
                << address.toStdString() << ", loaded as " << value.toString().toStdString();
        } else {
            EXPECT_TRUE(areSame(*said, value))
                << address.toStdString() << ": " << said->toString().toStdString() << ", loaded as "
                << value.toString().toStdString();
        }
    });
}

/// What is saved has the same values, but for the digits that a save drops.
void expectSavedAsOutlined(const std::string& path, const ControlFile& loaded)
{
    const Values before = outlined(path);
    const std::string copy = path + ".copy";
    ASSERT_TRUE(loaded.saveTo(copy));
    const Values after = outlined(copy);
    forEachValue(loaded, [&](const QString& address, const QVariant&) {
        if (before.contains(address) && after.contains(address)) {
            EXPECT_EQ(saved(after[address]), saved(before[address])) << address.toStdString();
        }
    });
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

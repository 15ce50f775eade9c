#include "Edited.h"

#include "Checked.h"

#include <NereoInspection/Outline.h>

#include <map>

using namespace Nereo::Inspection;

namespace {

/// A name that the suffix of no configuration contradicts.
std::string fileName(FileKind kind)
{
    return kind == FileKind::ConfigurationXml || kind == FileKind::Materials ? "file.xml" : "file.txt";
}

/// How many findings there are of each code.
std::map<std::string, qint64> countsOf(FileKind kind, const std::string& bytes)
{
    std::map<std::string, qint64> counts;
    for (const Finding& finding : checkedBytes(fileName(kind), bytes, kind).findings)
        counts[finding.code.toStdString()] += 1 + finding.more;
    return counts;
}

void expectNothingNew(FileKind kind, const std::string& before, const std::string& after)
{
    const auto known = countsOf(kind, before);
    for (const auto& [code, count] : countsOf(kind, after)) {
        const auto found = known.find(code);
        EXPECT_LE(count, found == known.end() ? 0 : found->second) << code << " in\n" << after;
    }
}

void expectState(const FileEdit& file, const std::vector<Edit>& edits)
{
    for (auto edit = edits.rbegin(); edit != edits.rend(); ++edit) {
        if (edit->address.endsWith("/name"))
            return; // which may be no address any more
    }
    for (const ValueChange& change : file.changes()) {
        if (!change.after && change.address.startsWith("flags/"))
            continue; // which another flag may have now
        EXPECT_EQ(file.value(change.address), change.after) << change.address.toStdString();
    }
}

} // namespace

const char* nameOf(EditProblem problem)
{
    static constexpr const char* names[] = {"None",       "CannotOpen",   "NotEditable",  "UnknownAddress",
                                            "NotThere",   "NotRemovable", "NotAnInteger", "NotANumber",
                                            "OutOfRange", "NotASwitch",   "NotAVersion",  "CannotCarry",
                                            "Doubtful",   "NewFinding"};
    return names[int(problem)];
}

std::vector<Edit> setTo(const QString& address, const QString& text)
{
    return {
        Edit {address, text}
    };
}

std::vector<Edit> removed(const QString& address)
{
    return {
        Edit {address, std::nullopt}
    };
}

std::string edited(FileKind kind, const std::string& bytes, const std::vector<Edit>& edits)
{
    FileEdit file(fileName(kind), QByteArray::fromStdString(bytes), kind);
    const EditResult result = file.apply(edits);
    EXPECT_EQ(file.originalBytes().toStdString(), bytes);
    EXPECT_EQ(bool(result), result.message.isEmpty());
    if (!result) {
        EXPECT_EQ(file.bytes().toStdString(), bytes);
        EXPECT_TRUE(file.changes().empty());
        return std::string("refused: ") + nameOf(result.problem);
    }
    std::string after = file.bytes().toStdString();
    expectNothingNew(kind, bytes, after);
    expectState(file, edits);
    return after;
}

std::string withCarriageReturns(std::string text)
{
    for (std::size_t at = 0; (at = text.find('\n', at)) != std::string::npos; at += 2)
        text.insert(at, 1, '\r');
    return text;
}

void expectEdited(FileKind kind, const std::string& before, const std::vector<Edit>& edits,
                  const std::string& after)
{
    const std::string mark = "\xEF\xBB\xBF";
    const bool isRefused = after.rfind("refused", 0) == 0;
    EXPECT_EQ(edited(kind, before, edits), after) << before;
    EXPECT_EQ(edited(kind, withCarriageReturns(before), edits), withCarriageReturns(after)) << before;
    EXPECT_EQ(edited(kind, mark + before, edits), (isRefused ? "" : mark) + after) << before;
}

#include "Checked.h"

#include <NereoUtility/StringConversion.h>

using namespace Nereo::Inspection;

namespace {

void expectOnly(const std::string& name, const Marked& marked, const Fault& fault)
{
    const CheckedFile checked = checkedBytes(name, marked.bytes());
    ASSERT_EQ(checked.findings.size(), 1U) << fault.text << '\n' << linesOf(checked);
    const Finding& finding = checked.findings.front();
    SCOPED_TRACE(fault.text + '\n' + linesOf(checked));
    EXPECT_EQ(finding.code, fault.code);
    EXPECT_EQ(finding.severity, fault.severity);
    EXPECT_EQ(effectName(finding.effect), effectName(fault.effect));
    EXPECT_EQ(finding.place.line, marked.place().line);
    EXPECT_EQ(finding.place.column, marked.place().column);
    EXPECT_EQ(finding.place.offset, marked.place().offset);
    EXPECT_EQ(finding.address, fault.address);
    EXPECT_TRUE(finding.message.contains(fault.message)) << finding.message.toStdString();
    EXPECT_EQ(finding.more, 0);
    if (finding.code != "malformed-xml" && finding.code != "blank-end") {
        const bool isTag =
            marked.found().startsWith(QLatin1Char('<')); // where the place is that of an element
        EXPECT_EQ(finding.found, marked.found().mid(isTag));
    }
}

} // namespace

CheckedFile checkedBytes(const std::string& name, const std::string& bytes, FileKind kind)
{
    const TemporaryFolder folder;
    CheckOptions options;
    options.kind = kind;
    return check(folder.write(name, bytes), options);
}

void expectFinding(const std::string& name, const Fault& fault, bool alsoInUtf16)
{
    const Marked marked(fault.text);
    expectOnly(name, marked, fault);
    expectOnly(name, marked.withCarriageReturns(), fault);
    expectOnly(name, marked.withByteOrderMark(), fault);
    if (alsoInUtf16)
        expectOnly(name, marked.inUtf16(), fault);
}

void expectClean(const std::string& name, const std::string& bytes)
{
    const CheckedFile checked = checkedBytes(name, bytes);
    EXPECT_NE(checked.kind, FileKind::Unknown);
    EXPECT_EQ(linesOf(checked), "") << bytes;
}

std::string linesOf(const CheckedFile& checked)
{
    std::string lines;
    for (const Finding& finding : checked.findings)
        lines += findingLine(checked.file, finding).toStdString() + '\n';
    return lines;
}

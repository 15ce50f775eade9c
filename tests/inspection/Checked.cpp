#include "Checked.h"

#include <NereoUtility/StringConversion.h>

#include <algorithm>

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

constexpr Marked::ByteOrder bothOrders[] = {Marked::BigEndian, Marked::LittleEndian};

/// The document with another declaration.
std::string declared(const std::string& text, const std::string& encoding)
{
    const std::size_t begin = text.rfind("<?xml", 0) == 0 ? text.find("?>") + 2 : 0;
    return "<?xml version='1.0' encoding='" + encoding + "'?>" + text.substr(begin);
}

bool isLatin1(const std::string& text)
{
    const QString characters = QString::fromStdString(text);
    return std::all_of(characters.begin(), characters.end(),
                       [](QChar character) { return character.unicode() < 0x100; });
}

/// In a document of another encoding there is a line and a column, and no offset.
void expectInOtherEncodings(const std::string& name, const Fault& fault)
{
    for (const Marked::ByteOrder order : bothOrders)
        expectOnly(name, Marked(fault.text).inUtf16(order).withoutOffset(), fault);
    if (isLatin1(fault.text)) {
        const Marked marked(declared(fault.text, "ISO-8859-1"));
        expectOnly(name, marked.inLatin1().withoutOffset(), fault);
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

void expectFinding(const std::string& name, const Fault& fault, bool isText)
{
    const Marked marked(fault.text);
    expectOnly(name, marked, fault);
    expectOnly(name, marked.withCarriageReturns(), fault);
    expectOnly(name, marked.withByteOrderMark(), fault);
    if (!isText)
        return expectInOtherEncodings(name, fault);
    for (const Marked::ByteOrder order : bothOrders) {
        expectOnly(name, marked.inUtf16(order), fault);
        expectOnly(name, marked.inUtf32(order), fault);
    }
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

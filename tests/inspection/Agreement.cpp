#include "Agreement.h"

#include "Checked.h"

#include <FileIO/NumberText.h>
#include <NereoInspection/Check.h>
#include <NereoInspection/Outline.h>
#include <fuzz/LoadEnd.h>

#include <gtest/gtest.h>

#include <map>

using namespace Nereo::Inspection;

namespace {

/// A value as the format can save it.
QString textOf(const QVariant& value, FileKind kind)
{
    const bool hasAllDigits = kind == FileKind::ConfigurationXml || kind == FileKind::ConfigurationText;
    if (value.userType() != QMetaType::Double || hasAllDigits)
        return value.toString();
    return Nereo::Io::NumberText(value.toDouble()).operator QLatin1String();
}

using Values = std::map<QString, QString>;

Values valuesOf(const std::string& path, FileKind kind)
{
    Values values;
    EXPECT_TRUE(
        outline(path, kind, [&](const Item& item) { values[item.address] = textOf(item.value, kind); }));
    return values;
}

} // namespace

Agreement::Agreement(const std::string& name, FileKind kind)
    : path_(folder_.path(name)), savedPath_(folder_.path("saved-" + name)), kind_(kind)
{
}

void Agreement::expectEach(const std::vector<DamagedFile>& files)
{
    for (const DamagedFile& file : files) {
        expect(file);
        if (::testing::Test::HasFailure())
            return; // one of thousands says enough
    }
}

void Agreement::expect(const DamagedFile& file)
{
    folder_.freshPath(QString::fromStdString(path_).section('/', -1).toStdString());
    writeBytes(path_, file.bytes);
    CheckOptions options;
    options.kind = kind_;
    const CheckedFile checked = check(path_, options);
    SCOPED_TRACE(file.damage + '\n' + linesOf(checked));

    const Effect said = firstEnd(checked.findings);
    const Effect done = said == Effect::Stops ? endOfLoadInAChild(path_, kind_) : endOfLoad(path_, kind_);
    EXPECT_EQ(effectName(said), effectName(done));

    const Values values = valuesOf(path_, kind_);
    if (!checked.findings.empty() || !saveAgain(path_, kind_, savedPath_))
        return;
    const Values saved = valuesOf(savedPath_, kind_);
    for (const auto& [address, value] : values) {
        const auto found = saved.find(address);
        EXPECT_EQ(found == saved.end() ? QString() : found->second, value) << address.toStdString();
    }
}

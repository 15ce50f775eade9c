#include "GoldenFile.h"

#include "Bytes.h"

#include <NereoUtility/Version.h>

#include <gtest/gtest.h>

namespace {

struct Placeholder {
    QString name;
    QString value;
};

// The branch stands in parentheses in every file; alone it would be an everyday word.
const Placeholder placeholders[] = {
    {"@VERSION@",  Nereo::Util::Version::Current.toString()  },
    {"(@BRANCH@)", '(' + Nereo::Util::Version::Branch() + ')'},
};

std::string withPlaceholders(const std::string& bytes)
{
    QString text = QString::fromStdString(bytes);
    for (const auto& [name, value] : placeholders)
        text.replace(value, name);
    return text.toStdString();
}

std::string withValues(const std::string& bytes)
{
    QString text = QString::fromStdString(bytes);
    for (const auto& [name, value] : placeholders)
        text.replace(name, value);
    return text.toStdString();
}

} // namespace

void expectGolden(const std::string& bytes, const std::string& fileName)
{
    const std::string path = NEREO_GOLDEN_DIR "/" + fileName;
    if (qEnvironmentVariableIsSet("NEREO_UPDATE_GOLDEN"))
        writeBytes(path, withPlaceholders(bytes));
    EXPECT_EQ(bytes, withValues(readBytes(path))) << path;
}

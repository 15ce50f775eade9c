#include "Checked.h"

#include "support/RandomConfiguration.h"

#include <NereoFileIO/Nereo2ConfigFile.h>

/// What the library writes has nothing wrong with it.

namespace Nereo::Inspection {
namespace {

using Io::Nereo2ConfigFile;

/// Saves random configurations whose texts have letters of this alphabet, and expects that a check of each
/// finds nothing.
void expectCleanConfigurations(const std::string& name, const QStringList& alphabet)
{
    const TemporaryFolder folder;
    RandomConfiguration random(alphabet);
    for (int i = 0; i < 100; ++i) {
        const std::string path = folder.freshPath(name);
        ASSERT_TRUE(random.next().saveTo(path));
        ASSERT_EQ(linesOf(check(path)), "") << readBytes(path);
    }
}

TEST(NoFalseAlarmTest, OfConfigurationsInXml)
{
    expectCleanConfigurations("file.xml",
                              {"a", "Z", "0", " ", "\n", "\t", "<", ">", "&", "\"", "'", "]]>", "%1",
                               "\u00E4", "\u20AC", QString::fromUtf8("\xF0\x9F\x98\x80")});
}

TEST(NoFalseAlarmTest, OfConfigurationsInText)
{
    expectCleanConfigurations(
        "file.cfg",
        {"a", "Z", "0", "/", "<", "&", "%1", "-", "\u00E4", "\u20AC", QString::fromUtf8("\xF0\x9F\x98\x80")});
}

TEST(NoFalseAlarmTest, OfNewConfigurations)
{
    const TemporaryFolder folder;
    for (const char* name : {"file.xml", "file.cfg"}) {
        ASSERT_TRUE(Nereo2ConfigFile().saveTo(folder.path(name)));
        EXPECT_EQ(linesOf(check(folder.path(name))), "");
    }
}

} // namespace
} // namespace Nereo::Inspection

#include <Inspection/Rule.h>

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace Nereo::Inspection {
namespace {

/// The largest number behind a percent sign.
int textsIn(const std::string& pattern)
{
    int most = 0;
    for (std::size_t at = pattern.find('%'); at != std::string::npos; at = pattern.find('%', at + 1))
        most = std::max(most, pattern[at + 1] - '0');
    return most;
}

TEST(RulesTest, SayWhatTheirTextsNeed)
{
    for (const RuleRow& row : rules) {
        EXPECT_LE(textsIn(row.message), 6) << row.name;
        EXPECT_LE(textsIn(row.expected), textsIn(row.message)) << row.name;
        EXPECT_NE(std::string(row.message).back(), '.') << row.name; // more may follow
    }
}

TEST(RulesTest, HaveTheSeverityOfTheirCodeInEachKind)
{
    std::map<std::pair<std::string, int>, Severity> severities;
    for (const RuleRow& row : rules) {
        for (int kind = int(FileKind::ConfigurationXml); kind <= int(FileKind::Results); ++kind) {
            const bool maySay = (row.kinds & setOf(FileKind(kind))) != 0;
            if (!maySay || row.code == std::string("negative-count")
                || row.code == std::string("node-out-of-range"))
                continue; // these two depend on whether a field is known
            const auto [known, isNew] =
                severities.emplace(std::pair(std::string(row.code), kind), row.severity);
            EXPECT_EQ(known->second, row.severity) << row.name;
        }
    }
}

} // namespace
} // namespace Nereo::Inspection

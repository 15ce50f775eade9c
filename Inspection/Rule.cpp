#include "Rule.h"

#include <algorithm>

namespace Nereo::Inspection {

namespace {

constexpr std::array<RuleRow, ruleCount> table {{
#define FINDING(rule, code, severity, effect, kinds, expected, message)                                      \
    RuleRow {#rule, code, Severity::severity, Effect::effect, kinds, expected, message},
#include "Rules.def"
}};

constexpr bool isOfCode(char character)
{
    return character == '-' || (character >= 'a' && character <= 'z')
        || (character >= '0' && character <= '9');
}

constexpr bool isWellFormed(const RuleRow& row)
{
    for (const char* character = row.code; *character != '\0'; ++character) {
        if (!isOfCode(*character))
            return false;
    }
    return *row.code != '\0' && *row.message != '\0' && row.kinds != 0
        && (!endsLoad(row.effect) || row.severity == Severity::Error);
}

constexpr bool areWellFormed(const std::array<RuleRow, ruleCount>& rows)
{
    for (const RuleRow& row : rows) {
        if (!isWellFormed(row))
            return false;
    }
    return true;
}

static_assert(areWellFormed(table), "codes in lower case and dashes; what ends a load is an error");

} // namespace

const std::array<RuleRow, ruleCount> rules = table;

} // namespace Nereo::Inspection

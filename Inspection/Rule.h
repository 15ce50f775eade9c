#pragma once

#include <NereoInspection/Export.h>
#include <NereoInspection/FileKind.h>
#include <NereoInspection/Finding.h>

#include <array>

namespace Nereo::Inspection {

/// Kinds of file, as a set.
using Kinds = unsigned;

constexpr Kinds setOf(FileKind kind)
{
    return 1U << unsigned(kind);
}

constexpr Kinds ConfigurationXmlKind = setOf(FileKind::ConfigurationXml);
constexpr Kinds ConfigurationTextKind = setOf(FileKind::ConfigurationText);
constexpr Kinds ControlKind = setOf(FileKind::Control);
constexpr Kinds MaterialsKind = setOf(FileKind::Materials);
constexpr Kinds GeometryBoundaryKind = setOf(FileKind::GeometryBoundary);
constexpr Kinds ResultsKind = setOf(FileKind::Results);

constexpr Kinds ConfigurationKinds = ConfigurationXmlKind | ConfigurationTextKind;
constexpr Kinds XmlKinds = ConfigurationXmlKind | MaterialsKind;
constexpr Kinds SectionKinds = ControlKind | GeometryBoundaryKind;
constexpr Kinds TextKinds = ConfigurationKinds | SectionKinds | MaterialsKind;
constexpr Kinds AnyKind = TextKinds | ResultsKind;
constexpr Kinds LoadedTextKinds = ConfigurationKinds | ControlKind | MaterialsKind; ///< with a reader
constexpr Kinds VersionKinds = XmlKinds | SectionKinds;
constexpr Kinds LoadedVersionKinds = XmlKinds | ControlKind;
constexpr Kinds NamingKinds = MaterialsKind | SectionKinds;

/// What a walk finds: the row of Rules.def.
enum class Rule {
#define FINDING(rule, code, severity, effect, kinds, expected, message) rule,
#include "Rules.def"
    Count
};

constexpr int ruleCount = int(Rule::Count);

struct RuleRow {
    const char* name; ///< of the enumerator
    const char* code;
    Severity severity;
    Effect effect;
    Kinds kinds;
    const char* expected; ///< in English
    const char* message;  ///< in English
};

NEREOINSPECTION_EXPORT extern const std::array<RuleRow, ruleCount> rules;

inline const RuleRow& rowOf(Rule rule)
{
    return rules[std::size_t(rule)];
}

} // namespace Nereo::Inspection

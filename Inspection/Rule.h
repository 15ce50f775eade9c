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

inline constexpr Kinds ConfigurationXmlKind = setOf(FileKind::ConfigurationXml);
inline constexpr Kinds ConfigurationTextKind = setOf(FileKind::ConfigurationText);
inline constexpr Kinds ControlKind = setOf(FileKind::Control);
inline constexpr Kinds MaterialsKind = setOf(FileKind::Materials);
inline constexpr Kinds GeometryBoundaryKind = setOf(FileKind::GeometryBoundary);
inline constexpr Kinds ResultsKind = setOf(FileKind::Results);

inline constexpr Kinds ConfigurationKinds = ConfigurationXmlKind | ConfigurationTextKind;
inline constexpr Kinds XmlKinds = ConfigurationXmlKind | MaterialsKind;
inline constexpr Kinds SectionKinds = ControlKind | GeometryBoundaryKind;
inline constexpr Kinds TextKinds = ConfigurationKinds | SectionKinds | MaterialsKind;
inline constexpr Kinds AnyKind = TextKinds | ResultsKind;
inline constexpr Kinds LoadedTextKinds = ConfigurationKinds | ControlKind | MaterialsKind; ///< with a reader
inline constexpr Kinds VersionKinds = XmlKinds | SectionKinds;
inline constexpr Kinds LoadedVersionKinds = XmlKinds | ControlKind;
inline constexpr Kinds NamingKinds = MaterialsKind | SectionKinds;

/// What a walk finds: the row of Rules.def.
enum class Rule {
#define FINDING(rule, code, severity, effect, kinds, expected, message) rule,
#include "Rules.def"
    Count
};

inline constexpr int ruleCount = int(Rule::Count);

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

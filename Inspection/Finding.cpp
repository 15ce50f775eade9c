#include <NereoInspection/Finding.h>

#include "OneLine.h"

#include <NereoUtility/StringConversion.h>

namespace Nereo::Inspection {

QString severityName(Severity severity)
{
    static constexpr const char* names[] = {"error", "warning", "note"};
    return QLatin1String(names[int(severity)]);
}

QString effectName(Effect effect)
{
    static constexpr const char* names[] = {"none",    "fails",    "throws", "stops",    "zero",    "start",
                                            "wrapped", "infinite", "off",    "replaced", "ignored", "lost"};
    return QLatin1String(names[int(effect)]);
}

QString findingLine(const std::string& file, const Finding& finding)
{
    QString line = Util::toQString(file);
    if (finding.place.hasLine())
        line += QStringLiteral(":%1:%2").arg(finding.place.line).arg(finding.place.column);
    else if (finding.place.hasOffset())
        line += QStringLiteral("@%1").arg(finding.place.offset);
    line += QLatin1String(": ") + severityName(finding.severity) + QLatin1String(": ") + finding.message
        + QLatin1String(" [") + finding.code + QLatin1Char(']');
    if (!finding.address.isEmpty())
        line += QLatin1Char(' ') + finding.address;
    return oneLine(line);
}

} // namespace Nereo::Inspection

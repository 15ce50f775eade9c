#include <NereoInspection/Check.h>

#include <NereoUtility/StringConversion.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace Nereo::Inspection {

namespace {

QJsonValue numberOrNull(qint64 number)
{
    return number == Place::Absent ? QJsonValue() : QJsonValue(number);
}

QJsonValue textOrNull(const QString& text)
{
    return text.isEmpty() ? QJsonValue() : QJsonValue(text);
}

QJsonObject jsonOf(const Finding& finding)
{
    return {
        {"severity", severityName(finding.severity)    },
        {"code",     finding.code                      },
        {"effect",   effectName(finding.effect)        },
        {"line",     numberOrNull(finding.place.line)  },
        {"column",   numberOrNull(finding.place.column)},
        {"offset",   numberOrNull(finding.place.offset)},
        {"address",  textOrNull(finding.address)       },
        {"found",    textOrNull(finding.found)         },
        {"expected", textOrNull(finding.expected)      },
        {"more",     finding.more                      },
        {"message",  finding.message                   }
    };
}

QJsonObject withCounts(QJsonObject object, const FindingCounts& counts)
{
    object["errors"] = counts.errors;
    object["warnings"] = counts.warnings;
    object["notes"] = counts.notes;
    return object;
}

QJsonObject jsonOf(const CheckedFile& file)
{
    QJsonArray findings;
    for (const Finding& finding : file.findings)
        findings.append(jsonOf(finding));
    return withCounts(
        {
            {"file",     Util::toQString(file.file)     },
            {"kind",     textOrNull(kindName(file.kind))},
            {"findings", findings                       }
    },
        file.counts);
}

} // namespace

QByteArray toJson(const std::vector<CheckedFile>& files)
{
    FindingCounts counts;
    QJsonArray array;
    for (const CheckedFile& file : files) {
        counts += file.counts;
        array.append(jsonOf(file));
    }
    return QJsonDocument(withCounts(
                             {
                                 {"files", array}
    },
                             counts))
        .toJson();
}

} // namespace Nereo::Inspection

#include <NereoInspection/Comparison.h>

#include "OneLine.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>

namespace Nereo::Inspection {

namespace {

/// In so many digits that it reads back as the same number.
QString exactText(double number)
{
    return QString::number(number, 'g', QLocale::FloatingPointShortest);
}

/// In as many digits as tell.
QString roundText(double number)
{
    constexpr int digits = 4;
    return QString::number(number, 'g', digits);
}

QString shareText(double share)
{
    constexpr double percent = 100;
    return roundText(share * percent) + QLatin1Char('%');
}

/// `kU: 3 values differ, at most by 0.5 (node 34: 1.2 -> 1.7), 4.1% of the peak, rms 0.0123`
QString fieldText(const FieldDifference& field)
{
    const QString values = field.count == 1
        ? QStringLiteral("1 value differs by ")
        : QString::number(field.count) + QLatin1String(" values differ by up to ");
    return values + roundText(field.largest) + QLatin1String(" (node ") + QString::number(field.node)
        + QLatin1String(": ") + exactText(field.a) + QLatin1String(" -> ") + exactText(field.b)
        + QLatin1String("), ") + shareText(field.peakShare) + QLatin1String(" of the peak, rms ")
        + roundText(field.rms);
}

QString lineOf(const Difference& difference)
{
    if (difference.field)
        return difference.address + QLatin1String(": ") + fieldText(*difference.field);
    if (!difference.a)
        return QLatin1String("+ ") + difference.address + QLatin1String(": ") + *difference.b;
    if (!difference.b)
        return QLatin1String("- ") + difference.address + QLatin1String(": ") + *difference.a;
    return difference.address + QLatin1String(": ") + *difference.a + QLatin1String(" -> ") + *difference.b;
}

QJsonValue textOrNull(const std::optional<QString>& text)
{
    return text ? QJsonValue(*text) : QJsonValue();
}

QJsonObject jsonOf(const Difference& difference)
{
    if (!difference.field) {
        return {
            {"address", difference.address      },
            {"a",       textOrNull(difference.a)},
            {"b",       textOrNull(difference.b)}
        };
    }
    const FieldDifference& field = *difference.field;
    return {
        {"address",   difference.address},
        {"a",         field.a           }, // a number that isn't finite becomes null
        {"b",         field.b           },
        {"count",     field.count       },
        {"largest",   field.largest     },
        {"node",      field.node        },
        {"peakShare", field.peakShare   },
        {"rms",       field.rms         }
    };
}

} // namespace

QString toText(const Comparison& comparison)
{
    QString text;
    for (const Difference& difference : comparison.differences)
        text += oneLine(lineOf(difference)) + QLatin1Char('\n');
    return text;
}

QByteArray toJson(const Comparison& comparison)
{
    QJsonArray differences;
    for (const Difference& difference : comparison.differences)
        differences.append(jsonOf(difference));
    return QJsonDocument(QJsonObject {
                             {"same",        comparison.areSame()},
                             {"differences", differences         }
    })
        .toJson();
}

} // namespace Nereo::Inspection

#include "Listener.h"

#include "NearestName.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstring>
#include <tuple>

namespace Nereo::Inspection {

namespace {

constexpr int longestExcerpt = 200;

QString translated(const char* english)
{
    return *english == '\0' ? QString() : QCoreApplication::translate("Nereo::Inspection", english);
}

/// Puts the texts into their places in one go, so that a %2 in a found text stays.
QString filledIn(const char* english, const QStringList& texts)
{
    const QString pattern = translated(english);
    QString text;
    for (int i = 0; i < pattern.size(); ++i) {
        const int number = i + 1 < pattern.size() ? pattern[i + 1].digitValue() : -1;
        if (pattern[i] == QLatin1Char('%') && number >= 1 && number <= 9) {
            text += texts.value(number - 1);
            ++i;
        } else {
            text += pattern[i];
        }
    }
    return text;
}

Finding findingOf(const Discovery& discovery)
{
    const RuleRow& row = rowOf(discovery.rule);
    Finding finding;
    finding.severity = row.severity;
    finding.code = QLatin1String(row.code);
    finding.effect = discovery.effect.value_or(row.effect);
    finding.place = discovery.place;
    finding.address = discovery.address;
    finding.found = excerpt(discovery.found);

    QStringList texts(finding.found);
    for (const QString& detail : discovery.details)
        texts.append(excerpt(detail));
    finding.expected = filledIn(row.expected, texts);
    finding.message = filledIn(row.message, texts);
    const QString suggested =
        discovery.knownNames != nullptr ? suggestion(discovery.found, *discovery.knownNames) : QString();
    if (!suggested.isEmpty())
        finding.message += QLatin1String("; ") + suggested;
    if (!discovery.consequence.isEmpty())
        finding.message += QLatin1String("; ") + discovery.consequence;
    return finding;
}

/// A binary file has offsets only, and what is about a file as a whole comes first.
bool standsBefore(const Place& left, const Place& right)
{
    return std::tie(left.line, left.column, left.offset) < std::tie(right.line, right.column, right.offset);
}

} // namespace

QString excerpt(QStringView text)
{
    if (text.size() <= longestExcerpt)
        return text.toString();
    const bool splitsPair = text[longestExcerpt - 2].isHighSurrogate();
    return text.left(longestExcerpt - 1 - splitsPair).toString() + QChar(0x2026);
}

void sortByPlace(std::vector<Finding>& findings)
{
    std::stable_sort(findings.begin(), findings.end(), [](const Finding& left, const Finding& right) {
        return standsBefore(left.place, right.place);
    });
}

Listener::~Listener() = default;

void Listener::itemIn(const QString& part, const Item& item)
{
    Item whole = item;
    whole.address.prepend(part);
    this->item(whole);
}

void FindingListener::finding(const Discovery& discovery)
{
    qint64& count = countOf(rowOf(discovery.rule).code);
    if (++count <= mostOfACode)
        findings_.push_back(findingOf(discovery));
}

bool FindingListener::onlyCounts(Rule rule)
{
    qint64& count = countOf(rowOf(rule).code);
    const bool isFull = count >= mostOfACode;
    count += isFull;
    return isFull;
}

std::vector<Finding> FindingListener::takeFindings()
{
    sortByPlace(findings_);
    for (const auto& [code, count] : counts_) {
        if (count <= mostOfACode)
            continue;
        const auto last =
            std::find_if(findings_.rbegin(), findings_.rend(), [code = code](const Finding& finding) {
                return finding.code == QLatin1String(code);
            });
        last->more = count - mostOfACode;
    }
    return std::move(findings_);
}

qint64& FindingListener::countOf(const char* code)
{
    const auto isOfCode = [code](const CodeCount& known) {
        return known.code == code || std::strcmp(known.code, code) == 0;
    };
    const auto known = std::find_if(counts_.begin(), counts_.end(), isOfCode);
    if (known != counts_.end())
        return known->count;
    counts_.push_back({code, 0});
    return counts_.back().count;
}

} // namespace Nereo::Inspection

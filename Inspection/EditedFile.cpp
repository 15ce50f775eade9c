#include "EditedFile.h"

#include "Walker.h"

#include <algorithm>

namespace Nereo::Inspection {

/// Keeps the values, and counts the findings.
class EditedFile::Hearer : public Listener {
public:
    explicit Hearer(EditedFile& file) : file_(file) {}

    bool wantsItems() const override { return true; }
    bool wantsEveryOffset() const override { return true; }

    void item(const Item& item) override
    {
        file_.last_.insert(item.address, int(file_.items_.size()));
        file_.items_.push_back(item);
    }

    void finding(const Discovery& discovery) override
    {
        const RuleRow& row = rowOf(discovery.rule);
        const QString code = QLatin1String(row.code);
        ++file_.findings_[code + QLatin1Char(' ') + withoutPlaces(discovery.address)];
        file_.hasErrors_ = file_.hasErrors_ || row.severity == Severity::Error;
    }

private:
    EditedFile& file_;
};

EditedFile::EditedFile(const std::string& name, const QByteArray& bytes, FileKind kind)
    : bytes_(bytes), input_(std::make_unique<InputFile>(name, bytes)), kind_(kind)
{
    Hearer hearer(*this);
    walkOf(kind)(*input_, hearer);
}

FileEncoding EditedFile::encoding() const
{
    const bool isDocument = kind_ == FileKind::ConfigurationXml || kind_ == FileKind::Materials;
    return isDocument ? FileEncoding::ofDocument(*input_) : FileEncoding::ofText(*input_);
}

const Item* EditedFile::find(const QString& address) const
{
    const auto found = last_.constFind(address);
    return found == last_.constEnd() ? nullptr : &items_[std::size_t(*found)];
}

QString EditedFile::newFindingIn(const EditedFile& changed, bool isRenamed) const
{
    const auto shortened = [&](const Findings& findings) {
        if (!isRenamed)
            return findings;
        Findings shorter;
        for (auto finding = findings.begin(); finding != findings.end(); ++finding) {
            const int codeEnd = finding.key().indexOf(QLatin1Char(' ')) + 1;
            const QString address = withoutMaterial(kind_, finding.key().mid(codeEnd));
            shorter[finding.key().left(codeEnd) + address] += finding.value();
        }
        return shorter;
    };
    const Findings before = shortened(findings_);
    const Findings after = shortened(changed.findings_);
    for (auto finding = after.begin(); finding != after.end(); ++finding) {
        if (finding.value() > before.value(finding.key()))
            return finding.key();
    }
    return {};
}

QByteArray replaced(const QByteArray& bytes, Replacements replacements)
{
    std::stable_sort(
        replacements.begin(), replacements.end(),
        [](const Replacement& left, const Replacement& right) { return left.begin < right.begin; });
    QByteArray changed;
    qint64 at = 0;
    for (const Replacement& replacement : replacements) {
        const bool isPart = at <= replacement.begin && replacement.begin <= replacement.end
            && replacement.end <= bytes.size();
        if (!isPart)
            throw Refusal(EditProblem::Doubtful, QStringLiteral("two values stand at one place of the file"));
        changed.append(bytes.constData() + at, int(replacement.begin - at));
        changed += replacement.bytes;
        at = replacement.end;
    }
    changed.append(bytes.constData() + at, int(bytes.size() - at));
    return changed;
}

QString shownText(const Item& item)
{
    const auto isMarkup = [](QChar character) {
        return character == QLatin1Char('<') || character == QLatin1Char('&');
    };
    const bool hasMarkup = std::any_of(item.spelling.begin(), item.spelling.end(), isMarkup);
    return item.type == Item::Type::Text || hasMarkup ? item.value.toString() : item.spelling.trimmed();
}

std::optional<QString> nameOfPart(const QString& part)
{
    QString name = part;
    name.replace(QLatin1String("%2F"), QLatin1String("/"));
    name.replace(QLatin1String("%23"), QLatin1String("#"));
    name.replace(QLatin1String("%25"), QLatin1String("%")); // last, so that none is read twice
    return addressPart(name) == part ? std::optional(name) : std::nullopt;
}

QString withoutPlaces(const QString& address)
{
    if (!address.contains(QLatin1Char('#'))) // as nearly always
        return address;
    QString bare;
    bool isPlace = false;
    for (const QChar character : address) {
        isPlace = character == QLatin1Char('#') || (isPlace && character != QLatin1Char('/'));
        if (!isPlace)
            bare += character;
    }
    return bare;
}

QString withoutMaterial(FileKind kind, const QString& address)
{
    const QLatin1String settings("property-settings/");
    const bool isInControl = kind == FileKind::Control && address.startsWith(settings);
    if (kind != FileKind::Materials && !isInControl)
        return address;
    const int slash = address.indexOf(QLatin1Char('/'), isInControl ? settings.size() : 0);
    return slash < 0 ? QString() : address.mid(slash);
}

} // namespace Nereo::Inspection

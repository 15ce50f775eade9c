#include "FileCheck.h"
#include "VersionFault.h"
#include "Walker.h"

#include <FileIO/ControlFileSections.h>
#include <FileIO/NumberText.h>
#include <NereoFileIO/Nereo2ConfigFile.h>
#include <NereoUtility/StringConversion.h>
#include <NereoUtility/Version.h>

#include <QHash>
#include <QSet>
#include <QStringList>

#include <algorithm>
#include <map>
#include <optional>

namespace Nereo::Inspection {

namespace {

constexpr char versionAddress[] = "version";
constexpr char controlHeader[] = "header/1";

/// Two values that are to be the same in the files of a case.
struct Comparison {
    Rule rule;
    Kinds kinds;
    const char* address;
    Kinds otherKinds;
    const char* otherAddress;
};

constexpr Comparison comparisons[] = {
    {Rule::JobDiffers,       ConfigurationKinds, "JobPrefix",    GeometryBoundaryKind, "job"                     },
    {Rule::VersionDiffers,   AnyKind,            versionAddress, AnyKind,              versionAddress            },
    {Rule::TransientDiffers, ConfigurationKinds, "Transient",    ControlKind,          "transient-data/form"     },
    {Rule::TransientDiffers, ConfigurationKinds, "TimeStepSize", ControlKind,          "transient-data/step-size"},
    {Rule::TransientDiffers, ConfigurationKinds, "StopTime",     ControlKind,          "transient-data/stop-time"},
    {Rule::NodesDiffer,      ResultsKind,        "nodes",        ResultsKind,          "nodes"                   },
};

/// The list of materials of a kind: "property-settings/Air/id".
struct MaterialList {
    FileKind kind;
    const char* address;
};

constexpr MaterialList materialLists[] = {
    {FileKind::Control,          "property-settings"},
    {FileKind::GeometryBoundary, "properties"       },
};

constexpr const char* comparedOfMaterials[] = {"id", "fluid", "resistance"};

struct Value {
    QString address;
    Place place;
    QVariant value;
};

struct CaseMaterial {
    std::map<QString, Value> values; ///< by their part of the address

    QString text(const char* item) const
    {
        const auto found = values.find(QLatin1String(item));
        return found == values.end() ? QString() : found->second.value.toString();
    }
    /// What it is called by: its name, or the first that is said of it.
    const Value& title() const
    {
        const auto name = values.find(QStringLiteral("name"));
        return name == values.end() ? values.begin()->second : name->second;
    }
    bool hasName() const { return values.count(QStringLiteral("name")) > 0; }
};

/// What a file says of the case.
struct CaseFile {
    QString name;
    FileKind kind = FileKind::Unknown;
    std::map<QString, Value> values; ///< by address
    std::vector<CaseMaterial> materials;

    const Value* value(const char* address) const
    {
        const auto found = values.find(QLatin1String(address));
        return found == values.end() ? nullptr : &found->second;
    }
};

bool isCompared(const QString& address)
{
    for (const Comparison& comparison : comparisons) {
        if (address == QLatin1String(comparison.address) || address == QLatin1String(comparison.otherAddress))
            return true;
    }
    return address == QLatin1String(controlHeader);
}

/// A configuration has all settings when it is saved, also those that nobody has set.
bool isDefault(const QString& address, const QVariant& value)
{
    static const Io::Nereo2ConfigFile configuration;
    if (value.userType() != QMetaType::Double)
        return false;
    const std::string key = Util::toStdString(address);
    return configuration.contains(key) && configuration.setting(key).valueAsDouble() == value.toDouble();
}

/// The part of a control file's first line that is its version, if there is one.
QString versionOfControlFile(const QString& header)
{
    const int at = header.lastIndexOf(QLatin1String(Io::versionMark));
    return at < 0 ? QString() : header.mid(at + int(qstrlen(Io::versionMark)));
}

/// Takes out of a walk what the case is about.
class CaseListener : public Listener {
public:
    CaseListener(CaseFile& file, const std::vector<Finding>& findings) : file_(file)
    {
        for (const MaterialList& list : materialLists) {
            if (list.kind == file.kind)
                materials_ = QLatin1String(list.address);
        }
        for (const Finding& finding : findings) {
            if (finding.severity == Severity::Error || finding.code == QLatin1String("bad-version"))
                wrong_.insert(finding.address);
        }
    }

    bool wantsItems() const override { return true; }
    bool wantsFindings() const override { return false; }
    void finding(const Discovery&) override {}
    bool onlyCounts(Rule) override { return true; }

    void item(const Item& item) override
    {
        if (wrong_.contains(item.address))
            return;
        if (!materials_.isEmpty() && item.address.startsWith(materials_))
            return takeOfMaterial(item);
        if (!isCompared(item.address) || isDefault(item.address, item.value))
            return;
        if (item.address == QLatin1String(controlHeader))
            return takeVersion(item);
        if (!item.value.toString().isEmpty())
            file_.values[item.address] = {item.address, item.place, item.value};
    }

private:
    void takeVersion(const Item& header)
    {
        const QString version = versionOfControlFile(header.spelling);
        if (isVersion(version))
            file_.values[QLatin1String(versionAddress)] = {header.address, header.place,
                                                           Util::Version(version).toString()};
    }

    void takeOfMaterial(const Item& item)
    {
        const QStringList parts = item.address.split(QLatin1Char('/'));
        if (parts.size() != 3 || parts.front() != materials_)
            return;
        if (parts[1] != material_ || file_.materials.empty())
            file_.materials.emplace_back();
        material_ = parts[1];
        file_.materials.back().values[parts[2]] = {item.address, item.place, item.value};
    }

    CaseFile& file_;
    QLatin1String materials_;
    QString material_; ///< its part of the address
    QSet<QString> wrong_;
};

/// Of results there are three numbers.
bool areSameVersions(const QString& left, const QString& right, bool isShort)
{
    const QChar dot = QLatin1Char('.');
    return isShort ? left.section(dot, 0, 2) == right.section(dot, 0, 2) : left == right;
}

bool areSame(const QVariant& left, const QVariant& right)
{
    const bool isNumber = left.userType() == QMetaType::Double || right.userType() == QMetaType::Double;
    if (!isNumber || left == right)
        return left == right;
    const Io::NumberText leftText(left.toDouble());
    const Io::NumberText rightText(right.toDouble());
    return QLatin1String(leftText) == QLatin1String(rightText);
}

/// Compares a file with those that come before it in the list.
class CaseComparison {
public:
    CaseComparison(const std::vector<CaseFile>& earlier, const CaseFile& file, FindingListener& listener)
        : earlier_(earlier), file_(file), listener_(listener)
    {
    }

    void run()
    {
        for (const Comparison& comparison : comparisons)
            compareValues(comparison);
        for (const CaseFile& other : earlier_) {
            if (other.kind != file_.kind && !other.materials.empty() && !file_.materials.empty())
                return compareMaterials(other);
        }
    }

private:
    /// A file that says the same as one before is none that differs, if there are more.
    void compareValues(const Comparison& comparison)
    {
        const CaseFile* differing = nullptr;
        for (const CaseFile& other : earlier_) {
            const auto [value, otherValue] = valuesOf(comparison, other);
            if (value == nullptr || otherValue == nullptr)
                continue;
            if (agree(comparison.rule, other, *value, *otherValue))
                return;
            if (differing == nullptr)
                differing = &other;
        }
        if (differing == nullptr)
            return;
        const auto [value, otherValue] = valuesOf(comparison, *differing);
        report(comparison.rule, *value, *differing, *otherValue);
    }

    /// The value of this file and that of the other; nothing where they aren't compared.
    std::pair<const Value*, const Value*> valuesOf(const Comparison& comparison, const CaseFile& other) const
    {
        const auto areOf = [&](Kinds kinds, Kinds otherKinds) {
            return (kinds & setOf(file_.kind)) != 0 && (otherKinds & setOf(other.kind)) != 0;
        };
        if (areOf(comparison.kinds, comparison.otherKinds))
            return {file_.value(comparison.address), other.value(comparison.otherAddress)};
        if (areOf(comparison.otherKinds, comparison.kinds))
            return {file_.value(comparison.otherAddress), other.value(comparison.address)};
        return {nullptr, nullptr};
    }

    bool agree(Rule rule, const CaseFile& other, const Value& value, const Value& otherValue) const
    {
        if (rule != Rule::VersionDiffers)
            return areSame(value.value, otherValue.value);
        const bool isShort = file_.kind == FileKind::Results || other.kind == FileKind::Results;
        return areSameVersions(value.value.toString(), otherValue.value.toString(), isShort);
    }

    void report(Rule rule, const Value& value, const CaseFile& other, const Value& otherValue)
    {
        Discovery discovery {rule, value.place, value.address, value.value.toString()};
        discovery.details = QStringList {other.name, otherValue.value.toString(), file_.name, value.address,
                                         otherValue.address};
        listener_.finding(discovery);
    }

    /// Materials of one name are the same one, else those of one id.
    void compareMaterials(const CaseFile& other)
    {
        std::vector<const CaseMaterial*> partners = paired(file_.materials, other.materials, "name", {});
        const std::vector<const CaseMaterial*> byId =
            paired(file_.materials, other.materials, "id", partners);
        QSet<const CaseMaterial*> met;
        for (std::size_t i = 0; i < file_.materials.size(); ++i) {
            const CaseMaterial& material = file_.materials[i];
            if (partners[i] != nullptr)
                compareMaterial(material, other, *partners[i]);
            else if (byId[i] == nullptr)
                reportOnlyLater(material, other);
            else if (material.hasName() && byId[i]->hasName())
                report(Rule::MaterialsDiffer, material.title(), other, byId[i]->title());
            else
                compareMaterial(material, other, *byId[i]);
            met.insert(partners[i] != nullptr ? partners[i] : byId[i]);
        }
        for (const CaseMaterial& material : other.materials) {
            if (!met.contains(&material))
                reportOnlyEarlier(material, other);
        }
    }

    /// For each material its partner by an item; each is the partner of one, and those that have or are one
    /// already are left out.
    static std::vector<const CaseMaterial*> paired(const std::vector<CaseMaterial>& materials,
                                                   const std::vector<CaseMaterial>& others, const char* item,
                                                   const std::vector<const CaseMaterial*>& known)
    {
        QSet<const CaseMaterial*> taken;
        for (const CaseMaterial* partner : known)
            taken.insert(partner);
        QHash<QString, QVector<const CaseMaterial*>> free;
        for (auto other = others.rbegin(); other != others.rend(); ++other) {
            if (!taken.contains(&*other))
                free[other->text(item)].append(&*other);
        }
        std::vector<const CaseMaterial*> partners(materials.size());
        for (std::size_t i = 0; i < materials.size(); ++i) {
            const auto found = free.find(materials[i].text(item));
            const bool hasPartner = !known.empty() && known[i] != nullptr;
            if (!hasPartner && found != free.end() && !found->isEmpty())
                partners[i] = found->takeLast();
        }
        return partners;
    }

    void compareMaterial(const CaseMaterial& material, const CaseFile& other,
                         const CaseMaterial& otherMaterial)
    {
        for (const char* item : comparedOfMaterials) {
            const QString part = QLatin1String(item);
            const auto value = material.values.find(part);
            const auto otherValue = otherMaterial.values.find(part);
            if (value != material.values.end() && otherValue != otherMaterial.values.end()
                && value->second.value != otherValue->second.value)
                report(Rule::MaterialsDiffer, value->second, other, otherValue->second);
        }
    }

    void reportOnlyLater(const CaseMaterial& material, const CaseFile& other)
    {
        const Value& title = material.title();
        Discovery discovery {Rule::MaterialOnlyLater, title.place, title.address, title.value.toString()};
        discovery.details = QStringList {other.name, file_.name};
        listener_.finding(discovery);
    }

    /// Behind the last material, since it has no place in the file.
    void reportOnlyEarlier(const CaseMaterial& material, const CaseFile& other)
    {
        Place last;
        for (const auto& [part, value] : file_.materials.back().values) {
            if (value.place.offset > last.offset)
                last = value.place;
        }
        Discovery discovery {Rule::MaterialOnlyEarlier, last};
        discovery.details = QStringList {other.name, material.text("name"), file_.name};
        listener_.finding(discovery);
    }

    const std::vector<CaseFile>& earlier_;
    const CaseFile& file_;
    FindingListener& listener_;
};

/// Whether a load takes no number of the file for what it is.
bool isOfOtherByteOrder(const CheckedFile& checked)
{
    return std::any_of(checked.findings.begin(), checked.findings.end(), [](const Finding& finding) {
        return finding.code == QLatin1String(rowOf(Rule::ByteOrder).code);
    });
}

/// What the file says of the case; nothing if it is of no kind.
CaseFile caseFile(const InputFile& file, const CheckedFile& checked)
{
    CaseFile said;
    said.name = Util::toQString(checked.file);
    said.kind = checked.kind;
    const Walk walk = walkOf(checked.kind);
    if (file.isOpen() && walk != nullptr && !isOfOtherByteOrder(checked)) {
        CaseListener listener(said, checked.findings);
        walk(file, listener);
    }
    return said;
}

} // namespace

std::vector<CheckedFile> checkCase(const std::vector<std::string>& paths, const CheckOptions& options)
{
    std::vector<CheckedFile> files;
    std::vector<CaseFile> said;
    for (const std::string& path : paths) {
        const InputFile file(path);
        files.push_back(checkFile(file, options));
        const CaseFile current = caseFile(file, files.back());
        FindingListener listener;
        CaseComparison(said, current, listener).run();
        addFindings(files.back(), listener);
        said.push_back(current);
    }
    return files;
}

} // namespace Nereo::Inspection

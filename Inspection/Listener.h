#pragma once

#include "Rule.h"

#include <NereoInspection/Finding.h>
#include <NereoInspection/Outline.h>

#include <QString>
#include <QStringList>

#include <array>
#include <optional>
#include <vector>

namespace Nereo::Inspection {

/// What a walk has to say of a place.
struct Discovery {
    Rule rule;
    Place place;
    QString address = {};
    QString found = {};
    QStringList details = {};          ///< %2, %3 of the rule's texts
    std::optional<Effect> effect = {}; ///< what a load of this very file does, where the rule has another
    const QStringList* knownNames =
        nullptr;              ///< of which the one is offered that is nearest to what was found
    QString consequence = {}; ///< what a load then makes of what stands behind, as a part of a sentence
};

/// Hears what a walk says of a file: its values, or what is wrong with it.
class NEREOINSPECTION_EXPORT Listener {
public:
    virtual ~Listener();

    /// Whether anybody wants to know of the values; where nobody does, a walk needn't find them out.
    virtual bool wantsItems() const = 0;

    /// Whether anybody wants to know where things stand. Where nobody does, the offset of a place only says
    /// how far a text has been read, about, no length is told, and a spelling is without markup.
    virtual bool wantsPlaces() const { return true; }

    /// Whether anybody wants to know what is wrong. Where nobody does, only that has to be told which can't
    /// be read, and the values of a material may come when all of it has been read.
    virtual bool wantsFindings() const { return true; }

    virtual void item(const Item& item) = 0;

    /// The same of a value in a material, where the item has what is behind the material's part in the
    /// address.
    virtual void itemIn(const QString& part, const Item& item);

    virtual void finding(const Discovery& discovery) = 0;

    /// A material or a property begins: the values that it has follow, with addresses below this one.
    virtual void element(const QString&) {}

    /// What has been read as the name of the material of a database; the last of several counts.
    virtual void materialName(const QString&) {}

    /// Whether a value of a document has its offset in every encoding whose characters can be told apart.
    virtual bool wantsEveryOffset() const { return false; }

    /// True if a finding of the rule would only be counted, which then is done: where there are many, a walk
    /// needn't find out their places and texts.
    virtual bool onlyCounts(Rule) { return false; }
};

/// Hands the values on.
class ItemListener : public Listener {
public:
    explicit ItemListener(const ItemVisitor& visit) : visit_(visit) {}

    bool wantsItems() const override { return true; }
    bool wantsFindings() const override { return false; }
    void item(const Item& item) override { visit_(item); }
    void finding(const Discovery&) override {}
    bool onlyCounts(Rule) override { return true; }

private:
    const ItemVisitor& visit_;
};

/// Keeps the findings, the first thousand of each code.
class NEREOINSPECTION_EXPORT FindingListener : public Listener {
public:
    static constexpr qint64 mostOfACode = 1000;

    bool wantsItems() const override { return false; }
    void item(const Item&) override {}
    void finding(const Discovery& discovery) override;
    bool onlyCounts(Rule rule) override;

    /// All of them in the order of the file. Nothing may be found afterwards.
    std::vector<Finding> takeFindings();

private:
    struct CodeCount {
        const char* code;
        qint64 count;
    };

    qint64& countOf(const char* code);

    std::vector<Finding> findings_;
    std::vector<CodeCount> counts_;
};

/// Brings findings into the order of the file.
void sortByPlace(std::vector<Finding>& findings);

/// What findings show of a text of any length.
QString excerpt(QStringView text);

} // namespace Nereo::Inspection

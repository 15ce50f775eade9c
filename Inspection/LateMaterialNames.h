#pragma once

#include "Listener.h"
#include "MaterialNames.h"

#include <QHash>
#include <QString>

#include <optional>
#include <vector>

namespace Nereo::Inspection {

/// Stands between the walk over a material database and a listener that wants no findings: it holds what is
/// told of a material, with addresses from the slash on, until its end, when its name is known. So nobody has
/// to read the file for the names beforehand.
///
/// A material with very many values isn't held. Then the file is read for the names after all.
class LateMaterialNames : public Listener {
public:
    LateMaterialNames(const InputFile& file, Listener& listener)
        : file_(file), listener_(listener), room_(file)
    {
    }

    bool wantsItems() const override { return listener_.wantsItems(); }
    bool wantsPlaces() const override { return listener_.wantsPlaces(); }
    bool wantsFindings() const override { return false; }
    bool wantsEveryOffset() const override { return listener_.wantsEveryOffset(); }
    bool onlyCounts(Rule rule) override { return listener_.onlyCounts(rule); }
    void finding(const Discovery& discovery) override { listener_.finding(discovery); }

    void element(const QString& address) override; ///< an empty one is that of the next material
    void materialName(const QString& text) override { name_ = MaterialNames::nameOf(text); }
    void item(const Item& item) override;
    void endOfFile() { release(); }

private:
    /// What was told: an item, or where an element begins.
    struct Held {
        Item item;
        bool isElement;
    };

    void hold(const Item& item, bool isElement);
    void tell(const Held& held);
    void release();
    void readNames();
    void nameMaterial(const QString& part);
    QString partOfHeld();

    const InputFile& file_;
    Listener& listener_;
    std::optional<MaterialNames> names_; ///< where the file has been read for them
    NameRoom room_;
    QHash<QString, int> counts_; ///< how many materials were told of each name
    QString name_;               ///< of the material, as far as it has been read
    int place_ = 0;              ///< of the material, from 1
    bool isNamed_ = true;        ///< the material is, or there is none yet
    QString part_;               ///< of its addresses
    std::vector<Held> held_;
};

} // namespace Nereo::Inspection

#include "LateMaterialNames.h"

namespace Nereo::Inspection {

namespace {

constexpr std::size_t mostHeld = 1 << 16;
constexpr QLatin1Char slash('/');

} // namespace

void LateMaterialNames::element(const QString& address)
{
    if (!address.isEmpty()) {
        Item item;
        item.address = address;
        return hold(item, true);
    }
    release();
    ++place_;
    isNamed_ = false;
    name_.clear();
    if (names_)
        nameMaterial(names_->next().part);
}

void LateMaterialNames::item(const Item& item)
{
    if (item.address.startsWith(slash))
        return hold(item, false);
    release(); // it is none of a material
    listener_.item(item);
}

void LateMaterialNames::hold(const Item& item, bool isElement)
{
    if (isNamed_)
        return tell({item, isElement});
    held_.push_back({item, isElement});
    if (held_.size() == mostHeld)
        readNames();
}

void LateMaterialNames::tell(const Held& held)
{
    if (held.isElement)
        listener_.element(part_ + held.item.address);
    else
        listener_.itemIn(part_, held.item);
}

/// The material is through.
void LateMaterialNames::release()
{
    if (!isNamed_)
        nameMaterial(partOfHeld());
}

void LateMaterialNames::readNames()
{
    names_.emplace(file_);
    for (int i = 1; i < place_; ++i)
        names_->next();
    nameMaterial(names_->next().part);
}

void LateMaterialNames::nameMaterial(const QString& part)
{
    part_ = part;
    isNamed_ = true;
    listener_.element(part_);
    for (const Held& held : held_)
        tell(held);
    held_.clear();
}

QString LateMaterialNames::partOfHeld()
{
    const QString name = room_.take(name_) ? name_ : QString();
    return MaterialNames::partOf(keptText(name), name.isEmpty() ? 0 : ++counts_[name], place_);
}

} // namespace Nereo::Inspection

#include "Values.h"

namespace Nereo::Tool {

QString textOf(const Inspection::Item& item)
{
    using Type = Inspection::Item::Type;
    switch (item.type) {
    case Type::Field:
    case Type::Text: // without what the form writes for a character
        return item.value.toString();
    default:
        return item.spelling.trimmed();
    }
}

void Values::add(const Inspection::Item& item)
{
    const auto known = places_.constFind(item.address);
    if (known != places_.constEnd()) {
        values_[*known].text = textOf(item);
        return;
    }
    places_.insert(item.address, values_.size());
    values_.push_back({item.address, textOf(item)});
}

} // namespace Nereo::Tool

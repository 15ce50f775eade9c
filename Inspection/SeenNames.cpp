#include "SeenNames.h"

namespace Nereo::Inspection {

namespace {

/// FNV-1a, and what spreads its bits.
quint64 fingerprint(QStringView name)
{
    quint64 hash = 0xCBF29CE484222325U;
    for (const QChar character : name)
        hash = (hash ^ character.unicode()) * 0x100000001B3U;
    hash = (hash ^ hash >> 33) * 0xFF51AFD7ED558CCDU;
    hash = (hash ^ hash >> 33) * 0xC4CEB9FE1A85EC53U;
    hash ^= hash >> 33;
    return hash == 0 ? 1 : hash;
}

} // namespace

SeenNames::SeenNames(std::size_t mostRepeated) : mostRepeated_(mostRepeated) {}

int SeenNames::add(QStringView name)
{
    const quint64 hash = fingerprint(name);
    if (shards_[hash % shards_.size()].insert(hash))
        return 0;
    const auto counted = repeated_.find(hash);
    if (counted != repeated_.end())
        return ++counted->second;
    if (repeated_.size() < mostRepeated_)
        repeated_.emplace(hash, 1);
    return 1;
}

bool SeenNames::Shard::insert(quint64 name)
{
    if ((count_ + 1) * 8 > slots_.size() * 7)
        grow();
    const bool isNew = put(name);
    count_ += isNew;
    return isNew;
}

void SeenNames::Shard::grow()
{
    std::vector<quint64> names(slots_.size() + slots_.size() / 2 + 16);
    names.swap(slots_);
    for (const quint64 name : names) {
        if (name != 0)
            put(name);
    }
}

bool SeenNames::Shard::put(quint64 name)
{
    std::size_t at = name / 64 % slots_.size();
    for (; slots_[at] != 0; at = at + 1 == slots_.size() ? 0 : at + 1) {
        if (slots_[at] == name)
            return false;
    }
    slots_[at] = name;
    return true;
}

} // namespace Nereo::Inspection

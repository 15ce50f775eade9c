#include "SeenNames.h"

#include <cstddef>
#include <cstring>

namespace Nereo::Inspection {

namespace {

quint64 turned(quint64 bits, int by)
{
    return bits << by | bits >> (64 - by);
}

/// MurmurHash3, with one half of its state: four characters at a time, and what spreads their bits.
quint64 fingerprint(QStringView name)
{
    constexpr int atOnce = sizeof(quint64) / sizeof(QChar);
    auto hash = quint64(name.size());
    const auto add = [&hash](quint64 characters) {
        hash ^= turned(characters * 0x87C37B91114253D5U, 31) * 0x4CF5AD432745937FU;
        hash = turned(hash, 27) * 5 + 0x52DCE729U;
    };
    quint64 characters = 0;
    for (; name.size() >= atOnce; name = name.mid(atOnce)) {
        std::memcpy(&characters, name.data(), sizeof characters);
        add(characters);
    }
    characters = 0;
    for (const QChar character : name)
        characters = characters << 16 | character.unicode();
    add(characters);
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

bool Fingerprints::insert(quint64 name)
{
    if ((count_ + 1) * 4 > slots_.size() * 3) // with fewer free ones a search takes long
        grow();
    const bool isNew = put(name);
    count_ += isNew;
    return isNew;
}

void Fingerprints::grow()
{
    std::vector<quint64> names(slots_.size() + slots_.size() / 2 + 16);
    names.swap(slots_);
    for (const quint64 name : names) {
        if (name != 0)
            put(name);
    }
}

bool Fingerprints::put(quint64 name)
{
    // The upper half of the bits chooses the slot without a division; the lowest have chosen the shard.
    auto slot = std::size_t((name >> 32) * slots_.size() >> 32);
    while (slots_[slot] != 0 && slots_[slot] != name) // some are always free
        slot = slot + 1 == slots_.size() ? 0 : slot + 1;
    const bool isNew = slots_[slot] == 0;
    slots_[slot] = name;
    return isNew;
}

NameCount::NameCount() : shards_(64) {}

void NameCount::add(QStringView name)
{
    const quint64 hash = fingerprint(name);
    Shard& shard = shards_[hash % shards_.size()];
    shard.added[shard.addedCount++] = hash;
    if (shard.addedCount == shard.added.size())
        count(shard);
}

qint64 NameCount::count()
{
    for (Shard& shard : shards_)
        count(shard);
    return count_;
}

void NameCount::count(Shard& shard)
{
    for (std::size_t i = 0; i < shard.addedCount; ++i)
        count_ += shard.known.insert(shard.added[i]);
    shard.addedCount = 0;
}

} // namespace Nereo::Inspection

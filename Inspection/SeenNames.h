#pragma once

#include <NereoInspection/Export.h>

#include <QStringView>
#include <QtGlobal>

#include <array>
#include <limits>
#include <unordered_map>
#include <vector>

namespace Nereo::Inspection {

/// Numbers of 64 bits that stand for names; 0 stands for none.
class Fingerprints {
public:
    bool insert(quint64 name); ///< false if it is there

private:
    void grow();
    bool put(quint64 name);

    std::vector<quint64> slots_; // 0 where there is none
    std::size_t count_ = 0;
};

/// The names of a file that may hold millions of them. Names are told apart by 64 bits each, so that they
/// take less room than they do in the file.
class NEREOINSPECTION_EXPORT SeenNames {
public:
    /// How often a name stood before is counted for so many names; of a further one it is known only whether
    /// it did.
    explicit SeenNames(std::size_t mostRepeated = std::numeric_limits<std::size_t>::max());

    /// How often the name has come before.
    int add(QStringView name);

private:
    std::array<Fingerprints, 64> shards_; // one grows at a time
    std::unordered_map<quint64, int> repeated_;
    std::size_t mostRepeated_;
};

/// Counts such names, each once. Nobody hears at once whether a name is new, so that many can be looked for
/// together: one after the other the processor waits for memory longest.
class NEREOINSPECTION_EXPORT NameCount {
public:
    NameCount();

    void add(QStringView name);
    qint64 count(); ///< how many different names were added

private:
    struct Shard {
        Fingerprints known;
        std::array<quint64, 64> added {};
        std::size_t addedCount = 0;
    };

    void count(Shard& shard);

    std::vector<Shard> shards_;
    qint64 count_ = 0;
};

} // namespace Nereo::Inspection

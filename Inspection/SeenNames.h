#pragma once

#include <NereoInspection/Export.h>

#include <QStringView>
#include <QtGlobal>

#include <array>
#include <limits>
#include <unordered_map>
#include <vector>

namespace Nereo::Inspection {

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
    class Shard {
    public:
        bool insert(quint64 name); ///< false if it is there

    private:
        void grow();
        bool put(quint64 name);

        std::vector<quint64> slots_; // 0 where there is none
        std::size_t count_ = 0;
    };

    std::array<Shard, 64> shards_; // one grows at a time
    std::unordered_map<quint64, int> repeated_;
    std::size_t mostRepeated_;
};

} // namespace Nereo::Inspection

#pragma once

#include <NereoInspection/Export.h>

#include <QtGlobal>

#include <algorithm>
#include <utility>
#include <vector>

namespace Nereo::Inspection {

/// Where nodes have their values in an array: each at its number less one, or, where a file announces many
/// more nodes than it has records, those that have one close together.
class NodePlaces {
public:
    static constexpr int none = -1;

    explicit NodePlaces(int nodeCount) : count_(nodeCount) {}

    /// For these nodes only, which ascend.
    explicit NodePlaces(std::vector<int> nodes)
        : nodes_(std::move(nodes)), count_(int(nodes_.size())), isForSome_(true)
    {
    }

    int count() const { return count_; }
    qint64 bytes() const { return qint64(nodes_.capacity()) * qint64(sizeof(int)); }

    int placeOf(int node) const
    {
        if (!isForSome_)
            return node < 1 || node > count_ ? none : node - 1;
        const auto found = std::lower_bound(nodes_.begin(), nodes_.end(), node);
        return found == nodes_.end() || *found != node ? none : int(found - nodes_.begin());
    }

    int nodeAt(int place) const { return isForSome_ ? nodes_[std::size_t(place)] : place + 1; }

    /// How many nodes up to the given one have a place.
    int countUpTo(int node) const
    {
        if (!isForSome_)
            return std::min(node, count_);
        return int(std::upper_bound(nodes_.begin(), nodes_.end(), node) - nodes_.begin());
    }

private:
    std::vector<int> nodes_;
    int count_;
    bool isForSome_ = false;
};

} // namespace Nereo::Inspection

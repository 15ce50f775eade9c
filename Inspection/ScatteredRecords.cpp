#include "ScatteredRecords.h"

#include "FreeMemory.h"

#include <algorithm>
#include <array>

namespace Nereo::Inspection {

namespace {

constexpr int longestRun = FieldComparison::longestRun;
constexpr qint64 bytesOfPair = 2 * sizeof(double); // a value of each file

qint64 limitOf(const ComparisonOptions& options)
{
    constexpr qint64 share = 4;
    return options.memoryLimit == ComparisonOptions::quarterOfFreeMemory ? freeMemory() / share
                                                                         : options.memoryLimit;
}

} // namespace

ScatteredRecords::ScatteredRecords(ResultsPair& pair) : pair_(pair), places_(findPlaces()) {}

bool ScatteredRecords::compare()
{
    if (places_.count() == 0)
        return true;
    if (!divide())
        return false;
    expectReadings();
    for (std::size_t field = 0; field < pair_.fields.size(); field += fieldsAtOnce_)
        compareBatch(field);
    return true;
}

/// A small file may announce any number of nodes.
NodePlaces ScatteredRecords::findPlaces()
{
    constexpr int few = 1 << 16;
    constexpr qint64 mostForARecord = 16;
    const qint64 records = qint64(recordsThere(pair_.a.header())) + recordsThere(pair_.b.header());
    if (pair_.a.nodeCount() <= few + mostForARecord * records)
        return NodePlaces(pair_.a.nodeCount());
    std::vector<int> nodes;
    nodes.reserve(std::size_t(records));
    addNodes(pair_.a, nodes);
    addNodes(pair_.b, nodes);
    std::sort(nodes.begin(), nodes.end());
    nodes.erase(std::unique(nodes.begin(), nodes.end()), nodes.end());
    return NodePlaces(std::move(nodes));
}

/// Those that A announces: values of others are compared with none, and count for no peak.
void ScatteredRecords::addNodes(const ResultsSide& side, std::vector<int>& nodes)
{
    RecordStream records(side.file, side.header(), {}, pair_.recordsInBlock());
    const auto takeNodes = [&](const int* numbers, int count) {
        std::copy_if(numbers, numbers + count, std::back_inserter(nodes),
                     [this](int node) { return node >= 1 && node <= pair_.a.nodeCount(); });
    };
    while (const int count = pair_.readBlock(records))
        records.turn(0, count, takeNodes, {});
}

bool ScatteredRecords::divide()
{
    const qint64 limit = limitOf(pair_.options);
    const qint64 besides = pair_.bytesOfBlocks() + places_.bytes();
    const qint64 pairs = (limit - besides) / bytesOfPair;
    if (pairs < std::min(places_.count(), longestRun)) {
        return pair_.end(Comparison::Outcome::OverLimit, {},
                         QStringLiteral("the comparison needs %1 bytes of memory, and may take %2")
                             .arg(besides + bytesOfPair * longestRun)
                             .arg(limit));
    }
    const qint64 fieldsThatFit = std::max(pairs / places_.count(), qint64(1));
    fieldsAtOnce_ = std::size_t(std::min(fieldsThatFit, qint64(pair_.fields.size())));
    placesAtOnce_ = int(std::min(pairs / qint64(fieldsAtOnce_), qint64(places_.count())));
    return true;
}

void ScatteredRecords::expectReadings()
{
    const auto timesOf = [](qint64 all, qint64 atOnce) { return (all + atOnce - 1) / atOnce; };
    const qint64 parts =
        timesOf(qint64(pair_.fields.size()), qint64(fieldsAtOnce_)) * timesOf(places_.count(), placesAtOnce_);
    const qint64 bytesOfA = pair_.a.bytesOfRecords() * (pair_.options.peak ? 2 : 1);
    pair_.expectBytes(parts * (bytesOfA + pair_.b.bytesOfRecords()));
}

template <class Use>
void ScatteredRecords::forEachPart(std::size_t firstField, Use use)
{
    const std::size_t fieldCount = std::min(fieldsAtOnce_, pair_.fields.size() - firstField);
    for (qint64 first = 0; first < places_.count(); first += placesAtOnce_)
        use({firstField, fieldCount, int(first),
             int(std::min(places_.count() - first, qint64(placesAtOnce_)))});
}

void ScatteredRecords::compareBatch(std::size_t firstField)
{
    if (pair_.options.peak) {
        forEachPart(firstField, [this](const Part& part) {
            read(pair_.a, &ComparedField::columnInA, part, a_);
            for (std::size_t i = 0; i < part.fieldCount; ++i) {
                pair_.fields[part.firstField + i].comparison.addToPeak(&a_[i * std::size_t(part.placeCount)],
                                                                       part.placeCount);
            }
        });
        for (std::size_t i = firstField; i < std::min(firstField + fieldsAtOnce_, pair_.fields.size()); ++i)
            pair_.fields[i].comparison.usePeak();
    }
    forEachPart(firstField, [this](const Part& part) {
        read(pair_.a, &ComparedField::columnInA, part, a_);
        read(pair_.b, &ComparedField::columnInB, part, b_);
        comparePart(part);
    });
}

/// Of a node with several records the last one stays.
void ScatteredRecords::read(const ResultsSide& side, int ComparedField::*column, const Part& part,
                            std::vector<double>& values)
{
    values.assign(part.fieldCount * std::size_t(part.placeCount), 0.0);
    RecordStream records(side.file, side.header(), pair_.columns(column, part.firstField, part.fieldCount),
                         pair_.recordsInBlock());
    std::array<int, longestRun> placesInRun;
    int countInRun = 0;
    const auto takeNodes = [&](const int* nodes, int count) {
        countInRun = count;
        for (int i = 0; i < count; ++i) {
            const bool isThere = nodes[i] <= side.nodeCount();
            placesInRun[std::size_t(i)] =
                isThere ? places_.placeOf(nodes[i]) - part.firstPlace : NodePlaces::none;
        }
    };
    const auto takeColumn = [&](std::size_t index, const double* column) {
        double* const field = &values[index * std::size_t(part.placeCount)];
        for (int i = 0; i < countInRun; ++i) {
            const int place = placesInRun[std::size_t(i)];
            if (place >= 0 && place < part.placeCount)
                field[place] = column[i];
        }
    };
    while (const int count = pair_.readBlock(records))
        records.turn(0, count, takeNodes, takeColumn);
}

void ScatteredRecords::comparePart(const Part& part)
{
    const int common =
        std::clamp(places_.countUpTo(pair_.commonNodes()) - part.firstPlace, 0, part.placeCount);
    std::array<int, longestRun> nodes;
    for (int first = 0; first < common; first += longestRun) {
        const int count = std::min(common - first, longestRun);
        for (int i = 0; i < count; ++i)
            nodes[std::size_t(i)] = places_.nodeAt(part.firstPlace + first + i);
        for (std::size_t i = 0; i < part.fieldCount; ++i) {
            const std::size_t begin = i * std::size_t(part.placeCount) + std::size_t(first);
            pair_.fields[part.firstField + i].comparison.add(&a_[begin], &b_[begin], nodes.data(), count);
        }
    }
    for (std::size_t i = 0; common < part.placeCount && i < part.fieldCount; ++i) {
        const std::size_t begin = i * std::size_t(part.placeCount) + std::size_t(common);
        pair_.fields[part.firstField + i].comparison.addToPeak(&a_[begin], part.placeCount - common);
    }
}

} // namespace Nereo::Inspection

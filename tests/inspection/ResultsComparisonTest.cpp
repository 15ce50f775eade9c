#include "support/Bits.h"
#include "support/PlainResults.h"
#include "support/ResultsBytes.h"
#include "support/TemporaryFolder.h"

#include <Inspection/FieldComparison.h>
#include <Inspection/FieldList.h>
#include <Inspection/FreeMemory.h>
#include <Inspection/NodePlaces.h>
#include <NereoFileIO/CodeNameTable.h>
#include <NereoInspection/Comparison.h>

#include <gtest/gtest.h>

#include <QFile>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>
#include <utility>

namespace Nereo::Inspection {
namespace {

using Outcome = Comparison::Outcome;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

Comparison comparedBytes(const QByteArray& a, const QByteArray& b, const ComparisonOptions& options = {})
{
    const TemporaryFolder folder;
    const std::string other = folder.write("b.res", b.toStdString());
    return compare(folder.write("a.res", a.toStdString()), other, options);
}

/// What differs, a line each.
std::string compared(const QByteArray& a, const QByteArray& b, const ComparisonOptions& options = {})
{
    const Comparison comparison = comparedBytes(a, b, options);
    EXPECT_EQ(comparison.outcome, Outcome::Compared) << comparison.message.toStdString();
    return toText(comparison).toStdString();
}

ResultsBytes started(int nodes, std::initializer_list<const char*> names,
                     QDataStream::ByteOrder order = QDataStream::LittleEndian)
{
    return ResultsBytes(order).header(nodes).run().names(names);
}

TEST(ResultsComparisonTest, ComparesFieldsThatNobodyKnowsByTheirNames)
{
    const QByteArray a = started(1, {"kU", "Unheard", "Other"}).record(1, {1, 2, 3});
    const QByteArray b = started(1, {"Other", "kU", "Unheard"}).record(1, {3, 1, 4});
    EXPECT_EQ(compared(a, a), "");
    EXPECT_EQ(compared(a, b), "Unheard: 1 value differs by 2 (node 1: 2 -> 4), 100% of the peak, rms 2\n");
    ComparisonOptions options;
    options.fields = {"Other"};
    EXPECT_EQ(compared(a, b, options), "");
}

TEST(ResultsComparisonTest, FindsNoDifferenceWhereThereIsNone)
{
    const QByteArray little = started(2, {"kU", "kP"}).record(1, {1, nan}).record(2, {0.0, -infinity});
    const QByteArray big =
        started(2, {"kU", "kP"}, QDataStream::BigEndian).record(1, {1, nan}).record(2, {-0.0, -infinity});
    const QByteArray otherColumns =
        started(2, {"kP", "kU"}).record(2, {-infinity, 0}).record(1, {-nan, 1}); // and another order
    EXPECT_EQ(compared(little, little), "");
    EXPECT_EQ(compared(little, big), "");
    EXPECT_EQ(compared(big, little), "");
    EXPECT_EQ(compared(little, otherColumns), "");
    EXPECT_EQ(compared(otherColumns, big), "");
}

TEST(ResultsComparisonTest, ComparesFactsButTheDate)
{
    const auto facts = [](const char* date, const char* title, int elements, double time) {
        return QByteArray(ResultsBytes()
                              .integer(2023)
                              .integer(1)
                              .integer(7)
                              .text(date, 26)
                              .text(title, 256)
                              .integer(1)
                              .integer(elements)
                              .integer(-1)
                              .integer(500)
                              .integer(100)
                              .integer(8)
                              .integer(3)
                              .number(time)
                              .number(0.125)
                              .integer(-1)
                              .names({"kU"})
                              .record(1, {1}));
    };
    const QByteArray a = facts("2024-05-18", "cavity", 5, 1.25);
    EXPECT_EQ(compared(a, facts("2025-01-01", "cavity", 5, 1.25)), "");
    EXPECT_EQ(compared(a, facts("", "cave", 6, 1.5)),
              "title: cavity -> cave\nelements: 5 -> 6\ntime: 1.25 -> 1.5\n");

    ComparisonOptions options;
    options.absolute = 0.25;
    EXPECT_EQ(compared(a, facts("", "cavity", 5, 1.5), options), "");
    options.fields = {"kU"}; // the facts are compared anyway
    EXPECT_EQ(compared(a, facts("", "cavity", 6, 1.25), options), "elements: 5 -> 6\n");
}

TEST(ResultsComparisonTest, SaysHowFarFieldsDifferTheWorstFirst)
{
    const QByteArray a = started(4, {"kU", "kP", "kT"})
                             .record(1, {1, 100, 1})
                             .record(2, {2, -200, 1})
                             .record(3, {3, 0, 1})
                             .record(4, {4, 0, 1});
    const QByteArray b = started(4, {"kU", "kP", "kT"})
                             .record(1, {1, 100, 1})
                             .record(2, {2, -198, 1})
                             .record(3, {1, 0, 1})
                             .record(4, {2, 0, 1});
    const Comparison comparison = comparedBytes(a, b);
    ASSERT_EQ(comparison.differences.size(), 2U);
    EXPECT_EQ(comparison.differences[0].address, "kU");
    const FieldDifference& field = *comparison.differences[0].field;
    EXPECT_EQ(field.count, 2);
    EXPECT_EQ(field.largest, 2);
    EXPECT_EQ(field.node, 3); // the smaller of two
    EXPECT_EQ(field.a, 3);
    EXPECT_EQ(field.b, 1);
    EXPECT_EQ(field.peak, 4);
    EXPECT_EQ(field.peakShare, 0.5);
    EXPECT_EQ(field.rms, std::sqrt(2.0)); // of all nodes
    EXPECT_EQ(toText(comparison),
              "kU: 2 values differ by up to 2 (node 3: 3 -> 1), 50% of the peak, rms 1.414\n"
              "kP: 1 value differs by 2 (node 2: -200 -> -198), 1% of the peak, rms 1\n");
    EXPECT_EQ(toJson(comparison), R"({
    "differences": [
        {
            "a": 3,
            "address": "kU",
            "b": 1,
            "count": 2,
            "largest": 2,
            "node": 3,
            "peakShare": 0.5,
            "rms": 1.4142135623730951
        },
        {
            "a": -200,
            "address": "kP",
            "b": -198,
            "count": 1,
            "largest": 2,
            "node": 2,
            "peakShare": 0.01,
            "rms": 1
        }
    ],
    "same": false
}
)");
}

/// What becomes of the one value of a field in each file.
struct ValueCase {
    double a;
    double b;
    std::optional<double> absolute;
    std::optional<double> relative;
    std::optional<double> peak; ///< of 8
    bool differ;
};

TEST(ResultsComparisonTest, AllowsValuesTheirTolerances)
{
    const ValueCase cases[] = {
        {1,        1,         {},       {},       {},       false},
        {0.0,      -0.0,      {},       {},       {},       false},
        {1,        1.5,       {},       {},       {},       true },
        {1,        1.5,       0.5,      {},       {},       false},
        {1,        1.75,      0.5,      {},       {},       true },
        {-4,       -3,        {},       0.25,     {},       false},
        {-4,       -2.75,     {},       0.25,     {},       true },
        {1,        2,         {},       {},       0.125,    false},
        {1,        2.5,       {},       {},       0.125,    true },
        {1,        2.5,       0.5,      0.25,     0.25,     false}, // one that isn't exceeded is enough
        {1,        2.5,       0.5,      0.75,     0.125,    false},
        {1,        2.5,       2,        0.25,     0.125,    false},
        {1,        2.5,       1,        0.25,     0.125,    true },
        {1,        2,         0.0,      0.0,      0.0,      true },
        {1,        1,         -1.0,     -1.0,     -1.0,     false},
        {1,        2,         nan,      nan,      nan,      true },
        {1,        2,         infinity, {},       {},       false},
        {nan,      nan,       {},       {},       {},       false},
        {nan,      -nan,      {},       {},       {},       false},
        {nan,      1,         infinity, infinity, infinity, true },
        {1,        nan,       {},       {},       {},       true },
        {infinity, infinity,  {},       {},       {},       false},
        {infinity, -infinity, infinity, infinity, infinity, true },
        {infinity, 1e308,     infinity, {},       {},       true },
        {infinity, nan,       {},       {},       {},       true },
        {1e308,    -1e308,    1e308,    {},       {},       true },
        {5e-324,   0,         {},       {},       {},       true },
    };
    for (const auto& [valueA, valueB, absolute, relative, peak, differ] : cases) {
        ComparisonOptions options;
        options.absolute = absolute;
        options.relative = relative;
        options.peak = peak;
        for (const bool isInOrder : {true, false}) {
            const QByteArray a = started(3, {"kU"}).record(1, {valueA}).record(2, {8}).record(3, {0});
            const QByteArray b = isInOrder
                ? started(3, {"kU"}).record(1, {valueB}).record(2, {8}).record(3, {0}).bytes()
                : started(3, {"kU"}).record(3, {0}).record(2, {8}).record(1, {valueB}).bytes();
            EXPECT_EQ(comparedBytes(a, b, options).differences.size(), std::size_t(differ))
                << valueA << ' ' << valueB << ' ' << isInOrder;
        }
    }
}

TEST(ResultsComparisonTest, TellsWhatIsNotFinite)
{
    const auto lineOf = [](double a, double b) {
        return compared(started(2, {"kU"}).record(1, {a}).record(2, {0}),
                        started(2, {"kU"}).record(1, {b}).record(2, {0}));
    };
    EXPECT_EQ(lineOf(1, nan), "kU: 1 value differs by inf (node 1: 1 -> nan), inf% of the peak, rms inf\n");
    EXPECT_EQ(lineOf(infinity, 1),
              "kU: 1 value differs by inf (node 1: inf -> 1), inf% of the peak, rms inf\n");
    EXPECT_EQ(lineOf(0, 1), "kU: 1 value differs by 1 (node 1: 0 -> 1), inf% of the peak, rms 0.7071\n");
    const QByteArray json =
        toJson(comparedBytes(started(1, {"kU"}).record(1, {1}), started(1, {"kU"}).record(1, {nan})));
    EXPECT_TRUE(json.contains("\"b\": null")) << json.toStdString();
    EXPECT_TRUE(json.contains("\"largest\": null"));
    EXPECT_TRUE(json.contains("\"peakShare\": null"));
    EXPECT_TRUE(json.contains("\"rms\": null"));
}

TEST(ResultsComparisonTest, TellsOfFieldsInOneFileOnly)
{
    const QByteArray a = started(1, {"kU", "kP", "odd", "kU", "odd"}).record(1, {1, 2, 3, 4, 5});
    const QByteArray b = started(1, {"kT", "odd", "kU"}).record(1, {2, 3.5, 1.5});
    EXPECT_EQ(compared(a, b),
              "kU: 1 value differs by 0.5 (node 1: 1 -> 1.5), 50% of the peak, rms 0.5\n"
              "odd: 1 value differs by 0.5 (node 1: 3 -> 3.5), 16.67% of the peak, rms 0.5\n"
              "- kP: 1 values\n"
              "- kU#2: 1 values\n"
              "- odd#2: 1 values\n"
              "+ kT: 1 values\n");
    EXPECT_EQ(compared(a, a), "");
    const QByteArray json = toJson(comparedBytes(started(7, {}), started(7, {"kT"})));
    EXPECT_TRUE(json.contains("\"a\": null"));
    EXPECT_TRUE(json.contains("\"b\": \"7 values\"")) << json.toStdString();
}

TEST(ResultsComparisonTest, KnowsAFieldByAnyOfItsNames)
{
    EXPECT_EQ(compared(started(1, {"kCond"}).record(1, {1}), started(1, {"kKXX"}).record(1, {2})),
              "kCond: 1 value differs by 1 (node 1: 1 -> 2), 100% of the peak, rms 1\n");
    // One that is named like a code is another one.
    EXPECT_EQ(compared(started(1, {"kU", " 1", "1", "/1"}).record(1, {1, 2, 3, 4}),
                       started(1, {"/1", "1", " 1", "kU"}).record(1, {4, 3, 2, 1})),
              "");
}

TEST(ResultsComparisonTest, ListsSoManyFieldsThatNobodyKnows)
{
    constexpr int most = Io::ResultsFileHeader::mostFieldsListed;
    ResultsBytes bytes;
    bytes.header(1).run().integer(most + 3);
    for (int i = 0; i <= most; ++i)
        bytes.text("f" + std::to_string(i), 21);
    bytes.text("kU", 21).text("other", 21).integer(0);
    const TemporaryFolder folder;
    const FieldList list(InputFile(folder.write("file.res", QByteArray(bytes).toStdString())));
    ASSERT_EQ(list.fields.size(), std::size_t(most) + 1);
    EXPECT_EQ(list.fields[most - 1].address, QString("f%1").arg(most - 1));
    EXPECT_EQ(list.fields[most].address, "kU"); // known fields are listed wherever they stand
    EXPECT_EQ(list.fields[most].column, most + 1);
}

TEST(ResultsComparisonTest, ComparesChosenFields)
{
    const QByteArray a = started(1, {"kU", "kP", "odd"}).record(1, {1, 2, 3});
    const QByteArray b = started(1, {"kU", "kT", "odd"}).record(1, {2, 3, 4});
    const auto addresses = [&](std::vector<std::string> fields) {
        ComparisonOptions options;
        options.fields = std::move(fields);
        std::string all;
        for (const Difference& difference : comparedBytes(a, b, options).differences)
            all += difference.address.toStdString() + ' ';
        return all;
    };
    EXPECT_EQ(addresses({}), "kU odd kP kT ");
    EXPECT_EQ(addresses({"kU"}), "kU ");
    EXPECT_EQ(addresses({"odd", "kT"}), "odd kT ");

    ComparisonOptions options;
    options.fields = {"kU", "kW"};
    const Comparison comparison = comparedBytes(a, b, options);
    EXPECT_EQ(comparison.outcome, Outcome::NoSuchField);
    EXPECT_EQ(comparison.message, "neither file has a field \"kW\"");
    EXPECT_EQ(comparison.file, "");
    options.fields = {"Unheard"};
    EXPECT_EQ(comparedBytes(a, b, options).message, "neither file has a field \"Unheard\"");
    options.fields = {"kKXX"};
    EXPECT_EQ(compared(started(1, {"kU", "kCond"}).record(1, {1, 2}),
                       started(1, {"kU", "kCond"}).record(1, {2, 3}), options),
              "kCond: 1 value differs by 1 (node 1: 2 -> 3), 50% of the peak, rms 1\n");
}

TEST(ResultsComparisonTest, TellsOfNodesInOneFileOnly)
{
    const QByteArray two = started(2, {"kU"}).record(1, {1}).record(2, {-2});
    const QByteArray three = started(3, {"kU"}).record(1, {1}).record(2, {-2}).record(3, {8});
    EXPECT_EQ(compared(two, three), "nodes: 2 -> 3\n");
    EXPECT_EQ(compared(three, two), "nodes: 3 -> 2\n");
    // They count for the peak.
    const QByteArray other = started(2, {"kU"}).record(1, {2}).record(2, {-2});
    EXPECT_EQ(compared(three, other),
              "nodes: 3 -> 2\nkU: 1 value differs by 1 (node 1: 1 -> 2), 12.5% of the peak, rms 0.7071\n");
    const QByteArray shuffled = started(2, {"kU"}).record(2, {-2}).record(1, {2});
    EXPECT_EQ(compared(three, shuffled), compared(three, other));
}

TEST(ResultsComparisonTest, ReadsWhatIsMissingAsALoadDoes)
{
    const QByteArray whole = started(3, {"kU", "kP"}).record(1, {1, 0}).record(2, {2, 0}).record(3, {0, 3});
    const QByteArray cut = whole.left(whole.size() - 8);
    const QByteArray shorter = whole.left(whole.size() - 20);
    const QByteArray inNumber = whole.left(whole.size() - 18);
    const QByteArray onlyNames = started(3, {"kU", "kP"});
    EXPECT_EQ(compared(whole, cut),
              "kP: 1 value differs by 3 (node 3: 3 -> 0), 100% of the peak, rms 1.732\n");
    EXPECT_EQ(compared(cut, whole),
              "kP: 1 value differs by 3 (node 3: 0 -> 3), inf% of the peak, rms 1.732\n");
    EXPECT_EQ(compared(whole, shorter), compared(whole, cut));
    EXPECT_EQ(compared(whole, inNumber), compared(whole, cut));
    EXPECT_EQ(compared(shorter, cut), "");
    EXPECT_EQ(comparedBytes(whole, onlyNames).differences.size(), 2U);
    EXPECT_EQ(comparedBytes(onlyNames, whole).differences.size(), 2U);
    EXPECT_EQ(compared(onlyNames, onlyNames), "");

    // Node 2 has no record, node 1 has two, of which the last one counts.
    const QByteArray repeated =
        started(3, {"kU", "kP"}).record(1, {9, 9}).record(3, {0, 3}).record(1, {1, 0});
    EXPECT_EQ(compared(whole, repeated),
              "kU: 1 value differs by 2 (node 2: 2 -> 0), 100% of the peak, rms 1.155\n");
    EXPECT_EQ(compared(repeated, repeated), "");
    const QByteArray twice = started(2, {"kU"}).record(1, {1}).record(1, {2});
    const QByteArray twiceToo = started(2, {"kU"}).record(1, {5}).record(1, {2});
    EXPECT_EQ(compared(twice, twiceToo), "");

    // Nodes that aren't announced don't count.
    const QByteArray outside =
        started(3, {"kU", "kP"}).record(0, {7, 7}).record(4, {7, 7}).record(-5, {7, 7});
    EXPECT_EQ(compared(outside, onlyNames), "");
    EXPECT_EQ(compared(onlyNames, outside), "");
    const QByteArray mixed =
        started(5, {"kU"}).record(3, {1}).record(7, {5}).record(1, {2}).record(-1, {5}).record(2, {3});
    const QByteArray otherMix =
        started(5, {"kU"}).record(2, {3}).record(1, {2}).record(9, {1}).record(3, {1}).record(0, {4});
    EXPECT_EQ(compared(mixed, otherMix), "");
    EXPECT_EQ(compared(outside, outside), "");
}

TEST(ResultsComparisonTest, IsNotMisledByCounts)
{
    const int most = std::numeric_limits<int>::max();
    const auto announcing = [](int nodes, int fields) {
        return QByteArray(
            ResultsBytes().header(nodes).run().integer(fields).text("kU", 21).integer(0).record(7, {1}));
    };
    const struct {
        const char* what;
        QByteArray a;
        QByteArray b;
    } cases[] = {
        {"all nodes that there may be",  announcing(most,             1),              announcing(most,     1)   },
        {"another number of them",       announcing(most,             1),              announcing(most - 1, 1)   },
        {"none",                         announcing(0,                1),              announcing(most,     1)   },
        {"fewer than none",              announcing(-1,               1),              announcing(most,     1)   },
        {"all fields that there may be", announcing(7,                most),           announcing(7,        most)},
        {"fewer than none of them",      announcing(7,                -1),             announcing(7,        1)   },
        {"only a header",                ResultsBytes().header(most), announcing(most, 1)                 },
        {"an end in the names",                  announcing(7,                1).left(360),    announcing(7,        1).left(360)     },
    };
    for (const auto& [what, a, b] : cases) {
        EXPECT_EQ(comparedBytes(a, b).outcome, Outcome::Compared) << what;
        EXPECT_EQ(comparedBytes(b, a).outcome, Outcome::Compared) << what;
        EXPECT_TRUE(comparedBytes(a, a).areSame()) << what;
    }
    const QByteArray scattered =
        started(most, {"kU"}).record(most, {3}).record(5, {1}).record(5, {2}).record(1'000'000, {4});
    const QByteArray other = started(most, {"kU"}).record(5, {2}).record(most, {1});
    EXPECT_EQ(compared(scattered, other),
              "kU: 2 values differ by up to 4 (node 1000000: 4 -> 0), 100% of the peak, rms 9.651e-05\n");
}

// Against a second, plain comparison

/// What the fields of two files come to, straight down from what it means.
class PlainComparison {
public:
    PlainComparison(const QByteArray& a, const QByteArray& b, const ComparisonOptions& options)
        : a_(a), b_(b), options_(options)
    {
        const int nodes = std::min(a_.recordsAnnounced(), b_.recordsAnnounced());
        for (const auto& [code, column] : a_.columns()) {
            if (b_.columns().count(code) != 0)
                compareField(code, nodes);
        }
    }

    const std::map<QString, FieldDifference>& fields() const { return fields_; }

private:
    void compareField(int code, int nodes)
    {
        FieldDifference difference;
        for (const double value : a_.values(code, 1, a_.recordsAnnounced(), 0)) {
            if (std::isfinite(value))
                difference.peak = std::max(difference.peak, std::fabs(value));
        }
        const QVector<double> a = a_.values(code, 1, nodes, 0);
        const QVector<double> b = b_.values(code, 1, nodes, 0);
        long double squares = 0;
        for (int i = 0; i < nodes; ++i) {
            const double distance = distanceBetween(a[i], b[i]);
            squares += static_cast<long double>(distance) * distance;
            if (!isFarther(distance, a[i], b[i], difference.peak))
                continue;
            if (difference.count++ == 0 || distance > difference.largest) {
                difference.largest = distance;
                difference.node = i + 1;
                difference.a = a[i];
                difference.b = b[i];
            }
        }
        difference.peakShare = difference.largest / difference.peak;
        difference.rms = double(std::sqrt(squares / nodes));
        if (difference.count > 0)
            fields_.emplace(Io::CodeNameTable::instance().nameForCode(code, false), difference);
    }

    static double distanceBetween(double a, double b)
    {
        if (std::isnan(a) || std::isnan(b))
            return std::isnan(a) && std::isnan(b) ? 0 : infinity;
        return a == b ? 0 : std::fabs(a - b);
    }

    bool isFarther(double distance, double a, double b, double peak) const
    {
        if (!std::isfinite(a) || !std::isfinite(b))
            return distance > 0;
        return distance > options_.absolute.value_or(0)
            && distance > options_.relative.value_or(0) * std::max(std::fabs(a), std::fabs(b))
            && distance > options_.peak.value_or(0) * peak;
    }

    PlainResults a_;
    PlainResults b_;
    ComparisonOptions options_;
    std::map<QString, FieldDifference> fields_;
};

/// Makes two files that are mostly alike.
class RandomPair {
public:
    explicit RandomPair(unsigned seed) : random_(seed)
    {
        const int nodes = number(1, oneIn(4) ? 600 : 20);
        std::vector<const char*> names = {"kU", "kV", "kW", "kP", "kT", "kKin", "kDiss", "odd"};
        names.resize(std::size_t(number(1, 8)));
        std::vector<int> order(static_cast<std::size_t>(nodes));
        for (std::size_t i = 0; i < order.size(); ++i)
            order[i] = int(i) + 1;
        if (oneIn(3))
            std::shuffle(order.begin(), order.end(), random_);
        values_.resize(order.size() * names.size());
        for (double& value : values_)
            value = this->value();
        a = bytesOf(nodes, names, order);
        change(nodes, names, order);
        b = bytesOf(nodes + (oneIn(4) ? number(-nodes / 2, 5) : 0), names, order);
    }

    ComparisonOptions options()
    {
        ComparisonOptions options;
        const auto tolerance = [this]() -> std::optional<double> {
            return oneIn(2) ? std::nullopt : std::optional(std::ldexp(1.0, number(-8, 2)));
        };
        options.absolute = tolerance();
        options.relative = tolerance();
        options.peak = tolerance();
        if (oneIn(2))
            options.memoryLimit = number(300'000, 400'000); // so that not all values are there at once
        return options;
    }

    QByteArray a;
    QByteArray b;

private:
    int number(int first, int last) { return std::uniform_int_distribution<int>(first, last)(random_); }
    bool oneIn(int count) { return number(1, count) == 1; }

    double value()
    {
        static const double special[] = {nan,    -nan,    infinity, -infinity, 0.0,  -0.0,
                                         5e-324, 1.7e308, -1.7e308, 1e-200,    1e200};
        return oneIn(8) ? special[number(0, int(std::size(special)) - 1)] : number(-64, 64) / 16.0;
    }

    void change(int nodes, std::vector<const char*>& names, std::vector<int>& order)
    {
        if (oneIn(3)) {
            const std::size_t node = std::size_t(number(0, nodes - 1));
            order[node] = number(-1, nodes + 2);
        }
        if (oneIn(3))
            std::shuffle(order.begin(), order.end(), random_);
        if (oneIn(3))
            names[std::size_t(number(0, int(names.size()) - 1))] = "kScal1";
        for (int changes = number(0, 5); changes > 0; --changes)
            values_[std::size_t(number(0, int(values_.size()) - 1))] = value();
    }

    QByteArray bytesOf(int nodes, const std::vector<const char*>& names, const std::vector<int>& order)
    {
        ResultsBytes bytes(oneIn(2) ? QDataStream::LittleEndian : QDataStream::BigEndian);
        bytes.header(nodes).run().integer(int(names.size()));
        for (const char* name : names)
            bytes.text(name, 21);
        bytes.integer(0);
        for (const int node : order) {
            bytes.integer(node);
            const std::size_t first = names.size() * std::size_t(std::clamp(node, 1, int(order.size())) - 1);
            for (std::size_t i = 0; i < names.size(); ++i)
                bytes.number(values_[first + i]);
        }
        const QByteArray all = bytes;
        return oneIn(4) ? all.left(all.size() - number(0, std::min(all.size() - 350, 200))) : all;
    }

    std::mt19937 random_;
    std::vector<double> values_; ///< record by record, in the order of the nodes
};

void expectClose(double left, double right)
{
    if (std::isfinite(left) && std::isfinite(right))
        EXPECT_NEAR(left, right, 1e-12 * std::fabs(right));
    else
        EXPECT_EQ(bitsOf(left), bitsOf(right));
}

TEST(ResultsComparisonTest, AgreesWithAPlainComparison)
{
    int differences = 0;
    for (unsigned seed = 0; seed < 1000; ++seed) {
        RandomPair pair(seed);
        const ComparisonOptions options = pair.options();
        const Comparison comparison = comparedBytes(pair.a, pair.b, options);
        ASSERT_EQ(comparison.outcome, Outcome::Compared) << comparison.message.toStdString();
        const auto expected = PlainComparison(pair.a, pair.b, options).fields();
        std::size_t fields = 0;
        for (const Difference& difference : comparison.differences) {
            if (!difference.field || difference.address == "odd")
                continue;
            SCOPED_TRACE(difference.address.toStdString() + " of seed " + std::to_string(seed));
            ++fields;
            const auto found = expected.find(difference.address);
            ASSERT_NE(found, expected.end());
            EXPECT_EQ(difference.field->count, found->second.count);
            EXPECT_EQ(difference.field->largest, found->second.largest);
            EXPECT_EQ(difference.field->node, found->second.node);
            EXPECT_EQ(bitsOf(difference.field->a), bitsOf(found->second.a));
            EXPECT_EQ(bitsOf(difference.field->b), bitsOf(found->second.b));
            EXPECT_EQ(difference.field->peak, found->second.peak);
            expectClose(difference.field->peakShare, found->second.peakShare);
            expectClose(difference.field->rms, found->second.rms);
        }
        ASSERT_EQ(fields, expected.size()) << seed;
        differences += int(fields);
    }
    EXPECT_GT(differences, 500); // the pairs are worth comparing
}

// Files that change meanwhile

TEST(ResultsComparisonTest, ReadsNoFieldThatTheHeaderLacked)
{
    const TemporaryFolder folder;
    const auto write = [&](std::initializer_list<const char*> names) {
        return folder.write("file.res", QByteArray(started(1, names)).toStdString());
    };
    const InputFile file(write({"kU"}));
    bool isChanged = false;
    file.setProgress([&](qint64, qint64) {
        if (!std::exchange(isChanged, true))
            write({"kU", "kV", "kP"}); // behind the block that the header is read from
    });
    const FieldList list(file);
    ASSERT_TRUE(isChanged);
    EXPECT_EQ(list.header.fieldCount(), 1);
    ASSERT_EQ(list.fields.size(), 1U);
    EXPECT_EQ(list.fields[0].address, "kU");
}

// Memory and progress

QByteArray manyNodes(int nodes, int fields, bool isBackwards, double last = 0)
{
    ResultsBytes bytes;
    bytes.header(nodes).run().integer(fields);
    for (int i = 0; i < fields; ++i)
        bytes.text(Io::CodeNameTable::instance().nameForCode(i + 1, false).toStdString(), 21);
    bytes.integer(0);
    for (int i = 1; i <= nodes; ++i) {
        const int node = isBackwards ? nodes + 1 - i : i;
        bytes.integer(node);
        for (int field = 0; field < fields; ++field)
            bytes.number(node == nodes && field == fields - 1 ? last : node + field);
    }
    return bytes;
}

TEST(ResultsComparisonTest, KeepsTheLimitOfMemory)
{
    const QByteArray a = manyNodes(5000, 6, false);
    const QByteArray b = manyNodes(5000, 6, true, 5);
    ComparisonOptions options;
    options.memoryLimit = 1;
    Comparison comparison = comparedBytes(a, b, options);
    EXPECT_EQ(comparison.outcome, Outcome::OverLimit);
    const QString needed = comparison.message.section(' ', 3, 3);
    EXPECT_EQ(comparison.message, "the comparison needs " + needed + " bytes of memory, and may take 1");
    EXPECT_EQ(comparison.file, "");
    EXPECT_LT(needed.toInt(), 300'000);
    options.memoryLimit = needed.toInt() - 1;
    EXPECT_EQ(comparedBytes(a, b, options).outcome, Outcome::OverLimit);
    options.memoryLimit = needed.toInt();
    EXPECT_EQ(comparedBytes(a, b, options).outcome, Outcome::Compared);
    for (const qint64 limit : {300'000, 400'000, 1'000'000, 100'000'000}) {
        options.memoryLimit = limit;
        for (const bool byPeak : {false, true}) {
            options.peak = byPeak ? std::optional(0.0001) : std::nullopt;
            comparison = comparedBytes(a, b, options);
            ASSERT_EQ(comparison.differences.size(), 1U) << limit;
            EXPECT_EQ(comparison.differences[0].field->node, 5000);
            EXPECT_EQ(comparison.differences[0].field->count, 1);
            EXPECT_EQ(comparison.differences[0].field->peak, 5004);
        }
    }
    EXPECT_GT(freeMemory(), 0);
}

TEST(ResultsComparisonTest, ReckonsWithTheMemoryThatTheSystemTellsOf)
{
    QFile facts("/proc/meminfo");
    if (!facts.open(QIODevice::ReadOnly))
        GTEST_SKIP() << "the system doesn't tell";
    const QByteArray all = facts.readAll();
    const auto distanceTo = [&](const QByteArray& fact) {
        const int begin = all.indexOf(fact) + fact.size();
        return std::abs(freeMemory() - all.mid(begin, all.indexOf(" kB", begin) - begin).toLongLong() * 1024);
    };
    const qint64 distance = distanceTo("MemAvailable:"); // others take some meanwhile, or give it back
    EXPECT_LT(distance, distanceTo("MemTotal:"));
    EXPECT_LT(distance, freeMemory() / 2);
}

TEST(ResultsComparisonTest, TellsOfItsProgressAndCanBeCancelled)
{
    const TemporaryFolder folder;
    const std::string a = folder.write("a", manyNodes(20000, 6, false).toStdString());
    const std::string b = folder.write("b", manyNodes(20000, 6, true).toStdString());
    for (const std::string& other : {a, b}) {
        ComparisonOptions options;
        options.peak = 0.5;
        options.memoryLimit = 1'000'000;
        std::vector<std::pair<qint64, qint64>> calls;
        options.progress = [&](qint64 done, qint64 inAll) {
            calls.emplace_back(done, inAll);
            return true;
        };
        EXPECT_TRUE(compare(a, other, options).areSame());
        ASSERT_FALSE(calls.empty());
        for (std::size_t i = 0; i < calls.size(); ++i) {
            EXPECT_LE(calls[i].first, calls[i].second);
            EXPECT_TRUE(i == 0 || calls[i - 1].first <= calls[i].first);
        }
        EXPECT_EQ(calls.back().first, calls.back().second);

        options.progress = [](qint64, qint64) { return false; };
        EXPECT_EQ(compare(a, other, options).outcome, Outcome::Cancelled);
    }
}

// Parts

TEST(FieldComparisonTest, GivesTheSameInAnyOrder)
{
    std::mt19937 random(1);
    std::uniform_real_distribution<double> values(-1, 1);
    std::vector<double> a(1000);
    std::vector<double> b(1000);
    std::vector<int> nodes(1000);
    for (std::size_t i = 0; i < a.size(); ++i) {
        a[i] = values(random);
        b[i] = a[i] + std::ldexp(values(random), int(i % 1200) - 600);
        nodes[i] = int(i) + 1;
    }
    const auto resultOf = [&](int run) {
        FieldComparison comparison {ComparisonOptions()};
        for (int first = int(a.size()); first > 0; first -= run) {
            const int begin = std::max(first - run, 0);
            comparison.add(&a[std::size_t(begin)], &b[std::size_t(begin)], &nodes[std::size_t(begin)],
                           first - begin);
        }
        return comparison.result(1000);
    };
    const FieldDifference expected = resultOf(1);
    for (const int run : {2, 3, 7, 100, FieldComparison::longestRun}) {
        EXPECT_EQ(resultOf(run).rms, expected.rms) << run;
        EXPECT_EQ(resultOf(run).node, expected.node);
        EXPECT_EQ(resultOf(run).count, expected.count);
        EXPECT_EQ(resultOf(run).peak, expected.peak);
    }
}

TEST(NodePlacesTest, HasPlacesForAllOrForSome)
{
    const NodePlaces all(3);
    EXPECT_EQ(all.count(), 3);
    EXPECT_EQ(all.placeOf(0), NodePlaces::none);
    EXPECT_EQ(all.placeOf(3), 2);
    EXPECT_EQ(all.placeOf(4), NodePlaces::none);
    EXPECT_EQ(all.nodeAt(2), 3);
    EXPECT_EQ(all.countUpTo(2), 2);
    EXPECT_EQ(all.countUpTo(9), 3);
    EXPECT_EQ(all.bytes(), 0);

    const NodePlaces some(std::vector<int> {5, 9});
    EXPECT_EQ(some.count(), 2);
    EXPECT_EQ(some.placeOf(9), 1);
    EXPECT_EQ(some.placeOf(6), NodePlaces::none);
    EXPECT_EQ(some.placeOf(10), NodePlaces::none);
    EXPECT_EQ(some.nodeAt(0), 5);
    EXPECT_EQ(some.countUpTo(8), 1);
    EXPECT_GE(some.bytes(), 8);
}

} // namespace
} // namespace Nereo::Inspection

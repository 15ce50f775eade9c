#pragma once

#include <NereoInspection/Export.h>
#include <NereoInspection/FileKind.h>

#include <QByteArray>
#include <QString>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace Nereo::Inspection {

/// Is told how many bytes of how many have been gone through; where a file has to be read more than once,
/// they count each time. False cancels. What it throws comes out of the comparison.
using ComparisonProgress = std::function<bool(qint64 bytesDone, qint64 bytesInAll)>;

/// How files are compared.
///
/// Two numbers that aren't whole by their kind differ where |a - b| exceeds every tolerance that is given;
/// without any, where it isn't 0. So -0 equals 0. A NaN equals every NaN and differs from every number, and
/// an infinity equals only itself, whatever the tolerances are. Whole numbers, switches and texts have none.
/// A tolerance is at least 0; less, or a NaN, counts as 0.
struct ComparisonOptions {
    static constexpr qint64 quarterOfFreeMemory = 0;

    std::optional<double> absolute;
    std::optional<double> relative; ///< the share of the larger of |a| and |b|
    std::optional<double> peak;     ///< the share of the field's peak; of values in no field there is none

    /// The fields of results files that are compared, by their names; none here means all. The rest of the
    /// files is compared anyway.
    std::vector<std::string> fields;

    /// The most bytes that the values of results files may take that aren't in the same order.
    qint64 memoryLimit = quarterOfFreeMemory;

    ComparisonProgress progress; ///< may be empty
};

/// How far the values of a field differ that both files have. They are compared node by node, as loads give
/// them: of a node with several records the last one counts, and without one, or with one that is cut off,
/// it has 0. Of nodes that one file announces and the other doesn't nothing is compared but their number.
struct FieldDifference {
    qint64 count = 0; ///< of the nodes whose values differ

    /// The largest |a - b| among them, infinite where a number meets a NaN or an infinity, the smallest node
    /// that has it, and the two values there.
    double largest = 0.0;
    int node = 0;
    double a = 0.0;
    double b = 0.0;

    double peak = 0.0;      ///< the largest finite magnitude in A, in nodes that B doesn't have too
    double peakShare = 0.0; ///< the largest difference by the peak, infinite where that is 0
    double rms = 0.0;       ///< root mean square of a - b over all nodes that are compared
};

/// Something that two files say differently, or that one of them doesn't say.
struct Difference {
    /// Names the value as an outline does. A material or property that one file lacks is one difference, at
    /// its own address.
    QString address;

    /// What the files say there, a number as it is spelled; nothing where a file lacks it. Of a material or
    /// property it is the first of its values, of a field their number: "4225 values".
    std::optional<QString> a;
    std::optional<QString> b;

    std::optional<FieldDifference> field; ///< of a field of results that both files have
};

/// What has come of a comparison.
struct Comparison {
    enum class Outcome {
        Compared,
        CannotOpen,  ///< one of the files, or read it to its end
        UnknownKind, ///< one of the files is of none
        OtherKinds,  ///< the files are of two kinds that say different things
        NoSuchField, ///< one that was asked for is in neither file
        OverLimit,   ///< of memory: less than the comparison can do with
        Cancelled    ///< by the progress function
    };

    Outcome outcome = Outcome::Compared;
    QString message;  ///< a sentence about what prevented the comparison, in English; empty otherwise
    std::string file; ///< the path that it is about, as it was given; empty where it is about both
    FileKind kindOfA = FileKind::Unknown;
    FileKind kindOfB = FileKind::Unknown;

    /// In the order of the files: what only B says comes where it stands in B. Of results the facts come
    /// first, then the fields in both files, those with the largest share of the peak first, and then those
    /// in one of them.
    std::vector<Difference> differences;

    bool areSame() const { return outcome == Outcome::Compared && differences.empty(); }
};

/// Compares what two files say, value by value, as loads read them. Layout, the order of sections, comments
/// and the spelling of numbers don't matter, and neither does the byte order of results. The two forms of a
/// configuration are compared with each other, then without the version; results without their date.
///
/// Whatever stands in the files, nothing stops, and nothing is thrown but std::bad_alloc. A file of which a
/// load ends early is compared as far as an outline tells its values; records of nodes that a file doesn't
/// announce are left out.
///
/// Results take one pass over both files, or two over A where there is a tolerance by the peak, and at most
/// 64 MiB, if their nodes come in the same order and once each and a record isn't longer than 16 MiB. Else
/// they take the values of both files, or as many fields and nodes at a time as the limit of memory allows,
/// with a pass over both for each.
NEREOINSPECTION_EXPORT Comparison compare(const std::string& pathOfA, const std::string& pathOfB,
                                          const ComparisonOptions& options = {});

/// A line for each difference: `ADDRESS: A -> B`, `- ADDRESS: A` of what only A says and `+ ADDRESS: B` of
/// what only B says, and of a field
/// `kU: 3 values differ by up to 0.5 (node 34: 1.2 -> 1.7), 4.1% of the peak, rms 0.0123`.
/// Control characters and ends of lines are written as in JSON.
NEREOINSPECTION_EXPORT QString toText(const Comparison& comparison);

/// All differences as one JSON document, in UTF-8 and indented: whether the files say the same, and for each
/// difference its address and what the files say there. What a file lacks is null, and so is a number that
/// isn't finite.
NEREOINSPECTION_EXPORT QByteArray toJson(const Comparison& comparison);

} // namespace Nereo::Inspection

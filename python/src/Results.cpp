#include "Findings.h"
#include "Progress.h"
#include "Values.h"

#include <NereoFileIO/FieldVariable.h>
#include <NereoFileIO/ResultsFile.h>
#include <NereoFileIO/ResultsFileHeader.h>
#include <NereoFileIO/ResultsScan.h>

#include <pybind11/numpy.h>
#include <pybind11/stl.h>

namespace Nereo::Python {

using namespace Io;

namespace {

/// The values of a field without a copy of them, read-only: the array holds a share of the vector.
py::array_t<double> arrayOf(const QVector<double>& values)
{
    auto share = std::make_unique<const QVector<double>>(values);
    const double* const data = share->constData();
    const py::capsule owner(share.get(),
                            [](void* held) { delete static_cast<const QVector<double>*>(held); });
    static_cast<void>(share.release());
    py::array_t<double> array(values.size(), data, owner);
    array.attr("setflags")(py::arg("write") = false);
    return array;
}

// In the order of the enumerators.
constexpr const char* outcomeNames[] = {"loaded",          "cut-short",          "cannot-open", "read-failed",
                                        "no-results-file", "contradicts-itself", "over-limit",  "cancelled"};
constexpr const char* problemNames[] = {
    "none",           "too-short",           "bad-header-marker",    "bad-run-marker",
    "byte-order",     "negative-node-count", "negative-field-count", "too-many-nodes",
    "repeated-field", "counts-past-file",    "node-out-of-range",    "read-failed",
};

py::dict pythonResult(const ResultsLoadResult& result)
{
    py::dict dict;
    dict["outcome"] = outcomeNames[result.outcome];
    dict["problem"] = problemNames[result.problem.kind];
    dict["offset"] = result.problem.offset;
    dict["whole_records"] = result.wholeRecords;
    dict["memory_needed"] = result.memoryNeeded;
    return dict;
}

/// What header and results say alike.
template <class Source>
py::dict factsOf(const Source& source)
{
    py::dict facts;
    facts["version"] = source.version().toString().toStdString();
    facts["date"] = source.dateTimeString();
    facts["title"] = source.title();
    facts["node_count"] = source.nodeCount();
    facts["element_count"] = source.elementCount();
    facts["iteration"] = source.currentIteration();
    facts["starting_iteration"] = source.startingIteration();
    facts["time_step"] = source.currentTimeStep();
    facts["starting_time_step"] = source.startingTimeStep();
    facts["time"] = source.currentTime();
    facts["time_step_size"] = source.timeStepSize();
    return facts;
}

/// The keywords of nereofile.ResultsHeader but the path.
py::dict pythonHeader(const ResultsFileHeader& header)
{
    const py::module_ records = py::module_::import("nereofile._records");
    const py::object fieldType = records.attr("HeaderField");
    const py::object problemType = records.attr("Problem");
    py::list fields;
    for (const ResultsFileHeader::Field& field : header.fields()) {
        const py::object code =
            field.code == kNone ? py::object(py::none()) : py::object(py::int_(field.code));
        fields.append(fieldType(field.name, code, field.column, field.offset, field.isWhole, field.isUsed(),
                                field.isRepeat));
    }
    py::list problems;
    for (const ResultsProblem& problem : header.problems())
        problems.append(problemType(problemNames[problem.kind], problem.offset));

    py::dict dict = factsOf(header);
    dict["byte_order"] = header.byteOrder() == ResultsFileHeader::BigEndian ? "big" : "little";
    dict["field_count"] = header.fieldCount();
    dict["fields"] = py::tuple(fields);
    dict["bytes_there"] = header.bytesThere();
    dict["bytes_announced"] = header.bytesAnnounced();
    dict["record_size"] = header.recordSize();
    dict["records_offset"] = header.recordsOffset();
    dict["records_announced"] = header.recordsAnnounced();
    dict["whole_records"] = header.wholeRecords();
    dict["is_results_file"] = header.isResultsFile();
    dict["holds_known_field"] = header.holdsKnownField();
    dict["problems"] = py::tuple(problems);
    return dict;
}

/// None when the file can't be opened.
py::object readHeader(const Path& path)
{
    ResultsFileHeader header;
    bool isOpen = false;
    {
        const py::gil_scoped_release release;
        isOpen = header.readFrom(path.utf8);
    }
    return isOpen ? py::object(pythonHeader(header)) : py::object(py::none());
}

/// What became of the load, the facts, and the arrays by code.
py::tuple loadResults(const Path& path, std::vector<int> codes, int firstNode, int lastNode,
                      qint64 memoryLimit, double missingValue, const py::object& callable)
{
    Progress progress(callable);
    ResultsLoadOptions options;
    options.codes = std::move(codes);
    options.firstNode = firstNode;
    options.lastNode = lastNode;
    options.memoryLimit = memoryLimit;
    options.missingValue = missingValue;
    options.progress = follow(progress);

    ResultsFile results;
    ResultsLoadResult result;
    {
        const py::gil_scoped_release release;
        result = results.loadFrom(path.utf8, options);
    }
    progress.rethrow();
    py::dict arrays;
    for (const int code : results.fieldDataCodes())
        arrays[py::int_(code)] = arrayOf(results.fieldData(code));
    return py::make_tuple(pythonResult(result), factsOf(results), arrays);
}

py::object pythonStatistics(const py::object& type, const ResultsFileHeader::Field& field,
                            const ResultsStatistics& statistics)
{
    const py::object code = field.code == kNone ? py::object(py::none()) : py::object(py::int_(field.code));
    return type(field.name, code, statistics.count, statistics.minimum, statistics.maximum, statistics.mean,
                statistics.rootMeanSquare, statistics.minimumNode, statistics.maximumNode,
                statistics.notFinite, statistics.firstNotFiniteNode, statistics.firstNotFiniteOffset);
}

py::object pythonDamage(const ResultsDamage& damage)
{
    return py::module_::import("nereofile._records")
        .attr("Damage")(damage.missingNodes, damage.firstMissingNode, damage.repeatedRecords,
                        damage.firstRepeatedNode, damage.firstRepeatedOffset, damage.recordsOutOfRange,
                        damage.firstNodeOutOfRange, damage.firstOutOfRangeOffset);
}

/// What became of the pass, the header, the statistics of each field and the damage.
py::tuple scanResults(const Path& path, bool withStatistics, bool withDamage, const py::object& callable)
{
    Progress progress(callable);
    const ResultsScan::Part part = withStatistics && withDamage ? ResultsScan::StatisticsAndDamage
        : withStatistics                                        ? ResultsScan::Statistics
                                                                : ResultsScan::Damage;
    ResultsScan scan;
    ResultsLoadResult result;
    {
        const py::gil_scoped_release release;
        result = scan.scan(path.utf8, part, follow(progress));
    }
    progress.rethrow();
    const py::object type = py::module_::import("nereofile._records").attr("FieldStatistics");
    py::list fields;
    for (std::size_t i = 0; i < scan.statistics().size(); ++i)
        fields.append(pythonStatistics(type, scan.header().fields()[i], scan.statistics()[i]));
    return py::make_tuple(pythonResult(result), pythonHeader(scan.header()), py::tuple(fields),
                          pythonDamage(scan.damage()));
}

} // namespace

void bindResults(py::module_& module)
{
    module.def("read_header", &readHeader, py::arg("path"));
    module.def("load_results", &loadResults, py::arg("path"), py::arg("codes"), py::arg("first_node"),
               py::arg("last_node"), py::arg("memory_limit"), py::arg("missing_value"), py::arg("progress"));
    module.def("scan_results", &scanResults, py::arg("path"), py::arg("with_statistics"),
               py::arg("with_damage"), py::arg("progress"));
    module.def(
        "raise_file_error",
        [](const Path& path) {
            Inspection::CheckOptions options;
            options.kind = Inspection::FileKind::Results;
            Inspection::CheckedFile file;
            {
                const py::gil_scoped_release release;
                file = Inspection::check(path.utf8, options);
            }
            throwFileError(path.utf8, file);
        },
        py::arg("path"));
}

} // namespace Nereo::Python

#include "Findings.h"

#include "Arguments.h"
#include "Progress.h"

#include <NereoInspection/Comparison.h>
#include <NereoInspection/Origins.h>
#include <NereoInspection/Outline.h>
#include <NereoUtility/StringConversion.h>

#include <pybind11/stl.h>

#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <cctype>
#include <stdexcept>
#include <vector>

namespace Nereo::Python {

using namespace Inspection;
using Util::toQString;
using Util::toStdString;

namespace {

py::module_ recordsModule()
{
    return py::module_::import("nereofile._records");
}

py::module_ errorsModule()
{
    return py::module_::import("nereofile.errors");
}

/// None for what a place doesn't have.
py::object numberOrNone(qint64 number)
{
    return number == Place::Absent ? py::object(py::none()) : py::object(py::int_(number));
}

py::object textOrNone(const QString& text)
{
    return text.isEmpty() ? py::object(py::none()) : py::object(py::str(toStdString(text)));
}

py::object pythonFinding(const py::object& type, const std::string& file, const Finding& finding)
{
    return type(toStdString(severityName(finding.severity)), toStdString(finding.code),
                toStdString(effectName(finding.effect)), numberOrNone(finding.place.line),
                numberOrNone(finding.place.column), numberOrNone(finding.place.offset),
                textOrNone(finding.address), textOrNone(finding.found), textOrNone(finding.expected),
                finding.more, toStdString(finding.message), toStdString(findingLine(file, finding)));
}

py::object pythonFile(const CheckedFile& file)
{
    return recordsModule().attr("CheckedFile")(file.file, textOrNone(kindName(file.kind)),
                                               pythonFindings(file), file.counts.errors, file.counts.warnings,
                                               file.counts.notes);
}

FileKind kindOf(const std::optional<std::string>& name)
{
    if (!name)
        return FileKind::Unknown;
    const FileKind kind = kindOfName(toQString(*name));
    if (kind == FileKind::Unknown)
        throw py::value_error("no kind of file is called " + *name);
    return kind;
}

/// The files as tuples, and all as JSON.
py::tuple checkFiles(const std::vector<Path>& paths, const std::optional<std::string>& kind, bool isCase)
{
    const std::vector<std::string> names = utf8Of(paths);
    CheckOptions options;
    options.kind = kindOf(kind);

    std::vector<CheckedFile> files;
    QByteArray json;
    {
        const py::gil_scoped_release release;
        files = isCase ? checkCase(names, options) : check(names, options);
        json = toJson(files);
    }
    py::list checked;
    for (const CheckedFile& file : files)
        checked.append(pythonFile(file));
    return py::make_tuple(py::tuple(checked), json.toStdString());
}

const char* typeName(Item::Type type)
{
    static constexpr const char* names[] = {"integer", "number", "switch", "text", "version", "field"};
    return names[int(type)];
}

py::object pythonValue(const QVariant& value)
{
    switch (value.userType()) {
    case QMetaType::Bool:
        return py::bool_(value.toBool());
    case QMetaType::Int:
    case QMetaType::LongLong:
        return py::int_(value.toLongLong());
    case QMetaType::Double:
        return py::float_(value.toDouble());
    case QMetaType::QString:
        return py::str(toStdString(value.toString()));
    default:
        return py::none();
    }
}

/// The name of the kind, and the items; None when nothing tells of values in the file.
py::object outlineFile(const Path& path, const std::optional<std::string>& kindName)
{
    FileKind kind = kindOf(kindName);
    std::vector<Item> items;
    bool hasOutline = false;
    {
        const py::gil_scoped_release release;
        if (kind == FileKind::Unknown)
            kind = kindOfFile(path.utf8);
        hasOutline = outline(path.utf8, kind, [&items](const Item& item) { items.push_back(item); });
    }
    if (!hasOutline)
        return py::none();
    const py::object type = recordsModule().attr("Item");
    py::list list;
    for (const Item& item : items)
        list.append(type(toStdString(item.address), typeName(item.type), pythonValue(item.value),
                         toStdString(item.spelling), numberOrNone(item.place.line),
                         numberOrNone(item.place.column), numberOrNone(item.place.offset), item.length));
    return py::make_tuple(toStdString(Inspection::kindName(kind)), py::tuple(list));
}

py::object optionalText(const std::optional<QString>& text)
{
    return text ? py::object(py::str(toStdString(*text))) : py::object(py::none());
}

py::object pythonFieldDifference(const std::optional<FieldDifference>& field)
{
    if (!field)
        return py::none();
    return recordsModule().attr("FieldDifference")(field->count, field->largest, field->node, field->a,
                                                   field->b, field->peak, field->peakShare, field->rms);
}

/// The settings, and why the command line isn't taken to its end.
py::tuple effectiveSettings(const Path& path, const std::vector<Text>& arguments)
{
    const std::vector<std::string> commandLine = utf8Of(arguments);
    EffectiveConfiguration configuration;
    {
        const py::gil_scoped_release release;
        configuration = effectiveConfiguration(path.utf8, commandLine);
    }
    CheckedFile file;
    file.file = path.utf8;
    if (configuration.endOfLoad) {
        file.findings.push_back(*configuration.endOfLoad);
        throwFileError(path.utf8, file);
    }
    const py::object type = recordsModule().attr("EffectiveSetting");
    py::list settings;
    for (const EffectiveSetting& setting : configuration.settings)
        settings.append(type(toStdString(setting.key), toStdString(setting.value),
                             toStdString(originName(setting.origin)), numberOrNone(setting.place.line),
                             numberOrNone(setting.place.column), numberOrNone(setting.place.offset)));
    return py::make_tuple(py::tuple(settings), toStdString(configuration.commandLineError));
}

const char* outcomeName(Comparison::Outcome outcome)
{
    static constexpr const char* names[] = {"compared",      "cannot-open", "unknown-kind", "other-kinds",
                                            "no-such-field", "over-limit",  "cancelled"};
    return names[int(outcome)];
}

/// The outcome, its message, the file that it is about, the differences, and all as text and as JSON.
py::tuple compareFiles(const Path& a, const Path& b, const std::optional<double>& absolute,
                       const std::optional<double>& relative, const std::optional<double>& peak,
                       const std::vector<Text>& fields, qint64 memoryLimit, const py::object& callable)
{
    Progress progress(callable);
    ComparisonOptions options;
    options.absolute = absolute;
    options.relative = relative;
    options.peak = peak;
    options.fields = utf8Of(fields);
    options.memoryLimit = memoryLimit;
    options.progress = follow(progress);

    Comparison comparison;
    QString text;
    QByteArray json;
    {
        const py::gil_scoped_release release;
        comparison = compare(a.utf8, b.utf8, options);
        text = toText(comparison);
        json = toJson(comparison);
    }
    progress.rethrow();
    const py::object type = recordsModule().attr("Difference");
    py::list differences;
    for (const Difference& difference : comparison.differences)
        differences.append(type(toStdString(difference.address), optionalText(difference.a),
                                optionalText(difference.b), pythonFieldDifference(difference.field)));
    return py::make_tuple(outcomeName(comparison.outcome), toStdString(comparison.message), comparison.file,
                          py::tuple(differences), toStdString(text), json.toStdString());
}

bool isFatal(const Finding& finding)
{
    return finding.effect == Effect::Stops || finding.code == QLatin1String("cannot-open");
}

bool isInTheWay(const CheckedFile& file, bool strict)
{
    if (strict && file.counts.errors > 0)
        return true;
    return std::any_of(file.findings.begin(), file.findings.end(), isFatal);
}

/// A copy that nobody else writes: what was found in it holds as long as it is there.
class Snapshot {
public:
    explicit Snapshot(const std::string& path)
    {
        const QString source = toQString(path);
        const QString copy = folder_.filePath(QStringLiteral("copy"));
        if (folder_.isValid() && QFile::copy(source, copy))
            path_ = toStdString(copy);
    }

    const std::string& path() const { return path_; } ///< empty where there is none

    /// Writes the number of flags that are there in the place of each that is announced wrongly.
    void announceFlags(const std::vector<Finding>& findings)
    {
        QFile file(toQString(path_));
        if (!file.open(QIODevice::ReadOnly))
            return;
        QByteArray bytes = file.readAll();
        file.close();
        if (bytes.contains('\0'))
            return; // a character may have more bytes than one
        // From the end, so that the places of the others hold.
        for (auto finding = findings.rbegin(); finding != findings.rend(); ++finding) {
            if (finding->code == QLatin1String("flag-count") && finding->place.hasOffset())
                bytes.replace(int(finding->place.offset), wordAt(bytes, int(finding->place.offset)),
                              finding->found.toLatin1());
        }
        if (file.open(QIODevice::WriteOnly))
            file.write(bytes);
    }

private:
    /// The length of what stands there up to white space.
    static int wordAt(const QByteArray& bytes, int offset)
    {
        int end = offset;
        while (end < bytes.size() && !std::isspace(static_cast<unsigned char>(bytes.at(end))))
            ++end;
        return end - offset;
    }

    QTemporaryDir folder_;
    std::string path_;
};

} // namespace

py::tuple pythonFindings(const CheckedFile& file)
{
    const py::object type = recordsModule().attr("Finding");
    py::list findings;
    for (const Finding& finding : file.findings)
        findings.append(pythonFinding(type, file.file, finding));
    return findings;
}

void throwFileError(const std::string& path, const CheckedFile& file)
{
    const py::object error = errorsModule().attr("file_error")(path, pythonFindings(file));
    PyErr_SetObject(py::type::handle_of(error).ptr(), error.ptr());
    throw py::error_already_set();
}

void throwFileError(const std::string& path, const std::string& message)
{
    const py::object error = errorsModule().attr("FileError")(message, py::tuple(), path);
    PyErr_SetObject(py::type::handle_of(error).ptr(), error.ptr());
    throw py::error_already_set();
}

void requireSaved(const std::string& path, const Io::SaveResult& result)
{
    // In the order of the enumerators.
    static constexpr const char* names[] = {"saved",     "cannot-create", "no-permission",  "no-regular-file",
                                            "disk-full", "write-failed",  "cannot-replace", "content-refused",
                                            "no-writer", "not-forced"};
    if (result)
        return;
    if (result.isReplaced()) {
        errorsModule().attr("warn_not_forced")(path, result.reason);
        return;
    }
    const py::object error = errorsModule().attr("save_error")(path, names[result.status], result.reason);
    PyErr_SetObject(py::type::handle_of(error).ptr(), error.ptr());
    throw py::error_already_set();
}

void saveUnlocked(const Io::File& copy, const std::string& path)
{
    Io::SaveResult result;
    {
        const py::gil_scoped_release release;
        result = copy.saveWholeTo(path);
    }
    requireSaved(path, result);
}

void loadChecked(const std::string& path, FileKind kind, bool strict,
                 const std::function<bool(const std::string&)>& load)
{
    errorsModule().attr("require_regular_file")(path);
    CheckedFile file;
    bool isBlocked = false;
    bool isLoaded = false;
    {
        const py::gil_scoped_release release;
        // Of a control file a load may stop the process, so that what is checked has to be what is loaded,
        // whatever others write to the file meanwhile.
        const bool mayStop = kind == FileKind::Control;
        std::optional<Snapshot> snapshot;
        if (mayStop)
            snapshot.emplace(path);
        const std::string& source = snapshot ? snapshot->path() : path;
        CheckOptions options;
        options.kind = kind;
        file = check(source.empty() ? path : source, options);
        if (snapshot && !strict && !source.empty()) {
            // A load stops at a wrong number of flags only: what it would load is there.
            snapshot->announceFlags(file.findings);
            const CheckedFile corrected = check(source, options);
            isBlocked = isInTheWay(corrected, strict);
        } else {
            isBlocked = source.empty() || isInTheWay(file, strict);
        }
        file.file = path;
        if (!isBlocked) {
            try {
                isLoaded = load(source);
            } catch (const std::out_of_range&) { // a word that is no key
            }
        }
    }
    if (isBlocked)
        throwFileError(path, file);
    if (!isLoaded && strict)
        throwFileError(path, path + " can't be loaded");
}

void bindInspection(py::module_& module)
{
    module.def("check", &checkFiles, py::arg("paths"), py::arg("kind"), py::arg("is_case"));
    module.def("outline", &outlineFile, py::arg("path"), py::arg("kind"));
    module.def("effective_settings", &effectiveSettings, py::arg("path"), py::arg("command_line"));
    module.def("compare", &compareFiles, py::arg("a"), py::arg("b"), py::arg("absolute"), py::arg("relative"),
               py::arg("peak"), py::arg("fields"), py::arg("memory_limit"), py::arg("progress"));
    module.def(
        "kind_of_file",
        [](const Path& path) {
            const py::gil_scoped_release release;
            return toStdString(kindName(kindOfFile(path.utf8)));
        },
        py::arg("path"));
    module.def(
        "address_part", [](const Text& name) { return toStdString(addressPart(toQString(name.utf8))); },
        py::arg("name"));
}

} // namespace Nereo::Python

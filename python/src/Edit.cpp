#include "Findings.h"
#include "Values.h"

#include <NereoInspection/Edit.h>
#include <NereoUtility/StringConversion.h>

namespace Nereo::Python {

using Inspection::EditProblem;
using Inspection::EditResult;
using Inspection::FileEdit;
using Inspection::FileKind;
using Util::toQString;
using Util::toStdString;

namespace {

/// An edit of a file, and where that is.
struct PythonEdit {
    std::string path;
    FileEdit edit;
};

using Self = Held<PythonEdit>;

py::object textOrNone(const std::optional<QString>& text)
{
    return text ? py::object(py::str(toStdString(*text))) : py::object(py::none());
}

/// KeyError for an address that is no value's, ValueError for a value that is refused.
void require(const EditResult& result)
{
    if (result)
        return;
    const std::string message = toStdString(result.message);
    if (result.problem == EditProblem::UnknownAddress || result.problem == EditProblem::NotThere)
        throw py::key_error(message);
    throw py::value_error(message);
}

FileKind kindOf(const std::string& name)
{
    const FileKind kind = Inspection::kindOfName(toQString(name));
    if (kind == FileKind::Unknown)
        throw py::value_error("no kind of file is called " + name);
    return kind;
}

std::shared_ptr<PythonEdit> open(const Path& path, const py::object& kindName)
{
    const FileKind kind = kindName.is_none() ? FileKind::Unknown : kindOf(kindName.cast<Text>().utf8);
    py::module_::import("nereofile.errors").attr("require_regular_file")(path.utf8);
    auto opened = [&] {
        const py::gil_scoped_release release;
        return std::make_shared<PythonEdit>(PythonEdit {path.utf8, FileEdit(path.utf8, kind)});
    }();
    if (const EditResult state = opened->edit.state(); !state)
        throwFileError(path.utf8, path.utf8 + ": " + toStdString(state.message));
    return opened;
}

void set(FileEdit& edit, const Text& address, const py::object& value)
{
    const QString place = toQString(address.utf8);
    if (PyUnicode_Check(value.ptr()))
        return require(edit.set(place, toQString(value.cast<Text>().utf8)));
    if (PyFloat_Check(value.ptr()))
        return require(edit.set(place, value.cast<double>()));
    if (!PyIndex_Check(value.ptr()))
        throw py::type_error("a value is a str, an int or a float");
    try {
        require(edit.set(place, value.cast<int>()));
    } catch (const py::cast_error&) {
        throw py::value_error("a whole number has 32 bits");
    }
}

std::string valueOf(const FileEdit& edit, const Text& address)
{
    const std::optional<QString> value = edit.value(toQString(address.utf8));
    if (!value)
        throw py::key_error(address.utf8);
    return toStdString(*value);
}

py::tuple changesOf(const FileEdit& edit)
{
    const py::object type = py::module_::import("nereofile._records").attr("ValueChange");
    py::list changes;
    for (const Inspection::ValueChange& change : edit.changes())
        changes.append(
            type(toStdString(change.address), textOrNone(change.before), textOrNone(change.after)));
    return changes;
}

py::bytes bytesOf(const QByteArray& bytes)
{
    return {bytes.constData(), std::size_t(bytes.size())};
}

void save(const PythonEdit& edit, const py::object& path)
{
    if (path.is_none())
        return requireSaved(edit.path, edit.edit.save());
    const std::string target = path.cast<Path>().utf8;
    requireSaved(target, edit.edit.saveTo(target));
}

const char* const documentation =
    R"(Changes of the values of a file, and of no other byte: what ``edit`` opens.

Values have the addresses of ``inspect``, and are texts as the file has them.
Assigning takes numbers too; what the file lacks is added where a writer would
put it. An address that no such file has is a KeyError, a value that is refused
a ValueError, and nothing is changed then.

>>> with edit("cavity.ctl") as changes:
...     changes["relaxation/kU/under"] = 0.25
...     changes["title"] = "Another cavity"
...     changes.changes[0]
ValueChange(address='relaxation/kU/under', before='0.4', after='0.25')
>>> ControlFile.load("cavity.ctl").title
'Another cavity'
)";

} // namespace

void bindEdit(py::module_& module)
{
    py::class_<PythonEdit, std::shared_ptr<PythonEdit>> type(module, "Edit", documentation);
    type.def(py::init(&open), py::arg("path"), py::arg("kind") = py::none());
    type.def_property_readonly(
        "path", [](const Self& self) { return pythonPath(self->path); }, "Of the file, as a pathlib.Path.");
    type.def_property_readonly(
        "kind", [](const Self& self) { return toStdString(Inspection::kindName(self->edit.kind())); },
        "Of the file, such as 'control'.");
    type.def(
        "__getitem__", [](const Self& self, const Text& address) { return valueOf(self->edit, address); },
        py::arg("address"));
    type.def(
        "__setitem__",
        [](const Self& self, const Text& address, const py::object& value) {
            set(self->edit, address, value);
        },
        py::arg("address"), py::arg("value"));
    type.def(
        "__delitem__",
        [](const Self& self, const Text& address) { require(self->edit.remove(toQString(address.utf8))); },
        py::arg("address"));
    type.def(
        "__contains__",
        [](const Self& self, const Text& address) {
            return self->edit.value(toQString(address.utf8)).has_value();
        },
        py::arg("address"));
    type.def_property_readonly(
        "changes", [](const Self& self) { return changesOf(self->edit); },
        "What is different from the file as it was read: a ValueChange for each address.");
    type.def_property_readonly(
        "original_bytes", [](const Self& self) { return bytesOf(self->edit.originalBytes()); },
        "What the file held when it was read.");
    type.def_property_readonly(
        "bytes", [](const Self& self) { return bytesOf(self->edit.bytes()); }, "What it is to hold.");
    type.def(
        "save", [](const Self& self, const py::object& path) { save(*self, path); },
        py::arg("path") = py::none(), "Writes the file, or another one: whole or not at all.");
    type.def("__enter__", [](const py::object& self) { return self; });
    type.def(
        "__exit__",
        [](const Self& self, const py::object& error, const py::args&) {
            if (error.is_none() && self->edit.bytes() != self->edit.originalBytes())
                save(*self, py::none());
        },
        py::arg("error"));
    type.def("__repr__", [](const Self& self) {
        return "<Edit of " + self->path + ": " + std::to_string(self->edit.changes().size()) + " changes>";
    });
}

} // namespace Nereo::Python

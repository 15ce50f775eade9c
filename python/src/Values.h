#pragma once

#include "Arguments.h"

#include <NereoUtility/Version.h>

#include <initializer_list>

namespace Nereo::Python {

/// Gives a class those methods of an abstract class of collections.abc that it doesn't define itself, and
/// makes it count as one. Not a base class, which would have another metaclass than pybind11's.
void implementAbc(const py::object& type, const char* abc, std::initializer_list<const char*> methods);

void implementMapping(const py::object& type);
void implementMutableMapping(const py::object& type);
void implementSequence(const py::object& type);
void implementMutableSequence(const py::object& type);

/// Gives a class what Python expects of a value: ==, copy and pickle. state(object) is a tuple of all that
/// the object holds, and fromState makes an object of such a tuple; it trusts nothing in it.
template <class T, class Class, class State, class FromState>
void defineValue(Class& type, State state, FromState fromState)
{
    type.def("__eq__", [state](const Held<T>& self, const py::object& other) -> py::object {
        if (!py::isinstance<T>(other))
            return py::reinterpret_borrow<py::object>(Py_NotImplemented);
        return py::bool_(state(*self).equal(state(*other.cast<Held<T>>())));
    });
    type.def_static("_from_state", fromState, py::arg("state"));
    type.def("__reduce__", [state](const py::object& self) {
        const py::object restore = py::module_::import("nereofile._records").attr("restore");
        const auto held = self.cast<Held<T>>();
        return py::make_tuple(restore, py::make_tuple(py::type::of(self), state(*held)));
    });
}

/// The version as a text of four numbers, from such a text. A ValueError where it is another one.
Util::Version versionOf(const std::string& text);

/// A path as pathlib has it, None where it is empty.
py::object pythonPath(const std::string& path);

/// The representation of an object: "Flag('a', value='1')".
std::string representation(const char* type, const py::object& first,
                           std::initializer_list<std::pair<const char*, py::object>> others);

void bindConfiguration(py::module_& module);
void bindMaterials(py::module_& module);
void bindBoundaryConditions(py::module_& module);
void bindControlRecords(py::module_& module);
void bindControl(py::module_& module);
void bindGeometryBoundary(py::module_& module);
void bindResults(py::module_& module);
void bindEdit(py::module_& module);

} // namespace Nereo::Python

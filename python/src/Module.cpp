#include "Findings.h"
#include "Values.h"
#include "Vocabulary.h"

#include <exception>
#include <utility>

using namespace Nereo::Python;

namespace {

newfunc makeTypeOf = nullptr;
newfunc makeObjectOf = nullptr;

/// An object of pybind11's common base itself would end the process by an exception that nobody catches.
PyObject* makeObject(PyTypeObject* type, PyObject* arguments, PyObject* keywords)
{
    if (py::detail::all_type_info(type).empty()) {
        PyErr_SetString(PyExc_TypeError, "this class makes no objects");
        return nullptr;
    }
    return makeObjectOf(type, arguments, keywords);
}

/// Objects of a class that pybind11's metaclass makes are taken for pybind11's, whatever the bases of the
/// class.
PyObject* makeType(PyTypeObject* metaclass, PyObject* arguments, PyObject* keywords)
{
    PyObject* const type = makeTypeOf(metaclass, arguments, keywords);
    auto* const base = reinterpret_cast<PyTypeObject*>(py::detail::get_internals().instance_base);
    if (!type || PyType_IsSubtype(reinterpret_cast<PyTypeObject*>(type), base))
        return type;
    Py_DECREF(type);
    PyErr_SetString(PyExc_TypeError, "this metaclass makes only classes that derive from such a one");
    return nullptr;
}

/// Closes the ways to objects without C++ objects. Before classes are defined, which inherit it.
void guardTypes()
{
    const py::detail::internals& internals = py::detail::get_internals();
    auto* const base = reinterpret_cast<PyTypeObject*>(internals.instance_base);
    if (base->tp_new != &makeObject) {
        makeObjectOf = base->tp_new;
        base->tp_new = &makeObject;
    }
    if (internals.default_metaclass->tp_new != &makeType) {
        makeTypeOf = internals.default_metaclass->tp_new;
        internals.default_metaclass->tp_new = &makeType;
    }
}

/// A value of another type is a TypeError also where it is found deep in a call.
void translateCastErrors(std::exception_ptr error)
{
    try {
        if (error)
            std::rethrow_exception(std::move(error));
    } catch (const py::cast_error& wrong) {
        PyErr_SetString(PyExc_TypeError, wrong.what());
    }
}

/// The classes are found, and pickled, in the package.
void nameInPackage(const py::module_& module)
{
    for (const auto& [name, value] : py::dict(module.attr("__dict__"))) {
        if (PyType_Check(value.ptr()))
            value.attr("__module__") = "nereofile";
    }
}

} // namespace

PYBIND11_MODULE(_nereofile, module)
{
    py::options options;
    options.disable_function_signatures();
    module.doc() = "What the package nereofile is made of, from the C++ libraries.";
    guardTypes();
    py::register_local_exception_translator(&translateCastErrors);
    bindVocabulary(module);
    bindInspection(module);
    bindResults(module);
    bindEdit(module);
    bindConfiguration(module);
    bindMaterials(module);
    bindBoundaryConditions(module);
    bindGeometryBoundary(module);
    bindControlRecords(module);
    bindControl(module);
    nameInPackage(module);
}

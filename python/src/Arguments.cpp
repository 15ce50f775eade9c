#include "Arguments.h"

#include "Vocabulary.h"

namespace Nereo::Python {

namespace {

// Far below what QString and QByteArray hold, in characters and in bytes of UTF-8, quoted or not.
constexpr py::ssize_t longestText = 256 * 1024 * 1024;

std::string utf8OfText(py::handle text)
{
    py::ssize_t size = 0;
    const char* const bytes = PyUnicode_AsUTF8AndSize(text.ptr(), &size);
    if (!bytes)
        throw py::error_already_set(); // a UnicodeEncodeError, which is a ValueError
    if (size > longestText)
        throw py::value_error("the text is too long");
    return {bytes, std::size_t(size)};
}

} // namespace

int indexOf(py::ssize_t index, std::size_t count)
{
    const auto size = py::ssize_t(count);
    const py::ssize_t fromStart = index < 0 ? index + size : index;
    if (fromStart < 0 || fromStart >= size)
        throw py::index_error("index " + std::to_string(index) + " is outside a list of "
                              + std::to_string(size));
    return int(fromStart);
}

void Places::requireCount(std::size_t given) const
{
    if (py::ssize_t(given) != count)
        throw py::value_error("attempt to assign sequence of size " + std::to_string(given)
                              + " to slice of size " + std::to_string(count));
}

Places Slice::in(std::size_t count) const
{
    py::ssize_t first = start;
    py::ssize_t end = stop;
    const py::ssize_t length = PySlice_AdjustIndices(py::ssize_t(count), &first, &end, step);
    return {first, step, length};
}

int codeOf(const py::object& nameOrCode, int first, int last)
{
    if (py::isinstance<py::str>(nameOrCode)) {
        const std::string name = utf8OfText(nameOrCode);
        const int code = fieldVariableCode(name);
        if (code < first || code > last)
            throw py::key_error(name);
        return code;
    }
    if (!PyIndex_Check(nameOrCode.ptr()))
        throw py::type_error("a field variable is named by a str, or by its code");
    const py::ssize_t code = PyNumber_AsSsize_t(nameOrCode.ptr(), PyExc_ValueError);
    if (PyErr_Occurred())
        throw py::error_already_set();
    if (code < first || code > last)
        throw py::value_error("code " + std::to_string(code) + " is outside " + std::to_string(first) + " to "
                              + std::to_string(last));
    return int(code);
}

} // namespace Nereo::Python

namespace pybind11::detail {

using namespace Nereo::Python;

bool type_caster<Text>::load(handle source, bool)
{
    if (!PyUnicode_Check(source.ptr()))
        return false;
    value.utf8 = utf8OfText(source);
    return true;
}

bool type_caster<Slice>::load(handle source, bool)
{
    if (!PySlice_Check(source.ptr()))
        return false;
    if (PySlice_Unpack(source.ptr(), &value.start, &value.stop, &value.step) < 0)
        throw error_already_set();
    return true;
}

bool type_caster<Path>::load(handle source, bool)
{
    if (!PyUnicode_Check(source.ptr()) && !hasattr(source, "__fspath__"))
        return false;
    const auto path = reinterpret_steal<object>(PyOS_FSPath(source.ptr()));
    if (!path)
        throw error_already_set();
    if (!PyUnicode_Check(path.ptr()))
        return false;
    value.utf8 = utf8OfText(path);
    if (value.utf8.find('\0') != std::string::npos)
        throw value_error("there is a NUL in the path");
    return true;
}

} // namespace pybind11::detail

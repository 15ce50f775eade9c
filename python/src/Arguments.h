#pragma once

#include <pybind11/pybind11.h>

#include <memory>
#include <string>
#include <vector>

namespace Nereo::Python {

namespace py = pybind11;

/// An object that Python gives to a function: never None, and never one whose __init__ didn't run, of which
/// pybind11 would hand uninitialised memory to a function that takes a reference.
template <class T>
struct Held {
    std::shared_ptr<T> object;

    T& operator*() const { return *object; }
    T* operator->() const { return object.get(); }
};

/// A text from Python, in UTF-8. A longer one than Qt's strings hold is a ValueError.
struct Text {
    std::string utf8;
};

/// An index from Python: from the end where it is negative, as Python has it. Outside it is an IndexError.
int indexOf(py::ssize_t index, std::size_t count);

/// The places in a list that a slice names.
struct Places {
    py::ssize_t first = 0; ///< where new items go, too, if there are none between
    py::ssize_t step = 1;
    py::ssize_t count = 0;

    std::size_t operator[](py::ssize_t i) const { return std::size_t(first + i * step); } ///< i < count

    void requireCount(std::size_t given) const; ///< a ValueError for another number of items
};

/// A slice from Python. Its limits are asked for when it is taken, which may run code that changes the list,
/// and held to the length of the list when the places are.
struct Slice {
    py::ssize_t start = 0;
    py::ssize_t stop = 0;
    py::ssize_t step = 1;

    Places in(std::size_t count) const;
};

/// The path that Python gives, a str or what os.fspath() takes; a ValueError where it isn't UTF-8 or has a
/// NUL in it.
struct Path {
    std::string utf8;
};

/// What the texts or paths are in UTF-8.
template <class T>
std::vector<std::string> utf8Of(const std::vector<T>& texts)
{
    std::vector<std::string> utf8;
    utf8.reserve(texts.size());
    for (const T& text : texts)
        utf8.push_back(text.utf8);
    return utf8;
}

/// The code of a field variable that Python names by a str or gives as an int. KeyError for an unknown name,
/// ValueError for a code outside first to last, TypeError for anything else.
int codeOf(const py::object& nameOrCode, int first, int last);

} // namespace Nereo::Python

namespace pybind11::detail {

template <class T>
struct type_caster<Nereo::Python::Held<T>> {
    PYBIND11_TYPE_CASTER(Nereo::Python::Held<T>, make_caster<T>::name);

    bool load(handle source, bool convert)
    {
        make_caster<std::shared_ptr<T>> caster;
        if (source.is_none() || !caster.load(source, convert))
            return false;
        value.object = static_cast<std::shared_ptr<T>&>(caster);
        return value.object != nullptr;
    }
};

template <>
struct type_caster<Nereo::Python::Text> {
    PYBIND11_TYPE_CASTER(Nereo::Python::Text, const_name("str"));

    bool load(handle source, bool convert);
};

template <>
struct type_caster<Nereo::Python::Slice> {
    PYBIND11_TYPE_CASTER(Nereo::Python::Slice, const_name("slice"));

    bool load(handle source, bool convert);
};

template <>
struct type_caster<Nereo::Python::Path> {
    PYBIND11_TYPE_CASTER(Nereo::Python::Path, const_name("Union[str, os.PathLike[str]]"));

    bool load(handle source, bool convert);
};

} // namespace pybind11::detail

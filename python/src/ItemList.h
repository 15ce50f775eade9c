#pragma once

#include "Values.h"

#include <vector>

namespace Nereo::Python {

/// Objects that Python code may hold on to, whatever becomes of the list: as a list of Python has them.
template <class T>
struct ItemList {
    std::vector<std::shared_ptr<T>> items;
};

/// The index of the first item of the name. A KeyError where there is none.
template <class T>
int indexOfName(const ItemList<T>& list, const std::string& name)
{
    for (std::size_t i = 0; i < list.items.size(); ++i) {
        if (list.items[i]->name() == name)
            return int(i);
    }
    throw py::key_error(name);
}

/// What every mutable sequence has, for a list that is or derives from ItemList<T>.
template <class T, class List, class Class>
void defineSequence(Class& type)
{
    using Self = Held<List>;

    type.def("__len__", [](const Self& self) { return self->items.size(); });
    type.def(
        "__getitem__",
        [](const Self& self, py::ssize_t index) {
            return self->items[std::size_t(indexOf(index, self->items.size()))];
        },
        py::arg("index"));
    type.def(
        "__getitem__",
        [](const Self& self, const py::slice& slice) {
            std::size_t start = 0;
            std::size_t stop = 0;
            std::size_t step = 0;
            std::size_t length = 0;
            if (!slice.compute(self->items.size(), &start, &stop, &step, &length))
                throw py::error_already_set();
            py::list part;
            for (; length > 0; --length, start += step)
                part.append(self->items[start]);
            return part;
        },
        py::arg("index"));
    type.def(
        "__setitem__",
        [](const Self& self, py::ssize_t index, const Held<T>& item) {
            self->items[std::size_t(indexOf(index, self->items.size()))] = item.object;
        },
        py::arg("index"), py::arg("item"));
    type.def(
        "__delitem__",
        [](const Self& self, py::ssize_t index) {
            self->items.erase(self->items.begin() + indexOf(index, self->items.size()));
        },
        py::arg("index"));
    type.def(
        "insert",
        [](const Self& self, py::ssize_t index, const Held<T>& item) {
            const auto size = py::ssize_t(self->items.size());
            const py::ssize_t fromStart = std::max<py::ssize_t>(0, index < 0 ? index + size : index);
            self->items.insert(self->items.begin() + std::min(fromStart, size), item.object);
        },
        py::arg("index"), py::arg("item"), "Inserts an item before the one at the index.");
}

/// The items by their names as well, the first where several have it.
template <class T, class List, class Class>
void defineNames(Class& type)
{
    using Self = Held<List>;

    type.def(
        "__getitem__",
        [](const Self& self, const Text& name) {
            return self->items[std::size_t(indexOfName(*self, name.utf8))];
        },
        py::arg("index"));
    type.def(
        "__setitem__",
        [](const Self& self, const Text& name, const Held<T>& item) {
            self->items[std::size_t(indexOfName(*self, name.utf8))] = item.object;
        },
        py::arg("index"), py::arg("item"));
    type.def(
        "__delitem__",
        [](const Self& self, const Text& name) {
            self->items.erase(self->items.begin() + indexOfName(*self, name.utf8));
        },
        py::arg("index"));
    type.def(
        "__contains__",
        [](const Self& self, const py::object& item) {
            const bool isName = PyUnicode_Check(item.ptr());
            const std::string name = isName ? item.cast<Text>().utf8 : std::string();
            for (std::size_t i = 0; i < self->items.size(); ++i) { // a comparison may change the list
                const std::shared_ptr<T> own = self->items[i];
                if (isName ? own->name() == name : py::cast(own).equal(item))
                    return true;
            }
            return false;
        },
        py::arg("item"));
    type.def(
        "names",
        [](const Self& self) {
            py::list names;
            for (const auto& item : self->items)
                names.append(item->name());
            return names;
        },
        "The names in the order of the items.");
}

} // namespace Nereo::Python

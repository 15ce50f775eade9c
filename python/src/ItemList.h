#pragma once

#include "Values.h"

#include <algorithm>
#include <string>
#include <vector>

namespace Nereo::Python {

/// Objects that Python code may hold on to, whatever becomes of the list: as a list of Python has them.
template <class T>
struct ItemList {
    std::vector<std::shared_ptr<T>> items; ///< none of them null
};

/// What an iterable gives. A TypeError where something else is among it.
template <class T>
std::vector<std::shared_ptr<T>> itemsOf(const py::object& iterable)
{
    std::vector<std::shared_ptr<T>> items;
    for (const py::handle& item : iterable) {
        py::detail::make_caster<Held<T>> caster;
        if (!caster.load(item, false))
            throw py::type_error("an item has to be a "
                                 + std::string(py::str(py::type::of<T>().attr("__name__"))) + ", not "
                                 + Py_TYPE(item.ptr())->tp_name);
        items.push_back(py::detail::cast_op<Held<T>&>(caster).object);
    }
    return items;
}

template <class T, class List>
std::shared_ptr<List> listOf(const py::object& iterable)
{
    auto list = std::make_shared<List>();
    list->items = itemsOf<T>(iterable);
    return list;
}

/// As of a list of Python: only what stands in one piece gives way to more items, or to fewer.
template <class T>
void replaceItems(std::vector<std::shared_ptr<T>>& items, const Places& places,
                  const std::vector<std::shared_ptr<T>>& others)
{
    if (places.step == 1) {
        const auto first = items.begin() + places.first;
        items.insert(items.erase(first, first + places.count), others.begin(), others.end());
        return;
    }
    places.requireCount(others.size());
    for (py::ssize_t i = 0; i < places.count; ++i)
        items[places[i]] = others[std::size_t(i)];
}

template <class T>
void removeItems(std::vector<std::shared_ptr<T>>& items, const Places& places)
{
    for (py::ssize_t i = 0; i < places.count; ++i)
        items[places[i]].reset();
    items.erase(std::remove(items.begin(), items.end(), nullptr), items.end());
}

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
        [](const Self& self, const Slice& slice) {
            const Places places = slice.in(self->items.size());
            py::list part;
            for (py::ssize_t i = 0; i < places.count; ++i)
                part.append(self->items[places[i]]);
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
        "__setitem__",
        [](const Self& self, const Slice& slice, const py::object& items) {
            const std::vector<std::shared_ptr<T>> others = itemsOf<T>(items); // which may change the list
            replaceItems(self->items, slice.in(self->items.size()), others);
        },
        py::arg("index"), py::arg("item"));
    type.def(
        "__delitem__",
        [](const Self& self, py::ssize_t index) {
            self->items.erase(self->items.begin() + indexOf(index, self->items.size()));
        },
        py::arg("index"));
    type.def(
        "__delitem__",
        [](const Self& self, const Slice& slice) { removeItems(self->items, slice.in(self->items.size())); },
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

#include "Values.h"

#include <NereoUtility/StringConversion.h>

#include <QStringList>

#include <algorithm>

namespace Nereo::Python {

void implementAbc(const py::object& type, const char* abc, std::initializer_list<const char*> methods)
{
    const py::object source = py::module_::import("collections.abc").attr(abc);
    const py::object own = type.attr("__dict__");
    for (const char* const method : methods) {
        if (!own.contains(method))
            py::setattr(type, method, source.attr(method));
    }
    source.attr("register")(type);
}

void implementMapping(const py::object& type)
{
    implementAbc(type, "Mapping", {"keys", "values", "items", "get", "__contains__"});
}

void implementMutableMapping(const py::object& type)
{
    implementMapping(type);
    implementAbc(type, "MutableMapping",
                 {"pop", "popitem", "clear", "update", "setdefault", "_MutableMapping__marker"});
}

void implementSequence(const py::object& type)
{
    implementAbc(type, "Sequence", {"__iter__", "__contains__", "__reversed__", "index", "count"});
}

void implementMutableSequence(const py::object& type)
{
    implementSequence(type);
    implementAbc(type, "MutableSequence",
                 {"append", "clear", "reverse", "extend", "pop", "remove", "__iadd__"});
}

Util::Version versionOf(const std::string& text)
{
    const QStringList parts = Util::toQString(text).split(QLatin1Char('.'));
    const auto isNumber = [](const QString& part) {
        bool isInteger = false;
        return part.toInt(&isInteger) >= 0 && isInteger;
    };
    if (parts.size() > 4 || !std::all_of(parts.begin(), parts.end(), isNumber))
        throw py::value_error("a version is up to four whole numbers joined by dots, not '" + text + "'");
    return Util::Version(Util::toQString(text));
}

py::object pythonPath(const std::string& path)
{
    if (path.empty())
        return py::none();
    return py::module_::import("pathlib").attr("Path")(path);
}

std::string representation(const char* type, const py::object& first,
                           std::initializer_list<std::pair<const char*, py::object>> others)
{
    std::string text = type + std::string("(") + std::string(py::repr(first));
    for (const auto& [name, value] : others)
        text += std::string(", ") + name + '=' + std::string(py::repr(value));
    return text + ')';
}

} // namespace Nereo::Python

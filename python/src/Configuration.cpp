#include "Findings.h"
#include "Values.h"

#include <NereoFileIO/Nereo2ConfigFile.h>

#include <pybind11/stl.h>

#include <variant>

namespace Nereo::Python {

using Inspection::FileKind;
using Io::Nereo2ConfigFile;
using Io::Setting;

namespace {

using Self = Held<Nereo2ConfigFile>;

[[noreturn]] void throwNoKey(const std::string& key)
{
    throw py::key_error(key);
}

Setting& settingOf(Nereo2ConfigFile& configuration, const std::string& key)
{
    if (!configuration.contains(key))
        throwNoKey(key);
    return configuration.setting(key);
}

py::object valueOf(const Setting& setting)
{
    switch (setting.type()) {
    case Setting::Int:
        return py::int_(setting.valueAsInt());
    case Setting::Double:
        return py::float_(setting.valueAsDouble());
    default:
        return py::str(setting.valueAsString());
    }
}

using SettingValue = std::variant<int, double, std::string>;

/// What a setting of the type takes. A value of another type is a TypeError: as a C++ setting does it,
/// "12abc" would become 0.
SettingValue converted(const std::string& key, Setting::Type type, const py::object& value)
{
    switch (type) {
    case Setting::Int:
        if (!PyIndex_Check(value.ptr()))
            throw py::type_error(key + " is an int");
        try {
            return value.cast<int>();
        } catch (const py::cast_error&) {
            throw py::value_error(key + " has 32 bits");
        }
    case Setting::Double:
        if (!PyFloat_Check(value.ptr()) && !PyIndex_Check(value.ptr()) && !py::hasattr(value, "__float__"))
            throw py::type_error(key + " is a float");
        return py::float_(value).cast<double>();
    default:
        if (!PyUnicode_Check(value.ptr()))
            throw py::type_error(key + " is a str");
        return value.cast<Text>().utf8;
    }
}

Setting::Type typeOf(Nereo2ConfigFile& configuration, const std::string& key)
{
    if (configuration.contains(key))
        return configuration.setting(key).type();
    configuration.reset(key);
    const Setting::Type type = settingOf(configuration, key).type();
    configuration.remove(key);
    return type;
}

/// The value comes first: what makes a number of it may be code that changes the configuration.
void setItem(Nereo2ConfigFile& configuration, const std::string& key, const py::object& value)
{
    const SettingValue taken = converted(key, typeOf(configuration, key), value);
    if (!configuration.contains(key))
        configuration.reset(key);
    Setting& setting = configuration.setting(key);
    std::visit([&setting](const auto& of) { setting.setValue(of); }, taken);
}

py::tuple stateOf(Nereo2ConfigFile& configuration)
{
    py::list values;
    for (const std::string& key : configuration.keys())
        values.append(py::make_tuple(key, valueOf(configuration.setting(key))));
    return py::make_tuple(configuration.version().toString().toStdString(), py::tuple(values));
}

std::shared_ptr<Nereo2ConfigFile> fromState(const py::tuple& state)
{
    auto configuration = std::make_shared<Nereo2ConfigFile>();
    configuration->clear();
    configuration->setVersion(versionOf(state[0].cast<std::string>()));
    for (const py::handle& item : state[1].cast<py::tuple>()) {
        const auto [key, value] = item.cast<std::pair<std::string, py::object>>();
        setItem(*configuration, key, value);
    }
    return configuration;
}

std::shared_ptr<Nereo2ConfigFile> make(const py::object& values, const py::kwargs& settings)
{
    auto configuration = std::make_shared<Nereo2ConfigFile>();
    const auto take = [&configuration](const py::dict& items) {
        // Of a copy, since a value may change what it came in.
        for (const auto& [key, value] : py::reinterpret_steal<py::dict>(PyDict_Copy(items.ptr())))
            setItem(*configuration, key.cast<Text>().utf8, py::reinterpret_borrow<py::object>(value));
    };
    if (!values.is_none())
        take(py::dict(values));
    take(settings);
    return configuration;
}

/// The kind that a load takes a configuration for depends on the suffix, and what it is, on the content: a
/// check is to notice where these differ.
FileKind kindToCheck(const std::string& path)
{
    const FileKind kind = Inspection::kindOfFile(path);
    if (kind == FileKind::ConfigurationXml || kind == FileKind::ConfigurationText)
        return kind;
    const std::string suffix = ".xml";
    const bool isXml =
        path.size() > suffix.size() && path.compare(path.size() - suffix.size(), suffix.size(), suffix) == 0;
    return isXml ? FileKind::ConfigurationXml : FileKind::ConfigurationText;
}

std::shared_ptr<Nereo2ConfigFile> load(const Path& path, bool strict)
{
    auto configuration = std::make_shared<Nereo2ConfigFile>();
    loadChecked(path.utf8, kindToCheck(path.utf8), strict,
                [&](const std::string& source) { return configuration->loadFrom(source); });
    return configuration;
}

void save(Nereo2ConfigFile& configuration, const Path& path)
{
    requireSaved(path.utf8, configuration.saveWholeTo(path.utf8));
}

void takeCommandLine(Nereo2ConfigFile& configuration, const std::vector<Text>& arguments)
{
    const std::vector<std::string> texts = utf8Of(arguments);
    Nereo2ConfigFile changed = configuration;
    for (const auto* key : {&Nereo2ConfigFile::ExePath, &Nereo2ConfigFile::JobPrefix}) {
        if (!changed.contains(*key))
            throwNoKey(*key);
    }
    if (!changed.loadFromRequiredCommandLineArguments(texts))
        throw py::value_error("a command line begins with the program and the prefix of the job");
    if (!changed.loadFromOptionalCommandLineArguments(texts))
        throw py::value_error("behind the prefix of the job stand pairs of -Key and value");
    configuration = changed;
}

const char* const documentation = R"(The configuration of a solver run: a mapping from key to setting.

A new one has every setting with its default; values are given as a mapping, by
keywords, or later by assignment. The keys are fixed: another one is a KeyError.
Each setting keeps its type, int (32 bits), float or str; a value of another type
is a TypeError. ``del`` leaves a setting out until it is assigned to or reset.

>>> configuration = Configuration(JobPrefix="cavity")
>>> configuration["MaxIter"] = 500
>>> configuration["MaxIter"], configuration["StopTime"]
(500, 1e+20)
>>> configuration.save("cavity.xml")
>>> Configuration.load("cavity.xml") == configuration
True
)";

} // namespace

void bindConfiguration(py::module_& module)
{
    py::class_<Nereo2ConfigFile, std::shared_ptr<Nereo2ConfigFile>> type(module, "Configuration",
                                                                         documentation);
    type.attr("DEFAULT_NAME") = Nereo2ConfigFile::DefaultName;
    type.def(py::init(&make), py::arg("values") = py::none());
    type.def_static("load", &load, py::arg("path"), py::kw_only(), py::arg("strict") = true,
                    "The configuration in a file: XML if the name ends in .xml, otherwise text.\n\n"
                    "Settings that the file leaves out have their defaults. Raises FileError where the\n"
                    "file has errors; strict=False takes what can be read of it.");
    type.def(
        "save", [](const Self& self, const Path& path) { save(*self, path); }, py::arg("path"),
        "Writes the file, as XML if the name ends in .xml, otherwise as text.");
    type.def(
        "__getitem__", [](const Self& self, const Text& key) { return valueOf(settingOf(*self, key.utf8)); },
        py::arg("key"));
    type.def(
        "__setitem__",
        [](const Self& self, const Text& key, const py::object& value) { setItem(*self, key.utf8, value); },
        py::arg("key"), py::arg("value"));
    type.def(
        "__delitem__",
        [](const Self& self, const Text& key) {
            settingOf(*self, key.utf8);
            self->remove(key.utf8);
        },
        py::arg("key"));
    type.def("__len__", [](const Self& self) { return self->keys().size(); });
    type.def("__iter__", [](const Self& self) { return py::iter(py::cast(self->keys())); });
    type.def(
        "clear", [](const Self& self) { self->clear(); }, "Leaves all settings out.");
    type.def(
        "reset",
        [](const Self& self, const std::optional<Text>& key) {
            if (!key)
                return self->resetAll();
            self->reset(key->utf8);
            settingOf(*self, key->utf8);
        },
        py::arg("key") = py::none(), "Gives a setting, or all of them, their defaults.");
    type.def(
        "set_text",
        [](const Self& self, const Text& key, const Text& text) {
            settingOf(*self, key.utf8).setValueFromString(text.utf8);
        },
        py::arg("key"), py::arg("text"),
        "Sets a value as a file or a command line does: text that is no number is 0.");
    type.def(
        "text", [](const Self& self, const Text& key) { return settingOf(*self, key.utf8).valueAsString(); },
        py::arg("key"), "The value as files have it: 'MaxIter' as '500'.");
    type.def(
        "take_command_line",
        [](const Self& self, const std::vector<Text>& arguments) { takeCommandLine(*self, arguments); },
        py::arg("arguments"),
        "Takes the settings of a solver's command line, the program first: all, or with a\n"
        "ValueError none.");
    type.def_property(
        "version", [](const Self& self) { return self->version().toString().toStdString(); },
        [](const Self& self, const Text& version) { self->setVersion(versionOf(version.utf8)); },
        "Four numbers joined by dots.");
    type.def_property_readonly(
        "path", [](const Self& self) { return pythonPath(self->filePath()); },
        "Where it was loaded from or saved to, as a pathlib.Path; or None.");
    type.def("__repr__", [](const Self& self) {
        return "<Configuration of " + std::to_string(self->keys().size()) + " settings>";
    });
    defineValue<Nereo2ConfigFile>(type, &stateOf, &fromState);
    implementMutableMapping(type);
}

} // namespace Nereo::Python

#include "Findings.h"
#include "Materials.h"
#include "Vocabulary.h"

#include <NereoFileIO/CodeNameTable.h>
#include <NereoFileIO/GbiFile.h>

#include <pybind11/stl.h>

namespace Nereo::Python {

using Io::BoundaryCondition;
using Io::GbiFile;

namespace {

// Conditions

using ConditionSelf = Held<BoundaryCondition>;
using ConditionList = ItemList<BoundaryCondition>;

/// A name is that of a field variable or of a node flag, as the file has them.
int conditionCode(const py::object& variable)
{
    if (!PyUnicode_Check(variable.ptr()))
        return codeOf(variable, 0, Io::kNone);
    const std::string name = variable.cast<Text>().utf8;
    const int code = Io::CodeNameTable::instance().codeForName(QString::fromStdString(name));
    if (code == Io::kNone && name != "kNone")
        throw py::key_error(name);
    return code;
}

std::string conditionName(const BoundaryCondition& condition)
{
    return Io::CodeNameTable::instance().nameForCode(condition.kCode(), true).toStdString();
}

py::tuple extraValues(const BoundaryCondition& condition)
{
    py::list values;
    for (int i = 0; i < condition.extraValueCount(); ++i)
        values.append(condition.extraValue(i));
    return values;
}

void setExtraValues(BoundaryCondition& condition, const std::vector<double>& values)
{
    condition.clearExtraValues();
    for (const double value : values)
        condition.addExtraValue(value);
}

int extraIndex(const BoundaryCondition& condition, py::ssize_t index)
{
    return indexOf(index, std::size_t(condition.extraValueCount()));
}

std::shared_ptr<BoundaryCondition> makeCondition(const py::object& variable, double value, int entity,
                                                 int timeCurve, const std::vector<double>& extraValues)
{
    auto condition = std::make_shared<BoundaryCondition>(conditionCode(variable));
    condition->setValue(value);
    condition->setEntityId(entity);
    condition->setTimeCurveId(timeCurve);
    setExtraValues(*condition, extraValues);
    return condition;
}

py::tuple stateOf(const BoundaryCondition& condition)
{
    return py::make_tuple(condition.kCode(), condition.value(), condition.entityId(), condition.timeCurveId(),
                          extraValues(condition));
}

std::shared_ptr<BoundaryCondition> conditionFrom(const py::tuple& state)
{
    return makeCondition(state[0], state[1].cast<double>(), state[2].cast<int>(), state[3].cast<int>(),
                         state[4].cast<std::vector<double>>());
}

const char* const conditionDocumentation = R"(One condition on a surface or node set of the mesh.

The variable, a field variable or node flag by name or code, can't be changed
later. Values are in the units of the file; a time curve of 0 or less is none.

>>> inlet = BoundaryCondition("kU", value=1.5, entity_id=3)
>>> inlet.name, inlet.code, inlet.value
('kU', 1, 1.5)
>>> inlet.extra_values = [0.5, 2.0]
>>> inlet.extra_values
(0.5, 2.0)
)";

void bindCondition(py::module_& module)
{
    py::class_<BoundaryCondition, std::shared_ptr<BoundaryCondition>> type(module, "BoundaryCondition",
                                                                           conditionDocumentation);
    type.def(py::init(&makeCondition), py::arg("variable") = 0, py::arg("value") = 0.0,
             py::arg("entity_id") = 0, py::arg("time_curve_id") = -1, py::arg("extra_values") = py::tuple());
    type.def_property_readonly(
        "code", [](const ConditionSelf& self) { return self->kCode(); }, "Of the variable.");
    type.def_property_readonly(
        "name", [](const ConditionSelf& self) { return conditionName(*self); },
        "Of the variable, as the file has it.");
    type.def_property(
        "value", [](const ConditionSelf& self) { return self->value(); },
        [](const ConditionSelf& self, double value) { self->setValue(value); });
    type.def_property(
        "entity_id", [](const ConditionSelf& self) { return self->entityId(); },
        [](const ConditionSelf& self, int id) { self->setEntityId(id); },
        "The number of the surface or node set.");
    type.def_property(
        "time_curve_id", [](const ConditionSelf& self) { return self->timeCurveId(); },
        [](const ConditionSelf& self, int id) { self->setTimeCurveId(id); }, "From 1; 0 and below for none.");
    type.def_property_readonly(
        "time_curve_flag", [](const ConditionSelf& self) { return self->timeCurveFlag(); },
        "-1 with a time curve, otherwise 0.");
    type.def_property(
        "extra_values", [](const ConditionSelf& self) { return extraValues(*self); },
        [](const ConditionSelf& self, const std::vector<double>& values) { setExtraValues(*self, values); },
        "Further values, as a tuple. Assign to change them.");
    type.def(
        "add_extra_value", [](const ConditionSelf& self, double value) { self->addExtraValue(value); },
        py::arg("value"), "Adds a value at the end.");
    type.def(
        "set_extra_value",
        [](const ConditionSelf& self, py::ssize_t index, double value) {
            self->setExtraValue(extraIndex(*self, index), value);
        },
        py::arg("index"), py::arg("value"), "Replaces a value; an IndexError where it isn't there.");
    type.def(
        "remove_extra_value",
        [](const ConditionSelf& self, py::ssize_t index) {
            self->removeExtraValue(extraIndex(*self, index));
        },
        py::arg("index"), "Removes a value; an IndexError where it isn't there.");
    type.def(
        "clear_extra_values", [](const ConditionSelf& self) { self->clearExtraValues(); },
        "Removes all of them.");
    type.def("__repr__", [](const ConditionSelf& self) {
        return representation(
            "BoundaryCondition", py::str(conditionName(*self)),
            {
                {"value",     py::float_(self->value()) },
                {"entity_id", py::int_(self->entityId())}
        });
    });
    defineValue<BoundaryCondition>(
        type, [](const BoundaryCondition& condition) { return stateOf(condition); }, &conditionFrom);
}

py::tuple stateOf(const ConditionList& list)
{
    const auto items = list.items; // to make a tuple may run code that changes the list
    py::list conditions;
    for (const auto& condition : items)
        conditions.append(stateOf(*condition));
    return conditions;
}

std::shared_ptr<ConditionList> conditionsFrom(const py::tuple& state)
{
    auto list = std::make_shared<ConditionList>();
    for (const py::handle& condition : state)
        list->items.push_back(conditionFrom(condition.cast<py::tuple>()));
    return list;
}

void bindConditionList(py::module_& module)
{
    py::class_<ConditionList, std::shared_ptr<ConditionList>> type(
        module, "BoundaryConditions", "The conditions of a GeometryBoundary: a mutable sequence.");
    type.def(py::init(&listOf<BoundaryCondition, ConditionList>), py::arg("items") = py::tuple());
    type.def("__repr__", [](const Held<ConditionList>& self) {
        return "<BoundaryConditions: " + std::to_string(self->items.size()) + ">";
    });
    defineSequence<BoundaryCondition, ConditionList>(type);
    defineValue<ConditionList>(
        type, [](const ConditionList& list) { return stateOf(list); }, &conditionsFrom);
    implementMutableSequence(type);
}

// The file

/// What a GbiFile holds, in parts that Python code may hold on to.
struct GeometryBoundary {
    GbiFile head; ///< without materials and conditions
    std::shared_ptr<MaterialDatabase> materials = std::make_shared<MaterialDatabase>();
    std::shared_ptr<ConditionList> conditions = std::make_shared<ConditionList>();
    std::string path;

    GbiFile file() const
    {
        GbiFile file = head;
        file.setMaterialDatabase(materials->file());
        for (const auto& condition : conditions->items)
            file.addSurfaceBoundaryCondition(*condition);
        return file;
    }
};

using Self = Held<GeometryBoundary>;

// In the order of the enumerators.
constexpr const char* coordinateSystemNames[] = {"NONE", "XY", "XR", "RY", "RT", "ZY", "XZ", "XYZ", "RTZ"};
constexpr const char* unitsNames[] = {"METER", "CENTIMETER", "MILLIMETER", "FEET", "INCH", "INCH_WATT"};

template <std::size_t count>
py::object makeEnum(py::module_& module, const char* name, const char* const (&names)[count],
                    const char* documentation)
{
    py::list members;
    for (std::size_t i = 0; i < count; ++i)
        members.append(py::make_tuple(names[i], i));
    py::object type =
        py::module_::import("enum").attr("IntEnum")(name, members, py::arg("module") = "nereofile");
    type.doc() = documentation;
    module.attr(name) = type;
    return type;
}

/// An enumerator from one, from its name or from its number; another one is a ValueError.
template <std::size_t count>
int enumerator(const char* what, const char* const (&names)[count], const py::object& value)
{
    if (PyUnicode_Check(value.ptr())) {
        const std::string text = value.cast<Text>().utf8;
        for (std::size_t i = 0; i < count; ++i) {
            if (text == names[i])
                return int(i);
        }
        throw py::value_error("no " + std::string(what) + " is called '" + text + "'");
    }
    if (!PyIndex_Check(value.ptr()))
        throw py::type_error("a " + std::string(what) + " is named by an enumerator, a str or an int");
    const py::ssize_t number = PyNumber_AsSsize_t(value.ptr(), PyExc_ValueError);
    if (PyErr_Occurred())
        throw py::error_already_set();
    if (number < 0 || number >= py::ssize_t(count))
        throw py::value_error("no " + std::string(what) + " has the number " + std::to_string(number));
    return int(number);
}

void setCoordinateSystem(GeometryBoundary& file, const py::object& value)
{
    file.head.setCoordinateSystem(
        GbiFile::CoordinateSystem(enumerator("coordinate system", coordinateSystemNames, value)));
}

void setUnits(GeometryBoundary& file, const py::object& value)
{
    file.head.setUnits(GbiFile::Units(enumerator("unit", unitsNames, value)));
}

void save(GeometryBoundary& geometry, const Path& path)
{
    const GbiFile file = geometry.file();
    geometry.path = path.utf8; // also that of a save that fails
    saveUnlocked(file, path.utf8);
}

py::tuple stateOf(const GeometryBoundary& file)
{
    return py::make_tuple(file.head.version().toString().toStdString(), file.head.jobName(),
                          file.head.productLine(), int(file.head.coordinateSystem()), int(file.head.units()),
                          stateOf(*file.materials), stateOf(*file.conditions));
}

std::shared_ptr<GeometryBoundary> fileFrom(const py::tuple& state)
{
    auto file = std::make_shared<GeometryBoundary>();
    file->head.setVersion(versionOf(state[0].cast<std::string>()));
    file->head.setJobName(state[1].cast<Text>().utf8);
    file->head.setProductLine(state[2].cast<Text>().utf8);
    setCoordinateSystem(*file, state[3]);
    setUnits(*file, state[4]);
    file->materials = databaseFrom(state[5].cast<py::tuple>());
    file->conditions = conditionsFrom(state[6].cast<py::tuple>());
    return file;
}

const char* const documentation =
    R"(The geometry and boundary input file of a solver run, which is written only.

``materials`` is a MaterialDatabase and ``conditions`` a mutable sequence of
BoundaryCondition. What such a file says is told by ``inspect``.

>>> file = GeometryBoundary(job_name="cavity", units="MILLIMETER")
>>> file.conditions.append(BoundaryCondition("kU", value=1.5, entity_id=3))
>>> file.materials.append(Material("fluid", name="Water", id=1))
>>> file.save("cavity.gbi")
>>> inspect("cavity.gbi")["conditions/1/value"].value
1.5
)";

} // namespace

void bindBoundaryConditions(py::module_& module)
{
    bindCondition(module);
    bindConditionList(module);
}

void bindGeometryBoundary(py::module_& module)
{
    const py::object coordinateSystems =
        makeEnum(module, "CoordinateSystem", coordinateSystemNames,
                 "The axes of a mesh: X, Y and Z, or R and T, the angle, of a cylindrical system.");
    const py::object units = makeEnum(module, "Units", unitsNames, "The unit of lengths.");

    py::class_<GeometryBoundary, std::shared_ptr<GeometryBoundary>> type(module, "GeometryBoundary",
                                                                         documentation);
    type.def(py::init([](const Text& jobName, const py::object& coordinateSystem, const py::object& unit) {
                 auto file = std::make_shared<GeometryBoundary>();
                 file->head.setJobName(jobName.utf8);
                 setCoordinateSystem(*file, coordinateSystem);
                 setUnits(*file, unit);
                 return file;
             }),
             py::arg("job_name") = "", py::arg("coordinate_system") = "XYZ", py::arg("units") = "METER");
    type.def(
        "save", [](const Self& self, const Path& path) { save(*self, path); }, py::arg("path"),
        "Writes the file.");
    type.def_property(
        "job_name", [](const Self& self) { return self->head.jobName(); },
        [](const Self& self, const Text& name) { self->head.setJobName(name.utf8); });
    type.def_property(
        "product_line", [](const Self& self) { return self->head.productLine(); },
        [](const Self& self, const Text& line) { self->head.setProductLine(line.utf8); },
        "The program that the file comes from, with its branch.");
    type.def_property(
        "coordinate_system",
        [coordinateSystems](const Self& self) {
            return coordinateSystems(int(self->head.coordinateSystem()));
        },
        [](const Self& self, const py::object& value) { setCoordinateSystem(*self, value); },
        "A CoordinateSystem; names and numbers are taken as well.");
    type.def_property(
        "units", [units](const Self& self) { return units(int(self->head.units())); },
        [](const Self& self, const py::object& value) { setUnits(*self, value); },
        "One of Units; names and numbers are taken as well.");
    type.def_property(
        "materials", [](const Self& self) { return self->materials; },
        [](const Self& self, const Held<MaterialDatabase>& materials) { self->materials = materials.object; },
        "Of each the file names the id, the name and the flags.");
    type.def_property_readonly(
        "conditions", [](const Self& self) { return self->conditions; }, "On surfaces and node sets.");
    type.def_property(
        "version", [](const Self& self) { return self->head.version().toString().toStdString(); },
        [](const Self& self, const Text& version) { self->head.setVersion(versionOf(version.utf8)); },
        "Four numbers joined by dots.");
    type.def_property_readonly(
        "path", [](const Self& self) { return pythonPath(self->path); },
        "Where it was saved to, as a pathlib.Path; or None.");
    type.def("__repr__", [](const Self& self) {
        return "<GeometryBoundary of " + std::to_string(self->conditions->items.size()) + " conditions>";
    });
    defineValue<GeometryBoundary>(
        type, [](const GeometryBoundary& file) { return stateOf(file); }, &fileFrom);
}

} // namespace Nereo::Python

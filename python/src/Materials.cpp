#include "Materials.h"

#include "Findings.h"
#include "Vocabulary.h"

#include <NereoFileIO/FieldVariable.h>
#include <NereoFileIO/PropertyType.h>
#include <NereoFileIO/VariationType.h>
#include <NereoUtility/StringConversion.h>

#include <pybind11/numpy.h>
#include <pybind11/stl.h>

namespace Nereo::Python {

using Io::Material;
using Io::MaterialDatabaseFile;
using Io::MaterialProperty;
using Util::toQString;

void MaterialDatabase::take(MaterialDatabaseFile&& file)
{
    version = file.version();
    items.clear();
    for (int i = 0; i < file.count(); ++i)
        items.push_back(std::make_shared<Material>(std::move(file.material(i))));
}

MaterialDatabaseFile MaterialDatabase::file() const
{
    MaterialDatabaseFile file;
    file.setVersion(version);
    for (const auto& material : items)
        file.add(*material);
    return file;
}

namespace {

// Properties

using PropertySelf = Held<MaterialProperty>;
using PointArray = py::array_t<double, py::array::c_style | py::array::forcecast>;

std::shared_ptr<MaterialProperty> makeProperty(const std::string& type)
{
    if (!type.empty() && !Clt::PropertyType::fromName(toQString(type)).isValid())
        throw py::value_error("no property is called '" + type + "'");
    return std::make_shared<MaterialProperty>(type);
}

void setVariationType(MaterialProperty& property, const std::string& variation)
{
    if (!Clt::VariationType::fromName(toQString(variation)).isValid())
        throw py::value_error("no variation is called '" + variation + "'");
    property.setVariationType(variation);
}

py::object independentVariable(const MaterialProperty& property)
{
    if (property.independentVariable() == Io::kNone)
        return py::none();
    return py::str(fieldVariableName(property.independentVariable()));
}

void setIndependentVariable(MaterialProperty& property, const py::object& variable)
{
    property.setIndependentVariable(variable.is_none() ? int(Io::kNone) : codeOf(variable, 1, Io::kNone));
}

py::array_t<double> pointsOf(const MaterialProperty& property)
{
    py::array_t<double> points({property.pointCount(), 2});
    auto at = points.mutable_unchecked<2>();
    for (int i = 0; i < property.pointCount(); ++i) {
        at(i, 0) = property.point(i).x();
        at(i, 1) = property.point(i).y();
    }
    points.attr("setflags")(py::arg("write") = false); // it is a copy: what is written there would be lost
    return points;
}

void setPoints(MaterialProperty& property, const PointArray& points)
{
    if (points.size() != 0 && (points.ndim() != 2 || points.shape(1) != 2))
        throw py::value_error("points have the shape (N, 2)");
    property.clearPoints();
    if (points.size() == 0)
        return;
    const auto at = points.unchecked<2>();
    for (py::ssize_t i = 0; i < points.shape(0); ++i)
        property.addPoint(at(i, 0), at(i, 1));
}

py::tuple stateOf(const MaterialProperty& property)
{
    py::list points;
    for (int i = 0; i < property.pointCount(); ++i)
        points.append(py::make_tuple(property.point(i).x(), property.point(i).y()));
    return py::make_tuple(property.type(), property.variationType(), property.value(),
                          property.independentVariable(), py::tuple(points));
}

std::shared_ptr<MaterialProperty> propertyFrom(const py::tuple& state)
{
    auto property = makeProperty(state[0].cast<Text>().utf8);
    property->setVariationType(state[1].cast<Text>().utf8);
    property->setValue(state[2].cast<double>());
    property->setIndependentVariable(codeOf(state[3], 0, Io::kNone));
    for (const py::handle& point : state[4].cast<py::tuple>()) {
        const auto [x, y] = point.cast<std::pair<double, double>>();
        property->addPoint(x, y);
    }
    return property;
}

const char* const propertyDocumentation =
    R"(One property of a material: what it is, how it varies, and its numbers.

The type is a name of ``property_types`` or empty; the variation is one of
``variation_types``. ``value`` counts where that is "constant" or
"equation_of_state", ``points`` where it is "piecewise_linear".

>>> density = Property("density", value=998.2)
>>> density.code, density.value
(25, 998.2)
>>> density.variation_type = "piecewise_linear"
>>> density.independent_variable = "kT"
>>> density.points = [(273.15, 999.8), (293.15, 998.2)]
>>> density.points.shape
(2, 2)
)";

void bindProperty(py::module_& module)
{
    py::class_<MaterialProperty, std::shared_ptr<MaterialProperty>> type(module, "Property",
                                                                         propertyDocumentation);
    type.def(py::init([](const Text& name, double value) {
                 auto property = makeProperty(name.utf8);
                 property->setValue(value);
                 return property;
             }),
             py::arg("type") = "", py::arg("value") = 0.0);
    type.def_property_readonly(
        "type", [](const PropertySelf& self) { return self->type(); }, "Such as 'density'; may be empty.");
    type.def_property_readonly(
        "code",
        [](const PropertySelf& self) -> py::object {
            if (self->type().empty())
                return py::none();
            return py::int_(self->typeCode());
        },
        "The field variable of the type; None without a type.");
    type.def_property(
        "variation_type", [](const PropertySelf& self) { return self->variationType(); },
        [](const PropertySelf& self, const Text& name) { setVariationType(*self, name.utf8); },
        "How it varies; a ValueError for a name that isn't known.");
    type.def_property_readonly(
        "variation_code", [](const PropertySelf& self) { return self->variationCode(); },
        "The solver's code of the variation; -1 where a file names an unknown one.");
    type.def_property(
        "value", [](const PropertySelf& self) { return self->value(); },
        [](const PropertySelf& self, double value) { self->setValue(value); }, "In the units of the file.");
    type.def_property(
        "independent_variable", [](const PropertySelf& self) { return independentVariable(*self); },
        [](const PropertySelf& self, const py::object& variable) { setIndependentVariable(*self, variable); },
        "The name of the field variable of the points' x; None without one. Takes codes too.");
    type.def_property(
        "points", [](const PropertySelf& self) { return pointsOf(*self); },
        [](const PropertySelf& self, const PointArray& points) { setPoints(*self, points); },
        "The curve, an array of shape (N, 2) of x and y: a read-only copy. Assign to change it.");
    type.def(
        "add_point", [](const PropertySelf& self, double x, double y) { self->addPoint(x, y); }, py::arg("x"),
        py::arg("y"), "Adds a point at the end.");
    type.def(
        "remove_point",
        [](const PropertySelf& self, py::ssize_t index) {
            self->removePoint(indexOf(index, std::size_t(self->pointCount())));
        },
        py::arg("index"), "Removes a point; an IndexError where it isn't there.");
    type.def(
        "clear_points", [](const PropertySelf& self) { self->clearPoints(); }, "Removes all points.");
    type.def("__repr__", [](const PropertySelf& self) {
        return representation("Property", py::str(self->type()),
                              {
                                  {"value", py::float_(self->value())}
        });
    });
    defineValue<MaterialProperty>(
        type, [](const MaterialProperty& property) { return stateOf(property); }, &propertyFrom);
}

// Materials

using MaterialSelf = Held<Material>;

int codeOfProperty(const py::object& nameOrCode)
{
    if (!PyUnicode_Check(nameOrCode.ptr()))
        return codeOf(nameOrCode, 1, Io::kNone);
    const std::string name = nameOrCode.cast<Text>().utf8;
    const Clt::PropertyType type = Clt::PropertyType::fromName(toQString(name));
    if (!type.isValid())
        throw py::key_error(name);
    return type.code();
}

/// What Python has for the property: its type, or where it has none, that of the first with its code.
std::string keyOf(Material& material, int code)
{
    std::string type = material.property(code).type();
    if (!type.empty())
        return type;
    const Clt::PropertyType first = Clt::PropertyType::fromCode(code);
    return first.isValid() ? first.name().toStdString() : fieldVariableName(code);
}

/// The property as long as Python holds it: properties of a material never go.
std::shared_ptr<MaterialProperty> propertyOf(const MaterialSelf& material, int code)
{
    return {material.object, &material->property(code)};
}

std::shared_ptr<MaterialProperty> presentProperty(const MaterialSelf& material, const py::object& name)
{
    const int code = codeOfProperty(name);
    if (!material->findProperty(code))
        throw py::key_error(std::string(py::str(name)));
    return propertyOf(material, code);
}

void setProperty(const MaterialSelf& material, const py::object& name, const py::object& value)
{
    const int code = codeOfProperty(name);
    if (!py::isinstance<MaterialProperty>(value)) {
        const auto number = value.cast<double>();
        return material->property(code).setValue(number);
    }
    const auto property = value.cast<PropertySelf>();
    if (!property->type().empty() && property->typeCode() != code)
        throw py::value_error("a property of the type '" + property->type() + "' has another place");
    const MaterialProperty copy = *property; // which may be the very one
    material->property(code) = copy;
}

py::tuple stateOf(Material& material)
{
    py::list properties;
    for (const int code : material.propertyCodes())
        properties.append(py::make_tuple(code, stateOf(material.property(code))));
    return py::make_tuple(material.type(), material.name(), material.id(), int(material.environmentType()),
                          material.refPressure(), material.refTemperature(), material.refCompressibility(),
                          material.vaporPressure(), material.gasConstant(), material.diffusionCoefficient(),
                          py::tuple(properties));
}

std::shared_ptr<Material> materialFrom(const py::tuple& state)
{
    auto material = std::make_shared<Material>(state[0].cast<Text>().utf8);
    material->setName(state[1].cast<Text>().utf8);
    material->setId(state[2].cast<int>());
    material->setEnvironmentType(Material::EnvironmentType(state[3].cast<int>()));
    material->setRefPressure(state[4].cast<double>());
    material->setRefTemperature(state[5].cast<double>());
    material->setRefCompressibility(state[6].cast<double>());
    material->setVaporPressure(state[7].cast<double>());
    material->setGasConstant(state[8].cast<double>());
    material->setDiffusionCoefficient(state[9].cast<double>());
    for (const py::handle& item : state[10].cast<py::tuple>()) {
        const auto [code, property] = item.cast<std::pair<py::object, py::tuple>>();
        material->property(codeOf(code, 0, Io::kNone)) = *propertyFrom(property);
    }
    return material;
}

const char* const materialDocumentation =
    R"(A material: its reference values, and a mapping from property to Property.

A "fluid" and a "solid" come with the properties that they have, all constant
zero; any other type starts without. The key of a property is its type; those
types that share a field variable share one property. Assigning a number makes
its value, assigning a Property copies that. Properties can't be removed.

>>> water = Material("fluid", name="Water", id=1)
>>> water["density"] = 998.2
>>> water["density"].value
998.2
>>> "emissivity" in water
True
)";

template <class Class, class Get, class Set>
void defineNumber(Class& type, const char* name, Get get, Set set, const char* documentation)
{
    type.def_property(
        name, [get](const MaterialSelf& self) { return ((*self).*get)(); },
        [set](const MaterialSelf& self, double value) { ((*self).*set)(value); }, documentation);
}

void bindMaterial(py::module_& module)
{
    py::class_<Material, std::shared_ptr<Material>> type(module, "Material", materialDocumentation);
    type.attr("INVALID_ID") = int(Material::InvalidId);
    type.def(py::init([](const Text& kind, const Text& name, int id) {
                 auto material = std::make_shared<Material>(kind.utf8);
                 material->setName(name.utf8);
                 material->setId(id);
                 return material;
             }),
             py::arg("type") = "fluid", py::arg("name") = "", py::arg("id") = int(Material::InvalidId));
    type.def_property_readonly(
        "type", [](const MaterialSelf& self) { return self->type(); }, "Such as 'fluid'; it never changes.");
    type.def_property(
        "name", [](const MaterialSelf& self) { return self->name(); },
        [](const MaterialSelf& self, const Text& name) { self->setName(name.utf8); });
    type.def_property(
        "id", [](const MaterialSelf& self) { return self->id(); },
        [](const MaterialSelf& self, int id) { self->setId(id); }, "0 for none.");
    type.def_property(
        "environment_type", [](const MaterialSelf& self) { return int(self->environmentType()); },
        [](const MaterialSelf& self, int value) {
            self->setEnvironmentType(Material::EnvironmentType(value));
        },
        "How the product classifies the surroundings.");
    defineNumber(type, "ref_pressure", &Material::refPressure, &Material::setRefPressure,
                 "Reference pressure.");
    defineNumber(type, "ref_temperature", &Material::refTemperature, &Material::setRefTemperature,
                 "Reference temperature.");
    defineNumber(type, "ref_compressibility", &Material::refCompressibility, &Material::setRefCompressibility,
                 "Reference compressibility.");
    defineNumber(type, "vapor_pressure", &Material::vaporPressure, &Material::setVaporPressure,
                 "Vapor pressure.");
    defineNumber(type, "gas_constant", &Material::gasConstant, &Material::setGasConstant, "Gas constant.");
    defineNumber(type, "diffusion_coefficient", &Material::diffusionCoefficient,
                 &Material::setDiffusionCoefficient, "Diffusion coefficient.");
    type.def_property_readonly(
        "fluid_flag", [](const MaterialSelf& self) { return self->fluidFlag(); },
        "1 for a fluid and what the solver models as a part of one, otherwise 0.");
    type.def_property_readonly(
        "resist_flag", [](const MaterialSelf& self) { return self->resistFlag(); },
        "The solver's number for the type as a resistance; 13 when it knows none.");
    type.def("__len__", [](const MaterialSelf& self) { return self->propertyCodes().size(); });
    type.def("__iter__", [](const MaterialSelf& self) {
        py::list keys;
        for (const int code : self->propertyCodes())
            keys.append(keyOf(*self, code));
        return py::iter(keys);
    });
    type.def("__getitem__", &presentProperty, py::arg("name"));
    type.def("__setitem__", &setProperty, py::arg("name"), py::arg("value"));
    type.def(
        "property",
        [](const MaterialSelf& self, const py::object& name) {
            return propertyOf(self, codeOfProperty(name));
        },
        py::arg("name"),
        "The property of the name or code. One that isn't there is added, without a type and\n"
        "constant zero.");
    type.def("__repr__", [](const MaterialSelf& self) {
        return representation("Material", py::str(self->type()),
                              {
                                  {"name", py::str(self->name())},
                                  {"id",   py::int_(self->id()) }
        });
    });
    defineValue<Material>(
        type, [](Material& material) { return stateOf(material); }, &materialFrom);
    implementMapping(type);
}

// Databases

using DatabaseSelf = Held<MaterialDatabase>;

std::shared_ptr<MaterialDatabase> loadDatabase(const Path& path, bool strict)
{
    MaterialDatabaseFile file;
    loadChecked(path.utf8, Inspection::FileKind::Materials, strict,
                [&file](const std::string& source) { return file.loadFrom(source); });
    auto database = std::make_shared<MaterialDatabase>();
    database->take(std::move(file));
    database->path = path.utf8;
    return database;
}

void saveDatabase(MaterialDatabase& database, const Path& path)
{
    const MaterialDatabaseFile file = database.file();
    database.path = path.utf8; // also that of a save that fails
    saveUnlocked(file, path.utf8);
}

const char* const databaseDocumentation = R"(A list of materials, which are found by name as well.

Of several materials with one name, the name finds the first. The materials are
those that were put in, no copies.

>>> database = MaterialDatabase([Material("fluid", name="Water", id=1)])
>>> database["Water"]["density"] = 998.2
>>> "Water" in database, len(database)
(True, 1)
>>> database.save("materials.xml")
>>> MaterialDatabase.load("materials.xml") == database
True
)";

void bindDatabase(py::module_& module)
{
    py::class_<MaterialDatabase, std::shared_ptr<MaterialDatabase>> type(module, "MaterialDatabase",
                                                                         databaseDocumentation);
    type.def(py::init(&listOf<Material, MaterialDatabase>), py::arg("materials") = py::tuple());
    type.def_static("load", &loadDatabase, py::arg("path"), py::kw_only(), py::arg("strict") = true,
                    "The materials in an XML file. Raises FileError where the file has errors;\n"
                    "strict=False takes the materials up to there.");
    type.def(
        "save", [](const DatabaseSelf& self, const Path& path) { saveDatabase(*self, path); },
        py::arg("path"), "Writes the file. Numbers have six significant digits there.");
    type.def_property(
        "version", [](const DatabaseSelf& self) { return self->version.toString().toStdString(); },
        [](const DatabaseSelf& self, const Text& version) { self->version = versionOf(version.utf8); },
        "Four numbers joined by dots.");
    type.def_property_readonly(
        "path", [](const DatabaseSelf& self) { return pythonPath(self->path); },
        "Where it was loaded from or saved to, as a pathlib.Path; or None.");
    type.def("__repr__", [](const DatabaseSelf& self) {
        return "<MaterialDatabase of " + std::to_string(self->items.size()) + " materials>";
    });
    defineSequence<Material, MaterialDatabase>(type);
    defineNames<Material, MaterialDatabase>(type);
    defineValue<MaterialDatabase>(
        type, [](const MaterialDatabase& database) { return stateOf(database); }, &databaseFrom);
    implementMutableSequence(type);
}

} // namespace

py::tuple stateOf(const MaterialDatabase& database)
{
    const auto items = database.items; // to make a tuple may run code that changes the list
    py::list materials;
    for (const auto& material : items)
        materials.append(stateOf(*material));
    return py::make_tuple(database.version.toString().toStdString(), py::tuple(materials));
}

std::shared_ptr<MaterialDatabase> databaseFrom(const py::tuple& state)
{
    auto database = std::make_shared<MaterialDatabase>();
    database->version = versionOf(state[0].cast<std::string>());
    for (const py::handle& material : state[1].cast<py::tuple>())
        database->items.push_back(materialFrom(material.cast<py::tuple>()));
    return database;
}

void bindMaterials(py::module_& module)
{
    bindProperty(module);
    bindMaterial(module);
    bindDatabase(module);
}

} // namespace Nereo::Python

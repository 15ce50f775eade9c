#include "Values.h"

#include <NereoFileIO/ControlFile.h>

#include <array>
#include <tuple>

namespace Nereo::Python {

using namespace Io;

namespace {

template <class Record, class Value>
struct FieldOf {
    const char* name;
    Value Record::*member;
};

/// A value of Python for a field of a record: a bool for a switch, no text for a number.
template <class Value>
void assign(Value& field, const py::handle& value)
{
    field = value.cast<Value>();
}

void assign(bool& field, const py::handle& value)
{
    if (!PyBool_Check(value.ptr()))
        throw py::type_error("a switch is True or False");
    field = value.cast<bool>();
}

void assign(std::string& field, const py::handle& value)
{
    field = value.cast<Text>().utf8;
}

/// A record whose fields are properties, keywords of its constructor, and its state in the order given.
template <class Record, class... Values>
void bindRecord(py::module_& module, const char* name, const char* documentation,
                FieldOf<Record, Values>... fields)
{
    py::class_<Record, std::shared_ptr<Record>> type(module, name, documentation);
    type.def(py::init([=](const py::kwargs& values) {
        auto record = std::make_shared<Record>();
        const auto take = [&](const auto& field) -> std::size_t {
            if (!values.contains(field.name))
                return 0;
            assign((*record).*field.member, values[field.name]);
            return 1;
        };
        if ((0 + ... + take(fields)) != values.size())
            throw py::type_error("there is no such field");
        return record;
    }));
    const auto defineField = [&type](const auto& field) {
        const auto member = field.member;
        type.def_property(
            field.name, [member](const Held<Record>& self) { return (*self).*member; },
            [member](const Held<Record>& self, const py::object& value) { assign((*self).*member, value); });
    };
    (defineField(fields), ...);

    const std::string typeName = name;
    type.def("__repr__", [=](const Held<Record>& self) {
        std::string text = typeName + '(';
        const auto add = [&](const auto& field) {
            if (text.back() != '(')
                text += ", ";
            text += field.name + std::string("=") + std::string(py::repr(py::cast((*self).*field.member)));
        };
        (add(fields), ...);
        return text + ')';
    });
    defineValue<Record>(
        type, [=](const Record& record) { return py::make_tuple(record.*fields.member...); },
        [=](const py::tuple& state) {
            if (state.size() != sizeof...(fields))
                throw py::value_error("that is no state of such a record");
            auto record = std::make_shared<Record>();
            std::size_t i = 0;
            (assign((*record).*fields.member, state[i++]), ...);
            return record;
        });
}

template <class Record, class Value>
FieldOf<Record, Value> field(const char* name, Value Record::*member)
{
    return {name, member};
}

// Flags

using FlagSelf = Held<Flag>;

void setFlagValue(Flag& flag, const py::object& value)
{
    if (PyUnicode_Check(value.ptr()))
        return flag.setValue(value.cast<Text>().utf8);
    if (PyFloat_Check(value.ptr()))
        return flag.setValue(value.cast<double>());
    if (!PyIndex_Check(value.ptr()))
        throw py::type_error("the value of a flag is a str, an int or a float");
    try {
        flag.setValue(value.cast<int>());
    } catch (const py::cast_error&) {
        throw py::value_error("the value of a flag has 32 bits");
    }
}

std::shared_ptr<Flag> makeFlag(const Text& name, const py::object& value)
{
    auto flag = std::make_shared<Flag>();
    flag->setName(name.utf8);
    setFlagValue(*flag, value);
    return flag;
}

void bindFlag(py::module_& module)
{
    py::class_<Flag, std::shared_ptr<Flag>> type(
        module, "Flag", R"(A named text of the control file, which may stand for a number.

The file separates words by white space: a name or value with white space in it
is cut when it is loaded again.

>>> flag = Flag("advection", 5)
>>> flag.value, flag.value_as_int
('5', 5)
)");
    type.def(py::init(&makeFlag), py::arg("name") = "", py::arg("value") = "");
    type.def_property(
        "name", [](const FlagSelf& self) { return self->name(); },
        [](const FlagSelf& self, const Text& name) { self->setName(name.utf8); });
    type.def_property(
        "value", [](const FlagSelf& self) { return self->value(); },
        [](const FlagSelf& self, const py::object& value) { setFlagValue(*self, value); },
        "A text; assigning takes numbers too, floats with six significant digits.");
    type.def_property_readonly(
        "value_as_int", [](const FlagSelf& self) { return self->valueAsInt(); },
        "0 when the value is no integer.");
    type.def_property_readonly(
        "value_as_float", [](const FlagSelf& self) { return self->valueAsDouble(); },
        "0.0 when the value is no number.");
    type.def("__repr__", [](const FlagSelf& self) {
        return representation("Flag", py::str(self->name()),
                              {
                                  {"value", py::str(self->value())}
        });
    });
    defineValue<Flag>(
        type, [](const Flag& flag) { return py::make_tuple(flag.name(), flag.value()); },
        [](const py::tuple& state) {
            return makeFlag(state[0].cast<Text>(), py::str(state[1].cast<Text>().utf8));
        });
}

} // namespace

void bindControlRecords(py::module_& module)
{
    bindFlag(module);
    bindRecord(module, "SequentialSolver",
               "The iterations of the sequential solver, and a variable with its tolerance.",
               field("integer1", &SeqSolverType::integer1), field("integer2", &SeqSolverType::integer2),
               field("integer3", &SeqSolverType::integer3), field("variable", &SeqSolverType::variable),
               field("tolerance", &SeqSolverType::tolerance));
    bindRecord(module, "SolutionControl", "How one variable is solved. integer3 is always saved as 1.",
               field("integer1", &PhiSolveType::integer1), field("integer2", &PhiSolveType::integer2),
               field("integer3", &PhiSolveType::integer3), field("tolerance", &PhiSolveType::tolerance));
    bindRecord(module, "AutoConvergence", "The thresholds by which a run is found converged.",
               field("instantaneous_slope", &AutoConvData::instantaneousSlope),
               field("time_average_slope", &AutoConvData::timeAverageSlope),
               field("time_average_concavity", &AutoConvData::timeAverageConcavity),
               field("field_fluctuation", &AutoConvData::fieldFluctuation));
    bindRecord(module, "Inflation", "The record of the constant kInflate.",
               field("switch1", &InflationData::switch1), field("switch2", &InflationData::switch2),
               field("switch3", &InflationData::switch3), field("integer4", &InflationData::integer4),
               field("integer5", &InflationData::integer5), field("number6", &InflationData::number6),
               field("number7", &InflationData::number7), field("number8", &InflationData::number8),
               field("number9", &InflationData::number9), field("number10", &InflationData::number10),
               field("number11", &InflationData::number11), field("switch12", &InflationData::switch12));
    bindRecord(module, "AutoYPlus", "The record of the constant kAutoYP.",
               field("integer1", &AutoYPlusData::integer1), field("integer2", &AutoYPlusData::integer2),
               field("integer3", &AutoYPlusData::integer3), field("integer4", &AutoYPlusData::integer4),
               field("number5", &AutoYPlusData::number5), field("number6", &AutoYPlusData::number6));
    bindRecord(module, "Smoke", "The record of the constant kSmokeOn.", field("on", &SmokeData::on),
               field("number2", &SmokeData::number2), field("number3", &SmokeData::number3),
               field("number4", &SmokeData::number4));
    bindRecord(module, "ThermalComfort", "The record of the constant kThComfOn.",
               field("on", &ThermalComfortData::on), field("number2", &ThermalComfortData::number2),
               field("number3", &ThermalComfortData::number3),
               field("number4", &ThermalComfortData::number4));
}

} // namespace Nereo::Python

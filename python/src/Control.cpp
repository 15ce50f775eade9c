#include "Findings.h"
#include "Materials.h"
#include "Vocabulary.h"

#include <NereoFileIO/ControlFile.h>

#include <pybind11/stl.h>

namespace Nereo::Python {

using namespace Io;

namespace {

using FlagList = ItemList<Flag>;

/// What a ControlFile holds, in parts that Python code may hold on to: the flags and materials apart, the
/// rest in a file that is never assigned to.
struct Control {
    std::shared_ptr<ControlFile> head = std::make_shared<ControlFile>();
    std::shared_ptr<FlagList> flags = std::make_shared<FlagList>();
    std::shared_ptr<MaterialDatabase> materials = std::make_shared<MaterialDatabase>();
    std::string path;

    void takeFlags()
    {
        flags->items.clear();
        for (int i = 0; i < head->flagCount(); ++i)
            flags->items.push_back(std::make_shared<Flag>(head->flag(i)));
        head->clearFlags();
    }

    ControlFile file() const
    {
        ControlFile file = *head;
        for (const auto& flag : flags->items)
            file.addFlag(*flag);
        file.setMaterialDatabase(materials->file());
        return file;
    }
};

using Self = Held<Control>;

// Flags

py::tuple stateOf(const FlagList& list)
{
    const auto items = list.items; // to make a tuple may run code that changes the list
    py::list flags;
    for (const auto& flag : items)
        flags.append(py::make_tuple(flag->name(), flag->value()));
    return flags;
}

std::shared_ptr<FlagList> flagsFrom(const py::tuple& state)
{
    auto list = std::make_shared<FlagList>();
    for (const py::handle& item : state) {
        const auto [name, value] = item.cast<std::pair<Text, Text>>();
        auto flag = std::make_shared<Flag>();
        flag->setName(name.utf8);
        flag->setValue(value.utf8);
        list->items.push_back(flag);
    }
    return list;
}

void bindFlagList(py::module_& module)
{
    py::class_<FlagList, std::shared_ptr<FlagList>> type(
        module, "Flags",
        "The flags of a ControlFile: a mutable sequence, whose names find the first of each.");
    type.def(py::init(&listOf<Flag, FlagList>), py::arg("items") = py::tuple());
    type.def("__repr__", [](const Held<FlagList>& self) {
        return "<Flags: " + std::to_string(self->items.size()) + ">";
    });
    defineSequence<Flag, FlagList>(type);
    defineNames<Flag, FlagList>(type);
    defineValue<FlagList>(
        type, [](const FlagList& list) { return stateOf(list); }, &flagsFrom);
    implementMutableSequence(type);
}

// What has a value for each of some codes

/// Numbers of a control file by field variable, of the codes from 1 to count.
struct CodedNumbers {
    std::shared_ptr<ControlFile> file;
    int count;
    double (ControlFile::*get)(int) const;
    void (ControlFile::*set)(int, double); ///< null where they can't be changed
};

/// The records of how variables are solved, likewise.
struct SolvedVariables {
    std::shared_ptr<ControlFile> file;
    int count = ControlFile::SolvedVariableCount;
};

struct Equations {
    std::shared_ptr<ControlFile> file;
};

py::list namesUpTo(int count)
{
    py::list names;
    for (int code = 1; code <= count; ++code)
        names.append(fieldVariableName(code));
    return names;
}

/// The numbers in the order of their codes.
py::tuple stateOf(const CodedNumbers& numbers)
{
    py::tuple values(std::size_t(numbers.count));
    for (int code = 1; code <= numbers.count; ++code)
        values[std::size_t(code - 1)] = ((*numbers.file).*numbers.get)(code);
    return values;
}

CodedNumbers constantsOf(const Control& control)
{
    return {control.head, ControlFile::ConstantCount, &ControlFile::constant, &ControlFile::setConstant};
}

CodedNumbers originalConstantsOf(const Control& control)
{
    return {control.head, ControlFile::ConstantCount, &ControlFile::originalConstant, nullptr};
}

CodedNumbers underRelaxationOf(const Control& control)
{
    return {control.head, ControlFile::RelaxedVariableCount, &ControlFile::phiUnderRelax,
            &ControlFile::setPhiUnderRelax};
}

CodedNumbers inertialRelaxationOf(const Control& control)
{
    return {control.head, ControlFile::RelaxedVariableCount, &ControlFile::phiInertRelax,
            &ControlFile::setPhiInertRelax};
}

template <class T, class Class>
void defineCodes(Class& type)
{
    type.def("__len__", [](const Held<T>& self) { return self->count; });
    type.def("__iter__", [](const Held<T>& self) { return py::iter(namesUpTo(self->count)); });
    type.def("__repr__", [](const py::object& self) {
        return "<" + std::string(py::str(py::type::of(self).attr("__name__"))) + ": "
            + std::to_string(py::len(self)) + ">";
    });
    // By the values and not by identity, as of any mapping.
    type.def("__eq__", [](const py::object& self, const py::object& other) -> py::object {
        if (!py::isinstance<T>(other))
            return py::reinterpret_borrow<py::object>(Py_NotImplemented);
        const py::object dict = py::module_::import("builtins").attr("dict");
        return py::bool_(dict(self).equal(dict(other)));
    });
}

void bindCodedValues(py::module_& module)
{
    py::class_<CodedNumbers, std::shared_ptr<CodedNumbers>> numbers(
        module, "CodedNumbers",
        "Numbers of a ControlFile by field variable, a mapping with a fixed set of keys: names, or\n"
        "codes. A name outside it is a KeyError, a code a ValueError.");
    defineCodes<CodedNumbers>(numbers);
    numbers.def(
        "__getitem__",
        [](const Held<CodedNumbers>& self, const py::object& variable) {
            return ((*self->file).*self->get)(codeOf(variable, 1, self->count));
        },
        py::arg("variable"));
    numbers.def(
        "__setitem__",
        [](const Held<CodedNumbers>& self, const py::object& variable, double value) {
            const int code = codeOf(variable, 1, self->count);
            if (!self->set)
                throw py::type_error("original constants can't be changed");
            ((*self->file).*self->set)(code, value);
        },
        py::arg("variable"), py::arg("value"));
    numbers.def("__reduce__", [](const py::object& self) {
        const py::object dict = py::module_::import("builtins").attr("dict");
        return py::make_tuple(dict, py::make_tuple(dict(self)));
    });
    implementMapping(numbers);
    implementAbc(numbers, "MutableMapping", {"update"});

    py::class_<SolvedVariables, std::shared_ptr<SolvedVariables>> solved(
        module, "SolvedVariables",
        "The SolutionControl of each variable of a ControlFile that is solved: a mapping with a fixed\n"
        "set of keys, whose items can be changed.");
    defineCodes<SolvedVariables>(solved);
    solved.def(
        "__getitem__",
        [](const Held<SolvedVariables>& self, const py::object& variable) {
            const int code = codeOf(variable, 1, self->count);
            return std::shared_ptr<PhiSolveType>(self->file, &self->file->phiSolve(code));
        },
        py::arg("variable"));
    solved.def(
        "__setitem__",
        [](const Held<SolvedVariables>& self, const py::object& variable, const Held<PhiSolveType>& value) {
            self->file->phiSolve(codeOf(variable, 1, self->count)) = *value;
        },
        py::arg("variable"), py::arg("value"));
    solved.def("__reduce__", [](const py::object& self) {
        const py::object dict = py::module_::import("builtins").attr("dict");
        return py::make_tuple(dict, py::make_tuple(dict(self)));
    });
    implementMapping(solved);

    py::class_<Equations, std::shared_ptr<Equations>> equations(
        module, "Equations", "Whether each of the five equations is solved: a sequence of numbers.");
    equations.def("__len__", [](const Held<Equations>&) { return int(ControlFile::EquationCount); });
    equations.def(
        "__getitem__",
        [](const Held<Equations>& self, py::ssize_t index) {
            return self->file->equationFlag(indexOf(index, ControlFile::EquationCount));
        },
        py::arg("index"));
    equations.def(
        "__getitem__",
        [](const Held<Equations>& self, const Slice& slice) {
            const Places places = slice.in(ControlFile::EquationCount);
            std::vector<int> part;
            for (py::ssize_t i = 0; i < places.count; ++i)
                part.push_back(self->file->equationFlag(int(places[i])));
            return part;
        },
        py::arg("index"));
    equations.def(
        "__setitem__",
        [](const Held<Equations>& self, py::ssize_t index, int value) {
            self->file->setEquationFlag(indexOf(index, ControlFile::EquationCount), value);
        },
        py::arg("index"), py::arg("value"));
    equations.def(
        "__setitem__",
        [](const Held<Equations>& self, const Slice& slice, const std::vector<int>& values) {
            const Places places = slice.in(ControlFile::EquationCount);
            places.requireCount(values.size());
            for (py::ssize_t i = 0; i < places.count; ++i)
                self->file->setEquationFlag(int(places[i]), values[std::size_t(i)]);
        },
        py::arg("index"), py::arg("value"));
    equations.def("__repr__",
                  [](const py::object& self) { return "Equations" + std::string(py::str(py::tuple(self))); });
    equations.def("__eq__", [](const py::object& self, const py::object& other) -> py::object {
        if (!py::isinstance<Equations>(other))
            return py::reinterpret_borrow<py::object>(Py_NotImplemented);
        return py::bool_(py::tuple(self).equal(py::tuple(other)));
    });
    equations.def("__reduce__", [](const py::object& self) {
        const py::object tuple = py::module_::import("builtins").attr("tuple");
        return py::make_tuple(tuple, py::make_tuple(tuple(self)));
    });
    implementSequence(equations);
}

// The file

template <class Record>
py::tuple stateOfRecord(const std::shared_ptr<ControlFile>& head, Record& record)
{
    const py::object object = py::cast(std::shared_ptr<Record>(head, &record));
    return object.attr("__reduce__")().cast<py::tuple>()[1].cast<py::tuple>()[1].cast<py::tuple>();
}

template <class Record>
void restoreRecord(Record& record, const py::handle& state)
{
    record = *py::type::of<Record>().attr("_from_state")(state).template cast<Held<Record>>();
}

py::tuple stateOf(Control& control)
{
    ControlFile& head = *control.head;
    py::list solved;
    for (int code = 1; code <= ControlFile::SolvedVariableCount; ++code)
        solved.append(stateOfRecord(control.head, head.phiSolve(code)));
    py::list equations;
    for (int i = 0; i < ControlFile::EquationCount; ++i)
        equations.append(head.equationFlag(i));
    return py::make_tuple(py::make_tuple(head.version().toString().toStdString(), int(head.format()),
                                         head.headerLine1(), head.headerLine2(), head.title(), head.units(),
                                         head.transientForm(), head.numberOfTimeSteps(), head.timeStepSize(),
                                         head.stopTime(), head.isAutoConvOn(), head.isAutoStopOn()),
                          py::tuple(equations), py::tuple(solved), stateOf(underRelaxationOf(control)),
                          stateOf(inertialRelaxationOf(control)), stateOf(constantsOf(control)),
                          py::make_tuple(stateOfRecord(control.head, head.sequentialSolver()),
                                         stateOfRecord(control.head, head.autoConvData()),
                                         stateOfRecord(control.head, head.inflationData()),
                                         stateOfRecord(control.head, head.autoYPlusData()),
                                         stateOfRecord(control.head, head.smokeData()),
                                         stateOfRecord(control.head, head.thermalComfortData())),
                          stateOf(*control.flags), stateOf(*control.materials));
}

void restoreNumbers(const CodedNumbers& numbers, const py::tuple& values)
{
    for (int code = 1; code <= numbers.count; ++code)
        ((*numbers.file).*numbers.set)(code, values[std::size_t(code - 1)].cast<double>());
}

void restoreFacts(ControlFile& head, const py::tuple& facts)
{
    head.setFormat(ControlFile::Format(facts[1].cast<int>()));
    head.setHeaderLine1(facts[2].cast<Text>().utf8);
    head.setVersion(versionOf(facts[0].cast<std::string>())); // the header line sets it too
    head.setHeaderLine2(facts[3].cast<Text>().utf8);
    head.setTitle(facts[4].cast<Text>().utf8);
    head.setUnits(facts[5].cast<int>());
    head.setTransientForm(facts[6].cast<int>());
    head.setNumberOfTimeSteps(facts[7].cast<int>());
    head.setTimeStepSize(facts[8].cast<double>());
    head.setStopTime(facts[9].cast<double>());
    head.setAutoConvOn(facts[10].cast<bool>());
    head.setAutoStopOn(facts[11].cast<bool>());
}

std::shared_ptr<Control> controlFrom(const py::tuple& state)
{
    auto control = std::make_shared<Control>();
    ControlFile& head = *control->head;
    restoreFacts(head, state[0].cast<py::tuple>());
    const auto equations = state[1].cast<py::tuple>();
    for (int i = 0; i < ControlFile::EquationCount; ++i)
        head.setEquationFlag(i, equations[std::size_t(i)].cast<int>());
    const auto solved = state[2].cast<py::tuple>();
    for (int code = 1; code <= ControlFile::SolvedVariableCount; ++code)
        restoreRecord(head.phiSolve(code), solved[std::size_t(code - 1)]);
    restoreNumbers(underRelaxationOf(*control), state[3].cast<py::tuple>());
    restoreNumbers(inertialRelaxationOf(*control), state[4].cast<py::tuple>());
    restoreNumbers(constantsOf(*control), state[5].cast<py::tuple>());
    const auto records = state[6].cast<py::tuple>();
    restoreRecord(head.sequentialSolver(), records[0]);
    restoreRecord(head.autoConvData(), records[1]);
    restoreRecord(head.inflationData(), records[2]);
    restoreRecord(head.autoYPlusData(), records[3]);
    restoreRecord(head.smokeData(), records[4]);
    restoreRecord(head.thermalComfortData(), records[5]);
    control->flags = flagsFrom(state[7].cast<py::tuple>());
    control->materials = databaseFrom(state[8].cast<py::tuple>());
    return control;
}

std::shared_ptr<Control> load(const Path& path, bool strict)
{
    auto control = std::make_shared<Control>();
    loadChecked(path.utf8, Inspection::FileKind::Control, strict,
                [&](const std::string& source) { return control->head->loadFrom(source); });
    control->takeFlags();
    control->path = path.utf8;
    return control;
}

void save(Control& control, const Path& path)
{
    const ControlFile file = control.file();
    control.path = path.utf8; // also that of a save that fails
    saveUnlocked(file, path.utf8);
}

/// A property that a getter and a setter of ControlFile stand for.
template <class Class, class Value>
void defineFact(Class& type, const char* name, Value (ControlFile::*get)() const,
                void (ControlFile::*set)(Value), const char* documentation = "")
{
    type.def_property(
        name, [get](const Self& self) { return ((*self->head).*get)(); },
        [set](const Self& self, Value value) { ((*self->head).*set)(value); }, documentation);
}

template <class Class>
void defineText(Class& type, const char* name, std::string (ControlFile::*get)() const,
                void (ControlFile::*set)(const std::string&), const char* documentation = "")
{
    type.def_property(
        name, [get](const Self& self) { return ((*self->head).*get)(); },
        [set](const Self& self, const Text& text) { ((*self->head).*set)(text.utf8); }, documentation);
}

/// A record of the file, whose fields can be changed; assigning copies another one.
template <class Class, class Record>
void defineRecord(Class& type, const char* name, Record& (ControlFile::*get)(), const char* documentation)
{
    type.def_property(
        name,
        [get](const Self& self) { return std::shared_ptr<Record>(self->head, &((*self->head).*get)()); },
        [get](const Self& self, const Held<Record>& value) { ((*self->head).*get)() = *value; },
        documentation);
}

template <class Class>
void defineNumbers(Class& type, const char* name, CodedNumbers (*get)(const Control&),
                   const char* documentation)
{
    type.def_property_readonly(
        name, [get](const Self& self) { return std::make_shared<CodedNumbers>(get(*self)); }, documentation);
}

const char* const documentation = R"(All settings of one solver run.

Loading a file and saving it loses its materials, its automatic convergence
settings and what its fixed sections said: a load doesn't read them. To change
values of a file that is there, use ``edit``.

What is known by field variable (``constants``, ``under_relaxation``,
``inertial_relaxation``, ``solution_control``) is a mapping by name or code.

>>> control = ControlFile(title="Cavity")
>>> control.under_relaxation["kU"] = 0.3
>>> control.constants["kGravY"] = -9.81
>>> control.flags.append(Flag("advection", 5))
>>> control.save("cavity.ctl")
>>> ControlFile.load("cavity.ctl").flags["advection"].value
'5'
)";

} // namespace

void bindControl(py::module_& module)
{
    bindFlagList(module);
    bindCodedValues(module);

    py::class_<Control, std::shared_ptr<Control>> type(module, "ControlFile", documentation);
    type.def(py::init([](const Text& title) {
                 auto control = std::make_shared<Control>();
                 control->head->setTitle(title.utf8);
                 return control;
             }),
             py::arg("title") = "");
    type.def_static("load", &load, py::arg("path"), py::kw_only(), py::arg("strict") = true,
                    "The settings in a file. Raises FileError where the file has errors; strict=False\n"
                    "takes what can be read, also of a file that announces another number of flags\n"
                    "than it has, where a load of C++ stops the process.");
    type.def(
        "save", [](const Self& self, const Path& path) { save(*self, path); }, py::arg("path"),
        "Writes the file, with its materials and flags.");
    defineText(type, "title", &ControlFile::title, &ControlFile::setTitle);
    defineText(type, "header_line1", &ControlFile::headerLine1, &ControlFile::setHeaderLine1,
               "The first line of the file; assigning also sets the version that it ends with.");
    defineText(type, "header_line2", &ControlFile::headerLine2, &ControlFile::setHeaderLine2,
               "The second line of the file.");
    defineFact(type, "units", &ControlFile::units, &ControlFile::setUnits, "The number of the unit system.");
    defineFact(type, "transient_form", &ControlFile::transientForm, &ControlFile::setTransientForm);
    defineFact(type, "number_of_time_steps", &ControlFile::numberOfTimeSteps,
               &ControlFile::setNumberOfTimeSteps);
    defineFact(type, "time_step_size", &ControlFile::timeStepSize, &ControlFile::setTimeStepSize);
    defineFact(type, "stop_time", &ControlFile::stopTime, &ControlFile::setStopTime, "-1 until set.");
    defineFact(type, "auto_conv_on", &ControlFile::isAutoConvOn, &ControlFile::setAutoConvOn,
               "Whether convergence is assessed. Saved, but not loaded.");
    defineFact(type, "auto_stop_on", &ControlFile::isAutoStopOn, &ControlFile::setAutoStopOn,
               "Whether a converged run stops. Saved, but not loaded.");
    type.def_property(
        "format", [](const Self& self) { return int(self->head->format()); },
        [](const Self& self, int format) { self->head->setFormat(ControlFile::Format(format)); },
        "A variant of the file, which nothing interprets.");
    defineRecord<decltype(type), SeqSolverType>(type, "sequential_solver", &ControlFile::sequentialSolver,
                                                "A SequentialSolver.");
    defineRecord<decltype(type), AutoConvData>(type, "auto_convergence", &ControlFile::autoConvData,
                                               "An AutoConvergence, which is saved, but not loaded.");
    defineRecord<decltype(type), InflationData>(type, "inflation", &ControlFile::inflationData,
                                                "An Inflation.");
    defineRecord<decltype(type), AutoYPlusData>(type, "auto_y_plus", &ControlFile::autoYPlusData,
                                                "An AutoYPlus.");
    defineRecord<decltype(type), SmokeData>(type, "smoke", &ControlFile::smokeData, "A Smoke.");
    defineRecord<decltype(type), ThermalComfortData>(type, "thermal_comfort",
                                                     &ControlFile::thermalComfortData, "A ThermalComfort.");
    type.def_property_readonly(
        "solution_control",
        [](const Self& self) { return std::make_shared<SolvedVariables>(SolvedVariables {self->head}); },
        "How each variable is solved: codes 1 to 24, of which files carry 1 to 15 when saved.");
    defineNumbers(type, "under_relaxation", &underRelaxationOf, "Factors of the codes 1 to 46.");
    defineNumbers(type, "inertial_relaxation", &inertialRelaxationOf, "Factors of the codes 1 to 46.");
    defineNumbers(type, "constants", &constantsOf,
                  "The constants of the codes 1 to 328, of which those from 223 are saved where they\n"
                  "differ from the original.");
    defineNumbers(type, "original_constants", &originalConstantsOf, "Their factory values, read-only.");
    type.def_property(
        "equations", [](const Self& self) { return std::make_shared<Equations>(Equations {self->head}); },
        [](const Self& self, const std::array<int, ControlFile::EquationCount>& values) {
            for (int i = 0; i < ControlFile::EquationCount; ++i)
                self->head->setEquationFlag(i, values[std::size_t(i)]);
        },
        "Whether each of the five equations is solved.");
    type.def_property_readonly(
        "flags", [](const Self& self) { return self->flags; }, "In the order of the file.");
    type.def_property(
        "materials", [](const Self& self) { return self->materials; },
        [](const Self& self, const Held<MaterialDatabase>& materials) { self->materials = materials.object; },
        "The materials of the run; a load leaves them empty.");
    type.def_property(
        "version", [](const Self& self) { return self->head->version().toString().toStdString(); },
        [](const Self& self, const Text& version) { self->head->setVersion(versionOf(version.utf8)); },
        "Four numbers joined by dots.");
    type.def_property_readonly(
        "path", [](const Self& self) { return pythonPath(self->path); },
        "Where it was loaded from or saved to, as a pathlib.Path; or None.");
    type.def("__repr__", [](const Self& self) {
        return "<ControlFile " + std::string(py::repr(py::str(self->head->title()))) + ", "
            + std::to_string(self->flags->items.size()) + " flags>";
    });
    defineValue<Control>(
        type, [](Control& control) { return stateOf(control); }, &controlFrom);
}

} // namespace Nereo::Python

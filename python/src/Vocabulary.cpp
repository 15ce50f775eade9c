#include "Vocabulary.h"

#include <NereoFileIO/CodeNameTable.h>
#include <NereoFileIO/MaterialType.h>
#include <NereoFileIO/PropertyType.h>
#include <NereoFileIO/VariationType.h>
#include <NereoUtility/StringConversion.h>
#include <NereoUtility/Version.h>

#include <pybind11/stl.h>

#include <unordered_map>

namespace Nereo::Python {

namespace py = pybind11;
using Util::toStdString;

namespace {

struct NamedCode {
    const char* name;
    int code;
};

constexpr NamedCode fieldVariables[] = {
#define FIELD_VARIABLE(name, code) {#name, code},
#include <NereoFileIO/FieldVariable.def>
};

constexpr NamedCode nodeFlags[] = {
#define NODE_FLAG(name, code) {#name, code},
#include <NereoFileIO/NodeFlag.def>
};

constexpr const char* materialTypeNames[] = {
#define MATERIAL_TYPE(object, name, displayName) name,
#include <NereoFileIO/MaterialType.def>
};

constexpr const char* propertyTypeNames[] = {
#define PROPERTY_TYPE(object, name, displayName, unitCategory, code) name,
#include <NereoFileIO/PropertyType.def>
};

struct VariationNames {
    const char* name;
    const char* olderName;
};

constexpr VariationNames variationTypeNames[] = {
#define VARIATION_TYPE(object, name, displayName, code, alias) {name, alias},
#include <NereoFileIO/VariationType.def>
};

template <std::size_t count>
py::dict codesOf(const NamedCode (&rows)[count])
{
    py::dict codes;
    for (const auto& [name, code] : rows)
        codes[name] = code;
    return codes;
}

py::list materialTypes()
{
    py::list rows;
    for (const char* const name : materialTypeNames) {
        const Clt::MaterialType type = Clt::MaterialType::fromName(QString::fromUtf8(name));
        rows.append(
            py::make_tuple(name, toStdString(type.displayName()), type.index(), type.isFlowComponent()));
    }
    return rows;
}

py::list propertyTypes()
{
    py::list rows;
    for (const char* const name : propertyTypeNames) {
        const Clt::PropertyType type = Clt::PropertyType::fromName(QString::fromUtf8(name));
        rows.append(py::make_tuple(name, toStdString(type.displayName()), type.index(), type.code(),
                                   type.unitCategory()));
    }
    return rows;
}

py::list variationTypes()
{
    py::list rows;
    for (const auto& [name, olderName] : variationTypeNames) {
        const Clt::VariationType type = Clt::VariationType::fromName(QString::fromUtf8(name));
        rows.append(
            py::make_tuple(name, toStdString(type.displayName()), type.index(), type.code(), olderName));
    }
    return rows;
}

std::unordered_map<std::string, int> fieldVariableCodes()
{
    std::unordered_map<std::string, int> codes;
    for (const auto& [name, code] : fieldVariables)
        codes.emplace(name, code);
    // Further names of what has a name already.
    for (const auto& [name, code] : fieldVariables)
        codes.emplace(fieldVariableName(code), code);
    return codes;
}

} // namespace

int fieldVariableCode(const std::string& name)
{
    static const std::unordered_map<std::string, int> codes = fieldVariableCodes();
    const auto found = codes.find(name);
    return found == codes.end() ? 0 : found->second;
}

std::string fieldVariableName(int code)
{
    return toStdString(Io::CodeNameTable::instance().nameForCode(code, false));
}

void bindVocabulary(py::module_& module)
{
    module.attr("library_version") = toStdString(Util::Version::Current.toString());
    module.attr("library_branch") = toStdString(Util::Version::Branch());
    module.def("field_variable_codes", [] { return codesOf(fieldVariables); });
    module.def("node_flag_codes", [] { return codesOf(nodeFlags); });
    module.def("material_types", &materialTypes);
    module.def("property_types", &propertyTypes);
    module.def("variation_types", &variationTypes);
    module.def(
        "code_for_name",
        [](const std::string& name) {
            return Io::CodeNameTable::instance().codeForName(Util::toQString(name));
        },
        py::arg("name"));
    module.def(
        "name_for_code",
        [](int code, bool preferFlagName) {
            if (code < 0 || code > Io::kNone)
                throw py::value_error("code " + std::to_string(code) + " is outside 0 to "
                                      + std::to_string(int(Io::kNone)));
            return toStdString(Io::CodeNameTable::instance().nameForCode(code, preferFlagName));
        },
        py::arg("code"), py::arg("prefer_flag_name") = false);
}

} // namespace Nereo::Python

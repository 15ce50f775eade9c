"""Every public name of the C++ classes is reachable from Python, or stands here with the reason why it isn't."""

from __future__ import annotations

import re
from typing import Dict, List, Optional

import pytest
from cpp_names import public_functions, public_names

import nereofile

# The class of the package in which the members are, by their names in snake_case; None where all are elsewhere.
CLASSES: Dict[str, Optional[str]] = {
    "BoundaryCondition": "BoundaryCondition", "CodeNameTable": None, "SeqSolverType": "SequentialSolver",
    "PhiSolveType": "SolutionControl", "AutoConvData": "AutoConvergence", "InflationData": "Inflation",
    "AutoYPlusData": "AutoYPlus", "SmokeData": "Smoke", "ThermalComfortData": "ThermalComfort",
    "ControlFile": "ControlFile", "File": "Configuration", "Flag": "Flag", "GbiFile": "GeometryBoundary",
    "Material": "Material", "MaterialDatabaseFile": "MaterialDatabase", "MaterialProperty": "Property",
    "Point": None, "MaterialType": "MaterialType", "PropertyType": "PropertyType",
    "VariationType": "VariationType", "Nereo2ConfigFile": "Configuration", "Setting": None,
    "ResultsFile": "Results", "ResultsFileHeader": "ResultsHeader", "Field": "HeaderField",
    "ResultsProblem": "Problem", "ResultsStatistics": "FieldStatistics", "ResultsDamage": "Damage",
    "Finding": "Finding", "CheckedFile": "CheckedFile", "FindingCounts": "CheckedFile", "Item": "Item",
    "Place": None, "Version": None, "Comparison": "Comparison", "Difference": "Difference",
    "FieldDifference": "FieldDifference", "FileEdit": "Edit", "EffectiveSetting": "EffectiveSetting",
    "EffectiveConfiguration": None, "ValueChange": "ValueChange",
}

# Members with another name or place: a path within the package, or the reason behind a dash.
ELSEWHERE: Dict[str, Dict[str, str]] = {
    "BoundaryCondition": {
        "kCode": "BoundaryCondition.code", "extraValue": "BoundaryCondition.extra_values",
        "extraValueCount": "BoundaryCondition.extra_values",
    },
    "CodeNameTable": {
        "codeForName": "code_for_name", "nameForCode": "name_for_code", "instance": "- there is one table",
    },
    "ControlFile": {
        "ConstantCount": "- len() of constants", "EquationCount": "- len() of equations",
        "RelaxedVariableCount": "- len() of under_relaxation",
        "SolvedVariableCount": "- len() of solution_control", "DefaultFormat": "- the number 0",
        "addFlag": "Flags.append", "clearFlags": "Flags.clear", "removeFlag": "Flags.pop",
        "flag": "ControlFile.flags", "flagCount": "Flags.__len__", "indexOfFlag": "Flags.index",
        "autoConvData": "ControlFile.auto_convergence", "autoYPlusData": "ControlFile.auto_y_plus",
        "constant": "ControlFile.constants", "setConstant": "ControlFile.constants",
        "originalConstant": "ControlFile.original_constants", "equationFlag": "ControlFile.equations",
        "setEquationFlag": "ControlFile.equations", "inflationData": "ControlFile.inflation",
        "smokeData": "ControlFile.smoke", "thermalComfortData": "ControlFile.thermal_comfort",
        "materialDatabase": "ControlFile.materials", "setMaterialDatabase": "ControlFile.materials",
        "phiInertRelax": "ControlFile.inertial_relaxation",
        "setPhiInertRelax": "ControlFile.inertial_relaxation", "phiUnderRelax": "ControlFile.under_relaxation",
        "setPhiUnderRelax": "ControlFile.under_relaxation", "phiSolve": "ControlFile.solution_control",
    },
    "File": {
        "filePath": "Configuration.path", "loadFrom": "Configuration.load", "saveWholeTo": "Configuration.save",
        "saveTo": "- save() writes the same bytes, whole or not at all",
    },
    "Flag": {
        "valueAsDouble": "Flag.value_as_float",
    },
    "GbiFile": {
        **{name: f"CoordinateSystem.{name.upper()}" for name in ("None", *"XY XR RY RT ZY XZ XYZ RTZ".split())},
        **{name: f"Units.{name.upper()}" for name in ("Meter", "Centimeter", "Millimeter", "Feet", "Inch")},
        "InchWatt": "Units.INCH_WATT", "materialDatabase": "GeometryBoundary.materials",
        "setMaterialDatabase": "GeometryBoundary.materials",
        "addSurfaceBoundaryCondition": "BoundaryConditions.append",
        "clearSurfaceBoundaryConditions": "BoundaryConditions.clear",
        "removeSurfaceBoundaryCondition": "BoundaryConditions.pop",
        "setSurfaceBoundaryCondition": "BoundaryConditions.__setitem__",
        "surfaceBoundaryCondition": "BoundaryConditions.__getitem__",
        "surfaceBoundaryConditionCount": "BoundaryConditions.__len__",
    },
    "Material": {
        "InvalidId": "Material.INVALID_ID", "findProperty": "Material.get", "propertyCodes": "Material.keys",
    },
    "MaterialDatabaseFile": {
        "add": "MaterialDatabase.append", "contains": "MaterialDatabase.__contains__",
        "count": "MaterialDatabase.__len__", "material": "MaterialDatabase.__getitem__",
        "remove": "MaterialDatabase.pop", "setMaterial": "MaterialDatabase.__setitem__",
    },
    "MaterialProperty": {
        "typeCode": "Property.code", "point": "Property.points", "pointCount": "Property.points",
    },
    "Point": {
        **dict.fromkeys("x y setX setY".split(), "- a row of Property.points"),
    },
    "MaterialType": {
        "displayNames": "material_types", "fromName": "material_types",
        "fromDisplayName": "- display names are for screens", "isValid": "- what isn't valid is in no table",
    },
    "PropertyType": {
        "fromCode": "property_types", "fromName": "property_types",
        "fromDisplayName": "- display names are for screens", "isValid": "- what isn't valid is in no table",
    },
    "VariationType": {
        "fromCode": "variation_types", "fromName": "variation_types",
        "fromDisplayName": "- display names are for screens", "isValid": "- what isn't valid is in no table",
    },
    "Nereo2ConfigFile": {
        "DefaultName": "Configuration.DEFAULT_NAME", "contains": "Configuration.__contains__",
        "loadFromOptionalCommandLineArguments": "Configuration.take_command_line",
        "loadFromRequiredCommandLineArguments": "Configuration.take_command_line",
        "remove": "Configuration.__delitem__", "resetAll": "Configuration.reset",
        "setting": "Configuration.__getitem__",
    },
    "Setting": {
        **dict.fromkeys("Double Int String type".split(), "- the type of what Configuration[key] gives"),
        "Invalid": "- no setting of a configuration is without a value", "name": "- the key",
        "setName": "- the key is fixed", "setValue": "Configuration.__setitem__",
        "setValueFromString": "Configuration.set_text", "valueAsDouble": "Configuration.__getitem__",
        "valueAsInt": "Configuration.__getitem__", "valueAsString": "Configuration.text",
    },
    "ResultsFile": {
        **dict.fromkeys(
            "addFieldDataCode setCurrentTime setDateTimeString setElementCount setFieldData setIterations "
            "setNodeCount setTimeStepSize setTimeSteps setTitle".split(),
            "- results are the solver's to write",
        ),
        "containsFieldData": "Results.__contains__", "currentIteration": "Results.iteration",
        "currentTime": "Results.time", "currentTimeStep": "Results.time_step", "dateTimeString": "Results.date",
        "fieldData": "Results.__getitem__", "fieldDataCodes": "Results.codes", "loadFrom": "read_results",
    },
    "ResultsFileHeader": {
        "BigEndian": "- the text 'big'", "LittleEndian": "- the text 'little'",
        "hasProblem": "- a look into problems", "mostFieldsListed": "- the limit of fields",
        "readFrom": "results_header", "currentIteration": "ResultsHeader.iteration",
        "currentTime": "ResultsHeader.time", "currentTimeStep": "ResultsHeader.time_step",
        "dateTimeString": "ResultsHeader.date",
    },
    "ResultsProblem": {
        **dict.fromkeys(
            "BadHeaderMarker BadRunMarker CountsPastTheFile NegativeFieldCount NegativeNodeCount NodeOutOfRange "
            "None OtherByteOrder ReadFailed RepeatedField TooManyNodes TooShort".split(),
            "- a text of Problem.kind",
        ),
    },
    "Finding": {
        "place": "Finding.line",
    },
    "CheckedFile": {
        "counts": "CheckedFile.errors",
    },
    "Item": {
        "place": "Item.line",
    },
    "Place": {
        "line": "Item.line", "column": "Item.column", "offset": "Item.offset", "Absent": "- None",
        "hasLine": "- line isn't None", "hasOffset": "- offset isn't None",
    },
    "Version": {
        "Current": "__version__", "Branch": "__branch__", "toString": "- versions are texts",
    },
    "Comparison": {
        "outcome": "FileError", "message": "FileError.message", "file": "FileError.path",
        "kindOfA": "kind_of_file", "kindOfB": "kind_of_file", "differences": "Comparison.__getitem__",
        "areSame": "Comparison.same",
    },
    "FileEdit": {
        "value": "Edit.__getitem__", "set": "Edit.__setitem__", "remove": "Edit.__delitem__",
        "apply": "- edits one after the other", "saveTo": "Edit.save", "state": "FileError",
    },
    "EffectiveSetting": {
        "place": "EffectiveSetting.line",
    },
    "EffectiveConfiguration": {
        "settings": "effective_settings", "endOfLoad": "FileError", "commandLineError": "- a ValueError",
    },
}

# Classes that are arguments or results of functions here.
NO_CLASSES: Dict[str, str] = {
    "ResultsLoadOptions": "the arguments of read_results",
    "ResultsLoadResult": "an exception of read_results",
    "ResultsScan": "the function statistics",
    "CheckOptions": "the arguments of check",
    "ComparisonOptions": "the arguments of diff",
    "SaveResult": "an exception or a warning of save",
    "EditProblem": "a KeyError, a ValueError or a FileError of an edit",
    "Origin": "texts",
    "EditResult": "an exception of an edit",
    "Edit": "an assignment to an item of Edit",
    **{name: "texts" for name in ("FileKind", "Severity", "Effect", "Type", "Outcome")},
}

FUNCTIONS: Dict[str, str] = {
    "check": "check", "checkCase": "check", "toJson": "Check.to_json", "outline": "inspect", "compare": "diff",
    "toText": "Comparison.__str__", "kindOfFile": "kind_of_file", "addressPart": "address_part",
    "nearestAddress": "- the KeyError of an edit says it",
    "findingLine": "Finding.line_of_text", "kindName": "- kinds are texts", "kindOfName": "- kinds are texts",
    "effectiveConfiguration": "effective_settings", "originName": "- origins are texts",
    "severityName": "- severities are texts", "effectName": "- effects are texts",
    "qHash": "- objects that can be changed have no hash",
    "toQString": "- texts are str", "toStdString": "- texts are str",
    "writeWhole": "- for writers in C++",
}


def resolves(path: str) -> bool:
    if path.startswith("- "):
        return len(path) > 5
    cls, _, field = path.partition(".")
    if not hasattr(nereofile, cls):
        return False
    if field in getattr(getattr(nereofile, cls), "__dataclass_fields__", ()):
        return True  # which isn't an attribute of the class
    value: object = nereofile
    for part in path.split("."):
        if path.startswith("FileError.") and part in ("message", "path"):
            return hasattr(nereofile.FileError("", (), ""), part)
        if not hasattr(value, part):
            return False
        value = getattr(value, part)
    return True


def paths_of(cls: str, name: str) -> List[str]:
    """Where a member may be: setX() is the property x, isX() may be."""
    elsewhere = ELSEWHERE.get(cls, {}).get(name)
    if elsewhere:
        return [elsewhere]
    snake_case = re.sub("(?<=[a-z0-9])(?=[A-Z])", "_", name).lower()
    return [f"{CLASSES[cls]}.{path}" for path in (snake_case, re.sub("^(set|is)_", "", snake_case))]


CPP = public_names()


def test_every_class_is_known() -> None:
    assert set(CPP) == set(CLASSES) | set(NO_CLASSES)
    assert set(CLASSES).isdisjoint(NO_CLASSES)


@pytest.mark.parametrize("cls", sorted(CLASSES))
def test_every_member_is_reachable(cls: str) -> None:
    assert [name for name in sorted(CPP[cls]) if not any(map(resolves, paths_of(cls, name)))] == []
    assert set(ELSEWHERE.get(cls, {})) <= CPP[cls]


def test_every_function_is_reachable() -> None:
    assert set(FUNCTIONS) == public_functions()
    assert [path for path in FUNCTIONS.values() if not resolves(path)] == []

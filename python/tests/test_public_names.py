"""Every public name of the C++ classes is reachable from Python, or stands here with the reason why it isn't."""

from __future__ import annotations

from typing import Dict

import pytest
from cpp_names import public_functions, public_names

import nereofile

# A path within the package, or the reason behind a dash.
NAMES: Dict[str, Dict[str, str]] = {
    "BoundaryCondition": {
        "kCode": "BoundaryCondition.code", "entityId": "BoundaryCondition.entity_id",
        "setEntityId": "BoundaryCondition.entity_id", "timeCurveId": "BoundaryCondition.time_curve_id",
        "setTimeCurveId": "BoundaryCondition.time_curve_id", "timeCurveFlag": "BoundaryCondition.time_curve_flag",
        "value": "BoundaryCondition.value", "setValue": "BoundaryCondition.value",
        "extraValue": "BoundaryCondition.extra_values", "extraValueCount": "BoundaryCondition.extra_values",
        "addExtraValue": "BoundaryCondition.add_extra_value", "setExtraValue": "BoundaryCondition.set_extra_value",
        "removeExtraValue": "BoundaryCondition.remove_extra_value",
        "clearExtraValues": "BoundaryCondition.clear_extra_values",
    },
    "CodeNameTable": {
        "codeForName": "code_for_name", "nameForCode": "name_for_code", "instance": "- there is one table",
    },
    "SeqSolverType": {
        "integer1": "SequentialSolver.integer1", "integer2": "SequentialSolver.integer2",
        "integer3": "SequentialSolver.integer3", "variable": "SequentialSolver.variable",
        "tolerance": "SequentialSolver.tolerance",
    },
    "PhiSolveType": {
        "integer1": "SolutionControl.integer1", "integer2": "SolutionControl.integer2",
        "integer3": "SolutionControl.integer3", "tolerance": "SolutionControl.tolerance",
    },
    "AutoConvData": {
        "instantaneousSlope": "AutoConvergence.instantaneous_slope",
        "timeAverageSlope": "AutoConvergence.time_average_slope",
        "timeAverageConcavity": "AutoConvergence.time_average_concavity",
        "fieldFluctuation": "AutoConvergence.field_fluctuation",
    },
    "InflationData": {
        name: f"Inflation.{name}"
        for name in ("switch1", "switch2", "switch3", "integer4", "integer5", "number6", "number7", "number8",
                     "number9", "number10", "number11", "switch12")
    },
    "AutoYPlusData": {
        name: f"AutoYPlus.{name}" for name in ("integer1", "integer2", "integer3", "integer4", "number5", "number6")
    },
    "SmokeData": {name: f"Smoke.{name}" for name in ("on", "number2", "number3", "number4")},
    "ThermalComfortData": {name: f"ThermalComfort.{name}" for name in ("on", "number2", "number3", "number4")},
    "ControlFile": {
        "ConstantCount": "- len() of constants", "EquationCount": "- len() of equations",
        "RelaxedVariableCount": "- len() of under_relaxation", "SolvedVariableCount": "- len() of solution_control",
        "DefaultFormat": "- the number 0", "format": "ControlFile.format", "setFormat": "ControlFile.format",
        "addFlag": "Flags.append", "clearFlags": "Flags.clear", "removeFlag": "Flags.pop", "flag": "ControlFile.flags",
        "flagCount": "Flags.__len__", "indexOfFlag": "Flags.index",
        "autoConvData": "ControlFile.auto_convergence", "autoYPlusData": "ControlFile.auto_y_plus",
        "constant": "ControlFile.constants", "setConstant": "ControlFile.constants",
        "originalConstant": "ControlFile.original_constants",
        "equationFlag": "ControlFile.equations", "setEquationFlag": "ControlFile.equations",
        "headerLine1": "ControlFile.header_line1", "setHeaderLine1": "ControlFile.header_line1",
        "headerLine2": "ControlFile.header_line2", "setHeaderLine2": "ControlFile.header_line2",
        "inflationData": "ControlFile.inflation", "smokeData": "ControlFile.smoke",
        "thermalComfortData": "ControlFile.thermal_comfort",
        "isAutoConvOn": "ControlFile.auto_conv_on", "setAutoConvOn": "ControlFile.auto_conv_on",
        "isAutoStopOn": "ControlFile.auto_stop_on", "setAutoStopOn": "ControlFile.auto_stop_on",
        "materialDatabase": "ControlFile.materials", "setMaterialDatabase": "ControlFile.materials",
        "numberOfTimeSteps": "ControlFile.number_of_time_steps",
        "setNumberOfTimeSteps": "ControlFile.number_of_time_steps",
        "phiInertRelax": "ControlFile.inertial_relaxation", "setPhiInertRelax": "ControlFile.inertial_relaxation",
        "phiUnderRelax": "ControlFile.under_relaxation", "setPhiUnderRelax": "ControlFile.under_relaxation",
        "phiSolve": "ControlFile.solution_control", "sequentialSolver": "ControlFile.sequential_solver",
        "stopTime": "ControlFile.stop_time", "setStopTime": "ControlFile.stop_time",
        "timeStepSize": "ControlFile.time_step_size", "setTimeStepSize": "ControlFile.time_step_size",
        "title": "ControlFile.title", "setTitle": "ControlFile.title",
        "transientForm": "ControlFile.transient_form", "setTransientForm": "ControlFile.transient_form",
        "units": "ControlFile.units", "setUnits": "ControlFile.units",
    },
    "File": {
        "filePath": "Configuration.path", "loadFrom": "Configuration.load", "saveWholeTo": "Configuration.save",
        "saveTo": "- save() writes the same bytes, whole or not at all",
        "version": "Configuration.version", "setVersion": "Configuration.version",
    },
    "Flag": {
        "name": "Flag.name", "setName": "Flag.name", "value": "Flag.value", "setValue": "Flag.value",
        "valueAsInt": "Flag.value_as_int", "valueAsDouble": "Flag.value_as_float",
    },
    "GbiFile": {
        **{name: f"CoordinateSystem.{name.upper()}"
           for name in ("None", "XY", "XR", "RY", "RT", "ZY", "XZ", "XYZ", "RTZ")},
        **{name: f"Units.{name.upper()}" for name in ("Meter", "Centimeter", "Millimeter", "Feet", "Inch")},
        "InchWatt": "Units.INCH_WATT", "jobName": "GeometryBoundary.job_name", "setJobName": "GeometryBoundary.job_name",
        "productLine": "GeometryBoundary.product_line", "setProductLine": "GeometryBoundary.product_line",
        "coordinateSystem": "GeometryBoundary.coordinate_system",
        "setCoordinateSystem": "GeometryBoundary.coordinate_system",
        "units": "GeometryBoundary.units", "setUnits": "GeometryBoundary.units",
        "materialDatabase": "GeometryBoundary.materials", "setMaterialDatabase": "GeometryBoundary.materials",
        "addSurfaceBoundaryCondition": "BoundaryConditions.append",
        "clearSurfaceBoundaryConditions": "BoundaryConditions.clear",
        "removeSurfaceBoundaryCondition": "BoundaryConditions.pop",
        "setSurfaceBoundaryCondition": "BoundaryConditions.__setitem__",
        "surfaceBoundaryCondition": "BoundaryConditions.__getitem__",
        "surfaceBoundaryConditionCount": "BoundaryConditions.__len__",
    },
    "Material": {
        "InvalidId": "Material.INVALID_ID", "name": "Material.name", "setName": "Material.name", "id": "Material.id",
        "setId": "Material.id", "type": "Material.type", "environmentType": "Material.environment_type",
        "setEnvironmentType": "Material.environment_type", "findProperty": "Material.get",
        "property": "Material.property", "propertyCodes": "Material.keys",
        "fluidFlag": "Material.fluid_flag", "resistFlag": "Material.resist_flag",
        "refPressure": "Material.ref_pressure", "setRefPressure": "Material.ref_pressure",
        "refTemperature": "Material.ref_temperature", "setRefTemperature": "Material.ref_temperature",
        "refCompressibility": "Material.ref_compressibility", "setRefCompressibility": "Material.ref_compressibility",
        "vaporPressure": "Material.vapor_pressure", "setVaporPressure": "Material.vapor_pressure",
        "gasConstant": "Material.gas_constant", "setGasConstant": "Material.gas_constant",
        "diffusionCoefficient": "Material.diffusion_coefficient",
        "setDiffusionCoefficient": "Material.diffusion_coefficient",
    },
    "MaterialDatabaseFile": {
        "add": "MaterialDatabase.append", "clear": "MaterialDatabase.clear",
        "contains": "MaterialDatabase.__contains__", "count": "MaterialDatabase.__len__",
        "material": "MaterialDatabase.__getitem__", "remove": "MaterialDatabase.pop",
        "setMaterial": "MaterialDatabase.__setitem__",
    },
    "MaterialProperty": {
        "type": "Property.type", "typeCode": "Property.code", "variationType": "Property.variation_type",
        "setVariationType": "Property.variation_type", "variationCode": "Property.variation_code",
        "value": "Property.value", "setValue": "Property.value",
        "independentVariable": "Property.independent_variable",
        "setIndependentVariable": "Property.independent_variable", "addPoint": "Property.add_point",
        "clearPoints": "Property.clear_points", "point": "Property.points", "pointCount": "Property.points",
        "removePoint": "Property.remove_point",
    },
    "Point": {name: "- a row of Property.points" for name in ("x", "y", "setX", "setY")},
    "MaterialType": {
        "displayName": "MaterialType.display_name", "displayNames": "material_types", "name": "MaterialType.name",
        "fromDisplayName": "- display names are for screens", "fromName": "material_types",
        "index": "MaterialType.index", "isFlowComponent": "MaterialType.is_flow_component",
        "isValid": "- what isn't valid is in no table",
    },
    "PropertyType": {
        "displayName": "PropertyType.display_name", "name": "PropertyType.name", "code": "PropertyType.code",
        "fromCode": "property_types", "fromDisplayName": "- display names are for screens",
        "fromName": "property_types", "index": "PropertyType.index", "unitCategory": "PropertyType.unit_category",
        "isValid": "- what isn't valid is in no table",
    },
    "VariationType": {
        "displayName": "VariationType.display_name", "name": "VariationType.name", "code": "VariationType.code",
        "fromCode": "variation_types", "fromDisplayName": "- display names are for screens",
        "fromName": "variation_types", "index": "VariationType.index", "isValid": "- what isn't valid is in no table",
    },
    "Nereo2ConfigFile": {
        "DefaultName": "Configuration.DEFAULT_NAME", "clear": "Configuration.clear",
        "contains": "Configuration.__contains__", "keys": "Configuration.keys",
        "loadFromOptionalCommandLineArguments": "Configuration.take_command_line",
        "loadFromRequiredCommandLineArguments": "Configuration.take_command_line",
        "remove": "Configuration.__delitem__", "reset": "Configuration.reset", "resetAll": "Configuration.reset",
        "setting": "Configuration.__getitem__",
    },
    "Setting": {
        **{name: "- the type of what Configuration[key] gives" for name in ("Double", "Int", "String", "type")},
        "Invalid": "- no setting of a configuration is without a value", "name": "- the key",
        "setName": "- the key is fixed", "setValue": "Configuration.__setitem__",
        "setValueFromString": "Configuration.set_text", "valueAsDouble": "Configuration.__getitem__",
        "valueAsInt": "Configuration.__getitem__", "valueAsString": "Configuration.text",
    },
    "ResultsFile": {
        **{name: "- results are the solver's to write"
           for name in ("addFieldDataCode", "setCurrentTime", "setDateTimeString", "setElementCount", "setFieldData",
                        "setIterations", "setNodeCount", "setTimeStepSize", "setTimeSteps", "setTitle")},
        "containsFieldData": "Results.__contains__", "currentIteration": "Results.iteration",
        "currentTime": "Results.time", "currentTimeStep": "Results.time_step", "dateTimeString": "Results.date",
        "elementCount": "Results.element_count", "fieldData": "Results.__getitem__", "fieldDataCodes": "Results.codes",
        "loadFrom": "read_results", "nodeCount": "Results.node_count", "startingIteration": "Results.starting_iteration",
        "startingTimeStep": "Results.starting_time_step", "timeStepSize": "Results.time_step_size",
        "title": "Results.title",
    },
    "ResultsFileHeader": {
        "BigEndian": "- the text 'big'", "LittleEndian": "- the text 'little'",
        "hasProblem": "- a look into problems", "mostFieldsListed": "- the limit of fields", "readFrom": "results_header",
        "currentIteration": "ResultsHeader.iteration", "currentTime": "ResultsHeader.time",
        "currentTimeStep": "ResultsHeader.time_step", "dateTimeString": "ResultsHeader.date",
        "byteOrder": "ResultsHeader.byte_order", "bytesAnnounced": "ResultsHeader.bytes_announced",
        "bytesThere": "ResultsHeader.bytes_there", "elementCount": "ResultsHeader.element_count",
        "fieldCount": "ResultsHeader.field_count", "fields": "ResultsHeader.fields",
        "holdsKnownField": "ResultsHeader.holds_known_field", "isResultsFile": "ResultsHeader.is_results_file",
        "nodeCount": "ResultsHeader.node_count", "problems": "ResultsHeader.problems",
        "recordSize": "ResultsHeader.record_size", "recordsAnnounced": "ResultsHeader.records_announced",
        "recordsOffset": "ResultsHeader.records_offset", "startingIteration": "ResultsHeader.starting_iteration",
        "startingTimeStep": "ResultsHeader.starting_time_step", "timeStepSize": "ResultsHeader.time_step_size",
        "title": "ResultsHeader.title", "version": "ResultsHeader.version",
        "wholeRecords": "ResultsHeader.whole_records",
    },
    "Field": {
        "code": "HeaderField.code", "column": "HeaderField.column", "isRepeat": "HeaderField.is_repeat",
        "isUsed": "HeaderField.is_used", "isWhole": "HeaderField.is_whole", "name": "HeaderField.name",
        "offset": "HeaderField.offset",
    },
    "ResultsProblem": {
        "kind": "Problem.kind", "offset": "Problem.offset",
        **{name: "- a text of Problem.kind"
           for name in ("BadHeaderMarker", "BadRunMarker", "CountsPastTheFile", "NegativeFieldCount",
                        "NegativeNodeCount", "NodeOutOfRange", "None", "OtherByteOrder", "ReadFailed", "RepeatedField",
                        "TooManyNodes", "TooShort")},
    },
    "ResultsStatistics": {
        "count": "FieldStatistics.count", "minimum": "FieldStatistics.minimum", "maximum": "FieldStatistics.maximum",
        "mean": "FieldStatistics.mean", "rootMeanSquare": "FieldStatistics.root_mean_square",
        "minimumNode": "FieldStatistics.minimum_node", "maximumNode": "FieldStatistics.maximum_node",
        "notFinite": "FieldStatistics.not_finite", "firstNotFiniteNode": "FieldStatistics.first_not_finite_node",
        "firstNotFiniteOffset": "FieldStatistics.first_not_finite_offset",
    },
    "ResultsDamage": {
        "missingNodes": "Damage.missing_nodes", "firstMissingNode": "Damage.first_missing_node",
        "repeatedRecords": "Damage.repeated_records", "firstRepeatedNode": "Damage.first_repeated_node",
        "firstRepeatedOffset": "Damage.first_repeated_offset", "recordsOutOfRange": "Damage.records_out_of_range",
        "firstNodeOutOfRange": "Damage.first_node_out_of_range",
        "firstOutOfRangeOffset": "Damage.first_out_of_range_offset",
    },
    "Finding": {
        "severity": "Finding.severity", "code": "Finding.code", "effect": "Finding.effect", "place": "Finding.line",
        "address": "Finding.address", "found": "Finding.found", "expected": "Finding.expected",
        "message": "Finding.message", "more": "Finding.more",
    },
    "CheckedFile": {
        "file": "CheckedFile.file", "kind": "CheckedFile.kind", "findings": "CheckedFile.findings",
        "counts": "CheckedFile.errors",
    },
    "FindingCounts": {
        "errors": "CheckedFile.errors", "warnings": "CheckedFile.warnings", "notes": "CheckedFile.notes",
    },
    "Item": {
        "address": "Item.address", "type": "Item.type", "value": "Item.value", "spelling": "Item.spelling",
        "place": "Item.line", "length": "Item.length",
    },
    "Place": {
        "line": "Item.line", "column": "Item.column", "offset": "Item.offset", "Absent": "- None",
        "hasLine": "- line isn't None", "hasOffset": "- offset isn't None",
    },
    "Version": {"Current": "__version__", "Branch": "__branch__", "toString": "- versions are texts"},
    "Comparison": {
        "outcome": "FileError", "message": "FileError.message", "file": "FileError.path", "kindOfA": "kind_of_file",
        "kindOfB": "kind_of_file", "differences": "Comparison.__getitem__", "areSame": "Comparison.same",
    },
    "Difference": {
        "address": "Difference.address", "a": "Difference.a", "b": "Difference.b", "field": "Difference.field",
    },
    "FieldDifference": {
        "count": "FieldDifference.count", "largest": "FieldDifference.largest", "node": "FieldDifference.node",
        "a": "FieldDifference.a", "b": "FieldDifference.b", "peak": "FieldDifference.peak",
        "peakShare": "FieldDifference.peak_share", "rms": "FieldDifference.rms",
    },
}

NAMES.update(
    {
        "FileEdit": {
            "kind": "Edit.kind", "value": "Edit.__getitem__", "set": "Edit.__setitem__", "remove": "Edit.__delitem__",
            "apply": "- edits one after the other", "changes": "Edit.changes", "originalBytes": "Edit.original_bytes",
            "bytes": "Edit.bytes", "save": "Edit.save", "saveTo": "Edit.save", "state": "FileError",
        },
        "EffectiveSetting": {
            "key": "EffectiveSetting.key", "value": "EffectiveSetting.value", "origin": "EffectiveSetting.origin",
            "place": "EffectiveSetting.line",
        },
        "EffectiveConfiguration": {
            "settings": "effective_settings", "endOfLoad": "FileError", "commandLineError": "- a ValueError",
        },
        "ValueChange": {"address": "ValueChange.address", "before": "ValueChange.before", "after": "ValueChange.after"},
    }
)

# Classes that are arguments or results of functions here.
NO_CLASSES: Dict[str, str] = {
    "ResultsLoadOptions": "the arguments of read_results",
    "ResultsLoadResult": "an exception of read_results",
    "ResultsScan": "the function statistics",
    "CheckOptions": "the arguments of check",
    "ComparisonOptions": "the arguments of diff",
    "SaveResult": "an exception of save",
    "EditProblem": "a KeyError, a ValueError or a FileError of an edit",
    "Origin": "texts",
    "EditResult": "an exception of an edit",
    "Edit": "an assignment to an item of Edit",
    **{name: "texts" for name in ("FileKind", "Severity", "Effect", "Type", "Outcome")},
}

FUNCTIONS: Dict[str, str] = {
    "check": "check", "checkCase": "check", "toJson": "Check.to_json", "outline": "inspect", "compare": "diff",
    "toText": "Comparison.__str__", "kindOfFile": "kind_of_file", "addressPart": "address_part",
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


CPP = public_names()


def test_every_class_is_known() -> None:
    assert set(CPP) == set(NAMES) | set(NO_CLASSES)
    assert set(NAMES).isdisjoint(NO_CLASSES)


@pytest.mark.parametrize("cls", sorted(NAMES))
def test_every_member_is_reachable(cls: str) -> None:
    assert set(NAMES[cls]) == CPP[cls]
    assert [path for path in NAMES[cls].values() if not resolves(path)] == []


def test_every_function_is_reachable() -> None:
    assert set(FUNCTIONS) == public_functions()
    assert [path for path in FUNCTIONS.values() if not resolves(path)] == []

"""The names that files use, and their codes."""

from __future__ import annotations

from types import MappingProxyType
from typing import Mapping

from . import _nereofile
from ._records import MaterialType, PropertyType, VariationType

#: The codes of the quantities that the solver knows, by name.
field_variables: Mapping[str, int] = MappingProxyType(_nereofile.field_variable_codes())

#: The codes of the flags of nodes and boundaries, by name. They share their range with those of field variables.
node_flags: Mapping[str, int] = MappingProxyType(_nereofile.node_flag_codes())

#: What a material can be, by name in files.
material_types: Mapping[str, MaterialType] = MappingProxyType(
    {row[0]: MaterialType(*row) for row in _nereofile.material_types()}
)

#: What a property can be, by name in files.
property_types: Mapping[str, PropertyType] = MappingProxyType(
    {row[0]: PropertyType(*row) for row in _nereofile.property_types()}
)

#: How a property can vary, by name in files, older names included.
variation_types: Mapping[str, VariationType] = MappingProxyType(
    {
        name: VariationType(*row)
        for row in _nereofile.variation_types()
        for name in (row[0], row[4])
        if name
    }
)


def code_for_name(name: str) -> int:
    """The code of a field variable or node flag; a KeyError for any other text.

    >>> code_for_name("kP")
    4
    """
    code = _nereofile.code_for_name(name)
    if code == field_variables["kNone"] and name != "kNone":
        raise KeyError(name)
    return code


def name_for_code(code: int, prefer_flag_name: bool = False) -> str:
    """The name of a code from 0 to 361 as files have it; a ValueError for any other number.

    A few codes have a further name, which wins: that of 27 is "kKXX".

    >>> name_for_code(4), name_for_code(20, prefer_flag_name=True)
    ('kP', 'kSlipNode')
    """
    return _nereofile.name_for_code(code, prefer_flag_name)

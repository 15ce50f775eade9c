#!/usr/bin/python3
"""make_materials.py MATERIALS PROPERTIES POINTS FILE: writes a material database in which every property is a curve."""

import random
import sys

# Of different field-variable codes, so that none shares its place with another.
TYPES = ["density", "viscosity", "x_conductivity", "y_conductivity", "z_conductivity", "specific_heat",
         "surface_tension", "emissivity", "resistivity", "roughness"]


def main():
    materials, properties, points = map(int, sys.argv[1:4])
    numbers = random.Random(20240917)
    with open(sys.argv[4], "w", encoding="utf-8") as out:
        out.write('<?xml version="1.0" encoding="UTF-8"?>\n<material_database version="2024.0.0.0">\n')
        for number in range(1, materials + 1):
            out.write(f'    <material type="solid">\n        <name>Material {number}</name>\n'
                      f'        <id>{number}</id>\n        <ref_temperature>293.15</ref_temperature>\n')
            for name in TYPES[:properties]:
                out.write(f'        <property type="{name}">\n'
                          '            <variation_type>piecewise_linear</variation_type>\n'
                          '            <independent_variable>kT</independent_variable>\n')
                for point in range(points):
                    out.write(f'            <point>\n                <x>{273.15 + 10 * point:g}</x>\n'
                              f'                <y>{numbers.uniform(0, 1000):g}</y>\n            </point>\n')
                out.write('        </property>\n')
            out.write('    </material>\n')
        out.write('</material_database>\n')


main()

#!/usr/bin/python3
"""make_texts.py WHAT COUNT FILE: writes a configuration or a control file in which there is so much of something."""

import sys

HEADER = "NEREO control file rev 07 NEREO Ver 2024.0.0.0\nNEREO 2024 (release)\n *** Title\nlarge\n"


def settings_xml(count):
    yield '<Nereo2Config Version="2024.0.0.0">\n'
    for number in range(count):
        yield f"  <MaxIter>{number}</MaxIter>\n  <StopTime>{number / 8:g}</StopTime>\n"
    yield "</Nereo2Config>\n"


def settings_text(count):
    for number in range(count):
        yield f"MaxIter {number}\nStopTime {number / 8:g}\n"


def empty_lines(count):
    yield "MaxIter 500\n" + "\n" * count + "StopTime 12.5\n"


def scattered_settings(count):
    """Settings with a page of empty lines before each."""
    for number in range(count):
        yield "\n" * 50 + f"MaxIter {number}\n"


def flags(count):
    yield f"{HEADER} *** Flag section\n{count}\n"
    for number in range(count):
        yield f"flag_{number} {number}\n"


def constants(count):
    """Of a list of variables each may come often: the last one counts."""
    yield HEADER + " *** Constants\n"
    for number in range(count):
        yield f"kPRef {101325 + number / 8:g}\nkRhoRef 1.2047\n"


def materials(count):
    yield HEADER + " *** Property Settings\n"
    points = "".join(f"    {1 / (point + 3):g} {273.15 + point:g}\n" for point in range(20))
    names = ["kRho", "kVisc", "kKXX", "kKYY", "kKZZ", "kCp", "kSurfT", "kEmis", "kTransmis", "kElRes", "kWallRough"]
    properties = "".join(f"{name} 0 15 19 20 5 kT\n{points}" for name in names)
    for number in range(1, count + 1):
        yield f"{number} 0 0 0 Solid {number}\n293.15\n{properties}-----end of this index property data\n"


def blank_lines(count):
    """In a section of which a load takes nothing, and in one that it reads."""
    yield HEADER + " *** Unknown\n" + "\n" * count + " *** Constants\n" + "\n" * count + "kRhoRef 1.2047\n"


def unknown_sections(count):
    yield HEADER
    for number in range(count):
        yield f" *** Unknown {number}\n1 2 3 4\n"


def unknown_lines(count):
    yield HEADER + " *** Unknown\n"
    for number in range(count):
        yield f"kU {number} 1 2 3 4\n"


def main():
    what, count, path = sys.argv[1:]
    with open(path, "w", encoding="utf-8") as out:
        out.writelines(globals()[what](int(count)))


main()

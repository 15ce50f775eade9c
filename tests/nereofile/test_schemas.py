"""The XML Schemas take what the library writes, and refuse what a check finds in a file, as far as a schema can tell."""

import os
import pathlib
import re
import shutil
import subprocess
import unittest

from support import SOURCES, TIMEOUT, CommandTest
from test_findings import examples

SCHEMAS = pathlib.Path(os.environ["NEREO_SCHEMAS"])
WRITE_MODELS = os.environ["NEREO_WRITE_MODELS"]
SCHEMA_OF = {"configuration": "solver-configuration.xsd", "materials": "material-database.xsd"}

# What a schema can't say: the value of one element decides on others, or numbers have an order or differ between files.
# Ids that come twice are written by a save, too.
BEYOND_SCHEMAS = {
    "job-differs", "merged-property", "misplaced-property", "points-not-ascending", "repeated-id", "transient-differs",
    "unused-value", "version-differs",
}

# The findings of the page that are about names, and these must be refused.
UNKNOWN = {
    "unknown-element", "unknown-key", "unknown-material-type", "unknown-property-type", "unknown-variable",
    "unknown-variation",
}

CONFIGURATION = '<Nereo2Config Version="2024.0.0.0">{}</Nereo2Config>'
MATERIAL = '<material_database version="2024.0.0.0"><material type="fluid">{}</material></material_database>'
PROPERTY = MATERIAL.format('<property type="density">{}</property>')

# Spellings of numbers, whether they are right.
INTEGERS = [
    ("7", True), ("-7", True), ("+7", True), ("007", True), (" 7\n", True), ("2147483647", True), ("-2147483648", True),
    ("", False), (" ", False), ("7.0", False), ("7e0", False), ("0x7", False), ("1,000", False), ("seven", False),
    ("7 8", False), ("2147483648", False), ("-", False), ("true", False),
]
NUMBERS = [
    ("7", True), ("-7.5", True), ("+7.5", True), ("7.", True), (".5", True), ("1e-4", True), ("1E+20", True), (" 7.5\n", True),
    ("inf", True), ("-inf", True), ("nan", True),
    ("", False), (" ", False), ("1,5", False), ("1e", False), (".", False), ("0x7", False), ("1d5", False), ("7 8", False),
    ("many", False), ("1e4.5", False),
]
FINDINGS_OF_NUMBERS = {"missing-value", "not-a-number", "not-an-integer", "out-of-range"}

# More that is wrong, each with the code by which a check says it.
WRONG = [
    ("bad-version", CONFIGURATION.replace("2024.0.0.0", "2024.x").format("")),
    ("bad-version", MATERIAL.replace("2024.0.0.0", "2024").format("")),
    ("repeated-key", CONFIGURATION.format("<MaxIter>1</MaxIter><MaxIter>1</MaxIter>")),
    ("unknown-key", CONFIGURATION.format("<maxiter>1</maxiter>")),
    ("unexpected-element", CONFIGURATION.format("<MaxIter><b>1</b></MaxIter>")),
    ("repeated-element", MATERIAL.format("<name>Air</name><id>1</id><name>Air</name>")),
    ("repeated-element", MATERIAL.format("<gas_constant>1</gas_constant><gas_constant>1</gas_constant>")),
    ("repeated-element", PROPERTY.format("<value>1</value><value>1</value>")),
    ("repeated-element", PROPERTY.format("<variation_type>constant</variation_type>" * 2)),
    ("repeated-element", PROPERTY.format("<independent_variable>kT</independent_variable>" * 2)),
    ("repeated-element", PROPERTY.format("<point><x>1</x><x>1</x><y>1</y></point>")),
    ("missing-coordinate", PROPERTY.format("<point><y>1</y></point>")),
    ("stray-character", CONFIGURATION.format("<JobPrefix>cavity&#13;</JobPrefix>")),
    ("stray-character", MATERIAL.format("<name>&#xD;Air</name>")),
    ("unknown-element", PROPERTY.format("<points/>")),
    ("unknown-element", MATERIAL.replace("material ", "Material ").replace("/material>", "/Material>").format("")),
    ("unknown-variation", PROPERTY.format("<variation_type> constant</variation_type>")),
    ("unknown-material-type", MATERIAL.replace(' type="fluid"', "").format("")),
    ("unknown-property-type", MATERIAL.format("<property><value>1</value></property>")),
]

# What a load takes however odd it looks, and a check too.
RIGHT = [
    CONFIGURATION.format(""),
    CONFIGURATION.replace(' Version="2024.0.0.0"', "").format("<Width>1</Width><AdvScheme>1</AdvScheme><ExePath/>"),
    CONFIGURATION.format("<JobPrefix>two\r\nlines</JobPrefix><ExePath>\t&#10;</ExePath>"),
    CONFIGURATION.format("<!-- a remark --><MaxIter><!-- a remark -->1</MaxIter>"),
    '<?xml-model href="solver-configuration.xsd"?>' + CONFIGURATION.format(""),
    CONFIGURATION.replace(
        "Config ",
        'Config xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" '
        'xsi:noNamespaceSchemaLocation="solver-configuration.xsd" ',
    ).format("<MaxIter>1</MaxIter>"),
    MATERIAL.format("<id>1</id><property type='density'><value>1</value></property><name/>"),
    PROPERTY.format(
        "<point><y>1</y><x>1</x></point><independent_variable>kKXX</independent_variable>"
        "<point><x>2</x><y>1</y></point><variation_type>piece_linear</variation_type>"
    ),
]


@unittest.skipUnless(shutil.which("xmllint"), "xmllint isn't there")
class SchemasTest(CommandTest):
    def refusal(self, kind, *paths):
        """What xmllint says of the files; nothing if all are valid."""
        process = subprocess.run(
            ["xmllint", "--noout", "--schema", SCHEMAS / SCHEMA_OF[kind], *paths],
            stdout=subprocess.PIPE,
            stderr=subprocess.PIPE,
            timeout=TIMEOUT,
            check=False,
        )
        said = process.stderr.decode()
        self.assertIn(process.returncode, (0, 1, 3, 4), said)  # not: a schema that is wrong itself
        return said if process.returncode else ""

    def refusal_of(self, content):
        kind = "configuration" if "Nereo2Config" in content else "materials"
        return self.refusal(kind, self.write("content.xml", content))

    def findings_of(self, content):
        """The codes, by a check."""
        self.write("content.xml", content)
        return re.findall(r" \[([a-z-]+)\]", self.run_command("check", "content.xml").out)

    def expect_valid(self, kind, *paths):
        self.assertEqual(self.refusal(kind, *paths), "")

    def test_what_the_library_writes_is_valid(self):
        subprocess.run([WRITE_MODELS, self.folder], check=True, timeout=TIMEOUT)
        for kind in SCHEMA_OF:
            paths = sorted(self.folder.glob(f"{kind}-*.xml"))
            self.assertGreater(len(paths), 30)
            self.expect_valid(kind, *paths)

    def test_what_the_command_writes_is_valid(self):
        self.sample("solver.cfg")
        self.expect("convert solver.cfg solver.xml")
        self.expect_valid("configuration", self.folder / "solver.xml")

    def test_what_the_examples_write_is_valid(self):
        written = SOURCES / "tests" / "data" / "typical-run"
        self.expect_valid("configuration", written / "cavity.xml")
        self.expect_valid("materials", written / "materials.xml")

    def test_samples_by_hand_are_refused_for_what_a_load_skips(self):
        samples = SOURCES / "samples"
        self.assertRegex(
            self.refusal("configuration", samples / "NEREO2_default.xml"),
            r"\A\S+ element LicenseServer: .*This element is not expected\.\n\S+ fails to validate\n\Z",
        )
        self.assertIn("element library: ", self.refusal("materials", samples / "materials.xml"))

    def test_examples_of_findings_are_refused(self):
        refused = set()
        for code, files, _ in examples():
            for name, _, content in files:
                if not name.endswith(".xml") or content is None or code in BEYOND_SCHEMAS:
                    continue
                with self.subTest(code=code, name=name):
                    kind = "materials" if name == "materials.xml" else "configuration"
                    self.assertNotEqual(self.refusal(kind, self.write(name, content)), "")
                refused.add(code)
        self.assertGreaterEqual(refused, UNKNOWN)

    def test_numbers_are_spelt_as_loads_read_them(self):
        for spellings, holders in [
            (INTEGERS, [CONFIGURATION.format("<MaxIter>{}</MaxIter>"), MATERIAL.format("<id>{}</id>")]),
            (NUMBERS, [
                CONFIGURATION.format("<StopTime>{}</StopTime>"),
                MATERIAL.format("<gas_constant>{}</gas_constant>"),
                PROPERTY.format("<value>{}</value>"),
                PROPERTY.format(
                    "<variation_type>piecewise_linear</variation_type><independent_variable>kT</independent_variable>"
                    "<point><x>1</x><y>{}</y></point>"
                ),
            ]),
        ]:
            for holder in holders:
                for spelling, is_right in spellings:
                    content = holder.format(spelling)
                    with self.subTest(content=content):
                        self.assertEqual(self.refusal_of(content) == "", is_right)
                        self.assertEqual(set(self.findings_of(content)) & FINDINGS_OF_NUMBERS == set(), is_right)

    def test_what_a_check_finds_is_refused(self):
        for code, content in WRONG:
            with self.subTest(content=content):
                self.assertIn(code, self.findings_of(content))
                self.assertNotEqual(self.refusal_of(content), "")

    def test_what_a_check_takes_is_valid(self):
        for content in RIGHT:
            with self.subTest(content=content):
                self.assertEqual(self.findings_of(content), [])
                self.assertEqual(self.refusal_of(content), "")

    def test_schemas_tell_types_and_descriptions(self):
        settings = (SCHEMAS / SCHEMA_OF["configuration"]).read_text()
        for key, type_, default in [
            ("MaxIter", "integer", "10000"),
            ("DumpIter", "integer", "-1"),
            ("StopTime", "number", "1e20"),
            ("TimeStepSize", "number", "0.0"),
            ("AwsRegion", "text", '"us-east-1"'),
            ("ExePath", "text", '""'),
        ]:
            self.assertRegex(
                settings,
                rf'<xs:element name="{key}" type="{type_}" minOccurs="0">\s+'
                rf"<xs:annotation><xs:documentation>Default: {default}</xs:documentation>",
            )
        words = (SCHEMAS / SCHEMA_OF["materials"]).read_text()
        for word, description in [
            ("centrifugal_fan", "Centrifugal Pump/Blower"),
            ("ratio_specific_heats", "Cp/Cv"),
            ("EOS", "equation_of_state, as older files have it"),
        ]:
            self.assertRegex(
                words,
                rf'<xs:enumeration value="{word}">\s+'
                rf"<xs:annotation><xs:documentation>{description}</xs:documentation>",
            )


if __name__ == "__main__":
    unittest.main()

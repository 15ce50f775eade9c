"""What diff prints, and its exit codes."""

import math
import struct
import unittest

from support import CommandTest, little_endian_results

NAN = math.nan
INFINITY = math.inf


class DiffTest(CommandTest):
    def setUp(self):
        super().setUp()
        self.write("a.cfg", "MaxIter 5\nStopTime 1000\nWidth 1")

    def test_says_nothing_of_files_that_say_the_same(self):
        self.write("b.cfg", "StopTime    1e3\nWidth 1\nMaxIter 5")
        self.expect("diff a.cfg b.cfg")
        self.assertEqual(self.json_of("diff", "a.cfg", "b.cfg"), {"same": True, "differences": []})

    def test_prints_a_line_for_each_difference(self):
        self.write("b.cfg", "MaxIter 6\nStopTime 1000\nHeight 2")
        for more, code in ([], 1), (["--quiet"], 1):
            result = self.run_command("diff", "a.cfg", "b.cfg", *more)
            self.assertEqual((result.code, result.err), (code, ""))
            if more:
                self.assertEqual(result.out, "")
            else:
                self.assertEqual(
                    sorted(result.out.splitlines()), ["+ Height: 2", "- Width: 1", "MaxIter: 5 -> 6"]
                )

    def test_json(self):
        self.write("b.cfg", "MaxIter 6\nStopTime 1000")
        document = self.json_of("diff", "a.cfg", "b.cfg", code=1)
        self.assertFalse(document["same"])
        self.assertEqual(
            sorted(document["differences"], key=lambda row: row["address"]),
            [{"address": "MaxIter", "a": "5", "b": "6"}, {"address": "Width", "a": "1", "b": None}],
        )

    def test_the_forms_of_a_configuration_compare(self):
        self.expect("convert a.cfg a.xml")
        self.expect("diff a.cfg a.xml")
        self.expect("diff a.xml a.cfg")

    def test_tolerances(self):
        self.write("a.res", little_endian_results({"kU": [10.0, -100.0]}, 2))
        self.write("b.res", little_endian_results({"kU": [10.5, -100.0]}, 2))
        for arguments, code in [
            ("", 1),
            ("--absolute 0.4", 1),
            ("--absolute 0.5", 0),
            ("--relative 0.04", 1),
            ("--relative 0.05", 0),
            ("--peak 0.0049", 1),
            ("--peak .005", 0),
            ("--absolute 0.4 --peak 0.005", 0),  # differ is what exceeds all of them
            ("--absolute 1e-1 --relative=0.01", 1),
            ("--absolute inf", 0),
        ]:
            result = self.run_command("diff", "a.res", "b.res", *arguments.split())
            self.assertEqual((result.code, result.err), (code, ""), arguments)
        for wrong in ("-1", "abc", "nan", "", "1,5"):
            self.expect_refused(["diff", "a.res", "b.res", "--peak", wrong], "isn't a number from 0")

    def test_names_the_worst_field_first(self):
        self.write("a.res", little_endian_results({"kU": [1.0, 2.0], "kP": [1.0, 2.0], "kT": [1.0, NAN]}, 2))
        self.write("b.res", little_endian_results({"kU": [1.0, 2.1], "kP": [1.0, 4.0], "kT": [1.0, NAN]}, 2))
        lines = self.run_command("diff", "a.res", "b.res").out.splitlines()
        self.assertEqual([line.split(":")[0] for line in lines], ["kP", "kU"])
        field = self.json_of("diff", "a.res", "b.res", code=1)["differences"][0]
        self.assertEqual(
            field,
            {
                "address": "kP",
                "a": 2,
                "b": 4,
                "count": 1,
                "largest": 2,
                "node": 2,
                "peakShare": 1,
                "rms": math.sqrt(2),
            },
        )

    def test_what_is_no_finite_number_is_null(self):
        self.write("a.res", little_endian_results({"kU": [1.0, NAN]}, 2))
        self.write("b.res", little_endian_results({"kU": [1.0, 2.0]}, 2))
        field = self.json_of("diff", "a.res", "b.res", code=1)["differences"][0]
        self.assertEqual([field[key] for key in ("a", "b", "count", "largest", "node")], [None, 2, 1, None, 2])

    def test_fields_are_chosen(self):
        self.write("a.res", little_endian_results({"kU": [1.0], "kP": [1.0]}, 1))
        self.write("b.res", little_endian_results({"kU": [2.0], "kP": [1.0], "kT": [1.0]}, 1))
        self.expect("diff a.res b.res --fields kP")
        self.assertEqual(len(self.run_command("diff", "a.res", "b.res", "--fields", "kP,kU").out.splitlines()), 1)
        self.assertEqual(self.run_command("diff", "a.res", "b.res", "--fields", "kU,kT").code, 1)
        self.assertEqual(self.run_command("diff", "a.res", "b.res", "--fields", "kNowhere").code, 2)

    def test_refuses_what_cannot_be_compared(self):
        self.sample("cavity.ctl")
        self.write("empty", "")
        for a, b in [
            ("a.cfg", "cavity.ctl"),
            ("nowhere", "a.cfg"),
            ("a.cfg", "nowhere"),
            ("a.cfg", "empty"),
            (".", "a.cfg"),
        ]:
            result = self.run_command("diff", a, b)
            self.assertEqual((result.code, result.out), (2, ""), (a, b))
            self.assertRegex(result.err, r"\Anereofile: [^\n]+\n\Z")
        self.expect("diff a.cfg nowhere", err="nereofile: nowhere: No such file or directory\n", code=2)
        self.expect("diff . a.cfg", err="nereofile: .: Is a directory\n", code=2)

    def test_a_material_or_a_property_that_one_file_lacks_is_one_difference(self):
        def database(*materials):
            return f"<material_database version='2024.0.0.0'>{''.join(materials)}</material_database>"

        def material(name, *properties):
            return f"<material type='fluid'><name>{name}</name>{''.join(properties)}</material>"

        density, viscosity = (
            f"<property type='{name}'><variation_type>constant</variation_type><value>1</value></property>"
            for name in ("density", "viscosity")
        )
        self.write("a.xml", database(material("Water", density), material("Air", density)))
        self.write("b.xml", database(material("Water", density, viscosity), material("Ice", density)))
        self.assertEqual(
            [row["address"] for row in self.json_of("diff", "a.xml", "b.xml", code=1)["differences"]],
            ["Water/viscosity", "Ice", "Air"],
        )
        lines = self.run_command("diff", "a.xml", "b.xml").out.splitlines()
        self.assertEqual([line.split(":")[0] for line in lines], ["+ Water/viscosity", "+ Ice", "- Air"])

    def test_of_the_facts_of_results_only_the_date_is_left_out(self):
        content = little_endian_results({"kU": [1.0]}, 1)
        self.write("a.res", content)
        self.write("b.res", content.replace(b"now", b"old"))
        self.expect("diff a.res b.res")
        self.write("b.res", content.replace(b"Made up", b"Another"))
        self.expect("diff a.res b.res", out="title: Made up -> Another\n", code=1)
        time = content.index(struct.pack("<d", 1.5))
        self.write("b.res", content[:time] + struct.pack("<d", 2.5) + content[time + 8 :])
        self.expect("diff a.res b.res", out="time: 1.5 -> 2.5\n", code=1)

    def test_the_number_of_nodes_and_fields_that_one_file_lacks(self):
        self.write("a.res", little_endian_results({"kU": [1.0, 2.0, 3.0], "kP": [1.0, 2.0, 3.0]}, 3))
        self.write("b.res", little_endian_results({"kU": [1.0, 2.0], "kT": [1.0, 2.0]}, 2))
        rows = self.json_of("diff", "a.res", "b.res", code=1)["differences"]
        self.assertEqual(
            [(row["address"], row["a"], row["b"]) for row in rows],
            [("nodes", "3", "2"), ("elements", "4", "3"), ("kP", "3 values", None), ("kT", None, "2 values")],
        )

    def test_special_numbers(self):
        for a, b, code in [
            (0.0, -0.0, 0),
            (NAN, NAN, 0),
            (INFINITY, INFINITY, 0),
            (INFINITY, -INFINITY, 1),
            (INFINITY, 1e308, 1),
            (NAN, INFINITY, 1),
            (NAN, 0.0, 1),
        ]:
            self.write("a.res", little_endian_results({"kU": [a, 1.0]}, 2))
            self.write("b.res", little_endian_results({"kU": [b, 1.0]}, 2))
            for more in ([], ["--absolute", "inf"], ["--relative", "1e9"], ["--peak", "5"]):
                result = self.run_command("diff", "a.res", "b.res", *more)
                self.assertEqual((result.code, result.err), (code, ""), (a, b, more))

    def test_the_peak_is_the_largest_finite_magnitude_of_the_first_file(self):
        self.write("a.res", little_endian_results({"kU": [1.0, -4.0, INFINITY, NAN]}, 4))
        self.write("b.res", little_endian_results({"kU": [2.0, -4.0, INFINITY, NAN]}, 4))
        self.assertEqual(self.json_of("diff", "a.res", "b.res", code=1)["differences"][0]["peakShare"], 0.25)
        self.expect("diff a.res b.res --peak 0.25")
        self.assertEqual(self.run_command("diff", "a.res", "b.res", "--peak", "0.24").code, 1)

    def test_each_difference_keeps_to_its_line(self):
        self.write("a.xml", "<Nereo2Config><AnalyzePath>a\nb\x7f</AnalyzePath></Nereo2Config>")
        self.write("b.xml", "<Nereo2Config><JobPrefix>\n</JobPrefix></Nereo2Config>")
        self.expect("diff a.xml b.xml", out="+ JobPrefix: \\n\n- AnalyzePath: a\\nb\\u007f\n", code=1)

    def test_the_version_takes_no_part_between_the_forms(self):
        self.write("a.xml", "<Nereo2Config Version='2023.1.0.0'><MaxIter>5</MaxIter></Nereo2Config>")
        self.write("b.xml", "<Nereo2Config Version='2024.1.0.0'><MaxIter>5</MaxIter></Nereo2Config>")
        self.write("c.cfg", "MaxIter 5")
        self.expect("diff a.xml c.cfg")
        self.expect("diff c.cfg a.xml")
        self.expect("diff a.xml b.xml", out="version: 2023.1.0.0 -> 2024.1.0.0\n", code=1)

    def test_standard_input(self):
        self.expect("diff a.cfg -", out="MaxIter: 5 -> 6\n", input=b"MaxIter 6\nWidth 1\nStopTime 1000", code=1)

    def test_a_file_is_the_same_as_itself(self):
        for name in ("cavity.ctl", "materials.xml", "cavity.res", "NEREO2_default.xml"):
            self.sample(name)
            self.expect(["diff", name, name])


if __name__ == "__main__":
    unittest.main()

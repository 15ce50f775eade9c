"""What convert writes, and what it refuses."""

import ast
import math
import os
import struct
import unittest

from support import TIMEOUT, CommandTest, little_endian_results, start

NAN = math.nan
INFINITY = math.inf
XML = """<?xml version="1.0"?>
<Nereo2Config Version="2023.1.0.0">
  <MaxIter> 500 </MaxIter>
  <StopTime>1E3</StopTime>
  <AnalyzePath>a &amp; b/Größe</AnalyzePath>
</Nereo2Config>
"""
TEXT = "AnalyzePath a & b/Größe\nMaxIter 500\nStopTime 1000\n"


class ConfigurationTest(CommandTest):
    def test_writes_the_settings_that_are_there_in_the_other_form(self):
        self.write("a.xml", XML)
        self.expect("convert a.xml a.cfg")
        self.assertEqual((self.folder / "a.cfg").read_text(), TEXT)
        self.expect("convert a.cfg b.xml")
        self.assertEqual(
            self.json_of("get", "b.xml", "MaxIter", "StopTime", "AnalyzePath"),
            {"MaxIter": "500", "StopTime": "1000", "AnalyzePath": "a & b/Größe"},
        )
        self.assertEqual(len(self.run_command("get", "b.xml").out.splitlines()), 4)  # and the version

    def test_the_version_stays_from_xml_to_xml(self):
        self.write("a.xml", XML)
        self.expect("convert a.xml b.xml")
        self.expect("get b.xml version", out="2023.1.0.0\n")

    def test_standard_output_is_text(self):
        self.write("a.xml", XML)
        self.expect("convert a.xml -", out=TEXT)

    def test_refuses_what_the_other_form_cannot_carry(self):
        for value in ("two  blanks", "a line\nand another"):
            self.write("a.xml", f"<Nereo2Config><MaxIter>1</MaxIter><AnalyzePath>{value}</AnalyzePath></Nereo2Config>")
            self.write("b.cfg", "as it was")
            self.expect_refused("convert a.xml b.cfg", "a.xml: the text form can't carry the value of AnalyzePath")
            self.assertEqual((self.folder / "b.cfg").read_text(), "as it was")
        self.write("a.cfg", "AnalyzePath a\x01b")
        self.expect_refused("convert a.cfg c.xml", "a.cfg: the XML form can't carry the value of AnalyzePath")
        self.assertFalse((self.folder / "c.xml").exists())

    def test_a_file_with_errors_is_converted_by_force(self):
        self.write("a.cfg", "MaxIter abc\nStopTime 1000")
        self.expect_refused("convert a.cfg b.cfg", "a.cfg: has errors (1), which nereofile check shows; --force")
        self.assertFalse((self.folder / "b.cfg").exists())
        self.expect("convert a.cfg b.cfg --force")
        self.assertEqual((self.folder / "b.cfg").read_text(), "MaxIter 0\nStopTime 1000\n")

    def test_a_wrong_suffix_does_not_matter_to_force(self):
        self.write("a.cfg", XML)
        self.expect_refused("convert a.cfg b.cfg", "has errors")
        self.expect("convert a.cfg b.cfg --force")
        self.assertEqual((self.folder / "b.cfg").read_text(), TEXT)

    def test_refuses_what_is_for_results(self):
        self.write("a.cfg", TEXT)
        self.expect_refused("convert a.cfg a.csv", "a.csv: only results are converted to .csv and .npy")
        self.expect_refused("convert a.cfg a.xml --fields kU", "--fields and --nodes are for results")


class ResultsTest(CommandTest):
    def setUp(self):
        super().setUp()
        self.fields = {"kU": [0.1, -0.0, 1e300], "kNew": [1.0, 2.0, 3.0], "kP": [1 / 3, NAN, -INFINITY]}
        self.write("a.res", little_endian_results(self.fields, 3))

    def test_csv_has_the_shortest_numbers(self):
        lines = "node,kU,kP\n1,0.1,0.3333333333333333\n2,-0,nan\n3,1e+300,-inf\n"
        self.expect("convert a.res -", out=lines)
        self.expect("convert a.res a.csv")
        self.assertEqual((self.folder / "a.csv").read_text(), lines)

    def test_every_number_reads_back(self):
        numbers = [struct.unpack("<d", os.urandom(8))[0] for _ in range(3000)] + [5e-324, 2.0**53, 123456.0]
        numbers = [number for number in numbers if not math.isnan(number)]
        self.write("many.res", little_endian_results({"kU": numbers}, len(numbers)))
        out = self.run_command("convert", "many.res", "-").out
        rows = [line.split(",") for line in out.splitlines()[1:]]
        self.assertEqual([int(row[0]) for row in rows], list(range(1, len(numbers) + 1)))
        self.assertEqual([float(row[1]) for row in rows], numbers)
        for text, number in zip((row[1] for row in rows), numbers):
            self.assertLessEqual(len(text), len(repr(number)) + 2)  # which has 1e22 as 1e+22 too

    def test_fields_are_chosen_and_ordered(self):
        self.expect("convert a.res - --fields kP,kU", out="node,kP,kU\n1,0.3333333333333333,0.1\n2,nan,-0\n3,-inf,1e+300\n")
        self.expect_refused("convert a.res - --fields kP,kV", "a.res: there is no field kV")
        self.expect_refused("convert a.res - --fields kNew", "a.res: no code is known for the field kNew")

    def test_nodes_are_chosen_with_both_ends(self):
        self.expect("convert a.res - --nodes 2:3 --fields kU", out="node,kU\n2,-0\n3,1e+300\n")
        self.expect("convert a.res - --nodes 3:9 --fields kU", out="node,kU\n3,1e+300\n")
        self.expect("convert a.res - --nodes 4:9 --fields kU", out="node,kU\n")
        for wrong in ("2", "2:1", "0:1", "-1:2", "a:b", "1:2:3", ":", "1:99999999999"):
            self.expect_refused(["convert", "a.res", "-", "--nodes", wrong], "isn't FIRST:LAST")

    def test_nodes_in_any_order(self):
        records = [(3, [3.0]), (1, [1.0]), (2, [2.0])]
        self.write("b.res", little_endian_results(["kU"], 3, records=records, order=">"))
        self.expect("convert b.res -", out="node,kU\n1,1\n2,2\n3,3\n")

    def read_npy(self, name):
        content = (self.folder / name).read_bytes()
        self.assertEqual(content[:8], b"\x93NUMPY\x01\x00")
        (size,) = struct.unpack("<H", content[8:10])
        self.assertEqual((10 + size) % 64, 0)
        self.assertEqual(content[9 + size : 10 + size], b"\n")
        head = ast.literal_eval(content[10 : 10 + size].decode())
        self.assertEqual((head["descr"], head["fortran_order"]), ("<f8", False))
        values = struct.unpack(f"<{(len(content) - 10 - size) // 8}d", content[10 + size :])
        return head["shape"], values

    def test_npy_of_one_field_has_one_dimension(self):
        self.expect("convert a.res a.npy --fields kU")
        self.assertEqual(self.read_npy("a.npy"), ((3,), (0.1, -0.0, 1e300)))

    def test_npy_of_several_fields_has_rows_of_nodes(self):
        self.expect("convert a.res a.npy --nodes 1:1")
        self.assertEqual(self.read_npy("a.npy"), ((1, 2), (0.1, 1 / 3)))

    def test_refuses_other_targets(self):
        for target in ("a.txt", "a", "a.xml"):
            self.expect_refused(["convert", "a.res", target], f"{target}: results are converted to .csv or .npy")
        self.write("none.res", little_endian_results({"kNew": [1.0]}, 1))
        self.expect_refused("convert none.res none.npy", "there is no field whose code is known")
        self.expect("convert none.res -", out="node\n1\n")

    def test_damaged_files_are_converted_by_force_as_far_as_they_go(self):
        cut = little_endian_results({"kU": [1.0, 2.0]}, 2)[:-1]
        self.write("cut.res", cut)
        self.expect_refused("convert cut.res -", "cut.res: has errors (1)")
        self.expect("convert cut.res - --force", out="node,kU\n1,1\n2,0\n")
        self.write("bad.res", little_endian_results(["kU"], 1, records=[(5, [1.0])]))
        self.expect_refused("convert bad.res - --force", "bad.res: contradicts itself")


class FilesTest(CommandTest):
    def setUp(self):
        super().setUp()
        self.write("a.cfg", TEXT)

    def test_other_kinds_are_refused(self):
        self.sample("cavity.ctl")
        self.sample("materials.xml")
        for name in ("cavity.ctl", "materials.xml"):
            self.expect_refused(["convert", name, "a.xml"], "only configurations and results are converted")
        self.expect_refused("convert nowhere a.xml", "nowhere: No such file or directory")

    def test_what_cannot_be_written_is_said_and_leaves_nothing(self):
        (self.folder / "folder.xml").mkdir()
        for target in ("nowhere/a.xml", "folder.xml"):
            self.expect_refused(["convert", "a.cfg", target], f"nereofile: {target}: ")
        self.assertEqual(sorted(path.name for path in self.folder.iterdir()), ["a.cfg", "folder.xml"])

    def test_a_file_may_be_converted_onto_itself(self):
        self.write("a.xml", XML)
        self.expect("convert a.xml a.xml")
        self.expect("check a.xml --strict")

    def test_a_full_standard_output(self):
        self.write("many.res", little_endian_results({"kU": [0.5] * 100000}, 100000))
        with open("/dev/full", "wb") as full:
            process = start("convert", "many.res", "-", cwd=self.folder, stdout=full)
            self.assertEqual(
                process.communicate(timeout=TIMEOUT)[1], b"nereofile: standard output: No space left on device\n"
            )
            self.assertEqual(process.returncode, 2)


if __name__ == "__main__":
    unittest.main()

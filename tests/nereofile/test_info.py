"""What info prints."""

import math
import unittest

from support import CommandTest, little_endian_results

NAN = math.nan
INFINITY = math.inf


class ResultsInfoTest(CommandTest):
    def setUp(self):
        super().setUp()
        self.bytes = little_endian_results(
            {"kU": [0.5, -2.0, 1.0], "kNew": [1.0, NAN, -INFINITY]}, 3, title="Größe 3"
        )
        self.write("a.res", self.bytes)

    def test_shows_the_facts(self):
        self.expect(
            "info a.res",
            out="""\
a.res: results
  title       Größe 3
  date        now
  version     2024.0.0.0
  byte order  little-endian
  nodes       3
  elements    4
  iteration   7, from 1
  time step   3, from 2, of 0.25
  time        1.5
  bytes       456 of 456
  records     3 of 3
  fields      kU (1), kNew (?)
""",
        )

    def test_statistics(self):
        out = self.run_command("info", "a.res", "--stats").out
        self.assertEqual(
            out[out.index("  records") :],
            """\
  records     3 of 3

  field     minimum  at node  maximum  at node       mean  not finite
  kU (1)         -2        2        1        3  -0.166667           0
  kNew (?)        1        1        1        1          1           2
""",
        )

    def test_json(self):
        expected = {
            "file": "a.res",
            "kind": "results",
            "version": "2024.0.0.0",
            "title": "Größe 3",
            "date": "now",
            "byteOrder": "little",
            "nodes": 3,
            "elements": 4,
            "iteration": {"current": 7, "starting": 1},
            "timeStep": {"current": 3, "starting": 2, "size": 0.25},
            "time": 1.5,
            "bytes": 456,
            "bytesAnnounced": 456,
            "wholeRecords": 3,
            "fields": [{"name": "kU", "code": 1}, {"name": "kNew", "code": None}],
        }
        self.assertEqual(self.json_of("info", "a.res"), {"files": [expected]})
        expected["fields"] = [
            {
                "name": "kU",
                "code": 1,
                "minimum": -2,
                "maximum": 1,
                "mean": -0.5 / 3,
                "minimumNode": 2,
                "maximumNode": 3,
                "notFinite": 0,
            },
            {
                "name": "kNew",
                "code": None,
                "minimum": 1,
                "maximum": 1,
                "mean": 1,
                "minimumNode": 1,
                "maximumNode": 1,
                "notFinite": 2,
            },
        ]
        self.assertEqual(self.json_of("info", "a.res", "--stats"), {"files": [expected]})

    def test_a_field_without_a_finite_value_has_no_extremes(self):
        self.write("a.res", little_endian_results({"kU": [NAN]}, 1))
        field = self.json_of("info", "a.res", "--stats")["files"][0]["fields"][0]
        self.assertEqual([field[key] for key in ("minimum", "maximum", "mean", "minimumNode")], [None] * 4)
        self.assertEqual(field["notFinite"], 1)

    def test_the_other_byte_order(self):
        self.write("a.res", little_endian_results({"kU": [0.5]}, 1, order=">"))
        self.assertEqual(self.json_of("info", "a.res")["files"][0]["byteOrder"], "big")
        self.assertIn("big-endian", self.run_command("info", "a.res").out)

    def test_a_file_that_is_cut_short(self):
        self.write("cut.res", self.bytes[:-1])
        file = self.json_of("info", "cut.res", "--stats")["files"][0]
        self.assertEqual([file["bytes"], file["bytesAnnounced"], file["wholeRecords"]], [455, 456, 2])
        self.assertEqual(file["fields"][0]["minimum"], -2)
        out = self.run_command("info", "cut.res").out
        self.assertIn("  bytes       455 of 456\n  records     2 of 3\n", out)
        self.assertIn("something is wrong; nereofile check cut.res says what", out)

    def test_statistics_of_what_is_no_results_file(self):
        self.write("letter", b"Dear Sir\n" * 100)
        result = self.run_command("info", "letter", "--kind", "results", "--stats")
        self.assertEqual(result.code, 2)
        self.assertIn("nereofile: letter: its values can't be gone through", result.err)

    def test_many_fields_find_room_on_a_screen(self):
        self.write("many.res", little_endian_results({f"kNew{i}": [1.0] for i in range(300)}, 1))
        out = self.run_command("info", "many.res").out
        self.assertLessEqual(len(out.splitlines()), 40)
        self.assertTrue(out.endswith(" and 240 more\n"))
        self.assertTrue(all(len(line) <= 80 for line in out.splitlines()))


class InfoTest(CommandTest):
    def setUp(self):
        super().setUp()
        self.sample("cavity.ctl")
        self.write("a.cfg", "MaxIter 5\nStopTime 1e3")

    def test_shows_the_values_of_the_other_kinds(self):
        self.expect(
            "info a.cfg", out="a.cfg: configuration-text, 2 values\n  MaxIter   5\n  StopTime  1e3\n"
        )

    def test_shows_the_most_important_first_and_no_more_than_a_screen(self):
        lines = self.run_command("info", "cavity.ctl").out.splitlines()
        self.assertRegex(lines[0], r"^cavity\.ctl: control, version 2023\.1\.0\.0, \d+ values$")
        self.assertEqual(lines[1].split(maxsplit=1), ["title", "Lid-driven cavity, Re 100"])
        self.assertEqual(len(lines), 42)
        self.assertRegex(lines[-1], r"^  and \d+ more; nereofile get cavity\.ctl shows them$")

    def test_of_many_values_those_are_shown_that_matter_and_the_last_one_of_each(self):
        conditions = "".join(f"{i} kP 1 0 -1\n" for i in range(1, 1001))
        head = "job\nprogram\nVersion 2024.0.0.0\n\n*** Surface nodal boundary conditions\n"
        self.write("a.gbi", head + conditions + "-1\n*** Units\nmeter\n")
        lines = self.run_command("info", "a.gbi").out.splitlines()
        self.assertEqual(lines[0], "a.gbi: geometry-boundary, version 2024.0.0.0, 5004 values")
        self.assertEqual([line.split()[0] for line in lines[1:6]], ["job", "program", "units", "version", "conditions/1/entity"])
        self.assertEqual(lines[-1], "  and 4964 more; nereofile get a.gbi shows them")
        self.write("b.cfg", "MaxIter 1\nStopTime 2\nMaxIter 3\nWidth 4\nMaxIter 5")
        self.expect(
            "info b.cfg", out="b.cfg: configuration-text, 3 values\n  MaxIter   5\n  StopTime  2\n  Width     4\n"
        )

    def test_values_that_come_again_count_once(self):
        materials = "".join(
            f"<material><id>{i}</id><name>m{i}</name><id>{i}0</id></material>" for i in range(1, 10001)
        )
        self.write("a.xml", f"<material_database>{materials}<a/></material_database>")
        lines = self.run_command("info", "a.xml").out.splitlines()
        self.assertEqual(lines[0], "a.xml: materials, 20000 values")
        self.assertEqual([line.split() for line in lines[1:3]], [["m1/id", "10"], ["m1/name", "m1"]])
        self.assertEqual(lines[40].split(), ["m20/name", "m20"])
        self.assertEqual(lines[41], "  and 19960 more; nereofile get a.xml shows them")

    def test_json(self):
        self.assertEqual(
            self.json_of("info", "a.cfg"),
            {
                "files": [
                    {
                        "file": "a.cfg",
                        "kind": "configuration-text",
                        "version": None,
                        "values": {"MaxIter": "5", "StopTime": "1e3"},
                    }
                ]
            },
        )
        file = self.json_of("info", "cavity.ctl")["files"][0]
        self.assertEqual((file["kind"], file["version"]), ("control", "2023.1.0.0"))
        self.assertEqual(file["values"]["relaxation/kP/under"], "0.3")

    def test_all_files_are_dealt_with(self):
        result = self.run_command("info", "nowhere", "a.cfg", ".", "cavity.ctl")
        self.assertEqual(result.code, 2)
        self.assertEqual(
            result.err, "nereofile: nowhere: No such file or directory\nnereofile: .: Is a directory\n"
        )
        self.assertTrue(result.out.startswith("a.cfg: "))
        self.assertIn("\n\ncavity.ctl: control", result.out)
        files = self.json_of("info", "nowhere", "a.cfg", "cavity.ctl", code=2)["files"]
        self.assertEqual([file["file"] for file in files], ["a.cfg", "cavity.ctl"])

    def test_a_file_of_no_kind(self):
        self.write("empty", "")
        self.expect(
            "info empty", err="nereofile: empty: is of no kind that is known; --kind can tell\n", code=2
        )
        self.assertEqual(
            self.json_of("info", "empty", code=2)["files"],
            [{"file": "empty", "kind": None, "version": None, "values": {}}],
        )

    def test_texts_keep_to_their_line(self):
        self.write("a.xml", "<Nereo2Config><AnalyzePath>a\nb\x7f</AnalyzePath></Nereo2Config>")
        self.assertIn("AnalyzePath  a\\nb\\u007f\n", self.run_command("info", "a.xml").out)

    def test_the_kind_can_be_given(self):
        self.write("unclear", "Text\nwithout a title\n")
        self.expect_refused("info unclear", "unclear: is of no kind that is known; --kind can tell")
        self.assertEqual(self.json_of("info", "unclear", "--kind", "control")["files"][0]["kind"], "control")
        self.assertEqual(
            self.json_of("info", "a.cfg", "--kind", "control")["files"][0]["values"]["header/1"], "MaxIter 5"
        )

    def test_standard_input(self):
        self.expect("info -", out="-: configuration-text, 1 value\n  MaxIter  5\n", input=b"MaxIter 5")
        out = self.run_command("info", "-", "--kind", "control", input=b"Text\n").out
        self.assertTrue(out.startswith("-: control, "), out)

    def test_columns_are_as_wide_as_their_letters(self):
        self.write("a.xml", "<material_database><material><name>Größe</name><id>1</id></material></material_database>")
        self.expect("info a.xml", out="""\
a.xml: materials, 2 values
  Größe/name  Größe
  Größe/id    1
""")


if __name__ == "__main__":
    unittest.main()

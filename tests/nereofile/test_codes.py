"""What codes prints."""

import re
import unittest

from support import SOURCES, CommandTest


def table(name):
    text = (SOURCES / "include" / "NereoFileIO" / name).read_text()
    return {(row[1], int(row[2])) for row in re.finditer(r"^[A-Z_]+\((k\w+), (\d+)\)", text, re.M)}


class CodesTest(CommandTest):
    def test_finds_names_codes_and_patterns(self):
        for wanted, names in [
            ("kU", ["kU"]),
            ("ku", ["kU"]),
            ("4", ["kP"]),
            ("20", ["kVeff", "kSlipNode"]),
            ("27", ["kCond", "kVolumeRate", "kKXX"]),
            ("k?XX", ["kKXX"]),
            ("KTOTAL?", ["kTotalT", "kTotalP"]),
            ("k[UV]", ["kU", "kV"]),
        ]:
            found = self.json_of("codes", wanted)["codes"]
            self.assertEqual({row["name"] for row in found}, set(names), wanted)

    def test_prints_columns(self):
        self.expect("codes 20", out="20  kVeff      field-variable\n20  kSlipNode  node-flag\n")

    def test_lists_all_by_their_codes(self):
        found = self.json_of("codes")["codes"]
        rows = {(row["name"], row["code"]) for row in found if row["kind"] == "field-variable"}
        aliases = {("kKXX", 27), ("kKYY", 47), ("kKZZ", 48)}
        self.assertEqual(rows - aliases, table("FieldVariable.def"))
        self.assertLessEqual(aliases, rows)
        self.assertEqual(
            {(row["name"], row["code"]) for row in found if row["kind"] == "node-flag"}, table("NodeFlag.def")
        )
        self.assertEqual([row["code"] for row in found], sorted(row["code"] for row in found))
        self.assertEqual(len(self.run_command("codes").out.splitlines()), len(found))

    def test_nothing_found(self):
        for wanted in ("kNowhere", "999", "-1", "k("):
            self.expect(
                ["codes", "--", wanted], err=f"nereofile: no name or code is like {wanted}\n", code=1
            )
        self.assertEqual(self.json_of("codes", "kNowhere", code=1), {"codes": []})


if __name__ == "__main__":
    unittest.main()

"""What get prints."""

import unittest

from support import SOURCES, CommandTest, little_endian_results

XML = """<?xml version="1.0"?>
<Nereo2Config Version="2023.1.0.0">
  <MaxIter> 500 </MaxIter>
  <StopTime>1E3</StopTime>
  <AnalyzePath> a &amp; b/Größe </AnalyzePath>
</Nereo2Config>
"""


class GetTest(CommandTest):
    def setUp(self):
        super().setUp()
        self.write("a.xml", XML)
        self.sample("cavity.ctl")
        self.sample("materials.xml")

    def test_one_address_gives_the_bare_value(self):
        for file, address, value in [
            ("a.xml", "MaxIter", "500"),  # without the blanks around a number
            ("a.xml", "StopTime", "1E3"),  # as the file has it
            ("a.xml", "AnalyzePath", " a & b/Größe "),
            ("a.xml", "version", "2023.1.0.0"),
            ("cavity.ctl", "title", "Lid-driven cavity, Re 100"),
            ("cavity.ctl", "relaxation/kP/under", "0.3"),
            ("cavity.ctl", "constants/kInflate/12", "1.2"),
            ("cavity.ctl", "constants/kGravY", "-9.81"),
            ("cavity.ctl", "flags/wall_model", "enhanced"),
            ("materials.xml", "Air/ref_pressure", "101325"),
        ]:
            self.expect(["get", file, address], out=value + "\n")

    def test_several_addresses_give_lines_in_the_order_in_which_they_are_asked_for(self):
        self.expect("get a.xml StopTime MaxIter", out="StopTime=1E3\nMaxIter=500\n")

    def test_no_address_gives_all_values(self):
        self.expect(
            "get a.xml", out="version=2023.1.0.0\nMaxIter=500\nStopTime=1E3\nAnalyzePath= a & b/Größe \n"
        )

    def test_an_address_that_is_not_there_is_said_and_the_rest_printed(self):
        self.expect("get a.xml Maxiter", err="nereofile: a.xml: there is no Maxiter, but MaxIter\n", code=1)
        self.expect(
            "get a.xml Width MaxIter", out="MaxIter=500\n", err="nereofile: a.xml: there is no Width\n", code=1
        )

    def test_the_nearest_address_is_offered(self):
        for file, address, nearest in [
            ("cavity.ctl", "relaxation/kP/undr", "relaxation/kP/under"),
            ("cavity.ctl", "relaxation/kP", "relaxation/kP/under"),
            ("cavity.ctl", "kGravY", "constants/kGravY"),
            ("cavity.ctl", "Flags/CFL", "flags/cfl"),
            ("materials.xml", "Air/ref_presure", "Air/ref_pressure"),
        ]:
            self.expect(
                ["get", file, address],
                err=f"nereofile: {file}: there is no {address}, but {nearest}\n",
                code=1,
            )

    def test_the_last_value_of_an_address_counts(self):
        self.write("twice.cfg", "MaxIter 1\nStopTime 2\nMaxIter 3")
        self.expect("get twice.cfg MaxIter", out="3\n")
        self.expect("get twice.cfg", out="MaxIter=3\nStopTime=2\n")

    def test_json(self):
        self.assertEqual(
            self.json_of("get", "a.xml"),
            {"version": "2023.1.0.0", "MaxIter": "500", "StopTime": "1E3", "AnalyzePath": " a & b/Größe "},
        )
        self.assertEqual(self.json_of("get", "a.xml", "MaxIter"), {"MaxIter": "500"})
        self.assertEqual(self.json_of("get", "a.xml", "MaxIter", "Width", code=1), {"MaxIter": "500", "Width": None})

    def test_facts_of_results(self):
        self.write("a.res", little_endian_results({"kU": [1.0, 2.0], "kNew": [3.0, 4.0]}, 2))
        for address, value in [
            ("version", "2024.0.0"),
            ("title", "Made up"),
            ("nodes", "2"),
            ("iteration/current", "7"),
            ("time", "1.5"),
            ("time-step/size", "0.25"),
            ("kU", "2"),
        ]:
            self.expect(["get", "a.res", address], out=value + "\n")

    def test_names_that_stand_there_twice_and_letters_that_part_addresses(self):
        self.write(
            "a.ctl",
            "NEREO control file rev 06 NEREO Ver 2023.1.0.0\nNEREO\n *** Title\na\n *** Flag section\n5\n"
            "cfl 1\ncfl 2\na/b 3\na#2 4\na% 5\n",
        )
        for address, value in [
            ("flags/cfl", "1"),
            ("flags/cfl#2", "2"),
            ("flags/a%2Fb", "3"),
            ("flags/a%232", "4"),
            ("flags/a%25", "5"),
        ]:
            self.expect(["get", "a.ctl", address], out=value + "\n")

    def test_materials_and_conditions(self):
        self.write(
            "a.xml",
            "<material_database version='2024.0.0.0'><material type='fluid'><name>Water</name><id>1</id></material>"
            "<material type='fluid'><name>Water</name><id>2</id></material><material><id>3</id></material></material_database>",
        )
        for address, value in [("Water/id", "1"), ("Water#2/id", "2"), ("#3/id", "3"), ("Water/type", "fluid")]:
            self.expect(["get", "a.xml", address], out=value + "\n")
        self.write("a.gbi", (SOURCES / "tests" / "data" / "cavity.gbi").read_bytes())
        for address in ("job", "units", "conditions/1/entity", "conditions/1/name"):
            self.assertEqual(self.run_command("get", "a.gbi", address).code, 0, address)

    def test_the_kind_can_be_given(self):
        self.write("unclear", "Text\nwithout a title\n")
        self.expect_refused("get unclear", "unclear: is of no kind that is known")
        self.expect("get unclear header/1 --kind control", out="Text\n")

    def test_standard_input(self):
        self.expect("get - MaxIter", out="500\n", input=XML.encode())
        with open(self.folder / "a.xml", "rb") as file:
            self.expect("get - MaxIter", out="500\n", stdin=file)
        with open(self.folder / "a.xml", "rb", buffering=0) as file:
            file.readline()  # what is left begins with the root
            self.expect("get - MaxIter", out="500\n", stdin=file)

    def test_refuses_what_cannot_be_read(self):
        (self.folder / "run").mkdir()
        self.expect_refused("get nowhere.ctl units", "nereofile: nowhere.ctl: No such file or directory")
        self.expect_refused("get run units", "nereofile: run: Is a directory")
        self.expect_refused(["get", "", "units"], "No such file or directory")


if __name__ == "__main__":
    unittest.main()

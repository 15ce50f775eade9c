"""Which settings a solver would have, and where they come from."""

import json
import re
import unittest

from support import SOURCES, CommandTest

XML = """<Nereo2Config>
  <MaxIter>500</MaxIter>
  <JobPrefix>mine</JobPrefix>
</Nereo2Config>
"""


class EffectiveTest(CommandTest):
    def setUp(self):
        super().setUp()
        self.write("a.xml", XML)
        self.write("a.cfg", "StopTime 1e3\nMaxIter 5\nMaxIter 6")

    def test_says_where_each_setting_comes_from(self):
        self.expect(
            "get a.xml MaxIter Transient JobPrefix --effective",
            out="MaxIter=500 a.xml:2:12\nTransient=0 default\nJobPrefix=mine a.xml:3:14\n",
        )
        self.expect(
            "get a.cfg --effective MaxIter StopTime", out="MaxIter=6 a.cfg:3:9\nStopTime=1000 a.cfg:1:10\n"
        )

    def test_all_settings_have_an_origin(self):
        text = (SOURCES / "include" / "NereoFileIO" / "Nereo2ConfigFile.def").read_text()
        keys = re.findall(r"^CONFIG_SETTING\((\w+),", text, re.M)
        lines = self.run_command("get", "a.xml", "--effective").out.splitlines()
        self.assertEqual([line.split("=")[0] for line in lines], sorted(keys))
        for line in lines:
            self.assertRegex(line, r"=.* (default|a\.xml:\d+:\d+)$")

    def test_the_command_line_goes_over_the_file(self):
        for arguments, prefix in [
            ("cavity -MaxIter 7 -StopTime -.5", "JobPrefix=cavity command line\n"),
            ("-MaxIter 7 -StopTime -.5", "JobPrefix=mine a.xml:3:14\n"),
            ("/opt/solver cavity -MaxIter 7 -StopTime -.5", "JobPrefix=cavity command line\n"),
        ]:
            self.expect(
                f"get a.xml JobPrefix MaxIter StopTime Transient --effective -- {arguments}",
                out=prefix + "MaxIter=7 command line\nStopTime=-0.5 command line\nTransient=0 default\n",
            )
        self.expect("get a.xml JobPrefix --effective -- cavity", out="JobPrefix=cavity command line\n")

    def test_what_nobody_gave_is_not_said_to_come_from_the_command_line(self):
        out = self.run_command("get", "a.xml", "--effective", "--", "cavity").out
        self.assertEqual(out.count("command line"), 1)
        out = self.run_command("get", "a.xml", "--effective", "--", "/opt/solver", "cavity").out
        self.assertIn("ExePath=/opt command line\n", out)

    def test_json(self):
        self.assertEqual(
            self.json_of("get", "a.xml", "MaxIter", "Transient", "--effective"),
            {
                "MaxIter": {"value": "500", "origin": "file", "line": 2, "column": 12},
                "Transient": {"value": "0", "origin": "default", "line": None, "column": None},
            },
        )
        result = self.run_command("get", "a.xml", "MaxIter", "--effective", "--json", "--", "cavity", "-MaxIter", "7")
        self.assertEqual(
            json.loads(result.out),
            {"MaxIter": {"value": "7", "origin": "command-line", "line": None, "column": None}},
        )

    def test_refuses_what_the_solver_would_not_take(self):
        for arguments in ("cavity -MaxIter", "cavity -Nothing 1", "cavity MaxIter 1"):
            self.expect_refused(f"get a.xml --effective -- {arguments}", "nereofile: get: ")

    def test_says_where_a_load_ends(self):
        self.write("b.cfg", "MaxIter 5\nNothing 1\nStopTime 2")
        result = self.run_command("get", "b.cfg", "MaxIter", "StopTime", "--effective")
        self.assertIn("nereofile: b.cfg:2:1: error: ", result.err)
        self.assertTrue(result.out.startswith("MaxIter=5 b.cfg:1:9\nStopTime="), result.out)
        self.assertTrue(result.out.endswith(" default\n"), result.out)

    def test_other_kinds_and_unknown_keys(self):
        self.sample("cavity.ctl")
        self.expect_refused("get cavity.ctl --effective", "cavity.ctl: is no configuration")
        self.expect_refused("get nowhere --effective", "nowhere: No such file or directory")
        self.expect(
            "get a.xml Maxiter --effective", err="nereofile: a.xml: there is no Maxiter, but MaxIter\n", code=1
        )

    def test_names_that_begin_with_a_minus(self):
        self.write("-a.xml", XML)
        self.expect("get --effective -- -a.xml MaxIter", out="MaxIter=500 -a.xml:2:12\n")

    def test_standard_input(self):
        self.expect("get - MaxIter --effective", out="MaxIter=500 -:2:12\n", input=XML.encode())


if __name__ == "__main__":
    unittest.main()

"""How the command is called: help, options, operands, what is refused."""

import re
import unittest

from support import CommandTest

COMMANDS = ["info", "check", "diff", "get", "set", "unset", "convert", "codes"]


class HelpTest(CommandTest):
    def test_lists_the_commands_in_order(self):
        out = self.run_command("--help").out
        self.assertTrue(out.startswith("Usage: nereofile COMMAND"))
        listed = re.search(r"Commands:\n((?:  .*\n)+)", out)[1]
        self.assertEqual(re.findall(r"^  (\w+)  ", listed, re.M), COMMANDS)

    def test_each_command_shows_its_usage(self):
        for command in COMMANDS:
            for option in ("--help", "-h"):
                with self.subTest(command=command, option=option):
                    result = self.run_command(command, option)
                    self.assertEqual((result.code, result.err), (0, ""))
                    self.assertTrue(result.out.startswith(f"Usage: nereofile {command} "))
                    self.assertRegex(result.out, r"(?m)^  --help +show this text$")

    def test_help_wins_over_what_is_wrong_with_operands(self):
        self.assertEqual(self.run_command("check", "--help", "nowhere").code, 0)

    def test_speaks_of_no_types_of_the_language(self):
        for arguments in [["--help"], *([command, "--help"] for command in COMMANDS), ["info", "--kind"]]:
            result = self.run_command(*arguments)
            self.assertNotRegex(result.out + result.err, r"TEXT|INT\b|std::|BOOLEAN|OPTIONS\b")

    def test_version(self):
        self.assertRegex(self.run_command("--version").out, r"\Anereofile \d+\.\d+\.\d+\.\d+\n\Z")


class UsageTest(CommandTest):
    def test_refuses_wrong_usage(self):
        self.sample("cavity.ctl")
        for arguments, message in [
            ([], "nereofile: a command is missing; see nereofile --help\n"),
            (["chekc"], "nereofile: there is no command chekc, but check; see nereofile --help\n"),
            (["--nothing"], "nereofile: there is no command --nothing; see nereofile --help\n"),
            (["check"], "nereofile: check: something is missing of FILE...; see nereofile check --help\n"),
            (
                ["info", "--jsno", "cavity.ctl"],
                "nereofile: info: there is no option --jsno, but --json; see nereofile info --help\n",
            ),
            (["info", "-j", "cavity.ctl"], "nereofile: info: there is no option -j; see nereofile info --help\n"),
            (["info", "cavity.ctl", "--kind"], "nereofile: info: --kind needs its KIND; see nereofile info --help\n"),
            (
                ["info", "cavity.ctl", "--json=yes"],
                "nereofile: info: an option without a value has got one; see nereofile info --help\n",
            ),
            (
                ["info", "cavity.ctl", "--kind", "ctl"],
                'nereofile: info: "ctl" is none of the kinds configuration-xml, configuration-text, control, '
                "materials, geometry-boundary, results; see nereofile info --help\n",
            ),
            (
                ["codes", "kU", "kV"],
                "nereofile: codes: more than [NAME|CODE|PATTERN]; see nereofile codes --help\n",
            ),
        ]:
            self.expect(arguments, err=message, code=2)

    def test_options_stand_anywhere(self):
        self.sample("cavity.ctl")
        for arguments in (
            "get --kind control cavity.ctl units",
            "get cavity.ctl --kind control units",
            "get cavity.ctl units --kind=control",
            "get cavity.ctl units --kind results --kind control",  # the last one counts
        ):
            self.expect(arguments, out="0\n")

    def test_names_of_files_may_be_of_any_letters(self):
        for name in ("two words.ctl", "Größe 65 × 65.ctl", "日本.ctl", "[a,b].ctl", "{x}", '"quoted"', "a=b", "%s"):
            self.sample("cavity.ctl", name)
            for locale in ("C", "C.UTF-8", "de_DE.UTF-8"):
                self.expect(["get", name, "units"], out="0\n", environment={"LC_ALL": locale})

    def test_names_that_begin_with_a_minus_stand_behind_two(self):
        self.sample("cavity.ctl", "-name.ctl")
        self.sample("cavity.ctl", "--quiet")
        self.expect_refused("get -name.ctl units", "there is no option -name.ctl")
        self.expect("get -- -name.ctl units", out="0\n")
        self.expect("get ./-name.ctl units", out="0\n")
        self.expect("get -- --quiet units", out="0\n")


if __name__ == "__main__":
    unittest.main()

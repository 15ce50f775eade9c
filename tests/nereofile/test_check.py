"""What check prints, and its exit codes."""

import os
import unittest

from support import CommandTest

BROKEN = "MaxIter abc\nStopTime 1\n"
CLEAN = "MaxIter 5\nStopTime 1\n"
WARNING = CLEAN + "MaxIter 6\n"


class CheckTest(CommandTest):
    def setUp(self):
        super().setUp()
        self.write("clean.cfg", CLEAN)
        self.write("broken.cfg", BROKEN)
        self.write("warning.cfg", WARNING)

    def test_says_nothing_of_a_clean_file(self):
        self.expect("check clean.cfg")

    def test_prints_a_line_for_each_finding_and_one_for_the_file(self):
        result = self.run_command("check", "broken.cfg")
        self.assertEqual(result.code, 1)
        lines = result.out.splitlines()
        self.assertEqual(len(lines), 2)
        self.assertRegex(lines[0], r'^broken\.cfg:1:9: error: "abc" is .* \[not-an-integer\] MaxIter$')
        self.assertEqual(lines[1], "broken.cfg: 1 error, 0 warnings")

    def test_ends_with_a_line_that_sums_up_several_files(self):
        out = self.run_command("check", "clean.cfg", "broken.cfg", "warning.cfg").out
        self.assertEqual(
            [line for line in out.splitlines() if "[" not in line],
            [
                "broken.cfg: 1 error, 0 warnings",
                "warning.cfg: 0 errors, 1 warning",
                "3 files: 1 error, 1 warning; errors in broken.cfg",
            ],
        )

    def test_the_last_line_names_a_few_files_with_errors(self):
        names = [f"{i}.cfg" for i in range(5)]
        for name in names:
            self.write(name, BROKEN)
        for count, end in [
            (2, "errors in 0.cfg, 1.cfg"),
            (3, "errors in 0.cfg, 1.cfg, 2.cfg"),
            (5, "errors in 0.cfg, 1.cfg, 2.cfg and 2 more"),
        ]:
            out = self.run_command("check", "clean.cfg", *names[:count]).out
            self.assertTrue(out.endswith(f"{count + 1} files: {count} errors, 0 warnings; {end}\n"), out)

    def test_the_exit_code_is_the_largest_of_the_files(self):
        for arguments, code in [
            ("clean.cfg", 0),
            ("warning.cfg", 0),
            ("warning.cfg --strict", 1),
            ("clean.cfg --strict", 0),
            ("clean.cfg broken.cfg", 1),
            ("broken.cfg clean.cfg", 1),
            ("clean.cfg nowhere.cfg broken.cfg", 2),
            ("nowhere.cfg", 2),
        ]:
            for more in ([], ["--quiet"], ["--json"]):
                with self.subTest(arguments=arguments, more=more):
                    result = self.run_command("check", *arguments.split(), *more)
                    self.assertEqual((result.code, result.err), (code, ""))

    def test_quiet_prints_nothing(self):
        self.expect("check broken.cfg nowhere.cfg --quiet", code=2)
        self.expect("check broken.cfg --quiet --json", code=1)

    def test_a_file_that_cannot_be_opened_is_a_finding(self):
        self.expect(
            "check nowhere.cfg",
            out="nowhere.cfg: error: the file can't be opened: No such file or directory [cannot-open]\n"
            "nowhere.cfg: 1 error, 0 warnings\n",
            code=2,
        )

    def test_json_has_what_the_lines_say(self):
        document = self.json_of("check", "broken.cfg", "clean.cfg", code=1)
        self.assertEqual((document["errors"], document["warnings"], document["notes"]), (1, 0, 0))
        self.assertEqual([file["file"] for file in document["files"]], ["broken.cfg", "clean.cfg"])
        finding = document["files"][0]["findings"][0]
        self.assertEqual(
            [finding[key] for key in ("severity", "code", "effect", "line", "column", "offset", "address", "found")],
            ["error", "not-an-integer", "zero", 1, 9, 8, "MaxIter", "abc"],
        )
        self.assertEqual(document["files"][1]["findings"], [])

    def test_a_thousand_findings_of_a_code_are_listed(self):
        self.write("many.cfg", "MaxIter abc\n" * 1500 + "MaxIter 1\n")
        out = self.run_command("check", "many.cfg").out
        self.assertEqual(out.count("[not-an-integer]"), 1001)
        self.assertIn("many.cfg: 500 more [not-an-integer]\n", out)
        self.assertTrue(out.endswith("many.cfg: 1500 errors, 1500 warnings\n"), out[-100:])

    def test_the_kind_can_be_given(self):
        self.expect("check clean.cfg --kind configuration-text")
        result = self.run_command("check", "clean.cfg", "--kind", "control")
        self.assertIn("clean.cfg", result.out)
        self.assertEqual(self.json_of("check", "clean.cfg", "--kind", "control", code=result.code)["files"][0]["kind"], "control")

    def test_unknown_content_is_a_finding(self):
        self.write("empty", "")
        self.write("letter.txt", "Dear Sir\n")
        for name in ("empty", "letter.txt"):
            result = self.run_command("check", name)
            self.assertEqual(result.code, 1)
            self.assertIn("[unknown-kind]", result.out)

    def test_a_folder_means_the_files_in_it_that_are_of_a_kind(self):
        for name, content in [
            ("run/a.cfg", CLEAN),
            ("run/b.cfg", BROKEN),
            ("run/notes.txt", "nothing of ours\n"),
            ("run/empty", ""),
            ("run/below/c.cfg", BROKEN),
        ]:
            self.write(name, content)
        for folder in ("run", "run/"):
            result = self.run_command("check", folder)
            self.assertEqual(result.code, 1)
            self.assertTrue(result.out.startswith("run/b.cfg:1:9: error: "), result.out)
            self.assertTrue(result.out.endswith("run/b.cfg: 1 error, 0 warnings\n2 files: 1 error, 0 warnings; errors in run/b.cfg\n"))
        document = self.json_of("check", "run", code=1)
        self.assertEqual([file["file"] for file in document["files"]], ["run/a.cfg", "run/b.cfg"])

    def test_what_lies_in_a_folder_and_is_no_file_is_left_alone(self):
        self.write("run/a.cfg", CLEAN)
        os.mkfifo(self.folder / "run" / "pipe")
        (self.folder / "run" / "broken-link").symlink_to("nowhere")
        self.expect("check run")

    def test_an_empty_folder_is_clean(self):
        (self.folder / "run").mkdir()
        self.expect("check run")
        self.assertEqual(self.json_of("check", "run"), {"errors": 0, "warnings": 0, "notes": 0, "files": []})

    def test_case_says_what_differs_between_the_files(self):
        self.write("a.cfg", "JobPrefix cavity\nTransient 1\nTimeStepSize 0.5\n")
        self.sample("cavity.ctl")
        apart = self.run_command("check", "a.cfg", "cavity.ctl")
        together = self.run_command("check", "a.cfg", "cavity.ctl", "--case")
        self.assertNotIn("transient-differs", apart.out)
        self.assertIn("[transient-differs]", together.out)
        self.assertEqual(together.code, 0)
        self.assertEqual(self.run_command("check", "a.cfg", "cavity.ctl", "--case", "--strict").code, 1)

    def test_standard_input(self):
        for command in (["check", "-"], ["check", "-", "--kind", "configuration-text"]):
            result = self.run_command(*command, input=BROKEN.encode())
            self.assertEqual(result.code, 1)
            self.assertTrue(result.out.startswith("-:1:9: error: "), result.out)
            self.assertTrue(result.out.endswith("-: 1 error, 0 warnings\n"))

    def test_each_finding_keeps_to_its_line(self):
        self.write("a.xml", "<Nereo2Config>\n<MaxIter>a\nb\x7f</MaxIter></Nereo2Config>")
        out = self.run_command("check", "a.xml").out
        self.assertEqual(len(out.splitlines()), 2, out)
        self.assertIn("\"a\\nb\\u007f\"", out)

    def test_notes_leave_a_file_clean(self):
        self.sample("cavity.ctl")
        document = self.json_of("check", "cavity.ctl")
        self.assertGreater(document["notes"], 0)
        out = self.run_command("check", "cavity.ctl").out
        self.assertIn(": note: ", out)

    def test_thousands_of_files(self):
        for i in range(3000):
            self.write(f"many/{i:04}.cfg", CLEAN)
        self.write("many/0500.cfg", BROKEN)
        result = self.run_command("check", "many")
        self.assertEqual(result.code, 1)
        self.assertTrue(result.out.endswith("3000 files: 1 error, 0 warnings; errors in many/0500.cfg\n"))
        names = [f"many/{i:04}.cfg" for i in range(3000)]
        self.assertEqual(len(self.json_of("check", *names, code=1)["files"]), 3000)


if __name__ == "__main__":
    unittest.main()

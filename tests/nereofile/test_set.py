"""What set and unset change, and what they refuse."""

import os
import signal
import subprocess
import time
import unittest

from support import TIMEOUT, CommandTest, start

CONTROL = """\
NEREO control file rev 06 NEREO Ver 2023.1.0.0
NEREO 2023 (release)
 *** Title
Größe 5
 *** Relaxation
kU 0.4 0   # as agreed
kP   0.3 0
 *** Something else
kept as it is
 *** Constants
kGravY -9.81
 *** Flag section
2
cfl 0.75
restart_every 100
"""


class SetTest(CommandTest):
    def setUp(self):
        super().setUp()
        self.write("a.ctl", CONTROL)

    def content(self, name="a.ctl"):
        return (self.folder / name).read_text()

    def test_changes_these_bytes_and_no_others(self):
        self.expect("set a.ctl relaxation/kP/under 0.25 flags/cfl 0.5")
        self.assertEqual(
            self.content(), CONTROL.replace("kP   0.3 0", "kP   0.25 0").replace("cfl 0.75", "cfl 0.5")
        )

    def test_values_may_begin_with_a_minus_sign(self):
        for value in ("-9.80665", "-.5", "-1e3", "-5"):
            self.expect(["set", "a.ctl", "constants/kGravY", value])
            self.expect("get a.ctl constants/kGravY", out=value + "\n")
        self.expect(["set", "--output", "-", "a.ctl", "constants/kGravY", "-.5", "flags/cfl", "-inf"],
                    out=self.content().replace("kGravY -5", "kGravY -.5").replace("cfl 0.75", "cfl -inf"))

    def test_options_stand_between_the_operands(self):
        changed = CONTROL.replace("0.75", "1")
        self.expect("set a.ctl --output - flags/cfl 1", out=changed)
        self.expect("set a.ctl flags/cfl 1 --output=-", out=changed)
        self.expect("set a.ctl flags/cfl --output - 1", out=changed)

    def test_output_leaves_the_old_file(self):
        self.expect("set a.ctl flags/cfl 1 --output b.ctl")
        self.assertEqual(self.content(), CONTROL)
        self.assertEqual(self.content("b.ctl"), CONTROL.replace("0.75", "1"))

    def test_adds_what_the_file_lacks(self):
        self.expect("set a.ctl flags/courant 0.9")
        self.assertEqual(
            self.content(),
            CONTROL.replace(" *** Flag section\n2\n", " *** Flag section\n3\n") + "courant 0.9\n",
        )

    def test_lines_that_are_added_end_as_the_files_do(self):
        self.write("a.ctl", CONTROL.replace("\n", "\r\n"))
        self.expect("set a.ctl flags/courant 0.9 constants/kGravX 1")
        self.assertEqual(
            (self.folder / "a.ctl").read_bytes().decode(),
            CONTROL.replace("kGravY -9.81\n", "kGravY -9.81\nkGravX 1\n")
            .replace("section\n2\n", "section\n3\n").replace("\n", "\r\n") + "courant 0.9\r\n",
        )

    def test_a_missing_section_is_made_for_constants_and_flags_alone(self):
        start_of_file = CONTROL[: CONTROL.index(" *** Something else")]
        self.write("a.ctl", start_of_file)
        self.expect("set a.ctl constants/kGravY -9.81 flags/cfl 0.5")
        self.assertEqual(
            self.content(), start_of_file + " *** Constants\nkGravY -9.81\n *** Flag section\n1\ncfl 0.5\n"
        )
        for address in ("units", "transient-data/steps", "solution-control/kU/tolerance", "relaxation/kV/under"):
            self.expect_refused(["set", "a.ctl", address, "1"], "isn't in the file, and can't be added")

    def test_flags_of_one_name(self):
        self.write("a.ctl", CONTROL.replace("2\ncfl 0.75", "3\ncfl 0.75\ncfl 0.5"))
        self.expect(["set", "a.ctl", "flags/cfl#2", "1"])
        self.expect(["get", "a.ctl", "flags/cfl", "flags/cfl#2"], out="flags/cfl=0.75\nflags/cfl#2=1\n")

    def test_a_material_database(self):
        self.sample("materials.xml")
        before = self.content("materials.xml")
        value = self.run_command("get", "materials.xml", "Air/ref_pressure").out.strip()
        self.expect("set materials.xml Air/ref_pressure 99000")
        self.assertEqual(
            self.content("materials.xml"), before.replace(f"<ref_pressure>{value}<", "<ref_pressure>99000<", 1)
        )
        self.write("a.xml", "<material_database version='2024.0.0.0'><material type='fluid'><name>Water</name></material></material_database>")
        self.expect("set a.xml Water/id 7")
        self.expect("get a.xml Water/id", out="7\n")
        self.expect_refused("set a.xml Ice/id 8", "isn't in the file, and can't be added")
        self.expect_refused("set a.xml Water/id 1.5", "is not a whole number")

    @unittest.skipUnless(os.geteuid() == 0, "only root gives files away")
    def test_keeps_the_owner(self):
        os.chown(self.folder / "a.ctl", 12345, 23456)
        (self.folder / "a.ctl").chmod(0o604)
        self.expect("set a.ctl flags/cfl 1")
        status = (self.folder / "a.ctl").stat()
        self.assertEqual((status.st_uid, status.st_gid, status.st_mode & 0o777), (12345, 23456, 0o604))

    def test_refuses_all_where_one_value_makes_no_sense(self):
        for arguments in (
            ["relaxation/kP/under", "fast"],
            ["flags/cfl", "1", "relaxation/kP/under", "fast"],
            ["flags/cfl", "two words"],
            ["relaxation/kNowhere/under", "1"],
            ["nowhere", "1"],
            ["units", "1.5"],
        ):
            self.expect_refused(["set", "a.ctl", *arguments], "nereofile: a.ctl: ")
            self.expect_refused(["set", "a.ctl", *arguments, "--output", "b.ctl"], "nereofile: a.ctl: ")
        self.assertEqual(self.content(), CONTROL)
        self.assertFalse((self.folder / "b.ctl").exists())

    def test_the_nearest_address_is_offered(self):
        self.expect(
            "set a.ctl relaxation/kP/undr 0.5",
            err='nereofile: a.ctl: relaxation/kP/undr: "relaxation/kP/undr" isn\'t in the file, and can\'t be added; '
            'did you mean "relaxation/kP/under"?\n',
            code=2,
        )
        self.expect(
            "set a.ctl constants/kGravx 0.5",
            err='nereofile: a.ctl: constants/kGravx: "constants/kGravx" is no value of such a file; '
            'did you mean "constants/kGravX"?\n',
            code=2,
        )
        self.expect(
            "unset a.ctl flags/clf",
            err='nereofile: a.ctl: flags/clf: "flags/clf" isn\'t in the file; did you mean "flags/cfl"?\n',
            code=1,
        )

    def test_refuses_what_it_does_not_edit(self):
        self.sample("cavity.res")
        self.expect_refused("set cavity.res title x", "nereofile: cavity.res: ")
        self.expect_refused("set nowhere.ctl title x", "nereofile: nowhere.ctl: ")
        self.expect_refused("set . title x", "nereofile: .: ")

    def test_usage(self):
        self.expect(
            "set a.ctl flags/cfl",
            err="nereofile: set: something is missing of FILE ADDRESS VALUE [ADDRESS VALUE]...; see nereofile set --help\n",
            code=2,
        )
        self.expect(
            "set a.ctl flags/cfl 1 title",
            err="nereofile: set: the value of title is missing; see nereofile set --help\n",
            code=2,
        )
        self.expect_refused("set a.ctl --dryrun flags/cfl 1", "there is no option --dryrun, but --dry-run")
        self.assertEqual(self.content(), CONTROL)

    def test_a_configuration_in_both_forms(self):
        self.write("a.cfg", "MaxIter 5\nStopTime 1e3\n")
        self.expect("set a.cfg MaxIter 6 Width 3")
        self.assertEqual(self.content("a.cfg"), "MaxIter 6\nStopTime 1e3\nWidth 3\n")
        self.sample("NEREO2_default.xml", "a.xml")
        before = self.content("a.xml")
        self.expect(["set", "a.xml", "AnalyzePath", "a < b & c"])
        self.assertEqual(
            self.content("a.xml"), before.replace("C:/Runs &amp; Jobs/cavity", "a &lt; b &amp; c")
        )

    def test_dry_run_shows_a_difference_that_patch_takes(self):
        expected = """\
--- a.ctl
+++ a.ctl
@@ -4,12 +4,12 @@
 Größe 5
  *** Relaxation
 kU 0.4 0   # as agreed
-kP   0.3 0
+kP   0.25 0
  *** Something else
 kept as it is
  *** Constants
 kGravY -9.81
  *** Flag section
 2
-cfl 0.75
+cfl 1
 restart_every 100
"""
        self.expect("set a.ctl relaxation/kP/under 0.25 flags/cfl 1 --dry-run", out=expected)
        self.assertEqual(self.content(), CONTROL)
        self.expect("set a.ctl flags/cfl 0.75 --dry-run")
        for edits in (["flags/cfl", "1"], ["flags/new", "1", "title", "New"], ["relaxation/kU/under", ".5"]):
            self.write("a.ctl", CONTROL)
            difference = self.run_command("set", "a.ctl", *edits, "--dry-run").out
            self.expect(["set", "a.ctl", *edits, "--output", "b.ctl"])
            subprocess.run(["patch", "-s", "a.ctl"], input=difference.encode(), cwd=self.folder, check=True)
            self.assertEqual(self.content(), self.content("b.ctl"))

    def test_dry_run_shows_what_is_far_apart_in_pieces(self):
        difference = self.run_command("set", "a.ctl", "title", "New", "flags/cfl", "1", "--dry-run").out
        self.assertIn("@@ -1,7 +1,7 @@\n", difference)
        self.assertIn("@@ -11,5 +11,5 @@\n", difference)

    def test_dry_run_of_a_last_line_without_an_end(self):
        self.write("a.cfg", "MaxIter 5")
        self.expect(
            "set a.cfg MaxIter 6 --dry-run",
            out="--- a.cfg\n+++ a.cfg\n@@ -1 +1 @@\n-MaxIter 5\n\\ No newline at end of file\n"
            "+MaxIter 6\n\\ No newline at end of file\n",
        )

    def test_keeps_the_mode_and_follows_links(self):
        (self.folder / "a.ctl").chmod(0o640)
        (self.folder / "link.ctl").symlink_to("a.ctl")
        self.expect("set link.ctl flags/cfl 1")
        self.assertTrue((self.folder / "link.ctl").is_symlink())
        self.assertEqual((self.folder / "a.ctl").stat().st_mode & 0o777, 0o640)
        self.assertEqual(self.content(), CONTROL.replace("0.75", "1"))

    def test_what_changes_nothing_writes_nothing(self):
        before = (self.folder / "a.ctl").stat()
        self.expect("set a.ctl flags/cfl 0.75")
        after = (self.folder / "a.ctl").stat()
        self.assertEqual((before.st_ino, before.st_mtime_ns), (after.st_ino, after.st_mtime_ns))

    def test_a_file_that_cannot_be_written_stays(self):
        self.expect_refused("set a.ctl flags/cfl 1 --output nowhere/b.ctl", "nowhere/b.ctl: can't be written")
        user = self.as_an_ordinary_user()
        (self.folder / "a.ctl").chmod(0o666)
        self.folder.chmod(0o555)
        self.addCleanup(self.folder.chmod, 0o755)
        self.expect_refused("set a.ctl flags/cfl 1", "a.ctl: may not be written", **user)
        self.assertEqual(self.content(), CONTROL)

    def test_a_full_standard_output(self):
        with open("/dev/full", "wb") as full:
            process = start("set", "a.ctl", "flags/cfl", "1", "--output", "-", cwd=self.folder, stdout=full)
            self.assertEqual(
                process.communicate(timeout=TIMEOUT)[1],
                b"nereofile: standard output: No space left on device\n",
            )
            self.assertEqual(process.returncode, 2)

    def test_a_limit_to_the_size_of_files_leaves_the_old_one(self):
        limited = ["bash", "-c", 'ulimit -f 0; exec "$0" "$@"', os.environ["NEREO_COMMAND"]]
        process = subprocess.run(
            [*limited, "set", "a.ctl", "flags/cfl", "1"],
            cwd=self.folder,
            stdout=subprocess.PIPE,
            stderr=subprocess.PIPE,
            timeout=TIMEOUT,
            check=False,
        )
        self.assertEqual((process.returncode, process.stdout), (2, b""))
        self.assertIn(b"nereofile: a.ctl: finds no room on the disk", process.stderr)
        self.assertEqual(self.content(), CONTROL)
        self.assertEqual([path.name for path in self.folder.iterdir()], ["a.ctl"])

    def test_interrupted_at_any_time_it_leaves_the_old_file_or_the_new_one(self):
        flags = "".join(f"flag{i} {i}\n" for i in range(20000))
        old = CONTROL.replace("\n2\n", "\n20002\n") + flags
        new = old.replace("cfl 0.75", "cfl 1")
        for i in range(40):
            self.write("a.ctl", old)
            process = start("set", "a.ctl", "flags/cfl", "1", cwd=self.folder)
            time.sleep(i * 0.005)
            process.send_signal(signal.SIGINT)
            _, err = process.communicate(timeout=TIMEOUT)
            # Before it has begun, the signal ends it as any program.
            self.assertIn(process.returncode, (0, 2, -signal.SIGINT))
            self.assertEqual(err, b"")
            self.assertIn(self.content(), (old, new))
            if process.returncode == 0:
                self.assertEqual(self.content(), new)
            self.assertEqual([path.name for path in self.folder.iterdir()], ["a.ctl"])


class UnsetTest(CommandTest):
    def setUp(self):
        super().setUp()
        self.write("a.ctl", CONTROL)

    def content(self):
        return (self.folder / "a.ctl").read_text()

    def test_removes_constants_and_flags(self):
        self.expect("unset a.ctl constants/kGravY flags/cfl")
        self.assertEqual(
            self.content(), CONTROL.replace("kGravY -9.81\n", "").replace("2\ncfl 0.75\n", "1\n")
        )

    def test_removes_settings(self):
        self.write("a.cfg", "MaxIter 5\nStopTime 1e3\n")
        self.expect("unset a.cfg MaxIter --dry-run", out="--- a.cfg\n+++ a.cfg\n@@ -1,2 +1 @@\n-MaxIter 5\n StopTime 1e3\n")
        self.expect("unset a.cfg MaxIter --output -", out="StopTime 1e3\n")

    def test_removes_settings_of_the_xml_form(self):
        self.write("a.xml", "<Nereo2Config>\n  <MaxIter>5</MaxIter> <!-- kept -->\n  <Width>1</Width>\n</Nereo2Config>\n")
        self.expect("unset a.xml Width")
        self.assertEqual(
            (self.folder / "a.xml").read_text(), "<Nereo2Config>\n  <MaxIter>5</MaxIter> <!-- kept -->\n</Nereo2Config>\n"
        )

    def test_what_is_not_there_is_said_and_nothing_changed(self):
        for addresses in (["flags/nowhere"], ["flags/cfl", "flags/nowhere"]):
            result = self.run_command("unset", "a.ctl", *addresses)
            self.assertEqual((result.code, result.out), (1, ""))
            self.assertRegex(result.err, r"\Anereofile: a\.ctl: [^\n]*flags/nowhere[^\n]*\n\Z")
        self.assertEqual(self.content(), CONTROL)

    def test_refuses_what_is_not_removed(self):
        for address in ("title", "relaxation/kP/under"):
            self.expect_refused(["unset", "a.ctl", address], "nereofile: a.ctl: ")
        self.assertEqual(self.content(), CONTROL)


if __name__ == "__main__":
    unittest.main()

"""The command and the system around it: pipes, terminals, full disks, signals, locales."""

import array
import fcntl
import functools
import os
import pathlib
import pty
import re
import select
import shutil
import signal
import struct
import subprocess
import termios
import time
import unittest

from support import PROGRAM, TIMEOUT, CommandTest, little_endian_results, start

STEPS = 40  # after each of which a command is stopped for a while


class StartTest(CommandTest):
    def files_read_by(self, *command):
        """Those that it opens, and it is no matter whether the libraries are this project's."""
        trace = self.folder / "trace"
        subprocess.run(
            ["strace", "-f", "-qq", "-e", "trace=?open,?openat,?openat2", "-o", trace, *command],
            cwd=self.folder,
            env={**os.environ, "LSAN_OPTIONS": "detect_leaks=0"},  # which would want to do the same as strace
            stdout=subprocess.DEVNULL,
            timeout=TIMEOUT,
            check=True,
        )
        opened = re.findall(r'open\w*\([^"]*"([^"]*)".*\) = \d', trace.read_text())
        return {name for name in opened if not pathlib.Path(name).name.startswith("libNereo")}

    def test_no_file_is_read_that_qt_core_does_not_read(self):
        qt_core = os.environ.get("NEREO_USE_QT_CORE")
        if qt_core is None:
            self.skipTest("there is no program beside the command that uses Qt Core")
        if shutil.which("strace") is None:
            self.skipTest("there is no strace")
        if subprocess.run(["strace", "-qq", "true"], stderr=subprocess.DEVNULL, check=False).returncode != 0:
            self.skipTest("no program may look at what another one does here")
        self.sample("cavity.ctl")
        of_qt_core = self.files_read_by(qt_core)
        self.assertTrue(any("Qt5Core" in name for name in of_qt_core), of_qt_core)
        for arguments, files in [
            (["--version"], set()),
            (["--help"], set()),
            (["codes"], set()),
            (["info", "cavity.ctl"], {"cavity.ctl"}),
            (["check", "cavity.ctl"], {"cavity.ctl"}),
        ]:
            with self.subTest(arguments=arguments):
                self.assertEqual(self.files_read_by(PROGRAM, *arguments) - of_qt_core, files)


class OutputTest(CommandTest):
    def test_a_full_standard_output_is_said(self):
        self.sample("cavity.ctl")
        for arguments in ("--help", "--version", "codes", "codes --json", "info cavity.ctl", "get cavity.ctl", "check cavity.ctl"):
            with self.subTest(arguments=arguments), open("/dev/full", "wb") as full:
                process = start(*arguments.split(), cwd=self.folder, stdout=full)
                _, err = process.communicate(timeout=TIMEOUT)
                self.assertEqual(err, b"nereofile: standard output: No space left on device\n")
                self.assertEqual(process.returncode, 2)

    def test_a_closed_pipe_ends_it_quietly(self):
        for arguments in ("codes", "codes --json", "--help"):
            with self.subTest(arguments=arguments):
                read_end, write_end = os.pipe()
                os.close(read_end)
                process = start(*arguments.split(), stdout=write_end)
                os.close(write_end)
                _, err = process.communicate(timeout=TIMEOUT)
                self.assertEqual((err, process.returncode), (b"", 2))

    def test_a_closed_standard_output_is_said(self):
        process = start("codes", stdout=None, preexec_fn=lambda: os.close(1))
        _, err = process.communicate(timeout=TIMEOUT)
        self.assertEqual(err, b"nereofile: standard output: Bad file descriptor\n")
        self.assertEqual(process.returncode, 2)


class InputTest(CommandTest):
    def test_a_file_that_may_not_be_read(self):
        user = self.as_an_ordinary_user()
        self.write("open.cfg", "MaxIter 5")
        self.write("secret.cfg", "MaxIter 5").chmod(0)
        self.expect("get open.cfg MaxIter", "5\n", **user)
        self.expect_refused("info secret.cfg", "secret.cfg: Permission denied", **user)
        self.assertEqual(self.run_command("check", "secret.cfg", **user).code, 2)

    def test_pipes_are_read_to_their_end_and_leave_nothing(self):
        os.mkfifo(self.folder / "pipe")
        temporary = self.folder / "temporary"
        temporary.mkdir()
        for command in (["check", "pipe"], ["info", "pipe"], ["get", "pipe", "MaxIter"]):
            process = start(*command, cwd=self.folder, env={**os.environ, "TMPDIR": str(temporary)})
            (self.folder / "pipe").write_text("MaxIter 5")
            out, err = process.communicate(timeout=TIMEOUT)
            self.assertEqual((process.returncode, err), (0, b""), command)
        self.assertEqual(out, b"5\n")
        self.assertEqual(list(temporary.iterdir()), [])

    def test_no_room_for_what_a_pipe_gives(self):
        self.expect_refused(
            "check -",
            "-: can't be copied to a temporary file: No such file or directory",
            input=b"MaxIter 5",
            environment={"TMPDIR": str(self.folder / "nowhere")},
        )


def unread(pipe):
    """How many bytes nobody has read yet."""
    count = array.array("i", [0])
    fcntl.ioctl(pipe, termios.FIONREAD, count)
    return count[0]


class InterruptionTest(CommandTest):
    def test_ctrl_c_ends_it_with_2_and_leaves_nothing(self):
        temporary = self.folder / "temporary"
        temporary.mkdir()
        for signal_number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
            for command in ("check", "info", "get"):
                process = start(
                    command, "-", stdin=subprocess.PIPE, env={**os.environ, "TMPDIR": str(temporary)}
                )
                process.stdin.write(b"MaxIter 5\n")
                process.stdin.flush()
                while unread(process.stdin):
                    time.sleep(0.01)
                process.send_signal(signal_number)
                self.assertEqual(process.wait(TIMEOUT), 2)
                self.assertEqual(process.stdout.read() + process.stderr.read(), b"")
                for stream in (process.stdin, process.stdout, process.stderr):
                    stream.close()
        self.assertEqual(list(temporary.iterdir()), [])

    def test_it_goes_on_where_the_signal_is_ignored(self):
        for signal_number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
            ignore = functools.partial(signal.signal, signal_number, signal.SIG_IGN)
            process = start("get", "-", "MaxIter", stdin=subprocess.PIPE, preexec_fn=ignore)
            process.stdin.write(b"MaxIter 5\n")
            process.stdin.flush()
            while unread(process.stdin):
                time.sleep(0.01)
            process.send_signal(signal_number)
            self.assertEqual(process.communicate(timeout=TIMEOUT), (b"5\n", b""))
            self.assertEqual(process.returncode, 0)

    def test_ctrl_c_leaves_no_half_table(self):
        self.write("many.res", little_endian_results({"kU": [0.1] * 300000}, 300000))
        for i in range(30):
            process = start("convert", "many.res", "many.csv", cwd=self.folder)
            time.sleep(0.02 + i * 0.005)
            process.send_signal(signal.SIGINT)
            _, err = process.communicate(timeout=TIMEOUT)
            self.assertIn((process.returncode, err), ((0, b""), (2, b""), (-signal.SIGINT, b"")))
            table = self.folder / "many.csv"
            if table.exists():
                self.assertTrue(table.read_text().endswith("\n300000,0.1\n"))
                table.unlink()
            self.assertEqual([path.name for path in self.folder.iterdir()], ["many.res"])


class LocaleTest(CommandTest):
    def test_nothing_depends_on_it(self):
        self.write("a.res", little_endian_results({"kU": [0.5, -1234567.25]}, 2))
        self.write("a.cfg", "StopTime 0.5")
        for arguments in ("info a.res --stats", "info a.res --stats --json", "get a.cfg", "check nowhere", "codes"):
            results = {
                self.run_command(*arguments.split(), environment={"LC_ALL": locale, "LANGUAGE": "de"})
                for locale in ("C", "C.UTF-8", "de_DE.UTF-8", "none")
            }
            self.assertEqual(len(results), 1, arguments)


class Terminal:
    """The command on a terminal of its own."""

    def __init__(self, columns, *arguments, folder, environment):
        self.main, side = pty.openpty()
        fcntl.ioctl(side, termios.TIOCSWINSZ, struct.pack("4H", 24, columns, 0, 0))
        self.process = subprocess.Popen(
            [PROGRAM, *arguments],
            cwd=folder,
            stdin=side,
            stdout=side,
            stderr=side,
            env={**os.environ, "TERM": "xterm", **environment},
        )
        os.close(side)

    def output(self):
        text = b""
        while select.select([self.main], [], [], TIMEOUT)[0]:
            try:
                text += os.read(self.main, 65536)
            except OSError:  # the end of a terminal
                break
        os.close(self.main)
        self.process.wait(TIMEOUT)
        return text.decode().replace("\r\n", "\n")


class TerminalTest(CommandTest):
    def on_terminal(self, columns, *arguments, **environment):
        return Terminal(columns, *arguments, folder=self.folder, environment=environment).output()

    def test_colours_are_for_terminals_alone(self):
        self.write("broken.cfg", "MaxIter abc")
        self.assertIn("broken.cfg:1:9: \033[1;31merror:\033[0m ", self.on_terminal(80, "check", "broken.cfg"))
        self.assertNotIn("\033", self.on_terminal(80, "check", "broken.cfg", NO_COLOR="1"))
        self.assertNotIn("\033", self.on_terminal(80, "check", "broken.cfg", TERM="dumb"))
        self.assertIn("\033", self.on_terminal(80, "check", "broken.cfg", NO_COLOR=""))
        self.assertNotIn("\033", self.run_command("check", "broken.cfg").out)

    def test_forty_columns(self):
        self.write(
            "a.res",
            little_endian_results({name: [0.123456789, -1e300] for name in ("kU", "kV", "kW", "kP", "kTotalP")}, 2),
        )
        for arguments in (
            ["info", "a.res"],
            ["info", "a.res", "--stats"],
            ["--help"],
            ["info", "--help"],
            ["check", "--help"],
            ["codes", "kT*"],
        ):
            lines = self.on_terminal(40, *arguments).splitlines()
            self.assertEqual([line for line in lines if len(line) > 40 and "nereofile " not in line], [])

    def test_progress_is_shown_of_what_takes_longer_than_a_second_and_is_gone_at_the_end(self):
        nodes = 20000000  # of which each takes 12 bytes, in no room on the disk
        with open(self.write("large.res", little_endian_results(["kU"], nodes, records=[])), "ab") as file:
            file.truncate(file.tell() + nodes * 12)
        self.write("large.cfg", "MaxIter 5\n" * 1200000)
        for arguments, end in [
            ("info large.res --stats", "large.res: results\n"),
            ("check large.res", "large.res"),
            ("check large.cfg", "large.cfg"),
            ("diff large.res large.res", ""),
        ]:
            with self.subTest(arguments=arguments):
                self.expect_progress(arguments.split(), end)

    def expect_progress(self, arguments, end):
        step = min(self.duration(arguments) for _ in range(3)) / STEPS
        for _ in range(10):  # where something else holds the command up, a step may be all of its time
            out = self.slowed_output(arguments, step)
            if "\r" in out:
                break
        shown = out.split("\r")
        for line in shown[1:-1]:
            self.assertRegex(line, r"^[\w. ]*large\.\w+: \d+ of \d+ MB, \d+ %, (\d+ min )?\d+ s left\033\[K$")
            self.assertLessEqual(len(line), 60 + len("\033[K"))
        self.assertGreater(len(shown), 2)
        self.assertTrue(shown[-1].startswith("\033[K" + end), shown[-1][:200])

    def duration(self, arguments):
        begin = time.monotonic()
        self.on_terminal(60, *arguments)
        return time.monotonic() - begin

    def slowed_output(self, arguments, step):
        """What a command shows that is stopped after each step, and so takes seconds on any machine."""
        terminal = Terminal(60, *arguments, folder=self.folder, environment={})
        for _ in range(STEPS):
            time.sleep(step)
            terminal.process.send_signal(signal.SIGSTOP)
            time.sleep(0.1)
            terminal.process.send_signal(signal.SIGCONT)
        return terminal.output()

    def test_no_progress_is_shown_of_what_is_quick(self):
        self.sample("cavity.res")
        self.assertNotIn("\r", self.on_terminal(80, "info", "cavity.res", "--stats"))


if __name__ == "__main__":
    unittest.main()

"""Whatever the arguments are and whatever stands in the files: an exit code of 0, 1 or 2, soon, and never a signal."""

import os
import random
import threading
import unittest

from support import SAMPLES, CommandTest, little_endian_results

RUNS = int(os.environ.get("NEREO_MADE_UP_RUNS", "150"))
COMMANDS = "info check diff get set unset convert codes".split()
WORDS = """--json --stats --kind --strict --quiet --case --absolute --relative --peak --fields --nodes --force --output
    --dry-run --effective --help --version -- - -h -5 -.5 -inf nan 1e400 1:2 kU,kP kU relaxation/kP/under flags/cfl MaxIter
    control results geometry-boundary "" [a,b] a=b %2F * out.xml out.csv out.npy out.cfg . nowhere /dev/null ä \udcff""".split()


class MadeUpTest(CommandTest):
    def setUp(self):
        super().setUp()
        seed = os.environ.get("NEREO_MADE_UP_SEED", str(random.randrange(10**9)))
        self.random = random.Random(seed)
        self.seed = seed
        self.originals = [path.read_bytes() for path in sorted(SAMPLES.iterdir()) if path.suffix != ".md"]

    def made_up(self):
        content = bytearray(self.random.choice(self.originals))
        for _ in range(self.random.randrange(4)):
            place = self.random.randrange(len(content) + 1)
            match self.random.randrange(4):
                case 0:
                    content[place : place + 1] = self.random.choice([b"", b"\0", b"\xff", b"<", b"9", b"\n", b"-"])
                case 1:
                    del content[place : place + self.random.randrange(50)]
                case 2:
                    content[place:place] = content[place : place + self.random.randrange(200)]
                case 3:
                    del content[place:]
            if not content:
                break
        return bytes(content)

    def run_made_up(self, arguments):
        arguments = [argument.encode(errors="surrogateescape") for argument in arguments]
        with self.subTest(seed=self.seed, arguments=arguments):
            result = self.run_command(*arguments)
            self.assertIn(result.code, (0, 1, 2), result.err)
            self.assertRegex(result.err, r"\A(nereofile: [^\n]*\n)*\Z")
            if result.code == 2 and b"--quiet" not in arguments:
                self.assertNotEqual(result.out + result.err, "")

    def test_arguments(self):
        for i in range(RUNS):
            for name in ("a", "b.xml"):
                self.write(name, self.made_up())
            words = self.random.choices([*WORDS, "a", "b.xml", "a", "b.xml"], k=self.random.randrange(7))
            self.run_made_up([self.random.choice(COMMANDS), *words])

    def test_files(self):
        for _ in range(RUNS // 5):
            self.write("a", self.made_up())
            self.write("b", self.made_up())
            for command in (
                ["check", "a", "--case", "b"],
                ["info", "a", "--stats"],
                ["diff", "a", "b"],
                ["diff", "a", "a"],
                ["get", "a"],
                ["set", "a", self.random.choice(["MaxIter", "title", "flags/cfl", "Air/id"]), "5", "--dry-run"],
                ["unset", "a", self.random.choice(["MaxIter", "constants/kGravY", "flags/cfl"]), "--dry-run"],
                ["convert", "a", self.random.choice(["-", "o.npy", "o.xml"]), "--force"],
            ):
                self.run_made_up(command)

    def test_a_file_that_changes_while_it_is_read(self):
        contents = [little_endian_results({"kU": [0.5] * count}, count) for count in (100000, 10)] + self.originals
        path = self.write("a", contents[0])
        is_done = threading.Event()

        def change():
            while not is_done.is_set():
                with open(path, "r+b") as file:
                    content = self.random.choice(contents)
                    file.truncate(self.random.randrange(len(content)))
                    file.write(content)

        changer = threading.Thread(target=change)
        changer.start()
        try:
            for _ in range(RUNS // 20):
                for command in (["check", "a"], ["info", "a", "--stats"], ["diff", "a", "a"], ["get", "a"]):
                    self.run_made_up(command)
                self.run_made_up(["convert", "a", "-"])
                self.run_made_up(["set", "a", "title", "New", "--output", "b"])
                self.run_made_up(["unset", "a", "flags/cfl", "--dry-run"])
        finally:
            is_done.set()
            changer.join()


if __name__ == "__main__":
    unittest.main()

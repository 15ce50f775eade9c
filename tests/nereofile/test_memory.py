"""The memory that the command takes for files that are larger than it may have."""

import array
import os
import resource
import shutil
import struct
import subprocess
import unittest

from support import PROGRAM, CommandTest, little_endian_results

MOST = 64 * 1024 * 1024  # bytes of data; what the system shares between programs isn't counted
NODES = 1_000_000
FIELDS = [f"k{name}" for name in ("U", "V", "W", "P", "T", "TotalP", "TotalT", "Rho", "Visc", "Mach")]
NODE = struct.calcsize("<i")
RECORD = NODE + struct.calcsize(f"<{len(FIELDS)}d")


def limit_memory():
    resource.setrlimit(resource.RLIMIT_DATA, (MOST, MOST))


def large_results():
    """Results without a value other than 0, in the order of the nodes."""
    records = bytearray(NODES * RECORD)
    nodes = array.array("i", range(1, NODES + 1))
    if array.array("i", [1]).tobytes()[0] != 1:
        nodes.byteswap()
    for byte in range(NODE):
        records[byte::RECORD] = nodes.tobytes()[byte::NODE]
    return little_endian_results(FIELDS, NODES, records=[]) + records


class MemoryTest(CommandTest):
    def setUp(self):
        super().setUp()
        if subprocess.run([PROGRAM, "--version"], stdout=subprocess.DEVNULL, preexec_fn=limit_memory, check=False).returncode:
            self.skipTest("the command takes more for itself here, as with a sanitizer")

    def expect_in_little(self, arguments, code=0):
        with self.subTest(arguments=arguments):
            result = self.run_command(*arguments.split(), preexec_fn=limit_memory)
            self.assertEqual((result.code, result.err), (code, ""))
            return result.out

    def test_results_are_larger_than_what_they_take(self):
        path = self.write("a.res", large_results())
        self.assertGreater(path.stat().st_size, MOST)
        shutil.copy(path, self.folder / "same.res")
        shutil.copy(path, self.folder / "other.res")
        with open(self.folder / "other.res", "r+b") as other:
            other.seek(-8, os.SEEK_END)
            other.write(struct.pack("<d", 2.5))

        self.expect_in_little("check a.res")
        self.expect_in_little("info a.res --stats")
        self.assertEqual(self.expect_in_little("diff a.res same.res"), "")
        out = self.expect_in_little("diff a.res other.res", code=1)
        self.assertRegex(out, rf"\AkMach: .*\b{NODES}\b")

    def test_what_is_larger_is_refused(self):
        # so that the limit is one
        self.write("a.res", large_results())
        result = self.run_command("convert", "a.res", "a.npy", preexec_fn=limit_memory)
        self.assertEqual((result.code, result.out), (2, ""))
        self.assertFalse((self.folder / "a.npy").exists())


if __name__ == "__main__":
    unittest.main()

"""What check prints of every example of docs/findings.md, which has some of each code."""

import json
import re
import struct
import unittest

from support import SOURCES, CommandTest, little_endian_results

PAGE = (SOURCES / "docs" / "findings.md").read_text()
INFINITE, NO_NUMBER = float("inf"), float("nan")


def results(nodes=4, names=("kU", "kP"), records=(1, 2, 3, 4)):
    return little_endian_results(names, nodes, records=[(node, [1.5] * len(names)) for node in records])


def with_number(content, offset, number):
    return content[:offset] + struct.pack("<i", number) + content[offset + 4 :]


def in_the_other_order(nodes):
    records = range(1, nodes + 1)
    return b"\0\0\0\1" + results(nodes, records=records)[4:]


# The files that the page doesn't show, by what it says of them.
DESCRIBED = {
    "is whole": results(),
    "has a fifth node": results(5, records=range(1, 6)),
    "is cut off in the third record": results()[:-30],
    "three bytes stand behind the last record": results() + b"abc",
    "the first marker is 7": with_number(results(), 306, 7),
    "announces 2000000000 nodes": results(2000000000),
    "announces -4 nodes": results(-4),
    "announces -3 fields": with_number(results(names=(), records=()), 346, -3)[:350],
    "both fields are named `kU`": results(names=("kU", "kU")),
    "the second field is named `kUu`": results(names=("kU", "kUu")),
    "`kP` is infinite at node 2 and no number at node 4": little_endian_results(
        {"kU": [1.5] * 4, "kP": [1.5, INFINITE, 1.5, NO_NUMBER]}, 4
    ),
    "the third record is of node 2": results(records=(1, 2, 2, 4)),
    "the third record is of node 5": results(records=(1, 2, 5, 4)),
    "all records are of node 1": results(records=(1, 1, 1, 1)),
    "has no fields, and announces -4 nodes": results(-4, names=()),
    "has no fields, and is cut off in the third record": results(names=())[:-6],
    "has no fields, and the third record is of node 2": results(names=(), records=(1, 2, 2, 4)),
    "has no fields, and the third record is of node 5": results(names=(), records=(1, 2, 5, 4)),
    "has no fields, and all records are of node 1": results(names=(), records=(1, 1, 1, 1)),
    "its first word is that of a big-endian file": in_the_other_order(4),
    "its first word is that of a big-endian file, and it has 112 nodes": in_the_other_order(112),
    "its first word is that of a big-endian file, and it has 240 nodes": in_the_other_order(240),
}


def unescaped(text):
    """The bytes for which \\xFC and the like stand."""
    return re.sub(rb"\\x([0-9A-F]{2})", lambda match: bytes([int(match[1], 16)]), text.encode())


def examples():
    """Code, files as (name, kind, content or None), and the lines of a check."""
    code, files, name, fence = None, [], None, None
    for line in PAGE.splitlines():
        if line.startswith("### `"):
            code = line.split("`")[1]
        elif line.startswith("```"):
            if fence is None:
                fence = []
                continue
            text = "".join(f"{one}\n" for one in fence)
            fence = None
            if name is not None:
                files.append((*name, unescaped(text)))
                name = None
            elif code is not None:
                yield code, files, text
                files = []
        elif fence is not None:
            fence.append(line)
        elif code is not None and (match := re.match(r"`([^`]*)`(?:, taken for `([^`]*)`)?:(?: (.*))?$", line)):
            name = match[1], match[2]
            if match[3]:
                files.append((*name, DESCRIBED.get(match[3])))
                name = None


class FindingsTest(CommandTest):
    def test_every_code_is_printed_as_the_page_says(self):
        seen = set()
        for number, (code, files, lines) in enumerate(examples()):
            with self.subTest(code=code, number=number):
                folder = self.folder / str(number)
                folder.mkdir()
                for name, _, content in files:
                    if content is not None:
                        (folder / name).write_bytes(content)
                kinds = [option for _, kind, _ in files if kind for option in ("--kind", kind)]
                names = [name for name, _, _ in files]
                result = self.run_command("check", *names, "--case", *kinds, folder=folder)
                # Sections that aren't there are shown in the section about them alone, and there two of them.
                shown = [
                    line
                    for line in result.out.splitlines()
                    if "[missing-section]" not in line and re.search(r" \[[a-z0-9-]+\]( |$)", line)
                ]
                expected = [line for line in lines.splitlines() if "[missing-section]" not in line and line != "…"]
                self.assertEqual(shown, expected)
                for line in lines.splitlines():
                    self.assertIn(line if line != "…" else "[missing-section]", result.out)

                errors = [line for line in shown if ": error: " in line]
                cannot_open = any("[cannot-open]" in line for line in errors)
                self.assertEqual(result.code, 2 if cannot_open else 1 if ": error: " in result.out else 0)

                printed = json.loads(self.run_command("check", *names, "--case", "--json", *kinds, folder=folder).out)
                found = {finding["code"] for file in printed["files"] for finding in file["findings"]}
                self.assertIn(code, found)
                seen.add(code)
        self.assertEqual(seen, set(re.findall(r"^### `([a-z0-9-]+)`$", PAGE, re.MULTILINE)))


if __name__ == "__main__":
    unittest.main()

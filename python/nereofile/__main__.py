"""``python3 -m nereofile report FOLDER`` writes a page about the files of a run."""

from __future__ import annotations

import sys
from typing import List

_USAGE = """usage: python3 -m nereofile report FOLDER [-o FILE] [--compare OTHER]

  report   writes one HTML page about the files of a run; report --help says more"""


def main(arguments: List[str]) -> int:
    """Does what the first argument names."""
    if arguments[:1] == ["report"]:
        from .report.command import main as report

        return report(arguments[1:])
    asks = arguments[:1] in (["-h"], ["--help"])
    print(_USAGE, file=sys.stdout if asks else sys.stderr)
    return 0 if asks else 2


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))

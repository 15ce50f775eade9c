#!/usr/bin/env bash
# Makes docs/report.png, the picture of a report, of the case that the demo writes. It needs the preset release, built.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh --developer
folder=$(mktemp -d)
trap 'rm -r "$folder"' EXIT
mkdir "$folder/run"
build/release/examples/typical_run samples "$folder/run" >/dev/null
cp samples/cavity.res "$folder/run"
sed -i 's/^MaxIter .*/MaxIter 8000/' "$folder/run/cavity.cfg"
sed -i 's/^kP 0.3 0$/kP O.3 0/' "$folder/run/cavity.ctl"

export PYTHONPATH=$PWD/build/release/python
/usr/bin/python3 -m nereofile report "$folder/run" -o "$folder/case.html"
chromium --headless=new --no-sandbox --disable-gpu --hide-scrollbars --window-size=1180,1000 --virtual-time-budget=2000 \
    --user-data-dir="$folder/profile" --screenshot="$folder/report.png" "file://$folder/case.html" 2>/dev/null
# A palette takes a third of the bytes, and nobody sees the difference.
/usr/bin/python3 - "$folder/report.png" docs/report.png <<'PYTHON'
import sys
from PIL import Image
Image.open(sys.argv[1]).convert("RGB").quantize(128, dither=Image.Dither.NONE).save(sys.argv[2], optimize=True)
PYTHON
ls -l docs/report.png

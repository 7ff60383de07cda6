#!/usr/bin/env bash
# Takes the documentation's pictures of the radio dialogs on a virtual X
# display: docs/images/radio-search.png and docs/images/radio-update.png.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/build.sh
mkdir -p docs/images
unset WAYLAND_DISPLAY QT_QPA_PLATFORM
xvfb-run -a -s "-screen 0 1280x900x24" build/tests/radio_screenshots docs/images

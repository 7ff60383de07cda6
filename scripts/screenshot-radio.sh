#!/usr/bin/env bash
# Makes docs/screenshot-radio-search.png and docs/screenshot-radio-update.png
# (or in the folder given): the radio search dialog with results, and the
# update dialog while a directory comes down from a local server, on a
# virtual X display, captured from the display itself.
set -euo pipefail
cd "$(dirname "$0")/.."
OUT="$(realpath -m "${1:-docs}")"
bash scripts/build.sh >/dev/null
mkdir -p "$OUT"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
mkdir -p -m 700 "$work/runtime"
unset WAYLAND_DISPLAY
export XDG_RUNTIME_DIR="$work/runtime" QT_QPA_PLATFORM=xcb
xvfb-run -a -s "-screen 0 1280x900x24" build/tests/radio_screenshots "$OUT" 2>&1 |
  grep -aoE "(wrote|could not write) [^ ]+" >&2

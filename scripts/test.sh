#!/usr/bin/env bash
# Builds Orvex and runs every test, headless. With --sanitize, the same tests
# run on a build with AddressSanitizer and UndefinedBehaviorSanitizer.
set -euo pipefail
cd "$(dirname "$0")/.."

BUILD_DIR=build
if [ "${1:-}" = "--sanitize" ]; then
  BUILD_DIR=build-asan
  export ASAN_OPTIONS="detect_leaks=1:abort_on_error=1:strict_string_checks=1"
  export LSAN_OPTIONS="suppressions=$PWD/scripts/lsan.supp:print_suppressions=0"
  export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
fi
bash scripts/build.sh "$@"

export QT_QPA_PLATFORM=offscreen
unset DISPLAY WAYLAND_DISPLAY
cd "$BUILD_DIR"
ctest --output-on-failure -j"$(nproc)"

#!/usr/bin/env bash
# Configures and builds Orvex. With --sanitize, builds with AddressSanitizer
# and UndefinedBehaviorSanitizer into build-asan/ instead of build/.
set -euo pipefail
cd "$(dirname "$0")/.."

BUILD_DIR=build
EXTRA=()
if [ "${1:-}" = "--sanitize" ]; then
  BUILD_DIR=build-asan
  EXTRA=(-DORVEX_SANITIZE=ON -DCMAKE_BUILD_TYPE=Debug -DORVEX_BUILD_BENCH=OFF)
fi

bash scripts/install-deps.sh
if [ ! -f "$BUILD_DIR/build.ninja" ]; then
  cmake -S . -B "$BUILD_DIR" -G Ninja "${EXTRA[@]}" >/dev/null
fi
cmake --build "$BUILD_DIR" -- -j"$(nproc)"

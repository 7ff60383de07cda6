#!/usr/bin/env bash
# Builds Orvex and starts it in the staged start directory.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/build.sh
cd build/stage
exec ./orvex "$@"

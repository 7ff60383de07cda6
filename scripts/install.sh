#!/usr/bin/env bash
# Builds Orvex and installs it like any other desktop program: the programs in
# PREFIX/bin, their modules, name files, manual and default files in
# PREFIX/lib/orvex, the menu entry, icons and software-centre description
# under PREFIX/share. PREFIX is /usr/local unless given; DESTDIR is honoured
# for packaging.
#
#   bash scripts/install.sh [--prefix DIR]
set -euo pipefail
cd "$(dirname "$0")/.."

PREFIX=/usr/local
while [ $# -gt 0 ]; do
  case "$1" in
    --prefix) PREFIX="$2"; shift 2 ;;
    --prefix=*) PREFIX="${1#--prefix=}"; shift ;;
    *) echo "usage: $0 [--prefix DIR]" >&2; exit 2 ;;
  esac
done

bash scripts/build.sh
cmake --install build --prefix "$PREFIX"

# Let the desktop see the new entry and icons at once, when installing for
# real rather than into a packaging root.
if [ -z "${DESTDIR:-}" ]; then
  if command -v update-desktop-database >/dev/null; then
    update-desktop-database -q "$PREFIX/share/applications" || true
  fi
  if command -v gtk-update-icon-cache >/dev/null; then
    gtk-update-icon-cache -q -t "$PREFIX/share/icons/hicolor" || true
  fi
fi
echo "Orvex is installed in $PREFIX: start it from the desktop's menu or with $PREFIX/bin/orvex"

#!/usr/bin/env bash
# Makes docs/screenshot-library.png (or the path given): Orvex on a small
# demo library in a virtual X display, captured from the display itself
# once the window has settled.
set -euo pipefail
cd "$(dirname "$0")/.."
OUT="$(realpath -m "${1:-docs/screenshot-library.png}")"
bash scripts/build.sh >/dev/null

work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/data/Orvex"

# The demo library, as Media Record text imported into a contents file.
record() { # type topics favourite name location
  printf '0\r\n%s\r\n6\r\n%s\r\n' "$1" "$2"
  [ "$3" = yes ] && printf '7\r\nyes\r\n'
  printf '10\r\n%s\r\n11\r\n%s\r\n\r\n' "$4" "$5"
}
{
  record AUDF "Music,Jazz" yes "Blue in Green" "/home/user/Music/Jazz/Blue in Green.flac"
  record AUDF "Music,Jazz" no "So What" "/home/user/Music/Jazz/So What.flac"
  record AUDF "Music,Jazz" yes "Take Five" "/home/user/Music/Jazz/Take Five.mp3"
  record AUDF "Music,Rock" no "Paranoid Android" "/home/user/Music/Rock/Paranoid Android.mp3"
  record AUDF "Music,Rock" yes "Heroes" "/home/user/Music/Rock/Heroes.mp3"
  record AUDF "Music,Classical" no "Goldberg Variations" "/home/user/Music/Classical/Goldberg.flac"
  record AUDU "Radio,News" yes "World Service" "http://stream.example.org/world.mp3"
  record AUDU "Radio,News" no "!!Playlist: News Hour" "http://stream.example.org/news.pls"
  record AUDU "Radio,Jazz Radio" no "Jazz 24" "http://stream.example.org/jazz24.m3u8"
  record VIDF "Films" yes "Nosferatu (1922)" "/home/user/Videos/Nosferatu.mkv"
  record VIDF "Films" no "Metropolis (1927)" "/home/user/Videos/Metropolis.mp4"
  record VIDF "Films,Shorts" no "A Trip to the Moon" "/home/user/Videos/Trip to the Moon.webm"
} >"$work/demo.txt"
build/stage/orvexctl import --format mrf "$work/demo.txt" "$work/data/Orvex/OrvexContents.dat" >/dev/null

export XDG_DATA_HOME="$work/data" XDG_RUNTIME_DIR="$work/runtime" QT_QPA_PLATFORM=xcb
mkdir -p -m 700 "$work/runtime"
export SHOT_WORK="$work" SHOT_OUT="$OUT" SHOT_GRAB="$PWD/build/tools/screengrab"
# The window fills the display: there is no window manager to place it.
xvfb-run -a -s "-screen 0 1000x680x24" bash -c '
  set -euo pipefail
  cd build/stage
  ./orvex >/dev/null 2>&1 &
  pid=$!
  grab() { "$SHOT_GRAB" "$1" >/dev/null 2>&1; }
  # Two equal pictures in a row, the second with more than a blank screen
  # in it, mean the window stands and has painted.
  previous=""
  for i in $(seq 1 60); do
    grab "$SHOT_WORK/shot.png"
    sum=$(md5sum "$SHOT_WORK/shot.png" | cut -d" " -f1)
    if [ "$sum" = "$previous" ] && [ "$(stat -c %s "$SHOT_WORK/shot.png")" -gt 20000 ]; then
      cp "$SHOT_WORK/shot.png" "$SHOT_OUT"
      break
    fi
    previous="$sum"
    sleep 0.5
  done
  kill "$pid" 2>/dev/null || true
  wait "$pid" 2>/dev/null || true
'
[ -f "$OUT" ] || { echo "no settled window to take a picture of" >&2; exit 1; }
echo "$OUT"

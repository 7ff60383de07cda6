#!/usr/bin/env bash
# Makes docs/screenshot-playing.png: Orvex playing a generated video in a
# virtual X display, captured from the display itself.
set -euo pipefail
cd "$(dirname "$0")/.."
ROOT=$PWD
bash scripts/build.sh >/dev/null

WORK=$(mktemp -d)
trap 'rm -rf "$WORK"' EXIT
mkdir -p -m 700 "$WORK/runtime"
gst-launch-1.0 -q videotestsrc pattern=smpte num-buffers=300 \
  ! video/x-raw,width=1280,height=720,framerate=25/1 \
  ! x264enc speed-preset=ultrafast ! h264parse ! matroskamux name=m \
  ! filesink location="$WORK/Test Pattern.mkv" \
  audiotestsrc num-buffers=520 samplesperbuffer=1024 ! audioconvert ! vorbisenc ! m.

cat > "$WORK/shoot.sh" <<'INNER'
#!/usr/bin/env bash
set -euo pipefail
cd "$ROOT/build/stage"
./orvex "$WORK/Test Pattern.mkv" &
pid=$!
sleep 5
"$ROOT/build/tools/screengrab" "$ROOT/docs/screenshot-playing.png"
kill "$pid"
wait "$pid" || true
INNER
chmod +x "$WORK/shoot.sh"

# The window fills the display: there is no window manager to place it.
ROOT="$ROOT" WORK="$WORK" XDG_RUNTIME_DIR="$WORK/runtime" XDG_DATA_HOME="$WORK/data" \
  ORVEX_AUDIO_SINK="fakesink sync=true" QT_QPA_PLATFORM=xcb \
  xvfb-run -a -s "-screen 0 1000x680x24" "$WORK/shoot.sh"
echo "wrote docs/screenshot-playing.png"

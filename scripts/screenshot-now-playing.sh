#!/usr/bin/env bash
# Makes docs/screenshot-now-playing.png: Orvex playing a radio stream served
# on this machine that announces its song in ICY metadata; the song shows in
# the window title and the status area. Captured from a virtual X display.
set -euo pipefail
cd "$(dirname "$0")/.."
ROOT=$PWD
bash scripts/build.sh >/dev/null

WORK=$(mktemp -d)
trap 'rm -rf "$WORK"' EXIT
mkdir -p -m 700 "$WORK/runtime"
gst-launch-1.0 -q audiotestsrc wave=sine freq=440 num-buffers=600 samplesperbuffer=1024 \
  ! audio/x-raw,rate=44100,channels=2 ! audioconvert \
  ! lamemp3enc target=bitrate bitrate=128 cbr=true ! filesink location="$WORK/radio.mp3"

# A station as Shoutcast servers send one: the MP3 at its own pace, with the
# song's title every 8192 bytes for clients that ask for it.
cat > "$WORK/station.py" <<'INNER'
import http.server, socketserver, sys, time
audio = open(sys.argv[1], "rb").read()
METAINT = 8192
title = b"StreamTitle='Miles Davis - So What';"
block = title + b"\0" * (-len(title) % 16)
meta = bytes([len(block) // 16]) + block

class Station(http.server.BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.0"
    def log_message(self, *args):
        pass
    def do_GET(self):
        icy = self.headers.get("Icy-MetaData") == "1"
        self.send_response(200)
        self.send_header("Content-Type", "audio/mpeg")
        self.send_header("icy-name", "Loopback Jazz")
        if icy:
            self.send_header("icy-metaint", str(METAINT))
        self.end_headers()
        offset = 0
        try:
            while True:
                piece = bytes(audio[(offset + i) % len(audio)] for i in range(METAINT))
                offset += METAINT
                self.wfile.write(piece + (meta if icy else b""))
                self.wfile.flush()
                time.sleep(METAINT / 16000.0)  # 128 kbit/s
        except (BrokenPipeError, ConnectionResetError):
            pass

class Server(socketserver.ThreadingMixIn, http.server.HTTPServer):
    daemon_threads = True

server = Server(("127.0.0.1", 0), Station)
with open(sys.argv[2], "w") as f:
    f.write(str(server.server_address[1]))
server.serve_forever()
INNER
python3 "$WORK/station.py" "$WORK/radio.mp3" "$WORK/port" &
station=$!
trap 'kill "$station" 2>/dev/null || true; rm -rf "$WORK"' EXIT
for _ in $(seq 1 100); do [ -s "$WORK/port" ] && break; sleep 0.1; done
PORT=$(cat "$WORK/port")

# A plain window manager draws the title bar, where the song shows.
cat > "$WORK/twmrc" <<'INNER'
RandomPlacement
UsePPosition "on"
NoGrabServer
TitleFont "fixed"
ResizeFont "fixed"
MenuFont "fixed"
IconFont "fixed"
IconManagerFont "fixed"
INNER
cat > "$WORK/shoot.sh" <<'INNER'
#!/usr/bin/env bash
set -euo pipefail
twm -f "$WORK/twmrc" &
wm=$!
cd "$ROOT/build/stage"
./orvex "http://127.0.0.1:$PORT/jazz" &
pid=$!
sleep 6
"$ROOT/build/tools/screengrab" "$ROOT/docs/screenshot-now-playing.png"
kill "$pid" "$wm"
wait "$pid" || true
INNER
chmod +x "$WORK/shoot.sh"

ROOT="$ROOT" WORK="$WORK" PORT="$PORT" XDG_RUNTIME_DIR="$WORK/runtime" \
  XDG_DATA_HOME="$WORK/data" ORVEX_AUDIO_SINK="fakesink sync=true" QT_QPA_PLATFORM=xcb \
  dbus-run-session -- xvfb-run -a -s "-screen 0 1080x760x24" "$WORK/shoot.sh"
echo "wrote docs/screenshot-now-playing.png"

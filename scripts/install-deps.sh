#!/usr/bin/env bash
# Installs every Debian package Orvex needs to build, run and test.
# Idempotent: when everything is present it prints nothing and touches nothing.
set -euo pipefail

PACKAGES=(
  # toolchain
  g++ cmake ninja-build pkg-config clang-format git
  # application framework and libraries
  qt6-base-dev qt6-qpa-plugins libqt6test6
  libcurl4-openssl-dev ca-certificates libssl-dev openssl
  libgstreamer1.0-dev libgstreamer-plugins-base1.0-dev
  libcdio-dev libcdio-paranoia-dev libdvdnav-dev libdvdread-dev libudev-dev libxcb1-dev
  iso-codes
  # the icon, rendered from its drawing at build time
  librsvg2-bin
  # media pipeline plugins used at run time and by the tests
  gstreamer1.0-tools gstreamer1.0-libav gstreamer1.0-plugins-base
  gstreamer1.0-plugins-good gstreamer1.0-plugins-bad gstreamer1.0-plugins-ugly
  gstreamer1.0-x gstreamer1.0-gl gstreamer1.0-alsa gstreamer1.0-pulseaudio
  # tests and benchmarks (the pipeline library's RTSP server serves the stream tests;
  # ffmpeg's DVD target, spumux and dvdauthor author the DVD the disc tests play)
  googletest libgtest-dev libgmock-dev libbenchmark-dev xvfb xauth libxcb-xtest0-dev libgstrtspserver-1.0-dev
  ffmpeg dvdauthor
  # checks of the installed program's desktop entry and description
  desktop-file-utils appstream
  # the window frame in the now-playing screenshot
  twm
  # a session bus of their own for the MPRIS tests
  dbus-daemon
  # the search benchmark's comparison only
  libsqlite3-dev
)

missing=()
for p in "${PACKAGES[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$p")
  fi
done
[ ${#missing[@]} -eq 0 ] && exit 0

SUDO=""
if [ "$(id -u)" -ne 0 ]; then SUDO="sudo"; fi
echo "Installing: ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -qq
$SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null

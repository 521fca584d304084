#!/usr/bin/env bash
# Installs what is missing, builds, and starts the jukebox. Without a display
# it starts on a virtual X display and says how to look at it.
set -euo pipefail
cd "$(dirname "$0")"
tools/setup.sh
tools/build.sh

program=build/ZORjuke/ZORjuke
if [[ -n "${DISPLAY:-}" || -n "${WAYLAND_DISPLAY:-}" ]]; then
  exec "$program" "$@"
fi

# The first free display number from 57 up.
n=${ZOR_DISPLAY:-57}
while [[ -e /tmp/.X$n-lock || -e /tmp/.X11-unix/X$n ]]; do n=$((n + 1)); done
auth=$PWD/build/Xauthority
echo "No display found: starting ZOR JUKEBOX on the virtual X display :$n (1280x800)."
echo "Take a look with: XAUTHORITY=$auth DISPLAY=:$n import -window root screen.png"
exec xvfb-run --server-num="$n" --auth-file="$auth" --server-args="-screen 0 1280x800x24" "$program" "$@"

#!/usr/bin/env bash
# Installs the Debian packages the jukebox needs to build, run and test,
# asking apt only for what is missing. Runs as root, or through sudo.
set -euo pipefail

packages=(
  build-essential cmake ninja-build ccache pkg-config
  qt6-base-dev qt6-base-dev-tools libgl-dev
  libsqlite3-dev sqlite3
  libgtest-dev googletest
  xvfb xauth x11-apps imagemagick fonts-dejavu-core
  # The settings name Arial; these have its metrics, for which the grids'
  # column widths were measured.
  fonts-liberation2 fontconfig
  clang libclang-rt-14-dev
  sox lame gstreamer1.0-plugins-base-apps
  libgstreamer1.0-dev libgstreamer-plugins-base1.0-dev
  gstreamer1.0-plugins-base gstreamer1.0-plugins-good gstreamer1.0-plugins-ugly gstreamer1.0-libav
)

missing=()
for p in "${packages[@]}"; do
  status=$(dpkg-query -W -f='${Status}' "$p" 2>/dev/null || true)
  [[ "$status" == "install ok installed" ]] || missing+=("$p")
done

if ((${#missing[@]} == 0)); then
  exit 0
fi

if ((EUID == 0)); then
  as_root=()
elif command -v sudo >/dev/null; then
  as_root=(sudo)
else
  echo "These packages are missing and neither root nor sudo is at hand: ${missing[*]}" >&2
  exit 1
fi

echo "Installing: ${missing[*]}"
apt_opts=(-o DPkg::Lock::Timeout=300 -y -q)
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get "${apt_opts[@]}" update
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get "${apt_opts[@]}" install --no-install-recommends "${missing[@]}"

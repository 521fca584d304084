#!/usr/bin/env bash
# Configures (once) and builds the whole project into build/.
set -euo pipefail
cd "$(dirname "$0")/.."
export CCACHE_DIR="${CCACHE_DIR:-$PWD/build/.ccache}"
if [[ ! -f build/build.ninja ]]; then
  cmake -G Ninja -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo
fi
cmake --build build

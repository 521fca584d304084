#!/usr/bin/env bash
# Installs what is missing, builds, and runs the whole test suite, then a
# short run of every fuzz target.
set -euo pipefail
cd "$(dirname "$0")"
tools/setup.sh
tools/build.sh
(cd build && ctest -j2 --output-on-failure)
tools/run_fuzz.sh "${ZOR_FUZZ_SECONDS:-20}"

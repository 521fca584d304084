#!/usr/bin/env bash
# Builds the libFuzzer targets of fuzz/ into build-fuzz/ with clang and runs
# each for SECONDS seconds (default 20) on a copy of its seed corpus, kept in
# build-fuzz/fuzz-corpus/ so that later runs go on from what earlier ones
# found. Exits non-zero when a target crashes, hangs, leaks or runs out of
# memory; the input that did it is left in build-fuzz/fuzz-out/<target>/.
set -euo pipefail
cd "$(dirname "$0")/.."

seconds="${1:-20}"
if ! [[ $seconds =~ ^[0-9]+$ ]] || ((seconds < 1)); then
  echo "usage: tools/run_fuzz.sh [SECONDS]" >&2
  exit 2
fi

if ! command -v clang++ >/dev/null 2>&1 || ! command -v clang >/dev/null 2>&1; then
  echo "run_fuzz.sh: clang/clang++ not found; libFuzzer needs clang. No fuzzing done."
  exit 0
fi

build=build-fuzz
export CCACHE_DIR="${CCACHE_DIR:-$PWD/$build/.ccache}"
if [[ ! -f $build/build.ninja ]]; then
  CC=clang CXX=clang++ cmake -G Ninja -S . -B "$build" -DZOR_FUZZ=ON -DCMAKE_BUILD_TYPE=RelWithDebInfo
fi
cmake --build "$build" --target fuzz_targets

# Undefined behaviour stops the target with a stack; leaks are reported.
export UBSAN_OPTIONS="${UBSAN_OPTIONS:-print_stacktrace=1:halt_on_error=1}"
export ASAN_OPTIONS="${ASAN_OPTIONS:-detect_leaks=1}"

status=0
for src in fuzz/*_fuzz.cpp; do
  name=$(basename "$src" .cpp)
  corpus=$build/fuzz-corpus/$name
  out=$build/fuzz-out/$name
  mkdir -p "$corpus" "$out"
  if [[ -d fuzz/corpus/$name ]]; then
    cp -n fuzz/corpus/"$name"/* "$corpus"/ 2>/dev/null || true
  fi
  log=$out/run.log
  if "$build/fuzz/$name" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 \
      -artifact_prefix="$out/" -print_final_stats=1 "$corpus" >"$log" 2>&1; then
    execs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -1)
    units=$(find "$corpus" -type f | wc -l)
    echo "$name: no faults in ${seconds}s, ${execs:-?} executions, corpus of $units inputs"
  else
    echo "$name: FAILED (log: $log)"
    grep -E "ERROR|SUMMARY|runtime error|_fuzz: |Test unit written" "$log" | head -20 || true
    status=1
  fi
done
exit $status

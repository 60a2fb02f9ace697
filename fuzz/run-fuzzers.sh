#!/usr/bin/env bash
# Builds the loader fuzzers with clang and runs each for a short time over its
# seed corpus. Any crash, hang, leak or sanitizer report fails the run.
# Usage: fuzz/run-fuzzers.sh [seconds per target]
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
seconds=${1:-20}
build=${QEL_FUZZ_BUILD_DIR:-$root/build-fuzz}
CC=clang CXX=clang++ cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DQEL_BUILD_FUZZ=ON -DQEL_BUILD_TESTS=OFF -DQEL_BUILD_BENCH=OFF -DQEL_SANITIZE=address,undefined
targets=$(for f in ply stl obj off pcd xyz csv png tif bmp jpg; do printf -- "--target fuzz_%s " "$f"; done)
# shellcheck disable=SC2086
cmake --build "$build" $targets
# Keeps OpenCV from allocating huge images for headers that claim them.
export OPENCV_IO_MAX_IMAGE_PIXELS=16777216
for target in "$build"/fuzz/fuzz_*; do
  format=${target##*fuzz_}
  work=$(mktemp -d)
  cp "$root/fuzz/corpus/$format"/* "$work"/ 2>/dev/null || true
  echo "== fuzzing $format for ${seconds}s"
  "$target" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=3072 -max_len=65536 \
    -print_final_stats=1 "$work" 2>&1 | tail -n 12
  status=${PIPESTATUS[0]}
  rm -rf "$work"
  if [ "$status" -ne 0 ]; then echo "fuzzer for $format failed"; exit 1; fi
done
echo "all fuzzers ran clean"

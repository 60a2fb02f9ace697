#!/usr/bin/env bash
# The main job. The demo viewer is not part of the project yet, so this
# builds the libraries and runs the data-layer tests and benchmark instead.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
cmake -S "$root" -B "$root/build" -G Ninja -DCMAKE_BUILD_TYPE=Release
cmake --build "$root/build" --parallel "$(nproc)"
echo "The demo viewer does not exist yet: running the data-layer tests and benchmark."
cd "$root/build"
./tests/qel_data_tests
./bench/bench_data

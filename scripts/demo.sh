#!/usr/bin/env bash
# The main job: builds the libraries and the demo viewer, then shows the
# bundled machined-part sample and saves what the viewer draws. Without a
# display it runs under a virtual X server. Extra arguments go to the viewer
# (files to show instead of the sample).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
cmake -S "$root" -B "$root/build" -G Ninja -DCMAKE_BUILD_TYPE=Release
cmake --build "$root/build" --parallel "$(nproc)" --target qel_demo_viewer
shot="$root/build/demo-screenshot.png"
export QT_QPA_PLATFORM=xcb LP_NUM_THREADS=${LP_NUM_THREADS:-2}
viewer=("$root/build/apps/qel_demo_viewer" --screenshot "$shot" "$@")
if [ -n "${DISPLAY:-}" ]; then
  "${viewer[@]}"
else
  xvfb-run -a -s "-screen 0 1280x1024x24" "${viewer[@]}"
fi
echo "The demo viewer's picture: $shot"

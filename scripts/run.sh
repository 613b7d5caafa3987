#!/usr/bin/env bash
# The main job: Lyn Utility against the built-in simulated receiver. With a display it opens
# the utility's window; without one it takes the headless tour, printing what every window
# read and saving their screenshots into build/tour.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
cd "$root"
bash scripts/setup-deps.sh
bash scripts/build.sh build/release
exec build/release/tools/lyn-utility/lyn-utility --library build/release/fenklib/libfenk.so \
  $( [ -z "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ] && echo --tour build/tour ) "$@"

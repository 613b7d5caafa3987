#!/usr/bin/env bash
# build.sh <build-dir> [extra cmake args...]: configures once and builds everything.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
dir=$1; shift
# Objects are cached by paths relative to the checkout's parent, so a fresh clone beside an
# earlier one rebuilds from the cache.
export CCACHE_BASEDIR=${CCACHE_BASEDIR:-$(dirname "$root")} CCACHE_NOHASHDIR=1
launcher=()
command -v ccache >/dev/null && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache -DCMAKE_C_COMPILER_LAUNCHER=ccache)
if [ ! -f "$dir/build.ninja" ]; then
  cmake -S "$root" -B "$dir" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo "${launcher[@]}" "$@"
fi
cmake --build "$dir" -j "$(nproc)"

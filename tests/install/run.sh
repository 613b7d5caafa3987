#!/usr/bin/env bash
# run.sh <build-dir> <source-dir>: installs into a scratch prefix, then builds and runs a
# consumer with find_package(FenkLib) and checks the pkg-config file.
set -euo pipefail
build=$1; src=$2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cmake --install "$build" --prefix "$scratch/prefix" >/dev/null
cmake -S "$src/tests/install/consumer" -B "$scratch/consumer" -G Ninja -DCMAKE_PREFIX_PATH="$scratch/prefix" >/dev/null
cmake --build "$scratch/consumer" >/dev/null
# The settings the consumer reads come from a scratch store, not the user's own; its data files
# from the prefix's share folder, as a system's data folders hold an installed package's.
XDG_DATA_DIRS="$scratch/prefix/share" XDG_CONFIG_HOME="$scratch/config" LD_LIBRARY_PATH="$scratch/prefix/lib" "$scratch/consumer/consumer"
flags=$(PKG_CONFIG_PATH="$scratch/prefix/lib/pkgconfig" pkg-config --cflags --libs fenk)
case "$flags" in
  *"/include/fenk "*"-lfenk"*) ;;
  *) echo "pkg-config gave: $flags"; exit 1 ;;
esac
for f in lib/libfenk.so bin/lyn-utility bin/rcvsim bin/nmeadump include/fenk/platform/devio/IReceiver.h; do
  [ -e "$scratch/prefix/$f" ] || { echo "not installed: $f"; exit 1; }
done
echo "installed package works"

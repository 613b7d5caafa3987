#!/usr/bin/env bash
# format.sh [--check] [paths...]: formats the C++ sources with the committed .clang-format
# (clang-format 14). --check changes nothing and lists the files that would change, failing
# when there are any. Without paths: every tracked .cpp and .h file.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
cd "$root"
format=$(command -v clang-format-14 || command -v clang-format || true)
[ -n "$format" ] || { echo "clang-format is missing: bash scripts/setup-deps.sh installs it"; exit 2; }
check=0
if [ "${1:-}" = "--check" ]; then check=1; shift; fi
if [ $# -gt 0 ]; then files=("$@"); else mapfile -t files < <(git ls-files '*.cpp' '*.h'); fi
if [ $check -eq 0 ]; then
  "$format" -i --style=file "${files[@]}"
  exit 0
fi
changed=0
for f in "${files[@]}"; do
  if ! "$format" --style=file "$f" | cmp -s - "$f"; then echo "$f"; changed=$((changed + 1)); fi
done
echo "$changed of ${#files[@]} file(s) would change"
[ $changed -eq 0 ]

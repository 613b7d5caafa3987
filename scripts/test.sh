#!/usr/bin/env bash
# Builds and runs every test twice: a normal build, then an AddressSanitizer +
# UndefinedBehaviorSanitizer build that fails on any report.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
cd "$root"
bash scripts/setup-deps.sh

echo "== normal build =="
bash scripts/build.sh build/release
ctest --test-dir build/release --output-on-failure -j 2

echo "== sanitizer build (ASan + UBSan) =="
bash scripts/build.sh build/asan -DFENK_SANITIZE=ON
export ASAN_OPTIONS="detect_leaks=1:abort_on_error=1:strict_string_checks=1:detect_stack_use_after_return=1"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
export LSAN_OPTIONS="suppressions=$root/tests/lsan.supp:print_suppressions=0"
ctest --test-dir build/asan --output-on-failure -j 2

echo "all tests passed in both builds"

#!/usr/bin/env bash
# Builds and runs every test twice: a normal build, then an AddressSanitizer +
# UndefinedBehaviorSanitizer build that fails on any report.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
cd "$root"
bash scripts/setup-deps.sh

echo "== house rules =="
bash scripts/check-rules.sh

# Numbers sent to the receiver, stored or saved must not follow the user's locale: every suite
# runs a second time under a comma-decimal one.
comma_locale=de_DE.UTF-8
if ! locale -a 2>/dev/null | grep -qi '^de_DE\.utf-\?8$'; then
  localedef -i de_DE -f UTF-8 "$comma_locale" 2>/dev/null || sudo localedef -i de_DE -f UTF-8 "$comma_locale"
fi
run_suite() {   # run_suite <build-dir>
  ctest --test-dir "$1" --output-on-failure -j 2
  echo "== $1 again under $comma_locale =="
  LC_ALL=$comma_locale LANG=$comma_locale ctest --test-dir "$1" --output-on-failure -j 2
}

echo "== normal build =="
bash scripts/build.sh build/release
run_suite build/release

echo "== sanitizer build (ASan + UBSan) =="
bash scripts/build.sh build/asan -DFENK_SANITIZE=ON
export ASAN_OPTIONS="detect_leaks=1:abort_on_error=1:strict_string_checks=1:detect_stack_use_after_return=1"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
export LSAN_OPTIONS="suppressions=$root/tests/lsan.supp:print_suppressions=0"
run_suite build/asan

echo "all tests passed in both builds and both locales"

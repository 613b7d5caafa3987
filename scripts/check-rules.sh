#!/usr/bin/env bash
# check-rules.sh [root] [--allow=FILE]: the house rules over the source tree (layers, window
# folders, Qt Widgets, command texts, silent skips); fails on any violation not allowed on
# purpose in scripts/check-rules.allow.
set -euo pipefail
exec python3 "$(dirname "$0")/check_rules.py" "$@"

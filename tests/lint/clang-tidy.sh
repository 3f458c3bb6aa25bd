#!/usr/bin/env bash
# clang-tidy over Inkwarden's own sources (the app, the development server, the tools), with the
# checks that the committed .clang-tidy names and every warning an error. Generated files (moc,
# QML type registrations, resources) and the tests' own code are left out.
#
# Usage: clang-tidy.sh BUILD_DIR   (a build with compile_commands.json)
set -euo pipefail
build=$1
repo="$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)"
[ -f "$build/compile_commands.json" ] || { echo "no compile_commands.json in $build" >&2; exit 2; }
command -v run-clang-tidy >/dev/null || { echo "run-clang-tidy is missing (package clang-tidy)" >&2; exit 1; }

# Sources under the app, the server and the tools; the regex is matched against absolute paths.
files="^$repo/(InkwardenMenuBar|devserver|soak|bench)/.*\\.cpp\$"
jobs=$(nproc)
log=$(mktemp)
trap 'rm -f "$log"' EXIT
# The compile commands are gcc's; clang is told to leave gcc-only warning options alone. Any
# finding is a failure (this run-clang-tidy has no -warnings-as-errors of its own).
status=0
run-clang-tidy -quiet -p "$build" -j "$jobs" -extra-arg=-Wno-unknown-warning-option "$files" >"$log" 2>&1 || status=$?
findings=$(sed "s/\x1b\[[0-9;]*m//g" "$log" | grep -E ": (warning|error): " | sort -u || true)
if [ "$status" -ne 0 ] || [ -n "$findings" ]; then
    if [ -n "$findings" ]; then printf '%s\n' "$findings" >&2; else cat "$log" >&2; fi
    echo "clang-tidy found problems" >&2
    exit 1
fi
echo "clang-tidy: $(grep -c '^clang-tidy' "$log" || true) files, no findings"

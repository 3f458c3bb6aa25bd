#!/usr/bin/env bash
# Renders every screen of the popover (connect view, dashboard, settings) offscreen at 360 x 560,
# in a light and a dark desktop palette, to PNG files, and prints their paths; then the connect view,
# the dashboard and the settings in each of Inkwarden's other languages, into a folder per language.
# Usage: scripts/screenshots.sh [outdir]   (default: build/ui/screenshots)
set -euo pipefail

root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
source "$root/scripts/lib/packages.sh"
inkwarden_ensure_packages "${INKWARDEN_BUILD_PACKAGES[@]}" fonts-ipafont-gothic

build="${INKWARDEN_SCREENSHOT_BUILD:-$root/build/ui}"
outdir="${1:-$build/screenshots}"

if [ ! -f "$build/CMakeCache.txt" ]; then
    cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DINKWARDEN_BUILD_BENCHMARKS=OFF >/dev/null
fi
cmake --build "$build" --target inkwarden-screenshots -- -j2 >/dev/null

for language in "" de fr es it ja; do
    QT_QPA_PLATFORM=offscreen QT_QUICK_BACKEND=software LC_ALL=C.UTF-8 TZ=UTC \
        "$build/tests/ui/inkwarden-screenshots" "$outdir" $language
done

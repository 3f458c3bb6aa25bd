#!/usr/bin/env bash
# Installs what the tests need, builds Inkwarden with AddressSanitizer and UndefinedBehaviorSanitizer,
# runs a short fuzzing smoke run and then every test through CTest (among them a release build of the
# Debian packages, which the package and update-flow tests check).
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
source scripts/lib/packages.sh

# The panel tests run Inkwarden on real panels under Xvfb (xfce4-panel, GNOME Shell) and on sway
# with waybar, and the package tests build the Debian packages: their tools are needed as well.
inkwarden_ensure_packages "${INKWARDEN_BUILD_PACKAGES[@]}" "${INKWARDEN_TEST_PACKAGES[@]}" \
    "${INKWARDEN_PANEL_PACKAGES[@]}" "${INKWARDEN_GNOME_PACKAGES[@]}" "${INKWARDEN_WAYLAND_PACKAGES[@]}" \
    "${INKWARDEN_PACKAGE_PACKAGES[@]}"

cmake --preset asan
cmake --build --preset asan
bash scripts/fuzz.sh --smoke
ctest --preset asan --parallel 2

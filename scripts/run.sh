#!/usr/bin/env bash
# Installs what Inkwarden needs, builds it and runs it.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
source scripts/lib/packages.sh

inkwarden_ensure_packages "${INKWARDEN_BUILD_PACKAGES[@]}"

cmake --preset release >/dev/null
cmake --build --preset release --target inkwarden
exec build/release/InkwardenMenuBar/inkwarden "$@"

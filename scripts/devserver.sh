#!/usr/bin/env bash
# Installs what the development server needs, builds it and runs it (127.0.0.1:8000 by default).
# Every argument goes to inkwarden-devserver; try --help.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
source scripts/lib/packages.sh

inkwarden_ensure_packages "${INKWARDEN_BUILD_PACKAGES[@]}"

cmake --preset release >/dev/null
cmake --build --preset release --target inkwarden-devserver
exec build/release/devserver/inkwarden-devserver "$@"

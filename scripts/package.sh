#!/usr/bin/env bash
# Builds Inkwarden's Debian packages: Inkwarden-<version>.deb (the app) and
# inkwarden-devserver_<version>_<arch>.deb (the development server), in build/package unless another
# folder is given, and prints their paths. Install the app with `sudo apt install ./<path>`.
#
#   ./scripts/package.sh [BUILD_DIR]
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
source scripts/lib/packages.sh

inkwarden_ensure_packages "${INKWARDEN_BUILD_PACKAGES[@]}" "${INKWARDEN_PACKAGE_PACKAGES[@]}"
bash scripts/lib/build-package.sh . "${1:-build/package}"

#!/usr/bin/env bash
# qmllint over every QML file of the popover's views, against the module as built (so that the
# views' own types and the store's properties are known), every warning an error.
#
# Usage: qmllint.sh BUILD_DIR
set -euo pipefail
build=$(cd "$1" && pwd)
repo="$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)"
qmllint=/usr/lib/qt6/bin/qmllint
[ -x "$qmllint" ] || { echo "qmllint is missing (package qt6-declarative-dev-tools)" >&2; exit 1; }
modules="$build/InkwardenMenuBar/ui"
[ -d "$modules/Inkwarden/Ui" ] || { echo "no built QML module under $modules" >&2; exit 2; }
# The module's copies, beside its qmldir, are what the tool can resolve; they are the sources as
# they stand (the build copies them).
mapfile -t sources < <(cd "$repo/InkwardenMenuBar/ui" && find . -name '*.qml' -printf '%P\n' | sort)
views=()
for source in "${sources[@]}"; do
    copy="$modules/Inkwarden/Ui/$source"
    cmp -s "$repo/InkwardenMenuBar/ui/$source" "$copy" || { echo "$copy is not the source as it stands: build first" >&2; exit 2; }
    views+=("$copy")
done
output=$(cd "$modules" && "$qmllint" -I "$modules" "${views[@]}" 2>&1) || true
if [ -n "$output" ]; then
    printf '%s\n' "$output" >&2
    echo "qmllint: findings in the views" >&2
    exit 1
fi
echo "qmllint: ${#views[@]} files, no findings"

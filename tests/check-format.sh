#!/usr/bin/env bash
# Fails when a tracked C++ file is not formatted with the project's .clang-format.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
mapfile -t files < <(git ls-files --cached --others --exclude-standard -- '*.cpp' '*.h')
unformatted=()
for file in "${files[@]}"; do
    [ -f "$file" ] || continue
    if ! clang-format --dry-run --Werror "$file" >/dev/null 2>&1; then
        unformatted+=("$file")
    fi
done
if [ "${#unformatted[@]}" -ne 0 ]; then
    echo "Not clang-formatted: ${unformatted[*]}"
    exit 1
fi
echo "${#files[@]} files formatted"

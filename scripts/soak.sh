#!/usr/bin/env bash
# The soak run: builds inkwarden-soak in build/soak and runs one connected store against the
# development server in-process for HOURS simulated hours (default 24) of random faults, network
# outages, sleeps, restarts and user actions, in virtual time. Prints what it did and ends with
# "soak: PASS" or "soak: FAIL: <reason>"; exits non-zero when a rule broke or the program died.
#
#   scripts/soak.sh                          24 simulated hours, seed 1
#   scripts/soak.sh 72 --seed 7              any inkwarden-soak options after the hours
#   scripts/soak.sh 24 --without reset,hang  leave fault kinds out
#   SOAK_SANITIZE=1 scripts/soak.sh 24       the same under AddressSanitizer and UBSan (build/soak/asan)
set -euo pipefail

repo="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"

hours=24
if (($# > 0)) && [[ $1 != -* ]]; then
    hours=$1
    shift
fi

build="$repo/build/soak"
options=(-G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DINKWARDEN_BUILD_BENCHMARKS=OFF)
if [[ ${SOAK_SANITIZE:-0} == 1 ]]; then
    build="$repo/build/soak/asan"
    options+=(-DINKWARDEN_SANITIZE=ON)
fi

cmake -S "$repo" -B "$build" "${options[@]}" >/dev/null
cmake --build "$build" -j2 --target inkwarden-soak

status=0
LC_ALL=C.UTF-8 TZ=UTC "$build/soak/inkwarden-soak" --hours "$hours" "$@" || status=$?
if ((status > 1)); then
    if ((status > 128)); then
        echo "soak: FAIL: inkwarden-soak died with signal $((status - 128))"
    else
        echo "soak: FAIL: inkwarden-soak exited with status $status"
    fi
fi
exit "$status"

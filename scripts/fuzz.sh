#!/usr/bin/env bash
# Builds the libFuzzer target for Inkwarden's wire decoding into build/fuzz and runs it.
#
#   scripts/fuzz.sh                 fuzz for 10 minutes (the corpus grows in build/fuzz/corpus)
#   scripts/fuzz.sh 3600            fuzz for an hour
#   scripts/fuzz.sh --smoke         about 30 s over a throw-away copy of the seed corpus
#   scripts/fuzz.sh [...] -- ARGS   pass further options to libFuzzer
#
# Seeds come from tests/data/fuzz-corpus and are never written to. A crash leaves its input in
# build/fuzz/artifacts and makes the script exit non-zero. The only thing it installs is clang and
# the libFuzzer runtime, and only when they are missing.
set -euo pipefail

repo="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
source "$repo/scripts/lib/packages.sh"
build="$repo/build/fuzz"
seeds="$repo/tests/data/fuzz-corpus"
dict="$repo/fuzz/json.dict"

seconds=600
smoke=0
extra=()
while (($#)); do
    case "$1" in
    --smoke) smoke=1 seconds=30 ;;
    --) shift; extra=("$@"); break ;;
    -h|--help) inkwarden_print_usage "$0"; exit 0 ;;
    ''|*[!0-9]*) echo "$0: unknown argument $1 (see --help)" >&2; exit 2 ;;
    *) seconds="$1" ;;
    esac
    shift
done

compiler="$(command -v clang++-14 || command -v clang++ || true)"
if [ -z "$compiler" ]; then
    inkwarden_ensure_packages clang-14 libclang-rt-14-dev
    compiler="$(command -v clang++-14)"
elif ! dpkg-query -W -f='${Status}' libclang-rt-14-dev 2>/dev/null | grep -q 'ok installed'; then
    inkwarden_ensure_packages libclang-rt-14-dev
fi

# The compiler is chosen once; naming it again on a configured tree would make CMake start over.
if [ -f "$build/CMakeCache.txt" ]; then
    cmake -S "$repo/fuzz" -B "$build"
else
    cmake -S "$repo/fuzz" -B "$build" -G Ninja -DCMAKE_CXX_COMPILER="$compiler"
fi
cmake --build "$build" -j2

mkdir -p "$build/artifacts"
if ((smoke)); then
    corpus="$(mktemp -d "${TMPDIR:-/tmp}/inkwarden-fuzz-smoke.XXXXXX")"
    trap 'rm -rf "$corpus"' EXIT
else
    corpus="$build/corpus"
    mkdir -p "$corpus"
fi
cp "$seeds"/* "$corpus"/

# Qt's JSON code allocates a lot per input: a smaller quarantine and shorter allocation stacks keep
# memory flat and roughly double the speed, and use-after-free is still caught within an input.
export ASAN_OPTIONS="${ASAN_OPTIONS:-detect_leaks=1:abort_on_error=1:strict_string_checks=1:quarantine_size_mb=64:malloc_context_size=10}"
export UBSAN_OPTIONS="${UBSAN_OPTIONS:-print_stacktrace=1:halt_on_error=1}"

echo "fuzz.sh: fuzzing for ${seconds} s over $corpus" >&2
status=0
"$build/inkwarden_decode_fuzzer" \
    -max_total_time="$seconds" \
    -dict="$dict" \
    -max_len=8192 \
    -timeout=10 \
    -print_final_stats=1 \
    -artifact_prefix="$build/artifacts/" \
    ${extra[@]+"${extra[@]}"} \
    "$corpus" || status=$?

if ((status != 0)); then
    echo "fuzz.sh: the fuzzer failed (exit $status); reproduce with" >&2
    echo "  $build/inkwarden_decode_fuzzer $build/artifacts/<crash-file>" >&2
fi
exit "$status"

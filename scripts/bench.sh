#!/usr/bin/env bash
# Builds the decoding benchmark in a release tree (build/bench-release), runs it and prints the
# figures: the Google Benchmark table, then per row count the ratio of strict decoding plus fold to
# a plain JSON parse, their throughput and the peak RSS growth of each.
#
#   scripts/bench.sh                               every case, 3 repetitions, medians in the summary
#   scripts/bench.sh --benchmark_filter=/1000$     any Google Benchmark options instead of the defaults
set -euo pipefail

repo="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
build="$repo/build/bench-release"

cmake -S "$repo" -B "$build" -G Ninja \
    -DCMAKE_CXX_COMPILER=g++ \
    -DCMAKE_BUILD_TYPE=Release \
    -DINKWARDEN_BUILD_TESTS=OFF \
    -DINKWARDEN_BUILD_BENCHMARKS=ON \
    -DINKWARDEN_WERROR=OFF
cmake --build "$build" -j2 --target inkwarden_decode_benchmark

# Other work on a shared machine disturbs single runs; the summary takes the median of three.
if (($# == 0)); then
    set -- --benchmark_repetitions=3 --benchmark_display_aggregates_only=true
fi
exec "$build/bench/inkwarden_decode_benchmark" "$@"

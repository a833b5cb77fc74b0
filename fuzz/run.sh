#!/usr/bin/env bash
# Fuzzes the readers of the engine's documents for SECONDS (default 20).
# Builds its own clang build in build/fuzz, runs on a copy of the seed corpus,
# and ends non-zero when the fuzzer finds anything.
#   fuzz/run.sh [SECONDS]
set -euo pipefail
seconds=${1:-20}
cd "$(dirname "$0")/.."
root=$PWD
build=$root/build/fuzz

cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_C_COMPILER=clang \
  -DZQB_BUILD_FUZZ=ON -DZQB_BUILD_APP=OFF -DZQB_BUILD_TESTS=OFF -DZQB_BUILD_BENCH=OFF >/dev/null
cmake --build "$build" --target zqb-fuzz-documents

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/corpus" "$build/artifacts"
cp "$root"/fuzz/corpus/status/* "$work/corpus/"

echo "Fuzzing the document readers for $seconds seconds"
ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
  "$build/fuzz/zqb-fuzz-documents" -max_total_time="$seconds" -max_len=16384 -timeout=10 \
  -rss_limit_mb=2048 -print_final_stats=1 -artifact_prefix="$build/artifacts/" "$work/corpus"
echo "Fuzzing found nothing."

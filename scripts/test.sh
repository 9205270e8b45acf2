#!/usr/bin/env bash
# Sets everything up and runs all tests: the unit tests under AddressSanitizer and
# UndefinedBehaviorSanitizer together with a short run of every fuzz target (clang), then the
# unit tests of the optimised build. Ends with CTest's summary.
#   FUZZ_SECONDS=N   how long each fuzz target runs (default 60)
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/setup.sh
jobs=$(nproc)
fuzz_seconds=${FUZZ_SECONDS:-60}

echo "== sanitizer build (clang, ASan + UBSan, fuzz targets)"
cmake -S . -B build-asan -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_COMPILER=clang++-14 \
  -DKORU_SANITIZE=ON -DKORU_FUZZ=ON -DKORU_WITH_QT=OFF -DKORU_BENCH=OFF -DKORU_FUZZ_SECONDS="$fuzz_seconds" >/dev/null
cmake --build build-asan -j "$jobs"
ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
  ctest --test-dir build-asan --output-on-failure -j "$jobs"

echo "== optimised build"
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build -j "$jobs"
ctest --test-dir build --output-on-failure -j "$jobs"

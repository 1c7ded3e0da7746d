#!/usr/bin/env bash
# Builds everything with warnings as errors and runs every test (unit, ABI, C99, OpenCV
# cross-checks), then builds again with AddressSanitizer + UndefinedBehaviorSanitizer and runs
# the unit and ABI tests there. The benchmarks are built (so they keep compiling) but not run.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/deps.sh
jobs=$(nproc)

echo "== Release build, warnings as errors"
cmake -S . -B build-ci -DCMAKE_BUILD_TYPE=Release -DRVPCV_WERROR=ON -DRVPCV_BENCH=ON >/dev/null
cmake --build build-ci -j"$jobs"
(cd build-ci && ctest -j"$jobs" --output-on-failure --timeout 900)

echo "== AddressSanitizer + UndefinedBehaviorSanitizer build"
cmake -S . -B build-asan -DCMAKE_BUILD_TYPE=RelWithDebInfo -DRVPCV_SANITIZE=ON -DRVPCV_WERROR=ON \
  -DRVPCV_APPS=OFF >/dev/null
cmake --build build-asan -j"$jobs"
(cd build-asan && ASAN_OPTIONS=detect_leaks=1 ctest -j"$jobs" --output-on-failure --timeout 1800 -E '^crosscheck\.')

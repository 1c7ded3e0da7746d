#!/usr/bin/env bash
# Builds the library and the rvpcv tool, then runs the demo on the bundled photograph.
# Usage: scripts/demo.sh [OUT_DIR]   (default: rvpcv-demo)
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/deps.sh
cmake -S . -B build -DCMAKE_BUILD_TYPE=Release -DRVPCV_TESTS=OFF >/dev/null
cmake --build build -j"$(nproc)" --target rvpcv_tool
./build/apps/rvpcv version
./build/apps/rvpcv demo "${1:-rvpcv-demo}"

#!/bin/sh
# Builds the benchmarks in Release, runs them (twice: the machine is shared, so the second run
# shows how much the ratios move) and writes bench/results/<name>.md and <name>.png.
#
# usage: bench/run.sh [FILTER] [NAME]
#   FILTER  regular expression for --benchmark_filter (default: everything)
#   NAME    report name (default: the filter with non-word characters replaced, or "all")
# environment: RUNS (default 2), REPS (repetitions per run, default 5), MIN_TIME (default 0.2)
set -eu

here=$(cd "$(dirname "$0")" && pwd)
root=$(dirname "$here")
filter=${1:-.}
name=${2:-}
if [ -z "$name" ]; then
  if [ "$filter" = "." ]; then name=all; else name=$(printf '%s' "$filter" | tr -c 'A-Za-z0-9_-' '_'); fi
fi
runs=${RUNS:-2}
reps=${REPS:-5}
min_time=${MIN_TIME:-0.2}

# Tools: Google Benchmark, OpenCV, matplotlib for the system python.
need=""
for p in libbenchmark-dev libopencv-dev python3-matplotlib; do
  dpkg -s "$p" >/dev/null 2>&1 || need="$need $p"
done
if [ -n "$need" ]; then
  sudo=""
  [ "$(id -u)" -eq 0 ] || sudo=sudo
  $sudo apt-get update
  $sudo apt-get install -y $need
fi

build="$root/build-bench"
cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=Release -DRVPCV_BENCH=ON -DRVPCV_TESTS=OFF \
  -DRVPCV_APPS=OFF
cmake --build "$build" --target rvpcv_bench -j2

mkdir -p "$here/results"
jsons=""
i=1
while [ "$i" -le "$runs" ]; do
  out="$build/$name.run$i.json"
  echo "run $i of $runs -> $out"
  "$build/bench/rvpcv_bench" --benchmark_filter="$filter" --benchmark_min_time="$min_time" \
    --benchmark_repetitions="$reps" --benchmark_enable_random_interleaving=true \
    --benchmark_display_aggregates_only=true \
    --benchmark_out="$out" --benchmark_out_format=json
  jsons="$jsons $out"
  i=$((i + 1))
done

/usr/bin/python3 "$here/report.py" --md "$here/results/$name.md" --png "$here/results/$name.png" \
  --title "rvpcv vs OpenCV ($name), single-threaded" $jsons

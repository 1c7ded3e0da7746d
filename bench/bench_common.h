// Conventions every family's benchmark follows, so bench/report.py can pair the rows:
//   name = "<Operation>/<impl>/<W>x<H>"  with impl one of rvpcv, opencv, memcpy
// e.g. "AbsDiff_8u/rvpcv/1920x1080" next to "AbsDiff_8u/opencv/1920x1080". Register both with
// the same input data; the report computes ratio = OpenCV time / rvpcv time (>1: rvpcv faster).
// Each benchmark sets bytes processed so bandwidth shows up in the JSON as well.
#pragma once

#include <benchmark/benchmark.h>

#include <opencv2/core.hpp>
#include <string>

#include "rvpcv.h"

namespace rvpb {

struct Size2 {
  int width, height;
};
// The two sizes every family measures: full HD for throughput, 64x64 for call overhead.
inline const Size2 kSizes[] = {{1920, 1080}, {64, 64}};

inline std::string bench_name(const std::string& op, const char* impl, Size2 s) {
  return op + "/" + impl + "/" + std::to_string(s.width) + "x" + std::to_string(s.height);
}

// A real photograph (the bundled astronaut) resized to the requested size, as 8-bit gray or
// RGB: benchmarks run on natural image statistics, not on noise.
cv::Mat photo(Size2 s, int channels);

}  // namespace rvpb

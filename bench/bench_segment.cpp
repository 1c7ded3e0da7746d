// Flood fill, labelling and speckles next to OpenCV on thresholded real photographs.
#include <benchmark/benchmark.h>

#include <opencv2/calib3d.hpp>
#include <opencv2/imgproc.hpp>
#include <random>
#include <vector>

#include "bench_common.h"
#include "rvpcv.h"

namespace {

using rvpb::Size2;

cv::Mat thresholded(Size2 s) {
  cv::Mat bin;
  cv::threshold(rvpb::photo(s, 1), bin, 110, 255, cv::THRESH_BINARY);
  return bin;
}

// A pixel of the largest foreground region: the fill covers a large part of the image.
cv::Point largest_region_seed(const cv::Mat& bin, int conn) {
  cv::Mat lab, stats, cent;
  const int n = cv::connectedComponentsWithStats(bin, lab, stats, cent, conn, CV_32S);
  int best = 1;
  for (int i = 2; i < n; ++i)
    if (stats.at<int>(i, cv::CC_STAT_AREA) > stats.at<int>(best, cv::CC_STAT_AREA)) best = i;
  for (int y = 0; y < lab.rows; ++y)
    for (int x = 0; x < lab.cols; ++x)
      if (lab.at<int>(y, x) == best) return {x, y};
  return {0, 0};
}

// The same region is filled again and again: each pass swaps its value between 255 and 128.
void fill_rvpcv(benchmark::State& state, Size2 s, int conn) {
  cv::Mat img = thresholded(s);
  const cv::Point seed = largest_region_seed(img, conn);
  int bytes = 0;
  rvpiFloodFillGetSize({s.width, s.height}, &bytes);
  std::vector<Rvp8u> buf(static_cast<size_t>(bytes));
  RvpiConnectedComp reg{};
  auto fn = conn == 4 ? rvpiFloodFill_4Con_8u_C1IR : rvpiFloodFill_8Con_8u_C1IR;
  for (auto _ : state) {
    const Rvp8u nv = img.at<uchar>(seed) == 255 ? 128 : 255;
    if (fn(img.data, int(img.step), {s.width, s.height}, {seed.x, seed.y}, nv, &reg, buf.data()))
      state.SkipWithError("fill failed");
    benchmark::ClobberMemory();
  }
  state.counters["area"] = reg.area;
  state.SetBytesProcessed(int64_t(state.iterations()) * s.width * s.height);
}
void fill_opencv(benchmark::State& state, Size2 s, int conn) {
  cv::Mat img = thresholded(s);
  const cv::Point seed = largest_region_seed(img, conn);
  int area = 0;
  for (auto _ : state) {
    const int nv = img.at<uchar>(seed) == 255 ? 128 : 255;
    area = cv::floodFill(img, seed, cv::Scalar(nv), nullptr, cv::Scalar(), cv::Scalar(), conn);
    benchmark::DoNotOptimize(area);
  }
  state.counters["area"] = area;
  state.SetBytesProcessed(int64_t(state.iterations()) * s.width * s.height);
}

// Gray photograph, fixed range of +-24 around the seed, new value far outside the interval; the
// image is restored outside timing.
Rvp8u far_value(const cv::Mat& gray, cv::Point p) { return gray.at<uchar>(p) < 128 ? 255 : 0; }
void range_fill_rvpcv(benchmark::State& state, Size2 s) {
  const cv::Mat gray = rvpb::photo(s, 1);
  cv::Mat img = gray.clone();
  const cv::Point seed(s.width / 2, s.height / 2);
  int bytes = 0;
  rvpiFloodFillGetSize({s.width, s.height}, &bytes);
  std::vector<Rvp8u> buf(static_cast<size_t>(bytes));
  RvpiConnectedComp reg{};
  for (auto _ : state) {
    state.PauseTiming();
    gray.copyTo(img);
    state.ResumeTiming();
    rvpiFloodFill_Range8Con_8u_C1IR(img.data, int(img.step), {s.width, s.height}, {seed.x, seed.y},
                                    far_value(gray, seed), 24, 24, &reg, buf.data());
    benchmark::ClobberMemory();
  }
  state.counters["area"] = reg.area;
}
void range_fill_opencv(benchmark::State& state, Size2 s) {
  const cv::Mat gray = rvpb::photo(s, 1);
  cv::Mat img = gray.clone();
  const cv::Point seed(s.width / 2, s.height / 2);
  int area = 0;
  for (auto _ : state) {
    state.PauseTiming();
    gray.copyTo(img);
    state.ResumeTiming();
    area = cv::floodFill(img, seed, cv::Scalar(far_value(gray, seed)), nullptr, cv::Scalar(24),
                         cv::Scalar(24), 8 | cv::FLOODFILL_FIXED_RANGE);
    benchmark::DoNotOptimize(area);
  }
  state.counters["area"] = area;
}

void label_rvpcv(benchmark::State& state, Size2 s, int conn) {
  const cv::Mat bin = thresholded(s);
  cv::Mat lab(bin.size(), CV_32S);
  int bytes = 0, num = 0;
  rvpiLabelMarkersGetBufferSize_8u32s_C1R({s.width, s.height}, &bytes);
  std::vector<Rvp8u> buf(static_cast<size_t>(bytes));
  for (auto _ : state) {
    rvpiLabelMarkers_8u32s_C1R(bin.data, int(bin.step), lab.ptr<Rvp32s>(), int(lab.step),
                               {s.width, s.height}, 1, 2147483646, conn == 4 ? 1 : 0, &num,
                               buf.data());
    benchmark::DoNotOptimize(num);
  }
  state.counters["regions"] = num;
  state.SetBytesProcessed(int64_t(state.iterations()) * s.width * s.height);
}
void label_opencv(benchmark::State& state, Size2 s, int conn) {
  const cv::Mat bin = thresholded(s);
  cv::Mat lab(bin.size(), CV_32S);
  int num = 0;
  for (auto _ : state) {
    num = cv::connectedComponents(bin, lab, conn, CV_32S) - 1;
    benchmark::DoNotOptimize(num);
  }
  state.counters["regions"] = num;
  state.SetBytesProcessed(int64_t(state.iterations()) * s.width * s.height);
}

// Disparity-like 16s data: the photograph scaled by 16 with scattered noise pixels.
cv::Mat disparity(Size2 s) {
  cv::Mat d;
  rvpb::photo(s, 1).convertTo(d, CV_16S, 16.0);
  std::mt19937 rng(9);
  for (int i = 0; i < s.width * s.height / 50; ++i)
    d.at<short>(int(rng() % s.height), int(rng() % s.width)) = short(rng() % 4096);
  return d;
}

void speckles_rvpcv(benchmark::State& state, Size2 s) {
  const cv::Mat d0 = disparity(s);
  cv::Mat d = d0.clone();
  int bytes = 0;
  rvpiMarkSpecklesGetBufferSize({s.width, s.height}, rvp16s, 1, &bytes);
  std::vector<Rvp8u> buf(static_cast<size_t>(bytes));
  for (auto _ : state) {
    state.PauseTiming();
    d0.copyTo(d);
    state.ResumeTiming();
    rvpiMarkSpeckles_16s_C1IR(d.ptr<Rvp16s>(), int(d.step), {s.width, s.height}, -16, 100, 32, 1,
                              buf.data());
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(int64_t(state.iterations()) * s.width * s.height * 2);
}
void speckles_opencv(benchmark::State& state, Size2 s) {
  const cv::Mat d0 = disparity(s);
  cv::Mat d = d0.clone();
  cv::Mat work;
  for (auto _ : state) {
    state.PauseTiming();
    d0.copyTo(d);
    state.ResumeTiming();
    cv::filterSpeckles(d, -16, 100, 32, work);
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(int64_t(state.iterations()) * s.width * s.height * 2);
}

const bool registered = [] {
  for (Size2 s : rvpb::kSizes) {
    for (int conn : {4, 8}) {
      const std::string f = "FloodFill_" + std::to_string(conn) + "Con_8u";
      benchmark::RegisterBenchmark(rvpb::bench_name(f, "rvpcv", s).c_str(), fill_rvpcv, s, conn);
      benchmark::RegisterBenchmark(rvpb::bench_name(f, "opencv", s).c_str(), fill_opencv, s, conn);
      const std::string l = "LabelMarkers_" + std::to_string(conn) + "Con_8u32s";
      benchmark::RegisterBenchmark(rvpb::bench_name(l, "rvpcv", s).c_str(), label_rvpcv, s, conn);
      benchmark::RegisterBenchmark(rvpb::bench_name(l, "opencv", s).c_str(), label_opencv, s, conn);
    }
    benchmark::RegisterBenchmark(rvpb::bench_name("FloodFill_Range8Con_8u", "rvpcv", s).c_str(),
                                 range_fill_rvpcv, s);
    benchmark::RegisterBenchmark(rvpb::bench_name("FloodFill_Range8Con_8u", "opencv", s).c_str(),
                                 range_fill_opencv, s);
    benchmark::RegisterBenchmark(rvpb::bench_name("MarkSpeckles_16s", "rvpcv", s).c_str(),
                                 speckles_rvpcv, s);
    benchmark::RegisterBenchmark(rvpb::bench_name("MarkSpeckles_16s", "opencv", s).c_str(),
                                 speckles_opencv, s);
  }
  return true;
}();

}  // namespace

// Distance transforms against cv::distanceTransform on a thresholded photograph, single-threaded.
#include <benchmark/benchmark.h>

#include <opencv2/imgproc.hpp>
#include <vector>

#include "bench_common.h"
#include "rvpcv.h"

namespace {

cv::Mat binary_photo(rvpb::Size2 s) {
  cv::Mat bin;
  cv::threshold(rvpb::photo(s, 1), bin, 100, 255, cv::THRESH_BINARY);
  return bin;
}

void set_bytes(benchmark::State& state, const cv::Mat& src) {
  state.SetBytesProcessed(int64_t(state.iterations()) * src.rows * src.cols * 5);
}

void chamfer_rvpcv(benchmark::State& state, rvpb::Size2 s, int k, int norm) {
  const cv::Mat src = binary_photo(s);
  cv::Mat dst(src.size(), CV_32F);
  Rvp32f m[3];
  rvpiGetDistanceTransformMask_32f(k, norm, m);
  const RvpiSize roi{s.width, s.height};
  for (auto _ : state) {
    const RvpStatus st =
        k == 3 ? rvpiDistanceTransform_3x3_8u32f_C1R(src.data, int(src.step), dst.ptr<Rvp32f>(),
                                                     int(dst.step), roi, m)
               : rvpiDistanceTransform_5x5_8u32f_C1R(src.data, int(src.step), dst.ptr<Rvp32f>(),
                                                     int(dst.step), roi, m);
    benchmark::DoNotOptimize(st);
    benchmark::ClobberMemory();
  }
  set_bytes(state, src);
}

void chamfer_opencv(benchmark::State& state, rvpb::Size2 s, int k, int norm) {
  const cv::Mat src = binary_photo(s);
  cv::Mat dst(src.size(), CV_32F);
  const int type = norm == 0 ? cv::DIST_C : (norm == 1 ? cv::DIST_L1 : cv::DIST_L2);
  for (auto _ : state) {
    cv::distanceTransform(src, dst, type, k, CV_32F);
    benchmark::ClobberMemory();
  }
  set_bytes(state, src);
}

void true_rvpcv(benchmark::State& state, rvpb::Size2 s) {
  const cv::Mat src = binary_photo(s);
  cv::Mat dst(src.size(), CV_32F);
  const RvpiSize roi{s.width, s.height};
  int bytes = 0;
  rvpiTrueDistanceTransformGetBufferSize_8u32f_C1R(roi, &bytes);
  std::vector<Rvp8u> buffer(static_cast<size_t>(bytes));
  for (auto _ : state) {
    benchmark::DoNotOptimize(rvpiTrueDistanceTransform_8u32f_C1R(
        src.data, int(src.step), dst.ptr<Rvp32f>(), int(dst.step), roi, buffer.data()));
    benchmark::ClobberMemory();
  }
  set_bytes(state, src);
}

void true_opencv(benchmark::State& state, rvpb::Size2 s) {
  const cv::Mat src = binary_photo(s);
  cv::Mat dst(src.size(), CV_32F);
  for (auto _ : state) {
    cv::distanceTransform(src, dst, cv::DIST_L2, cv::DIST_MASK_PRECISE, CV_32F);
    benchmark::ClobberMemory();
  }
  set_bytes(state, src);
}

const int kRegistered = [] {
  const char* norms[] = {"C", "L1", "L2"};
  for (rvpb::Size2 s : rvpb::kSizes) {
    for (int k : {3, 5})
      for (int norm : {0, 1, 2}) {
        // The peer forces its 5x5 mask to 3x3 for C and L1, as the knight shortcut does here.
        const std::string op =
            std::string("DistanceTransform_") + (k == 3 ? "3x3" : "5x5") + "_8u32f_" + norms[norm];
        benchmark::RegisterBenchmark(rvpb::bench_name(op, "rvpcv", s).c_str(), chamfer_rvpcv, s, k,
                                     norm);
        benchmark::RegisterBenchmark(rvpb::bench_name(op, "opencv", s).c_str(), chamfer_opencv, s,
                                     k, norm);
      }
    benchmark::RegisterBenchmark(
        rvpb::bench_name("TrueDistanceTransform_8u32f", "rvpcv", s).c_str(), true_rvpcv, s);
    benchmark::RegisterBenchmark(
        rvpb::bench_name("TrueDistanceTransform_8u32f", "opencv", s).c_str(), true_opencv, s);
  }
  return 0;
}();

}  // namespace

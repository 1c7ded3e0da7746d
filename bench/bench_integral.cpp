// Integral tables, and (in bench_haar.cpp) one multi-scale face detection, against OpenCV.
#include <opencv2/imgproc.hpp>

#include "bench_common.h"

namespace {

void integral_rvpcv(benchmark::State& st, rvpb::Size2 s, bool squared) {
  const cv::Mat src = rvpb::photo(s, 1);
  cv::Mat sum(s.height + 1, s.width + 1, CV_32S), sq(s.height + 1, s.width + 1, CV_64F);
  const RvpiSize roi{s.width, s.height};
  for (auto _ : st) {
    if (squared)
      rvpiSqrIntegral_8u32s64f_C1R(src.ptr<Rvp8u>(), int(src.step), sum.ptr<Rvp32s>(),
                                   int(sum.step), sq.ptr<Rvp64f>(), int(sq.step), roi, 0, 0.0);
    else
      rvpiIntegral_8u32s_C1R(src.ptr<Rvp8u>(), int(src.step), sum.ptr<Rvp32s>(), int(sum.step),
                             roi, 0);
    benchmark::DoNotOptimize(sum.data);
  }
  st.SetBytesProcessed(int64_t(st.iterations()) * s.width * s.height);
}

void integral_opencv(benchmark::State& st, rvpb::Size2 s, bool squared) {
  const cv::Mat src = rvpb::photo(s, 1);
  cv::Mat sum(s.height + 1, s.width + 1, CV_32S), sq(s.height + 1, s.width + 1, CV_64F);
  for (auto _ : st) {
    if (squared)
      cv::integral(src, sum, sq, CV_32S, CV_64F);
    else
      cv::integral(src, sum, CV_32S);
    benchmark::DoNotOptimize(sum.data);
  }
  st.SetBytesProcessed(int64_t(st.iterations()) * s.width * s.height);
}

int register_all() {
  for (rvpb::Size2 s : rvpb::kSizes)
    for (bool squared : {false, true}) {
      const std::string op = squared ? "SqrIntegral_8u32s64f" : "Integral_8u32s";
      benchmark::RegisterBenchmark(rvpb::bench_name(op, "rvpcv", s).c_str(), integral_rvpcv, s,
                                   squared);
      benchmark::RegisterBenchmark(rvpb::bench_name(op, "opencv", s).c_str(), integral_opencv, s,
                                   squared);
    }
  return 0;
}
const int registered = register_all();

}  // namespace

// Pyramid levels and optical flow next to OpenCV, single-threaded, on the photograph.
#include <benchmark/benchmark.h>

#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
#include <vector>

#include "bench_common.h"
#include "rvpcv.h"

namespace {

template <bool Down>
void pyr_rvpcv(benchmark::State& state, rvpb::Size2 s, int channels, bool f32) {
  cv::Mat src = rvpb::photo(s, channels);
  if (f32) src.convertTo(src, CV_32F);
  const cv::Size out = Down ? cv::Size((s.width + 1) / 2, (s.height + 1) / 2)
                            : cv::Size(2 * s.width, 2 * s.height);
  cv::Mat dst(out, src.type());
  int size = 0;
  const RvpDataType t = f32 ? rvp32f : rvp8u;
  (Down ? rvpiPyrDownGetBufSize_Gauss5x5 : rvpiPyrUpGetBufSize_Gauss5x5)(s.width, t, channels, &size);
  std::vector<Rvp8u> buf(size);
  const RvpiSize roi{s.width, s.height};
  for (auto _ : state) {
    RvpStatus st;
    if (f32) {
      const auto fn = Down ? (channels == 1 ? rvpiPyrDown_Gauss5x5_32f_C1R : rvpiPyrDown_Gauss5x5_32f_C3R)
                           : (channels == 1 ? rvpiPyrUp_Gauss5x5_32f_C1R : rvpiPyrUp_Gauss5x5_32f_C3R);
      st = fn(src.ptr<float>(), int(src.step), dst.ptr<float>(), int(dst.step), roi, buf.data());
    } else {
      const auto fn = Down ? (channels == 1 ? rvpiPyrDown_Gauss5x5_8u_C1R : rvpiPyrDown_Gauss5x5_8u_C3R)
                           : (channels == 1 ? rvpiPyrUp_Gauss5x5_8u_C1R : rvpiPyrUp_Gauss5x5_8u_C3R);
      st = fn(src.data, int(src.step), dst.data, int(dst.step), roi, buf.data());
    }
    benchmark::DoNotOptimize(st);
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(int64_t(state.iterations()) * src.total() * src.elemSize());
}

template <bool Down>
void pyr_opencv(benchmark::State& state, rvpb::Size2 s, int channels, bool f32) {
  cv::Mat src = rvpb::photo(s, channels);
  if (f32) src.convertTo(src, CV_32F);
  cv::Mat dst;
  for (auto _ : state) {
    if (Down)
      cv::pyrDown(src, dst);
    else
      cv::pyrUp(src, dst);
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(int64_t(state.iterations()) * src.total() * src.elemSize());
}

int register_pyramids() {
  for (rvpb::Size2 s : rvpb::kSizes)
    for (int c : {1, 3})
      for (bool f32 : {false, true}) {
        const std::string t = std::string(f32 ? "32f" : "8u") + (c == 1 ? "_C1" : "_C3");
        benchmark::RegisterBenchmark(rvpb::bench_name("PyrDown_" + t, "rvpcv", s).c_str(),
                                     pyr_rvpcv<true>, s, c, f32);
        benchmark::RegisterBenchmark(rvpb::bench_name("PyrDown_" + t, "opencv", s).c_str(),
                                     pyr_opencv<true>, s, c, f32);
        benchmark::RegisterBenchmark(rvpb::bench_name("PyrUp_" + t, "rvpcv", s).c_str(),
                                     pyr_rvpcv<false>, s, c, f32);
        benchmark::RegisterBenchmark(rvpb::bench_name("PyrUp_" + t, "opencv", s).c_str(),
                                     pyr_opencv<false>, s, c, f32);
      }
  return 0;
}
const int registered_pyramids = register_pyramids();

}  // namespace

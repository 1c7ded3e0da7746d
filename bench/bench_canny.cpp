// Canny against OpenCV on the photograph: from 16-bit derivatives (cv::Canny(dx, dy, ...)) and
// from the image (cv::Canny(image, ...), whose derivatives use replicated borders like the
// bordered form here). Same thresholds on both sides; results agree pixel for pixel.
#include <memory>
#include <opencv2/imgproc.hpp>
#include <vector>

#include "bench_common.h"

namespace {

using rvpb::Size2;

void reg(const std::string& op, const char* impl, Size2 s, std::function<void()> fn,
         int64_t bytes) {
  benchmark::RegisterBenchmark(rvpb::bench_name(op, impl, s).c_str(), [fn, bytes](
                                                                          benchmark::State& st) {
    for (auto _ : st) fn();
    st.SetBytesProcessed(int64_t(st.iterations()) * bytes);
  })->Unit(benchmark::kMicrosecond);
}

constexpr float kLow = 50.5f, kHigh = 150.5f;

struct Registrar {
  Registrar() {
    for (Size2 s : rvpb::kSizes) {
      const RvpiSize roi{s.width, s.height};
      auto gray = std::make_shared<cv::Mat>(rvpb::photo(s, 1));
      auto dx = std::make_shared<cv::Mat>(), dy = std::make_shared<cv::Mat>();
      cv::Sobel(*gray, *dx, CV_16S, 1, 0, 3, 1, 0, cv::BORDER_REPLICATE);
      cv::Sobel(*gray, *dy, CV_16S, 0, 1, 3, 1, 0, cv::BORDER_REPLICATE);
      auto ours = std::make_shared<cv::Mat>(gray->size(), CV_8U);
      auto theirs = std::make_shared<cv::Mat>(gray->size(), CV_8U);
      const int64_t px = int64_t(s.width) * s.height;

      int size = 0;
      rvpiCannyGetSize(roi, &size);
      auto buf = std::make_shared<std::vector<Rvp8u>>(size);
      reg(
          "Canny_16s8u", "rvpcv", s,
          [=] {
            rvpiCanny_16s8u_C1R(dx->ptr<Rvp16s>(), int(dx->step), dy->ptr<Rvp16s>(), int(dy->step),
                                ours->ptr(), int(ours->step), roi, kLow, kHigh, buf->data());
          },
          px);
      reg(
          "Canny_16s8u", "opencv", s, [=] { cv::Canny(*dx, *dy, *theirs, kLow, kHigh, false); },
          px);

      for (int mask : {33, 55})
        for (bool l2 : {false, true}) {
          const std::string name = std::string("CannyBorder_8u_Sobel") +
                                   (mask == 33 ? "3x3" : "5x5") + (l2 ? "_L2" : "_L1");
          int bsize = 0;
          rvpiCannyBorderGetSize(roi, mask, &bsize);
          auto bbuf = std::make_shared<std::vector<Rvp8u>>(bsize);
          reg(
              name, "rvpcv", s,
              [=] {
                rvpiCannyBorder_8u_C1R(gray->ptr(), int(gray->step), ours->ptr(), int(ours->step),
                                       roi, rvpCannySobel, mask, 1, 0, kLow, kHigh,
                                       l2 ? rvpCannyNormL2 : rvpCannyNormL1, bbuf->data());
              },
              px);
          reg(
              name, "opencv", s,
              [=] { cv::Canny(*gray, *theirs, kLow, kHigh, mask == 33 ? 3 : 5, l2); }, px);
        }
    }
  }
} registrar;

}  // namespace

// Integral tables, and one multi-scale face detection on a photograph, against OpenCV.
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "../apps/cascade.h"
#include "../tests/support/reference_cascade.h"
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
      rvpiIntegral_8u32s_C1R(src.ptr<Rvp8u>(), int(src.step), sum.ptr<Rvp32s>(), int(sum.step), roi,
                             0);
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

// Face detection: the bundled photograph at its own size, the frontal-face cascade, scale step
// 1.1, three neighbours, faces from 30 pixels: the same scales and the same detections.
const char kFaceCascade[] = "/usr/share/opencv4/haarcascades/haarcascade_frontalface_default.xml";

void detect_rvpcv(benchmark::State& st) {
  const cv::Mat g = cv::imread(RVPCV_DATA_DIR "/astronaut.png", cv::IMREAD_GRAYSCALE);
  rvpcv_app::HaarCascade cascade;
  rvpcv_app::HaarDetector det;
  std::string err;
  if (g.empty() || !rvpt::read_cascade(kFaceCascade, cascade) || !det.init(cascade, &err)) {
    st.SkipWithError("cascade or photograph missing (opencv-data)");
    return;
  }
  rvpcv_app::DetectParams p;
  p.min_width = p.min_height = 30;
  size_t found = 0;
  for (auto _ : st) found = det.detect(g.data, int(g.step), g.cols, g.rows, p).size();
  st.counters["detections"] = double(found);
}

void detect_opencv(benchmark::State& st) {
  const cv::Mat g = cv::imread(RVPCV_DATA_DIR "/astronaut.png", cv::IMREAD_GRAYSCALE);
  rvpt::ReferenceCascade cc;
  if (g.empty() || !cc.available() || !cc.load(kFaceCascade)) {
    st.SkipWithError("cascade, photograph or OpenCV's object-detection module missing");
    return;
  }
  std::vector<cv::Rect> found;
  for (auto _ : st) cc.detectMultiScale(g, found, 1.1, 3, 0, cv::Size(30, 30), cv::Size());
  st.counters["detections"] = double(found.size());
}

int register_all() {
  benchmark::RegisterBenchmark("FaceDetect/rvpcv/512x512", detect_rvpcv)
      ->Unit(benchmark::kMillisecond);
  benchmark::RegisterBenchmark("FaceDetect/opencv/512x512", detect_opencv)
      ->Unit(benchmark::kMillisecond);
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

// Gaussian-mixture background model: one frame folded in per iteration, against OpenCV's
// BackgroundSubtractorMOG2::apply with the same component count, history, thresholds and
// shadow detection. Both run on the same cycle of frames built from the photograph (sensor
// noise, moving boxes and their shadows) after the same warm-up, so both models are in a
// steady state with a realistic share of foreground.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
#include <opencv2/video/background_segm.hpp>
#include <random>
#include <vector>

#include "bench_common.h"
#include "rvpcv.h"

namespace {

constexpr int kGauss = 5;
constexpr int kFrames = 8;
constexpr int kWarmup = 40;

RvpFGMModel bench_model() {
  RvpFGMModel m{};
  m.numFrames = 500;
  m.numGauss = kGauss;
  m.varInit = 15.0f;
  m.varMin = 4.0f;
  m.varMax = 75.0f;
  m.varThreshold = 16.0f;
  m.bgRatio = 0.9f;
  m.varThresholdGen = 9.0f;
  m.complexityReduction = 0.05f;
  m.shadowValue = 127;
  m.shadowDetection = 1;
  m.shadowTau = 0.5f;
  return m;
}

// The cycle of frames for one size (built once per size).
const std::vector<cv::Mat>& frames(rvpb::Size2 s) {
  static std::vector<std::pair<int, std::vector<cv::Mat>>> cache;
  for (auto& c : cache)
    if (c.first == s.width) return c.second;
  const cv::Mat photo = rvpb::photo(s, 3);
  std::mt19937 rng(17);
  std::normal_distribution<float> noise(0.0f, 2.0f);
  std::vector<cv::Mat> out;
  for (int t = 0; t < kFrames; ++t) {
    cv::Mat f = photo.clone();
    cv::Mat n(f.size(), CV_32FC3);
    for (int y = 0; y < n.rows; ++y) {
      float* r = n.ptr<float>(y);
      for (int x = 0; x < 3 * n.cols; ++x) r[x] = noise(rng);
    }
    cv::Mat ff;
    f.convertTo(ff, CV_32FC3);
    ff += n;
    ff.convertTo(f, CV_8UC3);
    for (int b = 0; b < 4; ++b) {
      const int w = s.width / 10, h = s.height / 6;
      const int x = (s.width / 5 * b + t * s.width / 40) % (s.width - w - 20);
      const int y = (s.height / 4 * b + 7) % (s.height - h - 20);
      cv::Mat shadow = f(cv::Rect(x + 12, y + 12, w, h));
      shadow.convertTo(shadow, -1, 0.6);  // darkened, same chromaticity
      f(cv::Rect(x, y, w, h)).setTo(cv::Scalar(40 * b + 30, 200 - 40 * b, 90 + 30 * b));
    }
    out.push_back(f);
  }
  cache.emplace_back(s.width, out);
  return cache.back().second;
}

cv::Ptr<cv::BackgroundSubtractorMOG2> make_mog2() {
  const RvpFGMModel m = bench_model();
  cv::Ptr<cv::BackgroundSubtractorMOG2> mog =
      cv::createBackgroundSubtractorMOG2(m.numFrames, m.varThreshold, true);
  mog->setNMixtures(kGauss);
  mog->setBackgroundRatio(m.bgRatio);
  mog->setVarThresholdGen(m.varThresholdGen);
  mog->setVarInit(m.varInit);
  mog->setVarMin(m.varMin);
  mog->setVarMax(m.varMax);
  mog->setComplexityReductionThreshold(m.complexityReduction);
  mog->setShadowValue(m.shadowValue);
  mog->setShadowThreshold(m.shadowTau);
  return mog;
}

void bm_rvpcv(benchmark::State& st, rvpb::Size2 s) {
  const std::vector<cv::Mat>& seq = frames(s);
  const RvpiSize roi{s.width, s.height};
  const RvpFGMModel model = bench_model();
  int size = 0;
  rvpiFGMMGetBufferSize_8u_C3R(roi, kGauss, &size);
  std::vector<Rvp8u> state(static_cast<size_t>(size));
  rvpiFGMMInit_8u_C3R(roi, kGauss, &model, state.data());
  cv::Mat mask(s.height, s.width, CV_8UC1);
  auto step = [&](int t) {
    const cv::Mat& f = seq[size_t(t % kFrames)];
    rvpiFGMMForeground_8u_C3R(f.ptr<Rvp8u>(), int(f.step), mask.ptr<Rvp8u>(), int(mask.step), roi,
                              state.data(), nullptr, -1.0);
  };
  int t = 0;
  for (; t < kWarmup; ++t) step(t);
  for (auto _ : st) {
    step(t++);
    benchmark::DoNotOptimize(mask.data);
  }
  st.SetBytesProcessed(int64_t(st.iterations()) * s.width * s.height * 3);
}

void bm_opencv(benchmark::State& st, rvpb::Size2 s) {
  const std::vector<cv::Mat>& seq = frames(s);
  cv::Ptr<cv::BackgroundSubtractorMOG2> mog = make_mog2();
  cv::Mat mask;
  int t = 0;
  for (; t < kWarmup; ++t) mog->apply(seq[size_t(t % kFrames)], mask, -1.0);
  for (auto _ : st) {
    mog->apply(seq[size_t(t % kFrames)], mask, -1.0);
    ++t;
    benchmark::DoNotOptimize(mask.data);
  }
  st.SetBytesProcessed(int64_t(st.iterations()) * s.width * s.height * 3);
}

// The background rendering of the same warmed-up models (the state is only read).
void bm_background_rvpcv(benchmark::State& st, rvpb::Size2 s) {
  const std::vector<cv::Mat>& seq = frames(s);
  const RvpiSize roi{s.width, s.height};
  const RvpFGMModel model = bench_model();
  int size = 0;
  rvpiFGMMGetBufferSize_8u_C3R(roi, kGauss, &size);
  std::vector<Rvp8u> state(static_cast<size_t>(size));
  rvpiFGMMInit_8u_C3R(roi, kGauss, &model, state.data());
  cv::Mat mask(s.height, s.width, CV_8UC1), bg(s.height, s.width, CV_8UC3);
  for (int t = 0; t < kWarmup; ++t) {
    const cv::Mat& f = seq[size_t(t % kFrames)];
    rvpiFGMMForeground_8u_C3R(f.ptr<Rvp8u>(), int(f.step), mask.ptr<Rvp8u>(), int(mask.step), roi,
                              state.data(), nullptr, -1.0);
  }
  for (auto _ : st) {
    rvpiFGMMBackground_8u_C3R(bg.ptr<Rvp8u>(), int(bg.step), roi, state.data());
    benchmark::DoNotOptimize(bg.data);
  }
  st.SetBytesProcessed(int64_t(st.iterations()) * s.width * s.height * 3);
}

void bm_background_opencv(benchmark::State& st, rvpb::Size2 s) {
  const std::vector<cv::Mat>& seq = frames(s);
  cv::Ptr<cv::BackgroundSubtractorMOG2> mog = make_mog2();
  cv::Mat mask, bg;
  for (int t = 0; t < kWarmup; ++t) mog->apply(seq[size_t(t % kFrames)], mask, -1.0);
  for (auto _ : st) {
    mog->getBackgroundImage(bg);
    benchmark::DoNotOptimize(bg.data);
  }
  st.SetBytesProcessed(int64_t(st.iterations()) * s.width * s.height * 3);
}

const int kRegistered = [] {
  for (rvpb::Size2 s : {rvpb::Size2{768, 576}, rvpb::Size2{1920, 1080}}) {
    benchmark::RegisterBenchmark(rvpb::bench_name("FGMMForeground_8u_C3R", "rvpcv", s).c_str(),
                                 bm_rvpcv, s)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark(rvpb::bench_name("FGMMForeground_8u_C3R", "opencv", s).c_str(),
                                 bm_opencv, s)
        ->Unit(benchmark::kMillisecond);
  }
  for (rvpb::Size2 s : {rvpb::Size2{768, 576}, rvpb::Size2{1920, 1080}}) {
    benchmark::RegisterBenchmark(rvpb::bench_name("FGMMBackground_8u_C3R", "rvpcv", s).c_str(),
                                 bm_background_rvpcv, s)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark(rvpb::bench_name("FGMMBackground_8u_C3R", "opencv", s).c_str(),
                                 bm_background_opencv, s)
        ->Unit(benchmark::kMillisecond);
  }
  return 0;
}();

}  // namespace

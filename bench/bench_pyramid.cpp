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
  const cv::Size out =
      Down ? cv::Size((s.width + 1) / 2, (s.height + 1) / 2) : cv::Size(2 * s.width, 2 * s.height);
  cv::Mat dst(out, src.type());
  int size = 0;
  const RvpDataType t = f32 ? rvp32f : rvp8u;
  (Down ? rvpiPyrDownGetBufSize_Gauss5x5 : rvpiPyrUpGetBufSize_Gauss5x5)(s.width, t, channels,
                                                                         &size);
  std::vector<Rvp8u> buf(size);
  const RvpiSize roi{s.width, s.height};
  for (auto _ : state) {
    RvpStatus st;
    if (f32) {
      const auto fn =
          Down ? (channels == 1 ? rvpiPyrDown_Gauss5x5_32f_C1R : rvpiPyrDown_Gauss5x5_32f_C3R)
               : (channels == 1 ? rvpiPyrUp_Gauss5x5_32f_C1R : rvpiPyrUp_Gauss5x5_32f_C3R);
      st = fn(src.ptr<float>(), int(src.step), dst.ptr<float>(), int(dst.step), roi, buf.data());
    } else {
      const auto fn =
          Down ? (channels == 1 ? rvpiPyrDown_Gauss5x5_8u_C1R : rvpiPyrDown_Gauss5x5_8u_C3R)
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

// ---- optical flow: 2000 points, 21x21 window, 3 levels, pyramids built inside the loop -------

#include <opencv2/video/tracking.hpp>

namespace {

struct FlowInput {
  cv::Mat a, b;
  std::vector<cv::Point2f> pts;
};

// The photograph and a copy shifted by (2.5, -1.5) pixels and rotated by half a degree.
FlowInput flow_input(rvpb::Size2 s) {
  FlowInput in;
  in.a = rvpb::photo(s, 1);
  cv::Mat rot = cv::getRotationMatrix2D(cv::Point2f(s.width / 2.0f, s.height / 2.0f), 0.5, 1.0);
  rot.at<double>(0, 2) += 2.5;
  rot.at<double>(1, 2) -= 1.5;
  cv::warpAffine(in.a, in.b, rot, in.a.size(), cv::INTER_LINEAR, cv::BORDER_REFLECT_101);
  cv::goodFeaturesToTrack(in.a, in.pts, 2000, 0.001, 5);
  return in;
}

constexpr int kWin = 21, kLevels = 3, kIters = 30;

void flow_rvpcv(benchmark::State& state, rvpb::Size2 s) {
  const FlowInput in = flow_input(s);
  RvpiPyramid *p1 = nullptr, *p2 = nullptr;
  rvpiPyramidInitAlloc({s.width, s.height}, kLevels, 2.0f, &p1);
  rvpiPyramidInitAlloc({s.width, s.height}, kLevels, 2.0f, &p2);
  std::vector<cv::Mat> l1(kLevels + 1), l2(kLevels + 1);
  l1[0] = in.a;
  l2[0] = in.b;
  for (int l = 0; l <= kLevels; ++l) {
    if (l > 0) {
      l1[l].create(p1->pRoi[l].height, p1->pRoi[l].width, CV_8U);
      l2[l].create(p1->pRoi[l].height, p1->pRoi[l].width, CV_8U);
    }
    p1->pImage[l] = l1[l].data;
    p2->pImage[l] = l2[l].data;
    p1->pStep[l] = p2->pStep[l] = int(l1[l].step);
  }
  int size = 0;
  rvpiPyrDownGetBufSize_Gauss5x5(s.width, rvp8u, 1, &size);
  std::vector<Rvp8u> buf(size);
  const int n = int(in.pts.size());
  std::vector<RvpiPoint32f> prev(n), next(n);
  for (int i = 0; i < n; ++i) prev[i] = {in.pts[i].x, in.pts[i].y};
  std::vector<Rvp8s> status(n);
  std::vector<Rvp32f> err(n);
  RvpiOptFlowPyrLKState* st = nullptr;
  rvpiOpticalFlowPyrLKInitAlloc_8u_C1R({s.width, s.height}, kWin, &st);
  for (auto _ : state) {
    for (int l = 1; l <= kLevels; ++l) {
      rvpiPyrDown_Gauss5x5_8u_C1R(l1[l - 1].data, int(l1[l - 1].step), l1[l].data, int(l1[l].step),
                                  p1->pRoi[l - 1], buf.data());
      rvpiPyrDown_Gauss5x5_8u_C1R(l2[l - 1].data, int(l2[l - 1].step), l2[l].data, int(l2[l].step),
                                  p1->pRoi[l - 1], buf.data());
    }
    rvpiOpticalFlowPyrLK_8u_C1R(p1, p2, prev.data(), next.data(), status.data(), err.data(), n,
                                kWin, kLevels, kIters, 1e-4f, st);
    benchmark::ClobberMemory();
  }
  rvpiOpticalFlowPyrLKFree_8u_C1R(st);
  rvpiPyramidFree(p1);
  rvpiPyramidFree(p2);
  state.counters["points"] = n;
}

void flow_opencv(benchmark::State& state, rvpb::Size2 s) {
  const FlowInput in = flow_input(s);
  std::vector<cv::Point2f> next;
  std::vector<uchar> status;
  std::vector<float> err;
  for (auto _ : state) {
    cv::calcOpticalFlowPyrLK(
        in.a, in.b, in.pts, next, status, err, cv::Size(kWin, kWin), kLevels,
        cv::TermCriteria(cv::TermCriteria::COUNT | cv::TermCriteria::EPS, kIters, 0.01));
    benchmark::ClobberMemory();
  }
  state.counters["points"] = double(in.pts.size());
}

int register_flow() {
  const rvpb::Size2 s{1920, 1080};
  benchmark::RegisterBenchmark(rvpb::bench_name("OpticalFlowPyrLK_8u", "rvpcv", s).c_str(),
                               flow_rvpcv, s);
  benchmark::RegisterBenchmark(rvpb::bench_name("OpticalFlowPyrLK_8u", "opencv", s).c_str(),
                               flow_opencv, s);
  return 0;
}
const int registered_flow = register_flow();

}  // namespace

// Pyramids against OpenCV: cv::pyrDown exactly (8u), cv::pyrUp exactly except its last two
// rows and columns, where it repeats the edge pixel and this library mirrors.
#include <gtest/gtest.h>

#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>
#include <random>
#include <vector>

#include "rvpcv.h"

namespace {

cv::Mat astronaut(int channels) {
  cv::Mat img = cv::imread(RVPCV_DATA_DIR "/astronaut.png", cv::IMREAD_COLOR);
  if (channels == 1) cv::cvtColor(img, img, cv::COLOR_BGR2GRAY);
  return img;
}

// Images to compare on: the photograph, odd-sized crops of it, and random noise.
std::vector<cv::Mat> inputs(int channels) {
  std::vector<cv::Mat> v;
  const cv::Mat photo = astronaut(channels);
  v.push_back(photo);
  v.push_back(photo(cv::Rect(3, 5, 201, 97)).clone());
  v.push_back(photo(cv::Rect(10, 10, 7, 5)).clone());
  std::mt19937 rng(1);
  for (cv::Size s : {cv::Size(64, 48), cv::Size(33, 17), cv::Size(5, 3), cv::Size(1920, 9)}) {
    cv::Mat m(s, CV_8UC(channels));
    cv::randu(m, 0, 256);
    v.push_back(m);
  }
  return v;
}

TEST(PyramidXcheck, PyrDown8uMatchesExactly) {
  for (int c : {1, 3})
    for (const cv::Mat& src : inputs(c)) {
      cv::Mat want;
      cv::pyrDown(src, want);
      cv::Mat got(want.size(), want.type(), cv::Scalar::all(0));
      int size = 0;
      ASSERT_EQ(rvpiPyrDownGetBufSize_Gauss5x5(src.cols, rvp8u, c, &size), 0);
      std::vector<Rvp8u> buf(size);
      const RvpiSize roi{src.cols, src.rows};
      const auto fn = c == 1 ? rvpiPyrDown_Gauss5x5_8u_C1R : rvpiPyrDown_Gauss5x5_8u_C3R;
      ASSERT_EQ(fn(src.data, int(src.step), got.data, int(got.step), roi, buf.data()), 0);
      EXPECT_EQ(cv::norm(got, want, cv::NORM_INF), 0.0) << src.cols << "x" << src.rows << " c" << c;
    }
}

TEST(PyramidXcheck, PyrUp8uMatchesExceptTheLastTwoRowsAndColumns) {
  for (int c : {1, 3})
    for (const cv::Mat& src : inputs(c)) {
      cv::Mat want;
      cv::pyrUp(src, want);
      cv::Mat got(want.size(), want.type(), cv::Scalar::all(0));
      int size = 0;
      ASSERT_EQ(rvpiPyrUpGetBufSize_Gauss5x5(src.cols, rvp8u, c, &size), 0);
      std::vector<Rvp8u> buf(size);
      const auto fn = c == 1 ? rvpiPyrUp_Gauss5x5_8u_C1R : rvpiPyrUp_Gauss5x5_8u_C3R;
      ASSERT_EQ(
          fn(src.data, int(src.step), got.data, int(got.step), {src.cols, src.rows}, buf.data()),
          0);
      const cv::Rect inner(0, 0, want.cols - 2, want.rows - 2);
      EXPECT_EQ(cv::norm(got(inner), want(inner), cv::NORM_INF), 0.0)
          << src.cols << "x" << src.rows << " c" << c;
      // The edge rows and columns do differ somewhere on the photograph (the rule differs).
      if (src.cols > 100) {
        EXPECT_GT(cv::norm(got, want, cv::NORM_INF), 0.0);
      }
    }
}

// 32f: the same filter with another order of additions; report the largest difference.
TEST(PyramidXcheck, Float32WithinRounding) {
  cv::Mat photo;
  astronaut(1).convertTo(photo, CV_32F, 1.0 / 255.0);
  cv::Mat want_down, want_up;
  cv::pyrDown(photo, want_down);
  cv::pyrUp(photo, want_up);
  cv::Mat down(want_down.size(), CV_32F), up(want_up.size(), CV_32F);
  int size = 0;
  rvpiPyrUpGetBufSize_Gauss5x5(photo.cols, rvp32f, 1, &size);
  std::vector<Rvp8u> buf(size * 2);
  const RvpiSize roi{photo.cols, photo.rows};
  ASSERT_EQ(rvpiPyrDown_Gauss5x5_32f_C1R(photo.ptr<float>(), int(photo.step), down.ptr<float>(),
                                         int(down.step), roi, buf.data()),
            0);
  ASSERT_EQ(rvpiPyrUp_Gauss5x5_32f_C1R(photo.ptr<float>(), int(photo.step), up.ptr<float>(),
                                       int(up.step), roi, buf.data()),
            0);
  const double dd = cv::norm(down, want_down, cv::NORM_INF);
  const cv::Rect inner(0, 0, up.cols - 2, up.rows - 2);
  const double du = cv::norm(up(inner), want_up(inner), cv::NORM_INF);
  std::printf("32f largest difference: pyrDown %.3g, pyrUp (inner) %.3g\n", dd, du);
  EXPECT_LT(dd, 1e-6);
  EXPECT_LT(du, 1e-6);
}

}  // namespace

// ---- optical flow against cv::calcOpticalFlowPyrLK on real frame pairs -----------------------

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <opencv2/video/tracking.hpp>

namespace {

const char* const kFlowData = "/usr/share/doc/opencv-doc/examples/data/";

bool readable(const std::string& path) { return std::ifstream(path).good(); }

struct FlowAgreement {
  double median, p95;
  int both_tracked, agree_lost, points;
};

// Tracks corners of frame a into frame b with both libraries: 21x21 window, 3 levels above the
// base, 30 iterations, convergence at |d| < 0.01 (squared: 1e-4).
FlowAgreement compare_flow(const cv::Mat& a, const cv::Mat& b) {
  std::vector<cv::Point2f> corners;
  cv::goodFeaturesToTrack(a, corners, 2000, 0.01, 5);
  const int win = 21, levels = 3, iters = 30;
  std::vector<cv::Point2f> cv_next;
  std::vector<uchar> cv_status;
  std::vector<float> cv_err;
  cv::calcOpticalFlowPyrLK(
      a, b, corners, cv_next, cv_status, cv_err, cv::Size(win, win), levels,
      cv::TermCriteria(cv::TermCriteria::COUNT | cv::TermCriteria::EPS, iters, 0.01));

  // The same pyramids with this library.
  RvpiPyramid *p1 = nullptr, *p2 = nullptr;
  EXPECT_EQ(rvpiPyramidInitAlloc({a.cols, a.rows}, levels, 2.0f, &p1), 0);
  EXPECT_EQ(rvpiPyramidInitAlloc({a.cols, a.rows}, levels, 2.0f, &p2), 0);
  std::vector<cv::Mat> l1(levels + 1), l2(levels + 1);
  l1[0] = a.clone();
  l2[0] = b.clone();
  int size = 0;
  rvpiPyrDownGetBufSize_Gauss5x5(a.cols, rvp8u, 1, &size);
  std::vector<Rvp8u> buf(size);
  for (int l = 0; l <= levels; ++l) {
    const RvpiSize s = p1->pRoi[l];
    if (l > 0) {
      l1[l].create(s.height, s.width, CV_8U);
      l2[l].create(s.height, s.width, CV_8U);
      const RvpiSize up = p1->pRoi[l - 1];
      rvpiPyrDown_Gauss5x5_8u_C1R(l1[l - 1].data, int(l1[l - 1].step), l1[l].data, int(l1[l].step),
                                  up, buf.data());
      rvpiPyrDown_Gauss5x5_8u_C1R(l2[l - 1].data, int(l2[l - 1].step), l2[l].data, int(l2[l].step),
                                  up, buf.data());
    }
    p1->pImage[l] = l1[l].data;
    p2->pImage[l] = l2[l].data;
    p1->pStep[l] = int(l1[l].step);
    p2->pStep[l] = int(l2[l].step);
  }
  const int n = int(corners.size());
  std::vector<RvpiPoint32f> prev(n), next(n);
  for (int i = 0; i < n; ++i) prev[i] = {corners[i].x, corners[i].y};
  std::vector<Rvp8s> status(n);
  std::vector<Rvp32f> err(n);
  RvpiOptFlowPyrLKState* st = nullptr;
  EXPECT_EQ(rvpiOpticalFlowPyrLKInitAlloc_8u_C1R({a.cols, a.rows}, win, &st), 0);
  EXPECT_EQ(rvpiOpticalFlowPyrLK_8u_C1R(p1, p2, prev.data(), next.data(), status.data(), err.data(),
                                        n, win, levels, iters, 1e-4f, st),
            0);
  rvpiOpticalFlowPyrLKFree_8u_C1R(st);
  rvpiPyramidFree(p1);
  rvpiPyramidFree(p2);

  FlowAgreement r{0, 0, 0, 0, n};
  std::vector<double> d;
  for (int i = 0; i < n; ++i) {
    const bool ours = status[i] == 0 && err[i] >= 0.0f;
    // OpenCV also drops points whose window leaves the image; count agreement on "tracked".
    const bool theirs = cv_status[i] != 0;
    if (ours == theirs) ++r.agree_lost;
    if (ours && theirs) {
      d.push_back(std::hypot(next[i].x - cv_next[i].x, next[i].y - cv_next[i].y));
    }
  }
  r.both_tracked = int(d.size());
  std::sort(d.begin(), d.end());
  if (!d.empty()) {
    r.median = d[d.size() / 2];
    r.p95 = d[std::min(d.size() - 1, size_t(d.size() * 0.95))];
  }
  return r;
}

TEST(FlowXcheck, RealFramePairsAgreeWithOpenCV) {
  const std::string pairs[][2] = {{"rubberwhale1.png", "rubberwhale2.png"},
                                  {"basketball1.png", "basketball2.png"}};
  int ran = 0;
  for (const auto& p : pairs) {
    const std::string fa = std::string(kFlowData) + p[0], fb = std::string(kFlowData) + p[1];
    if (!readable(fa) || !readable(fb)) continue;
    const cv::Mat a = cv::imread(fa, cv::IMREAD_GRAYSCALE),
                  b = cv::imread(fb, cv::IMREAD_GRAYSCALE);
    ASSERT_FALSE(a.empty());
    const FlowAgreement r = compare_flow(a, b);
    std::printf(
        "%s: %d points, both tracked %d, tracked/lost agreement %.1f%%, endpoint "
        "difference median %.4f px, 95th percentile %.4f px\n",
        p[0].c_str(), r.points, r.both_tracked, 100.0 * r.agree_lost / r.points, r.median, r.p95);
    EXPECT_GT(r.both_tracked, r.points * 8 / 10);
    EXPECT_LT(r.median, 0.05);
    EXPECT_LT(r.p95, 0.5);
    ++ran;
  }
  if (ran == 0) GTEST_SKIP() << "frame pairs from opencv-doc not installed under " << kFlowData;
}

}  // namespace

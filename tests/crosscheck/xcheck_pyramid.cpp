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
      ASSERT_EQ(fn(src.data, int(src.step), got.data, int(got.step), {src.cols, src.rows},
                   buf.data()), 0);
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
                                         int(down.step), roi, buf.data()), 0);
  ASSERT_EQ(rvpiPyrUp_Gauss5x5_32f_C1R(photo.ptr<float>(), int(photo.step), up.ptr<float>(),
                                       int(up.step), roi, buf.data()), 0);
  const double dd = cv::norm(down, want_down, cv::NORM_INF);
  const cv::Rect inner(0, 0, up.cols - 2, up.rows - 2);
  const double du = cv::norm(up(inner), want_up(inner), cv::NORM_INF);
  std::printf("32f largest difference: pyrDown %.3g, pyrUp (inner) %.3g\n", dd, du);
  EXPECT_LT(dd, 1e-6);
  EXPECT_LT(du, 1e-6);
}

}  // namespace

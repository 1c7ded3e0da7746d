// Integral tables against cv::integral, element for element, on noise and on a photograph.
#include <gtest/gtest.h>

#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>
#include <random>
#include <vector>

#include "rvpcv.h"

namespace {

std::vector<cv::Mat> inputs() {
  std::vector<cv::Mat> v;
  std::mt19937 rng(4);
  for (cv::Size s : {cv::Size(1, 1), cv::Size(7, 3), cv::Size(33, 17), cv::Size(257, 61)}) {
    cv::Mat m(s, CV_8U);
    for (int y = 0; y < s.height; ++y)
      for (int x = 0; x < s.width; ++x) m.at<uchar>(y, x) = uchar(rng());
    v.push_back(m);
  }
  cv::Mat photo = cv::imread(RVPCV_DATA_DIR "/astronaut.png", cv::IMREAD_GRAYSCALE);
  if (!photo.empty()) {
    v.push_back(photo);
    cv::Mat big;
    cv::resize(photo, big, cv::Size(1920, 1080), 0, 0, cv::INTER_CUBIC);
    v.push_back(big);
  }
  return v;
}

template <class T>
int64_t count_diff(const cv::Mat& a, const cv::Mat& b) {
  int64_t n = 0;
  for (int y = 0; y < a.rows; ++y)
    for (int x = 0; x < a.cols; ++x) n += a.at<T>(y, x) != b.at<T>(y, x);
  return n;
}

TEST(IntegralVsOpenCV, SumAndSquaredTablesIdentical) {
  for (const cv::Mat& src : inputs()) {
    const RvpiSize roi{src.cols, src.rows};
    const cv::Size ts(src.cols + 1, src.rows + 1);
    cv::Mat cv_sum, cv_sq, cv_sumf, cv_sqf;
    cv::integral(src, cv_sum, cv_sq, CV_32S, CV_64F);
    cv::integral(src, cv_sumf, cv_sqf, CV_32F, CV_64F);

    cv::Mat sum(ts, CV_32S), sq(ts, CV_64F), sumf(ts, CV_32F), sqf(ts, CV_64F), plain(ts, CV_32S);
    ASSERT_EQ(
        rvpiSqrIntegral_8u32s64f_C1R(src.ptr<Rvp8u>(), int(src.step), sum.ptr<Rvp32s>(),
                                     int(sum.step), sq.ptr<Rvp64f>(), int(sq.step), roi, 0, 0.0),
        0);
    ASSERT_EQ(rvpiSqrIntegral_8u32f64f_C1R(src.ptr<Rvp8u>(), int(src.step), sumf.ptr<Rvp32f>(),
                                           int(sumf.step), sqf.ptr<Rvp64f>(), int(sqf.step), roi,
                                           0.0f, 0.0),
              0);
    ASSERT_EQ(rvpiIntegral_8u32s_C1R(src.ptr<Rvp8u>(), int(src.step), plain.ptr<Rvp32s>(),
                                     int(plain.step), roi, 0),
              0);
    EXPECT_EQ(count_diff<int>(sum, cv_sum), 0) << src.size;
    EXPECT_EQ(count_diff<int>(plain, cv_sum), 0) << src.size;
    EXPECT_EQ(count_diff<double>(sq, cv_sq), 0) << src.size;
    EXPECT_EQ(count_diff<float>(sumf, cv_sumf), 0) << src.size;
    EXPECT_EQ(count_diff<double>(sqf, cv_sqf), 0) << src.size;
  }
}

// The two tilted layouts differ by half a pixel: OpenCV's cones end in one pixel, this library's
// in a pixel pair. Two single-pixel cones side by side are one pair cone plus the pair cone one
// row higher, so T[R][x] + T[R-1][x] = cv(x, R-1) + cv(x+1, R-1) holds exactly for every row and
// for columns 0..w-1; it determines each of those elements from OpenCV's table.
TEST(IntegralVsOpenCV, TiltedTableFollowsFromOpenCVTable) {
  for (const cv::Mat& src : inputs()) {
    if (src.cols > 600) continue;  // the photograph at its own size is enough
    const RvpiSize roi{src.cols, src.rows};
    cv::Mat cv_sum, cv_sq, cv_tilt;
    cv::integral(src, cv_sum, cv_sq, cv_tilt, CV_32S, CV_64F);
    cv::Mat tilt(src.rows + 2, src.cols + 2, CV_32S);
    ASSERT_EQ(rvpiTiltedIntegral_8u32s_C1R(src.ptr<Rvp8u>(), int(src.step), tilt.ptr<Rvp32s>(),
                                           int(tilt.step), roi, 0),
              0);
    int64_t bad = 0;
    for (int r = 1; r < tilt.rows; ++r)
      for (int x = 0; x < src.cols; ++x) {
        const int64_t expect = int64_t{cv_tilt.at<int>(r - 1, x)} + cv_tilt.at<int>(r - 1, x + 1) -
                               tilt.at<int>(r - 1, x);
        bad += tilt.at<int>(r, x) != expect;
      }
    EXPECT_EQ(bad, 0) << src.size;
  }
}

}  // namespace

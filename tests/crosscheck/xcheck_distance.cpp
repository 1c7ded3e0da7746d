// Distance transforms against cv::distanceTransform on thresholded real photographs.
//
// Integer-valued weights (chessboard, city block) and the exact Euclidean transform must agree
// bit for bit. With the fractional L2 chamfer weights the peer accumulates in its own fixed
// arithmetic, so its values differ from single-precision sums in the last few units; those
// are compared within a tolerance and the identical fraction is printed.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>
#include <string>
#include <vector>

#include "rvpcv.h"

namespace {

struct Binary {
  std::string name;
  cv::Mat img;  // CV_8U, zero pixels are the features
};

std::vector<Binary> thresholded_photos() {
  std::vector<Binary> out;
  std::vector<std::string> paths = {RVPCV_DATA_DIR "/astronaut.png"};
  for (const char* extra : {"/usr/share/doc/opencv-doc/examples/data/HappyFish.jpg",
                            "/usr/share/doc/opencv-doc/examples/data/aero3.jpg",
                            "/usr/share/doc/opencv-doc/examples/data/LinuxLogo.jpg"})
    paths.push_back(extra);
  for (const std::string& p : paths) {
    cv::Mat gray = cv::imread(p, cv::IMREAD_GRAYSCALE);
    if (gray.empty()) continue;
    for (int t : {40, 100, 200}) {
      cv::Mat bin;
      cv::threshold(gray, bin, t, 255, cv::THRESH_BINARY);
      out.push_back({p.substr(p.rfind('/') + 1) + " > " + std::to_string(t), bin});
    }
    // An odd-sized crop at an odd column: steps and region offsets as a caller would have them.
    cv::Mat bin;
    cv::threshold(gray, bin, 128, 255, cv::THRESH_BINARY);
    out.push_back(
        {p.substr(p.rfind('/') + 1) + " crop", bin(cv::Rect(3, 1, bin.cols - 10, bin.rows - 5))});
  }
  return out;
}

struct Diff {
  double max_abs = 0;
  size_t identical = 0, total = 0;
};

Diff compare(const cv::Mat& ours, const cv::Mat& theirs) {
  Diff d;
  cv::Mat a, b;
  ours.convertTo(a, CV_64F);
  theirs.convertTo(b, CV_64F);
  for (int y = 0; y < a.rows; ++y)
    for (int x = 0; x < a.cols; ++x) {
      const double u = a.at<double>(y, x), v = b.at<double>(y, x);
      d.max_abs = std::max(d.max_abs, std::abs(u - v));
      d.identical += u == v;
      ++d.total;
    }
  return d;
}

bool has_zero(const cv::Mat& bin) { return cv::countNonZero(bin) < bin.rows * bin.cols; }

TEST(DistanceXcheck, ChamferMatchesPeerForEveryNormAndMask) {
  const auto photos = thresholded_photos();
  ASSERT_FALSE(photos.empty());
  for (const Binary& b : photos) {
    if (!has_zero(b.img)) continue;  // the peer has no defined value without features
    const RvpiSize roi{b.img.cols, b.img.rows};
    for (int k : {3, 5})
      for (int norm = 0; norm < 3; ++norm) {
        Rvp32f m[3];
        ASSERT_EQ(rvpiGetDistanceTransformMask_32f(k, norm, m), 0);
        cv::Mat ours(b.img.size(), CV_32F), theirs;
        const RvpStatus st =
            k == 3 ? rvpiDistanceTransform_3x3_8u32f_C1R(b.img.data, int(b.img.step),
                                                         ours.ptr<Rvp32f>(), int(ours.step), roi, m)
                   : rvpiDistanceTransform_5x5_8u32f_C1R(
                         b.img.data, int(b.img.step), ours.ptr<Rvp32f>(), int(ours.step), roi, m);
        ASSERT_EQ(st, 0);
        const int type = norm == 0 ? cv::DIST_C : (norm == 1 ? cv::DIST_L1 : cv::DIST_L2);
        cv::distanceTransform(b.img, theirs, type, k, CV_32F);
        const Diff d = compare(ours, theirs);
        std::printf("  %-22s mask %d norm %d: %.4f%% identical, max |diff| %.3g\n", b.name.c_str(),
                    k, norm, 100.0 * d.identical / d.total, d.max_abs);
        if (norm < 2) {
          EXPECT_EQ(d.identical, d.total) << b.name << " mask " << k << " norm " << norm;
        } else {
          // Relative error of the peer's fixed-point weights over distances of a few hundred.
          cv::Mat rel;
          cv::Mat diff = cv::abs(ours - theirs);
          cv::divide(diff, theirs + 1.0f, rel);
          double worst;
          cv::minMaxLoc(rel, nullptr, &worst);
          EXPECT_LT(worst, 2e-5) << b.name << " mask " << k;
        }
      }
  }
}

TEST(DistanceXcheck, IntegerOutputsMatchPeerCityBlock) {
  // The peer's 8-bit output exists for the city-block 3x3 transform; ours with weights 1, 2
  // (saturating at 255) must agree, and the 16-bit output must agree with its float result.
  for (const Binary& b : thresholded_photos()) {
    if (!has_zero(b.img)) continue;
    const RvpiSize roi{b.img.cols, b.img.rows};
    const Rvp32s m[2] = {1, 2};
    cv::Mat ours8(b.img.size(), CV_8U), ours16(b.img.size(), CV_16U), theirs8, theirsf;
    ASSERT_EQ(rvpiDistanceTransform_3x3_8u_C1R(b.img.data, int(b.img.step), ours8.data,
                                               int(ours8.step), roi, m),
              0);
    ASSERT_EQ(rvpiDistanceTransform_3x3_8u16u_C1R(b.img.data, int(b.img.step), ours16.ptr<Rvp16u>(),
                                                  int(ours16.step), roi, m),
              0);
    cv::distanceTransform(b.img, theirs8, cv::DIST_L1, 3, CV_8U);
    cv::distanceTransform(b.img, theirsf, cv::DIST_L1, 3, CV_32F);
    EXPECT_EQ(compare(ours8, theirs8).max_abs, 0.0) << b.name;
    EXPECT_EQ(compare(ours16, theirsf).max_abs, 0.0) << b.name;
  }
}

TEST(DistanceXcheck, TrueTransformMatchesPeerPreciseMask) {
  for (const Binary& b : thresholded_photos()) {
    if (!has_zero(b.img)) continue;
    const RvpiSize roi{b.img.cols, b.img.rows};
    int bytes = 0;
    ASSERT_EQ(rvpiTrueDistanceTransformGetBufferSize_8u32f_C1R(roi, &bytes), 0);
    std::vector<Rvp8u> buffer(static_cast<size_t>(bytes));
    cv::Mat ours(b.img.size(), CV_32F), theirs;
    ASSERT_EQ(rvpiTrueDistanceTransform_8u32f_C1R(b.img.data, int(b.img.step), ours.ptr<Rvp32f>(),
                                                  int(ours.step), roi, buffer.data()),
              0);
    cv::distanceTransform(b.img, theirs, cv::DIST_L2, cv::DIST_MASK_PRECISE, CV_32F);
    const Diff d = compare(ours, theirs);
    std::printf("  %-22s precise: %.4f%% identical, max |diff| %.3g\n", b.name.c_str(),
                100.0 * d.identical / d.total, d.max_abs);
    EXPECT_EQ(d.identical, d.total) << b.name;
  }
}

}  // namespace

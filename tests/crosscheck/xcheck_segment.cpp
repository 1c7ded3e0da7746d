// Flood fill, labelling and speckles against OpenCV on real photographs.
#include <gtest/gtest.h>

#include <cstring>
#include <map>
#include <opencv2/calib3d.hpp>
#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>
#include <random>
#include <string>
#include <vector>

#include "rvpcv.h"

namespace {

std::vector<cv::Mat> photos(int flags) {
  std::vector<cv::Mat> out;
  const std::string extra = "/usr/share/doc/opencv-doc/examples/data/";
  for (const std::string& p : {std::string(RVPCV_DATA_DIR "/astronaut.png"), extra + "fruits.jpg",
                               extra + "baboon.jpg", extra + "building.jpg"}) {
    cv::Mat m = cv::imread(p, flags);
    if (!m.empty()) out.push_back(m);
  }
  return out;
}

std::vector<uint8_t> buffer(int bytes) { return std::vector<uint8_t>(size_t(bytes) + 1); }

// Seeds spread over the image (deterministic).
std::vector<cv::Point> seeds(const cv::Mat& m, int n) {
  std::mt19937 rng(7);
  std::vector<cv::Point> s;
  for (int i = 0; i < n; ++i) s.emplace_back(int(rng() % m.cols), int(rng() % m.rows));
  return s;
}

struct Tally {
  int same = 0, total = 0, large = 0;  // large: fills of 1000 pixels or more
};

// Range (fixed) and plain fills on gray and colour photographs: image, area and box identical.
TEST(SegmentXcheck, FloodFillFixedRangeMatchesOpenCV) {
  Tally t;
  for (int flags : {cv::IMREAD_GRAYSCALE, cv::IMREAD_COLOR})
    for (const cv::Mat& photo : photos(flags))
      for (int conn : {4, 8})
        for (int delta : {0, 3, 12})
          for (cv::Point s : seeds(photo, 6)) {
            cv::Mat a = photo.clone(), b = photo.clone();
            const RvpiSize roi{a.cols, a.rows};
            int bytes = 0;
            rvpiFloodFillGetSize(roi, &bytes);
            auto buf = buffer(bytes);
            RvpiConnectedComp reg{};
            RvpStatus st;
            // newVal far from the seed value, outside the interval: a pixel already holding
            // newVal inside the interval is a documented point where the rules may differ.
            const cv::Vec3b sv =
                a.channels() == 1 ? cv::Vec3b(a.at<uchar>(s), 0, 0) : a.at<cv::Vec3b>(s);
            Rvp8u nv[3];
            for (int c = 0; c < 3; ++c) nv[c] = sv[c] < 128 ? 255 : 0;
            const Rvp8u d[3] = {Rvp8u(delta), Rvp8u(delta), Rvp8u(delta)};
            if (a.channels() == 1) {
              auto fn = delta == 0
                            ? (conn == 4 ? rvpiFloodFill_4Con_8u_C1IR : rvpiFloodFill_8Con_8u_C1IR)
                            : nullptr;
              if (fn)
                st = fn(a.data, int(a.step), roi, {s.x, s.y}, nv[0], &reg, buf.data() + 1);
              else
                st = (conn == 4 ? rvpiFloodFill_Range4Con_8u_C1IR
                                : rvpiFloodFill_Range8Con_8u_C1IR)(
                    a.data, int(a.step), roi, {s.x, s.y}, nv[0], d[0], d[0], &reg, buf.data() + 1);
            } else {
              st = (conn == 4 ? rvpiFloodFill_Range4Con_8u_C3IR : rvpiFloodFill_Range8Con_8u_C3IR)(
                  a.data, int(a.step), roi, {s.x, s.y}, nv, d, d, &reg, buf.data() + 1);
            }
            ASSERT_EQ(st, 0);
            cv::Rect rect;
            const int area =
                cv::floodFill(b, s, cv::Scalar(nv[0], nv[1], nv[2]), &rect, cv::Scalar::all(delta),
                              cv::Scalar::all(delta), conn | cv::FLOODFILL_FIXED_RANGE);
            const bool same = cv::norm(a, b, cv::NORM_INF) == 0 && reg.area == area &&
                              reg.rect.x == rect.x && reg.rect.y == rect.y &&
                              reg.rect.width == rect.width && reg.rect.height == rect.height;
            t.same += same;
            t.large += area >= 1000;
            ++t.total;
            EXPECT_TRUE(same) << "conn " << conn << " delta " << delta << " seed " << s;
          }
  ASSERT_GT(t.total, 0);
  std::printf("fixed-range fills identical: %d / %d (%d of 1000+ pixels)\n", t.same, t.total,
              t.large);
}

// Floating range: each pixel is compared with the filled neighbour that reaches it. Symmetric
// deltas, gray and colour.
TEST(SegmentXcheck, FloodFillFloatingRangeMatchesOpenCV) {
  Tally t;
  for (int flags : {cv::IMREAD_GRAYSCALE, cv::IMREAD_COLOR})
    for (const cv::Mat& photo : photos(flags))
      for (int conn : {4, 8})
        for (int delta : {1, 2, 4})
          for (cv::Point s : seeds(photo, 5)) {
            cv::Mat a = photo.clone(), b = photo.clone();
            const RvpiSize roi{a.cols, a.rows};
            int bytes = 0;
            rvpiFloodFillGetSize_Grad(roi, &bytes);
            auto buf = buffer(bytes);
            RvpiConnectedComp reg{};
            const Rvp8u nv[3] = {1, 2, 3};
            const Rvp8u d[3] = {Rvp8u(delta), Rvp8u(delta), Rvp8u(delta)};
            RvpStatus st;
            if (a.channels() == 1)
              st = (conn == 4 ? rvpiFloodFill_Grad4Con_8u_C1IR : rvpiFloodFill_Grad8Con_8u_C1IR)(
                  a.data, int(a.step), roi, {s.x, s.y}, nv[0], d[0], d[0], &reg, buf.data() + 1);
            else
              st = (conn == 4 ? rvpiFloodFill_Grad4Con_8u_C3IR : rvpiFloodFill_Grad8Con_8u_C3IR)(
                  a.data, int(a.step), roi, {s.x, s.y}, nv, d, d, &reg, buf.data() + 1);
            ASSERT_EQ(st, 0);
            cv::Rect rect;
            const int area = cv::floodFill(b, s, cv::Scalar(nv[0], nv[1], nv[2]), &rect,
                                           cv::Scalar::all(delta), cv::Scalar::all(delta), conn);
            const bool same = cv::norm(a, b, cv::NORM_INF) == 0 && reg.area == area &&
                              reg.rect.x == rect.x && reg.rect.width == rect.width;
            t.same += same;
            t.large += area >= 1000;
            ++t.total;
            if (!same)
              std::printf(
                  "floating range differs: conn %d delta %d ch %d seed (%d,%d) area %g vs %d\n",
                  conn, delta, a.channels(), s.x, s.y, reg.area, area);
          }
  ASSERT_GT(t.total, 0);
  std::printf("floating-range fills identical: %d / %d (%d of 1000+ pixels)\n", t.same, t.total,
              t.large);
  EXPECT_EQ(t.same, t.total);
}

// Single-precision photographs (integral gray levels, so interval ends are exact in both
// libraries): plain, fixed-range and floating-range fills.
TEST(SegmentXcheck, FloodFill32fMatchesOpenCV) {
  Tally t;
  for (const cv::Mat& gray : photos(cv::IMREAD_GRAYSCALE))
    for (int conn : {4, 8})
      for (int mode = 0; mode < 3; ++mode)
        for (cv::Point s : seeds(gray, 5)) {
          cv::Mat a, b;
          gray.convertTo(a, CV_32F);
          b = a.clone();
          const RvpiSize roi{a.cols, a.rows};
          int bytes = 0;
          if (mode == 2)
            rvpiFloodFillGetSize_Grad(roi, &bytes);
          else
            rvpiFloodFillGetSize(roi, &bytes);
          auto buf = buffer(bytes);
          RvpiConnectedComp reg{};
          const Rvp32f nv = -1.0f, d = mode == 1 ? 6.0f : 2.0f;
          Rvp32f* px = a.ptr<Rvp32f>();
          const int step = int(a.step);
          const RvpiPoint sp{s.x, s.y};
          RvpStatus st;
          int flags = conn;
          if (mode == 0) {
            st = (conn == 4 ? rvpiFloodFill_4Con_32f_C1IR : rvpiFloodFill_8Con_32f_C1IR)(
                px, step, roi, sp, nv, &reg, buf.data() + 1);
          } else if (mode == 1) {
            st = (conn == 4 ? rvpiFloodFill_Range4Con_32f_C1IR : rvpiFloodFill_Range8Con_32f_C1IR)(
                px, step, roi, sp, nv, d, d, &reg, buf.data() + 1);
            flags |= cv::FLOODFILL_FIXED_RANGE;
          } else {
            st = (conn == 4 ? rvpiFloodFill_Grad4Con_32f_C1IR : rvpiFloodFill_Grad8Con_32f_C1IR)(
                px, step, roi, sp, nv, d, d, &reg, buf.data() + 1);
          }
          ASSERT_EQ(st, 0);
          const double cd = mode == 0 ? 0.0 : d;
          const int area =
              cv::floodFill(b, s, cv::Scalar(nv), nullptr, cv::Scalar(cd), cv::Scalar(cd), flags);
          const bool same = cv::norm(a, b, cv::NORM_INF) == 0 && reg.area == area;
          t.same += same;
          t.large += area >= 1000;
          ++t.total;
          EXPECT_TRUE(same) << "mode " << mode << " conn " << conn << " seed " << s;
        }
  ASSERT_GT(t.total, 0);
  std::printf("32f fills identical: %d / %d (%d of 1000+ pixels)\n", t.same, t.total, t.large);
}

// Labelling of thresholded photographs: the same partition as OpenCV's, and after renumbering
// OpenCV's labels by the raster order of each region's first pixel, the same labels.
TEST(SegmentXcheck, LabelMarkersMatchConnectedComponents) {
  int checked = 0;
  for (const cv::Mat& gray : photos(cv::IMREAD_GRAYSCALE))
    for (int thr : {60, 128, 200})
      for (int conn : {4, 8}) {
        cv::Mat bin;
        cv::threshold(gray, bin, thr, 255, cv::THRESH_BINARY);
        cv::Mat cvlab;
        const int n = cv::connectedComponents(bin, cvlab, conn, CV_32S) - 1;
        cv::Mat ours(bin.size(), CV_32S);
        int bytes = 0, num = -1;
        rvpiLabelMarkersGetBufferSize_8u32s_C1R({bin.cols, bin.rows}, &bytes);
        auto buf = buffer(bytes);
        ASSERT_EQ(rvpiLabelMarkers_8u32s_C1R(bin.data, int(bin.step), ours.ptr<Rvp32s>(),
                                             int(ours.step), {bin.cols, bin.rows}, 1, 2147483646,
                                             conn == 4 ? 1 : 0, &num, buf.data() + 1),
                  0);
        EXPECT_EQ(num, n);
        std::map<int, int> renumber;  // OpenCV label -> raster-order label
        bool same = true;
        for (int y = 0; y < bin.rows && same; ++y)
          for (int x = 0; x < bin.cols; ++x) {
            const int c = cvlab.at<int>(y, x);
            if (c == 0) {
              same = same && ours.at<int>(y, x) == 0;
              continue;
            }
            auto it = renumber.find(c);
            if (it == renumber.end()) it = renumber.emplace(c, int(renumber.size()) + 1).first;
            same = same && ours.at<int>(y, x) == it->second;
          }
        EXPECT_TRUE(same) << "threshold " << thr << " connectivity " << conn;
        ++checked;
      }
  EXPECT_GT(checked, 0);
}

// Speckle filtering of disparity-like 16s data (smooth surfaces plus noise blobs).
TEST(SegmentXcheck, MarkSpecklesMatchesFilterSpeckles) {
  int checked = 0;
  std::mt19937 rng(5);
  for (const cv::Mat& gray : photos(cv::IMREAD_GRAYSCALE)) {
    cv::Mat disp;
    gray.convertTo(disp, CV_16S, 16.0);
    for (int i = 0; i < disp.rows * disp.cols / 50; ++i)
      disp.at<short>(int(rng() % disp.rows), int(rng() % disp.cols)) = short(rng() % 4096);
    for (int i = 0; i < disp.rows * disp.cols / 200; ++i)
      disp.at<short>(int(rng() % disp.rows), int(rng() % disp.cols)) = -16;
    for (int max_size : {0, 1, 20, 200})
      for (int max_diff : {0, 16, 48}) {
        cv::Mat a = disp.clone(), b = disp.clone();
        int bytes = 0;
        rvpiMarkSpecklesGetBufferSize({a.cols, a.rows}, rvp16s, 1, &bytes);
        auto buf = buffer(bytes);
        ASSERT_EQ(rvpiMarkSpeckles_16s_C1IR(a.ptr<Rvp16s>(), int(a.step), {a.cols, a.rows}, -16,
                                            max_size, Rvp16s(max_diff), 1, buf.data() + 1),
                  0);
        cv::filterSpeckles(b, -16, max_size, max_diff);
        EXPECT_EQ(cv::norm(a, b, cv::NORM_INF), 0) << "size " << max_size << " diff " << max_diff;
        ++checked;
      }
  }
  EXPECT_GT(checked, 0);
}

}  // namespace

// Dilation and erosion against OpenCV on the photograph: rectangular, cross-shaped and
// elliptic structuring elements, replicated border, 8u and 32f, one and three channels. The
// results must be identical.
#include <gtest/gtest.h>

#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>
#include <vector>

#include "rvpcv.h"

namespace {

cv::Mat photo(int flags) { return cv::imread(RVPCV_DATA_DIR "/astronaut.png", flags); }

// Dilates or erodes `src` (8u or 32f, 1 or 3 channels) with the Border interface and the
// element's centre as anchor.
cv::Mat ours(const cv::Mat& src, const cv::Mat& element, bool dilate) {
  const RvpiSize roi{src.cols, src.rows};
  const RvpiSize msize{element.cols, element.rows};
  const bool f32 = src.depth() == CV_32F;
  const int ch = src.channels();
  int spec = 0, bufsize = 0;
  RvpStatus st;
  if (f32)
    st = ch == 1 ? rvpiMorphologyBorderGetSize_32f_C1R(roi.width, msize, &spec, &bufsize)
                 : rvpiMorphologyBorderGetSize_32f_C3R(roi.width, msize, &spec, &bufsize);
  else
    st = ch == 1 ? rvpiMorphologyBorderGetSize_8u_C1R(roi.width, msize, &spec, &bufsize)
                 : rvpiMorphologyBorderGetSize_8u_C3R(roi.width, msize, &spec, &bufsize);
  EXPECT_EQ(st, 0);
  std::vector<Rvp8u> state_mem(spec), buffer(bufsize);
  auto* state = reinterpret_cast<RvpiMorphState*>(state_mem.data());
  const Rvp8u* mask = element.ptr<Rvp8u>();
  cv::Mat out(src.size(), src.type());
  const int ss = int(src.step), ds = int(out.step);
  if (f32) {
    const Rvp32f value[3] = {};
    const Rvp32f* s = src.ptr<Rvp32f>();
    Rvp32f* d = out.ptr<Rvp32f>();
    if (ch == 1) {
      EXPECT_EQ(rvpiMorphologyBorderInit_32f_C1R(roi.width, mask, msize, state, buffer.data()), 0);
      st = dilate ? rvpiDilateBorder_32f_C1R(s, ss, d, ds, roi, 1, 0.f, state, buffer.data())
                  : rvpiErodeBorder_32f_C1R(s, ss, d, ds, roi, 1, 0.f, state, buffer.data());
    } else {
      EXPECT_EQ(rvpiMorphologyBorderInit_32f_C3R(roi.width, mask, msize, state, buffer.data()), 0);
      st = dilate ? rvpiDilateBorder_32f_C3R(s, ss, d, ds, roi, 1, value, state, buffer.data())
                  : rvpiErodeBorder_32f_C3R(s, ss, d, ds, roi, 1, value, state, buffer.data());
    }
  } else {
    const Rvp8u value[3] = {};
    const Rvp8u* s = src.ptr<Rvp8u>();
    Rvp8u* d = out.ptr<Rvp8u>();
    if (ch == 1) {
      EXPECT_EQ(rvpiMorphologyBorderInit_8u_C1R(roi.width, mask, msize, state, buffer.data()), 0);
      st = dilate ? rvpiDilateBorder_8u_C1R(s, ss, d, ds, roi, 1, 0, state, buffer.data())
                  : rvpiErodeBorder_8u_C1R(s, ss, d, ds, roi, 1, 0, state, buffer.data());
    } else {
      EXPECT_EQ(rvpiMorphologyBorderInit_8u_C3R(roi.width, mask, msize, state, buffer.data()), 0);
      st = dilate ? rvpiDilateBorder_8u_C3R(s, ss, d, ds, roi, 1, value, state, buffer.data())
                  : rvpiErodeBorder_8u_C3R(s, ss, d, ds, roi, 1, value, state, buffer.data());
    }
  }
  EXPECT_EQ(st, 0);
  return out;
}

TEST(CrossMorph, DilateErodeMatchOpenCV) {
  const cv::Mat gray8 = photo(cv::IMREAD_GRAYSCALE), color8 = photo(cv::IMREAD_COLOR);
  ASSERT_FALSE(gray8.empty());
  cv::Mat gray32, color32;
  gray8.convertTo(gray32, CV_32F, 1.0 / 7.0, -3.0);
  color8.convertTo(color32, CV_32F, 1.0 / 3.0);
  const cv::Mat images[] = {gray8, color8, gray32, color32};
  struct Element {
    int shape;
    cv::Size size;
  } elements[] = {{cv::MORPH_RECT, {3, 3}},    {cv::MORPH_RECT, {5, 5}},
                  {cv::MORPH_RECT, {15, 15}},  {cv::MORPH_RECT, {7, 2}},
                  {cv::MORPH_CROSS, {3, 3}},   {cv::MORPH_CROSS, {5, 7}},
                  {cv::MORPH_ELLIPSE, {5, 5}}, {cv::MORPH_ELLIPSE, {9, 7}}};
  int compared = 0;
  for (const cv::Mat& img : images) {
    for (const Element& e : elements) {
      const cv::Mat element = cv::getStructuringElement(e.shape, e.size);
      // Our Border interface anchors at ((w-1)/2, (h-1)/2); give OpenCV the same point.
      const cv::Point anchor((e.size.width - 1) / 2, (e.size.height - 1) / 2);
      for (bool dilate : {true, false}) {
        cv::Mat want;
        if (dilate)
          cv::dilate(img, want, element, anchor, 1, cv::BORDER_REPLICATE);
        else
          cv::erode(img, want, element, anchor, 1, cv::BORDER_REPLICATE);
        const cv::Mat got = ours(img, element, dilate);
        cv::Mat diff;
        cv::compare(got, want, diff, cv::CMP_NE);
        EXPECT_EQ(cv::countNonZero(diff.reshape(1)), 0)
            << (dilate ? "dilate " : "erode ") << e.size << " shape " << e.shape << " type "
            << img.type();
        ++compared;
      }
    }
  }
  EXPECT_EQ(compared, 64);
}

}  // namespace

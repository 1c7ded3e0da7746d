// Filters against OpenCV on the photograph. Every border is made explicit the same way on both
// sides: the image is padded by OpenCV's copyMakeBorder with the matching rule, OpenCV filters
// the padded image and the interior is compared with this library's result on the unpadded
// region with the corresponding selector.
#include <gtest/gtest.h>

#include <cstdio>
#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>
#include <vector>

#include "rvpcv.h"

namespace {

cv::Mat photo_gray() {
  cv::Mat m = cv::imread(RVPCV_DATA_DIR "/astronaut.png", cv::IMREAD_GRAYSCALE);
  return m;
}

cv::Mat photo_color() { return cv::imread(RVPCV_DATA_DIR "/astronaut.png", cv::IMREAD_COLOR); }

struct BorderPair {
  int ours;
  int theirs;
};
const BorderPair kBorders[] = {{0, cv::BORDER_CONSTANT},
                               {1, cv::BORDER_REPLICATE},
                               {2, cv::BORDER_WRAP},
                               {3, cv::BORDER_REFLECT_101},
                               {4, cv::BORDER_REFLECT}};

// OpenCV's result of `op` on `src` with the border made explicit by padding.
template <class Op>
cv::Mat padded(const cv::Mat& src, int pad, int border, double value, Op op) {
  cv::Mat big, out;
  cv::copyMakeBorder(src, big, pad, pad, pad, pad, border, cv::Scalar::all(value));
  op(big, out);
  return out(cv::Rect(pad, pad, src.cols, src.rows)).clone();
}

// Counts equal elements; returns max |difference|.
double compare(const cv::Mat& a, const cv::Mat& b, double* identical) {
  cv::Mat da, db;
  a.reshape(1).convertTo(da, CV_64F);
  b.reshape(1).convertTo(db, CV_64F);
  cv::Mat diff = cv::abs(da - db);
  double mx = 0;
  cv::minMaxLoc(diff, nullptr, &mx);
  *identical = double(cv::countNonZero(diff == 0)) / double(diff.total());
  return mx;
}

using Deriv8u16s = RvpStatus (*)(const Rvp8u*, int, Rvp16s*, int, RvpiSize, int, RvpiBorderType,
                                 Rvp8u, Rvp8u*);
using DerivSize = RvpStatus (*)(RvpiSize, int, int*);

cv::Mat run_8u16s(Deriv8u16s fn, DerivSize sz, const cv::Mat& src, int mask, int border,
                  Rvp8u value) {
  cv::Mat dst(src.size(), CV_16S);
  int size = 0;
  EXPECT_EQ(sz({src.cols, src.rows}, mask, &size), 0);
  std::vector<Rvp8u> buf(size);
  EXPECT_EQ(fn(src.ptr<Rvp8u>(), int(src.step), dst.ptr<Rvp16s>(), int(dst.step),
               {src.cols, src.rows}, mask, border, value, buf.data()),
            0);
  return dst;
}

}  // namespace

TEST(FilterXcheck, SobelScharrLaplacianExact8u16s) {
  const cv::Mat g = photo_gray();
  if (g.empty()) GTEST_SKIP() << "photograph not found";
  const cv::Mat src = g(cv::Rect(0, 0, 301, 203)).clone();
  struct Case {
    const char* name;
    Deriv8u16s fn;
    DerivSize sz;
    int dx, dy, sign;  // OpenCV derivative orders and the sign relating the two
  };
  const Case cases[] = {
      {"NegVert", rvpiFilterSobelNegVertBorder_8u16s_C1R,
       rvpiFilterSobelNegVertGetBufferSize_8u16s_C1R, 1, 0, -1},
      {"HorizSecond", rvpiFilterSobelHorizSecondBorder_8u16s_C1R,
       rvpiFilterSobelHorizSecondGetBufferSize_8u16s_C1R, 0, 2, 1},
      {"VertSecond", rvpiFilterSobelVertSecondBorder_8u16s_C1R,
       rvpiFilterSobelVertSecondGetBufferSize_8u16s_C1R, 2, 0, 1},
      {"Cross", rvpiFilterSobelCrossBorder_8u16s_C1R, rvpiFilterSobelCrossGetBufferSize_8u16s_C1R,
       1, 1, -1},
  };
  for (const BorderPair& b : kBorders)
    for (int mask : {33, 55}) {
      const int k = mask == 33 ? 3 : 5;
      const Rvp8u value = 37;
      for (const Case& c : cases) {
        cv::Mat theirs = padded(src, 4, b.theirs, value, [&](const cv::Mat& in, cv::Mat& out) {
          cv::Sobel(in, out, CV_16S, c.dx, c.dy, k, c.sign);
        });
        cv::Mat ours = run_8u16s(c.fn, c.sz, src, mask, b.ours, value);
        double same = 0;
        EXPECT_EQ(compare(ours, theirs, &same), 0) << c.name << " border " << b.ours << " " << k;
      }
      cv::Mat lap = padded(src, 4, b.theirs, value, [&](const cv::Mat& in, cv::Mat& out) {
        cv::Laplacian(in, out, CV_16S, k);
      });
      double same = 0;
      EXPECT_EQ(
          compare(run_8u16s(rvpiFilterLaplacianBorder_8u16s_C1R,
                            rvpiFilterLaplacianGetBufferSize_8u16s_C1R, src, mask, b.ours, value),
                  lap, &same),
          0)
          << "Laplacian border " << b.ours << " " << k;
    }
  // Scharr (3x3 only).
  for (const BorderPair& b : kBorders)
    for (int dx : {0, 1}) {
      cv::Mat theirs = padded(src, 2, b.theirs, 9, [&](const cv::Mat& in, cv::Mat& out) {
        cv::Scharr(in, out, CV_16S, dx, 1 - dx);
      });
      cv::Mat ours(src.size(), CV_16S);
      int size = 0;
      std::vector<Rvp8u> buf;
      if (dx) {
        ASSERT_EQ(rvpiFilterScharrVertGetBufferSize_8u16s_C1R({src.cols, src.rows}, &size), 0);
        buf.resize(size);
        ASSERT_EQ(rvpiFilterScharrVertBorder_8u16s_C1R(src.ptr(), int(src.step), ours.ptr<Rvp16s>(),
                                                       int(ours.step), {src.cols, src.rows}, b.ours,
                                                       9, buf.data()),
                  0);
      } else {
        ASSERT_EQ(rvpiFilterScharrHorizGetBufferSize_8u16s_C1R({src.cols, src.rows}, &size), 0);
        buf.resize(size);
        ASSERT_EQ(rvpiFilterScharrHorizBorder_8u16s_C1R(
                      src.ptr(), int(src.step), ours.ptr<Rvp16s>(), int(ours.step),
                      {src.cols, src.rows}, b.ours, 9, buf.data()),
                  0);
      }
      double same = 0;
      EXPECT_EQ(compare(ours, theirs, &same), 0) << "Scharr dx " << dx << " border " << b.ours;
    }
}

// On integer-valued floats every sum is exact in single precision, so the 32f forms must agree
// exactly whatever the summation order; on general floats they agree to rounding.
TEST(FilterXcheck, Float32Forms) {
  const cv::Mat g = photo_gray();
  if (g.empty()) GTEST_SKIP() << "photograph not found";
  cv::Mat f;
  g(cv::Rect(40, 30, 257, 190)).convertTo(f, CV_32F);
  cv::Mat noisy = f.clone();
  cv::randu(noisy, -1000.0, 1000.0);
  for (int mask : {33, 55}) {
    const int k = mask == 33 ? 3 : 5;
    int size = 0;
    ASSERT_EQ(rvpiFilterSobelNegVertGetBufferSize_32f_C1R({f.cols, f.rows}, mask, &size), 0);
    std::vector<Rvp8u> buf(size);
    for (const cv::Mat* in : {&f, &noisy}) {
      cv::Mat ours(in->size(), CV_32F);
      ASSERT_EQ(rvpiFilterSobelNegVertBorder_32f_C1R(in->ptr<float>(), int(in->step),
                                                     ours.ptr<float>(), int(ours.step),
                                                     {in->cols, in->rows}, mask, 3, 0, buf.data()),
                0);
      cv::Mat theirs;
      cv::Sobel(*in, theirs, CV_32F, 1, 0, k, -1, 0, cv::BORDER_REFLECT_101);
      double same = 0;
      const double mx = compare(ours, theirs, &same);
      if (in == &f)
        EXPECT_EQ(mx, 0) << k;
      else
        EXPECT_LE(mx, 0.05) << k;  // |values| up to ~96000 (ulp 0.0078): a few ulps of order
      std::printf("[ info ] Sobel 32f %dx%d %s: %.4f identical, max |diff| %g\n", k, k,
                  in == &f ? "photo" : "random", same, mx);
    }
    // Lowpass against the normalised box filter.
    ASSERT_EQ(rvpiFilterLowpassGetBufferSize_32f_C1R({f.cols, f.rows}, mask, &size), 0);
    buf.resize(size);
    cv::Mat ours(f.size(), CV_32F), theirs;
    ASSERT_EQ(
        rvpiFilterLowpassBorder_32f_C1R(f.ptr<float>(), int(f.step), ours.ptr<float>(),
                                        int(ours.step), {f.cols, f.rows}, mask, 1, 0, buf.data()),
        0);
    cv::blur(f, theirs, cv::Size(k, k), cv::Point(-1, -1), cv::BORDER_REPLICATE);
    double same = 0;
    const double mx = compare(ours, theirs, &same);
    EXPECT_LE(mx, 255 * 4e-7) << k;  // reciprocal vs division: one rounding apart
    std::printf("[ info ] Lowpass 32f %dx%d: %.4f identical, max |diff| %g\n", k, k, same, mx);
  }
}

TEST(FilterXcheck, Lowpass8uAndDerivative8u8s) {
  const cv::Mat g = photo_gray();
  if (g.empty()) GTEST_SKIP() << "photograph not found";
  const cv::Mat src = g(cv::Rect(100, 50, 300, 200)).clone();
  for (int mask : {33, 55}) {
    const int k = mask == 33 ? 3 : 5;
    int size = 0;
    ASSERT_EQ(rvpiFilterLowpassGetBufferSize_8u_C1R({src.cols, src.rows}, mask, &size), 0);
    std::vector<Rvp8u> buf(size);
    cv::Mat ours(src.size(), CV_8U), theirs;
    ASSERT_EQ(rvpiFilterLowpassBorder_8u_C1R(src.ptr(), int(src.step), ours.ptr(), int(ours.step),
                                             {src.cols, src.rows}, mask, 4, 0, buf.data()),
              0);
    cv::boxFilter(src, theirs, CV_8U, cv::Size(k, k), cv::Point(-1, -1), true, cv::BORDER_REFLECT);
    double same = 0;
    const double mx = compare(ours, theirs, &same);
    EXPECT_EQ(mx, 0) << k;  // sums are integers; the mean never lies on a .5 tie
    std::printf("[ info ] Lowpass 8u %dx%d: %.4f identical\n", k, k, same);

    // 8u8s: OpenCV's scaled Sobel with the same divisor, rounded and saturated the same way.
    ASSERT_EQ(rvpiFilterSobelNegVertGetBufferSize_8u8s_C1R({src.cols, src.rows}, mask, &size), 0);
    buf.resize(size);
    cv::Mat o8(src.size(), CV_8S), t16;
    ASSERT_EQ(rvpiFilterSobelNegVertBorder_8u8s_C1R(src.ptr(), int(src.step), o8.ptr<Rvp8s>(),
                                                    int(o8.step), {src.cols, src.rows}, mask, 1, 0,
                                                    buf.data()),
              0);
    cv::Sobel(src, t16, CV_32F, 1, 0, k, -1.0 / (k == 3 ? 8 : 96), 0, cv::BORDER_REPLICATE);
    cv::Mat t8;
    t16.convertTo(t8, CV_8S);
    const double mx8 = compare(o8, t8, &same);
    EXPECT_LE(mx8, 1) << k;  // double vs single reciprocal may flip a tie
    std::printf("[ info ] Sobel 8u8s %dx%d: %.4f identical, max |diff| %g\n", k, k, same, mx8);
  }
}

// Gaussian: OpenCV builds its kernel from sigma with its own fixed-point (8u) arithmetic, so
// 8u results may differ by a unit here and there; 32f agrees to rounding.
TEST(FilterXcheck, GaussianBounded) {
  const cv::Mat g = photo_gray(), c = photo_color();
  if (g.empty() || c.empty()) GTEST_SKIP() << "photograph not found";
  for (int ch : {1, 3})
    for (int K : {3, 5, 11}) {
      const cv::Mat src = (ch == 1 ? g : c)(cv::Rect(10, 20, 321, 177)).clone();
      const float sigma = 0.3f * ((K - 1) * 0.5f - 1) + 0.8f;
      for (int depth : {CV_8U, CV_32F}) {
        cv::Mat in;
        src.convertTo(in, depth);
        const RvpiSize roi{in.cols, in.rows};
        const int type = depth == CV_8U ? rvp8u : rvp32f;
        int ss = 0, bs = 0;
        ASSERT_EQ(rvpiFilterGaussianGetBufferSize(roi, K, type, ch, &ss, &bs), 0);
        std::vector<Rvp8u> spec(ss), buf(bs);
        ASSERT_EQ(rvpiFilterGaussianInit(roi, K, sigma, 1, type, ch, spec.data(), buf.data()), 0);
        cv::Mat ours(in.size(), in.type()), theirs;
        RvpStatus st;
        if (depth == CV_8U) {
          const Rvp8u v3[3] = {0, 0, 0};
          st = ch == 1 ? rvpiFilterGaussianBorder_8u_C1R(in.ptr(), int(in.step), ours.ptr(),
                                                         int(ours.step), roi, 0, spec.data(),
                                                         buf.data())
                       : rvpiFilterGaussianBorder_8u_C3R(in.ptr(), int(in.step), ours.ptr(),
                                                         int(ours.step), roi, v3, spec.data(),
                                                         buf.data());
        } else {
          const Rvp32f v3[3] = {0, 0, 0};
          st = ch == 1 ? rvpiFilterGaussianBorder_32f_C1R(in.ptr<float>(), int(in.step),
                                                          ours.ptr<float>(), int(ours.step), roi, 0,
                                                          spec.data(), buf.data())
                       : rvpiFilterGaussianBorder_32f_C3R(in.ptr<float>(), int(in.step),
                                                          ours.ptr<float>(), int(ours.step), roi,
                                                          v3, spec.data(), buf.data());
        }
        ASSERT_EQ(st, 0);
        cv::GaussianBlur(in, theirs, cv::Size(K, K), sigma, sigma, cv::BORDER_REPLICATE);
        double same = 0;
        const double mx = compare(ours, theirs, &same);
        if (depth == CV_8U)
          EXPECT_LE(mx, 1) << "K " << K << " ch " << ch;
        else
          EXPECT_LE(mx, 1e-3) << "K " << K << " ch " << ch;
        std::printf("[ info ] Gaussian %s C%d K%d: %.4f identical, max |diff| %g\n",
                    depth == CV_8U ? "8u" : "32f", ch, K, same, mx);
      }
    }
}

// The pipeline halves reproduce a separable filter: rows filtered by the row pipeline (border
// replicate horizontally, the caller replicating the edge rows vertically) and combined by the
// column pipeline equal sepFilter2D.
TEST(FilterXcheck, PipelineEqualsSepFilter2D) {
  const cv::Mat g = photo_gray();
  if (g.empty()) GTEST_SKIP() << "photograph not found";
  cv::Mat f;
  g(cv::Rect(0, 0, 200, 120)).convertTo(f, CV_32F);
  const int W = f.cols, H = f.rows, K = 5, a = 2;
  const float kx[K] = {0.0625f, 0.25f, 0.375f, 0.25f, 0.0625f};
  const float ky[K] = {-1, -2, 0, 2, 1};
  int rs = 0, cs = 0;
  ASSERT_EQ(rvpiFilterRowBorderPipelineGetBufferSize_32f_C1R({W, H}, K, &rs), 0);
  ASSERT_EQ(rvpiFilterColumnPipelineGetBufferSize_32f_C1R({W, H}, K, &cs), 0);
  std::vector<Rvp8u> rb(rs), cb(cs);
  std::vector<std::vector<float>> inter(H, std::vector<float>(W));
  std::vector<float*> rows(H);
  for (int y = 0; y < H; ++y) rows[y] = inter[y].data();
  ASSERT_EQ(rvpiFilterRowBorderPipeline_32f_C1R(f.ptr<float>(), int(f.step), rows.data(), {W, H},
                                                kx, K, a, 1, 0, rb.data()),
            0);
  std::vector<const float*> col(H + K - 1);
  for (int i = 0; i < H + K - 1; ++i) col[i] = rows[std::clamp(i - a, 0, H - 1)];
  cv::Mat ours(f.size(), CV_32F), theirs;
  ASSERT_EQ(rvpiFilterColumnPipeline_32f_C1R(col.data(), ours.ptr<float>(), int(ours.step), {W, H},
                                             ky, K, cb.data()),
            0);
  cv::sepFilter2D(f, theirs, CV_32F, cv::Mat(1, K, CV_32F, (void*)kx),
                  cv::Mat(K, 1, CV_32F, (void*)ky), cv::Point(-1, -1), 0, cv::BORDER_REPLICATE);
  double same = 0;
  const double mx = compare(ours, theirs, &same);
  EXPECT_LE(mx, 1e-3);
  std::printf("[ info ] pipeline 32f vs sepFilter2D: %.4f identical, max |diff| %g\n", same, mx);
}

// Gaussian filter: kernel construction, the documented integer rounding for every type and
// channel count, borders, specification checks; the one-dimensional Sobel factor generator.
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

#include "rvpcv.h"
#include "support/filter_ref.h"
#include "support/guarded.h"
#include "support/images.h"

namespace {

std::vector<float> ref_weights(int K, float sigma) {
  std::vector<float> w(K);
  float s = 0;
  const int r = K / 2;
  for (int i = -r; i <= r; ++i) {
    const float q = float(i * i) / (2.0f * sigma * sigma);
    w[i + r] = float(std::exp(-double(q)));
    s += w[i + r];
  }
  for (float& v : w) v /= s;
  return w;
}

template <class S>
int type_code() {
  if (std::is_same_v<S, Rvp8u>) return rvp8u;
  if (std::is_same_v<S, Rvp16u>) return rvp16u;
  if (std::is_same_v<S, Rvp16s>) return rvp16s;
  return rvp32f;
}

template <class S>
RvpStatus run(const S* src, int ss, S* dst, int ds, RvpiSize roi, int ch, const S* value,
              const Rvp8u* spec, Rvp8u* buf) {
  if constexpr (std::is_same_v<S, Rvp8u>)
    return ch == 1 ? rvpiFilterGaussianBorder_8u_C1R(src, ss, dst, ds, roi, value[0], spec, buf)
                   : rvpiFilterGaussianBorder_8u_C3R(src, ss, dst, ds, roi, value, spec, buf);
  else if constexpr (std::is_same_v<S, Rvp16u>)
    return ch == 1 ? rvpiFilterGaussianBorder_16u_C1R(src, ss, dst, ds, roi, value[0], spec, buf)
                   : rvpiFilterGaussianBorder_16u_C3R(src, ss, dst, ds, roi, value, spec, buf);
  else if constexpr (std::is_same_v<S, Rvp16s>)
    return ch == 1 ? rvpiFilterGaussianBorder_16s_C1R(src, ss, dst, ds, roi, value[0], spec, buf)
                   : rvpiFilterGaussianBorder_16s_C3R(src, ss, dst, ds, roi, value, spec, buf);
  else
    return ch == 1 ? rvpiFilterGaussianBorder_32f_C1R(src, ss, dst, ds, roi, value[0], spec, buf)
                   : rvpiFilterGaussianBorder_32f_C3R(src, ss, dst, ds, roi, value, spec, buf);
}

template <class S>
double reference(const rvpt::RefBorder<S>& b, int y, int x, int c, int K, float sigma) {
  const std::vector<float> w = ref_weights(K, sigma);
  const int r = K / 2;
  if constexpr (std::is_same_v<S, float>) {
    float acc = 0;
    for (int ky = 0; ky < K; ++ky) {
      float row = 0;
      for (int kx = 0; kx < K; ++kx) {
        const float p = w[kx] * b.at(y + ky - r, x + kx - r, c);
        row = kx == 0 ? p : row + p;
      }
      const float p = w[ky] * row;
      acc = ky == 0 ? p : acc + p;
    }
    return acc;
  } else {
    const int shift = std::is_same_v<S, Rvp8u> ? 12 : 15;
    std::vector<int64_t> t(K);
    for (int i = 0; i < K; ++i) t[i] = int64_t(w[i] * float(1 << shift) + 0.5f);
    int64_t acc = 0;
    for (int ky = 0; ky < K; ++ky) {
      int64_t row = 0;
      for (int kx = 0; kx < K; ++kx) row += t[kx] * b.at(y + ky - r, x + kx - r, c);
      acc += t[ky] * ((row + 128) >> 8);
    }
    const int rest = 2 * shift - 8;
    const int64_t v = (acc + (int64_t(1) << (rest - 1))) >> rest;
    return double(
        std::clamp<int64_t>(v, std::numeric_limits<S>::lowest(), std::numeric_limits<S>::max()));
  }
}

template <class S>
void gauss_case(std::mt19937& rng) {
  for (int ch : {1, 3})
    for (int K : {3, 5, 7, 11, 15})
      for (int border : {0, 1, 6, 0x10 | 1, 0x40 | 0, 0xA0 | 1})
        for (RvpiSize roi : {RvpiSize{1, 1}, RvpiSize{5, 2}, RvpiSize{19, 7}, RvpiSize{40, 3}}) {
          const float sigma = std::uniform_real_distribution<float>(0.3f, 4.0f)(rng);
          int spec_size = 0, buf_size = 0;
          ASSERT_EQ(
              rvpiFilterGaussianGetBufferSize(roi, K, type_code<S>(), ch, &spec_size, &buf_size),
              0);
          ASSERT_EQ(spec_size, 32 * K + 32);
          // Exactly the queried sizes at odd addresses, ends on guard pages.
          rvpt::GuardedBuffer spec(size_t(spec_size) + 1, rvpt::Guard::After);
          rvpt::GuardedBuffer buf(size_t(buf_size) + 3, rvpt::Guard::After);
          ASSERT_EQ(rvpiFilterGaussianInit(roi, K, sigma, border, type_code<S>(), ch,
                                           spec.data() + 1, buf.data() + 3),
                    0);
          const int pad = 8;  // at least K / 2 for the in-memory borders
          rvpt::TestImage<S> img(roi.width + 2 * pad, roi.height + 2 * pad, ch, 0, 1);
          for (int y = 0; y < img.height(); ++y)
            for (int x = 0; x < img.width(); ++x)
              for (int c = 0; c < ch; ++c) {
                S v;
                if constexpr (std::is_same_v<S, float>)
                  v = std::uniform_real_distribution<float>(-100, 100)(rng);
                else
                  v = rvpt::random_value<S>(rng);
                img.set(x, y, v, c);
              }
          const S value[3] = {S(7), S(100), S(3)};
          const S* origin = reinterpret_cast<const S*>(
              reinterpret_cast<const uint8_t*>(img.row(pad)) + pad * ch * sizeof(S));
          rvpt::GuardedImage<S> dst(roi.width, roi.height, ch, roi.width * ch * int(sizeof(S)),
                                    rvpt::Guard::After);
          ASSERT_EQ(run<S>(origin, img.step(), dst.ptr(), dst.step(), roi, ch, value,
                           spec.data() + 1, buf.data() + 3),
                    0);
          rvpt::RefBorder<S> b{origin, img.step(), roi.width, roi.height, ch, border, value};
          for (int y = 0; y < roi.height; ++y)
            for (int x = 0; x < roi.width; ++x)
              for (int c = 0; c < ch; ++c) {
                const double want = reference<S>(b, y, x, c, K, sigma);
                ASSERT_EQ(double(dst.row(y)[x * ch + c]), want)
                    << "K " << K << " ch " << ch << " border " << border << " at " << x << "," << y;
              }
        }
}

}  // namespace

TEST(Gaussian, EveryTypeMatchesDocumentedArithmetic) {
  std::mt19937 rng(17);
  gauss_case<Rvp8u>(rng);
  gauss_case<Rvp16u>(rng);
  gauss_case<Rvp16s>(rng);
  gauss_case<Rvp32f>(rng);
}

TEST(Gaussian, SingleCallEqualsSpecificationPath) {
  std::mt19937 rng(5);
  const RvpiSize roi{33, 9};
  std::vector<float> src(33 * 9), a(33 * 9), b(33 * 9);
  for (auto& v : src) v = std::uniform_real_distribution<float>(-5, 5)(rng);
  for (int K : {3, 9}) {
    int ss = 0, bs = 0, bs1 = 0;
    ASSERT_EQ(rvpiFilterGaussianGetBufferSize(roi, K, rvp32f, 1, &ss, &bs), 0);
    ASSERT_EQ(rvpiFilterGaussGetBufferSize_32f_C1R(roi, K, &bs1), 0);
    std::vector<Rvp8u> spec(ss), buf(bs), buf1(bs1);
    ASSERT_EQ(rvpiFilterGaussianInit(roi, K, 1.7f, 1, rvp32f, 1, spec.data(), buf.data()), 0);
    ASSERT_EQ(rvpiFilterGaussianBorder_32f_C1R(src.data(), 132, a.data(), 132, roi, 0.0f,
                                               spec.data(), buf.data()),
              0);
    ASSERT_EQ(rvpiFilterGaussBorder_32f_C1R(src.data(), 132, b.data(), 132, roi, K, 1.7f, 1, 0.0f,
                                            buf1.data()),
              0);
    for (size_t i = 0; i < a.size(); ++i) ASSERT_TRUE(rvpt::same_bits(a[i], b[i]));
  }
}

TEST(Gaussian, ChecksInOrderAndWriteNothing) {
  int ss = 5, bs = 6;
  const RvpiSize roi{8, 8};
  EXPECT_EQ(rvpiFilterGaussianGetBufferSize(roi, 3, 1, 1, nullptr, &bs), rvpStsNullPtrErr);
  EXPECT_EQ(rvpiFilterGaussianGetBufferSize(roi, 3, 1, 1, &ss, nullptr), rvpStsNullPtrErr);
  EXPECT_EQ(rvpiFilterGaussianGetBufferSize({0, 8}, 4, 2, 2, &ss, &bs), rvpStsSizeErr);
  for (int K : {1, 2, 4, -3})
    EXPECT_EQ(rvpiFilterGaussianGetBufferSize(roi, K, 2, 2, &ss, &bs), rvpStsBadArgErr);
  EXPECT_EQ(rvpiFilterGaussianGetBufferSize(roi, 3, 3, 2, &ss, &bs), rvpStsDataTypeErr);
  EXPECT_EQ(rvpiFilterGaussianGetBufferSize(roi, 3, 13, 2, &ss, &bs), rvpStsChannelErr);
  EXPECT_EQ(ss, 5);
  EXPECT_EQ(bs, 6);

  std::vector<Rvp8u> spec(4096, 0xCD), buf(8192, 0xCD);
  const auto spec0 = spec;
  auto init = [&](RvpiSize r, int K, float s, int border, int type, int ch) {
    return rvpiFilterGaussianInit(r, K, s, border, type, ch, spec.data(), buf.data());
  };
  EXPECT_EQ(rvpiFilterGaussianInit(roi, 3, 1, 1, 1, 1, nullptr, buf.data()), rvpStsNullPtrErr);
  EXPECT_EQ(rvpiFilterGaussianInit(roi, 3, 1, 1, 1, 1, spec.data(), nullptr), rvpStsNullPtrErr);
  EXPECT_EQ(init({8, 0}, 4, 0, 9, 2, 2), rvpStsSizeErr);
  EXPECT_EQ(init(roi, 4, 0, 9, 2, 2), rvpStsBadArgErr);
  EXPECT_EQ(init(roi, 3, 0, 9, 2, 2), rvpStsDataTypeErr);
  EXPECT_EQ(init(roi, 3, 0, 9, 1, 2), rvpStsChannelErr);
  EXPECT_EQ(init(roi, 3, 0, 9, 1, 3), rvpStsBadArgErr);
  EXPECT_EQ(init(roi, 3, std::nanf(""), 9, 1, 3), rvpStsBadArgErr);
  for (int border : {2, 3, 4, 5, 0x100, 0x12})
    EXPECT_EQ(init(roi, 3, 1, border, 1, 3), rvpStsBorderErr) << border;
  EXPECT_EQ(spec, spec0);

  // Processing: wrong data type or channel count or no specification at all: -17.
  ASSERT_EQ(init(roi, 5, 1, 0xF1, rvp8u, 1), 0);
  std::vector<Rvp8u> s8(64, 1), d8(64, 9);
  std::vector<Rvp16u> s16(64, 1), d16(64, 9);
  EXPECT_EQ(rvpiFilterGaussianBorder_16u_C1R(s16.data(), 16, d16.data(), 16, roi, 0, spec.data(),
                                             buf.data()),
            rvpStsContextMatchErr);
  const Rvp8u v3[3] = {0, 0, 0};
  EXPECT_EQ(rvpiFilterGaussianBorder_8u_C3R(s8.data(), 24, d8.data(), 24, {2, 2}, v3, spec.data(),
                                            buf.data()),
            rvpStsContextMatchErr);
  EXPECT_EQ(rvpiFilterGaussianBorder_8u_C3R(s8.data(), 24, d8.data(), 24, {2, 2}, nullptr,
                                            spec.data(), buf.data()),
            rvpStsNullPtrErr);
  EXPECT_EQ(rvpiFilterGaussianBorder_8u_C1R(s8.data(), 9, d8.data(), 9, {9, 2}, 0, spec.data(),
                                            buf.data()),
            rvpStsSizeErr);  // wider than the specification
  EXPECT_EQ(
      rvpiFilterGaussianBorder_8u_C1R(s8.data(), 7, d8.data(), 8, roi, 0, spec.data(), buf.data()),
      rvpStsStepErr);
  EXPECT_EQ(
      rvpiFilterGaussianBorder_8u_C1R(s8.data(), 8, d8.data(), 8, roi, 0, spec0.data(), buf.data()),
      rvpStsContextMatchErr);
  for (Rvp8u v : d8) EXPECT_EQ(v, 9);
  for (Rvp16u v : d16) EXPECT_EQ(v, 9);

  int bsz = 3;
  EXPECT_EQ(rvpiFilterGaussGetBufferSize_32f_C1R(roi, 4, &bsz), rvpStsBadArgErr);
  std::vector<float> f(64, 2.0f), fd(64, 3.0f);
  EXPECT_EQ(
      rvpiFilterGaussBorder_32f_C1R(f.data(), 32, fd.data(), 32, roi, 5, 0.0f, 1, 0, buf.data()),
      rvpStsBadArgErr);
  EXPECT_EQ(
      rvpiFilterGaussBorder_32f_C1R(f.data(), 32, fd.data(), 32, roi, 5, 1.0f, 2, 0, buf.data()),
      rvpStsBorderErr);
  for (float v : fd) EXPECT_EQ(v, 3.0f);
}

// An impulse reproduces the normalised weights as the outer product, mirrored (correlation).
TEST(Gaussian, ImpulseRecoversTheKernel) {
  const int K = 7;
  const RvpiSize roi{15, 15};
  std::vector<float> src(15 * 15, 0.0f), dst(15 * 15);
  src[7 * 15 + 7] = 1.0f;
  int bs = 0;
  ASSERT_EQ(rvpiFilterGaussGetBufferSize_32f_C1R(roi, K, &bs), 0);
  std::vector<Rvp8u> buf(bs);
  ASSERT_EQ(rvpiFilterGaussBorder_32f_C1R(src.data(), 60, dst.data(), 60, roi, K, 1.5f, 0, 0.0f,
                                          buf.data()),
            0);
  const auto w = ref_weights(K, 1.5f);
  for (int y = 0; y < K; ++y)
    for (int x = 0; x < K; ++x) EXPECT_EQ(dst[(4 + y) * 15 + 4 + x], w[6 - y] * (w[6 - x] * 1.0f));
}

TEST(GenSobelKernel, KnownFactorsSignsAndChecks) {
  struct Case {
    int K, order;
    std::vector<int> want;
  };
  const std::vector<Case> cases = {{1, 0, {1}},
                                   {3, 0, {1, 2, 1}},
                                   {3, 1, {-1, 0, 1}},
                                   {3, 2, {1, -2, 1}},
                                   {5, 0, {1, 4, 6, 4, 1}},
                                   {5, 1, {-1, -2, 0, 2, 1}},
                                   {5, 2, {1, 0, -2, 0, 1}},
                                   {5, 4, {1, -4, 6, -4, 1}},
                                   {7, 1, {-1, -4, -5, 0, 5, 4, 1}}};
  for (const Case& c : cases)
    for (int sign : {1, -1, 5}) {
      std::vector<Rvp16s> a(c.K, 99);
      std::vector<Rvp32f> b(c.K, 99);
      ASSERT_EQ(rvpiGenSobelKernel_16s(a.data(), c.K, c.order, sign), 0);
      ASSERT_EQ(rvpiGenSobelKernel_32f(b.data(), c.K, c.order, sign), 0);
      for (int i = 0; i < c.K; ++i) {
        const int w = sign < 0 ? -c.want[i] : c.want[i];
        EXPECT_EQ(a[i], w) << c.K << "/" << c.order;
        EXPECT_EQ(b[i], float(w));
      }
    }
  // Beyond 16 bits the 16s form saturates; the 32f form stays exact.
  std::vector<Rvp16s> a(21);
  std::vector<Rvp32f> b(21);
  ASSERT_EQ(rvpiGenSobelKernel_16s(a.data(), 21, 0, 1), 0);
  ASSERT_EQ(rvpiGenSobelKernel_32f(b.data(), 21, 0, 1), 0);
  EXPECT_EQ(a[10], 32767);
  EXPECT_EQ(b[10], 184756.0f);
  Rvp16s d[5] = {7, 7, 7, 7, 7};
  EXPECT_EQ(rvpiGenSobelKernel_16s(nullptr, 3, 1, 1), rvpStsNullPtrErr);
  EXPECT_EQ(rvpiGenSobelKernel_16s(d, 4, 1, 1), rvpStsBadArgErr);
  EXPECT_EQ(rvpiGenSobelKernel_16s(d, 0, 0, 1), rvpStsBadArgErr);
  EXPECT_EQ(rvpiGenSobelKernel_16s(d, 3, 3, 1), rvpStsBadArgErr);
  EXPECT_EQ(rvpiGenSobelKernel_16s(d, 3, -1, 1), rvpStsBadArgErr);
  EXPECT_EQ(rvpiGenSobelKernel_16s(d, 3, 1, 0), rvpStsBadArgErr);
  for (Rvp16s v : d) EXPECT_EQ(v, 7);
}

// The documented work-buffer formulas of the Gaussian and the derivative filters.
TEST(FilterSizes, DocumentedFormulas) {
  auto r32 = [](int64_t v) { return (v + 31) / 32 * 32; };
  for (int W : {1, 7, 64, 1001})
    for (int K : {3, 5, 9})
      for (int ch : {1, 3})
        for (int type : {rvp8u, rvp16u, rvp16s, rvp32f}) {
          int ss = 0, bs = 0;
          ASSERT_EQ(rvpiFilterGaussianGetBufferSize({W, 5}, K, type, ch, &ss, &bs), 0);
          const int es = type == rvp8u ? 1 : type == rvp32f ? 4 : 2;
          const int is = type == rvp8u ? 2 : 4;
          const int64_t x = type == rvp8u ? 2 * int64_t(W + K - 1) * ch : 0;
          EXPECT_EQ(bs, 64 + r32(4 * K) + r32(x) + r32(int64_t(W + K - 1) * ch * es) +
                            K * r32(int64_t(W) * ch * is));
          EXPECT_EQ(ss, 32 * K + 32);
        }
  for (int W : {1, 33, 640})
    for (int mask : {33, 55}) {
      const int K = mask == 33 ? 3 : 5;
      int a = 0, b = 0, c = 0;
      ASSERT_EQ(rvpiFilterSobelCrossGetBufferSize_8u16s_C1R({W, 2}, mask, &a), 0);
      ASSERT_EQ(rvpiFilterLaplacianGetBufferSize_32f_C1R({W, 2}, mask, &b), 0);
      ASSERT_EQ(rvpiFilterLowpassGetBufferSize_8u_C1R({W, 2}, mask, &c), 0);
      EXPECT_EQ(a, 64 + r32(W + K - 1) + K * r32(2 * W));
      EXPECT_EQ(b, 64 + r32(4 * (W + K - 1)) + 2 * K * r32(4 * W));
      EXPECT_EQ(c, 64 + r32(W + K - 1) + K * r32(2 * W));
    }
}

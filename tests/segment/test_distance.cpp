// Distance transforms: standard weights, chamfer transforms (against the per-pixel two-pass
// reference bit for bit, and against a brute-force chamfer distance), the exact Euclidean
// transform (against brute force), argument checks, saturation and memory safety.
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstring>
#include <limits>
#include <queue>
#include <random>
#include <tuple>
#include <type_traits>
#include <vector>

#include "rvpcv.h"
#include "segment/distance_kernels.h"
#include "support/guarded.h"
#include "support/images.h"

namespace {

using rvp::segment::ChamferWeights;
using rvp::segment::DistValue;
using rvpt::Guard;
using rvpt::GuardedBuffer;
using rvpt::GuardedImage;
using rvpt::TestImage;

template <class T>
using Metric = std::conditional_t<std::is_same_v<T, Rvp32f>, Rvp32f, Rvp32s>;

constexpr float kInf = std::numeric_limits<float>::infinity();

template <class T>
double max_of() {
  return std::is_same_v<T, Rvp32f> ? double(kInf) : double(std::numeric_limits<T>::max());
}

// The out-of-place export for an output type and mask.
template <class T>
RvpStatus transform(bool five, const Rvp8u* s, int ss, T* d, int ds, RvpiSize roi,
                    const Metric<T>* m) {
  if constexpr (std::is_same_v<T, Rvp8u>)
    return five ? rvpiDistanceTransform_5x5_8u_C1R(s, ss, d, ds, roi, m)
                : rvpiDistanceTransform_3x3_8u_C1R(s, ss, d, ds, roi, m);
  else if constexpr (std::is_same_v<T, Rvp16u>)
    return five ? rvpiDistanceTransform_5x5_8u16u_C1R(s, ss, d, ds, roi, m)
                : rvpiDistanceTransform_3x3_8u16u_C1R(s, ss, d, ds, roi, m);
  else
    return five ? rvpiDistanceTransform_5x5_8u32f_C1R(s, ss, d, ds, roi, m)
                : rvpiDistanceTransform_3x3_8u32f_C1R(s, ss, d, ds, roi, m);
}

RvpStatus transform_in_place(bool five, Rvp8u* sd, int step, RvpiSize roi, const Rvp32s* m) {
  return five ? rvpiDistanceTransform_5x5_8u_C1IR(sd, step, roi, m)
              : rvpiDistanceTransform_3x3_8u_C1IR(sd, step, roi, m);
}

template <class T>
ChamferWeights<T> weights_of(const Metric<T>* m, bool five) {
  auto conv = [](Metric<T> v) -> DistValue<T> {
    if constexpr (std::is_same_v<T, Rvp32f>)
      return v;
    else
      return static_cast<DistValue<T>>(std::min<int64_t>(v, std::numeric_limits<T>::max()));
  };
  return {conv(m[0]), conv(m[1]), five ? conv(m[2]) : DistValue<T>(0), five};
}

// A binary image: zero pixels with probability `zeros`, nonzero values vary.
void fill_binary(TestImage<Rvp8u>& img, std::mt19937& rng, double zeros) {
  std::bernoulli_distribution z(zeros);
  std::uniform_int_distribution<int> val(1, 255);
  for (int y = 0; y < img.height(); ++y)
    for (int x = 0; x < img.width(); ++x)
      img.set(x, y, z(rng) ? Rvp8u(0) : static_cast<Rvp8u>(val(rng)));
}

// Brute force: the cheapest path of mask steps from any zero pixel, with steps that all point
// into one quadrant (the cheapest path for regular weights), clamped at the type's maximum.
template <class T>
std::vector<double> brute_chamfer(const TestImage<Rvp8u>& src, const double* w, bool five) {
  const int W = src.width(), H = src.height();
  const double inf = std::numeric_limits<double>::infinity();
  std::vector<double> L(size_t(W) * H, inf);  // L[j * W + i]: cost of the offset (i, j)
  auto l = [&](int i, int j) { return (i < 0 || j < 0) ? inf : L[size_t(j) * W + i]; };
  for (int j = 0; j < H; ++j)
    for (int i = 0; i < W; ++i) {
      double v = (i == 0 && j == 0) ? 0.0 : inf;
      v = std::min({v, l(i - 1, j) + w[0], l(i, j - 1) + w[0], l(i - 1, j - 1) + w[1]});
      if (five) v = std::min({v, l(i - 1, j - 2) + w[2], l(i - 2, j - 1) + w[2]});
      L[size_t(j) * W + i] = v;
    }
  std::vector<double> out(size_t(W) * H, inf);
  for (int zy = 0; zy < H; ++zy)
    for (int zx = 0; zx < W; ++zx) {
      if (src.at(zx, zy) != 0) continue;
      for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) {
          double& o = out[size_t(y) * W + x];
          o = std::min(o, l(std::abs(x - zx), std::abs(y - zy)));
        }
    }
  for (double& o : out) o = std::min(o, max_of<T>());
  return out;
}

template <class T>
std::vector<T> read(const TestImage<T>& img) {
  std::vector<T> v;
  for (int y = 0; y < img.height(); ++y)
    for (int x = 0; x < img.width(); ++x) v.push_back(img.at(x, y));
  return v;
}

// ---- standard weights ----------------------------------------------------------------------

TEST(DistanceMask, StandardWeightsOfEveryMaskAndNorm) {
  const uint32_t f3[3][2] = {
      {0x3f800000, 0x3f800000}, {0x3f800000, 0x40000000}, {0x3f747ae1, 0x3faf4539}};
  const uint32_t f5[3][3] = {{0x3f800000, 0x3f800000, 0x40000000},
                             {0x3f800000, 0x40000000, 0x40400000},
                             {0x3f800000, 0x3fb33333, 0x400c9a02}};
  const Rvp32s i3[3][2] = {{1, 1}, {1, 2}, {2, 3}};
  const Rvp32s i5[3][3] = {{1, 1, 2}, {1, 2, 3}, {5, 7, 11}};
  for (int k : {3, 5})
    for (int norm = 0; norm < 3; ++norm) {
      SCOPED_TRACE(testing::Message() << "kernel " << k << " norm " << norm);
      const int n = k == 3 ? 2 : 3;
      Rvp32f f[4] = {-7, -7, -7, -7}, g[4] = {-7, -7, -7, -7};
      Rvp32s i[4] = {-7, -7, -7, -7};
      ASSERT_EQ(rvpiGetDistanceTransformMask_32f(k, norm, f), rvpStsNoErr);
      ASSERT_EQ(rvpiGetDistanceTransformMask_32s(k, norm, i), rvpStsNoErr);
      ASSERT_EQ(rvpiGetDistanceTransformMask(10 * k + norm, g), rvpStsNoErr);
      for (int j = 0; j < n; ++j) {
        EXPECT_EQ(rvpt::float_bits(f[j]), k == 3 ? f3[norm][j] : f5[norm][j]);
        EXPECT_EQ(i[j], k == 3 ? i3[norm][j] : i5[norm][j]);
        EXPECT_EQ(rvpt::float_bits(g[j]), rvpt::float_bits(f[j]));
      }
      for (int j = n; j < 4; ++j) {  // nothing beyond the mask's weights is written
        EXPECT_EQ(f[j], -7.0f);
        EXPECT_EQ(i[j], -7);
        EXPECT_EQ(g[j], -7.0f);
      }
    }
}

TEST(DistanceMask, StatusOrderAndNothingWritten) {
  struct Case {
    int kernel, norm;
    bool null;
    RvpStatus want;
  };
  const Case cases[] = {{3, 0, true, -8},  {4, 7, true, -8},   {4, 0, false, -6}, {0, 9, false, -6},
                        {5, 3, false, -5}, {3, -1, false, -5}, {5, 2, false, 0}};
  for (const Case& c : cases) {
    Rvp32f f[3] = {9, 9, 9};
    Rvp32s i[3] = {9, 9, 9};
    EXPECT_EQ(rvpiGetDistanceTransformMask_32f(c.kernel, c.norm, c.null ? nullptr : f), c.want);
    EXPECT_EQ(rvpiGetDistanceTransformMask_32s(c.kernel, c.norm, c.null ? nullptr : i), c.want);
    if (c.want != 0) {
      for (int j = 0; j < 3; ++j) EXPECT_TRUE(f[j] == 9.0f && i[j] == 9);
    }
  }
  // The combined code: the norm digit is checked first, even before the pointer.
  struct Code {
    int type;
    bool null;
    RvpStatus want;
  };
  const Code codes[] = {{53, false, -5},  {53, true, -5},  {-30, true, -8},
                        {-31, false, -5}, {39, false, -5}, {42, false, -6},
                        {2, false, -6},   {32, true, -8},  {52, false, 0}};
  for (const Code& c : codes) {
    Rvp32f f[3] = {9, 9, 9};
    EXPECT_EQ(rvpiGetDistanceTransformMask(c.type, c.null ? nullptr : f), c.want) << c.type;
    if (c.want != 0) {
      for (int j = 0; j < 3; ++j) EXPECT_EQ(f[j], 9.0f);
    }
  }
  Rvp32f f[3];
  ASSERT_EQ(rvpiGetDistanceTransformMask(52, f), 0);
  EXPECT_EQ(f[0], 1.0f);
  EXPECT_EQ(f[1], 1.4f);
  EXPECT_EQ(f[2], 2.1969f);
}

// ---- chamfer: argument checks ----------------------------------------------------------------

template <class T>
void check_chamfer_statuses(bool five) {
  SCOPED_TRACE(testing::Message() << sizeof(T) << "-byte output, five " << five);
  const int W = 9, H = 5, es = int(sizeof(T));
  TestImage<Rvp8u> src(W, H, 1, 3);
  TestImage<T> dst(W, H, 1, 4 * es);
  std::mt19937 rng(3);
  fill_binary(src, rng, 0.3);
  const Metric<T> good[3] = {1, 2, 3};
  const RvpiSize roi{W, H};
  struct Case {
    const Rvp8u* s;
    int ss;
    T* d;
    int ds;
    RvpiSize r;
    const Metric<T>* m;
    RvpStatus want;
  };
  std::vector<Case> cases = {
      {nullptr, src.step(), dst.ptr(), dst.step(), roi, good, -8},
      {src.ptr(), src.step(), nullptr, dst.step(), roi, good, -8},
      {src.ptr(), src.step(), dst.ptr(), dst.step(), roi, nullptr, -8},
      {nullptr, src.step(), dst.ptr(), dst.step(), {0, H}, good, -8},
      {src.ptr(), src.step(), dst.ptr(), dst.step(), {0, H}, good, -6},
      {src.ptr(), src.step(), dst.ptr(), dst.step(), {W, -1}, good, -6},
      {src.ptr(), 0, dst.ptr(), 0, {W, 0}, good, -6},
      {src.ptr(), W - 1, dst.ptr(), dst.step(), roi, good, -14},
      {src.ptr(), -src.step(), dst.ptr(), dst.step(), roi, good, -14},
      {src.ptr(), src.step(), dst.ptr(), W * es - es, roi, good, -14},
      {src.ptr(), W - 1, dst.ptr(), W * es + 1, roi, good, -14},
      {src.ptr(), src.step(), dst.ptr(), INT_MAX, {INT_MAX / 2, 1}, good, -14},
  };
  const Metric<T> zero_a[3] = {0, 2, 3};
  if (es > 1) {
    cases.push_back({src.ptr(), src.step(), dst.ptr(), W * es + 1, roi, good, -108});
    cases.push_back({src.ptr(), src.step(), dst.ptr(), W * es + 1, roi, zero_a, -108});
  } else {
    cases.push_back({src.ptr(), src.step(), dst.ptr(), W + 1, roi, good, 0});
  }
  std::vector<std::vector<Metric<T>>> bad;
  if constexpr (std::is_same_v<T, Rvp32f>) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    for (float v : {0.0f, -0.0f, -1.0f, kInf, -kInf, nan}) {
      bad.push_back({v, 2, 3});
      bad.push_back({1, v, 3});
      if (five) bad.push_back({1, 2, v});
    }
  } else {
    for (Rvp32s v : {0, -1, INT_MIN}) {
      bad.push_back({v, 2, 3});
      bad.push_back({1, v, 3});
      if (five) bad.push_back({1, 2, v});
    }
  }
  // A bad knight weight is refused even where the 3x3 shortcut would apply; a 3x3 mask ignores
  // the third value.
  if (five) bad.push_back({1, 1, -5});
  for (const auto& m : bad)
    cases.push_back({src.ptr(), src.step(), dst.ptr(), dst.step(), roi, m.data(), -56});
  const Metric<T> ignored[3] = {1, 2, -5};
  if (!five) cases.push_back({src.ptr(), src.step(), dst.ptr(), dst.step(), roi, ignored, 0});
  for (size_t i = 0; i < cases.size(); ++i) {
    const Case& c = cases[i];
    TestImage<T> fresh(W, H, 1, 4 * es);
    const std::vector<uint8_t> before = fresh.bytes();
    T* d = c.d ? fresh.ptr() : nullptr;
    EXPECT_EQ(transform<T>(five, c.s, c.ss, d, c.ds, c.r, c.m), c.want) << "case " << i;
    if (c.want != 0) {
      EXPECT_EQ(fresh.bytes(), before) << "case " << i;
    }
  }
}

TEST(DistanceChamfer, StatusOrderAndNothingWrittenOnError) {
  for (bool five : {false, true}) {
    check_chamfer_statuses<Rvp8u>(five);
    check_chamfer_statuses<Rvp16u>(five);
    check_chamfer_statuses<Rvp32f>(five);
  }
}

TEST(DistanceChamfer, InPlaceStatuses) {
  for (bool five : {false, true}) {
    TestImage<Rvp8u> img(6, 4, 1, 2);
    std::mt19937 rng(5);
    fill_binary(img, rng, 0.3);
    const std::vector<uint8_t> before = img.bytes();
    const Rvp32s good[3] = {1, 2, 3}, bad[3] = {1, 0, 3};
    EXPECT_EQ(transform_in_place(five, nullptr, img.step(), img.size(), good), -8);
    EXPECT_EQ(transform_in_place(five, img.ptr(), img.step(), img.size(), nullptr), -8);
    EXPECT_EQ(transform_in_place(five, img.ptr(), img.step(), {0, 4}, good), -6);
    EXPECT_EQ(transform_in_place(five, img.ptr(), 5, img.size(), good), -14);
    EXPECT_EQ(transform_in_place(five, img.ptr(), img.step(), img.size(), bad), -56);
    EXPECT_EQ(img.bytes(), before);
    EXPECT_EQ(transform_in_place(five, img.ptr(), 7, img.size(), good), 0);  // odd step: 8u
  }
}

// ---- chamfer: values -------------------------------------------------------------------------

template <class T>
void check_edge_cases() {
  const Metric<T> w5[3] = {3, 4, 6};  // 6 < 3 + min(6, 4): the full 5x5 mask
  for (bool five : {false, true}) {
    SCOPED_TRACE(testing::Message() << sizeof(T) << "-byte output, five " << five);
    // A lone nonzero pixel among zeros gets a; the zeros stay 0.
    TestImage<Rvp8u> src(5, 5);
    for (int y = 0; y < 5; ++y)
      for (int x = 0; x < 5; ++x) src.set(x, y, 0);
    src.set(2, 2, 200);
    TestImage<T> dst(5, 5);
    ASSERT_EQ(transform<T>(five, src.ptr(), src.step(), dst.ptr(), dst.step(), src.size(), w5), 0);
    for (int y = 0; y < 5; ++y)
      for (int x = 0; x < 5; ++x) EXPECT_EQ(double(dst.at(x, y)), (x == 2 && y == 2) ? 3.0 : 0.0);
    // No zero pixel at all: the maximum everywhere (1x1 included).
    for (RvpiSize s : {RvpiSize{1, 1}, RvpiSize{40, 3}, RvpiSize{1, 9}}) {
      TestImage<Rvp8u> ones(s.width, s.height);
      for (int y = 0; y < s.height; ++y)
        for (int x = 0; x < s.width; ++x) ones.set(x, y, 1);
      TestImage<T> out(s.width, s.height);
      ASSERT_EQ(transform<T>(five, ones.ptr(), ones.step(), out.ptr(), out.step(), s, w5), 0);
      for (int y = 0; y < s.height; ++y)
        for (int x = 0; x < s.width; ++x) EXPECT_EQ(double(out.at(x, y)), max_of<T>());
    }
    // A single zero pixel: 0.
    TestImage<Rvp8u> zero(1, 1);
    zero.set(0, 0, 0);
    TestImage<T> out(1, 1);
    out.set(0, 0, T(7));
    ASSERT_EQ(transform<T>(five, zero.ptr(), 1, out.ptr(), out.step(), {1, 1}, w5), 0);
    EXPECT_EQ(double(out.at(0, 0)), 0.0);
  }
}

TEST(DistanceChamfer, EdgeCases) {
  check_edge_cases<Rvp8u>();
  check_edge_cases<Rvp16u>();
  check_edge_cases<Rvp32f>();
}

TEST(DistanceChamfer, SaturatesAt255And65535) {
  // One zero at the left end of a long row: the values count up by a and stop at the maximum;
  // weights far above the maximum act as the maximum instead of wrapping.
  for (bool five : {false, true}) {
    for (Rvp32s a : {1, 3, 1000, INT_MAX}) {
      const Rvp32s m[3] = {a, INT_MAX, INT_MAX};
      const int W = 70000;
      TestImage<Rvp8u> src(W, 2);
      for (int y = 0; y < 2; ++y)
        for (int x = 0; x < W; ++x) src.set(x, y, x == 0 && y == 1 ? 0 : 9);
      TestImage<Rvp8u> d8(W, 2);
      TestImage<Rvp16u> d16(W, 2);
      ASSERT_EQ(transform<Rvp8u>(five, src.ptr(), src.step(), d8.ptr(), d8.step(), {W, 2}, m), 0);
      ASSERT_EQ(transform<Rvp16u>(five, src.ptr(), src.step(), d16.ptr(), d16.step(), {W, 2}, m),
                0);
      for (int x = 0; x < W; ++x) {
        const int64_t along = int64_t{x} * a;
        // Row 0 is a step above the zero's row: a above it, then a per step along the row.
        const int64_t above = int64_t{a} + along;
        if (d8.at(x, 1) != std::min<int64_t>(along, 255) ||
            d8.at(x, 0) != std::min<int64_t>(above, 255) ||
            d16.at(x, 1) != std::min<int64_t>(along, 65535) ||
            d16.at(x, 0) != std::min<int64_t>(above, 65535)) {
          ADD_FAILURE() << "a " << a << " x " << x << ": " << int(d8.at(x, 1)) << " "
                        << int(d8.at(x, 0)) << " " << d16.at(x, 1) << " " << d16.at(x, 0);
          break;
        }
      }
    }
  }
}

// The production path against the per-pixel reference, bit for bit, on random sizes, offsets,
// steps, densities and weights (non-integer floats and a > b included).
template <class T>
void check_against_reference(std::mt19937& rng) {
  std::uniform_int_distribution<int> wdist(1, 70), hdist(1, 12), off(0, 7), pad(0, 9);
  std::uniform_int_distribution<int> iw(1, 40);
  std::uniform_real_distribution<float> fw(0.05f, 20.0f);
  const double densities[] = {0.0005, 0.01, 0.1, 0.5, 0.95};
  for (int iter = 0; iter < 400; ++iter) {
    const bool five = iter % 2;
    int W = wdist(rng), H = hdist(rng);
    if (iter % 50 == 0) W = 1000 + wdist(rng);  // long rows: the chain pieces and repairs
    const double density = densities[iter % 5];
    TestImage<Rvp8u> src(W, H, 1, pad(rng), off(rng));
    fill_binary(src, rng, density);
    Metric<T> m[3];
    for (auto& v : m) {
      if constexpr (std::is_same_v<T, Rvp32f>)
        v = (iter % 3 == 0) ? float(iw(rng)) : fw(rng);
      else
        v = (iter % 7 == 0) ? std::uniform_int_distribution<int>(1, 100000)(rng) : iw(rng);
    }
    TestImage<T> dst(W, H, 1, int(sizeof(T)) * pad(rng), int(sizeof(T)) * off(rng));
    ASSERT_EQ(transform<T>(five, src.ptr(), src.step(), dst.ptr(), dst.step(), src.size(), m), 0);
    // The reference takes the same 3x3 shortcut (that it changes no value is tested apart).
    TestImage<T> want(W, H);
    const bool use_five =
        five && !(double(m[2]) >= double(Metric<T>(m[0] + std::min(2 * m[0], m[1]))));
    rvp::segment::ref::chamfer(src.ptr(), src.step(), want.ptr(), want.step(), W, H,
                               weights_of<T>(m, use_five));
    for (int y = 0; y < H; ++y)
      for (int x = 0; x < W; ++x)
        if (!rvpt::same_bits(dst.at(x, y), want.at(x, y))) {
          FAIL() << "iter " << iter << " " << W << "x" << H << " five " << five << " at " << x
                 << "," << y << ": " << double(dst.at(x, y)) << " vs " << double(want.at(x, y));
        }
    // The padding between rows is never touched.
    for (int y = 0; y < H; ++y)
      for (size_t b = size_t(W) * sizeof(T); b < size_t(dst.step()); ++b)
        ASSERT_EQ(reinterpret_cast<const uint8_t*>(dst.row(y))[b], TestImage<T>::kMarker);
    if constexpr (std::is_same_v<T, Rvp8u>) {  // in place gives the same image
      TestImage<Rvp8u> io = src;
      ASSERT_EQ(transform_in_place(five, io.ptr(), io.step(), io.size(), m), 0);
      for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) ASSERT_EQ(io.at(x, y), dst.at(x, y));
    }
  }
}

TEST(DistanceChamfer, MatchesPerPixelReferenceBitForBit) {
  std::mt19937 rng(11);
  check_against_reference<Rvp8u>(rng);
  check_against_reference<Rvp16u>(rng);
  check_against_reference<Rvp32f>(rng);
}

TEST(DistanceChamfer, DiagonalCheaperThanStraightStepIsLiteralTwoPass) {
  // a = 3, b = 1, one zero at the top-left of a 5x2 image. The cheapest grid path to (4,0)
  // zig-zags over diagonals at cost 4, but it alternates between the passes' directions; the
  // passes applied literally give 8 there (worked by hand: forward rows 0 3 6 9 12 / 3 1 4 7 10,
  // backward top row from the right 8 5 2 3 0).
  TestImage<Rvp8u> src(5, 2);
  for (int y = 0; y < 2; ++y)
    for (int x = 0; x < 5; ++x) src.set(x, y, (x | y) ? 1 : 0);
  const Rvp32s m[2] = {3, 1};
  const Rvp32f mf[2] = {3.0f, 1.0f};
  TestImage<Rvp16u> dst(5, 2);
  TestImage<Rvp32f> dstf(5, 2);
  ASSERT_EQ(rvpiDistanceTransform_3x3_8u16u_C1R(src.ptr(), src.step(), dst.ptr(), dst.step(),
                                                src.size(), m),
            0);
  ASSERT_EQ(rvpiDistanceTransform_3x3_8u32f_C1R(src.ptr(), src.step(), dstf.ptr(), dstf.step(),
                                                src.size(), mf),
            0);
  const int want[2][5] = {{0, 3, 2, 5, 8}, {3, 1, 4, 7, 10}};
  for (int y = 0; y < 2; ++y)
    for (int x = 0; x < 5; ++x) {
      EXPECT_EQ(dst.at(x, y), want[y][x]) << x << "," << y;
      EXPECT_EQ(dstf.at(x, y), float(want[y][x])) << x << "," << y;
    }
}

// Brute-force chamfer distances for the standard weights of every mask and norm.
TEST(DistanceChamfer, StandardWeightsMatchBruteForce) {
  std::mt19937 rng(21);
  for (int iter = 0; iter < 36; ++iter) {
    const int k = iter % 2 ? 5 : 3, norm = (iter / 2) % 3;
    const bool five = k == 5;
    const int W = 10 + int(rng() % 50), H = 3 + int(rng() % 30);
    TestImage<Rvp8u> src(W, H, 1, 5, 1);
    fill_binary(src, rng, iter % 3 == 0 ? 0.002 : 0.05);
    Rvp32s mi[3];
    Rvp32f mf[3];
    ASSERT_EQ(rvpiGetDistanceTransformMask_32s(k, norm, mi), 0);
    ASSERT_EQ(rvpiGetDistanceTransformMask_32f(k, norm, mf), 0);
    const double wi[3] = {double(mi[0]), double(mi[1]), five ? double(mi[2]) : 0.0};
    const std::vector<double> b8 = brute_chamfer<Rvp8u>(src, wi, five);
    const std::vector<double> b16 = brute_chamfer<Rvp16u>(src, wi, five);
    TestImage<Rvp8u> d8(W, H);
    TestImage<Rvp16u> d16(W, H);
    ASSERT_EQ(transform<Rvp8u>(five, src.ptr(), src.step(), d8.ptr(), d8.step(), src.size(), mi),
              0);
    ASSERT_EQ(transform<Rvp16u>(five, src.ptr(), src.step(), d16.ptr(), d16.step(), src.size(), mi),
              0);
    const std::vector<Rvp8u> v8 = read(d8);
    const std::vector<Rvp16u> v16 = read(d16);
    for (size_t i = 0; i < v8.size(); ++i) {
      ASSERT_EQ(double(v8[i]), b8[i]) << "k " << k << " norm " << norm << " pixel " << i;
      ASSERT_EQ(double(v16[i]), b16[i]) << "k " << k << " norm " << norm << " pixel " << i;
    }
    // Float weights: exact where every sum is an integer; within rounding otherwise.
    const double wf[3] = {mf[0], mf[1], five ? double(mf[2]) : 0.0};
    const std::vector<double> bf = brute_chamfer<Rvp32f>(src, wf, five);
    TestImage<Rvp32f> df(W, H);
    ASSERT_EQ(transform<Rvp32f>(five, src.ptr(), src.step(), df.ptr(), df.step(), src.size(), mf),
              0);
    const std::vector<Rvp32f> vf = read(df);
    const bool integral = norm < 2;
    for (size_t i = 0; i < vf.size(); ++i) {
      if (integral || std::isinf(bf[i]))
        ASSERT_EQ(double(vf[i]), bf[i]) << "k " << k << " norm " << norm << " pixel " << i;
      else
        ASSERT_NEAR(double(vf[i]), bf[i], 1e-5 * (1 + bf[i])) << "k " << k << " pixel " << i;
    }
  }
}

TEST(DistanceChamfer, KnightShortcutGivesTheFullMaskValues) {
  // c >= a + min(2a, b): the 5x5 member runs 3x3 passes; the full 5x5 passes agree.
  const Rvp32s masks[][3] = {{1, 1, 2}, {1, 2, 3}, {5, 7, 12}, {2, 5, 6}, {3, 1, 4}, {1, 1, 9}};
  std::mt19937 rng(4);
  for (const auto& m : masks) {
    ASSERT_TRUE(int64_t{m[2]} >= m[0] + std::min(2 * m[0], m[1]));
    for (double density : {0.003, 0.05, 0.4}) {
      TestImage<Rvp8u> src(53, 31);
      fill_binary(src, rng, density);
      TestImage<Rvp16u> got(53, 31), full(53, 31), three(53, 31);
      ASSERT_EQ(rvpiDistanceTransform_5x5_8u16u_C1R(src.ptr(), src.step(), got.ptr(), got.step(),
                                                    src.size(), m),
                0);
      ASSERT_EQ(rvpiDistanceTransform_3x3_8u16u_C1R(src.ptr(), src.step(), three.ptr(),
                                                    three.step(), src.size(), m),
                0);
      rvp::segment::ref::chamfer(src.ptr(), src.step(), full.ptr(), full.step(), 53, 31,
                                 weights_of<Rvp16u>(m, true));
      const bool regular = m[0] <= m[1];  // a > b: the passes need not find every path
      if (regular) {
        EXPECT_EQ(read(got), read(full)) << m[0] << " " << m[1] << " " << m[2];
      }
      EXPECT_EQ(read(got), read(three));
      const Rvp32f mf[3] = {float(m[0]), float(m[1]), float(m[2])};
      TestImage<Rvp32f> gf(53, 31), ff(53, 31);
      ASSERT_EQ(rvpiDistanceTransform_5x5_8u32f_C1R(src.ptr(), src.step(), gf.ptr(), gf.step(),
                                                    src.size(), mf),
                0);
      rvp::segment::ref::chamfer(src.ptr(), src.step(), ff.ptr(), ff.step(), 53, 31,
                                 weights_of<Rvp32f>(mf, true));
      if (regular) {
        EXPECT_EQ(read(gf), read(ff));
      }
    }
  }
}

// ---- kernels -----------------------------------------------------------------------------------

template <class T>
void check_row_kernels(std::mt19937& rng) {
  std::uniform_int_distribution<int> wdist(1, 150), off(0, 31);
  for (int iter = 0; iter < 300; ++iter) {
    const int W = wdist(rng);
    const bool five = iter % 2, have1 = iter % 5 != 0, have2 = iter % 3 != 0;
    std::vector<Rvp8u> s(W + 40);
    std::vector<T> up1(W + 40), up2(W + 40), a(W + 40), b(W + 40);
    const int o = off(rng);
    for (int x = 0; x < W; ++x) {
      s[o + x] = rng() % 4 ? Rvp8u(1 + rng() % 255) : 0;
      if constexpr (std::is_same_v<T, Rvp32f>) {
        up1[o + x] = rng() % 9 ? float(rng() % 1000) * 0.37f : kInf;
        up2[o + x] = rng() % 9 ? float(rng() % 1000) * 0.37f : kInf;
      } else {
        up1[o + x] = static_cast<T>(rng());
        up2[o + x] = static_cast<T>(rng());
      }
      a[o + x] = b[o + x] = up2[o + x];
    }
    ChamferWeights<T> w;
    if constexpr (std::is_same_v<T, Rvp32f>)
      w = {0.955f, 1.3693f, 2.1969f, five};
    else
      w = {DistValue<T>(1 + rng() % 200), DistValue<T>(1 + rng() % 200),
           DistValue<T>(1 + rng() % 200), five};
    const T* n1 = have1 ? up1.data() + o : nullptr;
    const T* n2 = have2 ? up2.data() + o : nullptr;
    rvp::segment::ref::forward_rows_part(s.data() + o, a.data() + o, n1, n2, W, w);
    rvp::segment::avx2::forward_rows_part(s.data() + o, b.data() + o, n1, n2, W, w);
    for (int x = 0; x < W; ++x) ASSERT_TRUE(rvpt::same_bits(a[o + x], b[o + x])) << x;
    rvp::segment::ref::backward_rows_part(a.data() + o, n1, n2, W, w);
    rvp::segment::avx2::backward_rows_part(b.data() + o, n1, n2, W, w);
    for (int x = 0; x < W; ++x) ASSERT_TRUE(rvpt::same_bits(a[o + x], b[o + x])) << x;
  }
}

TEST(DistanceKernels, RowPartsMatchScalarReference) {
  std::mt19937 rng(8);
  check_row_kernels<Rvp8u>(rng);
  check_row_kernels<Rvp16u>(rng);
  check_row_kernels<Rvp32f>(rng);
}

template <class T>
void check_chains(std::mt19937& rng) {
  for (int iter = 0; iter < 600; ++iter) {
    const int W = 1 + int(rng() % (iter < 300 ? 100 : 3000));
    std::vector<T> row(W);
    const int sparse = 1 + int(rng() % 200);  // few small values: long repairs
    DistValue<T> a;
    for (int x = 0; x < W; ++x) {
      if constexpr (std::is_same_v<T, Rvp32f>)
        row[x] = rng() % sparse == 0 ? float(rng() % 100) * 0.1f : kInf;
      else
        row[x] = rng() % sparse == 0 ? T(rng() % 50) : std::numeric_limits<T>::max();
    }
    if constexpr (std::is_same_v<T, Rvp32f>)
      a = 0.955f;
    else
      a = 1 + rng() % 3;
    for (int dir : {1, -1}) {
      std::vector<T> want = row, got = row;
      DistValue<T> prev = want[dir > 0 ? 0 : W - 1];
      for (int i = 1; i < W; ++i) {
        T& v = want[dir > 0 ? i : W - 1 - i];
        prev = std::min<DistValue<T>>(v, rvp::segment::step_sum<T>(prev, a));
        v = static_cast<T>(prev);
      }
      if (dir > 0)
        rvp::segment::forward_chain(got.data(), W, a);
      else
        rvp::segment::backward_chain(got.data(), W, a);
      for (int x = 0; x < W; ++x)
        ASSERT_TRUE(rvpt::same_bits(got[x], want[x])) << "W " << W << " dir " << dir << " x " << x;
    }
  }
}

TEST(DistanceKernels, SegmentedChainsMatchSequentialChain) {
  std::mt19937 rng(9);
  check_chains<Rvp8u>(rng);
  check_chains<Rvp16u>(rng);
  check_chains<Rvp32f>(rng);
}

// ---- guarded images ---------------------------------------------------------------------------

template <class T>
void run_guarded(int W, int H, Guard g, std::mt19937& rng, bool five) {
  GuardedImage<Rvp8u> src(W, H, 1, W + int(rng() % 3), g);
  GuardedImage<T> dst(W, H, 1, int(sizeof(T)) * (W + int(rng() % 3)), g);
  for (int y = 0; y < H; ++y)
    for (int x = 0; x < W; ++x) src.row(y)[x] = rng() % 5 == 0 ? 0 : 1;
  const Metric<T> m[3] = {5, 7, 11};
  ASSERT_EQ(transform<T>(five, src.ptr(), src.step(), dst.ptr(), dst.step(), {W, H}, m), 0);
  TestImage<Rvp8u> s2(W, H);
  for (int y = 0; y < H; ++y)
    for (int x = 0; x < W; ++x) s2.set(x, y, src.row(y)[x]);
  TestImage<T> want(W, H);
  rvp::segment::ref::chamfer(s2.ptr(), s2.step(), want.ptr(), want.step(), W, H,
                             weights_of<T>(m, five));
  for (int y = 0; y < H; ++y)
    for (int x = 0; x < W; ++x) ASSERT_TRUE(rvpt::same_bits(dst.row(y)[x], want.at(x, y)));
  if constexpr (std::is_same_v<T, Rvp8u>) {
    ASSERT_EQ(transform_in_place(five, src.ptr(), src.step(), {W, H}, m), 0);
  }
}

TEST(DistanceGuarded, ChamferStaysInsideItsImages) {
  std::mt19937 rng(13);
  for (Guard g : {Guard::After, Guard::Before})
    for (int W = 1; W <= 70; ++W) {
      const int H = 1 + W % 5;
      for (bool five : {false, true}) {
        run_guarded<Rvp8u>(W, H, g, rng, five);
        run_guarded<Rvp16u>(W, H, g, rng, five);
        run_guarded<Rvp32f>(W, H, g, rng, five);
      }
    }
  for (bool five : {false, true}) run_guarded<Rvp32f>(1921, 3, Guard::After, rng, five);
}

// ---- exact Euclidean transform ------------------------------------------------------------

std::vector<float> brute_euclid(const TestImage<Rvp8u>& src) {
  const int W = src.width(), H = src.height();
  std::vector<int64_t> best(size_t(W) * H, INT64_MAX);
  for (int zy = 0; zy < H; ++zy)
    for (int zx = 0; zx < W; ++zx) {
      if (src.at(zx, zy) != 0) continue;
      for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) {
          const int64_t d = int64_t(x - zx) * (x - zx) + int64_t(y - zy) * (y - zy);
          best[size_t(y) * W + x] = std::min(best[size_t(y) * W + x], d);
        }
    }
  std::vector<float> out;
  for (int64_t b : best) out.push_back(b == INT64_MAX ? kInf : float(std::sqrt(double(b))));
  return out;
}

int true_buffer_size(RvpiSize roi) {
  int n = -1;
  EXPECT_EQ(rvpiTrueDistanceTransformGetBufferSize_8u32f_C1R(roi, &n), 0);
  return n;
}

TEST(DistanceTrue, BufferSizeFormulaAndChecks) {
  EXPECT_EQ(true_buffer_size({1, 1}), 24 * 4 + 56);
  EXPECT_EQ(true_buffer_size({5, 3}), 24 * 8 + 56);
  EXPECT_EQ(true_buffer_size({1920, 1080}), 24 * 1920 + 56);
  EXPECT_EQ(true_buffer_size({7, 1081}), 24 * 1084 + 56);
  int n = 123;
  EXPECT_EQ(rvpiTrueDistanceTransformGetBufferSize_8u32f_C1R({1, 1}, nullptr), -8);
  EXPECT_EQ(rvpiTrueDistanceTransformGetBufferSize_8u32f_C1R({0, 1}, &n), -6);
  EXPECT_EQ(rvpiTrueDistanceTransformGetBufferSize_8u32f_C1R({3, -2}, &n), -6);
  EXPECT_EQ(rvpiTrueDistanceTransformGetBufferSize_8u32f_C1R({INT_MAX, 1}, &n), -6);
  EXPECT_EQ(n, 123);
}

TEST(DistanceTrue, StatusOrderAndNothingWritten) {
  const int W = 6, H = 4;
  TestImage<Rvp8u> src(W, H, 1, 2);
  std::mt19937 rng(2);
  fill_binary(src, rng, 0.3);
  std::vector<Rvp8u> buf(size_t(true_buffer_size({W, H})), 0x5A);
  struct Case {
    bool s, d, b;
    int ss, ds;
    RvpiSize r;
    RvpStatus want;
  };
  const Case cases[] = {
      {false, true, true, 8, 32, {W, H}, -8},  {true, false, true, 8, 32, {W, H}, -8},
      {true, true, false, 8, 32, {W, H}, -8},  {false, true, true, 8, 32, {0, H}, -8},
      {true, true, true, 8, 32, {0, H}, -6},   {true, true, true, 8, 32, {W, 0}, -6},
      {true, true, true, 5, 30, {W, H}, -14},  {true, true, true, 8, 20, {W, H}, -14},
      {true, true, true, 5, 26, {W, H}, -14},  {true, true, true, 8, 26, {W, H}, -108},
      {true, true, true, -8, 32, {W, H}, -14}, {true, true, true, 8, 32, {W, H}, 0},
  };
  for (size_t i = 0; i < std::size(cases); ++i) {
    const Case& c = cases[i];
    TestImage<Rvp32f> dst(W, H, 1, 8);
    const std::vector<uint8_t> before = dst.bytes();
    const std::vector<Rvp8u> buf_before = buf;
    EXPECT_EQ(rvpiTrueDistanceTransform_8u32f_C1R(c.s ? src.ptr() : nullptr, c.ss,
                                                  c.d ? dst.ptr() : nullptr, c.ds, c.r,
                                                  c.b ? buf.data() : nullptr),
              c.want)
        << "case " << i;
    if (c.want != 0) {
      EXPECT_EQ(dst.bytes(), before) << "case " << i;
      EXPECT_EQ(buf, buf_before) << "case " << i;
    }
  }
}

TEST(DistanceTrue, MatchesBruteForceExactly) {
  std::mt19937 rng(17);
  const double densities[] = {0.0, 1.0, 0.001, 0.01, 0.05, 0.3, 0.8};
  for (int iter = 0; iter < 140; ++iter) {
    const int W = 1 + int(rng() % 70), H = 1 + int(rng() % 50);
    TestImage<Rvp8u> src(W, H, 1, int(rng() % 5), int(rng() % 3));
    fill_binary(src, rng, densities[iter % 7]);
    if (iter % 7 == 2) src.set(int(rng() % W), int(rng() % H), 0);  // one lone feature
    TestImage<Rvp32f> dst(W, H, 1, 4 * int(rng() % 3), 4 * int(rng() % 3));
    // The buffer of exactly the queried size, at an odd address, ending at a guard page.
    const int bytes = true_buffer_size({W, H});
    GuardedBuffer buf(size_t(bytes) + 1, Guard::After);
    ASSERT_EQ(rvpiTrueDistanceTransform_8u32f_C1R(src.ptr(), src.step(), dst.ptr(), dst.step(),
                                                  src.size(), buf.data() + 1),
              0);
    const std::vector<float> want = brute_euclid(src);
    const std::vector<float> got = read(dst);
    for (size_t i = 0; i < got.size(); ++i)
      ASSERT_TRUE(rvpt::same_bits(got[i], want[i]))
          << W << "x" << H << " pixel " << i << ": " << got[i] << " vs " << want[i];
  }
}

TEST(DistanceTrue, ColumnKernelsMatchScalarReference) {
  std::mt19937 rng(23);
  for (int iter = 0; iter < 200; ++iter) {
    const int W = 1 + int(rng() % 90), o = int(rng() % 8);
    std::vector<Rvp8u> s(W + 8);
    std::vector<Rvp32f> up(W + 8), a(W + 8), b(W + 8);
    for (int x = 0; x < W + 8; ++x) {
      s[x] = rng() % 3 ? 1 : 0;
      up[x] = rng() % 7 ? float(rng() % 500) : kInf;
    }
    const Rvp32f* u = iter % 4 ? up.data() + o : nullptr;
    rvp::segment::ref::column_down_row(s.data() + o, u, a.data() + o, W);
    rvp::segment::avx2::column_down_row(s.data() + o, u, b.data() + o, W);
    for (int x = 0; x < W; ++x) ASSERT_TRUE(rvpt::same_bits(a[o + x], b[o + x]));
    rvp::segment::ref::column_up_row(up.data() + o, a.data() + o, W);
    rvp::segment::avx2::column_up_row(up.data() + o, b.data() + o, W);
    for (int x = 0; x < W; ++x) ASSERT_TRUE(rvpt::same_bits(a[o + x], b[o + x]));
  }
}

TEST(DistanceGuarded, TrueTransformStaysInsideItsImagesAndBuffer) {
  std::mt19937 rng(29);
  for (Guard g : {Guard::After, Guard::Before})
    for (int W = 1; W <= 70; W += 3) {
      const int H = 1 + (W * 7) % 13;
      GuardedImage<Rvp8u> src(W, H, 1, W + int(rng() % 3), g);
      GuardedImage<Rvp32f> dst(W, H, 1, 4 * (W + int(rng() % 3)), g);
      TestImage<Rvp8u> copy(W, H);
      for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) {
          src.row(y)[x] = rng() % 6 == 0 ? 0 : 3;
          copy.set(x, y, src.row(y)[x]);
        }
      GuardedBuffer buf(size_t(true_buffer_size({W, H})), g);
      ASSERT_EQ(rvpiTrueDistanceTransform_8u32f_C1R(src.ptr(), src.step(), dst.ptr(), dst.step(),
                                                    {W, H}, buf.data()),
                0);
      const std::vector<float> want = brute_euclid(copy);
      for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x)
          ASSERT_TRUE(rvpt::same_bits(dst.row(y)[x], want[size_t(y) * W + x]));
    }
}

// ---- fast marching
// -------------------------------------------------------------------------------

namespace fm {

// Textbook fast marching with a binary heap of (value, row, column) entries and lazy deletion:
// the same order and update rule as the library's, through a different queue.
std::vector<float> reference(const TestImage<Rvp8u>& src, float radius) {
  const int W = src.width(), H = src.height();
  std::vector<float> t(size_t(W) * H, kInf);
  std::vector<char> known(size_t(W) * H, 0);
  auto id = [W](int x, int y) { return size_t(y) * W + x; };
  for (int y = 0; y < H; ++y)
    for (int x = 0; x < W; ++x)
      if (src.at(x, y) == 0) {
        t[id(x, y)] = 0;
        known[id(x, y)] = 1;
      }
  auto kv = [&](int x, int y) {
    return (x < 0 || y < 0 || x >= W || y >= H || !known[id(x, y)]) ? kInf : t[id(x, y)];
  };
  auto value = [&](int x, int y) {
    return rvp::segment::eikonal_update(std::min(kv(x - 1, y), kv(x + 1, y)),
                                        std::min(kv(x, y - 1), kv(x, y + 1)));
  };
  using Entry = std::tuple<float, int, int>;
  std::priority_queue<Entry, std::vector<Entry>, std::greater<Entry>> heap;
  for (int y = 0; y < H; ++y)
    for (int x = 0; x < W; ++x)
      if (!known[id(x, y)]) {
        const float v = value(x, y);
        if (v < kInf) {
          t[id(x, y)] = v;
          heap.emplace(v, y, x);
        }
      }
  while (!heap.empty()) {
    const auto [v, y, x] = heap.top();
    heap.pop();
    if (known[id(x, y)] || v != t[id(x, y)]) continue;
    if (v > radius) break;
    known[id(x, y)] = 1;
    const int nb[4][2] = {{x - 1, y}, {x + 1, y}, {x, y - 1}, {x, y + 1}};
    for (const auto& n : nb) {
      if (n[0] < 0 || n[1] < 0 || n[0] >= W || n[1] >= H || known[id(n[0], n[1])]) continue;
      const float u = value(n[0], n[1]);
      if (u < t[id(n[0], n[1])]) {
        t[id(n[0], n[1])] = u;
        heap.emplace(u, n[1], n[0]);
      }
    }
  }
  for (size_t i = 0; i < t.size(); ++i)
    if (!known[i]) t[i] = kInf;
  return t;
}

int buffer_size(RvpiSize roi) {
  int n = -1;
  EXPECT_EQ(rvpiFastMarchingGetBufferSize_8u32f_C1R(roi, &n), 0);
  return n;
}

RvpStatus run(const TestImage<Rvp8u>& src, TestImage<Rvp32f>& dst, float radius) {
  std::vector<Rvp8u> buf(static_cast<size_t>(buffer_size(src.size())));
  return rvpiFastMarching_8u32f_C1R(src.ptr(), src.step(), dst.ptr(), dst.step(), src.size(),
                                    radius, buf.data());
}

}  // namespace fm

TEST(DistanceFastMarching, UpdateRule) {
  EXPECT_EQ(rvp::segment::eikonal_update(kInf, kInf), kInf);
  EXPECT_EQ(rvp::segment::eikonal_update(0.0f, kInf), 1.0f);
  EXPECT_EQ(rvp::segment::eikonal_update(kInf, 2.5f), 3.5f);
  EXPECT_EQ(rvp::segment::eikonal_update(0.0f, 0.0f), float(std::sqrt(2.0) / 2));
  EXPECT_EQ(rvp::segment::eikonal_update(3.0f, 4.0f), 4.0f);  // |a - b| = 1: one neighbour
  EXPECT_EQ(rvp::segment::eikonal_update(9.0f, 2.0f), 3.0f);
  const float v = rvp::segment::eikonal_update(1.0f, 1.5f);
  EXPECT_EQ(v, float((2.5 + std::sqrt(2.0 - 0.25)) / 2));
  EXPECT_EQ(v, rvp::segment::eikonal_update(1.5f, 1.0f));
  EXPECT_NEAR((v - 1.0) * (v - 1.0) + (v - 1.5) * (v - 1.5), 1.0, 1e-6);
}

TEST(DistanceFastMarching, BufferSizeFormulaAndChecks) {
  EXPECT_EQ(fm::buffer_size({1, 1}), 35 * 37 + 40);
  EXPECT_EQ(fm::buffer_size({33, 2}), 36 * 69 + 40);
  EXPECT_EQ(fm::buffer_size({1920, 1080}), 1114 * 1925 + 40);
  int n = 5;
  EXPECT_EQ(rvpiFastMarchingGetBufferSize_8u32f_C1R({1, 1}, nullptr), -8);
  EXPECT_EQ(rvpiFastMarchingGetBufferSize_8u32f_C1R({0, 1}, &n), -6);
  EXPECT_EQ(rvpiFastMarchingGetBufferSize_8u32f_C1R({1, 0}, &n), -6);
  EXPECT_EQ(rvpiFastMarchingGetBufferSize_8u32f_C1R({100000, 100000}, &n), -6);
  EXPECT_EQ(n, 5);
}

TEST(DistanceFastMarching, StatusOrderAndNothingWritten) {
  const int W = 6, H = 4;
  TestImage<Rvp8u> src(W, H, 1, 2);
  std::mt19937 rng(6);
  fill_binary(src, rng, 0.3);
  std::vector<Rvp8u> buf(size_t(fm::buffer_size({W, H})), 0x3C);
  const float nan = std::numeric_limits<float>::quiet_NaN();
  struct Case {
    bool s, d, b;
    int ss, ds;
    RvpiSize r;
    float radius;
    RvpStatus want;
  };
  const Case cases[] = {
      {false, true, true, 8, 32, {W, H}, 5, -8},   {true, false, true, 8, 32, {W, H}, 5, -8},
      {true, true, false, 8, 32, {W, H}, -1, -8},  {true, true, true, 8, 32, {0, H}, -1, -6},
      {true, true, true, 5, 32, {W, H}, -1, -14},  {true, true, true, 8, 20, {W, H}, 5, -14},
      {true, true, true, 8, 26, {W, H}, -1, -108}, {true, true, true, 8, 32, {W, H}, -1, -5},
      {true, true, true, 8, 32, {W, H}, nan, -5},  {true, true, true, 8, 32, {W, H}, -kInf, -5},
      {true, true, true, 8, 32, {W, H}, kInf, 0},  {true, true, true, 8, 32, {W, H}, 0, 0},
  };
  for (size_t i = 0; i < std::size(cases); ++i) {
    const Case& c = cases[i];
    TestImage<Rvp32f> dst(W, H, 1, 8);
    const std::vector<uint8_t> before = dst.bytes();
    const std::vector<Rvp8u> buf_before = buf;
    EXPECT_EQ(rvpiFastMarching_8u32f_C1R(c.s ? src.ptr() : nullptr, c.ss, c.d ? dst.ptr() : nullptr,
                                         c.ds, c.r, c.radius, c.b ? buf.data() : nullptr),
              c.want)
        << "case " << i;
    if (c.want != 0) {
      EXPECT_EQ(dst.bytes(), before) << "case " << i;
      EXPECT_EQ(buf, buf_before) << "case " << i;
    }
  }
}

TEST(DistanceFastMarching, LoneFeatureAndRadius) {
  const int W = 41, H = 31, cx = 20, cy = 15;
  TestImage<Rvp8u> src(W, H);
  for (int y = 0; y < H; ++y)
    for (int x = 0; x < W; ++x) src.set(x, y, (x == cx && y == cy) ? 0 : 1);
  TestImage<Rvp32f> dst(W, H);
  ASSERT_EQ(fm::run(src, dst, kInf), 0);
  // Along the axes the front moves one pixel per unit exactly; next to the diagonal the two
  // neighbours give (2 + sqrt 2) / 2; the map is symmetric about both axes.
  for (int k = 0; k <= 15; ++k) {
    EXPECT_EQ(dst.at(cx + k, cy), float(k));
    EXPECT_EQ(dst.at(cx - k, cy), float(k));
    EXPECT_EQ(dst.at(cx, cy + k), float(k));
    EXPECT_EQ(dst.at(cx, cy - k), float(k));
  }
  EXPECT_EQ(dst.at(cx + 1, cy + 1), float((2 + std::sqrt(2.0)) / 2));
  for (int y = 0; y < H; ++y)
    for (int x = 0; x < W; ++x) {
      ASSERT_EQ(dst.at(x, y), dst.at(2 * cx - x, y));
      if (2 * cy - y < H && 2 * cy - y >= 0) {
        ASSERT_EQ(dst.at(x, y), dst.at(x, 2 * cy - y));
      }
    }
  // Radius: values up to it kept, everything else +infinity.
  for (float radius : {0.0f, 1.0f, 3.5f, 10.0f}) {
    TestImage<Rvp32f> band(W, H);
    ASSERT_EQ(fm::run(src, band, radius), 0);
    for (int y = 0; y < H; ++y)
      for (int x = 0; x < W; ++x) {
        const float full = dst.at(x, y);
        ASSERT_EQ(band.at(x, y), full <= radius ? full : kInf) << radius << " " << x << "," << y;
      }
  }
  // No zero pixel: +infinity everywhere.
  for (int y = 0; y < H; ++y)
    for (int x = 0; x < W; ++x) src.set(x, y, 7);
  ASSERT_EQ(fm::run(src, dst, kInf), 0);
  for (int y = 0; y < H; ++y)
    for (int x = 0; x < W; ++x) ASSERT_EQ(dst.at(x, y), kInf);
}

TEST(DistanceFastMarching, MatchesHeapReferenceBitForBit) {
  std::mt19937 rng(31);
  const double densities[] = {0.0005, 0.005, 0.03, 0.2, 0.6};
  for (int iter = 0; iter < 120; ++iter) {
    int W = 1 + int(rng() % 90), H = 1 + int(rng() % 40);
    if (iter % 40 == 0) W = 300 + int(rng() % 100);  // many blocks per row
    TestImage<Rvp8u> src(W, H, 1, int(rng() % 4), int(rng() % 3));
    fill_binary(src, rng, densities[iter % 5]);
    if (iter % 5 == 0) src.set(int(rng() % W), int(rng() % H), 0);
    const float radius = iter % 3 == 0 ? kInf : float(rng() % 200) * 0.1f;
    TestImage<Rvp32f> dst(W, H, 1, 4 * int(rng() % 3), 4 * int(rng() % 2));
    const int bytes = fm::buffer_size({W, H});
    GuardedBuffer buf(size_t(bytes) + 3, Guard::After);  // exact size at an odd address
    ASSERT_EQ(rvpiFastMarching_8u32f_C1R(src.ptr(), src.step(), dst.ptr(), dst.step(), src.size(),
                                         radius, buf.data() + 3),
              0);
    const std::vector<float> want = fm::reference(src, radius);
    const std::vector<float> got = read(dst);
    for (size_t i = 0; i < got.size(); ++i)
      ASSERT_TRUE(rvpt::same_bits(got[i], want[i]))
          << W << "x" << H << " radius " << radius << " pixel " << i << ": " << got[i] << " vs "
          << want[i];
  }
}

TEST(DistanceGuarded, FastMarchingStaysInsideItsImagesAndBuffer) {
  std::mt19937 rng(37);
  for (Guard g : {Guard::After, Guard::Before})
    for (int W = 1; W <= 70; W += 3) {
      const int H = 1 + (W * 5) % 11;
      GuardedImage<Rvp8u> src(W, H, 1, W + int(rng() % 3), g);
      GuardedImage<Rvp32f> dst(W, H, 1, 4 * (W + int(rng() % 3)), g);
      TestImage<Rvp8u> copy(W, H);
      for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) {
          src.row(y)[x] = rng() % 7 == 0 ? 0 : 2;
          copy.set(x, y, src.row(y)[x]);
        }
      GuardedBuffer buf(size_t(fm::buffer_size({W, H})), g);
      ASSERT_EQ(rvpiFastMarching_8u32f_C1R(src.ptr(), src.step(), dst.ptr(), dst.step(), {W, H},
                                           kInf, buf.data()),
                0);
      const std::vector<float> want = fm::reference(copy, kInf);
      for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x)
          ASSERT_TRUE(rvpt::same_bits(dst.row(y)[x], want[size_t(y) * W + x]));
    }
}

}  // namespace

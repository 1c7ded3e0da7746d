// Gaussian pyramids: every member against a direct 5x5 reference, the vector kernels against
// their scalar arithmetic, level sizes, the pyramid record, layers (equal to the 5x5 levels at
// rate 2), check order, nothing written on error, guarded images.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

#include "filter/pyramid_kernels.h"
#include "rvpcv.h"
#include "support/guarded.h"
#include "support/images.h"

namespace {

using rvpt::TestImage;

// Reflection written out independently of the library: bounce between 0 and n - 1.
int reflect(int i, int n) {
  if (n == 1) return 0;
  while (i < 0 || i >= n) i = i < 0 ? -i : 2 * (n - 1) - i;
  return i;
}

const int kW5[5] = {1, 4, 6, 4, 1};

// Direct 5x5 reference of one down-sampled element.
template <class T>
T ref_down(const TestImage<T>& s, int X, int Y, int c) {
  if constexpr (std::is_same_v<T, float>) {
    float v[5];
    for (int i = 0; i < 5; ++i) {
      const int x = reflect(2 * X + i - 2, s.width());
      float a = s.at(x, reflect(2 * Y - 2, s.height()), c);
      for (int j = 1; j < 5; ++j)
        a = a + s.at(x, reflect(2 * Y + j - 2, s.height()), c) * float(kW5[j]);
      v[i] = a;
    }
    float a = v[0];
    for (int i = 1; i < 5; ++i) a = a + v[i] * float(kW5[i]);
    return a / 256.0f;
  } else {
    int sum = 0;
    for (int j = 0; j < 5; ++j)
      for (int i = 0; i < 5; ++i)
        sum += kW5[i] * kW5[j] *
               s.at(reflect(2 * X + i - 2, s.width()), reflect(2 * Y + j - 2, s.height()), c);
    return static_cast<T>(int(std::floor((sum + 128) / 256.0)));
  }
}

// Up weights of output position o from source position k (0 when k does not contribute).
int up_w(int o, int k) {
  const int X = o / 2;
  if (o % 2 == 0) return k == X ? 6 : (k == X - 1 || k == X + 1) ? 1 : 0;
  return (k == X || k == X + 1) ? 4 : 0;
}

template <class T>
T ref_up(const TestImage<T>& s, int x, int y, int c) {
  const int X = x / 2, Y = y / 2;
  if constexpr (std::is_same_v<T, float>) {
    float v[3] = {0, 0, 0};
    int n = 0;
    for (int i = X - 1; i <= X + 2; ++i) {
      if (up_w(x, i) == 0) continue;
      const int sx = reflect(i, s.width());
      float a = 0;
      bool first = true;
      for (int j = Y - 1; j <= Y + 2; ++j) {
        if (up_w(y, j) == 0) continue;
        const float p = s.at(sx, reflect(j, s.height()), c) * float(up_w(y, j));
        a = first ? p : a + p;
        first = false;
      }
      v[n++] = a * float(up_w(x, i));
    }
    float a = v[0];
    for (int k = 1; k < n; ++k) a = a + v[k];
    return a / 64.0f;
  } else {
    int sum = 0;
    for (int j = Y - 1; j <= Y + 2; ++j)
      for (int i = X - 1; i <= X + 2; ++i)
        sum += up_w(x, i) * up_w(y, j) * s.at(reflect(i, s.width()), reflect(j, s.height()), c);
    return static_cast<T>(int(std::floor((sum + 32) / 64.0)));
  }
}

// Every member behind one signature.
template <class T>
using PyrFn = RvpStatus (*)(const T*, int, T*, int, RvpiSize, Rvp8u*);
template <class T>
struct Members;
template <>
struct Members<Rvp8u> {
  static constexpr RvpDataType type = rvp8u;
  static PyrFn<Rvp8u> down(int c) {
    return c == 1 ? rvpiPyrDown_Gauss5x5_8u_C1R : rvpiPyrDown_Gauss5x5_8u_C3R;
  }
  static PyrFn<Rvp8u> up(int c) {
    return c == 1 ? rvpiPyrUp_Gauss5x5_8u_C1R : rvpiPyrUp_Gauss5x5_8u_C3R;
  }
};
template <>
struct Members<Rvp8s> {
  static constexpr RvpDataType type = rvp8s;
  static PyrFn<Rvp8s> down(int c) {
    return c == 1 ? rvpiPyrDown_Gauss5x5_8s_C1R : rvpiPyrDown_Gauss5x5_8s_C3R;
  }
  static PyrFn<Rvp8s> up(int c) {
    return c == 1 ? rvpiPyrUp_Gauss5x5_8s_C1R : rvpiPyrUp_Gauss5x5_8s_C3R;
  }
};
template <>
struct Members<Rvp32f> {
  static constexpr RvpDataType type = rvp32f;
  static PyrFn<Rvp32f> down(int c) {
    return c == 1 ? rvpiPyrDown_Gauss5x5_32f_C1R : rvpiPyrDown_Gauss5x5_32f_C3R;
  }
  static PyrFn<Rvp32f> up(int c) {
    return c == 1 ? rvpiPyrUp_Gauss5x5_32f_C1R : rvpiPyrUp_Gauss5x5_32f_C3R;
  }
};

std::vector<Rvp8u> buffer_for(RvpDataType t, int w, int c, bool down) {
  int size = 0;
  EXPECT_EQ((down ? rvpiPyrDownGetBufSize_Gauss5x5 : rvpiPyrUpGetBufSize_Gauss5x5)(w, t, c, &size),
            0);
  return std::vector<Rvp8u>(size_t(size) + 1);
}

// Random pixels in every channel. (rvpt::fill_random indexes elements as pixels, so it only
// suits one-channel images.)
template <class T>
void fill_pixels(TestImage<T>& img, std::mt19937& rng) {
  for (int y = 0; y < img.height(); ++y)
    for (int x = 0; x < img.width(); ++x)
      for (int c = 0; c < img.channels(); ++c) img.set(x, y, rvpt::random_value<T>(rng), c);
}

// Bytes of an image's storage outside its region (row padding, bytes around) unchanged.
template <class T>
bool outside_untouched(const TestImage<T>& img) {
  const auto& b = img.bytes();
  const size_t first = size_t(reinterpret_cast<const uint8_t*>(img.ptr()) - b.data());
  const size_t row_bytes = size_t(img.width()) * img.channels() * sizeof(T);
  for (size_t k = 0; k < b.size(); ++k) {
    const bool inside = k >= first && (k - first) / img.step() < size_t(img.height()) &&
                        (k - first) % img.step() < row_bytes;
    if (!inside && b[k] != TestImage<T>::kMarker) return false;
  }
  return true;
}

template <class T>
void check_members(bool down) {
  std::mt19937 rng(down ? 11 : 12);
  for (int c : {1, 3})
    for (int iter = 0; iter < 160; ++iter) {
      const int w = 1 + int(rng() % (iter < 80 ? 12 : 90)), h = 1 + int(rng() % 9);
      const int ow = down ? (w + 1) / 2 : 2 * w, oh = down ? (h + 1) / 2 : 2 * h;
      const int es = int(sizeof(T));
      TestImage<T> src(w, h, c, int(rng() % 4) * es,
                       int(rng() % 8) * es + (es == 1 ? int(rng() % 3) : 0));
      TestImage<T> dst(ow, oh, c, int(rng() % 4) * es, int(rng() % 8) * es);
      fill_pixels(src, rng);
      auto buf = buffer_for(Members<T>::type, w, c, down);
      // A buffer of exactly the queried size at an odd address.
      const auto fn = down ? Members<T>::down(c) : Members<T>::up(c);
      ASSERT_EQ(fn(src.ptr(), src.step(), dst.ptr(), dst.step(), src.size(), buf.data() + 1), 0);
      for (int y = 0; y < oh; ++y)
        for (int x = 0; x < ow; ++x)
          for (int k = 0; k < c; ++k) {
            const T want = down ? ref_down(src, x, y, k) : ref_up(src, x, y, k);
            ASSERT_TRUE(rvpt::same_bits(dst.at(x, y, k), want))
                << "w " << w << " h " << h << " c " << c << " at " << x << "," << y << "," << k
                << ": " << double(dst.at(x, y, k)) << " vs " << double(want);
          }
      ASSERT_TRUE(outside_untouched(dst));
    }
}

TEST(PyrDown, EveryMemberMatchesTheDirectSum) {
  check_members<Rvp8u>(true);
  check_members<Rvp8s>(true);
  check_members<Rvp32f>(true);
}

TEST(PyrUp, EveryMemberMatchesTheDirectSum) {
  check_members<Rvp8u>(false);
  check_members<Rvp8s>(false);
  check_members<Rvp32f>(false);
}

TEST(PyrDown, BorderWeightsAndRounding) {
  // Row 10 20 30 40 (even width): first output 6*10 + 8*20 + 2*30 = 280 horizontally (/16),
  // last output column gives weight 7 to pixel w-2: 1*20 + 4*30 + 6*30... computed directly.
  TestImage<Rvp8u> src(4, 1), dst(2, 1);
  const Rvp8u px[4] = {10, 20, 30, 40};
  for (int x = 0; x < 4; ++x) src.set(x, 0, px[x]);
  auto buf = buffer_for(rvp8u, 4, 1, true);
  ASSERT_EQ(
      rvpiPyrDown_Gauss5x5_8u_C1R(src.ptr(), src.step(), dst.ptr(), dst.step(), {4, 1}, buf.data()),
      0);
  // Vertical weights of a one-row image sum to 16: value = horizontal/16, rounded half up.
  EXPECT_EQ(dst.at(0, 0), (16 * (6 * 10 + 8 * 20 + 2 * 30) + 128) >> 8);
  EXPECT_EQ(dst.at(1, 0), (16 * (1 * 10 + 4 * 20 + 7 * 30 + 4 * 40) + 128) >> 8);
  // Halves round up: a single pixel of 8 at the centre of zeros contributes 36*8/256 = 1.125.
  TestImage<Rvp8s> s8(1, 1), d8(1, 1);
  s8.set(0, 0, -1);
  ASSERT_EQ(rvpiPyrDown_Gauss5x5_8s_C1R(s8.ptr(), 1, d8.ptr(), 1, {1, 1}, buf.data()), 0);
  EXPECT_EQ(d8.at(0, 0), -1);  // a constant stays constant, negative too
}

TEST(PyrDown, OnePixelWideImageGivesOneColumn) {
  TestImage<Rvp8u> src(1, 7), dst(1, 4, 1, 3);
  std::mt19937 rng(3);
  fill_pixels(src, rng);
  auto buf = buffer_for(rvp8u, 1, 1, true);
  ASSERT_EQ(rvpiPyrDown_Gauss5x5_8u_C1R(src.ptr(), 1, dst.ptr(), dst.step(), {1, 7}, buf.data()),
            0);
  for (int y = 0; y < 4; ++y) EXPECT_EQ(dst.at(0, y), ref_down(src, 0, y, 0));
  EXPECT_TRUE(outside_untouched(dst));
}

// ---- vector kernels against the scalar arithmetic ---------------------------------------------

template <class T>
void kernels_match(std::mt19937& rng) {
  using A = rvp::pyr::Acc<T>;
  for (int C : {1, 3})
    for (int iter = 0; iter < 200; ++iter) {
      const int w = 1 + int(rng() % 150), n = w * C, off = int(rng() % 8);
      std::vector<T> rows[5];
      for (auto& r : rows) {
        r.resize(n + off);
        for (auto& v : r) v = rvpt::random_value<T>(rng);
      }
      const T* rp[5] = {rows[0].data() + off, rows[1].data() + off, rows[2].data() + off,
                        rows[3].data() + off, rows[4].data() + off};
      std::vector<A> va(n + 4 * C + off), vb(n + 4 * C + off);
      rvp::pyr::ref::down_vert<T>(rp, va.data() + off + 2 * C, n);
      rvp::pyr::avx2::down_vert<T>(rp, vb.data() + off + 2 * C, n);
      ASSERT_EQ(0, std::memcmp(va.data(), vb.data(), va.size() * sizeof(A)));
      // A padded intermediate with arbitrary contents (all 16-bit patterns for integers).
      for (auto& v : va) {
        if constexpr (std::is_same_v<T, float>)
          v = rvpt::special_float(rng);
        else
          v = static_cast<int16_t>(std::is_same_v<T, Rvp8u> ? rng() % 4081
                                                            : int(rng() % 4097) - 2048);
      }
      const int ow = (w + 1) / 2;
      std::vector<T> da(ow * C + off), db(ow * C + off), tmp(2 * n + 64);
      rvp::pyr::ref::down_horz<T>(va.data() + off + 2 * C, da.data() + off, ow, C);
      rvp::pyr::avx2::down_horz<T>(va.data() + off + 2 * C, db.data() + off, ow, C, tmp.data());
      for (size_t k = 0; k < da.size(); ++k) ASSERT_TRUE(rvpt::same_result(da[k], db[k])) << k;

      std::vector<A> ea(n + 2 * C), oa(n + 2 * C), eb(n + 2 * C), ob(n + 2 * C);
      rvp::pyr::ref::up_vert<T>(rp[0], rp[1], rp[2], ea.data() + C, oa.data() + C, n);
      rvp::pyr::avx2::up_vert<T>(rp[0], rp[1], rp[2], eb.data() + C, ob.data() + C, n);
      ASSERT_EQ(0, std::memcmp(ea.data(), eb.data(), ea.size() * sizeof(A)));
      ASSERT_EQ(0, std::memcmp(oa.data(), ob.data(), oa.size() * sizeof(A)));
      for (auto& v : ea) {
        if constexpr (std::is_same_v<T, float>)
          v = rvpt::special_float(rng);
        else
          v = static_cast<int16_t>(std::is_same_v<T, Rvp8u> ? rng() % 2041
                                                            : int(rng() % 2049) - 1024);
      }
      std::vector<T> ua(2 * n + off), ub(2 * n + off);
      rvp::pyr::ref::up_horz<T>(ea.data() + C, ua.data() + off, w, C);
      rvp::pyr::avx2::up_horz<T>(ea.data() + C, ub.data() + off, w, C, tmp.data());
      for (size_t k = 0; k < ua.size(); ++k) ASSERT_TRUE(rvpt::same_result(ua[k], ub[k])) << k;
    }
}

TEST(PyrKernels, VectorEqualsScalar) {
  std::mt19937 rng(5);
  kernels_match<Rvp8u>(rng);
  kernels_match<Rvp8s>(rng);
  kernels_match<Rvp32f>(rng);
}

// ---- checks -----------------------------------------------------------------------------------

template <class T>
void checks_for(int c, bool down) {
  const auto fn = down ? Members<T>::down(c) : Members<T>::up(c);
  const int es = int(sizeof(T));
  const int w = 6, h = 4, ow = down ? 3 : 12, oh = down ? 2 : 8;
  TestImage<T> src(w, h, c), dst(ow, oh, c);
  std::vector<Rvp8u> buf(4096, 0x5C);
  const auto before = dst.bytes();
  const auto buf_before = buf;
  const RvpiSize roi{w, h};
  const int ss = src.step(), ds = dst.step();
  EXPECT_EQ(fn(nullptr, ss, dst.ptr(), ds, roi, buf.data()), rvpStsNullPtrErr);
  EXPECT_EQ(fn(src.ptr(), ss, nullptr, ds, roi, buf.data()), rvpStsNullPtrErr);
  EXPECT_EQ(fn(src.ptr(), ss, dst.ptr(), ds, roi, nullptr), rvpStsNullPtrErr);
  EXPECT_EQ(fn(nullptr, ss, dst.ptr(), ds, {0, h}, buf.data()), rvpStsNullPtrErr);
  EXPECT_EQ(fn(src.ptr(), ss, dst.ptr(), ds, {0, h}, buf.data()), rvpStsSizeErr);
  EXPECT_EQ(fn(src.ptr(), ss, dst.ptr(), ds, {w, -1}, buf.data()), rvpStsSizeErr);
  EXPECT_EQ(fn(src.ptr(), ss - es, dst.ptr(), ds, roi, buf.data()), rvpStsStepErr);
  EXPECT_EQ(fn(src.ptr(), -ss, dst.ptr(), ds, roi, buf.data()), rvpStsStepErr);
  EXPECT_EQ(fn(src.ptr(), ss, dst.ptr(), ds - es, roi, buf.data()), rvpStsStepErr);
  if (es > 1) {
    // -14 on the destination comes before -108 on the source: one group of one type.
    EXPECT_EQ(fn(src.ptr(), ss + 2, dst.ptr(), ds - es, roi, buf.data()), rvpStsStepErr);
    EXPECT_EQ(fn(src.ptr(), ss + 2, dst.ptr(), ds, roi, buf.data()), rvpStsNotEvenStepErr);
    EXPECT_EQ(fn(src.ptr(), ss, dst.ptr(), ds + 1, roi, buf.data()), rvpStsNotEvenStepErr);
  }
  EXPECT_EQ(dst.bytes(), before);
  EXPECT_EQ(buf, buf_before);
}

TEST(PyrChecks, OrderAndNothingWritten) {
  for (bool down : {true, false})
    for (int c : {1, 3}) {
      checks_for<Rvp8u>(c, down);
      checks_for<Rvp8s>(c, down);
      checks_for<Rvp32f>(c, down);
    }
}

TEST(PyrBufSize, ChecksAndFormula) {
  for (auto fn : {rvpiPyrDownGetBufSize_Gauss5x5, rvpiPyrUpGetBufSize_Gauss5x5}) {
    int size = -77;
    EXPECT_EQ(fn(10, rvp8u, 1, nullptr), rvpStsNullPtrErr);
    EXPECT_EQ(fn(0, 99, 2, &size), rvpStsSizeErr);
    EXPECT_EQ(fn(10, 99, 2, &size), rvpStsNumChannelsErr);  // channels before type
    EXPECT_EQ(fn(10, rvp16u, 1, &size), rvpStsDataTypeErr);
    EXPECT_EQ(fn(10, rvp16s, 3, &size), rvpStsDataTypeErr);
    EXPECT_EQ(size, -77);
  }
  int size = 0;
  for (int w : {1, 3, 4, 5, 100, 1920})
    for (int c : {1, 3})
      for (RvpDataType t : {rvp8u, rvp8s, rvp32f}) {
        ASSERT_EQ(rvpiPyrDownGetBufSize_Gauss5x5(w, t, c, &size), 0);
        EXPECT_EQ(size, 6 * ((4 * w * c + 15) / 16 * 16) + 64);
        ASSERT_EQ(rvpiPyrUpGetBufSize_Gauss5x5(w, t, c, &size), 0);
        EXPECT_EQ(size, 4 * ((4 * (w + 2) * c + 31) / 32 * 32) + 64);
      }
  EXPECT_EQ(rvpiPyrDownGetBufSize_Gauss5x5(std::numeric_limits<int>::max() / 4, rvp8u, 3, &size),
            rvpStsSizeErr);
}

// Guarded source, destination and buffer (exact queried size): any stray access faults.
template <class T>
void guarded_for(int c) {
  for (rvpt::Guard g : {rvpt::Guard::After, rvpt::Guard::Before})
    for (int w = 1; w <= 70; ++w)
      for (int h : {1, 2, 3, 5}) {
        const int es = int(sizeof(T));
        for (bool down : {true, false}) {
          const int ow = down ? (w + 1) / 2 : 2 * w, oh = down ? (h + 1) / 2 : 2 * h;
          rvpt::GuardedImage<T> src(w, h, c, w * c * es, g), dst(ow, oh, c, ow * c * es, g);
          int size = 0;
          ASSERT_EQ((down ? rvpiPyrDownGetBufSize_Gauss5x5 : rvpiPyrUpGetBufSize_Gauss5x5)(
                        w, Members<T>::type, c, &size),
                    0);
          rvpt::GuardedBuffer buf(size, g);
          const auto fn = down ? Members<T>::down(c) : Members<T>::up(c);
          ASSERT_EQ(fn(src.ptr(), src.step(), dst.ptr(), dst.step(), {w, h}, buf.data()), 0);
        }
      }
}

TEST(PyrGuarded, NoAccessOutsideTheRegions) {
  for (int c : {1, 3}) {
    guarded_for<Rvp8u>(c);
    guarded_for<Rvp8s>(c);
    guarded_for<Rvp32f>(c);
  }
}

// ---- level sizes ------------------------------------------------------------------------------

TEST(PyramidRoi, ChecksAndRateLimits) {
  RvpiSize a{-5, -5}, b{-5, -5};
  EXPECT_EQ(rvpiGetPyramidDownROI({10, 10}, nullptr, 2.0f), rvpStsNullPtrErr);
  EXPECT_EQ(rvpiGetPyramidUpROI({10, 10}, &a, nullptr, 2.0f), rvpStsNullPtrErr);
  EXPECT_EQ(rvpiGetPyramidUpROI({10, 10}, nullptr, &b, 2.0f), rvpStsNullPtrErr);
  EXPECT_EQ(rvpiGetPyramidDownROI({0, 10}, &a, 2.0f), rvpStsSizeErr);
  EXPECT_EQ(rvpiGetPyramidUpROI({10, 0}, &a, &b, 2.0f), rvpStsSizeErr);
  for (float r : {1.0f, 0.5f, 10.001f, -2.0f, std::numeric_limits<float>::quiet_NaN()}) {
    EXPECT_EQ(rvpiGetPyramidDownROI({10, 10}, &a, r), rvpStsBadArgErr) << r;
    EXPECT_EQ(rvpiGetPyramidUpROI({10, 10}, &a, &b, r), rvpStsBadArgErr) << r;
  }
  EXPECT_EQ(a.width, -5);
  EXPECT_EQ(b.width, -5);
  EXPECT_EQ(rvpiGetPyramidDownROI({10, 10}, &a, 10.0f), 0);
  EXPECT_EQ(a.width, 1);
  EXPECT_EQ(rvpiGetPyramidUpROI({10, 10}, &a, &b, 10.0f), 0);
}

TEST(PyramidRoi, UpRangeValues) {
  RvpiSize mn, mx;
  for (float r : {1.01f, 1.5f, 2.0f, 3.7f, 10.0f}) {
    ASSERT_EQ(rvpiGetPyramidUpROI({1, 1}, &mn, &mx, r), 0);
    EXPECT_EQ(mn.width, 1);
    EXPECT_EQ(mx.width, std::max(int(r), 2));
    ASSERT_EQ(rvpiGetPyramidUpROI({7, 3}, &mn, &mx, r), 0);
    EXPECT_EQ(mn.width, std::max(int(6.0f * r) + 1, 8));
    EXPECT_EQ(mx.width, std::max(int(7.0f * r), 8));
    EXPECT_EQ(mn.height, std::max(int(2.0f * r) + 1, 4));
    EXPECT_EQ(mx.height, std::max(int(3.0f * r), 4));
  }
}

TEST(PyramidRoi, DownFitsTheUpRange) {
  std::mt19937 rng(9);
  for (int iter = 0; iter < 3000; ++iter) {
    const float r =
        iter % 3 == 0 ? 2.0f : 1.0f + std::uniform_real_distribution<float>(0.001f, 9.0f)(rng);
    const RvpiSize s{1 + int(rng() % 3000), 1 + int(rng() % 50)};
    RvpiSize d, mn, mx;
    ASSERT_EQ(rvpiGetPyramidDownROI(s, &d, r), 0);
    ASSERT_EQ(rvpiGetPyramidUpROI(d, &mn, &mx, r), 0);
    ASSERT_TRUE(s.width >= mn.width && s.width <= mx.width) << s.width << " rate " << r;
    ASSERT_TRUE(s.height >= mn.height && s.height <= mx.height) << s.height << " rate " << r;
    if (r == 2.0f) {  // the 5x5 levels' size
      EXPECT_EQ(d.width, (s.width + 1) / 2);
      EXPECT_EQ(d.height, (s.height + 1) / 2);
    }
  }
}

// ---- the pyramid record ---------------------------------------------------------------------

TEST(PyramidRecord, LevelsRatesAndChecks) {
  RvpiPyramid* pyr = nullptr;
  ASSERT_EQ(rvpiPyramidInitAlloc({1000, 301}, 4, 2.0f, &pyr), 0);
  ASSERT_NE(pyr, nullptr);
  EXPECT_EQ(pyr->level, 4);
  const int ws[5] = {1000, 500, 250, 125, 63}, hs[5] = {301, 151, 76, 38, 19};
  for (int i = 0; i <= 4; ++i) {
    EXPECT_EQ(pyr->pRoi[i].width, ws[i]);
    EXPECT_EQ(pyr->pRoi[i].height, hs[i]);
    EXPECT_EQ(pyr->pRate[i], std::pow(2.0, i));
    EXPECT_EQ(pyr->pImage[i], nullptr);
    EXPECT_EQ(pyr->pStep[i], 0);
  }
  EXPECT_EQ(pyr->pState, nullptr);
  EXPECT_EQ(rvpiPyramidFree(pyr), 0);
  ASSERT_EQ(rvpiPyramidInitAlloc({9, 9}, 0, 1.5f, &pyr), 0);
  EXPECT_EQ(pyr->pRoi[0].width, 9);
  EXPECT_EQ(pyr->pRate[0], 1.0);
  rvpiPyramidFree(pyr);
  ASSERT_EQ(rvpiPyramidInitAlloc({100, 100}, 3, 1.5f, &pyr), 0);
  EXPECT_DOUBLE_EQ(pyr->pRate[3], 1.5 * 1.5 * 1.5);
  rvpiPyramidFree(pyr);

  RvpiPyramid* const sentinel = reinterpret_cast<RvpiPyramid*>(uintptr_t{0x1234});
  pyr = sentinel;
  EXPECT_EQ(rvpiPyramidInitAlloc({10, 10}, 2, 2.0f, nullptr), rvpStsNullPtrErr);
  EXPECT_EQ(rvpiPyramidInitAlloc({0, 10}, -1, 2.0f, &pyr), rvpStsSizeErr);
  EXPECT_EQ(rvpiPyramidInitAlloc({10, 10}, -1, 2.0f, &pyr), rvpStsBadArgErr);
  EXPECT_EQ(rvpiPyramidInitAlloc({10, 10}, 2, 1.0f, &pyr), rvpStsBadArgErr);
  EXPECT_EQ(rvpiPyramidInitAlloc({10, 10}, std::numeric_limits<int>::max() - 1, 2.0f, &pyr),
            rvpStsMemAllocErr);
  EXPECT_EQ(pyr, sentinel);
  EXPECT_EQ(rvpiPyramidFree(nullptr), 0);
}

// ---- layers -------------------------------------------------------------------------------

const float kGauss5[5] = {1, 4, 6, 4, 1};

template <class T>
struct Layers;
#define RVPT_LAYERS(t, T)                                                       \
  template <>                                                                   \
  struct Layers<T> {                                                            \
    static constexpr auto down_init1 = rvpiPyramidLayerDownInitAlloc_##t##_C1R; \
    static constexpr auto down_init3 = rvpiPyramidLayerDownInitAlloc_##t##_C3R; \
    static constexpr auto down1 = rvpiPyramidLayerDown_##t##_C1R;               \
    static constexpr auto down3 = rvpiPyramidLayerDown_##t##_C3R;               \
    static constexpr auto down_free1 = rvpiPyramidLayerDownFree_##t##_C1R;      \
    static constexpr auto down_free3 = rvpiPyramidLayerDownFree_##t##_C3R;      \
    static constexpr auto up_init1 = rvpiPyramidLayerUpInitAlloc_##t##_C1R;     \
    static constexpr auto up_init3 = rvpiPyramidLayerUpInitAlloc_##t##_C3R;     \
    static constexpr auto up1 = rvpiPyramidLayerUp_##t##_C1R;                   \
    static constexpr auto up3 = rvpiPyramidLayerUp_##t##_C3R;                   \
    static constexpr auto up_free1 = rvpiPyramidLayerUpFree_##t##_C1R;          \
    static constexpr auto up_free3 = rvpiPyramidLayerUpFree_##t##_C3R;          \
  };
RVPT_LAYERS(8u, Rvp8u)
RVPT_LAYERS(16u, Rvp16u)
RVPT_LAYERS(32f, Rvp32f)
#undef RVPT_LAYERS

// Runs a layer of C channels; returns the status.
template <class T>
RvpStatus run_layer(bool down, int c, const TestImage<T>& src, TestImage<T>& dst, float rate,
                    const float* kernel, int ksize, RvpiSize state_size) {
  using L = Layers<T>;
  RvpStatus st;
  if (down) {
    RvpiPyramidDownState* s = nullptr;
    st = (c == 1 ? L::down_init1 : L::down_init3)(state_size, rate, kernel, ksize, 1, &s);
    if (st != 0) return st;
    st = (c == 1 ? L::down1 : L::down3)(src.ptr(), src.step(), dst.ptr(), dst.step(), src.size(),
                                        dst.size(), s);
    (c == 1 ? L::down_free1 : L::down_free3)(s);
  } else {
    RvpiPyramidUpState* s = nullptr;
    st = (c == 1 ? L::up_init1 : L::up_init3)(state_size, rate, kernel, ksize, 1, &s);
    if (st != 0) return st;
    st = (c == 1 ? L::up1 : L::up3)(src.ptr(), src.step(), dst.ptr(), dst.step(), src.size(),
                                    dst.size(), s);
    (c == 1 ? L::up_free1 : L::up_free3)(s);
  }
  return st;
}

// At rate 2 with 1 4 6 4 1 the layers are the 5x5 levels (16u against the integer reference).
template <class T>
void layers_equal_levels(std::mt19937& rng) {
  for (int c : {1, 3})
    for (int iter = 0; iter < 40; ++iter) {
      const int w = 1 + int(rng() % 40), h = 1 + int(rng() % 12);
      TestImage<T> src(w, h, c, int(rng() % 3) * int(sizeof(T)));
      fill_pixels(src, rng);
      for (bool down : {true, false}) {
        const int ow = down ? (w + 1) / 2 : 2 * w, oh = down ? (h + 1) / 2 : 2 * h;
        TestImage<T> dst(ow, oh, c, int(rng() % 3) * int(sizeof(T)));
        ASSERT_EQ(run_layer<T>(down, c, src, dst, 2.0f, kGauss5, 5, down ? src.size() : dst.size()),
                  0);
        for (int y = 0; y < oh; ++y)
          for (int x = 0; x < ow; ++x)
            for (int k = 0; k < c; ++k) {
              T want;
              if constexpr (std::is_same_v<T, Rvp16u>) {
                // The integer rule of the 5x5 levels, widened.
                int64_t sum = 0;
                if (down) {
                  for (int j = 0; j < 5; ++j)
                    for (int i = 0; i < 5; ++i)
                      sum += kW5[i] * kW5[j] *
                             src.at(reflect(2 * x + i - 2, w), reflect(2 * y + j - 2, h), k);
                  want = T((sum + 128) >> 8);
                } else {
                  for (int j = y / 2 - 1; j <= y / 2 + 2; ++j)
                    for (int i = x / 2 - 1; i <= x / 2 + 2; ++i)
                      sum += up_w(x, i) * up_w(y, j) * src.at(reflect(i, w), reflect(j, h), k);
                  want = T((sum + 32) >> 6);
                }
              } else {
                want = down ? ref_down(src, x, y, k) : ref_up(src, x, y, k);
              }
              ASSERT_TRUE(rvpt::same_bits(dst.at(x, y, k), want))
                  << (down ? "down" : "up") << " w " << w << " h " << h << " at " << x << "," << y;
            }
        ASSERT_TRUE(outside_untouched(dst));
      }
    }
}

TEST(PyramidLayer, RateTwoEqualsTheGaussLevels) {
  std::mt19937 rng(21);
  layers_equal_levels<Rvp8u>(rng);
  layers_equal_levels<Rvp16u>(rng);
  layers_equal_levels<Rvp32f>(rng);
}

// Any rate and kernel keep a constant image constant; down-sampling a ramp samples it at
// X * rate (the smoothing of a ramp by a symmetric kernel is the ramp, away from the borders).
TEST(PyramidLayer, ConstantsAndRampsAtAnyRate) {
  std::mt19937 rng(22);
  const float k3[3] = {1, 2, 1}, k7[7] = {1, 3, 5, 7, 5, 3, 1};
  for (int iter = 0; iter < 60; ++iter) {
    const float rate = 1.0f + std::uniform_real_distribution<float>(0.05f, 4.0f)(rng);
    const float* k = iter % 2 ? k3 : k7;
    const int ks = iter % 2 ? 3 : 7;
    const RvpiSize s{20 + int(rng() % 60), 3 + int(rng() % 10)};
    RvpiSize d, mn, mx;
    ASSERT_EQ(rvpiGetPyramidDownROI(s, &d, rate), 0);
    ASSERT_EQ(rvpiGetPyramidUpROI(s, &mn, &mx, rate), 0);
    TestImage<Rvp16u> src(s.width, s.height), dd(d.width, d.height), du(mn.width, mn.height);
    for (int y = 0; y < s.height; ++y)
      for (int x = 0; x < s.width; ++x) src.set(x, y, 4321);
    ASSERT_EQ(run_layer<Rvp16u>(true, 1, src, dd, rate, k, ks, s), 0);
    ASSERT_EQ(run_layer<Rvp16u>(false, 1, src, du, rate, k, ks, mx), 0);
    for (int y = 0; y < d.height; ++y)
      for (int x = 0; x < d.width; ++x) ASSERT_EQ(dd.at(x, y), 4321);
    for (int y = 0; y < mn.height; ++y)
      for (int x = 0; x < mn.width; ++x) ASSERT_EQ(du.at(x, y), 4321);

    TestImage<Rvp32f> ramp(s.width, s.height), rd(d.width, d.height);
    for (int y = 0; y < s.height; ++y)
      for (int x = 0; x < s.width; ++x) ramp.set(x, y, 3.0f * x);
    ASSERT_EQ(run_layer<Rvp32f>(true, 1, ramp, rd, rate, k, ks, s), 0);
    for (int X = 0; X < d.width; ++X) {
      const float pos = float(X) * rate;
      if (pos < ks / 2 || pos > s.width - 1 - ks / 2 - 1) continue;
      EXPECT_NEAR(rd.at(X, 0), 3.0f * pos, 1e-3f * (1 + pos)) << "rate " << rate << " X " << X;
    }
  }
}

TEST(PyramidLayer, ChecksAndNothingWritten) {
  using L = Layers<Rvp8u>;
  RvpiPyramidDownState* const sd0 = reinterpret_cast<RvpiPyramidDownState*>(uintptr_t{16});
  RvpiPyramidDownState* sd = sd0;
  const float even[4] = {1, 3, 3, 1}, zero[3] = {1, -2, 1};
  EXPECT_EQ(L::down_init1({8, 8}, 2.0f, nullptr, 5, 1, &sd), rvpStsNullPtrErr);
  EXPECT_EQ(L::down_init1({8, 8}, 2.0f, kGauss5, 5, 1, nullptr), rvpStsNullPtrErr);
  EXPECT_EQ(L::down_init1({0, 8}, 0.0f, kGauss5, 0, 7, &sd), rvpStsSizeErr);
  EXPECT_EQ(L::down_init1({8, 8}, 1.0f, kGauss5, 0, 7, &sd), rvpStsBadArgErr);
  EXPECT_EQ(L::down_init1({8, 8}, 2.0f, kGauss5, 0, 7, &sd), rvpStsSizeErr);
  EXPECT_EQ(L::down_init1({8, 8}, 2.0f, even, 4, 1, &sd), rvpStsBadArgErr);
  EXPECT_EQ(L::down_init1({8, 8}, 2.0f, zero, 3, 1, &sd), rvpStsBadArgErr);
  EXPECT_EQ(L::down_init1({8, 8}, 2.0f, kGauss5, 5, 0, &sd), rvpStsBadArgErr);
  EXPECT_EQ(L::down_init1({8, 8}, 2.0f, kGauss5, 5, 2, &sd), rvpStsBadArgErr);
  EXPECT_EQ(sd, sd0);
  RvpiPyramidUpState* const su0 = reinterpret_cast<RvpiPyramidUpState*>(uintptr_t{16});
  RvpiPyramidUpState* su = su0;
  EXPECT_EQ(L::up_init3({8, 8}, 2.0f, kGauss5, 5, 3, &su), rvpStsBadArgErr);
  EXPECT_EQ(L::up_init3({8, 8}, 11.0f, kGauss5, 5, 1, &su), rvpStsBadArgErr);
  EXPECT_EQ(su, su0);

  ASSERT_EQ(L::down_init1({16, 16}, 2.0f, kGauss5, 5, 1, &sd), 0);
  ASSERT_EQ(L::up_init1({16, 16}, 2.0f, kGauss5, 5, 1, &su), 0);
  TestImage<Rvp8u> src(16, 16), small(8, 8), big(32, 32);
  const auto before = small.bytes();
  const int ss = src.step(), ds = small.step();
  EXPECT_EQ(L::down1(nullptr, ss, small.ptr(), ds, {16, 16}, {8, 8}, sd), rvpStsNullPtrErr);
  EXPECT_EQ(L::down1(src.ptr(), ss, nullptr, ds, {16, 16}, {8, 8}, sd), rvpStsNullPtrErr);
  EXPECT_EQ(L::down1(src.ptr(), ss, small.ptr(), ds, {16, 16}, {8, 8}, nullptr), rvpStsNullPtrErr);
  EXPECT_EQ(L::down1(src.ptr(), ss, small.ptr(), ds, {16, 0}, {8, 8}, sd), rvpStsSizeErr);
  EXPECT_EQ(L::down1(src.ptr(), ss, small.ptr(), ds, {16, 16}, {6, 8}, sd), rvpStsSizeErr);
  EXPECT_EQ(L::down1(big.ptr(), big.step(), small.ptr(), ds, {32, 32}, {16, 16}, sd),
            rvpStsSizeErr);  // larger than the state serves
  EXPECT_EQ(L::down1(src.ptr(), 15, small.ptr(), ds, {16, 16}, {8, 8}, sd), rvpStsStepErr);
  EXPECT_EQ(L::down1(src.ptr(), ss, small.ptr(), 7, {16, 16}, {8, 8}, sd), rvpStsStepErr);
  EXPECT_EQ(small.bytes(), before);
  // A state made for one channel is refused by the three-channel member.
  TestImage<Rvp8u> src3(16, 16, 3), dst3(8, 8, 3);
  EXPECT_EQ(L::down3(src3.ptr(), src3.step(), dst3.ptr(), dst3.step(), {16, 16}, {8, 8}, sd),
            rvpStsContextMatchErr);
  const auto big_before = big.bytes();
  EXPECT_EQ(L::up1(small.ptr(), ds, big.ptr(), big.step(), {8, 8}, {32, 32}, su), rvpStsSizeErr);
  EXPECT_EQ(L::up1(small.ptr(), ds, big.ptr(), big.step(), {8, 8}, {13, 16}, su), rvpStsSizeErr);
  EXPECT_EQ(big.bytes(), big_before);
  EXPECT_EQ(L::down_free1(sd), 0);
  EXPECT_EQ(L::up_free1(su), 0);
  EXPECT_EQ(L::down_free1(nullptr), 0);
}

TEST(PyramidLayer, GuardedImages) {
  const float k3[3] = {1, 2, 1};
  for (rvpt::Guard g : {rvpt::Guard::After, rvpt::Guard::Before})
    for (int w = 1; w <= 30; ++w)
      for (float rate : {2.0f, 1.6f, 3.3f}) {
        const RvpiSize s{w, 3};
        RvpiSize d, mn, mx;
        rvpiGetPyramidDownROI(s, &d, rate);
        rvpiGetPyramidUpROI(s, &mn, &mx, rate);
        rvpt::GuardedImage<Rvp16u> src(w, 3, 3, 6 * w, g), dd(d.width, d.height, 3, 6 * d.width, g),
            du(mx.width, mx.height, 3, 6 * mx.width, g);
        RvpiPyramidDownState* sd;
        RvpiPyramidUpState* su;
        ASSERT_EQ(rvpiPyramidLayerDownInitAlloc_16u_C3R(s, rate, k3, 3, 1, &sd), 0);
        ASSERT_EQ(rvpiPyramidLayerUpInitAlloc_16u_C3R(mx, rate, kGauss5, 5, 1, &su), 0);
        ASSERT_EQ(
            rvpiPyramidLayerDown_16u_C3R(src.ptr(), src.step(), dd.ptr(), dd.step(), s, d, sd), 0);
        ASSERT_EQ(rvpiPyramidLayerUp_16u_C3R(src.ptr(), src.step(), du.ptr(), du.step(), s, mx, su),
                  0);
        rvpiPyramidLayerDownFree_16u_C3R(sd);
        rvpiPyramidLayerUpFree_16u_C3R(su);
      }
}

}  // namespace

namespace {

TEST(PyramidRoi, HugeSizesSaturate) {
  RvpiSize d, mn, mx;
  const RvpiSize huge{2147483647, 2147483647};
  ASSERT_EQ(rvpiGetPyramidUpROI(huge, &mn, &mx, 10.0f), 0);
  EXPECT_EQ(mn.width, 2147483647);
  EXPECT_EQ(mx.height, 2147483647);
  ASSERT_EQ(rvpiGetPyramidDownROI(huge, &d, 1.00001f), 0);
  EXPECT_GE(d.width, 2147400000);
  ASSERT_EQ(rvpiGetPyramidDownROI(huge, &d, 2.0f), 0);
  EXPECT_GE(d.width, 1073741823);
  EXPECT_LE(d.width, 1073741825);
  int size = 0;
  EXPECT_EQ(rvpiPyrUpGetBufSize_Gauss5x5(2147483647, rvp8u, 1, &size), rvpStsSizeErr);
  Rvp8u px[4] = {};
  EXPECT_EQ(rvpiPyrUp_Gauss5x5_8u_C1R(px, 1 << 30, px, 1 << 30, {1 << 30, 1}, px), rvpStsSizeErr);
}

}  // namespace

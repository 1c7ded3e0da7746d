// Labelling and speckle marking against breadth-first references: random images, the union-find
// path and the scan-and-fill path separately, the documented edge cases, argument checks with
// nothing written on error, and guarded memory.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <type_traits>
#include <vector>

#include "fill_api.h"
#include "segment/flood_fill_core.h"
#include "segment/labelling_internal.h"
#include "support/guarded.h"
#include "support/images.h"
#include "support/segment_ref.h"

using rvpt::OddBuffer;
using rvpt::TestImage;

namespace {

int label_buffer_size(RvpiSize roi) {
  int n = 0;
  rvpiLabelMarkersGetBufferSize_8u_C1R(roi, &n);
  return n;
}

template <class T>
void random_markers(TestImage<T>& im, std::mt19937& rng, double density) {
  std::bernoulli_distribution on(density);
  for (int y = 0; y < im.height(); ++y)
    for (int x = 0; x < im.width(); ++x) {
      T v = 0;
      if (on(rng))
        v = rng() % 4 == 0 ? std::numeric_limits<T>::max()
                           : T(1 + rng() % std::min<uint32_t>(200, std::numeric_limits<T>::max()));
      im.set(x, y, v);
    }
}

struct Expected {
  std::vector<int> lab;  // label value per pixel, 0 for background
  int count = 0;
  int64_t max_runs = 0;  // most runs of any one region
};

template <class T>
Expected reference_labels(const TestImage<T>& im, bool conn8, int min_label, int max_label) {
  const int w = im.width(), h = im.height();
  Expected e;
  std::vector<int> idx;
  e.count = rvpt::label_components(
      w, h, conn8, [&](int p) { return im.at(p % w, p / w) != 0; }, [](int, int) { return true; },
      idx);
  e.lab.assign(idx.size(), 0);
  const int64_t span = int64_t(max_label) - min_label + 1;
  for (size_t p = 0; p < idx.size(); ++p)
    if (idx[p] >= 0) e.lab[p] = int(min_label + idx[p] % span);
  std::vector<int64_t> runs(size_t(e.count), 0);
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w; ++x) {
      const int i = idx[size_t(y) * w + x];
      if (i >= 0 && (x == 0 || idx[size_t(y) * w + x - 1] != i)) ++runs[size_t(i)];
    }
  for (int64_t r : runs) e.max_runs = std::max(e.max_runs, r);
  return e;
}

// The fill stack of a labelling buffer holds at least this many spans.
int64_t fill_capacity(RvpiSize roi) {
  return std::max<int64_t>(4, int64_t(roi.width) * roi.height / 4 + 1);
}

template <class T>
void expect_labels(const TestImage<T>& before, const TestImage<T>& after, const Expected& e) {
  TestImage<T> want = before;
  const int w = before.width();
  for (size_t p = 0; p < e.lab.size(); ++p) want.set(int(p) % w, int(p) / w, T(e.lab[p]));
  ASSERT_EQ(after.bytes(), want.bytes());
}

template <class T>
RvpStatus label_in_place(T* img, int step, RvpiSize roi, int mn, int mx, int norm, int* num,
                         Rvp8u* buf) {
  if constexpr (std::is_same_v<T, Rvp8u>)
    return rvpiLabelMarkers_8u_C1IR(img, step, roi, mn, mx, norm, num, buf);
  else
    return rvpiLabelMarkers_16u_C1IR(img, step, roi, mn, mx, norm, num, buf);
}

template <class T>
void random_labelling(int iterations, uint32_t seed) {
  std::mt19937 rng(seed);
  const int max_allowed = int(std::numeric_limits<T>::max()) - 1;
  for (int it = 0; it < iterations; ++it) {
    const int w = std::uniform_int_distribution<int>(1, 70)(rng);
    const int h = std::uniform_int_distribution<int>(1, 40)(rng);
    const int norm = it % 2;
    int mn = 1 + int(rng() % 20), mx = mn + int(rng() % 30);
    if (it % 7 == 0) mx = mn;  // every region the same label
    if (it % 5 == 0) mn = 1, mx = max_allowed;
    TestImage<T> im(w, h, 1, int(sizeof(T)) * int(rng() % 3), int(rng() % 8));
    random_markers(im, rng, std::uniform_real_distribution<double>(0.1, 0.9)(rng));
    const Expected e = reference_labels(im, norm == 0, mn, mx);
    const TestImage<T> before = im;
    OddBuffer buf(label_buffer_size(im.size()));
    int num = -1;
    ASSERT_EQ(label_in_place(im.ptr(), im.step(), im.size(), mn, mx, norm, &num, buf.ptr()), 0);
    if (e.max_runs > fill_capacity(im.size())) continue;  // a fill may stop early there
    ASSERT_EQ(num, e.count);
    expect_labels(before, im, e);
    if (::testing::Test::HasFatalFailure()) return;
  }
}

TEST(LabelMarkers, RandomImagesMatchReference_8u) { random_labelling<Rvp8u>(300, 21); }
TEST(LabelMarkers, RandomImagesMatchReference_16u) { random_labelling<Rvp16u>(200, 22); }

TEST(LabelMarkers, RandomImagesMatchReference_8u32s) {
  std::mt19937 rng(23);
  for (int it = 0; it < 200; ++it) {
    const int w = std::uniform_int_distribution<int>(1, 70)(rng);
    const int h = std::uniform_int_distribution<int>(1, 40)(rng);
    const int norm = it % 2;
    const int mn = 1 + int(rng() % 1000), mx = it % 3 ? mn + int(rng() % 40) : 2147483646;
    TestImage<Rvp8u> src(w, h, 1, int(rng() % 5), int(rng() % 8));
    random_markers(src, rng, std::uniform_real_distribution<double>(0.1, 0.9)(rng));
    TestImage<Rvp32s> dst(w, h, 1, 4 * int(rng() % 3), int(rng() % 8));
    for (int y = 0; y < h; ++y)
      for (int x = 0; x < w; ++x) dst.set(x, y, -5);
    const TestImage<Rvp8u> src0 = src;
    const TestImage<Rvp32s> dst0 = dst;
    const Expected e = reference_labels(src, norm == 0, mn, mx);
    OddBuffer buf(label_buffer_size(src.size()));
    int num = -1;
    ASSERT_EQ(rvpiLabelMarkers_8u32s_C1R(src.ptr(), src.step(), dst.ptr(), dst.step(), src.size(),
                                         mn, mx, norm, &num, buf.ptr()),
              0);
    EXPECT_EQ(src.bytes(), src0.bytes());
    if (e.max_runs > fill_capacity(src.size())) continue;
    ASSERT_EQ(num, e.count);
    expect_labels(dst0, dst, e);
  }
}

// Both internal paths, each against the reference, on the same images.
TEST(LabelMarkers, RunsPathAndFillPathAgree) {
  std::mt19937 rng(24);
  int runs_used = 0;
  for (int it = 0; it < 200; ++it) {
    const int w = std::uniform_int_distribution<int>(1, 60)(rng);
    const int h = std::uniform_int_distribution<int>(1, 40)(rng);
    const bool conn8 = it % 2;
    const int mn = 3, mx = 3 + int(rng() % 50);
    TestImage<Rvp16u> im(w, h);
    random_markers(im, rng, std::uniform_real_distribution<double>(0.05, 0.95)(rng));
    const Expected e = reference_labels(im, conn8, mn, mx);
    const int bytes = label_buffer_size(im.size());
    std::vector<uint8_t> buf(size_t(bytes) + 1);

    TestImage<Rvp16u> a = im;
    int count = -1;
    const bool ok = rvp::seg::label_by_runs<Rvp16u, Rvp16u>(
        a.ptr(), a.step(), a.ptr(), a.step(), w, h, mn, mx, conn8, buf.data() + 1, bytes, &count);
    if (ok) {
      ++runs_used;
      ASSERT_LE(e.max_runs, fill_capacity(im.size()));
      ASSERT_EQ(count, e.count);
      expect_labels(im, a, e);
    } else {
      EXPECT_EQ(a.bytes(), im.bytes()) << "a refused runs pass must not write";
    }
    TestImage<Rvp16u> b = im;
    for (int y = 0; y < h; ++y)
      for (int x = 0; x < w; ++x) b.set(x, y, b.at(x, y) ? 65535 : 0);
    const int n = rvp::seg::label_by_fills<Rvp16u>(b.ptr(), b.step(), w, h, 65535, mn, mx, conn8,
                                                   buf.data() + 1, bytes);
    if (e.max_runs <= fill_capacity(im.size())) {
      ASSERT_EQ(n, e.count);
      expect_labels(im, b, e);
    }
  }
  EXPECT_GT(runs_used, 150);
}

TEST(LabelMarkers, RowRunsMatchAScalarScan) {
  std::mt19937 rng(25);
  for (int it = 0; it < 300; ++it) {
    const int w = 1 + int(rng() % 200);
    std::vector<Rvp8u> r8(size_t(w) + 1);
    std::vector<Rvp16u> r16(size_t(w) + 1);
    const double density = (rng() % 100) / 100.0;
    for (int x = 0; x < w; ++x) {
      const bool on = std::bernoulli_distribution(density)(rng);
      r8[x + 1] = on ? Rvp8u(1 + rng() % 255) : 0;
      r16[x + 1] = on ? Rvp16u(rng() % 2 ? 256 : 1 + rng() % 65535) : 0;
    }
    std::vector<int32_t> want;
    for (int x = 0; x < w; ++x)
      if (r8[x + 1] && (x == 0 || !r8[x]))
        want.push_back(x);
      else if (!r8[x + 1] && x > 0 && r8[x])
        want.push_back(x - 1);
    if (w > 0 && r8[w]) want.push_back(w - 1);
    std::vector<int32_t> got(size_t(w) + 2);
    const int n8 = rvp::seg::row_runs(r8.data() + 1, w, got.data());  // odd address
    ASSERT_EQ(std::vector<int32_t>(got.begin(), got.begin() + 2 * n8), want);
    const int n16 = rvp::seg::row_runs(r16.data() + 1, w, got.data());
    ASSERT_EQ(std::vector<int32_t>(got.begin(), got.begin() + 2 * n16), want);
  }
}

TEST(LabelMarkers, EdgeCases) {
  OddBuffer buf(label_buffer_size({6, 4}));
  int num = -1;
  // No nonzero pixel: count 0, image unchanged.
  TestImage<Rvp8u> zero(6, 4, 1, 3, 1);
  for (int y = 0; y < 4; ++y)
    for (int x = 0; x < 6; ++x) zero.set(x, y, 0);
  const TestImage<Rvp8u> zero0 = zero;
  ASSERT_EQ(
      rvpiLabelMarkers_8u_C1IR(zero.ptr(), zero.step(), zero.size(), 1, 254, 0, &num, buf.ptr()),
      0);
  EXPECT_EQ(num, 0);
  EXPECT_EQ(zero.bytes(), zero0.bytes());
  // Diagonal pairs: one region under norm 0, two under norm 1; a 65535 pixel is a marker too.
  for (int norm : {0, 1}) {
    TestImage<Rvp16u> d(6, 4);
    for (int y = 0; y < 4; ++y)
      for (int x = 0; x < 6; ++x) d.set(x, y, 0);
    d.set(1, 1, 65535);
    d.set(2, 2, 7);
    ASSERT_EQ(rvpiLabelMarkers_16u_C1IR(d.ptr(), d.step(), d.size(), 10, 20, norm, &num, buf.ptr()),
              0);
    EXPECT_EQ(num, norm == 0 ? 1 : 2);
    EXPECT_EQ(d.at(1, 1), 10);
    EXPECT_EQ(d.at(2, 2), norm == 0 ? 10 : 11);
  }
  // minLabel = maxLabel: every region gets it, the count still counts regions.
  TestImage<Rvp8u> dots(6, 4);
  for (int y = 0; y < 4; ++y)
    for (int x = 0; x < 6; ++x) dots.set(x, y, (x % 2 == 0 && y % 2 == 0) ? 9 : 0);
  ASSERT_EQ(
      rvpiLabelMarkers_8u_C1IR(dots.ptr(), dots.step(), dots.size(), 1, 1, 1, &num, buf.ptr()), 0);
  EXPECT_EQ(num, 6);
  EXPECT_EQ(dots.at(4, 2), 1);
  // Wrap: labels 5, 6, 5, 6, ...
  for (int y = 0; y < 4; ++y)
    for (int x = 0; x < 6; ++x) dots.set(x, y, (x % 2 == 0 && y % 2 == 0) ? 9 : 0);
  ASSERT_EQ(
      rvpiLabelMarkers_8u_C1IR(dots.ptr(), dots.step(), dots.size(), 5, 6, 0, &num, buf.ptr()), 0);
  EXPECT_EQ(num, 6);
  EXPECT_EQ(dots.at(0, 0), 5);
  EXPECT_EQ(dots.at(2, 0), 6);
  EXPECT_EQ(dots.at(4, 0), 5);
  EXPECT_EQ(dots.at(0, 2), 6);
}

TEST(LabelMarkers, BadArgumentsReturnTheirCodeAndWriteNothing) {
  const RvpiSize roi{5, 3};
  TestImage<Rvp16u> im(5, 3);
  TestImage<Rvp8u> src(5, 3);
  TestImage<Rvp32s> dst(5, 3);
  for (int y = 0; y < 3; ++y)
    for (int x = 0; x < 5; ++x) im.set(x, y, Rvp16u(x & 1)), src.set(x, y, Rvp8u(x & 1));
  std::vector<Rvp8u> buf(512, 0x11);
  const auto im0 = im.bytes(), dst0 = dst.bytes(), buf0 = buf;
  int num = 77;
  struct C16 {
    bool null_img, null_num, null_buf;
    RvpiSize roi;
    int step, mn, mx, norm;
    RvpStatus want;
  } const c16[] = {
      {true, false, false, roi, 10, 1, 5, 0, rvpStsNullPtrErr},
      {false, true, false, {0, 0}, 10, 1, 5, 0, rvpStsNullPtrErr},
      {false, false, true, roi, 10, 1, 5, 0, rvpStsNullPtrErr},
      {false, false, false, {5, 0}, 1, 0, 5, 9, rvpStsSizeErr},
      {false, false, false, roi, 8, 0, 5, 9, rvpStsStepErr},
      {false, false, false, roi, 11, 0, 5, 9, rvpStsNotEvenStepErr},
      {false, false, false, roi, 10, 0, 5, 0, rvpStsBadArgErr},
      {false, false, false, roi, 10, 1, 65535, 0, rvpStsBadArgErr},
      {false, false, false, roi, 10, 6, 5, 0, rvpStsBadArgErr},
      {false, false, false, roi, 10, 1, 5, 2, rvpStsBadArgErr},
      {false, false, false, roi, 10, 1, 5, -1, rvpStsBadArgErr},
  };
  for (const C16& c : c16) {
    EXPECT_EQ(rvpiLabelMarkers_16u_C1IR(c.null_img ? nullptr : im.ptr(), c.step, c.roi, c.mn, c.mx,
                                        c.norm, c.null_num ? nullptr : &num,
                                        c.null_buf ? nullptr : buf.data()),
              c.want);
  }
  // 8u: no evenness test, labels below 255.
  EXPECT_EQ(rvpiLabelMarkers_8u_C1IR(src.ptr(), 5, roi, 1, 255, 0, &num, buf.data()),
            rvpStsBadArgErr);
  EXPECT_EQ(rvpiLabelMarkers_8u_C1IR(src.ptr(), 4, roi, 1, 255, 0, &num, buf.data()),
            rvpStsStepErr);
  // 8u32s.
  EXPECT_EQ(rvpiLabelMarkers_8u32s_C1R(src.ptr(), 5, nullptr, 20, roi, 1, 9, 0, &num, buf.data()),
            rvpStsNullPtrErr);
  EXPECT_EQ(
      rvpiLabelMarkers_8u32s_C1R(src.ptr(), 5, dst.ptr(), 20, {-1, 3}, 1, 9, 0, &num, buf.data()),
      rvpStsSizeErr);
  EXPECT_EQ(rvpiLabelMarkers_8u32s_C1R(src.ptr(), 4, dst.ptr(), 22, roi, 1, 9, 0, &num, buf.data()),
            rvpStsStepErr);
  EXPECT_EQ(rvpiLabelMarkers_8u32s_C1R(src.ptr(), 5, dst.ptr(), 19, roi, 1, 9, 0, &num, buf.data()),
            rvpStsStepErr);
  EXPECT_EQ(rvpiLabelMarkers_8u32s_C1R(src.ptr(), 5, dst.ptr(), 22, roi, 0, 9, 7, &num, buf.data()),
            rvpStsNotEvenStepErr);
  EXPECT_EQ(rvpiLabelMarkers_8u32s_C1R(src.ptr(), 5, dst.ptr(), 20, roi, 1, 2147483647, 0, &num,
                                       buf.data()),
            rvpStsBadArgErr);
  EXPECT_EQ(rvpiLabelMarkers_8u32s_C1R(src.ptr(), 5, dst.ptr(), 20, roi, 1, 9, 3, &num, buf.data()),
            rvpStsBadArgErr);
  EXPECT_EQ(num, 77);
  EXPECT_EQ(im.bytes(), im0);
  EXPECT_EQ(dst.bytes(), dst0);
  EXPECT_EQ(buf, buf0);
  // Size queries.
  int n = 5;
  EXPECT_EQ(rvpiLabelMarkersGetBufferSize_16u_C1R({0, 3}, &n), rvpStsSizeErr);
  EXPECT_EQ(rvpiLabelMarkersGetBufferSize_8u32s_C1R({3, 3}, nullptr), rvpStsNullPtrErr);
  EXPECT_EQ(n, 5);
  EXPECT_EQ(rvpiLabelMarkersGetBufferSize_8u32s_C1R({7, 3}, &n), 0);
  EXPECT_EQ(n, 6 * 21 + 32);
}

TEST(LabelMarkers, GuardedImages) {
  std::mt19937 rng(26);
  for (rvpt::Guard g : {rvpt::Guard::After, rvpt::Guard::Before})
    for (int w = 1; w <= 70; w += (w < 40 ? 1 : 5))
      for (int h : {1, 3, 8}) {
        const int step16 = 2 * w + 2 * (w % 3);
        rvpt::GuardedImage<Rvp16u> im(w, h, 1, step16, g);
        rvpt::GuardedImage<Rvp8u> src(w, h, 1, w + w % 2, g);
        rvpt::GuardedImage<Rvp32s> dst(w, h, 1, 4 * w, g);
        for (int y = 0; y < h; ++y)
          for (int x = 0; x < w; ++x) {
            const bool on = rng() % 3 != 0;
            im.row(y)[x] = on ? 65535 : 0;
            src.row(y)[x] = on ? 1 : 0;
          }
        OddBuffer buf(label_buffer_size({w, h}));
        int a = -1, b = -1;
        ASSERT_EQ(
            rvpiLabelMarkers_16u_C1IR(im.ptr(), step16, {w, h}, 1, 65534, w % 2, &a, buf.ptr()), 0);
        ASSERT_EQ(rvpiLabelMarkers_8u32s_C1R(src.ptr(), src.step(), dst.ptr(), 4 * w, {w, h}, 1,
                                             1000, w % 2, &b, buf.ptr()),
                  0);
        EXPECT_EQ(a, b);
        for (int y = 0; y < h; ++y)
          for (int x = 0; x < w; ++x) ASSERT_EQ(int(im.row(y)[x]), dst.row(y)[x]);
      }
}

// ---- speckles ---------------------------------------------------------------------------------

template <class T>
RvpStatus speckles(T* im, int step, RvpiSize roi, T val, int max_size, T diff, int norm,
                   Rvp8u* buf) {
  if constexpr (std::is_same_v<T, Rvp8u>)
    return rvpiMarkSpeckles_8u_C1IR(im, step, roi, val, max_size, diff, norm, buf);
  else if constexpr (std::is_same_v<T, Rvp16u>)
    return rvpiMarkSpeckles_16u_C1IR(im, step, roi, val, max_size, diff, norm, buf);
  else if constexpr (std::is_same_v<T, Rvp16s>)
    return rvpiMarkSpeckles_16s_C1IR(im, step, roi, val, max_size, diff, norm, buf);
  else
    return rvpiMarkSpeckles_32f_C1IR(im, step, roi, val, max_size, diff, norm, buf);
}

int speckle_buffer_size(RvpiSize roi) {
  int n = 0;
  rvpiMarkSpecklesGetBufferSize(roi, rvp16s, 1, &n);
  return n;
}

template <class T>
TestImage<T> reference_speckles(const TestImage<T>& im, T val, int max_size, T diff) {
  const int w = im.width(), h = im.height();
  std::vector<int> idx;
  const int n = rvpt::label_components(
      w, h, false, [&](int p) { return !(im.at(p % w, p / w) == val); },
      [&](int a, int b) {
        const T pa = im.at(a % w, a / w), pb = im.at(b % w, b / w);
        if constexpr (std::is_floating_point_v<T>)
          return std::fabs(pb - pa) <= diff;
        else
          return std::abs(int(pb) - int(pa)) <= int(diff);
      },
      idx);
  std::vector<int64_t> size(size_t(n), 0);
  for (int i : idx)
    if (i >= 0) ++size[size_t(i)];
  TestImage<T> out = im;
  for (int p = 0; p < w * h; ++p)
    if (idx[p] >= 0 && size[size_t(idx[p])] <= max_size) out.set(p % w, p / w, val);
  return out;
}

template <class T>
void random_speckles(int iterations, uint32_t seed) {
  std::mt19937 rng(seed);
  for (int it = 0; it < iterations; ++it) {
    const int w = std::uniform_int_distribution<int>(1, 50)(rng);
    const int h = std::uniform_int_distribution<int>(1, 40)(rng);
    TestImage<T> im(w, h, 1, int(sizeof(T)) * int(rng() % 3), int(rng() % 8));
    const int levels = 2 + int(rng() % 20);
    for (int y = 0; y < h; ++y)
      for (int x = 0; x < w; ++x) {
        T v =
            T(int(rng() % levels) * (std::is_signed_v<T> ? 1 : 1) - (std::is_signed_v<T> ? 5 : 0));
        if constexpr (std::is_floating_point_v<T>) {
          if (rng() % 50 == 0)
            v = std::numeric_limits<T>::quiet_NaN();
          else
            v = T(v) * T(0.25);
        }
        im.set(x, y, v);
      }
    const T val = std::is_floating_point_v<T> ? T(0) : T(rng() % 3);
    const T diff = std::is_floating_point_v<T> ? T(0.25f * float(rng() % 4)) : T(rng() % 4);
    const int max_size = int(rng() % 12) - 1;
    const TestImage<T> want = reference_speckles(im, val, max_size, diff);
    OddBuffer buf(speckle_buffer_size(im.size()));
    ASSERT_EQ(speckles<T>(im.ptr(), im.step(), im.size(), val, max_size, diff, 1, buf.ptr()), 0);
    ASSERT_EQ(im.bytes(), want.bytes()) << w << "x" << h << " it " << it;
  }
}

TEST(MarkSpeckles, RandomImagesMatchReference) {
  random_speckles<Rvp8u>(150, 31);
  random_speckles<Rvp16u>(100, 32);
  random_speckles<Rvp16s>(150, 33);
  random_speckles<Rvp32f>(150, 34);
}

TEST(MarkSpeckles, EdgeCases) {
  OddBuffer buf(speckle_buffer_size({5, 5}));
  for (int max_size : {0, 1}) {
    TestImage<Rvp8u> im(5, 5);
    for (int y = 0; y < 5; ++y)
      for (int x = 0; x < 5; ++x) im.set(x, y, 50);
    im.set(2, 2, 200);  // isolated: its neighbours differ by 150
    ASSERT_EQ(
        rvpiMarkSpeckles_8u_C1IR(im.ptr(), im.step(), im.size(), 0, max_size, 10, 1, buf.ptr()), 0);
    EXPECT_EQ(im.at(2, 2), max_size == 1 ? 0 : 200);
    EXPECT_EQ(im.at(0, 0), 50);
  }
  // A column of speckleVal splits two halves of 10 pixels into separate regions.
  TestImage<Rvp16s> s(5, 5);
  for (int y = 0; y < 5; ++y)
    for (int x = 0; x < 5; ++x) s.set(x, y, x == 2 ? -7 : 3);
  ASSERT_EQ(rvpiMarkSpeckles_16s_C1IR(s.ptr(), s.step(), s.size(), -7, 10, 100, 1, buf.ptr()), 0);
  for (int y = 0; y < 5; ++y)
    for (int x = 0; x < 5; ++x) EXPECT_EQ(s.at(x, y), -7);
  for (int y = 0; y < 5; ++y)
    for (int x = 0; x < 5; ++x) s.set(x, y, x == 2 ? -7 : 3);
  ASSERT_EQ(rvpiMarkSpeckles_16s_C1IR(s.ptr(), s.step(), s.size(), -7, 9, 100, 1, buf.ptr()), 0);
  EXPECT_EQ(s.at(0, 0), 3);
  EXPECT_EQ(s.at(4, 4), 3);
  // The difference is taken between neighbours, not against the seed: a ramp is one region.
  TestImage<Rvp32f> r(5, 1);
  for (int x = 0; x < 5; ++x) r.set(x, 0, float(x));
  ASSERT_EQ(rvpiMarkSpeckles_32f_C1IR(r.ptr(), r.step(), r.size(), -1.f, 4, 1.f, 1, buf.ptr()), 0);
  EXPECT_EQ(r.at(0, 0), 0.f);  // one region of 5 > 4: nothing marked
  EXPECT_EQ(r.at(4, 0), 4.f);
}

TEST(MarkSpeckles, BadArgumentsReturnTheirCodeAndWriteNothing) {
  TestImage<Rvp16u> im(4, 3);
  for (int y = 0; y < 3; ++y)
    for (int x = 0; x < 4; ++x) im.set(x, y, Rvp16u(x));
  std::vector<Rvp8u> buf(1024, 0x22);
  const auto im0 = im.bytes();
  const auto buf0 = buf;
  EXPECT_EQ(rvpiMarkSpeckles_16u_C1IR(nullptr, 8, {4, 3}, 0, 5, 1, 1, buf.data()),
            rvpStsNullPtrErr);
  EXPECT_EQ(rvpiMarkSpeckles_16u_C1IR(im.ptr(), 8, {0, 3}, 0, 5, 1, 1, nullptr), rvpStsNullPtrErr);
  EXPECT_EQ(rvpiMarkSpeckles_16u_C1IR(im.ptr(), 1, {4, 0}, 0, 5, 1, 2, buf.data()), rvpStsSizeErr);
  EXPECT_EQ(rvpiMarkSpeckles_16u_C1IR(im.ptr(), 6, {4, 3}, 0, 5, 1, 2, buf.data()), rvpStsStepErr);
  EXPECT_EQ(rvpiMarkSpeckles_16u_C1IR(im.ptr(), 9, {4, 3}, 0, 5, 1, 2, buf.data()),
            rvpStsNotEvenStepErr);
  EXPECT_EQ(rvpiMarkSpeckles_16u_C1IR(im.ptr(), 8, {4, 3}, 0, 5, 1, 0, buf.data()), rvpStsModeErr);
  EXPECT_EQ(rvpiMarkSpeckles_16u_C1IR(im.ptr(), 8, {4, 3}, 0, 5, 1, 2, buf.data()), rvpStsModeErr);
  EXPECT_EQ(im.bytes(), im0);
  EXPECT_EQ(buf, buf0);
  int n = 9;
  EXPECT_EQ(rvpiMarkSpecklesGetBufferSize({4, 3}, rvp16u, 1, nullptr), rvpStsNullPtrErr);
  EXPECT_EQ(rvpiMarkSpecklesGetBufferSize({4, 0}, 99, 3, &n), rvpStsSizeErr);
  EXPECT_EQ(rvpiMarkSpecklesGetBufferSize({4, 3}, rvp8s, 3, &n), rvpStsDataTypeErr);
  EXPECT_EQ(rvpiMarkSpecklesGetBufferSize({4, 3}, rvp32f, 3, &n), rvpStsNumChannelsErr);
  EXPECT_EQ(n, 9);
  for (int t : {rvp8u, rvp16u, rvp16s, rvp32f}) {
    EXPECT_EQ(rvpiMarkSpecklesGetBufferSize({4, 3}, t, 1, &n), 0);
    EXPECT_EQ(n, 13 * 12 + 64);
  }
}

TEST(MarkSpeckles, GuardedImages) {
  std::mt19937 rng(35);
  for (rvpt::Guard g : {rvpt::Guard::After, rvpt::Guard::Before})
    for (int w = 1; w <= 70; w += (w < 40 ? 1 : 5))
      for (int h : {1, 2, 7}) {
        const int step = 4 * w + 4 * (w % 2);
        rvpt::GuardedImage<Rvp32f> im(w, h, 1, step, g);
        TestImage<Rvp32f> ref(w, h);
        for (int y = 0; y < h; ++y)
          for (int x = 0; x < w; ++x) {
            const float v = float(rng() % 4);
            im.row(y)[x] = v;
            ref.set(x, y, v);
          }
        const TestImage<Rvp32f> want = reference_speckles<Rvp32f>(ref, 0.f, 3, 0.f);
        OddBuffer buf(speckle_buffer_size({w, h}));
        ASSERT_EQ(rvpiMarkSpeckles_32f_C1IR(im.ptr(), step, {w, h}, 0.f, 3, 0.f, 1, buf.ptr()), 0);
        for (int y = 0; y < h; ++y)
          for (int x = 0; x < w; ++x) ASSERT_EQ(im.row(y)[x], want.at(x, y));
      }
}

}  // namespace

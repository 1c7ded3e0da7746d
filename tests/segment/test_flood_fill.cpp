// Flood fills against a breadth-first reference on random images, the documented edge cases,
// argument checks with nothing written on error, and guarded memory.
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
#include "support/guarded.h"
#include "support/images.h"
#include "support/segment_ref.h"

using rvpt::FillRule;
using rvpt::TestImage;

namespace {

constexpr FillRule kRules[] = {FillRule::Plain, FillRule::Range, FillRule::Grad};

using rvpt::OddBuffer;

template <class T>
T small_value(std::mt19937& rng, FillRule rule) {
  const int hi = rule == FillRule::Plain ? 2 : rule == FillRule::Range ? 12 : 7;
  std::uniform_int_distribution<int> d(0, hi);
  if constexpr (std::is_floating_point_v<T>) {
    const int k = std::uniform_int_distribution<int>(0, 40)(rng);
    if (k == 0) return std::numeric_limits<T>::quiet_NaN();
    if (k == 1) return T(-0.0);
    return T(d(rng)) * T(0.5);
  } else {
    if (std::uniform_int_distribution<int>(0, 50)(rng) == 0) return std::numeric_limits<T>::max();
    return T(d(rng));
  }
}

template <class T>
bool same(T a, T b) {
  return a == b;
}

// Everything the reference needs about one call.
template <class T, int C>
struct Call {
  FillRule rule;
  bool conn8;
  RvpiPoint seed;
  T nv[C], mn[C], mx[C];
};

template <class T, int C>
bool pixel_equals(const TestImage<T>& im, int x, int y, const T* v) {
  for (int c = 0; c < C; ++c)
    if (!(im.at(x, y, c) == v[c])) return false;
  return true;
}

// The reference filled set of one call (without the early return).
template <class T, int C>
std::vector<uint8_t> reference_set(const TestImage<T>& im, const Call<T, C>& k) {
  const int w = im.width(), h = im.height();
  auto px = [&](int p, int c) { return im.at(p % w, p / w, c); };
  if (k.rule == FillRule::Grad) {
    return rvpt::reach(w, h, k.seed.x, k.seed.y, k.conn8, [&](int a, int b) {
      for (int c = 0; c < C; ++c) {
        const T cv = px(a, c), nvv = px(b, c);
        if constexpr (std::is_floating_point_v<T>) {
          if (!(cv - k.mn[c] <= nvv && nvv <= cv + k.mx[c])) return false;
        } else {
          if (!(int64_t(cv) - k.mn[c] <= nvv && int64_t(nvv) <= int64_t(cv) + k.mx[c]))
            return false;
        }
      }
      return true;
    });
  }
  T lo[C], hi[C];
  for (int c = 0; c < C; ++c) {
    const T v = im.at(k.seed.x, k.seed.y, c);
    if (k.rule == FillRule::Plain) {
      lo[c] = hi[c] = v;
    } else if constexpr (std::is_floating_point_v<T>) {
      lo[c] = v - k.mn[c];
      hi[c] = v + k.mx[c];
    } else {
      lo[c] = T(std::max<int64_t>(0, int64_t(v) - k.mn[c]));
      hi[c] = T(std::min<int64_t>(std::numeric_limits<T>::max(), int64_t(v) + k.mx[c]));
    }
  }
  return rvpt::reach(w, h, k.seed.x, k.seed.y, k.conn8, [&](int, int b) {
    bool all_nv = true;
    for (int c = 0; c < C; ++c) {
      const T p = px(b, c);
      if (!(lo[c] <= p && p <= hi[c])) return false;
      all_nv = all_nv && p == k.nv[c];
    }
    return !all_nv;
  });
}

template <class T, int C>
void expect_region(const RvpiConnectedComp& reg, const std::vector<uint8_t>& set, int w, int h,
                   const T* nv) {
  int64_t area = 0;
  int x0 = w, y0 = h, x1 = -1, y1 = -1;
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w; ++x)
      if (set[size_t(y) * w + x]) {
        ++area;
        x0 = std::min(x0, x), x1 = std::max(x1, x), y0 = std::min(y0, y), y1 = std::max(y1, y);
      }
  EXPECT_EQ(reg.area, double(area));
  for (int c = 0; c < 3; ++c) {
    const double want = c < C ? double(nv[c]) : 0.0;
    if (std::isnan(want))
      EXPECT_TRUE(std::isnan(reg.value[c]));
    else
      EXPECT_EQ(reg.value[c], want);
  }
  EXPECT_EQ(reg.rect.x, x0);
  EXPECT_EQ(reg.rect.y, y0);
  EXPECT_EQ(reg.rect.width, x1 - x0 + 1);
  EXPECT_EQ(reg.rect.height, y1 - y0 + 1);
}

// Runs one call on `im` and compares image bytes and record with the reference.
template <class T, int C>
void run_and_compare(TestImage<T>& im, const Call<T, C>& k) {
  const int w = im.width(), h = im.height();
  const RvpiSize roi{w, h};
  const TestImage<T> before = im;
  OddBuffer buf(rvpt::fill_buffer_size(k.rule, roi));
  RvpiConnectedComp reg;
  std::memset(&reg, 0xCD, sizeof reg);
  const RvpiConnectedComp reg_before = reg;
  const RvpStatus st = rvpt::fill_c<C>(k.rule, k.conn8, im.ptr(), im.step(), roi, k.seed, k.nv,
                                       k.mn, k.mx, &reg, buf.ptr());
  ASSERT_EQ(st, rvpStsNoErr);

  if (k.rule != FillRule::Grad && pixel_equals<T, C>(before, k.seed.x, k.seed.y, k.nv)) {
    EXPECT_EQ(im.bytes(), before.bytes()) << "early return must not write";
    EXPECT_EQ(std::memcmp(&reg, &reg_before, sizeof reg), 0);
    return;
  }
  const std::vector<uint8_t> set = reference_set<T, C>(before, k);
  std::vector<uint8_t> filled(size_t(w) * h, 0);
  bool exact = true;
  if (k.rule == FillRule::Range && h > 1) {
    const int64_t limit = int64_t(w) * h / 4;
    exact = limit == 0 || rvpt::run_count(set, w, h) < limit;
  }
  if (exact) {
    TestImage<T> want = before;
    for (int p = 0; p < w * h; ++p)
      if (set[p])
        for (int c = 0; c < C; ++c) want.set(p % w, p / w, k.nv[c], c);
    ASSERT_EQ(im.bytes(), want.bytes()) << "rule " << int(k.rule) << " conn8 " << k.conn8 << " "
                                        << w << "x" << h << " seed " << k.seed.x << "," << k.seed.y;
    expect_region<T, C>(reg, set, w, h, k.nv);
    return;
  }
  // The range limit may have cut the fill short: the filled pixels must lie in the reference
  // set, include the seed, leave everything else alone and match the record exactly.
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w; ++x) {
      bool changed = false;
      for (int c = 0; c < C; ++c) changed |= !rvpt::same_bits(im.at(x, y, c), before.at(x, y, c));
      if (!changed) continue;
      ASSERT_TRUE(set[size_t(y) * w + x]);
      for (int c = 0; c < C; ++c) ASSERT_TRUE(rvpt::same_bits(im.at(x, y, c), k.nv[c]));
      filled[size_t(y) * w + x] = 1;
    }
  ASSERT_TRUE(filled[size_t(k.seed.y) * w + k.seed.x]);
  expect_region<T, C>(reg, filled, w, h, k.nv);
}

template <class T, int C>
void random_fills(int iterations, uint32_t seed, int max_w = 40) {
  std::mt19937 rng(seed);
  for (FillRule rule : kRules) {
    if (std::is_same_v<T, Rvp32s> && rule != FillRule::Plain) continue;
    for (bool conn8 : {false, true})
      for (int it = 0; it < iterations; ++it) {
        const int w = std::uniform_int_distribution<int>(1, max_w)(rng);
        const int h = std::uniform_int_distribution<int>(1, 30)(rng);
        const int pad = std::uniform_int_distribution<int>(0, 3)(rng) * int(sizeof(T));
        const int offset = std::uniform_int_distribution<int>(0, 7)(rng);
        TestImage<T> im(w, h, C, pad, offset);
        for (int y = 0; y < h; ++y)
          for (int x = 0; x < w; ++x)
            for (int c = 0; c < C; ++c)
              im.set(x, y, c == 0 || it % 3 ? small_value<T>(rng, rule) : T(1), c);
        if (it % 2 == 0) {  // long runs of equal pixels, as in real images
          for (int y = 0; y < h; ++y)
            for (int x = 0; x < w;) {
              const int len = std::uniform_int_distribution<int>(1, 70)(rng);
              const T v = small_value<T>(rng, rule);
              for (int k = 0; k < len && x < w; ++k, ++x)
                for (int c = 0; c < C; ++c) im.set(x, y, v, c);
            }
        }
        Call<T, C> k{rule, conn8, {0, 0}, {}, {}, {}};
        k.seed = {std::uniform_int_distribution<int>(0, w - 1)(rng),
                  std::uniform_int_distribution<int>(0, h - 1)(rng)};
        for (int c = 0; c < C; ++c) {
          k.nv[c] = small_value<T>(rng, rule);
          k.mn[c] = T(std::uniform_int_distribution<int>(0, 3)(rng));
          k.mx[c] = T(std::uniform_int_distribution<int>(0, 3)(rng));
        }
        run_and_compare<T, C>(im, k);
        if (::testing::Test::HasFatalFailure()) return;
      }
  }
}

TEST(FloodFill, RandomImagesMatchReference_8u) {
  random_fills<Rvp8u, 1>(150, 1);
  random_fills<Rvp8u, 3>(100, 2);
}
// Wide rows with long runs exercise the 32-pixel run searches of the one-channel 8-bit rules.
TEST(FloodFill, RandomWideImagesMatchReference_8u) { random_fills<Rvp8u, 1>(120, 8, 200); }

TEST(FloodFill, RandomImagesMatchReference_16u) {
  random_fills<Rvp16u, 1>(100, 3);
  random_fills<Rvp16u, 3>(80, 4);
}
TEST(FloodFill, RandomImagesMatchReference_32s_32f) {
  random_fills<Rvp32s, 1>(100, 5);
  random_fills<Rvp32f, 1>(100, 6);
  random_fills<Rvp32f, 3>(80, 7);
}

// Patterns with many runs per region push the stack hardest: combs and diagonal lattices.
TEST(FloodFill, PlainFillCompletesOnDenseRunPatterns) {
  for (int w : {3, 7, 16, 31, 64})
    for (int h : {2, 5, 16, 33})
      for (int pattern = 0; pattern < 3; ++pattern)
        for (bool conn8 : {false, true}) {
          TestImage<Rvp8u> im(w, h);
          for (int y = 0; y < h; ++y)
            for (int x = 0; x < w; ++x) {
              bool on;
              if (pattern == 0)
                on = y % 2 == 0 || x % 2 == 0;  // comb
              else if (pattern == 1)
                on = (x + y) % 2 == 0;  // lattice
              else
                on = x == 0 || (y % 2 == 0 && x % 2 == 0) || y % 4 == 1;  // spine + teeth
              im.set(x, y, on ? 1 : 0);
            }
          for (RvpiPoint seed : {RvpiPoint{0, 0}, RvpiPoint{0, h - 1}}) {
            TestImage<Rvp8u> copy = im;
            if (copy.at(seed.x, seed.y) != 1) continue;
            Call<Rvp8u, 1> k{FillRule::Plain, conn8, seed, {9}, {0}, {0}};
            run_and_compare<Rvp8u, 1>(copy, k);
          }
        }
}

TEST(FloodFill, SeedEqualToNewValueReturnsEarlyExceptGradient) {
  TestImage<Rvp16u> im(5, 4, 1, 2, 1);
  for (int y = 0; y < 4; ++y)
    for (int x = 0; x < 5; ++x) im.set(x, y, 7);
  for (FillRule rule : kRules)
    for (bool conn8 : {false, true}) {
      TestImage<Rvp16u> t = im;
      RvpiConnectedComp reg;
      std::memset(&reg, 0x5A, sizeof reg);
      const RvpiConnectedComp reg0 = reg;
      OddBuffer buf(rvpt::fill_buffer_size(rule, t.size()));
      const Rvp16u nv = 7, d = 1;
      ASSERT_EQ(rvpt::fill_c<1>(rule, conn8, t.ptr(), t.step(), t.size(), {2, 1}, &nv, &d, &d, &reg,
                                buf.ptr()),
                rvpStsNoErr);
      EXPECT_EQ(t.bytes(), im.bytes());
      if (rule == FillRule::Grad) {
        EXPECT_EQ(reg.area, 20.0);
        EXPECT_EQ(reg.rect.width, 5);
      } else {
        EXPECT_EQ(std::memcmp(&reg, &reg0, sizeof reg), 0);
      }
    }
  // Three channels: only all three equal counts.
  TestImage<Rvp8u> c3(3, 3, 3);
  for (int i = 0; i < 27; ++i) c3.set(i % 9 / 3, i / 9, Rvp8u(i % 3), i % 3);
  const Rvp8u nv[3] = {0, 1, 3}, d[3] = {0, 0, 0};
  OddBuffer buf(rvpt::fill_buffer_size(FillRule::Plain, c3.size()));
  RvpiConnectedComp reg{};
  ASSERT_EQ(rvpiFloodFill_4Con_8u_C3IR(c3.ptr(), c3.step(), c3.size(), {1, 1}, nv, &reg, buf.ptr()),
            rvpStsNoErr);
  EXPECT_EQ(reg.area, 9.0);
  EXPECT_EQ(c3.at(2, 2, 2), 3);
  (void)d;
}

TEST(FloodFill, OneRowFillsTheSeedSpanOnly) {
  TestImage<Rvp8u> im(9, 1);
  const Rvp8u row[9] = {1, 1, 0, 1, 1, 1, 0, 1, 1};
  for (int x = 0; x < 9; ++x) im.set(x, 0, row[x]);
  for (FillRule rule : kRules)
    for (bool conn8 : {false, true}) {
      TestImage<Rvp8u> t = im;
      OddBuffer buf(rvpt::fill_buffer_size(rule, t.size()));
      RvpiConnectedComp reg{};
      const Rvp8u nv = 5, d = 0;
      ASSERT_EQ(rvpt::fill_c<1>(rule, conn8, t.ptr(), t.step(), t.size(), {4, 0}, &nv, &d, &d, &reg,
                                buf.ptr()),
                rvpStsNoErr);
      for (int x = 0; x < 9; ++x) EXPECT_EQ(t.at(x, 0), x >= 3 && x <= 5 ? 5 : row[x]);
      EXPECT_EQ(reg.area, 3.0);
      EXPECT_EQ(reg.rect.x, 3);
      EXPECT_EQ(reg.rect.width, 3);
      EXPECT_EQ(reg.rect.height, 1);
    }
}

// The range rule's stack limit: 4 to 7 pixels give a capacity of one entry, so the seed's own
// push empties the stack and only the seed row is filled.
TEST(FloodFill, RangeLimitOnTinyImagesFillsOnlyTheSeedRow) {
  for (RvpiSize sz : {RvpiSize{2, 2}, RvpiSize{1, 5}, RvpiSize{3, 2}, RvpiSize{1, 7}})
    for (bool conn8 : {false, true}) {
      TestImage<Rvp8u> im(sz.width, sz.height);
      for (int y = 0; y < sz.height; ++y)
        for (int x = 0; x < sz.width; ++x) im.set(x, y, 3);
      OddBuffer buf(rvpt::fill_buffer_size(FillRule::Range, sz));
      RvpiConnectedComp reg{};
      auto fn = conn8 ? rvpiFloodFill_Range8Con_8u_C1IR : rvpiFloodFill_Range4Con_8u_C1IR;
      ASSERT_EQ(fn(im.ptr(), im.step(), sz, {0, sz.height - 1}, 9, 0, 0, &reg, buf.ptr()), 0);
      for (int y = 0; y < sz.height; ++y)
        for (int x = 0; x < sz.width; ++x) EXPECT_EQ(im.at(x, y), y == sz.height - 1 ? 9 : 3);
      EXPECT_EQ(reg.area, double(sz.width));
      // The plain rule has no such limit.
      TestImage<Rvp8u> p(sz.width, sz.height);
      for (int y = 0; y < sz.height; ++y)
        for (int x = 0; x < sz.width; ++x) p.set(x, y, 3);
      auto pf = conn8 ? rvpiFloodFill_8Con_8u_C1IR : rvpiFloodFill_4Con_8u_C1IR;
      ASSERT_EQ(pf(p.ptr(), p.step(), sz, {0, 0}, 9, &reg, buf.ptr()), 0);
      EXPECT_EQ(reg.area, double(sz.width * sz.height));
    }
  // Three pixels or fewer: no limit applies.
  TestImage<Rvp8u> col(1, 3);
  for (int y = 0; y < 3; ++y) col.set(0, y, 3);
  OddBuffer buf(rvpt::fill_buffer_size(FillRule::Range, {1, 3}));
  RvpiConnectedComp reg{};
  ASSERT_EQ(rvpiFloodFill_Range4Con_8u_C1IR(col.ptr(), 1, {1, 3}, {0, 1}, 9, 0, 0, &reg, buf.ptr()),
            0);
  EXPECT_EQ(reg.area, 3.0);
}

TEST(FloodFill, RangeClampsAtTheTypeLimits) {
  TestImage<Rvp16u> im(4, 1);
  const Rvp16u vals[4] = {0, 10, 30, 31};
  for (int x = 0; x < 4; ++x) im.set(x, 0, vals[x]);
  OddBuffer buf(rvpt::fill_buffer_size(FillRule::Range, im.size()));
  RvpiConnectedComp reg{};
  ASSERT_EQ(rvpiFloodFill_Range4Con_16u_C1IR(im.ptr(), im.step(), im.size(), {1, 0}, 500, 20, 20,
                                             &reg, buf.ptr()),
            0);
  EXPECT_EQ(im.at(0, 0), 500);  // v = 10, minDelta 20: the interval starts at 0
  EXPECT_EQ(im.at(2, 0), 500);
  EXPECT_EQ(im.at(3, 0), 31);
  TestImage<Rvp8u> b(3, 1);
  const Rvp8u bv[3] = {250, 255, 254};
  for (int x = 0; x < 3; ++x) b.set(x, 0, bv[x]);
  ASSERT_EQ(rvpiFloodFill_Range8Con_8u_C1IR(b.ptr(), b.step(), b.size(), {0, 0}, 1, 0, 200, &reg,
                                            buf.ptr()),
            0);
  EXPECT_EQ(reg.area, 3.0);
}

// A ramp of step 1: the gradient rule walks it end to end, the range rule stops after one step.
TEST(FloodFill, GradientFollowsRampWhereRangeStops) {
  const int w = 12, h = 6;
  for (bool conn8 : {false, true}) {
    TestImage<Rvp8u> g(w, h), r(w, h);
    for (int y = 0; y < h; ++y)
      for (int x = 0; x < w; ++x) g.set(x, y, Rvp8u(10 + x)), r.set(x, y, Rvp8u(10 + x));
    OddBuffer gb(rvpt::fill_buffer_size(FillRule::Grad, g.size()));
    OddBuffer rb(rvpt::fill_buffer_size(FillRule::Range, r.size()));
    RvpiConnectedComp gr{}, rr{};
    auto gf = conn8 ? rvpiFloodFill_Grad8Con_8u_C1IR : rvpiFloodFill_Grad4Con_8u_C1IR;
    auto rf = conn8 ? rvpiFloodFill_Range8Con_8u_C1IR : rvpiFloodFill_Range4Con_8u_C1IR;
    ASSERT_EQ(gf(g.ptr(), g.step(), g.size(), {0, 2}, 200, 1, 1, &gr, gb.ptr()), 0);
    ASSERT_EQ(rf(r.ptr(), r.step(), r.size(), {0, 2}, 200, 1, 1, &rr, rb.ptr()), 0);
    EXPECT_EQ(gr.area, double(w * h));
    EXPECT_EQ(rr.area, double(2 * h));
    EXPECT_EQ(rr.rect.width, 2);
    // Asymmetric deltas: only upward steps pass, so a seed at the high end cannot walk down.
    TestImage<Rvp8u> a(w, 1);
    for (int x = 0; x < w; ++x) a.set(x, 0, Rvp8u(10 + x));
    ASSERT_EQ(gf(a.ptr(), a.step(), a.size(), {w - 1, 0}, 200, 0, 1, &gr, gb.ptr()), 0);
    EXPECT_EQ(gr.area, 1.0);
    ASSERT_EQ(gf(a.ptr(), a.step(), a.size(), {0, 0}, 200, 0, 1, &gr, gb.ptr()), 0);
    EXPECT_EQ(gr.area, double(w - 1));  // the first call left 200 in the last pixel
  }
}

TEST(FloodFill, DiagonalNeighboursJoinOnlyUnder8Connectivity) {
  TestImage<Rvp32f> im(4, 4);
  for (int y = 0; y < 4; ++y)
    for (int x = 0; x < 4; ++x) im.set(x, y, x == y ? 1.0f : 0.0f);
  for (FillRule rule : kRules)
    for (bool conn8 : {false, true}) {
      TestImage<Rvp32f> t = im;
      OddBuffer buf(rvpt::fill_buffer_size(rule, t.size()));
      RvpiConnectedComp reg{};
      const Rvp32f nv = 5.0f, d = 0.0f;
      ASSERT_EQ(rvpt::fill_c<1>(rule, conn8, t.ptr(), t.step(), t.size(), {1, 1}, &nv, &d, &d, &reg,
                                buf.ptr()),
                0);
      EXPECT_EQ(reg.area, conn8 ? 4.0 : 1.0);
      EXPECT_EQ(t.at(3, 3), conn8 ? 5.0f : 1.0f);
    }
}

// The gradient fill's sweep completion (used when the stack outgrows the buffer) gives the
// same set as the span walk: run the engine with a stack of four entries.
TEST(FloodFill, GradientSweepCompletionMatchesReference) {
  std::mt19937 rng(11);
  for (int it = 0; it < 60; ++it) {
    const int w = std::uniform_int_distribution<int>(2, 30)(rng);
    const int h = std::uniform_int_distribution<int>(2, 30)(rng);
    const bool conn8 = it % 2;
    TestImage<Rvp8u> im(w, h);
    for (int y = 0; y < h; ++y)
      for (int x = 0; x < w; ++x) im.set(x, y, small_value<Rvp8u>(rng, FillRule::Grad));
    Call<Rvp8u, 1> k{FillRule::Grad, conn8, {w / 2, h / 2}, {99}, {1}, {2}};
    const std::vector<uint8_t> want = reference_set<Rvp8u, 1>(im, k);
    std::vector<uint8_t> mask(size_t(w + 2) * (h + 2));
    rvp::seg::VisitMask::init(mask.data(), w, h);
    const rvp::seg::VisitMask vm{mask.data(), w + 2};
    rvp::seg::SpanEntry entries[4];
    rvp::seg::SpanStack st(entries, 4, 0);
    rvp::seg::FillStats fs;
    rvp::seg::GradAccept<Rvp8u, 1> ok{{1}, {2}};
    rvp::seg::gradient_fill<Rvp8u, 1>(im.ptr(), im.step(), w, h, w / 2, h / 2, conn8, ok, vm, st,
                                      fs);
    for (int y = 0; y < h; ++y)
      for (int x = 0; x < w; ++x) ASSERT_EQ(*vm.at(x, y), want[size_t(y) * w + x]);
    EXPECT_EQ(fs.area, std::count(want.begin(), want.end(), 1));
  }
}

TEST(FloodFill, SizeQueries) {
  int n = -1;
  EXPECT_EQ(rvpiFloodFillGetSize({10, 7}, &n), 0);
  EXPECT_EQ(n, 6 * 70 + 32);
  EXPECT_EQ(rvpiFloodFillGetSize_Grad({10, 7}, &n), 0);
  EXPECT_EQ(n, 12 * 9 + 64 + 48 * 70 / 3);
  EXPECT_EQ(rvpiFloodFillGetSize({40000, 20000}, &n), 0);  // 64-bit product truncated to 32
  EXPECT_EQ(n, int(uint32_t(6ll * 40000 * 20000 + 32)));
  n = 123;
  EXPECT_EQ(rvpiFloodFillGetSize_Grad({40000, 20000}, &n), rvpStsSizeErr);
  EXPECT_EQ(rvpiFloodFillGetSize({0, 5}, &n), rvpStsSizeErr);
  EXPECT_EQ(rvpiFloodFillGetSize_Grad({5, 0}, &n), rvpStsSizeErr);
  EXPECT_EQ(n, 123);
  EXPECT_EQ(rvpiFloodFillGetSize({5, 5}, nullptr), rvpStsNullPtrErr);
  EXPECT_EQ(rvpiFloodFillGetSize_Grad({0, 0}, nullptr), rvpStsNullPtrErr);
}

// Every check with its code, in order, and nothing written on error.
template <class T, int C>
void bad_arguments() {
  const int w = 6, h = 5;
  TestImage<T> im(w, h, C, 0, 0);
  std::mt19937 rng(3);
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w; ++x)
      for (int c = 0; c < C; ++c) im.set(x, y, T(rng() % 3), c);
  std::vector<Rvp8u> buf(4096, 0x3C);
  const std::vector<Rvp8u> buf0 = buf;
  const T nv[3] = {T(7), T(7), T(7)}, d[3] = {T(1), T(1), T(1)};
  const int es = int(sizeof(T));
  const int good = w * C * es;
  struct Bad {
    bool null_img, null_nv, null_reg, null_buf;
    RvpiSize roi;
    int step;
    RvpiPoint seed;
    RvpStatus want;
  };
  const Bad cases[] = {
      {true, false, false, false, {w, h}, good, {0, 0}, rvpStsNullPtrErr},
      {false, C == 3, false, false, {w, h}, good, {0, 0}, C == 3 ? rvpStsNullPtrErr : 0},
      {false, false, true, false, {0, h}, good, {0, 0}, rvpStsNullPtrErr},
      {false, false, false, true, {w, h}, -1, {0, 0}, rvpStsNullPtrErr},
      {false, false, false, false, {0, h}, -1, {9, 9}, rvpStsSizeErr},
      {false, false, false, false, {w, -1}, good, {0, 0}, rvpStsSizeErr},
      {false, false, false, false, {w, h}, good - es, {-1, 0}, rvpStsStepErr},
      {false, false, false, false, {w, h}, -good, {0, 0}, rvpStsStepErr},
      {false,
       false,
       false,
       false,
       {w, h},
       good + (es > 1 ? 1 : 0),
       {w, 0},
       es > 1 ? rvpStsNotEvenStepErr : rvpStsOutOfRangeErr},
      {false, false, false, false, {w, h}, good, {w, 0}, rvpStsOutOfRangeErr},
      {false, false, false, false, {w, h}, good, {0, h}, rvpStsOutOfRangeErr},
      {false, false, false, false, {w, h}, good, {-1, 2}, rvpStsOutOfRangeErr},
  };
  for (FillRule rule : kRules) {
    if (std::is_same_v<T, Rvp32s> && rule != FillRule::Plain) continue;
    for (bool conn8 : {false, true})
      for (const Bad& b : cases) {
        if (b.want == 0) continue;
        const TestImage<T> before = im;
        RvpiConnectedComp reg;
        std::memset(&reg, 0x77, sizeof reg);
        const RvpiConnectedComp reg0 = reg;
        const RvpStatus st =
            rvpt::fill_c<C>(rule, conn8, b.null_img ? nullptr : im.ptr(), b.step, b.roi, b.seed,
                            b.null_nv ? nullptr : nv, b.null_nv ? nullptr : d, d,
                            b.null_reg ? nullptr : &reg, b.null_buf ? nullptr : buf.data());
        EXPECT_EQ(st, b.want) << "rule " << int(rule);
        EXPECT_EQ(im.bytes(), before.bytes());
        EXPECT_EQ(std::memcmp(&reg, &reg0, sizeof reg), 0);
        EXPECT_EQ(buf, buf0);
      }
  }
  if constexpr (C == 3) {  // a null delta pointer alone
    RvpiConnectedComp reg{};
    EXPECT_EQ(rvpt::fill_c<C>(FillRule::Range, false, im.ptr(), good, {w, h}, {0, 0}, nv, d,
                              static_cast<const T*>(nullptr), &reg, buf.data()),
              rvpStsNullPtrErr);
    EXPECT_EQ(rvpt::fill_c<C>(FillRule::Grad, true, im.ptr(), good, {w, h}, {0, 0}, nv,
                              static_cast<const T*>(nullptr), d, &reg, buf.data()),
              rvpStsNullPtrErr);
  }
}

TEST(FloodFill, BadArgumentsReturnTheirCodeAndWriteNothing) {
  bad_arguments<Rvp8u, 1>();
  bad_arguments<Rvp8u, 3>();
  bad_arguments<Rvp16u, 1>();
  bad_arguments<Rvp16u, 3>();
  bad_arguments<Rvp32s, 1>();
  bad_arguments<Rvp32f, 1>();
  bad_arguments<Rvp32f, 3>();
}

// Whole-image fills on images whose last (or first) byte touches a guard page.
template <class T, int C>
void guarded_fills() {
  for (rvpt::Guard g : {rvpt::Guard::After, rvpt::Guard::Before})
    for (int w = 1; w <= 70; w += (w < 20 ? 1 : 7))
      for (int h : {1, 2, 5}) {
        const int step = w * C * int(sizeof(T)) + (w % 3) * int(sizeof(T));
        for (FillRule rule : kRules) {
          if (std::is_same_v<T, Rvp32s> && rule != FillRule::Plain) continue;
          rvpt::GuardedImage<T> im(w, h, C, step, g);
          for (int y = 0; y < h; ++y)
            for (int x = 0; x < w * C; ++x) im.row(y)[x] = T(2);
          OddBuffer buf(rvpt::fill_buffer_size(rule, {w, h}));
          RvpiConnectedComp reg{};
          const T nv[3] = {T(4), T(4), T(4)}, d[3] = {T(0), T(0), T(0)};
          ASSERT_EQ(rvpt::fill_c<C>(rule, (w + h) % 2 == 0, im.ptr(), step, {w, h}, {w - 1, 0}, nv,
                                    d, d, &reg, buf.ptr()),
                    0);
          const bool limited = rule == FillRule::Range && w * h >= 4 && w * h < 8 && h > 1;
          if (!limited) {
            EXPECT_EQ(reg.area, double(w * h)) << w << "x" << h;
          }
          for (int y = 0; y < h; ++y)
            if (!limited || y == 0) {
              for (int x = 0; x < w * C; ++x) ASSERT_EQ(im.row(y)[x], T(4));
            }
        }
      }
}

TEST(FloodFill, GuardedImagesAndBuffers) {
  guarded_fills<Rvp8u, 1>();
  guarded_fills<Rvp8u, 3>();
  guarded_fills<Rvp16u, 3>();
  guarded_fills<Rvp32s, 1>();
  guarded_fills<Rvp32f, 1>();
}

}  // namespace

namespace {

// The 32-pixel run searches against plain pixel-by-pixel loops, for every start position on
// random rows at odd addresses.
template <class Accept>
void row_search_matches_scalar(const Accept& ok, std::mt19937& rng) {
  for (int it = 0; it < 60; ++it) {
    const int w = 1 + int(rng() % 150);
    std::vector<Rvp8u> store(size_t(w) + 1);
    Rvp8u* r = store.data() + 1;
    for (int x = 0; x < w;) {
      const int len = 1 + int(rng() % 40);
      const Rvp8u v = Rvp8u(rng() % 6);
      for (int k = 0; k < len && x < w; ++k) r[x++] = v;
    }
    const rvp::seg::RowSearch<Rvp8u, 1, Accept> rs{ok, w};
    for (int x = 0; x < w; ++x) {
      int re = x;
      while (re + 1 < w && ok(r + re + 1)) ++re;
      int le = x;
      while (le > 0 && ok(r + le - 1)) --le;
      ASSERT_EQ(rs.right_end(r, x), re);
      ASSERT_EQ(rs.left_end(r, x), le);
      for (int b = x; b < w; b += 7) {
        int nx = x;
        while (nx <= b && !ok(r + nx)) ++nx;
        ASSERT_EQ(std::min(rs.next(r, x, b), b + 1), nx);
      }
    }
  }
}

TEST(FloodFill, RunSearchesMatchScalarLoops) {
  std::mt19937 rng(12);
  for (int v = 0; v < 6; ++v) {
    row_search_matches_scalar(rvp::seg::PlainAccept<Rvp8u, 1>{{Rvp8u(v)}}, rng);
    row_search_matches_scalar(
        rvp::seg::RangeAccept<Rvp8u, 1>{{Rvp8u(v / 2)}, {Rvp8u(v / 2 + 2)}, {Rvp8u(v)}}, rng);
  }
}

// A plain fill whose stack runs out stops like the range limit: what it filled is a connected
// part of the region that contains the seed span, and the record describes exactly that part.
TEST(FloodFill, PlainFillOutOfStackStopsCleanly) {
  const int w = 33, h = 20;
  for (bool conn8 : {false, true}) {
    TestImage<Rvp8u> im(w, h);
    for (int y = 0; y < h; ++y)
      for (int x = 0; x < w; ++x) im.set(x, y, (y % 2 == 0 || x % 2 == 0) ? 1 : 0);  // comb
    const TestImage<Rvp8u> before = im;
    rvp::seg::SpanEntry entries[4];
    rvp::seg::SpanStack st(entries, 4, 0);
    rvp::seg::FillStats fs;
    const rvp::seg::PlainAccept<Rvp8u, 1> ok{{1}};
    const Rvp8u nv = 7;
    rvp::seg::value_fill<Rvp8u, 1>(im.ptr(), im.step(), w, h, 0, 0, conn8, ok, &nv, st, fs);
    ASSERT_TRUE(st.stopped());
    std::vector<uint8_t> filled(size_t(w) * h, 0);
    int64_t area = 0;
    for (int y = 0; y < h; ++y)
      for (int x = 0; x < w; ++x)
        if (im.at(x, y) != before.at(x, y)) {
          ASSERT_EQ(im.at(x, y), 7);
          filled[size_t(y) * w + x] = 1;
          ++area;
        }
    EXPECT_EQ(fs.area, area);
    EXPECT_LT(area, int64_t(w) * h);
    for (int x = 0; x < w; ++x) EXPECT_EQ(im.at(x, 0), 7);  // the seed row
    const auto conn = rvpt::reach(w, h, 0, 0, conn8, [&](int, int b) { return filled[b] != 0; });
    EXPECT_EQ(conn, filled);
  }
}

}  // namespace

// Norms, means, deviations and extrema: results against a plain oracle for every type and
// channel form, the vector kernels against their scalar references, special values, argument
// checks with nothing written, exact sums beyond 2^24 pixels, guarded images.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

#include "arith/statistics_kernels.h"
#include "rvpcv.h"
#include "support/guarded.h"
#include "support/images.h"

namespace {

using rvp::arith::FloatAcc;
using rvp::arith::Form;
using rvp::arith::IntRow;
using rvpt::TestImage;

constexpr float kFltMax = std::numeric_limits<float>::max();
const uint64_t kDefaultNaN = 0xFFF8000000000000ull;

uint64_t bits64(double v) {
  uint64_t b;
  std::memcpy(&b, &v, 8);
  return b;
}

// ---- export tables: one entry per member, reached through a type-indexed table ------------

enum Fam { kNorm, kNormDiff, kNormRel };
enum Kind { kInf, kL1, kL2 };

template <class T>
struct Api;

#define RVPT_API(t, T)                                                                            \
  template <>                                                                                     \
  struct Api<T> {                                                                                 \
    using N1 = RvpStatus (*)(const T*, int, const Rvp8u*, int, RvpiSize, Rvp64f*);                \
    using N3 = RvpStatus (*)(const T*, int, const Rvp8u*, int, RvpiSize, int, Rvp64f*);           \
    using D1 = RvpStatus (*)(const T*, int, const T*, int, const Rvp8u*, int, RvpiSize, Rvp64f*); \
    using D3 = RvpStatus (*)(const T*, int, const T*, int, const Rvp8u*, int, RvpiSize, int,      \
                             Rvp64f*);                                                            \
    static constexpr N1 norm1[3] = {rvpiNorm_Inf_##t##_C1MR, rvpiNorm_L1_##t##_C1MR,              \
                                    rvpiNorm_L2_##t##_C1MR};                                      \
    static constexpr N3 norm3[3] = {rvpiNorm_Inf_##t##_C3CMR, rvpiNorm_L1_##t##_C3CMR,            \
                                    rvpiNorm_L2_##t##_C3CMR};                                     \
    static constexpr D1 diff1[2][3] = {                                                           \
        {rvpiNormDiff_Inf_##t##_C1MR, rvpiNormDiff_L1_##t##_C1MR, rvpiNormDiff_L2_##t##_C1MR},    \
        {rvpiNormRel_Inf_##t##_C1MR, rvpiNormRel_L1_##t##_C1MR, rvpiNormRel_L2_##t##_C1MR}};      \
    static constexpr D3 diff3[2][3] = {                                                           \
        {rvpiNormDiff_Inf_##t##_C3CMR, rvpiNormDiff_L1_##t##_C3CMR, rvpiNormDiff_L2_##t##_C3CMR}, \
        {rvpiNormRel_Inf_##t##_C3CMR, rvpiNormRel_L1_##t##_C3CMR, rvpiNormRel_L2_##t##_C3CMR}};   \
    static constexpr auto mean1 = rvpiMean_##t##_C1MR;                                            \
    static constexpr auto mean3 = rvpiMean_##t##_C3CMR;                                           \
    static constexpr auto msd1 = rvpiMean_StdDev_##t##_C1R;                                       \
    static constexpr auto msd3 = rvpiMean_StdDev_##t##_C3CR;                                      \
    static constexpr auto msd1m = rvpiMean_StdDev_##t##_C1MR;                                     \
    static constexpr auto msd3m = rvpiMean_StdDev_##t##_C3CMR;                                    \
    static constexpr auto mmi1 = rvpiMinMaxIndx_##t##_C1R;                                        \
    static constexpr auto mmi3 = rvpiMinMaxIndx_##t##_C3CR;                                       \
    static constexpr auto mmi1m = rvpiMinMaxIndx_##t##_C1MR;                                      \
    static constexpr auto mmi3m = rvpiMinMaxIndx_##t##_C3CMR;                                     \
  };
RVPT_API(8u, Rvp8u)
RVPT_API(8s, Rvp8s)
RVPT_API(16u, Rvp16u)
RVPT_API(32f, Rvp32f)
#undef RVPT_API

// Calls a member by family and channel form; a, b have `ch` channels, coi used when ch == 3.
template <class T>
RvpStatus call_norm(Fam f, Kind k, int ch, const TestImage<T>& a, const TestImage<T>& b,
                    const TestImage<Rvp8u>& m, RvpiSize roi, int coi, Rvp64f* out) {
  using A = Api<T>;
  if (f == kNorm)
    return ch == 1 ? A::norm1[k](a.ptr(), a.step(), m.ptr(), m.step(), roi, out)
                   : A::norm3[k](a.ptr(), a.step(), m.ptr(), m.step(), roi, coi, out);
  const int r = f == kNormRel;
  return ch == 1 ? A::diff1[r][k](a.ptr(), a.step(), b.ptr(), b.step(), m.ptr(), m.step(), roi, out)
                 : A::diff3[r][k](a.ptr(), a.step(), b.ptr(), b.step(), m.ptr(), m.step(), roi, coi,
                                  out);
}

// Random fill of every channel (the shared helpers index elements as pixels, so they only suit
// one-channel images).
template <class T>
void fill(TestImage<T>& img, std::mt19937& rng, bool special = false) {
  for (int y = 0; y < img.height(); ++y)
    for (int x = 0; x < img.width(); ++x)
      for (int c = 0; c < img.channels(); ++c) {
        if constexpr (std::is_same_v<T, Rvp32f>)
          img.set(x, y, special ? rvpt::special_float(rng) : rvpt::random_value<T>(rng), c);
        else
          img.set(x, y, rvpt::random_value<T>(rng), c);
      }
}

// ---- oracle ------------------------------------------------------------------------------

struct Expected {
  double inf = 0, l1 = 0, l2sq = 0;  // of the stream
  double abs_sum = 0;                // for tolerances
};

template <class T>
Expected oracle_norm(const TestImage<T>& a, const TestImage<T>* b, bool absolute,
                     const TestImage<Rvp8u>& m, int c) {
  Expected e;
  long double l1 = 0, l2 = 0;
  for (int y = 0; y < a.height(); ++y)
    for (int x = 0; x < a.width(); ++x) {
      if (m.at(x, y) == 0) continue;
      long double v = static_cast<long double>(a.at(x, y, c));
      if (b != nullptr) v -= static_cast<long double>(b->at(x, y, c));
      if (absolute || b != nullptr) v = std::fabs(v);
      e.inf = std::max(e.inf, static_cast<double>(v));
      l1 += v;
      l2 += v * v;
    }
  e.l1 = static_cast<double>(l1);
  e.l2sq = static_cast<double>(l2);
  return e;
}

template <class T>
double expected_norm(Kind k, const Expected& e) {
  return k == kInf ? e.inf : (k == kL1 ? e.l1 : std::sqrt(e.l2sq));
}

template <class T>
void expect_close(double got, double want, double scale, const char* what) {
  if (std::is_same_v<T, Rvp32f>)
    EXPECT_NEAR(got, want, 1e-12 * scale + 1e-300) << what;
  else
    EXPECT_EQ(got, want) << what;
}

template <class T>
class Stats : public ::testing::Test {};
using Types = ::testing::Types<Rvp8u, Rvp8s, Rvp16u, Rvp32f>;
TYPED_TEST_SUITE(Stats, Types);

// Every norm member on random images, masks, offsets and paddings, every channel of interest.
TYPED_TEST(Stats, NormsMatchOracle) {
  using T = TypeParam;
  std::mt19937 rng(11);
  for (int trial = 0; trial < 24; ++trial) {
    const int w = 1 + int(rng() % 90), h = 1 + int(rng() % 5);
    const int ch = trial % 2 ? 3 : 1;
    TestImage<T> a(w, h, ch, int(rng() % 3) * sizeof(T), int(rng() % 4) * sizeof(T));
    TestImage<T> b(w, h, ch, 0, int(rng() % 4) * sizeof(T));
    TestImage<Rvp8u> m(w, h, 1, int(rng() % 5), int(rng() % 7));
    fill(a, rng);
    fill(b, rng);
    rvpt::fill_mask(m, rng, trial % 3 == 0 ? 1.0 : 0.6);
    for (int coi = 1; coi <= ch; ++coi)
      for (Fam f : {kNorm, kNormDiff, kNormRel})
        for (Kind k : {kInf, kL1, kL2}) {
          Rvp64f got = -1;
          const RvpStatus st = call_norm(f, k, ch, a, b, m, a.size(), coi, &got);
          const Expected num = oracle_norm<T>(a, f == kNorm ? nullptr : &b, true, m, coi - 1);
          const double want_num = expected_norm<T>(k, num);
          if (f != kNormRel) {
            EXPECT_EQ(st, rvpStsNoErr);
            expect_close<T>(got, want_num, num.l1 + 1, "norm");
          } else {
            const Expected den = oracle_norm<T>(b, nullptr, true, m, coi - 1);
            const double want_den = expected_norm<T>(k, den);
            if (want_den == 0.0) {
              EXPECT_EQ(st, rvpStsDivByZeroWrn);
            } else {
              EXPECT_EQ(st, rvpStsNoErr);
              EXPECT_NEAR(got, want_num / want_den, 1e-12 * (got + 1)) << f << k;
            }
          }
        }
  }
}

TYPED_TEST(Stats, MeansAndDeviationsMatchOracle) {
  using T = TypeParam;
  using A = Api<T>;
  std::mt19937 rng(12);
  for (int trial = 0; trial < 24; ++trial) {
    const int w = 1 + int(rng() % 90), h = 1 + int(rng() % 5);
    const int ch = trial % 2 ? 3 : 1;
    TestImage<T> a(w, h, ch, int(rng() % 3) * sizeof(T), int(rng() % 4) * sizeof(T));
    TestImage<Rvp8u> m(w, h, 1, 0, int(rng() % 7));
    TestImage<Rvp8u> all(w, h, 1);
    fill(a, rng);
    rvpt::fill_mask(m, rng, 0.5);
    std::memset(all.ptr(), 1, size_t(w) * h);
    for (int coi = 1; coi <= ch; ++coi)
      for (int masked = 0; masked < 2; ++masked) {
        const TestImage<Rvp8u>& mk = masked ? m : all;
        // Oracle: exact sums; squares per row in 64-bit integers added in double for integer
        // pixels, plain double for floats.
        long double s = 0, q = 0;
        double q_rows = 0;
        int64_t n = 0;
        for (int y = 0; y < h; ++y) {
          uint64_t qr = 0;
          for (int x = 0; x < w; ++x) {
            if (mk.at(x, y) == 0) continue;
            const long double v = a.at(x, y, coi - 1);
            s += v;
            q += v * v;
            qr += static_cast<uint64_t>(v * v);
            ++n;
          }
          q_rows += static_cast<double>(qr);
        }
        const double sq = std::is_same_v<T, Rvp32f> ? static_cast<double>(q) : q_rows;
        const double mean = n ? static_cast<double>(s) / n : 0.0;
        const double sd = n ? std::sqrt(std::fabs(std::fma(-mean, mean, sq / n))) : 0.0;
        Rvp64f gm = -1, gmean = -1, gsd = -1;
        RvpiSize roi = a.size();
        if (masked) {
          EXPECT_EQ(ch == 1 ? A::mean1(a.ptr(), a.step(), m.ptr(), m.step(), roi, &gm)
                            : A::mean3(a.ptr(), a.step(), m.ptr(), m.step(), roi, coi, &gm),
                    rvpStsNoErr);
          EXPECT_EQ(ch == 1
                        ? A::msd1m(a.ptr(), a.step(), m.ptr(), m.step(), roi, &gmean, &gsd)
                        : A::msd3m(a.ptr(), a.step(), m.ptr(), m.step(), roi, coi, &gmean, &gsd),
                    rvpStsNoErr);
        } else {
          EXPECT_EQ(ch == 1 ? A::msd1(a.ptr(), a.step(), roi, &gmean, &gsd)
                            : A::msd3(a.ptr(), a.step(), roi, coi, &gmean, &gsd),
                    rvpStsNoErr);
          gm = gmean;
        }
        if (std::is_same_v<T, Rvp32f>) {
          EXPECT_NEAR(gm, mean, 1e-12 * 1000);
          EXPECT_NEAR(gmean, mean, 1e-12 * 1000);
          EXPECT_NEAR(gsd, sd, 1e-6 * (sd + 1));
        } else {
          EXPECT_EQ(gm, mean);
          EXPECT_EQ(gmean, mean);
          EXPECT_EQ(gsd, sd);
        }
      }
  }
}

TYPED_TEST(Stats, MinMaxIndxMatchesRasterScan) {
  using T = TypeParam;
  using A = Api<T>;
  std::mt19937 rng(13);
  for (int trial = 0; trial < 40; ++trial) {
    const int w = 1 + int(rng() % 80), h = 1 + int(rng() % 6);
    const int ch = trial % 2 ? 3 : 1;
    TestImage<T> a(w, h, ch, 0, int(rng() % 4) * sizeof(T));
    TestImage<Rvp8u> m(w, h, 1, 0, int(rng() % 7));
    // Few distinct values so that ties are common.
    for (int y = 0; y < h; ++y)
      for (int x = 0; x < w; ++x)
        for (int c = 0; c < ch; ++c) a.set(x, y, static_cast<T>(int(rng() % 5) * 3), c);
    if (trial % 4 == 0) fill(a, rng, true);  // Rvp32f: NaN, inf, ±0
    rvpt::fill_mask(m, rng, trial % 5 == 0 ? 0.05 : 0.7);
    for (int coi = 1; coi <= ch; ++coi)
      for (int masked = 0; masked < 2; ++masked) {
        float vmin = kFltMax, vmax = -kFltMax;
        RvpiPoint pmin{0, 0}, pmax{0, 0};
        bool any = false;
        for (int y = 0; y < h; ++y)
          for (int x = 0; x < w; ++x) {
            if (masked && m.at(x, y) == 0) continue;
            any = true;
            const float v = static_cast<float>(a.at(x, y, coi - 1));
            if (v < vmin) vmin = v, pmin = {x, y};
            if (v > vmax) vmax = v, pmax = {x, y};
          }
        if (!any) vmin = vmax = 0.0f;
        Rvp32f gmin = 7, gmax = 7;
        RvpiPoint gpmin{-5, -5}, gpmax{-5, -5};
        const RvpiSize roi = a.size();
        RvpStatus st;
        if (masked)
          st = ch == 1 ? A::mmi1m(a.ptr(), a.step(), m.ptr(), m.step(), roi, &gmin, &gmax, &gpmin,
                                  &gpmax)
                       : A::mmi3m(a.ptr(), a.step(), m.ptr(), m.step(), roi, coi, &gmin, &gmax,
                                  &gpmin, &gpmax);
        else
          st = ch == 1 ? A::mmi1(a.ptr(), a.step(), roi, &gmin, &gmax, &gpmin, &gpmax)
                       : A::mmi3(a.ptr(), a.step(), roi, coi, &gmin, &gmax, &gpmin, &gpmax);
        EXPECT_EQ(st, rvpStsNoErr);
        EXPECT_TRUE(rvpt::same_bits(gmin, vmin)) << gmin << " vs " << vmin;
        EXPECT_TRUE(rvpt::same_bits(gmax, vmax)) << gmax << " vs " << vmax;
        EXPECT_EQ(gpmin.x, pmin.x);
        EXPECT_EQ(gpmin.y, pmin.y);
        EXPECT_EQ(gpmax.x, pmax.x);
        EXPECT_EQ(gpmax.y, pmax.y);
      }
  }
}

// ---- vector kernels against the scalar references -----------------------------------------

// One-channel rows, and channel c of three-channel rows (the vector path gathers the channel).
template <class T, Form F, unsigned N>
void compare_int_rows(std::mt19937& rng) {
  for (int trial = 0; trial < 90; ++trial) {
    const int ch = trial % 3 == 2 ? 3 : 1;
    const int c = ch == 3 ? int(rng() % 3) : 0;
    // Trial 0 is long enough to pass the in-row widening of the 32-bit lanes.
    const int n = trial == 0 ? 300000 : int(rng() % 300);
    const int off = int(rng() % 32);
    const size_t len = size_t(n) * ch + off;
    std::vector<T> a(len), b(len);
    std::vector<Rvp8u> m(n + off);
    // Extreme values in some trials: the widest sums and squares.
    for (auto& v : a)
      v = trial % 4 == 1 ? std::numeric_limits<T>::lowest() : rvpt::random_value<T>(rng);
    if (trial % 4 == 0)  // trial 0 included: the largest squares
      for (auto& v : a) v = std::numeric_limits<T>::max();
    for (auto& v : b) v = rvpt::random_value<T>(rng);
    for (auto& v : m) v = Rvp8u(rng() % 3 == 0 ? 0 : 1 + rng() % 255);
    for (int masked = 0; masked < 2; ++masked) {
      const Rvp8u* mp = masked ? m.data() + off : nullptr;
      const T* pa = a.data() + off + c;
      const T* pb = b.data() + off + c;
      IntRow rn, rd, vn, vd;
      rvp::arith::ref::int_row<T, F, N>(pa, pb, ch, mp, n, rn, rd);
      if (ch == 3)
        rvp::arith::avx2::int_row_i32<T, F, N, 3>(pa, pb, mp, n, vn, vd, c);
      else if constexpr (std::is_same_v<T, Rvp8u>)
        rvp::arith::avx2::int_row_u8<F, N>(pa, pb, mp, n, vn, vd);
      else
        rvp::arith::avx2::int_row_i32<T, F, N>(pa, pb, mp, n, vn, vd);
      for (auto [r, v] : {std::pair{rn, vn}, std::pair{rd, vd}}) {
        ASSERT_EQ(r.max, v.max) << n << " ch " << ch;
        ASSERT_EQ(r.sum, v.sum) << n << " ch " << ch;
        ASSERT_EQ(r.sq, v.sq) << n << " ch " << ch;
        ASSERT_EQ(r.count, v.count) << n << " ch " << ch;
      }
    }
  }
}

template <class T>
void compare_int_forms(std::mt19937& rng) {
  using namespace rvp::arith;
  constexpr unsigned kAll = kMax | kSum | kSq | kCount;
  compare_int_rows<T, Form::Value, kSum | kSq | kCount>(rng);
  compare_int_rows<T, Form::Abs, kAll>(rng);
  compare_int_rows<T, Form::Diff, kAll>(rng);
  compare_int_rows<T, Form::Rel, kAll>(rng);
  compare_int_rows<T, Form::Rel, kSq>(rng);
}

// Partial sums equal bit for bit; a NaN partial only needs to be NaN on both sides (its
// payload depends on operand order, and every NaN result leaves the library canonicalised).
bool same_or_both_nan(double x, double y) {
  return rvpt::same_bits(x, y) || (std::isnan(x) && std::isnan(y));
}

bool same_acc(const FloatAcc& x, const FloatAcc& y) {
  for (int l = 0; l < 8; ++l)
    if (!same_or_both_nan(x.sum[l], y.sum[l]) || !same_or_both_nan(x.sq[l], y.sq[l])) return false;
  return rvpt::same_bits(x.max, y.max) && x.nan == y.nan && x.count == y.count;
}

template <Form F, unsigned N>
void compare_f32_rows(std::mt19937& rng) {
  for (int trial = 0; trial < 90; ++trial) {
    const int ch = trial % 3 == 2 ? 3 : 1;
    const int c = ch == 3 ? int(rng() % 3) : 0;
    const int n = int(rng() % 100);
    const int off = int(rng() % 8);
    TestImage<Rvp32f> a(n * ch + off + 1, 1), b(n * ch + off + 1, 1);
    rvpt::fill_random_special(a, rng);
    rvpt::fill_random_special(b, rng);
    if (trial % 4 == 0)
      for (int x = 0; x < n * ch + off; ++x) a.set(x, 0, -0.0f);  // -0.0 partials
    std::vector<Rvp8u> m(n + off);
    for (auto& v : m) v = Rvp8u(rng() % 3 == 0 ? 0 : 1 + rng() % 255);
    for (int masked = 0; masked < 2; ++masked) {
      const Rvp8u* mp = masked ? m.data() + off : nullptr;
      const Rvp32f* pa = a.ptr() + off + c;
      const Rvp32f* pb = b.ptr() + off + c;
      FloatAcc rn, rd, vn, vd;
      // Two rows in a row: partials carry over between rows.
      for (int rep = 0; rep < 2; ++rep) {
        rvp::arith::ref::float_row<F, N>(pa, pb, ch, mp, n, rn, rd);
        if (ch == 3)
          rvp::arith::avx2::float_row<F, N, 3>(pa, pb, mp, n, vn, vd, c);
        else
          rvp::arith::avx2::float_row<F, N>(pa, pb, mp, n, vn, vd);
      }
      ASSERT_TRUE(same_acc(rn, vn)) << n << " masked " << masked << " ch " << ch;
      ASSERT_TRUE(same_acc(rd, vd)) << n << " masked " << masked << " ch " << ch;
    }
  }
}

TEST(StatisticsKernels, Avx2MatchesReference) {
  using namespace rvp::arith;
  std::mt19937 rng(21);
  constexpr unsigned kAll = kMax | kSum | kSq | kCount;
  compare_int_forms<Rvp8u>(rng);
  compare_int_forms<Rvp8s>(rng);
  compare_int_forms<Rvp16u>(rng);
  compare_f32_rows<Form::Value, kSum | kSq | kCount>(rng);
  compare_f32_rows<Form::Abs, kAll>(rng);
  compare_f32_rows<Form::Diff, kAll>(rng);
  compare_f32_rows<Form::Rel, kAll>(rng);
}

// The whole-region Rvp8u kernel against the reference folded row by row, over regions with
// random widths, offsets and row gaps; the all-255 region is long enough to overflow a 32-bit
// square lane that was never widened.
template <bool Masked>
void compare_u8_moments(std::mt19937& rng) {
  constexpr unsigned kMoments = rvp::arith::kSum | rvp::arith::kSq | rvp::arith::kCount;
  for (int trial = 0; trial < 40; ++trial) {
    const bool big = trial == 0;
    const int w = big ? 1000 : 1 + int(rng() % 200);
    const int h = big ? 1100 : 1 + int(rng() % 40);
    const int off = int(rng() % 32);
    const int step = w + off + int(rng() % 3 == 0 ? 0 : rng() % 40);
    const size_t len = size_t(step) * h + off + 64;
    std::vector<Rvp8u> a(len), m(len);
    for (auto& v : a) v = big || trial % 5 == 1 ? 255 : Rvp8u(rng());
    for (auto& v : m) v = Rvp8u(rng() % 3 == 0 ? 0 : 1 + rng() % 255);
    IntRow r, unused;
    rvp::arith::avx2::U8Moments<Masked> k;
    for (int y = 0; y < h; ++y) {
      const Rvp8u* pa = a.data() + off + size_t(y) * step;
      const Rvp8u* pm = Masked ? m.data() + off + size_t(y) * step : nullptr;
      rvp::arith::ref::int_row<Rvp8u, Form::Value, kMoments>(pa, nullptr, 1, pm, w, r, unused);
      k.row(pa, pm, w);
    }
    const IntRow v = k.total();
    ASSERT_EQ(r.sum, v.sum) << w << "x" << h;
    ASSERT_EQ(r.sq, v.sq) << w << "x" << h;
    ASSERT_EQ(r.count, v.count) << w << "x" << h;
  }
}

TEST(StatisticsKernels, WholeRegionU8MomentsMatchReference) {
  std::mt19937 rng(33);
  compare_u8_moments<false>(rng);
  compare_u8_moments<true>(rng);
}

void expect_same_extremes(const rvp::arith::RowExtremes& r, const rvp::arith::RowExtremes& v,
                          const char* what) {
  EXPECT_EQ(r.any, v.any) << what;
  EXPECT_EQ(r.min, v.min) << what;  // numeric equality: the sign of a zero is taken in pass 2
  EXPECT_EQ(r.max, v.max) << what;
}

template <class T>
std::vector<T> random_row(std::mt19937& rng, size_t len) {
  std::vector<T> v(len);
  for (auto& x : v) x = rvpt::random_value<T>(rng);
  return v;
}

TEST(StatisticsKernels, ExtremesAvx2MatchReference) {
  using namespace rvp::arith;
  std::mt19937 rng(22);
  for (int trial = 0; trial < 200; ++trial) {
    const int n = int(rng() % 120);
    const int off = int(rng() % 16);
    const int c = int(rng() % 3);
    TestImage<Rvp32f> f(3 * n + off + 1, 1);
    rvpt::fill_random_special(f, rng);
    const auto u = random_row<Rvp8u>(rng, 3 * n + off);
    const auto s8 = random_row<Rvp8s>(rng, 3 * n + off);
    const auto s16 = random_row<Rvp16u>(rng, 3 * n + off);
    std::vector<Rvp8u> m(n + off);
    const double density = trial % 4 == 0 ? 0.02 : 0.6;
    for (auto& v : m) v = std::bernoulli_distribution(density)(rng) ? Rvp8u(1 + rng() % 255) : 0;
    for (int masked = 0; masked < 2; ++masked) {
      const Rvp8u* mp = masked ? m.data() + off : nullptr;
      const Rvp8u* pu = u.data() + off;
      const Rvp32f* pf = f.ptr() + off;
      expect_same_extremes(ref::row_extremes(pu, 1, mp, n), avx2::row_extremes_u8(pu, mp, n), "8u");
      expect_same_extremes(ref::row_extremes(pf, 1, mp, n), avx2::row_extremes_f32(pf, mp, n),
                           "32f");
      expect_same_extremes(ref::row_extremes(pf + c, 3, mp, n),
                           avx2::row_extremes_f32<3>(pf + c, mp, n, c), "32f C3");
      expect_same_extremes(ref::row_extremes(pu + c, 3, mp, n),
                           avx2::row_extremes_i32<Rvp8u, 3>(pu + c, mp, n, c), "8u C3");
      expect_same_extremes(ref::row_extremes(s8.data() + off, 1, mp, n),
                           avx2::row_extremes_i32<Rvp8s, 1>(s8.data() + off, mp, n, 0), "8s");
      expect_same_extremes(ref::row_extremes(s16.data() + off + c, 3, mp, n),
                           avx2::row_extremes_i32<Rvp16u, 3>(s16.data() + off + c, mp, n, c),
                           "16u C3");
    }
  }
}

// ---- behaviour at the edges --------------------------------------------------------------

TEST(Statistics, MeanOfEmptySelectionIsZero) {
  TestImage<Rvp8s> a(9, 4);
  TestImage<Rvp8u> m(9, 4);
  std::mt19937 rng(3);
  rvpt::fill_random(a, rng);
  std::memset(m.ptr(), 0, size_t(m.step()) * 4);
  Rvp64f mean = 5, sd = 5;
  EXPECT_EQ(rvpiMean_8s_C1MR(a.ptr(), a.step(), m.ptr(), m.step(), a.size(), &mean), 0);
  EXPECT_EQ(bits64(mean), bits64(0.0));
  mean = 5;
  EXPECT_EQ(rvpiMean_StdDev_8s_C1MR(a.ptr(), a.step(), m.ptr(), m.step(), a.size(), &mean, &sd), 0);
  EXPECT_EQ(bits64(mean), bits64(0.0));
  EXPECT_EQ(bits64(sd), bits64(0.0));
  Rvp32f vmin = 5, vmax = 5;
  RvpiPoint pmin{3, 3}, pmax{3, 3};
  EXPECT_EQ(rvpiMinMaxIndx_8s_C1MR(a.ptr(), a.step(), m.ptr(), m.step(), a.size(), &vmin, &vmax,
                                   &pmin, &pmax),
            0);
  EXPECT_EQ(vmin, 0.0f);
  EXPECT_EQ(vmax, 0.0f);
  EXPECT_EQ(pmin.x + pmin.y + pmax.x + pmax.y, 0);
}

TEST(Statistics, NormRelZeroDenominator) {
  TestImage<Rvp16u> a(13, 3), b(13, 3);
  TestImage<Rvp8u> m(13, 3);
  std::memset(a.ptr(), 0, size_t(a.step()) * 3);
  std::memset(b.ptr(), 0, size_t(b.step()) * 3);
  std::memset(m.ptr(), 1, size_t(m.step()) * 3);
  Rvp64f r = 0;
  EXPECT_EQ(rvpiNormRel_Inf_16u_C1MR(a.ptr(), a.step(), b.ptr(), b.step(), m.ptr(), m.step(),
                                     a.size(), &r),
            rvpStsDivByZeroWrn);
  EXPECT_EQ(bits64(r), kDefaultNaN);
  a.set(7, 2, 40);
  EXPECT_EQ(rvpiNormRel_Inf_16u_C1MR(a.ptr(), a.step(), b.ptr(), b.step(), m.ptr(), m.step(),
                                     a.size(), &r),
            rvpStsDivByZeroWrn);
  EXPECT_EQ(r, std::numeric_limits<double>::infinity());
  // A nonzero denominator hidden by the mask still counts as zero.
  b.set(1, 1, 9);
  m.set(1, 1, 0);
  EXPECT_EQ(rvpiNormRel_L1_16u_C1MR(a.ptr(), a.step(), b.ptr(), b.step(), m.ptr(), m.step(),
                                    a.size(), &r),
            rvpStsDivByZeroWrn);
  m.set(1, 1, 1);
  EXPECT_EQ(rvpiNormRel_L1_16u_C1MR(a.ptr(), a.step(), b.ptr(), b.step(), m.ptr(), m.step(),
                                    a.size(), &r),
            rvpStsNoErr);
  EXPECT_EQ(r, (40.0 + 9.0) / 9.0);

  // Rvp32f: a NaN numerator over a zero denominator is -infinity.
  TestImage<Rvp32f> fa(5, 1), fb(5, 1);
  TestImage<Rvp8u> fm(5, 1);
  for (int x = 0; x < 5; ++x) fa.set(x, 0, 1.0f), fb.set(x, 0, -0.0f), fm.set(x, 0, 1);
  fa.set(2, 0, std::numeric_limits<float>::quiet_NaN());
  for (auto fn : {rvpiNormRel_Inf_32f_C1MR, rvpiNormRel_L1_32f_C1MR, rvpiNormRel_L2_32f_C1MR}) {
    EXPECT_EQ(fn(fa.ptr(), fa.step(), fb.ptr(), fb.step(), fm.ptr(), fm.step(), fa.size(), &r),
              rvpStsDivByZeroWrn);
    EXPECT_EQ(r, -std::numeric_limits<double>::infinity());
  }
}

TEST(Statistics, Float32SpecialValues) {
  TestImage<Rvp32f> a(20, 2);
  TestImage<Rvp8u> m(20, 2);
  for (int y = 0; y < 2; ++y)
    for (int x = 0; x < 20; ++x) a.set(x, y, float(x - 10 * y)), m.set(x, y, 1);
  const float nan = std::numeric_limits<float>::quiet_NaN();
  a.set(4, 1, -nan);
  a.set(17, 0, std::numeric_limits<float>::infinity());
  Rvp64f r = 0;
  // Selected NaN: every norm and the mean are the default NaN.
  for (auto fn :
       {rvpiNorm_Inf_32f_C1MR, rvpiNorm_L1_32f_C1MR, rvpiNorm_L2_32f_C1MR, rvpiMean_32f_C1MR}) {
    EXPECT_EQ(fn(a.ptr(), a.step(), m.ptr(), m.step(), a.size(), &r), 0);
    EXPECT_EQ(bits64(r), kDefaultNaN);
  }
  // Masked off, NaN is never read into a result; the infinity still is.
  m.set(4, 1, 0);
  EXPECT_EQ(rvpiNorm_Inf_32f_C1MR(a.ptr(), a.step(), m.ptr(), m.step(), a.size(), &r), 0);
  EXPECT_EQ(r, std::numeric_limits<double>::infinity());
  m.set(17, 0, 0);
  EXPECT_EQ(rvpiNorm_Inf_32f_C1MR(a.ptr(), a.step(), m.ptr(), m.step(), a.size(), &r), 0);
  EXPECT_EQ(r, 19.0);
  // MinMaxIndx ignores NaN; ±0 ties resolve by position and keep the stored sign.
  Rvp32f vmin, vmax;
  RvpiPoint pmin, pmax;
  a.set(17, 0, 2.0f);
  a.set(0, 0, 50.0f);
  a.set(5, 0, -0.0f);  // row 0: values 50, 1..4, -0.0, 6.. ; row 1: -10.. with NaN at 4
  EXPECT_EQ(rvpiMinMaxIndx_32f_C1R(a.ptr(), a.step(), a.size(), &vmin, &vmax, &pmin, &pmax), 0);
  EXPECT_EQ(vmin, -10.0f);
  EXPECT_EQ(pmin.x, 0);
  EXPECT_EQ(pmin.y, 1);
  EXPECT_EQ(vmax, 50.0f);
  EXPECT_EQ(pmax.x, 0);
  EXPECT_EQ(pmax.y, 0);
  TestImage<Rvp32f> z(6, 2);
  for (int x = 0; x < 6; ++x) z.set(x, 0, x == 3 ? -0.0f : 1.0f), z.set(x, 1, 0.0f);
  z.set(5, 0, 0.0f);
  EXPECT_EQ(rvpiMinMaxIndx_32f_C1R(z.ptr(), z.step(), z.size(), &vmin, nullptr, &pmin, nullptr), 0);
  EXPECT_EQ(rvpt::float_bits(vmin), 0x80000000u);
  EXPECT_EQ(pmin.x, 3);
  EXPECT_EQ(pmin.y, 0);
  // Only NaN selected: the extremes keep their start values at (0, 0).
  TestImage<Rvp32f> n(3, 1);
  for (int x = 0; x < 3; ++x) n.set(x, 0, nan);
  EXPECT_EQ(rvpiMinMaxIndx_32f_C1R(n.ptr(), n.step(), n.size(), &vmin, &vmax, &pmin, &pmax), 0);
  EXPECT_EQ(vmin, kFltMax);
  EXPECT_EQ(vmax, -kFltMax);
}

TEST(Statistics, MinMaxIndxTieRule) {
  TestImage<Rvp32f> a(8, 5);
  for (int y = 0; y < 5; ++y)
    for (int x = 0; x < 8; ++x) a.set(x, y, 9.0f);
  a.set(5, 2, -1.0f);
  a.set(1, 3, -1.0f);
  Rvp32f vmin;
  RvpiPoint pmin;
  EXPECT_EQ(rvpiMinMaxIndx_32f_C1R(a.ptr(), a.step(), a.size(), &vmin, nullptr, &pmin, nullptr), 0);
  EXPECT_EQ(pmin.x, 5);
  EXPECT_EQ(pmin.y, 2);
  a.set(1, 3, 9.0f);
  a.set(1, 2, -1.0f);
  EXPECT_EQ(rvpiMinMaxIndx_32f_C1R(a.ptr(), a.step(), a.size(), &vmin, nullptr, &pmin, nullptr), 0);
  EXPECT_EQ(pmin.x, 1);
  EXPECT_EQ(pmin.y, 2);
  EXPECT_EQ(vmin, -1.0f);
}

TEST(Statistics, DeviationOfConstantImageIsFiniteAndNonNegative) {
  for (int v : {0, 1, 77, 255}) {
    TestImage<Rvp8u> a(37, 11, 1, 3);
    for (int y = 0; y < 11; ++y) std::memset(a.row(y), v, 37);
    Rvp64f mean = -1, sd = -1;
    EXPECT_EQ(rvpiMean_StdDev_8u_C1R(a.ptr(), a.step(), a.size(), &mean, &sd), 0);
    EXPECT_EQ(mean, v);
    EXPECT_EQ(sd, 0.0);
  }
  // 0.1f repeated: the rounded variance may come out slightly negative; the result is its
  // magnitude's root, never NaN.
  TestImage<Rvp32f> f(101, 3);
  for (int y = 0; y < 3; ++y)
    for (int x = 0; x < 101; ++x) f.set(x, y, 0.1f);
  Rvp64f mean = -1, sd = -1;
  EXPECT_EQ(rvpiMean_StdDev_32f_C1R(f.ptr(), f.step(), f.size(), &mean, &sd), 0);
  EXPECT_FALSE(std::isnan(sd));
  EXPECT_GE(sd, 0.0);
  EXPECT_LT(sd, 1e-8);
  // Both result pointers null: nothing to write, status 0.
  TestImage<Rvp32f> c3(5, 2, 3);
  EXPECT_EQ(rvpiMean_StdDev_32f_C3CR(c3.ptr(), c3.step(), c3.size(), 2, nullptr, nullptr), 0);
}

// Sums stay exact on both sides of 2^24 pixels (thin strips: one or two rows).
TEST(Statistics, ExactSumsAroundTwoToThe24Pixels) {
  for (RvpiSize roi : {RvpiSize{16777215, 1}, RvpiSize{8388608, 2}, RvpiSize{8388609, 2}}) {
    const int64_t n = int64_t{roi.width} * roi.height;
    std::vector<Rvp8u> img(size_t(n), 255), mask(size_t(n), 1);
    img[12345] = 254;  // the sum is 255n - 1: any wrap or float accumulation shows
    Rvp64f r = 0;
    EXPECT_EQ(rvpiNorm_L1_8u_C1MR(img.data(), roi.width, mask.data(), roi.width, roi, &r), 0);
    EXPECT_EQ(r, static_cast<double>(255 * n - 1));
    EXPECT_EQ(rvpiMean_8u_C1MR(img.data(), roi.width, mask.data(), roi.width, roi, &r), 0);
    EXPECT_EQ(r, static_cast<double>(255 * n - 1) / static_cast<double>(n));
    EXPECT_EQ(rvpiNorm_L2_8u_C1MR(img.data(), roi.width, mask.data(), roi.width, roi, &r), 0);
    EXPECT_EQ(r, std::sqrt(static_cast<double>(65025 * n - 65025 + 254 * 254)));
    Rvp64f mean = 0, sd = 0;
    EXPECT_EQ(rvpiMean_StdDev_8u_C1R(img.data(), roi.width, roi, &mean, &sd), 0);
    EXPECT_EQ(mean, static_cast<double>(255 * n - 1) / static_cast<double>(n));
    const double sq =
        roi.height == 1 ? double(65025 * n - 65025 + 254 * 254)
                        : double(65025 * (n / 2) - 65025 + 254 * 254) + double(65025 * (n - n / 2));
    EXPECT_EQ(sd, std::sqrt(std::fabs(std::fma(-mean, mean, sq / double(n)))));
  }
}

// ---- argument checks: order, codes, nothing written ---------------------------------------

TEST(Statistics, CheckOrderAndNothingWritten) {
  TestImage<Rvp32f> a(10, 3, 3), b(10, 3, 3);
  TestImage<Rvp8u> m(10, 3);
  const RvpiSize roi{10, 3};
  const int s = a.step();
  const Rvp64f sentinel = 12345.0;
  Rvp64f r = sentinel;
  // Null pointers come first, even with a bad size.
  EXPECT_EQ(rvpiNormDiff_L1_32f_C3CMR(a.ptr(), s, nullptr, s, m.ptr(), 10, {0, 3}, 9, &r), -8);
  EXPECT_EQ(rvpiNorm_L1_32f_C3CMR(a.ptr(), s, m.ptr(), 10, roi, 1, nullptr), -8);
  EXPECT_EQ(rvpiMean_32f_C3CMR(a.ptr(), s, nullptr, 10, roi, 1, &r), -8);
  EXPECT_EQ(rvpiMean_StdDev_32f_C3CMR(nullptr, s, m.ptr(), 10, roi, 1, &r, &r), -8);
  EXPECT_EQ(
      rvpiMinMaxIndx_8u_C1MR(m.ptr(), 10, nullptr, 10, roi, nullptr, nullptr, nullptr, nullptr),
      -8);
  // Size, then -14 over sources and mask, then -108, then coi.
  EXPECT_EQ(rvpiNormRel_L2_32f_C3CMR(a.ptr(), s, b.ptr(), s, m.ptr(), 10, {10, 0}, 9, &r), -6);
  EXPECT_EQ(rvpiNormRel_L2_32f_C3CMR(a.ptr(), s, b.ptr(), s + 2, m.ptr(), 9, roi, 9, &r), -14);
  EXPECT_EQ(rvpiNormRel_L2_32f_C3CMR(a.ptr(), s, b.ptr(), s - 4, m.ptr(), 10, roi, 9, &r), -14);
  EXPECT_EQ(rvpiNormRel_L2_32f_C3CMR(a.ptr(), s, b.ptr(), s + 2, m.ptr(), 10, roi, 9, &r), -108);
  EXPECT_EQ(rvpiNormRel_L2_32f_C3CMR(a.ptr(), -s, b.ptr(), s, m.ptr(), 10, roi, 1, &r), -14);
  for (int coi : {0, 4, -1})
    EXPECT_EQ(rvpiNormRel_L2_32f_C3CMR(a.ptr(), s, b.ptr(), s, m.ptr(), 10, roi, coi, &r), -52);
  EXPECT_EQ(
      rvpiMean_16u_C3CMR(reinterpret_cast<const Rvp16u*>(a.ptr()), 61, m.ptr(), 10, roi, 2, &r),
      -108);
  EXPECT_EQ(rvpiMean_StdDev_8s_C3CR(reinterpret_cast<const Rvp8s*>(a.ptr()), 29, roi, 1, &r, &r),
            -14);
  EXPECT_EQ(r, sentinel);
  // 8-bit pixels have no evenness test; the mask step may equal the width for 32f data.
  EXPECT_EQ(rvpiMean_8s_C3CMR(reinterpret_cast<const Rvp8s*>(a.ptr()), 31, m.ptr(), 10, roi, 3, &r),
            0);
  EXPECT_NE(r, sentinel);
  Rvp32f vmin = 3, vmax = 3;
  RvpiPoint pmin{7, 7}, pmax{7, 7};
  EXPECT_EQ(rvpiMinMaxIndx_32f_C3CMR(a.ptr(), s, m.ptr(), 10, roi, 0, &vmin, &vmax, &pmin, &pmax),
            -52);
  EXPECT_EQ(vmin + vmax, 6.0f);
  EXPECT_EQ(pmin.x + pmin.y + pmax.x + pmax.y, 28);
}

// The library reads exactly the region: guard pages after and before every image.
TEST(Statistics, GuardedImages) {
  std::mt19937 rng(5);
  for (int w = 1; w <= 70; ++w)
    for (rvpt::Guard g : {rvpt::Guard::After, rvpt::Guard::Before}) {
      const int h = 2;
      rvpt::GuardedImage<Rvp8u> a(w, h, 1, w + 3, g), b(w, h, 1, w, g), m(w, h, 1, w + 1, g);
      rvpt::GuardedImage<Rvp32f> f(w, h, 1, 4 * w, g), f2(w, h, 1, 4 * w + 8, g);
      rvpt::GuardedImage<Rvp16u> c3(w, h, 3, 6 * w, g);
      rvpt::GuardedImage<Rvp32f> f3(w, h, 3, 12 * w, g);
      rvpt::GuardedImage<Rvp8u> u3(w, h, 3, 3 * w, g), v3(w, h, 3, 3 * w + 1, g);
      for (size_t i = 0; i < a.byte_count(); ++i) a.bytes()[i] = Rvp8u(rng());
      for (size_t i = 0; i < m.byte_count(); ++i) m.bytes()[i] = Rvp8u(rng() % 2);
      std::memset(b.bytes(), 3, b.byte_count());
      std::memset(f.bytes(), 0, f.byte_count());
      std::memset(f2.bytes(), 0x3F, f2.byte_count());
      std::memset(c3.bytes(), 1, c3.byte_count());
      std::memset(f3.bytes(), 0x40, f3.byte_count());
      std::memset(u3.bytes(), 9, u3.byte_count());
      std::memset(v3.bytes(), 2, v3.byte_count());
      const RvpiSize roi{w, h};
      Rvp64f r, r2;
      Rvp32f v1, v2;
      RvpiPoint p1, p2;
      std::memset(m.row(h - 1) + w - 1, 1, 1);  // a nonzero denominator
      int selected = 0;
      for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) selected += m.row(y)[x] != 0;
      EXPECT_EQ(
          rvpiNormRel_L2_8u_C1MR(a.ptr(), a.step(), b.ptr(), b.step(), m.ptr(), m.step(), roi, &r),
          0);
      EXPECT_GE(rvpiNormDiff_Inf_32f_C1MR(f.ptr(), f.step(), f2.ptr(), f2.step(), m.ptr(), m.step(),
                                          roi, &r),
                0);
      EXPECT_EQ(rvpiMean_StdDev_32f_C1R(f2.ptr(), f2.step(), roi, &r, &r2), 0);
      EXPECT_EQ(rvpiMean_StdDev_8u_C1MR(a.ptr(), a.step(), m.ptr(), m.step(), roi, &r, &r2), 0);
      EXPECT_EQ(
          rvpiMinMaxIndx_8u_C1MR(a.ptr(), a.step(), m.ptr(), m.step(), roi, &v1, &v2, &p1, &p2), 0);
      EXPECT_EQ(rvpiMinMaxIndx_32f_C1R(f.ptr(), f.step(), roi, &v1, &v2, &p1, &p2), 0);
      EXPECT_EQ(rvpiNorm_L1_16u_C3CMR(c3.ptr(), c3.step(), m.ptr(), m.step(), roi, 3, &r), 0);
      EXPECT_EQ(rvpiMinMaxIndx_16u_C3CR(c3.ptr(), c3.step(), roi, 3, &v1, &v2, &p1, &p2), 0);
      for (int coi = 1; coi <= 3; ++coi) {
        EXPECT_EQ(
            rvpiMean_StdDev_32f_C3CMR(f3.ptr(), f3.step(), m.ptr(), m.step(), roi, coi, &r, &r2),
            0);
        EXPECT_EQ(rvpiNormDiff_L2_8u_C3CMR(u3.ptr(), u3.step(), v3.ptr(), v3.step(), m.ptr(),
                                           m.step(), roi, coi, &r),
                  0);
        EXPECT_EQ(r, std::sqrt(49.0 * selected));  // |9 - 2| at every selected pixel
      }
    }
}

}  // namespace

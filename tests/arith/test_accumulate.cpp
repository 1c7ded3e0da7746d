// Accumulation and absolute differences: the formulas on every member, the vector kernels
// against their scalar arithmetic, edge cases, check order, nothing written on error, and
// guarded images.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

#include "arith/accumulate_kernels.h"
#include "core/simd.h"
#include "rvpcv.h"
#include "support/guarded.h"
#include "support/images.h"

namespace {

using rvp::arith::AccOp;
using rvpt::TestImage;

// ---- every accumulation export behind one call ---------------------------------------------

template <class S>
struct AccExports;
#define RVPT_ACC_EXPORTS(t, S, add_unmasked)                                               \
  template <>                                                                              \
  struct AccExports<S> {                                                                   \
    static constexpr auto add = add_unmasked;                                              \
    static constexpr auto add_m = rvpiAdd_##t##_C1IMR;                                     \
    static constexpr auto sq = rvpiAddSquare_##t##_C1IR;                                   \
    static constexpr auto sq_m = rvpiAddSquare_##t##_C1IMR;                                \
    static constexpr auto prod = rvpiAddProduct_##t##_C1IR;                                \
    static constexpr auto prod_m = rvpiAddProduct_##t##_C1IMR;                             \
    static constexpr auto wt = rvpiAddWeighted_##t##_C1IR;                                 \
    static constexpr auto wt_m = rvpiAddWeighted_##t##_C1IMR;                              \
  };
RVPT_ACC_EXPORTS(8u32f, Rvp8u, rvpiAdd_8u32f_C1IR)
RVPT_ACC_EXPORTS(8s32f, Rvp8s, rvpiAdd_8s32f_C1IR)
RVPT_ACC_EXPORTS(16u32f, Rvp16u, rvpiAdd_16u32f_C1IR)
RVPT_ACC_EXPORTS(32f, Rvp32f, nullptr)
#undef RVPT_ACC_EXPORTS

// Images of one accumulation call.
template <class S>
struct AccCall {
  TestImage<S> src1, src2;
  TestImage<Rvp8u> mask;
  TestImage<Rvp32f> acc;
  // packed: no row padding anywhere, so the driver may walk the image as one long row.
  AccCall(int w, int h, std::mt19937& rng, bool packed = false)
      : src1(w, h, 1, packed ? 0 : int(rng() % 9) * int(sizeof(S)), int(rng() % 32)),
        src2(w, h, 1, packed ? 0 : int(rng() % 9) * int(sizeof(S)), int(rng() % 32)),
        mask(w, h, 1, packed ? 0 : int(rng() % 9), int(rng() % 32)),
        acc(w, h, 1, packed ? 0 : int(rng() % 9) * 4,
            int(rng() % 8) * 4 + (rng() % 5 == 0 ? 2 : 0)) {
    rvpt::fill_random_special(src1, rng);
    rvpt::fill_random_special(src2, rng);
    rvpt::fill_mask(mask, rng);
    rvpt::fill_random_special(acc, rng);
  }
};

template <class S>
RvpStatus call_export(AccOp op, bool masked, AccCall<S>& c, float alpha) {
  using E = AccExports<S>;
  const RvpiSize roi = c.acc.size();
  auto* s1 = c.src1.ptr();
  auto* s2 = c.src2.ptr();
  auto* m = c.mask.ptr();
  auto* d = c.acc.ptr();
  const int a = c.src1.step(), b = c.src2.step(), ms = c.mask.step(), ds = c.acc.step();
  switch (op) {
    case AccOp::Add:
      if constexpr (std::is_same_v<S, Rvp32f>) return E::add_m(s1, a, m, ms, d, ds, roi);
      else return masked ? E::add_m(s1, a, m, ms, d, ds, roi) : E::add(s1, a, d, ds, roi);
    case AccOp::Square:
      return masked ? E::sq_m(s1, a, m, ms, d, ds, roi) : E::sq(s1, a, d, ds, roi);
    case AccOp::Product:
      return masked ? E::prod_m(s1, a, s2, b, m, ms, d, ds, roi) : E::prod(s1, a, s2, b, d, ds, roi);
    case AccOp::Weighted:
      return masked ? E::wt_m(s1, a, m, ms, d, ds, roi, alpha) : E::wt(s1, a, d, ds, roi, alpha);
  }
  return rvpStsErr;
}

// The contract, written independently of the kernels.
float expected(AccOp op, bool masked, float s, float s2, bool on, float d, float alpha) {
  const float m = on ? 1.0f : 0.0f;
  switch (op) {
    case AccOp::Add:
      return masked ? std::fmaf(m, s, d) : d + s;
    case AccOp::Square:
      return masked ? std::fmaf(m, static_cast<float>(s * s), d) : std::fmaf(s, s, d);
    case AccOp::Product:
      return masked ? std::fmaf(m, static_cast<float>(s * s2), d) : std::fmaf(s, s2, d);
    case AccOp::Weighted:
      return std::fmaf(masked ? (on ? alpha : 0.0f) : alpha, static_cast<float>(s - d), d);
  }
  return 0;
}

template <class S>
void check_formulas_for_type() {
  std::mt19937 rng(1234 + sizeof(S));
  for (AccOp op : {AccOp::Add, AccOp::Square, AccOp::Product, AccOp::Weighted})
    for (bool masked : {false, true}) {
      if (std::is_same_v<S, Rvp32f> && op == AccOp::Add && !masked) continue;  // no such member
      for (int trial = 0; trial < 12; ++trial) {
        const int w = 1 + int(rng() % 150), h = 1 + int(rng() % 4);
        AccCall<S> c(w, h, rng, trial % 4 == 1);
        const TestImage<Rvp32f> before = c.acc;
        const float alpha = trial % 3 == 0 ? 0.37f : rvpt::special_float(rng);
        ASSERT_EQ(call_export<S>(op, masked, c, alpha), rvpStsNoErr);
        for (int y = 0; y < h; ++y)
          for (int x = 0; x < w; ++x) {
            const float want = expected(op, masked, float(c.src1.at(x, y)), float(c.src2.at(x, y)),
                                        c.mask.at(x, y) != 0, before.at(x, y), alpha);
            ASSERT_TRUE(rvpt::same_result(c.acc.at(x, y), want))
                << "op " << int(op) << " masked " << masked << " at " << x << "," << y
                << " got " << c.acc.at(x, y) << " want " << want;
          }
        // Row padding and the bytes around the image are untouched.
        for (int y = 0; y < h; ++y) {
          const uint8_t* pad = reinterpret_cast<const uint8_t*>(c.acc.row(y) + w);
          const size_t pad_bytes = size_t(c.acc.step()) - size_t(w) * 4;
          for (size_t k = 0; k < pad_bytes; ++k) ASSERT_EQ(pad[k], TestImage<Rvp32f>::kMarker);
        }
      }
    }
}

TEST(Accumulate, EveryMemberComputesItsFormula) {
  check_formulas_for_type<Rvp8u>();
  check_formulas_for_type<Rvp8s>();
  check_formulas_for_type<Rvp16u>();
  check_formulas_for_type<Rvp32f>();
}

// ---- AVX2 kernels against the scalar arithmetic ---------------------------------------------

template <class K, class Make>
void compare_kernel_paths(Make make_kernel, uint32_t seed) {
  std::mt19937 rng(seed);
  using D = typename K::Dst;
  for (int trial = 0; trial < 400; ++trial) {
    const int n = 1 + int(rng() % 300);
    const int dst_offset = int(rng() % 64);  // any byte offset, element-misaligned ones too
    std::vector<uint8_t> a(size_t(n) * sizeof(D) + 64), b(a.size());
    // Same starting contents for both destinations.
    for (size_t i = 0; i < a.size() / 4; ++i) {
      const float v = rvpt::special_float(rng);
      std::memcpy(&a[i * 4], &v, 4);
    }
    // Every fourth trial starts from -0.0 everywhere: the sign of a zero term shows there.
    if (trial % 4 == 3)
      for (size_t i = 0; i < a.size() / 4; ++i) {
        const float z = -0.0f;
        std::memcpy(&a[i * 4], &z, 4);
      }
    b = a;
    const K ka = make_kernel(rng, reinterpret_cast<D*>(a.data() + dst_offset), trial);
    K kb = ka;
    kb.dst = reinterpret_cast<D*>(b.data() + dst_offset);
    rvp::simd::run_row(ka, n);
    rvp::simd::run_row_scalar(kb, n);
    // Bit for bit, except that which input NaN a NaN result carries is left open (a compiler may
    // order the operands of a commutative operation either way).
    const size_t end = size_t(dst_offset) + size_t(n) * sizeof(D);
    ASSERT_EQ(std::memcmp(a.data(), b.data(), size_t(dst_offset)), 0);  // nothing before the row
    ASSERT_EQ(std::memcmp(a.data() + end, b.data() + end, a.size() - end), 0);  // nor after
    for (int i = 0; i < n; ++i) {
      D va, vb;
      std::memcpy(&va, a.data() + dst_offset + size_t(i) * sizeof(D), sizeof(D));
      std::memcpy(&vb, b.data() + dst_offset + size_t(i) * sizeof(D), sizeof(D));
      ASSERT_TRUE(rvpt::same_result(va, vb))
          << "n " << n << " offset " << dst_offset << " element " << i << ": " << va << " vs " << vb;
    }
  }
}

// Source rows shared by the kernel comparisons (sized for the longest row plus offsets).
template <class S>
struct SourcePool {
  std::vector<S> s1, s2;
  std::vector<Rvp8u> mask;
  explicit SourcePool(std::mt19937& rng) : s1(400), s2(400), mask(400) {
    for (auto& v : s1) v = std::is_same_v<S, float> ? S(rvpt::special_float(rng)) : rvpt::random_value<S>(rng);
    for (auto& v : s2) v = std::is_same_v<S, float> ? S(rvpt::special_float(rng)) : rvpt::random_value<S>(rng);
    for (auto& v : mask) v = rng() % 3 == 0 ? 0 : Rvp8u(1 + rng() % 255);
  }
};

template <class S, AccOp Op, bool Masked>
void compare_accumulate_kernel() {
  std::mt19937 rng(77);
  SourcePool<S> pool(rng);
  using K = rvp::arith::AccumulateKernel<S, Op, Masked>;
  compare_kernel_paths<K>(
      [&](std::mt19937& r, Rvp32f* dst, int trial) {
        const int off = int(r() % 64);
        const float alpha = trial % 2 ? 0.5f : rvpt::special_float(r);
        return K{pool.s1.data() + off, pool.s2.data() + off, pool.mask.data() + off, dst, alpha};
      },
      1000 + int(Op) * 10 + Masked);
}

template <class S>
void compare_all_accumulate_kernels() {
  compare_accumulate_kernel<S, AccOp::Add, false>();
  compare_accumulate_kernel<S, AccOp::Add, true>();
  compare_accumulate_kernel<S, AccOp::Square, false>();
  compare_accumulate_kernel<S, AccOp::Square, true>();
  compare_accumulate_kernel<S, AccOp::Product, false>();
  compare_accumulate_kernel<S, AccOp::Product, true>();
  compare_accumulate_kernel<S, AccOp::Weighted, false>();
  compare_accumulate_kernel<S, AccOp::Weighted, true>();
}

TEST(AccumulateKernels, VectorMatchesScalarBitForBit) {
  compare_all_accumulate_kernels<Rvp8u>();
  compare_all_accumulate_kernels<Rvp8s>();
  compare_all_accumulate_kernels<Rvp16u>();
  compare_all_accumulate_kernels<Rvp32f>();
  std::mt19937 rng(5);
  SourcePool<float> pool(rng);
  compare_kernel_paths<rvp::arith::WeightedSumKernel>(
      [&](std::mt19937& r, Rvp32f* dst, int) {
        const int off = int(r() % 64);
        return rvp::arith::WeightedSumKernel{pool.s1.data() + off, pool.s2.data() + off, dst,
                                             rvpt::special_float(r)};
      },
      99);
}

template <class T, bool Constant>
void compare_absdiff_kernel() {
  std::mt19937 rng(31 + sizeof(T) + Constant);
  SourcePool<T> pool(rng);
  using K = rvp::arith::AbsDiffKernel<T, Constant>;
  compare_kernel_paths<K>(
      [&](std::mt19937& r, T* dst, int) {
        const int off = int(r() % 64);
        return K{pool.s1.data() + off, pool.s2.data() + off, dst, pool.s2[r() % 400]};
      },
      7 + sizeof(T));
}

TEST(AbsDiffKernels, VectorMatchesScalarBitForBit) {
  compare_absdiff_kernel<Rvp8u, false>();
  compare_absdiff_kernel<Rvp8u, true>();
  compare_absdiff_kernel<Rvp16u, false>();
  compare_absdiff_kernel<Rvp16u, true>();
  compare_absdiff_kernel<Rvp32f, false>();
  compare_absdiff_kernel<Rvp32f, true>();
}

// ---- edge cases -----------------------------------------------------------------------------

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInf = std::numeric_limits<float>::infinity();

TEST(AccumulateEdges, MaskIsAMultiplicationNotASkip) {
  const RvpiSize roi{20, 1};
  // All-zero mask over 16u sources: accumulator unchanged bit for bit.
  std::vector<Rvp16u> s16(20, 65535);
  std::vector<Rvp8u> zero(20, 0), full(20, 255);
  std::vector<Rvp32f> acc(20), ref(20);
  for (int i = 0; i < 20; ++i) acc[i] = ref[i] = i % 2 ? 1.5f * i : -3.25f * (i + 1);
  ASSERT_EQ(rvpiAdd_16u32f_C1IMR(s16.data(), 40, zero.data(), 20, acc.data(), 80, roi), 0);
  EXPECT_EQ(std::memcmp(acc.data(), ref.data(), 80), 0);

  // A NaN or infinite 32f source under a zero mask byte still reaches the accumulator.
  std::vector<Rvp32f> s32(20, 2.0f);
  s32[3] = kNaN;
  s32[17] = kInf;
  ASSERT_EQ(rvpiAdd_32f_C1IMR(s32.data(), 80, zero.data(), 20, acc.data(), 80, roi), 0);
  EXPECT_TRUE(std::isnan(acc[3]));
  EXPECT_TRUE(std::isnan(acc[17]));  // 0 * inf
  EXPECT_EQ(acc[4], ref[4]);

  // The multiplication shows on a negative zero: fma(0, s, -0.0) is +0.0, as IEEE addition of
  // +0 and -0 gives; a skip would have kept -0.0.
  std::vector<Rvp32f> nz(20, -0.0f);
  ASSERT_EQ(rvpiAdd_16u32f_C1IMR(s16.data(), 40, zero.data(), 20, nz.data(), 80, roi), 0);
  for (float v : nz) EXPECT_EQ(rvpt::float_bits(v), 0u);
}

TEST(AccumulateEdges, SquareRoundsDifferentlyMaskedAndUnmasked) {
  const RvpiSize roi{9, 1};
  std::vector<Rvp16u> s(9, 65535);
  std::vector<Rvp8u> m(9, 255);
  std::vector<Rvp32f> a(9, 1.0f), b(9, 1.0f);
  ASSERT_EQ(rvpiAddSquare_16u32f_C1IR(s.data(), 18, a.data(), 36, roi), 0);
  ASSERT_EQ(rvpiAddSquare_16u32f_C1IMR(s.data(), 18, m.data(), 9, b.data(), 36, roi), 0);
  const double sq = 65535.0 * 65535.0;
  EXPECT_EQ(a[0], static_cast<float>(sq + 1.0));                              // one rounding
  EXPECT_EQ(b[0], static_cast<float>(static_cast<float>(sq) + 1.0f));        // two roundings
  // 8-bit sources: squares are exact, so both forms agree.
  std::vector<Rvp8u> s8(9, 251);
  std::vector<Rvp32f> c(9, 0.1f), d(9, 0.1f);
  rvpiAddSquare_8u32f_C1IR(s8.data(), 9, c.data(), 36, roi);
  rvpiAddSquare_8u32f_C1IMR(s8.data(), 9, m.data(), 9, d.data(), 36, roi);
  EXPECT_EQ(std::memcmp(c.data(), d.data(), 36), 0);
}

TEST(AccumulateEdges, WeightedAlphaOneCopiesAlphaZeroKeeps) {
  const RvpiSize roi{33, 2};
  std::mt19937 rng(3);
  std::vector<Rvp32f> s(66), a(66), keep(66);
  // Integers, so that s - d and d + (s - d) are exact and alpha 1 must reproduce s.
  for (int i = 0; i < 66; ++i) s[i] = float(rng() % 10000), a[i] = keep[i] = -float(i + 1);
  ASSERT_EQ(rvpiAddWeighted_32f_C1IR(s.data(), 132, a.data(), 132, roi, 0.0f), 0);
  EXPECT_EQ(std::memcmp(a.data(), keep.data(), a.size() * 4), 0);
  ASSERT_EQ(rvpiAddWeighted_32f_C1IR(s.data(), 132, a.data(), 132, roi, 1.0f), 0);
  for (int i = 0; i < 66; ++i) EXPECT_EQ(a[i], s[i]);
  // Two-source form: alpha*s1 + (1-alpha)*s2 as fma(round(s1 - s2), alpha, s2).
  std::vector<Rvp32f> d(66);
  ASSERT_EQ(rvpiAddWeighted_32f_C1R(s.data(), 132, keep.data(), 132, d.data(), 132, roi, 0.25f), 0);
  for (int i = 0; i < 66; ++i) EXPECT_EQ(d[i], std::fmaf(s[i] - keep[i], 0.25f, keep[i]));
}

TEST(AbsDiffEdges, ClampedConstantsSignOfZeroAndC3) {
  const RvpiSize roi{5, 1};
  std::vector<Rvp8u> s = {0, 10, 128, 250, 255}, d(5);
  ASSERT_EQ(rvpiAbsDiffC_8u_C1R(s.data(), 5, d.data(), 5, roi, 300), 0);
  EXPECT_EQ(d, (std::vector<Rvp8u>{255, 245, 127, 5, 0}));  // 300 acts as 255
  ASSERT_EQ(rvpiAbsDiffC_8u_C1R(s.data(), 5, d.data(), 5, roi, -5), 0);
  EXPECT_EQ(d, s);  // -5 acts as 0: a copy
  std::vector<Rvp16u> h = {0, 1, 65535, 40000, 7}, hd(5);
  ASSERT_EQ(rvpiAbsDiffC_16u_C1R(h.data(), 10, hd.data(), 10, roi, 1 << 20), 0);
  EXPECT_EQ(hd, (std::vector<Rvp16u>{65535, 65534, 0, 25535, 65528}));

  std::vector<Rvp32f> a = {-0.0f, 0.0f, kNaN, -kNaN, 3.0f}, b = {0.0f, -0.0f, 1.0f, 1.0f, 5.0f};
  std::vector<Rvp32f> f(5);
  ASSERT_EQ(rvpiAbsDiff_32f_C1R(a.data(), 20, b.data(), 20, f.data(), 20, roi), 0);
  EXPECT_EQ(rvpt::float_bits(f[0]), 0u);  // -0 - +0 = -0, sign cleared
  EXPECT_EQ(rvpt::float_bits(f[1]), 0u);
  EXPECT_TRUE(std::isnan(f[2]) && !std::signbit(f[2]));
  EXPECT_TRUE(std::isnan(f[3]) && !std::signbit(f[3]));
  EXPECT_EQ(f[4], 2.0f);

  // C3 is C1 on a three-times-wider row, checks included.
  std::vector<Rvp8u> p(30), q(30), r3(30), r1(30);
  for (int i = 0; i < 30; ++i) p[i] = Rvp8u(i * 37), q[i] = Rvp8u(i * 91 + 5);
  ASSERT_EQ(rvpiAbsDiff_8u_C3R(p.data(), 30, q.data(), 30, r3.data(), 30, {10, 1}), 0);
  ASSERT_EQ(rvpiAbsDiff_8u_C1R(p.data(), 30, q.data(), 30, r1.data(), 30, {30, 1}), 0);
  EXPECT_EQ(r3, r1);
  EXPECT_EQ(rvpiAbsDiff_8u_C3R(p.data(), 29, q.data(), 30, r3.data(), 30, {10, 1}), rvpStsStepErr);
}

// ---- status codes, their order, nothing written on error ------------------------------------

TEST(AccumulateChecks, OrderOfStatusCodes) {
  std::vector<Rvp16u> s(64, 1);
  std::vector<Rvp8u> m(64, 1);
  std::vector<Rvp32f> acc(64, 5.0f);
  const std::vector<Rvp32f> keep = acc;
  const RvpiSize roi{4, 2};
  auto call = [&](const Rvp16u* s1, int st1, int st2, const Rvp8u* mp, int ms, Rvp32f* a, int as,
                  RvpiSize r) {
    return rvpiAddProduct_16u32f_C1IMR(s1, st1, s.data(), st2, mp, ms, a, as, r);
  };
  EXPECT_EQ(call(nullptr, 8, 8, m.data(), 4, acc.data(), 16, {0, 0}), rvpStsNullPtrErr);
  EXPECT_EQ(call(s.data(), 8, 8, nullptr, 4, acc.data(), 16, roi), rvpStsNullPtrErr);
  EXPECT_EQ(call(s.data(), 8, 8, m.data(), 4, nullptr, 16, roi), rvpStsNullPtrErr);
  EXPECT_EQ(call(s.data(), 8, 8, m.data(), 4, acc.data(), 16, {0, 2}), rvpStsSizeErr);
  EXPECT_EQ(call(s.data(), 8, 8, m.data(), 4, acc.data(), 16, {4, -1}), rvpStsSizeErr);
  // Sources: -14 on either before -108 on either.
  EXPECT_EQ(call(s.data(), 9, 6, m.data(), 4, acc.data(), 16, roi), rvpStsStepErr);
  EXPECT_EQ(call(s.data(), 9, 8, m.data(), 4, acc.data(), 18, roi), rvpStsNotEvenStepErr);
  // Mask and accumulator come after the sources.
  EXPECT_EQ(call(s.data(), 8, 8, m.data(), 3, acc.data(), 16, roi), rvpStsStepErr);
  EXPECT_EQ(call(s.data(), 8, 8, m.data(), 4, acc.data(), 12, roi), rvpStsStepErr);
  EXPECT_EQ(call(s.data(), 8, 8, m.data(), 4, acc.data(), 18, roi), rvpStsNotEvenStepErr);
  EXPECT_EQ(call(s.data(), 8, 8, m.data(), 4, acc.data(), -16, roi), rvpStsStepErr);
  // A mask step equal to the width is valid even with 32-bit accumulators.
  EXPECT_EQ(call(s.data(), 8, 8, m.data(), 4, acc.data(), 16, roi), rvpStsNoErr);
  std::vector<Rvp32f> after = acc;
  acc = keep;

  // All-32f members test every step for -14 before any for -108.
  std::vector<Rvp32f> f(64, 1.0f);
  EXPECT_EQ(rvpiAddWeighted_32f_C1IMR(f.data(), 18, m.data(), 3, acc.data(), 16, roi, 0.5f),
            rvpStsStepErr);
  EXPECT_EQ(rvpiAddWeighted_32f_C1IMR(f.data(), 18, m.data(), 4, acc.data(), 16, roi, 0.5f),
            rvpStsNotEvenStepErr);
  EXPECT_EQ(rvpiAddWeighted_32f_C1R(f.data(), 16, f.data(), 16, acc.data(), 14, roi, 0.5f),
            rvpStsStepErr);
  EXPECT_EQ(rvpiAddWeighted_32f_C1R(f.data(), 18, f.data(), 16, acc.data(), 16, roi, 0.5f),
            rvpStsNotEvenStepErr);
  EXPECT_EQ(std::memcmp(acc.data(), keep.data(), acc.size() * 4), 0);  // nothing written

  // AbsDiff: 1x1 with minimal steps succeeds; width 0 is -6 not -14; null beats width 0.
  Rvp8u x = 9, y = 2, z = 0;
  EXPECT_EQ(rvpiAbsDiff_8u_C1R(&x, 1, &y, 1, &z, 1, {1, 1}), 0);
  EXPECT_EQ(z, 7);
  EXPECT_EQ(rvpiAbsDiff_8u_C1R(&x, 1, &y, 1, &z, 1, {0, 1}), rvpStsSizeErr);
  EXPECT_EQ(rvpiAbsDiff_8u_C1R(&x, 1, nullptr, 1, &z, 1, {0, 1}), rvpStsNullPtrErr);
  std::vector<Rvp32f> g(8, 1.0f), out(8, 42.0f);
  EXPECT_EQ(rvpiAbsDiff_32f_C1R(g.data(), 10, g.data(), 8, out.data(), 8, {2, 1}),
            rvpStsNotEvenStepErr);
  EXPECT_EQ(rvpiAbsDiff_32f_C1R(g.data(), 4, g.data(), 8, out.data(), 8, {2, 1}), rvpStsStepErr);
  EXPECT_EQ(rvpiAbsDiffC_32f_C1R(g.data(), 8, out.data(), 6, {2, 1}, 1.0f), rvpStsStepErr);
  EXPECT_EQ(rvpiAbsDiffC_16u_C1R(reinterpret_cast<Rvp16u*>(g.data()), 5,
                                 reinterpret_cast<Rvp16u*>(out.data()), 4, {2, 1}, 1),
            rvpStsNotEvenStepErr);
  for (float v : out) EXPECT_EQ(v, 42.0f);
  (void)after;
}

// ---- guarded images: every member, widths 1..70 and a few large ones -----------------------

template <class S>
void guarded_sweep() {
  std::mt19937 rng(11);
  std::vector<int> widths;
  for (int w = 1; w <= 70; ++w) widths.push_back(w);
  widths.insert(widths.end(), {257, 1000, 1921});
  for (int w : widths)
    for (rvpt::Guard g : {rvpt::Guard::After, rvpt::Guard::Before}) {
      const int h = w > 100 ? 2 : 3;
      const RvpiSize roi{w, h};
      rvpt::GuardedImage<S> s1(w, h, 1, w * int(sizeof(S)), g), s2(w, h, 1, w * int(sizeof(S)), g);
      rvpt::GuardedImage<Rvp8u> m(w, h, 1, w, g);
      rvpt::GuardedImage<Rvp32f> acc(w, h, 1, w * 4, g);
      using E = AccExports<S>;
      const int ss = s1.step(), as = acc.step();
      if constexpr (!std::is_same_v<S, Rvp32f>) {
        ASSERT_EQ(E::add(s1.ptr(), ss, acc.ptr(), as, roi), 0);
      }
      ASSERT_EQ(E::add_m(s1.ptr(), ss, m.ptr(), w, acc.ptr(), as, roi), 0);
      ASSERT_EQ(E::sq(s1.ptr(), ss, acc.ptr(), as, roi), 0);
      ASSERT_EQ(E::sq_m(s1.ptr(), ss, m.ptr(), w, acc.ptr(), as, roi), 0);
      ASSERT_EQ(E::prod(s1.ptr(), ss, s2.ptr(), ss, acc.ptr(), as, roi), 0);
      ASSERT_EQ(E::prod_m(s1.ptr(), ss, s2.ptr(), ss, m.ptr(), w, acc.ptr(), as, roi), 0);
      ASSERT_EQ(E::wt(s1.ptr(), ss, acc.ptr(), as, roi, 0.5f), 0);
      ASSERT_EQ(E::wt_m(s1.ptr(), ss, m.ptr(), w, acc.ptr(), as, roi, 0.5f), 0);
      (void)rng;
    }
}

TEST(AccumulateGuarded, NoAccessOutsideTheRegions) {
  guarded_sweep<Rvp8u>();
  guarded_sweep<Rvp8s>();
  guarded_sweep<Rvp16u>();
  guarded_sweep<Rvp32f>();
  for (int w = 1; w <= 70; ++w)
    for (rvpt::Guard g : {rvpt::Guard::After, rvpt::Guard::Before}) {
      const RvpiSize roi{w, 2};
      rvpt::GuardedImage<Rvp8u> a(w, 2, 3, 3 * w, g), b(w, 2, 3, 3 * w, g), d(w, 2, 3, 3 * w, g);
      ASSERT_EQ(rvpiAbsDiff_8u_C3R(a.ptr(), a.step(), b.ptr(), b.step(), d.ptr(), d.step(), roi), 0);
      ASSERT_EQ(rvpiAbsDiff_8u_C1R(a.ptr(), w, b.ptr(), w, d.ptr(), w, roi), 0);
      ASSERT_EQ(rvpiAbsDiffC_8u_C1R(a.ptr(), w, d.ptr(), w, roi, 7), 0);
      rvpt::GuardedImage<Rvp16u> h1(w, 2, 1, 2 * w, g), h2(w, 2, 1, 2 * w, g), hd(w, 2, 1, 2 * w, g);
      ASSERT_EQ(rvpiAbsDiff_16u_C1R(h1.ptr(), 2 * w, h2.ptr(), 2 * w, hd.ptr(), 2 * w, roi), 0);
      ASSERT_EQ(rvpiAbsDiffC_16u_C1R(h1.ptr(), 2 * w, hd.ptr(), 2 * w, roi, 7), 0);
      rvpt::GuardedImage<Rvp32f> f1(w, 2, 1, 4 * w, g), f2(w, 2, 1, 4 * w, g), fd(w, 2, 1, 4 * w, g);
      ASSERT_EQ(rvpiAbsDiff_32f_C1R(f1.ptr(), 4 * w, f2.ptr(), 4 * w, fd.ptr(), 4 * w, roi), 0);
      ASSERT_EQ(rvpiAbsDiffC_32f_C1R(f1.ptr(), 4 * w, fd.ptr(), 4 * w, roi, 1.5f), 0);
      ASSERT_EQ(rvpiAddWeighted_32f_C1R(f1.ptr(), 4 * w, f2.ptr(), 4 * w, fd.ptr(), 4 * w, roi, 0.5f), 0);
    }
}

}  // namespace

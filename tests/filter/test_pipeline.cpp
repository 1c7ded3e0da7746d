// Row/column pipeline: every form against a direct reference of the documented arithmetic,
// the check order, the buffer-size table, the row-end truncation and the Low wrap-around.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <random>
#include <vector>

#include "rvpcv.h"
#include "support/filter_ref.h"
#include "support/guarded.h"
#include "support/images.h"

namespace {

enum class Form { U8S16, S16, U16, F32, Low };

template <class T>
T sat(double v) {
  if (v < double(std::numeric_limits<T>::lowest())) return std::numeric_limits<T>::lowest();
  if (v > double(std::numeric_limits<T>::max())) return std::numeric_limits<T>::max();
  return T(v);
}

// Reference of one row output.
template <Form F, class S, class D, class Tap>
D ref_row(const rvpt::RefBorder<S>& b, int y, int x, int c, const std::vector<Tap>& k, int anchor,
          int divisor, int W) {
  const int K = int(k.size());
  if constexpr (F == Form::F32) {
    float s = b.at(y, x - anchor, c) * k[0];
    for (int i = 1; i < K; ++i) s += b.at(y, x + i - anchor, c) * k[i];
    return s;
  } else if constexpr (F == Form::Low) {
    int16_t s = 0;
    for (int i = 0; i < K; ++i) s = int16_t(s + int16_t(int(b.at(y, x + i - anchor, c)) * k[i]));
    const int m = int(16384.0f / float(divisor));
    return sat<int16_t>(double((int(s) * m) >> 14));
  } else {
    double abs_sum = 0;
    for (Tap t : k) abs_sum += std::abs(double(t));
    float f;
    if (F == Form::U16 || abs_sum < 65535) {
      int64_t s = 0;
      for (int i = 0; i < K; ++i) s += int64_t(b.at(y, x + i - anchor, c)) * k[i];
      f = float(s);
    } else {
      f = float(b.at(y, x - anchor, c)) * float(k[0]);
      for (int i = 1; i < K; ++i) f += float(b.at(y, x + i - anchor, c)) * float(k[i]);
    }
    f *= 1.0f / float(divisor);
    bool round = true;
    if (F != Form::U16) {
      const int blocks = W > anchor ? (W - anchor) / 8 : 0;
      round = x >= anchor && x < anchor + blocks * 8;
    }
    return sat<D>(round ? std::nearbyint(double(f)) : std::trunc(double(f)));
  }
}

template <Form F, class S, class D, class Tap>
D ref_col(const std::vector<std::vector<S>>& rows, int y, int x, const std::vector<Tap>& k,
          int divisor) {
  const int K = int(k.size());
  if constexpr (F == Form::Low) {
    int16_t s = 0;
    for (int i = 0; i < K; ++i) s = int16_t(s + int16_t(int(rows[y + i][x]) * k[i]));
    const int m = int(16384.0f / float(divisor));
    return sat<int16_t>(double((int(s) * m) >> 14));
  } else {
    const float r = F == Form::F32 ? 1.0f : 1.0f / float(divisor);
    float s = float(rows[y][x]) * (float(k[0]) * r);
    for (int i = 1; i < K; ++i) s += float(rows[y + i][x]) * (float(k[i]) * r);
    if constexpr (F == Form::F32) return s;
    return sat<D>(std::nearbyint(double(s)));
  }
}

template <class T>
T rnd(std::mt19937& rng) {
  if constexpr (std::is_floating_point_v<T>)
    return std::uniform_real_distribution<T>(-100, 100)(rng);
  else
    return rvpt::random_value<T>(rng);
}

// Calls the exported row filter of form F with CH channels.
template <Form F, int CH, class S, class D, class Tap>
RvpStatus call_row(const S* src, int step, D** dst, RvpiSize roi, const Tap* k, int K, int a,
                   int border, const S* value, int div, Rvp8u* buf) {
  if constexpr (F == Form::U8S16)
    return CH == 1 ? rvpiFilterRowBorderPipeline_8u16s_C1R(src, step, dst, roi, k, K, a, border,
                                                           value[0], div, buf)
                   : rvpiFilterRowBorderPipeline_8u16s_C3R(src, step, dst, roi, k, K, a, border,
                                                           value, div, buf);
  else if constexpr (F == Form::S16)
    return CH == 1 ? rvpiFilterRowBorderPipeline_16s_C1R(src, step, dst, roi, k, K, a, border,
                                                         value[0], div, buf)
                   : rvpiFilterRowBorderPipeline_16s_C3R(src, step, dst, roi, k, K, a, border,
                                                         value, div, buf);
  else if constexpr (F == Form::U16)
    return CH == 1 ? rvpiFilterRowBorderPipeline_16u_C1R(src, step, dst, roi, k, K, a, border,
                                                         value[0], div, buf)
                   : rvpiFilterRowBorderPipeline_16u_C3R(src, step, dst, roi, k, K, a, border,
                                                         value, div, buf);
  else if constexpr (F == Form::Low)
    return CH == 1 ? rvpiFilterRowBorderPipeline_Low_16s_C1R(src, step, dst, roi, k, K, a, border,
                                                             value[0], div, buf)
                   : rvpiFilterRowBorderPipeline_Low_16s_C3R(src, step, dst, roi, k, K, a, border,
                                                             value, div, buf);
  else
    return CH == 1 ? rvpiFilterRowBorderPipeline_32f_C1R(src, step, dst, roi, k, K, a, border,
                                                         value[0], buf)
                   : rvpiFilterRowBorderPipeline_32f_C3R(src, step, dst, roi, k, K, a, border,
                                                         value, buf);
}

template <Form F, int CH, class S, class D, class Tap>
RvpStatus row_size(RvpiSize roi, int K, int* size) {
  (void)sizeof(S), (void)sizeof(D), (void)sizeof(Tap);
  if constexpr (F == Form::U8S16)
    return CH == 1 ? rvpiFilterRowBorderPipelineGetBufferSize_8u16s_C1R(roi, K, size)
                   : rvpiFilterRowBorderPipelineGetBufferSize_8u16s_C3R(roi, K, size);
  else if constexpr (F == Form::S16)
    return CH == 1 ? rvpiFilterRowBorderPipelineGetBufferSize_16s_C1R(roi, K, size)
                   : rvpiFilterRowBorderPipelineGetBufferSize_16s_C3R(roi, K, size);
  else if constexpr (F == Form::U16)
    return CH == 1 ? rvpiFilterRowBorderPipelineGetBufferSize_16u_C1R(roi, K, size)
                   : rvpiFilterRowBorderPipelineGetBufferSize_16u_C3R(roi, K, size);
  else if constexpr (F == Form::Low)
    return CH == 1 ? rvpiFilterRowBorderPipelineGetBufferSize_Low_16s_C1R(roi, K, size)
                   : rvpiFilterRowBorderPipelineGetBufferSize_Low_16s_C3R(roi, K, size);
  else
    return CH == 1 ? rvpiFilterRowBorderPipelineGetBufferSize_32f_C1R(roi, K, size)
                   : rvpiFilterRowBorderPipelineGetBufferSize_32f_C3R(roi, K, size);
}

template <Form F, int CH, class S, class D, class Tap>
void row_case(std::mt19937& rng) {
  for (int K : {1, 2, 3, 4, 5, 7})
    for (int W : {1, 2, 7, 8, 9, 13, 25, 40})
      for (int border : {0, 1, 6}) {
        const int anchor = std::uniform_int_distribution<int>(0, K - 1)(rng);
        const int H = 3, pad = 6;
        rvpt::TestImage<S> img(W + 2 * pad, H, CH, 2 * int(sizeof(S)), 1 + int(sizeof(S)) * 3);
        rvpt::fill_all(img, rng);
        std::vector<Tap> k(K);
        const bool big = std::uniform_int_distribution<int>(0, 3)(rng) == 0;
        for (Tap& t : k) {
          if constexpr (std::is_floating_point_v<Tap>)
            t = std::uniform_real_distribution<float>(-3, 3)(rng);
          else
            t = Tap(std::uniform_int_distribution<int>(big ? -32000 : -40, big ? 32000 : 40)(rng));
        }
        int div = 1;
        if constexpr (F != Form::F32) {
          div = std::uniform_int_distribution<int>(1, 300)(rng);
          if (F != Form::U16 && (rng() & 1)) div = -div;
        }
        S value[3] = {rnd<S>(rng), rnd<S>(rng), rnd<S>(rng)};
        const S* origin = img.row(0) + pad * CH;
        std::vector<std::vector<D>> out(H, std::vector<D>(size_t(W) * CH + 4));
        std::vector<D*> rows(H);
        for (int y = 0; y < H; ++y) rows[y] = out[y].data();
        int size = 0;
        ASSERT_EQ((row_size<F, CH, S, D, Tap>({W, H}, K, &size)), 0);
        std::vector<Rvp8u> buf(size_t(size) + 1);
        ASSERT_EQ((call_row<F, CH>(origin, img.step(), rows.data(), {W, H}, k.data(), K, anchor,
                                   border, value, div, buf.data() + 1)),
                  0);
        rvpt::RefBorder<S> b{origin, img.step(), W, H, CH, border, value};
        for (int y = 0; y < H; ++y)
          for (int x = 0; x < W; ++x)
            for (int c = 0; c < CH; ++c) {
              const D want = ref_row<F, S, D, Tap>(b, y, x, c, k, anchor, div, W);
              ASSERT_TRUE(rvpt::same_bits(out[y][size_t(x) * CH + c], want))
                  << "K " << K << " W " << W << " border " << border << " x " << x << " c " << c
                  << " got " << double(out[y][size_t(x) * CH + c]) << " want " << double(want);
            }
      }
}

}  // namespace

TEST(PipelineRow, EveryFormMatchesReference) {
  std::mt19937 rng(3);
  row_case<Form::U8S16, 1, Rvp8u, Rvp16s, Rvp16s>(rng);
  row_case<Form::U8S16, 3, Rvp8u, Rvp16s, Rvp16s>(rng);
  row_case<Form::S16, 1, Rvp16s, Rvp16s, Rvp16s>(rng);
  row_case<Form::S16, 3, Rvp16s, Rvp16s, Rvp16s>(rng);
  row_case<Form::U16, 1, Rvp16u, Rvp16u, Rvp16s>(rng);
  row_case<Form::U16, 3, Rvp16u, Rvp16u, Rvp16s>(rng);
  row_case<Form::F32, 1, Rvp32f, Rvp32f, Rvp32f>(rng);
  row_case<Form::F32, 3, Rvp32f, Rvp32f, Rvp32f>(rng);
  row_case<Form::Low, 1, Rvp16s, Rvp16s, Rvp16s>(rng);
  row_case<Form::Low, 3, Rvp16s, Rvp16s, Rvp16s>(rng);
}

// Taps 1 1 1, divisor 2 on ones: 1.5 rounds to 2 inside the blocks of 8 from the anchor and
// truncates to 1 in the first anchor columns and the short remainder.
TEST(PipelineRow, RowEndsTruncate) {
  const int W = 21, anchor = 2;
  std::vector<Rvp16s> src(W, 1);
  std::vector<Rvp16s> out(W);
  Rvp16s* rows[1] = {out.data()};
  const Rvp16s k[3] = {1, 1, 1};
  Rvp8u buf[512];
  ASSERT_EQ(rvpiFilterRowBorderPipeline_16s_C1R(src.data(), W * 2, rows, {W, 1}, k, 3, anchor, 1, 0,
                                                2, buf),
            0);
  for (int x = 0; x < W; ++x) EXPECT_EQ(out[x], (x >= 2 && x < 18) ? 2 : 1) << x;
  std::vector<Rvp8u> s8(W, 1);
  ASSERT_EQ(rvpiFilterRowBorderPipeline_8u16s_C1R(s8.data(), W, rows, {W, 1}, k, 3, anchor, 1, 0,
                                                  -2, buf),
            0);
  for (int x = 0; x < W; ++x) EXPECT_EQ(out[x], (x >= 2 && x < 18) ? -2 : -1) << x;
}

TEST(PipelineRow, LowFormWraps) {
  const Rvp16s src[4] = {30000, 30000, 30000, 30000};
  Rvp16s out[4];
  Rvp16s* rows[1] = {out};
  const Rvp16s k[3] = {1, 2, 1};
  Rvp8u buf[256];
  ASSERT_EQ(rvpiFilterRowBorderPipeline_Low_16s_C1R(src, 8, rows, {4, 1}, k, 3, 1, 1, 0, 1, buf),
            0);
  // 120000 wraps to -11072; M = 16384 leaves it unchanged.
  for (Rvp16s v : out) EXPECT_EQ(v, -11072);
  ASSERT_EQ(rvpiFilterRowBorderPipeline_Low_16s_C1R(src, 8, rows, {4, 1}, k, 3, 1, 1, 0, 3, buf),
            0);
  // M = trunc(16384/3) = 5461; (-11072 * 5461) >> 14 rounds toward minus infinity.
  for (Rvp16s v : out) EXPECT_EQ(v, (-11072 * 5461) >> 14);
}

TEST(PipelineRow, KernelOneCopies) {
  std::mt19937 rng(5);
  std::vector<Rvp16s> src(37);
  for (auto& v : src) v = rvpt::random_value<Rvp16s>(rng);
  std::vector<Rvp16s> out(37);
  Rvp16s* rows[1] = {out.data()};
  const Rvp16s k[1] = {1};
  Rvp8u buf[256];
  ASSERT_EQ(
      rvpiFilterRowBorderPipeline_16s_C1R(src.data(), 74, rows, {37, 1}, k, 1, 0, 0, 0, 1, buf), 0);
  EXPECT_EQ(out, src);
}

TEST(PipelineRow, ChecksInOrderAndWriteNothing) {
  Rvp16s src[16] = {};
  Rvp16s out[16];
  std::fill(out, out + 16, Rvp16s(77));
  Rvp16s* rows[2] = {out, out + 8};
  Rvp16s* bad_rows[2] = {out, nullptr};
  const Rvp16s k[3] = {1, 2, 1};
  Rvp8u buf[256];
  const RvpiSize roi{8, 2};
  auto call = [&](const Rvp16s* s, Rvp16s** d, RvpiSize r, const Rvp16s* kk, int K, int a, int step,
                  int border, int div, Rvp8u* b) {
    return rvpiFilterRowBorderPipeline_16s_C1R(s, step, d, r, kk, K, a, border, 0, div, b);
  };
  EXPECT_EQ(call(nullptr, rows, {0, 2}, k, 3, 1, 16, 1, 1, buf), rvpStsNullPtrErr);
  EXPECT_EQ(call(src, rows, roi, k, 3, 1, 16, 1, 1, nullptr), rvpStsNullPtrErr);
  EXPECT_EQ(call(src, rows, {0, 2}, k, 3, 1, 16, 1, 1, buf), rvpStsSizeErr);
  EXPECT_EQ(call(src, bad_rows, {8, 2}, k, 0, 1, 16, 1, 1, buf), rvpStsNullPtrErr);
  EXPECT_EQ(call(src, rows, roi, k, 0, 1, 1, 1, 1, buf), rvpStsSizeErr);
  EXPECT_EQ(call(src, rows, roi, k, 3, 3, 1, 1, 1, buf), rvpStsAnchorErr);
  EXPECT_EQ(call(src, rows, roi, k, 3, -1, 16, 1, 1, buf), rvpStsAnchorErr);
  EXPECT_EQ(call(src, rows, roi, k, 3, 1, 14, 9, 0, buf), rvpStsStepErr);
  EXPECT_EQ(call(src, rows, roi, k, 3, 1, 17, 9, 0, buf), rvpStsNotEvenStepErr);
  for (int border : {2, 3, 4, 5, 0x11, 0x40, 0xF0, 0x16})
    EXPECT_EQ(call(src, rows, roi, k, 3, 1, 16, border, 1, buf), rvpStsBadArgErr) << border;
  EXPECT_EQ(call(src, rows, roi, k, 3, 1, 16, 6, 0, buf), rvpStsBadArgErr);
  for (Rvp16s v : out) EXPECT_EQ(v, 77);
  // 16u: divisor below 1; 32f C3: null border-value pointer.
  Rvp16u u[8] = {}, uo[8] = {};
  Rvp16u* urows[1] = {uo};
  EXPECT_EQ(rvpiFilterRowBorderPipeline_16u_C1R(u, 16, urows, {8, 1}, k, 3, 1, 1, 0, 0, buf),
            rvpStsBadArgErr);
  float f[24] = {}, fo[24];
  float* frows[1] = {fo};
  const float fk[3] = {1, 2, 1};
  EXPECT_EQ(rvpiFilterRowBorderPipeline_32f_C3R(f, 96, frows, {8, 1}, fk, 0, 1, 1, nullptr, buf),
            rvpStsNullPtrErr);
}

TEST(PipelineColumn, ChecksInOrderAndWriteNothing) {
  Rvp16s a[8] = {}, d[16];
  std::fill(d, d + 16, Rvp16s(5));
  const Rvp16s* rows[4] = {a, a, a, a};
  const Rvp16s* holes[4] = {a, a, a, nullptr};
  const Rvp16s k[3] = {1, 2, 1};
  Rvp8u buf[512];
  EXPECT_EQ(rvpiFilterColumnPipeline_16s_C1R(nullptr, d, 16, {8, 2}, k, 3, 1, buf),
            rvpStsNullPtrErr);
  EXPECT_EQ(rvpiFilterColumnPipeline_16s_C1R(rows, d, 16, {8, 0}, k, 3, 1, buf), rvpStsSizeErr);
  EXPECT_EQ(rvpiFilterColumnPipeline_16s_C1R(holes, d, 16, {8, 2}, k, 3, 1, buf), rvpStsNullPtrErr);
  EXPECT_EQ(rvpiFilterColumnPipeline_16s_C1R(rows, d, 16, {8, 2}, k, 0, 1, buf), rvpStsSizeErr);
  EXPECT_EQ(rvpiFilterColumnPipeline_16s_C1R(rows, d, 14, {8, 2}, k, 3, 0, nullptr), rvpStsStepErr);
  EXPECT_EQ(rvpiFilterColumnPipeline_16s_C1R(rows, d, 17, {8, 2}, k, 3, 0, nullptr),
            rvpStsNotEvenStepErr);
  EXPECT_EQ(rvpiFilterColumnPipeline_16s_C1R(rows, d, 16, {8, 2}, k, 3, 0, nullptr),
            rvpStsNullPtrErr);
  EXPECT_EQ(rvpiFilterColumnPipeline_16s_C1R(rows, d, 16, {8, 2}, k, 3, 0, buf), rvpStsBadArgErr);
  for (Rvp16s v : d) EXPECT_EQ(v, 5);
}

namespace {

template <Form F, int CH, class S, class D, class Tap>
RvpStatus call_col(const S* const* src, D* dst, int step, RvpiSize roi, const Tap* k, int K,
                   int div, Rvp8u* buf) {
  if constexpr (F == Form::F32)
    return CH == 1 ? rvpiFilterColumnPipeline_32f_C1R(src, dst, step, roi, k, K, buf)
                   : rvpiFilterColumnPipeline_32f_C3R(src, dst, step, roi, k, K, buf);
  else if constexpr (F == Form::Low)
    return CH == 1 ? rvpiFilterColumnPipeline_Low_16s_C1R(src, dst, step, roi, k, K, div, buf)
                   : rvpiFilterColumnPipeline_Low_16s_C3R(src, dst, step, roi, k, K, div, buf);
  else if constexpr (F == Form::U16)
    return CH == 1 ? rvpiFilterColumnPipeline_16u_C1R(src, dst, step, roi, k, K, div, buf)
                   : rvpiFilterColumnPipeline_16u_C3R(src, dst, step, roi, k, K, div, buf);
  else if constexpr (std::is_same_v<D, Rvp8u>)
    return CH == 1 ? rvpiFilterColumnPipeline_16s8u_C1R(src, dst, step, roi, k, K, div, buf)
                   : rvpiFilterColumnPipeline_16s8u_C3R(src, dst, step, roi, k, K, div, buf);
  else if constexpr (std::is_same_v<D, Rvp8s>)
    return CH == 1 ? rvpiFilterColumnPipeline_16s8s_C1R(src, dst, step, roi, k, K, div, buf)
                   : rvpiFilterColumnPipeline_16s8s_C3R(src, dst, step, roi, k, K, div, buf);
  else
    return CH == 1 ? rvpiFilterColumnPipeline_16s_C1R(src, dst, step, roi, k, K, div, buf)
                   : rvpiFilterColumnPipeline_16s_C3R(src, dst, step, roi, k, K, div, buf);
}

template <Form F, int CH, class S, class D, class Tap>
RvpStatus col_size(RvpiSize roi, int K, int* size) {
  if constexpr (F == Form::F32)
    return CH == 1 ? rvpiFilterColumnPipelineGetBufferSize_32f_C1R(roi, K, size)
                   : rvpiFilterColumnPipelineGetBufferSize_32f_C3R(roi, K, size);
  else if constexpr (F == Form::Low)
    return CH == 1 ? rvpiFilterColumnPipelineGetBufferSize_Low_16s_C1R(roi, K, size)
                   : rvpiFilterColumnPipelineGetBufferSize_Low_16s_C3R(roi, K, size);
  else if constexpr (F == Form::U16)
    return CH == 1 ? rvpiFilterColumnPipelineGetBufferSize_16u_C1R(roi, K, size)
                   : rvpiFilterColumnPipelineGetBufferSize_16u_C3R(roi, K, size);
  else if constexpr (std::is_same_v<D, Rvp8u>)
    return CH == 1 ? rvpiFilterColumnPipelineGetBufferSize_16s8u_C1R(roi, K, size)
                   : rvpiFilterColumnPipelineGetBufferSize_16s8u_C3R(roi, K, size);
  else if constexpr (std::is_same_v<D, Rvp8s>)
    return CH == 1 ? rvpiFilterColumnPipelineGetBufferSize_16s8s_C1R(roi, K, size)
                   : rvpiFilterColumnPipelineGetBufferSize_16s8s_C3R(roi, K, size);
  else
    return CH == 1 ? rvpiFilterColumnPipelineGetBufferSize_16s_C1R(roi, K, size)
                   : rvpiFilterColumnPipelineGetBufferSize_16s_C3R(roi, K, size);
}

// Columns with a destination whose last byte touches a guard page and a buffer of exactly the
// queried size at an odd address, also guarded.
template <Form F, int CH, class S, class D, class Tap>
void col_case(std::mt19937& rng) {
  for (int K : {1, 2, 3, 5, 6})
    for (int W : {1, 3, 8, 15, 16, 17, 31, 33, 70}) {
      const int H = 3;
      std::vector<std::vector<S>> rows(H + K - 1, std::vector<S>(size_t(W) * CH));
      for (auto& r : rows)
        for (auto& v : r) v = rnd<S>(rng);
      std::vector<const S*> ptrs;
      for (auto& r : rows) ptrs.push_back(r.data());
      std::vector<Tap> k(K);
      for (Tap& t : k) {
        if constexpr (std::is_floating_point_v<Tap>)
          t = std::uniform_real_distribution<float>(-3, 3)(rng);
        else
          t = Tap(std::uniform_int_distribution<int>(-300, 300)(rng));
      }
      int div = F == Form::F32 ? 1 : std::uniform_int_distribution<int>(1, 500)(rng);
      if (F != Form::F32 && (rng() & 1)) div = -div;
      int size = 0;
      ASSERT_EQ((col_size<F, CH, S, D, Tap>({W, H}, K, &size)), 0);
      rvpt::GuardedBuffer buf(size_t(size), rvpt::Guard::After);
      const int step = W * CH * int(sizeof(D));
      rvpt::GuardedImage<D> dst(W, H, CH, step, rvpt::Guard::After);
      ASSERT_EQ(
          (call_col<F, CH>(ptrs.data(), dst.ptr(), step, {W, H}, k.data(), K, div, buf.data())), 0);
      for (int y = 0; y < H; ++y)
        for (int x = 0; x < W * CH; ++x) {
          const D want = ref_col<F, S, D, Tap>(rows, y, x, k, div);
          ASSERT_TRUE(rvpt::same_bits(dst.row(y)[x], want))
              << "K " << K << " W " << W << " x " << x << " got " << double(dst.row(y)[x])
              << " want " << double(want);
        }
    }
}

}  // namespace

TEST(PipelineColumn, EveryFormMatchesReference) {
  std::mt19937 rng(4);
  col_case<Form::S16, 1, Rvp16s, Rvp16s, Rvp16s>(rng);
  col_case<Form::S16, 3, Rvp16s, Rvp16s, Rvp16s>(rng);
  col_case<Form::S16, 1, Rvp16s, Rvp8u, Rvp16s>(rng);
  col_case<Form::S16, 3, Rvp16s, Rvp8u, Rvp16s>(rng);
  col_case<Form::S16, 1, Rvp16s, Rvp8s, Rvp16s>(rng);
  col_case<Form::S16, 3, Rvp16s, Rvp8s, Rvp16s>(rng);
  col_case<Form::U16, 1, Rvp16u, Rvp16u, Rvp16s>(rng);
  col_case<Form::U16, 3, Rvp16u, Rvp16u, Rvp16s>(rng);
  col_case<Form::F32, 1, Rvp32f, Rvp32f, Rvp32f>(rng);
  col_case<Form::F32, 3, Rvp32f, Rvp32f, Rvp32f>(rng);
  col_case<Form::Low, 1, Rvp16s, Rvp16s, Rvp16s>(rng);
  col_case<Form::Low, 3, Rvp16s, Rvp16s, Rvp16s>(rng);
}

TEST(PipelineSizes, MatchTable) {
  struct Row {
    RvpStatus (*fn)(RvpiSize, int, int*);
    std::function<int(int, int)> want;
  };
  auto r4 = [](int v) { return (v + 3) / 4 * 4; };
  auto r8 = [](int v) { return (v + 7) / 8 * 8; };
  const std::vector<Row> table = {
      {rvpiFilterRowBorderPipelineGetBufferSize_16s_C1R, [](int, int K) { return 48 * K + 112; }},
      {rvpiFilterRowBorderPipelineGetBufferSize_16s_C3R, [](int, int K) { return 40 * K + 96; }},
      {rvpiFilterRowBorderPipelineGetBufferSize_16u_C1R, [](int, int K) { return 64 * K + 96; }},
      {rvpiFilterRowBorderPipelineGetBufferSize_16u_C3R, [](int, int K) { return 128 * K + 96; }},
      {rvpiFilterRowBorderPipelineGetBufferSize_32f_C1R, [](int, int K) { return 96 * K + 96; }},
      {rvpiFilterRowBorderPipelineGetBufferSize_32f_C3R, [](int, int K) { return 288 * K + 96; }},
      {rvpiFilterRowBorderPipelineGetBufferSize_8u16s_C1R,
       [](int, int K) { return 32 * (K + K / 4) + 2 * K + 66; }},
      {rvpiFilterRowBorderPipelineGetBufferSize_8u16s_C3R, [](int, int K) { return 60 * K + 144; }},
      {rvpiFilterRowBorderPipelineGetBufferSize_Low_16s_C1R,
       [](int, int K) { return 24 * K + 96; }},
      {rvpiFilterRowBorderPipelineGetBufferSize_Low_16s_C3R,
       [](int, int K) { return 208 * K + 96; }},
      {rvpiFilterColumnPipelineGetBufferSize_16s_C1R, [&](int W, int) { return 12 * r4(W) + 64; }},
      {rvpiFilterColumnPipelineGetBufferSize_16s8u_C1R,
       [&](int W, int) { return 12 * r4(W) + 64; }},
      {rvpiFilterColumnPipelineGetBufferSize_16s8s_C1R,
       [&](int W, int) { return 12 * r4(W) + 64; }},
      {rvpiFilterColumnPipelineGetBufferSize_16s_C3R, [&](int W, int) { return 36 * r4(W) + 64; }},
      {rvpiFilterColumnPipelineGetBufferSize_16s8u_C3R,
       [&](int W, int) { return 36 * r4(W) + 64; }},
      {rvpiFilterColumnPipelineGetBufferSize_16s8s_C3R,
       [&](int W, int) { return 36 * r4(W) + 64; }},
      {rvpiFilterColumnPipelineGetBufferSize_16u_C1R,
       [&](int W, int K) { return 4 * (2 * r4(W) + 8 * K) + 64; }},
      {rvpiFilterColumnPipelineGetBufferSize_16u_C3R,
       [&](int W, int K) { return 4 * (2 * r4(3 * W) + 8 * K) + 64; }},
      {rvpiFilterColumnPipelineGetBufferSize_32f_C1R, [](int, int K) { return 32 * K + 32; }},
      {rvpiFilterColumnPipelineGetBufferSize_32f_C3R, [](int, int K) { return 32 * K + 32; }},
      {rvpiFilterColumnPipelineGetBufferSize_Low_16s_C1R,
       [&](int W, int) { return 12 * r8(W) + 64; }},
      {rvpiFilterColumnPipelineGetBufferSize_Low_16s_C3R,
       [&](int W, int) { return 36 * r8(W) + 64; }},
  };
  for (const Row& r : table) {
    for (int W : {1, 3, 4, 5, 9, 640})
      for (int K : {1, 3, 4, 5, 9}) {
        int size = -1;
        ASSERT_EQ(r.fn({W, 2}, K, &size), 0);
        EXPECT_EQ(size, r.want(W, K)) << W << " " << K;
      }
    int size = 123;
    EXPECT_EQ(r.fn({4, 2}, 3, nullptr), rvpStsNullPtrErr);
    EXPECT_EQ(r.fn({0, 2}, 3, &size), rvpStsSizeErr);
    EXPECT_EQ(r.fn({4, 0}, 0, &size), rvpStsSizeErr);
    EXPECT_EQ(r.fn({4, 2}, 0, &size), rvpStsSizeErr);
    EXPECT_EQ(size, 123);
  }
}

// The row filter reads no pixel outside the region for borders 0 and 1 (guard before the first
// and after the last source byte), whatever the width.
TEST(PipelineRow, GuardedSourceWidths1To70) {
  std::mt19937 rng(9);
  const Rvp16s k[5] = {1, -2, 3, -2, 1};
  for (int W = 1; W <= 70; ++W)
    for (auto where : {rvpt::Guard::After, rvpt::Guard::Before})
      for (int border : {0, 1}) {
        rvpt::GuardedImage<Rvp8u> src(W, 2, 3, W * 3, where);
        for (int y = 0; y < 2; ++y)
          for (int x = 0; x < W * 3; ++x) src.row(y)[x] = Rvp8u(rng());
        std::vector<Rvp16s> o0(size_t(W) * 3), o1(size_t(W) * 3);
        Rvp16s* rows[2] = {o0.data(), o1.data()};
        int size = 0;
        ASSERT_EQ(rvpiFilterRowBorderPipelineGetBufferSize_8u16s_C3R({W, 2}, 5, &size), 0);
        rvpt::GuardedBuffer buf(size_t(size), rvpt::Guard::After);
        const Rvp8u value[3] = {1, 2, 3};
        ASSERT_EQ(rvpiFilterRowBorderPipeline_8u16s_C3R(src.ptr(), src.step(), rows, {W, 2}, k, 5,
                                                        2, border, value, 1, buf.data()),
                  0);
        rvpt::RefBorder<Rvp8u> b{src.ptr(), src.step(), W, 2, 3, border, value};
        for (int x = 0; x < W * 3; ++x) {
          int s = 0;
          for (int i = 0; i < 5; ++i) s += k[i] * b.at(1, x / 3 + i - 2, x % 3);
          ASSERT_EQ(o1[x], s);
        }
      }
}

// Sobel, Scharr, Laplacian and Lowpass: kernels scalar vs AVX2, every filter against a direct
// reference for every border type, constant images, in-memory borders, guards, checks.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <random>
#include <vector>

#include "filter/sep_kernels.h"
#include "rvpcv.h"
#include "support/filter_ref.h"
#include "support/guarded.h"
#include "support/images.h"

namespace {

// ---- kernels: scalar reference vs AVX2 ------------------------------------------------------

TEST(SepKernels, AvxMatchesScalarBitForBit) {
  using namespace rvp::filter;
  std::mt19937 rng(21);
  for (int trial = 0; trial < 1500; ++trial) {
    const int n = std::uniform_int_distribution<int>(1, 90)(rng);
    const int K = std::uniform_int_distribution<int>(1, 9)(rng);
    const int stride = std::uniform_int_distribution<int>(1, 3)(rng);
    const int off = std::uniform_int_distribution<int>(0, 7)(rng);
    const int len = n + (K - 1) * stride;
    std::vector<uint8_t> s8(off + len);
    for (auto& v : s8) v = uint8_t(rng());
    std::vector<int16_t> taps(K);
    const bool gauss = trial % 2 == 0;
    for (auto& t : taps)
      t = int16_t(std::uniform_int_distribution<int>(gauss ? 0 : -8, gauss ? 4096 : 8)(rng));
    const int shift = gauss ? 8 : 0;
    std::vector<int16_t> a(n + 1), b(n + 1);
    row_u8_s16_scalar(s8.data() + off, a.data() + 1, n, taps.data(), K, stride, shift);
    row_u8_s16_avx2(s8.data() + off, b.data() + 1, n, taps.data(), K, stride, shift);
    ASSERT_EQ(a, b) << "row n " << n << " K " << K;

    // Columns: M rows of 16-bit values, every output conversion.
    const int M = std::uniform_int_distribution<int>(1, 10)(rng);
    std::vector<std::vector<int16_t>> rows(M, std::vector<int16_t>(n + off));
    std::vector<const int16_t*> ptrs;
    for (auto& r : rows) {
      for (auto& v : r) v = int16_t(std::uniform_int_distribution<int>(-4200, 4200)(rng));
      ptrs.push_back(r.data() + off);
    }
    std::vector<int16_t> ct(M);
    for (auto& t : ct)
      t = int16_t(std::uniform_int_distribution<int>(gauss ? 0 : -20, gauss ? 4096 : 20)(rng));
    const float scale = 1.0f / float(std::uniform_int_distribution<int>(1, 300)(rng));
    {
      std::vector<int16_t> x(n), y(n);
      col_s16_scalar<ColOut::S16>(ptrs.data(), ct.data(), M, n, x.data(), scale, 0);
      col_s16_avx2<ColOut::S16>(ptrs.data(), ct.data(), M, n, y.data(), scale, 0);
      ASSERT_EQ(x, y);
    }
    {
      std::vector<int8_t> x(n), y(n);
      col_s16_scalar<ColOut::S8Scaled>(ptrs.data(), ct.data(), M, n, x.data(), scale, 0);
      col_s16_avx2<ColOut::S8Scaled>(ptrs.data(), ct.data(), M, n, y.data(), scale, 0);
      ASSERT_EQ(x, y);
    }
    {
      std::vector<uint8_t> x(n), y(n), p(n), q(n);
      col_s16_scalar<ColOut::U8Scaled>(ptrs.data(), ct.data(), M, n, x.data(), scale, 0);
      col_s16_avx2<ColOut::U8Scaled>(ptrs.data(), ct.data(), M, n, y.data(), scale, 0);
      ASSERT_EQ(x, y);
      col_s16_scalar<ColOut::U8Shift>(ptrs.data(), ct.data(), M, n, p.data(), 1.0f, 16);
      col_s16_avx2<ColOut::U8Shift>(ptrs.data(), ct.data(), M, n, q.data(), 1.0f, 16);
      ASSERT_EQ(p, q);
    }
    // Single precision with special values and zero taps.
    std::vector<float> sf(off + len);
    for (auto& v : sf) v = rvpt::special_float(rng);
    std::vector<float> ft(K);
    for (auto& t : ft)
      t = (rng() % 3 == 0) ? 0.0f : std::uniform_real_distribution<float>(-2, 2)(rng);
    std::vector<float> fa(n), fb(n);
    row_f32_scalar(sf.data() + off, fa.data(), n, ft.data(), K, stride);
    row_f32_avx2(sf.data() + off, fb.data(), n, ft.data(), K, stride);
    for (int i = 0; i < n; ++i)
      ASSERT_TRUE(rvpt::same_bits(fa[i], fb[i]))
          << i << " of " << n << " K " << K << ": " << fa[i] << " vs " << fb[i];
    std::vector<std::vector<float>> frows(M, std::vector<float>(n));
    std::vector<const float*> fp;
    for (auto& r : frows) {
      for (auto& v : r) v = rvpt::special_float(rng);
      fp.push_back(r.data());
    }
    std::vector<float> fct(M);
    for (auto& t : fct)
      t = (rng() % 3 == 0) ? 0.0f : std::uniform_real_distribution<float>(-2, 2)(rng);
    const bool scaled = rng() & 1;
    col_f32_scalar(fp.data(), fct.data(), M, n, fa.data(), scaled, scale);
    col_f32_avx2(fp.data(), fct.data(), M, n, fb.data(), scaled, scale);
    for (int i = 0; i < n; ++i)
      ASSERT_TRUE(rvpt::same_bits(fa[i], fb[i]))
          << i << " of " << n << " M " << M << ": " << std::hex << rvpt::float_bits(fa[i]) << " vs "
          << rvpt::float_bits(fb[i]) << [&] {
               std::string o;
               for (int m = 0; m < M; ++m)
                 o += " (" + std::to_string(fct[m]) + " * " + std::to_string(frows[m][i]) + ")";
               return o;
             }();
  }
}

// The 16-bit wrap-around kernels of the fixed filters, every column count they are built for.
template <int M, rvp::filter::ColOut O, class D>
void wrap_column_case(std::mt19937& rng, int n, int off) {
  using namespace rvp::filter;
  std::vector<std::vector<int16_t>> rows(M, std::vector<int16_t>(n + off));
  std::vector<const int16_t*> ptrs;
  for (auto& r : rows) {
    for (auto& v : r) v = int16_t(rng());
    ptrs.push_back(r.data() + off);
  }
  int16_t taps[M];
  for (auto& t : taps) t = int16_t(std::uniform_int_distribution<int>(-10, 10)(rng));
  const float scale = 1.0f / float(std::uniform_int_distribution<int>(1, 120)(rng));
  std::vector<D> a(n + 1), b(n + 1);
  col_s16w_scalar<O>(ptrs.data(), taps, M, n, a.data() + 1, scale);
  col_s16w_avx2<M, O>(ptrs.data(), taps, n, b.data() + 1, scale);
  ASSERT_EQ(a, b) << "M " << M << " n " << n;
}

TEST(SepKernels, WrapAroundKernelsMatchScalar) {
  using namespace rvp::filter;
  std::mt19937 rng(23);
  for (int trial = 0; trial < 300; ++trial) {
    const int n = std::uniform_int_distribution<int>(1, 100)(rng);
    const int off = std::uniform_int_distribution<int>(0, 9)(rng);
    std::vector<uint8_t> src(off + n + 4);
    for (auto& v : src) v = uint8_t(rng());
    int16_t taps[5];
    for (auto& t : taps) t = int16_t(std::uniform_int_distribution<int>(-10, 10)(rng));
    std::vector<int16_t> a(n + 1), b(n + 1);
    row_u8_s16w_scalar(src.data() + off, a.data() + 1, n, taps, 3);
    row_u8_s16w_avx2<3>(src.data() + off, b.data() + 1, n, taps);
    ASSERT_EQ(a, b);
    row_u8_s16w_scalar(src.data() + off, a.data() + 1, n, taps, 5);
    row_u8_s16w_avx2<5>(src.data() + off, b.data() + 1, n, taps);
    ASSERT_EQ(a, b);
    wrap_column_case<3, ColOut::S16, int16_t>(rng, n, off);
    wrap_column_case<5, ColOut::S8Scaled, int8_t>(rng, n, off);
    wrap_column_case<6, ColOut::U8Scaled, uint8_t>(rng, n, off);
    wrap_column_case<10, ColOut::S16, int16_t>(rng, n, off);
    wrap_column_case<10, ColOut::S8Scaled, int8_t>(rng, n, off);
    wrap_column_case<3, ColOut::U8Scaled, uint8_t>(rng, n, off);
  }
}

// Symmetric (Gaussian) kernels against the plain 32-bit scalar arithmetic.
template <int K>
void symmetric_case(std::mt19937& rng) {
  using namespace rvp::filter;
  const int n = std::uniform_int_distribution<int>(1, 100)(rng);
  const int stride = std::uniform_int_distribution<int>(1, 3)(rng);
  const int off = std::uniform_int_distribution<int>(0, 9)(rng);
  int16_t taps[K];
  for (int k = 0; k <= K / 2; ++k)
    taps[k] = taps[K - 1 - k] = int16_t(std::uniform_int_distribution<int>(0, 4416 / K)(rng));
  ASSERT_TRUE(symmetric(taps, K));
  std::vector<uint8_t> src(off + n + (K - 1) * stride);
  for (auto& v : src) v = uint8_t(rng());
  std::vector<int16_t> a(n + 1), b(n + 1), wide(src.size());
  row_u8_s16_scalar(src.data() + off, a.data() + 1, n, taps, K, stride, 8);
  row_u8_sym_avx2<K>(src.data() + off, wide.data(), b.data() + 1, n, taps, stride, 8);
  ASSERT_EQ(a, b) << "row K " << K << " n " << n;
  std::vector<std::vector<int16_t>> rows(K, std::vector<int16_t>(n + off));
  std::vector<const int16_t*> ptrs;
  for (auto& r : rows) {
    for (auto& v : r) v = int16_t(std::uniform_int_distribution<int>(0, 4400)(rng));
    ptrs.push_back(r.data() + off);
  }
  std::vector<uint8_t> x(n + 1), y(n + 1);
  col_s16_scalar<ColOut::U8Shift>(ptrs.data(), taps, K, n, x.data() + 1, 1.0f, 16);
  col_u8_sym_avx2<K>(ptrs.data(), taps, n, y.data() + 1, 16);
  ASSERT_EQ(x, y) << "column K " << K << " n " << n;
}

TEST(SepKernels, SymmetricKernelsMatchScalar) {
  std::mt19937 rng(29);
  for (int trial = 0; trial < 200; ++trial) {
    symmetric_case<3>(rng);
    symmetric_case<5>(rng);
    symmetric_case<7>(rng);
    symmetric_case<9>(rng);
    symmetric_case<11>(rng);
    symmetric_case<13>(rng);
  }
  const int16_t asym[5] = {1, 2, 3, 4, 5}, neg[3] = {-1, 2, -1};
  EXPECT_FALSE(rvp::filter::symmetric(asym, 5));
  EXPECT_FALSE(rvp::filter::symmetric(neg, 3));
  EXPECT_FALSE(rvp::filter::symmetric(asym, 4));
}

// ---- the filters ------------------------------------------------------------------------------

enum class T { F32, S16, S8, U8 };

struct Filter {
  const char* name;
  std::vector<std::vector<int>> h3, v3, h5, v5;  // one entry per separable term
  bool has5;
  bool lowpass;
};

const std::vector<Filter>& filters() {
  static const std::vector<Filter> f = {
      {"NegVert", {{1, 0, -1}}, {{1, 2, 1}}, {{1, 2, 0, -2, -1}}, {{1, 4, 6, 4, 1}}, true, false},
      {"HorizSecond",
       {{1, 2, 1}},
       {{1, -2, 1}},
       {{1, 4, 6, 4, 1}},
       {{1, 0, -2, 0, 1}},
       true,
       false},
      {"VertSecond", {{1, -2, 1}}, {{1, 2, 1}}, {{1, 0, -2, 0, 1}}, {{1, 4, 6, 4, 1}}, true, false},
      {"Cross", {{1, 0, -1}}, {{-1, 0, 1}}, {{1, 2, 0, -2, -1}}, {{-1, -2, 0, 2, 1}}, true, false},
      {"ScharrHoriz", {{3, 10, 3}}, {{-1, 0, 1}}, {}, {}, false, false},
      {"ScharrVert", {{-1, 0, 1}}, {{3, 10, 3}}, {}, {}, false, false},
      {"Laplacian",
       {{1, -2, 1}, {1, 2, 1}},
       {{1, 2, 1}, {1, -2, 1}},
       {{1, 0, -2, 0, 1}, {1, 4, 6, 4, 1}},
       {{1, 4, 6, 4, 1}, {1, 0, -2, 0, 1}},
       true,
       false},
      {"Lowpass", {{1, 1, 1}}, {{1, 1, 1}}, {{1, 1, 1, 1, 1}}, {{1, 1, 1, 1, 1}}, true, true},
      {"SobelHoriz",
       {{1, 2, 1}},
       {{-1, 0, 1}},
       {{1, 4, 6, 4, 1}},
       {{-1, -2, 0, 2, 1}},
       true,
       false},
      {"SobelVert", {{-1, 0, 1}}, {{1, 2, 1}}, {{-1, -2, 0, 2, 1}}, {{1, 4, 6, 4, 1}}, true, false},
  };
  return f;
}

// Calls filter `name` of type t; pointers as bytes so one signature covers every member.
// Returns -1000 when the combination does not exist.
RvpStatus call(const std::string& name, T t, const void* src, int ss, void* dst, int ds,
               RvpiSize roi, int mask, int border, float value, Rvp8u* buf) {
  const auto* s8 = static_cast<const Rvp8u*>(src);
  const auto* sf = static_cast<const Rvp32f*>(src);
  const Rvp8u v8 = Rvp8u(value);
#define RVPT_F3(N)                                                                                \
  if (name == #N) {                                                                               \
    if (t == T::F32)                                                                              \
      return rvpiFilterSobel##N##Border_32f_C1R(sf, ss, static_cast<Rvp32f*>(dst), ds, roi, mask, \
                                                border, value, buf);                              \
    if (t == T::S16)                                                                              \
      return rvpiFilterSobel##N##Border_8u16s_C1R(s8, ss, static_cast<Rvp16s*>(dst), ds, roi,     \
                                                  mask, border, v8, buf);                         \
    if (t == T::S8)                                                                               \
      return rvpiFilterSobel##N##Border_8u8s_C1R(s8, ss, static_cast<Rvp8s*>(dst), ds, roi, mask, \
                                                 border, v8, buf);                                \
  }
  RVPT_F3(NegVert)
  RVPT_F3(HorizSecond)
  RVPT_F3(VertSecond)
  RVPT_F3(Cross)
#undef RVPT_F3
  if (name == "Laplacian") {
    if (t == T::F32)
      return rvpiFilterLaplacianBorder_32f_C1R(sf, ss, static_cast<Rvp32f*>(dst), ds, roi, mask,
                                               border, value, buf);
    if (t == T::S16)
      return rvpiFilterLaplacianBorder_8u16s_C1R(s8, ss, static_cast<Rvp16s*>(dst), ds, roi, mask,
                                                 border, v8, buf);
    if (t == T::S8)
      return rvpiFilterLaplacianBorder_8u8s_C1R(s8, ss, static_cast<Rvp8s*>(dst), ds, roi, mask,
                                                border, v8, buf);
  }
  if (name == "ScharrHoriz") {
    if (t == T::F32)
      return rvpiFilterScharrHorizBorder_32f_C1R(sf, ss, static_cast<Rvp32f*>(dst), ds, roi, border,
                                                 value, buf);
    if (t == T::S16)
      return rvpiFilterScharrHorizBorder_8u16s_C1R(s8, ss, static_cast<Rvp16s*>(dst), ds, roi,
                                                   border, v8, buf);
    if (t == T::S8)
      return rvpiFilterScharrHorizBorder_8u8s_C1R(s8, ss, static_cast<Rvp8s*>(dst), ds, roi, border,
                                                  v8, buf);
  }
  if (name == "ScharrVert") {
    if (t == T::F32)
      return rvpiFilterScharrVertBorder_32f_C1R(sf, ss, static_cast<Rvp32f*>(dst), ds, roi, border,
                                                value, buf);
    if (t == T::S16)
      return rvpiFilterScharrVertBorder_8u16s_C1R(s8, ss, static_cast<Rvp16s*>(dst), ds, roi,
                                                  border, v8, buf);
    if (t == T::S8)
      return rvpiFilterScharrVertBorder_8u8s_C1R(s8, ss, static_cast<Rvp8s*>(dst), ds, roi, border,
                                                 v8, buf);
  }
  if (name == "Lowpass") {
    if (t == T::F32)
      return rvpiFilterLowpassBorder_32f_C1R(sf, ss, static_cast<Rvp32f*>(dst), ds, roi, mask,
                                             border, value, buf);
    if (t == T::U8)
      return rvpiFilterLowpassBorder_8u_C1R(s8, ss, static_cast<Rvp8u*>(dst), ds, roi, mask, border,
                                            v8, buf);
  }
  if (name == "SobelHoriz" && t == T::S8)
    return rvpiFilterSobelHorizBorder_8u8s_C1R(s8, ss, static_cast<Rvp8s*>(dst), ds, roi, mask,
                                               border, v8, buf);
  if (name == "SobelVert" && t == T::S8)
    return rvpiFilterSobelVertBorder_8u8s_C1R(s8, ss, static_cast<Rvp8s*>(dst), ds, roi, mask,
                                              border, v8, buf);
  return -1000;
}

RvpStatus size_of(const std::string& name, T t, RvpiSize roi, int mask, int* size) {
#define RVPT_S3(N, P)                                                                \
  if (name == #N) {                                                                  \
    if (t == T::F32) return rvpiFilter##P##GetBufferSize_32f_C1R(roi, mask, size);   \
    if (t == T::S16) return rvpiFilter##P##GetBufferSize_8u16s_C1R(roi, mask, size); \
    if (t == T::S8) return rvpiFilter##P##GetBufferSize_8u8s_C1R(roi, mask, size);   \
  }
  RVPT_S3(NegVert, SobelNegVert)
  RVPT_S3(HorizSecond, SobelHorizSecond)
  RVPT_S3(VertSecond, SobelVertSecond)
  RVPT_S3(Cross, SobelCross)
  RVPT_S3(Laplacian, Laplacian)
#undef RVPT_S3
  if (name == "ScharrHoriz") {
    if (mask != 33) return -1001;
    if (t == T::F32) return rvpiFilterScharrHorizGetBufferSize_32f_C1R(roi, size);
    if (t == T::S16) return rvpiFilterScharrHorizGetBufferSize_8u16s_C1R(roi, size);
    if (t == T::S8) return rvpiFilterScharrHorizGetBufferSize_8u8s_C1R(roi, size);
  }
  if (name == "ScharrVert") {
    if (mask != 33) return -1001;
    if (t == T::F32) return rvpiFilterScharrVertGetBufferSize_32f_C1R(roi, size);
    if (t == T::S16) return rvpiFilterScharrVertGetBufferSize_8u16s_C1R(roi, size);
    if (t == T::S8) return rvpiFilterScharrVertGetBufferSize_8u8s_C1R(roi, size);
  }
  if (name == "Lowpass") {
    if (t == T::F32) return rvpiFilterLowpassGetBufferSize_32f_C1R(roi, mask, size);
    if (t == T::U8) return rvpiFilterLowpassGetBufferSize_8u_C1R(roi, mask, size);
  }
  if (name == "SobelHoriz" && t == T::S8)
    return rvpiFilterSobelHorizGetBufferSize_8u8s_C1R(roi, mask, size);
  if (name == "SobelVert" && t == T::S8)
    return rvpiFilterSobelVertGetBufferSize_8u8s_C1R(roi, mask, size);
  return -1000;
}

int elem(T t) { return t == T::F32 ? 4 : t == T::S16 ? 2 : 1; }

// Expected output (as double) of pixel (x, y).
template <class S>
double reference(const Filter& f, bool five, T t, const rvpt::RefBorder<S>& b, int y, int x) {
  const auto& H = five ? f.h5 : f.h3;
  const auto& V = five ? f.v5 : f.v3;
  const int K = five ? 5 : 3, r = K / 2;
  if constexpr (std::is_same_v<S, float>) {
    float acc = 0;
    bool first = true;
    for (size_t term = 0; term < H.size(); ++term)
      for (int ky = 0; ky < K; ++ky) {
        if (V[term][ky] == 0) continue;
        float rowv = 0;
        bool rf = true;
        for (int kx = 0; kx < K; ++kx) {
          if (H[term][kx] == 0) continue;
          const float p = float(H[term][kx]) * b.at(y + ky - r, x + kx - r, 0);
          rowv = rf ? p : rowv + p;
          rf = false;
        }
        const float p = float(V[term][ky]) * rowv;
        acc = first ? p : acc + p;
        first = false;
      }
    if (f.lowpass) acc = acc * (1.0f / float(K * K));
    return acc;
  } else {
    int64_t s = 0;
    int D = 0;
    for (int ky = 0; ky < K; ++ky)
      for (int kx = 0; kx < K; ++kx) {
        int w = 0;
        for (size_t term = 0; term < H.size(); ++term) w += H[term][kx] * V[term][ky];
        D += std::abs(w);
        s += int64_t(w) * b.at(y + ky - r, x + kx - r, 0);
      }
    if (t == T::S16) return double(std::clamp<int64_t>(s, -32768, 32767));
    const double q = std::nearbyint(double(float(s) * (1.0f / float(D))));
    return t == T::S8 ? std::clamp(q, -128.0, 127.0) : std::clamp(q, 0.0, 255.0);
  }
}

double read(const void* p, T t, int i) {
  switch (t) {
    case T::F32:
      return static_cast<const float*>(p)[i];
    case T::S16:
      return static_cast<const int16_t*>(p)[i];
    case T::S8:
      return static_cast<const int8_t*>(p)[i];
    default:
      return static_cast<const uint8_t*>(p)[i];
  }
}

const T kTypes[] = {T::F32, T::S16, T::S8, T::U8};

}  // namespace

TEST(FixedFilters, MatchReferenceForEveryBorder) {
  std::mt19937 rng(31);
  const int borders[] = {0, 1, 2, 3, 4, 6, 0x10 | 1, 0x80 | 3, 0x60 | 0, 0x30 | 2, 0xF0 | 4};
  for (const Filter& f : filters())
    for (T t : kTypes)
      for (int mask : {33, 55}) {
        if (mask == 55 && !f.has5) continue;
        for (int border : borders)
          for (RvpiSize roi : {RvpiSize{1, 1}, RvpiSize{2, 3}, RvpiSize{17, 4}, RvpiSize{37, 6}}) {
            const int pad = 3, es = t == T::F32 ? 4 : 1;
            const int sw = roi.width + 2 * pad, sh = roi.height + 2 * pad;
            std::vector<uint8_t> src(size_t(sw) * sh * es);
            for (size_t i = 0; i < src.size() / es; ++i) {
              if (t == T::F32) {
                const float v = std::uniform_real_distribution<float>(-50, 50)(rng);
                std::memcpy(&src[i * 4], &v, 4);
              } else {
                src[i] = uint8_t(rng());
              }
            }
            const int sstep = sw * es;
            const uint8_t* origin = src.data() + size_t(pad) * sstep + pad * es;
            int size = 0;
            const RvpStatus sst = size_of(f.name, t, roi, mask, &size);
            if (sst == -1000) break;
            ASSERT_EQ(sst, 0);
            std::vector<uint8_t> buf(size_t(size) + 1);
            const int dstep = roi.width * elem(t) + 8;
            std::vector<uint8_t> dst(size_t(dstep) * roi.height);
            const float value = t == T::F32 ? -3.25f : 77.0f;
            ASSERT_EQ(call(f.name, t, origin, sstep, dst.data(), dstep, roi, mask, border, value,
                           buf.data() + 1),
                      0);
            for (int y = 0; y < roi.height; ++y)
              for (int x = 0; x < roi.width; ++x) {
                double want;
                if (t == T::F32) {
                  rvpt::RefBorder<float> b{reinterpret_cast<const float*>(origin),
                                           sstep,
                                           roi.width,
                                           roi.height,
                                           1,
                                           border,
                                           &value};
                  want = reference<float>(f, mask == 55, t, b, y, x);
                } else {
                  const Rvp8u v8 = Rvp8u(value);
                  rvpt::RefBorder<Rvp8u> b{origin, sstep, roi.width, roi.height, 1, border, &v8};
                  want = reference<Rvp8u>(f, mask == 55, t, b, y, x);
                }
                const double got = read(dst.data() + size_t(y) * dstep, t, x);
                ASSERT_EQ(got, want)
                    << f.name << " t " << int(t) << " mask " << mask << " border " << border
                    << " roi " << roi.width << "x" << roi.height << " at " << x << "," << y;
              }
          }
      }
}

// A constant image (and the same constant as border value) gives 0 from every derivative
// filter, for every mask and border type.
TEST(FixedFilters, ConstantImageGivesZero) {
  for (const Filter& f : filters()) {
    if (f.lowpass) continue;
    for (T t : {T::F32, T::S16, T::S8})
      for (int mask : {33, 55})
        for (int border : {0, 1, 2, 3, 4, 6}) {
          if (mask == 55 && !f.has5) continue;
          const RvpiSize roi{23, 7};
          const int es = t == T::F32 ? 4 : 1;
          std::vector<uint8_t> src(size_t(roi.width + 8) * (roi.height + 8) * es);
          const float c = 201.0f;
          for (size_t i = 0; i < src.size() / es; ++i)
            if (t == T::F32)
              std::memcpy(&src[i * 4], &c, 4);
            else
              src[i] = 201;
          const int sstep = (roi.width + 8) * es;
          int size = 0;
          if (size_of(f.name, t, roi, mask, &size) == -1000) continue;
          std::vector<uint8_t> buf(size), dst(size_t(roi.width) * 4 * roi.height, 0xEE);
          const uint8_t* origin = src.data() + 4 * sstep + 4 * es;
          ASSERT_EQ(call(f.name, t, origin, sstep, dst.data(), roi.width * elem(t), roi, mask,
                         border, c, buf.data()),
                    0);
          for (int i = 0; i < roi.width * roi.height; ++i)
            ASSERT_EQ(read(dst.data(), t, i), 0.0) << f.name << " " << border << " " << i;
        }
  }
}

// With border 6 a region inside a larger image gives the interior of the whole-image result.
TEST(FixedFilters, InMemoryBorderEqualsWholeImage) {
  std::mt19937 rng(8);
  const int W = 50, H = 20;
  std::vector<uint8_t> img(W * H);
  for (auto& v : img) v = uint8_t(rng());
  for (const char* name : {"NegVert", "Laplacian", "Cross"})
    for (int mask : {33, 55}) {
      int size = 0;
      ASSERT_EQ(size_of(name, T::S16, {W, H}, mask, &size), 0);
      std::vector<uint8_t> buf(size);
      std::vector<int16_t> whole(W * H), part(W * H, 0);
      ASSERT_EQ(
          call(name, T::S16, img.data(), W, whole.data(), W * 2, {W, H}, mask, 1, 0, buf.data()),
          0);
      const int x0 = 7, y0 = 5, w = 30, h = 9;
      ASSERT_EQ(call(name, T::S16, img.data() + y0 * W + x0, W, part.data(), W * 2, {w, h}, mask, 6,
                     0, buf.data()),
                0);
      for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) ASSERT_EQ(part[y * W + x], whole[(y + y0) * W + x + x0]);
    }
}

// Guard pages around source and destination, buffer of exactly the queried size at an odd
// address (its end on a guard page), widths 1..70.
TEST(FixedFilters, GuardedWidths1To70) {
  std::mt19937 rng(2);
  for (int W = 1; W <= 70; ++W)
    for (T t : {T::F32, T::S16, T::S8, T::U8}) {
      const char* name = t == T::U8 ? "Lowpass" : (W % 2 ? "Laplacian" : "NegVert");
      const int H = 3, mask = W % 3 ? 55 : 33;
      const int es = t == T::F32 ? 4 : 1;
      for (auto where : {rvpt::Guard::After, rvpt::Guard::Before}) {
        rvpt::GuardedBuffer src(size_t(W) * H * es, where);
        for (size_t i = 0; i < src.size(); ++i) src.data()[i] = uint8_t(rng() & 0x3F);
        rvpt::GuardedBuffer dst(size_t(W) * H * elem(t), where);
        int size = 0;
        ASSERT_EQ(size_of(name, t, {W, H}, mask, &size), 0);
        rvpt::GuardedBuffer buf(size_t(size) + 1, rvpt::Guard::After);
        ASSERT_EQ(call(name, t, src.data(), W * es, dst.data(), W * elem(t), {W, H}, mask, 3, 0,
                       buf.data() + 1),
                  0)
            << W;
      }
    }
}

TEST(FixedFilters, ChecksInOrderAndWriteNothing) {
  std::vector<uint8_t> src(64 * 4, 1), buf(8192);
  std::vector<int16_t> dst(64, 9);
  auto c = [&](const void* s, void* d, void* b, RvpiSize roi, int ss, int ds, int border,
               int mask) {
    return rvpiFilterSobelNegVertBorder_8u16s_C1R(static_cast<const Rvp8u*>(s), ss,
                                                  static_cast<Rvp16s*>(d), ds, roi, mask, border, 0,
                                                  static_cast<Rvp8u*>(b));
  };
  const RvpiSize roi{8, 8};
  EXPECT_EQ(c(nullptr, dst.data(), buf.data(), {0, 8}, 8, 16, 9, 1), rvpStsNullPtrErr);
  EXPECT_EQ(c(src.data(), dst.data(), nullptr, roi, 8, 16, 9, 1), rvpStsNullPtrErr);
  EXPECT_EQ(c(src.data(), dst.data(), buf.data(), {8, 0}, 1, 1, 9, 1), rvpStsSizeErr);
  EXPECT_EQ(c(src.data(), dst.data(), buf.data(), roi, 7, 17, 9, 1), rvpStsStepErr);
  EXPECT_EQ(c(src.data(), dst.data(), buf.data(), roi, 8, 15, 9, 1), rvpStsStepErr);
  EXPECT_EQ(c(src.data(), dst.data(), buf.data(), roi, 8, 17, 9, 1), rvpStsNotEvenStepErr);
  for (int border : {5, 7, 15, 0x100, 0x105, 0x200})
    EXPECT_EQ(c(src.data(), dst.data(), buf.data(), roi, 8, 16, border, 1), rvpStsBadArgErr)
        << border;
  EXPECT_EQ(c(src.data(), dst.data(), buf.data(), roi, 8, 16, 0x112, 35), rvpStsMaskSizeErr);
  EXPECT_EQ(c(src.data(), dst.data(), buf.data(), roi, 8, 16, 1, 53), rvpStsMaskSizeErr);
  for (int16_t v : dst) EXPECT_EQ(v, 9);
  // 32f: odd step multiple of nothing.
  std::vector<float> fs(64), fd(64, 5.0f);
  EXPECT_EQ(
      rvpiFilterLowpassBorder_32f_C1R(fs.data(), 34, fd.data(), 32, {8, 8}, 33, 1, 0, buf.data()),
      rvpStsNotEvenStepErr);
  for (float v : fd) EXPECT_EQ(v, 5.0f);
  int size = 7;
  EXPECT_EQ(rvpiFilterLaplacianGetBufferSize_8u16s_C1R({4, 4}, 35, &size), rvpStsMaskSizeErr);
  EXPECT_EQ(rvpiFilterLaplacianGetBufferSize_8u16s_C1R({0, 4}, 35, &size), rvpStsSizeErr);
  EXPECT_EQ(rvpiFilterLaplacianGetBufferSize_8u16s_C1R({4, 4}, 33, nullptr), rvpStsNullPtrErr);
  EXPECT_EQ(size, 7);
}

TEST(FixedFilters, EightBitSignedScaling) {
  // A vertical step edge 0 | 255: the 3x3 first derivative saturates to the extremes of the
  // scaled range (1020 / 8 = 127.5 -> 128 -> 127); one pixel further the 5x5 one gives
  // 255 * 16 / 96 = 42.5, a tie that goes to the even 42.
  std::vector<uint8_t> src(16 * 5);
  for (int y = 0; y < 5; ++y)
    for (int x = 0; x < 16; ++x) src[y * 16 + x] = x < 8 ? 0 : 255;
  std::vector<int8_t> d(16 * 5);
  std::vector<uint8_t> buf(4096);
  ASSERT_EQ(rvpiFilterSobelVertBorder_8u8s_C1R(src.data(), 16, d.data(), 16, {16, 5}, 33, 1, 0,
                                               buf.data()),
            0);
  EXPECT_EQ(d[2 * 16 + 7], 127);
  EXPECT_EQ(d[2 * 16 + 8], 127);
  EXPECT_EQ(d[2 * 16 + 3], 0);
  ASSERT_EQ(rvpiFilterSobelNegVertBorder_8u8s_C1R(src.data(), 16, d.data(), 16, {16, 5}, 33, 1, 0,
                                                  buf.data()),
            0);
  EXPECT_EQ(d[2 * 16 + 7], -128);
  ASSERT_EQ(rvpiFilterSobelVertBorder_8u8s_C1R(src.data(), 16, d.data(), 16, {16, 5}, 55, 1, 0,
                                               buf.data()),
            0);
  EXPECT_EQ(d[2 * 16 + 7], 127);
  EXPECT_EQ(d[2 * 16 + 6], 42);
}

// Norms (Inf, L1, L2) of an image, of a difference and relative to a second image; means,
// standard deviations, extrema with their positions. One driver per family over every pixel
// type and channel form.
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>

#include "arith/statistics_kernels.h"
#include "core/checks.h"
#include "core/image.h"
#include "core/numeric.h"
#include "rvpcv.h"

namespace rvp::arith {
namespace {

enum class NormKind { Inf, L1, L2 };

// Exact integer totals. Square sums are kept both exactly (for the L2 norms) and as the sum of
// the per-row 64-bit square sums in double precision (the deviation's defined arithmetic).
struct IntTotal {
  uint32_t max = 0;
  int64_t sum = 0;
  unsigned __int128 sq = 0;
  double sq_rows = 0.0;
  int64_t count = 0;

  void add(const IntRow& r) {
    max = r.max > max ? r.max : max;
    sum += r.sum;
    sq += r.sq;
    sq_rows += static_cast<double>(r.sq);
    count += r.count;
  }
};

template <class T>
constexpr bool kFloat = std::is_same_v<T, Rvp32f>;

template <class T>
using Total = std::conditional_t<kFloat<T>, FloatAcc, IntTotal>;

// Every NaN result leaves the library as the default quiet NaN, whatever NaN the data held.
inline double canonical(double v) {
  if (!std::isnan(v)) return v;
  const uint64_t bits = 0xFFF8000000000000ull;
  std::memcpy(&v, &bits, 8);
  return v;
}

// The source pointers and mask, the region, the channel form, and the channel chosen.
template <class T, int Ch>
RvpStatus check_images(RvpiSize roi, int aStep, bool two_sources, int bStep, bool masked,
                       int maskStep, int coi) {
  if (auto st = check_roi(roi)) return st;
  if (auto st =
          check_steps({image<T>(aStep, roi, Ch), two_sources ? image<T>(bStep, roi, Ch) : kNoImage,
                       masked ? mask_image(maskStep, roi) : kNoImage}))
    return st;
  if (Ch == 3 && (coi < 1 || coi > 3)) return rvpStsCOIErr;
  return rvpStsNoErr;
}

// Folds every row of the region into `num` (and `den` for Rel). `a`/`b` already point at the
// chosen channel, channel c0 of the pixel.
template <class T, Form F, unsigned N, int Ch>
void reduce(const T* a, int aStep, const T* b, int bStep, const Rvp8u* mask, int maskStep,
            RvpiSize roi, int c0, Total<T>& num, Total<T>& den) {
  constexpr bool kTwo = F == Form::Diff || F == Form::Rel;
  for (int y = 0; y < roi.height; ++y) {
    const T* ra = row(a, aStep, y);
    const T* rb = kTwo ? row(b, bStep, y) : nullptr;
    const Rvp8u* rm = mask != nullptr ? row(mask, maskStep, y) : nullptr;
    if constexpr (kFloat<T>) {
      avx2::float_row<F, N, Ch>(ra, rb, rm, roi.width, num, den, c0);
    } else {
      IntRow rn, rd;
      if constexpr (Ch == 1 && std::is_same_v<T, Rvp8u>)
        avx2::int_row_u8<F, N>(ra, rb, rm, roi.width, rn, rd);
      else
        avx2::int_row_i32<T, F, N, Ch>(ra, rb, rm, roi.width, rn, rd, c0);
      num.add(rn);
      if constexpr (F == Form::Rel) den.add(rd);
    }
  }
}

template <NormKind K>
constexpr unsigned kNormNeed = K == NormKind::Inf ? kMax : (K == NormKind::L1 ? kSum : kSq);

template <NormKind K>
double norm_of(const IntTotal& t) {
  if constexpr (K == NormKind::Inf) return t.max;
  if constexpr (K == NormKind::L1) return static_cast<double>(t.sum);
  if constexpr (K == NormKind::L2) return std::sqrt(static_cast<double>(t.sq));
}

template <NormKind K>
double norm_of(const FloatAcc& t) {
  if constexpr (K == NormKind::Inf) return t.nan ? std::numeric_limits<double>::quiet_NaN() : t.max;
  if constexpr (K == NormKind::L1) return canonical(combine8(t.sum));
  if constexpr (K == NormKind::L2) return canonical(std::sqrt(combine8(t.sq)));
}

// Norm (Form::Abs), NormDiff (Form::Diff) and NormRel (Form::Rel).
template <class T, NormKind K, Form F, int Ch>
RvpStatus norm(const T* a, int aStep, const T* b, int bStep, const Rvp8u* mask, int maskStep,
               RvpiSize roi, int coi, Rvp64f* out) {
  constexpr bool kTwo = F != Form::Abs;
  if (a == nullptr || (kTwo && b == nullptr) || mask == nullptr || out == nullptr)
    return rvpStsNullPtrErr;
  if (auto st = check_images<T, Ch>(roi, aStep, kTwo, bStep, true, maskStep, coi)) return st;
  const int c0 = Ch == 3 ? coi - 1 : 0;
  Total<T> num, den;
  reduce<T, F, kNormNeed<K>, Ch>(a + c0, aStep, kTwo ? b + c0 : nullptr, bStep, mask, maskStep, roi,
                                 c0, num, den);
  const double n = canonical(norm_of<K>(num));
  if constexpr (F != Form::Rel) {
    *out = n;
    return rvpStsNoErr;
  } else {
    const double d = canonical(norm_of<K>(den));
    if (d == 0.0) {
      // 0/0 is the default NaN; a positive numerator +inf; anything else (a NaN) -inf.
      *out = n == 0.0 ? canonical(std::numeric_limits<double>::quiet_NaN())
                      : (n > 0.0 ? std::numeric_limits<double>::infinity()
                                 : -std::numeric_limits<double>::infinity());
      return rvpStsDivByZeroWrn;
    }
    *out = canonical(n / d);
    return rvpStsNoErr;
  }
}

// Sum, square sum and count of the selected pixels of the chosen channel.
struct Moments {
  double sum, sq;
  int64_t count;
};

// Rvp8u, one channel, with the square sum: the whole-region kernel, if its exact total is the
// per-row double sum. That holds when the largest possible total, 255^2 per pixel, stays below
// 2^53: every partial sum of the row-by-row addition is then an exact integer in double.
// Images whose rows follow each other without gaps are walked as one row.
template <bool Masked>
bool moments_u8(const Rvp8u* a, int aStep, const Rvp8u* mask, int maskStep, RvpiSize roi,
                Moments* out) {
  if (int64_t{roi.width} * roi.height >= (int64_t{1} << 53) / (255 * 255)) return false;
  const RvpiSize walk = packed_as_one_row(
      roi, {image<Rvp8u>(aStep, roi), Masked ? mask_image(maskStep, roi) : kNoImage});
  avx2::U8Moments<Masked> k;
  for (int y = 0; y < walk.height; ++y)
    k.row(row(a, aStep, y), Masked ? row(mask, maskStep, y) : nullptr, walk.width);
  const IntRow t = k.total();
  *out = {static_cast<double>(t.sum), static_cast<double>(t.sq), t.count};
  return true;
}

template <class T, unsigned N, int Ch>
Moments moments(const T* a, int aStep, const Rvp8u* mask, int maskStep, RvpiSize roi, int coi) {
  if constexpr (std::is_same_v<T, Rvp8u> && Ch == 1 && N == (kSum | kSq | kCount)) {
    Moments m;
    if (mask != nullptr ? moments_u8<true>(a, aStep, mask, maskStep, roi, &m)
                        : moments_u8<false>(a, aStep, nullptr, 0, roi, &m))
      return m;
  }
  const int c0 = Ch == 3 ? coi - 1 : 0;
  Total<T> t, unused;
  reduce<T, Form::Value, N, Ch>(a + c0, aStep, nullptr, 0, mask, maskStep, roi, c0, t, unused);
  if constexpr (kFloat<T>)
    return {combine8(t.sum), combine8(t.sq), t.count};
  else
    return {static_cast<double>(t.sum), t.sq_rows, t.count};
}

template <class T, int Ch>
RvpStatus mean(const T* a, int aStep, const Rvp8u* mask, int maskStep, RvpiSize roi, int coi,
               Rvp64f* pMean) {
  if (auto st = any_null(a, mask, pMean)) return st;
  if (auto st = check_images<T, Ch>(roi, aStep, false, 0, true, maskStep, coi)) return st;
  const Moments m = moments<T, kSum | kCount, Ch>(a, aStep, mask, maskStep, roi, coi);
  *pMean = m.count == 0 ? 0.0 : canonical(m.sum / static_cast<double>(m.count));
  return rvpStsNoErr;
}

template <class T, int Ch, bool Masked>
RvpStatus mean_std_dev(const T* a, int aStep, const Rvp8u* mask, int maskStep, RvpiSize roi,
                       int coi, Rvp64f* pMean, Rvp64f* pStdDev) {
  if (a == nullptr || (Masked && mask == nullptr)) return rvpStsNullPtrErr;
  if (auto st = check_images<T, Ch>(roi, aStep, false, 0, Masked, maskStep, coi)) return st;
  if (pMean == nullptr && pStdDev == nullptr) return rvpStsNoErr;
  const Moments mo =
      moments<T, kSum | kSq | kCount, Ch>(a, aStep, Masked ? mask : nullptr, maskStep, roi, coi);
  double m = 0.0, sd = 0.0;
  if (mo.count != 0) {
    const double n = static_cast<double>(mo.count);
    m = mo.sum / n;
    // E[x^2] - m^2 with one rounding; a slightly negative result from rounding is folded to
    // its magnitude instead of being clamped to 0.
    sd = std::sqrt(std::fabs(rvp::fma(-m, m, mo.sq / n)));
  }
  if (pMean != nullptr) *pMean = canonical(m);
  if (pStdDev != nullptr) *pStdDev = canonical(sd);
  return rvpStsNoErr;
}

template <class T, int Ch>
RowExtremes row_extremes(const T* a, const Rvp8u* mask, int n, int c) {
  if constexpr (Ch == 1 && std::is_same_v<T, Rvp8u>)
    return avx2::row_extremes_u8(a, mask, n);
  else if constexpr (std::is_same_v<T, Rvp32f>)
    return avx2::row_extremes_f32<Ch>(a, mask, n, c);
  else
    return avx2::row_extremes_i32<T, Ch>(a, mask, n, c);
}

// First selected column of row `y` whose value equals `v`; the pixel's own value is returned
// with it (so the sign of a zero extreme is the one stored at that position).
template <class T, int Ch>
int find_first(const T* r, const Rvp8u* mrow, int n, float v, float* found) {
  for (int x = 0; x < n; ++x) {
    if (mrow != nullptr && mrow[x] == 0) continue;
    const float p = static_cast<float>(r[ptrdiff_t{x} * Ch]);
    if (p == v) {
      *found = p;
      return x;
    }
  }
  return 0;  // not reached: the row was recorded because it holds v
}

template <class T, int Ch, bool Masked>
RvpStatus min_max_indx(const T* a, int aStep, const Rvp8u* mask, int maskStep, RvpiSize roi,
                       int coi, Rvp32f* pMinVal, Rvp32f* pMaxVal, RvpiPoint* pMinIndex,
                       RvpiPoint* pMaxIndex) {
  if (a == nullptr || (Masked && mask == nullptr)) return rvpStsNullPtrErr;
  if (auto st = check_images<T, Ch>(roi, aStep, false, 0, Masked, maskStep, coi)) return st;
  if (!pMinVal && !pMaxVal && !pMinIndex && !pMaxIndex) return rvpStsNoErr;
  const int c0 = Ch == 3 ? coi - 1 : 0;
  const T* src = a + c0;
  const Rvp8u* m = Masked ? mask : nullptr;

  // Pass 1: per extreme, the value and the first row that strictly improved it.
  float vmin = std::numeric_limits<float>::max(), vmax = -std::numeric_limits<float>::max();
  int ymin = -1, ymax = -1;
  bool any = false;
  for (int y = 0; y < roi.height; ++y) {
    const RowExtremes r =
        row_extremes<T, Ch>(row(src, aStep, y), m ? row(m, maskStep, y) : nullptr, roi.width, c0);
    any = any || r.any;
    if (r.min < vmin) vmin = r.min, ymin = y;
    if (r.max > vmax) vmax = r.max, ymax = y;
  }
  RvpiPoint imin{0, 0}, imax{0, 0};
  if (!any) {
    vmin = vmax = 0.0f;
  } else {
    // Pass 2: the left-most position of each extreme within its row.
    if (ymin >= 0)
      imin = {find_first<T, Ch>(row(src, aStep, ymin), m ? row(m, maskStep, ymin) : nullptr,
                                roi.width, vmin, &vmin),
              ymin};
    if (ymax >= 0)
      imax = {find_first<T, Ch>(row(src, aStep, ymax), m ? row(m, maskStep, ymax) : nullptr,
                                roi.width, vmax, &vmax),
              ymax};
  }
  if (pMinVal) *pMinVal = vmin;
  if (pMaxVal) *pMaxVal = vmax;
  if (pMinIndex) *pMinIndex = imin;
  if (pMaxIndex) *pMaxIndex = imax;
  return rvpStsNoErr;
}

}  // namespace
}  // namespace rvp::arith

using rvp::arith::Form;
using rvp::arith::NormKind;

// ---- exports: one line each, forwarding to the drivers -------------------------------------

#define RVP_NORM_EXPORTS(n, K, t, T)                                                               \
  RvpStatus rvpiNorm_##n##_##t##_C1MR(const T* pSrc, int srcStep, const Rvp8u* pMask,              \
                                      int maskStep, RvpiSize roiSize, Rvp64f* pNorm) {             \
    return rvp::arith::norm<T, K, Form::Abs, 1>(pSrc, srcStep, nullptr, 0, pMask, maskStep,        \
                                                roiSize, 1, pNorm);                                \
  }                                                                                                \
  RvpStatus rvpiNorm_##n##_##t##_C3CMR(const T* pSrc, int srcStep, const Rvp8u* pMask,             \
                                       int maskStep, RvpiSize roiSize, int coi, Rvp64f* pNorm) {   \
    return rvp::arith::norm<T, K, Form::Abs, 3>(pSrc, srcStep, nullptr, 0, pMask, maskStep,        \
                                                roiSize, coi, pNorm);                              \
  }                                                                                                \
  RvpStatus rvpiNormDiff_##n##_##t##_C1MR(const T* pSrc1, int src1Step, const T* pSrc2,            \
                                          int src2Step, const Rvp8u* pMask, int maskStep,          \
                                          RvpiSize roiSize, Rvp64f* pNorm) {                       \
    return rvp::arith::norm<T, K, Form::Diff, 1>(pSrc1, src1Step, pSrc2, src2Step, pMask,          \
                                                 maskStep, roiSize, 1, pNorm);                     \
  }                                                                                                \
  RvpStatus rvpiNormDiff_##n##_##t##_C3CMR(const T* pSrc1, int src1Step, const T* pSrc2,           \
                                           int src2Step, const Rvp8u* pMask, int maskStep,         \
                                           RvpiSize roiSize, int coi, Rvp64f* pNorm) {             \
    return rvp::arith::norm<T, K, Form::Diff, 3>(pSrc1, src1Step, pSrc2, src2Step, pMask,          \
                                                 maskStep, roiSize, coi, pNorm);                   \
  }                                                                                                \
  RvpStatus rvpiNormRel_##n##_##t##_C1MR(const T* pSrc1, int src1Step, const T* pSrc2,             \
                                         int src2Step, const Rvp8u* pMask, int maskStep,           \
                                         RvpiSize roiSize, Rvp64f* pNorm) {                        \
    return rvp::arith::norm<T, K, Form::Rel, 1>(pSrc1, src1Step, pSrc2, src2Step, pMask, maskStep, \
                                                roiSize, 1, pNorm);                                \
  }                                                                                                \
  RvpStatus rvpiNormRel_##n##_##t##_C3CMR(const T* pSrc1, int src1Step, const T* pSrc2,            \
                                          int src2Step, const Rvp8u* pMask, int maskStep,          \
                                          RvpiSize roiSize, int coi, Rvp64f* pNorm) {              \
    return rvp::arith::norm<T, K, Form::Rel, 3>(pSrc1, src1Step, pSrc2, src2Step, pMask, maskStep, \
                                                roiSize, coi, pNorm);                              \
  }

#define RVP_STAT_EXPORTS(t, T)                                                                     \
  RVP_NORM_EXPORTS(Inf, NormKind::Inf, t, T)                                                       \
  RVP_NORM_EXPORTS(L1, NormKind::L1, t, T)                                                         \
  RVP_NORM_EXPORTS(L2, NormKind::L2, t, T)                                                         \
  RvpStatus rvpiMean_##t##_C1MR(const T* pSrc, int srcStep, const Rvp8u* pMask, int maskStep,      \
                                RvpiSize roiSize, Rvp64f* pMean) {                                 \
    return rvp::arith::mean<T, 1>(pSrc, srcStep, pMask, maskStep, roiSize, 1, pMean);              \
  }                                                                                                \
  RvpStatus rvpiMean_##t##_C3CMR(const T* pSrc, int srcStep, const Rvp8u* pMask, int maskStep,     \
                                 RvpiSize roiSize, int coi, Rvp64f* pMean) {                       \
    return rvp::arith::mean<T, 3>(pSrc, srcStep, pMask, maskStep, roiSize, coi, pMean);            \
  }                                                                                                \
  RvpStatus rvpiMean_StdDev_##t##_C1R(const T* pSrc, int srcStep, RvpiSize roiSize, Rvp64f* pMean, \
                                      Rvp64f* pStdDev) {                                           \
    return rvp::arith::mean_std_dev<T, 1, false>(pSrc, srcStep, nullptr, 0, roiSize, 1, pMean,     \
                                                 pStdDev);                                         \
  }                                                                                                \
  RvpStatus rvpiMean_StdDev_##t##_C3CR(const T* pSrc, int srcStep, RvpiSize roiSize, int coi,      \
                                       Rvp64f* pMean, Rvp64f* pStdDev) {                           \
    return rvp::arith::mean_std_dev<T, 3, false>(pSrc, srcStep, nullptr, 0, roiSize, coi, pMean,   \
                                                 pStdDev);                                         \
  }                                                                                                \
  RvpStatus rvpiMean_StdDev_##t##_C1MR(const T* pSrc, int srcStep, const Rvp8u* pMask,             \
                                       int maskStep, RvpiSize roiSize, Rvp64f* pMean,              \
                                       Rvp64f* pStdDev) {                                          \
    return rvp::arith::mean_std_dev<T, 1, true>(pSrc, srcStep, pMask, maskStep, roiSize, 1, pMean, \
                                                pStdDev);                                          \
  }                                                                                                \
  RvpStatus rvpiMean_StdDev_##t##_C3CMR(const T* pSrc, int srcStep, const Rvp8u* pMask,            \
                                        int maskStep, RvpiSize roiSize, int coi, Rvp64f* pMean,    \
                                        Rvp64f* pStdDev) {                                         \
    return rvp::arith::mean_std_dev<T, 3, true>(pSrc, srcStep, pMask, maskStep, roiSize, coi,      \
                                                pMean, pStdDev);                                   \
  }                                                                                                \
  RvpStatus rvpiMinMaxIndx_##t##_C1R(const T* pSrc, int srcStep, RvpiSize roiSize,                 \
                                     Rvp32f* pMinVal, Rvp32f* pMaxVal, RvpiPoint* pMinIndex,       \
                                     RvpiPoint* pMaxIndex) {                                       \
    return rvp::arith::min_max_indx<T, 1, false>(pSrc, srcStep, nullptr, 0, roiSize, 1, pMinVal,   \
                                                 pMaxVal, pMinIndex, pMaxIndex);                   \
  }                                                                                                \
  RvpStatus rvpiMinMaxIndx_##t##_C3CR(const T* pSrc, int srcStep, RvpiSize roiSize, int coi,       \
                                      Rvp32f* pMinVal, Rvp32f* pMaxVal, RvpiPoint* pMinIndex,      \
                                      RvpiPoint* pMaxIndex) {                                      \
    return rvp::arith::min_max_indx<T, 3, false>(pSrc, srcStep, nullptr, 0, roiSize, coi, pMinVal, \
                                                 pMaxVal, pMinIndex, pMaxIndex);                   \
  }                                                                                                \
  RvpStatus rvpiMinMaxIndx_##t##_C1MR(                                                             \
      const T* pSrc, int srcStep, const Rvp8u* pMask, int maskStep, RvpiSize roiSize,              \
      Rvp32f* pMinVal, Rvp32f* pMaxVal, RvpiPoint* pMinIndex, RvpiPoint* pMaxIndex) {              \
    return rvp::arith::min_max_indx<T, 1, true>(pSrc, srcStep, pMask, maskStep, roiSize, 1,        \
                                                pMinVal, pMaxVal, pMinIndex, pMaxIndex);           \
  }                                                                                                \
  RvpStatus rvpiMinMaxIndx_##t##_C3CMR(                                                            \
      const T* pSrc, int srcStep, const Rvp8u* pMask, int maskStep, RvpiSize roiSize, int coi,     \
      Rvp32f* pMinVal, Rvp32f* pMaxVal, RvpiPoint* pMinIndex, RvpiPoint* pMaxIndex) {              \
    return rvp::arith::min_max_indx<T, 3, true>(pSrc, srcStep, pMask, maskStep, roiSize, coi,      \
                                                pMinVal, pMaxVal, pMinIndex, pMaxIndex);           \
  }

RVP_STAT_EXPORTS(8u, Rvp8u)
RVP_STAT_EXPORTS(8s, Rvp8s)
RVP_STAT_EXPORTS(16u, Rvp16u)
RVP_STAT_EXPORTS(32f, Rvp32f)
#undef RVP_STAT_EXPORTS
#undef RVP_NORM_EXPORTS

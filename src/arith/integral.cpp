// Integral, squared and tilted integral images, and window deviations over them.
#include <cmath>
#include <cstdint>
#include <type_traits>

#include "arith/integral_kernels.h"
#include "core/checks.h"
#include "core/image.h"
#include "core/numeric.h"
#include "rvpcv.h"

namespace rvp::arith {
namespace {

// Step rule for a table of `elems` elements of T per row (elems may exceed int range).
template <class T>
StepRule table(int step, int64_t elems) {
  return {step, elems * int64_t{sizeof(T)}, int{sizeof(T)}};
}

template <class T>
void fill_row(T* r, int n, T v) {
  for (int i = 0; i < n; ++i) r[i] = v;
}

// A stand-in for the squared table of the members that have none.
struct NoTable {};

// The checks of every 8-bit table builder: the plain and tilted tables differ only in how many
// columns a table row holds beyond the source width (1 plain, 2 tilted).
template <class D, class Q>
RvpStatus check_tables(const Rvp8u* src, int srcStep, const D* dst, int dstStep, const Q* sq,
                       int sqStep, RvpiSize roi, int extra_cols) {
  constexpr bool kSq = !std::is_same_v<Q, NoTable>;
  if (src == nullptr || dst == nullptr || (kSq && sq == nullptr)) return rvpStsNullPtrErr;
  if (auto st = check_roi(roi)) return st;
  const int64_t cols = int64_t{roi.width} + extra_cols;
  StepRule r_sq = kNoImage;
  if constexpr (kSq) r_sq = table<Q>(sqStep, cols);
  return check_steps({image<Rvp8u>(srcStep, roi), table<D>(dstStep, cols), r_sq});
}

// Plain and squared integral images of an 8-bit source. D is the integral's element type, Q the
// squared table's (NoTable when absent).
template <class D, class Q>
RvpStatus integral_8u(const Rvp8u* src, int srcStep, D* dst, int dstStep, Q* sq, int sqStep,
                      RvpiSize roi, D val,
                      std::conditional_t<std::is_same_v<Q, NoTable>, int, Q> val_sq) {
  constexpr bool kSq = !std::is_same_v<Q, NoTable>;
  if (auto st = check_tables(src, srcStep, dst, dstStep, sq, sqStep, roi, 1)) return st;

  const int w = roi.width;
  fill_row(dst, w + 1, val);
  if constexpr (kSq) fill_row(sq, w + 1, static_cast<Q>(val_sq));
  for (int y = 0; y < roi.height; ++y) {
    const Rvp8u* s = row(src, srcStep, y);
    D* d = row(dst, dstStep, y + 1);
    const D* above = row(static_cast<const D*>(dst), dstStep, y);
    d[0] = val;
    if constexpr (kSq) {
      Q* q = row(sq, sqStep, y + 1);
      const Q* q_above = row(static_cast<const Q*>(sq), sqStep, y);
      q[0] = static_cast<Q>(val_sq);
      if constexpr (std::is_same_v<D, Rvp32s> && std::is_same_v<Q, Rvp64f>) {
        avx2::pair_row_32s64f(s, above, d, q_above, q, w);
      } else if constexpr (std::is_same_v<D, Rvp32s>) {
        avx2::integral_row_32s(s, above, d, w);
        avx2::sqr_row_32s(s, q_above, q, w);
      } else {
        avx2::integral_row_32f(s, above, d, w);
        avx2::sqr_row_64f(s, q_above, q, w);
      }
    } else if constexpr (std::is_same_v<D, Rvp32s>) {
      avx2::integral_row_32s(s, above, d, w);
    } else {
      avx2::integral_row_32f(s, above, d, w);
    }
  }
  return rvpStsNoErr;
}

// Tilted tables: (w + 2) columns and (h + 2) rows; rows 0 and 1 hold only the start values.
template <class D, class Q>
RvpStatus tilted_8u(const Rvp8u* src, int srcStep, D* dst, int dstStep, Q* sq, int sqStep,
                    RvpiSize roi, D val,
                    std::conditional_t<std::is_same_v<Q, NoTable>, int, Q> val_sq) {
  constexpr bool kSq = !std::is_same_v<Q, NoTable>;
  if (auto st = check_tables(src, srcStep, dst, dstStep, sq, sqStep, roi, 2)) return st;

  const int w = roi.width;
  for (int y = 0; y < 2; ++y) {
    fill_row(row(dst, dstStep, y), w + 2, val);
    if constexpr (kSq) fill_row(row(sq, sqStep, y), w + 2, static_cast<Q>(val_sq));
  }
  for (int y = 0; y < roi.height; ++y) {
    const Rvp8u* s = row(src, srcStep, y);
    const D* cd = dst;
    ref::tilted_row<D, false>(s, row(cd, dstStep, y + 1), row(cd, dstStep, y),
                              row(dst, dstStep, y + 2), w);
    if constexpr (kSq) {
      const Q* cq = sq;
      ref::tilted_row<Q, true>(s, row(cq, sqStep, y + 1), row(cq, sqStep, y),
                               row(sq, sqStep, y + 2), w);
    }
  }
  return rvpStsNoErr;
}

// Window deviations. Upright windows read the four corners of the rectangle; tilted windows read
// the tilted tables at the corners of a 45-degree rectangle (see the header), with the table's
// element (1, 1) as the position's origin.
template <class T>
double as_double(T v) {
  return static_cast<double>(v);
}

// Wrapping four-corner difference of 32-bit tables; floating tables in double, in the order
// ((A - B) - C) + D.
template <class T>
double corner_sum(T a, T b, T c, T d) {
  if constexpr (std::is_same_v<T, Rvp32s>) {
    const uint32_t r = static_cast<uint32_t>(a) - static_cast<uint32_t>(b) -
                       static_cast<uint32_t>(c) + static_cast<uint32_t>(d);
    return static_cast<double>(static_cast<Rvp32s>(r));
  } else {
    return ((as_double(a) - as_double(b)) - as_double(c)) + as_double(d);
  }
}

// The squared sum of a 32-bit squared table: squares are never negative, so the wrapped
// difference is read as unsigned (exact for window sums below 2^32).
template <class T>
double corner_sum_sq(T a, T b, T c, T d) {
  if constexpr (std::is_same_v<T, Rvp32s>) {
    const uint32_t r = static_cast<uint32_t>(a) - static_cast<uint32_t>(b) -
                       static_cast<uint32_t>(c) + static_cast<uint32_t>(d);
    return static_cast<double>(r);
  } else {
    return corner_sum(a, b, c, d);
  }
}

template <class S, class Q, class D, bool Tilted>
RvpStatus rect_std_dev(const S* src, int srcStep, const Q* sq, int sqStep, D* dst, int dstStep,
                       RvpiSize roi, RvpiRect rect, int scaleFactor) {
  if (auto st = any_null(src, sq, dst)) return st;
  if (auto st = check_roi(roi)) return st;
  // Columns read per row: up to the window's right edge (one more for the tilted origin).
  const int64_t cols = int64_t{roi.width} + rect.x + rect.width + (Tilted ? 1 : 0);
  if (auto st =
          check_steps({table<S>(srcStep, cols), image<D>(dstStep, roi), table<Q>(sqStep, cols)}))
    return st;
  if (rect.x < 0 || rect.y < 0 || rect.width < 1 || rect.height < 1) return rvpStsBadArgErr;
  // A tilted window reaches rect.height - 1 columns left of rect.x.
  if (Tilted && rect.x + 1 < rect.height) return rvpStsBadArgErr;

  const int x = rect.x, y = rect.y, w = rect.width, h = rect.height;
  // Corner offsets (x, y) of A, B, C, D relative to the position in the table.
  int ax, ay, bx, by, cx, cy, dx, dy;
  double area;
  if (Tilted) {
    ax = x + w - h + 1, ay = y + w + h + 1;
    bx = x - h + 1, by = y + h + 1;
    cx = x + w + 1, cy = y + w + 1;
    dx = x + 1, dy = y + 1;
    area = 2.0 * w * h;
  } else {
    ax = x + w, ay = y + h;
    bx = x, by = y + h;
    cx = x + w, cy = y;
    dx = x, dy = y;
    area = static_cast<double>(w) * h;
  }
  const double inv_area = 1.0 / area;
  for (int j = 0; j < roi.height; ++j) {
    const S* sa = row(src, srcStep, j + ay);
    const S* sb = row(src, srcStep, j + by);
    const S* sc = row(src, srcStep, j + cy);
    const S* sd = row(src, srcStep, j + dy);
    const Q* qa = row(sq, sqStep, j + ay);
    const Q* qb = row(sq, sqStep, j + by);
    const Q* qc = row(sq, sqStep, j + cy);
    const Q* qd = row(sq, sqStep, j + dy);
    D* out = row(dst, dstStep, j);
    for (int i = 0; i < roi.width; ++i) {
      const double s1 = corner_sum(sa[i + ax], sb[i + bx], sc[i + cx], sd[i + dx]);
      const double s2 = corner_sum_sq(qa[i + ax], qb[i + bx], qc[i + cx], qd[i + dx]);
      const float dev = window_deviation(s1, s2, inv_area);
      if constexpr (std::is_same_v<D, Rvp32s>)
        out[i] = saturate<Rvp32s>(round_even(std::ldexp(static_cast<double>(dev), -scaleFactor)));
      else
        out[i] = dev;
    }
  }
  return rvpStsNoErr;
}

}  // namespace
}  // namespace rvp::arith

using rvp::arith::integral_8u;
using rvp::arith::NoTable;
using rvp::arith::rect_std_dev;
using rvp::arith::tilted_8u;

// ---- exports ---------------------------------------------------------------------------------

RvpStatus rvpiIntegral_32f_C1R(const Rvp32f* pSrc, int srcStep, Rvp32f* pDst, int dstStep,
                               RvpiSize roiSize) {
  using namespace rvp;
  if (auto st = any_null(pSrc, pDst)) return st;
  if (auto st = check_roi(roiSize)) return st;
  if (auto st = check_steps({image<Rvp32f>(srcStep, roiSize),
                             arith::table<Rvp32f>(dstStep, int64_t{roiSize.width} + 1)}))
    return st;
  const int w = roiSize.width;
  arith::fill_row(pDst, w + 1, 0.0f);
  for (int y = 0; y < roiSize.height; ++y) {
    const Rvp32f* s = row(pSrc, srcStep, y);
    const Rvp32f* above = row(static_cast<const Rvp32f*>(pDst), dstStep, y);
    Rvp32f* d = row(pDst, dstStep, y + 1);
    d[0] = 0.0f;
    float r = 0.0f;  // the running row sum: one single-precision rounding per pixel, in order
    for (int x = 0; x < w; ++x) {
      r += s[x];
      d[x + 1] = r + above[x + 1];
    }
  }
  return rvpStsNoErr;
}

RvpStatus rvpiIntegral_8u32f_C1R(const Rvp8u* pSrc, int srcStep, Rvp32f* pDst, int dstStep,
                                 RvpiSize roiSize, Rvp32f val) {
  return integral_8u<Rvp32f, NoTable>(pSrc, srcStep, pDst, dstStep, nullptr, 0, roiSize, val, 0);
}
RvpStatus rvpiIntegral_8u32s_C1R(const Rvp8u* pSrc, int srcStep, Rvp32s* pDst, int dstStep,
                                 RvpiSize roiSize, Rvp32s val) {
  return integral_8u<Rvp32s, NoTable>(pSrc, srcStep, pDst, dstStep, nullptr, 0, roiSize, val, 0);
}
RvpStatus rvpiSqrIntegral_8u32s_C1R(const Rvp8u* pSrc, int srcStep, Rvp32s* pDst, int dstStep,
                                    Rvp32s* pSqr, int sqrStep, RvpiSize roiSize, Rvp32s val,
                                    Rvp32s valSqr) {
  return integral_8u<Rvp32s, Rvp32s>(pSrc, srcStep, pDst, dstStep, pSqr, sqrStep, roiSize, val,
                                     valSqr);
}
RvpStatus rvpiSqrIntegral_8u32s64f_C1R(const Rvp8u* pSrc, int srcStep, Rvp32s* pDst, int dstStep,
                                       Rvp64f* pSqr, int sqrStep, RvpiSize roiSize, Rvp32s val,
                                       Rvp64f valSqr) {
  return integral_8u<Rvp32s, Rvp64f>(pSrc, srcStep, pDst, dstStep, pSqr, sqrStep, roiSize, val,
                                     valSqr);
}
RvpStatus rvpiSqrIntegral_8u32f64f_C1R(const Rvp8u* pSrc, int srcStep, Rvp32f* pDst, int dstStep,
                                       Rvp64f* pSqr, int sqrStep, RvpiSize roiSize, Rvp32f val,
                                       Rvp64f valSqr) {
  return integral_8u<Rvp32f, Rvp64f>(pSrc, srcStep, pDst, dstStep, pSqr, sqrStep, roiSize, val,
                                     valSqr);
}

RvpStatus rvpiTiltedIntegral_8u32s_C1R(const Rvp8u* pSrc, int srcStep, Rvp32s* pDst, int dstStep,
                                       RvpiSize roiSize, Rvp32s val) {
  return tilted_8u<Rvp32s, NoTable>(pSrc, srcStep, pDst, dstStep, nullptr, 0, roiSize, val, 0);
}
RvpStatus rvpiTiltedIntegral_8u32f_C1R(const Rvp8u* pSrc, int srcStep, Rvp32f* pDst, int dstStep,
                                       RvpiSize roiSize, Rvp32f val) {
  return tilted_8u<Rvp32f, NoTable>(pSrc, srcStep, pDst, dstStep, nullptr, 0, roiSize, val, 0);
}
RvpStatus rvpiTiltedSqrIntegral_8u32s_C1R(const Rvp8u* pSrc, int srcStep, Rvp32s* pDst, int dstStep,
                                          Rvp32s* pSqr, int sqrStep, RvpiSize roiSize, Rvp32s val,
                                          Rvp32s valSqr) {
  return tilted_8u<Rvp32s, Rvp32s>(pSrc, srcStep, pDst, dstStep, pSqr, sqrStep, roiSize, val,
                                   valSqr);
}
RvpStatus rvpiTiltedSqrIntegral_8u32s64f_C1R(const Rvp8u* pSrc, int srcStep, Rvp32s* pDst,
                                             int dstStep, Rvp64f* pSqr, int sqrStep,
                                             RvpiSize roiSize, Rvp32s val, Rvp64f valSqr) {
  return tilted_8u<Rvp32s, Rvp64f>(pSrc, srcStep, pDst, dstStep, pSqr, sqrStep, roiSize, val,
                                   valSqr);
}
RvpStatus rvpiTiltedSqrIntegral_8u32f64f_C1R(const Rvp8u* pSrc, int srcStep, Rvp32f* pDst,
                                             int dstStep, Rvp64f* pSqr, int sqrStep,
                                             RvpiSize roiSize, Rvp32f val, Rvp64f valSqr) {
  return tilted_8u<Rvp32f, Rvp64f>(pSrc, srcStep, pDst, dstStep, pSqr, sqrStep, roiSize, val,
                                   valSqr);
}

#define RVP_STDDEV_EXPORTS(name, tilted)                                                           \
  RvpStatus rvpi##name##_32f_C1R(const Rvp32f* pSrc, int srcStep, const Rvp64f* pSqr, int sqrStep, \
                                 Rvp32f* pDst, int dstStep, RvpiSize roiSize, RvpiRect rect) {     \
    return rect_std_dev<Rvp32f, Rvp64f, Rvp32f, tilted>(pSrc, srcStep, pSqr, sqrStep, pDst,        \
                                                        dstStep, roiSize, rect, 0);                \
  }                                                                                                \
  RvpStatus rvpi##name##_32s32f_C1R(const Rvp32s* pSrc, int srcStep, const Rvp64f* pSqr,           \
                                    int sqrStep, Rvp32f* pDst, int dstStep, RvpiSize roiSize,      \
                                    RvpiRect rect) {                                               \
    return rect_std_dev<Rvp32s, Rvp64f, Rvp32f, tilted>(pSrc, srcStep, pSqr, sqrStep, pDst,        \
                                                        dstStep, roiSize, rect, 0);                \
  }                                                                                                \
  RvpStatus rvpi##name##_32s_C1RSfs(const Rvp32s* pSrc, int srcStep, const Rvp32s* pSqr,           \
                                    int sqrStep, Rvp32s* pDst, int dstStep, RvpiSize roiSize,      \
                                    RvpiRect rect, int scaleFactor) {                              \
    return rect_std_dev<Rvp32s, Rvp32s, Rvp32s, tilted>(pSrc, srcStep, pSqr, sqrStep, pDst,        \
                                                        dstStep, roiSize, rect, scaleFactor);      \
  }
RVP_STDDEV_EXPORTS(RectStdDev, false)
RVP_STDDEV_EXPORTS(TiltedRectStdDev, true)
#undef RVP_STDDEV_EXPORTS

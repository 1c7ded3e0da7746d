// Pyramidal Lucas-Kanade tracking over pyramid records.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <type_traits>

#include "core/checks.h"
#include "core/image.h"
#include "core/memory.h"
#include "feature/optical_flow_kernels.h"
#include "rvpcv.h"

struct RvpiOptFlowPyrLKState {
  RvpiSize roi;
  int win;
  int elem_size;
  // Work areas, 4-byte elements: the image-1 patch with a one-pixel margin, the window of
  // gradients (twice the central difference) and a window of image-2 samples.
  void* patch;
  void* gx2;
  void* gy2;
  void* jwin;
};

namespace rvp::flow {
namespace {

constexpr double kDetEpsilon = 2.220446049250313e-16;
constexpr double kOscillation = static_cast<double>(0.00034526698f);

// Sampled values: fixed-point integers for 8u/16u, floats for 32f, both intensity * 128.
template <class T>
using Val = std::conditional_t<std::is_same_v<T, Rvp32f>, float, int32_t>;

struct Level {
  const void* data;
  int step;
  int w, h;
};

Bilinear make_bilinear(float ox, float oy) {
  Bilinear b;
  const float fx = std::floor(ox), fy = std::floor(oy);
  b.ix = static_cast<int>(fx);
  b.iy = static_cast<int>(fy);
  b.ax = ox - fx;
  b.ay = oy - fy;
  b.w00 = static_cast<int>(std::lround((1.0f - b.ax) * (1.0f - b.ay) * 16384.0f));
  b.w01 = static_cast<int>(std::lround(b.ax * (1.0f - b.ay) * 16384.0f));
  b.w10 = static_cast<int>(std::lround((1.0f - b.ax) * b.ay * 16384.0f));
  b.w11 = 16384 - b.w00 - b.w01 - b.w10;
  return b;
}

template <class T>
inline Val<T> sample(const T* r0, const T* r1, int x0, int x1, const Bilinear& b) {
  if constexpr (std::is_same_v<T, Rvp32f>) {
    const float w00 = (1.0f - b.ax) * (1.0f - b.ay), w01 = b.ax * (1.0f - b.ay),
                w10 = (1.0f - b.ax) * b.ay, w11 = b.ax * b.ay;
    return (w00 * r0[x0] + w01 * r0[x1] + w10 * r1[x0] + w11 * r1[x1]) * 128.0f;
  } else {
    return sample_fixed(r0[x0], r0[x1], r1[x0], r1[x1], b);
  }
}

// ow x oh samples from origin (b.ix, b.iy) + fraction; coordinates beyond the image read the
// nearest edge pixel.
template <class T>
void sample_window(const Level& L, const Bilinear& b, Val<T>* out, int ow, int oh) {
  const T* base = static_cast<const T*>(L.data);
  const bool inside =
      b.ix >= 0 && b.iy >= 0 && int64_t{b.ix} + ow < L.w && int64_t{b.iy} + oh < L.h;
  if constexpr (std::is_same_v<T, Rvp8u>) {
    if (inside) {
      for (int j = 0; j < oh; ++j) {
        const Rvp8u* r0 = row(base, L.step, b.iy + j) + b.ix;
        avx2::sample_row(r0, r0 + L.step, b, out + j * ow, ow);
      }
      return;
    }
  }
  for (int j = 0; j < oh; ++j) {
    const int y0 = inside ? b.iy + j : std::clamp<int64_t>(int64_t{b.iy} + j, 0, L.h - 1);
    const int y1 = inside ? y0 + 1 : std::clamp<int64_t>(int64_t{b.iy} + j + 1, 0, L.h - 1);
    const T* r0 = row(base, L.step, y0);
    const T* r1 = row(base, L.step, y1);
    for (int k = 0; k < ow; ++k) {
      const int x0 = inside ? b.ix + k : std::clamp<int64_t>(int64_t{b.ix} + k, 0, L.w - 1);
      const int x1 = inside ? x0 + 1 : std::clamp<int64_t>(int64_t{b.ix} + k + 1, 0, L.w - 1);
      out[j * ow + k] = sample<T>(r0, r1, x0, x1, b);
    }
  }
}

// b = sum (I1 - I2) * (2 g), with I2 sampled at b.
template <class T>
void sum_b_any(const Level& L, const Bilinear& b, const Val<T>* iwin, const Val<T>* gx2,
               const Val<T>* gy2, Val<T>* jwin, int win, double* bx, double* by) {
  if constexpr (std::is_same_v<T, Rvp8u>) {
    if (b.ix >= 0 && b.iy >= 0 && int64_t{b.ix} + win < L.w && int64_t{b.iy} + win < L.h) {
      avx2::sum_b(static_cast<const Rvp8u*>(L.data), L.step, b, iwin, gx2, gy2, win, bx, by);
      return;
    }
  }
  sample_window<T>(L, b, jwin, win, win);
  double sx = 0.0, sy = 0.0;
  for (int i = 0; i < win * win; ++i) {
    const double d = static_cast<double>(iwin[i]) - static_cast<double>(jwin[i]);
    sx += d * static_cast<double>(gx2[i]);
    sy += d * static_cast<double>(gy2[i]);
  }
  *bx = sx;
  *by = sy;
}

bool outside(float x, float y, const Level& L, float half) {
  return !(x >= -half && y >= -half && x <= static_cast<float>(L.w - 1) + half &&
           y <= static_cast<float>(L.h - 1) + half);
}

template <class T>
RvpStatus track(const RvpiPyramid* p1, const RvpiPyramid* p2, const RvpiPoint32f* prev,
                RvpiPoint32f* next, Rvp8s* status, Rvp32f* error, int n, int win, int max_lev,
                int max_iter, float threshold, RvpiOptFlowPyrLKState* s) {
  if (p1 == nullptr || p2 == nullptr || prev == nullptr || next == nullptr || status == nullptr ||
      error == nullptr || s == nullptr)
    return rvpStsNullPtrErr;
  if (n < 1 || win < 1 || win != s->win) return rvpStsSizeErr;
  if (max_lev < 0 || max_iter < 1 || !(threshold >= 0.0f)) return rvpStsBadArgErr;
  if (max_lev > p1->level || max_lev > p2->level) return rvpStsBadArgErr;
  for (const RvpiPyramid* p : {p1, p2}) {
    if (any_null(p->pImage, p->pStep, p->pRoi, p->pRate)) return rvpStsNullPtrErr;
    for (int l = 0; l <= max_lev; ++l)
      if (p->pImage[l] == nullptr) return rvpStsNullPtrErr;
  }
  for (int l = 0; l <= max_lev; ++l) {
    const RvpiSize a = p1->pRoi[l], b = p2->pRoi[l];
    if (check_roi(a) || check_roi(b) || a.width != b.width || a.height != b.height)
      return rvpStsSizeErr;
  }
  if (p1->pRoi[0].width > s->roi.width || p1->pRoi[0].height > s->roi.height) return rvpStsSizeErr;
  for (int l = 0; l <= max_lev; ++l)
    if (auto st =
            check_steps({image<T>(p1->pStep[l], p1->pRoi[l]), image<T>(p2->pStep[l], p2->pRoi[l])}))
      return st;
  for (const RvpiPyramid* p : {p1, p2})
    for (int l = 0; l <= max_lev; ++l)
      if (!(p->pRate[l] > 0.0) || !std::isfinite(p->pRate[l])) return rvpStsBadArgErr;
  if (s->elem_size != int{sizeof(T)}) return rvpStsContextMatchErr;

  auto* patch = static_cast<Val<T>*>(s->patch);
  auto* gx2 = static_cast<Val<T>*>(s->gx2);
  auto* gy2 = static_cast<Val<T>*>(s->gy2);
  auto* jwin = static_cast<Val<T>*>(s->jwin);
  const int pw = win + 2;
  const float c = static_cast<float>(win - 1) * 0.5f;
  const int area = win * win;
  Val<T>* ivals = jwin + area;  // the image-1 window itself

  for (int i = 0; i < n; ++i) {
    float nx = 0.0f, ny = 0.0f;
    bool lost = false;
    int lev = max_lev;
    for (lev = max_lev; lev >= 0; --lev) {
      status[i] = static_cast<Rvp8s>(lev);
      const Level L1{p1->pImage[lev], p1->pStep[lev], p1->pRoi[lev].width, p1->pRoi[lev].height};
      const Level L2{p2->pImage[lev], p2->pStep[lev], p2->pRoi[lev].width, p2->pRoi[lev].height};
      const double rate = p1->pRate[lev];
      const float px = static_cast<float>(prev[i].x / rate);
      const float py = static_cast<float>(prev[i].y / rate);
      if (lev == max_lev) {
        nx = px;
        ny = py;
      } else {
        const double up = p1->pRate[lev + 1] / rate;
        nx = static_cast<float>(nx * up);
        ny = static_cast<float>(ny * up);
      }
      if (outside(px, py, L1, c)) {
        lost = true;
        break;
      }
      // Image-1 patch with a one-pixel margin, window values and doubled gradients.
      const Bilinear bi = make_bilinear(px - c - 1.0f, py - c - 1.0f);
      sample_window<T>(L1, bi, patch, pw, pw);
      double gxx = 0.0, gxy = 0.0, gyy = 0.0;
      if constexpr (std::is_same_v<T, Rvp8u>) {
        double sums[3];
        avx2::gradients(patch, win, gx2, gy2, ivals, sums);
        gxx = sums[0], gxy = sums[1], gyy = sums[2];
      } else {
        for (int j = 0; j < win; ++j)
          for (int k = 0; k < win; ++k) {
            const Val<T>* q = patch + (j + 1) * pw + (k + 1);
            const Val<T> dx = q[1] - q[-1], dy = q[pw] - q[-pw];
            gx2[j * win + k] = dx;
            gy2[j * win + k] = dy;
            ivals[j * win + k] = q[0];
            gxx += static_cast<double>(dx) * static_cast<double>(dx);
            gxy += static_cast<double>(dx) * static_cast<double>(dy);
            gyy += static_cast<double>(dy) * static_cast<double>(dy);
          }
      }
      // The gradient is half the doubled difference: G = sums / 4 (exact scaling).
      gxx *= 0.25, gxy *= 0.25, gyy *= 0.25;
      const double det = gxx * gyy - gxy * gxy;
      if (det < kDetEpsilon) {
        lost = true;
        break;
      }
      double pdx = 0.0, pdy = 0.0;
      for (int it = 0; it < max_iter; ++it) {
        if (outside(nx, ny, L2, c)) {
          lost = true;
          break;
        }
        double bx, by;
        sum_b_any<T>(L2, make_bilinear(nx - c, ny - c), ivals, gx2, gy2, jwin, win, &bx, &by);
        bx *= 0.5, by *= 0.5;
        const double dx = (gyy * bx - gxy * by) / det;
        const double dy = (gxx * by - gxy * bx) / det;
        nx += static_cast<float>(dx);
        ny += static_cast<float>(dy);
        if (dx * dx + dy * dy < static_cast<double>(threshold)) break;
        if (it > 0 && std::fabs(dx + pdx) < kOscillation && std::fabs(dy + pdy) < kOscillation) {
          nx -= static_cast<float>(dx * 0.5);
          ny -= static_cast<float>(dy * 0.5);
          break;
        }
        pdx = dx, pdy = dy;
      }
      if (lost) break;
    }
    if (lost) {
      const double rate = p1->pRate[lev];
      next[i] = {static_cast<float>(nx * rate), static_cast<float>(ny * rate)};
      error[i] = -1.0f;
      continue;
    }
    status[i] = 0;
    next[i] = {nx, ny};
    const Level L2{p2->pImage[0], p2->pStep[0], p2->pRoi[0].width, p2->pRoi[0].height};
    sample_window<T>(L2, make_bilinear(nx - c, ny - c), jwin, win, win);
    double sum = 0.0;
    for (int k = 0; k < area; ++k) {
      const double d = static_cast<double>(jwin[k]) - static_cast<double>(ivals[k]);
      sum += d * d;
    }
    error[i] = sum > 0.0 ? static_cast<float>(std::sqrt(sum / area) * 0.0078125) : 0.0f;
  }
  return rvpStsNoErr;
}

template <class T>
RvpStatus init(RvpiSize roi, int win, RvpiOptFlowPyrLKState** pp) {
  if (pp == nullptr) return rvpStsNullPtrErr;
  if (check_roi(roi) || win < 1) return rvpStsSizeErr;
  const int64_t pw = int64_t{win} + 2;
  const int64_t area = int64_t{win} * win;
  const int64_t head = 64;
  const int64_t bytes = head + 4 * (pw * pw + 4 * area) + 4 * 32;
  if (win > 46340 || bytes > std::numeric_limits<int>::max()) return rvpStsMemAllocErr;
  auto* mem = static_cast<uint8_t*>(alloc_bytes(static_cast<int>(bytes)));
  if (mem == nullptr) return rvpStsMemAllocErr;
  auto* s = reinterpret_cast<RvpiOptFlowPyrLKState*>(mem);
  static_assert(sizeof(RvpiOptFlowPyrLKState) <= 64, "state header");
  s->roi = roi;
  s->win = win;
  s->elem_size = sizeof(T);
  uint8_t* p = mem + head;
  s->patch = p;
  p += (4 * pw * pw + 31) / 32 * 32;
  s->gx2 = p;
  p += (4 * area + 31) / 32 * 32;
  s->gy2 = p;
  p += (4 * area + 31) / 32 * 32;
  s->jwin = p;  // the image-2 window, then the image-1 window
  *pp = s;
  return rvpStsNoErr;
}

}  // namespace
}  // namespace rvp::flow

#define RVP_FLOW_EXPORTS(t, T)                                                                   \
  RvpStatus rvpiOpticalFlowPyrLKInitAlloc_##t##_C1R(RvpiSize roiSize, int winSize,               \
                                                    RvpiOptFlowPyrLKState** ppState) {           \
    return rvp::flow::init<T>(roiSize, winSize, ppState);                                        \
  }                                                                                              \
  RvpStatus rvpiOpticalFlowPyrLKFree_##t##_C1R(RvpiOptFlowPyrLKState* pState) {                  \
    rvp::free_bytes(pState);                                                                     \
    return rvpStsNoErr;                                                                          \
  }                                                                                              \
  RvpStatus rvpiOpticalFlowPyrLK_##t##_C1R(                                                      \
      const RvpiPyramid* pPyr1, const RvpiPyramid* pPyr2, const RvpiPoint32f* pPrev,             \
      RvpiPoint32f* pNext, Rvp8s* pStatus, Rvp32f* pError, int numFeat, int winSize, int maxLev, \
      int maxIter, Rvp32f threshold, RvpiOptFlowPyrLKState* pState) {                            \
    return rvp::flow::track<T>(pPyr1, pPyr2, pPrev, pNext, pStatus, pError, numFeat, winSize,    \
                               maxLev, maxIter, threshold, pState);                              \
  }
RVP_FLOW_EXPORTS(8u, Rvp8u)
RVP_FLOW_EXPORTS(16u, Rvp16u)
RVP_FLOW_EXPORTS(32f, Rvp32f)
#undef RVP_FLOW_EXPORTS

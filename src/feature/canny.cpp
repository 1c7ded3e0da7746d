// Canny edge detector: from a pair of derivative images (16s, 32f) or from an 8-bit image whose
// Sobel or Scharr derivatives it computes under the shared border model.
//
// A call runs in two phases over the caller's buffer. Phase one walks the rows once: magnitude
// and direction of row y + 1 into a ring of three magnitude rows, then non-maximum suppression
// of row y into the framed candidate map. Phase two seeds the hysteresis with every strong
// candidate of the map and grows edges depth-first; the stack reuses the memory of phase one.
// The resulting edge set (candidates connected to a strong candidate) does not depend on the
// order of that growth, so deferring the seeds to phase two changes nothing in the output.
// Finally every destination row is written once from the map.
#include "feature/canny.h"

#include <immintrin.h>

#include <algorithm>
#include <cmath>
#include <cstring>

#include "core/checks.h"
#include "core/image.h"
#include "core/memory.h"
#include "core/scratch.h"
#include "feature/canny_kernels.h"
#include "filter/border.h"
#include "rvpcv.h"

namespace rvp::canny {

int64_t buffer_bytes(RvpiSize roi) {
  const int64_t framed = (int64_t{roi.width} + 2) * (int64_t{roi.height} + 2);
  const int64_t per = wide_stack(roi) ? 9 : 5;
  const int64_t total = per * framed + 160 + 16 * int64_t{roi.width};
  return total > INT32_MAX ? -1 : total;
}

int64_t border_buffer_bytes(RvpiSize roi, int m) {
  const int64_t a = int64_t{roi.width} - 1 + m;
  const int64_t b = (int64_t{roi.height} - 1 + m) * a;
  int64_t total = round_up(16 * a, 32) + round_up(b, 32) + round_up(4 * b, 32) + 64;
  if (std::min(roi.width, roi.height) < m) total += round_up(b, 32);
  return total > INT32_MAX ? -1 : total;
}

namespace {

struct Work {
  uint8_t* map;
  float* mag;    // three rows of width + 2
  uint8_t* dir;  // two rows of width
  int16_t* dx;   // bordered form: one row each
  int16_t* dy;
  uint8_t* reuse;  // start of the memory phase two takes for its stack
  uint8_t* end;
};

Work carve(uint8_t* buffer, int64_t total, RvpiSize roi, bool bordered) {
  const int64_t w = roi.width, ms = w + 2;
  ScratchCarver c(buffer);
  Work k{};
  k.map = c.take<uint8_t>(ms * (int64_t{roi.height} + 2));
  k.reuse = const_cast<uint8_t*>(c.cursor());
  k.mag = c.take<float>(3 * ms);
  k.dir = c.take<uint8_t>(2 * w);
  if (bordered) {
    k.dx = c.take<int16_t>(w);
    k.dy = c.take<int16_t>(w);
  }
  k.end = buffer + total;
  return k;
}

}  // namespace

int64_t phase_one_bytes(RvpiSize roi, bool bordered) {
  const int64_t w = roi.width, ms = w + 2;
  int64_t n = 31 + round_up(ms * (int64_t{roi.height} + 2), 32) + round_up(12 * ms, 32) +
              round_up(2 * w, 32);
  if (bordered) n += 2 * round_up(2 * w, 32);
  return n;
}

template <class C>
void hysteresis(uint8_t* map, int width, int height, C* stack, int64_t capacity) {
  const int64_t ms = int64_t{width} + 2, n = ms * (int64_t{height} + 2);
  static constexpr int kDr[8] = {-1, -1, -1, 0, 0, 1, 1, 1};
  static constexpr int kDc[8] = {-1, 0, 1, -1, 1, -1, 0, 1};
  bool overflow;
  do {
    overflow = false;
    for (int64_t i = avx2::find_strong(map, 0, n); i < n; i = avx2::find_strong(map, i + 1, n)) {
      map[i] = kEdge;
      int64_t sp = 0;
      stack[0] = static_cast<C>(i / ms);
      stack[1] = static_cast<C>(i % ms);
      sp = 1;
      while (sp > 0) {
        --sp;
        const int64_t r = stack[2 * sp], c = stack[2 * sp + 1];
        uint8_t* p = map + r * ms + c;
        for (int k = 0; k < 8; ++k) {
          uint8_t* q = p + kDr[k] * ms + kDc[k];
          if (static_cast<uint8_t>(*q - kWeak) > 1) continue;  // not a candidate, or an edge
          if (sp < capacity) {
            *q = kEdge;
            stack[2 * sp] = static_cast<C>(r + kDr[k]);
            stack[2 * sp + 1] = static_cast<C>(c + kDc[k]);
            ++sp;
          } else {
            *q = kStrong;  // reached but not expanded: the next scan picks it up
            overflow = true;
          }
        }
      }
    }
  } while (overflow);
}

template void hysteresis<uint16_t>(uint8_t*, int, int, uint16_t*, int64_t);
template void hysteresis<uint32_t>(uint8_t*, int, int, uint32_t*, int64_t);

namespace {

template <class T>
struct DerivativeImages {
  const T* dx;
  int dx_step;
  const T* dy;
  int dy_step;
  int width;
  float low;
  void magnitude(int y, float* mag, uint8_t* dir) const {
    avx2::magnitude_row(row(dx, dx_step, y), row(dy, dy_step, y), width, low, Norm::L1, mag, dir);
  }
};

template <class F>
struct BorderedImage {
  const uint8_t* src;
  int step;
  RvpiSize roi;
  filter::Border border;
  float low;
  Norm norm;
  int16_t* dx;
  int16_t* dy;
  void magnitude(int y, float* mag, uint8_t* dir) const {
    constexpr int r = F::K / 2;
    DerivRows s{};
    for (int k = 0; k < F::K; ++k) {
      const int sy = filter::map_index(y + k - r, roi.height, border.base,
                                       border.in_mem(filter::kTop), border.in_mem(filter::kBottom));
      s.rows[k] = row(src, step, sy);
    }
    s.width = roi.width;
    s.in_memory = border.in_mem(filter::kLeft);
    avx2::derivative_row<F>(s, dx, dy);
    avx2::magnitude_row(dx, dy, roi.width, low, norm, mag, dir);
  }
};

template <class Source>
void detect(const Source& src, RvpiSize roi, float high, Rvp8u* dst, int dst_step, const Work& k) {
  const int w = roi.width, h = roi.height;
  const int64_t ms = int64_t{w} + 2;
  std::memset(k.map, 0, ms);
  std::memset(k.map + (int64_t{h} + 1) * ms, 0, ms);
  float* prev = k.mag;
  float* cur = k.mag + ms;
  float* next = k.mag + 2 * ms;
  std::fill(prev, prev + ms, 0.0f);  // the row above the region
  cur[0] = cur[w + 1] = next[0] = next[w + 1] = 0.0f;
  src.magnitude(0, cur + 1, k.dir);
  for (int y = 0; y < h; ++y) {
    if (y + 1 < h)
      src.magnitude(y + 1, next + 1, k.dir + ((y + 1) & 1) * int64_t{w});
    else
      std::fill(next, next + ms, 0.0f);
    uint8_t* mrow = k.map + (int64_t{y} + 1) * ms;
    mrow[0] = mrow[w + 1] = kNone;
    avx2::suppress_row(prev + 1, cur + 1, next + 1, k.dir + (y & 1) * int64_t{w}, w, high,
                       mrow + 1);
    float* t = prev;
    prev = cur;
    cur = next;
    next = t;
  }

  // Phase two: the stack takes everything after the map.
  if (wide_stack(roi)) {
    auto* stack = reinterpret_cast<uint32_t*>(k.reuse);
    hysteresis(k.map, w, h, stack, (k.end - k.reuse) / int64_t{2 * sizeof(uint32_t)});
  } else {
    auto* stack = reinterpret_cast<uint16_t*>(k.reuse);
    hysteresis(k.map, w, h, stack, (k.end - k.reuse) / int64_t{2 * sizeof(uint16_t)});
  }

  const bool stream = streaming_for(int64_t{w} * h);
  for (int y = 0; y < h; ++y)
    avx2::output_row(k.map + (int64_t{y} + 1) * ms + 1, w, row(dst, dst_step, y), stream);
  if (stream) _mm_sfence();
}

RvpStatus check_thresholds(float low, float high) {
  if (std::isnan(low) || std::isnan(high) || low < 0.0f || low > high) return rvpStsBadArgErr;
  return rvpStsNoErr;
}

template <class T>
RvpStatus canny_derivatives(const T* dx, int dx_step, const T* dy, int dy_step, Rvp8u* dst,
                            int dst_step, RvpiSize roi, float low, float high, Rvp8u* buffer) {
  if (auto st = any_null(dx, dy, dst, buffer)) return st;
  if (auto st = check_roi(roi)) return st;
  const int64_t total = buffer_bytes(roi);
  if (total < 0) return rvpStsSizeErr;  // no buffer of that size can exist
  if (auto st = check_steps(
          {image<T>(dx_step, roi), image<T>(dy_step, roi), image<Rvp8u>(dst_step, roi)}))
    return st;
  if (auto st = check_thresholds(low, high)) return st;
  const Work k = carve(buffer, total, roi, false);
  detect(DerivativeImages<T>{dx, dx_step, dy, dy_step, roi.width, low}, roi, high, dst, dst_step,
         k);
  return rvpStsNoErr;
}

RvpStatus mask_side(int mask, int* m) {
  if (mask != 33 && mask != 55) return rvpStsMaskSizeErr;
  *m = mask == 55 ? 5 : 3;
  return rvpStsNoErr;
}

RvpStatus canny_border(const Rvp8u* src, int src_step, Rvp8u* dst, int dst_step, RvpiSize roi,
                       int filter_type, int mask, int border_type, float low, float high, int norm,
                       Rvp8u* buffer) {
  if (auto st = any_null(src, dst, buffer)) return st;
  if (auto st = check_roi(roi)) return st;
  // With the size checks: a region whose buffer size would not fit 32 bits (judged for the
  // 5x5 size when the mask asks for it, else for the 3x3 size).
  if (border_buffer_bytes(roi, mask == 55 ? 5 : 3) < 0) return rvpStsSizeErr;
  if (auto st = check_steps({image<Rvp8u>(src_step, roi), image<Rvp8u>(dst_step, roi)})) return st;
  int m = 3;
  if (auto st = mask_side(mask, &m)) return st;
  if (auto st = filter::check_border(border_type, filter::BorderFamily::Canny)) return st;
  if (filter_type != rvpCannySobel && filter_type != rvpCannyScharr) return rvpStsBadArgErr;
  if (filter_type == rvpCannyScharr && m != 3) return rvpStsMaskSizeErr;
  if (norm != rvpCannyNormL1 && norm != rvpCannyNormL2) return rvpStsBadArgErr;
  if (auto st = check_thresholds(low, high)) return st;
  const int64_t total = border_buffer_bytes(roi, m);

  const Work k = carve(buffer, total, roi, true);
  const filter::Border border = filter::resolve_border(border_type);
  const Norm nk = norm == rvpCannyNormL2 ? Norm::L2 : Norm::L1;
  auto run = [&](auto filter_taps) {
    using F = decltype(filter_taps);
    detect(BorderedImage<F>{src, src_step, roi, border, low, nk, k.dx, k.dy}, roi, high, dst,
           dst_step, k);
  };
  if (filter_type == rvpCannyScharr)
    run(Scharr3{});
  else if (m == 5)
    run(Sobel5{});
  else
    run(Sobel3{});
  return rvpStsNoErr;
}

RvpStatus report_size(int64_t bytes, int* out) {
  if (bytes < 0) return rvpStsSizeErr;
  *out = static_cast<int>(bytes);
  return rvpStsNoErr;
}

}  // namespace
}  // namespace rvp::canny

using namespace rvp::canny;

RvpStatus rvpiCannyGetSize(RvpiSize roiSize, int* pBufferSize) {
  if (auto st = rvp::any_null(pBufferSize)) return st;
  if (auto st = rvp::check_roi(roiSize)) return st;
  return report_size(buffer_bytes(roiSize), pBufferSize);
}

RvpStatus rvpiCannyBorderGetSize(RvpiSize roiSize, int mask, int* pBufferSize) {
  if (auto st = rvp::any_null(pBufferSize)) return st;
  if (auto st = rvp::check_roi(roiSize)) return st;
  int m = 3;
  if (auto st = mask_side(mask, &m)) return st;
  return report_size(border_buffer_bytes(roiSize, m), pBufferSize);
}

RvpStatus rvpiCanny_16s8u_C1R(const Rvp16s* pSrcDx, int srcDxStep, const Rvp16s* pSrcDy,
                              int srcDyStep, Rvp8u* pDst, int dstStep, RvpiSize roiSize,
                              Rvp32f lowThresh, Rvp32f highThresh, Rvp8u* pBuffer) {
  return canny_derivatives(pSrcDx, srcDxStep, pSrcDy, srcDyStep, pDst, dstStep, roiSize, lowThresh,
                           highThresh, pBuffer);
}

RvpStatus rvpiCanny_32f8u_C1R(const Rvp32f* pSrcDx, int srcDxStep, const Rvp32f* pSrcDy,
                              int srcDyStep, Rvp8u* pDst, int dstStep, RvpiSize roiSize,
                              Rvp32f lowThresh, Rvp32f highThresh, Rvp8u* pBuffer) {
  return canny_derivatives(pSrcDx, srcDxStep, pSrcDy, srcDyStep, pDst, dstStep, roiSize, lowThresh,
                           highThresh, pBuffer);
}

RvpStatus rvpiCannyBorder_8u_C1R(const Rvp8u* pSrc, int srcStep, Rvp8u* pDst, int dstStep,
                                 RvpiSize roiSize, int filterType, int mask,
                                 RvpiBorderType borderType, Rvp8u borderValue, Rvp32f lowThresh,
                                 Rvp32f highThresh, int norm, Rvp8u* pBuffer) {
  (void)borderValue;  // borders 1 and 6 never read it
  return canny_border(pSrc, srcStep, pDst, dstStep, roiSize, filterType, mask, borderType,
                      lowThresh, highThresh, norm, pBuffer);
}

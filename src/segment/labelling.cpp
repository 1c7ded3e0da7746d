// Connected-component labelling (LabelMarkers) and speckle marking (MarkSpeckles).
#include <immintrin.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <type_traits>

#include "core/checks.h"
#include "rvpcv.h"
#include "segment/flood_fill_core.h"
#include "segment/labelling_internal.h"

namespace rvp::seg {

namespace {

// Emits the runs whose edges are marked in `edges` (bit i: pixel base+i differs from the pixel
// before it). `open` tracks whether a run is in progress across calls.
inline void emit_edges(uint64_t edges, int base, bool& open, int32_t*& out) {
  while (edges) {
    const int i = __builtin_ctzll(edges);
    edges &= edges - 1;
    if (!open) {
      *out++ = base + i;
    } else {
      *out++ = base + i - 1;
    }
    open = !open;
  }
}

// Nonzero mask of 32 pixels.
inline uint32_t nonzero32(const Rvp8u* p) {
  const __m256i v = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
  return ~static_cast<uint32_t>(_mm256_movemask_epi8(_mm256_cmpeq_epi8(v, _mm256_setzero_si256())));
}
inline uint32_t nonzero32(const Rvp16u* p) {
  const __m256i z = _mm256_setzero_si256();
  const __m256i a = _mm256_cmpeq_epi16(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(p)), z);
  const __m256i b =
      _mm256_cmpeq_epi16(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(p + 16)), z);
  const __m256i packed = _mm256_permute4x64_epi64(_mm256_packs_epi16(a, b), 0xD8);
  return ~static_cast<uint32_t>(_mm256_movemask_epi8(packed));
}

template <class S>
int row_runs_impl(const S* row, int w, int32_t* runs) {
  int32_t* out = runs;
  bool open = false;
  uint32_t prev = 0;  // the previous pixel's bit, shifted into each block
  int x = 0;
  for (; x + 32 <= w; x += 32) {
    const uint32_t m = nonzero32(row + x);
    const uint64_t edges = (m ^ ((uint64_t(m) << 1) | prev)) & 0xffffffffu;
    emit_edges(edges, x, open, out);
    prev = m >> 31;
  }
  for (; x < w; ++x) {
    const uint32_t b = row[x] != 0;
    if (b != prev) emit_edges(1, x, open, out);
    prev = b;
  }
  if (open) *out++ = w - 1;
  return int(out - runs) / 2;
}

inline int32_t find_root(int32_t* parent, int32_t x) {
  while (parent[x] != x) {
    parent[x] = parent[parent[x]];
    x = parent[x];
  }
  return x;
}

template <class D>
constexpr D marker_of() {
  return std::numeric_limits<D>::max();
}

}  // namespace

int row_runs(const Rvp8u* row, int w, int32_t* runs) { return row_runs_impl(row, w, runs); }
int row_runs(const Rvp16u* row, int w, int32_t* runs) { return row_runs_impl(row, w, runs); }

template <class S, class D>
bool label_by_runs(const S* src, int src_step, D* dst, int dst_step, int w, int h, int min_label,
                   int max_label, bool conn8, uint8_t* buf, int64_t buf_bytes, int* count) {
  SpanEntry local[kLocalSpans];
  const int64_t fill_fit = carve_stack(buf, buf_bytes, local).fit;

  // Carve: two rows of runs, then the per-run parent array (later the per-run region index),
  // then per-region run counts.
  const int64_t pad = int64_t((-reinterpret_cast<uintptr_t>(buf)) & 31u);
  const int64_t row_cap = (int64_t(w) + 1) / 2;
  const int64_t row_bytes = (row_cap * 2 * 4 + 31) / 32 * 32;
  const int64_t rest = buf_bytes - pad - 2 * row_bytes;
  if (rest < 8) return false;
  int32_t* prev_runs = reinterpret_cast<int32_t*>(buf + pad);
  int32_t* cur_runs = reinterpret_cast<int32_t*>(buf + pad + row_bytes);
  int32_t* parent = reinterpret_cast<int32_t*>(buf + pad + 2 * row_bytes);
  const int64_t cap = rest / 4;  // parent entries + region counts share this

  auto src_row = [&](int y) {
    return reinterpret_cast<const S*>(reinterpret_cast<const uint8_t*>(src) +
                                      std::ptrdiff_t(src_step) * y);
  };
  const int ext = conn8 ? 1 : 0;
  int64_t total = 0;
  int np = 0;
  int64_t prev_base = 0;
  for (int y = 0; y < h; ++y) {
    if (total + row_cap > cap) return false;
    const int nc = row_runs(src_row(y), w, cur_runs);
    const int64_t base = total;
    int j = 0;
    for (int i = 0; i < nc; ++i) {
      const int32_t s = cur_runs[2 * i] - ext, e = cur_runs[2 * i + 1] + ext;
      const int32_t me = int32_t(base + i);
      parent[me] = me;
      while (j < np && prev_runs[2 * j + 1] < s) ++j;
      for (int k = j; k < np && prev_runs[2 * k] <= e; ++k) {
        const int32_t a = find_root(parent, int32_t(prev_base + k));
        const int32_t b = find_root(parent, me);
        if (a < b)
          parent[b] = a;
        else if (b < a)
          parent[a] = b;
      }
    }
    total += nc;
    prev_base = base;
    np = nc;
    int32_t* t = prev_runs;
    prev_runs = cur_runs;
    cur_runs = t;
  }
  // Number the regions by root order; parent[] becomes the region index of each run.
  int32_t regions = 0;
  for (int64_t i = 0; i < total; ++i) {
    const int32_t p = parent[i];
    parent[i] = p == i ? regions++ : parent[p];
  }
  if (total + regions > cap) return false;
  int32_t* runs_of = parent + total;
  std::memset(runs_of, 0, size_t(regions) * 4);
  for (int64_t i = 0; i < total; ++i)
    if (++runs_of[parent[i]] > fill_fit) return false;

  // Second pass: the runs again, each written with its region's label.
  const int64_t span = int64_t(max_label) - min_label + 1;
  int64_t run = 0;
  for (int y = 0; y < h; ++y) {
    const int nc = row_runs(src_row(y), w, cur_runs);
    D* d = reinterpret_cast<D*>(reinterpret_cast<uint8_t*>(dst) + std::ptrdiff_t(dst_step) * y);
    int x = 0;
    for (int i = 0; i < nc; ++i, ++run) {
      const int s = cur_runs[2 * i], e = cur_runs[2 * i + 1];
      if constexpr (!std::is_same_v<S, D>) {
        for (; x < s; ++x) d[x] = 0;
      }
      const D label = static_cast<D>(min_label + parent[run] % span);
      for (x = s; x <= e; ++x) d[x] = label;
    }
    if constexpr (!std::is_same_v<S, D>) {
      for (; x < w; ++x) d[x] = 0;
    }
  }
  *count = regions;
  return true;
}

template <class D>
int label_by_fills(D* img, int step, int w, int h, D marker, int min_label, int max_label,
                   bool conn8, uint8_t* buf, int64_t buf_bytes) {
  SpanEntry local[kLocalSpans];
  const StackStorage s = carve_stack(buf, buf_bytes, local);
  PlainAccept<D, 1> ok{{marker}};
  int count = 0;
  int label = min_label;
  for (int y = 0; y < h; ++y) {
    D* r = reinterpret_cast<D*>(reinterpret_cast<uint8_t*>(img) + std::ptrdiff_t(step) * y);
    for (int x = 0; x < w; ++x) {
      if (r[x] != marker) continue;
      const D nv = static_cast<D>(label);
      SpanStack stack(s.base, s.fit, 0);
      FillStats fs;
      value_fill<D, 1>(img, step, w, h, x, y, conn8, ok, &nv, stack, fs);
      ++count;
      label = label + 1 > max_label ? min_label : label + 1;
    }
  }
  return count;
}

template bool label_by_runs<Rvp8u, Rvp8u>(const Rvp8u*, int, Rvp8u*, int, int, int, int, int, bool,
                                          uint8_t*, int64_t, int*);
template bool label_by_runs<Rvp16u, Rvp16u>(const Rvp16u*, int, Rvp16u*, int, int, int, int, int,
                                            bool, uint8_t*, int64_t, int*);
template bool label_by_runs<Rvp8u, Rvp32s>(const Rvp8u*, int, Rvp32s*, int, int, int, int, int,
                                           bool, uint8_t*, int64_t, int*);
template int label_by_fills<Rvp8u>(Rvp8u*, int, int, int, Rvp8u, int, int, bool, uint8_t*, int64_t);
template int label_by_fills<Rvp16u>(Rvp16u*, int, int, int, Rvp16u, int, int, bool, uint8_t*,
                                    int64_t);
template int label_by_fills<Rvp32s>(Rvp32s*, int, int, int, Rvp32s, int, int, bool, uint8_t*,
                                    int64_t);

namespace {

// In-place labelling of 8u and 16u markers.
template <class T>
RvpStatus label_markers(T* img, int step, RvpiSize roi, int min_label, int max_label, int norm,
                        int* number, Rvp8u* buf) {
  if (img == nullptr || buf == nullptr || number == nullptr) return rvpStsNullPtrErr;
  if (auto st = check_roi(roi)) return st;
  if (auto st = check_steps({image<T>(step, roi)})) return st;
  if (min_label < 1 || max_label >= int(marker_of<T>()) || min_label > max_label)
    return rvpStsBadArgErr;
  if (norm != 0 && norm != 1) return rvpStsBadArgErr;

  const int w = roi.width, h = roi.height;
  const bool conn8 = norm == 0;
  const int64_t bytes = fill_buffer_bytes(roi);
  int count = 0;
  if (label_by_runs<T, T>(img, step, img, step, w, h, min_label, max_label, conn8, buf, bytes,
                          &count)) {
    *number = count;
    return rvpStsNoErr;
  }
  for (int y = 0; y < h; ++y) {
    T* r = reinterpret_cast<T*>(reinterpret_cast<uint8_t*>(img) + std::ptrdiff_t(step) * y);
    for (int x = 0; x < w; ++x) r[x] = r[x] ? marker_of<T>() : T(0);
  }
  *number =
      label_by_fills<T>(img, step, w, h, marker_of<T>(), min_label, max_label, conn8, buf, bytes);
  return rvpStsNoErr;
}

RvpStatus label_markers_8u32s(const Rvp8u* src, int src_step, Rvp32s* dst, int dst_step,
                              RvpiSize roi, int min_label, int max_label, int norm, int* number,
                              Rvp8u* buf) {
  if (src == nullptr || dst == nullptr || number == nullptr || buf == nullptr)
    return rvpStsNullPtrErr;
  if (auto st = check_roi(roi)) return st;
  if (auto st = check_steps({image<Rvp8u>(src_step, roi), image<Rvp32s>(dst_step, roi)})) return st;
  if (min_label < 1 || max_label >= marker_of<Rvp32s>() || min_label > max_label ||
      (norm != 0 && norm != 1))
    return rvpStsBadArgErr;

  const int w = roi.width, h = roi.height;
  const bool conn8 = norm == 0;
  const int64_t bytes = fill_buffer_bytes(roi);
  int count = 0;
  if (label_by_runs<Rvp8u, Rvp32s>(src, src_step, dst, dst_step, w, h, min_label, max_label, conn8,
                                   buf, bytes, &count)) {
    *number = count;
    return rvpStsNoErr;
  }
  for (int y = 0; y < h; ++y) {
    const Rvp8u* s = src + std::ptrdiff_t(src_step) * y;
    Rvp32s* d =
        reinterpret_cast<Rvp32s*>(reinterpret_cast<uint8_t*>(dst) + std::ptrdiff_t(dst_step) * y);
    for (int x = 0; x < w; ++x) d[x] = s[x] ? marker_of<Rvp32s>() : 0;
  }
  *number = label_by_fills<Rvp32s>(dst, dst_step, w, h, marker_of<Rvp32s>(), min_label, max_label,
                                   conn8, buf, bytes);
  return rvpStsNoErr;
}

// ---- speckles ---------------------------------------------------------------------------------

int64_t speckle_buffer_bytes(RvpiSize roi) {
  const int64_t v = 13 * int64_t(roi.width) * roi.height + 64;
  return v > INT_MAX ? -1 : v;
}

// |a - b| <= d in the type's difference arithmetic: 32-bit integers, or single precision.
template <class T>
inline bool close_enough(T a, T b, T d) {
  if constexpr (std::is_floating_point_v<T>) {
    return std::fabs(a - b) <= d;
  } else {
    const int32_t diff = int32_t(a) - int32_t(b);
    return (diff < 0 ? -diff : diff) <= int32_t(d);
  }
}

// Union-find with the smaller pixel index as root: a region's root is its first pixel in
// raster order.
inline uint32_t find_pixel_root(uint32_t* parent, uint32_t x) {
  while (parent[x] != x) {
    parent[x] = parent[parent[x]];
    x = parent[x];
  }
  return x;
}

// Regions are the 4-connected components of "neighbours differ by at most maxPixDiff and
// neither equals speckleVal"; the relation is symmetric, so any traversal finds the same
// regions. Three raster passes over a per-pixel union-find (instead of a pixel-by-pixel
// search) keep every memory access sequential: join each pixel with its left and upper
// neighbours, then resolve roots and count region sizes, then overwrite small regions.
template <class T>
RvpStatus mark_speckles(T* img, int step, RvpiSize roi, T speckle_val, int max_size, T max_diff,
                        int norm, Rvp8u* buf) {
  if (img == nullptr || buf == nullptr) return rvpStsNullPtrErr;
  if (auto st = check_roi(roi)) return st;
  if (speckle_buffer_bytes(roi) < 0) return rvpStsSizeErr;
  if (auto st = check_steps({image<T>(step, roi)})) return st;
  if (norm != 1) return rvpStsModeErr;

  const int w = roi.width, h = roi.height;
  const int64_t n = int64_t(w) * h;
  uint8_t* base = buf + ((-reinterpret_cast<uintptr_t>(buf)) & 63u);
  uint32_t* size = reinterpret_cast<uint32_t*>(base);            // region sizes, by root
  uint32_t* parent = reinterpret_cast<uint32_t*>(base + 8 * n);  // union-find, per pixel
  auto rowp = [&](int y) {
    return reinterpret_cast<T*>(reinterpret_cast<uint8_t*>(img) + std::ptrdiff_t(step) * y);
  };
  auto joins = [&](T a, T b) { return !(b == speckle_val) && close_enough(a, b, max_diff); };

  // Pass 1: union with the left and upper neighbours. Pixels equal to speckleVal are roots of
  // their own and are never joined or counted.
  for (int y = 0; y < h; ++y) {
    const T* r = rowp(y);
    const T* up = y > 0 ? rowp(y - 1) : nullptr;
    uint32_t* pr = parent + int64_t(y) * w;
    const uint32_t row0 = uint32_t(int64_t(y) * w);
    for (int x = 0; x < w; ++x) {
      const T v = r[x];
      uint32_t me = row0 + uint32_t(x);
      pr[x] = me;
      if (v == speckle_val) continue;
      if (up != nullptr && joins(v, up[x])) {
        me = find_pixel_root(parent, me - uint32_t(w));
        pr[x] = me;
      }
      if (x > 0 && joins(v, r[x - 1])) {
        const uint32_t a = find_pixel_root(parent, row0 + uint32_t(x) - 1);
        if (a < me) {
          parent[me] = a;
          pr[x] = a;
        } else if (me < a) {
          parent[a] = me;
        }
      }
    }
  }
  // Pass 2: every pixel points straight at its root (parents precede children in raster
  // order, so one forward sweep suffices); count sizes at the roots.
  std::memset(size, 0, size_t(n) * 4);
  for (int y = 0; y < h; ++y) {
    const T* r = rowp(y);
    uint32_t* pr = parent + int64_t(y) * w;
    for (int x = 0; x < w; ++x) {
      const uint32_t root = parent[pr[x]];
      pr[x] = root;
      if (!(r[x] == speckle_val)) ++size[root];
    }
  }
  // Pass 3: overwrite the pixels of small regions.
  if (max_size <= 0) return rvpStsNoErr;
  for (int y = 0; y < h; ++y) {
    T* r = rowp(y);
    const uint32_t* pr = parent + int64_t(y) * w;
    for (int x = 0; x < w; ++x)
      if (size[pr[x]] != 0 && size[pr[x]] <= uint32_t(max_size)) r[x] = speckle_val;
  }
  return rvpStsNoErr;
}

}  // namespace
}  // namespace rvp::seg

using rvp::seg::label_markers;

RvpStatus rvpiLabelMarkersGetBufferSize_8u_C1R(RvpiSize roiSize, int* pBufferSize) {
  return rvpiFloodFillGetSize(roiSize, pBufferSize);
}
RvpStatus rvpiLabelMarkersGetBufferSize_16u_C1R(RvpiSize roiSize, int* pBufferSize) {
  return rvpiFloodFillGetSize(roiSize, pBufferSize);
}
RvpStatus rvpiLabelMarkersGetBufferSize_8u32s_C1R(RvpiSize roiSize, int* pBufferSize) {
  return rvpiFloodFillGetSize(roiSize, pBufferSize);
}

RvpStatus rvpiLabelMarkers_8u_C1IR(Rvp8u* pMarker, int markerStep, RvpiSize roiSize, int minLabel,
                                   int maxLabel, int norm, int* pNumber, Rvp8u* pBuffer) {
  return label_markers<Rvp8u>(pMarker, markerStep, roiSize, minLabel, maxLabel, norm, pNumber,
                              pBuffer);
}
RvpStatus rvpiLabelMarkers_16u_C1IR(Rvp16u* pMarker, int markerStep, RvpiSize roiSize, int minLabel,
                                    int maxLabel, int norm, int* pNumber, Rvp8u* pBuffer) {
  return label_markers<Rvp16u>(pMarker, markerStep, roiSize, minLabel, maxLabel, norm, pNumber,
                               pBuffer);
}
RvpStatus rvpiLabelMarkers_8u32s_C1R(const Rvp8u* pSrc, int srcStep, Rvp32s* pDst, int dstStep,
                                     RvpiSize roiSize, int minLabel, int maxLabel, int norm,
                                     int* pNumber, Rvp8u* pBuffer) {
  return rvp::seg::label_markers_8u32s(pSrc, srcStep, pDst, dstStep, roiSize, minLabel, maxLabel,
                                       norm, pNumber, pBuffer);
}

RvpStatus rvpiMarkSpecklesGetBufferSize(RvpiSize roiSize, RvpDataType dataType, int numChannels,
                                        int* pBufferSize) {
  if (pBufferSize == nullptr) return rvpStsNullPtrErr;
  if (auto st = rvp::check_roi(roiSize)) return st;
  const int64_t bytes = rvp::seg::speckle_buffer_bytes(roiSize);
  if (bytes < 0) return rvpStsSizeErr;
  if (dataType != rvp8u && dataType != rvp16u && dataType != rvp16s && dataType != rvp32f)
    return rvpStsDataTypeErr;
  if (numChannels != 1) return rvpStsNumChannelsErr;
  *pBufferSize = static_cast<int>(bytes);
  return rvpStsNoErr;
}

#define RVP_SPECKLES(t, T)                                                                        \
  RvpStatus rvpiMarkSpeckles_##t##_C1IR(T* pImage, int imageStep, RvpiSize roiSize, T speckleVal, \
                                        int maxSpeckleSize, T maxPixDiff, int norm,               \
                                        Rvp8u* pBuffer) {                                         \
    return rvp::seg::mark_speckles<T>(pImage, imageStep, roiSize, speckleVal, maxSpeckleSize,     \
                                      maxPixDiff, norm, pBuffer);                                 \
  }
RVP_SPECKLES(8u, Rvp8u)
RVP_SPECKLES(16u, Rvp16u)
RVP_SPECKLES(16s, Rvp16s)
RVP_SPECKLES(32f, Rvp32f)

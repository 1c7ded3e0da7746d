// Per-pixel kernels of the Gaussian-mixture background model. The scalar reference (ref::)
// states the arithmetic one pixel at a time; the AVX2 version (avx2::) runs eight neighbouring
// pixels in the lanes of one register, each lane following its own control flow through masks,
// and must match the reference bit for bit in the mask and in every byte of the state.
//
// State planes (P = pixels per plane = W·H, pixel index p = y·W + x):
//   modes[p]                 number of components in use (one byte)
//   weights[k·P + p]         weight of the pixel's k-th strongest component
//   order[k·P + p]           data slot holding that component
//   data[(s·P + p)·4 + c]    slot s: mean of channels 0, 1, 2 (c < 3) and the variance (c = 3)
// Only weights and order entries are exchanged when components change rank; data never moves.
#pragma once

#include <immintrin.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <utility>

#include "core/numeric.h"
#include "core/scratch.h"
#include "rvpcv.h"

namespace rvp::bgfg {

struct GmmPlanes {
  Rvp8u* modes;
  float* weights;
  int32_t* order;
  float* data;
  int64_t plane;  // pixels per plane
  int max_gauss;  // planes per kind
};

// Per-call constants, all single precision as the update uses them.
struct GmmParams {
  float alpha, decay, prune;
  float var_init, var_min, var_max;
  float var_threshold, bg_ratio, var_threshold_gen, shadow_tau;
  int n_gauss;  // components in use, 1 .. max_gauss
  Rvp8u shadow_value;
  bool shadow_detection;
};

// The state's header, at the buffer's first 32-byte boundary; the planes follow it.
struct GmmHeader {
  int32_t frame_count;
  int32_t max_gauss;
  int32_t width, height;
  RvpFGMModel model;
};
static_assert(sizeof(GmmHeader) == 64, "state header");

inline GmmHeader* state_header(Rvp8u* state) { return ScratchCarver(state).take<GmmHeader>(1); }
inline const GmmHeader* state_header(const Rvp8u* state) {
  return state_header(const_cast<Rvp8u*>(state));
}

// A data slot read from an order entry. Init writes slots below max_gauss and the update only
// exchanges them, so the clamp changes nothing on a sound state; it keeps a damaged state from
// sending an access outside the buffer.
inline int64_t clamp_slot(int32_t s, int max_gauss) {
  const uint32_t hi = static_cast<uint32_t>(max_gauss - 1);
  return static_cast<uint32_t>(s) < hi ? s : hi;
}

inline int clamp_modes(Rvp8u m, int max_gauss) { return std::min<int>(m, max_gauss); }

// max then min in the form the vector instructions compute (a NaN becomes lo).
inline float clamp_var(float v, float lo, float hi) {
  v = v > lo ? v : lo;
  return v < hi ? v : hi;
}

// The header sits at the buffer's first 32-byte boundary; the planes follow it in a fixed
// order. The carve is recomputed on every call, so the buffer holds no pointers.
inline GmmPlanes carve_planes(uint8_t* state, GmmHeader** header) {
  ScratchCarver carver(state);
  GmmHeader* h = carver.take<GmmHeader>(1);  // the same address as state_header(state)
  const int64_t pixels = int64_t{h->width} * h->height;
  const int64_t cells = pixels * h->max_gauss;
  GmmPlanes g;
  g.modes = carver.take<Rvp8u>(pixels);
  g.weights = carver.take<float>(cells);
  g.order = carver.take<int32_t>(cells);
  g.data = carver.take<float>(4 * cells);
  g.plane = pixels;
  g.max_gauss = h->max_gauss;
  *header = h;
  return g;
}

inline GmmParams frame_params(const RvpFGMModel& model, int32_t frames_before,
                              double learning_rate) {
  // The rate is formed in double and rounded once; everything derived from it is single.
  double rate = learning_rate;
  if (learning_rate < 0 || frames_before == 0) {
    const int64_t span = std::min<int64_t>(2 * int64_t{frames_before} + 2, model.numFrames);
    rate = 1.0 / static_cast<double>(span);
  }
  GmmParams q;
  q.alpha = static_cast<float>(rate);
  q.decay = 1.0f - q.alpha;
  q.prune = q.alpha * model.complexityReduction;
  q.var_init = model.varInit;
  q.var_min = model.varMin;
  q.var_max = model.varMax;
  q.var_threshold = model.varThreshold;
  q.bg_ratio = model.bgRatio;
  q.var_threshold_gen = model.varThresholdGen;
  q.shadow_tau = model.shadowTau;
  q.n_gauss = model.numGauss;
  q.shadow_value = model.shadowValue;
  q.shadow_detection = model.shadowDetection != 0;
  return q;
}

namespace ref {

// One pixel: folds px (3 bytes) into the model and returns its mask value.
inline Rvp8u update_pixel(const GmmPlanes& g, const GmmParams& q, int64_t p, const Rvp8u* px) {
  const float x0 = px[0], x1 = px[1], x2 = px[2];
  const int64_t P = g.plane;
  float* W = g.weights + p;
  int32_t* O = g.order + p;
  auto rec = [&](int k) { return g.data + (clamp_slot(O[k * P], g.max_gauss) * P + p) * 4; };

  int m = clamp_modes(g.modes[p], g.max_gauss);
  bool matched = false, background = false;
  float total = 0.0f;
  for (int k = 0; k < m; ++k) {
    float w = rvp::fma(q.decay, W[k * P], -q.prune);
    bool matched_here = false;
    if (!matched) {
      float* r = rec(k);
      // x − mean: its square is (mean − x)² exactly, and mean − r·(mean − x) is then
      // fma(r, x − mean, mean) without a negation that an FMA form could absorb (the two paths
      // must agree on every bit, NaN signs included).
      const float e0 = x0 - r[0], e1 = x1 - r[1], e2 = x2 - r[2];
      const float d2 = rvp::fma(e2, e2, rvp::fma(e1, e1, e0 * e0));
      const float v = r[3];
      if (q.bg_ratio > total && q.var_threshold * v > d2) background = true;
      if (q.var_threshold_gen * v > d2) {
        matched = matched_here = true;
        w = w + q.alpha;
        const float rate = q.alpha / w;
        r[0] = rvp::fma(rate, e0, r[0]);
        r[1] = rvp::fma(rate, e1, r[1]);
        r[2] = rvp::fma(rate, e2, r[2]);
        r[3] = clamp_var(rvp::fma(rate, d2 - v, v), q.var_min, q.var_max);
        W[k * P] = w;
        // Ties move up: the freshly confirmed component wins against an equal weight.
        for (int i = k; i > 0 && w >= W[(i - 1) * P]; --i) {
          std::swap(W[i * P], W[(i - 1) * P]);
          std::swap(O[i * P], O[(i - 1) * P]);
        }
      }
    }
    if (w < q.prune) {
      // Only the count shrinks: the last position drops out of use, and a matched component
      // keeps the weight it was stored with (it already moved to its rank).
      --m;
      if (!matched_here) W[k * P] = 0.0f;
    } else {
      if (!matched_here) W[k * P] = w;
      total = total + w;
    }
  }
  for (int k = 0; k < m; ++k) W[k * P] = W[k * P] / total;

  if (!matched) {
    const int n = q.n_gauss;
    const int j = m < n ? m : n - 1;
    m = std::min(m + 1, n);
    float* r = rec(j);
    r[0] = x0;
    r[1] = x1;
    r[2] = x2;
    r[3] = q.var_init;
    W[j * P] = m == 1 ? 1.0f : q.alpha;
    for (int i = 0; i < j; ++i) W[i * P] = W[i * P] * q.decay;
    for (int i = m - 1; i > 0; --i) {
      if (W[(i - 1) * P] <= q.alpha) {
        std::swap(W[i * P], W[(i - 1) * P]);
        std::swap(O[i * P], O[(i - 1) * P]);
      }
    }
  }
  g.modes[p] = static_cast<Rvp8u>(m);

  if (background) return 0;
  if (!q.shadow_detection) return 255;
  float sum = 0.0f;
  for (int k = 0; k < m; ++k) {
    const float* r = rec(k);
    const float dd = rvp::fma(r[2], r[2], rvp::fma(r[1], r[1], r[0] * r[0]));
    const float num = rvp::fma(r[2], x2, rvp::fma(r[1], x1, r[0] * x0));
    if (dd == 0.0f) return 255;
    if (dd >= num && num >= q.shadow_tau * dd) {
      const float a = num / dd;
      const float f0 = rvp::fma(a, r[0], -x0), f1 = rvp::fma(a, r[1], -x1),
                  f2 = rvp::fma(a, r[2], -x2);
      const float e2 = rvp::fma(f2, f2, rvp::fma(f1, f1, f0 * f0));
      if (q.var_threshold * r[3] * (a * a) > e2) return q.shadow_value;
    }
    sum = sum + W[k * P];
    if (sum > q.bg_ratio) return 255;
  }
  return 255;
}

inline void update_row(const GmmPlanes& g, const GmmParams& q, int64_t p0, const Rvp8u* src,
                       Rvp8u* dst, int width) {
  for (int x = 0; x < width; ++x) dst[x] = update_pixel(g, q, p0 + x, src + 3 * x);
}

// Background colour of one pixel (3 bytes to out).
inline void background_pixel(const GmmPlanes& g, float bg_ratio, int64_t p, Rvp8u* out) {
  const int m = clamp_modes(g.modes[p], g.max_gauss);
  if (m == 0) {
    out[0] = out[1] = out[2] = 0;
    return;
  }
  const int64_t P = g.plane;
  float a0 = 0.0f, a1 = 0.0f, a2 = 0.0f, sum = 0.0f;
  for (int k = 0; k < m; ++k) {
    const float w = g.weights[k * P + p];
    const float* r = g.data + (clamp_slot(g.order[k * P + p], g.max_gauss) * P + p) * 4;
    a0 = rvp::fma(w, r[0], a0);
    a1 = rvp::fma(w, r[1], a1);
    a2 = rvp::fma(w, r[2], a2);
    sum = sum + w;
    if (sum > bg_ratio) break;
  }
  out[0] = rvp::saturate<Rvp8u>(rvp::round_even(a0 / sum));
  out[1] = rvp::saturate<Rvp8u>(rvp::round_even(a1 / sum));
  out[2] = rvp::saturate<Rvp8u>(rvp::round_even(a2 / sum));
}

inline void background_row(const GmmPlanes& g, float bg_ratio, int64_t p0, Rvp8u* dst, int width) {
  for (int x = 0; x < width; ++x) background_pixel(g, bg_ratio, p0 + x, dst + 3 * x);
}

}  // namespace ref

namespace avx2 {

// The four floats of eight records (one per lane), transposed to one register per field.
struct Records {
  __m256 m0, m1, m2, var;
};

// The eight records of slot s_i for pixel p + i. Returns true when every lane names the same
// slot: the records are then 128 contiguous bytes (the usual case, since neighbouring pixels
// of a static scene share their ranking history), loaded and stored as whole registers.
inline bool locate_records(const GmmPlanes& g, __m256i slots, int64_t p, float* ptrs[8]) {
  const __m256i first = _mm256_permutevar8x32_epi32(slots, _mm256_setzero_si256());
  if (_mm256_movemask_epi8(_mm256_cmpeq_epi32(slots, first)) == -1) {
    float* base = g.data + (int64_t{_mm256_cvtsi256_si32(slots)} * g.plane + p) * 4;
    for (int i = 0; i < 8; ++i) ptrs[i] = base + 4 * i;
    return true;
  }
  alignas(32) int32_t s[8];
  _mm256_store_si256(reinterpret_cast<__m256i*>(s), slots);
  for (int i = 0; i < 8; ++i) ptrs[i] = g.data + (int64_t{s[i]} * g.plane + p + i) * 4;
  return false;
}

inline Records transpose_in(__m256 a0, __m256 a1, __m256 a2, __m256 a3) {
  const __m256 t0 = _mm256_unpacklo_ps(a0, a1), t1 = _mm256_unpackhi_ps(a0, a1);
  const __m256 t2 = _mm256_unpacklo_ps(a2, a3), t3 = _mm256_unpackhi_ps(a2, a3);
  return {_mm256_shuffle_ps(t0, t2, 0x44), _mm256_shuffle_ps(t0, t2, 0xEE),
          _mm256_shuffle_ps(t1, t3, 0x44), _mm256_shuffle_ps(t1, t3, 0xEE)};
}

// aK holds the records of lanes K and K + 4 in its two halves.
inline Records load_records(float* const ptrs[8], bool contiguous) {
  if (contiguous) {
    const __m256 r01 = _mm256_loadu_ps(ptrs[0]), r23 = _mm256_loadu_ps(ptrs[2]);
    const __m256 r45 = _mm256_loadu_ps(ptrs[4]), r67 = _mm256_loadu_ps(ptrs[6]);
    return transpose_in(
        _mm256_permute2f128_ps(r01, r45, 0x20), _mm256_permute2f128_ps(r01, r45, 0x31),
        _mm256_permute2f128_ps(r23, r67, 0x20), _mm256_permute2f128_ps(r23, r67, 0x31));
  }
  auto pair = [&](int i) {
    return _mm256_insertf128_ps(_mm256_castps128_ps256(_mm_loadu_ps(ptrs[i])),
                                _mm_loadu_ps(ptrs[i + 4]), 1);
  };
  return transpose_in(pair(0), pair(1), pair(2), pair(3));
}

// Writes back the records of the lanes set in `lanes` (bit i for lane i).
inline void store_records(float* const ptrs[8], bool contiguous, const Records& r, int lanes) {
  const __m256 t0 = _mm256_unpacklo_ps(r.m0, r.m1), t1 = _mm256_unpackhi_ps(r.m0, r.m1);
  const __m256 t2 = _mm256_unpacklo_ps(r.m2, r.var), t3 = _mm256_unpackhi_ps(r.m2, r.var);
  const __m256 q[4] = {_mm256_shuffle_ps(t0, t2, 0x44), _mm256_shuffle_ps(t0, t2, 0xEE),
                       _mm256_shuffle_ps(t1, t3, 0x44), _mm256_shuffle_ps(t1, t3, 0xEE)};
  if (contiguous && lanes == 0xFF) {
    _mm256_storeu_ps(ptrs[0], _mm256_permute2f128_ps(q[0], q[1], 0x20));
    _mm256_storeu_ps(ptrs[2], _mm256_permute2f128_ps(q[2], q[3], 0x20));
    _mm256_storeu_ps(ptrs[4], _mm256_permute2f128_ps(q[0], q[1], 0x31));
    _mm256_storeu_ps(ptrs[6], _mm256_permute2f128_ps(q[2], q[3], 0x31));
    return;
  }
  for (int i = 0; i < 4; ++i) {
    if (lanes & (1 << i)) _mm_storeu_ps(ptrs[i], _mm256_castps256_ps128(q[i]));
    if (lanes & (1 << (i + 4))) _mm_storeu_ps(ptrs[i + 4], _mm256_extractf128_ps(q[i], 1));
  }
}

// Channel C of eight interleaved 3-byte pixels held in lo (bytes 0..15) and hi (16..23).
template <int C>
inline __m256 channel(__m128i lo, __m128i hi) {
  static_assert(C >= 0 && C < 3);
  __m128i from_lo, from_hi;
  if constexpr (C == 0) {
    from_lo = _mm_setr_epi8(0, 3, 6, 9, 12, 15, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1);
    from_hi = _mm_setr_epi8(-1, -1, -1, -1, -1, -1, 2, 5, -1, -1, -1, -1, -1, -1, -1, -1);
  } else if constexpr (C == 1) {
    from_lo = _mm_setr_epi8(1, 4, 7, 10, 13, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1);
    from_hi = _mm_setr_epi8(-1, -1, -1, -1, -1, 0, 3, 6, -1, -1, -1, -1, -1, -1, -1, -1);
  } else {
    from_lo = _mm_setr_epi8(2, 5, 8, 11, 14, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1);
    from_hi = _mm_setr_epi8(-1, -1, -1, -1, -1, 1, 4, 7, -1, -1, -1, -1, -1, -1, -1, -1);
  }
  const __m128i bytes = _mm_or_si128(_mm_shuffle_epi8(lo, from_lo), _mm_shuffle_epi8(hi, from_hi));
  return _mm256_cvtepi32_ps(_mm256_cvtepu8_epi32(bytes));
}

// The low byte of each 32-bit lane, stored as 8 bytes.
inline void store_low_bytes(__m256i v, Rvp8u* dst) {
  const __m256i pick =
      _mm256_setr_epi8(0, 4, 8, 12, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, 0, 4, 8, 12, -1,
                       -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1);
  const __m256i b = _mm256_shuffle_epi8(v, pick);
  const __m128i packed =
      _mm_unpacklo_epi32(_mm256_castsi256_si128(b), _mm256_extracti128_si256(b, 1));
  _mm_storel_epi64(reinterpret_cast<__m128i*>(dst), packed);
}

inline __m256 as_ps(__m256i v) { return _mm256_castsi256_ps(v); }
inline __m256i as_si(__m256 v) { return _mm256_castps_si256(v); }
inline int bits(__m256 v) { return _mm256_movemask_ps(v); }

// Eight pixels p .. p+7 (24 source bytes at px, 8 mask bytes at dst).
inline void update_block(const GmmPlanes& g, const GmmParams& q, int64_t p, const Rvp8u* px,
                         Rvp8u* dst) {
  const int64_t P = g.plane;
  float* W = g.weights + p;
  int32_t* O = g.order + p;
  const __m128i src_lo = _mm_loadu_si128(reinterpret_cast<const __m128i*>(px));
  const __m128i src_hi = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(px + 16));
  // Exactly the 24 bytes of the eight pixels are read.
  const __m256 x0 = channel<0>(src_lo, src_hi), x1 = channel<1>(src_lo, src_hi),
               x2 = channel<2>(src_lo, src_hi);

  const __m256 alpha = _mm256_set1_ps(q.alpha), decay = _mm256_set1_ps(q.decay);
  const __m256 prune = _mm256_set1_ps(q.prune), neg_prune = _mm256_set1_ps(-q.prune);
  const __m256 bg_ratio = _mm256_set1_ps(q.bg_ratio);
  const __m256 var_threshold = _mm256_set1_ps(q.var_threshold);
  const __m256 var_threshold_gen = _mm256_set1_ps(q.var_threshold_gen);
  const __m256i max_slot = _mm256_set1_epi32(g.max_gauss - 1);
  const __m256 zero = _mm256_setzero_ps();
  float* ptrs[8];

  __m256i m = _mm256_min_epi32(
      _mm256_cvtepu8_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(g.modes + p))),
      _mm256_set1_epi32(g.max_gauss));
  __m256 matched = zero, background = zero, total = zero;

  for (int k = 0;; ++k) {
    const __m256 active = as_ps(_mm256_cmpgt_epi32(m, _mm256_set1_epi32(k)));
    if (!bits(active)) break;
    float* Wk = W + k * P;
    int32_t* Ok = O + k * P;
    const __m256 wk = _mm256_loadu_ps(Wk);
    __m256 w = _mm256_fmadd_ps(decay, wk, neg_prune);
    __m256 hit = zero;
    const __m256 look = _mm256_andnot_ps(matched, active);
    if (bits(look)) {
      const bool contiguous = locate_records(
          g, _mm256_min_epu32(_mm256_loadu_si256(reinterpret_cast<__m256i*>(Ok)), max_slot), p,
          ptrs);
      Records r = load_records(ptrs, contiguous);
      const __m256 e0 = _mm256_sub_ps(x0, r.m0), e1 = _mm256_sub_ps(x1, r.m1),
                   e2 = _mm256_sub_ps(x2, r.m2);
      const __m256 d2 = _mm256_fmadd_ps(e2, e2, _mm256_fmadd_ps(e1, e1, _mm256_mul_ps(e0, e0)));
      const __m256 is_bg =
          _mm256_and_ps(_mm256_cmp_ps(bg_ratio, total, _CMP_GT_OQ),
                        _mm256_cmp_ps(_mm256_mul_ps(var_threshold, r.var), d2, _CMP_GT_OQ));
      background = _mm256_or_ps(background, _mm256_and_ps(look, is_bg));
      hit = _mm256_and_ps(look,
                          _mm256_cmp_ps(_mm256_mul_ps(var_threshold_gen, r.var), d2, _CMP_GT_OQ));
      const int hit_bits = bits(hit);
      if (hit_bits) {
        w = _mm256_blendv_ps(w, _mm256_add_ps(w, alpha), hit);
        const __m256 rate = _mm256_div_ps(alpha, w);
        r.m0 = _mm256_fmadd_ps(rate, e0, r.m0);
        r.m1 = _mm256_fmadd_ps(rate, e1, r.m1);
        r.m2 = _mm256_fmadd_ps(rate, e2, r.m2);
        const __m256 v = _mm256_fmadd_ps(rate, _mm256_sub_ps(d2, r.var), r.var);
        r.var =
            _mm256_min_ps(_mm256_max_ps(v, _mm256_set1_ps(q.var_min)), _mm256_set1_ps(q.var_max));
        store_records(ptrs, contiguous, r, hit_bits);
        matched = _mm256_or_ps(matched, hit);
      }
    }
    const __m256 pruned = _mm256_and_ps(active, _mm256_cmp_ps(w, prune, _CMP_LT_OQ));
    // A pruned unmatched component is stored as 0; a matched one keeps w (it moves up below).
    __m256 stored = _mm256_blendv_ps(w, zero, _mm256_andnot_ps(hit, pruned));
    _mm256_storeu_ps(Wk, _mm256_blendv_ps(wk, stored, active));
    if (bits(hit)) {
      const __m256i o_moving = _mm256_loadu_si256(reinterpret_cast<__m256i*>(Ok));
      __m256 moving = hit;
      for (int i = k; i > 0; --i) {
        float* Wi = W + i * P;
        float* Wp = W + (i - 1) * P;
        const __m256 w_prev = _mm256_loadu_ps(Wp);
        moving = _mm256_and_ps(moving, _mm256_cmp_ps(w, w_prev, _CMP_GE_OQ));
        if (!bits(moving)) break;
        _mm256_storeu_ps(Wi, _mm256_blendv_ps(_mm256_loadu_ps(Wi), w_prev, moving));
        _mm256_storeu_ps(Wp, _mm256_blendv_ps(w_prev, w, moving));
        auto* Oi = reinterpret_cast<__m256i*>(O + i * P);
        auto* Op = reinterpret_cast<__m256i*>(O + (i - 1) * P);
        const __m256i o_prev = _mm256_loadu_si256(Op);
        const __m256i mv = as_si(moving);
        _mm256_storeu_si256(Oi, _mm256_blendv_epi8(_mm256_loadu_si256(Oi), o_prev, mv));
        _mm256_storeu_si256(Op, _mm256_blendv_epi8(o_prev, o_moving, mv));
      }
    }
    total = _mm256_blendv_ps(total, _mm256_add_ps(total, w), _mm256_andnot_ps(pruned, active));
    m = _mm256_add_epi32(m, as_si(pruned));  // all-ones lanes: minus one
  }

  // Normalise the weights in use.
  for (int k = 0;; ++k) {
    const __m256 in_use = as_ps(_mm256_cmpgt_epi32(m, _mm256_set1_epi32(k)));
    if (!bits(in_use)) break;
    float* Wk = W + k * P;
    const __m256 wk = _mm256_loadu_ps(Wk);
    _mm256_storeu_ps(Wk, _mm256_blendv_ps(wk, _mm256_div_ps(wk, total), in_use));
  }

  // Pixels that matched nothing create a component.
  const __m256 unmatched = _mm256_xor_ps(matched, as_ps(_mm256_set1_epi32(-1)));
  const int unmatched_bits = bits(unmatched);
  if (unmatched_bits) {
    const __m256i n = _mm256_set1_epi32(q.n_gauss);
    const __m256i j =
        _mm256_blendv_epi8(_mm256_sub_epi32(n, _mm256_set1_epi32(1)), m, _mm256_cmpgt_epi32(n, m));
    const __m256i m_new = _mm256_min_epi32(_mm256_add_epi32(m, _mm256_set1_epi32(1)), n);
    alignas(32) int32_t jl[8];
    _mm256_store_si256(reinterpret_cast<__m256i*>(jl), j);
    for (int i = 0; i < 8; ++i) {
      if (!(unmatched_bits & (1 << i))) continue;
      float* r = g.data + (clamp_slot(O[jl[i] * P + i], g.max_gauss) * P + p + i) * 4;
      r[0] = px[3 * i];
      r[1] = px[3 * i + 1];
      r[2] = px[3 * i + 2];
      r[3] = q.var_init;
    }
    const __m256 w_new = _mm256_blendv_ps(alpha, _mm256_set1_ps(1.0f),
                                          as_ps(_mm256_cmpeq_epi32(m_new, _mm256_set1_epi32(1))));
    for (int k = 0; k < q.n_gauss; ++k) {
      const __m256i kk = _mm256_set1_epi32(k);
      const __m256 below = _mm256_and_ps(unmatched, as_ps(_mm256_cmpgt_epi32(j, kk)));
      const __m256 at = _mm256_and_ps(unmatched, as_ps(_mm256_cmpeq_epi32(j, kk)));
      if (!bits(_mm256_or_ps(below, at))) continue;
      float* Wk = W + k * P;
      __m256 wk = _mm256_loadu_ps(Wk);
      wk = _mm256_blendv_ps(wk, _mm256_mul_ps(wk, decay), below);
      _mm256_storeu_ps(Wk, _mm256_blendv_ps(wk, w_new, at));
    }
    for (int i = q.n_gauss - 1; i > 0; --i) {
      const __m256 in_range =
          _mm256_and_ps(unmatched, as_ps(_mm256_cmpgt_epi32(m_new, _mm256_set1_epi32(i))));
      if (!bits(in_range)) continue;
      float* Wi = W + i * P;
      float* Wp = W + (i - 1) * P;
      const __m256 w_prev = _mm256_loadu_ps(Wp);
      const __m256 swap = _mm256_and_ps(in_range, _mm256_cmp_ps(w_prev, alpha, _CMP_LE_OQ));
      if (!bits(swap)) continue;
      const __m256 w_cur = _mm256_loadu_ps(Wi);
      _mm256_storeu_ps(Wi, _mm256_blendv_ps(w_cur, w_prev, swap));
      _mm256_storeu_ps(Wp, _mm256_blendv_ps(w_prev, w_cur, swap));
      auto* Oi = reinterpret_cast<__m256i*>(O + i * P);
      auto* Op = reinterpret_cast<__m256i*>(O + (i - 1) * P);
      const __m256i o_cur = _mm256_loadu_si256(Oi), o_prev = _mm256_loadu_si256(Op);
      _mm256_storeu_si256(Oi, _mm256_blendv_epi8(o_cur, o_prev, as_si(swap)));
      _mm256_storeu_si256(Op, _mm256_blendv_epi8(o_prev, o_cur, as_si(swap)));
    }
    m = _mm256_blendv_epi8(m, m_new, as_si(unmatched));
  }
  store_low_bytes(m, g.modes + p);

  // Mask: 0 background, 255 foreground, or the shadow value.
  __m256i result = _mm256_andnot_si256(as_si(background), _mm256_set1_epi32(255));
  __m256 pending = _mm256_xor_ps(background, as_ps(_mm256_set1_epi32(-1)));
  if (q.shadow_detection && bits(pending)) {
    const __m256 tau = _mm256_set1_ps(q.shadow_tau);
    const __m256i shadow = _mm256_set1_epi32(q.shadow_value);
    __m256 sum = zero;
    for (int k = 0;; ++k) {
      pending = _mm256_and_ps(pending, as_ps(_mm256_cmpgt_epi32(m, _mm256_set1_epi32(k))));
      if (!bits(pending)) break;
      const bool contiguous = locate_records(
          g, _mm256_min_epu32(_mm256_loadu_si256(reinterpret_cast<__m256i*>(O + k * P)), max_slot),
          p, ptrs);
      const Records r = load_records(ptrs, contiguous);
      const __m256 dd =
          _mm256_fmadd_ps(r.m2, r.m2, _mm256_fmadd_ps(r.m1, r.m1, _mm256_mul_ps(r.m0, r.m0)));
      const __m256 num =
          _mm256_fmadd_ps(r.m2, x2, _mm256_fmadd_ps(r.m1, x1, _mm256_mul_ps(r.m0, x0)));
      // Lanes with D = 0 stop as foreground (their result is already 255).
      pending = _mm256_andnot_ps(_mm256_cmp_ps(dd, zero, _CMP_EQ_OQ), pending);
      const __m256 candidate = _mm256_and_ps(
          pending, _mm256_and_ps(_mm256_cmp_ps(dd, num, _CMP_GE_OQ),
                                 _mm256_cmp_ps(num, _mm256_mul_ps(tau, dd), _CMP_GE_OQ)));
      if (bits(candidate)) {
        const __m256 a = _mm256_div_ps(num, dd);
        const __m256 f0 = _mm256_fmsub_ps(a, r.m0, x0), f1 = _mm256_fmsub_ps(a, r.m1, x1),
                     f2 = _mm256_fmsub_ps(a, r.m2, x2);
        const __m256 e2 = _mm256_fmadd_ps(f2, f2, _mm256_fmadd_ps(f1, f1, _mm256_mul_ps(f0, f0)));
        const __m256 limit =
            _mm256_mul_ps(_mm256_mul_ps(var_threshold, r.var), _mm256_mul_ps(a, a));
        const __m256 is_shadow = _mm256_and_ps(candidate, _mm256_cmp_ps(limit, e2, _CMP_GT_OQ));
        result = _mm256_blendv_epi8(result, shadow, as_si(is_shadow));
        pending = _mm256_andnot_ps(is_shadow, pending);
      }
      sum = _mm256_blendv_ps(sum, _mm256_add_ps(sum, _mm256_loadu_ps(W + k * P)), pending);
      pending = _mm256_andnot_ps(_mm256_cmp_ps(sum, bg_ratio, _CMP_GT_OQ), pending);
    }
  }
  store_low_bytes(result, dst);
}

inline void update_row(const GmmPlanes& g, const GmmParams& q, int64_t p0, const Rvp8u* src,
                       Rvp8u* dst, int width) {
  int x = 0;
  for (; x + 8 <= width; x += 8) update_block(g, q, p0 + x, src + 3 * x, dst + x);
  for (; x < width; ++x) dst[x] = ref::update_pixel(g, q, p0 + x, src + 3 * x);
}

// Background colour of pixels p .. p+7 (24 bytes to out).
inline void background_block(const GmmPlanes& g, float bg_ratio, int64_t p, Rvp8u* out) {
  const int64_t P = g.plane;
  const __m256i m = _mm256_min_epi32(
      _mm256_cvtepu8_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(g.modes + p))),
      _mm256_set1_epi32(g.max_gauss));
  const __m256i max_slot = _mm256_set1_epi32(g.max_gauss - 1);
  const __m256 ratio = _mm256_set1_ps(bg_ratio);
  __m256 a0 = _mm256_setzero_ps(), a1 = a0, a2 = a0, sum = a0;
  __m256 live = as_ps(_mm256_set1_epi32(-1));
  float* ptrs[8];
  for (int k = 0;; ++k) {
    live = _mm256_and_ps(live, as_ps(_mm256_cmpgt_epi32(m, _mm256_set1_epi32(k))));
    if (!bits(live)) break;
    const __m256 w = _mm256_loadu_ps(g.weights + k * P + p);
    const __m256i slots = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(g.order + k * P + p));
    const bool contiguous = locate_records(g, _mm256_min_epu32(slots, max_slot), p, ptrs);
    const Records r = load_records(ptrs, contiguous);
    a0 = _mm256_blendv_ps(a0, _mm256_fmadd_ps(w, r.m0, a0), live);
    a1 = _mm256_blendv_ps(a1, _mm256_fmadd_ps(w, r.m1, a1), live);
    a2 = _mm256_blendv_ps(a2, _mm256_fmadd_ps(w, r.m2, a2), live);
    sum = _mm256_blendv_ps(sum, _mm256_add_ps(sum, w), live);
    live = _mm256_andnot_ps(_mm256_cmp_ps(sum, ratio, _CMP_GT_OQ), live);
  }
  // Clamping before rounding gives what rounding then saturating gives (the bounds are
  // integers); max puts NaN (a zero weight sum) at 0. Pixels without components get 0.
  const __m256 none = as_ps(_mm256_cmpeq_epi32(m, _mm256_setzero_si256()));
  auto to_int = [&](__m256 acc) {
    __m256 v = _mm256_max_ps(_mm256_div_ps(acc, sum), _mm256_setzero_ps());
    v = _mm256_min_ps(v, _mm256_set1_ps(255.0f));
    return _mm256_cvtps_epi32(_mm256_blendv_ps(v, _mm256_setzero_ps(), none));
  };
  const __m256i c0 = to_int(a0), c1 = to_int(a1), c2 = to_int(a2);
  // Per 128-bit half: bytes c0[0..3], c1[0..3], c2[0..3], c2[0..3] of its four pixels.
  const __m256i bytes =
      _mm256_packus_epi16(_mm256_packus_epi32(c0, c1), _mm256_packus_epi32(c2, c2));
  const __m256i rgb = _mm256_shuffle_epi8(
      bytes, _mm256_setr_epi8(0, 4, 8, 1, 5, 9, 2, 6, 10, 3, 7, 11, -1, -1, -1, -1, 0, 4, 8, 1, 5,
                              9, 2, 6, 10, 3, 7, 11, -1, -1, -1, -1));
  const __m128i lo = _mm256_castsi256_si128(rgb), hi = _mm256_extracti128_si256(rgb, 1);
  _mm_storel_epi64(reinterpret_cast<__m128i*>(out), lo);
  const int32_t lo_tail = _mm_extract_epi32(lo, 2);
  std::memcpy(out + 8, &lo_tail, 4);
  _mm_storel_epi64(reinterpret_cast<__m128i*>(out + 12), hi);
  const int32_t hi_tail = _mm_extract_epi32(hi, 2);
  std::memcpy(out + 20, &hi_tail, 4);
}

inline void background_row(const GmmPlanes& g, float bg_ratio, int64_t p0, Rvp8u* dst, int width) {
  int x = 0;
  for (; x + 8 <= width; x += 8) background_block(g, bg_ratio, p0 + x, dst + 3 * x);
  for (; x < width; ++x) ref::background_pixel(g, bg_ratio, p0 + x, dst + 3 * x);
}

}  // namespace avx2
}  // namespace rvp::bgfg

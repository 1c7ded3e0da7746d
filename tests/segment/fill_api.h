// Uniform access to the flood-fill exports for typed tests: one call signature for every
// member, dispatched on rule and connectivity.
#pragma once

#include "rvpcv.h"
#include "support/guarded.h"

namespace rvpt {

enum class FillRule { Plain, Range, Grad };

template <class T, int C>
struct FillApi;

#define RVPT_FILL_C1(t, T)                                                                         \
  template <>                                                                                      \
  struct FillApi<T, 1> {                                                                           \
    static RvpStatus fill(FillRule r, bool c8, T* im, int st, RvpiSize roi, RvpiPoint s,           \
                          const T* nv, const T* mn, const T* mx, RvpiConnectedComp* reg,           \
                          Rvp8u* buf) {                                                            \
      switch (r) {                                                                                 \
        case FillRule::Plain:                                                                      \
          return c8 ? rvpiFloodFill_8Con_##t##_C1IR(im, st, roi, s, *nv, reg, buf)                 \
                    : rvpiFloodFill_4Con_##t##_C1IR(im, st, roi, s, *nv, reg, buf);                \
        case FillRule::Range:                                                                      \
          return c8 ? rvpiFloodFill_Range8Con_##t##_C1IR(im, st, roi, s, *nv, *mn, *mx, reg, buf)  \
                    : rvpiFloodFill_Range4Con_##t##_C1IR(im, st, roi, s, *nv, *mn, *mx, reg, buf); \
        default:                                                                                   \
          return c8 ? rvpiFloodFill_Grad8Con_##t##_C1IR(im, st, roi, s, *nv, *mn, *mx, reg, buf)   \
                    : rvpiFloodFill_Grad4Con_##t##_C1IR(im, st, roi, s, *nv, *mn, *mx, reg, buf);  \
      }                                                                                            \
    }                                                                                              \
  };
#define RVPT_FILL_C3(t, T)                                                                      \
  template <>                                                                                   \
  struct FillApi<T, 3> {                                                                        \
    static RvpStatus fill(FillRule r, bool c8, T* im, int st, RvpiSize roi, RvpiPoint s,        \
                          const T* nv, const T* mn, const T* mx, RvpiConnectedComp* reg,        \
                          Rvp8u* buf) {                                                         \
      switch (r) {                                                                              \
        case FillRule::Plain:                                                                   \
          return c8 ? rvpiFloodFill_8Con_##t##_C3IR(im, st, roi, s, nv, reg, buf)               \
                    : rvpiFloodFill_4Con_##t##_C3IR(im, st, roi, s, nv, reg, buf);              \
        case FillRule::Range:                                                                   \
          return c8 ? rvpiFloodFill_Range8Con_##t##_C3IR(im, st, roi, s, nv, mn, mx, reg, buf)  \
                    : rvpiFloodFill_Range4Con_##t##_C3IR(im, st, roi, s, nv, mn, mx, reg, buf); \
        default:                                                                                \
          return c8 ? rvpiFloodFill_Grad8Con_##t##_C3IR(im, st, roi, s, nv, mn, mx, reg, buf)   \
                    : rvpiFloodFill_Grad4Con_##t##_C3IR(im, st, roi, s, nv, mn, mx, reg, buf);  \
      }                                                                                         \
    }                                                                                           \
  };
RVPT_FILL_C1(8u, Rvp8u)
RVPT_FILL_C1(16u, Rvp16u)
RVPT_FILL_C1(32f, Rvp32f)
RVPT_FILL_C3(8u, Rvp8u)
RVPT_FILL_C3(16u, Rvp16u)
RVPT_FILL_C3(32f, Rvp32f)
#undef RVPT_FILL_C1
#undef RVPT_FILL_C3

// 32s has the plain rule only.
template <>
struct FillApi<Rvp32s, 1> {
  static RvpStatus fill(FillRule, bool c8, Rvp32s* im, int st, RvpiSize roi, RvpiPoint s,
                        const Rvp32s* nv, const Rvp32s*, const Rvp32s*, RvpiConnectedComp* reg,
                        Rvp8u* buf) {
    return c8 ? rvpiFloodFill_8Con_32s_C1IR(im, st, roi, s, *nv, reg, buf)
              : rvpiFloodFill_4Con_32s_C1IR(im, st, roi, s, *nv, reg, buf);
  }
};

// The same call with the element type deduced (keeps the template out of assertion macros).
template <int C, class T>
RvpStatus fill_c(FillRule r, bool c8, T* im, int st, RvpiSize roi, RvpiPoint s, const T* nv,
                 const T* mn, const T* mx, RvpiConnectedComp* reg, Rvp8u* buf) {
  return FillApi<T, C>::fill(r, c8, im, st, roi, s, nv, mn, mx, reg, buf);
}

// A buffer of exactly `bytes` bytes at an odd address whose last byte touches a guard page.
struct OddBuffer {
  explicit OddBuffer(int bytes) : g(size_t(bytes) + 1, Guard::After) {}
  Rvp8u* ptr() const { return g.data() + 1; }
  GuardedBuffer g;
};

inline int fill_buffer_size(FillRule r, RvpiSize roi) {
  int n = 0;
  if (r == FillRule::Grad)
    rvpiFloodFillGetSize_Grad(roi, &n);
  else
    rvpiFloodFillGetSize(roi, &n);
  return n;
}

}  // namespace rvpt

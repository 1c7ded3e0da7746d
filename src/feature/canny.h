// Canny detector internals shared by the exports and the tests: buffer sizes, the layout of the
// work buffer, and the hysteresis (exposed so tests can run it with a tiny stack).
#pragma once

#include <cstdint>

#include "rvpcv.h"

namespace rvp::canny {

// Stack coordinates switch to 32 bits when either side reaches this.
constexpr int kWideSide = 65533;
inline bool wide_stack(RvpiSize roi) { return roi.width >= kWideSide || roi.height >= kWideSide; }

// Byte counts reported by the size queries (-1: beyond a signed 32-bit count). `m` is the
// derivative mask side (3 or 5).
int64_t buffer_bytes(RvpiSize roi);
int64_t border_buffer_bytes(RvpiSize roi, int m);

// Bytes the detection itself needs before the hysteresis starts, counted from the caller's
// pointer with the worst alignment (31 bytes of padding); the bordered form adds its two
// derivative rows. Tests hold this against the sizes above.
int64_t phase_one_bytes(RvpiSize roi, bool bordered);

// Hysteresis over a framed map ((width + 2) x (height + 2) bytes, frame bytes 0): every
// candidate 8-connected through candidates to a strong one becomes kEdge. The stack holds
// `capacity` (row, column) pairs of C; when it is full a reached candidate is left marked
// strong and the seed scan runs again, so any capacity of at least one pair gives the same map.
template <class C>
void hysteresis(uint8_t* map, int width, int height, C* stack, int64_t capacity);

}  // namespace rvp::canny

// A plain Canny reference for the feature tests: the detection written as the rules read, with
// its own stack and the seeds pushed during the suppression scan, independent of the library's
// two-phase layout.
#pragma once

#include <cmath>
#include <cstdint>
#include <utility>
#include <vector>

namespace rvpt {

// dx, dy as single-precision values (16-bit inputs converted exactly); `l2` gives the
// magnitude as sqrt(float(dx*dx + dy*dy)) of the integer values instead of |dx| + |dy|.
inline std::vector<uint8_t> canny_reference(const std::vector<float>& dx,
                                            const std::vector<float>& dy, int w, int h, float low,
                                            float high, bool l2 = false) {
  std::vector<float> mag(size_t(w + 2) * (h + 2), 0.0f);
  auto M = [&](int x, int y) -> float& { return mag[size_t(y + 1) * (w + 2) + (x + 1)]; };
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w; ++x) {
      const float a = dx[size_t(y) * w + x], b = dy[size_t(y) * w + x];
      float m = std::fabs(a) + std::fabs(b);
      if (l2) {
        const int32_t ia = int32_t(a), ib = int32_t(b);
        m = std::sqrt(float(ia * ia + ib * ib));
      }
      M(x, y) = m < low ? 0.0f : m;
    }
  std::vector<uint8_t> cand(size_t(w) * h, 0), out(size_t(w) * h, 0);
  std::vector<std::pair<int, int>> stack;
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w; ++x) {
      const float m = M(x, y);
      if (m == 0.0f) continue;
      const float a = dx[size_t(y) * w + x], b = dy[size_t(y) * w + x];
      const float ax = std::fabs(a), ay = std::fabs(b);
      bool c;
      if (ay < ax * 0.41421357f) {
        c = M(x - 1, y) < m && M(x + 1, y) <= m;
      } else if (ay > ax * 2.4142137f) {
        c = M(x, y - 1) < m && M(x, y + 1) <= m;
      } else if (std::signbit(a) != std::signbit(b)) {
        c = M(x - 1, y + 1) < m && M(x + 1, y - 1) < m;
      } else {
        c = M(x + 1, y + 1) < m && M(x - 1, y - 1) < m;
      }
      if (!c) continue;
      cand[size_t(y) * w + x] = 1;
      if (m > high) {
        out[size_t(y) * w + x] = 255;
        stack.push_back({y, x});
      }
    }
  const int dr[8] = {-1, -1, -1, 0, 0, 1, 1, 1}, dc[8] = {-1, 0, 1, -1, 1, -1, 0, 1};
  while (!stack.empty()) {
    const auto [r, c] = stack.back();
    stack.pop_back();
    for (int k = 0; k < 8; ++k) {
      const int y = r + dr[k], x = c + dc[k];
      if (y < 0 || y >= h || x < 0 || x >= w) continue;
      const size_t i = size_t(y) * w + x;
      if (cand[i] && out[i] == 0) {
        out[i] = 255;
        stack.push_back({y, x});
      }
    }
  }
  return out;
}

}  // namespace rvpt

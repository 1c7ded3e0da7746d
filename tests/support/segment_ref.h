// Brute-force references for the segmentation family: breadth-first searches over plain pixel
// grids, written for clarity, not speed.
#pragma once

#include <cmath>
#include <cstdint>
#include <deque>
#include <functional>
#include <vector>

namespace rvpt {

// A dense copy of an image's pixels: w*h pixels of C channels as doubles (exact for every
// element type used here).
struct Grid {
  int w = 0, h = 0, c = 1;
  std::vector<double> v;
  double at(int x, int y, int k = 0) const { return v[(size_t(y) * w + x) * c + k]; }
};

// Pixels reachable from (sx, sy): `join(from, to)` decides a step between neighbours (pixel
// indices). Returns a 0/1 map of w*h bytes; the seed is always in.
inline std::vector<uint8_t> reach(int w, int h, int sx, int sy, bool conn8,
                                  const std::function<bool(int, int)>& join) {
  std::vector<uint8_t> in(size_t(w) * h, 0);
  std::deque<int> q;
  in[size_t(sy) * w + sx] = 1;
  q.push_back(sy * w + sx);
  while (!q.empty()) {
    const int p = q.front();
    q.pop_front();
    const int x = p % w, y = p / w;
    for (int dy = -1; dy <= 1; ++dy)
      for (int dx = -1; dx <= 1; ++dx) {
        if ((dx == 0 && dy == 0) || (!conn8 && dx != 0 && dy != 0)) continue;
        const int nx = x + dx, ny = y + dy;
        if (nx < 0 || ny < 0 || nx >= w || ny >= h) continue;
        const int n = ny * w + nx;
        if (in[n] || !join(p, n)) continue;
        in[n] = 1;
        q.push_back(n);
      }
  }
  return in;
}

// Number of maximal horizontal runs of set pixels in a 0/1 map.
inline int64_t run_count(const std::vector<uint8_t>& in, int w, int h) {
  int64_t runs = 0;
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w; ++x)
      if (in[size_t(y) * w + x] && (x == 0 || !in[size_t(y) * w + x - 1])) ++runs;
  return runs;
}

// Labels in raster order of each component's first pixel, counting from 0; -1 for pixels
// that `active` rejects. `join(a, b)` must be symmetric. Returns the component count.
inline int label_components(int w, int h, bool conn8, const std::function<bool(int)>& active,
                            const std::function<bool(int, int)>& join, std::vector<int>& lab) {
  lab.assign(size_t(w) * h, -1);
  int count = 0;
  std::vector<int> stack;
  for (int p = 0; p < w * h; ++p) {
    if (lab[p] >= 0 || !active(p)) continue;
    lab[p] = count;
    stack.assign(1, p);
    while (!stack.empty()) {
      const int q = stack.back();
      stack.pop_back();
      const int x = q % w, y = q / w;
      for (int dy = -1; dy <= 1; ++dy)
        for (int dx = -1; dx <= 1; ++dx) {
          if ((dx == 0 && dy == 0) || (!conn8 && dx != 0 && dy != 0)) continue;
          const int nx = x + dx, ny = y + dy;
          if (nx < 0 || ny < 0 || nx >= w || ny >= h) continue;
          const int n = ny * w + nx;
          if (lab[n] >= 0 || !active(n) || !join(q, n)) continue;
          lab[n] = count;
          stack.push_back(n);
        }
    }
    ++count;
  }
  return count;
}

}  // namespace rvpt

// Demo and `flow` command: a Gaussian pyramid strip of the photograph, and points tracked
// between the photograph and a shifted, slightly rotated copy with pyramidal Lucas-Kanade.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

#include "registry.h"
#include "rvpcv.h"

namespace {

using rvpcv_app::Image;

constexpr int kLevels = 3, kWin = 21, kIters = 30;

// A pyramid record owning its gray levels, built with the 5x5 down-sampling.
struct GrayPyramid {
  RvpiPyramid* rec = nullptr;
  std::vector<std::vector<Rvp8u>> levels;
  explicit GrayPyramid(const Image& g) {
    if (rvpiPyramidInitAlloc({g.width, g.height}, kLevels, 2.0f, &rec) != rvpStsNoErr) return;
    levels.resize(kLevels + 1);
    int size = 0;
    rvpiPyrDownGetBufSize_Gauss5x5(g.width, rvp8u, 1, &size);
    std::vector<Rvp8u> buf(size);
    for (int l = 0; l <= kLevels; ++l) {
      const RvpiSize s = rec->pRoi[l];
      levels[l].resize(size_t(s.width) * s.height);
      if (l == 0)
        std::copy(g.pixels.begin(), g.pixels.end(), levels[0].begin());
      else
        rvpiPyrDown_Gauss5x5_8u_C1R(levels[l - 1].data(), rec->pRoi[l - 1].width, levels[l].data(),
                                    s.width, rec->pRoi[l - 1], buf.data());
      rec->pImage[l] = levels[l].data();
      rec->pStep[l] = s.width;
    }
  }
  ~GrayPyramid() { rvpiPyramidFree(rec); }
};

struct Tracks {
  std::vector<RvpiPoint32f> prev, next;
  std::vector<Rvp8s> status;
  std::vector<Rvp32f> error;
};

Tracks track_grid(const Image& a, const Image& b, int spacing) {
  Tracks t;
  for (int y = spacing / 2; y < a.height; y += spacing)
    for (int x = spacing / 2; x < a.width; x += spacing) t.prev.push_back({float(x), float(y)});
  const int n = int(t.prev.size());
  t.next.resize(n);
  t.status.assign(n, -1);
  t.error.assign(n, -1.0f);
  GrayPyramid pa(a), pb(b);
  RvpiOptFlowPyrLKState* st = nullptr;
  if (pa.rec == nullptr || pb.rec == nullptr ||
      rvpiOpticalFlowPyrLKInitAlloc_8u_C1R({a.width, a.height}, kWin, &st) != rvpStsNoErr)
    return t;
  rvpiOpticalFlowPyrLK_8u_C1R(pa.rec, pb.rec, t.prev.data(), t.next.data(), t.status.data(),
                              t.error.data(), n, kWin, kLevels, kIters, 1e-4f, st);
  rvpiOpticalFlowPyrLKFree_8u_C1R(st);
  return t;
}

void put(Image& img, int x, int y, const uint8_t rgb[3]) {
  if (x < 0 || y < 0 || x >= img.width || y >= img.height) return;
  for (int c = 0; c < 3; ++c) img.row(y)[x * 3 + c] = rgb[c];
}

void line(Image& img, float x0, float y0, float x1, float y1, const uint8_t rgb[3]) {
  const int n = int(std::ceil(std::max(std::fabs(x1 - x0), std::fabs(y1 - y0)))) + 1;
  for (int i = 0; i <= n; ++i) {
    const float t = float(i) / float(n);
    put(img, int(std::lround(x0 + (x1 - x0) * t)), int(std::lround(y0 + (y1 - y0) * t)), rgb);
  }
}

// Motion vectors on a dimmed RGB copy of `a`, drawn `gain` times longer than measured:
// tracked points green with a red tip, lost points blue.
Image draw_tracks(const Image& a, const Tracks& t, float gain) {
  Image out = rvpcv_app::make_image(a.width, a.height, 3);
  for (int y = 0; y < a.height; ++y)
    for (int x = 0; x < a.width; ++x)
      for (int c = 0; c < 3; ++c) out.row(y)[x * 3 + c] = uint8_t(a.row(y)[x] / 2);
  const uint8_t green[3] = {40, 230, 40}, red[3] = {255, 40, 40}, blue[3] = {60, 120, 255};
  for (size_t i = 0; i < t.prev.size(); ++i) {
    const RvpiPoint32f p = t.prev[i], q = t.next[i];
    if (t.status[i] != 0 || t.error[i] < 0.0f) {
      put(out, int(p.x), int(p.y), blue);
      continue;
    }
    const float ex = p.x + (q.x - p.x) * gain, ey = p.y + (q.y - p.y) * gain;
    line(out, p.x, p.y, ex, ey, green);
    put(out, int(std::lround(ex)), int(std::lround(ey)), red);
  }
  return out;
}

// Bilinear warp of a gray image: out(x, y) = in(R^-1 ((x, y) - c - shift) + c).
Image rotate_shift(const Image& g, double degrees, double sx, double sy) {
  Image out = rvpcv_app::make_image(g.width, g.height, 1);
  const double a = degrees * M_PI / 180.0, ca = std::cos(a), sa = std::sin(a);
  const double cx = g.width / 2.0, cy = g.height / 2.0;
  for (int y = 0; y < g.height; ++y)
    for (int x = 0; x < g.width; ++x) {
      const double dx = x - cx - sx, dy = y - cy - sy;
      const double u = std::clamp(ca * dx + sa * dy + cx, 0.0, g.width - 1.001);
      const double v = std::clamp(-sa * dx + ca * dy + cy, 0.0, g.height - 1.001);
      const int iu = int(u), iv = int(v);
      const double fu = u - iu, fv = v - iv;
      const uint8_t* r0 = g.row(iv);
      const uint8_t* r1 = g.row(std::min(iv + 1, g.height - 1));
      const int iu1 = std::min(iu + 1, g.width - 1);
      const double val =
          (1 - fv) * ((1 - fu) * r0[iu] + fu * r0[iu1]) + fv * ((1 - fu) * r1[iu] + fu * r1[iu1]);
      out.row(y)[x] = uint8_t(std::lround(val));
    }
  return out;
}

void pyramid_demo(rvpcv_app::DemoContext& ctx) {
  // Strip: the photograph and its three smaller levels side by side (RGB, 5x5 down-sampling).
  const Image& photo = ctx.photo;
  std::vector<Image> levels{photo};
  for (int l = 1; l <= kLevels; ++l) {
    const Image& s = levels.back();
    Image d = rvpcv_app::make_image((s.width + 1) / 2, (s.height + 1) / 2, 3);
    int size = 0;
    rvpiPyrDownGetBufSize_Gauss5x5(s.width, rvp8u, 3, &size);
    std::vector<Rvp8u> buf(size);
    const RvpStatus st = rvpiPyrDown_Gauss5x5_8u_C3R(s.row(0), s.step(), d.row(0), d.step(),
                                                     {s.width, s.height}, buf.data());
    if (st != rvpStsNoErr) ctx.out() << "  PyrDown status " << st << "\n";
    levels.push_back(d);
  }
  int width = 0;
  for (const Image& l : levels) width += l.width;
  Image strip = rvpcv_app::make_image(width, photo.height, 3);
  std::fill(strip.pixels.begin(), strip.pixels.end(), uint8_t(255));
  int x0 = 0;
  for (const Image& l : levels) {
    for (int y = 0; y < l.height; ++y)
      std::copy(l.row(y), l.row(y) + l.step(), strip.row(y) + x0 * 3);
    x0 += l.width;
  }
  ctx.out() << "  pyramid strip: " << photo.width << "x" << photo.height << " and 3 levels\n";
  ctx.save("pyramid_strip.png", strip);

  // Tracking: the photograph against a copy shifted by (6, -4) and rotated by 2 degrees.
  const Image moved = rotate_shift(ctx.gray, 2.0, 6.0, -4.0);
  const Tracks t = track_grid(ctx.gray, moved, 24);
  const double a = 2.0 * M_PI / 180.0, ca = std::cos(a), sa = std::sin(a);
  const double cx = ctx.gray.width / 2.0, cy = ctx.gray.height / 2.0;
  std::vector<double> errs;
  int lost = 0;
  for (size_t i = 0; i < t.prev.size(); ++i) {
    if (t.status[i] != 0 || t.error[i] < 0.0f) {
      ++lost;
      continue;
    }
    const double dx = t.prev[i].x - cx, dy = t.prev[i].y - cy;
    const double wx = ca * dx - sa * dy + cx + 6.0, wy = sa * dx + ca * dy + cy - 4.0;
    errs.push_back(std::hypot(t.next[i].x - wx, t.next[i].y - wy));
  }
  std::sort(errs.begin(), errs.end());
  const double median = errs.empty() ? 0.0 : errs[errs.size() / 2];
  ctx.out() << "  tracked " << errs.size() << " of " << t.prev.size() << " grid points (" << lost
            << " lost); median distance to the true motion " << median << " px\n";
  ctx.save("flow_shift_rotate.png", draw_tracks(ctx.gray, t, 3.0f));
}

int flow_command(int argc, char** argv) {
  // argv[0] is the command name.
  if (argc < 4) {
    std::fprintf(stderr, "usage: rvpcv flow A.png B.png OUT.png\n");
    return 2;
  }
  Image a, b;
  if (!rvpcv_app::load_image(argv[1], a, 1) || !rvpcv_app::load_image(argv[2], b, 1)) {
    std::fprintf(stderr, "cannot read %s or %s\n", argv[1], argv[2]);
    return 1;
  }
  if (a.width != b.width || a.height != b.height) {
    std::fprintf(stderr, "the two images differ in size\n");
    return 1;
  }
  const Tracks t = track_grid(a, b, 16);
  int tracked = 0;
  for (size_t i = 0; i < t.prev.size(); ++i) tracked += t.status[i] == 0 && t.error[i] >= 0.0f;
  std::printf("tracked %d of %zu grid points (vectors drawn 3x longer)\n", tracked, t.prev.size());
  return rvpcv_app::save_png(argv[3], draw_tracks(a, t, 3.0f)) ? 0 : 1;
}

}  // namespace

RVPCV_DEMO_STEP(pyramid_demo, 35);
RVPCV_COMMAND(flow, "flow A.png B.png OUT.png  track a grid of points and draw motion vectors",
              flow_command);

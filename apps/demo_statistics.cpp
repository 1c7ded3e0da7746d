// Demo: statistics and motion history. One line of statistics of the photograph (mean,
// deviation, extrema with their positions, per channel), and a motion-history image built from
// copies of the photograph drifting to the right: recent motion bright, older motion darker.
#include <cstdio>
#include <vector>

#include "registry.h"
#include "rvpcv.h"

namespace {

void statistics_demo(rvpcv_app::DemoContext& ctx) {
  const rvpcv_app::Image& g = ctx.gray;
  const RvpiSize roi{g.width, g.height};
  Rvp64f mean = 0, sd = 0;
  Rvp32f lo = 0, hi = 0;
  RvpiPoint plo{}, phi{};
  rvpiMean_StdDev_8u_C1R(g.row(0), g.step(), roi, &mean, &sd);
  rvpiMinMaxIndx_8u_C1R(g.row(0), g.step(), roi, &lo, &hi, &plo, &phi);
  char line[256];
  std::snprintf(line, sizeof line,
                "  gray: mean %.3f, deviation %.3f, min %g at (%d, %d), max %g at (%d, %d)\n", mean,
                sd, lo, plo.x, plo.y, hi, phi.x, phi.y);
  ctx.out() << line;
  const char* names[3] = {"red", "green", "blue"};
  for (int coi = 1; coi <= 3; ++coi) {
    rvpiMean_StdDev_8u_C3CR(ctx.photo.row(0), ctx.photo.step(), roi, coi, &mean, &sd);
    rvpiMinMaxIndx_8u_C3CR(ctx.photo.row(0), ctx.photo.step(), roi, coi, &lo, &hi, &plo, &phi);
    std::snprintf(line, sizeof line,
                  "  %s: mean %.3f, deviation %.3f, min %g at (%d, %d), max %g at (%d, %d)\n",
                  names[coi - 1], mean, sd, lo, plo.x, plo.y, hi, phi.x, phi.y);
    ctx.out() << line;
  }

  // Motion history: frame t is the photograph shifted right by 3t pixels; the silhouette of a
  // step is where two consecutive frames differ by more than 40.
  constexpr int kFrames = 8, kShift = 3;
  const int w = g.width - kShift * kFrames, h = g.height;
  const RvpiSize mroi{w, h};
  std::vector<Rvp32f> mhi(size_t(w) * h, 0.0f);
  rvpcv_app::Image diff = rvpcv_app::make_image(w, h, 1);
  RvpStatus st = rvpStsNoErr;
  for (int t = 1; t <= kFrames; ++t) {
    const Rvp8u* prev = g.row(0) + kShift * (kFrames - t + 1);
    const Rvp8u* cur = g.row(0) + kShift * (kFrames - t);
    rvpiAbsDiff_8u_C1R(prev, g.step(), cur, g.step(), diff.row(0), diff.step(), mroi);
    for (auto& v : diff.pixels) v = v > 40 ? 255 : 0;
    st = rvpiUpdateMotionHistory_8u32f_C1IR(diff.row(0), diff.step(), mhi.data(), w * 4, mroi,
                                            static_cast<Rvp32f>(t), 5.0f);
  }
  int64_t active = 0;
  for (Rvp32f v : mhi) active += v > 0.0f;
  std::snprintf(line, sizeof line,
                "  motion history over %d drifting frames (duration 5): %.1f%% of pixels "
                "recently moved, status %d\n",
                kFrames, 100.0 * double(active) / double(mhi.size()), st);
  ctx.out() << line;
  ctx.save("statistics_motion_history.png", rvpcv_app::float_to_gray(mhi.data(), w, h, w * 4));
}

}  // namespace

RVPCV_DEMO_STEP(statistics_demo, 20);

// Demo: a cleaned binary mask. The photograph's luma is thresholded into a mask of bright
// pixels (speckled by texture and noise), then opened: eroded and dilated with the same 5x5
// disc, which removes specks smaller than the disc and keeps the larger bright shapes. The
// three images sit side by side: threshold, opened mask, the mask laid over the photograph.
#include <vector>

#include "registry.h"
#include "rvpcv.h"

namespace {

void morph_demo(rvpcv_app::DemoContext& ctx) {
  const rvpcv_app::Image& g = ctx.gray;
  const int w = g.width, h = g.height;
  const RvpiSize roi{w, h};
  rvpcv_app::Image raw = rvpcv_app::make_image(w, h, 1);
  for (size_t i = 0; i < g.pixels.size(); ++i) raw.pixels[i] = g.pixels[i] > 150 ? 255 : 0;

  // A 5x5 disc.
  const Rvp8u disc[25] = {0, 1, 1, 1, 0, 1, 1, 1, 1, 1, 1, 1, 1,
                          1, 1, 1, 1, 1, 1, 1, 0, 1, 1, 1, 0};
  int spec = 0, bufsize = 0;
  rvpiMorphologyBorderGetSize_8u_C1R(w, {5, 5}, &spec, &bufsize);
  std::vector<Rvp8u> state_mem(spec), buffer(bufsize);
  auto* state = reinterpret_cast<RvpiMorphState*>(state_mem.data());
  RvpStatus st = rvpiMorphologyBorderInit_8u_C1R(w, disc, {5, 5}, state, buffer.data());
  rvpcv_app::Image eroded = rvpcv_app::make_image(w, h, 1);
  rvpcv_app::Image opened = rvpcv_app::make_image(w, h, 1);
  if (st == rvpStsNoErr)
    st = rvpiErodeBorder_8u_C1R(raw.row(0), raw.step(), eroded.row(0), eroded.step(), roi, 1, 0,
                                state, buffer.data());
  if (st == rvpStsNoErr)
    st = rvpiDilateBorder_8u_C1R(eroded.row(0), eroded.step(), opened.row(0), opened.step(), roi, 1,
                                 0, state, buffer.data());
  size_t before = 0, after = 0;
  for (size_t i = 0; i < raw.pixels.size(); ++i) {
    before += raw.pixels[i] != 0;
    after += opened.pixels[i] != 0;
  }
  ctx.out() << "  threshold 150, opening by a 5x5 disc: " << before << " -> " << after
            << " mask pixels, status " << st << "\n";

  rvpcv_app::Image side = rvpcv_app::make_image(3 * w, h, 3);
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w; ++x) {
      uint8_t* p = side.row(y) + 3 * x;
      const uint8_t r = raw.row(y)[x], o = opened.row(y)[x];
      p[0] = p[1] = p[2] = r;
      p[3 * w] = p[3 * w + 1] = p[3 * w + 2] = o;
      const uint8_t* c = ctx.photo.row(y) + 3 * x;
      uint8_t* q = p + 6 * w;
      // The kept mask in red over a dimmed photograph.
      q[0] = o ? 255 : uint8_t(c[0] / 2);
      q[1] = o ? uint8_t(c[1] / 3) : uint8_t(c[1] / 2);
      q[2] = o ? uint8_t(c[2] / 3) : uint8_t(c[2] / 2);
    }
  ctx.save("morph_opened_mask.png", side);
}

}  // namespace

RVPCV_DEMO_STEP(morph_demo, 40);

// Demo: Canny edges of the photograph (Sobel 3x3, L2 magnitude, replicated borders), as a
// white-on-black map and drawn in red over the photograph; `rvpcv canny` runs it on any image.
#include <cstdlib>
#include <string>
#include <vector>

#include "image_io.h"
#include "registry.h"
#include "rvpcv.h"

namespace {

RvpStatus edges(const rvpcv_app::Image& gray, rvpcv_app::Image& out, float low, float high) {
  const RvpiSize roi{gray.width, gray.height};
  int size = 0;
  if (RvpStatus st = rvpiCannyBorderGetSize(roi, 33, &size)) return st;
  std::vector<Rvp8u> buf(size);
  out = rvpcv_app::make_image(gray.width, gray.height, 1);
  return rvpiCannyBorder_8u_C1R(gray.row(0), gray.step(), out.row(0), out.step(), roi,
                                rvpCannySobel, 33, 1, 0, low, high, rvpCannyNormL2, buf.data());
}

void canny_demo(rvpcv_app::DemoContext& ctx) {
  rvpcv_app::Image map;
  const RvpStatus st = edges(ctx.gray, map, 60.0f, 150.0f);
  size_t count = 0;
  for (uint8_t v : map.pixels) count += v != 0;
  ctx.out() << "  Canny edges (Sobel 3x3, L2, thresholds 60 / 150): " << count
            << " edge pixels, status " << st << "\n";
  ctx.save("canny_edges.png", map);
  rvpcv_app::Image overlay = ctx.photo;
  for (int y = 0; y < map.height; ++y)
    for (int x = 0; x < map.width; ++x)
      if (map.row(y)[x]) {
        uint8_t* p = overlay.row(y) + 3 * x;
        p[0] = 255;
        p[1] = p[2] = 0;
      }
  ctx.save("canny_overlay.png", overlay);
}

int canny_cmd(int argc, char** argv) {
  if (argc < 3) return 2;
  rvpcv_app::Image gray, map;
  if (!rvpcv_app::load_image(argv[1], gray, 1)) return 1;
  const float low = argc > 3 ? std::strtof(argv[3], nullptr) : 60.0f;
  const float high = argc > 4 ? std::strtof(argv[4], nullptr) : 150.0f;
  if (edges(gray, map, low, high) != rvpStsNoErr) return 1;
  return rvpcv_app::save_png(argv[2], map) ? 0 : 1;
}

}  // namespace

RVPCV_DEMO_STEP(canny_demo, 50);
RVPCV_COMMAND(canny, "canny IN.png OUT.png [low high]  Canny edge map (Sobel 3x3, L2)", canny_cmd);

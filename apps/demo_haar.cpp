// Demo and command: Haar-cascade object detection (faces in the bundled photograph).
#include <sys/stat.h>

#include <chrono>
#include <cstdio>
#include <cstring>
#include <string>

#include "cascade.h"
#include "registry.h"

namespace {

const char kCascadeDir[] = "/usr/share/opencv4/haarcascades";

bool file_exists(const std::string& p) {
  struct stat st;
  return stat(p.c_str(), &st) == 0;
}

void draw_box(rvpcv_app::Image& img, const RvpiRect& r, int thickness) {
  const uint8_t color[3] = {255, 40, 40};
  for (int t = 0; t < thickness; ++t)
    for (int y = r.y + t; y < r.y + r.height - t; ++y)
      for (int x = r.x + t; x < r.x + r.width - t; ++x) {
        const bool edge = y == r.y + t || y == r.y + r.height - 1 - t || x == r.x + t ||
                          x == r.x + r.width - 1 - t;
        if (!edge || x < 0 || y < 0 || x >= img.width || y >= img.height) continue;
        uint8_t* p = img.row(y) + x * img.channels;
        for (int c = 0; c < img.channels && c < 3; ++c) p[c] = color[c];
      }
}

// Loads the cascade, runs the detector on the gray image, draws the hits on `canvas`.
bool detect_and_draw(const std::string& cascade_path, const rvpcv_app::Image& gray,
                     rvpcv_app::Image& canvas, std::vector<RvpiRect>& found, double& ms,
                     std::string& error) {
  rvpcv_app::HaarCascade cascade;
  if (!rvpcv_app::load_haar_cascade(cascade_path, cascade, &error)) return false;
  rvpcv_app::HaarDetector detector;
  if (!detector.init(cascade, &error)) return false;
  rvpcv_app::DetectParams params;
  params.min_width = params.min_height = 30;
  const auto t0 = std::chrono::steady_clock::now();
  found = detector.detect(gray.row(0), gray.step(), gray.width, gray.height, params);
  ms = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - t0).count();
  const int thick = std::max(2, gray.width / 250);
  for (const RvpiRect& r : found) draw_box(canvas, r, thick);
  return true;
}

void haar_demo(rvpcv_app::DemoContext& ctx) {
  const std::string cascade = std::string(kCascadeDir) + "/haarcascade_frontalface_default.xml";
  if (!file_exists(cascade)) {
    ctx.out() << "  skipped: " << cascade
              << " not found (install the distribution's opencv-data package)\n";
    return;
  }
  rvpcv_app::Image canvas = ctx.photo;
  std::vector<RvpiRect> found;
  double ms = 0;
  std::string error;
  if (!detect_and_draw(cascade, ctx.gray, canvas, found, ms, error)) {
    ctx.out() << "  face detection failed: " << error << "\n";
    return;
  }
  ctx.out() << "  frontal-face cascade: " << found.size() << " detection(s) in " << ms << " ms";
  for (const RvpiRect& r : found)
    ctx.out() << "  [" << r.x << "," << r.y << " " << r.width << "x" << r.height << "]";
  ctx.out() << "\n";
  ctx.save("haar_faces.png", canvas);
}

int detect_cmd(int argc, char** argv) {
  // argv: detect --cascade FILE IMAGE OUT.png
  if (argc != 5 || std::strcmp(argv[1], "--cascade") != 0) {
    std::fprintf(stderr, "usage: rvpcv detect --cascade FILE IMAGE OUT.png\n");
    return 2;
  }
  rvpcv_app::Image rgb;
  if (!rvpcv_app::load_image(argv[3], rgb, 3)) {
    std::fprintf(stderr, "cannot read image %s\n", argv[3]);
    return 1;
  }
  const rvpcv_app::Image gray = rvpcv_app::to_gray(rgb);
  std::vector<RvpiRect> found;
  double ms = 0;
  std::string error;
  if (!detect_and_draw(argv[2], gray, rgb, found, ms, error)) {
    std::fprintf(stderr, "%s\n", error.c_str());
    return 1;
  }
  std::printf("%zu detection(s) in %.1f ms\n", found.size(), ms);
  for (const RvpiRect& r : found)
    std::printf("  x %d y %d  %d x %d\n", r.x, r.y, r.width, r.height);
  if (!rvpcv_app::save_png(argv[4], rgb)) {
    std::fprintf(stderr, "cannot write %s\n", argv[4]);
    return 1;
  }
  return 0;
}

}  // namespace

RVPCV_DEMO_STEP(haar_demo, 70);
RVPCV_COMMAND(detect, "detect --cascade FILE IMAGE OUT.png  find objects with a Haar cascade",
              detect_cmd);

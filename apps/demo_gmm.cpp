// Gaussian-mixture background model: `rvpcv bgsub` over a folder of frames, and a demo step on
// a synthetic clip made from the photograph (sensor noise, moving boxes, their shadows).
#include <sys/stat.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "registry.h"
#include "rvpcv.h"

namespace {

RvpFGMModel default_model(int history, int components) {
  RvpFGMModel m{};
  m.numFrames = history;
  m.numGauss = components;
  m.varInit = 15.0f;
  m.varMin = 4.0f;
  m.varMax = 75.0f;
  m.varThreshold = 16.0f;
  m.bgRatio = 0.9f;
  m.varThresholdGen = 9.0f;
  m.complexityReduction = 0.05f;
  m.shadowValue = 127;
  m.shadowDetection = 1;
  m.shadowTau = 0.5f;
  return m;
}

// The model's state in a vector, prepared for one frame size.
struct Model {
  std::vector<Rvp8u> state;
  RvpiSize roi{0, 0};
  RvpStatus init(int width, int height, const RvpFGMModel& m) {
    roi = {width, height};
    int size = 0;
    if (RvpStatus st = rvpiFGMMGetBufferSize_8u_C3R(roi, m.numGauss, &size)) return st;
    state.assign(static_cast<size_t>(size), 0);
    return rvpiFGMMInit_8u_C3R(roi, m.numGauss, &m, state.data());
  }
  RvpStatus apply(const rvpcv_app::Image& frame, rvpcv_app::Image& mask) {
    return rvpiFGMMForeground_8u_C3R(frame.row(0), frame.step(), mask.row(0), mask.step(), roi,
                                     state.data(), nullptr, -1.0);
  }
  RvpStatus background(rvpcv_app::Image& out) {
    return rvpiFGMMBackground_8u_C3R(out.row(0), out.step(), roi, state.data());
  }
};

bool is_image_name(const std::string& name) {
  std::string ext = std::filesystem::path(name).extension().string();
  std::transform(ext.begin(), ext.end(), ext.begin(),
                 [](unsigned char c) { return std::tolower(c); });
  return ext == ".png" || ext == ".jpg" || ext == ".jpeg" || ext == ".bmp" || ext == ".ppm" ||
         ext == ".pgm" || ext == ".tga";
}

int bgsub_command(int argc, char** argv) {
  if (argc < 3) {
    std::fprintf(stderr, "usage: rvpcv bgsub IN_DIR OUT_DIR [HISTORY=500] [COMPONENTS=5]\n");
    return 2;
  }
  const std::string in_dir = argv[1], out_dir = argv[2];
  const int history = argc > 3 ? std::atoi(argv[3]) : 500;
  const int components = argc > 4 ? std::atoi(argv[4]) : 5;
  std::vector<std::string> files;
  std::error_code ec;
  for (const auto& e : std::filesystem::directory_iterator(in_dir, ec))
    if (e.is_regular_file() && is_image_name(e.path().string())) files.push_back(e.path().string());
  if (ec || files.empty()) {
    std::fprintf(stderr, "no images in %s\n", in_dir.c_str());
    return 1;
  }
  std::sort(files.begin(), files.end());  // frames in name order
  mkdir(out_dir.c_str(), 0755);

  Model model;
  rvpcv_app::Image frame, mask;
  for (size_t i = 0; i < files.size(); ++i) {
    if (!rvpcv_app::load_image(files[i], frame, 3)) {
      std::fprintf(stderr, "cannot read %s\n", files[i].c_str());
      return 1;
    }
    if (i == 0) {
      if (RvpStatus st =
              model.init(frame.width, frame.height, default_model(history, components))) {
        std::fprintf(stderr, "cannot prepare the model (status %d)\n", st);
        return 1;
      }
      mask = rvpcv_app::make_image(frame.width, frame.height, 1);
    } else if (frame.width != model.roi.width || frame.height != model.roi.height) {
      std::fprintf(stderr, "%s: %dx%d, but the first frame is %dx%d\n", files[i].c_str(),
                   frame.width, frame.height, model.roi.width, model.roi.height);
      return 1;
    }
    if (RvpStatus st = model.apply(frame, mask)) {
      std::fprintf(stderr, "%s: status %d\n", files[i].c_str(), st);
      return 1;
    }
    char name[64];
    std::snprintf(name, sizeof name, "/mask_%05zu.png", i);
    if (!rvpcv_app::save_png(out_dir + name, mask)) {
      std::fprintf(stderr, "cannot write %s%s\n", out_dir.c_str(), name);
      return 1;
    }
  }
  rvpcv_app::Image bg = rvpcv_app::make_image(model.roi.width, model.roi.height, 3);
  model.background(bg);
  if (!rvpcv_app::save_png(out_dir + "/background.png", bg)) return 1;
  std::printf(
      "%zu frames of %dx%d: masks (0 background, 127 shadow, 255 foreground) and "
      "background.png in %s\n",
      files.size(), model.roi.width, model.roi.height, out_dir.c_str());
  return 0;
}

// A clip made from the photograph: noise on every frame and, after `kQuiet` frames of the empty
// scene, three boxes crossing it, each with a shadow (the background at 60% brightness).
constexpr int kQuiet = 20;
void synth_frame(const rvpcv_app::Image& photo, int t, std::mt19937& rng, rvpcv_app::Image& out) {
  std::normal_distribution<float> noise(0.0f, 2.0f);
  const int w = photo.width, h = photo.height;
  struct Box {
    int x0, y0, vx, vy, bw, bh;
    uint8_t rgb[3];
  };
  const Box boxes[] = {{0, h / 5, w / 40, 0, w / 8, h / 6, {220, 40, 40}},
                       {w / 2, h / 2, -w / 60, h / 120, w / 10, h / 5, {40, 200, 60}},
                       {w / 4, h - h / 4, w / 50, -h / 90, w / 7, h / 9, {240, 220, 30}}};
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w; ++x) {
      const uint8_t* p = photo.row(y) + 3 * x;
      float v[3] = {float(p[0]), float(p[1]), float(p[2])};
      for (const Box& b : boxes) {
        if (t < kQuiet) break;
        const int bx = ((b.x0 + b.vx * t) % w + w) % w, by = ((b.y0 + b.vy * t) % h + h) % h;
        const int sx = x - bx - b.bw / 4, sy = y - by - b.bh / 3;  // shadow down and right
        if (sx >= 0 && sy >= 0 && sx < b.bw && sy < b.bh)
          for (float& c : v) c *= 0.6f;
        if (x >= bx && y >= by && x < bx + b.bw && y < by + b.bh)
          for (int c = 0; c < 3; ++c) v[c] = b.rgb[c];
      }
      uint8_t* o = out.row(y) + 3 * x;
      for (int c = 0; c < 3; ++c)
        o[c] = uint8_t(std::clamp(v[c] + noise(rng), 0.0f, 255.0f) + 0.5f);
    }
}

void gmm_demo(rvpcv_app::DemoContext& ctx) {
  const rvpcv_app::Image& photo = ctx.photo;
  const int frames = kQuiet + 40;
  Model model;
  if (RvpStatus st = model.init(photo.width, photo.height, default_model(200, 5))) {
    ctx.out() << "  model not prepared, status " << st << "\n";
    return;
  }
  rvpcv_app::Image frame = rvpcv_app::make_image(photo.width, photo.height, 3);
  rvpcv_app::Image mask = rvpcv_app::make_image(photo.width, photo.height, 1);
  std::mt19937 rng(1);
  for (int t = 0; t < frames; ++t) {
    synth_frame(photo, t, rng, frame);
    if (RvpStatus st = model.apply(frame, mask)) {
      ctx.out() << "  frame " << t << ": status " << st << "\n";
      return;
    }
  }
  size_t fg = 0, shadow = 0;
  for (uint8_t v : mask.pixels) fg += v == 255, shadow += v == 127;
  const double n = double(mask.pixels.size());
  ctx.out() << "  " << frames << " synthetic frames with moving boxes and shadows: last mask "
            << 100.0 * fg / n << "% foreground, " << 100.0 * shadow / n << "% shadow\n";
  rvpcv_app::Image bg = rvpcv_app::make_image(photo.width, photo.height, 3);
  model.background(bg);
  // Frame, mask (as gray) and rendered background side by side.
  rvpcv_app::Image strip = rvpcv_app::make_image(3 * photo.width, photo.height, 3);
  for (int y = 0; y < photo.height; ++y) {
    uint8_t* o = strip.row(y);
    std::copy(frame.row(y), frame.row(y) + frame.step(), o);
    for (int x = 0; x < photo.width; ++x) std::fill_n(o + frame.step() + 3 * x, 3, mask.row(y)[x]);
    std::copy(bg.row(y), bg.row(y) + bg.step(), o + 2 * frame.step());
  }
  ctx.save("gmm_frame_mask_background.png", strip);
  ctx.save("gmm_mask.png", mask);
  ctx.save("gmm_background.png", bg);
}

}  // namespace

RVPCV_DEMO_STEP(gmm_demo, 140);
RVPCV_COMMAND(bgsub,
              "bgsub IN_DIR OUT_DIR [HISTORY] [COMPONENTS]  background subtraction over the "
              "images of a folder (name order): masks and background",
              bgsub_command);

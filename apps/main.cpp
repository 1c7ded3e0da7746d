// rvpcv: the command-line tool. `rvpcv version`, `rvpcv demo [OUT_DIR]`, and the sub-commands
// that families register (see registry.h).
#include <sys/stat.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <iostream>

#include "registry.h"
#include "rvpcv.h"

#ifndef RVPCV_DEFAULT_PHOTO
#define RVPCV_DEFAULT_PHOTO "data/astronaut.png"
#endif

namespace rvpcv_app {

std::vector<DemoStep>& demo_steps() {
  static std::vector<DemoStep> steps;
  return steps;
}
std::vector<Command>& commands() {
  static std::vector<Command> cmds;
  return cmds;
}

bool DemoContext::save(const std::string& name, const Image& img) const {
  const std::string path = out_dir + "/" + name;
  const bool ok = save_png(path, img);
  out() << (ok ? "  wrote " : "  FAILED to write ") << path << "\n";
  return ok;
}

namespace {

struct FeatureName {
  uint64_t bit;
  const char* name;
};
const FeatureName kFeatures[] = {
    {RVP_CPU_SSE2, "sse2"},        {RVP_CPU_SSE3, "sse3"},       {RVP_CPU_SSSE3, "ssse3"},
    {RVP_CPU_SSE41, "sse4.1"},     {RVP_CPU_SSE42, "sse4.2"},    {RVP_CPU_AVX, "avx"},
    {RVP_CPU_AVX2, "avx2"},        {RVP_CPU_FMA, "fma"},         {RVP_CPU_F16C, "f16c"},
    {RVP_CPU_BMI1, "bmi1"},        {RVP_CPU_BMI2, "bmi2"},       {RVP_CPU_POPCNT, "popcnt"},
    {RVP_CPU_LZCNT, "lzcnt"},      {RVP_CPU_MOVBE, "movbe"},     {RVP_CPU_AES, "aes"},
    {RVP_CPU_PCLMULQDQ, "pclmulqdq"}, {RVP_CPU_AVX512F, "avx512f"}, {RVP_CPU_AVX512CD, "avx512cd"},
    {RVP_CPU_AVX512BW, "avx512bw"}, {RVP_CPU_AVX512DQ, "avx512dq"}, {RVP_CPU_AVX512VL, "avx512vl"},
};

int cmd_version() {
  const RvpLibraryVersion* v = rvpcvGetLibVersion();
  std::printf("%s %s, built %s\n", v->Name, v->Version, v->BuildDate);
  std::printf("version %d.%d.%d build %d, target cpu \"%.4s\"\n", v->major, v->minor,
              v->majorBuild, v->build, v->targetCpu);
  const uint64_t f = rvpGetEnabledCpuFeatures();
  std::printf("enabled cpu features (0x%llx):", static_cast<unsigned long long>(f));
  for (const FeatureName& n : kFeatures)
    if (f & n.bit) std::printf(" %s", n.name);
  std::printf("\n");
  const uint64_t needed = RVP_CPU_AVX2 | RVP_CPU_FMA;
  std::printf("this build needs avx2 and fma: %s\n", (f & needed) == needed ? "present" : "MISSING");
  int cache = 0;
  if (rvpGetMaxCacheSizeB(&cache) == 0)
    std::printf("largest cache: %d bytes\n", cache);
  else
    std::printf("largest cache: unknown\n");
  return 0;
}

int cmd_demo(int argc, char** argv) {
  const std::string out_dir = argc > 2 ? argv[2] : "rvpcv-demo";
  const std::string photo_path = argc > 3 ? argv[3] : RVPCV_DEFAULT_PHOTO;
  DemoContext ctx;
  ctx.out_dir = out_dir;
  ctx.log = &std::cout;
  if (!load_image(photo_path, ctx.photo, 3)) {
    std::fprintf(stderr, "cannot read photograph %s\n", photo_path.c_str());
    return 1;
  }
  ctx.gray = to_gray(ctx.photo);
  mkdir(out_dir.c_str(), 0755);
  std::printf("rvpcv demo on %s (%dx%d), results in %s/\n", photo_path.c_str(), ctx.photo.width,
              ctx.photo.height, out_dir.c_str());
  ctx.save("photo.png", ctx.photo);
  auto steps = demo_steps();
  std::stable_sort(steps.begin(), steps.end(),
                   [](const DemoStep& a, const DemoStep& b) { return a.order < b.order; });
  for (const DemoStep& s : steps) {
    std::printf("[%s]\n", s.name);
    s.fn(ctx);
  }
  return 0;
}

void usage() {
  std::printf("usage: rvpcv COMMAND [ARGS]\n");
  std::printf("  version                       version record and detected CPU features\n");
  std::printf("  demo [OUT_DIR] [PHOTO]        run the library on a photograph, write PNGs\n");
  for (const Command& c : commands()) std::printf("  %s\n", c.usage);
}

}  // namespace
}  // namespace rvpcv_app

int main(int argc, char** argv) {
  using namespace rvpcv_app;
  if (argc < 2) {
    usage();
    return 2;
  }
  const std::string cmd = argv[1];
  if (cmd == "version") return cmd_version();
  if (cmd == "demo") return cmd_demo(argc, argv);
  for (const Command& c : commands())
    if (cmd == c.name) return c.fn(argc - 1, argv + 1);
  usage();
  return 2;
}

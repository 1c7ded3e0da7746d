// How families plug into the `rvpcv` tool without editing shared files: a demo step or a
// sub-command is registered from the family's own apps/ source file.
//
//   static void my_step(rvpcv_app::DemoContext& ctx) { ... ctx.save("edges.png", img); }
//   RVPCV_DEMO_STEP(my_step, 40);             // steps run in ascending order
//
//   static int my_cmd(int argc, char** argv) { ... return 0; }
//   RVPCV_COMMAND(flow, "flow A.png B.png OUT.png  track points and draw motion", my_cmd);
#pragma once

#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "image_io.h"

namespace rvpcv_app {

struct DemoContext {
  std::string out_dir;  // every result goes here
  Image photo;          // the bundled photograph, RGB
  Image gray;           // its luma
  std::ostream* log;    // one or two lines per step

  // Writes a PNG into out_dir and logs its path; returns false (and logs) on failure.
  bool save(const std::string& name, const Image& img) const;
  std::ostream& out() const { return *log; }
};

using DemoFn = void (*)(DemoContext&);
using CommandFn = int (*)(int argc, char** argv);

struct DemoStep {
  const char* name;
  int order;
  DemoFn fn;
};
struct Command {
  const char* name;
  const char* usage;
  CommandFn fn;
};

std::vector<DemoStep>& demo_steps();
std::vector<Command>& commands();

struct Registrar {
  Registrar(const char* name, int order, DemoFn fn) { demo_steps().push_back({name, order, fn}); }
  Registrar(const char* name, const char* usage, CommandFn fn) {
    commands().push_back({name, usage, fn});
  }
};

}  // namespace rvpcv_app

#define RVPCV_DEMO_STEP(fn, order) \
  static const ::rvpcv_app::Registrar rvpcv_demo_##fn(#fn, order, &fn)
#define RVPCV_COMMAND(name, usage, fn) \
  static const ::rvpcv_app::Registrar rvpcv_cmd_##name(#name, usage, &fn)

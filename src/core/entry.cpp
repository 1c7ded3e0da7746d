#include "core/entry.h"

#include "rvpcore.h"

namespace rvp {
namespace {
// The library's only mutable global: written at load, never read by any routine.
int g_avx2_fma_enabled = 0;
}  // namespace

int module_entry(unsigned reason, FeatureQuery query) {
  if (reason != kProcessAttach) return 1;
  const uint64_t features = (query != nullptr ? query : &rvpGetEnabledCpuFeatures)();
  const uint64_t needed = RVP_CPU_AVX2 | RVP_CPU_FMA;
  g_avx2_fma_enabled = (features & needed) == needed ? 1 : 0;
  return 1;
}

int module_cpu_flag() { return g_avx2_fma_enabled; }

namespace {
__attribute__((constructor)) void on_load() { module_entry(kProcessAttach); }
}  // namespace

}  // namespace rvp

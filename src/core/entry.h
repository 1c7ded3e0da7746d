// The load entry. On Linux a constructor calls module_entry(kProcessAttach) when the library is
// loaded; tests call it with other reason codes and with a stand-in feature query.
#pragma once

#include <cstdint>

namespace rvp {

constexpr unsigned kProcessAttach = 1;
using FeatureQuery = uint64_t (*)();

// Returns 1 in every case. On process attach it records whether AVX2 (0x10) and FMA (0x20) are
// both enabled. Nothing in the library reads that flag: this build's kernels are fixed at build
// time and every export calls its implementation directly.
int module_entry(unsigned reason, FeatureQuery query = nullptr);

// The flag as recorded at load (or by the last process-attach call); for tests and `rvpcv version`.
int module_cpu_flag();

}  // namespace rvp

// librvpcore: aligned allocation, enabled CPU features and the largest cache size.
#include "rvpcore.h"

#include <cpuid.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>

namespace {

struct CpuidRegs {
  unsigned a = 0, b = 0, c = 0, d = 0;
};

CpuidRegs cpuid(unsigned leaf, unsigned sub = 0) {
  CpuidRegs r;
  __cpuid_count(leaf, sub, r.a, r.b, r.c, r.d);
  return r;
}

unsigned max_leaf(unsigned base) { return __get_cpuid_max(base, nullptr); }

uint64_t xgetbv0() {
  unsigned lo, hi;
  __asm__ volatile("xgetbv" : "=a"(lo), "=d"(hi) : "c"(0));
  return (static_cast<uint64_t>(hi) << 32) | lo;
}

uint64_t detect_features() {
  if (max_leaf(0) < 1) return 0;
  const CpuidRegs l1 = cpuid(1);
  uint64_t f = 0;
  auto bit = [](unsigned reg, int n) { return (reg >> n) & 1u; };
  if (bit(l1.d, 26)) f |= RVP_CPU_SSE2;
  if (bit(l1.c, 0)) f |= RVP_CPU_SSE3;
  if (bit(l1.c, 9)) f |= RVP_CPU_SSSE3;
  if (bit(l1.c, 19)) f |= RVP_CPU_SSE41;
  if (bit(l1.c, 20)) f |= RVP_CPU_SSE42;
  if (bit(l1.c, 23)) f |= RVP_CPU_POPCNT;
  if (bit(l1.c, 22)) f |= RVP_CPU_MOVBE;
  if (bit(l1.c, 25)) f |= RVP_CPU_AES;
  if (bit(l1.c, 1)) f |= RVP_CPU_PCLMULQDQ;

  // The vector-register families are usable only when the OS saves their state.
  const bool osxsave = bit(l1.c, 27);
  const uint64_t xcr0 = osxsave ? xgetbv0() : 0;
  const bool ymm_ok = (xcr0 & 0x6) == 0x6;
  const bool zmm_ok = ymm_ok && (xcr0 & 0xE0) == 0xE0;
  if (ymm_ok) {
    if (bit(l1.c, 28)) f |= RVP_CPU_AVX;
    if (bit(l1.c, 12)) f |= RVP_CPU_FMA;
    if (bit(l1.c, 29)) f |= RVP_CPU_F16C;
  }
  if (max_leaf(0) >= 7) {
    const CpuidRegs l7 = cpuid(7, 0);
    if (bit(l7.b, 3)) f |= RVP_CPU_BMI1;
    if (bit(l7.b, 8)) f |= RVP_CPU_BMI2;
    if (ymm_ok && bit(l7.b, 5)) f |= RVP_CPU_AVX2;
    if (zmm_ok) {
      if (bit(l7.b, 16)) f |= RVP_CPU_AVX512F;
      if (bit(l7.b, 28)) f |= RVP_CPU_AVX512CD;
      if (bit(l7.b, 30)) f |= RVP_CPU_AVX512BW;
      if (bit(l7.b, 17)) f |= RVP_CPU_AVX512DQ;
      if (bit(l7.b, 31)) f |= RVP_CPU_AVX512VL;
    }
  }
  if (max_leaf(0x80000000u) >= 0x80000001u) {
    const CpuidRegs e1 = cpuid(0x80000001u);
    if (bit(e1.c, 5)) f |= RVP_CPU_LZCNT;
  }
  return f;
}

// Walks a deterministic cache-parameters leaf (Intel leaf 4, AMD leaf 0x8000001D: same layout)
// and returns the largest data or unified cache, or 0 when the leaf reports nothing.
long long largest_from_cache_leaf(unsigned leaf) {
  long long best = 0;
  for (unsigned i = 0; i < 16; ++i) {
    const CpuidRegs r = cpuid(leaf, i);
    const unsigned type = r.a & 0x1F;
    if (type == 0) break;
    if (type == 2) continue;  // instruction cache
    const long long ways = ((r.b >> 22) & 0x3FF) + 1;
    const long long parts = ((r.b >> 12) & 0x3FF) + 1;
    const long long line = (r.b & 0xFFF) + 1;
    const long long sets = static_cast<long long>(r.c) + 1;
    const long long size = ways * parts * line * sets;
    if (size > best) best = size;
  }
  return best;
}

long long detect_largest_cache() {
  long long best = 0;
  if (max_leaf(0) >= 4) best = largest_from_cache_leaf(4);
  if (best == 0 && max_leaf(0x80000000u) >= 0x8000001Du) {
    const CpuidRegs e1 = cpuid(0x80000001u);
    if ((e1.c >> 22) & 1u) best = largest_from_cache_leaf(0x8000001Du);  // topology extensions
  }
  if (best == 0) {
    // Some hypervisors hide the cache leaves; the OS may still know.
    for (int name : {_SC_LEVEL4_CACHE_SIZE, _SC_LEVEL3_CACHE_SIZE, _SC_LEVEL2_CACHE_SIZE,
                     _SC_LEVEL1_DCACHE_SIZE}) {
      const long v = sysconf(name);
      if (v > best) best = v;
    }
  }
  return best;
}

}  // namespace

extern "C" {

RVPCORE_API void* rvpMalloc(int len) {
  if (len < 1) return nullptr;
  void* p = nullptr;
  if (posix_memalign(&p, 64, static_cast<size_t>(len)) != 0) return nullptr;
  return p;
}

RVPCORE_API void rvpFree(void* ptr) { std::free(ptr); }

RVPCORE_API uint64_t rvpGetEnabledCpuFeatures(void) {
  static const uint64_t features = detect_features();
  return features;
}

RVPCORE_API int rvpGetMaxCacheSizeB(int* pSizeByte) {
  if (pSizeByte == nullptr) return -8;
  static const long long largest = detect_largest_cache();
  if (largest <= 0) return -2;
  *pSizeByte = largest > 0x7FFFFFFF ? 0x7FFFFFFF : static_cast<int>(largest);
  return 0;
}

}  // extern "C"

/* rvpcore: the core services that librvpcv relies on.
 *
 * A thin library of its own: aligned allocation, the processor features that are enabled
 * (supported by the processor and by the operating system), and the size of the largest cache.
 * Compiles as C99 and as C++. */
#ifndef RVPCORE_H
#define RVPCORE_H

#include <stdint.h>

#if defined(RVPCORE_BUILD) || defined(RVPCV_BUILD)
#define RVPCORE_API __attribute__((visibility("default")))
#else
#define RVPCORE_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* Feature bits of rvpGetEnabledCpuFeatures. A bit is set only when the processor reports the
 * feature AND the operating system saves the register state it needs (checked with XGETBV for
 * the AVX and AVX-512 families), so a set bit means "safe to execute". */
#define RVP_CPU_SSE2      0x1ULL
#define RVP_CPU_SSE3      0x2ULL
#define RVP_CPU_SSSE3     0x4ULL
#define RVP_CPU_SSE41     0x8ULL
#define RVP_CPU_AVX2      0x10ULL /* with RVP_CPU_FMA: what this build of librvpcv needs */
#define RVP_CPU_FMA       0x20ULL
#define RVP_CPU_SSE42     0x40ULL
#define RVP_CPU_AVX       0x80ULL
#define RVP_CPU_F16C      0x100ULL
#define RVP_CPU_BMI1      0x200ULL
#define RVP_CPU_BMI2      0x400ULL
#define RVP_CPU_POPCNT    0x800ULL
#define RVP_CPU_LZCNT     0x1000ULL
#define RVP_CPU_MOVBE     0x2000ULL
#define RVP_CPU_AES       0x4000ULL
#define RVP_CPU_PCLMULQDQ 0x8000ULL
#define RVP_CPU_AVX512F   0x10000ULL
#define RVP_CPU_AVX512CD  0x20000ULL
#define RVP_CPU_AVX512BW  0x40000ULL
#define RVP_CPU_AVX512DQ  0x80000ULL
#define RVP_CPU_AVX512VL  0x100000ULL

/* Allocates len bytes aligned to 64 bytes (a cache line, and enough for any vector load).
 * Returns NULL when len < 1 or when memory is exhausted. Release with rvpFree. */
RVPCORE_API void* rvpMalloc(int len);

/* Releases memory from rvpMalloc; NULL is accepted and ignored. */
RVPCORE_API void rvpFree(void* ptr);

/* Mask of enabled processor features (RVP_CPU_* bits above). */
RVPCORE_API uint64_t rvpGetEnabledCpuFeatures(void);

/* Writes the size in bytes of the largest data or unified cache to *pSizeByte.
 * Returns 0 when the size is known; -8 when pSizeByte is NULL; -2 when no cache size can be
 * determined (neither CPUID's cache leaves nor the operating system report one), in which case
 * *pSizeByte is not written. */
RVPCORE_API int rvpGetMaxCacheSizeB(int* pSizeByte);

#ifdef __cplusplus
}
#endif

#endif /* RVPCORE_H */

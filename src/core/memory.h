// Allocation wrappers and the fill/copy routines that families use on working memory and large
// outputs. Fills of large buffers bypass the cache, but only when the buffer is larger than both
// 2 MiB and the largest cache: clearing a buffer that fits in cache and is read again soon should
// leave it there.
#pragma once

#include <cstdint>

#include "rvpcv.h"

namespace rvp {

// Null (without calling the allocator) for a count below 1; otherwise what rvpMalloc returns.
void* alloc_bytes(int len);
void free_bytes(void* p);

constexpr int64_t kStreamingThreshold = 2097152;  // 2 MiB
constexpr int kCopyBlockKernelMin = 32768;         // copy_8u switches kernels here
constexpr int64_t kCopy32ChunkWords = 536870904;   // 2147483616 bytes: fits a signed 32-bit count
constexpr int64_t kCopy32ChunkFrom = 0x20000000;

// The streaming decision as a pure function of what the cache query answered.
constexpr bool use_streaming_stores(int64_t bytes, RvpStatus cache_status, int cache_bytes) {
  return bytes > kStreamingThreshold && cache_status == rvpStsNoErr && cache_bytes > 0 &&
         cache_bytes < bytes;
}

// Asks rvpGetMaxCacheSizeB (only for buffers over the threshold) and decides.
bool streaming_for(int64_t bytes);

// Words per chunk that copy_32s uses for a copy of `count` words.
constexpr int64_t copy_32s_chunk(int64_t count) {
  return count >= kCopy32ChunkFrom ? kCopy32ChunkWords : count;
}
constexpr bool copy_8u_uses_block_kernel(int count) { return count >= kCopyBlockKernelMin; }

// The routines: null → -8, count below 1 → -5, else 0. Nothing is written on error.
RvpStatus zero_8u(Rvp8u* dst, int count);
RvpStatus zero_32s(Rvp32s* dst, int count);
RvpStatus set_32f(Rvp32f value, Rvp32f* dst, int count);
RvpStatus set_8u(Rvp8u value, Rvp8u* dst, int count);
RvpStatus set_16u(Rvp16u value, Rvp16u* dst, int count);
RvpStatus copy_8u(const Rvp8u* src, Rvp8u* dst, int count);
RvpStatus copy_32s(const Rvp32s* src, Rvp32s* dst, int count);

namespace detail {
// The two store paths of every fill, exposed so tests can run both on any machine: byte k of
// the buffer becomes elem[k % elem_size] (elem_size 1, 2 or 4), whatever dst's alignment.
void fill_cached(uint8_t* dst, int64_t bytes, const uint8_t* elem, int elem_size);
void fill_streaming(uint8_t* dst, int64_t bytes, const uint8_t* elem, int elem_size);
void copy_small(const uint8_t* src, uint8_t* dst, int64_t bytes);
void copy_block(const uint8_t* src, uint8_t* dst, int64_t bytes);
}  // namespace detail

}  // namespace rvp

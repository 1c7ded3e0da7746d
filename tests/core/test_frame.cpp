// The library frame: version record, load entry, allocation, fill/copy routines and their
// streaming decision, scratch carving, argument checks.
#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "core/checks.h"
#include "core/entry.h"
#include "core/memory.h"
#include "core/scratch.h"
#include "rvpcv.h"
#include "support/guarded.h"

namespace {

TEST(Version, RecordFieldsAndStrings) {
  const RvpLibraryVersion* v = rvpcvGetLibVersion();
  ASSERT_NE(v, nullptr);
  EXPECT_EQ(v, rvpcvGetLibVersion());  // one constant record
  EXPECT_EQ(v->major, 8);
  EXPECT_EQ(v->minor, 2);
  EXPECT_EQ(v->majorBuild, 3);
  EXPECT_EQ(v->build, 48108);
  EXPECT_EQ(std::memcmp(v->targetCpu, "l9\0\0", 4), 0);
  EXPECT_STREQ(v->Name, "rvpCV AVX2 (l9)");
  EXPECT_STREQ(v->Version, "8.2.3 (r48108)");
  EXPECT_STREQ(v->BuildDate, "Jul 23 2015");
  EXPECT_EQ(offsetof(RvpLibraryVersion, targetCpu), 16u);
  EXPECT_EQ(offsetof(RvpLibraryVersion, Name), 24u);
}

uint64_t features_both() { return RVP_CPU_AVX2 | RVP_CPU_FMA | RVP_CPU_SSE2; }
uint64_t features_avx2_only() { return RVP_CPU_AVX2; }
uint64_t features_fma_only() { return RVP_CPU_FMA; }

TEST(LoadEntry, FlagNeedsBothAvx2AndFma) {
  EXPECT_EQ(rvp::module_entry(rvp::kProcessAttach, features_both), 1);
  EXPECT_EQ(rvp::module_cpu_flag(), 1);
  EXPECT_EQ(rvp::module_entry(rvp::kProcessAttach, features_avx2_only), 1);
  EXPECT_EQ(rvp::module_cpu_flag(), 0);
  EXPECT_EQ(rvp::module_entry(rvp::kProcessAttach, features_both), 1);
  EXPECT_EQ(rvp::module_entry(rvp::kProcessAttach, features_fma_only), 1);
  EXPECT_EQ(rvp::module_cpu_flag(), 0);
}

TEST(LoadEntry, OtherReasonsReturnOneAndTouchNothing) {
  rvp::module_entry(rvp::kProcessAttach, features_both);
  for (unsigned reason : {0u, 2u, 3u, 99u}) {
    EXPECT_EQ(rvp::module_entry(reason, features_avx2_only), 1);
    EXPECT_EQ(rvp::module_cpu_flag(), 1) << "reason " << reason;
  }
  // The real query on this machine: the build needs AVX2 and FMA, so the flag must be 1.
  rvp::module_entry(rvp::kProcessAttach);
  EXPECT_EQ(rvp::module_cpu_flag(), 1);
}

TEST(CoreServices, FeaturesAndCache) {
  const uint64_t f = rvpGetEnabledCpuFeatures();
  EXPECT_EQ(f & (RVP_CPU_AVX2 | RVP_CPU_FMA), RVP_CPU_AVX2 | RVP_CPU_FMA);
  EXPECT_NE(f & RVP_CPU_AVX, 0u);  // AVX2 implies the OS saves YMM state
  EXPECT_EQ(rvpGetMaxCacheSizeB(nullptr), rvpStsNullPtrErr);
  int size = -12345;
  const int st = rvpGetMaxCacheSizeB(&size);
  if (st == 0)
    EXPECT_GT(size, 0);
  else
    EXPECT_EQ(size, -12345);  // failure leaves the output alone
}

TEST(CoreServices, MallocAlignmentAndRefusals) {
  for (int len : {1, 3, 64, 1000, 1 << 20}) {
    void* p = rvpMalloc(len);
    ASSERT_NE(p, nullptr);
    EXPECT_EQ(reinterpret_cast<uintptr_t>(p) % 64, 0u);
    std::memset(p, 1, len);
    rvpFree(p);
  }
  EXPECT_EQ(rvpMalloc(0), nullptr);
  EXPECT_EQ(rvpMalloc(-5), nullptr);
  rvpFree(nullptr);
  EXPECT_EQ(rvp::alloc_bytes(0), nullptr);
  EXPECT_EQ(rvp::alloc_bytes(-1), nullptr);
  void* p = rvp::alloc_bytes(10);
  EXPECT_NE(p, nullptr);
  rvp::free_bytes(p);
}

TEST(Streaming, DecisionIsAPureFunctionOfTheCacheAnswer) {
  using rvp::use_streaming_stores;
  const int mib = 1 << 20;
  EXPECT_FALSE(use_streaming_stores(2097152, 0, mib));    // exactly 2 MiB: ordinary
  EXPECT_TRUE(use_streaming_stores(2097153, 0, mib));     // larger than 2 MiB and the cache
  EXPECT_FALSE(use_streaming_stores(2097153, -2, mib));   // failed query: ordinary
  EXPECT_FALSE(use_streaming_stores(2097153, 0, 0));      // no size reported
  EXPECT_FALSE(use_streaming_stores(2097153, 0, 2097153));  // cache as large as the buffer
  EXPECT_TRUE(use_streaming_stores(2097153, 0, 2097152));
  EXPECT_FALSE(use_streaming_stores(100 * mib, 0, 200 * mib));
}

TEST(Streaming, CopyKernelChoiceAndChunks) {
  EXPECT_FALSE(rvp::copy_8u_uses_block_kernel(32767));
  EXPECT_TRUE(rvp::copy_8u_uses_block_kernel(32768));
  EXPECT_EQ(rvp::copy_32s_chunk(0x1FFFFFFF), 0x1FFFFFFF);
  EXPECT_EQ(rvp::copy_32s_chunk(0x20000000), 536870904);
  EXPECT_LE(536870904LL * 4, 2147483647LL);
}

// Both store paths must write exactly the pattern, at every alignment and length, and nothing
// outside: the buffer ends (or starts) against a guard page.
TEST(Fill, BothPathsWriteExactlyThePattern) {
  const uint8_t elems[3][4] = {{0x5C}, {0x34, 0x12}, {0x78, 0x56, 0x34, 0x12}};
  const int sizes[3] = {1, 2, 4};
  for (int e = 0; e < 3; ++e)
    for (int64_t bytes : {1, 3, 31, 32, 63, 64, 65, 127, 200, 4099})
      for (int offset = 0; offset < 8; ++offset)
        for (rvpt::Guard g : {rvpt::Guard::After, rvpt::Guard::Before}) {
          rvpt::GuardedBuffer buf(size_t(bytes + offset), g);
          for (int path = 0; path < 2; ++path) {
            std::memset(buf.data(), 0xEE, buf.size());
            uint8_t* dst = buf.data() + (g == rvpt::Guard::After ? offset : 0);
            if (path == 0)
              rvp::detail::fill_cached(dst, bytes, elems[e], sizes[e]);
            else
              rvp::detail::fill_streaming(dst, bytes, elems[e], sizes[e]);
            for (int64_t k = 0; k < bytes; ++k)
              ASSERT_EQ(dst[k], elems[e][k % sizes[e]]) << "path " << path << " k " << k;
            const uint8_t* other = g == rvpt::Guard::After ? buf.data() : buf.data() + bytes;
            for (int k = 0; k < offset; ++k) ASSERT_EQ(other[k], 0xEE);
          }
        }
}

TEST(Fill, RoutinesCheckArgumentsAndFill) {
  std::vector<Rvp8u> b(100, 7);
  EXPECT_EQ(rvp::zero_8u(nullptr, 5), rvpStsNullPtrErr);
  EXPECT_EQ(rvp::zero_8u(b.data(), 0), rvpStsBadArgErr);
  EXPECT_EQ(rvp::set_8u(3, b.data(), -1), rvpStsBadArgErr);
  EXPECT_EQ(rvp::copy_8u(nullptr, b.data(), 5), rvpStsNullPtrErr);
  EXPECT_EQ(rvp::copy_8u(b.data(), b.data() + 50, 0), rvpStsBadArgErr);
  for (Rvp8u v : b) ASSERT_EQ(v, 7);  // nothing written on error

  std::vector<Rvp32f> f(1000, 1.0f);
  EXPECT_EQ(rvp::set_32f(-0.0f, f.data() + 1, 998), rvpStsNoErr);
  EXPECT_EQ(f[0], 1.0f);
  EXPECT_TRUE(std::signbit(f[1]) && f[998] == 0.0f && std::signbit(f[998]));
  EXPECT_EQ(f[999], 1.0f);

  std::vector<Rvp16u> h(301, 9);
  auto* odd = reinterpret_cast<Rvp16u*>(reinterpret_cast<uint8_t*>(h.data()) + 1);
  EXPECT_EQ(rvp::set_16u(0xBEEF, odd, 299), rvpStsNoErr);  // a misaligned destination works
  for (int i = 0; i < 299; ++i) {
    Rvp16u v;
    std::memcpy(&v, reinterpret_cast<uint8_t*>(odd) + 2 * i, 2);
    ASSERT_EQ(v, 0xBEEF);
  }

  std::vector<Rvp32s> w(50, -1);
  EXPECT_EQ(rvp::zero_32s(w.data() + 10, 30), rvpStsNoErr);
  EXPECT_EQ(w[9], -1);
  EXPECT_EQ(w[10], 0);
  EXPECT_EQ(w[39], 0);
  EXPECT_EQ(w[40], -1);
}

// A buffer above the streaming threshold goes through the real cache query and whichever path
// it chooses here; either way the content must be exact.
TEST(Fill, LargeBufferThroughThePublicRoutine) {
  const int n = 3 * 1024 * 1024 + 13;
  rvpt::GuardedBuffer buf(size_t(n), rvpt::Guard::After);
  ASSERT_EQ(rvp::set_8u(0x3C, buf.data(), n), rvpStsNoErr);
  for (int k = 0; k < n; k += 4093) ASSERT_EQ(buf.data()[k], 0x3C);
  EXPECT_EQ(buf.data()[n - 1], 0x3C);
}

TEST(Copy, BothKernelsAtEveryAlignment) {
  std::vector<uint8_t> src(70000);
  for (size_t i = 0; i < src.size(); ++i) src[i] = static_cast<uint8_t>(i * 131 + 7);
  for (int n : {1, 31, 32, 33, 129, 32767, 32768, 40001})
    for (int so = 0; so < 4; ++so)
      for (int dso = 0; dso < 4; ++dso) {
        rvpt::GuardedBuffer dst(size_t(n + dso), rvpt::Guard::After);
        ASSERT_EQ(rvp::copy_8u(src.data() + so, dst.data() + dso, n), rvpStsNoErr);
        ASSERT_EQ(std::memcmp(dst.data() + dso, src.data() + so, size_t(n)), 0) << n;
        rvp::detail::copy_small(src.data() + so, dst.data() + dso, n);
        ASSERT_EQ(std::memcmp(dst.data() + dso, src.data() + so, size_t(n)), 0) << n;
      }
  std::vector<Rvp32s> a(1000), b(1000, 0);
  for (int i = 0; i < 1000; ++i) a[i] = i * 7919 - 100000;
  EXPECT_EQ(rvp::copy_32s(a.data(), b.data(), 999), rvpStsNoErr);
  EXPECT_TRUE(std::equal(a.begin(), a.begin() + 999, b.begin()));
  EXPECT_EQ(b[999], 0);
}

TEST(Scratch, CarvingFromOddAddressesStaysInsideTheQueriedSize) {
  const std::initializer_list<int64_t> parts = {1, 100, 33, 64};
  const int64_t total = rvp::scratch_bytes(parts);
  EXPECT_EQ(total, 32 + 128 + 64 + 64 + 64);
  for (int offset = 0; offset < 64; ++offset) {
    rvpt::GuardedBuffer buf(size_t(total), rvpt::Guard::After);
    (void)offset;
    uint8_t* base = buf.data();
    rvp::ScratchCarver carver(base);
    uint8_t* last = nullptr;
    for (int64_t part : parts) {
      uint8_t* p = carver.take<uint8_t>(part);
      EXPECT_EQ(reinterpret_cast<uintptr_t>(p) % 32, 0u);
      EXPECT_GE(p, base);
      std::memset(p, 0x11, size_t(part));  // faults if carving ran past the queried size
      last = p + part;
    }
    EXPECT_LE(last, base + total);
  }
  EXPECT_EQ(rvp::scratch_bytes({int64_t{1} << 31}), -1);
}

TEST(Scratch, EveryStartAddressModulo32) {
  std::vector<uint8_t> storage(4096);
  for (int off = 0; off < 64; ++off) {
    rvp::ScratchCarver c(storage.data() + off);
    auto* p = c.take<float>(3);
    const auto* base = storage.data() + off;
    EXPECT_EQ(reinterpret_cast<uintptr_t>(p) % 32, 0u);
    EXPECT_LT(reinterpret_cast<const uint8_t*>(p) - base, 32);
    EXPECT_EQ(c.cursor() - reinterpret_cast<uint8_t*>(p), 32);
  }
}

TEST(Checks, OrderAndWidths) {
  using namespace rvp;
  int x = 0;
  EXPECT_EQ(any_null(&x, static_cast<int*>(nullptr)), rvpStsNullPtrErr);
  EXPECT_EQ(any_null(&x, &x), rvpStsNoErr);
  EXPECT_EQ(check_roi({0, 5}), rvpStsSizeErr);
  EXPECT_EQ(check_roi({5, -1}), rvpStsSizeErr);
  EXPECT_EQ(check_roi({1, 1}), rvpStsNoErr);
  const RvpiSize roi{10, 2};
  EXPECT_EQ(check_steps({image<float>(42, roi)}), rvpStsNotEvenStepErr);
  EXPECT_EQ(check_steps({image<float>(36, roi)}), rvpStsStepErr);
  EXPECT_EQ(check_steps({image<float>(-40, roi)}), rvpStsStepErr);
  EXPECT_EQ(check_steps({mask_image(10, roi), image<float>(40, roi)}), rvpStsNoErr);
  // -14 anywhere in a group wins over -108 earlier in it.
  EXPECT_EQ(check_steps({image<float>(42, roi), image<float>(39, roi)}), rvpStsStepErr);
  // A row wider than 2^31 bytes is a step error, never a wrapped comparison.
  EXPECT_EQ(check_steps({image<float>(0x7FFFFFF0, RvpiSize{0x40000000, 1}, 3)}), rvpStsStepErr);
}

}  // namespace

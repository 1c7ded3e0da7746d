// Accumulation and absolute differences next to their OpenCV counterparts, on the photograph.
//
// Every operation is registered three times per size: "rvpcv", "opencv", and "memcpy", a plain
// memcpy that moves the same number of bytes (bytes read + bytes written, copied as half that
// many bytes from one buffer to another) as the bandwidth yardstick. Accumulators are updated
// in place on every iteration, as a caller running the function over a video would, and restart
// from the same state every kRestart calls (outside the timing): the same frame fed thousands
// of times would otherwise drive a running average over black pixels into subnormal numbers,
// and both libraries would then be timing the processor's subnormal assists.
#include <benchmark/benchmark.h>

#include <cstring>
#include <map>
#include <utility>
#include <vector>

#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include "bench_common.h"
#include "rvpcv.h"

namespace {

using rvpb::Size2;

// Inputs of one size, all derived from the photograph: the frame and its mirror
// image (a second, different but equally natural frame), their RGB versions,
// 16-bit and float versions, a mask that selects the brighter half of the
// scene, and an accumulator holding a running mean.
struct Inputs {
  cv::Mat g1, g2;  // 8u gray
  cv::Mat c1, c2;  // 8u RGB
  cv::Mat w1, w2;  // 16u gray (8u * 257: the full 16-bit range)
  cv::Mat f1, f2;  // 32f gray scaled to [0, 1]: squares and products are not exact
  cv::Mat mask;    // 8u, 255 where g1 is brighter than 100, 0 elsewhere
  cv::Mat acc0;    // 32f starting accumulator
};

const Inputs& inputs(Size2 s) {
  static std::map<std::pair<int, int>, Inputs> cache;
  auto key = std::make_pair(s.width, s.height);
  auto it = cache.find(key);
  if (it != cache.end()) return it->second;
  Inputs in;
  in.g1 = rvpb::photo(s, 1);
  cv::flip(in.g1, in.g2, 1);
  in.c1 = rvpb::photo(s, 3);
  cv::flip(in.c1, in.c2, 1);
  in.g1.convertTo(in.w1, CV_16U, 257.0);
  in.g2.convertTo(in.w2, CV_16U, 257.0);
  in.g1.convertTo(in.f1, CV_32F, 1.0 / 255);
  in.g2.convertTo(in.f2, CV_32F, 1.0 / 255);
  cv::threshold(in.g1, in.mask, 100, 255, cv::THRESH_BINARY);
  cv::addWeighted(in.f1, 0.5, in.f2, 0.5, 0.0, in.acc0);
  return cache.emplace(key, std::move(in)).first->second;
}

RvpiSize roi_of(const cv::Mat& m) { return {m.cols, m.rows}; }
int step_of(const cv::Mat& m) { return static_cast<int>(m.step); }

// One operation: bytes moved per pixel (reads + writes), how to make its output
// image (the accumulator for in-place forms), and the two implementations.
struct Op {
  const char* name;
  int bytes_per_pixel;
  cv::Mat (*make_out)(const Inputs&);
  RvpStatus (*ours)(const Inputs&, cv::Mat&);
  void (*theirs)(const Inputs&, cv::Mat&);
};

cv::Mat acc_copy(const Inputs& in) { return in.acc0.clone(); }
cv::Mat out_like_g(const Inputs& in) { return cv::Mat(in.g1.size(), CV_8UC1); }
cv::Mat out_like_c(const Inputs& in) { return cv::Mat(in.c1.size(), CV_8UC3); }
cv::Mat out_like_w(const Inputs& in) { return cv::Mat(in.w1.size(), CV_16UC1); }
cv::Mat out_like_f(const Inputs& in) { return cv::Mat(in.f1.size(), CV_32FC1); }

constexpr float kAlpha = 0.05f;

#define ACC_ARGS(src) src.ptr<Rvp8u>(), step_of(src)
#define ACC_ARGS_F(src) src.ptr<Rvp32f>(), step_of(src)
#define DST_F(acc) acc.ptr<Rvp32f>(), step_of(acc), roi_of(acc)
#define MASK(in) in.mask.ptr<Rvp8u>(), step_of(in.mask)

const Op kOps[] = {
    // ---- Add ------------------------------------------------------------------------------------
    {"Add_8u32f", 9, acc_copy,
     [](const Inputs& in, cv::Mat& a) { return rvpiAdd_8u32f_C1IR(ACC_ARGS(in.g1), DST_F(a)); },
     [](const Inputs& in, cv::Mat& a) { cv::accumulate(in.g1, a); }},
    {"Add_8u32f_Mask", 10, acc_copy,
     [](const Inputs& in, cv::Mat& a) {
       return rvpiAdd_8u32f_C1IMR(ACC_ARGS(in.g1), MASK(in), DST_F(a));
     },
     [](const Inputs& in, cv::Mat& a) { cv::accumulate(in.g1, a, in.mask); }},
    {"Add_32f_Mask", 13, acc_copy,
     [](const Inputs& in, cv::Mat& a) {
       return rvpiAdd_32f_C1IMR(ACC_ARGS_F(in.f1), MASK(in), DST_F(a));
     },
     [](const Inputs& in, cv::Mat& a) { cv::accumulate(in.f1, a, in.mask); }},
    // ---- AddSquare ------------------------------------------------------------------------------
    {"AddSquare_8u32f", 9, acc_copy,
     [](const Inputs& in, cv::Mat& a) {
       return rvpiAddSquare_8u32f_C1IR(ACC_ARGS(in.g1), DST_F(a));
     },
     [](const Inputs& in, cv::Mat& a) { cv::accumulateSquare(in.g1, a); }},
    {"AddSquare_8u32f_Mask", 10, acc_copy,
     [](const Inputs& in, cv::Mat& a) {
       return rvpiAddSquare_8u32f_C1IMR(ACC_ARGS(in.g1), MASK(in), DST_F(a));
     },
     [](const Inputs& in, cv::Mat& a) { cv::accumulateSquare(in.g1, a, in.mask); }},
    {"AddSquare_32f", 12, acc_copy,
     [](const Inputs& in, cv::Mat& a) {
       return rvpiAddSquare_32f_C1IR(ACC_ARGS_F(in.f1), DST_F(a));
     },
     [](const Inputs& in, cv::Mat& a) { cv::accumulateSquare(in.f1, a); }},
    {"AddSquare_32f_Mask", 13, acc_copy,
     [](const Inputs& in, cv::Mat& a) {
       return rvpiAddSquare_32f_C1IMR(ACC_ARGS_F(in.f1), MASK(in), DST_F(a));
     },
     [](const Inputs& in, cv::Mat& a) { cv::accumulateSquare(in.f1, a, in.mask); }},
    // ---- AddProduct -----------------------------------------------------------------------------
    {"AddProduct_8u32f", 10, acc_copy,
     [](const Inputs& in, cv::Mat& a) {
       return rvpiAddProduct_8u32f_C1IR(ACC_ARGS(in.g1), ACC_ARGS(in.g2), DST_F(a));
     },
     [](const Inputs& in, cv::Mat& a) { cv::accumulateProduct(in.g1, in.g2, a); }},
    {"AddProduct_8u32f_Mask", 11, acc_copy,
     [](const Inputs& in, cv::Mat& a) {
       return rvpiAddProduct_8u32f_C1IMR(ACC_ARGS(in.g1), ACC_ARGS(in.g2), MASK(in), DST_F(a));
     },
     [](const Inputs& in, cv::Mat& a) { cv::accumulateProduct(in.g1, in.g2, a, in.mask); }},
    {"AddProduct_32f", 16, acc_copy,
     [](const Inputs& in, cv::Mat& a) {
       return rvpiAddProduct_32f_C1IR(ACC_ARGS_F(in.f1), ACC_ARGS_F(in.f2), DST_F(a));
     },
     [](const Inputs& in, cv::Mat& a) { cv::accumulateProduct(in.f1, in.f2, a); }},
    {"AddProduct_32f_Mask", 17, acc_copy,
     [](const Inputs& in, cv::Mat& a) {
       return rvpiAddProduct_32f_C1IMR(ACC_ARGS_F(in.f1), ACC_ARGS_F(in.f2), MASK(in), DST_F(a));
     },
     [](const Inputs& in, cv::Mat& a) { cv::accumulateProduct(in.f1, in.f2, a, in.mask); }},
    // ---- AddWeighted ----------------------------------------------------------------------------
    {"AddWeighted_8u32f", 9, acc_copy,
     [](const Inputs& in, cv::Mat& a) {
       return rvpiAddWeighted_8u32f_C1IR(ACC_ARGS(in.g1), DST_F(a), kAlpha);
     },
     [](const Inputs& in, cv::Mat& a) { cv::accumulateWeighted(in.g1, a, kAlpha); }},
    {"AddWeighted_8u32f_Mask", 10, acc_copy,
     [](const Inputs& in, cv::Mat& a) {
       return rvpiAddWeighted_8u32f_C1IMR(ACC_ARGS(in.g1), MASK(in), DST_F(a), kAlpha);
     },
     [](const Inputs& in, cv::Mat& a) { cv::accumulateWeighted(in.g1, a, kAlpha, in.mask); }},
    {"AddWeighted_32f", 12, acc_copy,
     [](const Inputs& in, cv::Mat& a) {
       return rvpiAddWeighted_32f_C1IR(ACC_ARGS_F(in.f1), DST_F(a), kAlpha);
     },
     [](const Inputs& in, cv::Mat& a) { cv::accumulateWeighted(in.f1, a, kAlpha); }},
    {"AddWeighted_32f_Mask", 13, acc_copy,
     [](const Inputs& in, cv::Mat& a) {
       return rvpiAddWeighted_32f_C1IMR(ACC_ARGS_F(in.f1), MASK(in), DST_F(a), kAlpha);
     },
     [](const Inputs& in, cv::Mat& a) { cv::accumulateWeighted(in.f1, a, kAlpha, in.mask); }},
    {"AddWeighted_32f_TwoSource", 12, out_like_f,
     [](const Inputs& in, cv::Mat& d) {
       return rvpiAddWeighted_32f_C1R(ACC_ARGS_F(in.f1), ACC_ARGS_F(in.f2), DST_F(d), kAlpha);
     },
     [](const Inputs& in, cv::Mat& d) {
       cv::addWeighted(in.f1, kAlpha, in.f2, 1.0 - kAlpha, 0.0, d);
     }},
    // ---- AbsDiff --------------------------------------------------------------------------------
    {"AbsDiff_8u", 3, out_like_g,
     [](const Inputs& in, cv::Mat& d) {
       return rvpiAbsDiff_8u_C1R(ACC_ARGS(in.g1), ACC_ARGS(in.g2), d.ptr<Rvp8u>(), step_of(d),
                                 roi_of(d));
     },
     [](const Inputs& in, cv::Mat& d) { cv::absdiff(in.g1, in.g2, d); }},
    {"AbsDiff_8u_C3", 9, out_like_c,
     [](const Inputs& in, cv::Mat& d) {
       return rvpiAbsDiff_8u_C3R(ACC_ARGS(in.c1), ACC_ARGS(in.c2), d.ptr<Rvp8u>(), step_of(d),
                                 roi_of(d));
     },
     [](const Inputs& in, cv::Mat& d) { cv::absdiff(in.c1, in.c2, d); }},
    {"AbsDiff_16u", 6, out_like_w,
     [](const Inputs& in, cv::Mat& d) {
       return rvpiAbsDiff_16u_C1R(in.w1.ptr<Rvp16u>(), step_of(in.w1), in.w2.ptr<Rvp16u>(),
                                  step_of(in.w2), d.ptr<Rvp16u>(), step_of(d), roi_of(d));
     },
     [](const Inputs& in, cv::Mat& d) { cv::absdiff(in.w1, in.w2, d); }},
    {"AbsDiff_32f", 12, out_like_f,
     [](const Inputs& in, cv::Mat& d) {
       return rvpiAbsDiff_32f_C1R(ACC_ARGS_F(in.f1), ACC_ARGS_F(in.f2), DST_F(d));
     },
     [](const Inputs& in, cv::Mat& d) { cv::absdiff(in.f1, in.f2, d); }},
    // ---- AbsDiffC -------------------------------------------------------------------------------
    {"AbsDiffC_8u", 2, out_like_g,
     [](const Inputs& in, cv::Mat& d) {
       return rvpiAbsDiffC_8u_C1R(ACC_ARGS(in.g1), d.ptr<Rvp8u>(), step_of(d), roi_of(d), 100);
     },
     [](const Inputs& in, cv::Mat& d) { cv::absdiff(in.g1, cv::Scalar(100), d); }},
    {"AbsDiffC_16u", 4, out_like_w,
     [](const Inputs& in, cv::Mat& d) {
       return rvpiAbsDiffC_16u_C1R(in.w1.ptr<Rvp16u>(), step_of(in.w1), d.ptr<Rvp16u>(), step_of(d),
                                   roi_of(d), 25700);
     },
     [](const Inputs& in, cv::Mat& d) { cv::absdiff(in.w1, cv::Scalar(25700), d); }},
    {"AbsDiffC_32f", 8, out_like_f,
     [](const Inputs& in, cv::Mat& d) {
       return rvpiAbsDiffC_32f_C1R(ACC_ARGS_F(in.f1), DST_F(d), 0.4f);
     },
     [](const Inputs& in, cv::Mat& d) { cv::absdiff(in.f1, cv::Scalar(0.4), d); }},
};

#undef ACC_ARGS
#undef ACC_ARGS_F
#undef DST_F
#undef MASK

int64_t bytes_per_call(const Op& op, Size2 s) {
  return int64_t(op.bytes_per_pixel) * s.width * s.height;
}

constexpr int64_t kRestart = 256;

// Puts the starting accumulator back every kRestart calls (outputs of the other forms are
// overwritten on every call anyway and are left alone).
void maybe_restart(benchmark::State& state, const Op& op, const Inputs& in, cv::Mat& out,
                   int64_t& calls) {
  if (++calls % kRestart != 0 || op.make_out != acc_copy) return;
  state.PauseTiming();
  in.acc0.copyTo(out);
  state.ResumeTiming();
}

void run_ours(benchmark::State& state, const Op& op, Size2 s) {
  const Inputs& in = inputs(s);
  cv::Mat out = op.make_out(in);
  int64_t calls = 0;
  for (auto _ : state) {
    maybe_restart(state, op, in, out, calls);
    const RvpStatus st = op.ours(in, out);
    if (st != rvpStsNoErr) {
      state.SkipWithError("rvpcv returned an error status");
      break;
    }
    benchmark::DoNotOptimize(out.data);
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(int64_t(state.iterations()) * bytes_per_call(op, s));
}

void run_theirs(benchmark::State& state, const Op& op, Size2 s) {
  const Inputs& in = inputs(s);
  cv::Mat out = op.make_out(in);
  int64_t calls = 0;
  for (auto _ : state) {
    maybe_restart(state, op, in, out, calls);
    op.theirs(in, out);
    benchmark::DoNotOptimize(out.data);
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(int64_t(state.iterations()) * bytes_per_call(op, s));
}

// The yardstick: memcpy of half the bytes the operation moves, so that bytes
// read plus bytes written are the same. 64-byte aligned buffers, as OpenCV and
// the accumulators get.
void run_memcpy(benchmark::State& state, const Op& op, Size2 s) {
  const size_t half = size_t(bytes_per_call(op, s) / 2);
  cv::Mat from(1, static_cast<int>(half), CV_8UC1, cv::Scalar(1));
  cv::Mat to(1, static_cast<int>(half), CV_8UC1, cv::Scalar(0));
  for (auto _ : state) {
    std::memcpy(to.data, from.data, half);
    benchmark::DoNotOptimize(to.data);
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(int64_t(state.iterations()) * bytes_per_call(op, s));
}

const bool kRegistered = [] {
  for (const Op& op : kOps) {
    for (Size2 s : rvpb::kSizes) {
      benchmark::RegisterBenchmark(rvpb::bench_name(op.name, "rvpcv", s).c_str(),
                                   [&op, s](benchmark::State& st) { run_ours(st, op, s); });
      benchmark::RegisterBenchmark(rvpb::bench_name(op.name, "opencv", s).c_str(),
                                   [&op, s](benchmark::State& st) { run_theirs(st, op, s); });
      benchmark::RegisterBenchmark(rvpb::bench_name(op.name, "memcpy", s).c_str(),
                                   [&op, s](benchmark::State& st) { run_memcpy(st, op, s); });
    }
  }
  return true;
}();

}  // namespace

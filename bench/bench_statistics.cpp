// Norms, norms of differences, mean and deviation, extrema with positions: rvpcv against the
// matching OpenCV call on the photograph (8u gray, and the same as 32f), with and without a
// mask taken from the photograph itself (pixels brighter than 90).
#include <benchmark/benchmark.h>

#include <memory>
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
#include <string>

#include "bench_common.h"
#include "rvpcv.h"

namespace {

struct Inputs {
  cv::Mat a, b, mask, all;
};

// a: the photograph; b: the photograph shifted by 3 pixels (a natural difference image).
Inputs inputs(rvpb::Size2 s, int depth) {
  Inputs in;
  const cv::Mat big = rvpb::photo({s.width + 3, s.height}, 1);
  cv::Mat a = big(cv::Rect(0, 0, s.width, s.height)).clone();
  cv::Mat b = big(cv::Rect(3, 0, s.width, s.height)).clone();
  cv::threshold(a, in.mask, 90, 255, cv::THRESH_BINARY);
  in.all = cv::Mat(a.size(), CV_8U, cv::Scalar(1));
  if (depth == CV_32F) {
    a.convertTo(in.a, CV_32F, 1.0 / 255);
    b.convertTo(in.b, CV_32F, 1.0 / 255);
  } else {
    in.a = a;
    in.b = b;
  }
  return in;
}

template <class T>
const T* P(const cv::Mat& m) {
  return m.ptr<T>();
}
int S(const cv::Mat& m) { return static_cast<int>(m.step); }

template <class T>
struct Fns;
template <>
struct Fns<Rvp8u> {
  static constexpr int depth = CV_8U;
  static constexpr const char* name = "8u";
  static constexpr decltype(&rvpiNorm_Inf_8u_C1MR) norm[3] = {
      rvpiNorm_Inf_8u_C1MR, rvpiNorm_L1_8u_C1MR, rvpiNorm_L2_8u_C1MR};
  static constexpr decltype(&rvpiNormDiff_Inf_8u_C1MR) diff[3] = {
      rvpiNormDiff_Inf_8u_C1MR, rvpiNormDiff_L1_8u_C1MR, rvpiNormDiff_L2_8u_C1MR};
  static constexpr auto msd = rvpiMean_StdDev_8u_C1R;
  static constexpr auto msdm = rvpiMean_StdDev_8u_C1MR;
  static constexpr auto mmi = rvpiMinMaxIndx_8u_C1R;
  static constexpr auto mmim = rvpiMinMaxIndx_8u_C1MR;
};
template <>
struct Fns<Rvp32f> {
  static constexpr int depth = CV_32F;
  static constexpr const char* name = "32f";
  static constexpr decltype(&rvpiNorm_Inf_32f_C1MR) norm[3] = {
      rvpiNorm_Inf_32f_C1MR, rvpiNorm_L1_32f_C1MR, rvpiNorm_L2_32f_C1MR};
  static constexpr decltype(&rvpiNormDiff_Inf_32f_C1MR) diff[3] = {
      rvpiNormDiff_Inf_32f_C1MR, rvpiNormDiff_L1_32f_C1MR, rvpiNormDiff_L2_32f_C1MR};
  static constexpr auto msd = rvpiMean_StdDev_32f_C1R;
  static constexpr auto msdm = rvpiMean_StdDev_32f_C1MR;
  static constexpr auto mmi = rvpiMinMaxIndx_32f_C1R;
  static constexpr auto mmim = rvpiMinMaxIndx_32f_C1MR;
};

const char* kNormNames[3] = {"Inf", "L1", "L2"};
const int kCvNorms[3] = {cv::NORM_INF, cv::NORM_L1, cv::NORM_L2};

template <class T>
void register_type() {
  using F = Fns<T>;
  for (rvpb::Size2 s : rvpb::kSizes) {
    const auto in = std::make_shared<Inputs>(inputs(s, F::depth));
    const RvpiSize roi{s.width, s.height};
    const int64_t bytes = int64_t{s.width} * s.height * int64_t{sizeof(T)};
    const std::string t = F::name;
    for (int k = 0; k < 3; ++k) {
      // Norm and NormDiff exist only with a mask.
      const std::string norm = std::string("Norm_") + kNormNames[k] + "_" + t + "_Mask";
      benchmark::RegisterBenchmark(
          rvpb::bench_name(norm, "rvpcv", s).c_str(), [in, roi, k, bytes](benchmark::State& st) {
            Rvp64f r;
            for (auto _ : st) {
              F::norm[k](P<T>(in->a), S(in->a), P<Rvp8u>(in->mask), S(in->mask), roi, &r);
              benchmark::DoNotOptimize(r);
            }
            st.SetBytesProcessed(st.iterations() * bytes);
          });
      benchmark::RegisterBenchmark(
          rvpb::bench_name(norm, "opencv", s).c_str(), [in, k, bytes](benchmark::State& st) {
            for (auto _ : st) benchmark::DoNotOptimize(cv::norm(in->a, kCvNorms[k], in->mask));
            st.SetBytesProcessed(st.iterations() * bytes);
          });
      const std::string diff = std::string("NormDiff_") + kNormNames[k] + "_" + t + "_Mask";
      benchmark::RegisterBenchmark(rvpb::bench_name(diff, "rvpcv", s).c_str(),
                                   [in, roi, k, bytes](benchmark::State& st) {
                                     Rvp64f r;
                                     for (auto _ : st) {
                                       F::diff[k](P<T>(in->a), S(in->a), P<T>(in->b), S(in->b),
                                                  P<Rvp8u>(in->mask), S(in->mask), roi, &r);
                                       benchmark::DoNotOptimize(r);
                                     }
                                     st.SetBytesProcessed(st.iterations() * 2 * bytes);
                                   });
      benchmark::RegisterBenchmark(
          rvpb::bench_name(diff, "opencv", s).c_str(), [in, k, bytes](benchmark::State& st) {
            for (auto _ : st)
              benchmark::DoNotOptimize(cv::norm(in->a, in->b, kCvNorms[k], in->mask));
            st.SetBytesProcessed(st.iterations() * 2 * bytes);
          });
    }
    for (int masked = 0; masked < 2; ++masked) {
      const std::string sfx = "_" + t + (masked ? "_Mask" : "");
      benchmark::RegisterBenchmark(rvpb::bench_name("Mean_StdDev" + sfx, "rvpcv", s).c_str(),
                                   [in, roi, masked, bytes](benchmark::State& st) {
                                     Rvp64f m, d;
                                     for (auto _ : st) {
                                       if (masked)
                                         F::msdm(P<T>(in->a), S(in->a), P<Rvp8u>(in->mask),
                                                 S(in->mask), roi, &m, &d);
                                       else
                                         F::msd(P<T>(in->a), S(in->a), roi, &m, &d);
                                       benchmark::DoNotOptimize(m);
                                       benchmark::DoNotOptimize(d);
                                     }
                                     st.SetBytesProcessed(st.iterations() * bytes);
                                   });
      benchmark::RegisterBenchmark(rvpb::bench_name("Mean_StdDev" + sfx, "opencv", s).c_str(),
                                   [in, masked, bytes](benchmark::State& st) {
                                     cv::Scalar m, d;
                                     for (auto _ : st) {
                                       if (masked)
                                         cv::meanStdDev(in->a, m, d, in->mask);
                                       else
                                         cv::meanStdDev(in->a, m, d);
                                       benchmark::DoNotOptimize(m);
                                     }
                                     st.SetBytesProcessed(st.iterations() * bytes);
                                   });
      benchmark::RegisterBenchmark(rvpb::bench_name("MinMaxIndx" + sfx, "rvpcv", s).c_str(),
                                   [in, roi, masked, bytes](benchmark::State& st) {
                                     Rvp32f lo, hi;
                                     RvpiPoint plo, phi;
                                     for (auto _ : st) {
                                       if (masked)
                                         F::mmim(P<T>(in->a), S(in->a), P<Rvp8u>(in->mask),
                                                 S(in->mask), roi, &lo, &hi, &plo, &phi);
                                       else
                                         F::mmi(P<T>(in->a), S(in->a), roi, &lo, &hi, &plo, &phi);
                                       benchmark::DoNotOptimize(lo);
                                       benchmark::DoNotOptimize(phi);
                                     }
                                     st.SetBytesProcessed(st.iterations() * bytes);
                                   });
      benchmark::RegisterBenchmark(rvpb::bench_name("MinMaxIndx" + sfx, "opencv", s).c_str(),
                                   [in, masked, bytes](benchmark::State& st) {
                                     double lo, hi;
                                     cv::Point plo, phi;
                                     for (auto _ : st) {
                                       if (masked)
                                         cv::minMaxLoc(in->a, &lo, &hi, &plo, &phi, in->mask);
                                       else
                                         cv::minMaxLoc(in->a, &lo, &hi, &plo, &phi);
                                       benchmark::DoNotOptimize(lo);
                                       benchmark::DoNotOptimize(phi);
                                     }
                                     st.SetBytesProcessed(st.iterations() * bytes);
                                   });
    }
  }
}

const bool registered = [] {
  register_type<Rvp8u>();
  register_type<Rvp32f>();
  return true;
}();

}  // namespace

// Fixed-kernel filters and the Gaussian against OpenCV, same input, border replicate.
#include <functional>
#include <opencv2/imgproc.hpp>
#include <vector>

#include "bench_common.h"

namespace {

using rvpb::Size2;

void reg(const std::string& op, const char* impl, Size2 s, std::function<void()> fn,
         int64_t bytes) {
  benchmark::RegisterBenchmark(rvpb::bench_name(op, impl, s).c_str(), [fn, bytes](
                                                                          benchmark::State& st) {
    for (auto _ : st) fn();
    st.SetBytesProcessed(int64_t(st.iterations()) * bytes);
  })->Unit(benchmark::kMicrosecond);
}

using Deriv = RvpStatus (*)(const Rvp8u*, int, Rvp16s*, int, RvpiSize, int, RvpiBorderType, Rvp8u,
                            Rvp8u*);
using DerivSize = RvpStatus (*)(RvpiSize, int, int*);

struct Registrar {
  Registrar() {
    for (Size2 s : rvpb::kSizes) {
      const RvpiSize roi{s.width, s.height};
      auto gray = std::make_shared<cv::Mat>(rvpb::photo(s, 1));
      auto color = std::make_shared<cv::Mat>(rvpb::photo(s, 3));
      auto gray32 = std::make_shared<cv::Mat>();
      gray->convertTo(*gray32, CV_32F);
      const int64_t px = int64_t(s.width) * s.height;

      auto deriv = [&](const std::string& name, Deriv fn, DerivSize sz, int mask,
                       std::function<void(const cv::Mat&, cv::Mat&)> cvop) {
        auto dst = std::make_shared<cv::Mat>(gray->size(), CV_16S);
        auto dst2 = std::make_shared<cv::Mat>(gray->size(), CV_16S);
        int size = 0;
        sz(roi, mask, &size);
        auto buf = std::make_shared<std::vector<Rvp8u>>(size);
        reg(
            name, "rvpcv", s,
            [=] {
              fn(gray->ptr(), int(gray->step), dst->ptr<Rvp16s>(), int(dst->step), roi, mask, 1, 0,
                 buf->data());
            },
            px);
        reg(
            name, "opencv", s, [=] { cvop(*gray, *dst2); }, px);
      };
      deriv("Sobel3x3_8u16s", rvpiFilterSobelNegVertBorder_8u16s_C1R,
            rvpiFilterSobelNegVertGetBufferSize_8u16s_C1R, 33, [](const cv::Mat& a, cv::Mat& b) {
              cv::Sobel(a, b, CV_16S, 1, 0, 3, -1, 0, cv::BORDER_REPLICATE);
            });
      deriv("Sobel5x5_8u16s", rvpiFilterSobelNegVertBorder_8u16s_C1R,
            rvpiFilterSobelNegVertGetBufferSize_8u16s_C1R, 55, [](const cv::Mat& a, cv::Mat& b) {
              cv::Sobel(a, b, CV_16S, 1, 0, 5, -1, 0, cv::BORDER_REPLICATE);
            });
      deriv("Laplacian3x3_8u16s", rvpiFilterLaplacianBorder_8u16s_C1R,
            rvpiFilterLaplacianGetBufferSize_8u16s_C1R, 33, [](const cv::Mat& a, cv::Mat& b) {
              cv::Laplacian(a, b, CV_16S, 3, 1, 0, cv::BORDER_REPLICATE);
            });
      deriv("Laplacian5x5_8u16s", rvpiFilterLaplacianBorder_8u16s_C1R,
            rvpiFilterLaplacianGetBufferSize_8u16s_C1R, 55, [](const cv::Mat& a, cv::Mat& b) {
              cv::Laplacian(a, b, CV_16S, 5, 1, 0, cv::BORDER_REPLICATE);
            });
      {
        auto dst = std::make_shared<cv::Mat>(gray->size(), CV_16S);
        auto dst2 = std::make_shared<cv::Mat>(gray->size(), CV_16S);
        int size = 0;
        rvpiFilterScharrVertGetBufferSize_8u16s_C1R(roi, &size);
        auto buf = std::make_shared<std::vector<Rvp8u>>(size);
        reg(
            "Scharr_8u16s", "rvpcv", s,
            [=] {
              rvpiFilterScharrVertBorder_8u16s_C1R(gray->ptr(), int(gray->step), dst->ptr<Rvp16s>(),
                                                   int(dst->step), roi, 1, 0, buf->data());
            },
            px);
        reg(
            "Scharr_8u16s", "opencv", s,
            [=] { cv::Scharr(*gray, *dst2, CV_16S, 1, 0, 1, 0, cv::BORDER_REPLICATE); }, px);
      }
      for (int mask : {33, 55}) {
        const int k = mask == 33 ? 3 : 5;
        auto d8 = std::make_shared<cv::Mat>(gray->size(), CV_8U);
        auto d32 = std::make_shared<cv::Mat>(gray->size(), CV_32F);
        int s8 = 0, s32 = 0;
        rvpiFilterLowpassGetBufferSize_8u_C1R(roi, mask, &s8);
        rvpiFilterLowpassGetBufferSize_32f_C1R(roi, mask, &s32);
        auto b8 = std::make_shared<std::vector<Rvp8u>>(s8);
        auto b32 = std::make_shared<std::vector<Rvp8u>>(s32);
        const std::string n8 = "Lowpass" + std::to_string(k) + "x" + std::to_string(k) + "_8u";
        const std::string n32 = "Lowpass" + std::to_string(k) + "x" + std::to_string(k) + "_32f";
        reg(
            n8, "rvpcv", s,
            [=] {
              rvpiFilterLowpassBorder_8u_C1R(gray->ptr(), int(gray->step), d8->ptr(), int(d8->step),
                                             roi, mask, 1, 0, b8->data());
            },
            px);
        reg(
            n8, "opencv", s,
            [=] { cv::blur(*gray, *d8, cv::Size(k, k), cv::Point(-1, -1), cv::BORDER_REPLICATE); },
            px);
        reg(
            n32, "rvpcv", s,
            [=] {
              rvpiFilterLowpassBorder_32f_C1R(gray32->ptr<float>(), int(gray32->step),
                                              d32->ptr<float>(), int(d32->step), roi, mask, 1, 0,
                                              b32->data());
            },
            px * 4);
        reg(
            n32, "opencv", s,
            [=] {
              cv::blur(*gray32, *d32, cv::Size(k, k), cv::Point(-1, -1), cv::BORDER_REPLICATE);
            },
            px * 4);
      }
      for (int ch : {1, 3})
        for (int K : {5, 11}) {
          auto src = ch == 1 ? gray : color;
          auto dst = std::make_shared<cv::Mat>(src->size(), src->type());
          const float sigma = 0.3f * ((K - 1) * 0.5f - 1) + 0.8f;
          int ss = 0, bs = 0;
          rvpiFilterGaussianGetBufferSize(roi, K, rvp8u, ch, &ss, &bs);
          auto spec = std::make_shared<std::vector<Rvp8u>>(ss);
          auto buf = std::make_shared<std::vector<Rvp8u>>(bs);
          rvpiFilterGaussianInit(roi, K, sigma, 1, rvp8u, ch, spec->data(), buf->data());
          const std::string name = "Gaussian" + std::to_string(K) + "_8u_C" + std::to_string(ch);
          reg(
              name, "rvpcv", s,
              [=] {
                const Rvp8u v3[3] = {0, 0, 0};
                if (ch == 1)
                  rvpiFilterGaussianBorder_8u_C1R(src->ptr(), int(src->step), dst->ptr(),
                                                  int(dst->step), roi, 0, spec->data(),
                                                  buf->data());
                else
                  rvpiFilterGaussianBorder_8u_C3R(src->ptr(), int(src->step), dst->ptr(),
                                                  int(dst->step), roi, v3, spec->data(),
                                                  buf->data());
              },
              px * ch);
          reg(
              name, "opencv", s,
              [=] {
                cv::GaussianBlur(*src, *dst, cv::Size(K, K), sigma, sigma, cv::BORDER_REPLICATE);
              },
              px * ch);
        }
    }
  }
};

const Registrar registrar;

}  // namespace

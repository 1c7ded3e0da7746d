// Dilation and erosion against OpenCV: 8u C1/C3 and 32f C1 with 3x3, 5x5 and 15x15 rectangles
// and a 5x5 disc, replicated border, the same photograph on both sides.
#include <functional>
#include <memory>
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

// The state and work buffer of one configuration, kept alive by the benchmark closure.
struct Prepared {
  std::vector<Rvp8u> state, buffer;
  RvpiMorphState* st() { return reinterpret_cast<RvpiMorphState*>(state.data()); }
};

std::shared_ptr<Prepared> prepare(const cv::Mat& img, const cv::Mat& element) {
  auto p = std::make_shared<Prepared>();
  const RvpiSize m{element.cols, element.rows};
  int spec = 0, buf = 0;
  const bool f32 = img.depth() == CV_32F;
  const int ch = img.channels();
  if (f32)
    rvpiMorphologyBorderGetSize_32f_C1R(img.cols, m, &spec, &buf);
  else if (ch == 1)
    rvpiMorphologyBorderGetSize_8u_C1R(img.cols, m, &spec, &buf);
  else
    rvpiMorphologyBorderGetSize_8u_C3R(img.cols, m, &spec, &buf);
  p->state.resize(spec);
  p->buffer.resize(buf);
  if (f32)
    rvpiMorphologyBorderInit_32f_C1R(img.cols, element.ptr(), m, p->st(), p->buffer.data());
  else if (ch == 1)
    rvpiMorphologyBorderInit_8u_C1R(img.cols, element.ptr(), m, p->st(), p->buffer.data());
  else
    rvpiMorphologyBorderInit_8u_C3R(img.cols, element.ptr(), m, p->st(), p->buffer.data());
  return p;
}

struct Registrar {
  Registrar() {
    for (Size2 s : rvpb::kSizes) {
      auto gray = std::make_shared<cv::Mat>(rvpb::photo(s, 1));
      auto color = std::make_shared<cv::Mat>(rvpb::photo(s, 3));
      auto gray32 = std::make_shared<cv::Mat>();
      gray->convertTo(*gray32, CV_32F);
      const int64_t px = int64_t(s.width) * s.height;
      const RvpiSize roi{s.width, s.height};
      struct Shape {
        const char* name;
        int shape;
        int size;
      } shapes[] = {{"3x3", cv::MORPH_RECT, 3},
                    {"5x5", cv::MORPH_RECT, 5},
                    {"15x15", cv::MORPH_RECT, 15},
                    {"Disc5x5", cv::MORPH_ELLIPSE, 5}};
      struct Input {
        const char* name;
        std::shared_ptr<cv::Mat> img;
      } inputs[] = {{"8u_C1", gray}, {"8u_C3", color}, {"32f_C1", gray32}};
      for (const Shape& sh : shapes) {
        const cv::Mat element = cv::getStructuringElement(sh.shape, {sh.size, sh.size});
        for (const Input& in : inputs) {
          auto prep = prepare(*in.img, element);
          auto img = in.img;
          auto out = std::make_shared<cv::Mat>(img->size(), img->type());
          auto out2 = std::make_shared<cv::Mat>(img->size(), img->type());
          const int ch = img->channels();
          const bool f32 = img->depth() == CV_32F;
          for (bool dilate : {true, false}) {
            const std::string op =
                std::string(dilate ? "Dilate" : "Erode") + sh.name + "_" + in.name;
            reg(
                op, "rvpcv", s,
                [=] {
                  const int ss = int(img->step), ds = int(out->step);
                  const Rvp8u v3[3] = {};
                  if (f32) {
                    auto f = dilate ? rvpiDilateBorder_32f_C1R : rvpiErodeBorder_32f_C1R;
                    f(img->ptr<Rvp32f>(), ss, out->ptr<Rvp32f>(), ds, roi, 1, 0.f, prep->st(),
                      prep->buffer.data());
                  } else if (ch == 1) {
                    auto f = dilate ? rvpiDilateBorder_8u_C1R : rvpiErodeBorder_8u_C1R;
                    f(img->ptr(), ss, out->ptr(), ds, roi, 1, 0, prep->st(), prep->buffer.data());
                  } else {
                    auto f = dilate ? rvpiDilateBorder_8u_C3R : rvpiErodeBorder_8u_C3R;
                    f(img->ptr(), ss, out->ptr(), ds, roi, 1, v3, prep->st(), prep->buffer.data());
                  }
                },
                px * ch * int64_t(img->elemSize1()));
            const cv::Point anchor((sh.size - 1) / 2, (sh.size - 1) / 2);
            reg(
                op, "opencv", s,
                [=] {
                  if (dilate)
                    cv::dilate(*img, *out2, element, anchor, 1, cv::BORDER_REPLICATE);
                  else
                    cv::erode(*img, *out2, element, anchor, 1, cv::BORDER_REPLICATE);
                },
                px * ch * int64_t(img->elemSize1()));
          }
        }
      }
    }
  }
} registrar;

}  // namespace

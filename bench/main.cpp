#include <benchmark/benchmark.h>

#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "bench_common.h"

namespace rvpb {
cv::Mat photo(Size2 s, int channels) {
  static const cv::Mat original = cv::imread(RVPCV_DATA_DIR "/astronaut.png", cv::IMREAD_COLOR);
  cv::Mat resized, out;
  cv::resize(original, resized, cv::Size(s.width, s.height), 0, 0, cv::INTER_CUBIC);
  if (channels == 1)
    cv::cvtColor(resized, out, cv::COLOR_BGR2GRAY);
  else
    cv::cvtColor(resized, out, cv::COLOR_BGR2RGB);
  return out;
}
}  // namespace rvpb

int main(int argc, char** argv) {
  cv::setNumThreads(1);  // single-threaded comparison, always
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}

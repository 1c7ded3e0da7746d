// The cascade detector (apps/cascade.h, built on the library's Haar stages, integral images and
// window deviations) against cv::CascadeClassifier on photographs with faces: the raw windows
// that survive every stage at one scale, and the grouped multi-scale detections.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>
#include <opencv2/objdetect.hpp>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "../../apps/cascade.h"
#include "support/reference_cascade.h"

namespace {

const std::string kCascades = "/usr/share/opencv4/haarcascades/";
const std::string kExamples = "/usr/share/doc/opencv-doc/examples/data/";

bool exists(const std::string& p) {
  struct stat st;
  return stat(p.c_str(), &st) == 0;
}

struct Photo {
  std::string path;
  cv::Mat gray;
};

std::vector<Photo> photos() {
  std::vector<Photo> out;
  for (const std::string& p : {std::string(RVPCV_DATA_DIR "/astronaut.png"),
                               kExamples + "messi5.jpg", kExamples + "basketball1.png"}) {
    cv::Mat g = cv::imread(p, cv::IMREAD_GRAYSCALE);
    if (!g.empty()) out.push_back({p, g});
  }
  return out;
}

class HaarVsOpenCV : public ::testing::TestWithParam<const char*> {
 protected:
  void SetUp() override {
    path_ = kCascades + GetParam();
    if (!exists(path_)) GTEST_SKIP() << path_ << " missing: install opencv-data";
    if (!exists(kExamples + "messi5.jpg"))
      GTEST_SKIP() << "photographs missing: install opencv-doc";
    ASSERT_TRUE(rvpt::read_cascade(path_, cascade_));
    std::string err;
    ASSERT_TRUE(detector_.init(cascade_, &err)) << err;
    if (!reference_.available()) GTEST_SKIP() << "OpenCV's object-detection module is missing";
    ASSERT_TRUE(reference_.load(path_));
    cv::setNumThreads(1);
  }
  std::string path_;
  rvpcv_app::HaarCascade cascade_;
  rvpcv_app::HaarDetector detector_;
  rvpt::ReferenceCascade reference_;
};

// At one window size (the cascade's own, on the photograph reduced by f), OpenCV's ungrouped
// candidates are the windows that pass every stage; the detector must find the same set.
TEST_P(HaarVsOpenCV, RawCandidatesAtFixedScalesAgree) {
  const cv::Size win(cascade_.width, cascade_.height);
  int64_t both = 0, only_ref = 0, only_ours = 0;
  for (const Photo& ph : photos())
    for (double f = 1.0; f < 7.0; f += 0.25) {
      cv::Mat g;
      cv::resize(ph.gray, g, cv::Size(int(ph.gray.cols / f), int(ph.gray.rows / f)), 0, 0,
                 cv::INTER_AREA);
      std::vector<cv::Rect> ref;
      reference_.detectMultiScale(g, ref, 1.1, 0, 0, win, win);
      std::set<std::pair<int, int>> a, b;
      for (const cv::Rect& r : ref) a.insert({r.x, r.y});
      for (const RvpiPoint& p : detector_.candidates(g.data, int(g.step), g.cols, g.rows, 2))
        b.insert({p.x, p.y});
      for (const auto& p : a) (b.count(p) ? both : only_ref) += 1;
      for (const auto& p : b) only_ours += !a.count(p);
    }
  std::printf("[ agreement ] %s: %lld common raw candidates, %lld only OpenCV, %lld only rvpcv\n",
              GetParam(), (long long)both, (long long)only_ref, (long long)only_ours);
  ASSERT_GT(both, 20);  // the photographs have faces: many windows pass
  EXPECT_GE(double(both) / double(both + only_ref + only_ours), 0.98);
}

double iou(const cv::Rect& a, const cv::Rect& b) {
  const double i = (a & b).area();
  return i / (a.area() + b.area() - i);
}

TEST_P(HaarVsOpenCV, GroupedDetectionsFindTheSameFaces) {
  for (const Photo& ph : photos()) {
    std::vector<cv::Rect> ref;
    reference_.detectMultiScale(ph.gray, ref, 1.1, 3, 0, cv::Size(30, 30), cv::Size());
    rvpcv_app::DetectParams p;
    p.min_width = p.min_height = 30;
    const std::vector<RvpiRect> ours =
        detector_.detect(ph.gray.data, int(ph.gray.step), ph.gray.cols, ph.gray.rows, p);
    ASSERT_FALSE(ref.empty()) << ph.path;
    int matched = 0;
    for (const cv::Rect& r : ref) {
      double best = 0;
      for (const RvpiRect& o : ours) best = std::max(best, iou(r, {o.x, o.y, o.width, o.height}));
      matched += best >= 0.5;
      EXPECT_GE(best, 0.5) << ph.path << ": OpenCV's detection " << r << " has no match";
    }
    std::printf("[ detections ] %s %s: OpenCV %zu, rvpcv %zu, matched %d\n", GetParam(),
                ph.path.c_str(), ref.size(), ours.size(), matched);
    EXPECT_EQ(ours.size(), ref.size()) << ph.path;
  }
}

INSTANTIATE_TEST_SUITE_P(FrontalFace, HaarVsOpenCV,
                         ::testing::Values("haarcascade_frontalface_default.xml",
                                           "haarcascade_frontalface_alt.xml"));

}  // namespace

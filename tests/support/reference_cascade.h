// OpenCV's cascade detector, used as a black-box reference by the cross-checks and the
// benchmark, and a cascade reader through OpenCV's file storage for the same programs (the tool
// reads cascades with pugixml, which those programs do not link).
#pragma once

#include <opencv2/core.hpp>
#include <opencv2/objdetect.hpp>
#include <string>
#include <vector>

#include "../../apps/cascade.h"

namespace rvpt {

// Reads the cascade through OpenCV's own file reader (the tool reads it with pugixml; this test
// is about the detection arithmetic, not the XML).
inline bool read_cascade(const std::string& path, rvpcv_app::HaarCascade& c) {
  cv::FileStorage fs(path, cv::FileStorage::READ);
  if (!fs.isOpened()) return false;
  const cv::FileNode root = fs.getFirstTopLevelNode();
  c.width = int(root["width"]);
  c.height = int(root["height"]);
  std::vector<std::vector<rvpcv_app::HaarRect>> features;
  std::vector<bool> tilted;
  for (const cv::FileNode& f : root["features"]) {
    std::vector<rvpcv_app::HaarRect> rects;
    for (const cv::FileNode& r : f["rects"]) {
      std::vector<float> v;
      r >> v;
      rects.push_back({{int(v[0]), int(v[1]), int(v[2]), int(v[3])}, v[4]});
    }
    features.push_back(rects);
    tilted.push_back(!f["tilted"].empty() && int(f["tilted"]) != 0);
  }
  for (const cv::FileNode& s : root["stages"]) {
    rvpcv_app::HaarStage stage;
    stage.threshold = float(s["stageThreshold"]);
    for (const cv::FileNode& w : s["weakClassifiers"]) {
      std::vector<double> node, leaf;
      w["internalNodes"] >> node;
      w["leafValues"] >> leaf;
      if (node.size() != 4 || leaf.size() != 2) return false;
      rvpcv_app::HaarWeak weak;
      weak.rects = features[size_t(node[2])];
      weak.tilted = tilted[size_t(node[2])];
      weak.threshold = float(node[3]);
      weak.left = float(leaf[size_t(-node[0])]);
      weak.right = float(leaf[size_t(-node[1])]);
      stage.weak.push_back(weak);
    }
    c.stages.push_back(stage);
  }
  return !c.stages.empty();
}

// OpenCV's detector behind the small interface the cross-checks and the benchmark use.
class ReferenceCascade {
 public:
  bool available() const { return true; }
  bool load(const std::string& path) { return classifier_.load(path); }
  void detectMultiScale(const cv::Mat& img, std::vector<cv::Rect>& out, double scale_factor,
                        int min_neighbors, int flags, cv::Size min_size, cv::Size max_size) {
    classifier_.detectMultiScale(img, out, scale_factor, min_neighbors, flags, min_size,
                                 max_size);
  }

 private:
  cv::CascadeClassifier classifier_;
};

}  // namespace rvpt

// OpenCV's cascade detector, used as a black-box reference by the cross-checks and the
// benchmark, and a cascade reader through OpenCV's file storage for the same programs (the tool
// reads cascades with pugixml, which those programs do not link). The build links only OpenCV's
// core, imgproc, imgcodecs and video modules, so the object-detection module is opened at run time
// and its four entry points are looked up by their (Itanium C++ ABI) names: construction,
// destruction, load and detectMultiScale.
#pragma once

#include <dlfcn.h>

#include <new>
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

class ReferenceCascade {
 public:
  ReferenceCascade() {
    lib_ = dlopen("libopencv_objdetect.so.406", RTLD_NOW | RTLD_LOCAL);
    if (!lib_) lib_ = dlopen("libopencv_objdetect.so", RTLD_NOW | RTLD_LOCAL);
    if (!lib_) return;
    ctor_ = reinterpret_cast<Ctor>(dlsym(lib_, "_ZN2cv17CascadeClassifierC1Ev"));
    dtor_ = reinterpret_cast<Ctor>(dlsym(lib_, "_ZN2cv17CascadeClassifierD1Ev"));
    load_ = reinterpret_cast<Load>(dlsym(
        lib_,
        "_ZN2cv17CascadeClassifier4loadERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEE"));
    detect_ = reinterpret_cast<Detect>(
        dlsym(lib_,
              "_ZN2cv17CascadeClassifier16detectMultiScaleERKNS_11_InputArrayERSt6vectorINS_"
              "5Rect_IiEESaIS6_EEdiiNS_5Size_IiEESB_"));
    if (ctor_ && dtor_ && load_ && detect_) {
      ctor_(obj());
      constructed_ = true;
    }
  }
  ~ReferenceCascade() {
    if (constructed_) dtor_(obj());
    if (lib_) dlclose(lib_);
  }
  ReferenceCascade(const ReferenceCascade&) = delete;
  ReferenceCascade& operator=(const ReferenceCascade&) = delete;

  bool available() const { return constructed_; }
  bool load(const std::string& path) { return constructed_ && load_(obj(), path); }
  void detectMultiScale(const cv::Mat& img, std::vector<cv::Rect>& out, double scale_factor,
                        int min_neighbors, int flags, cv::Size min_size, cv::Size max_size) {
    const cv::_InputArray in(img);
    detect_(obj(), in, out, scale_factor, min_neighbors, flags, min_size, max_size);
  }

 private:
  using Ctor = void (*)(cv::CascadeClassifier*);
  using Load = bool (*)(cv::CascadeClassifier*, const std::string&);
  using Detect = void (*)(cv::CascadeClassifier*, const cv::_InputArray&, std::vector<cv::Rect>&,
                          double, int, int, cv::Size, cv::Size);
  cv::CascadeClassifier* obj() { return reinterpret_cast<cv::CascadeClassifier*>(storage_); }

  void* lib_ = nullptr;
  Ctor ctor_ = nullptr, dtor_ = nullptr;
  Load load_ = nullptr;
  Detect detect_ = nullptr;
  bool constructed_ = false;
  alignas(cv::CascadeClassifier) unsigned char storage_[sizeof(cv::CascadeClassifier)];
};

}  // namespace rvpt

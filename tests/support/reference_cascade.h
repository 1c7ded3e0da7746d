// OpenCV's cascade detector, used as a black-box reference by the cross-checks and the
// benchmark. The build links only OpenCV's core, imgproc, imgcodecs and video modules, so the
// object-detection module is opened at run time and its four entry points are looked up by
// their (Itanium C++ ABI) names: construction, destruction, load and detectMultiScale.
#pragma once

#include <dlfcn.h>

#include <new>
#include <opencv2/core.hpp>
#include <opencv2/objdetect.hpp>
#include <string>
#include <vector>

namespace rvpt {

class ReferenceCascade {
 public:
  ReferenceCascade() {
    lib_ = dlopen("libopencv_objdetect.so.406", RTLD_NOW | RTLD_LOCAL);
    if (!lib_) lib_ = dlopen("libopencv_objdetect.so", RTLD_NOW | RTLD_LOCAL);
    if (!lib_) return;
    ctor_ = reinterpret_cast<Ctor>(dlsym(lib_, "_ZN2cv17CascadeClassifierC1Ev"));
    dtor_ = reinterpret_cast<Ctor>(dlsym(lib_, "_ZN2cv17CascadeClassifierD1Ev"));
    load_ = reinterpret_cast<Load>(dlsym(
        lib_, "_ZN2cv17CascadeClassifier4loadERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEE"));
    detect_ = reinterpret_cast<Detect>(dlsym(
        lib_, "_ZN2cv17CascadeClassifier16detectMultiScaleERKNS_11_InputArrayERSt6vectorINS_"
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

// Trained Haar cascades from their XML files, read with pugixml.
#include <pugixml.hpp>
#include <sstream>

#include "cascade.h"

namespace rvpcv_app {
namespace {

bool fail(std::string* error, const std::string& msg) {
  if (error) *error = msg;
  return false;
}

std::vector<double> numbers(const pugi::xml_node& n) {
  std::vector<double> v;
  std::istringstream in(n.child_value());
  double d;
  while (in >> d) v.push_back(d);
  return v;
}

}  // namespace

bool load_haar_cascade(const std::string& path, HaarCascade& out, std::string* error) {
  pugi::xml_document doc;
  const pugi::xml_parse_result parsed = doc.load_file(path.c_str());
  if (!parsed) return fail(error, path + ": " + parsed.description());
  // The cascade is the first child of the storage root, whatever its element name.
  const pugi::xml_node root = doc.document_element().first_child();
  if (!root.child("stages")) return fail(error, path + ": no <stages> (not a cascade file)");
  if (root.child("size") || root.child("stages").first_child().child("trees"))
    return fail(error, path + ": the older cascade layout (<size>, <trees>) is not supported");
  const std::string feature_type = root.child_value("featureType");
  if (!feature_type.empty() && feature_type != "HAAR")
    return fail(error, path + ": feature type " + feature_type + " is not supported");
  HaarCascade c;
  c.width = root.child("width").text().as_int();
  c.height = root.child("height").text().as_int();
  if (c.width < 3 || c.height < 3) return fail(error, path + ": bad window size");

  struct Feature {
    std::vector<HaarRect> rects;
    bool tilted;
  };
  std::vector<Feature> features;
  for (pugi::xml_node f : root.child("features").children("_")) {
    Feature feat{{}, f.child("tilted").text().as_int() != 0};
    for (pugi::xml_node r : f.child("rects").children("_")) {
      const std::vector<double> v = numbers(r);
      if (v.size() != 5) return fail(error, path + ": a feature rectangle needs 5 numbers");
      feat.rects.push_back({{int(v[0]), int(v[1]), int(v[2]), int(v[3])}, float(v[4])});
    }
    if (feat.rects.empty()) return fail(error, path + ": a feature without rectangles");
    features.push_back(std::move(feat));
  }

  for (pugi::xml_node s : root.child("stages").children("_")) {
    HaarStage stage;
    stage.threshold = s.child("stageThreshold").text().as_float();
    for (pugi::xml_node w : s.child("weakClassifiers").children("_")) {
      const std::vector<double> node = numbers(w.child("internalNodes"));
      const std::vector<double> leaf = numbers(w.child("leafValues"));
      // A stump: one node "left right feature threshold" whose children are both leaves.
      if (node.size() != 4 || node[0] > 0 || node[1] > 0 || leaf.size() != 2)
        return fail(error, path + ": only stump classifiers are supported (this one has trees)");
      const int fi = int(node[2]);
      if (fi < 0 || fi >= int(features.size()))
        return fail(error, path + ": feature index out of range");
      HaarWeak weak;
      weak.rects = features[fi].rects;
      weak.tilted = features[fi].tilted;
      weak.threshold = float(node[3]);
      weak.left = float(leaf[size_t(-node[0])]);
      weak.right = float(leaf[size_t(-node[1])]);
      stage.weak.push_back(std::move(weak));
    }
    if (stage.weak.empty()) return fail(error, path + ": a stage without classifiers");
    c.stages.push_back(std::move(stage));
  }
  if (c.stages.empty()) return fail(error, path + ": no stages");
  out = std::move(c);
  return true;
}

}  // namespace rvpcv_app

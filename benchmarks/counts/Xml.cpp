#include <ZvUtiLib/CUtiXmlParser.h>

#include <string>

#include "benchmarks/counts/Counts.h"

namespace {

bool LoadXml(const std::string& text) {
  bool isLoaded = false;
  Counted([&] { isLoaded = CUtiXmlParser(text.c_str(), 0).GetRootElement() != nullptr; });
  return isLoaded;
}

// A namespace of `bytes` bytes, and an element of it for each 64 of them.
bool LoadLongNamespace(std::size_t bytes) {
  std::string text = "<a xmlns='" + std::string(bytes, 'u') + "'>";
  for (std::size_t i = 0; i < bytes / 64; ++i) text += "<b c='1'/>";
  return LoadXml(text + "</a>");
}

// Elements within each other, and a selection whose filter looks 32 steps deep from each of them.
bool SelectDeepFilter(std::size_t depth) {
  std::string text;
  for (std::size_t i = 0; i < depth; ++i) text += "<a>";
  for (std::size_t i = 0; i < depth; ++i) text += "</a>";
  std::string filter = "a";
  for (int step = 1; step < 32; ++step) filter += "/a";
  CUtiXmlParser document(text.c_str(), 0);
  CUtiXmlElement* root = document.GetRootElement();
  int found = 1;
  if (root) Counted([&] { found = root->IsHasChild(("//a[" + filter + "/b]").c_str()); });
  return found == 0;
}

constexpr counts::Operation kOperations[] = {
    {"load-long-namespace", LoadLongNamespace},
    {"select-deep-filter", SelectDeepFilter},
};

}  // namespace

const std::span<const counts::Operation> counts::kXmlOperations = kOperations;

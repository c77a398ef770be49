// pugixml does not support GBK. It gets the bytes as they are and so does no conversion.
#include <cstring>
#include <pugixml.hpp>

#include "benchmarks/xml/Data.h"

namespace bench {
namespace {

class Pugixml {
 public:
  static constexpr const char* kName = "pugixml";

  explicit Pugixml(const std::string& text) {
    document_.load_buffer(text.data(), text.size(), pugi::parse_default, pugi::encoding_utf8);
  }

  Seen Walk() const {
    Seen seen;
    if (document_.document_element()) Visit(document_.document_element(), seen);
    return seen;
  }

 private:
  static void Visit(const pugi::xml_node& element, Seen& seen) {
    ++seen.elements;
    seen.nameBytes += std::strlen(element.name());
    seen.numbers += element.attribute("id").as_uint();
    seen.characters += std::strlen(element.attribute("name").value()) / 2;
    bool isLeaf = true;
    for (const pugi::xml_node& child : element.children()) {
      if (child.type() != pugi::node_element) continue;
      isLeaf = false;
      Visit(child, seen);
    }
    if (isLeaf) seen.characters += std::strlen(element.text().get()) / 2;
  }

  pugi::xml_document document_;
};

const bool kRegistered = (RegisterXml<Pugixml>(), true);

}  // namespace
}  // namespace bench

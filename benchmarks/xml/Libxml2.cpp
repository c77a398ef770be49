// libxml2, its tree used directly.
#include <libxml/parser.h>
#include <libxml/tree.h>

#include <cstdlib>
#include <cstring>

#include "benchmarks/xml/Data.h"

namespace bench {
namespace {

class Libxml2 {
 public:
  static constexpr const char* kName = "libxml2";

  explicit Libxml2(const std::string& text)
      : document_(xmlReadMemory(text.data(), static_cast<int>(text.size()), nullptr, nullptr,
                                XML_PARSE_NONET | XML_PARSE_NOERROR)) {}
  ~Libxml2() { xmlFreeDoc(document_); }
  Libxml2(const Libxml2&) = delete;
  Libxml2& operator=(const Libxml2&) = delete;

  Seen Walk() const {
    Seen seen;
    if (document_) Visit(xmlDocGetRootElement(document_), seen);
    return seen;
  }

 private:
  static const char* Chars(const xmlChar* text) { return reinterpret_cast<const char*>(text); }
  // A caller of this interface is given a copy, and frees it.
  static std::size_t Characters(xmlChar* text) {
    const std::size_t bytes = text ? std::strlen(Chars(text)) : 0;
    xmlFree(text);
    return bytes / 3;  // UTF-8
  }

  static void Visit(xmlNode* element, Seen& seen) {
    ++seen.elements;
    seen.nameBytes += std::strlen(Chars(element->name));
    xmlChar* id = xmlGetProp(element, BAD_CAST "id");
    seen.numbers += static_cast<std::size_t>(std::atoi(Chars(id)));
    xmlFree(id);
    seen.characters += Characters(xmlGetProp(element, BAD_CAST "name"));
    bool isLeaf = true;
    for (xmlNode* child = element->children; child; child = child->next) {
      if (child->type != XML_ELEMENT_NODE) continue;
      isLeaf = false;
      Visit(child, seen);
    }
    if (isLeaf) seen.characters += Characters(xmlNodeGetContent(element));
  }

  xmlDoc* document_;
};

const bool kRegistered = (RegisterXml<Libxml2>(), true);

}  // namespace
}  // namespace bench

// libxml2, walking its tree directly. One row uses its UTF-8 texts as they are; the other converts them to
// GBK, as a client of this library would need them.
#include <iconv.h>
#include <libxml/parser.h>
#include <libxml/tree.h>

#include <array>
#include <cstdlib>
#include <cstring>
#include <string>

#include "benchmarks/xml/Data.h"

namespace bench {
namespace {

struct AsUtf8 {
  static constexpr const char* kName = "libxml2";
  static constexpr std::size_t kBytesPerHanzi = 3;

  const char* operator()(const char* text) const { return text; }
};

// Converts into a preallocated buffer, the cheapest way.
class ToGbk {
 public:
  static constexpr const char* kName = "libxml2_gbk";
  static constexpr std::size_t kBytesPerHanzi = 2;

  ToGbk() : converter_(iconv_open("GBK", "UTF-8")) {}
  ~ToGbk() { iconv_close(converter_); }
  ToGbk(const ToGbk&) = delete;
  ToGbk& operator=(const ToGbk&) = delete;

  // Returns "" if the text cannot be converted; the row then fails because its counts are wrong.
  const char* operator()(const char* text) {
    std::size_t left = std::strlen(text), room = buffer_.size() - 1;
    char* in = const_cast<char*>(text);  // iconv does not write to it
    char* out = buffer_.data();
    if (iconv(converter_, &in, &left, &out, &room) == static_cast<std::size_t>(-1)) out = buffer_.data();
    *out = '\0';
    return buffer_.data();
  }

 private:
  iconv_t converter_;
  std::array<char, 256> buffer_;
};

template <class Texts>
class Libxml2 {
 public:
  static constexpr const char* kName = Texts::kName;

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
  // Frees `text`: libxml2 returns a copy that belongs to the caller.
  static std::size_t Characters(xmlChar* text) {
    const std::size_t bytes = text ? std::strlen(Converted(text)) : 0;
    xmlFree(text);
    return bytes / Texts::kBytesPerHanzi;
  }
  static const char* Converted(const xmlChar* text) {
    static Texts texts;
    return texts(Chars(text));
  }

  static void Visit(xmlNode* element, Seen& seen) {
    ++seen.elements;
    seen.nameBytes += std::strlen(Converted(element->name));
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

const bool kRegistered = (RegisterXml<Libxml2<AsUtf8>>(), RegisterXml<Libxml2<ToGbk>>(), true);

}  // namespace
}  // namespace bench

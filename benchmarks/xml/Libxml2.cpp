// libxml2, its tree used directly: with texts as they come, and with texts converted to GBK as a client needs
// them.
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

struct AsItIs {
  static constexpr const char* kName = "libxml2";
  static constexpr std::size_t kBytes = 3;  // of a Chinese character

  const char* operator()(const char* text) const { return text; }
};

// Converts into a buffer that is there already, which costs least.
class ToGbk {
 public:
  static constexpr const char* kName = "libxml2_gbk";
  static constexpr std::size_t kBytes = 2;

  ToGbk() : converter_(iconv_open("GBK", "UTF-8")) {}
  ~ToGbk() { iconv_close(converter_); }
  ToGbk(const ToGbk&) = delete;
  ToGbk& operator=(const ToGbk&) = delete;

  // Empty where it cannot be converted: the row then fails by its count.
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
  // A caller of this interface is given a copy, and frees it.
  static std::size_t Characters(xmlChar* text) {
    const std::size_t bytes = text ? std::strlen(Given(text)) : 0;
    xmlFree(text);
    return bytes / Texts::kBytes;
  }
  static const char* Given(const xmlChar* text) {
    static Texts texts;
    return texts(Chars(text));
  }

  static void Visit(xmlNode* element, Seen& seen) {
    ++seen.elements;
    seen.nameBytes += std::strlen(Given(element->name));
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

const bool kRegistered = (RegisterXml<Libxml2<AsItIs>>(), RegisterXml<Libxml2<ToGbk>>(), true);

}  // namespace
}  // namespace bench

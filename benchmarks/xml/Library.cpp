// The library's XML parser and elements.
#include <ZvUtiLib/CUtiXmlNodeList.h>
#include <ZvUtiLib/CUtiXmlParser.h>

#include "benchmarks/xml/Data.h"

namespace bench {
namespace {

class Library {
 public:
  static constexpr const char* kName = "library";

  explicit Library(const std::string& text) : parser_(text.c_str(), 1) {}

  Seen Walk() const {
    Seen seen;
    if (const CUtiXmlElement* root = parser_.GetRootElement()) Visit(*root, seen);
    return seen;
  }

 private:
  static void Visit(const CUtiXmlElement& element, Seen& seen) {
    const CString name = element.GetNodeName();
    if (name.IsEmpty()) return;  // not an element
    ++seen.elements;
    seen.nameBytes += static_cast<std::size_t>(name.GetLength());
    seen.numbers += static_cast<std::size_t>(element.GetAttributeInt("id"));
    seen.characters += static_cast<std::size_t>(element.GetAttribute("name").GetLength()) / 2;
    CUtiXmlNodeList children;
    element.GetChildNodes(&children);
    bool isLeaf = true;
    CUtiXmlElement child;
    for (int i = 0; i < children.GetLength(); ++i) {
      children.GetItem(i, &child);
      const std::size_t before = seen.elements;
      Visit(child, seen);
      isLeaf = isLeaf && seen.elements == before;
    }
    if (isLeaf) seen.characters += static_cast<std::size_t>(element.GetText().GetLength()) / 2;
  }

  mutable CUtiXmlParser parser_;
};

const bool kRegistered = (RegisterXml<Library>(), true);

}  // namespace
}  // namespace bench

#include "check/XmlReason.h"

#include <expat.h>

#include <algorithm>
#include <map>
#include <memory>

namespace tool {
namespace {

// Counts the attributes declared for each element type, and stops the parser when there are more than the
// library allows: Expat compares each declaration with all earlier ones.
struct Declarations {
  static constexpr int kMost = 256;
  static void Count(void* data, const char* element, const char*, const char*, const char*, int) {
    auto& self = *static_cast<Declarations*>(data);
    if (++self.counts[element] <= kMost) return;
    self.isBeyond = true;
    XML_StopParser(self.parser, XML_FALSE);
  }
  XML_Parser parser;
  std::map<std::string, int> counts;
  bool isBeyond = false;
};

}  // namespace

void PrepareForXml() {}

void ExplainRefusal(const std::string&, const std::string& utf8, Place& place, std::string& message) {
  const std::unique_ptr<XML_ParserStruct, void (*)(XML_Parser)> parser(XML_ParserCreate("UTF-8"),
                                                                       XML_ParserFree);
  Declarations declarations{parser.get(), {}};
  XML_SetUserData(parser.get(), &declarations);
  XML_SetAttlistDeclHandler(parser.get(), Declarations::Count);
  if (utf8.size() > 0x7FFFFFFF ||
      XML_Parse(parser.get(), utf8.data(), static_cast<int>(utf8.size()), 1) != XML_STATUS_ERROR) {
    message =
        "the library refuses the document, although it is well-formed: a namespace prefix or an entity in an "
        "attribute is not declared, or its entities expand beyond the library's limit";
    return;
  }
  const auto at = std::min(
      static_cast<std::size_t>(std::max<XML_Index>(0, XML_GetCurrentByteIndex(parser.get()))), utf8.size());
  place.line = LineAt(utf8, at);
  place.column = ColumnAt(utf8, at);
  message = declarations.isBeyond
                ? "more attributes are declared for one element type than the library allows"
                : XML_ErrorString(XML_GetErrorCode(parser.get()));
}

}  // namespace tool

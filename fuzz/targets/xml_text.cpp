// XML from text: a line with a selection, then a document. What a parser that knows namespaces refuses, the
// library refuses too.
#include <expat.h>

#include <algorithm>
#include <memory>

#include "fuzz/XmlWalk.h"

namespace {

bool IsRefused(const std::string& ascii) {
  const std::unique_ptr<XML_ParserStruct, void (*)(XML_Parser)> parser(XML_ParserCreateNS("UTF-8", '\x01'),
                                                                       XML_ParserFree);
  XML_SetParamEntityParsing(parser.get(), XML_PARAM_ENTITY_PARSING_ALWAYS);
  const std::string_view text = ascii.c_str();
  const std::string_view document = text.substr(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
  return XML_Parse(parser.get(), document.data(), static_cast<int>(document.size()), XML_TRUE) ==
         XML_STATUS_ERROR;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view rest = fuzz::BytesOf(data, size);
  const std::string selection(fuzz::TakeUntil(rest, '\n'));
  const std::string document(rest);
  CUtiXmlParser parser(document.c_str(), 0);
  const std::string seen = fuzz::Walked(parser);
  if (parser.GetRootElement() &&
      std::all_of(document.begin(), document.end(), [](char c) { return c >= 0; })) {
    fuzz::Check(!IsRefused(document), "what loads is well-formed in its namespaces");
  }
  fuzz::Select(parser, selection);
  fuzz::Check(fuzz::Walked(parser) == seen, "questions change nothing");
  return 0;
}

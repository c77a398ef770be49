#include "fuzz/WellFormed.h"

#include <expat.h>

#include <algorithm>
#include <memory>
#include <string_view>

namespace fuzz {

bool IsWellFormed(const std::string& ascii) {
  const std::unique_ptr<XML_ParserStruct, void (*)(XML_Parser)> parser(XML_ParserCreateNS("UTF-8", '\x01'),
                                                                       XML_ParserFree);
  XML_SetParamEntityParsing(parser.get(), XML_PARAM_ENTITY_PARSING_ALWAYS);
  const std::string_view text = ascii.c_str();
  const std::string_view document = text.substr(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
  return XML_Parse(parser.get(), document.data(), static_cast<int>(document.size()), XML_TRUE) !=
         XML_STATUS_ERROR;
}

}  // namespace fuzz

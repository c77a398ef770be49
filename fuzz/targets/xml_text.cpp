// XML from text: a line with a selection, then a document. What a parser that knows namespaces refuses, the
// library refuses too.
#include <algorithm>

#include "fuzz/WellFormed.h"
#include "fuzz/XmlWalk.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view rest = fuzz::BytesOf(data, size);
  const std::string selection(fuzz::TakeUntil(rest, '\n'));
  const std::string document(rest);
  CUtiXmlParser parser(document.c_str(), 0);
  const std::string seen = fuzz::Walked(parser);
  if (parser.GetRootElement() &&
      std::all_of(document.begin(), document.end(), [](char c) { return c >= 0; })) {
    fuzz::Check(fuzz::IsWellFormed(document), "what loads is well-formed in its namespaces");
  }
  fuzz::Select(parser, selection);
  fuzz::Check(fuzz::Walked(parser) == seen, "questions change nothing");
  return 0;
}

// XML from text: a line with a selection, then a document.
#include "fuzz/XmlWalk.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view rest = fuzz::BytesOf(data, size);
  const std::string selection(fuzz::TakeUntil(rest, '\n'));
  const std::string document(rest);
  CUtiXmlParser parser(document.c_str(), 0);
  const std::string seen = fuzz::Walked(parser);
  fuzz::Select(parser, selection);
  fuzz::Check(fuzz::Walked(parser) == seen, "questions change nothing");
  return 0;
}

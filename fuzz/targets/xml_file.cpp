// XML from files in all encodings; plain ASCII is what the same text gives.
#include <algorithm>

#include "fuzz/InputFile.h"
#include "fuzz/XmlWalk.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const fuzz::InputFile file;
  const std::string document(fuzz::BytesOf(data, size));
  file.Write(document);
  CUtiXmlParser parser(file.Path().c_str());
  const std::string seen = fuzz::Walked(parser);

  // White space before a text is cut; in a file no declaration may follow it.
  const auto isPlain = [](char c) { return c > 0; };
  if (document.substr(0, 1) == "<" && document.find("encoding") == std::string::npos &&
      std::all_of(document.begin(), document.end(), isPlain)) {
    CUtiXmlParser text(document.c_str(), 0);
    fuzz::Check(fuzz::Walked(text) == seen, "a file is read as its text");
  }
  return 0;
}

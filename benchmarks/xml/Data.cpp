#include "benchmarks/xml/Data.h"

#include "benchmarks/Random.h"

namespace bench {

Document MakeDocument(std::size_t bytes) {
  std::mt19937 random(10);
  Document document;
  std::string& text = document.text;
  Seen& seen = document.seen;
  const auto name = [&](const char* element) {
    ++seen.elements;
    seen.nameBytes += std::string(element).size();
    return std::string(element);
  };
  const auto id = [&] {
    const unsigned value = Below(random, 100000);
    seen.numbers += value;
    return " id=\"" + std::to_string(value) + "\"";
  };
  const auto hanzi = [&](unsigned characters) {
    seen.characters += characters;
    return Hanzi(random, characters);
  };
  text =
      "<?xml version=\"1.0\" encoding=\"GBK\"?>\n<" + name("lobby") + id() + " name=\"" + hanzi(2) + "\">\n";
  while (text.size() + 100 < bytes) {
    text += "  <" + name("room") + id() + " name=\"" + hanzi(4) + "\">\n";
    for (int i = 0; i < 4; ++i) {
      text += "    <" + name("player") + id() + " name=\"" + hanzi(3) + "\">" + hanzi(8) + "</player>\n";
    }
    text += "  </room>\n";
  }
  text += "</lobby>\n";
  return document;
}

}  // namespace bench

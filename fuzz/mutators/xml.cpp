// Changes XML documents token by token, with new tokens from XmlGrammar.h. ZV_HAS_SELECTION: a line with a
// selection comes before the document. Otherwise a document may also be made or read as UTF-16.
#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/Check.h"
#include "fuzz/Mutator.h"
#include "fuzz/mutators/XmlGrammar.h"

namespace {

std::vector<std::string> TokensOf(std::string_view document) {
  static constexpr struct {
    std::string_view begin, end;
  } kKinds[] = {{"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<!DOCTYPE", "]>"}, {"<?", "?>"}, {"<", ">"}};
  std::vector<std::string> tokens;
  while (!document.empty()) {
    std::size_t size = document.find('<', 1);
    for (const auto& kind : kKinds) {
      if (document.substr(0, kind.begin.size()) != kind.begin) continue;
      const std::size_t end = document.find(kind.end);
      size = end == std::string_view::npos ? size : end + kind.end.size();
      break;
    }
    tokens.emplace_back(document.substr(0, size));
    document.remove_prefix(tokens.back().size());
  }
  return tokens;
}

std::string Mutated(std::string_view document, fuzz::XmlGrammar& grammar) {
  std::vector<std::string> tokens = TokensOf(document);
  const auto place = [&] {
    return tokens.begin() + static_cast<std::ptrdiff_t>(grammar.Below(tokens.size() + 1));
  };
  auto from = place(), to = place();
  if (to < from) std::swap(from, to);
  switch (tokens.empty() ? 0 : grammar.Below(9)) {
    case 0:
      return (grammar.Below(3) == 0 ? grammar.Declaration() : "") +
             (grammar.Below(3) == 0 ? grammar.Type() : "") + grammar.Element(4);
    case 1:
      tokens.erase(from, to);
      break;
    case 2: {
      const std::vector<std::string> range(from, to);
      for (std::size_t times = 1 + grammar.Below(grammar.Below(4) == 0 ? 16 : 1); times > 0; --times)
        tokens.insert(place(), range.begin(), range.end());
      break;
    }
    case 3:
      if (to != tokens.end()) std::iter_swap(from, to);
      break;
    case 4: {  // an element around a range
      const std::string name = grammar.Name();
      tokens.insert(tokens.insert(to, "</" + name + ">") - (to - from), grammar.StartTag(name));
      break;
    }
    case 5: {
      const std::size_t end = from == tokens.end() ? 0 : from->find_first_of("/>", 1);
      if (end != 0 && end != std::string::npos && (*from)[0] == '<') from->insert(end, grammar.Attribute());
      break;
    }
    case 6:
      if (tokens[0].compare(0, 5, "<?xml") == 0) tokens.erase(tokens.begin());
      tokens.insert(tokens.begin(), grammar.Below(2) != 0 ? grammar.Declaration() : grammar.Type());
      break;
    default:
      tokens.insert(place(), grammar.Tree(2));
  }
  std::string all;
  for (const std::string& token : tokens) all += token;
  return all;
}

bool IsUtf16(std::string_view bytes) {
  return bytes.size() > 1 && (bytes[0] == '\0' || bytes[1] == '\0' || bytes.substr(0, 2) == "\xFF\xFE");
}

std::string Utf16(const std::string& text, bool isBigEndian, bool hasMark) {
  std::string units = hasMark ? isBigEndian ? "\xFE\xFF" : "\xFF\xFE" : "";
  for (const char byte : text) (units += isBigEndian ? '\0' : byte) += isBigEndian ? byte : '\0';
  return units;
}

}  // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t most,
                                               unsigned seed) {
  if (seed % 4 == 0) return LLVMFuzzerMutate(data, size, most);
  fuzz::XmlGrammar grammar(seed / 4);
  std::string_view rest = fuzz::BytesOf(data, size);
  if (ZV_HAS_SELECTION != 0) {
    std::string all(fuzz::TakeUntil(rest, '\n'));
    const bool isSelection = grammar.Below(4) == 0;
    if (isSelection) all = grammar.Selection();
    all += '\n';
    return fuzz::PutMutated(all + (isSelection ? std::string(rest) : Mutated(rest, grammar)), data, 0, most);
  }
  std::string text(rest);
  const bool isUtf16 = IsUtf16(text);
  if (isUtf16) text.erase(std::remove(text.begin(), text.end(), '\0'), text.end());
  if (isUtf16) text.erase(0, text.find_first_not_of("\xFE\xFF"));
  text = Mutated(text, grammar);
  if (isUtf16 ? grammar.Below(4) != 0 : grammar.Below(8) == 0)
    text = Utf16(text, grammar.Below(2) != 0, grammar.Below(4) != 0);
  return fuzz::PutMutated(text, data, 0, most);
}

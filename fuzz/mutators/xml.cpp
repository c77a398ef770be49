// Changes XML documents token by token, with new tokens from XmlGrammar.h. ZV_HAS_SELECTION: a line with a
// selection comes before the document. Otherwise a document may also be made or read as UTF-16.
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
  switch (tokens.empty() ? 0 : grammar.Below(10)) {
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
    case 5: {  // another name in all tags that have it
      const std::string old = from == tokens.end() ? "a" : from->substr(1, from->find_first_of(" />", 1) - 1),
                        name = grammar.Name();
      for (std::string& token : tokens) {
        const std::size_t at = token.compare(0, 2, "</") == 0 ? 2 : 1;
        if (!old.empty() && token[0] == '<' && token.compare(at, old.size(), old) == 0)
          token.replace(at, old.size(), name);
      }
      break;
    }
    case 6: {
      const std::size_t end = from == tokens.end() ? 0 : from->find_first_of("/>", 1);
      if (end != 0 && end != std::string::npos && (*from)[0] == '<') from->insert(end, grammar.Attribute());
      break;
    }
    case 7:
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

// The document as one byte a character, and how it was in the file.
struct Document {
  std::string text;
  std::size_t low = 0, high = 0;  ///< where the halves of a unit are, if not the same

  explicit Document(std::string_view bytes) {
    if (bytes.size() > 1 && (bytes[0] == '\0' || bytes[1] == '\0' || bytes.substr(0, 2) == "\xFF\xFE" ||
                             bytes.substr(0, 2) == "\xFE\xFF")) {
      high = bytes[1] == '\0' || bytes[0] == '\xFF' ? 1 : 0;
      low = 1 - high;
    }
    if (low == high) text = bytes;
    for (std::size_t at = 0; low != high && at + 1 < bytes.size(); at += 2) text += bytes[at + low];
    if (low != high && text[0] == '\xFF') text.erase(0, 1);
  }
  std::string Bytes(bool hasMark) const {
    std::string units;
    if (low == high) return text;
    const auto add = [&](char lower, char higher) {
      (units += low == 0 ? lower : higher) += low == 0 ? higher : lower;
    };
    if (hasMark) add('\xFF', '\xFE');
    for (const char byte : text) add(byte, '\0');
    return units;
  }
};

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
  Document document(rest);
  document.text = Mutated(document.text, grammar);
  if (grammar.Below(8) == 0) {
    document.low = grammar.Below(2);
    document.high = grammar.Below(2);
  }
  return fuzz::PutMutated(document.Bytes(grammar.Below(4) != 0), data, 0, most);
}

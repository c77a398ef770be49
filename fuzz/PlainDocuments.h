// Documents made at random, and a comparison of the trees that the plain reader and the builder make of one.
#pragma once

#include <string>
#include <string_view>

#include "gbk/CodePage936.h"
#include "platform/xml/XmlBuilder.h"
#include "platform/xml/XmlPlainReader.h"

namespace fuzz {

/// What the plain reader does with a document: "" if it leaves it to the builder, "same" if it accepts it
/// with the builder's tree, else what is wrong.
inline std::string CompareReaders(std::string_view text, zvuti::xml::Encoding encoding) {
  using namespace zvuti::xml;
  XmlTree plain, built;
  if (!ReadPlain(text, encoding, plain)) return {};
  const auto utf8 = [encoding](std::string_view own) {
    return encoding == Encoding::kGbk ? zvuti::gbk::ToUtf8(own) : std::string(own);
  };
  bool isWhole = true;
  if (encoding == Encoding::kGbk) zvuti::gbk::ToUtf8(text, &isWhole);
  if (!isWhole || !Build(utf8(text), built)) return "accepted";
  if (plain.nodes.size() != built.nodes.size()) return "number of nodes";
  if (plain.attributes.size() != built.attributes.size()) return "number of attributes";
  const auto hasSameName = [&](const auto& a, const auto& b) {
    if (a.name == kNoName || b.name == kNoName) return a.name == b.name;
    return utf8(plain.names.At(a.name)) == built.names.At(b.name);
  };
  for (NodeId id = 0; id < plain.nodes.size(); ++id) {
    const Node &a = plain.nodes[id], &b = built.nodes[id];
    if (a.kind != b.kind || !hasSameName(a, b)) return "kind or name";
    if (a.parent != b.parent || a.end != b.end || a.children != b.children) return "place";
    if (a.preservesSpace != b.preservesSpace || a.followsDroppedSpace != b.followsDroppedSpace)
      return "flags";
    if (plain.IsElement(id) ? a.content.first != b.content.first || a.content.count != b.content.count
                            : utf8(plain.Bytes(a.content)) != built.Bytes(b.content)) {
      return "content";
    }
  }
  for (std::size_t i = 0; i < plain.attributes.size(); ++i) {
    const Attribute &a = plain.attributes[i], &b = built.attributes[i];
    if (!hasSameName(a, b) || utf8(plain.Bytes(a.value)) != built.Bytes(b.value)) return "attribute";
  }
  return "same";
}

/// Makes a document in GBK; `below(n)` chooses a number below n. More than half are plain and well-formed.
template <class Below>
std::string MakeDocument(Below below) {
  const auto pick = [&](const auto& pieces) { return std::string(pieces[below(std::size(pieces))]); };
  const auto rare = [&](unsigned n) { return below(n) == n - 1; };
  const char* const starts[] = {"", "<?xml version='1.0'?>", "<?xml\tversion=\"1.0\" encoding = 'GBK' ?>\r\n",
                                "<?xml version='1.0' standalone='yes'?><!---->", "<?xmlx?> "};
  const char* const names[] = {"a", "b", "xml-x", "\xD6\xD0", "_1.\xB0\xA1", "abcdefgh1", "abcdefgh2"};
  const char* const pieces[] = {"x",      " ",     "\r\n",     "\r", "\t\n", "\xD6\xD0", "\xA1\x5D", "]",
                                "]]",     "&#38;", "&#xD;",    "-",  "?",    "&#0009;",  "\"",       "'",
                                "&quot;", ">",     "&amp;lt;", "=",  "/",    "%\x7F",    "&#32;"};
  const char* const odd[] = {"]]>",  "--",   "<",        "&",    "&#128;", "&#0;", "&lt",      "\x01",
                             "\x81", "\x80", "\xA1\x7F", "\xFF", "<!D>",   "</a>", "&#x4E2D;", "<?XML ?>"};
  const auto content = [&](std::string_view without) {
    std::string text;
    for (unsigned left = below(4); left-- > 0;) {
      const std::string piece = rare(64) ? pick(odd) : pick(pieces);
      if (piece.find_first_of(without) == piece.npos) text += piece;
    }
    return text;
  };
  std::string text = pick(starts), open;  // the end tags that are still to come
  do {
    const unsigned kind = open.empty() ? 1 : below(8);
    const std::string name = pick(names);
    if (kind < 3) {
      text += "<" + name;
      for (unsigned left = below(3); left-- > 0;) {
        const std::string quote = rare(2) ? "'" : "\"", blank = rare(4) ? "\r\n" : "";
        text.append(" ").append(blank).append(rare(64) ? "xmlns" : pick(names)).append("=").append(blank);
        text.append(quote).append(content(quote)).append(quote);
      }
      text += kind == 2 ? "/>" : " >";
      if (kind < 2) open.insert(0, "</" + name + (rare(4) ? " >" : ">"));
    } else if (kind == 3) {
      text += "<!--" + content("-") + "-->";
    } else if (kind == 4) {
      text += "<![CDATA[" + content("") + "]]>";
    } else if (kind == 5) {
      text += "<?" + name + (rare(2) ? "" : std::string(" ").append(content("?"))) + "?>";
    } else if (kind == 6) {
      const std::size_t end = open.find('>') + 1;
      text += open.substr(0, end);
      open.erase(0, end);
    } else {
      text += content("");
    }
  } while (!open.empty() && below(12) != 0);
  return text + open + (rare(8) ? content("") : "\n") + (rare(3) ? "<!-- -->\n<?p?>" : "");
}

}  // namespace fuzz

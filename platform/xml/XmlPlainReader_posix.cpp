#include "platform/xml/XmlPlainReader.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <limits>
#include <string>
#include <utility>

#include "gbk/Ascii.h"
#include "gbk/CodePage936.h"

namespace zvuti::xml {
namespace {

// A bit for each kind of content, set for the ASCII bytes that have no meaning there, and two for names.
using Bits = std::uint8_t;
constexpr Bits kText = 1, kValue = 2, kCData = 4, kComment = 8, kInstruction = 16, kStartsName = 32,
               kInName = 64, kSpace = 128;

constexpr bool IsLetter(char byte) { return gbk::ToUpper(byte) >= 'A' && gbk::ToUpper(byte) <= 'Z'; }

constexpr std::array<Bits, 256> kBits = [] {
  std::array<Bits, 256> all{};
  for (std::size_t i = 0; i < 0x80; ++i) {
    const char byte = static_cast<char>(i);
    const auto set = [&](Bits bits, bool isSet) { all[i] = static_cast<Bits>(all[i] | (isSet ? bits : 0)); };
    const bool isCharacter = byte >= ' ' || byte == '\t' || byte == '\n';  // carriage returns are converted
    const bool isMarkup = byte == '<' || byte == '&';
    set(kText, isCharacter && !isMarkup && byte != ']');
    set(kValue, isCharacter && !isMarkup && byte != '\'' && byte != '"');
    set(kCData, isCharacter && byte != ']');
    set(kComment, isCharacter && byte != '-');
    set(kInstruction, isCharacter && byte != '?');
    set(kStartsName, IsLetter(byte) || byte == '_');
    set(kInName, IsLetter(byte) || IsDigit(byte) || byte == '_' || byte == '-' || byte == '.');
    set(kSpace, IsXmlSpace(byte));
  }
  return all;
}();

constexpr bool IsHan(char32_t c) { return c >= 0x4E00 && c <= 0x9FA5; }

// Length and value of the character at the start of a text that starts with a byte that is not ASCII. The
// length is 0 if it is broken or none that documents may have.
struct GbkCharacters {
  static std::size_t LengthOf(std::string_view text) {
    return text.size() >= 2 && gbk::IsDoubleByte(text[0], text[1]) ? 2 : 0;
  }
  static bool IsHanAt(std::string_view text) {
    char16_t unit[2] = {};
    gbk::ToUtf16(text.substr(0, 2), unit);
    return IsHan(unit[0]);
  }
};

struct Utf8Characters {
  static std::size_t LengthOf(std::string_view text) {
    std::string_view rest = text;
    const char32_t c = gbk::TakeUtf8(rest);
    // U+FFFD may stand for a broken character; the other two are none.
    return c >= 0xFFFD && c <= 0xFFFF ? 0 : text.size() - rest.size();
  }
  static bool IsHanAt(std::string_view text) { return IsHan(gbk::TakeUtf8(text)); }
};

// Reads the text of a tree and writes it anew in place: what a text or value stands for is never longer than
// it is written. Every function returns false where the reader has to give up.
//
// Nothing is read at end_ or after it: each byte is looked at after a comparison with end_, in IsAtEnd,
// Starts or SkipRun.
template <class Characters>
class Reader {
 public:
  explicit Reader(XmlTree& tree)
      : tree_(tree), begin_(tree.text.data()), at_(begin_), end_(begin_ + tree.text.size()) {
    recent_.fill(kNoName);
  }

  bool ReadAll() {
    if (!ReadDeclaration()) return false;
    for (;;) {
      const bool isOutside = current_ == kDocumentNode;
      if (isOutside) SkipSpace();
      if (isOutside && IsAtEnd()) break;
      if (!(isOutside ? Take('<') : ReadText()) || !ReadMarkup()) return false;
    }
    tree_.nodes[kDocumentNode].end = static_cast<NodeId>(tree_.nodes.size());
    return hasRoot_;
  }

 private:
  bool IsAtEnd() const { return at_ == end_; }
  std::string_view Rest() const { return {at_, static_cast<std::size_t>(end_ - at_)}; }
  std::string_view From(const char* first) const { return {first, static_cast<std::size_t>(at_ - first)}; }
  bool Starts(std::string_view word) const { return Rest().substr(0, word.size()) == word; }
  bool Take(std::string_view word) {
    if (!Starts(word)) return false;
    at_ += word.size();
    return true;
  }
  bool Take(char byte) {
    if (IsAtEnd() || *at_ != byte) return false;
    ++at_;
    return true;
  }
  bool IsNext(Bits bits) const { return !IsAtEnd() && (kBits[static_cast<unsigned char>(*at_)] & bits) != 0; }
  // Skips bytes that have one of the bits; whether there was any.
  bool Skip(Bits bits) {
    char* at = at_;  // a local one stays in a register
    while (at != end_ && (kBits[static_cast<unsigned char>(*at)] & bits) != 0) ++at;
    std::swap(at, at_);
    return at != at_;
  }
  bool SkipSpace() { return Skip(kSpace); }

  // <?xml version="1.0" encoding="GBK" standalone="yes"?>, of which only the version has to be there. What
  // encoding it names has no meaning here.
  bool ReadDeclaration() {
    if (!Take("<?xml")) return true;
    if (!IsNext(kSpace)) {
      at_ = begin_;  // another name that starts so, or an error
      return true;
    }
    std::string_view value;
    if (!ReadSetting("version", value) || value != "1.0") return false;
    if (ReadSetting("encoding", value) && !IsLetter(value.front())) return false;
    if (ReadSetting("standalone", value) && value != "yes" && value != "no") return false;
    SkipSpace();
    return Take("?>");
  }

  // Reads white space, `name`, an equals sign and a value in quotes; stays where it is if they are not there.
  bool ReadSetting(std::string_view name, std::string_view& value) {
    char* const first = at_;
    if (SkipSpace() && Take(name)) {
      SkipSpace();
      if (Take('=')) {
        SkipSpace();
        const std::string_view quote = Rest().substr(0, 1);
        if (quote == "'" || quote == "\"") {
          const char* const begin = ++at_;
          const bool isAny = Skip(kInName);
          value = From(begin);
          if (isAny && Take(quote)) return true;
        }
      }
    }
    at_ = first;
    return false;
  }

  // Reads what stands in an element before the next markup, and the bracket of that.
  bool ReadText() {
    char* const first = at_;
    if (SkipSpace() && Take('<')) {
      isSpaceDropped_ = true;
      return true;
    }
    at_ = first;
    Span content;
    if (!ReadContent<kText>("<", content)) return false;
    const std::string_view text = tree_.Bytes(content);
    if (text.empty()) return true;
    if (std::all_of(text.begin(), text.end(), IsXmlSpace)) {
      isSpaceDropped_ = true;
    } else {
      Add(NodeKind::kText, kNoName, content);
    }
    return true;
  }

  // Reads markup after its bracket.
  bool ReadMarkup() {
    const bool isOutside = current_ == kDocumentNode;
    if (Take('/')) return !isOutside && ReadEndTag();
    if (Take('?')) return ReadInstruction();
    if (Take('!')) return Take("--") ? ReadComment() : !isOutside && Take("[CDATA[") && ReadCData();
    if (isOutside && hasRoot_) return false;
    hasRoot_ = true;
    return ReadStartTag();
  }

  bool ReadComment() {
    Span content;
    if (!ReadContent<kComment>("--", content) || !Take('>')) return false;
    Add(NodeKind::kComment, kNoName, content);
    return true;
  }

  bool ReadCData() {
    Span content;
    if (!ReadContent<kCData>("]]>", content)) return false;
    Add(NodeKind::kCData, kNoName, content);
    return true;
  }

  bool ReadStartTag() {
    const NameId name = ReadName();
    if (name == kNoName) return false;
    const auto first = static_cast<std::uint32_t>(tree_.attributes.size());
    const NodeId id = Add(NodeKind::kElement, name, {first, 0});
    while (SkipSpace() && !IsAtEnd() && *at_ != '>' && *at_ != '/') {
      if (!ReadAttribute(first)) return false;
    }
    tree_.nodes[id].content.count = static_cast<std::uint32_t>(tree_.attributes.size()) - first;
    if (Take("/>")) return true;
    current_ = id;
    return Take('>');
  }

  // Reads an attribute of the element whose attributes begin at `first`.
  bool ReadAttribute(std::size_t first) {
    constexpr std::size_t kMostAttributes = 64;  // since each is compared with those before it
    const NameId name = ReadName();
    if (name == kNoName || tree_.names.At(name) == "xmlns") return false;
    if (tree_.attributes.size() - first == kMostAttributes) return false;
    for (std::size_t i = first; i < tree_.attributes.size(); ++i) {
      if (tree_.attributes[i].name == name) return false;
    }
    SkipSpace();
    if (!Take('=')) return false;
    SkipSpace();
    const std::string_view quote = Rest().substr(0, 1);
    if (quote != "'" && quote != "\"") return false;
    ++at_;
    Span value;
    if (!ReadContent<kValue>(quote, value)) return false;
    tree_.attributes.push_back({name, value});
    return true;
  }

  bool ReadEndTag() {
    Node& node = tree_.nodes[current_];
    if (!Take(tree_.names.At(node.name))) return false;
    SkipSpace();
    node.end = static_cast<NodeId>(tree_.nodes.size());
    current_ = node.parent;
    return Take('>');
  }

  bool ReadInstruction() {
    const NameId name = ReadName();
    if (name == kNoName) return false;
    std::string target(tree_.names.At(name));
    gbk::FoldToLower(target.data(), target.size());
    if (target == "xml" || (!SkipSpace() && !Starts("?>"))) return false;
    Span content;
    if (!ReadContent<kInstruction>("?>", content)) return false;
    Add(NodeKind::kInstruction, name, content);
    return true;
  }

  // Skips bytes without a meaning in this kind of content, and whole characters.
  void SkipRun(Bits kind) {
    char* at = at_;
    while (at != end_) {
      const auto byte = static_cast<unsigned char>(*at);
      if (kBits[byte] & kind) {
        ++at;
        continue;
      }
      const std::size_t length =
          byte < 0x80 ? 0 : Characters::LengthOf({at, static_cast<std::size_t>(end_ - at)});
      if (length == 0) break;
      at += length;
    }
    at_ = at;
  }

  // Reads content up to `end`, and that.
  template <Bits kKind>
  bool ReadContent(std::string_view end, Span& content) {
    constexpr std::string_view kEnds = "]-?'\"";
    char* const first = at_;
    char* out = at_;
    for (;;) {
      const char* const run = at_;
      SkipRun(kKind);
      const std::size_t length = From(run).size();
      if (out != run) std::memmove(out, run, length);
      out += length;
      if (!IsAtEnd() && *at_ == end.front() && (end.size() == 1 || Starts(end))) break;
      if (Take('\r')) {
        Take('\n');
        *out++ = '\n';
      } else if (Starts("&")) {
        if (!ReadReference(out)) return false;
      } else if (!IsAtEnd() && kEnds.find(*at_) != kEnds.npos && !Starts("]]>")) {
        *out++ = *at_++;  // part of the end of some content, but alone
      } else {
        return false;
      }
    }
    at_ += end.size();
    content = {static_cast<std::uint32_t>(first - begin_), static_cast<std::uint32_t>(out - first)};
    return true;
  }

  bool ReadReference(char*& out) {
    constexpr std::pair<std::string_view, char> kPredefined[] = {
        {"&lt;", '<'}, {"&gt;", '>'}, {"&amp;", '&'}, {"&apos;", '\''}, {"&quot;", '"'}};
    for (const auto& [reference, byte] : kPredefined) {
      if (!Take(reference)) continue;
      *out++ = byte;
      return true;
    }
    if (!Take("&#")) return false;
    const int base = Take('x') ? 16 : 10;
    unsigned code = 0;
    const auto [stop, error] = std::from_chars(at_, end_, code, base);
    at_ += stop - at_;
    const auto byte = static_cast<char>(code);
    if (error != std::errc() || code >= 0x80 || (code < ' ' && !IsXmlSpace(byte))) return false;
    *out++ = byte;
    return Take(';');
  }

  // Returns the number of the name that stands here, or kNoName.
  NameId ReadName() {
    const char* const first = at_;
    if (!Skip(kStartsName) && !SkipHan()) return kNoName;
    do {
      Skip(kInName);
    } while (SkipHan());
    const std::string_view name = From(first);
    const auto byte = [name](std::size_t i) { return static_cast<unsigned char>(name[i]); };
    NameId& recent = recent_[(name.size() * 8 + byte(0) + byte(name.size() - 1)) % recent_.size()];
    if (recent == kNoName || tree_.names.At(recent) != name) recent = tree_.names.Intern(name);
    return recent;
  }

  // Skips a character from U+4E00 to U+9FA5.
  bool SkipHan() {
    if (IsAtEnd() || (*at_ & 0x80) == 0) return false;
    const std::size_t length = Characters::LengthOf(Rest());
    if (length == 0 || !Characters::IsHanAt(Rest())) return false;
    at_ += length;
    return true;
  }

  NodeId Add(NodeKind kind, NameId name, Span content) {
    const NodeId id = tree_.Add(kind, name, current_);
    tree_.nodes[id].content = content;
    tree_.nodes[id].followsDroppedSpace = isSpaceDropped_;
    isSpaceDropped_ = false;
    return id;
  }

  XmlTree& tree_;
  char* const begin_;
  char* at_;
  char* const end_;
  NodeId current_ = kDocumentNode;  // the innermost open node
  bool hasRoot_ = false, isSpaceDropped_ = false;
  std::array<NameId, 64> recent_;  // the latest names by a few of their bits
};

}  // namespace

bool ReadPlain(std::string_view text, Encoding encoding, XmlTree& tree) {
  if (text.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) return false;
  tree.encoding = encoding;
  tree.text = text;
  tree.nodes.reserve(text.size() / 32 + 8);
  tree.attributes.reserve(text.size() / 64 + 8);
  tree.nodes.emplace_back();
  return encoding == Encoding::kGbk ? Reader<GbkCharacters>(tree).ReadAll()
                                    : Reader<Utf8Characters>(tree).ReadAll();
}

}  // namespace zvuti::xml

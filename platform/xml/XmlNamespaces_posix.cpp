#include "platform/xml/XmlNamespaces.h"

#include <expat.h>

#include <algorithm>
#include <memory>
#include <new>

namespace zvuti::xml {
namespace {

constexpr std::string_view kXmlUri = "http://www.w3.org/XML/1998/namespace";
constexpr std::string_view kXmlnsUri = "http://www.w3.org/2000/xmlns/";

bool IsAsciiNameStart(char byte) {
  return byte == '_' || (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
}

}  // namespace

Namespaces::Namespaces(const XmlTree& tree) : tree_(tree), xmlns_(Intern("xmlns")), xml_(Intern("xml")) {
  const NameId uri = Intern(kXmlUri);
  bound_[xml_] = uri;
}

NameId Namespaces::Intern(std::string_view text) {
  const NameId id = texts_.Intern(text);
  if (id >= bound_.size()) bound_.resize(id + 1, kNoName);
  return id;
}

// `name` is a name as XML has it, in which a colon is a letter.
Namespaces::Parts Namespaces::Split(std::string_view name) {
  const std::size_t colon = name.find(':');
  if (colon == name.npos) return {name == "xmlns" ? Kind::kDeclaresDefault : Kind::kPlain};
  const std::string_view prefix = name.substr(0, colon), local = name.substr(colon + 1);
  const bool isAscii = !local.empty() && (local.front() & 0x80) == 0;
  if (prefix.empty() || local.empty() || local.find(':') != local.npos ||
      (isAscii && !IsAsciiNameStart(local.front()))) {
    return {Kind::kBroken};
  }
  if (!isAscii) doubtful_.append("<").append(local).append("/>");
  if (prefix == "xmlns") return {Kind::kDeclares, Intern(local)};
  return {Kind::kPrefixed, Intern(prefix), Intern(local)};
}

const Namespaces::Parts& Namespaces::PartsOf(NameId name) {
  if (name >= parts_.size()) parts_.resize(name + 1);
  if (parts_[name].kind == Kind::kNotSeen) parts_[name] = Split(tree_.names.At(name));
  return parts_[name];
}

bool Namespaces::Declare(const Parts& parts, std::string_view uri) {
  if (uri == kXmlnsUri) return false;
  if (parts.kind == Kind::kDeclaresDefault) return uri != kXmlUri;
  if (uri.empty() || parts.prefix == xmlns_ || (parts.prefix == xml_) != (uri == kXmlUri)) return false;
  const NameId id = Intern(uri);
  previous_.push_back({parts.prefix, bound_[parts.prefix]});
  bound_[parts.prefix] = id;
  return true;
}

bool Namespaces::Enter(NodeId element) {
  const Node& node = tree_.nodes[element];
  const auto begin = tree_.attributes.begin() + node.content.first, end = begin + node.content.count;
  const std::size_t declared = previous_.size();
  std::size_t prefixed = 0;
  for (auto at = begin; at != end; ++at) {
    const Parts& parts = PartsOf(at->name);
    if (parts.kind == Kind::kBroken) return false;
    const bool isDeclaration = parts.kind == Kind::kDeclares || parts.kind == Kind::kDeclaresDefault;
    if (isDeclaration && !Declare(parts, tree_.Bytes(at->value))) return false;
    prefixed += parts.kind == Kind::kPrefixed;
  }
  if (previous_.size() != declared) scopes_.push_back({element, declared});

  const Parts& own = PartsOf(node.name);
  if (own.kind == Kind::kBroken || own.kind == Kind::kDeclares) return false;
  if (own.kind == Kind::kPrefixed && bound_[own.prefix] == kNoName) return false;
  if (prefixed == 0) return true;
  expanded_.clear();
  for (auto at = begin; at != end; ++at) {
    const Parts& parts = PartsOf(at->name);
    if (parts.kind != Kind::kPrefixed) continue;
    if (bound_[parts.prefix] == kNoName) return false;
    expanded_.push_back(std::uint64_t{bound_[parts.prefix]} << 32 | parts.local);
  }
  std::sort(expanded_.begin(), expanded_.end());
  return std::adjacent_find(expanded_.begin(), expanded_.end()) == expanded_.end();
}

void Namespaces::Leave(NodeId element) {
  if (scopes_.empty() || scopes_.back().element != element) return;
  for (; previous_.size() > scopes_.back().previous; previous_.pop_back()) {
    bound_[previous_.back().prefix] = previous_.back().uri;
  }
  scopes_.pop_back();
}

// Which characters may begin a name is the parser's to say.
bool Namespaces::AreLocalNamesWhole() const {
  if (doubtful_.empty()) return true;
  const std::unique_ptr<XML_ParserStruct, void (*)(XML_Parser)> parser(XML_ParserCreate("UTF-8"),
                                                                       XML_ParserFree);
  if (!parser) throw std::bad_alloc();
  const std::string document = "<a>" + doubtful_ + "</a>";
  return XML_Parse(parser.get(), document.data(), static_cast<int>(document.size()), XML_TRUE) ==
         XML_STATUS_OK;
}

}  // namespace zvuti::xml

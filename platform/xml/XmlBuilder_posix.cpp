#include "platform/xml/XmlBuilder.h"

#define XML_DTD  // expat.h declares the calls that bound entity expansion only with it
#include <expat.h>

#include <algorithm>
#include <charconv>
#include <exception>
#include <iterator>
#include <limits>
#include <memory>
#include <new>

namespace zvuti::xml {
namespace {

// A document needs at least one byte for each node and attribute, and stores no more bytes of text than
// it has itself. Only entities and default attributes can add to that, and these are the bounds.
constexpr std::size_t kExtraNodes = 1'000'000;
constexpr std::size_t kExtraText = 128u << 20;

// A document whose entities do not refer to each other cannot grow out of proportion to the references in
// it. Where they do, a few of them can stand for gigabytes: the parser's guard then sets in early.
constexpr unsigned long long kFlatExpansion = 128u << 20;
constexpr unsigned long long kNestedExpansion = 128u << 10;
// The parser recurses once for each level of entities within entities.
constexpr int kMostNestedEntities = 256;

// Stands between the parts of an expanded name, where no name or namespace can have it.
constexpr char kSeparator = '\x01';

// True when `text`, which stands behind an ampersand, begins with the name of an entity that XML predefines.
bool IsPredefined(std::string_view text) {
  constexpr std::string_view kNames[] = {"lt;", "gt;", "amp;", "apos;", "quot;"};
  return std::any_of(std::begin(kNames), std::end(kNames),
                     [&](std::string_view name) { return text.substr(0, name.size()) == name; });
}

// True when the value of an entity refers to other entities (those that XML predefines aside).
bool RefersToEntities(std::string_view value, bool isParameter) {
  if (isParameter && value.find('%') != value.npos) return true;
  for (std::size_t at = value.find('&'); at != value.npos; at = value.find('&', at + 1)) {
    const std::string_view reference = value.substr(at + 1);
    if (reference.substr(0, 1) != "#" && !IsPredefined(reference)) return true;
  }
  return false;
}

// Bytes of the UTF-8 that a reference to a character or a predefined entity stands for; 0 for any other.
// `reference` stands behind the ampersand.
std::size_t LengthOfReference(std::string_view reference) {
  if (reference[0] != '#') return IsPredefined(reference) ? 1 : 0;
  const bool isHex = reference[1] == 'x';
  std::uint32_t code = 0;
  std::from_chars(reference.data() + (isHex ? 2 : 1), reference.data() + reference.size(), code,
                  isHex ? 16 : 10);
  return code < 0x80 ? 1 : code < 0x800 ? 2 : code < 0x10000 ? 3 : 4;
}

// True when there is white space other than blanks in markup that is known to be well-formed.
bool HasTabsOrLineEnds(std::string_view text) {
  return std::any_of(text.begin(), text.end(),
                     [](char byte) { return static_cast<unsigned char>(byte) < ' '; });
}

// The parser makes blanks of all white space in attribute values; this puts tabs and line feeds back where
// the value stands so in `written`. A value that does not match what is written stays: it holds entities,
// or was cut to tokens.
void RestoreSpaces(std::string_view written, char* value, std::size_t length) {
  if (!HasTabsOrLineEnds(written)) return;
  std::string restored(value, length);
  std::size_t at = 0;
  for (std::size_t i = 0; i < written.size(); ++i, ++at) {
    if (written[i] == '&') {
      const std::size_t bytes = LengthOfReference(written.substr(i + 1));
      if (bytes == 0) return;
      at += bytes - 1;
      i = written.find(';', i);
    } else if (at >= length || restored[at] != (IsSpace(written[i]) ? ' ' : written[i])) {
      return;
    } else if (written[i] == '\r') {
      restored[at] = '\n';
      if (written.substr(i + 1, 1) == "\n") ++i;
    } else {
      restored[at] = written[i];
    }
  }
  if (at == length) std::copy(restored.begin(), restored.end(), value);
}

class Builder {
 public:
  Builder(std::string_view source, XmlTree& tree)
      : source_(source),
        tree_(tree),
        parser_(XML_ParserCreateNS("UTF-8", kSeparator)),
        nodeLimit_(source.size() + kExtraNodes),
        textLimit_(
            std::min<std::size_t>(source.size() + kExtraText, std::numeric_limits<std::uint32_t>::max())) {
    if (!parser_) throw std::bad_alloc();
  }

  bool Run();

 private:
  void SetHandlers();
  static Builder& Of(void* data) { return *static_cast<Builder*>(data); }
  template <class Work>
  void Guarded(Work work) noexcept;
  void Stop();

  NodeId Add(NodeKind kind, NameId name);
  void AddWithText(NodeKind kind, const char* name, std::string_view content);
  void Close(NodeId id);
  Span Store(std::string_view bytes);
  void FlushText();
  void BeginText();
  void AddAttribute(NameId name, std::string_view value);
  NameId NameOf(std::string_view expanded);
  std::string_view Written() const;
  void RestoreAttributeSpaces(std::uint32_t first);

  void StartElement(const char* name, const char** attributes);
  void EndElement();
  void StartNamespace(const char* prefix, const char* uri);
  void Characters(std::string_view bytes);
  void DeclareEntity(bool isParameter, std::string_view value);

  struct FreeParser {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
  };

  std::string_view source_;
  XmlTree& tree_;
  std::unique_ptr<XML_ParserStruct, FreeParser> parser_;
  const std::size_t nodeLimit_, textLimit_;

  NodeId current_ = kDocumentNode;  // the innermost open node
  std::vector<NodeId>
      siblings_;  // children so far of all open nodes; content.first of each tells where its begin
  std::size_t textBegin_ = 0;  // of the text that is being collected at the end of tree_.text
  bool isTextSpace_ = true, isSpaceDropped_ = false;
  bool isInDoctype_ = false, isStopped_ = false, isOutOfMemory_ = false;
  std::uint32_t declarations_ = 0;  // namespaces declared on the element about to start
  int nestedEntities_ = 0;
  NameId xmlSpace_ = kNoName;
  NameTable expanded_;         // names with a namespace, as the parser gives them
  std::vector<NameId> shown_;  // the same as written, by their number in expanded_
};

bool Builder::Run() {
  if (source_.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) return false;
  SetHandlers();
  xmlSpace_ = tree_.names.Intern("xml:space");
  // Typical documents need about as much; others make the arrays grow.
  tree_.nodes.reserve(source_.size() / 32 + 8);
  tree_.children.reserve(source_.size() / 32 + 8);
  tree_.attributes.reserve(source_.size() / 64 + 8);
  tree_.text.reserve(source_.size() / 2);
  tree_.nodes.emplace_back();
  const bool isParsed =
      XML_Parse(parser_.get(), source_.data(), static_cast<int>(source_.size()), XML_TRUE) == XML_STATUS_OK;
  if (isOutOfMemory_ || XML_GetErrorCode(parser_.get()) == XML_ERROR_NO_MEMORY) throw std::bad_alloc();
  if (!isParsed || isStopped_) return false;
  Close(kDocumentNode);
  return true;
}

void Builder::SetHandlers() {
  const XML_Parser parser = parser_.get();
  XML_SetUserData(parser, this);
  XML_SetReturnNSTriplet(parser, 1);
  XML_SetParamEntityParsing(parser, XML_PARAM_ENTITY_PARSING_ALWAYS);
  XML_SetBillionLaughsAttackProtectionActivationThreshold(parser, kFlatExpansion);
  XML_SetElementHandler(
      parser,
      [](void* data, const char* name, const char** attributes) {
        Of(data).Guarded([&] { Of(data).StartElement(name, attributes); });
      },
      [](void* data, const char*) { Of(data).Guarded([&] { Of(data).EndElement(); }); });
  XML_SetStartNamespaceDeclHandler(parser, [](void* data, const char* prefix, const char* uri) {
    Of(data).Guarded([&] { Of(data).StartNamespace(prefix, uri); });
  });
  XML_SetCharacterDataHandler(parser, [](void* data, const char* bytes, int count) {
    Of(data).Guarded([&] { Of(data).Characters({bytes, static_cast<std::size_t>(count)}); });
  });
  XML_SetCdataSectionHandler(
      parser, [](void* data) { Of(data).Guarded([&] { Of(data).FlushText(); }); },
      [](void* data) {
        Of(data).Guarded([&] {
          Builder& self = Of(data);
          const NodeId id = self.Add(NodeKind::kCData, kNoName);
          self.tree_.nodes[id].content = {
              static_cast<std::uint32_t>(self.textBegin_),
              static_cast<std::uint32_t>(self.tree_.text.size() - self.textBegin_)};
          self.BeginText();
        });
      });
  XML_SetCommentHandler(parser, [](void* data, const char* text) {
    Of(data).Guarded([&] { Of(data).AddWithText(NodeKind::kComment, nullptr, text); });
  });
  XML_SetProcessingInstructionHandler(parser, [](void* data, const char* target, const char* text) {
    Of(data).Guarded([&] { Of(data).AddWithText(NodeKind::kInstruction, target, text); });
  });
  XML_SetDoctypeDeclHandler(
      parser, [](void* data, const char*, const char*, const char*, int) { Of(data).isInDoctype_ = true; },
      [](void* data) { Of(data).isInDoctype_ = false; });
  XML_SetEntityDeclHandler(parser, [](void* data, const char*, int isParameter, const char* value, int length,
                                      const char*, const char*, const char*, const char*) {
    if (value) Of(data).DeclareEntity(isParameter != 0, {value, static_cast<std::size_t>(length)});
  });
  // What stands outside the document is not read: a reference to it is a node of its own.
  XML_SetSkippedEntityHandler(parser, [](void* data, const char* name, int) {
    Of(data).Guarded([&] { Of(data).AddWithText(NodeKind::kEntityReference, name, {}); });
  });
  XML_SetExternalEntityRefHandler(
      parser, [](XML_Parser self, const char* context, const char*, const char*, const char*) -> int {
        Builder& builder = Of(XML_GetUserData(self));
        if (context) {
          builder.Guarded([&] {
            const std::string_view reference = builder.Written();
            const std::string name(reference.substr(1, reference.size() - 2));
            builder.AddWithText(NodeKind::kEntityReference, name.c_str(), {});
          });
        }
        return XML_STATUS_OK;
      });
}

// The parser is C, so no exception may pass through it.
template <class Work>
void Builder::Guarded(Work work) noexcept {
  if (isStopped_) return;
  try {
    work();
  } catch (const std::exception&) {
    isOutOfMemory_ = true;
    Stop();
  }
}

void Builder::Stop() {
  isStopped_ = true;
  XML_StopParser(parser_.get(), XML_FALSE);
}

NodeId Builder::Add(NodeKind kind, NameId name) {
  const auto id = static_cast<NodeId>(tree_.nodes.size());
  if (id >= nodeLimit_) Stop();
  Node& node = tree_.nodes.emplace_back();
  node.kind = kind;
  node.name = name;
  node.parent = current_;
  node.end = id + 1;
  node.preservesSpace = tree_.nodes[current_].preservesSpace;
  node.followsDroppedSpace = isSpaceDropped_;
  isSpaceDropped_ = false;
  siblings_.push_back(id);
  return id;
}

void Builder::AddWithText(NodeKind kind, const char* name, std::string_view content) {
  if (isInDoctype_) return;
  FlushText();
  const NodeId id = Add(kind, name ? tree_.names.Intern(name) : kNoName);
  tree_.nodes[id].content = Store(content);
  BeginText();
}

void Builder::Close(NodeId id) {
  Node& node = tree_.nodes[id];
  const std::size_t begin = node.content.first;
  node.content = {static_cast<std::uint32_t>(tree_.children.size()),
                  static_cast<std::uint32_t>(siblings_.size() - begin)};
  node.end = static_cast<NodeId>(tree_.nodes.size());
  for (std::size_t i = begin; i < siblings_.size(); ++i) tree_.children.push_back(siblings_[i]);
  siblings_.resize(begin);
}

Span Builder::Store(std::string_view bytes) {
  if (bytes.size() > textLimit_ - tree_.text.size()) {
    Stop();
    return {};
  }
  const auto first = static_cast<std::uint32_t>(tree_.text.size());
  tree_.text.append(bytes);
  return {first, static_cast<std::uint32_t>(bytes.size())};
}

void Builder::BeginText() {
  textBegin_ = tree_.text.size();
  isTextSpace_ = true;
}

// Makes a node of the text collected, unless it is white space that nobody wants preserved.
void Builder::FlushText() {
  const std::size_t length = tree_.text.size() - textBegin_;
  if (length == 0) return;
  if (isTextSpace_ && !tree_.nodes[current_].preservesSpace) {
    tree_.text.resize(textBegin_);
    isSpaceDropped_ = true;
    return;
  }
  tree_.nodes[Add(NodeKind::kText, kNoName)].content = {static_cast<std::uint32_t>(textBegin_),
                                                        static_cast<std::uint32_t>(length)};
  BeginText();
}

void Builder::Characters(std::string_view bytes) {
  isTextSpace_ = isTextSpace_ && std::all_of(bytes.begin(), bytes.end(), IsSpace);
  Store(bytes);
}

void Builder::StartElement(const char* name, const char** attributes) {
  FlushText();
  const NodeId id = Add(NodeKind::kElement, NameOf(name));
  tree_.nodes[id].attributes.first = static_cast<std::uint32_t>(tree_.attributes.size()) - declarations_;
  tree_.nodes[id].attributes.count = declarations_;
  declarations_ = 0;
  current_ = id;
  const auto first = static_cast<std::uint32_t>(tree_.attributes.size());
  bool isAnyBlank = false;
  for (const char** next = attributes; *next; next += 2) {
    const std::string_view value = next[1];
    AddAttribute(NameOf(next[0]), value);
    isAnyBlank |= value.find(' ') != value.npos;
  }
  if (isAnyBlank) RestoreAttributeSpaces(first);
  tree_.nodes[id].content.first = static_cast<std::uint32_t>(siblings_.size());
  BeginText();
}

void Builder::EndElement() {
  FlushText();
  const NodeId id = current_;
  current_ = tree_.nodes[id].parent;
  Close(id);
}

// Comes before the start of the element that declares it.
void Builder::StartNamespace(const char* prefix, const char* uri) {
  FlushText();
  const std::string name = prefix ? std::string("xmlns:") + prefix : "xmlns";
  tree_.attributes.push_back({tree_.names.Intern(name), Store(uri ? uri : "")});
  ++declarations_;
  BeginText();
}

void Builder::AddAttribute(NameId name, std::string_view value) {
  if (tree_.attributes.size() >= nodeLimit_) Stop();
  tree_.attributes.push_back({name, Store(value)});
  Node& node = tree_.nodes[current_];
  ++node.attributes.count;
  if (name == xmlSpace_ && value == "preserve") node.preservesSpace = true;
  if (name == xmlSpace_ && value == "default") node.preservesSpace = false;
}

// The name as written: the parser gives "uri, local name, prefix" for one with a namespace.
NameId Builder::NameOf(std::string_view expanded) {
  const std::size_t first = expanded.find(kSeparator);
  if (first == expanded.npos) return tree_.names.Intern(expanded);
  const NameId id = expanded_.Intern(expanded);
  if (id == shown_.size()) {
    const std::string_view local = expanded.substr(first + 1);
    const std::size_t second = local.find(kSeparator);
    std::string shown;
    if (second != local.npos) shown.append(local.substr(second + 1)).append(":");
    shown_.push_back(tree_.names.Intern(shown.append(local.substr(0, second))));
  }
  return shown_[id];
}

// The markup being handled, as it stands in the source. Within an entity: the reference to it.
std::string_view Builder::Written() const {
  const XML_Index at = XML_GetCurrentByteIndex(parser_.get());
  const int count = XML_GetCurrentByteCount(parser_.get());
  return source_.substr(static_cast<std::size_t>(at), static_cast<std::size_t>(count));
}

void Builder::RestoreAttributeSpaces(std::uint32_t first) {
  std::string_view tag = Written();
  if (tag.empty() || tag[0] != '<' || !HasTabsOrLineEnds(tag)) return;
  tag.remove_prefix(std::min(tag.find_first_of(" \t\r\n"), tag.size()));
  for (std::uint32_t next = first; next < tree_.attributes.size();) {
    const std::size_t equals = tag.find('=');
    if (equals == tag.npos) return;  // only defaults are left
    const std::size_t nameBegin = tag.find_first_not_of(" \t\r\n");
    const std::string_view name = tag.substr(nameBegin, tag.find_first_of(" \t\r\n=", nameBegin) - nameBegin);
    const std::size_t begin = tag.find_first_of("'\"", equals) + 1;
    const std::size_t end = tag.find(tag[begin - 1], begin);
    const Attribute& attribute = tree_.attributes[next];
    if (name == tree_.names.At(attribute.name)) {  // else it declares a namespace and does not stand here
      RestoreSpaces(tag.substr(begin, end - begin), tree_.text.data() + attribute.value.first,
                    attribute.value.count);
      ++next;
    }
    tag.remove_prefix(end + 1);
  }
}

void Builder::DeclareEntity(bool isParameter, std::string_view value) {
  if (!RefersToEntities(value, isParameter)) return;
  if (++nestedEntities_ == 1) {
    XML_SetBillionLaughsAttackProtectionActivationThreshold(parser_.get(), kNestedExpansion);
  }
  if (nestedEntities_ > kMostNestedEntities) Stop();
}

}  // namespace

bool Build(std::string_view utf8, XmlTree& tree) { return Builder(utf8, tree).Run(); }

}  // namespace zvuti::xml

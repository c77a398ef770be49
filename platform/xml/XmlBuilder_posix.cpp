#include "platform/xml/XmlBuilder.h"

#define XML_DTD  // expat.h declares the calls that bound entity expansion only with it
#include <expat.h>

#include <algorithm>
#include <charconv>
#include <exception>
#include <limits>
#include <memory>
#include <new>

#include "platform/xml/XmlEntities.h"
#include "platform/xml/XmlNamespaces.h"

namespace zvuti::xml {
namespace {

// A document needs at least one byte for each node and attribute, and stores no more bytes of text than
// it has itself. Only entities and default attributes can add to that, and these are the bounds.
constexpr std::size_t kExtraNodes = 1'000'000;
constexpr std::size_t kExtraText = 128u << 20;
// Some names cost their length again where they are not written again: that of a default attribute wherever
// it is added, that of an element for each attribute declared for it. So many bytes of the document each, and
// so many more.
constexpr std::size_t kRepeatedNames = 16;
constexpr std::size_t kExtraRepeatedNames = 1u << 20;

// A document whose entities do not refer to each other cannot grow out of proportion to the references in
// it. Where they do, a few of them can stand for gigabytes: the parser's guard then sets in early. So it does
// within a document type, where nothing of what an entity stands for can be seen in the tree.
constexpr unsigned long long kFlatExpansion = 128u << 20;
constexpr unsigned long long kNestedExpansion = 128u << 10;
// The parser recurses once for each level of entities within entities.
constexpr int kMostNestedEntities = 256;
// The parser goes over all attributes declared for an element type whenever it meets such an element or
// another declaration; the document types in use declare up to about a hundred.
constexpr std::uint32_t kMostDeclaredAttributes = 256;

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
// `reference` starts after the ampersand and ends with its semicolon.
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
      const std::size_t end = written.find(';', i);
      if (end == written.npos) return;
      const std::size_t bytes = LengthOfReference(written.substr(i + 1, end - i));
      if (bytes == 0) return;
      at += bytes - 1;
      i = end;
    } else if (at >= length || restored[at] != (IsXmlSpace(written[i]) ? ' ' : written[i])) {
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

struct FreeParser {
  void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};
using Parser = std::unique_ptr<XML_ParserStruct, FreeParser>;

// Sets how much entities may expand to before the parser compares it with the size of the document.
void SetExpansion(XML_Parser parser, unsigned long long bytes) {
  XML_SetBillionLaughsAttackProtectionActivationThreshold(parser, bytes);
}

// A parser that reads nothing outside the document.
Parser NewParser(XML_Parser created) {
  if (!created) throw std::bad_alloc();
  XML_SetParamEntityParsing(created, XML_PARAM_ENTITY_PARSING_ALWAYS);
  SetExpansion(created, kNestedExpansion);
  return Parser(created);
}

class Builder {
 public:
  Builder(std::string_view source, XmlTree& tree)
      : source_(source),
        tree_(tree),
        parser_(NewParser(XML_ParserCreate("UTF-8"))),
        namespaces_(tree),
        nodeLimit_(source.size() + kExtraNodes),
        textLimit_(
            std::min<std::size_t>(source.size() + kExtraText, std::numeric_limits<std::uint32_t>::max())) {}

  bool Run();

 private:
  void SetHandlers();
  void SetTypeHandlers();
  static Builder& Of(void* data) { return *static_cast<Builder*>(data); }
  template <class Work>
  void Guarded(Work work) noexcept;
  void Stop();
  void StopUnless(bool isGood) {
    if (!isGood) Stop();
  }

  NodeId Add(NodeKind kind, NameId name);
  void AddWithText(NodeKind kind, std::string_view name, std::string_view content);
  Span Store(std::string_view bytes);
  void FlushText();
  void BeginText();
  void AddAttribute(NameId name, std::string_view value);
  void CountRepeated(std::string_view name);
  std::size_t Position() const;
  std::string_view Written() const;
  void RestoreAttributeSpaces(std::uint32_t first, std::uint32_t end);

  void StartElement(const char* name, const char** attributes);
  void EndElement();
  void Characters(std::string_view bytes);
  void EndDoctype();
  void DeclareEntity(bool isParameter, std::string_view name, std::string_view value);
  void DeclareAttribute(std::string_view element, bool hasDefault);
  bool AreEntitiesKnownInDefault();
  bool AreEntitiesKnownInTag();

  std::string_view source_;
  XmlTree& tree_;
  Parser parser_;
  Namespaces namespaces_;
  Entities entities_;
  const std::size_t nodeLimit_, textLimit_;

  NodeId current_ = kDocumentNode;  // the innermost open node
  std::size_t textBegin_ = 0;       // of the text that is being collected at the end of tree_.text
  bool isTextSpace_ = true, isSpaceDropped_ = false;
  bool hasDoctype_ = false, isInDoctype_ = false, isStopped_ = false, isOutOfMemory_ = false;
  int nestedEntities_ = 0;
  NameId xmlSpace_ = kNoName;
  std::size_t repeated_ = 0;             // bytes of names that were not written again so far
  NameTable types_;                      // of elements for which attributes are declared
  std::vector<std::uint32_t> declared_;  // how many, by the numbers of types_
};

bool Builder::Run() {
  if (source_.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) return false;
  // The parser would take a zero here for half of a UTF-16 unit, whatever encoding it was given.
  if (source_.substr(0, 2).find('\0') != source_.npos) return false;
  SetHandlers();
  SetTypeHandlers();
  xmlSpace_ = tree_.names.Intern("xml:space");
  // Typical documents need about as much; others make the arrays grow.
  tree_.nodes.reserve(source_.size() / 32 + 8);
  tree_.attributes.reserve(source_.size() / 64 + 8);
  tree_.text.reserve(source_.size() / 2);
  tree_.nodes.emplace_back();
  const bool isParsed =
      XML_Parse(parser_.get(), source_.data(), static_cast<int>(source_.size()), XML_TRUE) == XML_STATUS_OK;
  if (isOutOfMemory_ || XML_GetErrorCode(parser_.get()) == XML_ERROR_NO_MEMORY) throw std::bad_alloc();
  if (!isParsed || isStopped_ || !namespaces_.AreLocalNamesWhole()) return false;
  tree_.nodes[kDocumentNode].end = static_cast<NodeId>(tree_.nodes.size());
  return true;
}

void Builder::SetHandlers() {
  const XML_Parser parser = parser_.get();
  XML_SetUserData(parser, this);
  XML_SetElementHandler(
      parser,
      [](void* data, const char* name, const char** attributes) {
        Of(data).Guarded([&] { Of(data).StartElement(name, attributes); });
      },
      [](void* data, const char*) { Of(data).Guarded([&] { Of(data).EndElement(); }); });
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
    Of(data).Guarded([&] { Of(data).AddWithText(NodeKind::kComment, {}, text); });
  });
  XML_SetProcessingInstructionHandler(parser, [](void* data, const char* target, const char* text) {
    Of(data).Guarded([&] { Of(data).AddWithText(NodeKind::kInstruction, target, text); });
  });
  // What stands outside the document is not read: a reference to it is a node of its own. The first handler
  // has those whose declaration was not read either, the second those that are declared, as written; other
  // pieces that it gets stand in the document type or begin with a bracket. The handler that the parser has
  // for the latter would cost a look at all entities each time.
  XML_SetSkippedEntityHandler(parser, [](void* data, const char* name, int) {
    Of(data).Guarded([&] { Of(data).AddWithText(NodeKind::kEntityReference, name, {}); });
  });
  XML_SetDefaultHandlerExpand(parser, [](void* data, const char* bytes, int count) {
    const std::string_view piece(bytes, static_cast<std::size_t>(count));
    if (piece.substr(0, 1) != "&") return;
    Of(data).Guarded(
        [&] { Of(data).AddWithText(NodeKind::kEntityReference, piece.substr(1, piece.size() - 2), {}); });
  });
}

// What the document type says.
void Builder::SetTypeHandlers() {
  const XML_Parser parser = parser_.get();
  XML_SetDoctypeDeclHandler(
      parser,
      [](void* data, const char*, const char*, const char*, int) {
        Of(data).hasDoctype_ = Of(data).isInDoctype_ = true;
      },
      [](void* data) { Of(data).Guarded([&] { Of(data).EndDoctype(); }); });
  XML_SetEntityDeclHandler(parser, [](void* data, const char* name, int isParameter, const char* value,
                                      int length, const char*, const char*, const char*, const char*) {
    const std::string_view inside(value ? value : "", static_cast<std::size_t>(value ? length : 0));
    Of(data).Guarded([&] { Of(data).DeclareEntity(isParameter != 0, name, inside); });
  });
  XML_SetAttlistDeclHandler(
      parser, [](void* data, const char* element, const char*, const char*, const char* value, int) {
        Of(data).Guarded([&] { Of(data).DeclareAttribute(element, value != nullptr); });
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
  if (tree_.nodes.size() >= nodeLimit_) Stop();
  const NodeId id = tree_.Add(kind, name, current_);
  tree_.nodes[id].followsDroppedSpace = isSpaceDropped_;
  isSpaceDropped_ = false;
  return id;
}

void Builder::AddWithText(NodeKind kind, std::string_view name, std::string_view content) {
  if (isInDoctype_) return;
  StopUnless(name.find(':') == name.npos);  // only elements and attributes may have prefixes
  FlushText();
  const NodeId id = Add(kind, name.empty() ? kNoName : tree_.names.Intern(name));
  tree_.nodes[id].content = Store(content);
  BeginText();
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
  isTextSpace_ = isTextSpace_ && std::all_of(bytes.begin(), bytes.end(), IsXmlSpace);
  Store(bytes);
}

void Builder::StartElement(const char* name, const char** attributes) {
  FlushText();
  const NodeId id = Add(NodeKind::kElement, tree_.names.Intern(name));
  const auto first = static_cast<std::uint32_t>(tree_.attributes.size());
  tree_.nodes[id].content.first = first;
  current_ = id;
  const auto written = static_cast<std::uint32_t>(XML_GetSpecifiedAttributeCount(parser_.get())) / 2;
  bool isAnyBlank = false;
  for (const char** next = attributes; *next && !isStopped_; next += 2) {
    const std::string_view attribute = next[0], value = next[1];
    if (tree_.nodes[id].content.count >= written) {
      CountRepeated(attribute);
    }
    AddAttribute(tree_.names.Intern(attribute), value);
    isAnyBlank |= value.find(' ') != value.npos;
  }
  if (isStopped_) return;
  StopUnless(namespaces_.Enter(id) && (!hasDoctype_ || !*attributes || AreEntitiesKnownInTag()));
  if (isAnyBlank) RestoreAttributeSpaces(first, first + written);
  BeginText();
}

void Builder::EndElement() {
  FlushText();
  const NodeId id = current_;
  current_ = tree_.nodes[id].parent;
  namespaces_.Leave(id);
  tree_.nodes[id].end = static_cast<NodeId>(tree_.nodes.size());
}

void Builder::AddAttribute(NameId name, std::string_view value) {
  if (tree_.attributes.size() >= nodeLimit_) Stop();
  tree_.attributes.push_back({name, Store(value)});
  Node& node = tree_.nodes[current_];
  ++node.content.count;
  if (name == xmlSpace_ && value == "preserve") node.preservesSpace = true;
  if (name == xmlSpace_ && value == "default") node.preservesSpace = false;
}

void Builder::CountRepeated(std::string_view name) {
  repeated_ += name.size();
  StopUnless(repeated_ <= source_.size() * kRepeatedNames + kExtraRepeatedNames);
}

// Where in the source stands what is being handled. Within an entity: the reference to it.
std::size_t Builder::Position() const {
  return static_cast<std::size_t>(XML_GetCurrentByteIndex(parser_.get()));
}

// The source text of the tag or reference that is being handled. The end of other markup is not known here.
std::string_view Builder::Written() const {
  return source_.substr(Position(), static_cast<std::size_t>(XML_GetCurrentByteCount(parser_.get())));
}

// The first literal in the tag is the value of the first attribute, and so on. From `end` on the attributes
// are defaults.
void Builder::RestoreAttributeSpaces(std::uint32_t first, std::uint32_t end) {
  std::string_view tag = Written();
  if (tag.substr(0, 1) != "<" || !HasTabsOrLineEnds(tag)) return;
  for (std::uint32_t next = first; next < end; ++next) {
    const std::size_t open = tag.find_first_of("'\"");
    if (open == tag.npos) return;
    const std::size_t length = tag.substr(open + 1).find(tag[open]);
    if (length == tag.npos) return;
    const Span value = tree_.attributes[next].value;
    RestoreSpaces(tag.substr(open + 1, length), tree_.text.data() + value.first, value.count);
    tag.remove_prefix(open + length + 2);
  }
}

// The names in a document type have to obey the rules of namespaces, too. They come in many places: a parser
// that knows the rules goes over them once more.
void Builder::EndDoctype() {
  isInDoctype_ = false;
  if (nestedEntities_ == 0) SetExpansion(parser_.get(), kFlatExpansion);
  const std::size_t length = Position() + 1;  // with the bracket that is being handled
  const Parser strict = NewParser(XML_ParserCreateNS("UTF-8", '\x01'));
  StopUnless(XML_Parse(strict.get(), source_.data(), static_cast<int>(length), XML_FALSE) == XML_STATUS_OK);
  if (XML_GetErrorCode(strict.get()) == XML_ERROR_NO_MEMORY) throw std::bad_alloc();
}

void Builder::DeclareEntity(bool isParameter, std::string_view name, std::string_view value) {
  isParameter ? entities_.DeclareParameter(value) : entities_.Declare(name, value);
  if (!RefersToEntities(value, isParameter)) return;
  StopUnless(++nestedEntities_ <= kMostNestedEntities);
}

void Builder::DeclareAttribute(std::string_view element, bool hasDefault) {
  CountRepeated(element);
  const NameId type = types_.Intern(element);
  if (type == declared_.size()) declared_.push_back(0);
  StopUnless(++declared_[type] <= kMostDeclaredAttributes && (!hasDefault || AreEntitiesKnownInDefault()));
}

// Whether all entities are known to which the default value refers that is being handled. What stands in an
// entity is not in the source: there is the reference to it.
bool Builder::AreEntitiesKnownInDefault() {
  const std::string_view rest = source_.substr(Position());
  if (rest[0] == '%') return entities_.AreKnownInParameters();
  return entities_.AreKnownIn(rest.substr(0, rest.find(rest[0], 1)));
}

// The same for the values in the start tag that is being handled.
bool Builder::AreEntitiesKnownInTag() {
  const std::string_view written = Written();
  if (written.substr(0, 1) == "<") return entities_.AreKnownIn(written);
  return entities_.AreKnownInTagsOf(written.substr(1, written.size() - 2));
}

}  // namespace

bool Build(std::string_view utf8, XmlTree& tree) { return Builder(utf8, tree).Run(); }

}  // namespace zvuti::xml

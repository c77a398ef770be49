#include <ZvUtiLib/platform/XmlDom.h>

#include <cstdio>
#include <exception>
#include <limits>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <ZvUtiLib/platform/CComPtr.h>

#include "gbk/Ascii.h"
#include "gbk/CodePage936.h"
#include "platform/OpenFile.h"
#include "platform/com/BstrMemory.h"
#include "platform/com/NarrowNode.h"
#include "platform/xml/XmlBuilder.h"
#include "platform/xml/XmlEncoding.h"
#include "platform/xml/XmlPlainReader.h"
#include "platform/xml/XmlSelection.h"
#include "platform/xml/XmlTree.h"

namespace zvuti::xml {
namespace {

// Counts are plain numbers: a document and its views belong to one thread at a time.
class SharedTree final : public XmlTree {
 public:
  void AddRef() { ++references_; }
  void Release() {
    if (--references_ == 0) delete this;
  }

 private:
  std::uint32_t references_ = 0;
};

// The counting part of an object, which is made by `new` and has one reference then.
template <class Interface>
class Counted : public Interface {
 public:
  Counted() = default;
  Counted(const Counted&) = delete;
  Counted& operator=(const Counted&) = delete;

  std::uint32_t AddRef() final { return ++references_; }
  std::uint32_t Release() final {
    const std::uint32_t left = --references_;
    if (left == 0) delete this;
    return left;
  }

 protected:
  virtual ~Counted() = default;

 private:
  std::uint32_t references_ = 1;
};

// Stores a new object, or null where the heap refuses it.
template <class Object, class Interface, class... Arguments>
HRESULT Give(Interface** out, const Arguments&... arguments) {
  *out = new (std::nothrow) Object(arguments...);
  return *out ? S_OK : E_OUTOFMEMORY;
}

std::u16string_view ViewOf(BSTR text) {
  return text ? std::u16string_view(text, SysStringLen(text)) : std::u16string_view();
}

// Runs what may find the heap exhausted.
template <class Work>
HRESULT Guarded(Work work) noexcept {
  try {
    return work();
  } catch (const std::exception&) {
    return E_OUTOFMEMORY;
  }
}

// A node or an attribute, made on demand; each view keeps the tree.
class NodeView final : public Counted<IXMLDOMElement>, public NarrowNode {
 public:
  NodeView(const CComPtr<SharedTree>& tree, Place place) : tree_(tree), place_(place) {}

  HRESULT QueryInterface(const IID& iid, void** out) override {
    *out = nullptr;
    if (iid == IID_NarrowNode) {
      *out = static_cast<NarrowNode*>(this);
      return S_OK;
    }
    const bool isElement = IsNode() && tree_->IsElement(place_.node);
    if (iid == IID_IUnknown || iid == IID_IXMLDOMNode || (iid == IID_IXMLDOMElement && isElement)) {
      *out = static_cast<IXMLDOMElement*>(this);
    }
    if (!*out) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }

  HRESULT get_nodeName(BSTR* name) override { return GiveText(NameHere(), name); }

  HRESULT get_text(BSTR* text) override {
    if (const auto whole = WholeText()) return GiveText(*whole, text);
    return GivePieces([this](auto take) { tree_->VisitText(place_.node, take); }, text);
  }

  HRESULT selectSingleNode(BSTR selection, IXMLDOMNode** node) override {
    *node = nullptr;
    return Guarded([&] {
      *node = SelectUtf8(gbk::Utf16ToUtf8(ViewOf(selection)));
      return *node ? S_OK : S_FALSE;
    });
  }

  HRESULT hasChildNodes(VARIANT_BOOL* has) override {
    *has = IsNode() && NodeHere().children > 0 ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
  }

  HRESULT get_childNodes(IXMLDOMNodeList** list) override;

  HRESULT getAttribute(BSTR name, VARIANT* value) override {
    VariantInit(value);
    return Guarded([&]() -> HRESULT {
      const auto own = tree_->FromUtf8(gbk::Utf16ToUtf8(ViewOf(name)));
      const xml::Attribute* found = own ? tree_->FindAttribute(place_.node, *own) : nullptr;
      if (!found) {
        value->vt = VT_NULL;
        return S_FALSE;
      }
      if (FAILED(GiveText(tree_->Bytes(found->value), &value->bstrVal))) return E_OUTOFMEMORY;
      value->vt = VT_BSTR;
      return S_OK;
    });
  }

  CString Name() const override { return GbkOf(NameHere()); }

  CString Text() const override {
    if (const auto whole = WholeText()) return GbkOf(*whole);
    std::string_view only;
    std::string text;  // of several pieces
    tree_->VisitText(place_.node, [&](std::string_view piece) {
      if (only.empty() && text.empty()) {
        only = piece;
      } else {
        text.append(only).append(piece);
        only = {};
      }
    });
    return GbkOf(text.empty() ? only : text);
  }

  CString Attribute(std::string_view name) const override {
    const bool isOwn = tree_->encoding == Encoding::kGbk || IsAscii(name);
    const xml::Attribute* found = isOwn ? tree_->FindAttribute(place_.node, name)
                                        : tree_->FindAttribute(place_.node, gbk::ToUtf8(name));
    return found ? GbkOf(tree_->Bytes(found->value)) : CString();
  }

  IXMLDOMNode* Select(std::string_view selection) const override {
    return IsAscii(selection) ? SelectUtf8(selection) : SelectUtf8(gbk::ToUtf8(selection));
  }

 private:
  CString GbkOf(std::string_view own) const { return CString(tree_->ToGbk(own)); }

  IXMLDOMNode* SelectUtf8(std::string_view selection) const {
    const auto found = SelectFirst(*tree_, place_, selection);
    return found ? new NodeView(tree_, *found) : nullptr;
  }

  // Stores in UTF-16 the pieces of text that `visit` hands to its argument.
  template <class Visit>
  HRESULT GivePieces(Visit visit, BSTR* out) const {
    std::size_t most = 0;
    visit([&](std::string_view piece) { most += piece.size(); });
    if (most > std::numeric_limits<unsigned>::max()) return E_OUTOFMEMORY;
    *out = SysAllocStringLen(nullptr, static_cast<unsigned>(most));
    if (!*out) return E_OUTOFMEMORY;
    std::size_t length = 0;
    visit([&](std::string_view piece) { length += tree_->ToUtf16(piece, *out + length); });
    ShortenBstr(*out, static_cast<unsigned>(length));
    return S_OK;
  }
  HRESULT GiveText(std::string_view own, BSTR* out) const {
    return GivePieces([own](auto take) { take(own); }, out);
  }

  bool IsNode() const { return place_.attribute == 0; }
  const Node& NodeHere() const { return tree_->nodes[place_.node]; }
  const xml::Attribute& AttributeHere() const { return tree_->attributes[place_.attribute - 1]; }

  // The text of a node that has one of its own, wherever it stands in the tree.
  std::optional<std::string_view> WholeText() const {
    if (!IsNode()) return tree_->Bytes(AttributeHere().value);
    const Node& node = NodeHere();
    const bool isOwn = node.kind == NodeKind::kComment || node.kind == NodeKind::kInstruction;
    return isOwn ? std::optional(tree_->Bytes(node.content)) : std::nullopt;
  }

  std::string_view NameHere() const {
    if (!IsNode()) return tree_->names.At(AttributeHere().name);
    switch (NodeHere().kind) {
      case NodeKind::kDocument:
        return "#document";
      case NodeKind::kText:
        return "#text";
      case NodeKind::kCData:
        return "#cdata-section";
      case NodeKind::kComment:
        return "#comment";
      case NodeKind::kElement:
      case NodeKind::kInstruction:
      case NodeKind::kEntityReference:
        break;
    }
    return tree_->names.At(NodeHere().name);
  }

  CComPtr<SharedTree> tree_;
  Place place_;
};

class ListView final : public Counted<IXMLDOMNodeList>, public NarrowList {
 public:
  ListView(const CComPtr<SharedTree>& tree, NodeId parent, std::uint32_t count)
      : tree_(tree), first_(parent + 1), count_(static_cast<long>(count)), node_(first_) {}

  HRESULT QueryInterface(const IID& iid, void** out) override {
    *out = nullptr;
    if (iid == IID_NarrowList) {
      *out = static_cast<NarrowList*>(this);
      return S_OK;
    }
    if (!(iid == IID_IUnknown) && !(iid == IID_IXMLDOMNodeList)) return E_NOINTERFACE;
    AddRef();
    *out = static_cast<IXMLDOMNodeList*>(this);
    return S_OK;
  }

  HRESULT get_item(long index, IXMLDOMNode** item) override {
    *item = nullptr;
    if (index < 0 || index >= count_) return S_FALSE;
    return Guarded([&] { return Give<NodeView>(item, tree_, Place{At(index)}); });
  }

  HRESULT get_length(long* length) override {
    *length = count_;
    return S_OK;
  }

  IXMLDOMElement* ElementAt(long index) override {
    if (index < 0 || index >= count_) return nullptr;
    const NodeId id = At(index);
    return tree_->IsElement(id) ? new NodeView(tree_, Place{id}) : nullptr;
  }

 private:
  // Child `index`, which exists. A walk in order steps from one to the next; the first step out of order
  // lists them all.
  NodeId At(long index) {
    if (all_.empty() && index == index_ + 1) {
      node_ = tree_->nodes[node_].end;
      ++index_;
    } else if (index != index_) {
      if (all_.empty()) ListAll();
      node_ = all_[static_cast<std::size_t>(index)];
      index_ = index;
    }
    return node_;
  }

  void ListAll() {
    all_.reserve(static_cast<std::size_t>(count_));
    NodeId id = first_;
    for (long i = 0; i < count_; ++i, id = tree_->nodes[id].end) all_.push_back(id);
  }

  CComPtr<SharedTree> tree_;
  NodeId first_;
  long count_, index_ = 0;  // node_ is child index_
  NodeId node_;
  std::vector<NodeId> all_;  // empty until it is needed
};

HRESULT NodeView::get_childNodes(IXMLDOMNodeList** list) {
  return Give<ListView>(list, tree_, place_.node, IsNode() ? NodeHere().children : 0);
}

std::string WithoutEscapes(std::string_view text) {
  const auto digit = [](char c) {
    const auto found = std::string_view("0123456789ABCDEFabcdef").find(c);
    return found < 16 || found > 21 ? static_cast<int>(found) : static_cast<int>(found) - 6;
  };
  std::string plain;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool isEscape =
        text[i] == '%' && i + 2 < text.size() && digit(text[i + 1]) >= 0 && digit(text[i + 2]) >= 0;
    plain += isEscape ? static_cast<char>(digit(text[i + 1]) * 16 + digit(text[i + 2])) : text[i];
    if (isEscape) i += 2;
  }
  return plain;
}

bool ReadFile(const std::string& path, std::string& bytes) {
  if (path.find('\0') != std::string::npos) return false;
  struct Closer {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };
  const std::unique_ptr<std::FILE, Closer> file(OpenForReading(path.c_str(), true));
  const std::int64_t length = file ? LengthOf(file.get()) : -1;
  if (length < 0 || length > std::numeric_limits<int>::max()) return false;
  bytes.resize(static_cast<std::size_t>(length));
  bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file.get()));
  return std::ferror(file.get()) == 0;
}

// Reads what a path or a file:// address names. An address has escapes such as %20; a path may have them.
bool ReadSource(const std::string& source, std::string& bytes) {
  constexpr std::string_view kScheme = "file://", kHost = "localhost";
  std::string scheme = source.substr(0, kScheme.size());
  gbk::FoldToLower(scheme.data(), scheme.size());
  if (scheme != kScheme) return ReadFile(source, bytes) || ReadFile(WithoutEscapes(source), bytes);
  std::string_view path = std::string_view(source).substr(kScheme.size());
  if (path.substr(0, kHost.size()) == kHost && path.substr(kHost.size(), 1) == "/")
    path.remove_prefix(kHost.size());
  return ReadFile(WithoutEscapes(path), bytes);
}

class DocumentView final : public Counted<IXMLDOMDocument>, public NarrowDocument {
 public:
  HRESULT QueryInterface(const IID& iid, void** out) override {
    *out = nullptr;
    if (iid == IID_NarrowDocument) {
      *out = static_cast<NarrowDocument*>(this);
      return S_OK;
    }
    if (iid == IID_IUnknown || iid == IID_IXMLDOMDocument) {
      *out = static_cast<IXMLDOMDocument*>(this);
    }
    if (!*out) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }

  HRESULT put_async(VARIANT_BOOL) override { return S_OK; }

  HRESULT load(VARIANT source, VARIANT_BOOL* isLoaded) override {
    *isLoaded = VARIANT_FALSE;
    tree_.Release();
    if (source.vt != VT_BSTR) return E_INVALIDARG;
    return Guarded([&] { return Loaded(LoadFile(gbk::FromUtf16(ViewOf(source.bstrVal))), isLoaded); });
  }

  HRESULT loadXML(BSTR text, VARIANT_BOOL* isLoaded) override {
    *isLoaded = VARIANT_FALSE;
    tree_.Release();
    return Guarded([&] {
      const std::u16string_view units = ViewOf(text);
      return Loaded(IsWellFormedUtf16(units) && LoadBytes(gbk::Utf16ToUtf8(units), Encoding::kUtf8),
                    isLoaded);
    });
  }

  bool Load(std::string_view text) override {
    tree_.Release();
    return LoadBytes(text, Encoding::kGbk);
  }

  bool LoadFile(std::string_view path) override {
    tree_.Release();
    std::string bytes;
    if (!ReadSource(std::string(path), bytes)) return false;
    std::string_view plain = bytes;
    const auto encoding = CutToPlain(plain);
    if (encoding && ReplaceBy(ReadPlain, plain, *encoding)) return true;
    return ToUtf8(bytes) && ReplaceBy(Build, bytes);
  }

  HRESULT get_documentElement(IXMLDOMElement** element) override {
    *element = nullptr;
    for (NodeId id = 1; tree_ && id < tree_->nodes.size(); ++id) {
      if (tree_->IsElement(id)) return Give<NodeView>(element, tree_, Place{id});
    }
    return S_FALSE;
  }

 private:
  static HRESULT Loaded(bool isWellFormed, VARIANT_BOOL* isLoaded) {
    *isLoaded = isWellFormed ? VARIANT_TRUE : VARIANT_FALSE;
    return isWellFormed ? S_OK : S_FALSE;
  }

  // Loads a text from which white space in front is cut.
  bool LoadBytes(std::string_view text, Encoding encoding) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
    if (ReplaceBy(ReadPlain, text, encoding)) return true;
    if (encoding == Encoding::kUtf8 || IsAscii(text)) return ReplaceBy(Build, text);
    return ReplaceBy(Build, gbk::ToUtf8(text));
  }

  // Replaces the tree with what one of the two ways reads, where that accepts.
  template <class Way, class... Encodings>
  bool ReplaceBy(Way* way, std::string_view text, Encodings... encoding) {
    const CComPtr<SharedTree> tree(new SharedTree);
    if (!way(text, encoding..., *tree)) return false;
    tree_ = tree;
    return true;
  }

  CComPtr<SharedTree> tree_;
};

}  // namespace
}  // namespace zvuti::xml

HRESULT CoCreateInstance(const CLSID& classId, IUnknown* outer, unsigned context, const IID& interfaceId,
                         void** out) {
  *out = nullptr;
  if (!(classId == CLSID_DOMDocument) || context == 0) return REGDB_E_CLASSNOTREG;
  if (outer) return E_INVALIDARG;
  auto* const document = new (std::nothrow) zvuti::xml::DocumentView;
  if (!document) return E_OUTOFMEMORY;
  const HRESULT result = document->QueryInterface(interfaceId, out);
  document->Release();
  return result;
}

#include "platform/com/NodeText.h"

#include <string_view>

#include "gbk/Ascii.h"
#include "gbk/CodePage936.h"
#include "platform/com/NarrowNode.h"

namespace zvuti {
namespace {

// The narrow side of an object, with no reference of its own; null where the object is none of ours.
template <class Narrow>
Narrow* SideOf(IUnknown& object, const IID& iid) {
  void* side = nullptr;
  if (FAILED(object.QueryInterface(iid, &side))) return nullptr;
  object.Release();
  return static_cast<Narrow*>(side);
}

const NarrowNode* NarrowSideOf(IXMLDOMNode& node) { return SideOf<NarrowNode>(node, IID_NarrowNode); }

// Hands a GBK text to `use` as UTF-8; a name is nearly always the same in both, and is not copied.
template <class Use>
auto WithUtf8(const char* bytes, Use use) {
  const std::string_view text = bytes ? bytes : std::string_view();
  return IsAscii(text) ? use(text) : use(std::string_view(gbk::ToUtf8(text)));
}

// Lets the narrow side of a document load it.
template <class Load>
HRESULT LoadWith(IXMLDOMDocument& document, VARIANT_BOOL* isLoaded, Load load) {
  auto* const narrow = SideOf<NarrowDocument>(document, IID_NarrowDocument);
  *isLoaded = narrow && load(*narrow) ? VARIANT_TRUE : VARIANT_FALSE;
  return *isLoaded == VARIANT_TRUE ? S_OK : S_FALSE;
}

}  // namespace

HRESULT LoadFile(IXMLDOMDocument& document, const char* path, VARIANT_BOOL* isLoaded) {
  return LoadWith(document, isLoaded, [path](NarrowDocument& narrow) {
    return narrow.LoadFile(path ? path : std::string_view());
  });
}

HRESULT LoadText(IXMLDOMDocument& document, const char* text, VARIANT_BOOL* isLoaded) {
  return LoadWith(document, isLoaded, [text](NarrowDocument& narrow) {
    return WithUtf8(text, [&](std::string_view utf8) { return narrow.Load(utf8); });
  });
}

CString NameOf(IXMLDOMNode& node) {
  const NarrowNode* const narrow = NarrowSideOf(node);
  return narrow ? narrow->Name() : CString();
}

CString TextOf(IXMLDOMNode& node) {
  const NarrowNode* const narrow = NarrowSideOf(node);
  return narrow ? narrow->Text() : CString();
}

CString AttributeOf(IXMLDOMElement& element, const char* name) {
  const NarrowNode* const narrow = NarrowSideOf(element);
  if (!narrow) return CString();
  return WithUtf8(name, [&](std::string_view utf8) { return narrow->Attribute(utf8); });
}

CComPtr<IXMLDOMNode> SelectFrom(IXMLDOMNode& node, const char* selection) {
  CComPtr<IXMLDOMNode> found;
  const NarrowNode* const narrow = NarrowSideOf(node);
  if (narrow) found.Attach(WithUtf8(selection, [&](std::string_view utf8) { return narrow->Select(utf8); }));
  return found;
}

}  // namespace zvuti

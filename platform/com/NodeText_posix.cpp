#include "platform/com/NodeText.h"

#include "platform/CodePage936.h"
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

std::string Utf8Of(const char* text) { return text ? gbk::ToUtf8(text) : std::string(); }

}  // namespace

HRESULT LoadText(IXMLDOMDocument& document, const char* text, VARIANT_BOOL* isLoaded) {
  auto* const narrow = SideOf<NarrowDocument>(document, IID_NarrowDocument);
  *isLoaded = narrow && narrow->Load(Utf8Of(text)) ? VARIANT_TRUE : VARIANT_FALSE;
  return *isLoaded == VARIANT_TRUE ? S_OK : S_FALSE;
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
  return narrow ? narrow->Attribute(Utf8Of(name)) : CString();
}

CComPtr<IXMLDOMNode> SelectFrom(IXMLDOMNode& node, const char* selection) {
  CComPtr<IXMLDOMNode> found;
  if (const NarrowNode* const narrow = NarrowSideOf(node)) found.Attach(narrow->Select(Utf8Of(selection)));
  return found;
}

}  // namespace zvuti

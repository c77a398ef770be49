#include "platform/com/NodeText.h"

#include <string_view>

#include "platform/com/NarrowNode.h"

namespace zvuti {
namespace {

// The narrow side of an object; null where the object is none of ours.
template <class Narrow>
Narrow* SideOf(IUnknown& object, const IID& iid) {
  void* side = nullptr;
  return SUCCEEDED(object.QueryInterface(iid, &side)) ? static_cast<Narrow*>(side) : nullptr;
}

const NarrowNode* NarrowSideOf(IXMLDOMNode& node) { return SideOf<NarrowNode>(node, IID_NarrowNode); }

std::string_view ViewOf(const char* text) { return text ? text : std::string_view(); }

// Lets the narrow side of a document load it.
template <class Load>
HRESULT LoadWith(IXMLDOMDocument& document, VARIANT_BOOL* isLoaded, Load load) {
  auto* const narrow = SideOf<NarrowDocument>(document, IID_NarrowDocument);
  *isLoaded = narrow && load(*narrow) ? VARIANT_TRUE : VARIANT_FALSE;
  return *isLoaded == VARIANT_TRUE ? S_OK : S_FALSE;
}

}  // namespace

HRESULT LoadFile(IXMLDOMDocument& document, const char* path, VARIANT_BOOL* isLoaded) {
  return LoadWith(document, isLoaded,
                  [path](NarrowDocument& narrow) { return narrow.LoadFile(ViewOf(path)); });
}

HRESULT LoadText(IXMLDOMDocument& document, const char* text, VARIANT_BOOL* isLoaded) {
  return LoadWith(document, isLoaded, [text](NarrowDocument& narrow) { return narrow.Load(ViewOf(text)); });
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
  return narrow ? narrow->Attribute(ViewOf(name)) : CString();
}

CComPtr<IXMLDOMNode> SelectFrom(IXMLDOMNode& node, const char* selection) {
  CComPtr<IXMLDOMNode> found;
  const NarrowNode* const narrow = NarrowSideOf(node);
  if (narrow) found.Attach(narrow->Select(ViewOf(selection)));
  return found;
}

CComPtr<IXMLDOMElement> ElementAt(IXMLDOMNodeList& list, long index) {
  CComPtr<IXMLDOMElement> found;
  auto* const narrow = SideOf<NarrowList>(list, IID_NarrowList);
  if (narrow) found.Attach(narrow->ElementAt(index));
  return found;
}

}  // namespace zvuti

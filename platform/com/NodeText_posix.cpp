#include "platform/com/NodeText.h"

#include <string_view>

#include "platform/com/NarrowNode.h"

namespace zvuti {
namespace {

// Hands the narrow side of an object to `use`; an empty result where the object is none of ours.
template <class Narrow, class Use>
auto With(IUnknown& object, const IID& iid, Use use) {
  void* side = nullptr;
  const bool isOurs = SUCCEEDED(object.QueryInterface(iid, &side));
  return isOurs ? use(*static_cast<Narrow*>(side)) : decltype(use(*static_cast<Narrow*>(side)))();
}

template <class Use>
auto WithNode(IXMLDOMNode& node, Use use) {
  return With<const NarrowNode>(node, IID_NarrowNode, use);
}

std::string_view ViewOf(const char* text) { return text ? text : std::string_view(); }

// Lets the narrow side of a document load it.
template <class Load>
HRESULT LoadWith(IXMLDOMDocument& document, VARIANT_BOOL* isLoaded, Load load) {
  *isLoaded = With<NarrowDocument>(document, IID_NarrowDocument, load) ? VARIANT_TRUE : VARIANT_FALSE;
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
  return WithNode(node, [](const NarrowNode& narrow) { return narrow.Name(); });
}

CString TextOf(IXMLDOMNode& node) {
  return WithNode(node, [](const NarrowNode& narrow) { return narrow.Text(); });
}

CString AttributeOf(IXMLDOMElement& element, const char* name) {
  return WithNode(element, [name](const NarrowNode& narrow) { return narrow.Attribute(ViewOf(name)); });
}

CComPtr<IXMLDOMNode> SelectFrom(IXMLDOMNode& node, const char* selection) {
  CComPtr<IXMLDOMNode> found;
  found.Attach(WithNode(node, [=](const NarrowNode& narrow) { return narrow.Select(ViewOf(selection)); }));
  return found;
}

CComPtr<IXMLDOMElement> ElementAt(IXMLDOMNodeList& list, long index) {
  CComPtr<IXMLDOMElement> found;
  found.Attach(With<NarrowList>(list, IID_NarrowList, [=](NarrowList& own) { return own.ElementAt(index); }));
  return found;
}

}  // namespace zvuti

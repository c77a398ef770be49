#include "platform/com/NodeText.h"

#include "gbk/CodePage936.h"
#include "platform/com/Bstr.h"

namespace zvuti {
namespace {

CString GbkOf(BSTR text) {
  if (!text) return CString();
  const auto* units = reinterpret_cast<const char16_t*>(text);
  return CString(gbk::FromUtf16({units, SysStringLen(text)}));
}

}  // namespace

HRESULT LoadFile(IXMLDOMDocument& document, const char* path, VARIANT_BOOL* isLoaded) {
  return document.load(Variant(path).Get(), isLoaded);
}

HRESULT LoadText(IXMLDOMDocument& document, const char* text, VARIANT_BOOL* isLoaded) {
  return document.loadXML(Bstr(text).Get(), isLoaded);
}

CString NameOf(IXMLDOMNode& node) {
  Bstr name;
  return SUCCEEDED(node.get_nodeName(name.Receive())) ? GbkOf(name.Get()) : CString();
}

CString TextOf(IXMLDOMNode& node) {
  Bstr text;
  return SUCCEEDED(node.get_text(text.Receive())) ? GbkOf(text.Get()) : CString();
}

CString AttributeOf(IXMLDOMElement& element, const char* name) {
  Variant value;
  element.getAttribute(Bstr(name).Get(), value.Receive());
  return value.Get().vt == VT_BSTR ? GbkOf(value.Get().bstrVal) : CString();
}

CComPtr<IXMLDOMNode> SelectFrom(IXMLDOMNode& node, const char* selection) {
  CComPtr<IXMLDOMNode> found;
  if (FAILED(node.selectSingleNode(Bstr(selection).Get(), &found))) found.Release();
  return found;
}

CComPtr<IXMLDOMElement> ElementAt(IXMLDOMNodeList& list, long index) {
  CComPtr<IXMLDOMNode> node;
  list.get_item(index, &node);
  return ElementOf(node);
}

}  // namespace zvuti

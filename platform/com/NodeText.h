// Texts into and out of the object model, in GBK.
//
// On Windows the object model's calls take and return UTF-16. The stand-in stores GBK or UTF-8, and a walk
// through UTF-16 would take longer than loading the document, so there these calls go straight to the tree.
// All of them throw std::bad_alloc when the heap refuses.
#pragma once

#include <ZvUtiLib/platform/CComPtr.h>
#include <ZvUtiLib/platform/CString.h>
#include <ZvUtiLib/platform/XmlDom.h>

namespace zvuti {

/// Loads a document from the file at a path or an address; a null path reads as "". On Linux the bytes of the
/// name are passed to the system unconverted, except that backslashes become slashes and %XX escapes may be
/// undone.
HRESULT LoadFile(IXMLDOMDocument& document, const char* path, VARIANT_BOOL* isLoaded);
/// Loads a document from its text, whatever encoding it declares; a null text reads as "".
HRESULT LoadText(IXMLDOMDocument& document, const char* text, VARIANT_BOOL* isLoaded);
/// The node's name, "" on failure.
CString NameOf(IXMLDOMNode& node);
/// All text within the node, "" on failure.
CString TextOf(IXMLDOMNode& node);
/// The value of an attribute, "" on failure and when it is missing. A null name reads as "".
CString AttributeOf(IXMLDOMElement& element, const char* name);
/// The first node that a selection reaches, or null. A null selection reads as "".
CComPtr<IXMLDOMNode> SelectFrom(IXMLDOMNode& node, const char* selection);
/// The element at an index of a list, null if no node is there or one that is no element.
CComPtr<IXMLDOMElement> ElementAt(IXMLDOMNodeList& list, long index);
/// A node as an element, null if it is null or no element.
inline CComPtr<IXMLDOMElement> ElementOf(IXMLDOMNode* node) {
  CComPtr<IXMLDOMElement> element;
  void* found = nullptr;
  if (node && SUCCEEDED(node->QueryInterface(IID_IXMLDOMElement, &found))) {
    element.Attach(static_cast<IXMLDOMElement*>(found));
  }
  return element;
}

}  // namespace zvuti

#include "platform/com/NodeText.h"

#include "platform/CodePage936.h"
#include "platform/com/NarrowNode.h"

namespace zvuti {
namespace {

// The node's narrow side, with no reference of its own; null where the node is none of ours.
const NarrowNode* NarrowSideOf(IXMLDOMNode& node) {
  void* side = nullptr;
  if (FAILED(node.QueryInterface(IID_NarrowNode, &side))) return nullptr;
  node.Release();
  return static_cast<const NarrowNode*>(side);
}

std::string Utf8Of(const char* text) { return text ? gbk::ToUtf8(text) : std::string(); }

}  // namespace

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

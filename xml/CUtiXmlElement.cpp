#include <ZvUtiLib/CUtiXmlElement.h>
#include <ZvUtiLib/CUtiXmlNodeList.h>

#include <exception>
#include <utility>

#include "gbk/LeadingInt.h"
#include "platform/com/NodeText.h"

namespace {

CComPtr<IXMLDOMNode> Select(IXMLDOMElement* from, const char* selection) {
  return from ? zvuti::SelectFrom(*from, selection) : CComPtr<IXMLDOMNode>();
}

CComPtr<IXMLDOMNodeList> ChildrenOf(IXMLDOMElement* node) {
  CComPtr<IXMLDOMNodeList> list;
  if (node && FAILED(node->get_childNodes(&list))) list.Release();
  return list;
}

// Returns the result of `read`, or an empty value of its type if `read` throws, as when an allocation fails.
template <class Read>
auto OrEmpty(Read read) noexcept -> decltype(read()) {
  try {
    return read();
  } catch (const std::exception&) {
    return {};
  }
}

}  // namespace

CUtiXmlElement::~CUtiXmlElement() = default;
CUtiXmlElement::CUtiXmlElement() = default;
CUtiXmlElement::CUtiXmlElement(const CComPtr<IXMLDOMElement>& node) : element(node) {}
CUtiXmlElement::CUtiXmlElement(const CUtiXmlElement& other) = default;
CUtiXmlElement& CUtiXmlElement::operator=(const CUtiXmlElement& other) = default;

CUtiXmlElement::CUtiXmlElement(const CComPtr<IXMLDOMNode>& node) : element(zvuti::ElementOf(node)) {}

CString CUtiXmlElement::GetNodeName() const {
  return OrEmpty([&] { return element ? zvuti::NameOf(*element) : CString(); });
}

CString CUtiXmlElement::GetText() const {
  return OrEmpty([&] { return element ? zvuti::TextOf(*element) : CString(); });
}

CString CUtiXmlElement::GetAttribute(const char* name) const {
  return OrEmpty([&] { return element ? zvuti::AttributeOf(*element, name) : CString(); });
}

int CUtiXmlElement::GetAttributeInt(const char* name) const {
  return zvuti::LeadingInt(GetAttribute(name).GetString());
}

CString CUtiXmlElement::GetChildAttribute(const char* selection, const char* name) const {
  return OrEmpty([&] { return CUtiXmlElement(Select(element, selection)).GetAttribute(name); });
}

int CUtiXmlElement::GetChildAttributeInt(const char* selection, const char* name) const {
  return zvuti::LeadingInt(GetChildAttribute(selection, name).GetString());
}

CString CUtiXmlElement::GetChildText(const char* selection) const {
  return OrEmpty([&] { return CUtiXmlElement(Select(element, selection)).GetText(); });
}

int CUtiXmlElement::GetChildNodes(CUtiXmlNodeList* list) const {
  CComPtr<IXMLDOMNodeList> children = ChildrenOf(element);
  if (!children) return 0;
  if (list) list->nodeList = std::move(children);
  return 1;
}

int CUtiXmlElement::GetOneChildNode(const char* name, CUtiXmlElement* child) const {
  return OrEmpty([&] {
    const CComPtr<IXMLDOMNodeList> children = ChildrenOf(element);
    long length = 0;
    if (!name || !children || FAILED(children->get_length(&length))) return 0;
    for (long i = 0; i < length; ++i) {
      CComPtr<IXMLDOMNode> node;
      if (FAILED(children->get_item(i, &node)) || !node) continue;
      if (zvuti::NameOf(*node) == name) {
        if (child) *child = CUtiXmlElement(node);
        return 1;
      }
    }
    return 0;
  });
}

int CUtiXmlElement::IsHasChild(const char* selection) const {
  return OrEmpty([&] {
    if (selection && *selection) return Select(element, selection) ? 1 : 0;
    VARIANT_BOOL has = VARIANT_FALSE;
    if (!element || FAILED(element->hasChildNodes(&has))) return 0;
    return static_cast<int>(has);
  });
}

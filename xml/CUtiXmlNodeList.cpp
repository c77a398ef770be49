#include <ZvUtiLib/CUtiXmlElement.h>
#include <ZvUtiLib/CUtiXmlNodeList.h>

CUtiXmlNodeList::CUtiXmlNodeList() = default;
CUtiXmlNodeList::CUtiXmlNodeList(const CComPtr<IXMLDOMNodeList>& list) : nodeList(list) {}
CUtiXmlNodeList::CUtiXmlNodeList(const CUtiXmlNodeList& other) = default;
CUtiXmlNodeList& CUtiXmlNodeList::operator=(const CUtiXmlNodeList& other) = default;
CUtiXmlNodeList::~CUtiXmlNodeList() = default;

int CUtiXmlNodeList::GetLength() const {
  long length = 0;
  if (nodeList) nodeList->get_length(&length);
  return static_cast<int>(length);
}

int CUtiXmlNodeList::GetItem(int index, CUtiXmlElement* item) const {
  if (!nodeList) return 0;
  CComPtr<IXMLDOMNode> node;
  nodeList->get_item(index, &node);
  if (item) *item = CUtiXmlElement(node);
  return 1;
}

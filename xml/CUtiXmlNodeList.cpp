#include <ZvUtiLib/CUtiXmlElement.h>
#include <ZvUtiLib/CUtiXmlNodeList.h>

#include <exception>
#include <utility>

#include "platform/com/NodeText.h"

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
  CComPtr<IXMLDOMElement> found;
  try {
    found = zvuti::ElementAt(*nodeList, index);
  } catch (const std::exception&) {  // an allocation failed: `item` becomes empty
  }
  if (item) item->element = std::move(found);
  return 1;
}

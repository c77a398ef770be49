// CUtiXmlNodeList: the child nodes of an element, of every kind and in document order.
#pragma once

#include <ZvUtiLib/Export.h>
#include <ZvUtiLib/platform/CComPtr.h>
#include <ZvUtiLib/platform/XmlDom.h>

class CUtiXmlElement;

/// Copies share the same list, and each keeps its document alive. No operation throws.
class ZVUTILIB_API CUtiXmlNodeList {
 public:
  /// Empty.
  CUtiXmlNodeList();
  /// Shares the list; empty when there is none.
  explicit CUtiXmlNodeList(const CComPtr<IXMLDOMNodeList>& list);
  CUtiXmlNodeList(const CUtiXmlNodeList& other);
  CUtiXmlNodeList& operator=(const CUtiXmlNodeList& other);
  ~CUtiXmlNodeList();

  /// How many nodes there are; 0 for an empty list.
  int GetLength() const;
  /// Stores the node at `index`, counted from 0, in `item` and returns 1. `item` is then empty when the
  /// index is out of range or the node is no element. Returns 0, with `item` unchanged, without a list.
  int GetItem(int index, CUtiXmlElement* item) const;

 private:
  CComPtr<IXMLDOMNodeList> nodeList;
};

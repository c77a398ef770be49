// CUtiXmlNodeList: the child nodes of an element, of every kind, in document order.
#pragma once

#include <ZvUtiLib/Export.h>
#include <ZvUtiLib/platform/CComPtr.h>
#include <ZvUtiLib/platform/XmlDom.h>

class CUtiXmlElement;

/// Copies share the list, and each copy keeps the document alive. No operation throws.
class ZVUTILIB_API CUtiXmlNodeList {
 public:
  /// Creates an empty list.
  CUtiXmlNodeList();
  /// Shares `list`; the new object is empty if it is null.
  explicit CUtiXmlNodeList(const CComPtr<IXMLDOMNodeList>& list);
  CUtiXmlNodeList(const CUtiXmlNodeList& other);
  CUtiXmlNodeList& operator=(const CUtiXmlNodeList& other);
  ~CUtiXmlNodeList();

  /// Returns the number of nodes; 0 for an empty list.
  int GetLength() const;
  /// Stores the node at `index`, counted from 0, in `item` and returns 1. `item` becomes empty if the index
  /// is out of range or the node is not an element. Returns 0, with `item` unchanged, if this object has no
  /// list.
  int GetItem(int index, CUtiXmlElement* item) const;

 private:
  friend class CUtiXmlElement;

  CComPtr<IXMLDOMNodeList> nodeList;
};

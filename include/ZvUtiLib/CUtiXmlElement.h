// CUtiXmlElement: read-only view of one element of a parsed document.
#pragma once

#include <ZvUtiLib/Export.h>
#include <ZvUtiLib/platform/CComPtr.h>
#include <ZvUtiLib/platform/CString.h>
#include <ZvUtiLib/platform/XmlDom.h>

class CUtiXmlNodeList;

/// A view of an element, or of none.
///
/// Copies read the same element, and each keeps it and its document alive, also when the parser is gone.
/// All text is GBK (code page 936); names have case and carry their prefix as written. An empty view is
/// a normal value: every operation answers with its failure value then, and none of them throws.
/// Views of one document belong to one thread at a time.
///
/// A selection is a child's name or a path of names with slashes, as in `room/player`. Steps may also be `*`,
/// `.`, `..`, `@name`, `text()`, `comment()` and `node()`; `//` stands for any number of levels and a leading
/// `/` for the document. Behind a step, other than `.` and `..`, may stand filters: `[n]` counted from 0,
/// `[path]` and `[@name='value']` in either kind of quotes. Names are compared as written, with their prefix.
/// The first match in document order counts. A malformed selection matches nothing.
///
/// Windows takes the whole of its query language, XSLPattern. Linux takes what is listed here and nothing
/// else: any other form matches nothing there. Such are `a | b`, brackets around paths, `@*`, `p:*`, filters
/// behind `.` and `..`, comparisons of anything but one attribute with a literal (`[b='1']`, `[@n=1]`,
/// `[@n > '1']`, `[@a != '1']`), `and`, `or`, `not()`, the operators between dollar signs such as `$eq$` and
/// `$ieq$`, `&&`, `||`, `!`, and every other function or method, such as `end()`, `index()`, `position()`,
/// `pi()`, `textnode()`, `cdata()`, `ancestor()` and `id()`. On Linux the paths in filters within each other
/// may also have no more than 64 steps together, and filters stand in each other no deeper than 32 levels.
class ZVUTILIB_API CUtiXmlElement {
 public:
  virtual ~CUtiXmlElement();
  /// Empty.
  CUtiXmlElement();
  /// Views the node as an element; empty when there is no node or it is no element.
  explicit CUtiXmlElement(const CComPtr<IXMLDOMElement>& node);
  explicit CUtiXmlElement(const CComPtr<IXMLDOMNode>& node);
  CUtiXmlElement(const CUtiXmlElement& other);
  CUtiXmlElement& operator=(const CUtiXmlElement& other);

  /// The element's name, "" on failure.
  CString GetNodeName() const;
  /// The text of the element and all its descendants, "" on failure. White space at both ends is cut,
  /// and white space alone between two elements reads as one blank.
  CString GetText() const;
  /// The attribute's value, "" when it is missing.
  CString GetAttribute(const char* name) const;
  /// The number that the attribute's value begins with, as atoi reads it, clamped to the
  /// range of int; 0 when there is none.
  int GetAttributeInt(const char* name) const;

  /// An attribute of the selected element, as GetAttribute and GetAttributeInt give it; "" and 0 when
  /// there is no such element or attribute.
  CString GetChildAttribute(const char* selection, const char* name) const;
  int GetChildAttributeInt(const char* selection, const char* name) const;
  /// The text of the selected element, "" when there is none.
  CString GetChildText(const char* selection) const;

  /// Stores the list of all child nodes, of every kind, in `list` and returns 1; 0 on failure.
  int GetChildNodes(CUtiXmlNodeList* list) const;
  /// Looks for the first direct child named `name`, among nodes of every kind. Returns 1 with the child
  /// in `child`, which is empty when the child is no element; 0 with `child` unchanged when there is none.
  int GetOneChildNode(const char* name, CUtiXmlElement* child) const;
  /// With a selection: 1 when it matches a node, 0 when not. With null or "": -1 when the element has
  /// any child nodes, 0 when not.
  int IsHasChild(const char* selection) const;

 private:
  friend class CUtiXmlParser;

  CComPtr<IXMLDOMElement> element;
};

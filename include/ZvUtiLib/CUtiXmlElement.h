// CUtiXmlElement: a read-only view of one element of a parsed document.
#pragma once

#include <ZvUtiLib/Export.h>
#include <ZvUtiLib/platform/CComPtr.h>
#include <ZvUtiLib/platform/CString.h>
#include <ZvUtiLib/platform/XmlDom.h>

class CUtiXmlNodeList;

/// A view of an element, or an empty view.
///
/// Copies view the same element. Each copy keeps the element and its document alive, even after the parser is
/// gone. All text is GBK (code page 936). Names are case-sensitive and include their prefix as written. An
/// empty view is a normal value: all its operations return their failure value. No operation throws. All
/// views of one document must be used from one thread at a time.
///
/// A selection is the name of a child or a path of names separated by slashes, as in `room/player`. A step
/// may also be `*`, `.`, `..`, `@name`, `text()`, `comment()` or `node()`. `//` stands for any number of
/// levels, and a leading `/` for the document. Any step except `.` and `..` may be followed by filters:
/// `[n]`, counted from 0, `[path]`, and `[@name='value']` with either kind of quotes. Names are compared as
/// written, including their prefix. The first match in document order is used. A malformed selection matches
/// nothing.
///
/// Windows supports its whole query language, XSLPattern. Linux supports only what is listed here; any other
/// form matches nothing. Such forms are `a | b`, brackets around paths, `@*`, `p:*`, filters after `.` and
/// `..`, comparisons of anything but one attribute with a literal (`[b='1']`, `[@n=1]`, `[@n > '1']`,
/// `[@a != '1']`), `and`, `or`, `not()`, the operators between dollar signs such as `$eq$` and `$ieq$`, `&&`,
/// `||`, `!`, and all other functions and methods, such as `end()`, `index()`, `position()`, `pi()`,
/// `textnode()`, `cdata()`, `ancestor()` and `id()`. Linux also has two limits: the paths in nested filters
/// may have at most 64 steps in total, and filters may be nested at most 32 levels deep.
class ZVUTILIB_API CUtiXmlElement {
 public:
  virtual ~CUtiXmlElement();
  /// Creates an empty view.
  CUtiXmlElement();
  /// Views the node as an element. The view is empty if `node` is null or not an element.
  explicit CUtiXmlElement(const CComPtr<IXMLDOMElement>& node);
  explicit CUtiXmlElement(const CComPtr<IXMLDOMNode>& node);
  CUtiXmlElement(const CUtiXmlElement& other);
  CUtiXmlElement& operator=(const CUtiXmlElement& other);

  /// Returns the element's name, "" on failure.
  CString GetNodeName() const;
  /// Returns the text of the element and all its descendants, "" on failure. White space is trimmed at both
  /// ends. White space between two elements, without other text, reads as one blank.
  CString GetText() const;
  /// Returns the attribute's value, "" if it is missing.
  CString GetAttribute(const char* name) const;
  /// Returns the number at the start of the attribute's value, parsed as by atoi and clamped to the range of
  /// int; 0 if there is none.
  int GetAttributeInt(const char* name) const;

  /// Return an attribute of the selected element, as GetAttribute and GetAttributeInt do; "" and 0 if there
  /// is no such element or attribute.
  CString GetChildAttribute(const char* selection, const char* name) const;
  int GetChildAttributeInt(const char* selection, const char* name) const;
  /// Returns the text of the selected element, "" if there is none.
  CString GetChildText(const char* selection) const;

  /// Stores the list of all child nodes, of every kind, in `list` and returns 1. Returns 0 on failure.
  int GetChildNodes(CUtiXmlNodeList* list) const;
  /// Finds the first direct child named `name`, among nodes of every kind. Returns 1 and stores the child in
  /// `child`, which becomes empty if the child is not an element. Returns 0 with `child` unchanged if there
  /// is no such child.
  int GetOneChildNode(const char* name, CUtiXmlElement* child) const;
  /// With a selection, returns 1 if it matches a node, else 0. With null or "", returns -1 if the element has
  /// child nodes, else 0.
  int IsHasChild(const char* selection) const;

 private:
  friend class CUtiXmlNodeList;
  friend class CUtiXmlParser;

  CComPtr<IXMLDOMElement> element;
};

// NarrowNode, NarrowList, NarrowDocument: the interfaces by which our object model takes and gives texts
// without UTF-16 between. QueryInterface gives them without a reference.
#pragma once

#include <string_view>

#include <ZvUtiLib/platform/CString.h>
#include <ZvUtiLib/platform/XmlDom.h>

namespace zvuti {

constexpr IID IID_NarrowNode{6};

/// Texts are GBK. Throws std::bad_alloc when the heap refuses.
class NarrowNode {
 public:
  virtual CString Name() const = 0;
  virtual CString Text() const = 0;
  virtual CString Attribute(std::string_view name) const = 0;
  /// The first node that the selection reaches, with a reference for the caller, or null.
  virtual IXMLDOMNode* Select(std::string_view selection) const = 0;

 protected:
  ~NarrowNode() = default;
};

constexpr IID IID_NarrowList{8};

class NarrowList {
 public:
  /// The node at `index` with a reference for the caller; null if it is none or no element. Throws
  /// std::bad_alloc when the heap refuses.
  virtual IXMLDOMElement* ElementAt(long index) = 0;

 protected:
  ~NarrowList() = default;
};

constexpr IID IID_NarrowDocument{7};

class NarrowDocument {
 public:
  /// Loads the document from GBK, white space in front of it skipped; false when it is not well-formed.
  /// Throws std::bad_alloc when the heap refuses.
  virtual bool Load(std::string_view text) = 0;
  /// Loads the file at a path with either separator, or at a file:// address. Its bytes are passed to the
  /// system unconverted, except that backslashes become slashes and %XX escapes may be undone. Returns false
  /// if the file can't be read or is not well-formed. Throws std::bad_alloc if an allocation fails.
  virtual bool LoadFile(std::string_view path) = 0;

 protected:
  ~NarrowDocument() = default;
};

}  // namespace zvuti

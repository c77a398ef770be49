// CUtiXmlParser: loads an XML document from a file or from text and returns its root element.
#pragma once

#include <ZvUtiLib/CUtiXmlElement.h>
#include <ZvUtiLib/Export.h>
#include <ZvUtiLib/platform/CComPtr.h>
#include <ZvUtiLib/platform/XmlDom.h>

/// The parser does not write, validate or report error texts: a document either has a root or has none.
/// Copies share the document. On Windows the calling thread must have initialised COM, and a parser and all
/// views of its document must stay on the thread that created them.
///
/// On Linux nothing outside of the document is read. A reference to an unread entity becomes a node when it
/// is in text; in an attribute's value it leaves the document without a root. Declarations after a reference
/// to an external parameter entity have no effect. Linux also limits what a document may expand to. A
/// document that exceeds one of these limits has no root:
/// - Its texts and values may be 128 MB longer than the document.
/// - It may have a million more nodes and attributes than bytes.
/// - The names of its default attributes may be 1 MB longer than 16 times the document.
/// - Entities that refer to each other, and those within the document type, may expand to 128 KB or to a
///   hundred times the document.
/// - 256 entities may refer to others.
/// - 256 attributes may be declared for one element type.
class ZVUTILIB_API CUtiXmlParser {
 public:
  virtual ~CUtiXmlParser();
  /// Loads the file at `path`. The encoding is given by its byte order mark or its declaration, else it is
  /// UTF-8. A UTF-16 file without a mark must declare its encoding. `path` may be a URL of the scheme `file`,
  /// in which %XX escapes are undone. On Linux the name is not converted: only backslashes become slashes
  /// (not those inside GBK characters). If the file at a path cannot be read, %XX escapes are undone and it
  /// is tried again.
  explicit CUtiXmlParser(const char* path);
  /// Loads a document from GBK text, whatever encoding it declares. The number only distinguishes the two
  /// constructors.
  CUtiXmlParser(const char* text, int);
  CUtiXmlParser(const CUtiXmlParser& other);
  CUtiXmlParser& operator=(const CUtiXmlParser& other);

  /// Returns the root element, or null if no document was loaded. It belongs to this object; a copy of it
  /// stays valid on its own.
  CUtiXmlElement* GetRootElement();

 protected:
  /// Replace the current document with one loaded from a file or from text, as the constructors do. Return 1
  /// on success, 0 on failure. After a failure the element that GetRootElement returned before is still
  /// valid, but GetRootElement itself may return null.
  int Parse(const char* path);
  int Parse(const char* text, int);

 private:
  CComPtr<IXMLDOMDocument> document;
  CUtiXmlElement root;
};

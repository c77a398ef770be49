// CUtiXmlParser: loads an XML document from a file or a text and gives its root element.
#pragma once

#include <ZvUtiLib/CUtiXmlElement.h>
#include <ZvUtiLib/Export.h>
#include <ZvUtiLib/platform/CComPtr.h>
#include <ZvUtiLib/platform/XmlDom.h>

/// There is no writing, no validation and no error text: a document either has a root or it has not. Copies
/// share the document. On Windows the calling thread must have initialised COM; a parser and all views of its
/// document stay on the thread that made them.
///
/// On Linux nothing outside of the document is read. A reference to what was not read is a node in a text; in
/// the value of an attribute it leaves the document without a root. Declarations behind a reference to a
/// parameter entity outside have no effect. What a document may make of a few bytes is bounded there, and
/// beyond these bounds it has no root: its texts and values may be 128 MB longer than itself, its nodes and
/// attributes a million more than its bytes, the names of its default attributes 1 MB more than 16 times as
/// long; entities that refer to each other, and those within the document type, may expand to 128 KB or to a
/// hundred times the document; 256 entities may refer to others, and 256 attributes may be declared for one
/// type of element.
class ZVUTILIB_API CUtiXmlParser {
 public:
  virtual ~CUtiXmlParser();
  /// Loads the file at `path`, in the encoding that its byte order mark tells or that it declares, else in
  /// UTF-8. A file in UTF-16 without a mark has to declare it. On Linux the bytes of `path` name the file,
  /// whatever characters they are.
  explicit CUtiXmlParser(const char* path);
  /// Loads a document from GBK text, whatever encoding it declares. The number only tells the two
  /// constructors apart.
  CUtiXmlParser(const char* text, int);
  CUtiXmlParser(const CUtiXmlParser& other);
  CUtiXmlParser& operator=(const CUtiXmlParser& other);

  /// The root element, or null when no document was loaded. It belongs to this object; a copy of it
  /// stays good on its own.
  CUtiXmlElement* GetRootElement();

 protected:
  /// Load a document in place of the present one, a file or a text as the constructors; 1 on success, 0 on
  /// failure, which leaves the root as it was.
  int Parse(const char* path);
  int Parse(const char* text, int);

 private:
  CComPtr<IXMLDOMDocument> document;
  CUtiXmlElement root;
};

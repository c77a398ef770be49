// CUtiXmlParser: loads an XML document from a file or a text and gives its root element.
#pragma once

#include <ZvUtiLib/CUtiXmlElement.h>
#include <ZvUtiLib/Export.h>
#include <ZvUtiLib/platform/CComPtr.h>
#include <ZvUtiLib/platform/XmlDom.h>

/// There is no writing, no validation and no error text: a document either has a root or it has not.
/// Copies share the document. On Windows the calling thread must have initialised COM; a parser and all
/// views of its document stay on the thread that made them.
class ZVUTILIB_API CUtiXmlParser {
 public:
  virtual ~CUtiXmlParser();
  /// Loads the file at `path`, in the encoding that it declares.
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

#include <ZvUtiLib/CUtiXmlParser.h>

#include <exception>

#include "platform/com/NodeText.h"

namespace {

CComPtr<IXMLDOMDocument> CreateDocument() {
  CComPtr<IXMLDOMDocument> created;
  void* object = nullptr;
  if (SUCCEEDED(CoCreateInstance(CLSID_DOMDocument, nullptr, CLSCTX_ALL, IID_IXMLDOMDocument, &object)) &&
      object) {
    created.Attach(static_cast<IXMLDOMDocument*>(object));
    created->put_async(VARIANT_FALSE);  // the root is read right after the load
  }
  return created;
}

// Replaces the document with a new one and lets `load` fill it; returns 1 if it succeeds.
template <class Load>
int Replace(CComPtr<IXMLDOMDocument>& document, CUtiXmlElement& root, Load load) noexcept {
  document.Release();
  document = CreateDocument();
  if (!document) return 0;
  try {
    VARIANT_BOOL isLoaded = VARIANT_FALSE;
    if (FAILED(load(&isLoaded)) || isLoaded == VARIANT_FALSE) return 0;
  } catch (const std::exception&) {
    return 0;
  }
  CComPtr<IXMLDOMElement> element;
  document->get_documentElement(&element);
  root = CUtiXmlElement(element);
  return 1;
}

}  // namespace

CUtiXmlParser::~CUtiXmlParser() = default;
CUtiXmlParser::CUtiXmlParser(const char* path) { Parse(path); }
CUtiXmlParser::CUtiXmlParser(const char* text, int number) { Parse(text, number); }
CUtiXmlParser::CUtiXmlParser(const CUtiXmlParser& other) = default;
CUtiXmlParser& CUtiXmlParser::operator=(const CUtiXmlParser& other) = default;

CUtiXmlElement* CUtiXmlParser::GetRootElement() { return document && root.element ? &root : nullptr; }

int CUtiXmlParser::Parse(const char* path) {
  return Replace(document, root,
                 [&](VARIANT_BOOL* isLoaded) { return zvuti::LoadFile(*document, path, isLoaded); });
}

int CUtiXmlParser::Parse(const char* text, int) {
  return Replace(document, root,
                 [&](VARIANT_BOOL* isLoaded) { return zvuti::LoadText(*document, text, isLoaded); });
}

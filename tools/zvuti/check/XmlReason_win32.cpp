#include "check/XmlReason.h"

#include <ZvUtiLib/platform/CComPtr.h>
#include <ZvUtiLib/platform/XmlDom.h>

#include "shared/HostFiles.h"
#include "shared/Terminal.h"

namespace tool {
namespace {

struct Com {
  Com() {
    if (FAILED(CoInitialize(nullptr))) throw Failure("COM cannot be initialised, which XML needs");
  }
  ~Com() { CoUninitialize(); }
};

}  // namespace

void PrepareForXml() { static const Com com; }

// The file is loaded as the library loads it: by path and without validation.
void ExplainRefusal(const std::string& file, const std::string&, Place& place, std::string& message) {
  message = "the library refuses the document";
  CComPtr<IXMLDOMDocument> document;
  if (FAILED(CoCreateInstance(CLSID_DOMDocument, nullptr, CLSCTX_INPROC_SERVER, IID_IXMLDOMDocument,
                              reinterpret_cast<void**>(&document)))) {
    message = "this Windows has no XML object model (MSXML), through which the library reads documents";
    return;
  }
  CComPtr<IXMLDOMParseError> error;
  VARIANT_BOOL isLoaded = VARIANT_FALSE;
  VARIANT source;
  source.vt = VT_BSTR;
  source.bstrVal = SysAllocString(PathOf(file).c_str());
  BSTR reason = nullptr;
  long line = 0, column = 0;
  const bool isKnown = SUCCEEDED(document->put_async(VARIANT_FALSE)) &&
                       SUCCEEDED(document->load(source, &isLoaded)) &&
                       SUCCEEDED(document->get_parseError(&error)) && error->get_reason(&reason) == S_OK;
  SysFreeString(source.bstrVal);
  if (!isKnown) return;
  const std::string text = TextOf(std::wstring(reason, SysStringLen(reason)));
  SysFreeString(reason);
  const std::size_t end = text.find_last_not_of(" \r\n");
  if (end != text.npos) message = text.substr(0, end + 1);
  if (error->get_line(&line) != S_OK || error->get_linepos(&column) != S_OK || line < 1) return;
  place.line = static_cast<std::size_t>(line);
  place.column = static_cast<std::size_t>(column < 1 ? 1 : column);
}

}  // namespace tool

// The document object model: the interfaces, strings and values needed to read an XML document.
//
// On Windows they are the system's own. Elsewhere they are declared here under the same names, with the part
// of their contract that is used: documents are loaded synchronously and never validated, and nothing outside
// of them is read. Use a document and its nodes from one thread at a time.
#pragma once

#if defined(_WIN32)

#  include <ZvUtiLib/platform/Windows.h>

#  include <msxml.h>
#  include <objbase.h>
#  include <oleauto.h>

#else

#  include <cstdint>

#  include <ZvUtiLib/Export.h>

/// The result of a call: success if 0 or above, failure if below 0. The values are the system's.
using HRESULT = std::int32_t;
constexpr HRESULT S_OK = 0;
constexpr HRESULT S_FALSE = 1;  ///< success, but there is no result
constexpr HRESULT E_NOINTERFACE = static_cast<HRESULT>(0x80004002u);
constexpr HRESULT E_POINTER = static_cast<HRESULT>(0x80004003u);
constexpr HRESULT E_FAIL = static_cast<HRESULT>(0x80004005u);
constexpr HRESULT E_OUTOFMEMORY = static_cast<HRESULT>(0x8007000Eu);
constexpr HRESULT E_INVALIDARG = static_cast<HRESULT>(0x80070057u);
constexpr HRESULT REGDB_E_CLASSNOTREG = static_cast<HRESULT>(0x80040154u);

/// Whether a result means success, or failure.
constexpr bool SUCCEEDED(HRESULT result) { return result >= 0; }
constexpr bool FAILED(HRESULT result) { return result < 0; }

/// A UTF-16 code unit.
using WCHAR = char16_t;
/// A UTF-16 string with a length and a terminating zero unit; null is an empty string.
using BSTR = WCHAR*;

/// The boolean type of the interfaces.
using VARIANT_BOOL = std::int16_t;
constexpr VARIANT_BOOL VARIANT_TRUE = -1;
constexpr VARIANT_BOOL VARIANT_FALSE = 0;

/// The type of the value in a VARIANT.
using VARTYPE = std::uint16_t;
constexpr VARTYPE VT_EMPTY = 0;
constexpr VARTYPE VT_NULL = 1;
constexpr VARTYPE VT_I4 = 3;
constexpr VARTYPE VT_BSTR = 8;

/// A value and its type. It owns a string that it holds.
struct VARIANT {
  VARTYPE vt;  ///< selects the member below that is in use
  union {
    std::int32_t lVal;
    BSTR bstrVal;
  };
};

/// Allocates a string of `length` units, copied from `text`, or left for the caller to fill if `text` is
/// null. Returns null if it can't be allocated.
ZVUTILIB_API BSTR SysAllocStringLen(const WCHAR* text, unsigned length);
/// Frees a string; null does nothing.
ZVUTILIB_API void SysFreeString(BSTR text);
/// Returns the length in units, 0 for null.
ZVUTILIB_API unsigned SysStringLen(BSTR text);

/// Initialises an empty value.
ZVUTILIB_API void VariantInit(VARIANT* value);
/// Frees what the value owns and leaves it empty.
ZVUTILIB_API HRESULT VariantClear(VARIANT* value);

/// Identifies an interface.
struct IID {
  int number;  ///< private to this library
};
/// Identifies a class of objects.
using CLSID = IID;
/// Whether two identifiers are equal.
constexpr bool operator==(const IID& a, const IID& b) { return a.number == b.number; }

/// The known identifiers.
constexpr IID IID_IUnknown{0};
constexpr IID IID_IXMLDOMNode{1};
constexpr IID IID_IXMLDOMElement{2};
constexpr IID IID_IXMLDOMNodeList{3};
constexpr IID IID_IXMLDOMDocument{4};
constexpr CLSID CLSID_DOMDocument{5};
constexpr unsigned CLSCTX_ALL = 23;  ///< any context; only one exists here

/// The base of all interfaces. A call that returns an object returns a reference that the caller must
/// release.
struct ZVUTILIB_API IUnknown {
  /// Stores the object as the interface `iid`; null with E_NOINTERFACE if it does not have that interface.
  virtual HRESULT QueryInterface(const IID& iid, void** out) = 0;
  /// Adds a reference; returns the number of references.
  virtual std::uint32_t AddRef() = 0;
  /// Releases a reference; returns the number of references left. The last release destroys the object.
  virtual std::uint32_t Release() = 0;

 protected:
  IUnknown() = default;
  IUnknown(const IUnknown&) = default;
  IUnknown& operator=(const IUnknown&) = default;
  ~IUnknown() = default;
};

struct IXMLDOMNode;

/// The children of a node, in document order.
struct ZVUTILIB_API IXMLDOMNodeList : IUnknown {
  /// Stores the node at `index`, counted from 0; null with S_FALSE if it is out of range. Takes constant
  /// time; only the first index out of order takes time in proportion to the length.
  virtual HRESULT get_item(long index, IXMLDOMNode** item) = 0;
  /// Stores the number of nodes.
  virtual HRESULT get_length(long* length) = 0;
};

/// A node of any kind: document, element, attribute, text, CDATA section, comment, processing instruction, or
/// reference to an unread entity.
struct ZVUTILIB_API IXMLDOMNode : IUnknown {
  /// Stores the name as written, with its prefix. Nodes without a name are "#text", "#comment" and the like.
  virtual HRESULT get_nodeName(BSTR* name) = 0;
  /// Stores all text within the node. White space that did not become a node reads as one blank between two
  /// pieces of text. White space is trimmed at both ends, except in CDATA sections and where it is preserved.
  virtual HRESULT get_text(BSTR* text) = 0;
  /// Stores the first node in document order that `selection` matches, starting from this node; null with
  /// S_FALSE if there is none or the selection is malformed.
  virtual HRESULT selectSingleNode(BSTR selection, IXMLDOMNode** node) = 0;
  /// Store whether the node has children, and the list of them, which may be empty.
  virtual HRESULT hasChildNodes(VARIANT_BOOL* has) = 0;
  virtual HRESULT get_childNodes(IXMLDOMNodeList** list) = 0;
};

/// An element: a node with attributes.
struct ZVUTILIB_API IXMLDOMElement : IXMLDOMNode {
  /// Stores the value of the attribute `name` (as written, with its prefix) as VT_BSTR; VT_NULL with S_FALSE
  /// if the element does not have it.
  virtual HRESULT getAttribute(BSTR name, VARIANT* value) = 0;
};

/// A document; empty until one is loaded.
struct ZVUTILIB_API IXMLDOMDocument : IUnknown {
  /// Has no effect: documents always load synchronously.
  virtual HRESULT put_async(VARIANT_BOOL isAsync) = 0;
  /// Loads the file at a path with either separator, or at a URL of the scheme `file`. Stores VARIANT_TRUE if
  /// the file could be read and is well-formed; otherwise the document is left empty.
  virtual HRESULT load(VARIANT source, VARIANT_BOOL* isLoaded) = 0;
  /// Loads a document from its text, whatever encoding it declares; leading white space is skipped.
  virtual HRESULT loadXML(BSTR text, VARIANT_BOOL* isLoaded) = 0;
  /// Stores the root element; null with S_FALSE for an empty document.
  virtual HRESULT get_documentElement(IXMLDOMElement** element) = 0;
};

/// Creates an empty document: the only class is CLSID_DOMDocument, and its interface is IID_IXMLDOMDocument.
ZVUTILIB_API HRESULT CoCreateInstance(const CLSID& classId, IUnknown* outer, unsigned context,
                                      const IID& interfaceId, void** out);

#endif

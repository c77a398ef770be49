// The document object model: the interfaces, strings and values that reading an XML document needs.
//
// On Windows they are the system's own. Elsewhere they are declared here, under the same names and with
// the part of their contract that is used: documents are loaded at once, never validated, and nothing
// outside of them is read. A document and its nodes belong to one thread at a time.
#pragma once

#if defined(_WIN32)

#  include <ZvUtiLib/platform/Windows.h>

#  include <msxml.h>
#  include <objbase.h>
#  include <oleauto.h>

#else

#  include <cstdint>

#  include <ZvUtiLib/Export.h>

/// How a call went: 0 and above well, below 0 not. The values are the system's.
using HRESULT = std::int32_t;
constexpr HRESULT S_OK = 0;
constexpr HRESULT S_FALSE = 1;  ///< the call went well, and there is nothing to give
constexpr HRESULT E_NOINTERFACE = static_cast<HRESULT>(0x80004002u);
constexpr HRESULT E_POINTER = static_cast<HRESULT>(0x80004003u);
constexpr HRESULT E_FAIL = static_cast<HRESULT>(0x80004005u);
constexpr HRESULT E_OUTOFMEMORY = static_cast<HRESULT>(0x8007000Eu);
constexpr HRESULT E_INVALIDARG = static_cast<HRESULT>(0x80070057u);
constexpr HRESULT REGDB_E_CLASSNOTREG = static_cast<HRESULT>(0x80040154u);

/// Whether a call went well, or not.
constexpr bool SUCCEEDED(HRESULT result) { return result >= 0; }
constexpr bool FAILED(HRESULT result) { return result < 0; }

/// A unit of UTF-16.
using WCHAR = char16_t;
/// A UTF-16 text that carries its length, with a zero unit behind its end; null is an empty one.
using BSTR = WCHAR*;

/// True and false of the interfaces.
using VARIANT_BOOL = std::int16_t;
constexpr VARIANT_BOOL VARIANT_TRUE = -1;
constexpr VARIANT_BOOL VARIANT_FALSE = 0;

/// What a VARIANT holds.
using VARTYPE = std::uint16_t;
constexpr VARTYPE VT_EMPTY = 0;
constexpr VARTYPE VT_NULL = 1;
constexpr VARTYPE VT_I4 = 3;
constexpr VARTYPE VT_BSTR = 8;

/// A value and its type; a text in it belongs to it.
struct VARIANT {
  VARTYPE vt;  ///< says which of the members below counts
  union {
    std::int32_t lVal;
    BSTR bstrVal;
  };
};

/// A text of `length` units, copied from `text` or left for the caller to fill where that is null.
/// Null when the heap refuses.
ZVUTILIB_API BSTR SysAllocStringLen(const WCHAR* text, unsigned length);
/// Frees a text; null does nothing.
ZVUTILIB_API void SysFreeString(BSTR text);
/// Length in units, 0 for null.
ZVUTILIB_API unsigned SysStringLen(BSTR text);

/// Makes an empty value.
ZVUTILIB_API void VariantInit(VARIANT* value);
/// Frees what the value owns and leaves it empty.
ZVUTILIB_API HRESULT VariantClear(VARIANT* value);

/// Names an interface.
struct IID {
  int number;  ///< of this library's own
};
/// Names a class of objects.
using CLSID = IID;
/// Whether two names are the same.
constexpr bool operator==(const IID& a, const IID& b) { return a.number == b.number; }

/// The names that there are.
constexpr IID IID_IUnknown{0};
constexpr IID IID_IXMLDOMNode{1};
constexpr IID IID_IXMLDOMElement{2};
constexpr IID IID_IXMLDOMNodeList{3};
constexpr IID IID_IXMLDOMDocument{4};
constexpr CLSID CLSID_DOMDocument{5};
constexpr unsigned CLSCTX_ALL = 23;  ///< any context; there is only one here

/// Every call of these interfaces that gives an object gives a reference that the caller has to release.
struct ZVUTILIB_API IUnknown {
  /// Stores the object under the interface `iid`, or null with E_NOINTERFACE where it has none such.
  virtual HRESULT QueryInterface(const IID& iid, void** out) = 0;
  /// Takes one more reference; returns how many there are.
  virtual std::uint32_t AddRef() = 0;
  /// Gives one reference back; the object is gone with its last one. Returns how many are left.
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
  /// The node at `index`, counted from 0; null with S_FALSE out of range. Takes constant time.
  virtual HRESULT get_item(long index, IXMLDOMNode** item) = 0;
  /// How many nodes there are.
  virtual HRESULT get_length(long* length) = 0;
};

/// A node of any kind: document, element, attribute, text, CDATA section, comment, processing
/// instruction, reference to an entity that was not read.
struct ZVUTILIB_API IXMLDOMNode : IUnknown {
  /// Names are as written, with their prefix. Nodes without one are "#text", "#comment" and the like.
  virtual HRESULT get_nodeName(BSTR* name) = 0;
  /// All text within the node. White space that made no node reads as one blank between two pieces of
  /// text; white space is cut at both ends, except in CDATA sections and where it is preserved.
  virtual HRESULT get_text(BSTR* text) = 0;
  /// The first node in document order that `selection` reaches from here; null with S_FALSE where there
  /// is none or the selection is malformed.
  virtual HRESULT selectSingleNode(BSTR selection, IXMLDOMNode** node) = 0;
  /// Whether the node has children, and the list of them, which may be empty.
  virtual HRESULT hasChildNodes(VARIANT_BOOL* has) = 0;
  virtual HRESULT get_childNodes(IXMLDOMNodeList** list) = 0;
};

/// An element: a node with attributes.
struct ZVUTILIB_API IXMLDOMElement : IXMLDOMNode {
  /// The value of the attribute `name` (as written, with its prefix) as VT_BSTR; VT_NULL with S_FALSE
  /// where the element has none.
  virtual HRESULT getAttribute(BSTR name, VARIANT* value) = 0;
};

/// A document, empty until something was loaded.
struct ZVUTILIB_API IXMLDOMDocument : IUnknown {
  /// Has no effect: documents always load at once.
  virtual HRESULT put_async(VARIANT_BOOL isAsync) = 0;
  /// Loads the file at a path with either separator, or at a file:// address. Stores VARIANT_TRUE when
  /// it could be read and is well-formed; otherwise the document is left empty.
  virtual HRESULT load(VARIANT source, VARIANT_BOOL* isLoaded) = 0;
  /// Loads a document from its text, whatever encoding it declares; white space in front is skipped.
  virtual HRESULT loadXML(BSTR text, VARIANT_BOOL* isLoaded) = 0;
  /// The root element; null with S_FALSE in an empty document.
  virtual HRESULT get_documentElement(IXMLDOMElement** element) = 0;
};

/// Makes an empty document: the only class is CLSID_DOMDocument, its interface IID_IXMLDOMDocument.
ZVUTILIB_API HRESULT CoCreateInstance(const CLSID& classId, IUnknown* outer, unsigned context,
                                      const IID& interfaceId, void** out);

#endif

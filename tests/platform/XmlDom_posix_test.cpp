// The object model below the wrappers: what they do not use, or use in one way only. Its UTF-16 calls give
// the same texts as the short way in GBK.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "gbk/CodePage936.h"
#include "platform/com/Bstr.h"
#include "platform/com/NodeText.h"
#include "tests/support/HeapFaults.h"
#include "tests/support/TempFolder.h"
#include "tests/xml/Documents.h"

namespace {

using zvuti::Bstr;

std::string GbkOf(const Bstr& text) { return zvuti::gbk::FromUtf16({text.Get(), SysStringLen(text.Get())}); }

CComPtr<IXMLDOMDocument> NewDocument() {
  CComPtr<IXMLDOMDocument> document;
  void* object = nullptr;
  EXPECT_EQ(CoCreateInstance(CLSID_DOMDocument, nullptr, CLSCTX_ALL, IID_IXMLDOMDocument, &object), S_OK);
  document.Attach(static_cast<IXMLDOMDocument*>(object));
  return document;
}

CComPtr<IXMLDOMElement> RootOf(const char* text) {
  const CComPtr<IXMLDOMDocument> document = NewDocument();
  VARIANT_BOOL isLoaded = VARIANT_FALSE;
  EXPECT_EQ(document->loadXML(Bstr(text).Get(), &isLoaded), S_OK);
  EXPECT_EQ(isLoaded, VARIANT_TRUE);
  CComPtr<IXMLDOMElement> root;
  EXPECT_EQ(document->get_documentElement(&root), S_OK);
  return root;
}

bool Is(IUnknown& object, const IID& iid) {
  void* found = &object;
  if (object.QueryInterface(iid, &found) != S_OK) {
    EXPECT_EQ(found, nullptr);
    return false;
  }
  object.Release();
  return true;
}

TEST(XmlDom, MakesDocumentsAndNothingElse) {
  void* object = nullptr;
  const auto make = [&](const CLSID& id, IUnknown* outer, unsigned context, const IID& iid) {
    return CoCreateInstance(id, outer, context, iid, &object);
  };
  EXPECT_EQ(make(CLSID{9}, nullptr, CLSCTX_ALL, IID_IUnknown), REGDB_E_CLASSNOTREG);
  EXPECT_EQ(make(CLSID_DOMDocument, nullptr, 0, IID_IUnknown), REGDB_E_CLASSNOTREG);
  EXPECT_EQ(make(CLSID_DOMDocument, NewDocument(), CLSCTX_ALL, IID_IUnknown), E_INVALIDARG);
  EXPECT_EQ(make(CLSID_DOMDocument, nullptr, CLSCTX_ALL, IID_IXMLDOMNode), E_NOINTERFACE);
  EXPECT_EQ(object, nullptr);
  EXPECT_TRUE(Is(*NewDocument(), IID_IUnknown) && Is(*NewDocument(), IID_IXMLDOMDocument));
}

TEST(XmlDom, StringsHaveALength) {
  for (const unsigned length : {0x3FFFFFFFu, 0x40000000u, 0x7FFFFFFFu, 0xFFFFFFFFu}) {
    Bstr refused;
    std::int64_t tried = 0;  // the heap is asked for up to 2 GiB less a unit, and for no more
    {
      const test::HeapFaults heap(1, true);
      *refused.Receive() = SysAllocStringLen(nullptr, length);
      tried = heap.Tried();
    }
    EXPECT_EQ(refused.Get(), nullptr) << length;
    EXPECT_EQ(tried, length == 0x3FFFFFFF ? 1 : 0) << length;
  }
  EXPECT_EQ(SysStringLen(nullptr), 0u);
  Bstr copy;
  *copy.Receive() = SysAllocStringLen(Bstr("ab").Get(), 1);
  EXPECT_EQ(GbkOf(copy), "a");
  for (const int length : {63, 64, 65, 1000}) {  // up to 64 bytes are converted without a block
    for (const std::string& text : {test::Repeat("x", length), test::Repeat("\xD6\xD0", length)})
      EXPECT_EQ(GbkOf(Bstr(text.c_str())), text) << length;
  }
}

TEST(XmlDom, NodesOfAllKinds) {
  // GBK does not have the smiley.
  const CComPtr<IXMLDOMElement> root = RootOf(
      "<!--c--><?p i?><a k='v'> t <\xD6\xD0 y=''>\xD6\xD0&#x1F600;\xCE\xC4</\xD6\xD0><!--d--><?q j?>"
      "<![CDATA[ e ]]><b/></a>");
  const char* const whole = "t \xD6\xD0??\xCE\xC4 e ";
  const struct {
    const char *selection, *name, *text;
    bool isElement;
    long children;
  } cases[] = {
      {"/", "#document", whole, false, 3},
      {".", "a", whole, true, 6},
      {"@k", "k", "v", false, 0},
      {"text()", "#text", "t", false, 0},
      {"\xD6\xD0", "\xD6\xD0", "\xD6\xD0??\xCE\xC4", true, 1},
      {"comment()", "#comment", "d", false, 0},
      {"node()[3]", "q", "j", false, 0},
      {"node()[4]", "#cdata-section", " e ", false, 0},
      {"b", "b", "", true, 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.selection);
    CComPtr<IXMLDOMNode> node;
    ASSERT_EQ(root->selectSingleNode(Bstr(c.selection).Get(), &node), S_OK);
    EXPECT_TRUE(Is(*node, IID_IUnknown) && Is(*node, IID_IXMLDOMNode));
    EXPECT_EQ(Is(*node, IID_IXMLDOMElement), c.isElement);
    Bstr name, text;
    EXPECT_EQ(node->get_nodeName(name.Receive()), S_OK);
    EXPECT_EQ(node->get_text(text.Receive()), S_OK);
    EXPECT_EQ(GbkOf(name), c.name);
    EXPECT_EQ(GbkOf(text), c.text);
    const CComPtr<IXMLDOMNode> narrow = zvuti::SelectFrom(*root, c.selection);
    EXPECT_EQ(zvuti::NameOf(*narrow) + ":" + zvuti::TextOf(*narrow), CString(c.name) + ":" + c.text);
    VARIANT_BOOL has = VARIANT_FALSE;
    node->hasChildNodes(&has);
    EXPECT_EQ(has == VARIANT_TRUE, c.children > 0);
    CComPtr<IXMLDOMNodeList> list;
    ASSERT_EQ(node->get_childNodes(&list), S_OK);
    EXPECT_TRUE(Is(*list, IID_IUnknown) && Is(*list, IID_IXMLDOMNodeList) && !Is(*list, IID_IXMLDOMNode));
    long length = -1;
    list->get_length(&length);
    EXPECT_EQ(length, c.children);
    for (const long index : {-1L, length}) {
      IXMLDOMNode* none = node;
      EXPECT_EQ(list->get_item(index, &none), S_FALSE);
      EXPECT_EQ(none, nullptr);
    }
  }
}

TEST(XmlDom, WhatIsNotThereGivesNothing) {
  const CComPtr<IXMLDOMElement> root = RootOf("<a x='1'/>");
  IXMLDOMElement* element = root;
  EXPECT_EQ(NewDocument()->get_documentElement(&element), S_FALSE);
  EXPECT_EQ(element, nullptr);
  for (const char* selection : {"nothing", "["}) {
    IXMLDOMNode* node = root;
    EXPECT_EQ(root->selectSingleNode(Bstr(selection).Get(), &node), S_FALSE) << selection;
    EXPECT_FALSE(node || zvuti::SelectFrom(*root, selection)) << selection;
  }
  Bstr zero;  // a zero among the first two characters
  *zero.Receive() = SysAllocStringLen(u"<\0a/>", 5);
  VARIANT_BOOL isLoaded = VARIANT_TRUE;
  EXPECT_EQ(NewDocument()->loadXML(zero.Get(), &isLoaded), S_FALSE);
  EXPECT_EQ(isLoaded, VARIANT_FALSE);
  zvuti::Variant found, none;
  EXPECT_EQ(root->getAttribute(Bstr("x").Get(), found.Receive()), S_OK);
  ASSERT_EQ(found.Get().vt, VT_BSTR);
  EXPECT_EQ(std::u16string(found.Get().bstrVal), u"1");
  EXPECT_EQ(root->getAttribute(Bstr("y").Get(), none.Receive()), S_FALSE);
  EXPECT_EQ(none.Get().vt, VT_NULL);
}

TEST(XmlDom, LoadsPathsAndAddressesOfFiles) {
  const test::TempFolder folder;
  const char* const utf8 = "\xE4\xB8\xAD.xml";  // not GBK
  for (const char* name : {"a b.xml", "a%zz%4.xml", "100%25.xml", utf8}) folder.Write(name, "<a/>");
  const std::string path = folder.Path() + "/";
  for (const std::string& good : {path + "100%25.xml", path + utf8, "FILE://localhost" + path + "a%20%62.xml",
                                  "file://" + path + "a%zz%4.xml", "file://" + path + "%E4%b8\xAD.xml"})
    EXPECT_TRUE(test::LoadsFile(good)) << good;
  for (const std::string& bad : {"file://localhostx" + path + "a b.xml", "file://" + path, path + "a%2fb.xml",
                                 path + "a b.xml%00", std::string("file://localhost")})
    EXPECT_FALSE(test::LoadsFile(bad)) << bad;
}

TEST(XmlDom, WideDocumentsLoad) {
  const test::TempFolder folder;
  const std::string path = folder.Write("a.xml", "<a/>");
  const CComPtr<IXMLDOMDocument> document = NewDocument();
  VARIANT_BOOL isLoaded = VARIANT_TRUE;
  EXPECT_EQ(document->load(zvuti::Variant().Get(), &isLoaded), E_INVALIDARG);
  EXPECT_EQ(isLoaded, VARIANT_FALSE);
  EXPECT_EQ(document->load(zvuti::Variant(path.c_str()).Get(), &isLoaded), S_OK);
  EXPECT_EQ(isLoaded, VARIANT_TRUE);
  const WCHAR halfPair[] = {u'<', u'a', 0xD800, u'/', u'>'};
  Bstr broken;
  *broken.Receive() = SysAllocStringLen(halfPair, 5);
  EXPECT_EQ(document->loadXML(broken.Get(), &isLoaded), S_FALSE);
  EXPECT_EQ(document->loadXML(Bstr(nullptr).Get(), &isLoaded), S_FALSE);
  EXPECT_EQ(isLoaded, VARIANT_FALSE);
}

TEST(XmlDom, Utf16CallsReportThatTheHeapRefuses) {
  const CComPtr<IXMLDOMElement> root = RootOf("<a k='v'>t</a>");
  const Bstr name("k");
  BSTR text = nullptr;
  VARIANT value;
  {
    const test::HeapFaults full(1, true);
    EXPECT_EQ(root->get_nodeName(&text), E_OUTOFMEMORY);
    EXPECT_EQ(root->get_text(&text), E_OUTOFMEMORY);
    EXPECT_EQ(root->getAttribute(name.Get(), &value), E_OUTOFMEMORY);
  }
  EXPECT_EQ(text, nullptr);
  EXPECT_EQ(value.vt, VT_EMPTY);
  EXPECT_EQ(VariantClear(&value), S_OK);
}

// Objects of somebody else's model, which do not have the short way.
template <class Interface>
struct Foreign : Interface {
  HRESULT QueryInterface(const IID&, void**) override { return E_NOINTERFACE; }
  std::uint32_t AddRef() override { return 1; }
  std::uint32_t Release() override { return 1; }
};
struct ForeignNode final : Foreign<IXMLDOMElement> {
  HRESULT get_nodeName(BSTR*) override { return E_FAIL; }
  HRESULT get_text(BSTR*) override { return E_FAIL; }
  HRESULT selectSingleNode(BSTR, IXMLDOMNode**) override { return E_FAIL; }
  HRESULT hasChildNodes(VARIANT_BOOL*) override { return E_FAIL; }
  HRESULT get_childNodes(IXMLDOMNodeList**) override { return E_FAIL; }
  HRESULT getAttribute(BSTR, VARIANT*) override { return E_FAIL; }
};
struct ForeignDocument final : Foreign<IXMLDOMDocument> {
  HRESULT put_async(VARIANT_BOOL) override { return E_FAIL; }
  HRESULT load(VARIANT, VARIANT_BOOL*) override { return E_FAIL; }
  HRESULT loadXML(BSTR, VARIANT_BOOL*) override { return E_FAIL; }
  HRESULT get_documentElement(IXMLDOMElement**) override { return E_FAIL; }
};

TEST(XmlDom, ForeignObjectsGiveFailureValues) {
  ForeignNode node;
  EXPECT_EQ(zvuti::NameOf(node) + zvuti::TextOf(node) + zvuti::AttributeOf(node, "x"), "");
  EXPECT_FALSE(zvuti::SelectFrom(node, "x"));
  ForeignDocument document;
  VARIANT_BOOL isLoaded = VARIANT_TRUE;
  EXPECT_EQ(zvuti::LoadText(document, "<a/>", &isLoaded), S_FALSE);
  EXPECT_EQ(zvuti::LoadFile(document, "a.xml", &isLoaded), S_FALSE);
  EXPECT_EQ(isLoaded, VARIANT_FALSE);
}

}  // namespace

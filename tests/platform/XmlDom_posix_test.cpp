// The object model below the wrappers: what they do not use, or use in one way only. It gives the same texts
// in UTF-16 as on the short way in GBK.
#include <gtest/gtest.h>

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

// Every object is what it is, and IUnknown, and nothing else.
template <class Object>
std::string Interfaces(Object* object) {
  std::string all;
  for (const int number : {0, 1, 2, 3, 4, 9}) {
    void* found = nullptr;
    if (object->QueryInterface(IID{number}, &found) != S_OK) continue;
    all += std::to_string(number);
    object->Release();
  }
  return all;
}

TEST(XmlDom, MakesDocumentsAndNothingElse) {
  void* object = nullptr;
  EXPECT_EQ(CoCreateInstance(CLSID{9}, nullptr, CLSCTX_ALL, IID_IUnknown, &object), REGDB_E_CLASSNOTREG);
  EXPECT_EQ(CoCreateInstance(CLSID_DOMDocument, nullptr, 0, IID_IUnknown, &object), REGDB_E_CLASSNOTREG);
  EXPECT_EQ(CoCreateInstance(CLSID_DOMDocument, NewDocument(), CLSCTX_ALL, IID_IUnknown, &object),
            E_INVALIDARG);
  EXPECT_EQ(CoCreateInstance(CLSID_DOMDocument, nullptr, CLSCTX_ALL, IID_IXMLDOMNode, &object),
            E_NOINTERFACE);
  EXPECT_EQ(object, nullptr);
  EXPECT_EQ(SysAllocStringLen(nullptr, 0x7FFFFFFF), nullptr);
  EXPECT_EQ(SysStringLen(nullptr), 0u);
  const Bstr text("ab");
  Bstr copy;
  *copy.Receive() = SysAllocStringLen(text.Get(), 1);
  EXPECT_EQ(GbkOf(copy), "a");
  for (const std::size_t length : {63, 64, 65, 1000}) {  // short ones are made in place
    const std::string name(length, 'x'), wide = test::Repeat("\xD6\xD0", static_cast<int>(length));
    EXPECT_EQ(GbkOf(Bstr(name.c_str())), name) << length;
    EXPECT_EQ(GbkOf(Bstr(wide.c_str())), wide) << length;
  }
}

TEST(XmlDom, NodesOfAllKinds) {
  // The smiley has no place in GBK.
  const CComPtr<IXMLDOMElement> root = RootOf(
      "<!--c--><?p i?><a k='v'> t <\xD6\xD0 y=''>\xD6\xD0&#x1F600;\xCE\xC4</\xD6\xD0><!--d--><?q j?>"
      "<![CDATA[ e ]]><b/></a>");
  EXPECT_EQ(Interfaces(static_cast<IXMLDOMDocument*>(NewDocument())), "04");
  const char* const whole = "t \xD6\xD0??\xCE\xC4 e ";
  const struct {
    const char *selection, *interfaces, *name, *text;
    long children;
  } rows[] = {
      {"/", "01", "#document", whole, 3},
      {".", "012", "a", whole, 6},
      {"@k", "01", "k", "v", 0},
      {"text()", "01", "#text", "t", 0},
      {"\xD6\xD0", "012", "\xD6\xD0", "\xD6\xD0??\xCE\xC4", 1},
      {"comment()", "01", "#comment", "d", 0},
      {"node()[3]", "01", "q", "j", 0},
      {"node()[4]", "01", "#cdata-section", " e ", 0},
      {"b", "012", "b", "", 0},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.selection);
    CComPtr<IXMLDOMNode> node;
    ASSERT_EQ(root->selectSingleNode(Bstr(row.selection).Get(), &node), S_OK);
    EXPECT_EQ(Interfaces(static_cast<IXMLDOMNode*>(node)), row.interfaces);
    Bstr name, text;
    EXPECT_EQ(node->get_nodeName(name.Receive()), S_OK);
    EXPECT_EQ(node->get_text(text.Receive()), S_OK);
    EXPECT_EQ(GbkOf(name), row.name);
    EXPECT_EQ(GbkOf(text), row.text);
    const CComPtr<IXMLDOMNode> narrow = zvuti::SelectFrom(*root, row.selection);
    ASSERT_TRUE(narrow);
    EXPECT_EQ(zvuti::NameOf(*narrow), row.name);
    EXPECT_EQ(zvuti::TextOf(*narrow), row.text);
    VARIANT_BOOL has = VARIANT_FALSE;
    node->hasChildNodes(&has);
    EXPECT_EQ(has == VARIANT_TRUE, row.children > 0);
    CComPtr<IXMLDOMNodeList> list;
    ASSERT_EQ(node->get_childNodes(&list), S_OK);
    EXPECT_EQ(Interfaces(static_cast<IXMLDOMNodeList*>(list)), "03");
    long length = -1;
    list->get_length(&length);
    EXPECT_EQ(length, row.children);
    CComPtr<IXMLDOMNode> none;
    for (const long index : {-1L, length}) EXPECT_EQ(list->get_item(index, &none), S_FALSE);
  }
}

TEST(XmlDom, WhatIsNotThereGivesNothing) {
  CComPtr<IXMLDOMElement> root;
  EXPECT_EQ(NewDocument()->get_documentElement(&root), S_FALSE);
  root = RootOf("<a x='1'/>");
  for (const char* selection : {"nothing", "["}) {
    CComPtr<IXMLDOMNode> node;
    EXPECT_EQ(root->selectSingleNode(Bstr(selection).Get(), &node), S_FALSE) << selection;
    EXPECT_FALSE(node || zvuti::SelectFrom(*root, selection)) << selection;
  }
  zvuti::Variant found, none;
  EXPECT_EQ(root->getAttribute(Bstr("x").Get(), found.Receive()), S_OK);
  ASSERT_EQ(found.Get().vt, VT_BSTR);
  EXPECT_EQ(std::u16string(found.Get().bstrVal), u"1");
  EXPECT_EQ(root->getAttribute(Bstr("y").Get(), none.Receive()), S_FALSE);
  EXPECT_EQ(none.Get().vt, VT_NULL);
}

TEST(XmlDom, LoadsPathsAndAddressesOfFiles) {
  const test::TempFolder folder;
  // The last name is no GBK: three bytes of UTF-8.
  for (const char* name : {"a b.xml", "a%zz%4.xml", "100%25.xml", "\xE4\xB8\xAD.xml"})
    folder.Write(name, "<a/>");
  const std::string path = folder.Path();
  for (const std::string& good :
       {path + "/a b.xml", path + "/a%20b.xml", path + "/100%25.xml", "file://" + path + "/a%20b.xml",
        "FILE://localhost" + path + "/a%20%62.xml", "file://" + path + "/a%zz%4.xml",
        path + "/\xE4\xB8\xAD.xml", "file://" + path + "/%E4%b8\xAD.xml"})
    EXPECT_TRUE(test::LoadsFile(good)) << good;
  for (const std::string& bad : {"file://localhostx" + path + "/a b.xml", "file://" + path,
                                 path + "/a%2fb.xml", path + "/a b.xml%00", std::string("file://localhost")})
    EXPECT_FALSE(test::LoadsFile(bad)) << bad;

  const CComPtr<IXMLDOMDocument> document = NewDocument();
  VARIANT_BOOL isLoaded = VARIANT_TRUE;
  EXPECT_EQ(document->load(zvuti::Variant().Get(), &isLoaded), E_INVALIDARG);
  EXPECT_EQ(isLoaded, VARIANT_FALSE);
  EXPECT_EQ(document->load(zvuti::Variant((path + "/a b.xml").c_str()).Get(), &isLoaded), S_OK);
  EXPECT_EQ(isLoaded, VARIANT_TRUE);
  const WCHAR lone[] = {u'<', u'a', 0xD800, u'/', u'>', 0};
  Bstr broken;
  *broken.Receive() = SysAllocStringLen(lone, 5);
  EXPECT_EQ(document->loadXML(broken.Get(), &isLoaded), S_FALSE);
}

TEST(XmlDom, Utf16CallsSayWhenTheHeapRefuses) {
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

  VARIANT_BOOL isLoaded = VARIANT_TRUE;
  EXPECT_EQ(NewDocument()->loadXML(Bstr(nullptr).Get(), &isLoaded), S_FALSE);
  EXPECT_EQ(isLoaded, VARIANT_FALSE);
}

// Objects of somebody else's model, which have no narrow side.
class ForeignNode final : public IXMLDOMElement {
 public:
  HRESULT QueryInterface(const IID&, void**) override { return E_NOINTERFACE; }
  std::uint32_t AddRef() override { return 1; }
  std::uint32_t Release() override { return 1; }
  HRESULT get_nodeName(BSTR*) override { return E_FAIL; }
  HRESULT get_text(BSTR*) override { return E_FAIL; }
  HRESULT selectSingleNode(BSTR, IXMLDOMNode**) override { return E_FAIL; }
  HRESULT hasChildNodes(VARIANT_BOOL*) override { return E_FAIL; }
  HRESULT get_childNodes(IXMLDOMNodeList**) override { return E_FAIL; }
  HRESULT getAttribute(BSTR, VARIANT*) override { return E_FAIL; }
};

class ForeignDocument final : public IXMLDOMDocument {
 public:
  HRESULT QueryInterface(const IID&, void**) override { return E_NOINTERFACE; }
  std::uint32_t AddRef() override { return 1; }
  std::uint32_t Release() override { return 1; }
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

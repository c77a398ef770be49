// The object model below the wrappers: what they do not use, or use in one way only.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include <ZvUtiLib/platform/CComPtr.h>
#include <ZvUtiLib/platform/XmlDom.h>

#include "platform/CodePage936.h"
#include "platform/com/Bstr.h"
#include "tests/support/HeapFaults.h"
#include "tests/support/TempFolder.h"

namespace {

using zvuti::Bstr;

std::string GbkOf(BSTR text) {
  return text ? zvuti::gbk::FromUtf16({text, SysStringLen(text)}) : std::string();
}

CComPtr<IXMLDOMDocument> NewDocument() {
  CComPtr<IXMLDOMDocument> document;
  void* object = nullptr;
  EXPECT_EQ(CoCreateInstance(CLSID_DOMDocument, nullptr, CLSCTX_ALL, IID_IXMLDOMDocument, &object), S_OK);
  document.Attach(static_cast<IXMLDOMDocument*>(object));
  return document;
}

bool LoadsPath(const std::string& path) {
  VARIANT source;
  VariantInit(&source);
  source.vt = VT_BSTR;
  source.bstrVal = Bstr(path.c_str()).Detach();
  VARIANT_BOOL isLoaded = VARIANT_FALSE;
  NewDocument()->load(source, &isLoaded);
  VariantClear(&source);
  return isLoaded == VARIANT_TRUE;
}

CComPtr<IXMLDOMNode> Selected(IXMLDOMNode* from, const char* selection) {
  CComPtr<IXMLDOMNode> node;
  from->selectSingleNode(Bstr(selection).Get(), &node);
  return node;
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
  const BSTR copy = SysAllocStringLen(text.Get(), 1);
  EXPECT_EQ(GbkOf(copy), "a");
  SysFreeString(copy);
}

TEST(XmlDom, NodesOfAllKinds) {
  const CComPtr<IXMLDOMDocument> document = NewDocument();
  CComPtr<IXMLDOMElement> root;
  EXPECT_EQ(document->get_documentElement(&root), S_FALSE);
  VARIANT_BOOL isLoaded = VARIANT_FALSE;
  document->loadXML(Bstr("<!--c--><?p i?><a k='v'>t<!--d--><?q j?><![CDATA[e]]><b/></a>").Get(), &isLoaded);
  ASSERT_EQ(isLoaded, VARIANT_TRUE);
  ASSERT_EQ(document->get_documentElement(&root), S_OK);
  EXPECT_EQ(Interfaces(static_cast<IXMLDOMDocument*>(document)), "04");
  EXPECT_EQ(Interfaces(static_cast<IXMLDOMElement*>(root)), "012");

  const struct {
    const char *selection, *interfaces, *name, *text;
    long children;
  } rows[] = {
      {"/", "01", "#document", "te", 3},
      {".", "012", "a", "te", 5},
      {"@k", "01", "k", "v", 0},
      {"text()", "01", "#text", "t", 0},
      {"comment()", "01", "#comment", "d", 0},
      {"node()[2]", "01", "q", "j", 0},
      {"node()[3]", "01", "#cdata-section", "e", 0},
      {"b", "012", "b", "", 0},
  };
  for (const auto& row : rows) {
    const CComPtr<IXMLDOMNode> node = Selected(root, row.selection);
    ASSERT_NE(static_cast<IXMLDOMNode*>(node), nullptr) << row.selection;
    EXPECT_EQ(Interfaces(static_cast<IXMLDOMNode*>(node)), row.interfaces) << row.selection;
    Bstr name, text;
    node->get_nodeName(name.Receive());
    node->get_text(text.Receive());
    EXPECT_EQ(GbkOf(name.Get()), row.name) << row.selection;
    EXPECT_EQ(GbkOf(text.Get()), row.text) << row.selection;
    VARIANT_BOOL has = VARIANT_FALSE;
    node->hasChildNodes(&has);
    EXPECT_EQ(has == VARIANT_TRUE, row.children > 0) << row.selection;
    CComPtr<IXMLDOMNodeList> list;
    ASSERT_EQ(node->get_childNodes(&list), S_OK);
    EXPECT_EQ(Interfaces(static_cast<IXMLDOMNodeList*>(list)), "03");
    long length = -1;
    list->get_length(&length);
    EXPECT_EQ(length, row.children) << row.selection;
    CComPtr<IXMLDOMNode> none;
    EXPECT_EQ(list->get_item(-1, &none), S_FALSE);
    EXPECT_EQ(list->get_item(length, &none), S_FALSE);
  }
}

TEST(XmlDom, LoadsPathsAndAddressesOfFiles) {
  const test::TempFolder folder;
  folder.Write("a b.xml", "<a/>");
  folder.Write("a%zz%4.xml", "<a/>");
  const std::string path = folder.Path();
  for (const std::string& good :
       {path + "/a b.xml", path + "/a%20b.xml", "file://" + path + "/a%20b.xml",
        "FILE://localhost" + path + "/a%20%62.xml", "file://" + path + "/a%zz%4.xml"})
    EXPECT_TRUE(LoadsPath(good)) << good;
  for (const std::string& bad : {"file://localhostx" + path + "/a b.xml", "file://" + path,
                                 path + "/a%2fb.xml", std::string("file://localhost")})
    EXPECT_FALSE(LoadsPath(bad)) << bad;

  const CComPtr<IXMLDOMDocument> document = NewDocument();
  VARIANT nothing;
  VariantInit(&nothing);
  VARIANT_BOOL isLoaded = VARIANT_TRUE;
  EXPECT_EQ(document->load(nothing, &isLoaded), E_INVALIDARG);
  EXPECT_EQ(isLoaded, VARIANT_FALSE);
  const WCHAR lone[] = {u'<', u'a', 0xD800, u'/', u'>', 0};
  const BSTR broken = SysAllocStringLen(lone, 5);
  EXPECT_EQ(document->loadXML(broken, &isLoaded), S_FALSE);
  SysFreeString(broken);
}

TEST(XmlDom, Utf16CallsSayWhenTheHeapRefuses) {
  const CComPtr<IXMLDOMDocument> document = NewDocument();
  VARIANT_BOOL isLoaded = VARIANT_FALSE;
  document->loadXML(Bstr("<a k='v'>t</a>").Get(), &isLoaded);
  CComPtr<IXMLDOMElement> root;
  ASSERT_EQ(document->get_documentElement(&root), S_OK);
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

  EXPECT_EQ(document->loadXML(Bstr(nullptr).Get(), &isLoaded), S_FALSE);
  EXPECT_EQ(isLoaded, VARIANT_FALSE);
  SysFreeString(nullptr);
}

}  // namespace

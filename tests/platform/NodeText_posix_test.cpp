// The stand-in for the object model gives the same texts in UTF-16 as on the short way in GBK.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/CodePage936.h"
#include "platform/com/Bstr.h"
#include "platform/com/NodeText.h"

namespace {

std::string GbkOf(const zvuti::Bstr& text) {
  return zvuti::gbk::FromUtf16({text.Get(), SysStringLen(text.Get())});
}

std::string BytesOf(const CString& text) {
  return {text.GetString(), static_cast<std::size_t>(text.GetLength())};
}

// All nodes below `node`, in document order, itself in front.
std::vector<CComPtr<IXMLDOMNode>> NodesOf(const CComPtr<IXMLDOMNode>& node) {
  std::vector<CComPtr<IXMLDOMNode>> nodes{node};
  CComPtr<IXMLDOMNodeList> children;
  long length = 0;
  if (SUCCEEDED(node->get_childNodes(&children))) children->get_length(&length);
  for (long i = 0; i < length; ++i) {
    CComPtr<IXMLDOMNode> child;
    children->get_item(i, &child);
    for (const CComPtr<IXMLDOMNode>& below : NodesOf(child)) nodes.push_back(below);
  }
  return nodes;
}

TEST(NodeText, NodesGiveTheSameInUtf16AndInGbk) {
  CComPtr<IXMLDOMDocument> document;
  void* made = nullptr;
  ASSERT_EQ(CoCreateInstance(CLSID_DOMDocument, nullptr, CLSCTX_ALL, IID_IXMLDOMDocument, &made), S_OK);
  document.Attach(static_cast<IXMLDOMDocument*>(made));
  VARIANT_BOOL isLoaded = VARIANT_FALSE;
  // The name and text of the second element are "Zhongwen" in Chinese; the smiley has no place in GBK.
  const zvuti::Bstr text(
      "<a x='1'> t <\xD6\xD0\xCE\xC4 y=''>\xD6\xD0&#x1F600;\xCE\xC4</\xD6\xD0\xCE\xC4><!--c-->"
      "<?pi d?><![CDATA[ raw ]]></a>");
  ASSERT_EQ(document->loadXML(text.Get(), &isLoaded), S_OK);
  CComPtr<IXMLDOMElement> root;
  ASSERT_EQ(document->get_documentElement(&root), S_OK);

  const auto nodes = NodesOf(CComPtr<IXMLDOMNode>(root));
  ASSERT_EQ(nodes.size(), 7u);
  for (const CComPtr<IXMLDOMNode>& node : nodes) {
    zvuti::Bstr name, content;
    ASSERT_EQ(node->get_nodeName(name.Receive()), S_OK);
    ASSERT_EQ(node->get_text(content.Receive()), S_OK);
    EXPECT_EQ(GbkOf(name), BytesOf(zvuti::NameOf(*node)));
    EXPECT_EQ(GbkOf(content), BytesOf(zvuti::TextOf(*node))) << GbkOf(name);
  }
  EXPECT_EQ(BytesOf(zvuti::TextOf(*root)), "t \xD6\xD0??\xCE\xC4 raw ");

  const struct {
    const char* selection;
    HRESULT result;
    const char* text;
  } selections[] = {{"\xD6\xD0\xCE\xC4", S_OK, "\xD6\xD0??\xCE\xC4"},
                    {"@x", S_OK, "1"},
                    {"nothing", S_FALSE, ""},
                    {"[", S_FALSE, ""}};
  for (const auto& c : selections) {
    CComPtr<IXMLDOMNode> wide;
    EXPECT_EQ(root->selectSingleNode(zvuti::Bstr(c.selection).Get(), &wide), c.result) << c.selection;
    const CComPtr<IXMLDOMNode> narrow = zvuti::SelectFrom(*root, c.selection);
    ASSERT_EQ(static_cast<bool>(wide), static_cast<bool>(narrow)) << c.selection;
    if (!wide) continue;
    zvuti::Bstr content;
    ASSERT_EQ(wide->get_text(content.Receive()), S_OK);
    EXPECT_EQ(GbkOf(content), c.text);
    EXPECT_EQ(BytesOf(zvuti::TextOf(*narrow)), c.text);
  }

  VARIANT value;
  EXPECT_EQ(root->getAttribute(zvuti::Bstr("x").Get(), &value), S_OK);
  ASSERT_EQ(value.vt, VT_BSTR);
  EXPECT_EQ(std::u16string(value.bstrVal), u"1");
  VariantClear(&value);
  EXPECT_EQ(root->getAttribute(zvuti::Bstr("y").Get(), &value), S_FALSE);
  EXPECT_EQ(value.vt, VT_NULL);
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

TEST(NodeText, ForeignObjectsGiveFailureValues) {
  ForeignNode node;
  EXPECT_EQ(BytesOf(zvuti::NameOf(node)), "");
  EXPECT_EQ(BytesOf(zvuti::TextOf(node)), "");
  EXPECT_EQ(BytesOf(zvuti::AttributeOf(node, "x")), "");
  EXPECT_FALSE(zvuti::SelectFrom(node, "x"));
  ForeignDocument document;
  VARIANT_BOOL isLoaded = VARIANT_TRUE;
  EXPECT_EQ(zvuti::LoadText(document, "<a/>", &isLoaded), S_FALSE);
  EXPECT_EQ(isLoaded, VARIANT_FALSE);
}

}  // namespace

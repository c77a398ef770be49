// The two ways into a document: what the plain reader accepts, and that nobody can tell which one read it.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include <ZvUtiLib/CUtiXmlNodeList.h>

#include "fuzz/PlainDocuments.h"
#include "gbk/CodePage936.h"
#include "platform/com/Bstr.h"
#include "platform/com/NodeText.h"
#include "tests/support/JoinedTexts.h"
#include "tests/support/RefuseEach.h"
#include "tests/support/TempFolder.h"
#include "tests/xml/Documents.h"

namespace {

using fuzz::CompareReaders;
using zvuti::xml::Encoding;

TEST(PlainReader, ReadsAsTheBuilderDoes) {
  std::mt19937 random(11);
  int same = 0;
  constexpr int kDocuments = 6000;
  for (int i = 0; i < kDocuments; ++i) {
    const std::string document =
        fuzz::MakeDocument([&](std::size_t n) { return static_cast<unsigned>(random() % n); });
    const std::string utf8 = zvuti::gbk::ToUtf8(document);
    const std::string result =
        i % 2 == 0 ? CompareReaders(document, Encoding::kGbk) : CompareReaders(utf8, Encoding::kUtf8);
    ASSERT_TRUE(result.empty() || result == "same") << result << ": " << document;
    same += result == "same";
  }
  EXPECT_GT(same, kDocuments / 2);
}

// Documents in UTF-8. Whether they are well-formed is the builder's to say; here is which it is asked about.
TEST(PlainReader, AcceptsWhatIsPlainAndNothingElse) {
  std::string most = "<a", more;
  for (int i = 0; i < 64; ++i) most += " k" + std::to_string(i) + "=''";
  more = most + " k64=''/>", most += "/>";
  const std::string plain =
      "<a/> ~ <?xml version='1.0' encoding='x.-_1' standalone='no'?><a></a> ~ <a k='&#x7F;&#9;'/> ~ "
      "<\xE4\xB8\x80 \xE9\xBE\xA5=''/> ~ <a>\xC2\x80\xE2\x82\xAC\xEF\xBF\xBC\xF4\x8F\xBF\xBF</a> ~ "
      "<a k='&lt;&gt;&amp;&apos;&quot;'>]]&gt;</a> ~ <?p?><!-- <&]]> --><a><![CDATA[]]]]><b/></a> ~ "
      "<xmlns/> ~ " +
      most;
  for (const std::string& row : test::Rows(plain))
    EXPECT_EQ(CompareReaders(row, Encoding::kUtf8), "same") << row;
  const std::string others =  // first what is well-formed, but not plain
      "<!DOCTYPE a><a/> ~ <a xmlns=''/> ~ <a xml:space='preserve'/> ~ <a>&#x80;</a> ~ "
      "<?xml version='1.1'?><a/> ~ <\xC3\xA9/> ~ <a>\xEF\xBF\xBD</a> ~ \xEF\xBB\xBF<a/> ~ " +
      more +
      " ~ <a>\xED\xA0\x80</a> ~ <a>\xC0\x80</a> ~ <a>\xEF\xBF\xBE</a> ~ <a>\xE4\xB8</a> ~ "
      "<\xE9\xBE\xA6/> ~ <a>&#4294967361;</a> ~ <a>&#-65;</a> ~ <a>&#x;</a> ~ <a k='<'/> ~ "
      "<a k=''k2=''/> ~ <a k='' k=''/> ~ <a></b> ~ <a></ab> ~ <a>]]></a> ~ <a><!-- -- --></a> ~ "
      "<a><?xMl ?></a> ~ <?xml?><a/> ~ <a/><a/> ~ <a/>x ~ x<a/> ~ <?xml version=''?><a/> ~ "
      "<?xml version='1.0\"?><a/> ~ <?xml version='1.0' encoding='_'?><a/> ~ <a  ~ <a\xE4/> ~ "
      "<![CDATA[]]><a/> ~ </a> ~ <!-- --> ~ <a ~ <a k=' ~ <a> ~ <a>&am ~ <a><!-- ~ <a></a ~ <?xml ~ <";
  for (const std::string& row : test::Rows(others))
    EXPECT_EQ(CompareReaders(row, Encoding::kUtf8), "") << row;
  EXPECT_EQ(CompareReaders(std::string("<a>\0</a>", 8), Encoding::kUtf8), "");
}

// A document in GBK is not converted: its double-byte characters have to survive the way through Unicode.
TEST(PlainReader, KeepsOnlyCharactersThatSurviveUnicode) {
  for (int lead = 0x80; lead <= 0xFF; ++lead) {
    for (int trail = 0x20; trail <= 0xFF; ++trail) {
      const std::string pair = {static_cast<char>(lead), static_cast<char>(trail)};
      const bool survives =
          zvuti::gbk::ToUtf16(pair).size() == 1 && zvuti::gbk::FromUtf16(zvuti::gbk::ToUtf16(pair)) == pair;
      ASSERT_EQ(zvuti::gbk::IsDoubleByte(pair[0], pair[1]), survives) << lead << " " << trail;
    }
  }
  // The first and the last character of names, and one whose trail byte is a bracket.
  for (const char* plain : {"<\xD2\xBB \xFD\x9B=''/>", "<a><![CDATA[\x81\x5D]>]]></a>"})
    EXPECT_EQ(CompareReaders(plain, Encoding::kGbk), "same") << plain;
  for (const char* other : {"<\xA1\xA1/>", "<a>\x80</a>", "<a>\x81"})
    EXPECT_EQ(CompareReaders(other, Encoding::kGbk), "") << other;
}

// With a document type in front the builder reads the same document.
TEST(PlainReader, AnswersAreTheSameOnBothWays) {
  const std::string document =
      "<a k='\xD6\xD0' j='1'>\xA8\xA4 x <\xD6\xD0 n='2'>&amp;\r\n</\xD6\xD0><!--c--><b/><b "
      "\xC3\xFB='\xA1\xA1'/></a>";
  const auto answers = [](const CUtiXmlElement& a, const char* query) {
    CUtiXmlElement child;
    CString line;
    line.Format("%d|%s|%s|%s|%s|%d|%s", a.GetOneChildNode(query, &child), child.GetNodeName(), a.GetText(),
                a.GetAttribute(query), a.GetChildText(query), a.IsHasChild(query),
                a.GetChildAttribute(query, "n"));
    return line;
  };
  const CUtiXmlElement plain = test::RootOf(document), built = test::RootOf("<!DOCTYPE a>" + document);
  for (const char* query : {"k", "j", "\xD6\xD0", "\xD6", "a", "\xD6\xD0[@n='2']", "*[@\xC3\xFB='\xA1\xA1']",
                            "text()", "b[@k='\xD6\xD0']", "*[@n='\x81']", "//@\xC3\xFB", "#text", "b"}) {
    EXPECT_EQ(answers(plain, query), answers(built, query)) << query;
  }
}

// U+00C0 has no place in GBK, but a best fit, which stands here.
TEST(PlainReader, WideNamesAndValuesAreNotFittedToGbk) {
  void* object = nullptr;
  CoCreateInstance(CLSID_DOMDocument, nullptr, CLSCTX_ALL, IID_IXMLDOMDocument, &object);
  CComPtr<IXMLDOMDocument> document;
  document.Attach(static_cast<IXMLDOMDocument*>(object));
  VARIANT_BOOL isLoaded = VARIANT_FALSE;
  zvuti::LoadText(*document, "<a \xD6\xD0='\xA8\xA4'><b k='\xA8\xA4'/></a>", &isLoaded);
  CComPtr<IXMLDOMElement> root;
  ASSERT_EQ(document->get_documentElement(&root), S_OK);
  zvuti::Variant value, none;
  root->getAttribute(zvuti::Bstr("\xD6\xD0").Get(), value.Receive());
  ASSERT_EQ(value.Get().vt, VT_BSTR);
  EXPECT_EQ(value.Get().bstrVal[0], u'\u00E0');
  for (const std::u16string wide : {u"\u00C0", u"b[@k='\u00C0']", u"b[@k='\u00E0']"}) {
    zvuti::Bstr text;
    *text.Receive() = SysAllocStringLen(wide.c_str(), static_cast<unsigned>(wide.size()));
    EXPECT_EQ(root->getAttribute(text.Get(), none.Receive()), S_FALSE);
    CComPtr<IXMLDOMNode> found;
    EXPECT_EQ(root->selectSingleNode(text.Get(), &found), wide.find(u'\u00E0') == wide.npos ? S_FALSE : S_OK);
  }
}

TEST(PlainReader, DeepAndWideDocumentsAndRefusedMemoryOnBothWays) {
  const test::TempFolder folder;
  for (const std::string type : {"", "<!DOCTYPE a>"}) {
    EXPECT_EQ(test::TextOfFile(folder.Write("a.xml", "\xEF\xBB\xBF" + type + "<a>x</a>")), "x");  // a mark
    const std::string deep = type + test::Repeat("<a>", 20'000) + "x" + test::Repeat("</a>", 20'000);
    EXPECT_EQ(test::RootOf(deep).GetText(), "x");
    CUtiXmlNodeList list;
    test::RootOf(type + "<a>" + test::Repeat("<b/>y", 20'000) + "</a>").GetChildNodes(&list);
    CUtiXmlElement item;
    for (const int index : {0, 39'999, 2, 3, 39'998, 0}) {  // in order and out of it
      EXPECT_EQ(list.GetItem(index, &item), 1);
      EXPECT_EQ(item.GetNodeName(), index % 2 == 0 ? "b" : "") << index;
    }
    const auto use = [&] {
      CUtiXmlParser parser((type + "<a k='a value of some length'/>").c_str(), 0);
      const CString value = parser.GetRootElement() ? parser.GetRootElement()->GetAttribute("k") : "";
      EXPECT_TRUE(value.IsEmpty() || value == "a value of some length");
    };
    const auto none = [] { return std::string(); };
    test::RefuseEach("use", test::AfterRefusal::kUsable, [&] { return test::Subject{use, none}; });
  }
}

}  // namespace

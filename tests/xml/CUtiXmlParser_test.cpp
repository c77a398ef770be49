#include <ZvUtiLib/CUtiXmlNodeList.h>
#include <ZvUtiLib/CUtiXmlParser.h>

#include <gtest/gtest.h>

#include <string>

#include "tests/support/JoinedTexts.h"
#include "tests/support/TempFolder.h"
#include "tests/support/Wine.h"
#include "tests/xml/Documents.h"

namespace {

using namespace std::string_literals;

using test::Loads;
using test::LoadsFile;
using test::RootOf;

TEST(CUtiXmlParser, GivesNoRootWhereNothingLoads) {
  test::TempFolder folder;
  folder.Write("empty.xml", "");
  folder.Write("broken.xml", "<a>");
  for (const std::string& path : {folder.Path("none.xml"), folder.Path("empty.xml"),
                                  folder.Path("broken.xml"), folder.Path(), std::string()}) {
    EXPECT_FALSE(LoadsFile(path)) << path;
  }
  for (const int number : {0, 1, -5}) {
    EXPECT_EQ(CUtiXmlParser("", number).GetRootElement(), nullptr);
    EXPECT_EQ(CUtiXmlParser("<a", number).GetRootElement(), nullptr);
    EXPECT_EQ(CUtiXmlParser(static_cast<const char*>(nullptr), number).GetRootElement(), nullptr);
    EXPECT_NE(CUtiXmlParser("<a/>", number).GetRootElement(), nullptr);
  }
}

TEST(CUtiXmlParser, CopiesShareTheDocumentAndOutliveEachOther) {
  CUtiXmlParser failed("<a", 0);
  CUtiXmlParser copy(failed);
  EXPECT_EQ(copy.GetRootElement(), nullptr);
  {
    CUtiXmlParser parser("<a k='v'/>", 0);
    copy = parser;
    EXPECT_NE(copy.GetRootElement(), parser.GetRootElement());
  }
  CUtiXmlElement* const root = copy.GetRootElement();
  ASSERT_NE(root, nullptr);
  EXPECT_EQ(root->GetAttribute("k"), "v");
  CUtiXmlParser& self = copy;
  copy = self;
  EXPECT_EQ(copy.GetRootElement(), root);
  EXPECT_EQ(root->GetAttribute("k"), "v");
}

class Reparser : public CUtiXmlParser {
 public:
  using CUtiXmlParser::CUtiXmlParser;
  using CUtiXmlParser::Parse;
};

TEST(CUtiXmlParser, FailedParseKeepsTheOldRoot) {
  test::TempFolder folder;
  const std::string path = folder.Write("new.xml", "<new/>");
  Reparser parser("<old/>", 0);
  EXPECT_EQ(parser.Parse("<broken", 0), 0);
  EXPECT_EQ(parser.Parse(folder.Path("none.xml").c_str()), 0);
  ASSERT_NE(parser.GetRootElement(), nullptr);
  EXPECT_EQ(parser.GetRootElement()->GetNodeName(), "old");
  EXPECT_EQ(parser.Parse(path.c_str()), 1);
  EXPECT_EQ(parser.GetRootElement()->GetNodeName(), "new");
  EXPECT_EQ(parser.Parse("<text/>", 1), 1);
  EXPECT_EQ(parser.GetRootElement()->GetNodeName(), "text");
}

TEST(CUtiXmlParser, TextIsGbkWhateverItDeclares) {
  const auto textOf = [](const char* encoding) {
    return RootOf("<?xml version='1.0' encoding='"s + encoding + "'?><a>\xD6\xD0</a>").GetText();
  };
  for (const char* encoding : {"UTF-8", "UTF-16", "GBK", "ISO-8859-1"}) {
    EXPECT_EQ(textOf(encoding), "\xD6\xD0") << encoding;
  }
  if (test::IsWine()) GTEST_SKIP() << "Wine does not know the name gb2312";
  EXPECT_EQ(textOf("gb2312"), "\xD6\xD0");
}

TEST(CUtiXmlParser, WellFormedDocumentsLoad) {
  const std::string documents =
      " \r\n\t<?xml version='1.0'?><a></a > ~ "  // white space in front is skipped
      "<?xml version=\"1.0\" encoding='utf-8' standalone='yes' ?>\n<a/>\n ~ "
      "<!-- c --><?p q?><a/><!-- c --><?p?> ~ <a><!----><?p  ?><![CDATA[]]></a> ~ "
      "<_.-1 b-c.d_='1'/> ~ <a b='\"' c=\"'\" d='>'/> ~ <a>\t\x7F]] > ]&gt;</a> ~ "
      "<a>&#9;&#xA;&#xD;&#x20;&#xD7FF;&#xE000;&#xFFFD;&#x10000;&#x10FFFF;</a> ~ <!DOCTYPE a><a/> ~ "
      "<!DOCTYPE a [<!-- c --><?p?><!ELEMENT a (b|(c,d)*)+><!ELEMENT b ANY><!NOTATION n PUBLIC 'p'>]><a/> ~ "
      "<!DOCTYPE a [<!ENTITY e 'v'><!ENTITY e 'again'>]><a b='&e;'>&e;</a> ~ "
      "<!DOCTYPE a [<!ENTITY e '&f;&f;'><!ENTITY f '<b/>'>]><a>&e;&e;</a> ~ "
      "<!DOCTYPE a [<!ENTITY e '&#60;b/>'>]><a>&e;</a> ~ "
      "<!DOCTYPE a [<!ENTITY % p '<!ENTITY e \"v\">'>%p;]><a>&e;</a> ~ "
      "<!DOCTYPE a [<!ATTLIST a b CDATA 'v' c (x|y) #IMPLIED>]><a c='x'/> ~ "
      "<a xmlns='u'><b xmlns=''/></a> ~ <p:a xmlns:p='u' xmlns:q='v' p:b='1' q:b='2' b='3'/> ~ "
      "<a xmlns:p='u' xmlns:q='v'><b xmlns:q='u' q:k=''/><b p:k='' q:k=''/></a> ~ "
      "<p:\xD6\xD0 xmlns:p='u' p:\xD6\xD0='' p:a=''/> ~ "
      "<a xmlns:xml='http://www.w3.org/XML/1998/namespace' xml:lang='zh' xml:space='default'/>";
  for (const std::string& document : test::Rows(documents)) EXPECT_TRUE(Loads(document)) << document;
}

TEST(CUtiXmlParser, DocumentsThatAreNotWellFormedDoNotLoad) {
  const std::string documents =
      // Without a root, with more than one, with something beside it.
      "text ~ <!-- c --> ~ <?xml version='1.0'?> ~ <!DOCTYPE a> ~ <a/><b/> ~ <a/>t ~ t<a/> ~ <a/>&#32; ~ "
      "<a/><![CDATA[]]> ~ <a/><!DOCTYPE a> ~ \xEF\xBB\xBF<a/> ~ "
      // Tags, names and attributes.
      "<a> ~ </a> ~ <a></A> ~ <a><b></a></b> ~ <a ~ < a/> ~ <a / > ~ <a><b</a> ~ <1/> ~ <-a/> ~ <a$/> ~ "
      "<a&#65;/> ~ <a 1='1'/> ~ <a b/> ~ <a b=c/> ~ <a b='1\"/> ~ <a b='1' b='2'/> ~ <a b='1'c='2'/> ~ "
      "<a b='<'/> ~ "
      // Characters and references; a lone lead byte swallows the bracket.
      "<a>\x01</a> ~ <a b='\x1B'/> ~ <a>]]></a> ~ <a>\x81</a> ~ <a b='&'/> ~ <a>&amp</a> ~ <a>& amp;</a> ~ "
      "<a>&x;</a> ~ <a b='&x;'/> ~ <a>&#0;</a> ~ <a>&#x1F;</a> ~ <a>&#xD800;</a> ~ <a>&#xFFFE;</a> ~ "
      "<a>&#x110000;</a> ~ <a>&#x;</a> ~ <a>&#;</a> ~ <a>&#X41;</a> ~ "
      // Other nodes and declarations.
      "<a><![CDATA[</a> ~ <a><![cdata[]]></a> ~ <a><!-- -- --></a> ~ <a><!-- </a> ~ <a><?p</a> ~ "
      "<a><? p?></a> ~ <a><?xml version='1.0'?></a> ~ <a><?XML?></a> ~ <?xml?><a/> ~ "
      "<?xml encoding='UTF-8'?><a/> ~ <?xml version='1.0' standalone='maybe'?><a/> ~ "
      "<?xml version='1.0' encoding='1'?><a/> ~ <!-- c --><?xml version='1.0'?><a/> ~ "
      "<!DOCTYPE a [<!ELEMENT a (b,c|d)>]><a/> ~ <!DOCTYPE a ~ <!doctype a><a/> ~ "
      "<!DOCTYPE a [<![INCLUDE[]]>]><a/> ~ <!DOCTYPE a><!DOCTYPE a><a/> ~ "
      // Entities: recursive, not whole in themselves, unknown where they are used.
      "<!DOCTYPE a [<!ENTITY e '&e;'>]><a>&e;</a> ~ "
      "<!DOCTYPE a [<!ENTITY e '&f;'><!ENTITY f '&e;'>]><a b='&e;'/> ~ "
      "<!DOCTYPE a [<!ENTITY e '<'>]><a>&e;</a> ~ <!DOCTYPE a [<!ENTITY e '<b>'>]><a>&e;</b></a> ~ "
      "<!DOCTYPE a [<!ENTITY e '&#60;'>]><a b='&e;'/> ~ <!DOCTYPE a [<!ENTITY e '%p;'>]><a/> ~ "
      "<!DOCTYPE a [<!ENTITY e 'v'>]><a>&E;</a> ~ "
      "<!DOCTYPE a [<!ATTLIST a b CDATA '&late;'><!ENTITY late ''>]><a/>";
  for (const std::string& document : test::Rows(documents)) EXPECT_FALSE(Loads(document)) << document;
}

TEST(CUtiXmlParser, NamesThatBreakTheRulesOfNamespacesDoNotLoad) {
  if (test::IsWine()) GTEST_SKIP() << "Wine drops prefixes that it does not know";
  const std::string documents =
      "<p:a/> ~ <a p:b='1'/> ~ <a><b xmlns:p='u'/><p:c/></a> ~ <a xmlns:p=''/> ~ <:a/> ~ <a:/> ~ "
      "<a:b:c xmlns:a='u'/> ~ <a xmlns:p='u'><p:1/></a> ~ <a><?p:q?></a> ~ "
      "<!DOCTYPE a [<!ENTITY p:e 'v'>]><a/> ~ <a xmlns:p='u' xmlns:q='u' p:b='1' q:b='2'/> ~ "
      "<a xmlns:xmlns='u'/> ~ <a xmlns:xml='u'/> ~ <a xmlns='http://www.w3.org/2000/xmlns/'/> ~ "
      "<a xmlns='http://www.w3.org/XML/1998/namespace'/> ~ <a xmlns:p='http://www.w3.org/2000/xmlns/'/> ~ "
      "<a xmlns:p='http://www.w3.org/XML/1998/namespace'/> ~ <xmlns:a/> ~ <a xmlns:p='u' p:b:c=''/> ~ "
      "<a xmlns:p='u' xmlns:q='v'><b xmlns:q='u' p:k='' q:k=''/></a> ~ <p:\xA1\xA4 xmlns:p='u'/> ~ "
      "<!DOCTYPE a:b:c><a/> ~ <!DOCTYPE a [<!ATTLIST a b:c:d CDATA #IMPLIED>]><a/> ~ "
      "<!DOCTYPE a [<!ELEMENT a (b:)>]><a/> ~ <!DOCTYPE a [<!ENTITY % p '<!NOTATION p:n PUBLIC "
      "\"u\">'>%p;]><a/>";
  for (const std::string& document : test::Rows(documents)) EXPECT_FALSE(Loads(document)) << document;
}

TEST(CUtiXmlParser, FilesLoadInTheirEncoding) {
  const auto declared = [](const char* encoding, const std::string& text) {
    return "<?xml version=\"1.0\" encoding=\""s + encoding + "\"?><a>" + text + "</a>";
  };
  const auto wide = [](const std::string& ascii, bool isBigEndian) {
    std::string bytes;
    for (const char c : ascii) isBigEndian ? bytes.append({'\0', c}) : bytes.append({c, '\0'});
    return bytes;
  };
  const std::string begin = "\xFE\xFF" + wide("<a>", true), end = wide("</a>", true);
  const struct {
    const char* what;
    std::string bytes, text;
  } cases[] = {
      {"plain", "<a>\xE4\xB8\xAD</a>", "\xD6\xD0"},
      {"declared", declared("utf-8", "\xE4\xB8\xAD"), "\xD6\xD0"},
      {"mark", "\xEF\xBB\xBF" + declared("UTF-8", "\xE4\xB8\xAD"), "\xD6\xD0"},
      {"big-endian mark", begin + "\x4E\x2D" + end, "\xD6\xD0"},
      {"mark against declaration", "\xFF\xFE" + wide(declared("UTF-8", "x"), false), "x"},
      {"little-endian, declared", wide(declared("UTF-16", "x"), false), "x"},
      {"big-endian, declared", wide(declared("utf-16", "x"), true), "x"},
      {"surrogate pair", begin + "\xD8\x3D\xDE\x00"s + end, "??"},
      {"GBK", declared("GBK", "\xD6\xD0\x80"), "\xD6\xD0\x80"},
      {"white space in front", " \r\n\t<?xml version='1.0'?><a>x</a>", "(none)"},
      {"GBK, declared as nothing", "<a>\xD6\xD0</a>", "(none)"},
      {"broken UTF-8", declared("utf-8", "\x80"), "(none)"},
      {"two bytes for one", "<a>\xC0\x80</a>", "(none)"},
      {"half of a pair in UTF-8", "<a>\xED\xA0\x80</a>", "(none)"},
      {"no character", "<a>\xEF\xBF\xBE</a>", "(none)"},
      {"half of a GBK character", declared("GBK", "\x81"), "(none)"},
      {"unknown", declared("no-such-encoding", "x"), "(none)"},
      {"wide declared, narrow in fact", declared("UTF-16", "x"), "(none)"},
      {"first half of a pair", begin + "\xD8\x3D" + end, "(none)"},
      {"second half of a pair", begin + "\xDE\x3D" + end, "(none)"},
  };
  const test::TempFolder folder;
  const auto textOf = [&](const std::string& bytes) {
    return test::TextOfFile(folder.Write("a.xml", bytes));
  };
  for (const auto& c : cases) EXPECT_EQ(textOf(c.bytes), c.text.c_str()) << c.what;
  if (test::IsWine()) GTEST_SKIP() << "Wine does not see every broken character";
  EXPECT_EQ(textOf(declared("GBK", "\x81 ")), "(none)");
  EXPECT_EQ(textOf("\xFF\xFE" + wide("<a/>", false) + "x"), "(none)");
  EXPECT_EQ(textOf(wide(declared("UTF-16", "x"), false) + "x"), "(none)");
  // Without a mark it has to be declared. The second half of the character in the last three is a quote.
  for (const bool isBigEndian : {false, true}) {
    EXPECT_EQ(textOf(wide("<?xml version='1.0'?><a/>", isBigEndian)), "(none)");
    EXPECT_EQ(textOf(wide("<a/>", isBigEndian)), "(none)");
    EXPECT_EQ(textOf(wide("\n<a/>", isBigEndian)), "(none)");
  }
  EXPECT_EQ(textOf(wide("<a x='", true) + "\x22\0"s + wide(" ='/>", true)), "(none)");
  EXPECT_EQ(textOf(wide("<a k=\"x ", false) + "\0\x22"s + wide("=\"/>", false)), "(none)");
  EXPECT_EQ(textOf("\xFF\xFE" + wide("<a k=\"x\t", false) + "\0\x22"s + wide("=\"/>", false)), "");
}

TEST(CUtiXmlParser, PathsLoadInEveryForm) {
  test::TempFolder folder;
  folder.Write("sub dir/a b.xml", "<a/>");
  const std::string top = folder.Path() + "/";
  const std::string address = "://" + std::string(top[0] == '/' ? "" : "/") + top;
  for (const std::string& path :
       {top + "sub dir/a b.xml", top + ".\\sub dir\\../sub dir/a b.xml", top + "sub%20dir/a%20b.xml",
        "file" + address + "sub%20dir/a%20b.xml", "FILE" + address + "sub dir\\a b.xml"}) {
    EXPECT_TRUE(LoadsFile(path)) << path;
  }
  for (const std::string& path : {"http://" + top + "sub dir/a b.xml", top + "sub dir/a b.xml%"}) {
    EXPECT_FALSE(LoadsFile(path)) << path;
  }
}

}  // namespace

#include <ZvUtiLib/CUtiXmlNodeList.h>
#include <ZvUtiLib/CUtiXmlParser.h>

#include <gtest/gtest.h>

#include <string>

#include "tests/support/Rows.h"
#include "tests/support/TempFolder.h"
#include "tests/support/Wine.h"

namespace {

using namespace std::string_literals;

bool Loads(const std::string& text) {
  CUtiXmlParser parser(text.c_str(), 0);
  return parser.GetRootElement() != nullptr;
}

bool LoadsFile(const std::string& path) {
  CUtiXmlParser parser(path.c_str());
  return parser.GetRootElement() != nullptr;
}

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
    const std::string text = "<?xml version='1.0' encoding='"s + encoding + "'?><a>\xD6\xD0</a>";
    CUtiXmlParser parser(text.c_str(), 0);
    return parser.GetRootElement() ? parser.GetRootElement()->GetText() : CString("(no root)");
  };
  for (const char* encoding : {"UTF-8", "UTF-16", "GBK", "ISO-8859-1"}) {
    EXPECT_EQ(textOf(encoding), "\xD6\xD0") << encoding;
  }
  if (test::IsWine()) GTEST_SKIP() << "Wine does not know the name gb2312";
  EXPECT_EQ(textOf("gb2312"), "\xD6\xD0");
}

TEST(CUtiXmlParser, WhiteSpaceInFrontIsSkippedInTextAndRefusedInFiles) {
  test::TempFolder folder;
  const std::string text = " \r\n\t<?xml version='1.0'?><a/>";
  EXPECT_TRUE(Loads(text));
  EXPECT_FALSE(LoadsFile(folder.Write("a.xml", text)));
}

TEST(CUtiXmlParser, WellFormedDocumentsLoad) {
  const std::string documents =
      "<a/> ~ <a></a > ~ <?xml version='1.0'?><a/> ~ "
      "<?xml version=\"1.0\" encoding='utf-8' standalone='yes' ?>\n<a/>\n ~ "
      "<!-- c --><?p q?><a/><!-- c --><?p?> ~ <a><!----><?p  ?><![CDATA[]]></a> ~ "
      "<_.-1 b-c.d_='1'/> ~ <a b='\"' c=\"'\" d='>'/> ~ <a>]] > ]&gt;</a> ~ "
      "<a>&#9;&#xA;&#xD;&#x20;&#xD7FF;&#xE000;&#xFFFD;&#x10000;&#x10FFFF;</a> ~ <a>\t\x7F</a> ~ "
      "<!DOCTYPE a><a/> ~ <!DOCTYPE a []><a/> ~ "
      "<!DOCTYPE a [<!-- c --><?p?><!ELEMENT a (b|(c,d)*)+><!ELEMENT b ANY><!NOTATION n PUBLIC 'p'>]><a/> ~ "
      "<!DOCTYPE a [<!ENTITY e 'v'><!ENTITY e 'again'>]><a b='&e;'>&e;</a> ~ "
      "<!DOCTYPE a [<!ENTITY e '<b/>'>]><a>&e;&e;</a> ~ "
      "<!DOCTYPE a [<!ENTITY e '&f;'><!ENTITY f 'v'>]><a>&e;</a> ~ "
      "<!DOCTYPE a [<!ENTITY e '&#60;b/>'>]><a>&e;</a> ~ "
      "<!DOCTYPE a [<!ENTITY % p '<!ENTITY e \"v\">'>%p;]><a>&e;</a> ~ "
      "<!DOCTYPE a [<!ATTLIST a b CDATA 'v' c (x|y) #IMPLIED>]><a c='x'/> ~ "
      "<a xmlns='u'><b xmlns=''/></a> ~ <p:a xmlns:p='u' p:b='1' b='2'/> ~ "
      "<a xmlns:p='u' xmlns:q='v' p:b='1' q:b='2'/> ~ <a xml:lang='zh' xml:space='default'/> ~ "
      "<a xmlns:xml='http://www.w3.org/XML/1998/namespace'/>";
  for (const std::string& document : test::Rows(documents)) EXPECT_TRUE(Loads(document)) << document;
}

TEST(CUtiXmlParser, DocumentsThatAreNotWellFormedDoNotLoad) {
  const struct {
    const char* what;
    std::string documents;
  } groups[] = {
      {"no root", "text ~ <!-- c --> ~ <?xml version='1.0'?> ~ <!DOCTYPE a>"},
      {"more than a root", "<a/><b/> ~ <a/>t ~ t<a/> ~ <a/>&#32; ~ <a/><![CDATA[]]> ~ <a/><!DOCTYPE a>"},
      {"tags", "<a> ~ </a> ~ <a></b> ~ <a></A> ~ <a><b></a></b> ~ <a ~ <a/ ~ < a/> ~ <a / > ~ <a><b</a>"},
      {"names", "<1/> ~ <-a/> ~ <.a/> ~ <a$/> ~ <a&#65;/> ~ <a 1='1'/>"},
      {"attributes",
       "<a b/> ~ <a b=/> ~ <a b=c/> ~ <a b='1\"/> ~ <a b='1' b='2'/> ~ <a b='1'c='2'/> ~ <a b='<'/>"},
      {"references",
       "<a b='&'/> ~ <a b='&lt'/> ~ <a>&</a> ~ <a>&amp</a> ~ <a>& amp;</a> ~ <a>&x;</a> ~ <a b='&x;'/>"},
      {"character references",
       "<a>&#0;</a> ~ <a>&#8;</a> ~ <a>&#x1F;</a> ~ <a>&#xD800;</a> ~ <a>&#xFFFE;</a> ~ "
       "<a>&#x110000;</a> ~ <a>&#x;</a> ~ <a>&#;</a> ~ <a>&#xG;</a> ~ <a>&#X41;</a>"},
      {"characters", "<a>\x01</a> ~ <a b='\x1B'/> ~ <a>\x0C</a> ~ <a>]]></a>"},
      {"broken GBK", "<a>\x81</a>"},  // the lone lead byte swallows the bracket
      {"a mark in text", "\xEF\xBB\xBF<a/>"},
      {"CDATA", "<a><![CDATA[</a> ~ <a><![cdata[]]></a> ~ <a><![CDATA[]]</a>"},
      {"comments", "<a><!-- -- --></a> ~ <a><!-- ---></a> ~ <a><!- c --></a> ~ <a><!-- </a>"},
      {"instructions", "<a><?p</a> ~ <a><? p?></a> ~ <a><?xml version='1.0'?></a> ~ <a><?XML?></a>"},
      {"declarations",
       "<?xml?><a/> ~ <?xml encoding='UTF-8'?><a/> ~ <?xml version='1.0' standalone='maybe'?><a/> ~ "
       "<?xml version='1.0' encoding='1'?><a/> ~ <?XML version='1.0'?><a/> ~ "
       "<!-- c --><?xml version='1.0'?><a/>"},
      {"recursive entities",
       "<!DOCTYPE a [<!ENTITY e '&e;'>]><a>&e;</a> ~ "
       "<!DOCTYPE a [<!ENTITY e '&f;'><!ENTITY f '&e;'>]><a b='&e;'/>"},
      {"entities",
       "<!DOCTYPE a [<!ENTITY e '<'>]><a>&e;</a> ~ <!DOCTYPE a [<!ENTITY e '<b>'>]><a>&e;</b></a> ~ "
       "<!DOCTYPE a [<!ENTITY e '&#60;'>]><a b='&e;'/> ~ <!DOCTYPE a [<!ENTITY e '%p;'>]><a/> ~ "
       "<!DOCTYPE a [<!ENTITY e 'v'>]><a>&E;</a> ~ "
       "<!DOCTYPE a [<!ATTLIST a b CDATA '&late;'><!ENTITY late ''>]><a/>"},
      {"document types",
       "<!DOCTYPE a [<!ELEMENT a (b,c|d)>]><a/> ~ <!DOCTYPE a ~ <!doctype a><a/> ~ "
       "<!DOCTYPE a [<![INCLUDE[]]>]><a/> ~ <!DOCTYPE a><!DOCTYPE a><a/>"},
  };
  for (const auto& [what, documents] : groups) {
    for (const std::string& document : test::Rows(documents))
      EXPECT_FALSE(Loads(document)) << what << ": " << document;
  }
}

TEST(CUtiXmlParser, NamesThatBreakTheRulesOfNamespacesDoNotLoad) {
  if (test::IsWine()) GTEST_SKIP() << "Wine drops prefixes that it does not know";
  const std::string documents =
      "<p:a/> ~ <a p:b='1'/> ~ <a><b xmlns:p='u'/><p:c/></a> ~ <a xmlns:p=''/> ~ <:a/> ~ <a:/> ~ "
      "<a:b:c xmlns:a='u'/> ~ <a :b='1'/> ~ <a xmlns:p='u'><p:1/></a> ~ <a><?p:q?></a> ~ "
      "<!DOCTYPE a [<!ENTITY p:e 'v'>]><a/> ~ <a xmlns:p='u' xmlns:q='u' p:b='1' q:b='2'/> ~ "
      "<a xmlns:xmlns='u'/> ~ <xmlns:a/> ~ <a xmlns:xml='u'/> ~ "
      "<a xmlns:p='http://www.w3.org/XML/1998/namespace'/> ~ "
      "<a xmlns='http://www.w3.org/2000/xmlns/'/>";
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
  const std::string zhong = "\xD6\xD0";
  const struct {
    const char* what;
    std::string bytes, text;
  } cases[] = {
      {"plain", "<a>\xE4\xB8\xAD</a>", zhong},
      {"declared", declared("utf-8", "\xE4\xB8\xAD"), zhong},
      {"mark", "\xEF\xBB\xBF" + declared("UTF-8", "\xE4\xB8\xAD"), zhong},
      {"little-endian mark", "\xFF\xFE" + wide(declared("UTF-16", "x"), false), "x"},
      {"big-endian mark", "\xFE\xFF" + wide("<a>", true) + "\x4E\x2D" + wide("</a>", true), zhong},
      {"mark against declaration", "\xFF\xFE" + wide(declared("UTF-8", "x"), false), "x"},
      {"little-endian, declared", wide(declared("UTF-16", "x"), false), "x"},
      {"big-endian, declared", wide(declared("utf-16", "x"), true), "x"},
      {"surrogate pair", "\xFE\xFF" + wide("<a>", true) + "\xD8\x3D\xDE\x00"s + wide("</a>", true), "??"},
      {"GBK", declared("GBK", zhong + "\x80"), zhong + "\x80"},
  };
  test::TempFolder folder;
  for (const auto& c : cases) {
    CUtiXmlParser parser(folder.Write("a.xml", c.bytes).c_str());
    ASSERT_NE(parser.GetRootElement(), nullptr) << c.what;
    EXPECT_EQ(parser.GetRootElement()->GetText(), c.text.c_str()) << c.what;
  }
  const std::string broken[] = {
      "<a>\xD6\xD0</a>",
      "<a>\xC0\x80</a>",
      "<a>\xED\xA0\x80</a>",
      "<a>\xEF\xBF\xBE</a>",
      declared("utf-8", "\x80"),
      declared("GBK", "\x81"),
      declared("no-such-encoding", "x"),
      declared("UTF-16", "x"),
      "\xFE\xFF" + wide("<a>", true) + "\xD8\x3D" + wide("</a>", true),
      "\xFE\xFF" + wide("<a>", true) + "\xDE\x3D" + wide("</a>", true),
  };
  const auto expectNone = [&](const std::string& bytes) {
    EXPECT_FALSE(LoadsFile(folder.Write("a.xml", bytes))) << testing::PrintToString(bytes);
  };
  for (const std::string& bytes : broken) expectNone(bytes);
  if (test::IsWine()) GTEST_SKIP() << "Wine does not see every broken character";
  expectNone(declared("GBK", "\x81 "));
  expectNone("\xFF\xFE" + wide("<a/>", false) + "x");
}

TEST(CUtiXmlParser, PathsLoadInEveryForm) {
  test::TempFolder folder;
  folder.Write("sub dir/a b.xml", "<a/>");
  const std::string top = folder.Path() + "/";
  EXPECT_TRUE(LoadsFile(top + "sub dir/a b.xml"));
  EXPECT_TRUE(LoadsFile(top + "sub dir\\a b.xml"));
  EXPECT_TRUE(LoadsFile(top + ".\\sub dir\\../sub dir/a b.xml"));
  EXPECT_TRUE(LoadsFile(top + "sub%20dir/a%20b.xml"));
  const std::string address = "://" + std::string(top[0] == '/' ? "" : "/") + top;
  EXPECT_TRUE(LoadsFile("file" + address + "sub%20dir/a%20b.xml"));
  EXPECT_TRUE(LoadsFile("FILE" + address + "sub dir\\a b.xml"));
  EXPECT_FALSE(LoadsFile("http://" + top + "sub dir/a b.xml"));
  EXPECT_FALSE(LoadsFile(top + "sub dir/a b.xml%"));
}

}  // namespace

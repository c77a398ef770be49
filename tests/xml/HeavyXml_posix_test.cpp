// Documents that are large, deep or hostile, and heaps that refuse: what the stand-in promises beyond the
// platform's object model.
#include <ZvUtiLib/CUtiXmlNodeList.h>
#include <ZvUtiLib/CUtiXmlParser.h>

#include <pthread.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>

#include "tests/support/HeapFaults.h"
#include "tests/support/JoinedTexts.h"
#include "tests/support/RefuseEach.h"
#include "tests/support/TempFolder.h"
#include "tests/xml/Documents.h"

namespace {

using test::Loads;
using test::Repeat;
using test::RootOf;

std::string Document(const std::string& declarations, const std::string& root) {
  return "<!DOCTYPE a [" + declarations + "]>" + root;
}

// Runs `work` on a thread with a stack of 256 KiB.
void OnSmallStack(std::function<void()> work) {
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  pthread_attr_setstacksize(&attributes, std::size_t{256} << 10);
  pthread_t thread;
  const auto run = [](void* argument) -> void* {
    (*static_cast<std::function<void()>*>(argument))();
    return nullptr;
  };
  ASSERT_EQ(pthread_create(&thread, &attributes, run, &work), 0);
  pthread_join(thread, nullptr);
  pthread_attr_destroy(&attributes);
}

TEST(HeavyXml, DepthNeedsNoStack) {
  constexpr int kDepth = 100'000;
  const std::string text = Repeat("<a>", kDepth) + "<b>x</b>" + Repeat("</a>", kDepth);
  OnSmallStack([&] {
    CUtiXmlElement element = RootOf(text);
    EXPECT_EQ(element.GetText(), "x");
    EXPECT_EQ(element.GetChildText("//b"), "x");
    EXPECT_EQ(element.IsHasChild("//a[.//b/..//b][.//..//b]//b"), 1);
    for (const char* none : {"a//a//a//a//a//none", "//a[.//none]", "//*[../../../none]"}) {
      EXPECT_EQ(element.IsHasChild(none), 0) << none;
    }
    int depth = 0;
    for (CUtiXmlElement child; element.GetOneChildNode("a", &child); element = child) ++depth;
    EXPECT_EQ(depth, kDepth - 1);
  });
}

TEST(HeavyXml, ManyChildrenAreReachedByIndex) {
  constexpr int kCount = 100'000;
  const CUtiXmlElement root = RootOf("<a>" + Repeat("<b/>", kCount - 1) + "<c k='v'/></a>");
  CUtiXmlNodeList list;
  root.GetChildNodes(&list);
  ASSERT_EQ(list.GetLength(), kCount);
  CUtiXmlElement item;
  for (int i = kCount - 1; i >= 0; --i) {
    list.GetItem(i, &item);
    ASSERT_EQ(item.GetNodeName(), i == kCount - 1 ? "c" : "b");
  }
  for (int i = 0; i < 1000; ++i) ASSERT_EQ(root.IsHasChild("b"), 1);
  EXPECT_EQ(root.GetChildAttribute("*[99999]", "k"), "v");
}

TEST(HeavyXml, LongTextIsReadWholeAndFlatEntitiesExpandGenerously) {
  EXPECT_EQ(RootOf("<a>" + std::string(64 << 20, 'x') + "</a>").GetText().GetLength(), 64 << 20);
  const std::string entity = "<!ENTITY e '" + std::string(50'000, 'x') + "'>";
  const CUtiXmlElement root = RootOf(Document(entity, "<a>" + Repeat("&e;", 2000) + "</a>"));
  EXPECT_EQ(root.GetText().GetLength(), 100'000'000);
}

// Entities e0 to e<levels>, each of which stands for `fan` of the one before; written in this order or in
// the reverse one.
std::string Entities(int levels, int fan, bool isReverse = false) {
  std::string all = "<!ENTITY e0 'lol'>";
  for (int i = 1; i <= levels; ++i) {
    const std::string value = Repeat("&e" + std::to_string(i - 1) + ";", fan);
    all.insert(isReverse ? 0 : all.size(), "<!ENTITY e" + std::to_string(i) + " '" + value + "'>");
  }
  return all;
}

TEST(HeavyXml, EntityBombsAreRefusedCheaply) {
  EXPECT_TRUE(Loads(Document(Entities(3, 10), "<a>&e3;</a>")));
  const std::string bombs[] = {
      Document(Entities(9, 10), "<a>&e9;</a>"),
      Document(Entities(29, 10), "<a b='&e29;'/>"),
      Document(Entities(9, 10) + "<!ATTLIST a b CDATA '&e9;'>", "<a/>"),
      Document(Entities(30, 2), "<a>&e30;</a>"),
      Document("<!ENTITY e '" + Repeat("<b/>", 10'000) + "'>", "<a>" + Repeat("&e;", 1000) + "</a>"),
      Document("<!ENTITY % p '" + Repeat("<!ELEMENT b ANY>", 1000) + "'>" + Repeat("%p;", 5000), "<a/>"),
  };
  for (const std::string& bomb : bombs) {
    test::HeapFaults heap(0);
    EXPECT_FALSE(Loads(bomb)) << bomb.substr(bomb.size() - 60);
    EXPECT_LT(heap.LargestAsked(), 80u << 20);
  }
  test::HeapFaults heap(0);
  EXPECT_FALSE(Loads(bombs[0]));
  EXPECT_LT(heap.BytesAsked(), 1u << 20);
}

TEST(HeavyXml, ChainsOfEntitiesAreBounded) {
  OnSmallStack([&] {
    for (const bool isReverse : {false, true}) {
      EXPECT_TRUE(Loads(Document(Entities(256, 1, isReverse), "<a b='&e256;'>&e256;</a>")));
    }
    EXPECT_FALSE(Loads(Document(Entities(5000, 1, true), "<a>&e5000;</a>")));
    const std::string longest = Entities(100'000, 1);
    EXPECT_FALSE(Loads(Document(longest, "<a>&e100000;</a>")));
    EXPECT_FALSE(Loads(Document(longest, "<a b='&e100000;'/>")));
  });
}

TEST(HeavyXml, DefaultAttributesAreBounded) {
  // Attributes k0, k1 and so on; each begins with a blank.
  const auto attributes = [](int count, const std::string& value) {
    std::string all;
    for (int i = 0; i < count; ++i) all += " k" + std::to_string(i) + " CDATA " + value;
    return all;
  };
  const std::string longName(100'000, 'k'), thousands = "<a>" + Repeat("<b/>", 2000) + "</a>";
  const std::string longValue = "<!ATTLIST b k CDATA '" + std::string(500'000, 'x') + "'>";
  const std::string longNamespace = "<!ATTLIST b xmlns:p CDATA '" + std::string(100'000, 'u') + "'>";
  const struct {
    std::string declarations, root;
    bool loads;
  } cases[] = {
      {longValue, "<a><b/><b k=''/></a>", true},
      {longValue, thousands, false},
      {"<!ATTLIST b" + attributes(1000, "''") + ">", thousands, false},
      // For one type of element 256 may be declared, with a value or without.
      {"<!ATTLIST b" + attributes(256, "''") + "><!ATTLIST c k CDATA ''>", "<a><b/></a>", true},
      {"<!ATTLIST b" + attributes(257, "''") + ">", "<a/>", false},
      {"<!ATTLIST b" + attributes(256, "#IMPLIED") + "><!ATTLIST c k CDATA ''>", "<a><b/></a>", true},
      {"<!ATTLIST b" + attributes(257, "#IMPLIED") + ">", "<a/>", false},
      // Names and declarations of namespaces count as well, before they are stored.
      {"<!ATTLIST b " + longName + " CDATA ''>", thousands, false},
      {"<!ATTLIST " + longName + attributes(10, "''") + ">", "<a/>", true},
      {"<!ATTLIST " + longName + attributes(200, "''") + ">", "<a/>", false},
      {longNamespace, "<a><b p:k=''/></a>", true},
      {longNamespace, thousands, false},
  };
  for (const auto& c : cases) {
    const test::HeapFaults heap(0);
    EXPECT_EQ(Loads(Document(c.declarations, c.root)), c.loads)
        << c.declarations.substr(0, 30) << c.root.size();
    EXPECT_LT(heap.LargestAsked(), 300u << 20);
  }
}

TEST(HeavyXml, NothingOutsideTheDocumentIsRead) {
  const test::TempFolder folder;
  const std::string entity = folder.Write("e.xml", "<secret/>");
  const std::string types = folder.Write("d.dtd", "<!ENTITY e 'secret'>");
  for (const std::string& type : {"[<!ENTITY e SYSTEM '" + entity + "'>]", "SYSTEM '" + types + "'",
                                  "[<!ENTITY % d SYSTEM '" + types + "'>%d;]"}) {
    CUtiXmlElement root = RootOf("<!DOCTYPE a " + type + "><a>x&e;y</a>");
    EXPECT_EQ(root.GetText(), "xy") << type;
    EXPECT_EQ(root.GetOneChildNode("e", &root), 1) << type;  // the reference stays, as a node
    EXPECT_EQ(root.GetNodeName(), "") << type;
  }
  EXPECT_FALSE(Loads(Document("<!ENTITY e SYSTEM 'e.xml'>", "<a b='&e;'/>")));
  CUtiXmlElement root = RootOf(Document("<!ENTITY x SYSTEM 'e.xml'><!ENTITY e '[&x;]'>", "<a>&e;</a>"));
  EXPECT_EQ(root.GetText(), "[]");
  EXPECT_EQ(root.GetOneChildNode("x", nullptr), 1);
}

// Where a part of the type was not read, the parser drops references in attribute values that it doesn't
// know.
TEST(HeavyXml, UnknownEntitiesInAttributesGiveNoRoot) {
  const char* const good[] = {
      "SYSTEM 'd'><a k='&lt;&#65;'>&foo;</a>",
      "SYSTEM 'd' [<!ENTITY e 'v'>]><a k='&e;'/>",
      "SYSTEM 'd' [<!ENTITY e '&f;'><!ENTITY f 'v'>]><a k='&e;'>&e;</a>",
      "SYSTEM 'd' [<!ENTITY e '&foo;'>]><a>&e;</a>",
      "SYSTEM 'd' [<!ENTITY e '<b k=\">\"/>&foo;'>]><a>&e;</a>",
      "SYSTEM 'd' [<!ENTITY e '<b/><!--&#38;foo;--><?p k=\"&#38;foo;\"?><![CDATA[&#38;foo;<]]>'>]><a>&e;</a>",
      "SYSTEM 'd' [<!ENTITY e 'v'><!ATTLIST a k CDATA '&e;'>]><a/>",
      "[<!ENTITY % p '<!ENTITY e \"v\">'>%p;]><a k='&e;'/>",
      "[<!ENTITY % p '<!-- A&#38;B; &#38; C --><!ENTITY e \"v\">'>%p;]><a k='&e;'/>",
      "[<!ENTITY e 'v'><!ENTITY % p '<!ATTLIST a k CDATA \"&#38;e;\">'>%p;]><a/>"};
  for (const char* type : good) EXPECT_TRUE(Loads(std::string("<!DOCTYPE a ") + type)) << type;
  const char* const bad[] = {
      "SYSTEM 'd'><a k='x&foo;y'/>",
      "PUBLIC 'p' 'd'><a><b/><b j='' k = \"&foo;\"/></a>",
      "[<!ENTITY % d SYSTEM 'd'>%d;]><a k='&foo;'/>",
      "[%d;]><a k='&foo;'/>",
      "[<!ENTITY % d SYSTEM 'd'>%d;<!ENTITY e 'v'>]><a k='&e;'/>",  // not declared after what is not read
      "SYSTEM 'd' [<!ENTITY e '&f;'><!ENTITY f '&foo;'>]><a k='&e;'/>",
      "SYSTEM 'd' [<!ENTITY e '<b k=\"&#38;foo;\"/>'>]><a>&e;</a>",
      "SYSTEM 'd' [<!ENTITY e '<b/>&f;'><!ENTITY f '<b j=\">\" k=\"&#38;foo;\"/>'>]><a>&e;</a>",
      "SYSTEM 'd' [<!ATTLIST a k CDATA 'x&foo;y'>]><a/>",
      "SYSTEM 'd' [<!ATTLIST a k CDATA '&e;'><!ENTITY e 'v'>]><a/>",
      "[<!ENTITY % p '<!ATTLIST a k CDATA \"x&#38;foo;\">'>%p;]><a/>",
      "[<!ENTITY % p '<!ATTLIST a k CDATA \"x&#38;foo;\">'><!ENTITY % q '&#37;p;'>%q;]><a/>"};
  for (const char* type : bad) EXPECT_FALSE(Loads(std::string("<!DOCTYPE a ") + type)) << type;
  EXPECT_FALSE(Loads("<?xml version='1.0' standalone='yes'?>" +
                     Document("<!ENTITY e '<b k=\"x&#38;foo;\"/>'>", "<a>&e;</a>")));
}

TEST(HeavyXml, TabsAndLineEndsStayInAttributes) {
  const struct {
    const char *declarations, *document, *value;
  } cases[] = {
      {"", "<a\tk='p\tq'/>", "p\tq"},
      {"", "<a k = 'p\tq&#9;&lt;r\r\ns\rt&#x4E2D;\nu v'/>", "p\tq\t<r\ns\nt\xD6\xD0\nu v"},
      {"", "<a\n xmlns:p='u\tv' y='1 2' \nk='\n'/>", "\n"},
      {"<!ATTLIST a xmlns:p CDATA 'u v'>", "<a y='\t' k='1\t2'/>", "1\t2"},
      {"", "<a x='\t' k='1 2'/>", "1 2"},
      {"", "<a k='p\t&#xE9;&#x4E2D;&#65;&lt;\tq'/>", "p\t\xA8\xA6\xD6\xD0\x41<\tq"},
      {"", "<a k='p\t&#x1F600;q'/>", "p\t??q"},
      {"<!ATTLIST a k CDATA 'p\tq'>", "<a x='\t '/>", "p q"},
      {"<!ATTLIST a k NMTOKENS #IMPLIED>", "<a k='\tp\t q\t'/>", "p q"},  // cut to tokens
      {"<!ATTLIST a k NMTOKENS #IMPLIED>", "<a k='p q\t'/>", "p q"},
      {"<!ENTITY e 'v'>", "<a k='\t&e;'/>", " v"},  // not beside an entity
      {"<!ENTITY e '&#38;#60;&lt;'>", "<a k='\t&e;'/>", " <<"},
      {"<!ENTITY % p 'x'><!ENTITY e 'x'>", "<a k='\t&e;'/>", " x"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(RootOf(Document(c.declarations, c.document)).GetAttribute("k"), c.value) << c.document;
  }
  // An element in an entity does not stand in the document itself.
  const CUtiXmlElement root = RootOf(Document("<!ENTITY e \"<b k='p\tq'/>\">", "<a>&e;</a>"));
  EXPECT_EQ(root.GetChildAttribute("b", "k"), "p q");
}

TEST(HeavyXml, DeclaredEncodingsOfOtherPlaces) {
  const std::string longText(3000, 'x');  // more than one step of the converter
  const char* const none = "(none)";
  const struct {
    std::string document, text;
  } cases[] = {
      {test::Declared("gb2312", "\x81\x40\x80"), "\x81\x40\x80"},  // beyond the older set, and the euro sign
      {test::Declared("GB_2312-80", "\x81\x7F"), none},
      {test::Declared("x-gbk", "\x81\x40"), "\x81\x40"},
      {test::Declared("GB18030", "\xD6\xD0\x81\x30\x84\x36"), "\xD6\xD0\xA3\xA4"},
      {test::Declared("Big5", longText + "\xA4\xA4"), longText + "\xD6\xD0"},
      {test::Declared("Big5", "\xA4"), none},
      {test::Declared("ISO-8859-1", "\xE9"), "\xA8\xA6"},
      {test::Declared("us-ascii", "x"), "x"},
      {test::Declared("us-ascii", "\xE9"), none},
      {test::Declared("Windows-936", "x"), none},
      {test::Declared("UTF-32", "x"), none},
      {"<?xmlx encoding='big5'?><a/>", ""},  // not a declaration
      {"<?xml", none},
      {"<?xml version='1.0' encoding?><a/>", none},
      {"<?xml version='1.0' encoding=?><a/>", none},
      {"<?xml version='1.0' encoding=gbk?><a/>", none},
      {"<?xml version='1.0' encoding=", none},
      {{"\xFF\xFE\x3C\x00\x00\xD8", 6}, none},  // half of a surrogate pair at the end
  };
  const test::TempFolder folder;
  for (const auto& c : cases) {
    EXPECT_EQ(test::TextOfFile(folder.Write("a.xml", c.document)), c.text.c_str()) << c.document;
  }
}

// The result is right or the failure value, whichever block is refused.
TEST(HeavyXml, RefusedMemoryGivesFailureValues) {
  test::TempFolder folder;
  const std::string path = folder.Write("a.xml",
                                        "<?xml version='1.0' encoding='gb2312'?><a x='0123456789abcdef0123'>"
                                        "<b y='5'>text that is longer than a short string</b><!--c--></a>");
  const auto use = [&] {
    CUtiXmlParser parser(path.c_str());
    CUtiXmlElement* const root = parser.GetRootElement();
    if (!root) return;
    const auto isRightOrEmpty = [](const CString& got, const char* right) {
      EXPECT_TRUE(got == right || got.IsEmpty()) << got.GetString();
    };
    isRightOrEmpty(root->GetText(), "text that is longer than a short string");
    isRightOrEmpty(root->GetAttribute("x"), "0123456789abcdef0123");
    isRightOrEmpty(root->GetChildText("//b[@y='5'][0]"), "text that is longer than a short string");
    const int number = root->GetChildAttributeInt("b", "y"), has = root->IsHasChild("b");
    EXPECT_TRUE((number == 5 || number == 0) && (has == 1 || has == 0)) << number << " " << has;
    CUtiXmlNodeList list;
    CUtiXmlElement item;
    if (root->GetChildNodes(&list)) list.GetItem(0, &item);
    root->GetOneChildNode("b", &item);
    CUtiXmlParser copy("<a/>", 0);
  };
  test::RefuseEach("use", test::AfterRefusal::kUsableSilent, [&] {
    return test::Subject{use, [] { return std::string(); }};
  });
  struct : CUtiXmlParser {
    using CUtiXmlParser::CUtiXmlParser, CUtiXmlParser::Parse;
  } parser("<a/>", 0);
  test::HeapFaults heap(1);  // the document itself cannot be made
  EXPECT_EQ(parser.Parse("<a/>", 0), 0);
  EXPECT_TRUE(heap.Refused());
}

}  // namespace

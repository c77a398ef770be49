// Documents that are large, deep or hostile, and heaps that refuse: what the stand-in for the platform's
// object model promises beyond it.
#include <ZvUtiLib/CUtiXmlNodeList.h>
#include <ZvUtiLib/CUtiXmlParser.h>

#include <pthread.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>

#include "tests/support/HeapFaults.h"
#include "tests/support/RefuseEach.h"
#include "tests/support/TempFolder.h"

namespace {

std::string Repeat(const std::string& text, int count) {
  std::string all;
  for (int i = 0; i < count; ++i) all += text;
  return all;
}

std::string Document(const std::string& declarations, const std::string& root) {
  return "<!DOCTYPE a [" + declarations + "]>" + root;
}

bool Loads(const std::string& text) {
  CUtiXmlParser parser(text.c_str(), 0);
  return parser.GetRootElement() != nullptr;
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
    CUtiXmlParser parser(text.c_str(), 0);
    ASSERT_NE(parser.GetRootElement(), nullptr);
    CUtiXmlElement& root = *parser.GetRootElement();
    EXPECT_EQ(root.GetText(), "x");
    EXPECT_EQ(root.GetChildText("//b"), "x");
    EXPECT_EQ(root.IsHasChild("a//a//a//a//a//none"), 0);
    EXPECT_EQ(root.IsHasChild("//a[.//none]"), 0);
    EXPECT_EQ(root.IsHasChild("//a[.//b/..//b][.//..//b]//b"), 1);
    EXPECT_EQ(root.IsHasChild("//*[../../../none]"), 0);
    CUtiXmlElement element = root;
    int depth = 0;
    for (CUtiXmlElement child; element.GetOneChildNode("a", &child); element = child) ++depth;
    EXPECT_EQ(depth, kDepth - 1);
  });
}

TEST(HeavyXml, ManyChildrenAreReachedByIndex) {
  constexpr int kCount = 100'000;
  CUtiXmlParser parser(("<a>" + Repeat("<b/>", kCount - 1) + "<c k='v'/></a>").c_str(), 0);
  ASSERT_NE(parser.GetRootElement(), nullptr);
  CUtiXmlNodeList list;
  parser.GetRootElement()->GetChildNodes(&list);
  ASSERT_EQ(list.GetLength(), kCount);
  CUtiXmlElement item;
  for (int i = kCount - 1; i >= 0; --i) {
    list.GetItem(i, &item);
    ASSERT_EQ(item.GetNodeName(), i == kCount - 1 ? "c" : "b");
  }
  for (int i = 0; i < 1000; ++i) ASSERT_EQ(parser.GetRootElement()->IsHasChild("b"), 1);
  EXPECT_EQ(parser.GetRootElement()->GetChildAttribute("*[99999]", "k"), "v");
}

TEST(HeavyXml, LongTextIsReadWhole) {
  const std::string text(64 << 20, 'x');
  CUtiXmlParser parser(("<a>" + text + "</a>").c_str(), 0);
  ASSERT_NE(parser.GetRootElement(), nullptr);
  EXPECT_EQ(parser.GetRootElement()->GetText().GetLength(), 64 << 20);
}

TEST(HeavyXml, FlatEntitiesExpandGenerously) {
  const std::string entity = "<!ENTITY e '" + std::string(50'000, 'x') + "'>";
  CUtiXmlParser parser(Document(entity, "<a>" + Repeat("&e;", 2000) + "</a>").c_str(), 0);
  ASSERT_NE(parser.GetRootElement(), nullptr);
  EXPECT_EQ(parser.GetRootElement()->GetText().GetLength(), 100'000'000);
}

// Entities e0 to e<levels>, each of which stands for `fan` of the one before.
std::string Bomb(int levels, int fan) {
  std::string declarations = "<!ENTITY e0 'lol'>";
  for (int i = 1; i <= levels; ++i) {
    declarations +=
        "<!ENTITY e" + std::to_string(i) + " '" + Repeat("&e" + std::to_string(i - 1) + ";", fan) + "'>";
  }
  return declarations;
}

TEST(HeavyXml, EntityBombsAreRefusedCheaply) {
  EXPECT_TRUE(Loads(Document(Bomb(3, 10), "<a>&e3;</a>")));
  const std::string attributes = "<!ATTLIST a b CDATA '&e9;'>";
  const std::string bombs[] = {
      Document(Bomb(9, 10), "<a>&e9;</a>"),
      Document(Bomb(9, 10), "<a b='&e9;'/>"),
      Document(Bomb(9, 10) + attributes, "<a/>"),
      Document(Bomb(30, 2), "<a>&e30;</a>"),
      Document("<!ENTITY e '" + Repeat("<b/>", 10'000) + "'>", "<a>" + Repeat("&e;", 1000) + "</a>"),
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
  const auto chain = [](int length, bool isForward) {
    std::string declarations = "<!ENTITY e0 'x'>";
    for (int i = 0; i < length; ++i) {
      const int number = isForward ? length - i : i + 1;
      declarations += "<!ENTITY e" + std::to_string(number) + " '&e" + std::to_string(number - 1) + ";'>";
    }
    return declarations;
  };
  OnSmallStack([&] {
    EXPECT_TRUE(Loads(Document(chain(256, false), "<a b='&e256;'>&e256;</a>")));
    EXPECT_TRUE(Loads(Document(chain(256, true), "<a b='&e256;'>&e256;</a>")));
    EXPECT_FALSE(Loads(Document(chain(5000, true), "<a>&e5000;</a>")));
    const std::string longest = chain(100'000, false);
    EXPECT_FALSE(Loads(Document(longest, "<a>&e100000;</a>")));
    EXPECT_FALSE(Loads(Document(longest, "<a b='&e100000;'/>")));
  });
}

TEST(HeavyXml, DefaultAttributesAreBounded) {
  const std::string value = "<!ATTLIST b k CDATA '" + std::string(500'000, 'x') + "'>";
  EXPECT_TRUE(Loads(Document(value, "<a><b/><b k=''/></a>")));
  EXPECT_FALSE(Loads(Document(value, "<a>" + Repeat("<b/>", 1000) + "</a>")));
  std::string many;
  for (int i = 0; i < 1000; ++i) many += " k" + std::to_string(i) + " CDATA ''";
  EXPECT_FALSE(Loads(Document("<!ATTLIST b" + many + ">", "<a>" + Repeat("<b/>", 2000) + "</a>")));
}

TEST(HeavyXml, NothingOutsideTheDocumentIsRead) {
  test::TempFolder folder;
  folder.Write("e.xml", "<secret/>");
  folder.Write("d.dtd", "<!ENTITY e 'secret'>");
  const std::string documents[] = {
      Document("<!ENTITY e SYSTEM '" + folder.Path("e.xml") + "'>", "<a>x&e;y</a>"),
      "<!DOCTYPE a SYSTEM '" + folder.Path("d.dtd") + "'><a>x&e;y</a>",
      Document("<!ENTITY % d SYSTEM '" + folder.Path("d.dtd") + "'>%d;", "<a>x&e;y</a>"),
  };
  for (const std::string& document : documents) {
    CUtiXmlParser parser(document.c_str(), 0);
    ASSERT_NE(parser.GetRootElement(), nullptr) << document;
    EXPECT_EQ(parser.GetRootElement()->GetText(), "xy");
    CUtiXmlElement reference = *parser.GetRootElement();
    EXPECT_EQ(parser.GetRootElement()->GetOneChildNode("e", &reference),
              1);  // its reference stays, as a node
    EXPECT_EQ(reference.GetNodeName(), "");
  }
  EXPECT_FALSE(Loads(Document("<!ENTITY e SYSTEM 'e.xml'>", "<a b='&e;'/>")));
}

TEST(HeavyXml, TabsAndLineEndsStayInAttributes) {
  const std::string entity = "<!ENTITY e 'v'><!ATTLIST a d CDATA 'p\tq'>";
  CUtiXmlParser parser(Document(entity,
                                "<a\tx = 'p\tq&#9;&lt;r\r\ns\rt&#x4E2D;\nu v'\n xmlns:p='u\tv' y='1 2' "
                                "p:z='\t&e;' w='\n'/>")
                           .c_str(),
                       0);
  ASSERT_NE(parser.GetRootElement(), nullptr);
  CUtiXmlElement& root = *parser.GetRootElement();
  EXPECT_EQ(root.GetAttribute("x"), "p\tq\t<r\ns\nt\xD6\xD0\nu v");
  EXPECT_EQ(root.GetAttribute("y"), "1 2");
  EXPECT_EQ(root.GetAttribute("w"), "\n");
  EXPECT_EQ(root.GetAttribute("p:z"), " v");  // not beside an entity
  EXPECT_EQ(root.GetAttribute("d"), "p q");
}

TEST(HeavyXml, TabsStayInAttributesOfEveryShape) {
  const struct {
    const char *declarations, *document, *value;
  } cases[] = {
      {"", "<a\tk='p\tq'/>", "p\tq"},
      {"", "<a k='p\t&#xE9;&#x4E2D;&#65;&lt;\tq'/>", "p\t\xA8\xA6\xD6\xD0\x41<\tq"},
      {"", "<a k='p\t&#x1F600;q'/>", "p\t??q"},
      {"<!ATTLIST a k NMTOKENS #IMPLIED>", "<a k='\tp\t q\t'/>", "p q"},  // cut to tokens
      {"<!ATTLIST a k NMTOKENS #IMPLIED>", "<a k='p q\t'/>", "p q"},
      {"<!ENTITY e '&#38;#60;&lt;'>", "<a k='\t&e;'/>", " <<"},  // not beside an entity
      {"<!ENTITY % p 'x'><!ENTITY e 'x'>", "<a k='\t&e;'/>", " x"},
  };
  for (const auto& c : cases) {
    CUtiXmlParser parser(Document(c.declarations, c.document).c_str(), 0);
    ASSERT_NE(parser.GetRootElement(), nullptr) << c.document;
    EXPECT_EQ(parser.GetRootElement()->GetAttribute("k"), c.value) << c.document;
  }
  // An element that stands in an entity is not there in the document.
  CUtiXmlParser parser(Document("<!ENTITY e \"<b k='p\tq'/>\">", "<a>&e;</a>").c_str(), 0);
  ASSERT_NE(parser.GetRootElement(), nullptr);
  EXPECT_EQ(parser.GetRootElement()->GetChildAttribute("b", "k"), "p q");
}

TEST(HeavyXml, DeclaredEncodingsOfOtherPlaces) {
  test::TempFolder folder;
  const auto text = [&](const std::string& encoding, const std::string& bytes) -> std::string {
    const std::string document = "<?xml version='1.0' encoding='" + encoding + "'?><a>" + bytes + "</a>";
    CUtiXmlParser parser(folder.Write("a.xml", document).c_str());
    return parser.GetRootElement() ? parser.GetRootElement()->GetText().GetString() : "(none)";
  };
  for (const char* name : {"gb2312", "GB2312", "gbk", "x-gbk", "GB_2312-80"}) {
    EXPECT_EQ(text(name, "\x81\x40\x80"), "\x81\x40\x80") << name;  // beyond the older set, and the euro sign
    EXPECT_EQ(text(name, "\x81\x7F"), "(none)") << name;
  }
  EXPECT_EQ(text("GB18030", "\xD6\xD0\x81\x30\x84\x36"), "\xD6\xD0\xA3\xA4");
  EXPECT_EQ(text("Big5", "\xA4\xA4"), "\xD6\xD0");
  EXPECT_EQ(text("ISO-8859-1", "\xE9"), "\xA8\xA6");
  EXPECT_EQ(text("us-ascii", "x"), "x");
  EXPECT_EQ(text("us-ascii", "\xE9"), "(none)");
  EXPECT_EQ(text("Big5", "\xA4"), "(none)");
  const std::string big5 = std::string(3000, 'x') + "\xA4\xA4";
  EXPECT_EQ(text("Big5", big5).size(), big5.size());  // more than one step of the converter
  // Declarations that name no encoding, or not as they should: what the parser then makes of UTF-8.
  const std::pair<std::string, bool> declarations[] = {
      {"<?xml version='1.0'?><a/>", true},
      {"<?xml", false},
      {"<?xmlx encoding='big5'?><a/>", true},
      {"<?xml version='1.0' encoding?><a/>", false},
      {"<?xml version='1.0' encoding=?><a/>", false},
      {"<?xml version='1.0' encoding=gbk?><a/>", false},
      {"<?xml version='1.0' encoding=", false},
      {"<?xml version='1.0' encoding='utf-16'?><a/>", false},
  };
  for (const auto& [document, loads] : declarations) {
    CUtiXmlParser parser(folder.Write("a.xml", document).c_str());
    EXPECT_EQ(parser.GetRootElement() != nullptr, loads) << document;
  }
  // Without a byte order mark, UTF-16 has to be declared.
  for (const auto& [document, loads] :
       {std::pair<std::string, bool>("<?xml version='1.0' encoding='utf-16'?><a/>", true),
        {"<?xml version='1.0'?><a/>", false}}) {
    std::string little, big;
    for (const char byte : document) (little += byte) += '\0', (big += '\0') += byte;
    for (const std::string& bytes : {little, big}) {
      CUtiXmlParser parser(folder.Write("a.xml", bytes).c_str());
      EXPECT_EQ(parser.GetRootElement() != nullptr, loads) << document;
    }
    CUtiXmlParser odd(folder.Write("a.xml", little + "x").c_str());
    EXPECT_EQ(odd.GetRootElement(), nullptr);
  }
  for (const char* broken :
       {"\xFF\xFE\x3C\x00\x00\xD8", "\xFF\xFE\x00\xDC\x3C\x00", "\xFE\xFF\xD8\x00\x00\x3C"}) {
    CUtiXmlParser parser(folder.Write("a.xml", std::string(broken, 6)).c_str());
    EXPECT_EQ(parser.GetRootElement(), nullptr);
  }
  EXPECT_EQ(text("Windows-936", "x"), "(none)");
  EXPECT_EQ(text("UTF-32", "x"), "(none)");
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
    const CString text = root->GetText();
    EXPECT_TRUE(text == "text that is longer than a short string" || text.IsEmpty());
    const CString value = root->GetAttribute("x");
    EXPECT_TRUE(value == "0123456789abcdef0123" || value.IsEmpty());
    const CString childText = root->GetChildText("//b[@y='5'][0]");
    EXPECT_TRUE(childText == text || childText.IsEmpty() || text.IsEmpty());
    const int number = root->GetChildAttributeInt("b", "y");
    EXPECT_TRUE(number == 5 || number == 0);
    const int has = root->IsHasChild("b");
    EXPECT_TRUE(has == 1 || has == 0);
    CUtiXmlNodeList list;
    CUtiXmlElement item;
    if (root->GetChildNodes(&list)) list.GetItem(0, &item);
    root->GetOneChildNode("b", &item);
    CUtiXmlParser copy("<a/>", 0);
  };
  test::RefuseEach("use", test::AfterRefusal::kUsableSilent, [&] {
    return test::Subject{use, [] { return std::string(); }};
  });
  test::HeapFaults heap(1);  // the document itself cannot be made
  EXPECT_EQ(CUtiXmlParser("<a/>", 0).GetRootElement(), nullptr);
  EXPECT_TRUE(heap.Refused());
}

}  // namespace

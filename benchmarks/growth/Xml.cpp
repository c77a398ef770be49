// Documents and selections.
#include <memory>

#include <ZvUtiLib/CUtiXmlNodeList.h>
#include <ZvUtiLib/CUtiXmlParser.h>

#include "benchmarks/growth/Growth.h"
#include "tests/support/CollidingKeys.h"

namespace growth {
namespace {

constexpr const char* kGbk = "<?xml version=\"1.0\" encoding=\"gb2312\"?>";

Work Load(const std::string& text) {
  return {text.size(), [text] { CUtiXmlParser(text.c_str(), 0).GetRootElement(); }};
}

Work LoadFile(const std::string& text) {
  const std::string path = WriteFile("a.xml", text);
  return {text.size(), [path] { CUtiXmlParser(path.c_str()).GetRootElement(); }};
}

std::string Nested(std::size_t depth) { return Filled("<a>", depth * 3) + Filled("</a>", depth * 4); }
std::string Wide(std::size_t bytes) { return "<a>" + Filled("<b c='1'>t</b>", bytes) + "</a>"; }

// before, 0, after, before, 1, after, ... between head and tail.
std::string Counted(std::size_t bytes, const std::string& head, const char* before, const char* after,
                    const char* tail) {
  std::string text = head;
  for (std::size_t i = 0; text.size() < bytes; ++i) text += before + std::to_string(i) + after;
  return text + tail;
}

Work Select(const std::string& text, const std::string& selection) {
  auto document = std::make_shared<CUtiXmlParser>(text.c_str(), 0);
  return {text.size(), [document, selection] {
            CUtiXmlElement* const root = document->GetRootElement();
            if (!root) return;
            root->IsHasChild(selection.c_str());
            root->GetChildAttribute(selection.c_str(), "c");
            root->GetChildText(selection.c_str());
          }};
}

Work Walk(const std::string& text) {
  auto document = std::make_shared<CUtiXmlParser>(text.c_str(), 0);
  return {text.size(), [document] {
            CUtiXmlNodeList list;
            document->GetRootElement()->GetChildNodes(&list);
            CUtiXmlElement item;
            for (int i = 0; i < list.GetLength(); ++i) {
              list.GetItem(i, &item);
              item.GetAttributeInt("c");
              item.GetText();
            }
          }};
}

Work TextOf(const std::string& text) {
  auto document = std::make_shared<CUtiXmlParser>(text.c_str(), 0);
  return {text.size(), [document] { document->GetRootElement()->GetText(); }};
}

Work LastAttribute(std::size_t bytes) {
  const std::string text = Counted(bytes, "<a", " k", "='v'", " last='1'/>");
  auto document = std::make_shared<CUtiXmlParser>(text.c_str(), 0);
  return {text.size(), [document] { document->GetRootElement()->GetAttributeInt("last"); }};
}

}  // namespace

std::vector<Shape> XmlShapes() {
  constexpr std::size_t kText = 20'000;
  return {
      {"CUtiXmlParser/wide", kText, [](std::size_t n) { return Load(Wide(n)); }},
      {"CUtiXmlParser/file", kText, [](std::size_t n) { return LoadFile(Wide(n)); }},
      {"CUtiXmlParser/deep", 3000, [](std::size_t n) { return Load(Nested(n)); }},
      {"CUtiXmlParser/unclosed", kText, [](std::size_t n) { return Load(Filled("<a>", n)); }, 900},
      {"CUtiXmlParser/one-text", kText,
       [](std::size_t n) { return Load("<a>" + std::string(n, 't') + "</a>"); }},
      {"CUtiXmlParser/gbk", kText,
       [](std::size_t n) { return Load(kGbk + ("<a>" + Filled("\xB7\xE3", n) + "</a>")); }},
      {"CUtiXmlParser/half-characters", kText,
       [](std::size_t n) { return Load(kGbk + ("<a>" + Filled("\x81 ", n) + "</a>")); }},
      {"CUtiXmlParser/many-names", kText,
       [](std::size_t n) { return Load(Counted(n, "<a>", "<n", "/>", "</a>")); }},
      {"CUtiXmlParser/long-names", kText,
       [](std::size_t n) {
         const std::string name(n / 8, 'n');
         return Load("<a>" + Filled("<" + name + "/>", n) + "</a>");
       }},
      {"CUtiXmlParser/attributes", kText,
       [](std::size_t n) { return Load(Counted(n, "<a", " k", "='v'", "/>")); }},
      {"CUtiXmlParser/equal-attributes", kText,
       [](std::size_t n) { return Load("<a>" + Filled("<b k='v' l='w'/>", n) + "</a>"); }},
      {"CUtiXmlParser/long-namespace", kText,
       [](std::size_t n) {
         return Load("<a xmlns='" + std::string(n, 'u') + "'>" + Filled("<b c='1'/>", n) + "</a>");
       }},
      {"CUtiXmlParser/prefixed-attributes", kText,
       [](std::size_t n) {
         return Load(Counted(n, "<a xmlns:p='" + std::string(n, 'u') + "'", " p:k", "=''", "/>"));
       }},
      {"CUtiXmlParser/colliding-names", 1000,
       [](std::size_t n) {
         std::string text = "<a>";
         for (const std::string& key : test::CollidingKeys(n)) text += "<n" + key + "/>";
         return Load(text + "</a>");
       }},
      {"CUtiXmlParser/namespaces", kText,
       [](std::size_t n) { return Load(Counted(n, "<a", " xmlns:p", "='u'", "/>")); }},
      {"CUtiXmlParser/nested-namespaces", 2000,
       [](std::size_t n) { return Load(Counted(n * 16, "", "<a xmlns:p", "='u'>", "<b/>")); }},
      {"CUtiXmlParser/references", kText,
       [](std::size_t n) { return Load("<a>" + Filled("&amp;&#x20;", n) + "</a>"); }},
      {"CUtiXmlParser/entities", kText,
       [](std::size_t n) { return Load("<!DOCTYPE a [<!ENTITY e 'xy'>]><a>" + Filled("&e;", n) + "</a>"); }},
      {"CUtiXmlParser/declarations", kText,
       [](std::size_t n) { return Load(Counted(n, "<!DOCTYPE a [", "<!ENTITY e", " ''>", "]><a/>")); }},
      {"CUtiXmlParser/external-entities", kText,
       [](std::size_t n) {
         return Load(Counted(n, "<!DOCTYPE a [<!ENTITY x SYSTEM 'x'>", "<!ENTITY e", " ''>", "]><a>") +
                     Filled("&x;", n) + "</a>");
       }},
      {"CUtiXmlParser/declared-attributes", kText,
       [](std::size_t n) {
         return Load(Counted(n, "<!DOCTYPE a [<!ATTLIST a", " k", " CDATA ''", ">]><a/>"));
       }},
      {"CUtiXmlParser/defaults", kText,
       [](std::size_t n) {
         return Load("<!DOCTYPE a [<!ATTLIST b k CDATA 'v' l CDATA 'w'>]><a>" + Filled("<b/>", n) + "</a>");
       }},
      {"CUtiXmlParser/comments", kText,
       [](std::size_t n) { return Load("<a>" + Filled("<!--c-->", n) + "</a>"); }},
      {"CUtiXmlParser/sections", kText,
       [](std::size_t n) { return Load("<a>" + Filled("<![CDATA[c]]>", n) + "</a>"); }},
      {"CUtiXmlParser/instructions", kText,
       [](std::size_t n) { return Load("<a>" + Filled("<?p i?>", n) + "</a>"); }},
      {"CUtiXmlElement::IsHasChild/last", kText, [](std::size_t n) { return Select(Wide(n), "b[@c='2']"); }},
      {"CUtiXmlElement::IsHasChild/everywhere", 2000,
       [](std::size_t n) { return Select(Nested(n), "//*//*//*//none"); }},
      {"CUtiXmlElement::IsHasChild/parents", 2000,
       [](std::size_t n) { return Select(Nested(n), "//a/..//a/../none"); }},
      {"CUtiXmlElement::IsHasChild/nested-filters", 2000,
       [](std::size_t n) { return Select(Nested(n), "//*[.//*[.//*[.//none]]]"); }},
      {"CUtiXmlElement::IsHasChild/filters", 500,
       [](std::size_t n) { return Select(Nested(n), "//a[" + Filled("a/", 62) + "b]"); }, 3000},
      {"CUtiXmlElement::IsHasChild/long-selection", kText,
       [](std::size_t n) { return Select("<a>" + std::string(n, 't') + "</a>", std::string(n, 'n')); }},
      {"CUtiXmlElement::GetText/pieces", kText,
       [](std::size_t n) { return TextOf("<a>" + Filled("t<b>u</b>", n) + "</a>"); }},
      {"CUtiXmlElement::GetAttribute/last", kText, LastAttribute},
      {"CUtiXmlNodeList::GetItem/each", kText, [](std::size_t n) { return Walk(Wide(n)); }},
      {"CUtiXmlNodeList::GetItem/mixed", kText,
       [](std::size_t n) { return Walk("<a>" + Filled("t<b c='1'/><!--c-->", n) + "</a>"); }},
  };
}

}  // namespace growth

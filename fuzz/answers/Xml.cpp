// Documents: generated ones that are well-formed, and what the views of them answer.
//
// White space and neighbouring CDATA sections are left out: in them Wine's object model differs from the
// system's.
#include <ZvUtiLib/CUtiXmlNodeList.h>
#include <ZvUtiLib/CUtiXmlParser.h>

#include "fuzz/answers/Properties.h"

namespace answers {
namespace {

constexpr const char* kNames[] = {"a", "b", "Item", "\xB7\xE3\xD2\xB6", "c-d", "e.f"};
constexpr const char* kTexts[] = {"t",
                                  "12",
                                  "-3",
                                  "&amp;",
                                  "&lt;",
                                  "&#65;",
                                  "&#x4E2D;",
                                  "\xD6\xD0",
                                  "\"",
                                  "0x10",
                                  "<![CDATA[<x>]]><!-- c -->",
                                  "<!-- c -->",
                                  "<?p i?>"};
constexpr const char* kValues[] = {"1", "-20", "x", " ", "&quot;", "&#10;", "\xD6\xD0", "4294967296", ""};
constexpr const char* kSelections[] = {"a",     "b", "*",  "//a", "a/b", "*/*", "//Item[@k='1']",
                                       "b[@l]", ".", "..", "none"};

void Write(Random& random, std::string& out, unsigned depth) {
  const std::string name = random.Of(kNames);
  out += "<" + name;
  if (random.Below(2) == 0) out += std::string(" k='") + random.Of(kValues) + "'";
  if (random.Below(3) == 0) out += std::string(" l='") + random.Of(kValues) + "'";
  out += ">";
  for (unsigned count = depth > 0 ? random.Below(5) : 0; count > 0; --count) {
    if (random.Below(2) == 0) out += random.Text(kTexts, 3);
    Write(random, out, depth - 1);
  }
  if (random.Below(2) == 0) out += random.Text(kTexts, 3);
  out += "</" + name + ">";
}

void Show(const CUtiXmlElement& element, Report& report, unsigned depth) {
  report << element.GetNodeName().GetString() << element.GetText().GetString();
  for (const char* name : {"k", "l", "m"})
    report << element.GetAttribute(name).GetString() << element.GetAttributeInt(name);
  CUtiXmlNodeList list;
  report << element.GetChildNodes(&list) << list.GetLength();
  for (int i = 0; depth > 0 && i < list.GetLength(); ++i) {
    CUtiXmlElement child;
    report << list.GetItem(i, &child);
    Show(child, report, depth - 1);
  }
}

}  // namespace

void AskXml(Random& random, Report& report) {
  std::string text;
  Write(random, text, 3);
  report << text;
  CUtiXmlParser document(text.c_str(), 0);
  CUtiXmlElement* const root = document.GetRootElement();
  if (!root) {
    report << "refused";
    return;
  }
  Show(*root, report, 3);
  for (const char* selection : kSelections) {
    CUtiXmlElement child;
    report << root->IsHasChild(selection) << root->GetChildText(selection).GetString()
           << root->GetChildAttribute(selection, "k").GetString()
           << root->GetChildAttributeInt(selection, "k") << root->GetOneChildNode(selection, &child)
           << child.GetNodeName().GetString();
  }
}

}  // namespace answers

// A small grammar that makes parts of XML documents at random, most of them well-formed, and selections.
#pragma once

#include <initializer_list>
#include <random>
#include <string>
#include <string_view>

namespace fuzz {

class XmlGrammar {
 public:
  explicit XmlGrammar(unsigned seed) : random_(seed) {}

  std::size_t Below(std::size_t end) { return random_() % (end > 0 ? end : 1); }
  std::string Any(std::initializer_list<std::string_view> texts) {
    return std::string(texts.begin()[Below(texts.size())]);
  }
  std::string Name() {
    return Any({"a", "b", "b", "k", "n", "p:a", "q:b", "\xD6\xD0", "A-1.2", "xml:a", "_"});
  }

  std::string Text() {
    return Any({"x", " ", "\r\n\t", "12", "&amp;", "&lt;", "&#20013;", "&#x4E2D;", "&#0;", "&e;", "&f;",
                "&none;", "\xD6\xD0\xB9\xFA", "\x81", "]]", "]]>", "\xE4\xB8\xAD", "&#xD800;", "&#x10000;"});
  }
  std::string Value() {
    const std::string quote = Any({"'", "\""});
    return quote +
           (Below(2) != 0 ? Text() : Any({"v", "1", "-1", "u", "preserve", "default", "2147483648", ""})) +
           quote;
  }
  std::string Attribute() {
    return " " +
           (Below(2) != 0 ? Name() : Any({"k", "n", "p:k", "xmlns", "xmlns:p", "xmlns:q", "xml:space"})) +
           "=" + Value();
  }
  std::string StartTag(const std::string& name, bool isEmpty = false) {
    std::string tag = "<" + name;
    while (Below(3) == 0) tag += Attribute();
    return tag + (isEmpty ? "/>" : ">");
  }
  std::string Tree(int depth) {
    switch (Below(8)) {
      case 0:
        return "<![CDATA[" + Text() + "]]>";
      case 1:
        return "<!--" + Any({"c", "", "-", "&e;"}) + "-->";
      case 2:
        return "<?" + Any({"t", "xml", "a:b"}) + " d?>";
      case 3:
      case 4:
        return Text();
      case 5:
        return StartTag(Name(), true);
      default:
        return Element(depth);
    }
  }
  std::string Element(int depth) {
    const std::string name = Name();
    std::string all = StartTag(name);
    for (std::size_t left = depth > 0 ? Below(4) : 0; left > 0; --left) all += Tree(depth - 1);
    return all + "</" + name + ">";
  }
  std::string Declaration() {
    static constexpr auto kVersion = "<?xml version='1.0'";
    std::string all = kVersion;
    if (Below(4) != 0) {
      all += " encoding='" +
             Any({"gb2312", "GBK", "GB18030", "Big5", "UTF-8", "UTF-16", "utf-16le", "iso-8859-1", "us-ascii",
                  "windows-1252", "shift_jis", "none"}) +
             "'";
    }
    return all + Any({"", "", " standalone='yes'", " standalone='no'"}) + "?>";
  }
  std::string Type() {
    std::string all = "<!DOCTYPE " + Name() + Any({"", "", " SYSTEM 's'", " PUBLIC 'p' 's'"}) + " [";
    for (std::size_t left = Below(5); left > 0; --left) {
      const std::string entity = Any({"e", "f", "% d"}), name = Name();
      switch (Below(6)) {
        case 0:
          all += "<!ATTLIST " + name + Attribute().substr(0, 2) + " " +
                 Any({"CDATA ", "ID ", "(v|w) ", "NMTOKENS "}) +
                 Any({"#REQUIRED", "#IMPLIED", "'v'", "#FIXED 'v'", "'&e;'"}) + ">";
          break;
        case 1:
          all += "<!ELEMENT " + name + Any({" ANY", " EMPTY", " (#PCDATA|a)*", " (a,b?)"}) + ">";
          break;
        case 2:
          all += Any({"%d;", "<!NOTATION n SYSTEM 's'>", "<!ENTITY x SYSTEM 's'>", "<!--c-->", "<?t d?>"});
          break;
        default:
          all += "<!ENTITY " + entity + " '" +
                 (Below(2) != 0 ? Text() : Any({"<a>", "<b/>", "&f;&f;", "&#38;e;", "<!--"})) + "'>";
      }
    }
    return all + "]>";
  }
  std::string Selection() {
    std::string all = Any({"", "", "/", "//"});
    do {
      all += Below(3) == 0 ? Any({"*", ".", "..", "text()", "comment()", "node()", "@k", "@*"}) : Name();
      while (Below(4) == 0)
        all += Any({"[0]", "[1]", "[.//b]", "[@k='v']", "[@n=\"1\"]", "[b/..]", "[a[b]]", "[text()]"});
      all += Any({"/", "//", "/", " / "});
    } while (Below(2) != 0);
    return all.substr(0, all.find_last_not_of("/ ") + 1);
  }

 private:
  std::minstd_rand random_;
};

}  // namespace fuzz

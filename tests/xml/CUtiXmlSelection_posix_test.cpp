// Selections that other systems answer in other ways, or crash on.
#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "tests/xml/Documents.h"

namespace {

using test::RootOf;

TEST(CUtiXmlSelection, MalformedOrUnknownFormsMatchNothing) {
  const CUtiXmlElement root = RootOf("<a k='1'><a k='1'><b/>t</a><b/></a>");
  const char* const texts[] = {// Not whole, or of characters without a meaning.
                               "a/", "a//", "//", "///a", "a[", "a[]", "a]", "a[b", "@", "a:", ":a", "a:b:c",
                               "a::b", "&", "%", "#", "-", "./", "a b", "a#", "a|b", "1a", "...", ".a",
                               // Filters that are neither an index, nor a path, nor a value.
                               "a[-1]", "a[1a]", "a[0 1]", "a[@]", "a[@k=]", "a[@k='1]", "a[@k=1]",
                               "a[b='1']", "a[a/@k='1']", "a['1']", "a()", "node(", "text(1)", "position()",
                               "a[position()=1]", "a[end()]", "a[index()=0]", "a[@k $eq$ '1']",
                               // What larger languages have.
                               "self::a", "@*", "p:*", ".[0]", "..[0]", "a[//@k='1']", "a/ /b", "@text()",
                               "a[@k='1'", "\xA3\xE1", "a$", "a[b]]", "(a)", "a,b", "a[not(b)]"};
  for (const char* text : texts) EXPECT_EQ(root.IsHasChild(text), 0) << text;
  EXPECT_EQ(root.IsHasChild(" "), 0);
}

TEST(CUtiXmlSelection, ReachesAttributesAndTheirElements) {
  const CUtiXmlElement root =
      RootOf("<a _k='1' k-2.x='2'><b k='v'>t<!--z--><c/></b><b/><d><![CDATA[c]]></d><e k=''/></a>");
  const char* const found[] = {// Each finds something.
                               "@_k",        "@k-2.x",   "/",           "b[/]",          "b[/a/b]",
                               "d/text()",   "b/text()", "b/comment()", "@_k/../b",      "@_k[.]",
                               "@_k[..]",    "e[@k/..]", "b[.//../c]",  "b[@k/../c]",    "@_k[.//.]",
                               "@_k[.//..]", "b[1]",     ".//@k",       "b[@k = \"v\"]", "b[ 0 ]"};
  for (const char* text : found) EXPECT_EQ(root.IsHasChild(text), 1) << text;
  const char* const notFound[] = {
      // Each finds nothing.
      "b[/x]",   "b[99999999999]", "b[1",       "b[1 ] [",     "b[@k[0]='v']",     "b[@k=",
      "@_k//b",  "@_k/@_k",        "text()/@k", "@_k[@k='1']", "b/text()[@k='v']", "b[1][.//../c]",
      "b[c/@k]", "@_k/x",          "b[2]",      "@1"};
  for (const char* text : notFound) EXPECT_EQ(root.IsHasChild(text), 0) << text;
}

TEST(CUtiXmlSelection, LongOnesWorkAndDeepOnesAreRefused) {
  const CUtiXmlElement root = RootOf("<r><a/></r>");
  std::string path = "a", filters = "a";
  for (int i = 0; i < 10000; ++i) path += "/../a", filters += "[../a]";
  EXPECT_EQ(root.IsHasChild(path.c_str()), 1);
  EXPECT_EQ(root.IsHasChild(filters.c_str()), 1);
  // Paths in filters within each other may have 64 steps together, in filters beside each other any number.
  const auto there = [](int steps) {
    std::string all = "..";
    for (int i = 1; i < steps; ++i) all += i % 2 == 0 ? "/.." : "/a";
    return all;
  };
  for (const auto& [steps, found] : {std::pair(64, 1), std::pair(65, 0), std::pair(2000, 0)}) {
    std::string one("["), two("[../a[");
    one.append(there(steps)).append("]");
    two.append(there(steps - 2)).append("]]");
    for (const std::string& filter : {one, two, two + one}) {
      EXPECT_EQ(root.IsHasChild(("a" + filter).c_str()), found) << filter;
    }
  }
  for (const auto& [depth, found] : {std::pair(20, 1), std::pair(100000, 0)}) {
    std::string nested = "a";
    for (int i = 0; i < depth; ++i) nested += "[../a";
    nested.append(static_cast<std::size_t>(depth), ']');
    EXPECT_EQ(root.IsHasChild(nested.c_str()), found) << depth;
  }
}

}  // namespace

#include <ZvUtiLib/platform/CString.h>

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <string>

#include "tests/support/Order.h"

namespace {

TEST(CString, TakesPartsWithinItsBounds) {
  const CString text("abcdef");
  EXPECT_EQ(text.Left(2), "ab");
  EXPECT_EQ(text.Left(-1), "");
  EXPECT_EQ(text.Left(99), "abcdef");
  EXPECT_EQ(text.Right(2), "ef");
  EXPECT_EQ(text.Right(INT_MAX), "abcdef");
  EXPECT_EQ(text.Right(-1), "");
  EXPECT_EQ(text.Mid(2), "cdef");
  EXPECT_EQ(text.Mid(2, 3), "cde");
  EXPECT_EQ(text.Mid(-3, 2), "ab");
  EXPECT_EQ(text.Mid(9, 2), "");
  EXPECT_EQ(text.Mid(4, INT_MAX), "ef");
  EXPECT_EQ(text[5], 'f');
  EXPECT_EQ(text.GetAt(6), '\0');
}

TEST(CString, NullTextsAreEmptyAndNegativeCountsZero) {
  const char* null = nullptr;
  CString text(null);
  EXPECT_TRUE(text.IsEmpty());
  EXPECT_TRUE(text == null);
  text = "x";
  text += null;
  text.Append(null, 5);
  text.Append("abc", 2);
  EXPECT_EQ(text, "xab");
  EXPECT_EQ(text.Find(null), -1);
  text = null;
  EXPECT_EQ(text.GetLength(), 0);
  EXPECT_EQ(CString("abc", 2) + CString("abc", -1) + CString('x', 3) + CString('x', -1), "abxxx");
  EXPECT_EQ("a" + CString("b") + 'c', "abc");
}

TEST(CString, AssignsAppendsAndFormatsFromItself) {
  CString text("abcdef");
  text = static_cast<const char*>(text) + 3;
  EXPECT_EQ(text, "def");
  text += static_cast<const char*>(text);
  EXPECT_EQ(text, "defdef");
  text.Format("%s-%d", static_cast<const char*>(text), 7);
  EXPECT_EQ(text, "defdef-7");
  text.Format("%s, %s", text, std::string("x"));
  EXPECT_EQ(text, "defdef-7, x");
  text.SetAt(6, '+');
  EXPECT_EQ(text, "defdef+7, x");
}

TEST(CString, ComparesBytesAsUnsigned) {
  const struct {
    const char *a, *b;
    int order;
  } cases[] = {{"a", "\xB0\xA1", -1}, {"b", "abc", 1}, {"a", "a", 0}, {"a", "A", 1}, {"a", "ab", -1}};
  for (const auto& c : cases) {
    EXPECT_EQ(test::OrderOf(CString(c.a), CString(c.b)), c.order) << c.a << " " << c.b;
    EXPECT_EQ(test::OrderOf(CString(c.a), c.b), c.order) << c.a << " " << c.b;
    EXPECT_EQ(test::OrderOf(c.a, CString(c.b)), c.order) << c.a << " " << c.b;
  }
  EXPECT_EQ(CString("aZ\x81z").CompareNoCase("Az\x81z"), 0);
  EXPECT_NE(CString("\x81z").CompareNoCase("\x81Z"), 0);
}

TEST(CString, FindsAndReplacesByCharacters) {
  const CString text("a\x81\\b\\c");  // the first backslash is the second byte of a character
  EXPECT_EQ(text.Find('\\'), 4);
  EXPECT_EQ(text.Find('\\', -1), -1);
  EXPECT_EQ(text.ReverseFind('\\'), 4);
  EXPECT_EQ(text.Find("c", 5), 5);
  EXPECT_EQ(text.Find("c", 7), -1);
  EXPECT_EQ(text.Find("a", -1), -1);
  CString path(text);
  EXPECT_EQ(path.Replace('\\', '/'), 1);
  EXPECT_EQ(path, "a\x81\\b/c");
}

TEST(CString, BufferIsWrittenInPlace) {
  CString text("kept");
  text.GetBuffer(1);
  text.ReleaseBuffer();
  EXPECT_EQ(text, "kept");
  std::memcpy(text.GetBuffer(10), " a b\t\r\n", 8);
  text.ReleaseBuffer();
  EXPECT_EQ(text.GetLength(), 7);
  EXPECT_EQ(text.Trim(), "a b");
}

}  // namespace

#include "platform/win32/Clipboard.h"

#include <gtest/gtest.h>

#include <thread>

#include "platform/win32/Kernel.h"

namespace {

// What all four calls answer on a thread of their own, as digits.
int OnAnotherThread() {
  int answers = 0;
  std::thread([&] {
    answers = OpenClipboard(nullptr) * 1000 + EmptyClipboard() * 100 + (GetClipboardData(CF_TEXT) ? 10 : 0) +
              CloseClipboard();
  }).join();
  return answers;
}

TEST(Clipboard, BelongsToTheThreadThatOpenedIt) {
  HGLOBAL block = GlobalAlloc(0, 1);
  EXPECT_EQ(SetClipboardData(CF_TEXT, block), nullptr);  // not open
  ASSERT_EQ(OpenClipboard(nullptr), 1);
  EXPECT_EQ(EmptyClipboard(), 1);  // other tests may have left a text
  EXPECT_EQ(SetClipboardData(CF_TEXT, nullptr), nullptr);
  EXPECT_EQ(IsClipboardFormatAvailable(CF_TEXT), 0);
  EXPECT_EQ(SetClipboardData(CF_TEXT, block), block);
  EXPECT_EQ(OnAnotherThread(), 0);
  EXPECT_EQ(IsClipboardFormatAvailable(CF_TEXT), 1);
  EXPECT_EQ(IsClipboardFormatAvailable(2), 0);
  EXPECT_EQ(GetClipboardData(CF_TEXT), block);
  EXPECT_EQ(EmptyClipboard(), 1);
  EXPECT_EQ(CloseClipboard(), 1);
  EXPECT_EQ(OnAnotherThread(), 1101);
}

}  // namespace

#include "platform/win32/Clipboard.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <thread>

#include "platform/win32/Kernel.h"

namespace {

// Whether another thread can open the clipboard, empty it, get its text and close it.
std::array<bool, 4> CanAnotherThread() {
  std::array<bool, 4> can{};
  std::thread([&] {
    can = {OpenClipboard(nullptr) == 1, EmptyClipboard() == 1, GetClipboardData(CF_TEXT) != nullptr,
           CloseClipboard() == 1};
  }).join();
  return can;
}

TEST(Clipboard, BelongsToTheThreadThatOpenedIt) {
  HGLOBAL block = GlobalAlloc(0, 1);
  EXPECT_EQ(SetClipboardData(CF_TEXT, block), nullptr);  // not open
  ASSERT_EQ(OpenClipboard(nullptr), 1);
  EXPECT_EQ(EmptyClipboard(), 1);  // other tests may have left a text
  EXPECT_EQ(SetClipboardData(CF_TEXT, nullptr), nullptr);
  EXPECT_EQ(IsClipboardFormatAvailable(CF_TEXT), 0);
  EXPECT_EQ(SetClipboardData(CF_TEXT, block), block);
  EXPECT_THAT(CanAnotherThread(), testing::ElementsAre(false, false, false, false));
  EXPECT_EQ(IsClipboardFormatAvailable(CF_TEXT), 1);
  EXPECT_EQ(IsClipboardFormatAvailable(2), 0);
  EXPECT_EQ(GetClipboardData(CF_TEXT), block);
  EXPECT_EQ(EmptyClipboard(), 1);
  EXPECT_EQ(CloseClipboard(), 1);
  EXPECT_THAT(CanAnotherThread(), testing::ElementsAre(true, true, false, true));
}

}  // namespace

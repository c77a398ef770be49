#include <ZvUtiLib/CUtiBase.h>
#include <ZvUtiLib/CUtiBlackList.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "tests/support/TempFolder.h"

namespace {

TEST(CUtiBase, NamesKeepToTheirLengths) {
  for (std::size_t length = 0; length <= 32; ++length) {
    const std::string name(length, '_');
    EXPECT_EQ(CUtiBase::CheckAccountValid(name.c_str()), length >= 4 && length <= 16 ? 1 : 0) << length;
    EXPECT_EQ(CUtiBase::CheckPasswdValid(name.c_str()), length >= 6 && length <= 20 ? 1 : 0) << length;
  }
  EXPECT_EQ(CUtiBase::CheckAccountValid(nullptr), 0);
  EXPECT_EQ(CUtiBase::CheckPasswdValid(nullptr), 0);
}

TEST(CUtiBase, NamesAndDigitsAreCheckedByteByByte) {
  constexpr std::string_view kDigits = "0123456789";
  const std::string allowed = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ_" + std::string(kDigits);
  for (int value = 1; value < 256; ++value) {
    const char byte = static_cast<char>(value);
    const int isName = allowed.find(byte) != std::string::npos;
    const int isDigit = kDigits.find(byte) != std::string_view::npos;
    for (std::size_t place = 0; place < 6; ++place) {
      std::string text = "123456";
      text[place] = byte;
      ASSERT_EQ(CUtiBase::CheckAccountValid(text.c_str()), isName) << value << " at " << place;
      ASSERT_EQ(CUtiBase::CheckPasswdValid(text.c_str()), isName) << value << " at " << place;
      ASSERT_EQ(CUtiBase::IsDigit(CString(text.c_str())), isDigit) << value << " at " << place;
    }
    ASSERT_EQ(CUtiBase::IsDigit(byte), isDigit) << value;
  }
  EXPECT_EQ(CUtiBase::IsDigit(""), 1);
  EXPECT_EQ(CUtiBase::IsDigit(CString("1\0x", 2)), 0);
}

TEST(CUtiBase, ChatIsJudgedByAListThatNothingLoads) {
  const test::TempFolder folder;
  CUtiBlackList loaded;
  ASSERT_EQ(loaded.Load(folder.Write("words", "bad\n").c_str()), 1);
  ASSERT_EQ(loaded.IsMatched("a bad word"), 1);
  EXPECT_EQ(CUtiBase::IsChatValid("a bad word"), 1);
  EXPECT_EQ(CUtiBase::IsChatValid(nullptr), 1);
}

}  // namespace

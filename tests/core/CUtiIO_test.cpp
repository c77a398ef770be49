#include <ZvUtiLib/CUtiIO.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "tests/support/DoorsGuard.h"
#include "tests/support/TempFolder.h"

namespace {

using namespace std::string_literals;

TEST(CUtiIO, JoinsTheProgramsFolderTheCodeNameAndTheFile) {
  test::DoorsGuard doors;
  doors->applicationFolder = [] { return "C:\\lobby/"s; };
  EXPECT_EQ(CUtiIO::GetGamePath(1, "Rank.ini"), "C:\\lobby/Maple\\Rank.ini");
  EXPECT_EQ(CUtiIO::GetGamePath(1, nullptr), "C:\\lobby/Maple\\");
  EXPECT_EQ(CUtiIO::GetGamePath(0xFFFFFFFF, "../Rank.ini"), "C:\\lobby/\\../Rank.ini");
}

TEST(CUtiIO, ReadsTheFirstFourBytesLeastFirst) {
  const test::TempFolder folder;
  const std::pair<std::string, unsigned long> cases[] = {
      {"", 0},
      {"\x01\x02\x03", 0},
      {"\x01\x02\x03\xF4", 0xF4030201},
      {"\0\0\0\x80"s, 0x80000000},
      {"\x1A\r\n\xFF\x05", 0xFF0A0D1A},  // bytes as they are, and only the first four
  };
  for (const auto& [bytes, word] : cases) {
    EXPECT_EQ(CUtiIO::ReadDWordFromFile(folder.Write("word", bytes).c_str()), word) << bytes.size();
  }
  EXPECT_EQ(CUtiIO::ReadDWordFromFile((folder.Path() + "\\word").c_str()), 0xFF0A0D1A);
  EXPECT_EQ(CUtiIO::ReadDWordFromFile(folder.Path().c_str()), 0u);
  EXPECT_EQ(CUtiIO::ReadDWordFromFile(folder.Path("missing").c_str()), 0u);
  EXPECT_EQ(CUtiIO::ReadDWordFromFile(nullptr), 0u);
}

}  // namespace

#include "platform/mfc/CFile.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/TempFolder.h"
#include "tests/support/UnreadableFile.h"

namespace {

using namespace std::string_literals;

template <class File>
struct Unreadable : File {
  explicit Unreadable(const std::string& path) { this->file_ = test::OpenUnreadable(path.c_str()); }
};

TEST(CFile, ReadsBytesAsTheyStand) {
  const test::TempFolder folder;
  const std::string bytes = "\x1A\r\n\0x"s;
  CFile file;
  ASSERT_EQ(file.Open(folder.Write("file", bytes).c_str(), CFile::modeRead), 1);
  EXPECT_EQ(file.GetLength(), 5u);
  char read[8] = {};
  EXPECT_EQ(file.Read(read, 2), 2u);
  EXPECT_EQ(file.Read(read + 2, 6), 3u);
  EXPECT_EQ(std::string(read, 5), bytes);
}

TEST(CFile, ThrowsWhereThereIsNothingToRead) {
  const test::TempFolder folder;
  char byte = 0;
  CString line("kept");
  EXPECT_THROW(Unreadable<CFile>(folder.Path("a")).Read(&byte, 1), CFileException);
  EXPECT_THROW(Unreadable<CStdioFile>(folder.Path("b")).ReadString(line), CFileException);
  EXPECT_THROW(CStdioFile().ReadString(line), CFileException);
  EXPECT_THROW(CFile().GetLength(), CFileException);
  EXPECT_EQ(line, "kept");
}

TEST(CStdioFile, EndsLinesAtLineFeedsAndTextAtItsMark) {
  const test::TempFolder folder;
  const std::string longLine(1'000'000, 'x');
  using Lines = std::vector<std::string>;
  const struct {
    std::string bytes;
    Lines lines;
    unsigned flags = CFile::typeText;
  } cases[] = {
      {"", {}},
      {"a", {"a"}},
      {"a\r\n\nb\n", {"a", "", "b"}},
      {"a\rb\r", {"a\rb\r"}},
      {"a\r\r\n", {"a\r"}},
      {"a\0b\nc\0"s, {"a", "c"}},
      {"\x81\n\xFF\n", {"\x81", "\xFF"}},  // neither forms a character with the line feed
      {longLine + "\r\n" + longLine, {longLine, longLine}},
      {"\x1A\n", {}},
      {"a\nb\x1A\nc", {"a", "b"}, CFile::typeText | CFile::shareDenyNone},
      {"a\nb\x1A\nc", {"a", "b\x1A", "c"}, CFile::modeRead},
  };
  for (const auto& c : cases) {
    CStdioFile file;
    ASSERT_EQ(file.Open(folder.Write("lines", c.bytes).c_str(), c.flags), 1);
    Lines lines;
    CString line;
    while (file.ReadString(line)) lines.emplace_back(line.GetString());
    EXPECT_TRUE(lines == c.lines) << c.bytes.substr(0, 20);
    EXPECT_EQ(file.ReadString(line), 0) << "the end must be final";
    EXPECT_EQ(line, "");
  }
}

}  // namespace

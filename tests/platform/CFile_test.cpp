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

TEST(CFile, OpensFilesButNoFoldersAndReadsBytesAsTheyStand) {
  const test::TempFolder folder;
  const std::string bytes = "\x1A\r\n\0x"s, missing = folder.Path("missing"), self = folder.Path();
  folder.Write("sub/file", bytes);
  CFile file;
  for (const char* path : {self.c_str(), missing.c_str(), "", static_cast<const char*>(nullptr)}) {
    EXPECT_EQ(file.Open(path, CFile::modeRead), 0);
  }
  ASSERT_EQ(file.Open(folder.Path("sub\\file").c_str(), CFile::modeRead), 1);
  EXPECT_EQ(file.GetLength(), 5u);
  char read[8] = {};
  EXPECT_EQ(file.Read(read, 2), 2u);
  EXPECT_EQ(file.Read(read + 2, 6), 3u);
  EXPECT_EQ(std::string(read, 5), bytes);
  EXPECT_EQ(file.Read(read, 1), 0u);
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
  const struct {
    std::string bytes;
    unsigned flags;
    std::vector<std::string> lines;
  } cases[] = {
      {"", CFile::typeText, {}},
      {"a", CFile::typeText, {"a"}},
      {"a\r\n\nb\n", CFile::typeText, {"a", "", "b"}},
      {"a\rb\r", CFile::typeText, {"a\rb\r"}},
      {"a\r\r\n", CFile::typeText, {"a\r"}},
      {"a\0b\nc\0"s, CFile::typeText, {"a", "c"}},
      {"\x81\n\xFF\n", CFile::typeText, {"\x81", "\xFF"}},  // neither a pair with the line end nor its end
      {longLine + "\r\n" + longLine, CFile::typeText, {longLine, longLine}},
      {"\x1A\n", CFile::typeText, {}},
      {"a\nb\x1A\nc", CFile::typeText | CFile::shareDenyNone, {"a", "b"}},
      {"a\nb\x1A\nc", CFile::modeRead, {"a", "b\x1A", "c"}},
  };
  for (const auto& c : cases) {
    CStdioFile file;
    ASSERT_EQ(file.Open(folder.Write("lines", c.bytes).c_str(), c.flags), 1);
    std::vector<std::string> lines;
    CString line;
    while (file.ReadString(line)) lines.emplace_back(line.GetString());
    EXPECT_TRUE(lines == c.lines) << c.bytes.substr(0, 20);
    EXPECT_EQ(file.ReadString(line), 0) << "the end must be final";
    EXPECT_EQ(line, "");
  }
}

}  // namespace

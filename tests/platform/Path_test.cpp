#include "platform/Path.h"

#include <ZvUtiLib/platform/CKxIOUti.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/support/TempFolder.h"

namespace {

TEST(Path, FolderEndsWithTheLastSeparatorOfEitherKind) {
  const struct {
    const char *path, *folder, *filePath;
  } cases[] = {
      {"", "", ""},
      {"c.txt", "", ""},
      {"a\\b/c.txt", "a\\b/", "a\\b"},
      {"a/b\\c.txt", "a/b\\", "a/b"},
      {"a/b/", "a/b/", "a/b"},
      {"a//c.txt", "a//", "a/"},
      {"/c.txt", "/", "/"},
      {"C:\\c.txt", "C:\\", "C:\\"},
      {"a/\x81\\c", "a/", "a"},                // a trail byte 0x5C is no separator
      {"a\x81\\\\c", "a\x81\\\\", "a\x81\\"},  // the one behind it is
      {"a\xAD/c", "a\xAD/", "a\xAD"},          // 0x2F is no trail byte
      {"a/\x81", "a/", "a"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(zvuti::FolderOf(c.path), c.folder) << c.path;
    EXPECT_EQ(CKxIOUti::GetFilePath(c.path), c.filePath) << c.path;
  }
  EXPECT_EQ(CKxIOUti::GetFilePath(nullptr), "");
}

TEST(Path, BackslashesLeadIntoFoldersButTrailBytesDoNot) {
  const test::TempFolder folder;
  folder.Write("Maple/Rank.ini", "x");
  const std::string gbkName = "\x81\\.txt";  // one character and a suffix, no folder
  EXPECT_TRUE(zvuti::IsRegularFile(folder.Path("Maple\\Rank.ini").c_str()));
  EXPECT_FALSE(zvuti::IsRegularFile(folder.Path(gbkName).c_str()));
  folder.Write(gbkName, "x");
  EXPECT_TRUE(zvuti::IsRegularFile((folder.Path() + "\\" + gbkName).c_str()));
}

TEST(CKxIOUti, MakesOneLevelOfFoldersAndTellsWhatExists) {
  const test::TempFolder folder;
  const std::string file = folder.Write("file", "");
  const std::string made = folder.Path("new"), below = made + "\\below\\", tooDeep = folder.Path("a/b");
  const struct {
    const char* path;
    bool canBeMade, exists, isFile;
  } cases[] = {
      {made.c_str(), true, true, false},  {made.c_str(), true, true, false},
      {below.c_str(), true, true, false}, {tooDeep.c_str(), false, false, false},
      {file.c_str(), false, true, true},  {"", false, false, false},
      {nullptr, false, false, false},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(CKxIOUti::CreateDir(c.path) != 0, c.canBeMade);
    EXPECT_EQ(CKxIOUti::IsFileExist(c.path) != 0, c.exists);
    EXPECT_EQ(zvuti::IsRegularFile(c.path), c.isFile);
    EXPECT_EQ(zvuti::IsFolder(c.path), c.exists && !c.isFile);
  }
}

TEST(CKxIOUti, FindsTheFolderOfTheRunningProgram) {
  const test::TempFolder elsewhere;
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(elsewhere.Path());
  const CString folder = CKxIOUti::GetAppPath();
  std::filesystem::current_path(before);
  EXPECT_EQ(zvuti::FolderOf(folder.GetString()), folder.GetString());
  EXPECT_TRUE(CKxIOUti::IsFileExist(folder + "zvutilib_tests") ||
              CKxIOUti::IsFileExist(folder + "zvutilib_tests.exe"));
}

}  // namespace

#include "platform/Path.h"

#include <ZvUtiLib/platform/CKxIOUti.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

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
      {"a\x81\\\\c", "a\x81\\\\", "a\x81\\"},  // the one after it is
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

TEST(CKxIOUti, MakesOneLevelOfFoldersAndReportsWhatExists) {
  const test::TempFolder folder;
  folder.Write("file", "");
  const struct {
    std::string path;
    bool canBeMade, exists, isFile;
  } cases[] = {
      {folder.Path("new"), true, true, false},
      {folder.Path("new"), true, true, false},
      {folder.Path("new") + "\\below\\", true, true, false},
      {folder.Path("a/b"), false, false, false},
      {folder.Path("file"), false, true, true},
      {"", false, false, false},
  };
  for (const auto& c : cases) {
    const char* const path = c.path.c_str();
    EXPECT_EQ(CKxIOUti::CreateDir(path) != 0, c.canBeMade) << path;
    EXPECT_EQ(CKxIOUti::IsFileExist(path) != 0, c.exists) << path;
    EXPECT_EQ(zvuti::IsRegularFile(path), c.isFile) << path;
    EXPECT_EQ(zvuti::IsFolder(path), c.exists && !c.isFile) << path;
  }
  EXPECT_EQ(CKxIOUti::CreateDir(nullptr) + CKxIOUti::IsFileExist(nullptr), 0);
  EXPECT_FALSE(zvuti::IsRegularFile(nullptr) || zvuti::IsFolder(nullptr));
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

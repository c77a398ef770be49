#include "platform/OpenFile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <iterator>

#include "platform/AppendFile.h"
#include "platform/mfc/CFile.h"
#include "tests/support/TempFolder.h"

namespace {

// Opening a pipe waits for its other end, unless it is told not to.
TEST(OpenFile, PipesAndDevicesAreNoFilesAndDoNotHoldTheCaller) {
  const test::TempFolder folder;
  const std::string pipe = folder.Path("pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_EQ(zvuti::OpenForReading(pipe.c_str(), true), nullptr);
  EXPECT_EQ(zvuti::OpenForReading("/dev/zero", true), nullptr);
  EXPECT_FALSE(zvuti::AppendFile(pipe.c_str()).IsOpen());
}

TEST(OpenFile, FilesCloseWithTheirObjects) {
  const test::TempFolder folder;
  const std::string path = folder.Write("file", "text");
  const auto openFiles = [] {
    const std::filesystem::directory_iterator all("/proc/self/fd");
    return std::distance(begin(all), end(all));
  };
  const auto before = openFiles();
  {
    CFile file;
    ASSERT_EQ(file.Open(path.c_str(), CFile::modeRead), 1);
    ASSERT_EQ(file.Open(path.c_str(), CFile::modeRead), 1);
    const zvuti::AppendFile appended(path.c_str());
    EXPECT_EQ(openFiles(), before + 2);
  }
  EXPECT_EQ(openFiles(), before);
}

}  // namespace

#include <ZvUtiLib/CDebug.h>
#include <ZvUtiLib/platform/CString.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "tests/reliability/LogLines.h"
#include "tests/support/AppFolder.h"
#include "tests/support/Wine.h"

namespace {

class CDebugTest : public testing::Test {
 protected:
  CDebugTest() {
    doors_->getLocalTime = [](SYSTEMTIME* out) { *out = {2013, 8, 4, 29, 1, 2, 3, 4}; };
  }

  std::string Log() const { return folder_.ReadText("log/lobby.log"); }
  bool Exists(const char* name) const { return std::filesystem::exists(folder_.Path(name)); }

  test::AppFolder folder_;
  test::DoorsGuard doors_;
};

TEST_F(CDebugTest, WritesOneLineForEachCall) {
  CDebug::LogInit();
  EXPECT_TRUE(Exists("log"));
  EXPECT_FALSE(Exists("log/lobby.log"));
  errno = EDOM;
  CDebug::LogOut("%s has %d%%", "100% %s %n", 7);
  CDebug::LogInit();
  EXPECT_EQ(errno, EDOM);
  CDebug::LogOut("ends\n");
  CDebug::LogOut("");
  CDebug::LogOut(nullptr);
  CDebug::LogOut("%s, %s and %s", CString("a"), std::string("b"), "c");
  EXPECT_EQ(Log(),
            "2013-08-29 01:02:03,004 100% %s %n has 7%\n"
            "2013-08-29 01:02:03,004 ends\n\n"
            "2013-08-29 01:02:03,004 \n"
            "2013-08-29 01:02:03,004 \n"
            "2013-08-29 01:02:03,004 a, b and c\n");
}

TEST_F(CDebugTest, WithoutALogFileLinesAreLostAndTheTimeIsNotRead) {
  doors_->getLocalTime = [](SYSTEMTIME*) { ADD_FAILURE() << "the file did not open"; };
  errno = EDOM;
  CDebug::LogOut("no folder");
  EXPECT_EQ(errno, EDOM);
  EXPECT_FALSE(Exists("log"));
  folder_.Write("log", "a file in place of the folder");
  errno = EDOM;
  CDebug::LogInit();
  CDebug::LogOut("lost");
  EXPECT_EQ(errno, EDOM);
  EXPECT_EQ(folder_.Read("log"), "a file in place of the folder");
}

TEST_F(CDebugTest, CutsLongTextAfterAWholeCharacter) {
  CDebug::LogInit();
  const std::pair<std::string, std::size_t> cases[] = {
      {std::string(1023, 'x'), 1023},
      {std::string(1024, 'x'), 1023},
      {std::string(1021, 'x') + "\xB0\xA1", 1023},
      {std::string(1022, 'x') + "\xB0\xA1", 1022},
      {std::string(1022, 'x') + "\xB0\xA1" + std::string(100'000, 'y'), 1022},
      {std::string(1022, 'x') + "\xB0", 1023},
  };
  std::string expected;
  for (const auto& [text, kept] : cases) {
    CDebug::LogOut("%s", text.c_str());
    expected += "2013-08-29 01:02:03,004 " + text.substr(0, kept) + "\n";
  }
  EXPECT_TRUE(Log() == expected);
}

TEST_F(CDebugTest, KeepsEveryLineOfManyThreadsWhole) {
  if (test::IsWine())
    GTEST_SKIP() << "Wine appends in two steps: it asks where the end is, then writes there";
  constexpr std::int64_t kThreads = 8, kLines = 1000;
  CDebug::LogInit();
  std::vector<std::thread> threads;
  threads.reserve(kThreads);
  for (std::size_t thread = 0; thread < kThreads; ++thread) {
    threads.emplace_back([thread] {
      for (int line = 0; line < kLines; ++line) CDebug::LogOut("%s", test::LogLine(thread, line).c_str());
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(test::LogLinesOf(Log(), kThreads), std::vector<std::int64_t>(kThreads, kLines));
}

}  // namespace

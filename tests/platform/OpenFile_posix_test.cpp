#include "platform/OpenFile.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <pthread.h>
#include <signal.h>  // NOLINT(modernize-deprecated-headers)
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <iterator>

#include "platform/AppendFile.h"
#include "platform/mfc/CFile.h"
#include "tests/support/TempFolder.h"

namespace {

// Opening a pipe usually waits for its other end.
TEST(OpenFile, PipesAndDevicesDoNotOpenAndDoNotHoldTheCaller) {
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

// A cancelled thread that unwinds out of a destructor would end the process.
TEST(AppendFile, ClosesInAThreadThatIsBeingCancelled) {
  const test::TempFolder folder;
  std::string path = folder.Path("log");
  pthread_t thread;
  const auto body = [](void* name) -> void* {
    {
      const zvuti::AppendFile file(static_cast<const char*>(name));
      pthread_cancel(pthread_self());  // takes effect at the next call that may be cancelled
    }
    return name;
  };
  ASSERT_EQ(pthread_create(&thread, nullptr, body, path.data()), 0);
  void* result = nullptr;
  pthread_join(thread, &result);
  EXPECT_EQ(result, path.data());
}

// A write into a pipe whose reader has gone raises a signal. It has to go without a trace: neither what the
// thread blocks nor what waits for it may change.
TEST(AppendFile, LeavesTheSignalsOfItsThreadAsTheyAre) {
  const test::TempFolder folder;
  const std::string path = folder.Path("pipe");
  ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
  sigset_t pipe, before, set;
  sigemptyset(&pipe);
  sigaddset(&pipe, SIGPIPE);
  pthread_sigmask(SIG_SETMASK, nullptr, &before);
  const struct { bool isBlocked, isWaiting; } cases[] = {{false, false}, {true, false}, {true, true}};
  for (const auto [isBlocked, isWaiting] : cases) {
    if (isBlocked) pthread_sigmask(SIG_BLOCK, &pipe, nullptr);
    const int reader = open(path.c_str(), O_RDONLY | O_NONBLOCK);
    zvuti::AppendFile file(path.c_str());
    ASSERT_TRUE(file.IsOpen());
    close(reader);
    if (isWaiting) raise(SIGPIPE);
    file.Append("lost");
    pthread_sigmask(SIG_SETMASK, nullptr, &set);
    EXPECT_EQ(sigismember(&set, SIGPIPE) == 1, isBlocked);
    EXPECT_EQ(sigismember(&set, SIGXFSZ), 0);
    sigpending(&set);
    EXPECT_EQ(sigismember(&set, SIGPIPE) == 1, isWaiting) << "blocked: " << isBlocked;
    const timespec now{};
    sigtimedwait(&pipe, nullptr, &now);
  }
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

}  // namespace

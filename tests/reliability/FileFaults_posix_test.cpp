// Files that are forbidden, enormous or changed while they are read, and a log that loses its place.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <thread>
#include <utility>

#include <ZvUtiLib/CDebug.h>

#include "tests/reliability/Loaders.h"
#include "tests/support/AppFolder.h"
#include "tests/support/DoorsGuard.h"
#include "tests/support/ResourceLimits.h"
#include "tests/support/TempFolder.h"

namespace {

using std::filesystem::perms;

// Rights are for others than root: while alive, a root's process acts as nobody in particular.
class AsNobody {
 public:
  AsNobody() : user_(geteuid()) {
    if (user_ == 0) Become(65534);
  }
  ~AsNobody() {
    if (user_ == 0) Become(user_);
  }
  static void Become(uid_t user) { ASSERT_EQ(seteuid(user), 0); }
  AsNobody(const AsNobody&) = delete;
  AsNobody& operator=(const AsNobody&) = delete;

 private:
  const uid_t user_;
};

TEST(FileFaults, UnreadableFilesCountAsMissing) {
  const test::TempFolder folder;
  for (const test::Loader& loader : test::kLoaders) {
    std::filesystem::permissions(folder.Write(loader.fileName, loader.good), perms::none);
    const AsNobody nobody;
    EXPECT_EQ(test::LoadOrThrow(loader, folder.Path()), loader.whenNone) << loader.fileName;
  }
}

// The memory of a process is a file that opens, and gives EIO for its first byte.
TEST(FileFaults, FilesThatFailWhenTheyAreReadAreNeverTakenForEmptyOnes) {
  const test::TempFolder folder;
  for (const test::Loader& loader : test::kLoaders) {
    std::filesystem::create_symlink("/proc/self/mem", folder.Path(loader.fileName));
    const std::string result = test::LoadOrThrow(loader, folder.Path());
    EXPECT_TRUE(result == loader.whenNone || result == "no file") << loader.fileName << ": " << result;
  }
}

// A gigabyte of zero bytes without a place on the disk, and an eighth of that to read it in.
TEST(FileFaults, EnormousFilesEndInAnAnswer) {
  const test::TempFolder folder;
  for (const test::Loader& loader : test::kLoaders) {
    folder.Write(loader.fileName, "");
    std::filesystem::resize_file(folder.Path(loader.fileName), 1u << 30);
    const test::ResourceLimits limits(60, std::size_t{128} << 20);
    const std::string result = test::LoadOrThrow(loader, folder.Path());
    EXPECT_TRUE(result == loader.whenEmpty || result == loader.whenNone || result == "no memory")
        << loader.fileName << ": " << result;
  }
}

TEST(FileFaults, FilesThatChangeWhileTheyAreReadGiveOldOrNewOrLess) {
  const test::TempFolder folder;
  for (const test::Loader& loader : test::kLoaders) {
    const std::string path = folder.Write(loader.fileName, loader.good);
    std::atomic<bool> isDone = false;
    // In turn: cut to nothing, written again in place, replaced by another file, removed and written anew.
    const std::function<void()> changes[] = {
        [&] { std::filesystem::resize_file(path, 0); },
        [&] { std::ofstream(path, std::ios::binary) << loader.good; },
        [&] { std::filesystem::rename(folder.Write("other", loader.good), path); },
        [&] { folder.Write(loader.fileName, loader.good); },
    };
    std::thread changer([&] {
      while (!isDone) {
        for (const auto& change : changes) change();
      }
    });
    for (int i = 0; i < 300; ++i) {
      const std::string result = test::LoadOrThrow(loader, folder.Path());
      EXPECT_TRUE(result == loader.whenGood || result == loader.whenEmpty || result == loader.whenNone)
          << loader.fileName << ": " << result;
    }
    isDone = true;
    changer.join();
  }
}

// Each fault comes in mid-run and goes again: the lines meanwhile are lost, all others are there and whole.
TEST(FileFaults, TheLogGoesOnWhenItsPlaceIsBack) {
  const test::AppFolder folder;
  const std::string log = folder.Path("log"), file = folder.Path("log/lobby.log"), away = folder.Path("away");
  std::filesystem::permissions(folder.Path(), perms::all);
  CDebug::LogInit();
  std::filesystem::permissions(log, perms::all);
  CDebug::LogOut("begin");
  std::filesystem::permissions(file, perms::all);
  std::string expected = "begin\n";
  const auto faulted = [&](const char* what, const std::function<void()>& begin,
                           const std::function<void()>& end) {
    begin();
    {
      const AsNobody nobody;
      CDebug::LogOut("lost to: %s", what);
    }
    end();
    const AsNobody nobody;
    CDebug::LogOut("after: %s", what);
    expected.append("after: ").append(what).append("\n");
  };
  // Something else stands for a while where `path` should be.
  const auto replaced = [&](const char* what, const std::string& path, const std::function<void()>& put) {
    const auto begin = [&] { std::filesystem::rename(path, away), put(); };
    faulted(what, begin, [&] { std::filesystem::remove(path), std::filesystem::rename(away, path); });
  };
  replaced("folder gone", log, [] {});
  replaced("folder a file", log, [&] { std::ofstream(log) << "x"; });
  replaced("file a folder", file, [&] { std::filesystem::create_directory(file); });
  replaced("disk full", file, [&] { std::filesystem::create_symlink("/dev/full", file); });
  const auto rights = [&](perms to) { std::filesystem::permissions(file, to); };
  faulted(
      "read-only", [&] { rights(perms::owner_read | perms::others_read); }, [&] { rights(perms::all); });

  rlimit sizes{};
  getrlimit(RLIMIT_FSIZE, &sizes);
  const auto limitSize = [&](rlim_t most) {
    const rlimit limit{most, sizes.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
  };
  faulted(
      "size limit", [&] { limitSize(std::filesystem::file_size(file)); }, [&] { limitSize(sizes.rlim_cur); });
  static int reader = -1;
  const auto putPipe = [&](bool isRead) {
    ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
    rights(perms::all);
    if (isRead) reader = open(file.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  };
  replaced("a pipe that nobody reads", file, [&] { putPipe(false); });
  replaced("a full pipe", file, [&] {
    putPipe(true);
    const std::string some(4096, 'x');
    const int writer = open(file.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
    while (write(writer, some.data(), some.size()) > 0) continue;
    close(writer);
  });
  close(std::exchange(reader, -1));
  {
    test::DoorsGuard doors;
    doors->getLocalTime = [](SYSTEMTIME*) { close(std::exchange(reader, -1)); };  // the log is open
    replaced("a pipe whose reader goes", file, [&] { putPipe(true); });
  }
  std::ifstream in(file);
  std::string seen;
  for (std::string line; std::getline(in, line);)
    seen += line.substr(std::min<std::size_t>(line.size(), 24)) + "\n";
  EXPECT_EQ(seen, expected);
}

}  // namespace

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

#include <ZvUtiLib/CDebug.h>

#include "tests/reliability/Loaders.h"
#include "tests/support/AppFolder.h"
#include "tests/support/ResourceLimits.h"
#include "tests/support/TempFolder.h"

namespace {

using std::filesystem::perms;

// Rights do not stop root: while it exists, a process of root runs as another user.
struct AsNobody {
  const bool isRoot = geteuid() == 0;
  AsNobody() { Become(65534); }
  ~AsNobody() { Become(0); }
  AsNobody(const AsNobody&) = delete;
  AsNobody& operator=(const AsNobody&) = delete;
  void Become(uid_t user) const { EXPECT_TRUE(!isRoot || seteuid(user) == 0); }
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
    std::thread changer([&] {
      while (!isDone) {
        std::filesystem::resize_file(path, 0);
        std::ofstream(path, std::ios::binary) << loader.good;
        std::filesystem::rename(folder.Write("other", loader.good), path);
        folder.Write(loader.fileName, loader.good);
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

// Each fault begins and ends between lines: those in between are lost, all others are there and whole.
TEST(FileFaults, TheLogGoesOnWhenItsPlaceIsBack) {
  const test::AppFolder folder;
  const std::string log = folder.Path("log"), file = folder.Path("log/lobby.log"), away = folder.Path("away");
  const auto allow = [](const std::string& path, perms to) { std::filesystem::permissions(path, to); };
  allow(folder.Path(), perms::all);
  CDebug::LogInit();
  allow(log, perms::all);
  CDebug::LogOut("begin");
  allow(file, perms::all);

  rlimit sizes{};
  getrlimit(RLIMIT_FSIZE, &sizes);
  const auto limitSize = [&](rlim_t most) {
    const rlimit limit{most, sizes.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
  };
  int reader = -1;
  const auto putPipe = [&] {
    ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
    allow(file, perms::all);
  };
  const auto putFullPipe = [&] {
    putPipe();
    reader = open(file.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    const int writer = open(file.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
    while (write(writer, log.data(), log.size()) > 0) continue;
    close(writer);
  };
  const auto nothing = [] {};
  const struct {
    const char* what;
    std::string moved;  // while the fault lasts; "" if it moves nothing
    std::function<void()> begin, end;
  } faults[] = {
      {"folder gone", log, nothing, nothing},
      {"folder a file", log, [&] { std::ofstream(log) << "x"; }, nothing},
      {"file a folder", file, [&] { std::filesystem::create_directory(file); }, nothing},
      {"disk full", file, [&] { std::filesystem::create_symlink("/dev/full", file); }, nothing},
      {"a pipe that nobody reads", file, putPipe, nothing},
      {"a full pipe", file, putFullPipe, [&] { close(reader); }},
      {"read-only", "", [&] { allow(file, perms::others_read); }, [&] { allow(file, perms::all); }},
      {"size limit", "", [&] { limitSize(std::filesystem::file_size(file)); },
       [&] { limitSize(sizes.rlim_cur); }},
  };
  std::string expected = "begin\n";
  for (const auto& fault : faults) {
    if (!fault.moved.empty()) std::filesystem::rename(fault.moved, away);
    fault.begin();
    {
      const AsNobody nobody;
      CDebug::LogOut("lost to: %s", fault.what);
    }
    if (!fault.moved.empty()) {
      std::filesystem::remove(fault.moved);
      std::filesystem::rename(away, fault.moved);
    }
    fault.end();
    const AsNobody nobody;
    CDebug::LogOut("after: %s", fault.what);
    expected += std::string("after: ") + fault.what + "\n";
  }
  std::ifstream in(file);
  std::string seen;
  for (std::string line; std::getline(in, line);)
    seen += line.substr(std::min<std::size_t>(line.size(), 24)) + "\n";
  EXPECT_EQ(seen, expected);
}

}  // namespace

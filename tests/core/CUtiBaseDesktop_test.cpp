#include <ZvUtiLib/CUtiBase.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>

#include "tests/support/DoorsGuard.h"
#include "tests/support/TempFolder.h"
#include "tests/support/Wine.h"

namespace {

// Writes the steps down, lets one of them fail, and passes the others on.
struct Desk {
  zvuti::DesktopDoors system = zvuti::SystemDesktopDoors();
  std::string steps;
  std::string refused;
  bool Takes(const std::string& step) {
    steps += step + ' ';
    return step != refused;
  }
};
Desk* desk = nullptr;

class ClipboardTest : public testing::Test {
 protected:
  ClipboardTest() {
    desk = &desk_;
    CUtiBase::CopyToClipboard("before");
    auto& doors = doors_->desktop;
    doors.openClipboard = [] { return desk->Takes("open") && desk->system.openClipboard(); };
    doors.closeClipboard = [] { desk->Takes("close"), desk->system.closeClipboard(); };
    doors.emptyClipboard = [] { desk->Takes("empty"), desk->system.emptyClipboard(); };
    doors.setClipboardText = [](HGLOBAL b) { return desk->Takes("set") && desk->system.setClipboardText(b); };
    doors.allocateBlock = [](std::size_t size) {
      return desk->Takes("allocate-" + std::to_string(size)) ? desk->system.allocateBlock(size) : nullptr;
    };
    doors.lockBlock = [](HGLOBAL b) { return desk->Takes("lock") ? desk->system.lockBlock(b) : nullptr; };
    doors.unlockBlock = [](HGLOBAL b) { desk->Takes("unlock"), desk->system.unlockBlock(b); };
    doors.freeBlock = [](HGLOBAL b) { desk->Takes("free"), desk->system.freeBlock(b); };
  }

  static std::string Content() {
    EXPECT_TRUE(OpenClipboard(nullptr)) << "somebody has left it open";
    HANDLE block = GetClipboardData(CF_TEXT);
    std::string text = block ? static_cast<const char*>(GlobalLock(block)) : "(none)";
    if (block) GlobalUnlock(block);
    CloseClipboard();
    return text;
  }

  Desk desk_;
  test::DoorsGuard doors_;
};

TEST_F(ClipboardTest, FailuresEndTheStepsAndLeaveTheClipboardClosed) {
  const char* const text = "\xD6\xD0\xCE\xC4 1%";  // two Chinese characters
  const struct {
    const char *refused, *steps, *content;
  } cases[] = {
      {"", "open allocate-8 empty lock unlock set close ", text},
      {"open", "open ", "before"},
      {"allocate-8", "open allocate-8 close ", "before"},
      {"lock", "open allocate-8 empty lock free close ", "(none)"},
      {"set", "open allocate-8 empty lock unlock set free close ", "(none)"},
  };
  for (const auto& c : cases) {
    desk_.refused.clear();
    CUtiBase::CopyToClipboard("before");
    desk_.steps.clear();
    desk_.refused = c.refused;
    CUtiBase::CopyToClipboard(text);
    EXPECT_EQ(desk_.steps, c.steps) << c.refused;
    EXPECT_EQ(Content(), c.content) << c.refused;
  }
}

TEST_F(ClipboardTest, StaysAsItIsWithoutATextAndWhileOthersHoldItOpen) {
  CUtiBase::CopyToClipboard("");
  CUtiBase::CopyToClipboard(nullptr);
  EXPECT_EQ(desk_.steps, "");
  EXPECT_EQ(Content(), "before");

  if (test::IsWine()) GTEST_SKIP() << "Wine opens the clipboard for a second thread, too";
  ASSERT_TRUE(OpenClipboard(nullptr));
  std::thread([] { CUtiBase::CopyToClipboard("theirs"); }).join();
  EXPECT_EQ(desk_.steps, "open ");
  CloseClipboard();
  EXPECT_EQ(Content(), "before");
}

TEST_F(ClipboardTest, IsOpenedAgainByTheThreadThatHoldsItOpen) {
  ASSERT_TRUE(OpenClipboard(nullptr));
  CUtiBase::CopyToClipboard("mine");
  EXPECT_EQ(Content(), "mine");
}

// What happens to the module that the tests build while AutoRegsvr32 runs.
std::string Registering(const char* path) {
  const char* const log = "module.log";
  std::filesystem::remove(log);
  CUtiBase::AutoRegsvr32(path);
  std::ifstream in(log);
  return {std::istreambuf_iterator<char>(in), {}};
}

TEST(AutoRegsvr32, LoadsCallsAndReleases) {
  const std::string all = "loaded registered released ";
  const std::string modules = zvuti::TheDoors().applicationFolder();
  EXPECT_EQ(Registering((modules + "registrable.so").c_str()), all);

  const test::TempFolder folder;
  const std::string name = "\x81\\.so";  // one character and an extension: the backslash is its trail byte
  std::filesystem::copy_file(modules + "registrable.so", test::FilePath(folder.Path(name)));
  EXPECT_EQ(Registering((folder.Path() + '\\' + name).c_str()), all);

  EXPECT_EQ(Registering("registrable.so"), all);  // the application folder comes first
  test::DoorsGuard doors;
  doors->desktop.entryPoint = [](HMODULE library, const char*) {
    return zvuti::SystemDesktopDoors().entryPoint(library, "NoSuchEntry");
  };
  EXPECT_EQ(Registering("registrable.so"), "loaded released ");

  doors->desktop.freeLibrary = [](HMODULE) { FAIL() << "released what was never loaded"; };
  const std::string broken = folder.Write("broken.so", "no library");
  for (const char* path : {broken.c_str(), "", "no-such-library.so", static_cast<const char*>(nullptr)}) {
    EXPECT_EQ(Registering(path), "");
  }
}

}  // namespace

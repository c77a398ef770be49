#include <ZvUtiLib/CUtiBase.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "tests/support/DoorsGuard.h"
#include "tests/support/TempFolder.h"

namespace {

using Steps = std::vector<std::string>;

// Records the steps, lets one of them fail, and passes the others on.
struct Desk {
  const zvuti::DesktopDoors system = zvuti::SystemDesktopDoors();
  Steps steps;
  std::string refused;
  bool Takes(const std::string& step) {
    steps.push_back(step);
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
    EXPECT_TRUE(OpenClipboard(nullptr)) << "it was left open";
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
    const char* refused;
    Steps steps;
    const char* content;
  } cases[] = {
      {"", {"open", "allocate-8", "empty", "lock", "unlock", "set", "close"}, text},
      {"open", {"open"}, "before"},
      {"allocate-8", {"open", "allocate-8", "close"}, "before"},
      {"lock", {"open", "allocate-8", "empty", "lock", "free", "close"}, "(none)"},
      {"set", {"open", "allocate-8", "empty", "lock", "unlock", "set", "free", "close"}, "(none)"},
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

TEST_F(ClipboardTest, IsNotOpenedWithoutATextAndIsOpenedAgainByTheThreadThatHoldsIt) {
  CUtiBase::CopyToClipboard("");
  CUtiBase::CopyToClipboard(nullptr);
  EXPECT_EQ(desk_.steps, Steps());
  ASSERT_TRUE(OpenClipboard(nullptr));
  CUtiBase::CopyToClipboard("mine");
  EXPECT_EQ(Content(), "mine");
}

// Registers the module that the tests build, and returns the calls that it received.
std::string CallsOf(const std::string& path) {
  const char* const log = "module.log";
  std::filesystem::remove(log);
  CUtiBase::AutoRegsvr32(path.c_str());
  std::ifstream in(log);
  return {std::istreambuf_iterator<char>(in), {}};
}

TEST(AutoRegsvr32, LoadsCallsAndReleases) {
  const std::string all = "loaded registered released ";
  const std::string modules = zvuti::TheDoors().applicationFolder();
  const test::TempFolder folder;
  const std::string name = "\x81\\.so";  // one character and an extension: the backslash is its trail byte
  std::filesystem::copy_file(modules + "registrable.so", test::FilePath(folder.Path(name)));
  EXPECT_EQ(CallsOf(folder.Path() + '\\' + name), all);
  EXPECT_EQ(CallsOf(modules + "registrable.so"), all);
  EXPECT_EQ(CallsOf("registrable.so"), all);  // the application folder comes first

  test::DoorsGuard doors;
  doors->desktop.entryPoint = [](HMODULE library, const char*) {
    return zvuti::SystemDesktopDoors().entryPoint(library, "NoSuchEntry");
  };
  EXPECT_EQ(CallsOf("registrable.so"), "loaded released ");

  doors->desktop.freeLibrary = [](HMODULE) { FAIL() << "released a library that was never loaded"; };
  for (const std::string& path :
       {folder.Write("broken.so", "no library"), std::string(), folder.Path("none")})
    EXPECT_EQ(CallsOf(path), "");
  CUtiBase::AutoRegsvr32(nullptr);
}

}  // namespace

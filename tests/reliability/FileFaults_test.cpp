// Every loader on files that are not as it would like them.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <utility>

#include "tests/reliability/Loaders.h"
#include "tests/support/TempFolder.h"

namespace {

TEST(FileFaults, LoadersGiveTheirFailureValues) {
  const test::TempFolder folder;
  const std::string longName(4000, 'x');
  const std::string gbk = "\xB0\xA1\x81\x5C\xC4\xBF";  // 啊乗目, of which one ends in the byte of a backslash
  std::filesystem::create_directories(folder.Path("nothing"));
  for (const test::Loader& loader : test::kLoaders) {
    const std::string name = loader.fileName;
    folder.Write("good/" + name, loader.good);
    folder.Write(std::string(gbk).append("/").append(name), loader.good);
    folder.Write("empty/" + name, "");
    std::filesystem::create_directories(folder.Path("folder/" + name));
    const std::pair<std::string, const char*> rows[] = {
        {"good", loader.whenGood},         {gbk, loader.whenGood},      {"empty", loader.whenEmpty},
        {"nothing", loader.whenNone},      {"folder", loader.whenNone}, {longName, loader.whenNone},
        {"good/" + name, loader.whenNone},
    };
    for (const auto& [place, expected] : rows) {
      EXPECT_EQ(test::LoadOrThrow(loader, folder.Path(place)), expected) << name << " in " << place;
    }
  }
}

}  // namespace

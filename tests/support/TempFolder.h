// TempFolder: a temporary folder for one test, removed with its files when the test ends.
#pragma once

#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "gbk/CodePage936.h"

namespace test {

/// The std::filesystem::path for a path in GBK. Where file names are UTF-16, the standard library would
/// decode the bytes with another encoding.
inline std::filesystem::path FilePath(std::string_view gbk) {
  if constexpr (sizeof(std::filesystem::path::value_type) == 1) return gbk;
  return zvuti::gbk::ToUtf16(gbk);
}

class TempFolder {
 public:
  TempFolder() {
    static int number = 0;
    const auto* info = testing::UnitTest::GetInstance()->current_test_info();
    std::string name = info ? std::string(info->test_suite_name()) + "." + info->name() : "fixture";
    for (char& c : name) {
      if (c == '/') c = '_';
    }
    const std::string unique =
        name + "-" + std::to_string(std::random_device{}()) + "-" + std::to_string(++number);
    path_ = (std::filesystem::temp_directory_path() / ("zvuti-" + unique)).string();
    std::filesystem::create_directories(path_);
  }
  ~TempFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  /// Path of `name` in the folder. Names are GBK, with slashes as separators.
  std::string Path(std::string_view name = {}) const {
    return name.empty() ? path_ : path_ + "/" + std::string(name);
  }

  /// Writes `bytes` to the file `name`, creates missing folders, and returns its path.
  std::string Write(std::string_view name, std::string_view bytes) const {
    std::string path = Path(name);
    const std::filesystem::path file = FilePath(path);
    std::filesystem::create_directories(file.parent_path());
    // Remove an old file first: on some file systems truncating a file waits for the disk.
    std::error_code ignored;
    std::filesystem::remove(file, ignored);
    std::ofstream(file, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return path;
  }

  /// All bytes of the file `name`, "" if it does not exist.
  std::string Read(std::string_view name) const { return ReadAs(name, std::ios::binary); }
  /// The same for a text file, with line ends converted to "\n".
  std::string ReadText(std::string_view name) const { return ReadAs(name, std::ios::in); }

 private:
  std::string ReadAs(std::string_view name, std::ios::openmode mode) const {
    std::ifstream in(FilePath(Path(name)), mode);
    return {std::istreambuf_iterator<char>(in), {}};
  }

  std::string path_;
};

}  // namespace test

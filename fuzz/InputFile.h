// InputFile: a file that makes the bytes of a fuzz input available under a path; in memory on Linux.
#pragma once

#include <string>
#include <string_view>

#include "fuzz/Check.h"

namespace fuzz {

class InputFile {
 public:
  InputFile();
  ~InputFile();
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;

  /// Replaces the content.
  void Write(std::string_view bytes) const;
  const std::string& Path() const { return path_; }
  /// Makes the file appear under another path, too.
  void AppearAs(const std::string& path) const;

 private:
  int descriptor_ = -1;  ///< of the file in memory
  std::string path_;
};

}  // namespace fuzz

// InputFile: a file in memory that makes the bytes of a fuzz input available under a path.
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <string>
#include <string_view>

#include "fuzz/Check.h"

namespace fuzz {

class InputFile {
 public:
  InputFile() : descriptor_(memfd_create("input", 0)), path_("/proc/self/fd/" + std::to_string(descriptor_)) {
    Check(descriptor_ >= 0, "the system can create a file in memory");
  }
  ~InputFile() { close(descriptor_); }
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;

  /// Replaces the content.
  void Write(std::string_view bytes) const {
    const bool isWritten = ftruncate(descriptor_, 0) == 0 && pwrite(descriptor_, bytes.data(), bytes.size(),
                                                                    0) == static_cast<ssize_t>(bytes.size());
    Check(isWritten, "the input can be written to the file in memory");
  }
  const std::string& Path() const { return path_; }

 private:
  int descriptor_;
  std::string path_;
};

}  // namespace fuzz

#include "fuzz/InputFile.h"

#include <sys/mman.h>
#include <unistd.h>

#include <filesystem>

namespace fuzz {

InputFile::InputFile()
    : descriptor_(memfd_create("input", 0)), path_("/proc/self/fd/" + std::to_string(descriptor_)) {
  Check(descriptor_ >= 0, "the system can create a file in memory");
}

InputFile::~InputFile() { close(descriptor_); }

void InputFile::Write(std::string_view bytes) const {
  const bool isWritten = ftruncate(descriptor_, 0) == 0 && pwrite(descriptor_, bytes.data(), bytes.size(),
                                                                  0) == static_cast<ssize_t>(bytes.size());
  Check(isWritten, "the input can be written to the file in memory");
}

void InputFile::AppearAs(const std::string& path) const { std::filesystem::create_symlink(path_, path); }

}  // namespace fuzz

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

#include "shared/HostFiles.h"

namespace tool {

std::filesystem::path PathOf(const std::string& text) { return text; }
std::string TextOf(const std::filesystem::path& path) { return path.string(); }

std::FILE* OpenFile(const std::string& path, const char* mode) { return std::fopen(path.c_str(), mode); }

std::string MakeFile(const std::string& start) {
  std::string path = start + "XXXXXX";
  const int descriptor = mkstemp(path.data());
  if (descriptor < 0) return {};
  close(descriptor);
  return path;
}

bool PutInPlace(const std::string& file, const std::string& target) {
  struct stat old {};
  mode_t mode = 0;
  if (stat(target.c_str(), &old) == 0) {
    if (access(target.c_str(), W_OK) != 0) return false;
    mode = old.st_mode & 07777;
  } else {
    const mode_t mask = umask(0);  // can only be read by setting it
    umask(mask);
    mode = 0666 & ~mask;
  }
  return chmod(file.c_str(), mode) == 0 && std::rename(file.c_str(), target.c_str()) == 0;
}

std::optional<std::string> PathForLibrary(const std::string& path) { return path; }

}  // namespace tool

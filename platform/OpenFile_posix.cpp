#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/OpenFile.h"
#include "platform/Path.h"

namespace zvuti {

std::FILE* OpenForReading(const char* path, bool /*shared*/) {
  // O_NONBLOCK, because opening a named pipe would otherwise wait until somebody writes to it.
  const int descriptor = open(WithNativeSeparators(path).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (descriptor < 0) return nullptr;
  struct stat status {};
  std::FILE* file = nullptr;
  if (fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode)) file = fdopen(descriptor, "rb");
  if (!file) close(descriptor);
  return file;
}

std::int64_t LengthOf(std::FILE* file) {
  struct stat status {};
  return fstat(fileno(file), &status) == 0 ? status.st_size : -1;
}

int ReadUntil(std::FILE* file, int stop, std::string& text) {
  int byte;
  while ((byte = getc_unlocked(file)) != EOF && byte != '\n' && byte != stop) text += static_cast<char>(byte);
  return byte;
}

}  // namespace zvuti

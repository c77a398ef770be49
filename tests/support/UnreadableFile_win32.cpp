#include "tests/support/UnreadableFile.h"

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

namespace test {

// Reading a stream that fopen opened for writing would report the end of the file, not an error.
std::FILE* OpenUnreadable(const char* path) {
  return _fdopen(_open(path, _O_WRONLY | _O_CREAT | _O_BINARY, _S_IREAD | _S_IWRITE), "rb");
}

}  // namespace test

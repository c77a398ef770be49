#include "tests/support/UnreadableFile.h"

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

namespace test {

// One that the runtime library opened for writing would seem to be at its end.
std::FILE* OpenUnreadable(const char* path) {
  return _fdopen(_open(path, _O_WRONLY | _O_CREAT | _O_BINARY, _S_IREAD | _S_IWRITE), "rb");
}

}  // namespace test

#include <sys/stat.h>

#include "platform/Path.h"
#include "platform/win32/PathFileExists.h"

int PathFileExistsA(const char* path) {
  struct stat status {};
  return stat(zvuti::WithNativeSeparators(path).c_str(), &status) == 0 ? 1 : 0;
}

#include "gameconfig/TableFile.h"

#include <locale>

#include "platform/Path.h"

namespace zvuti {

std::ifstream OpenTableFile(const char* path) {
  std::ifstream file;
  file.imbue(std::locale::classic());
  if (IsRegularFile(path)) {
    file.open(NativePath(path));
  } else {
    file.setstate(std::ios_base::failbit);  // a folder would open, and fail only when it is read
  }
  return file;
}

}  // namespace zvuti

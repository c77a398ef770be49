#include "gameconfig/TableFile.h"

#include <fstream>
#include <locale>

#include "platform/Path.h"

namespace zvuti {

bool ReadTableFile(const char* path, const std::function<void(std::istream&)>& read) {
  if (!IsRegularFile(path)) return false;  // opening a folder succeeds; only reading it fails
  std::ifstream file;
  file.imbue(std::locale::classic());
  file.open(WithNativeSeparators(path));
  if (!file) return false;
  // Without this the stream would catch exceptions, and the file would seem to end there.
  file.exceptions(std::ios_base::badbit);
  try {
    read(file);
  } catch (const std::ios_base::failure&) {
    return false;
  }
  return true;
}

}  // namespace zvuti

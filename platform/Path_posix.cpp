#include <sys/stat.h>

#include "gbk/CodePage936.h"
#include "platform/Path.h"

namespace zvuti {
namespace {

// The file type bits of `path`, 0 if it does not exist.
mode_t KindOf(const char* path) {
  struct stat status {};
  return stat(WithNativeSeparators(path).c_str(), &status) == 0 ? status.st_mode & S_IFMT : 0;
}

}  // namespace

std::string WithNativeSeparators(const char* path) {
  std::string native = path ? path : "";
  for (std::size_t i = 0; i < native.size(); i += gbk::CharLength(native, i)) {
    if (native[i] == '\\') native[i] = '/';
  }
  return native;
}

bool IsRegularFile(const char* path) { return KindOf(path) == S_IFREG; }
bool IsFolder(const char* path) { return KindOf(path) == S_IFDIR; }

bool MakeFolder(const char* path) {
  return mkdir(WithNativeSeparators(path).c_str(), 0777) == 0 || IsFolder(path);
}

}  // namespace zvuti

#include <ZvUtiLib/platform/Windows.h>

#include "platform/Path.h"

namespace zvuti {
namespace {

bool Exists(const char* path, bool isFolder) {
  const DWORD attributes = GetFileAttributesA(WithNativeSeparators(path).c_str());
  return attributes != INVALID_FILE_ATTRIBUTES &&
         ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) == isFolder &&
         (attributes & FILE_ATTRIBUTE_DEVICE) == 0;
}

}  // namespace

// Windows accepts both separators and recognises trail bytes.
std::string WithNativeSeparators(const char* path) { return path ? path : ""; }

bool IsRegularFile(const char* path) { return Exists(path, false); }
bool IsFolder(const char* path) { return Exists(path, true); }

bool MakeFolder(const char* path) {
  return CreateDirectoryA(WithNativeSeparators(path).c_str(), nullptr) != 0 || IsFolder(path);
}

}  // namespace zvuti

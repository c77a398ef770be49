#include <fcntl.h>
#include <io.h>

#include <ZvUtiLib/platform/Windows.h>

#include "platform/OpenFile.h"
#include "platform/Path.h"

namespace zvuti {

std::FILE* OpenForReading(const char* path, bool shared) {
  const HANDLE handle = CreateFileA(WithNativeSeparators(path).c_str(), GENERIC_READ,
                                    shared ? FILE_SHARE_READ | FILE_SHARE_WRITE : 0, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
  if (handle == INVALID_HANDLE_VALUE) return nullptr;
  // The descriptor takes ownership of the handle, and the stream takes ownership of the descriptor.
  int descriptor = -1;
  if (GetFileType(handle) == FILE_TYPE_DISK) {
    descriptor = _open_osfhandle(reinterpret_cast<std::intptr_t>(handle), _O_RDONLY | _O_BINARY);
  }
  if (descriptor < 0) {
    CloseHandle(handle);
    return nullptr;
  }
  std::FILE* file = _fdopen(descriptor, "rb");
  if (!file) _close(descriptor);
  return file;
}

std::int64_t LengthOf(std::FILE* file) { return _filelengthi64(_fileno(file)); }

int ReadUntil(std::FILE* file, int stop, std::string& text) {
  int byte;
  while ((byte = _getc_nolock(file)) != EOF && byte != '\n' && byte != stop) text += static_cast<char>(byte);
  return byte;
}

}  // namespace zvuti

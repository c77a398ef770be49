#include <string>

#include <ZvUtiLib/platform/Windows.h>

#include "platform/AppendFile.h"
#include "platform/Path.h"

namespace zvuti {
namespace {

HANDLE HandleOf(std::intptr_t handle) { return reinterpret_cast<HANDLE>(handle); }

}  // namespace

// The right to append and no other: then the system moves to the end and writes in one step. The append
// mode of the runtime library's files seeks first, and lines of two threads overwrite each other.
AppendFile::AppendFile(const char* path)
    : handle_(reinterpret_cast<std::intptr_t>(CreateFileA(
          WithNativeSeparators(path).c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
          OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr))) {}

AppendFile::~AppendFile() {
  if (IsOpen()) CloseHandle(HandleOf(handle_));
}

bool AppendFile::IsOpen() const { return HandleOf(handle_) != INVALID_HANDLE_VALUE; }

void AppendFile::Append(std::string_view text) {
  std::string bytes;
  bytes.reserve(text.size() + 8);
  for (const char byte : text) {  // 0x0A is never a trail byte
    if (byte == '\n') bytes += '\r';
    bytes += byte;
  }
  DWORD written = 0;
  WriteFile(HandleOf(handle_), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
}

}  // namespace zvuti

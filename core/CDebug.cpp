#include <ZvUtiLib/CDebug.h>
#include <ZvUtiLib/platform/CKxIOUti.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <exception>
#include <string_view>

#include "gbk/CodePage936.h"
#include "platform/AppendFile.h"
#include "platform/Doors.h"
#include "platform/Formatter.h"

namespace {

constexpr std::size_t kLongestText = 1023;

// Computed for every call: the log keeps no state between calls.
CString LogPath() { return CKxIOUti::GetAppPath() + "log/lobby.log"; }

// The log is called in catch blocks and destructors, so no failure of `work` may escape, and errno is
// preserved. Exceptions that are not std::exception pass through: the C library uses one to end a thread.
template <class Work>
void InSilence(Work work) {
  const int before = errno;
  try {
    work();
  } catch (const std::exception&) {
  }
  errno = before;
}

void AppendLine(const char* format, va_list arguments) {
  zvuti::AppendFile file(LogPath());
  if (!file.IsOpen()) return;

  SYSTEMTIME now{};
  zvuti::TheDoors().getLocalTime(&now);

  char line[64 + kLongestText + 2];
  const int stamp = std::snprintf(line, 64, "%04d-%02d-%02d %02d:%02d:%02d,%03d ", now.wYear, now.wMonth,
                                  now.wDay, now.wHour, now.wMinute, now.wSecond, now.wMilliseconds);
  // One byte beyond the limit shows whether the last character before it is whole.
  char* const text = line + stamp;
  zvuti::FormatBounded(text, kLongestText + 2, format ? format : "", arguments);
  const std::size_t length = zvuti::gbk::CutWhole(text, kLongestText).size();
  text[length] = '\n';
  file.Append({line, static_cast<std::size_t>(stamp) + length + 1});
}

}  // namespace

CDebug::CDebug() = default;
CDebug::CDebug(const CDebug&) = default;
CDebug& CDebug::operator=(const CDebug&) = default;
CDebug::~CDebug() = default;

void CDebug::LogInit() {
  InSilence([] {
    const CString path = LogPath();
    if (CKxIOUti::IsFileExist(path)) return;
    CKxIOUti::CreateDir(CKxIOUti::GetFilePath(path));
  });
}

void CDebug::LogOut(const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  InSilence([&] { AppendLine(format, arguments); });
  va_end(arguments);
}

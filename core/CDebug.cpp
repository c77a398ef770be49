#include <ZvUtiLib/CDebug.h>
#include <ZvUtiLib/platform/CKxIOUti.h>

#include <cstdarg>
#include <cstdio>
#include <string>
#include <string_view>

#include "platform/AppendFile.h"
#include "platform/CodePage936.h"
#include "platform/Doors.h"
#include "platform/Formatter.h"

namespace {

constexpr std::size_t kLongestText = 1023;

// Worked out anew each time: nothing of the log outlives a call.
CString LogPath() { return CKxIOUti::GetAppPath() + "log/lobby.log"; }

}  // namespace

CDebug::CDebug() = default;
CDebug::CDebug(const CDebug&) = default;
CDebug& CDebug::operator=(const CDebug&) = default;
CDebug::~CDebug() = default;

void CDebug::LogInit() {
  const CString path = LogPath();
  if (CKxIOUti::IsFileExist(path)) return;
  CKxIOUti::CreateDir(CKxIOUti::GetFilePath(path));
}

void CDebug::LogOut(const char* format, ...) {
  zvuti::AppendFile file(LogPath());
  if (!file.IsOpen()) return;

  SYSTEMTIME now{};
  zvuti::TheDoors().getLocalTime(&now);

  // One byte beyond the limit shows whether the last character within it is whole.
  char text[kLongestText + 2] = {};
  va_list arguments;
  va_start(arguments, format);
  zvuti::FormatBounded(text, sizeof text, format ? format : "", arguments);
  va_end(arguments);

  char stamp[64];
  std::snprintf(stamp, sizeof stamp, "%04d-%02d-%02d %02d:%02d:%02d,%03d ", now.wYear, now.wMonth, now.wDay,
                now.wHour, now.wMinute, now.wSecond, now.wMilliseconds);
  std::string line = stamp;
  line += zvuti::gbk::CutWhole(text, kLongestText);
  line += '\n';
  file.Append(line);
}

#include <ctime>
#include <string>

#include <ZvUtiLib/platform/Windows.h>

#include "platform/Doors.h"
#include "platform/Path.h"

namespace zvuti {
namespace {

void GetSystemLocalTime(SYSTEMTIME* out) { GetLocalTime(out); }

std::int64_t GetClockSeconds() { return _time64(nullptr); }

std::string GetApplicationFolder() {
  std::string program(MAX_PATH, '\0');
  DWORD length = 0;
  // A path that does not fit is cut and fills all the room.
  while ((length = GetModuleFileNameA(nullptr, program.data(), static_cast<DWORD>(program.size()))) ==
         program.size()) {
    program.resize(program.size() * 2);
  }
  const std::string_view folder = FolderOf(std::string_view(program).substr(0, length));
  return folder.empty() ? ".\\" : std::string(folder);
}

}  // namespace

Doors& TheDoors() {
  static Doors doors = {
      .getLocalTime = GetSystemLocalTime,
      .clockSeconds = GetClockSeconds,
      .applicationFolder = GetApplicationFolder,
  };
  return doors;
}

}  // namespace zvuti

#include <ctime>
#include <filesystem>
#include <string>
#include <system_error>

#include "platform/Doors.h"

namespace zvuti {
namespace {

timespec Now() {
  timespec now{};
  clock_gettime(CLOCK_REALTIME, &now);
  return now;
}

void GetSystemLocalTime(SYSTEMTIME* out) {
  const timespec now = Now();
  std::tm local{};
  localtime_r(&now.tv_sec, &local);
  const auto word = [](long value) { return static_cast<unsigned short>(value); };
  *out = {word(local.tm_year + 1900L), word(local.tm_mon + 1L),      word(local.tm_wday),
          word(local.tm_mday),         word(local.tm_hour),          word(local.tm_min),
          word(local.tm_sec),          word(now.tv_nsec / 1'000'000)};
}

// Not time(): it lags a little, and two clocks of one program should agree.
std::int64_t GetClockSeconds() { return Now().tv_sec; }

std::string GetApplicationFolder() {
  std::error_code error;
  std::string program = std::filesystem::read_symlink("/proc/self/exe", error).string();
  if (error) return "./";
  // A path of the system's own, in whatever encoding: only the slash separates, byte by byte.
  program.resize(program.rfind('/') + 1);
  return program;
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

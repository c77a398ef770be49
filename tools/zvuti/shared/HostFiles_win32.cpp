#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <random>
#include <system_error>

#include <ZvUtiLib/gbk/Conversion.h>

#include "shared/HostFiles.h"

namespace tool {
namespace {

// Sets errno for the last error of the system.
bool Failed() {
  const std::error_code error(static_cast<int>(GetLastError()), std::system_category());
  const std::error_condition condition = error.default_error_condition();
  errno = condition.category() == std::generic_category() ? condition.value() : EIO;
  return false;
}

}  // namespace

std::filesystem::path PathOf(const std::string& text) { return zvuti::Utf8ToUtf16(text).text; }
std::string TextOf(const std::filesystem::path& path) { return zvuti::Utf16ToUtf8(path.u16string()).text; }

std::FILE* OpenFile(const std::string& path, const char* mode) {
  return _wfopen(PathOf(path).c_str(),
                 std::wstring(mode, mode + std::char_traits<char>::length(mode)).c_str());
}

std::string MakeFile(const std::string& start) {
  constexpr std::string_view kCharacters = "abcdefghijklmnopqrstuvwxyz0123456789";
  std::random_device source;
  for (int attempt = 0; attempt < 100; ++attempt) {
    std::string path = start;
    for (int i = 0; i < 6; ++i) path += kCharacters[source() % kCharacters.size()];
    const int descriptor =
        _wopen(PathOf(path).c_str(), _O_CREAT | _O_EXCL | _O_RDWR | _O_BINARY, _S_IREAD | _S_IWRITE);
    if (descriptor >= 0) {
      _close(descriptor);
      return path;
    }
    if (errno != EEXIST) break;
  }
  return {};
}

// ReplaceFile keeps the rights and attributes of the old file.
bool PutInPlace(const std::string& file, const std::string& target) {
  const std::filesystem::path from = PathOf(file), to = PathOf(target);
  const bool isOld = GetFileAttributesW(to.c_str()) != INVALID_FILE_ATTRIBUTES;
  const BOOL isDone = isOld ? ReplaceFileW(to.c_str(), from.c_str(), nullptr, 0, nullptr, nullptr)
                            : MoveFileW(from.c_str(), to.c_str());
  return isDone != 0 || Failed();
}

std::optional<std::string> PathForLibrary(const std::string& path) {
  const auto isAscii = [](const std::string& text) {
    return std::all_of(text.begin(), text.end(),
                       [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
  };
  if (isAscii(path)) return path;
  const zvuti::Converted<std::string> gbk = zvuti::Utf8ToGbk(path);
  if (GetACP() == 936 && gbk.IsWhole()) return gbk.text;
  wchar_t buffer[MAX_PATH];
  const DWORD length = GetShortPathNameW(PathOf(path).c_str(), buffer, MAX_PATH);
  const std::string shortPath = length < MAX_PATH ? TextOf(std::wstring(buffer, length)) : std::string();
  if (shortPath.empty() || !isAscii(shortPath)) return std::nullopt;
  return shortPath;
}

}  // namespace tool

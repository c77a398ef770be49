// A console takes UTF-16 whatever its code page is. Everything that is redirected is bytes: text in UTF-8,
// with line feeds.
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

#include <algorithm>
#include <cstdio>
#include <iostream>
#include <iterator>
#include <streambuf>
#include <vector>

#include <ZvUtiLib/gbk/Conversion.h>

#include "shared/HostFiles.h"
#include "shared/Terminal.h"

namespace tool {
namespace {

bool IsConsole(DWORD which) {
  DWORD mode = 0;
  return GetConsoleMode(GetStdHandle(which), &mode) != 0;
}

// Writes UTF-8 to a console.
class ConsoleBuffer final : public std::streambuf {
 public:
  explicit ConsoleBuffer(DWORD which) : console_(GetStdHandle(which)) {}

 protected:
  int_type overflow(int_type byte) override {
    if (traits_type::eq_int_type(byte, traits_type::eof())) return traits_type::not_eof(byte);
    const char one = traits_type::to_char_type(byte);
    return xsputn(&one, 1) == 1 ? byte : traits_type::eof();
  }
  std::streamsize xsputn(const char* bytes, std::streamsize count) override {
    held_.append(bytes, static_cast<std::size_t>(count));
    return held_.size() < kMostHeld || sync() == 0 ? count : 0;
  }
  int sync() override {
    while (!held_.empty()) {
      const std::size_t size = SizeOfWhole(std::string_view(held_).substr(0, kMostHeld));
      if (size == 0) break;
      const std::u16string units = zvuti::Utf8ToUtf16(std::string_view(held_).substr(0, size)).text;
      DWORD written = 0;
      if (WriteConsoleW(console_, units.data(), static_cast<DWORD>(units.size()), &written, nullptr) == 0)
        return -1;
      held_.erase(0, size);
    }
    return 0;
  }

 private:
  static constexpr std::size_t kMostHeld = 8192;  // older consoles take 64 KB at most

  // The size of the text without a character that is cut at its end.
  static std::size_t SizeOfWhole(std::string_view utf8) {
    for (std::size_t tail = 1; tail <= 3 && tail <= utf8.size(); ++tail) {
      const auto lead = static_cast<unsigned char>(utf8[utf8.size() - tail]);
      if (lead < 0x80) break;
      if (lead < 0xC0) continue;
      const std::size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
      return length > tail ? utf8.size() - tail : utf8.size();
    }
    return utf8.size();
  }

  const HANDLE console_;
  std::string held_;
};

// Text goes to consoles through buffers of our own.
class Streams {
 public:
  Streams() {
    for (std::FILE* const stream : {stdin, stdout, stderr}) _setmode(_fileno(stream), _O_BINARY);
    if (IsConsole(STD_OUTPUT_HANDLE)) oldOut_ = std::cout.rdbuf(&out_);
    if (IsConsole(STD_ERROR_HANDLE)) oldError_ = std::cerr.rdbuf(&error_);
  }
  ~Streams() {
    if (oldOut_) std::cout.rdbuf(oldOut_);
    if (oldError_) std::cerr.rdbuf(oldError_);
  }

 private:
  ConsoleBuffer out_{STD_OUTPUT_HANDLE}, error_{STD_ERROR_HANDLE};
  std::streambuf* oldOut_ = nullptr;
  std::streambuf* oldError_ = nullptr;
};

// Lets the console understand colours, and gives it back its mode at the end.
class ColorMode {
 public:
  ColorMode() : console_(GetStdHandle(STD_OUTPUT_HANDLE)) {
    isSet_ = GetConsoleMode(console_, &mode_) != 0 &&
             SetConsoleMode(console_, mode_ | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
  }
  ~ColorMode() {
    if (isSet_) SetConsoleMode(console_, mode_);
  }
  bool IsSet() const { return isSet_; }

 private:
  const HANDLE console_;
  DWORD mode_ = 0;
  bool isSet_ = false;
};

// The shells of Windows leave wildcards to the program. A pattern without a match stays as it is.
std::vector<std::string> Expanded(const std::wstring& argument) {
  std::vector<std::string> names;
  const std::size_t wild = argument.find_first_of(L"*?"), end = argument.find_last_of(L"\\/:");
  const std::wstring folder = argument.substr(0, end == argument.npos ? 0 : end + 1);
  WIN32_FIND_DATAW found{};
  const HANDLE search =
      wild == argument.npos ? INVALID_HANDLE_VALUE : FindFirstFileW(argument.c_str(), &found);
  if (search != INVALID_HANDLE_VALUE) {
    do {
      if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0)
        names.push_back(TextOf(folder + found.cFileName));
    } while (FindNextFileW(search, &found) != 0);
    FindClose(search);
    std::sort(names.begin(), names.end());
  }
  if (names.empty()) names.push_back(TextOf(argument));
  return names;
}

std::vector<std::string> GivenArguments() {
  std::vector<std::string> arguments;
  int count = 0;
  wchar_t** const given = CommandLineToArgvW(GetCommandLineW(), &count);
  for (int i = 0; given && i < count; ++i) {
    std::vector<std::string> names = i == 0 ? std::vector{TextOf(given[i])} : Expanded(given[i]);
    std::move(names.begin(), names.end(), std::back_inserter(arguments));
  }
  LocalFree(given);
  return arguments;
}

}  // namespace

void StartTerminal(int& argc, char**& argv) {
  static const Streams streams;
  static std::vector<std::string> arguments = GivenArguments();
  static std::vector<char*> pointers;
  for (std::string& argument : arguments) pointers.push_back(argument.data());
  argc = static_cast<int>(pointers.size());
  pointers.push_back(nullptr);
  argv = pointers.data();
}

bool IsOutputTerminal() { return IsConsole(STD_OUTPUT_HANDLE); }
bool IsErrorTerminal() { return IsConsole(STD_ERROR_HANDLE); }

bool TakesColor() {
  static const ColorMode mode;
  return mode.IsSet();
}

void PrintBytes(std::string_view bytes) {
  std::cout.flush();
  if (std::fwrite(bytes.data(), 1, bytes.size(), stdout) != bytes.size() || std::fflush(stdout) != 0) {
    std::cout.setstate(std::ios_base::badbit);
  }
}

std::optional<std::string> ReadTyped() {
  if (!IsConsole(STD_INPUT_HANDLE)) return std::nullopt;
  constexpr char16_t kEnd = 0x1A;  // Ctrl+Z
  std::u16string text;
  char16_t units[1024];
  DWORD count = 0;
  while (text.find(kEnd) == text.npos &&
         ReadConsoleW(GetStdHandle(STD_INPUT_HANDLE), units, std::size(units), &count, nullptr) != 0 &&
         count > 0) {
    text.append(units, count);
  }
  return zvuti::Utf16ToUtf8(text.substr(0, text.find(kEnd))).text;
}

}  // namespace tool

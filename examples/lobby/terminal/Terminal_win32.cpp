#include <stdexcept>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <objbase.h>

#include "terminal/Terminal.h"

std::string TerminalText(const std::string& gbk) {
  static const BOOL isSet = SetConsoleOutputCP(CP_UTF8);  // fails if the output is not a console
  static_cast<void>(isSet);
  constexpr UINT kGbk = 936;
  const int bytes = static_cast<int>(gbk.size());
  std::wstring wide(gbk.size(), L'\0');  // a character never has more UTF-16 units than GBK bytes
  wide.resize(static_cast<std::size_t>(MultiByteToWideChar(kGbk, 0, gbk.data(), bytes, wide.data(), bytes)));
  const int units = static_cast<int>(wide.size());
  std::string utf8(wide.size() * 3, '\0');
  utf8.resize(static_cast<std::size_t>(WideCharToMultiByte(CP_UTF8, 0, wide.data(), units, utf8.data(),
                                                           static_cast<int>(utf8.size()), nullptr, nullptr)));
  return utf8;
}

void PrepareThreadForXml() {
  if (FAILED(CoInitialize(nullptr))) throw std::runtime_error("COM cannot be initialised");
}

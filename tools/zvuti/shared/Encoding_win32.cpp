#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <ZvUtiLib/gbk/Conversion.h>

#include "shared/Encoding.h"
#include "shared/HostFiles.h"

namespace tool {
namespace {

// The code page of an encoding, from the system's list of names and aliases; 0 if it is unknown.
UINT CodePageOf(const std::string& encoding) {
  constexpr wchar_t kNames[] = L"MIME\\Database\\Charset\\";
  const std::wstring key = kNames + PathOf(encoding).native();
  wchar_t alias[64];
  DWORD size = sizeof alias;
  if (RegGetValueW(HKEY_CLASSES_ROOT, key.c_str(), L"AliasForCharset", RRF_RT_REG_SZ, nullptr, alias,
                   &size) != 0) {
    alias[0] = L'\0';
  }
  DWORD page = 0;
  size = sizeof page;
  const bool isKnown =
      RegGetValueW(HKEY_CLASSES_ROOT, (alias[0] ? kNames + std::wstring(alias) : key).c_str(),
                   L"InternetEncoding", RRF_RT_REG_DWORD, nullptr, &page, &size) == 0;
  return isKnown ? page : 0;
}

}  // namespace

bool FromForeign(const std::string& encoding, std::string_view bytes, std::string& utf8) {
  const UINT page = CodePageOf(encoding);
  if (page == 0 || bytes.size() > 0x3FFFFFFF) return false;
  const int length = static_cast<int>(bytes.size());
  std::u16string units(bytes.size() + 1, u'\0');  // no code page makes more units than bytes
  const int count =
      MultiByteToWideChar(page, MB_ERR_INVALID_CHARS, bytes.data(), length,
                          reinterpret_cast<wchar_t*>(units.data()), static_cast<int>(units.size()));
  if (count == 0 && length > 0) return false;
  units.resize(static_cast<std::size_t>(count));
  utf8 = zvuti::Utf16ToUtf8(units).text;
  return true;
}

}  // namespace tool

#include <ZvUtiLib/CUtiBase.h>

#include <algorithm>
#include <string_view>

#include "gbk/Ascii.h"

namespace {

bool IsNameCharacter(char byte) {
  return zvuti::IsDigit(byte) || (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z') || byte == '_';
}

int IsName(const char* text, std::size_t shortest, std::size_t longest) {
  if (!text) return 0;
  const std::string_view name = text;
  if (name.size() < shortest || name.size() > longest) return 0;
  return std::all_of(name.begin(), name.end(), IsNameCharacter) ? 1 : 0;
}

}  // namespace

CUtiBase::CUtiBase() = default;
CUtiBase::CUtiBase(const CUtiBase&) = default;
CUtiBase& CUtiBase::operator=(const CUtiBase&) = default;
CUtiBase::~CUtiBase() = default;

int CUtiBase::CheckAccountValid(const char* text) { return IsName(text, 4, 16); }
int CUtiBase::CheckPasswdValid(const char* text) { return IsName(text, 6, 20); }

int CUtiBase::IsDigit(const CString& text) {
  const char* bytes = text.GetString();
  return std::all_of(bytes, bytes + text.GetLength(), zvuti::IsDigit) ? 1 : 0;
}

int CUtiBase::IsDigit(char byte) { return zvuti::IsDigit(byte) ? 1 : 0; }

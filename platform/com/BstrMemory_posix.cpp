#include "platform/com/BstrMemory.h"

#include <cstring>
#include <new>

namespace {

// The length in bytes stands in the 4 bytes in front of the text.
constexpr std::size_t kHeader = sizeof(std::uint32_t);
constexpr unsigned kMostUnits = 0x7FFFFFFEu / sizeof(WCHAR);

char* BlockOf(BSTR text) { return reinterpret_cast<char*>(text) - kHeader; }

}  // namespace

BSTR SysAllocStringLen(const WCHAR* text, unsigned length) {
  if (length > kMostUnits) return nullptr;
  auto* block = static_cast<char*>(::operator new(kHeader + (length + 1) * sizeof(WCHAR), std::nothrow));
  if (!block) return nullptr;
  const auto result = reinterpret_cast<BSTR>(block + kHeader);
  if (text) std::memcpy(result, text, length * sizeof(WCHAR));
  zvuti::ShortenBstr(result, length);
  return result;
}

void SysFreeString(BSTR text) {
  if (text) ::operator delete(BlockOf(text));
}

unsigned SysStringLen(BSTR text) {
  if (!text) return 0;
  std::uint32_t bytes;
  std::memcpy(&bytes, BlockOf(text), sizeof bytes);
  return static_cast<unsigned>(bytes / sizeof(WCHAR));
}

void VariantInit(VARIANT* value) { value->vt = VT_EMPTY; }

HRESULT VariantClear(VARIANT* value) {
  if (value->vt == VT_BSTR) SysFreeString(value->bstrVal);
  value->vt = VT_EMPTY;
  return S_OK;
}

namespace zvuti {

void ShortenBstr(BSTR text, unsigned length) {
  const auto bytes = static_cast<std::uint32_t>(length * sizeof(WCHAR));
  std::memcpy(BlockOf(text), &bytes, sizeof bytes);
  text[length] = 0;
}

}  // namespace zvuti

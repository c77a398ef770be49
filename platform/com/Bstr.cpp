#include "platform/com/Bstr.h"

#include <cstring>
#include <iterator>
#include <memory>
#include <new>
#include <string_view>

#include "gbk/CodePage936.h"

namespace zvuti {

static_assert(sizeof(WCHAR) == sizeof(char16_t));

Bstr::Bstr(const char* text) {
  const std::string_view bytes = text ? text : "";
  char16_t inPlace[64];  // names and selections are short
  std::unique_ptr<char16_t[]> large;
  if (bytes.size() > std::size(inPlace)) large = std::make_unique<char16_t[]>(bytes.size());
  char16_t* const units = large ? large.get() : inPlace;
  const std::size_t count = gbk::ToUtf16(bytes, units);
  text_ = SysAllocStringLen(nullptr, static_cast<unsigned>(count));
  if (!text_) throw std::bad_alloc();
  std::memcpy(text_, units, count * sizeof(char16_t));
}

BSTR Bstr::Detach() {
  const BSTR text = text_;
  text_ = nullptr;
  return text;
}

Variant::Variant() {
  VariantInit(&value_);
  value_.vt = VT_I4;
  value_.lVal = 0;
}

Variant::Variant(const char* text) {
  VariantInit(&value_);
  Bstr source(text);
  value_.vt = VT_BSTR;
  value_.bstrVal = source.Detach();
}

}  // namespace zvuti

// PointsInto: does a pointer lead into a text? For arguments that may be part of the result.
#pragma once

#include <functional>
#include <string_view>

#include <ZvUtiLib/platform/CString.h>

namespace zvuti {

/// True if `pointer` points to a byte of `text` or to its end. std::less_equal orders any two pointers, also
/// those into different objects.
inline bool PointsInto(std::string_view text, const char* pointer) {
  const std::less_equal<const char*> isUpTo;
  return isUpTo(text.data(), pointer) && isUpTo(pointer, text.data() + text.size());
}

inline bool PointsInto(const CString& text, const char* pointer) {
  return PointsInto(std::string_view(text.GetString(), static_cast<std::size_t>(text.GetLength())), pointer);
}

}  // namespace zvuti

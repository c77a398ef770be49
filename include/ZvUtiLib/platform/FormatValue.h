// How LogOut and the Format operations take objects among their values. A C-variadic operation cannot: it
// would read the object's memory as a number or an address. An overload beside it, which takes calls with
// an object among their values, hands on the bytes of texts and refuses every other class.
#pragma once

#include <memory>
#include <string>
#include <type_traits>
#include <utility>

#include <ZvUtiLib/Export.h>

namespace zvuti {

/// The zero-terminated bytes that "%s" prints. CString and CTextString have friends of this name. They take
/// a pointer: a class derived from a text is a text, one that only converts to a text is none.
inline const char* TextForFormat(const std::string* text) { return text->c_str(); }

/// Whether objects of this type are texts with a function TextForFormat.
template <class T, class = void>
inline constexpr bool kIsFormatText = false;
/// As above.
template <class T>
inline constexpr bool kIsFormatText<
    T, std::enable_if_t<std::is_same_v<decltype(TextForFormat(std::declval<const T*>())), const char*>>> =
    true;

/// Whether one of these types is a class or a union.
template <class... Values>
inline constexpr bool kHasObjects = ((std::is_class_v<Values> || std::is_union_v<Values>) || ...);

/// `value` as a C-variadic operation takes it: the bytes of a text, which are good as long as the text is;
/// numbers, enumerations and pointers as they are, arrays and functions as pointers. Nothing else compiles.
template <class T>
auto FormatValue(const T& value) {
  if constexpr (kIsFormatText<T>) {
    return TextForFormat(std::addressof(value));
  } else if constexpr (kHasObjects<T>) {
    static_assert(!kHasObjects<T>,
                  "A format prints numbers, pointers and the texts CString, std::string and CTextString. "
                  "Of any other object write what %s or %d shall print: .c_str() of a text, "
                  "std::string(view) of a view, .count() of a duration.");
    return 0;
  } else if constexpr (std::is_same_v<std::remove_cv_t<T>, float>) {
    return static_cast<double>(value);  // it travels as one; said here, a client's compiler warns of nothing
  } else {
    return value;
  }
}

}  // namespace zvuti

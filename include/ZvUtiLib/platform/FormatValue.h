// Lets LogOut and the Format operations take objects among their values. A C-variadic function cannot: it
// would read the object's memory as a number or an address. So an overload takes the calls with an object
// among their values. It passes on the bytes of strings and rejects every other class.
#pragma once

#include <memory>
#include <string>
#include <type_traits>
#include <utility>

#include <ZvUtiLib/Export.h>

namespace zvuti {

/// Returns the zero-terminated bytes that "%s" prints. CString and CTextString have friends of this name. The
/// parameter is a pointer, so that a class derived from a string class counts as a string, but a class that
/// only converts to one does not.
inline const char* TextForFormat(const std::string* text) { return text->c_str(); }

/// Whether TextForFormat accepts objects of this type.
template <class T, class = void>
inline constexpr bool kIsFormatText = false;
/// As above.
template <class T>
inline constexpr bool kIsFormatText<
    T, std::enable_if_t<std::is_same_v<decltype(TextForFormat(std::declval<const T*>())), const char*>>> =
    true;

/// Whether any of these types is a class or a union.
template <class... Values>
inline constexpr bool kHasObjects = ((std::is_class_v<Values> || std::is_union_v<Values>) || ...);

/// Returns `value` as a C-variadic function takes it: the bytes of a string, valid as long as the string is;
/// numbers and pointers unchanged; enumerations as their numbers; arrays and functions as pointers. No other
/// type compiles.
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
  } else if constexpr (std::is_enum_v<T>) {
    // A scoped enumeration is not promoted: on 32-bit Windows a small one would bring unset upper bytes
    // along.
    return +static_cast<std::underlying_type_t<T>>(value);
  } else if constexpr (std::is_same_v<std::remove_cv_t<T>, float>) {
    return static_cast<double>(value);  // promoted anyway; explicit to avoid warnings in clients
  } else {
    return value;
  }
}

}  // namespace zvuti

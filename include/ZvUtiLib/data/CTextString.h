// CTextString: the string class of the data and record classes; 24 bytes on every target.
#pragma once

#include <cstdarg>
#include <cstdint>
#include <memory>
#include <string_view>
#include <type_traits>

#include <ZvUtiLib/Export.h>
#include <ZvUtiLib/data/SizedMemory.h>
#include <ZvUtiLib/platform/FormatValue.h>

/// Holds bytes in code page 936 (GBK). All lengths and positions count bytes, and a zero byte always
/// follows the text. Up to 15 bytes are stored inside the object, longer texts in one sized block of
/// capacity + 1 bytes. The string keeps that block until it is destroyed, even if its text becomes short.
///
/// A text passed to an operation may lie inside the string itself, unless the operation says otherwise.
/// A position beyond the length throws std::out_of_range, a length beyond max_size() throws
/// std::length_error, and a failed allocation throws std::bad_alloc; the string is then unchanged.
/// One object may be used by one thread at a time.
class ZVUTILIB_API CTextString {
 public:
  /// The result of `find` if nothing is found; as a count, "everything up to the end".
  static constexpr unsigned npos = 0xFFFFFFFF;

  /// Empty.
  CTextString() noexcept = default;
  /// Copies a zero-terminated text; null makes an empty string.
  CTextString(const char* text);  // NOLINT(google-explicit-constructor): texts convert, as users expect
  /// Copies bytes, embedded zero bytes included.
  explicit CTextString(std::string_view text);
  CTextString(const CTextString& other) : CTextString(std::string_view(other)) {}
  /// Takes the storage of `other` and leaves it empty.
  CTextString(CTextString&& other) noexcept { Swap(other); }
  ~CTextString() {
    if (!IsInline()) SizedAllocator<char>().deallocate(storage_.block, capacity_ + std::size_t{1});
  }

  /// Copies the bytes of `other`.
  CTextString& operator=(const CTextString& other) { return assign(other.data(), other.length_); }
  /// Swaps the two strings.
  CTextString& operator=(CTextString&& other) noexcept {
    Swap(other);
    return *this;
  }
  /// Copies a zero-terminated text; null empties the string.
  CTextString& operator=(const char* text);

  /// The bytes, zero-terminated. Valid until the string grows or is destroyed.
  const char* c_str() const { return data(); }
  /// The same bytes. Those within the length may be changed.
  const char* data() const { return IsInline() ? storage_.bytes : storage_.block; }
  char* data() { return IsInline() ? storage_.bytes : storage_.block; }
  /// Length in bytes, without the terminator.
  unsigned size() const { return length_; }
  /// Whether the length is 0.
  bool empty() const { return length_ == 0; }
  /// The length that fits without a new block.
  unsigned capacity() const { return capacity_; }
  /// The largest length that a string can have.
  static constexpr unsigned max_size() { return 0xFFFFFFFE; }

  /// The byte at `index`. REQUIRES: index <= size(); the terminator reads as 0.
  char operator[](unsigned index) const { return data()[index]; }
  /// The byte at `index`, for writing. REQUIRES: index < size().
  char& operator[](unsigned index) { return data()[index]; }

  /// A view of all bytes. Valid until the string grows or is destroyed.
  operator std::string_view() const { return {data(), length_}; }  // NOLINT(google-explicit-constructor)

  /// Assigns the first `count` bytes of `text`.
  CTextString& assign(const char* text, unsigned count) { return Splice(0, length_, text, count); }
  /// Assigns up to `count` bytes of `other`, starting at `position`.
  CTextString& assign(const CTextString& other, unsigned position, unsigned count);

  /// Appends the byte `fill` `count` times.
  CTextString& append(unsigned count, char fill);
  /// Appends the first `count` bytes of `text`.
  CTextString& append(const char* text, unsigned count) { return Splice(length_, 0, text, count); }

  /// Removes up to `count` bytes, starting at `position`.
  CTextString& erase(unsigned position = 0, unsigned count = npos) {
    return replace(position, count, nullptr, 0);
  }
  /// Replaces up to `count` bytes at `position` with the first `textCount` bytes of `text`.
  CTextString& replace(unsigned position, unsigned count, const char* text, unsigned textCount);

  /// Position of the first occurrence of the first `count` bytes of `text` at or after `position`, or
  /// npos. An empty text is found at `position`, if that is not beyond the length.
  unsigned find(const char* text, unsigned position, unsigned count) const;
  /// The same for a zero-terminated text.
  unsigned find(const char* text, unsigned position = 0) const;

  /// Sets the length, truncating or padding with zero bytes, and returns the bytes for writing.
  char* ResizeBuffer(unsigned length);

  /// Replaces every occurrence of `oldText` with `newText` and returns the number of replacements. A null
  /// `newText` counts as empty. Works from left to right and does not search the inserted text.
  /// REQUIRES: oldText is not empty; otherwise nothing is replaced.
  unsigned ReplaceAll(const char* oldText, const char* newText);

  /// Assigns the formatted text. The rules are those of the platform's vsprintf: `%I64d` (or `%lld`) takes
  /// 64 bits; `%S` and `%ls` take 16-bit characters and write GBK. The result ends at its first zero byte.
  /// Reserves an estimated upper bound of the length first, with 32 bytes for an integer, and keeps that
  /// capacity. If the bound is too small and the heap refuses more, the string is left empty.
  /// REQUIRES: no argument lies in this string.
  void Format(const char* format, ...);
  /// The same with a va_list, which is consumed.
  void FormatV(const char* format, va_list arguments);
  /// The same, but string objects may be passed: "%s" prints a CString, a std::string or a CTextString up
  /// to its first zero byte. This string itself may be an argument; it then gets new storage. An object of
  /// any other class does not compile.
  template <class... Values, std::enable_if_t<zvuti::kHasObjects<Values...>, int> = 0>
  void Format(const char* format, const Values&... values) {
    if ((IsThis(values) || ...)) {
      CTextString apart;
      apart.Format(format, zvuti::FormatValue(values)...);
      Swap(apart);
    } else {
      Format(format, zvuti::FormatValue(values)...);
    }
  }
  /// Returns the text that "%s" prints for a string.
  friend const char* TextForFormat(const CTextString* text) { return text->c_str(); }

  /// Whether the bytes are the same; a null text counts as "".
  friend bool operator==(const CTextString& a, const CTextString& b) { return View(a) == View(b); }
  friend bool operator==(const CTextString& a, const char* b) { return View(a) == View(b); }
  friend bool operator==(const char* a, const CTextString& b) { return View(a) == View(b); }
  friend bool operator!=(const CTextString& a, const CTextString& b) { return !(a == b); }
  friend bool operator!=(const CTextString& a, const char* b) { return !(a == b); }
  friend bool operator!=(const char* a, const CTextString& b) { return !(a == b); }
  /// Compares as unsigned bytes; a prefix of a string comes before it.
  friend bool operator<(const CTextString& a, const CTextString& b) { return View(a) < View(b); }
  friend bool operator>(const CTextString& a, const CTextString& b) { return b < a; }
  friend bool operator<=(const CTextString& a, const CTextString& b) { return !(b < a); }
  friend bool operator>=(const CTextString& a, const CTextString& b) { return !(a < b); }

 private:
  static constexpr unsigned kInline = 15;

  union Storage {
    char bytes[kInline + 1];
    char* block;
  };

  static std::string_view View(const CTextString& text) { return text; }
  static std::string_view View(const char* text) {
    return text ? std::string_view(text) : std::string_view();
  }

  template <class T>
  bool IsThis(const T& value) const {
    if constexpr (std::is_convertible_v<const T*, const CTextString*>) {
      return static_cast<const CTextString*>(std::addressof(value)) == this;
    } else {
      return false;
    }
  }

  bool IsInline() const { return capacity_ <= kInline; }
  void Swap(CTextString& other) noexcept;
  void SetLength(unsigned length) {
    length_ = length;
    data()[length] = '\0';
  }
  /// Returns the length after `removed` bytes are removed and `added` bytes are added. Throws
  /// std::length_error if it is not allowed.
  unsigned LengthAfter(unsigned removed, std::size_t added) const;
  /// Allocates a block of `capacity` + 1 bytes and moves the text there.
  void MoveToBlock(unsigned capacity);
  /// Makes room for `length` bytes by the growth rule.
  void Reserve(unsigned length);
  /// `replace` with bounds already checked.
  CTextString& Splice(unsigned position, unsigned removed, const char* text, std::size_t added);

  Storage storage_{};
  std::uint32_t length_ = 0;
  std::uint32_t capacity_ = kInline;
};

static_assert(sizeof(CTextString) == 24, "records rely on the size of a string");

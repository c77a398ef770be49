// CTextString: the string of data support, 24 bytes on every target.
#pragma once

#include <cstdarg>
#include <cstdint>
#include <memory>
#include <string_view>
#include <type_traits>

#include <ZvUtiLib/Export.h>
#include <ZvUtiLib/data/SizedMemory.h>
#include <ZvUtiLib/platform/FormatValue.h>

/// Holds bytes in code page 936 (GBK); all lengths and positions count bytes, and the bytes are always
/// zero-terminated behind the length. Up to 15 bytes lie inside the object, longer texts in one sized
/// block of capacity + 1 bytes, which the string keeps until its end, however short its text becomes.
///
/// A text handed to an operation may lie inside the string itself, except where the operation says
/// otherwise. A position beyond the length throws std::out_of_range, a length beyond max_size()
/// std::length_error, a heap that refuses a block std::bad_alloc; the string is unchanged then.
/// One object serves one thread at a time.
class ZVUTILIB_API CTextString {
 public:
  /// What `find` gives when there is nothing to find; as a count it means "all that remains".
  static constexpr unsigned npos = 0xFFFFFFFF;

  /// Empty.
  CTextString() noexcept = default;
  /// Copies a zero-terminated text; null gives an empty string.
  CTextString(const char* text);  // NOLINT(google-explicit-constructor): texts convert, as users expect
  /// Copies bytes, embedded zero bytes included.
  explicit CTextString(std::string_view text);
  CTextString(const CTextString& other) : CTextString(std::string_view(other)) {}
  /// Takes the other's storage and leaves it empty.
  CTextString(CTextString&& other) noexcept { Swap(other); }
  ~CTextString() {
    if (!IsInline()) SizedAllocator<char>().deallocate(storage_.block, capacity_ + std::size_t{1});
  }

  /// Copies the bytes of `other`.
  CTextString& operator=(const CTextString& other) { return assign(other.data(), other.length_); }
  /// The two strings change places.
  CTextString& operator=(CTextString&& other) noexcept {
    Swap(other);
    return *this;
  }
  /// Copies a zero-terminated text; null empties the string.
  CTextString& operator=(const char* text);

  /// The bytes, zero-terminated; good until the string grows or ends.
  const char* c_str() const { return data(); }
  /// The same bytes, which may be changed within the length.
  const char* data() const { return IsInline() ? storage_.bytes : storage_.block; }
  char* data() { return IsInline() ? storage_.bytes : storage_.block; }
  /// Length in bytes, without the terminator.
  unsigned size() const { return length_; }
  /// Whether the length is 0.
  bool empty() const { return length_ == 0; }
  /// Length that fits before the string takes a new block.
  unsigned capacity() const { return capacity_; }
  /// The largest length that a string can have.
  static constexpr unsigned max_size() { return 0xFFFFFFFE; }

  /// The byte at `index`. REQUIRES: index <= size(); the terminator reads as 0.
  char operator[](unsigned index) const { return data()[index]; }
  /// The byte at `index`, to be changed. REQUIRES: index < size().
  char& operator[](unsigned index) { return data()[index]; }

  /// A view of all bytes, good until the string grows or ends.
  operator std::string_view() const { return {data(), length_}; }  // NOLINT(google-explicit-constructor)

  /// Becomes the first `count` bytes of `text`.
  CTextString& assign(const char* text, unsigned count) { return Splice(0, length_, text, count); }
  /// Becomes up to `count` bytes of `other` from `position` on.
  CTextString& assign(const CTextString& other, unsigned position, unsigned count);

  /// Adds `count` times the byte `fill`.
  CTextString& append(unsigned count, char fill);
  /// Adds the first `count` bytes of `text`.
  CTextString& append(const char* text, unsigned count) { return Splice(length_, 0, text, count); }

  /// Removes up to `count` bytes from `position` on.
  CTextString& erase(unsigned position = 0, unsigned count = npos) {
    return replace(position, count, nullptr, 0);
  }
  /// Puts the first `textCount` bytes of `text` in the place of up to `count` bytes at `position`.
  CTextString& replace(unsigned position, unsigned count, const char* text, unsigned textCount);

  /// Position of the first occurrence of the first `count` bytes of `text` at or after `position`, or
  /// npos. An empty text is found at `position`, if that is not beyond the length.
  unsigned find(const char* text, unsigned position, unsigned count) const;
  /// The same for a zero-terminated text.
  unsigned find(const char* text, unsigned position = 0) const;

  /// Sets the length, cutting or padding with zero bytes, and gives the bytes to be written to.
  char* ResizeBuffer(unsigned length);

  /// Replaces every occurrence of `oldText` by `newText` (null: by nothing) and gives the number of
  /// replacements. Goes from left to right and never looks into what it has put in.
  /// REQUIRES: oldText is not empty; nothing is replaced otherwise.
  unsigned ReplaceAll(const char* oldText, const char* newText);

  /// Becomes the formatted text, by the rules of the platform's vsprintf: `%I64d` (or `%lld`) takes 64
  /// bits, `%S` and `%ls` take 16-bit characters and give GBK. A text that holds a zero byte ends there.
  /// Room is made first for an upper bound of the length, 32 bytes for an integer, and is kept.
  /// Where the heap refuses more when the bound turns out too small, the string is left empty.
  /// REQUIRES: no argument lies in this string.
  void Format(const char* format, ...);
  /// The same with a ready argument list, which is consumed.
  void FormatV(const char* format, va_list arguments);
  /// The same with texts among the values: "%s" prints a CString, a std::string or a CTextString as far as
  /// its first zero byte. This string itself may be one of them; it gets new storage then. An object of any
  /// other class does not compile.
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
  /// What "%s" prints of a string.
  friend const char* TextForFormat(const CTextString* text) { return text->c_str(); }

  /// Whether the bytes are the same; a null text counts as "".
  friend bool operator==(const CTextString& a, const CTextString& b) { return View(a) == View(b); }
  friend bool operator==(const CTextString& a, const char* b) { return View(a) == View(b); }
  friend bool operator==(const char* a, const CTextString& b) { return View(a) == View(b); }
  friend bool operator!=(const CTextString& a, const CTextString& b) { return !(a == b); }
  friend bool operator!=(const CTextString& a, const char* b) { return !(a == b); }
  friend bool operator!=(const char* a, const CTextString& b) { return !(a == b); }
  /// Order of unsigned bytes; the shorter of two equal beginnings comes first.
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
  /// Throws std::length_error unless `removed` bytes less and `added` bytes more make an allowed length.
  unsigned LengthAfter(unsigned removed, std::size_t added) const;
  /// Takes a block of `capacity` + 1 bytes and moves the text there.
  void MoveToBlock(unsigned capacity);
  /// Makes room for `length` bytes by the growth rule.
  void Reserve(unsigned length);
  /// `replace` within checked bounds.
  CTextString& Splice(unsigned position, unsigned removed, const char* text, std::size_t added);

  Storage storage_{};
  std::uint32_t length_ = 0;
  std::uint32_t capacity_ = kInline;
};

static_assert(sizeof(CTextString) == 24, "records rely on the size of a string");

// The binary stream: the one wire and storage form of records.
//
// Little-endian, with no tags, padding or overall length: the order of the calls is the schema. A
// stream has no read position; reading takes bytes off the front and moves the rest down, so a later
// write appends behind what is still unread. Nothing is ever reported: a read that finds too few bytes
// leaves its target and the stream alone, and a write without memory adds nothing. A caller that needs
// to know compares Length. One object serves one thread at a time.
#pragma once

#include <cstdint>
#include <string>
#include <type_traits>

#include <ZvUtiLib/Export.h>
#include <ZvUtiLib/data/CByteBuffer.h>

class CTextString;

namespace zvuti::wire {
class Cursor;
}

/// The appending side; it exists only as the base of CStreamReader.
class ZVUTILIB_API CStreamWriter : public CByteBuffer {
 public:
  /// Appends bytes as CByteBuffer::Append does.
  unsigned char* Write(const void* bytes, unsigned count) { return Append(bytes, count); }

 protected:
  CStreamWriter() = default;
};

/// A stream: appends and consumes.
class ZVUTILIB_API CStreamReader : public CStreamWriter {
 public:
  /// Empty, with no storage.
  CStreamReader() = default;
  /// Holds a copy of the string's bytes, embedded zero bytes included.
  explicit CStreamReader(const std::string& bytes);
  /// Holds a copy of `count` bytes; null `bytes` only make room for them.
  CStreamReader(const void* bytes, unsigned count);

  /// Takes `count` bytes off the front into `out`, which may lie inside the stream. With fewer bytes
  /// there, or a count below 1, nothing happens.
  void Read(void* out, int count);

 private:
  friend class zvuti::wire::Cursor;

  /// Takes `count` bytes off the front, unseen. REQUIRES: 0 <= count <= Length().
  void Drop(int count) noexcept;
};

namespace zvuti::wire {

/// What travels as its own bytes: integers, and bool as a byte of 0 or 1. Floats, enumerations and
/// pointers do not travel.
template <class T, bool kIsIntegral = std::is_integral_v<T>>
inline constexpr bool kIsPlain = false;
/// The widths that travel.
template <class T>
inline constexpr bool kIsPlain<T, true> = std::is_same_v<T, std::remove_cv_t<T>> &&
                                          (sizeof(T) == 1 || sizeof(T) == 2 || sizeof(T) == 4 ||
                                           sizeof(T) == 8);

}  // namespace zvuti::wire

/// Writes an integer as sizeof(T) bytes. std::size_t, `long` and wchar_t have 4, 4 and 2 bytes on 32-bit
/// Windows and 8, 8 and 4 on 64-bit Linux: cast them first, `stream << static_cast<std::uint32_t>(n)`.
template <class T, std::enable_if_t<zvuti::wire::kIsPlain<T>, int> = 0>
CStreamWriter& operator<<(CStreamWriter& out, T value) {
  out.Write(&value, sizeof value);
  return out;
}

/// Reads an integer of sizeof(T) bytes. A bool is true for every byte but 0.
template <class T, std::enable_if_t<zvuti::wire::kIsPlain<T>, int> = 0>
CStreamReader& operator>>(CStreamReader& in, T& value) {
  if constexpr (std::is_same_v<T, bool>) {
    std::uint8_t flag = value ? 1 : 0;
    in.Read(&flag, 1);
    value = flag != 0;
  } else {
    in.Read(&value, sizeof value);
  }
  return in;
}

/// Text form: a 16-bit count, then that many bytes. Of a longer text the count has the low 16 bits of
/// its length, and as many leading bytes follow. The text may lie inside the stream, its spare room included.
ZVUTILIB_API CStreamWriter& operator<<(CStreamWriter& out, const std::string& text);
/// The same for a text up to its terminator. REQUIRES: text is not null.
ZVUTILIB_API CStreamWriter& operator<<(CStreamWriter& out, const char* text);
/// Refuses `nullptr`, which is no text.
template <class T, std::enable_if_t<std::is_null_pointer_v<T>, int> = 0>
CStreamWriter& operator<<(CStreamWriter& out, T) {
  static_assert(!std::is_null_pointer_v<T>, "nullptr is no text: write \"\" for an empty one.");
  return out;
}
/// The same for all bytes of a string or buffer, zero bytes included.
ZVUTILIB_API CStreamWriter& operator<<(CStreamWriter& out, const CTextString& text);
ZVUTILIB_API CStreamWriter& operator<<(CStreamWriter& out, const CByteBuffer& bytes);

/// The string gets the size of the count, 0 included. Where the body is missing, it keeps what it had
/// within that size, extended with zero bytes; the count is gone and the body's bytes stay.
ZVUTILIB_API CStreamReader& operator>>(CStreamReader& in, std::string& text);
/// As for std::string, but a count of 0 leaves the target as it was.
ZVUTILIB_API CStreamReader& operator>>(CStreamReader& in, CTextString& text);
/// A count of 0 leaves the target as it was; so does a heap that refuses the room for the body, which
/// then stays on the stream. Where the body is missing, the buffer has the new length all the same.
ZVUTILIB_API CStreamReader& operator>>(CStreamReader& in, CByteBuffer& bytes);

// The binary stream: the wire and storage format of all records.
//
// The format is little-endian and has no tags, padding or overall length: the order of the calls is the
// schema. A stream has no read position. Reading removes bytes from the front and moves the rest down, so
// a later write appends after the unread bytes. Errors are not reported: a read that finds too few bytes
// leaves its target and the stream unchanged, and a write that gets no memory appends nothing. To detect
// either, compare Length before and after. One object may be used by one thread at a time.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include <ZvUtiLib/Export.h>
#include <ZvUtiLib/data/CByteBuffer.h>

class CString;
class CTextString;

namespace zvuti::wire {
class Cursor;
}

/// The writing half of a stream; used only as the base class of CStreamReader.
class ZVUTILIB_API CStreamWriter : public CByteBuffer {
 public:
  /// Appends bytes; see CByteBuffer::Append.
  unsigned char* Write(const void* bytes, unsigned count) { return Append(bytes, count); }

 protected:
  CStreamWriter() = default;
  CStreamWriter(CStreamWriter&&) noexcept = default;             ///< see CByteBuffer
  CStreamWriter& operator=(CStreamWriter&&) noexcept = default;  ///< see CByteBuffer
};

/// A stream: appends at the end and reads from the front. It can be moved, so functions return it, but not
/// copied; a stream that was moved from has no bytes and no storage, and may be used again.
class ZVUTILIB_API CStreamReader : public CStreamWriter {
 public:
  /// Empty, with no storage.
  CStreamReader() = default;
  /// Holds a copy of the string's bytes, embedded zero bytes included.
  explicit CStreamReader(const std::string& bytes);
  /// Holds a copy of `count` bytes. If `bytes` is null, only reserves room for them.
  CStreamReader(const void* bytes, unsigned count);

  /// Moves `count` bytes from the front into `out`, which may lie inside the stream. Does nothing if the
  /// stream holds fewer bytes or `count` is below 1.
  void Read(void* out, int count);

 private:
  friend class zvuti::wire::Cursor;

  /// Discards `count` bytes from the front. REQUIRES: 0 <= count <= Length().
  void Drop(int count) noexcept;
};

namespace zvuti::wire {

/// True for types that are written as their own bytes: integers, and bool as a byte of 0 or 1. False for
/// floats, enumerations and pointers, which cannot be written.
template <class T, bool kIsIntegral = std::is_integral_v<T>>
inline constexpr bool kIsPlain = false;
/// The supported widths are 1, 2, 4 and 8 bytes.
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

/// Reads an integer of sizeof(T) bytes. A bool is true for every byte except 0.
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

/// Reads from a stream that has no name, such as the result of a function: `Receive() >> record >> text`. The
/// result is that stream with the rest of its bytes; keep it with `CStreamReader rest = Receive() >> record`.
template <class T>
CStreamReader&& operator>>(CStreamReader&& in, T& value) {
  in >> value;
  return std::move(in);
}

/// Writes the text form: a 16-bit count, then that many bytes. If the text is longer than 65,535 bytes, the
/// count is the low 16 bits of its length, and only that many leading bytes are written. The text may lie
/// inside the stream, including its unused capacity.
ZVUTILIB_API CStreamWriter& operator<<(CStreamWriter& out, const std::string& text);
/// The same for a zero-terminated text, and for a CString up to its first zero byte. REQUIRES: text is not
/// null.
ZVUTILIB_API CStreamWriter& operator<<(CStreamWriter& out, const char* text);
/// Rejects `nullptr` at compile time.
template <class T, std::enable_if_t<std::is_null_pointer_v<T>, int> = 0>
CStreamWriter& operator<<(CStreamWriter& out, T) {
  static_assert(!std::is_null_pointer_v<T>, "nullptr is no text: write \"\" for an empty one.");
  return out;
}
/// The same for all bytes of a view, string or buffer, zero bytes included.
ZVUTILIB_API CStreamWriter& operator<<(CStreamWriter& out, std::string_view text);
ZVUTILIB_API CStreamWriter& operator<<(CStreamWriter& out, const CTextString& text);
ZVUTILIB_API CStreamWriter& operator<<(CStreamWriter& out, const CByteBuffer& bytes);

/// Resizes the string to the count, even if that is 0, and reads the body into it. If the body is
/// incomplete, the string keeps its old bytes up to that size, padded with zero bytes. The count is then
/// consumed, and the bytes of the body stay on the stream.
ZVUTILIB_API CStreamReader& operator>>(CStreamReader& in, std::string& text);
ZVUTILIB_API CStreamReader& operator>>(CStreamReader& in, CString& text);
/// As for std::string, but a count of 0 leaves the target unchanged.
ZVUTILIB_API CStreamReader& operator>>(CStreamReader& in, CTextString& text);
/// A count of 0 leaves the target unchanged. So does a failed allocation; the body then stays on the
/// stream. If the body is incomplete, the buffer still gets the new length.
ZVUTILIB_API CStreamReader& operator>>(CStreamReader& in, CByteBuffer& bytes);

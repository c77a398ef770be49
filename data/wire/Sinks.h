// Sinks: the destinations of a record writer. The same walk over the rows first counts and then stores, so
// the measured size always equals the size written.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <exception>
#include <limits>

#include <ZvUtiLib/data/CStream.h>

namespace zvuti::wire {

/// Thrown for a member or tag that its enumeration does not have.
class UnknownMember : public std::exception {
 public:
  const char* what() const noexcept override { return "unknown enumeration member."; }
};

/// Counts the bytes that would be written.
struct CountSink {
  static constexpr std::uint64_t kNever = std::numeric_limits<std::uint64_t>::max();

  std::uint64_t size = 0;
  std::uint64_t stop = kNever;
  bool isOpen = false;  ///< has a part that writes itself, so the size is unknown

  void Put(const void*, std::size_t count) { size += count; }
  /// The writer throws here; nothing after this point is written.
  void Fail() { stop = std::min(stop, size); }
  /// Adds the counts of `next`.
  void Add(const CountSink& next) {
    if (next.stop != kNever) stop = std::min(stop, size + next.stop);
    size += next.size;
    isOpen |= next.isOpen;
  }
  std::uint64_t Total() const { return std::min(stop, size); }
};

/// Stores into room that has been measured and reserved.
struct RawSink {
  unsigned char* at;

  void Put(const void* bytes, std::size_t count) {
    std::memcpy(at, bytes, count);
    at += count;
  }
  [[noreturn]] void Fail() const { throw UnknownMember(); }
};

/// Appends each field separately. A field for which there is no memory is lost; the next one is tried again.
struct AppendSink {
  CStreamWriter* out;

  void Put(const void* bytes, std::size_t count) const { out->Append(bytes, static_cast<unsigned>(count)); }
  [[noreturn]] void Fail() const { throw UnknownMember(); }
};

/// Room at the end of a stream for a known number of bytes. It is not cleared, so its owner must store every
/// byte. All of them count as written when the Room is destroyed, even by an exception.
class Room {
 public:
  Room(CStreamWriter& out, std::uint64_t size) : out_(out) {
    if (size > static_cast<std::uint64_t>(std::numeric_limits<std::int32_t>::max())) return;
    const auto bytes = static_cast<std::int32_t>(size);
    void* retired = nullptr;
    at_ = out.Grow(bytes, GrowRounded, bytes, retired);
    SizedFree(retired);
    if (at_) size_ = bytes;
  }
  ~Room() { out_.length_ += size_; }
  Room(const Room&) = delete;
  Room& operator=(const Room&) = delete;

  /// Returns null if there is no memory, if no stream holds so many bytes, and for no bytes on a stream
  /// without a block.
  unsigned char* At() const { return at_; }

 private:
  CByteBuffer& out_;
  unsigned char* at_ = nullptr;
  std::int32_t size_ = 0;
};

/// Writes what `put` puts into a sink; `count` is its measured size. Writes in one piece if there is memory
/// for it, otherwise field by field. Both produce the same bytes and the same capacity.
template <class PutInto>
void WriteCounted(CStreamWriter& out, const CountSink& count, PutInto put) {
  if (!count.isOpen) {
    if (const Room room(out, count.Total()); room.At()) {
      put(RawSink{room.At()});
      return;
    }
  }
  put(AppendSink{&out});
}

template <class PutInto>
void WriteMeasured(CStreamWriter& out, PutInto put) {
  WriteCounted(out, put(CountSink{}), put);
}

}  // namespace zvuti::wire

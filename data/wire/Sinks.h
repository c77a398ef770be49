// Sinks: where the writer of a record puts bytes. The same walk over a record's rows first counts and
// then stores, so a measured size cannot differ from what is written.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <exception>
#include <limits>

#include <ZvUtiLib/data/CStream.h>

namespace zvuti::wire {

/// A tagged enumeration met a member or a tag that it does not have.
class UnknownMember : public std::exception {
 public:
  const char* what() const noexcept override { return "unknown enumeration member."; }
};

/// Counts the bytes that would be written.
struct CountSink {
  static constexpr std::uint64_t kNever = std::numeric_limits<std::uint64_t>::max();

  std::uint64_t size = 0;
  std::uint64_t stop = kNever;
  bool isOpen = false;  ///< holds a part that writes itself, so the size is not known

  void Put(const void*, std::size_t count) { size += count; }
  /// The writer throws here: nothing behind this place is written.
  void Fail() { stop = std::min(stop, size); }
  /// What `next` counted comes behind what is counted here.
  void Add(const CountSink& next) {
    if (next.stop != kNever) stop = std::min(stop, size + next.stop);
    size += next.size;
    isOpen |= next.isOpen;
  }
  std::uint64_t Total() const { return std::min(stop, size); }
};

/// Stores into room that was measured for it.
struct RawSink {
  unsigned char* at;

  void Put(const void* bytes, std::size_t count) {
    std::memcpy(at, bytes, count);
    at += count;
  }
  [[noreturn]] void Fail() const { throw UnknownMember(); }
};

/// Appends each field by itself: a field that finds no memory is lost, the next ones are tried again.
struct AppendSink {
  CStreamWriter* out;

  void Put(const void* bytes, std::size_t count) const { out->Append(bytes, static_cast<unsigned>(count)); }
  [[noreturn]] void Fail() const { throw UnknownMember(); }
};

/// Room at the end of a stream for bytes whose number is known. It is not cleared, so its owner must
/// store every one of them; they count as written when the room ends, by an exception as well.
class Room {
 public:
  Room(CStreamWriter& out, std::uint64_t size) : out_(out) {
    if (size == 0 || size > static_cast<std::uint64_t>(std::numeric_limits<std::int32_t>::max())) return;
    const auto bytes = static_cast<std::int32_t>(size);
    void* retired = nullptr;
    at_ = out.Grow(bytes, GrowRounded, bytes, retired);
    SizedFree(retired);
    if (at_) size_ = bytes;
  }
  ~Room() { out_.length_ += size_; }
  Room(const Room&) = delete;
  Room& operator=(const Room&) = delete;

  /// Null where there is nothing to write, or no memory for it.
  unsigned char* At() const { return at_; }

 private:
  CByteBuffer& out_;
  unsigned char* at_ = nullptr;
  std::int32_t size_ = 0;
};

/// Writes by way of `put`, which takes a sink and gave `count`: in one piece if there is memory for it,
/// field by field otherwise. Both end in the same bytes and the same capacity.
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

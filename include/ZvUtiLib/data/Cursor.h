// Cursor: reads off the front of a stream without moving the rest down each time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include <ZvUtiLib/data/CStream.h>

namespace zvuti::wire {

/// Takes bytes with the rules of CStreamReader::Read. What was taken leaves the stream in one step, at
/// Settle or when the cursor ends, by an exception as well. Nobody else may touch the stream meanwhile.
class Cursor {
 public:
  /// Begins at the front of `stream`, which has to outlive the cursor.
  explicit Cursor(CStreamReader& stream) : stream_(stream) { Resume(); }
  ~Cursor() { Settle(); }
  Cursor(const Cursor&) = delete;
  Cursor& operator=(const Cursor&) = delete;

  /// Bytes that are not taken yet.
  std::size_t Left() const { return static_cast<std::size_t>(end - at); }

  /// Takes `count` bytes into `out`, or, with fewer left, nothing.
  bool Take(void* out, std::size_t count) {
    if (Left() < count) return false;
    if (count > 0) std::memcpy(out, at, count);
    at += count;
    return true;
  }

  /// Brings the stream to where the cursor is.
  void Settle() noexcept {
    if (at != stream_.Data()) stream_.Drop(static_cast<int>(at - stream_.Data()));
    Resume();
  }
  /// Goes on at the front of a stream that was settled and then used directly.
  void Resume() noexcept {
    at = stream_.Data();
    end = at + stream_.Length();
  }
  /// The stream itself. REQUIRES: Settle before it is used, Resume afterwards.
  CStreamReader& Stream() { return stream_; }

  const unsigned char* at = nullptr;   ///< the next byte
  const unsigned char* end = nullptr;  ///< behind the last byte

 private:
  CStreamReader& stream_;
};

/// Reads a map of 32-bit keys and values: a signed 32-bit count, then key and value of each entry,
/// stored by assignment. An entry that the stream ends in has 0 for what is missing.
template <class Map>
void TakeMap(Cursor& cursor, Map& map) {
  using Key = typename Map::key_type;
  static_assert(sizeof(Key) == 4 && sizeof(typename Map::mapped_type) == 4);
  std::int32_t count = 0;
  cursor.Take(&count, sizeof count);
  for (std::int32_t i = 0; i < count; ++i) {
    const bool isBare = cursor.Left() < sizeof(Key);
    Key key = 0;
    typename Map::mapped_type value = 0;
    cursor.Take(&key, sizeof key);
    cursor.Take(&value, sizeof value);
    // Peers send ascending keys, which belong at the end.
    map.insert_or_assign(map.end(), key, value);
    // Without bytes every further entry is the same assignment; a hostile count must not repeat it.
    if (isBare) break;
  }
}

}  // namespace zvuti::wire

// Cursor: reads from the front of a stream without moving the rest down each time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include <ZvUtiLib/data/CStream.h>

namespace zvuti::wire {

/// Reads bytes by the rules of CStreamReader::Read. The bytes read are removed from the stream in one step,
/// by Settle or the destructor, so an exception removes them too. Nothing else may use the stream in between.
class Cursor {
 public:
  /// Starts at the front of `stream`, which must outlive the cursor.
  explicit Cursor(CStreamReader& stream) : stream_(stream) { Resume(); }
  ~Cursor() { Settle(); }
  Cursor(const Cursor&) = delete;
  Cursor& operator=(const Cursor&) = delete;

  /// The number of bytes not yet read.
  std::size_t Left() const { return static_cast<std::size_t>(end - at); }

  /// Reads `count` bytes into `out`. Returns false and reads nothing if fewer are left.
  bool Take(void* out, std::size_t count) {
    if (Left() < count) return false;
    if (count > 0) std::memcpy(out, at, count);
    at += count;
    return true;
  }

  /// Removes the bytes read so far from the stream.
  void Settle() noexcept {
    if (at != stream_.Data()) stream_.Drop(static_cast<int>(at - stream_.Data()));
    Resume();
  }
  /// Continues at the front of the stream after Settle and direct use of the stream.
  void Resume() noexcept {
    at = stream_.Data();
    end = at + stream_.Length();
  }
  /// The stream itself. REQUIRES: call Settle before using it and Resume afterwards.
  CStreamReader& Stream() { return stream_; }

  const unsigned char* at = nullptr;   ///< the next byte
  const unsigned char* end = nullptr;  ///< one past the last byte

 private:
  CStreamReader& stream_;
};

/// Reads a map of 32-bit keys and values: a signed 32-bit count, then key and value of each entry, stored
/// by assignment. If the stream ends inside an entry, the missing key or value is 0.
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
    // Peers send ascending keys, so the hint is the end.
    map.insert_or_assign(map.end(), key, value);
    // With no bytes left every further entry is the same assignment; a hostile count must not repeat it.
    if (isBare) break;
  }
}

/// Reads a map whose entries are blocks that contain their own key. If the stream ends inside a block, the
/// previous block is stored again.
template <class Map, class KeyOf>
void TakeBlockMap(Cursor& cursor, Map& map, KeyOf keyOf) {
  std::int32_t count = 0;
  cursor.Take(&count, sizeof count);
  typename Map::mapped_type block{};
  for (std::int32_t i = 0; i < count; ++i) {
    const bool isWhole = cursor.Take(&block, sizeof block);
    map.insert_or_assign(map.end(), block.*keyOf, block);
    if (!isWhole) break;  // from here on every entry is the same assignment
  }
}

}  // namespace zvuti::wire

// HeapFaults: makes the heap refuse blocks, and counts the blocks that are alive.
//
// The test program replaces the global operator new; all memory of the library comes from there.
#pragma once

#include <cstddef>
#include <cstdint>

namespace test {

/// While alive, the `nth` allocation of this thread (counted from 1) fails, and with `andAllAfter`
/// every later one, too. 0 refuses nothing and only counts.
class HeapFaults {
 public:
  explicit HeapFaults(std::int64_t nth, bool andAllAfter = false);
  ~HeapFaults();
  HeapFaults(const HeapFaults&) = delete;
  HeapFaults& operator=(const HeapFaults&) = delete;

  /// Allocations tried since the construction.
  std::int64_t Tried() const;
  /// True when at least one allocation was refused.
  bool Refused() const;
  /// Bytes asked for since the construction, and the largest single request.
  std::uint64_t BytesAsked() const;
  std::size_t LargestAsked() const;
};

/// Blocks that this thread has allocated and not freed (blocks freed by another thread stay counted).
std::int64_t LiveBlocks();
/// Blocks that are allocated and not freed, by whichever threads.
std::int64_t LiveBlocksOfAllThreads();

}  // namespace test

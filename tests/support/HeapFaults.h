// HeapFaults: makes allocations fail, and counts them.
//
// The test program replaces the global operator new, from which the library gets all its memory.
#pragma once

#include <cstddef>
#include <cstdint>

namespace test {

/// While it exists, the `nth` allocation of this thread (counted from 1) fails; with `andAllAfter`, all later
/// ones fail, too. With 0 no allocation fails; they are only counted.
class HeapFaults {
 public:
  explicit HeapFaults(std::int64_t nth, bool andAllAfter = false);
  ~HeapFaults();
  HeapFaults(const HeapFaults&) = delete;
  HeapFaults& operator=(const HeapFaults&) = delete;

  /// Number of allocations requested since construction, failed ones included.
  std::int64_t Tried() const;
  /// True if at least one allocation failed.
  bool Refused() const;
  /// Bytes requested since construction, and the largest single request.
  std::uint64_t BytesAsked() const;
  std::size_t LargestAsked() const;
};

/// Number of blocks that this thread has allocated minus those it has freed. A block freed by another thread
/// stays counted.
std::int64_t LiveBlocks();
/// Blocks that are allocated and not freed, by whichever threads.
std::int64_t LiveBlocksOfAllThreads();

}  // namespace test

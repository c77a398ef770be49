// SizedAllocBytes: a sized block that bytes will stand in, which need less alignment than objects do.
#pragma once

namespace zvuti {

/// What SizedAlloc gives, aligned like a pointer only; it goes back through SizedFree like any other.
///
/// On 64-bit targets it takes 8 bytes in front of the payload instead of 16. 1,024 bytes, the first block of
/// each stream, then are within what glibc keeps at hand for a thread (up to 1,032 bytes). One byte more, and
/// the heap joins all small blocks that lie free before it gives the block.
void* SizedAllocBytes(unsigned size) noexcept;

}  // namespace zvuti

// SizedAllocBytes: a sized block for bytes, which need less alignment than objects.
#pragma once

namespace zvuti {

/// Like SizedAlloc, but aligned only like a pointer. Freed with SizedFree like any other sized block.
///
/// On 64-bit targets the header takes 8 bytes instead of 16. A block of 1,024 bytes, the first block of each
/// stream, then fits into glibc's per-thread cache (up to 1,032 bytes). For one byte more, the heap would
/// first merge all small free blocks.
void* SizedAllocBytes(unsigned size) noexcept;

}  // namespace zvuti

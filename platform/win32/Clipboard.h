// The clipboard, and the global memory blocks that it holds: the desktop's on Windows, one of the
// process's own on Linux. Filling it; reading it is public.
#pragma once

#include <ZvUtiLib/platform/Clipboard.h>

#if !defined(_WIN32)

#  include <cstddef>

constexpr unsigned GMEM_DDESHARE = 0x2000;

/// A block of `size` bytes, null on failure. All blocks have a fixed place and may be shared, whatever
/// the flags say.
HGLOBAL GlobalAlloc(unsigned flags, std::size_t size);
/// Returns null.
HGLOBAL GlobalFree(HGLOBAL block);

// What follows fails with 0 or null unless this thread has the clipboard open.
/// Frees all blocks.
int EmptyClipboard();
/// Hands `block` over as the content in `format`, in place of an earlier one; returns it, or null, with
/// the block still the caller's.
HANDLE SetClipboardData(unsigned format, HANDLE block);

#endif

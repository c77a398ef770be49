// The clipboard, and the global memory blocks that it holds: the desktop's on Windows, one of the
// process's own on Linux.
#pragma once

#include <ZvUtiLib/platform/Handles.h>

#if !defined(_WIN32)

#  include <cstddef>

using HGLOBAL = HANDLE;

constexpr unsigned GMEM_DDESHARE = 0x2000;
constexpr unsigned CF_TEXT = 1;

/// A block of `size` bytes, null on failure. All blocks have a fixed place and may be shared, whatever
/// the flags say. As long as a block is locked its bytes may be used.
HGLOBAL GlobalAlloc(unsigned flags, std::size_t size);
void* GlobalLock(HGLOBAL block);
int GlobalUnlock(HGLOBAL block);
/// Returns null.
HGLOBAL GlobalFree(HGLOBAL block);

/// Opens the clipboard for this thread, which may open it again; 0 while another thread has it open. The
/// first closing closes it. No owner is kept.
int OpenClipboard(void* owner);
int CloseClipboard();
// What follows fails with 0 or null unless this thread has the clipboard open.
/// Frees all blocks.
int EmptyClipboard();
/// Hands `block` over as the content in `format`, in place of an earlier one; returns it, or null, with
/// the block still the caller's.
HANDLE SetClipboardData(unsigned format, HANDLE block);
/// The content in `format`, which stays the clipboard's; null when there is none.
HANDLE GetClipboardData(unsigned format);

#endif

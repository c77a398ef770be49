// Reads the clipboard. On Windows it is the desktop's, read with the system's own calls. Elsewhere it is a
// clipboard private to the process, filled by CUtiBase::CopyToClipboard, with the same names and results.
//
//     if (OpenClipboard(nullptr)) {
//       if (HANDLE block = GetClipboardData(CF_TEXT)) {
//         if (const void* text = GlobalLock(block)) Use(static_cast<const char*>(text));  // zero-terminated
//         GlobalUnlock(block);
//       }
//       CloseClipboard();
//     }
//
// Any thread may call. While one thread has the clipboard open, others can't open it.
#pragma once

#include <ZvUtiLib/Export.h>
#include <ZvUtiLib/platform/Handles.h>
#include <ZvUtiLib/platform/Windows.h>

#if !defined(_WIN32)

/// A block of memory, or null.
using HGLOBAL = HANDLE;

constexpr unsigned CF_TEXT = 1;  ///< format: zero-terminated text, GBK in this library

/// Returns 1 if the clipboard has content in `format`, else 0. The clipboard need not be open.
ZVUTILIB_API int IsClipboardFormatAvailable(unsigned format);

/// Opens the clipboard for this thread and returns 1. Returns 0 while another thread has it open. The same
/// thread may open it again, but the first CloseClipboard closes it. The owner is ignored.
ZVUTILIB_API int OpenClipboard(void* owner);
/// Closes the clipboard and returns 1; returns 0 if this thread has not opened it.
ZVUTILIB_API int CloseClipboard();

/// Returns the content in `format`. It belongs to the clipboard and is valid until this thread closes it.
/// Returns null if there is none, or if this thread has not opened the clipboard.
ZVUTILIB_API HANDLE GetClipboardData(unsigned format);

/// Returns the bytes of a block, null for a null block. They may be used until the block is unlocked.
ZVUTILIB_API void* GlobalLock(HGLOBAL block);
/// Unlocks a block; returns 0, since no block stays locked.
ZVUTILIB_API int GlobalUnlock(HGLOBAL block);

#endif

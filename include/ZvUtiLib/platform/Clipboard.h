// Reading the clipboard: the desktop's, by the system's own calls, on Windows; elsewhere one of the process's
// own, which CUtiBase::CopyToClipboard fills, with the same names and results.
//
//     if (OpenClipboard(nullptr)) {
//       if (HANDLE block = GetClipboardData(CF_TEXT)) {
//         if (const void* text = GlobalLock(block)) Use(static_cast<const char*>(text));  // zero-terminated
//         GlobalUnlock(block);
//       }
//       CloseClipboard();
//     }
//
// Any thread may call. While one has the clipboard open, others can't open it.
#pragma once

#include <ZvUtiLib/Export.h>
#include <ZvUtiLib/platform/Handles.h>
#include <ZvUtiLib/platform/Windows.h>

#if !defined(_WIN32)

/// A block of memory; null is none.
using HGLOBAL = HANDLE;

constexpr unsigned CF_TEXT = 1;  ///< format: zero-terminated text, GBK in this library

/// Whether the clipboard has content in `format`, 1 or 0. It need not be open.
ZVUTILIB_API int IsClipboardFormatAvailable(unsigned format);

/// Opens the clipboard for this thread, which may open it again; returns 1, or 0 while another thread has it
/// open. The first closing closes it. No owner is kept.
ZVUTILIB_API int OpenClipboard(void* owner);
/// Returns 1, or 0 when this thread has not opened it.
ZVUTILIB_API int CloseClipboard();

/// The content in `format`, which stays the clipboard's and is good until this thread closes it. Null when
/// there is none, or when this thread has not opened the clipboard.
ZVUTILIB_API HANDLE GetClipboardData(unsigned format);

/// The bytes of a block, null for a null block. They may be used until it is unlocked.
ZVUTILIB_API void* GlobalLock(HGLOBAL block);
/// Returns 0: no block stays locked.
ZVUTILIB_API int GlobalUnlock(HGLOBAL block);

#endif

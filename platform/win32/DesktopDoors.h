// The doors to the clipboard and to dynamic libraries.
#pragma once

#include <cstddef>

#include "platform/win32/Clipboard.h"
#include "platform/win32/LoadLibrary.h"

namespace zvuti {

struct DesktopDoors {
  /// Opens the clipboard without an owner window; false on failure.
  bool (*openClipboard)();
  void (*closeClipboard)();
  void (*emptyClipboard)();
  /// Hands a block over as text; false, with the block still the caller's, on failure.
  bool (*setClipboardText)(HGLOBAL block);

  /// A block that can be shared, null on failure.
  HGLOBAL (*allocateBlock)(std::size_t size);
  /// The bytes of a block, null on failure.
  void* (*lockBlock)(HGLOBAL block);
  void (*unlockBlock)(HGLOBAL block);
  void (*freeBlock)(HGLOBAL block);

  /// A library, null on failure.
  HMODULE (*loadLibrary)(const char* path);
  /// An entry point, null when there is none.
  FARPROC (*entryPoint)(HMODULE library, const char* name);
  void (*freeLibrary)(HMODULE library);
};

/// Doors that lead to the system.
DesktopDoors SystemDesktopDoors();

}  // namespace zvuti

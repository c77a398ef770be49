#include "platform/win32/DesktopDoors.h"

namespace zvuti {

DesktopDoors SystemDesktopDoors() {
  return {
      .openClipboard = [] { return ::OpenClipboard(nullptr) != 0; },
      .closeClipboard = [] { ::CloseClipboard(); },
      .emptyClipboard = [] { ::EmptyClipboard(); },
      .setClipboardText = [](HGLOBAL block) { return ::SetClipboardData(CF_TEXT, block) != nullptr; },
      .allocateBlock = [](std::size_t size) { return ::GlobalAlloc(GMEM_DDESHARE, size); },
      .lockBlock = [](HGLOBAL block) { return ::GlobalLock(block); },
      .unlockBlock = [](HGLOBAL block) { ::GlobalUnlock(block); },
      .freeBlock = [](HGLOBAL block) { ::GlobalFree(block); },
      .loadLibrary = [](const char* path) { return ::LoadLibraryA(path); },
      .entryPoint = [](HMODULE library, const char* name) { return ::GetProcAddress(library, name); },
      .freeLibrary = [](HMODULE library) { ::FreeLibrary(library); },
  };
}

}  // namespace zvuti

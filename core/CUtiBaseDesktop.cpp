#include <ZvUtiLib/CUtiBase.h>

#include <cstring>

#include "platform/Doors.h"

namespace {

zvuti::DesktopDoors& Desktop() { return zvuti::TheDoors().desktop; }

}  // namespace

void CUtiBase::CopyToClipboard(const char* text) {
  if (!text || text[0] == '\0') return;
  if (!Desktop().openClipboard()) return;
  const std::size_t size = std::strlen(text) + 1;
  // Allocate the block first: if that fails, the old content stays.
  if (HGLOBAL block = Desktop().allocateBlock(size)) {
    Desktop().emptyClipboard();
    bool handedOver = false;
    if (void* bytes = Desktop().lockBlock(block)) {
      std::memcpy(bytes, text, size);
      Desktop().unlockBlock(block);
      handedOver = Desktop().setClipboardText(block);
    }
    if (!handedOver) Desktop().freeBlock(block);
  }
  Desktop().closeClipboard();
}

void CUtiBase::AutoRegsvr32(const char* path) {
  HMODULE library = Desktop().loadLibrary(path);
  if (!library) return;
  using Register = long(ZVUTILIB_CALLBACK*)();
  if (FARPROC entry = Desktop().entryPoint(library, "DllRegisterServer")) reinterpret_cast<Register>(entry)();
  Desktop().freeLibrary(library);
}

#include "platform/win32/KernelDoors.h"

#include "platform/win32/MakeThread.h"

namespace zvuti {
namespace {

HANDLE MakeEvent(bool manualReset, bool signalled) {
  return ::CreateEventA(nullptr, manualReset ? 1 : 0, signalled ? 1 : 0, nullptr);
}

void Signal(HANDLE event) { ::SetEvent(event); }

unsigned long Wait(HANDLE handle, unsigned long milliseconds) {
  return ::WaitForSingleObject(handle, milliseconds);
}

HANDLE Duplicate(HANDLE handle) {
  HANDLE copy = nullptr;
  const HANDLE process = ::GetCurrentProcess();
  return ::DuplicateHandle(process, handle, process, &copy, 0, 0, DUPLICATE_SAME_ACCESS) ? copy : nullptr;
}

void Close(HANDLE handle) { ::CloseHandle(handle); }

}  // namespace

KernelDoors SystemKernelDoors() {
  return {
      .createThread = MakeThread,
      .createEvent = MakeEvent,
      .setEvent = Signal,
      .waitForSingleObject = Wait,
      .duplicateHandle = Duplicate,
      .closeHandle = Close,
  };
}

}  // namespace zvuti

// The doors to threads, events and handles.
#pragma once

#include <ZvUtiLib/Export.h>

#include "platform/win32/Kernel.h"

namespace zvuti {

struct KernelDoors {
  /// A thread that runs `entry` at once, null on failure.
  HANDLE (*createThread)(unsigned long(ZVUTILIB_CALLBACK* entry)(void*), void* argument);
  /// An event without a name, null on failure.
  HANDLE (*createEvent)(bool manualReset, bool signalled);
  void (*setEvent)(HANDLE event);
  unsigned long (*waitForSingleObject)(HANDLE handle, unsigned long milliseconds);
  /// A further handle to the same object, null on failure.
  HANDLE (*duplicateHandle)(HANDLE handle);
  void (*closeHandle)(HANDLE handle);
};

/// Doors that lead to the system.
KernelDoors SystemKernelDoors();

}  // namespace zvuti

// The doors to the system: one table of functions, through which the library reaches what a test
// must be able to replace. It calls the system unless a test has put its own functions there.
#pragma once

#include <cstdint>
#include <string>

#include "platform/win32/AdapterDoors.h"
#include "platform/win32/DesktopDoors.h"
#include "platform/win32/KernelDoors.h"
#include "platform/win32/SystemTime.h"

namespace zvuti {

struct Doors {
  /// Local time of the system, with milliseconds.
  void (*getLocalTime)(SYSTEMTIME* out);
  /// Whole seconds since 1970-01-01 00:00 UTC.
  std::int64_t (*clockSeconds)();
  /// Folder of the running program, ending in a separator.
  std::string (*applicationFolder)();

  KernelDoors kernel = SystemKernelDoors();
  AdapterDoors adapters = SystemAdapterDoors();
  DesktopDoors desktop = SystemDesktopDoors();
};

/// The table in force. Tests replace members before they start threads and put them back afterwards.
Doors& TheDoors();

}  // namespace zvuti

// Starts the threads of the library.
#pragma once

#include <ZvUtiLib/Export.h>

#include "platform/win32/Kernel.h"

namespace zvuti {

/// A thread that runs `entry` at once, null on failure. On Windows the code of `entry` stays loaded until it
/// has returned: if the program unloads the library before, the thread itself unloads it at its end.
HANDLE MakeThread(unsigned long(ZVUTILIB_CALLBACK* entry)(void*), void* argument);

}  // namespace zvuti

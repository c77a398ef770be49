#include "platform/win32/MakeThread.h"

namespace zvuti {

// A thread has no way to close the library that its own code is in, so closing that during a run is left to
// the program not to do.
HANDLE MakeThread(unsigned long(ZVUTILIB_CALLBACK* entry)(void*), void* argument) {
  return ::CreateThread(nullptr, 0, entry, argument, 0, nullptr);
}

}  // namespace zvuti

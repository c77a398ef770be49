// Kernel objects as the library itself uses them: threads, events and copies of handles.
//
// On Linux an object lives as long as handles to it are open; a thread holds itself until it has ended.
#pragma once

#include <ZvUtiLib/platform/Handles.h>

#if !defined(_WIN32)

#  include <cstddef>
#  include <cstdint>
#  include <memory>

struct SECURITY_ATTRIBUTES;
using LPTHREAD_START_ROUTINE = DWORD (*)(void*);

constexpr DWORD DUPLICATE_SAME_ACCESS = 2;
/// No handle: what calls that open a device give on failure. Refused like null.
inline const HANDLE INVALID_HANDLE_VALUE = reinterpret_cast<HANDLE>(-1);

/// An event, not named. One that resets by itself lets a single wait through for each signal. Null on
/// failure.
HANDLE CreateEventA(SECURITY_ATTRIBUTES* attributes, int manualReset, int initialState, const char* name);

/// A thread that runs `entry` at once and whose exit code is the result, or what it hands to pthread_exit. It
/// has ended when its thread_local objects and the values of its keys are destroyed. Null on failure.
/// Attributes, stack size, flags and id are not served.
HANDLE CreateThread(SECURITY_ATTRIBUTES* attributes, std::size_t stackSize, LPTHREAD_START_ROUTINE entry,
                    void* argument, DWORD flags, DWORD* threadId);

/// Stores a further handle to the same object in `copy`; returns 1, or 0 with a null handle in `copy`.
/// There is one process only.
int DuplicateHandle(HANDLE sourceProcess, HANDLE source, HANDLE targetProcess, HANDLE* copy, DWORD access,
                    int inherit, DWORD options);
HANDLE GetCurrentProcess();

namespace zvuti {

/// What a handle leads to.
class KernelObject {
 public:
  KernelObject() = default;
  KernelObject(const KernelObject&) = delete;
  KernelObject& operator=(const KernelObject&) = delete;
  virtual ~KernelObject();
};

/// A handle that keeps `object` alive; null when there is no memory.
HANDLE HandleTo(std::shared_ptr<KernelObject> object);
/// The object of a handle; null for a null or invalid handle.
std::shared_ptr<KernelObject> ObjectOf(HANDLE handle);

}  // namespace zvuti

#endif

// Handles of threads and events, and what may be done with them: the system's own on Windows, small
// reference-counted objects with the same names and results elsewhere.
//
// Any thread may call. A null handle is refused with the failure result. A handle that was closed may
// not be used again.
#pragma once

#include <ZvUtiLib/Export.h>
#include <ZvUtiLib/platform/Windows.h>

#if !defined(_WIN32)

/// A thread or an event; null is none.
using HANDLE = void*;
/// Only the low 32 bits count.
using DWORD = unsigned long;

constexpr DWORD INFINITE = 0xFFFFFFFF;     ///< a wait without a limit
constexpr DWORD WAIT_OBJECT_0 = 0;         ///< a wait: signalled, or ended
constexpr DWORD WAIT_TIMEOUT = 0x102;      ///< a wait: not within its time
constexpr DWORD WAIT_FAILED = 0xFFFFFFFF;  ///< a wait: the handle cannot be waited on
constexpr DWORD STILL_ACTIVE = 259;        ///< exit code of a thread that is running

/// Signals an event; returns 1, or 0 when the handle is none of an event.
ZVUTILIB_API int SetEvent(HANDLE event);

/// Waits until an event is signalled or a thread has ended, at most `milliseconds` long. A thread has ended
/// when its thread_local objects are destroyed. Returns WAIT_OBJECT_0, WAIT_TIMEOUT, or WAIT_FAILED when the
/// handle can't be waited on.
ZVUTILIB_API DWORD WaitForSingleObject(HANDLE handle, DWORD milliseconds);

/// Stores what the thread's entry returned, or STILL_ACTIVE until the thread has ended; returns 1, or 0 when
/// the handle is none of a thread.
ZVUTILIB_API int GetExitCodeThread(HANDLE thread, DWORD* exitCode);

/// Closes the handle; returns 1, or 0 when it is null. A thread runs on without handles.
ZVUTILIB_API int CloseHandle(HANDLE handle);

#endif

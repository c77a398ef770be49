// Handles of threads and events, and the operations on them. On Windows these are the system's own. Elsewhere
// they are small reference-counted objects with the same names and results.
//
// Any thread may call. A null handle gives the failure result. A closed handle must not be used again.
#pragma once

#include <ZvUtiLib/Export.h>
#include <ZvUtiLib/platform/Windows.h>

#if !defined(_WIN32)

/// A thread or an event, or null.
using HANDLE = void*;
/// Only the low 32 bits are used.
using DWORD = unsigned long;

constexpr DWORD INFINITE = 0xFFFFFFFF;     ///< timeout: wait without a limit
constexpr DWORD WAIT_OBJECT_0 = 0;         ///< wait result: signalled or ended
constexpr DWORD WAIT_TIMEOUT = 0x102;      ///< wait result: timed out
constexpr DWORD WAIT_FAILED = 0xFFFFFFFF;  ///< wait result: the handle cannot be waited on
constexpr DWORD STILL_ACTIVE = 259;        ///< exit code of a running thread

/// Signals an event; returns 1, or 0 if the handle is not an event.
ZVUTILIB_API int SetEvent(HANDLE event);

/// Waits until an event is signalled or a thread has ended, for at most `milliseconds`. A thread has ended
/// when its thread_local objects have been destroyed. On Linux the wait for a thread that is just ending, or
/// for any thread if the host system has no thread key left, can take longer. Returns WAIT_OBJECT_0,
/// WAIT_TIMEOUT, or WAIT_FAILED if the handle can't be waited on.
ZVUTILIB_API DWORD WaitForSingleObject(HANDLE handle, DWORD milliseconds);

/// Stores the return value of the thread's entry point, or STILL_ACTIVE until the thread has ended, and
/// returns 1. Returns 0 if the handle is not a thread.
ZVUTILIB_API int GetExitCodeThread(HANDLE thread, DWORD* exitCode);

/// Closes the handle; returns 1, or 0 if it is null. A thread continues to run without handles.
ZVUTILIB_API int CloseHandle(HANDLE handle);

#endif

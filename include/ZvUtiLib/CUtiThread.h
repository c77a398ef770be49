// CUtiThread: base class of background workers.
//
// A derived class supplies the body. The base owns the thread of the current or last run and an event that
// asks the body to stop. Only the owner's thread may start, copy and destroy an object.
#pragma once

#include <ZvUtiLib/Export.h>
#include <ZvUtiLib/platform/Handles.h>

/// The body watches `stopEvent` and returns soon after it is signalled. Once signalled, it stays so:
///
///     unsigned long ThreadBody() override {
///       while (WaitForSingleObject(stopEvent, 0) == WAIT_TIMEOUT) DoALittle();
///       return 0;
///     }
///
/// The base's destructor signals and waits, but by then the derived part is destroyed. So the destructor of
/// the most derived class must end the run first, even a run whose body has not been called yet:
///
///     ~Worker() override {
///       if (stopEvent) SetEvent(stopEvent);
///       if (threadHandle) WaitForSingleObject(threadHandle, INFINITE);
///     }
///
/// It leaves the handles open; the base closes them. A run ends, and the wait returns, when the thread_local
/// objects of its thread have been destroyed.
///
/// A program that loads and unloads the library itself should end all runs first. On Windows the library
/// otherwise stays loaded until the last run has ended; on Linux a run that is still in progress crashes.
class ZVUTILIB_API CUtiThread {
 public:
  /// No run and no handles.
  CUtiThread() = default;
  /// The copy has its own handles to the same run and the same event. If the system fails to duplicate a
  /// handle, it is null in the copy. If the event cannot be duplicated, the copy gets no thread either.
  /// Destroying any copy signals the event and waits for the end of the run, which affects the other copies,
  /// too. The body runs on the object that was started, so that object must outlive the run.
  CUtiThread(const CUtiThread& other);
  /// Ends this object's run as the destructor does, then copies as above. Self-assignment does nothing.
  CUtiThread& operator=(const CUtiThread& other);
  /// Signals the stop event, waits without a limit for the run to end and closes the handles.
  virtual ~CUtiThread();

  /// The body of a run, called on the run's own thread. The low 32 bits of the result are the thread's exit
  /// code. Must not throw.
  virtual unsigned long ThreadBody() = 0;

 protected:
  /// Starts a run with a new stop event, unless a run is in progress. Returns 1 if the thread and the event
  /// both exist. Returns 0 and changes nothing while the last run is in progress. Also returns 0 if the
  /// system fails to create one of them. If only the event fails, the body runs with a null `stopEvent`, and
  /// nothing can stop it.
  int StartThread();

  /// Thread entry point: calls the body of `object`, which is a CUtiThread.
  static unsigned long ZVUTILIB_CALLBACK ThreadProc(void* object);

  HANDLE stopEvent = nullptr;     ///< manual-reset; a new one for each run, null if there is none
  HANDLE threadHandle = nullptr;  ///< of the current or last run, null if there is none

 private:
  void ShareRun(const CUtiThread& other);
  void EndRun();
};

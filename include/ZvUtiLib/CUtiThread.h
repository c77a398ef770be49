// CUtiThread: base of background workers.
//
// A derived class supplies the body. The base owns the thread of the current or last run and an event
// that asks the body to stop. Only the owner's thread starts, copies and destroys an object.
#pragma once

#include <ZvUtiLib/Export.h>
#include <ZvUtiLib/platform/Handles.h>

/// The body watches `stopEvent` (which stays signalled once it is) and returns soon after the signal:
///
///     unsigned long ThreadBody() override {
///       while (WaitForSingleObject(stopEvent, 0) == WAIT_TIMEOUT) DoALittle();
///       return 0;
///     }
///
/// The base's destructor signals and waits, but by then the derived part is gone. So the destructor of
/// the most derived class has to end the run first, also a run whose body has not been called yet:
///
///     ~Worker() override {
///       if (stopEvent) SetEvent(stopEvent);
///       if (threadHandle) WaitForSingleObject(threadHandle, INFINITE);
///     }
///
/// It leaves the handles open; the base closes them. A run has ended, and the wait with it, when the
/// thread_local objects of its thread are destroyed.
class ZVUTILIB_API CUtiThread {
 public:
  /// No run, no handles.
  CUtiThread() = default;
  /// The copy has handles of its own to the same run and the same event; a handle that the system does
  /// not duplicate is null in the copy, and without the event the copy gets no thread either. Destroying any
  /// of the copies signals the event and waits for the end of the run, which the other copies see as well.
  /// The body runs on the object that was started, so that one has to outlive the run.
  CUtiThread(const CUtiThread& other);
  /// Ends the left side's run as the destructor does, then copies as above. To itself it does nothing.
  CUtiThread& operator=(const CUtiThread& other);
  /// Signals the stop event, waits without a limit for the run's end and closes the handles.
  virtual ~CUtiThread();

  /// What a run does, on its own thread. The result is the thread's exit code, of which the low 32 bits
  /// count. May not throw.
  virtual unsigned long ThreadBody() = 0;

 protected:
  /// Starts a run with a new stop event, unless one is going. Returns 1 when thread and event both
  /// exist; 0 while the last run is going, which changes nothing, and when the system refuses one of
  /// them. When it refuses the event alone, the body runs with a null `stopEvent`: nothing can stop it.
  int StartThread();

  /// Entry of the thread: calls the body of `object`, a CUtiThread.
  static unsigned long ZVUTILIB_CALLBACK ThreadProc(void* object);

  HANDLE stopEvent = nullptr;     ///< resets by hand only; a new one for each run, null when there is none
  HANDLE threadHandle = nullptr;  ///< of the current or last run, null when there is none

 private:
  void ShareRun(const CUtiThread& other);
  void EndRun();
};

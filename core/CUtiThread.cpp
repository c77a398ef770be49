#include <ZvUtiLib/CUtiThread.h>

#include "platform/Doors.h"

namespace {

zvuti::KernelDoors& Kernel() { return zvuti::TheDoors().kernel; }

HANDLE CopyOf(HANDLE handle) { return handle ? Kernel().duplicateHandle(handle) : nullptr; }

void CloseAndClear(HANDLE& handle) {
  if (handle) Kernel().closeHandle(handle);
  handle = nullptr;
}

}  // namespace

CUtiThread::CUtiThread(const CUtiThread& other) { ShareRun(other); }

CUtiThread& CUtiThread::operator=(const CUtiThread& other) {
  if (this == &other) return *this;
  EndRun();
  ShareRun(other);
  return *this;
}

CUtiThread::~CUtiThread() { EndRun(); }

int CUtiThread::StartThread() {
  if (threadHandle) {
    constexpr unsigned long kGrace = 1;  // ms, for a body that is about to return
    if (Kernel().waitForSingleObject(threadHandle, kGrace) == WAIT_TIMEOUT) return 0;
    CloseAndClear(threadHandle);
  }
  // Create a new event instead of resetting the old one: threads that still wait on the old one must not miss
  // its signal, and that signal must not stop the new run.
  CloseAndClear(stopEvent);
  stopEvent = Kernel().createEvent(true, false);
  threadHandle = Kernel().createThread(&CUtiThread::ThreadProc, this);
  return threadHandle && stopEvent ? 1 : 0;
}

unsigned long ZVUTILIB_CALLBACK CUtiThread::ThreadProc(void* object) {
  return static_cast<CUtiThread*>(object)->ThreadBody();
}

void CUtiThread::ShareRun(const CUtiThread& other) {
  stopEvent = CopyOf(other.stopEvent);
  // Without the event the copy could only wait for a run that it can't stop.
  if (stopEvent || !other.stopEvent) threadHandle = CopyOf(other.threadHandle);
}

void CUtiThread::EndRun() {
  if (stopEvent) Kernel().setEvent(stopEvent);
  if (threadHandle) Kernel().waitForSingleObject(threadHandle, INFINITE);
  CloseAndClear(threadHandle);
  CloseAndClear(stopEvent);
}

// Loads and unloads the DLL as a host with plug-ins does. Exits with 1 at the first surprise.
//
// The program is not linked with the DLL, which could never be unloaded then. So it calls the DLL's functions
// by their exported names, and makes a CUtiThread by hand: a table of virtual functions, the stop event, the
// thread.
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <cstdio>

namespace {

#define METHOD __attribute__((thiscall))

struct Worker {
  void* const* functions;
  HANDLE stopEvent = nullptr, thread = nullptr;
};

METHOD void Destroy(Worker*) {}
METHOD unsigned long Body(Worker* worker) {
  WaitForSingleObject(worker->stopEvent, INFINITE);
  return 7;
}

HMODULE Load() { return LoadLibraryA("ZvUtiLib.dll"); }
bool IsLoaded() { return GetModuleHandleA("ZvUtiLib.dll") != nullptr; }

template <class Function>
Function Find(HMODULE dll, const char* name) {
  return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(dll, name)));
}

// Makes the DLL's static list of forbidden words, and unloads the DLL with it.
bool UnloadsWithItsList() {
  const HMODULE dll = Load();
  const auto isChatValid = Find<int (*)(const char*)>(dll, "_ZN8CUtiBase11IsChatValidEPKc");
  return isChatValid && isChatValid("hello") == 1 && FreeLibrary(dll) && !IsLoaded();
}

bool Start(HMODULE dll, Worker& worker) {
  const auto start = Find<METHOD int (*)(Worker*)>(dll, "_ZN10CUtiThread11StartThreadEv");
  return start && start(&worker) == 1;
}

// The DLL stays until the run has ended, and is gone then.
bool StaysForARun(Worker& worker) {
  const HMODULE dll = Load();
  if (!Start(dll, worker) || !FreeLibrary(dll) || !IsLoaded()) return false;
  DWORD code = 0;
  SetEvent(worker.stopEvent);
  WaitForSingleObject(worker.thread, INFINITE);
  return GetExitCodeThread(worker.thread, &code) && code == 7 && !IsLoaded();
}

}  // namespace

int main() {
  void* const functions[] = {reinterpret_cast<void*>(Destroy), reinterpret_cast<void*>(Destroy),
                             reinterpret_cast<void*>(Body)};
  static Worker worker{functions};
  static Worker last{functions};
  const bool isRight =
      UnloadsWithItsList() && UnloadsWithItsList() && StaysForARun(worker) && Start(Load(), last);
  std::puts(isRight ? "unload: all as told" : "unload: the DLL was unloaded too early, or not at all");
  return isRight ? 0 : 1;  // a run is in progress, and the system ends it
}

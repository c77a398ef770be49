#include "platform/win32/MakeThread.h"

#include <memory>
#include <new>

namespace zvuti {
namespace {

struct Start {
  unsigned long(ZVUTILIB_CALLBACK* entry)(void*);
  void* argument;
  HMODULE module;  // this library, with a reference of the thread's own
};

DWORD WINAPI RunThread(void* argument) {
  const Start start = *std::unique_ptr<Start>(static_cast<Start*>(argument));
  FreeLibraryAndExitThread(start.module, start.entry(start.argument));
}

}  // namespace

HANDLE MakeThread(unsigned long(ZVUTILIB_CALLBACK* entry)(void*), void* argument) {
  std::unique_ptr<Start> start(new (std::nothrow) Start{entry, argument, nullptr});
  if (!start || !GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                                    reinterpret_cast<LPCSTR>(&RunThread), &start->module)) {
    return nullptr;
  }
  const HANDLE thread = ::CreateThread(nullptr, 0, RunThread, start.get(), 0, nullptr);
  if (thread) {
    start.release();
  } else {
    FreeLibrary(start->module);
  }
  return thread;
}

}  // namespace zvuti

#include <ZvUtiLib/platform/Windows.h>

#include <tlhelp32.h>

#include "tests/support/NothingLeft.h"

namespace test {

// Tries all values, because GetProcessHandleCount does not work under Wine.
std::int64_t OpenHandles() {
  constexpr std::uintptr_t kStep = 4, kBeyond = 0x2000;
  std::int64_t count = 0;
  for (std::uintptr_t value = kStep; value < kBeyond; value += kStep) {
    DWORD flags = 0;
    if (GetHandleInformation(reinterpret_cast<HANDLE>(value), &flags)) ++count;
  }
  return count;
}

std::int64_t RunningThreads() {
  const HANDLE all = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
  THREADENTRY32 entry{};
  entry.dwSize = sizeof entry;
  std::int64_t count = 0;
  for (BOOL is = Thread32First(all, &entry); is; is = Thread32Next(all, &entry)) {
    if (entry.th32OwnerProcessID == GetCurrentProcessId()) ++count;
  }
  CloseHandle(all);
  return count;
}

}  // namespace test

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include <ZvUtiLib/platform/Windows.h>

#include <tlhelp32.h>

#include "tests/support/NothingLeft.h"

namespace {

// Tries all values, because GetProcessHandleCount does not work under Wine.
std::int64_t Handles() {
  constexpr std::uintptr_t kStep = 4, kBeyond = 0x2000;
  std::int64_t count = 0;
  for (std::uintptr_t value = kStep; value < kBeyond; value += kStep) {
    DWORD flags = 0;
    if (GetHandleInformation(reinterpret_cast<HANDLE>(value), &flags)) ++count;
  }
  return count;
}

std::int64_t Threads() {
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

}  // namespace

namespace test {

NothingLeft::NothingLeft() {
  std::thread([] {}).join();  // with the first thread the runtime library opens handles that it keeps
  handles_ = Handles();
  threads_ = Threads();
}

NothingLeft::~NothingLeft() {
  // Wait: threads whose handles are closed cannot be joined.
  const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  while (Threads() > threads_ && std::chrono::steady_clock::now() < limit) std::this_thread::yield();
  EXPECT_LE(Threads(), threads_);
  EXPECT_LE(Handles(), handles_);
}

}  // namespace test

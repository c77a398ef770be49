#include "platform/win32/Kernel.h"

#include <gtest/gtest.h>
#include <pthread.h>

#include <chrono>
#include <thread>
#include <vector>

#include "tests/support/HeapFaults.h"
#include "tests/support/NothingLeft.h"

namespace {

HANDLE Event() { return CreateEventA(nullptr, 1, 0, nullptr); }
HANDLE Thread(LPTHREAD_START_ROUTINE entry, void* argument) {
  return CreateThread(nullptr, 0, entry, argument, 0, nullptr);
}
// A second handle to the same object, null on failure.
HANDLE Duplicate(HANDLE handle) {
  HANDLE copy = INVALID_HANDLE_VALUE;
  const int isCopied = DuplicateHandle(nullptr, handle, nullptr, &copy, 0, 0, DUPLICATE_SAME_ACCESS);
  EXPECT_EQ(isCopied != 0, copy != nullptr);
  return copy;
}
DWORD ExitCode(HANDLE thread) {
  DWORD code = 0;
  EXPECT_EQ(GetExitCodeThread(thread, &code), 1);
  return code;
}

class KernelTest : public testing::Test {
  test::NothingLeft nothingLeft_;
};

TEST_F(KernelTest, WaitsEndAtTheirLimitOrAtTheSignal) {
  HANDLE event = Event();
  HANDLE copy = Duplicate(event);
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(WaitForSingleObject(event, 20), WAIT_TIMEOUT);
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(20));
  EXPECT_EQ(SetEvent(event), 1);
  EXPECT_EQ(WaitForSingleObject(event, 0), WAIT_OBJECT_0);
  EXPECT_EQ(CloseHandle(event), 1);
  EXPECT_EQ(WaitForSingleObject(copy, ~0ul), WAIT_OBJECT_0);  // the low 32 bits mean no limit
  CloseHandle(copy);
}

TEST_F(KernelTest, AThreadRunsOnWithoutHandles) {
  static HANDLE begin, end;
  begin = Event(), end = Event();
  CloseHandle(Thread(
      [](void*) -> DWORD {
        WaitForSingleObject(begin, INFINITE);
        return static_cast<DWORD>(SetEvent(end));
      },
      nullptr));
  SetEvent(begin);
  EXPECT_EQ(WaitForSingleObject(end, INFINITE), WAIT_OBJECT_0);
  for (HANDLE event : {begin, end}) CloseHandle(event);
}

// What a thread leaves at the end of its entry. Its destruction lasts until the test releases it.
struct Leftover {
  HANDLE begun = Event(), release = Event();
  bool isGone = false;

  void Destroy() {
    SetEvent(begun);
    WaitForSingleObject(release, INFINITE);
    isGone = true;
  }
  ~Leftover() {
    CloseHandle(begun);
    CloseHandle(release);
  }
};

struct OfThread {
  Leftover* leftover = nullptr;
  ~OfThread() {
    if (leftover) leftover->Destroy();
  }
};
thread_local OfThread ofThread;

DWORD LeaveObject(void* leftover) {
  ofThread.leftover = static_cast<Leftover*>(leftover);
  return 7;
}

DWORD LeaveObjectAndExit(void* leftover) {
  ofThread.leftover = static_cast<Leftover*>(leftover);
  pthread_exit(reinterpret_cast<void*>(7));
}

// The value of a key is destroyed in the second round of destructors.
pthread_key_t key;
thread_local int rounds = 0;
DWORD LeaveValueOfKey(void* leftover) {
  pthread_setspecific(key, leftover);
  return 7;
}
void DestroyValueOfKey(void* leftover) {
  ++rounds == 1 ? void(pthread_setspecific(key, leftover)) : static_cast<Leftover*>(leftover)->Destroy();
}

TEST_F(KernelTest, AThreadHasEndedWhenAllThatItLeavesBehindIsDestroyed) {
  ASSERT_EQ(pthread_key_create(&key, &DestroyValueOfKey), 0);
  for (const auto entry : {&LeaveObject, &LeaveObjectAndExit, &LeaveValueOfKey}) {
    Leftover leftover;
    HANDLE thread = Thread(entry, &leftover);
    WaitForSingleObject(leftover.begun, INFINITE);
    for (const DWORD limit : {0u, 5u}) EXPECT_EQ(WaitForSingleObject(thread, limit), WAIT_TIMEOUT);
    EXPECT_EQ(ExitCode(thread), STILL_ACTIVE);
    SetEvent(leftover.release);
    EXPECT_EQ(WaitForSingleObject(thread, INFINITE), WAIT_OBJECT_0);
    EXPECT_TRUE(leftover.isGone);
    EXPECT_EQ(ExitCode(thread), 7u);
    CloseHandle(thread);
  }
  pthread_key_delete(key);
}

TEST_F(KernelTest, AllWhoWaitSeeTheEnd) {
  Leftover leftover;
  HANDLE thread = Thread(&LeaveObject, &leftover);
  std::vector<std::thread> waiters;
  for (const DWORD limit : {INFINITE, DWORD{0}, DWORD{1}, INFINITE, DWORD{2}, DWORD{3}}) {
    waiters.emplace_back([&leftover, limit, handle = Duplicate(thread)] {
      while (WaitForSingleObject(handle, limit) == WAIT_TIMEOUT) continue;
      EXPECT_TRUE(leftover.isGone);
      CloseHandle(handle);
    });
  }
  CloseHandle(thread);
  SetEvent(leftover.release);
  for (std::thread& waiter : waiters) waiter.join();
}

TEST_F(KernelTest, AThreadThatWaitsForItselfWaitsInVain) {
  struct {
    HANDLE isSet = Event(), self = nullptr;
  } handles;
  HANDLE thread = Thread(
      [](void* argument) -> DWORD {
        const auto* const given = static_cast<decltype(handles)*>(argument);
        WaitForSingleObject(given->isSet, INFINITE);
        return WaitForSingleObject(given->self, 5);
      },
      &handles);
  handles.self = thread;
  SetEvent(handles.isSet);
  EXPECT_EQ(WaitForSingleObject(thread, INFINITE), WAIT_OBJECT_0);
  EXPECT_EQ(ExitCode(thread), WAIT_TIMEOUT);
  CloseHandle(thread);
  CloseHandle(handles.isSet);
}

TEST_F(KernelTest, RefusesHandlesOfAnotherKind) {
  HANDLE event = Event();
  HANDLE thread = Thread([](void*) -> DWORD { return 7; }, nullptr);
  EXPECT_EQ(WaitForSingleObject(thread, INFINITE), WAIT_OBJECT_0);
  DWORD code = 1;
  EXPECT_EQ(GetExitCodeThread(event, &code), 0);
  EXPECT_EQ(SetEvent(thread), 0);
  for (HANDLE none : {HANDLE{}, INVALID_HANDLE_VALUE}) {
    EXPECT_EQ(SetEvent(none) + GetExitCodeThread(none, &code) + CloseHandle(none), 0);
    EXPECT_EQ(WaitForSingleObject(none, INFINITE), WAIT_FAILED);
    EXPECT_EQ(Duplicate(none), nullptr);
  }
  EXPECT_EQ(code, 1u);
  EXPECT_EQ(ExitCode(thread), 7u);
  CloseHandle(event);
  CloseHandle(thread);
}

DWORD NeverRun(void*) {
  ADD_FAILURE();
  return 0;
}

TEST_F(KernelTest, AHeapThatRefusesGivesNoHandleAndStartsNothing) {
  HANDLE event = Event();
  const auto refused = [](int nth, const auto& make) {
    const test::HeapFaults faults(nth);
    return make();
  };
  for (const int nth : {1, 2}) {
    EXPECT_EQ(refused(nth, [] { return Event(); }), nullptr);
    EXPECT_EQ(refused(nth, [] { return Thread(NeverRun, nullptr); }), nullptr);
  }
  EXPECT_EQ(refused(1, [&] { return Duplicate(event); }), nullptr);
  CloseHandle(event);
}

TEST_F(KernelTest, AThreadThatTheSystemRefusesLeavesNothing) {
  pthread_attr_t usual, impossible;
  ASSERT_EQ(pthread_getattr_default_np(&usual), 0);
  ASSERT_EQ(pthread_attr_init(&impossible), 0);
  ASSERT_EQ(pthread_attr_setstacksize(&impossible, std::size_t{1} << 48), 0);  // beyond the address space
  ASSERT_EQ(pthread_setattr_default_np(&impossible), 0);
  EXPECT_EQ(Thread(NeverRun, nullptr), nullptr);
  pthread_setattr_default_np(&usual);
  pthread_attr_destroy(&impossible);
  pthread_attr_destroy(&usual);
}

}  // namespace

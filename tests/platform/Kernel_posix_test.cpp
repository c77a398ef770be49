#include "platform/win32/Kernel.h"

#include <gtest/gtest.h>
#include <pthread.h>

#include <array>
#include <chrono>

#include "tests/support/HeapFaults.h"
#include "tests/support/NothingLeft.h"

namespace {

HANDLE Event() { return CreateEventA(nullptr, 1, 0, nullptr); }
HANDLE Thread(LPTHREAD_START_ROUTINE entry, void* argument) {
  return CreateThread(nullptr, 0, entry, argument, 0, nullptr);
}

class KernelTest : public testing::Test {
  test::NothingLeft nothingLeft_;
};

TEST_F(KernelTest, WaitsEndAtTheirLimitOrAtTheSignal) {
  HANDLE event = Event();
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(WaitForSingleObject(event, 20), WAIT_TIMEOUT);
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(20));
  EXPECT_EQ(SetEvent(event), 1);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(WaitForSingleObject(event, 0), WAIT_OBJECT_0);
  EXPECT_EQ(WaitForSingleObject(event, ~0ul), WAIT_OBJECT_0);  // the low 32 bits say: no limit
  HANDLE copy = nullptr;
  EXPECT_EQ(DuplicateHandle(nullptr, event, nullptr, &copy, 0, 0, DUPLICATE_SAME_ACCESS), 1);
  EXPECT_EQ(CloseHandle(event), 1);
  EXPECT_EQ(WaitForSingleObject(copy, 0), WAIT_OBJECT_0);
  CloseHandle(copy);
}

TEST_F(KernelTest, AThreadRunsOnWithoutHandles) {
  HANDLE events[] = {Event(), Event()};
  CloseHandle(Thread(
      [](void* both) -> DWORD {
        WaitForSingleObject(static_cast<HANDLE*>(both)[0], INFINITE);
        return static_cast<DWORD>(SetEvent(static_cast<HANDLE*>(both)[1]));
      },
      events));
  SetEvent(events[0]);
  EXPECT_EQ(WaitForSingleObject(events[1], INFINITE), WAIT_OBJECT_0);
  for (HANDLE event : events) CloseHandle(event);
}

// What a thread leaves behind at the end of its entry and destroys by itself, as slowly as a test likes.
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

// A key's value, which comes again in the next round of destructors.
pthread_key_t key;
thread_local int rounds = 0;
DWORD LeaveValueOfKey(void* leftover) {
  pthread_setspecific(key, leftover);
  return 7;
}
void DestroyValueOfKey(void* leftover) {
  if (++rounds == 1) {
    pthread_setspecific(key, leftover);
  } else {
    static_cast<Leftover*>(leftover)->Destroy();
  }
}

TEST_F(KernelTest, AThreadHasEndedWhenAllThatItLeavesBehindIsDestroyed) {
  ASSERT_EQ(pthread_key_create(&key, &DestroyValueOfKey), 0);
  for (const auto entry : {&LeaveObject, &LeaveObjectAndExit, &LeaveValueOfKey}) {
    Leftover leftover;
    HANDLE thread = Thread(entry, &leftover);
    WaitForSingleObject(leftover.begun, INFINITE);
    DWORD code = 0;
    for (const DWORD milliseconds : {0, 5})
      EXPECT_EQ(WaitForSingleObject(thread, milliseconds), WAIT_TIMEOUT);
    EXPECT_EQ(GetExitCodeThread(thread, &code), 1);
    EXPECT_EQ(code, STILL_ACTIVE);
    SetEvent(leftover.release);
    EXPECT_EQ(WaitForSingleObject(thread, INFINITE), WAIT_OBJECT_0);
    EXPECT_TRUE(leftover.isGone);
    EXPECT_EQ(GetExitCodeThread(thread, &code), 1);
    EXPECT_EQ(code, 7u);
    CloseHandle(thread);
  }
  pthread_key_delete(key);
}

// Waiters with limits and without, on handles of their own, are threads that are waited for as well.
TEST_F(KernelTest, AllWhoWaitSeeTheEnd) {
  Leftover leftover;
  struct Waiter {
    HANDLE thread;
    DWORD milliseconds;
    const bool* isGone;
  };
  HANDLE thread = Thread(&LeaveObject, &leftover);
  std::array<Waiter, 8> waiters{};
  std::array<HANDLE, 8> threads{};
  for (std::size_t i = 0; i < waiters.size(); ++i) {
    waiters[i] = {nullptr, i % 4 == 0 ? INFINITE : DWORD{i} - 1, &leftover.isGone};
    ASSERT_EQ(DuplicateHandle(nullptr, thread, nullptr, &waiters[i].thread, 0, 0, 0), 1);
    threads[i] = Thread(
        [](void* argument) -> DWORD {
          const Waiter& waiter = *static_cast<Waiter*>(argument);
          while (WaitForSingleObject(waiter.thread, waiter.milliseconds) == WAIT_TIMEOUT) continue;
          CloseHandle(waiter.thread);
          return *waiter.isGone ? 1 : 0;
        },
        &waiters[i]);
  }
  CloseHandle(thread);
  SetEvent(leftover.release);
  for (HANDLE waiter : threads) {
    EXPECT_EQ(WaitForSingleObject(waiter, INFINITE), WAIT_OBJECT_0);
    DWORD code = 0;
    EXPECT_EQ(GetExitCodeThread(waiter, &code), 1);
    EXPECT_EQ(code, 1u);
    CloseHandle(waiter);
  }
}

TEST_F(KernelTest, AThreadThatWaitsForItselfWaitsInVain) {
  HANDLE thread = nullptr, given = Event();
  HANDLE both[] = {given, nullptr};
  thread = Thread(
      [](void* handles) -> DWORD {
        WaitForSingleObject(static_cast<HANDLE*>(handles)[0], INFINITE);
        return WaitForSingleObject(static_cast<HANDLE*>(handles)[1], 5);
      },
      both);
  both[1] = thread;
  SetEvent(given);
  EXPECT_EQ(WaitForSingleObject(thread, INFINITE), WAIT_OBJECT_0);
  DWORD code = 0;
  EXPECT_EQ(GetExitCodeThread(thread, &code), 1);
  EXPECT_EQ(code, WAIT_TIMEOUT);
  CloseHandle(thread);
  CloseHandle(given);
}

TEST_F(KernelTest, RefusesHandlesOfAnotherKind) {
  HANDLE event = Event();
  HANDLE thread = Thread([](void*) -> DWORD { return 7; }, nullptr);
  EXPECT_EQ(WaitForSingleObject(thread, INFINITE), WAIT_OBJECT_0);
  DWORD code = 1;
  EXPECT_EQ(GetExitCodeThread(event, &code), 0);
  EXPECT_EQ(SetEvent(thread), 0);
  for (HANDLE none : {HANDLE{}, INVALID_HANDLE_VALUE}) {
    HANDLE copy = event;
    EXPECT_EQ(SetEvent(none) + GetExitCodeThread(none, &code) + CloseHandle(none), 0);
    EXPECT_EQ(WaitForSingleObject(none, INFINITE), WAIT_FAILED);
    EXPECT_EQ(DuplicateHandle(nullptr, none, nullptr, &copy, 0, 0, DUPLICATE_SAME_ACCESS), 0);
    EXPECT_EQ(copy, nullptr);
  }
  EXPECT_EQ(code, 1u);
  EXPECT_EQ(GetExitCodeThread(thread, &code), 1);
  EXPECT_EQ(code, 7u);
  CloseHandle(event);
  CloseHandle(thread);
}

TEST_F(KernelTest, AHeapThatRefusesGivesNoHandleAndStartsNothing) {
  HANDLE event = Event();
  const auto fail = [](void*) -> DWORD {
    ADD_FAILURE();
    return 0;
  };
  const auto copy = [&] {
    HANDLE copied = event;
    EXPECT_EQ(DuplicateHandle(nullptr, event, nullptr, &copied, 0, 0, 0), 0);
    return copied;
  };
  const auto refused = [](int nth, const auto& make) {
    const test::HeapFaults faults(nth);
    return make();
  };
  for (const int nth : {1, 2}) {
    EXPECT_EQ(refused(nth, [] { return Event(); }), nullptr);
    EXPECT_EQ(refused(nth, [&] { return Thread(fail, nullptr); }), nullptr);
  }
  EXPECT_EQ(refused(1, copy), nullptr);
  CloseHandle(event);
}

TEST_F(KernelTest, AThreadThatTheSystemRefusesLeavesNothing) {
  pthread_attr_t usual, impossible;
  ASSERT_EQ(pthread_getattr_default_np(&usual), 0);
  ASSERT_EQ(pthread_attr_init(&impossible), 0);
  ASSERT_EQ(pthread_attr_setstacksize(&impossible, std::size_t{1} << 48), 0);  // beyond the address space
  ASSERT_EQ(pthread_setattr_default_np(&impossible), 0);
  EXPECT_EQ(Thread([](void*) -> DWORD { return 0; }, nullptr), nullptr);
  pthread_setattr_default_np(&usual);
  pthread_attr_destroy(&impossible);
  pthread_attr_destroy(&usual);
}

}  // namespace

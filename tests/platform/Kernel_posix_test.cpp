#include "platform/win32/Kernel.h"

#include <gtest/gtest.h>
#include <pthread.h>

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

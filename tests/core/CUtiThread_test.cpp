#include <ZvUtiLib/CUtiThread.h>

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "tests/support/DoorsGuard.h"
#include "tests/support/NothingLeft.h"

namespace {

using Calls = std::vector<std::string>;

const zvuti::KernelDoors& System() {
  static const zvuti::KernelDoors system = zvuti::SystemKernelDoors();
  return system;
}

// Records what is done with handles, and expects that none is left open.
class CUtiThreadTest : public testing::Test {
 protected:
  CUtiThreadTest() {
    calls = &calls_;
    auto& doors = doors_->kernel;
    doors.setEvent = [](HANDLE event) { calls->emplace_back("set"), System().setEvent(event); };
    doors.closeHandle = [](HANDLE handle) { calls->emplace_back("close"), System().closeHandle(handle); };
    doors.waitForSingleObject = [](HANDLE handle, unsigned long milliseconds) {
      calls->push_back(milliseconds == INFINITE ? "wait" : "wait " + std::to_string(milliseconds));
      return System().waitForSingleObject(handle, milliseconds);
    };
  }

  Calls TakeCalls() { return std::exchange(calls_, {}); }
  void RefuseThreads() {
    doors_->kernel.createThread = [](unsigned long(ZVUTILIB_CALLBACK*)(void*), void*) -> HANDLE {
      return nullptr;
    };
  }

  static inline Calls* calls = nullptr;
  test::NothingLeft nothingLeft_;
  Calls calls_;
  test::DoorsGuard doors_;
};

// Runs until it is stopped or released.
struct Worker : CUtiThread {
  using CUtiThread::StartThread, CUtiThread::stopEvent, CUtiThread::threadHandle;
  Worker() = default;
  Worker(const Worker& other) : CUtiThread(other) {}
  ~Worker() override { Stop(); }

  unsigned long ThreadBody() override {
    ++runs;
    while (!released && WaitForSingleObject(stopEvent, 1) != WAIT_OBJECT_0) std::this_thread::yield();
    return 0xFFFFFFF0ul + static_cast<unsigned long>(runs);
  }
  void Stop() {
    if (stopEvent) SetEvent(stopEvent);
    if (threadHandle) WaitForSingleObject(threadHandle, INFINITE);
  }
  bool IsStopSignalled() const { return WaitForSingleObject(stopEvent, 0) == WAIT_OBJECT_0; }
  unsigned long ExitCode() const {
    unsigned long code = 0;
    EXPECT_TRUE(GetExitCodeThread(threadHandle, &code));
    return code;
  }

  std::atomic<int> runs{0};
  std::atomic<bool> released{false};
};

TEST_F(CUtiThreadTest, FollowsItsStates) {
  {
    Worker idle, copy(idle);
    idle.CUtiThread::operator=(copy);
    EXPECT_EQ(TakeCalls(), Calls{});
    Worker worker;
    ASSERT_EQ(worker.StartThread(), 1);  // idle to running
    const HANDLE thread = worker.threadHandle, event = worker.stopEvent;
    EXPECT_EQ(worker.StartThread(), 0);  // running stays running
    EXPECT_EQ(TakeCalls(), Calls{"wait 1"});
    EXPECT_EQ(std::pair(worker.threadHandle, worker.stopEvent), std::pair(thread, event));
    EXPECT_FALSE(worker.IsStopSignalled());
    EXPECT_EQ(worker.ExitCode(), STILL_ACTIVE);
    worker.Stop();  // ended
    EXPECT_TRUE(worker.IsStopSignalled());
    EXPECT_EQ(worker.ExitCode(), 0xFFFFFFF1u);
    ASSERT_EQ(worker.StartThread(), 1);  // ended to running
    EXPECT_EQ(TakeCalls(), (Calls{"wait 1", "close", "close"}));
    EXPECT_FALSE(worker.IsStopSignalled());
    worker.Stop();
    EXPECT_EQ(worker.ExitCode(), 0xFFFFFFF2u);
  }
  EXPECT_EQ(TakeCalls(), (Calls{"set", "wait", "close", "close"}));
}

TEST_F(CUtiThreadTest, ARefusedThreadLeavesTheEventAndCanBeTriedAgain) {
  Worker worker;
  RefuseThreads();
  EXPECT_EQ(worker.StartThread(), 0);
  EXPECT_EQ(worker.threadHandle, nullptr);
  EXPECT_NE(worker.stopEvent, nullptr);
  doors_->kernel.createThread = System().createThread;
  EXPECT_EQ(worker.StartThread(), 1);
  EXPECT_EQ(TakeCalls(), Calls{"close"});
  worker.Stop();
  RefuseThreads();
  EXPECT_EQ(worker.StartThread(), 0);  // ended to idle
  EXPECT_EQ(worker.threadHandle, nullptr);
}

TEST_F(CUtiThreadTest, ARefusedEventLetsTheBodyRunToItsOwnEnd) {
  {
    Worker worker;
    doors_->kernel.createEvent = [](bool, bool) -> HANDLE { return nullptr; };
    EXPECT_EQ(worker.StartThread(), 0);
    EXPECT_EQ(worker.stopEvent, nullptr);
    ASSERT_NE(worker.threadHandle, nullptr);
    EXPECT_EQ(worker.StartThread(), 0);
    worker.released = true;
  }
  EXPECT_EQ(TakeCalls(), (Calls{"wait 1", "wait", "close"}));
}

TEST_F(CUtiThreadTest, AWaitThatFailsCountsAsEnded) {
  Worker worker;
  ASSERT_EQ(worker.StartThread(), 1);
  worker.Stop();
  doors_->kernel.waitForSingleObject = [](HANDLE, unsigned long) -> unsigned long { return WAIT_FAILED; };
  EXPECT_EQ(worker.StartThread(), 1);
}

TEST_F(CUtiThreadTest, ACopyOwnsHandlesAndStopsTheSharedRun) {
  Worker worker;
  ASSERT_EQ(worker.StartThread(), 1);
  const std::pair<int, Calls> cases[] = {
      {0, {}}, {1, {"set", "close"}}, {2, {"set", "wait", "close", "close"}}};
  for (const auto& [granted, ending] : cases) {  // duplicates before the one that is refused
    static int left;
    left = granted;
    doors_->kernel.duplicateHandle = [](HANDLE handle) {
      return left-- == 0 ? nullptr : System().duplicateHandle(handle);
    };
    auto copy = std::make_unique<Worker>(worker);
    EXPECT_EQ(copy->stopEvent != nullptr, granted > 0);
    EXPECT_EQ(copy->threadHandle != nullptr, granted > 1);
    EXPECT_NE(copy->stopEvent, worker.stopEvent);
    EXPECT_NE(copy->threadHandle, worker.threadHandle);
    copy.reset();
    EXPECT_EQ(TakeCalls(), ending);
  }
  EXPECT_EQ(worker.ExitCode(), 0xFFFFFFF1u);
}

TEST_F(CUtiThreadTest, AssignmentEndsTheLeftRunFirst) {
  Worker left, right;
  ASSERT_EQ(left.StartThread() + right.StartThread(), 2);
  TakeCalls();
  right.CUtiThread::operator=(right);
  EXPECT_EQ(TakeCalls(), Calls{});
  left.CUtiThread::operator=(right);
  EXPECT_EQ(TakeCalls(), (Calls{"set", "wait", "close", "close"}));
  EXPECT_FALSE(left.IsStopSignalled());
}

TEST_F(CUtiThreadTest, EndsInEveryMomentOfARunAndLeavesNothingOver) {
  for (int i = 0; i < 100; ++i) {
    Worker starting, running;
    starting.released = i % 2 == 0;
    ASSERT_EQ(running.StartThread(), 1);
    while (running.runs == 0) std::this_thread::yield();
    ASSERT_EQ(starting.StartThread(), 1);
  }
  Worker worker;
  for (int i = 0; i < 1000; ++i) {
    ASSERT_EQ(worker.StartThread(), 1);
    worker.Stop();
  }
  EXPECT_EQ(worker.runs, 1000);
}

}  // namespace

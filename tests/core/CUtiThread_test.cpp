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

// Writes down the calls of the kernel's doors, and lets some of them fail.
struct Kernel {
  zvuti::KernelDoors system = zvuti::SystemKernelDoors();
  Calls calls;
  std::string refused;  // name of the call that fails
  int letThrough = 0;   // calls of that name before the one that fails

  template <class Make, class... Arguments>
  HANDLE Opened(const char* name, Make make, Arguments... arguments) {
    calls.emplace_back(name);
    if (name == refused && letThrough-- == 0) return nullptr;
    return make(arguments...);
  }
};
Kernel* kernel = nullptr;

class CUtiThreadTest : public testing::Test {
 protected:
  CUtiThreadTest() {
    kernel = &kernel_;
    auto& doors = doors_->kernel;
    doors.createThread = [](unsigned long(ZVUTILIB_CALLBACK * entry)(void*), void* argument) {
      return kernel->Opened("thread", kernel->system.createThread, entry, argument);
    };
    doors.createEvent = [](bool manualReset, bool signalled) {
      EXPECT_TRUE(manualReset && !signalled);
      return kernel->Opened("event", kernel->system.createEvent, manualReset, signalled);
    };
    doors.setEvent = [](HANDLE event) { kernel->calls.emplace_back("set"), kernel->system.setEvent(event); };
    doors.waitForSingleObject = [](HANDLE handle, unsigned long milliseconds) {
      kernel->calls.push_back(milliseconds == INFINITE ? "wait" : "wait " + std::to_string(milliseconds));
      return kernel->system.waitForSingleObject(handle, milliseconds);
    };
    doors.duplicateHandle = [](HANDLE handle) {
      return kernel->Opened("duplicate", kernel->system.duplicateHandle, handle);
    };
    doors.closeHandle = [](HANDLE handle) {
      kernel->calls.emplace_back("close");
      kernel->system.closeHandle(handle);
    };
  }

  Calls TakeCalls() { return std::exchange(kernel_.calls, {}); }

  test::NothingLeft nothingLeft_;
  Kernel kernel_;
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

TEST_F(CUtiThreadTest, AnObjectThatNeverRanCallsNothing) {
  {
    Worker worker, copy(worker);
    worker.CUtiThread::operator=(copy);
  }
  EXPECT_EQ(TakeCalls(), Calls{});
}

TEST_F(CUtiThreadTest, FollowsItsStates) {
  {
    Worker worker;
    ASSERT_EQ(worker.StartThread(), 1);  // idle to running
    EXPECT_EQ(TakeCalls(), (Calls{"event", "thread"}));
    const HANDLE thread = worker.threadHandle, event = worker.stopEvent;
    EXPECT_EQ(worker.StartThread(), 0);  // running stays running
    EXPECT_EQ(TakeCalls(), Calls{"wait 1"});
    EXPECT_EQ(std::pair(worker.threadHandle, worker.stopEvent), std::pair(thread, event));
    EXPECT_FALSE(worker.IsStopSignalled());
    EXPECT_EQ(worker.ExitCode(), STILL_ACTIVE);
    worker.Stop();  // ended
    EXPECT_EQ(worker.ExitCode(), 0xFFFFFFF1u);
    EXPECT_TRUE(worker.IsStopSignalled());
    ASSERT_EQ(worker.StartThread(), 1);  // and running again
    EXPECT_EQ(TakeCalls(), (Calls{"wait 1", "close", "close", "event", "thread"}));
    EXPECT_FALSE(worker.IsStopSignalled());
    worker.Stop();
    EXPECT_EQ(worker.ExitCode(), 0xFFFFFFF2u);
  }
  EXPECT_EQ(TakeCalls(), (Calls{"set", "wait", "close", "close"}));
}

TEST_F(CUtiThreadTest, ARefusedThreadLeavesTheEventAndCanBeTriedAgain) {
  Worker worker;
  kernel_.refused = "thread";
  EXPECT_EQ(worker.StartThread(), 0);
  EXPECT_EQ(worker.threadHandle, nullptr);
  EXPECT_NE(worker.stopEvent, nullptr);
  EXPECT_EQ(worker.StartThread(), 1);
  EXPECT_EQ(TakeCalls(), (Calls{"event", "thread", "close", "event", "thread"}));
  worker.Stop();
  kernel_.letThrough = 0;
  EXPECT_EQ(worker.StartThread(), 0);  // ended to idle
  EXPECT_EQ(worker.threadHandle, nullptr);
}

TEST_F(CUtiThreadTest, ARefusedEventLetsTheBodyRunToItsOwnEnd) {
  {
    Worker worker;
    kernel_.refused = "event";
    EXPECT_EQ(worker.StartThread(), 0);
    EXPECT_EQ(worker.stopEvent, nullptr);
    ASSERT_NE(worker.threadHandle, nullptr);
    EXPECT_EQ(worker.StartThread(), 0);
    worker.released = true;
  }
  EXPECT_EQ(TakeCalls(), (Calls{"event", "thread", "wait 1", "wait", "close"}));
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
  for (const int letThrough : {0, 1, 2}) {  // of the two duplications
    kernel_.refused = "duplicate";
    kernel_.letThrough = letThrough;
    auto copy = std::make_unique<Worker>(worker);
    EXPECT_EQ(copy->stopEvent != nullptr, letThrough > 0);
    EXPECT_EQ(copy->threadHandle != nullptr, letThrough > 1);
    EXPECT_NE(copy->stopEvent, worker.stopEvent);
    EXPECT_NE(copy->threadHandle, worker.threadHandle);
    copy.reset();
    EXPECT_EQ(worker.IsStopSignalled(), letThrough > 0);
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
  EXPECT_EQ(TakeCalls(), (Calls{"set", "wait", "close", "close", "duplicate", "duplicate"}));
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

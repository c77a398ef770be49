#include "tests/support/NothingLeft.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

namespace test {

NothingLeft::NothingLeft() {
  // With the first thread the runtime library opens handles that it keeps; some sanitizers start a thread.
  std::thread([] {}).join();
  threads_ = RunningThreads();
  handles_ = OpenHandles();
}

NothingLeft::~NothingLeft() {
  // Wait: threads whose handles are closed cannot be joined, and Linux lists a thread for a moment after it
  // has ended.
  const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  const auto left = [this] { return RunningThreads() > threads_ || OpenHandles() > handles_; };
  while (left() && std::chrono::steady_clock::now() < limit) std::this_thread::yield();
  EXPECT_LE(OpenHandles(), handles_);
  EXPECT_LE(RunningThreads(), threads_);
}

}  // namespace test

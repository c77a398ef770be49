#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <iterator>
#include <thread>

#include "tests/support/HeapFaults.h"
#include "tests/support/NothingLeft.h"

namespace {

std::int64_t Threads() {
  return std::distance(std::filesystem::directory_iterator("/proc/self/task"),
                       std::filesystem::directory_iterator{});
}

}  // namespace

namespace test {

NothingLeft::NothingLeft() {
  std::thread([] {}).join();  // with the first thread some sanitizers start one of their own
  threads_ = Threads();
  handles_ = LiveBlocksOfAllThreads();
}

NothingLeft::~NothingLeft() {
  // Wait: threads whose handles are closed are not joined, and the system lists a thread for a moment after
  // it has ended.
  const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  const auto left = [this] { return Threads() > threads_ || LiveBlocksOfAllThreads() > handles_; };
  while (left() && std::chrono::steady_clock::now() < limit) std::this_thread::yield();
  EXPECT_EQ(LiveBlocksOfAllThreads(), handles_);
  EXPECT_LE(Threads(), threads_);
}

}  // namespace test

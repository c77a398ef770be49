// NothingLeft: expects that a scope leaves no handles, kernel objects or threads behind. On Linux, where
// handles and kernel objects are heap blocks, it counts all blocks, so a test must not keep any of its own.
#pragma once

#include <cstdint>

namespace test {

class NothingLeft {
 public:
  NothingLeft();
  ~NothingLeft();
  NothingLeft(const NothingLeft&) = delete;
  NothingLeft& operator=(const NothingLeft&) = delete;

 private:
  std::int64_t handles_, threads_;
};

/// The handles (on Linux: heap blocks) and the threads of the process.
std::int64_t OpenHandles();
std::int64_t RunningThreads();

}  // namespace test

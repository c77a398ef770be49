// NothingLeft: checks at its end that as few handles and threads are open as at its beginning. On Linux,
// where a handle and what it leads to are blocks of the heap, it counts all blocks: a test may keep none of
// its own.
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

}  // namespace test

// NothingLeft: checks at its end that as few handles and threads are open as at its beginning.
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
  std::int64_t handles_, objects_, threads_;
};

}  // namespace test

#include <filesystem>
#include <iterator>

#include "tests/support/HeapFaults.h"
#include "tests/support/NothingLeft.h"

namespace test {

std::int64_t OpenHandles() { return LiveBlocksOfAllThreads(); }

std::int64_t RunningThreads() {
  return std::distance(std::filesystem::directory_iterator("/proc/self/task"),
                       std::filesystem::directory_iterator{});
}

}  // namespace test

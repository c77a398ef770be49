#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>

#include "tests/support/ResourceLimits.h"

namespace test {

namespace {

// The address space of the process in bytes.
std::size_t MappedBytes() {
  std::size_t pages = 0;
  std::ifstream("/proc/self/statm") >> pages;
  return pages * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

void Limit(int resource, const rlimit& before, rlim_t most) {
  const rlimit limit{std::min(most, before.rlim_max), before.rlim_max};
  EXPECT_EQ(setrlimit(static_cast<__rlimit_resource>(resource), &limit), 0);
}

}  // namespace

ResourceLimits::ResourceLimits(unsigned seconds, std::size_t bytes) {
  getrlimit(RLIMIT_CPU, &time_);
  getrlimit(RLIMIT_AS, &space_);
  rusage used{};
  getrusage(RUSAGE_SELF, &used);
  const auto spent = static_cast<rlim_t>(used.ru_utime.tv_sec + used.ru_stime.tv_sec + 2);
  Limit(RLIMIT_CPU, time_, spent + seconds);
  Limit(RLIMIT_AS, space_, MappedBytes() + bytes);
}

ResourceLimits::~ResourceLimits() {
  setrlimit(RLIMIT_CPU, &time_);
  setrlimit(RLIMIT_AS, &space_);
}

}  // namespace test

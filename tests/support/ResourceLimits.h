// ResourceLimits: limits the processor time and the memory of the process within a scope.
#pragma once

#include <sys/resource.h>

#include <cstddef>

namespace test {

/// While it exists, the process may use at most `seconds` more of processor time, after which the system ends
/// it, and at most `bytes` more of address space, after which allocations fail.
class ResourceLimits {
 public:
  ResourceLimits(unsigned seconds, std::size_t bytes);
  ~ResourceLimits();
  ResourceLimits(const ResourceLimits&) = delete;
  ResourceLimits& operator=(const ResourceLimits&) = delete;

 private:
  rlimit time_{}, space_{};
};

}  // namespace test

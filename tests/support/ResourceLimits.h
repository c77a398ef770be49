// ResourceLimits: bounds on the processor time and the memory of a stretch of code, kept by the system.
#pragma once

#include <sys/resource.h>

#include <cstddef>

namespace test {

/// While alive, the process may use so many more seconds of processor time (beyond them the system ends
/// it) and so many more bytes of address space (beyond them the heap refuses).
class ResourceLimits {
 public:
  ResourceLimits(unsigned seconds, std::size_t bytes);
  ~ResourceLimits();
  ResourceLimits(const ResourceLimits&) = delete;
  ResourceLimits& operator=(const ResourceLimits&) = delete;

 private:
  rlimit time_{}, space_{};
};

/// Bytes of this process that are in memory.
std::size_t ResidentBytes();

}  // namespace test

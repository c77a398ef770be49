// Check: aborts a fuzz target when the library breaks a promise.
#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace fuzz {

/// Aborts unless `holds`, so that the fuzzer keeps the input as a finding. `promise` states what should hold.
inline void Check(bool holds, const char* promise) {
  if (holds) return;
  std::fprintf(stderr, "fuzz: broken: %s\n", promise);
  std::abort();
}

inline std::string_view BytesOf(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

/// Removes the part of `bytes` up to and including the first `mark`, or all of it if there is none. Returns
/// that part without the mark.
inline std::string_view TakeUntil(std::string_view& bytes, char mark) {
  const std::string_view part = bytes.substr(0, bytes.find(mark));
  bytes.remove_prefix(part.size() < bytes.size() ? part.size() + 1 : part.size());
  return part;
}

}  // namespace fuzz

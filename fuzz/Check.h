// Check: what every fuzz target ends in when the library breaks a promise.
#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace fuzz {

/// Ends the program, which makes the input a finding.
inline void Check(bool holds, const char* promise) {
  if (holds) return;
  std::fprintf(stderr, "fuzz: broken: %s\n", promise);
  std::abort();
}

inline std::string_view BytesOf(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

/// The part of `bytes` up to the first `mark`, which goes as well; all of them where there is none.
inline std::string_view TakeUntil(std::string_view& bytes, char mark) {
  const std::string_view part = bytes.substr(0, bytes.find(mark));
  bytes.remove_prefix(part.size() < bytes.size() ? part.size() + 1 : part.size());
  return part;
}

}  // namespace fuzz
